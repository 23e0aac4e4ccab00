// Vocabularies: entries that stand in place of the shipped ones, and what is
// said about them. Their lines follow the shipped ones.
#include <gtest/gtest.h>

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
