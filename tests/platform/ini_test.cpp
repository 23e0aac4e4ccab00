// The rules of the ini service, as rows written to a real file and read back
// through the platform of the running system. Rows hold on every platform, but
// for two at the end of the encodings.
#include "platform/platform.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tvml::platform {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr char16_t kUntouched = u'#';

struct Row {
    std::string_view bytes;
    std::u16string_view section;
    std::u16string_view key;
    std::u16string_view defaultText;
    std::size_t size;
    std::u16string_view expected; // its length is the expected count
};

std::string utf16(std::u16string_view text, bool littleEndian) {
    std::string bytes = littleEndian ? "\xFF\xFE" : "\xFE\xFF";
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes.push_back(littleEndian ? low : high);
        bytes.push_back(littleEndian ? high : low);
    }
    return bytes;
}

void check(const Row& row, const std::u16string& path) {
    const std::unique_ptr<IniFile> file = system().openIni(path);
    ASSERT_NE(file, nullptr);
    std::u16string units(row.size + 1, kUntouched);
    const std::span<char16_t> buffer(units.data(), row.size);
    const std::size_t count = file->readString(row.section, row.key, row.defaultText, buffer);
    ASSERT_EQ(count, row.expected.size());
    EXPECT_EQ(std::u16string_view(units).substr(0, count), row.expected);
    EXPECT_EQ(units[count], row.size == 0 ? kUntouched : u'\0');
    EXPECT_EQ(units[row.size], kUntouched);
}

// A file of its own for every row: the Windows service remembers files.
void checkRows(const std::vector<Row>& rows) {
    const TemporaryFolder folder;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE("row " + std::to_string(i));
        const std::string name = std::to_string(i) + ".ini";
        check(rows[i], folder.write(name.c_str(), rows[i].bytes));
    }
}

bool isNative() {
    return system().pathSeparator() == u'/';
}

TEST(Ini, Rules) {
    const std::string longValues = "[S]\na=" + std::string(126, 'x') +
                                   "\nb=" + std::string(127, 'x') +
                                   "\nc=" + std::string(70000, 'x') + "\n";
    const std::u16string x126(126, u'x');
    const std::u16string x127(127, u'x');
    checkRows({
        // finding
        {"[S]\r\nk=v\r\n", u"S", u"k", u"d", 128, u"v"},
        {"[S]\r\nk=v\r\n", u"s", u"K", u"d", 128, u"v"},
        {"[S]\r\nk=v", u" S\t", u" k ", u"d", 128, u"v"},
        {"[S]\nk=v\n", u"S", u"x", u"d", 128, u"d"},
        {"[S]\nk=v\n", u"X", u"k", u"d", 128, u"d"},
        {"[S]\nk=v\n", u"", u"k", u"d", 128, u"d"},
        {"[S]\nk=v\n", u"S", u"", u"d", 128, u"d"},
        {"", u"S", u"k", u"d", 128, u"d"},
        // sizes
        {"[S]\nk=abcdef\n", u"S", u"k", u"d", 7, u"abcdef"},
        {"[S]\nk=abcdef\n", u"S", u"k", u"d", 6, u"abcde"},
        {"[S]\nk=abcdef\n", u"S", u"k", u"d", 2, u"a"},
        {"[S]\nk=abcdef\n", u"S", u"k", u"d", 1, u""},
        {"[S]\nk=abcdef\n", u"S", u"k", u"d", 0, u""},
        {"[S]\nk=abcdef\n", u"S", u"x", u"def", 3, u"de"},
        {longValues, u"S", u"a", u"d", 128, x126},
        {longValues, u"S", u"b", u"d", 128, x127},
        {longValues, u"S", u"c", u"d", 128, x127},
        // defaults
        {"[S]\n", u"S", u"x", u" a b  ", 128, u" a b"},
        {"[S]\n", u"S", u"x", u"'a' ", 128, u"a"},
        {"[S]\n", u"S", u"x", u"a\t", 128, u"a\t"},
        {"[S]\n", u"S", u"x", u"", 128, u""},
        // blanks
        {" \t[ S ]\n \v\fk\t = \tv w \x1A\n", u"S", u"k", u"d", 128, u"v w"},
        {"[S]\nk=\x1Cv\x1F\n", u"S", u"k", u"d", 128, u"\x1Cv\x1F"},
        {"[S T]\na b=v\n", u"S T", u"a b", u"d", 128, u"v"},
        {"[S T]\na  b=v\n", u"S T", u"a b", u"d", 128, u"d"},
        // quotes
        {"[S]\nk=\"v\"\n", u"S", u"k", u"d", 128, u"v"},
        {"[S]\nk='v'\n", u"S", u"k", u"d", 128, u"v"},
        {"[S]\nk=\"v'\n", u"S", u"k", u"d", 128, u"\"v'"},
        {"[S]\nk=\"'v'\"\n", u"S", u"k", u"d", 128, u"'v'"},
        {"[S]\nk= \" v \" \n", u"S", u"k", u"d", 128, u" v "},
        {"[S]\nk=\"\n", u"S", u"k", u"d", 128, u"\""},
        {"[S]\nk=\"\"\n", u"S", u"k", u"d", 128, u""},
        {"[S]\nk=\"v\";c\n", u"S", u"k", u"d", 128, u"\"v\";c"},
        {"[S]\n\"k\"=v\n", u"S", u"k", u"d", 128, u"d"},
        // entries
        {"[S]\nk=\nk=v\n", u"S", u"k", u"d", 128, u""},
        {"[S]\nk=1\nK=2\n", u"S", u"k", u"d", 128, u"1"},
        {"[S]\nk\nk=v\n", u"S", u"k", u"d", 128, u"d"},
        {"[S]\nk==a=b\n", u"S", u"k", u"d", 128, u"=a=b"},
        {"[S]\n=v\n", u"S", u"", u"d", 128, u"v"},
        {"[S]\n#k=v\n", u"S", u"#k", u"d", 128, u"v"},
        {"[S]\n ;[T]\nk=v;c\n", u"S", u"k", u"d", 128, u"v;c"},
        {"[S]\n;k=1\nk=2\n", u"S", u"k", u"d", 128, u"2"},
        // sections
        {"[S]\na=1\n[T]\n[s]\nk=2\n", u"S", u"k", u"d", 128, u"d"},
        {"[S] x\nk=v\n", u"S", u"k", u"d", 128, u"v"},
        {"[S]k=1\nk=2\n", u"S", u"k", u"d", 128, u"2"},
        {"[S]T]\nk=v\n", u"S]T", u"k", u"d", 128, u"v"},
        {"[S]\n[T\nk=v\n", u"S", u"k", u"d", 128, u"v"},
        {"[S]\nx[T]\nk=v\n", u"T", u"k", u"d", 128, u"d"},
        {"k=v\n[S]\n", u"S", u"k", u"d", 128, u"d"},
        {"k=v\n[]\nk=w\n", u"", u"k", u"d", 128, u"v"},
        // line ends
        {"[S]\ra=1\rk=v", u"S", u"k", u"d", 128, u"v"},
        {"[S]\n\r\n\n\rk=v\r\r\n", u"S", u"k", u"d", 128, u"v"},
        // terminators
        {"[S]\nk=a\0b\nx=c\n"sv, u"S", u"k", u"d", 128, u"a"},
        {"[S]\nk=a\0b\nx=c\n"sv, u"S", u"x", u"d", 128, u"c"},
    });
}

TEST(Ini, ByteOrderMarks) {
    const std::u16string_view text = u"[S\u3042]\nk=\u65E5\xD83D\xDE00\nl=\xD83D"
                                     u"x\nw=\u3000v\u00A0\n\uFF2B=\u3000\n";
    const std::string little = utf16(text, true);
    const std::string big = utf16(text, false);
    const std::string noMark = little.substr(2);
    checkRows({
        {little, u"s\u3042", u"k", u"d", 128, u"\u65E5\xD83D\xDE00"},
        {little, u"S\u3042", u"k", u"d", 3, u"\u65E5\xD83D"},
        {little, u"S\u3042", u"l", u"d", 128, u"\xD83Dx"},
        {little, u"S\u3042", u"w", u"d", 128, u"\u3000v\u00A0"},
        {little, u"S\u3042", u"\uFF2B", u"d", 128, u"\u3000"},
        {little, u"S\u3042", u"\uFF4B", u"d", 128, u"d"},
        {big, u"S\u3042", u"k", u"d", 128, u"\u65E5\xD83D\xDE00"},
        {noMark, u"S\u3042", u"k", u"d", 128, u"d"},
        {"\xFF\xFE", u"S", u"k", u"d", 128, u"d"},
        {"\xFF", u"S", u"k", u"d", 128, u"d"},
        {"\xEF\xBB\xBF[S]\nk=\xE6\x97\xA5\n", u"S", u"k", u"d", 128, u"\u65E5"},
        {"\xEF\xBB\xBF[S]\nk=x\xFF\xE6y\n", u"S", u"k", u"d", 128, u"x\uFFFD\uFFFDy"},
    });
}

// Without a mark the Windows service reads the code page of the machine, here
// 932; the native one knows that and UTF-8.
TEST(Ini, CodePage932) {
    checkRows({
        {"[S]\nk=\x93\xFA\x96\x7B\n", u"S", u"k", u"d", 128, u"\u65E5\u672C"},
        {"[\x90\xDD]\n\x83\x4C=\x8C\xEA\n", u"\u8A2D", u"\u30AD", u"d", 128, u"\u8A9E"},
        {"[S]\nk=\x81\x60\xB1\x5C\x7E\n", u"S", u"k", u"d", 128, u"\uFF5E\uFF71\\~"},
        {"[S]\nk=\x95\x5C\x83]\n", u"S", u"k", u"d", 128, u"\u8868\u30BE"},
        {"[S]\nk=\x81\x40v\x81\x40\n", u"S", u"k", u"d", 128, u"\u3000v\u3000"},
        {"[S]\nk=\x87\x40\xFB\xFC\xF0\x40\n", u"S", u"k", u"d", 128, u"\u2460\u9AD9\uE000"},
        // damage
        {"[S]\nk=a\x81\r\nl=w\n", u"S", u"k", u"d", 128, u"a\u30FB"},
        {"[S]\nk=a\x81\r\nl=w\n", u"S", u"l", u"d", 128, u"w"},
        {"[S]\nk=a\x81\nl=w\n", u"S", u"l", u"d", 128, u"d"},
        {"[S]\nk=\x81\x20x\n", u"S", u"k", u"d", 128, u"\u30FBx"},
        {"[S]\nk=\x81\xAD.\n", u"S", u"k", u"d", 128, u"\u30FB."},
        {"[S]\nk=\x93", u"S", u"k", u"d", 128, u"\u30FB"},
        {"[S]\nk=\xFD\xFE\xFF\x80\xA0.\x7F\n", u"S", u"k", u"d", 128,
         u"\uF8F1\uF8F2\uF8F3\u0080\uF8F0.\x7F"},
    });
    if (isNative()) {
        const std::string odd = utf16(u"[S]\nk=v", true) + "x";
        checkRows({
            {"[S]\nk=\xE6\x97\xA5\n", u"S", u"k", u"d", 128, u"\u65E5"},
            {odd, u"S", u"k", u"d", 128, u"v\uFFFD"},
        });
    }
}

TEST(Ini, WhatIsNoSettingsFileReadsAsMissing) {
    const TemporaryFolder folder;
    const std::string text = "[S]\nk=v\n";
    std::u16string cut = folder.write("a", text);
    cut.append(u"\0b"sv);
    std::u16string unpaired = folder.write("\xEF\xBF\xBD", text);
    unpaired.back() = u'\xD800';
    const std::u16string names[] = {u""s, cut, unpaired, folder.path().u16string(),
                                    (folder.path() / "none" / "a").u16string()};
    for (const std::u16string& name : names) {
        check({text, u"S", u"k", u"d", 128, u"d"}, name);
    }
}

} // namespace
} // namespace tvml::platform
