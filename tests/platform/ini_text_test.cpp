// The entries of an ini text with their places, and that lookups read the same.
#include "platform/ini_text.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

namespace tvml::platform {
namespace {

struct Row {
    std::u16string_view text;
    std::u16string_view section;
    std::string_view listed;
};

std::string placed(const IniPart& part) {
    return std::to_string(part.line) + ":" + std::to_string(part.start) + "[" +
           system().toUtf8(part.text) + "]";
}

// "2:0[k] 2:2[v]; " for each entry, behind the header; 0:0 for a missing value.
std::string listed(const IniSection& section) {
    std::string text = section.header ? placed(*section.header) + "; " : "";
    for (const IniEntry& entry : section.entries) {
        text += placed(entry.key) + " " + placed(entry.value) + "; ";
    }
    return text;
}

constexpr Row kRows[] = {
    // line ends
    {u"[S]\nk=v\n", u"S", "1:0[[S]]; 2:0[k] 2:2[v]; "},
    {u"[S]\rk=v\r\rl=w", u"S", "1:0[[S]]; 2:0[k] 2:2[v]; 4:0[l] 4:2[w]; "},
    {u"[S]\r\nk=v\r\n\r\nl=w\r\n", u"S", "1:0[[S]]; 2:0[k] 2:2[v]; 4:0[l] 4:2[w]; "},
    {u"[S]\n\rk=v\r\r\nl=w\r\nm=x\ry=z", u"S",
     "1:0[[S]]; 3:0[k] 3:2[v]; 5:0[l] 5:2[w]; 6:0[m] 6:2[x]; 7:0[y] 7:2[z]; "},
    {u"[S]\rlong key=long value\r", u"S", "1:0[[S]]; 2:0[long key] 2:9[long value]; "},
    {u"[S]\nk=v\u2028\u0085w=x", u"S", "1:0[[S]]; 2:0[k] 2:2[v\u2028\u0085w=x]; "},
    // blanks, quotes and characters of two units
    {u" \t[ S ] \n  k\t =  ' v '  \n", u"s", "1:2[[ S ]]; 2:2[k] 2:9[ v ]; "},
    {u"[S T]x\nk=\"v'\n", u" s t\t", "1:0[[S T]x]; 2:0[k] 2:2[\"v']; "},
    {u"[S]\n\U0001F389 =\U0001F389=", u"S", "1:0[[S]]; 2:0[\U0001F389] 2:4[\U0001F389=]; "},
    // what is no entry, and entries without a value
    {u"[S]\n;k=v\n [T\n \nk=v;", u"S", "1:0[[S]]; 5:0[k] 5:2[v;]; "},
    {u"[S]\n k \nl=\nm=\"\"\n=v", u"S",
     "1:0[[S]]; 2:1[k] 0:0[]; 3:0[l] 3:2[]; 4:0[m] 4:3[]; 5:0[] 5:1[v]; "},
    // hidden entries are listed, sections of a name that was there before are not
    {u"[S]\nk=1\nK=2\nk\n[T]\nk=3\n[s]\nl=4\n", u"S",
     "1:0[[S]]; 2:0[k] 2:2[1]; 3:0[K] 3:2[2]; 4:0[k] 0:0[]; "},
    {u"[S]\nk\nk=v", u"S", "1:0[[S]]; 2:0[k] 0:0[]; 3:0[k] 3:2[v]; "},
    {u"j=u\n[T]\nk=v\n[S]\nl=w", u"S", "4:0[[S]]; 5:0[l] 5:2[w]; "},
    {u"k=v\n[]\nl=w\n", u"", "1:0[k] 1:2[v]; "},
    {u"[T]\nk=v\n", u"S", ""},
    {u"", u"S", ""},
};

TEST(IniSection, ListsTheEntriesWithTheirPlaces) {
    for (const Row& row : kRows) {
        EXPECT_EQ(listed(readIniSection(row.text, row.section)), row.listed)
            << system().toUtf8(row.text);
    }
}

// What a lookup has to find in these entries: the first one of the key counts.
std::u16string_view firstOf(const IniSection& section, std::u16string_view key) {
    for (const IniEntry& entry : section.entries) {
        if (sameIniName(entry.key.text, key)) {
            return entry.value.line == 0 ? u"default" : entry.value.text;
        }
    }
    return u"default";
}

TEST(IniSection, HoldsWhatLookupsFind) {
    for (const Row& row : kRows) {
        const IniText lookups{std::u16string(row.text)};
        const IniSection section = readIniSection(row.text, row.section);
        for (const std::u16string_view key :
             {u"j", u"k", u"l", u"m", u"y", u"w", u"", u"long key", u";k", u"\U0001F389"}) {
            std::array<char16_t, 32> buffer;
            const std::size_t count = lookups.readString(row.section, key, u"default", buffer);
            EXPECT_EQ(std::u16string_view(buffer.data(), count), firstOf(section, key))
                << system().toUtf8(row.text) << " / " << system().toUtf8(key);
        }
    }
}

} // namespace
} // namespace tvml::platform
