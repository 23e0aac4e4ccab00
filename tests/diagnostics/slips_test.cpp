// A good programme, and the slips that a writer makes in it, one at a time: each
// is named, at its place, and nothing else is said.
#include <array>

#include <gtest/gtest.h>

#include "diagnostics/checking.h"

namespace tvml {
namespace {

constexpr std::array<std::u16string_view, 20> kProgramme{
    u"（セット：ニューススタジオ）",                                     // 1
    u"（夜）",                                                           // 2
    u"ＢＧＭ：Sound\\theme.wav",                                         // 3
    u"タイトル：夕方のニュース",                                         // 4
    u"サブタイトル：港町から、きょうの話題",                             // 5
    u"",                                                                 // 6
    u"Ａ：（声質：日本語若い女）",                                       // 7
    u"（ＡＢのツーショット、普通の速さ）",                               // 8
    u"Ａ：（お辞儀、普通に、同時）",                                     // 9
    u"Ａ：みなさん、こんばんは。夕方のニュースの時間です。",             // 10
    u"Ｂ：こんばんは。佐藤です。（字幕：佐藤）",                         // 11
    u"Ｂ：（Ａを見る）",                                                 // 12
    u"サブイメージ：Image\\fireworks.jpg",                               // 13
    u"Ａ：（画像を見る、速く）",                                         // 14
    u"Ａ：（３歩歩く）",                                                 // 15
    u"スーパー：お祭りは今夜まで（赤）",                                 // 16
    u"速報：花火大会は終了しました",                                     // 17
    u"（画像オフ）",                                                     // 18
    u"（Ｂのアップショット、遅く）",                                     // 19
    u"Ｂ：「元気を出して。」と、みんなが言っていました（笑）。（同時）", // 20
};

struct Slip {
    std::size_t line;
    std::u16string_view written;
    std::string_view told;
    std::string_view suggestion; // the first
};

std::u16string programmeWith(std::size_t line, std::u16string_view written) {
    std::u16string script;
    for (std::size_t i = 0; i < kProgramme.size(); ++i) {
        script.append(i + 1 == line ? written : kProgramme[i]).append(u"\n");
    }
    return script;
}

// clang-format off
constexpr Slip kSlips[] = {
    {1,  u"（セット：ニュースタジオ）",           "1:6 S114 [ニュースタジオ]",      "ニューススタジオ"},
    {1,  u"（セット、ニューススタジオ）",         "1:5 S105 [、]",                  ""},
    {4,  u"タイトル　夕方のニュース",             "4:1 S117 [タイトル]; 5:1 S134 [サブタイトル：港町から、きょうの話題]", ""},
    {5,  u"サブタイル：港町から、きょうの話題",   "4:1 S134 [タイトル：夕方のニュース]; 5:1 S118 [サブタイル]", "サブタイトル"},
    {4,  u"タイトル：夕方のニュース\n",           "6:1 S135 [サブタイトル：港町から、きょうの話題]", ""},
    {7,  u"Ａ：（声質：日本語若い女性）",         "7:7 S116 [日本語若い女性]",      "日本語若い女"},
    {8,  u"（ＡＢのツーショト、普通の速さ）",     "8:2 S101 [ＡＢのツーショト]",    "ＡＢのツーショット"},
    {8,  u"（ＡＤのツーショット、普通の速さ）",   "8:3 S109 [Ｄ]",                  ""},
    {9,  u"Ａ：（お時儀、普通に、同時）",         "9:4 S101 [お時儀]",              "お辞儀"},
    {9,  u"Ａ：（お辞儀、ふつうに、同時）",       "9:8 S102 [ふつうに]",            ""},
    {9,  u"Ａ：（お辞儀普通に、同時）",           "9:7 S104 [普通に]",              "お辞儀、普通に"},
    {9,  u"Ａ：（お辞儀、普通に、同時",           "9:3 S124 [（]",                  ""},
    {9,  u"Ａ：お辞儀、普通に、同時）",           "9:13 S123 [）]",                 ""},
    {9,  u"Ａ：【お辞儀】",                       "9:3 S125 [【お辞儀】]",          ""},
    {9,  u"Ａ（お辞儀、普通に、同時）",           "9:1 S119 [Ａ]",                  ""},
    {10, u"Ａ：（お辞儀）みなさん、こんばんは。", "10:3 S126 [（お辞儀）]",         ""},
    {10, u"Ａ、みなさん、こんばんは。",           "10:1 S119 [Ａ]",                 ""},
    {10, u"Ｃ：みなさん、こんばんは。",           "10:1 S113 [Ｃ：みなさん、こんばんは。]", ""},
    {10, u"佐藤：みなさん、こんばんは。",         "10:1 S120 [佐藤]",               ""},
    {11, u"Ｂ：こんばんは。佐藤です。（字募：佐藤）", "11:14 S122 [（字募：佐藤）]", "字幕："},
    {11, u"Ｂ：こんばんは。佐藤です。（字幕：佐藤", "11:14 S124 [（]",              ""},
    {12, u"Ｂ：（Ｄを見る、遅く）",               "12:4 S109 [Ｄ]",                 ""},
    {12, u"Ｂ：（Ｂを見る）",                     "12:4 S111 [Ｂ]",                 ""},
    {13, u"サブイメージ；Image\\fireworks.jpg",   "13:1 S117 [サブイメージ]; 14:4 S112 [画像を見る]; 18:2 S112 [画像オフ]", ""},
    {15, u"Ａ：（三歩歩く）",                     "15:4 S106 [三]",                 ""},
    {16, u"スーパー：お祭りは今夜まで（赤色）",   "16:15 S121 [赤色]",              "赤"},
    {17, u"速報　花火大会は終了しました",         "17:1 S117 [速報]",               ""},
    {18, u"Ａ：（画像オフ）",                     "18:4 S129 [画像オフ]",           ""},
    {18, u"（背景イメージを消す）",               "18:2 S112 [背景イメージを消す]", ""},
    {19, u"（Ｂのバストショット、遅く）",         "19:2 S128 [Ｂのバストショット]", ""},
    {19, u"（アップショット）",                   "19:2 S112 [アップショット]",     ""},
    {20, u"Ｂ：",                                 "20:1 S136 [Ｂ：]",               ""},
};
// clang-format on

TEST(Slips, GoodProgrammeIsGood) {
    EXPECT_EQ(checkedScript(programmeWith(0, u"")), "");
}

TEST(Slips, AreNamedAtTheirPlace) {
    for (const Slip& slip : kSlips) {
        const std::u16string script = programmeWith(slip.line, slip.written);
        const std::vector<Diagnostic> found = foundInScript(script);
        EXPECT_EQ(summary(found, script), slip.told) << utf8(slip.written);
        std::string suggestion;
        for (const Diagnostic& one : found) {
            if (suggestion.empty() && !one.suggestions.empty()) {
                suggestion = utf8(one.suggestions[0]);
            }
        }
        EXPECT_EQ(suggestion, slip.suggestion) << utf8(slip.written);
    }
}

} // namespace
} // namespace tvml
