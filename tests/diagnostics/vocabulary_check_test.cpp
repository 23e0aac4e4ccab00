// Vocabularies: entries that stand in place of the shipped ones, and what is
// said about them. Their lines follow the shipped ones.
#include <gtest/gtest.h>

#include <algorithm>

#include "diagnostics/checking.h"

namespace tvml {
namespace {

struct Row {
    std::u16string_view lines;
    std::string_view told; // codes and marked texts
};

// The summary without places, which depend on the shipped file.
std::string toldOf(std::u16string_view lines) {
    const std::u16string text = vocabularyWith(lines);
    std::string told;
    for (const Diagnostic& one : foundInVocabulary(text)) {
        const std::string placed = summary({one}, text);
        told += (told.empty() ? "" : "; ") + placed.substr(placed.find(' ') + 1);
    }
    return told;
}

TEST(VocabularyCheck, Words) {
    constexpr Row kRows[] = {
        // Lengths: a letter row takes its letters off as well.
        {u"look_at=見る\n", "V203 [見る]"},
        {u"twoshot_of=のふたり\n", "V203 [のふたり]"},
        {u"wait_n=秒\n", "V203 [秒]"},
        {u"fast=急いで\n", "V203 [急いで]"},
        {u"caption=キャプション\n", "V203 [キャプション]"},
        {u"sound=音\n", "V203 [音]"},
        {u"hatena2=はてな\n", ""}, // the same command
        // Words that earlier ones hide.
        {u"walk_n=歩く\n", "V204 [歩く]; V203 [歩く]"},
        {u"set=スト\ntrackshot=ストロング走\n", "V203 [スト]; V203 [ストロング走]"},
        {u"very_slow=遅くとても\n", "V204 [遅くとても]"},
        {u"num7=０\n", "V204 [０]"},
        {u"b1=ａ\n", "V204 [ａ]"},
        {u"super=タイトル\n", "V204 [タイトル]"},
        // Single units.
        {u"kanma=，，\n", "V207 [，，]"},
        {u"a1=xy\n", "V207 [xy]"},
        {u"b1=q\n", "V205 [q]"},
        {u"super=A\n", "V205 [A]; V203 [A]"},
        {u";white=白\n", "V201 [黒]"},
        {u"touten3=\",a\"\n", "V205 [,a]"},
        // Entries.
        {u"upshot1=\n", "V206 [upshot1]"},
        {u"kagikakko=\n", ""},
        {u"Red=赤\n", "V210 [Red]"},
        {u"hapy=喜\n", "V209 [hapy]"},
        {u"red\n", "V201 [red]"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(toldOf(row.lines), row.told) << utf8(row.lines);
    }
}

// Codes, places and messages, which tell lines, too.
std::string placesIn(std::u16string_view text) {
    std::string places;
    for (const Diagnostic& one : foundInVocabulary(text)) {
        places.append(one.code.row().code).append(" ") += std::to_string(one.line) + ":" +
                                                          std::to_string(one.column) + "+" +
                                                          std::to_string(one.units) + " ";
        places += utf8(one.message) + "\n";
    }
    return places;
}

TEST(VocabularyCheck, PlacesAreTheSameWhateverEndsTheLines) {
    const std::u16string text =
        vocabularyWith(u"hapy=喜\n\n  Red = 赤\nwait_n= '秒'\nkanma=，，\n ;x\nRED=赤\n");
    const std::string expected = placesIn(text);
    ASSERT_EQ(std::ranges::count(expected, '\n'), 5) << expected;
    const std::vector<std::vector<std::u16string_view>> allEnds{
        {u"\r"}, {u"\r\n"}, {u"\r", u"\r\n"}, {u"\r\n", u"\n"}, {u"\r\n", u"\n", u"\n", u"\r"}};
    for (const std::vector<std::u16string_view>& ends : allEnds) {
        std::u16string other;
        std::size_t line = 0;
        for (const char16_t unit : text) {
            other += unit == u'\n' ? ends[line++ % ends.size()] : std::u16string_view(&unit, 1);
        }
        EXPECT_EQ(placesIn(other), expected);
    }
}

TEST(VocabularyCheck, MissingKeyTellsHowManyFollow) {
    const std::vector<Diagnostic> found =
        foundInVocabulary(vocabularyWith(u";white=白\n;red=赤\n"));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(utf8(found[0].message),
              "the key \"white\" is missing; it and the 277 keys behind it are not loaded");
}

TEST(VocabularyCheck, UnknownKeySuggestsTheClosest) {
    const std::vector<Diagnostic> found = foundInVocabulary(vocabularyWith(u"upshot_of=x\n"));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].suggestions.at(0), u"upshot_of1");
}

} // namespace
} // namespace tvml
