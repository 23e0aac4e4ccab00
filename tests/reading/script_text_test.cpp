// The small services that all readers of a script share.
#include "reading/script_text.h"

#include <gtest/gtest.h>

#include "support/studio.h"

namespace tvml {
namespace {

TEST(ScriptText, Trim) {
    const struct {
        Words replaced;
        std::u16string_view text;
        const char* trimmed;
    } rows[] = {
        {{}, u"", ""},
        {{}, u" \t　 ", ""},
        {{}, u"　 a 　b\t", "a 　b"},
        {{}, u" |a| ", "|a|"},
        {{{u"space", u""}}, u" 　a　 ", "　a　"},
        {{{u"space", u"xy"}}, u"yx axb xy", "axb"},
    };
    for (const auto& row : rows) {
        const KeywordTable words = tableOf(shippedWords(row.replaced));
        EXPECT_EQ(shown(trimScriptText(expand(row.text), words)), row.trimmed);
    }
    EXPECT_EQ(shown(trimScriptText(u" 　a ", KeywordTable())), "　a");
}

TEST(ScriptText, CharacterLetterIsAOneUnitForm) {
    const KeywordTable words = tableOf(shippedWords({{u"B2", u"ＢＢ"}, {u"c1", u"あ"}}));
    const struct {
        std::u16string_view text;
        const char* letter;
    } rows[] = {{u"", ""},   {u"b", "B"},  {u"Z", "Z"},  {u"1", ""},  {u"AB", ""},  {u"ａ", "A"},
                {u"Ｂ", ""}, {u"ｂ", "B"}, {u"あ", "C"}, {u"ｃ", ""}, {u"ＢＢ", ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(shown(characterLetterOf(row.text, words)), row.letter) << shown(row.text);
    }
}

TEST(ScriptText, PositionsCombine) {
    EXPECT_EQ(earliestPosition(kNone, kNone), kNone);
    EXPECT_EQ(latestPosition(kNone, kNone), kNone);
    EXPECT_EQ(earliestPosition(kNone, 3) + latestPosition(kNone, 3), 6U);
    EXPECT_EQ(earliestPosition(3, kNone) + latestPosition(3, kNone), 6U);
    EXPECT_EQ(earliestPosition(2, 5), 2U);
    EXPECT_EQ(latestPosition(2, 5), 5U);
}

TEST(ScriptText, ReplaceAllNeverSearchesWhatItInserted) {
    const struct {
        std::u16string_view text;
        std::u16string_view pattern;
        std::u16string_view replacement;
        const char* result;
    } rows[] = {
        {u"$1$1x$1", u"$1", u"a", "aaxa"}, {u"$1$11", u"$1", u"$1", "$1$11"},
        {u"aaa", u"aa", u"a", "aa"},       {u"abab", u"ab", u"", ""},
        {u"ab", u"", u"x", "ab"},          {u"", u"a", u"x", ""},
    };
    for (const auto& row : rows) {
        std::u16string text(row.text);
        replaceAll(text, row.pattern, row.replacement);
        EXPECT_EQ(shown(text), row.result) << shown(row.text);
    }
}

TEST(ScriptText, AsciiAndQuotes) {
    EXPECT_FALSE(isAsciiText(u""));
    EXPECT_TRUE(isAsciiText(u"a\x7F"));
    EXPECT_FALSE(isAsciiText(u"a\x80"));
    std::u16string text = u"\"a\" 'b'”";
    replaceDoubleQuotes(text);
    EXPECT_EQ(shown(text), "'a' 'b'”");
}

// The earliest of all four, whatever their lengths.
TEST(ScriptText, Separators) {
    const struct {
        Words replaced;
        std::u16string_view text;
        std::size_t found;
    } rows[] = {
        {{}, u"", kNone},
        {{}, u"ab", kNone},
        {{}, u"a,b、", 1},
        {{}, u"ab、c，d", 2},
        {{}, u"、", 0},
        {{}, u"a，､、,", 1},
        {{{u"kanma", u"--"}}, u"a-b--c,", 3},
        {{{u"kanma", u"b,c"}}, u"ab,c", 1},
        {{{u"touten1", u"c,"}}, u"ac,", 1},
        {{{u"touten2", u""}}, u"a,b", 0},
        {{{u"touten2", u""}}, u"", 0},
    };
    for (const auto& row : rows) {
        const KeywordTable words = tableOf(shippedWords(row.replaced));
        EXPECT_EQ(findSeparator(row.text, words), row.found) << shown(row.text);
        EXPECT_EQ(startsWithSeparator(row.text, words), row.found == 0) << shown(row.text);
    }
    EXPECT_EQ(findSeparator(u"a、b,c", KeywordTable()), 3U);
}

} // namespace
} // namespace tvml
