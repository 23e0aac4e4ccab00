// The states of a word and the loading of the table.
#include <gtest/gtest.h>

#include "support/studio.h"

namespace tvml {
namespace {

// Every query of a word, put to one row of texts.
std::string answers(const Word& word) {
    const auto place = [](std::size_t at) { return at == kNone ? "-" : std::to_string(at); };
    std::string result;
    for (const std::u16string_view text : {u"", u"ab", u"abc", u"xab"}) {
        result += word.equals(text) ? "=" : ".";
        result += word.starts(text) ? "s" : ".";
        result += place(word.findIn(text)) + place(word.findUnitsIn(text));
        result += place(word.findLastOfIn(text)) + " ";
    }
    result += place(word.findIn(u"abab", 1)) + (word.holds(u'b') ? "b" : ".");
    result += std::string(word.firstUnitIs(u'a') ? "a" : ".") + (word.firstUnitIs(0) ? "0" : ".");
    return result + shown(word.textOrEmpty());
}

TEST(Word, StatesAreKeptApart) {
    Word word;
    EXPECT_EQ(answers(word), "..--- ..--- ..--- ..--- -...");
    word.load(u"");
    EXPECT_EQ(answers(word), "=s0-- .s0-- .s0-- .s0-- 1...");
    word.load(u"ab");
    EXPECT_EQ(answers(word), "..--- =s001 .s001 ..112 2ba.ab");
}

struct LoadRow {
    const char* name;
    Words replaced;
    std::u16string_view removed; // a key
    LoadProblem problem;
    std::u16string_view stop; // the key that ends the load
};

// The words before the key that fails are new, the others what they were.
TEST(KeywordTable, LoadsUpToTheKeyThatFails) {
    const std::u16string x126(126, u'x');
    const std::u16string x127(127, u'x');
    const std::u16string x300(300, u'x');
    const LoadRow rows[] = {
        {"complete", {}, u"", LoadProblem::none, u""},
        {"without the last", {}, kKeys.back(), LoadProblem::missing, kKeys.back()},
        {"without the first", {}, u"title", LoadProblem::missing, u"title"},
        {"in the middle", {}, u"kakko", LoadProblem::missing, u"kakko"},
        {"longest", {{u"happy", x126}}, u"", LoadProblem::none, u""},
        {"too long", {{u"happy", x127}}, u"", LoadProblem::tooLong, u"happy"},
        {"much too long", {{u"happy", x300}}, u"", LoadProblem::tooLong, u"happy"},
        {"mark", {{u"sad", u"keyword.ini error"}}, u"", LoadProblem::missing, u"sad"},
        {"longer than the mark", {{u"sad", u"keyword.ini errors"}}, u"", LoadProblem::none, u""},
        {"empty word", {{u"sad", u""}}, u"", LoadProblem::none, u""},
    };
    for (const LoadRow& row : rows) {
        SCOPED_TRACE(row.name);
        Words words = shippedWords(row.replaced);
        words.erase(std::u16string(row.removed));
        Words old;
        for (const std::u16string_view key : kKeys) {
            old[std::u16string(key)] = u"old";
        }
        KeywordTable fresh;
        KeywordTable used = tableOf(old);
        const platform::IniText ini(iniText(words));
        EXPECT_EQ(fresh.loadFrom(ini), row.problem == LoadProblem::none);
        EXPECT_EQ(used.loadFrom(ini), row.problem == LoadProblem::none);
        EXPECT_EQ(used.problem(), row.problem);
        bool loaded = true;
        for (std::size_t i = 0; i < kKeyCount; ++i) {
            loaded = loaded && kKeys[i] != row.stop;
            const Key key = Key::at(i);
            EXPECT_EQ(fresh[key].loaded(), loaded) << i;
            EXPECT_EQ(shown(used[key].textOrEmpty()),
                      loaded ? shown(words.at(kKeys[i].data())) : "old");
        }
        EXPECT_EQ(row.stop, used.problemKey() < kKeyCount ? kKeys[used.problemKey()] : u"");
    }
}

TEST(KeywordTable, ReadsTheFileBesideTheHostProgram) {
    const std::u16string deep(246, u'd'); // "/d", these and "/keyword.ini": 260 units, the most
    const struct {
        std::u16string host;
        char16_t separator;
        std::u16string file;
        bool found;
    } rows[] = {
        {u"/host/program", u'/', u"/host/keyword.ini", true},
        {u"/host/program", u'/', u"/host/sub/keyword.ini", false},
        {u"/program", u'/', u"/keyword.ini", true},
        {u"C:\\a/b\\p.exe", u'\\', u"C:\\a/b\\keyword.ini", true},
        {u"program", u'/', u"keyword.ini", false},
        {u"", u'/', u"keyword.ini", false},
        {u"/d" + deep + u"/p", u'/', u"/d" + deep + u"/keyword.ini", true},
        {u"/dd" + deep + u"/p", u'/', u"/dd" + deep + u"/keyword.ini", false},
    };
    for (const auto& row : rows) {
        platform::MemoryPlatform memory;
        memory.hostPath = row.host;
        memory.separator = row.separator;
        memory.files[row.file] = iniText(shippedWords());
        KeywordTable table;
        EXPECT_EQ(table.load(memory), row.found) << shown(row.host);
        EXPECT_EQ(table[u"title"].loaded(), row.found);
    }
}

// The words follow the file, however often it is really read.
TEST(KeywordTable, LoadsAgainWhatChanged) {
    platform::MemoryPlatform memory;
    std::u16string& file = memory.files[u"/host/keyword.ini"];
    KeywordTable table;
    const auto load = [&](const Words& replaced, std::u16string_view removed) {
        Words words = shippedWords(replaced);
        words.erase(std::u16string(removed));
        file = iniText(words);
        return table.load(memory);
    };
    EXPECT_TRUE(load({{u"happy", u"one"}}, u""));
    EXPECT_TRUE(load({{u"happy", u"one"}}, u""));
    EXPECT_EQ(memory.openedFiles, 1U);
    EXPECT_FALSE(load({{u"happy", u"two"}}, kKeys.back())); // as long as before
    EXPECT_FALSE(load({{u"happy", u"two"}}, kKeys.back()));
    EXPECT_EQ(memory.openedFiles, 2U);
    EXPECT_EQ(shown(table[u"happy"].textOrEmpty()), "two");
    table.set(u"happy", u"three");
    EXPECT_FALSE(load({{u"happy", u"two"}}, kKeys.back()));
    EXPECT_EQ(shown(table[u"happy"].textOrEmpty()), "two");
    EXPECT_TRUE(table.loadFrom(platform::IniText(iniText(shippedWords({{u"happy", u"four"}})))));
    EXPECT_FALSE(load({{u"happy", u"two"}}, kKeys.back()));
    EXPECT_EQ(shown(table[u"happy"].textOrEmpty()), "two");
    memory.files.erase(u"/host/keyword.ini");
    EXPECT_FALSE(table.load(memory));
    EXPECT_EQ(table.problemKey(), 0U);
    EXPECT_EQ(shown(table[u"happy"].textOrEmpty()), "two");
    memory.files[u"/other/keyword.ini"] = iniText(shippedWords({{u"happy", u"five"}}));
    memory.hostPath = u"/other/program";
    EXPECT_TRUE(table.load(memory));
    EXPECT_EQ(shown(table[u"happy"].textOrEmpty()), "five");
}

TEST(KeywordTable, LettersAndBlanksFollowTheWordsOfTheLastLoad) {
    Words words = shippedWords(
        {{u"space", u"_　"}, {u"b1", u"β"}, {u"c1", u"cc"}, {u"z1", u""}, {u"Z2", u"Ｙ"}});
    words.erase(u"fail_create_xmlparser"); // ends the load; the words before it count
    KeywordTable table;
    EXPECT_FALSE(table.loadFrom(platform::IniText(iniText(words))));
    const struct {
        char16_t unit;
        char16_t letter;
        bool inRange;
        bool blank;
    } rows[] = {
        {u'a', u'A', true, false},  {u'Z', u'Z', true, false},  {u'@', 0, false, false},
        {u'[', 0, false, false},    {u'`', 0, false, false},    {u'{', 0, false, false},
        {u'β', u'B', false, false}, {u'ｂ', 0, false, false},   {u'Ｂ', u'B', true, false},
        {u'ｃ', 0, false, false},   {u'Ｙ', u'Y', true, false}, {u'Ｚ', 0, false, false},
        {u' ', 0, false, true},     {u'\t', 0, false, true},    {u'_', 0, false, true},
        {u'　', 0, false, true},    {u'\n', 0, false, false},   {0, 0, false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(shown(std::u16string(1, row.unit)));
        EXPECT_EQ(table.letterOf(row.unit), row.letter);
        EXPECT_EQ(table.isLetter(row.unit), row.inRange);
        EXPECT_EQ(table.isBlank(row.unit), row.blank);
    }
}

TEST(KeywordTable, VersionGrowsWithChangesOnly) {
    KeywordTable table;
    const std::uint64_t before = table.version();
    table.loadFrom(platform::IniText(iniText(shippedWords())));
    const std::uint64_t first = table.version();
    EXPECT_GT(first, before);
    table.loadFrom(platform::IniText(iniText(shippedWords())));
    EXPECT_EQ(table.version(), first);
    table.loadFrom(platform::IniText(iniText(shippedWords({{u"a1", u"a"}}))));
    EXPECT_GT(table.version(), first);
}

} // namespace
} // namespace tvml
