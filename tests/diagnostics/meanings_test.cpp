// Each row of the table of meanings, put where its word may stand: the first
// suggestion in place of what the finding marks makes a line without problems.
#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "diagnostics/checking.h"
#include "diagnostics/element_names.h"
#include "diagnostics/meant_words.h"
#include "diagnostics/suggestions.h"
#include "reading/command_spec.h"

namespace tvml {
namespace {

// All that commands wait for is there.
constexpr std::u16string_view kShown =
    u"サブイメージ：a.jpg\n背景イメージ：b.jpg\n"
    u"右側イメージ：c.jpg\n左側イメージ：d.jpg\n"
    u"メインイメージ：e.jpg\n右側スーパー：右\n左側スーパー：左\n";

std::u16string replaced(std::u16string text, std::u16string_view what, std::u16string_view with) {
    for (std::size_t at = text.find(what); at != text.npos;
         at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
}

std::u16string filled(std::u16string_view word, std::u16string_view number) {
    const bool english = looksEnglish(word);
    std::u16string text = replaced(std::u16string(word), u"@@", english ? u"BA" : u"ＢＡ");
    const std::size_t first = text.find(u'@');
    if (first != text.npos && text.find(u'@', first + 1) != text.npos) {
        text.replace(first, 1, english ? u"A" : u"Ａ");
    }
    return replaced(replaced(text, u"@", english ? u"B" : u"Ｂ"), u"#", number);
}

bool isOfStudio(std::u16string_view means) {
    const std::u16string_view name = means.substr(0, means.find(u','));
    return std::ranges::find(kCommands, name, &CommandSpec::name)->taker == Taker::staging;
}

std::u16string line(std::u16string_view before, std::u16string_view text,
                    std::u16string_view after) {
    return std::u16string(before).append(text).append(after).append(u"\n");
}

// A line that has the row's word where a word of its sense stands.
std::u16string lineWith(const MeaningRow& row, std::u16string_view number) {
    const bool english = looksEnglish(row.word);
    const std::u16string word = filled(row.word, number);
    switch (row.sense) {
    case Sense::command:
        return isOfStudio(row.means)
                   ? line(english ? u"(" : u"（", word, english ? u")" : u"）")
                   : line(english ? u"A: (" : u"Ａ：（", word, english ? u")" : u"）");
    case Sense::adverb:
        return english ? line(u"A: (bow, ", word, u")") : line(u"Ａ：（お辞儀、", word, u"）");
    case Sense::marker:
    case Sense::speaker:
        return english ? line({}, word, u": text") : line({}, word, u"：text");
    case Sense::colour:
        return english ? line(u"super: x (", word, u")") : line(u"スーパー：あ（", word, u"）");
    case Sense::voice:
        return english ? line(u"A: (voicetype: ", word, u")") : line(u"Ａ：（声質：", word, u"）");
    case Sense::element:
    case Sense::nothing:
        break;
    }
    return english ? line(u"A: (", word, u")") : line(u"Ａ：（", word, u"）");
}

// A card of a title alone and an offline part without its end are told, and
// nothing is wrong with their lines.
bool matters(const Diagnostic& found) {
    const std::string_view code = found.code.row().code;
    return code != "S134" && code != "S169" && code != "S170";
}

TestProgramme studio() {
    TestProgramme programme;
    programme.description = u"<staging><numofchar>3</numofchar>";
    for (const std::u16string_view letter : {u"A", u"B", u"C"}) {
        programme.description.append(u"<model_for_char character='")
            .append(letter)
            .append(u"' japanesename='スーツ' englishname='suit' default='yes'>x</model_for_char>");
    }
    programme.description += u"<set>\nスタジオＡ::StudioA::a.obj\n</set></staging>";
    return programme;
}

std::u16string corrected(std::u16string script, const Diagnostic& found) {
    std::size_t start = 0;
    for (std::int32_t i = 1; i < found.line; ++i) {
        start = script.find(u'\n', start) + 1;
    }
    return script.replace(start + found.column - 1, found.units, found.suggestions.at(0));
}

void expectCorrection(const MeaningRow& row, const std::u16string& script,
                      const TestProgramme& programme) {
    const std::vector<Diagnostic> found = foundInScript(script, programme);
    const auto first = std::ranges::find_if(found, matters);
    const std::string shown = utf8(row.means) + " by " + utf8(script.substr(kShown.size()));
    ASSERT_NE(first, found.end()) << "needs no row: " << shown;
    ASSERT_FALSE(first->suggestions.empty()) << shown << first->code.row().code;
    const std::u16string better = corrected(script, *first);
    const std::vector<Diagnostic> left = foundInScript(better, programme);
    EXPECT_TRUE(std::ranges::none_of(left, matters))
        << shown << utf8(better.substr(kShown.size())) << summary(left, better);
}

TEST(Meanings, FirstSuggestionsConvert) {
    const TestProgramme programme = studio();
    for (const MeaningRow& row : kMeanings) {
        if (row.sense == Sense::element || row.sense == Sense::nothing) {
            continue;
        }
        for (const std::u16string_view number : {u"3", u"３", u"三", u"二十五"}) {
            const bool hasNumber = row.word.find(u'#') != row.word.npos;
            if (hasNumber || number == u"3") {
                expectCorrection(row, std::u16string(kShown) + lineWith(row, number), programme);
            }
        }
    }
}

TEST(Meanings, ElementsExist) {
    for (const MeaningRow& row : kMeanings) {
        if (row.sense != Sense::element) {
            continue;
        }
        EXPECT_NE(meaningOf(row.means).kind, ElementKind::unknown) << utf8(row.means);
        EXPECT_EQ(meaningOf(row.word).kind, ElementKind::unknown) << utf8(row.word);
        EXPECT_EQ(suggestedElements(row.word),
                  std::vector<std::u16string>{std::u16string(row.means)})
            << utf8(row.word);
    }
}

// What no command does is no slip of another command.
TEST(Meanings, OtherActionsGetNoGuess) {
    const TestProgramme programme = studio();
    for (const MeaningRow& row : kMeanings) {
        if (row.sense != Sense::nothing) {
            continue;
        }
        for (const std::u16string_view before : {u"Ａ：（", u"（"}) {
            const std::u16string script = line(before, row.word, u"）");
            for (const Diagnostic& found : foundInScript(script, programme)) {
                EXPECT_TRUE(found.suggestions.empty())
                    << utf8(script) << utf8(found.suggestions.at(0));
            }
        }
    }
}

TEST(Meanings, AWordHasOneRowOfASense) {
    std::set<std::pair<Sense, std::u16string>> seen;
    for (const MeaningRow& row : kMeanings) {
        EXPECT_TRUE(seen.emplace(row.sense, wordKey(row.word)).second) << utf8(row.word);
    }
}

struct SuggestionRow {
    std::u16string_view script;
    std::string_view suggestions; // of the first finding
};

void expectSuggestions(const SuggestionRow& row, const TestProgramme& programme) {
    const std::vector<Diagnostic> found = foundInScript(row.script, programme);
    ASSERT_FALSE(found.empty()) << utf8(row.script);
    std::string told;
    for (const std::u16string& one : found[0].suggestions) {
        told += (told.empty() ? "" : " / ") + utf8(one);
    }
    EXPECT_EQ(told, row.suggestions) << utf8(row.script);
}

TEST(Meanings, Suggestions) {
    constexpr SuggestionRow kRows[] = {
        // What the words mean.
        {u"Ａ：（手を振る）\n", "バイバイ"},
        {u"Ａ：（手を振って）\n", ""},
        {u"Ａ：（笑う）\n", "喜"},
        {u"A: (smile)\n", "happy"},
        {u"A: (Sit Down)\n", "sit"},
        {u"（暗転）\n", "明かりを消す"},
        {u"（Ｂのズーム）\n", "Ｂのアップショット"},
        {u"(close-up of B)\n", "upshot of B"},
        {u"（ズーム）\n", "Ａのアップショット"},
        {u"（二人）\n", "ＡＢのツーショット"},
        {u"Ａ：（お辞儀、早く）\n", "速く"},
        {u"Ａ：（お辞儀、ゆっくり）\n", "遅く"},
        {u"Ａ：（お辞儀、どうじ）\n", "同時"},
        {u"Ａ：（ゆっくり頷く）\n", "うん、遅く"},
        {u"A: (run)\n", "walk, fast"},
        {u"テロップ：あ\n", "スーパー"},
        {u"写真：a.jpg\n", "サブイメージ"},
        {u"ナレーター：はい\n", "Ａ"},
        {u"narrator: yes\n", "A"},
        {u"スーパー：あ（ピンク）\n", "赤"},
        {u"Ａ：（声質：英語の女の子）\n", "英語少女"},
        {u"A: (voicetype: female)\n", "woman"},
        // A character's commands are none of the studio.
        {u"Ａ：（暗転）\n", ""},
        // Numbers and units.
        {u"(wait two seconds)\n", "wait 2 seconds"},
        {u"(wait 3)\n", "wait 3 seconds"},
        {u"(wait 3 secs)\n", "wait 3 seconds"},
        {u"(pause for twenty-five seconds)\n", "wait 25 seconds"},
        {u"（二秒待つ）\n", "２秒待つ"},
        {u"（二．五秒待つ）\n", "２．５"},
        {u"（2秒間待つ）\n", "２秒待つ"},
        {u"Ａ：（三歩進む）\n", "３歩歩く"},
        {u"Ａ：（九十九歩進む）\n", "９９歩歩く"},
        // Width, case and kinds of kana.
        {u"Ａ：（ｶﾒﾗ目線）\n", "カメラ目線"},
        {u"Ａ：（おじぎ）\n", "お辞儀"},
        {u"Ａ：（おし\u3099き\u3099）\n", "お辞儀"},
        {u"Ａ：（ＢＯＷ）\n", "お辞儀"},
        {u"A: (BOW)\n", "bow"},
        {u"（ﾛﾝｸﾞｼｮｯﾄ）\n", "ロングショット"},
        // No word of another sense, however near.
        {u"Ａ：（すわる）\n", "座る"},
        {u"（ひる）\n", "昼"},
        {u"Ａ：（頷く）\n", "うん"},
        {u"(stop music)\n", ""},
        {u"Ａ：（歌る）\n", ""},
        {u"Ａ：（まねる）\n", ""},
        {u"A: (stop eating)\n", ""},
        {u"Ａ：（座わる）\n", "座る"},
        // A name stands where a letter does.
        {u"Ｂ：（田中を見る）\n", "Ａを見る"},
    };
    for (const SuggestionRow& row : kRows) {
        expectSuggestions(row, studio());
    }
}

// Poses come by what their names mean.
TEST(Meanings, Poses) {
    TestProgramme programme = studio();
    programme.description.replace(programme.description.find(u"<set>"), 0,
                                  u"<pose japanesename='お手ふり' englishname='wave'>x</pose>"
                                  u"<pose japanesename='ばんざい' englishname='banzai'>x</pose>");
    constexpr SuggestionRow kRows[] = {
        {u"Ａ：（手を振る）\n", "バイバイ / お手ふり"},
        {u"Ａ：（両手を上げる）\n", "ばんざい"},
        {u"A: (hooray)\n", "banzai"},
    };
    for (const SuggestionRow& row : kRows) {
        expectSuggestions(row, programme);
    }
}

// What is offered is the word of the loaded vocabulary.
TEST(Meanings, OtherVocabulary) {
    TestProgramme programme = studio();
    programme.vocabulary = vocabularyWith(u"happy=笑\nfast=急\n");
    expectSuggestions({u"Ａ：（喜ぶ）\n", "笑"}, programme);
    expectSuggestions({u"Ａ：（お辞儀、早く）\n", "急"}, programme);
}

// Suggestions end, findings do not.
TEST(Meanings, NoFindingIsLost) {
    constexpr int kLines = 3000;
    std::u16string script;
    for (int i = 0; i < kLines; ++i) {
        std::u16string name;
        for (const char digit : std::to_string(i)) {
            name += static_cast<char16_t>(u'亜' + (digit - '0'));
        }
        script.append(u"田").append(name).append(u"：はい\n（").append(name).append(u"語）\n");
    }
    script += u"サブタイル：あ\n";
    const std::vector<Diagnostic> found = foundInScript(script, studio());
    EXPECT_EQ(found.size(), kLines + 2U);
    EXPECT_EQ(found.back().code.row().code, "S118");
}

TEST(Meanings, Numbers) {
    constexpr struct {
        std::u16string_view written;
        std::u16string_view number;
    } kRows[] = {
        {u"3", u"3"},         {u"３．５", u"3.5"},    {u"三", u"3"},      {u"十", u"10"},
        {u"十二", u"12"},     {u"三十", u"30"},       {u"九十九", u"99"}, {u"二五", u"25"},
        {u"二・五", u"2.5"},  {u"〇・五", u"0.5"},    {u"007", u"7"},     {u"half", u"0.5"},
        {u"two", u"2"},       {u"Twenty-One", u"21"}, {u"－３", u"-3"},   {u"百", u""},
        {u"十十", u""},       {u"三点", u""},         {u"", u""},         {u"left", u""},
        {u"twenty-ten", u""},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(utf8(meantNumber(row.written)), utf8(row.number)) << utf8(row.written);
    }
}

} // namespace
} // namespace tvml
