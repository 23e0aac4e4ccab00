// The slips that a writer makes in the Japanese example, one at a time: each is
// named, at its place, and nothing else is said.
#include <algorithm>

#include <gtest/gtest.h>

#include "diagnostics/checking.h"

namespace tvml {
namespace {

struct Slip {
    std::u16string_view line; // of the example
    std::u16string_view written;
    std::string_view told;       // lines count from that of the slip
    std::string_view suggestion; // the first
};

struct Example {
    std::u16string script = utf16(repositoryFile("examples/news_ja/programme.txt"));
    TestProgramme programme;

    Example() { programme.description = utf16(repositoryFile("examples/news_ja/description.xml")); }
};

// clang-format off
constexpr Slip kSlips[] = {
    {u"（セット：ニューススタジオ）", u"（セット：ニュースタジオ）",
     "1:6 S114 [ニュースタジオ]", "ニューススタジオ"},
    {u"（セット：ニューススタジオ）", u"（セット、ニューススタジオ）",
     "1:5 S105 [、]", "："},
    {u"（字幕オン）", u"（字幕ＯＮ）",
     "1:2 S101 [字幕ＯＮ]", "字幕オン"},
    {u"ＢＧＭ：Sound\\theme.wav", u"ＢＧＭ　Sound\\theme.wav",
     "1:1 S117 [ＢＧＭ]", ""},
    {u"ＢＧＭ：Sound\\theme.wav", u"（ＢＧＭ：Sound\\theme.wav）",
     "1:1 S140 [（ＢＧＭ：Sound\\theme.wav）]", "ＢＧＭ：Sound\\theme.wav"},
    {u"ＢＧＭ：Sound\\theme.wav", u"ＢＧＭ：",
     "1:1 S137 [ＢＧＭ]", ""},
    {u"タイトル：夕方のニュース", u"タイトル　夕方のニュース",
     "1:1 S117 [タイトル]; 2:1 S134 [サブタイトル：港町から、きょうの話題]", ""},
    {u"タイトル：夕方のニュース", u"タイトル：夕方のニュース\n",
     "3:1 S135 [サブタイトル：港町から、きょうの話題]", ""},
    {u"サブタイトル：港町から、きょうの話題", u"サブタイル：港町から、きょうの話題",
     "0:1 S134 [タイトル：夕方のニュース]; 1:1 S118 [サブタイル]", "サブタイトル"},
    {u"サブタイトル：港町から、きょうの話題", u"",
     "0:1 S134 [タイトル：夕方のニュース]", ""},
    {u"Ａ：（キャラクター：浴衣）", u"Ａ：（キャラクター：ゆかた）",
     "1:11 S115 [ゆかた]", ""},
    {u"Ａ：（キャラクター：浴衣）", u"Ｂ：（キャラクター：浴衣）",
     "1:11 S115 [浴衣]", ""},
    {u"Ａ：（声質：日本語若い女）", u"Ａ：（声質：日本語若い女性）",
     "1:7 S116 [日本語若い女性]", "日本語若い女"},
    {u"（ツーショット、普通の速さ）", u"（ツーショト、普通の速さ）",
     "1:2 S101 [ツーショト]", "ツーショット"},
    {u"（ツーショット、普通の速さ）", u"（アップショット、普通の速さ）",
     "1:2 S112 [アップショット、普通の速さ]", "Ａのアップショット、普通の速さ"},
    {u"（Ａのアップショット、遅く）", u"（Ｃのアップショット、遅く）",
     "1:2 S109 [Ｃ]", ""},
    {u"（Ａのアップショット、遅く）", u"（田中のアップショット、遅く）",
     "1:2 S101 [田中のアップショット]", "Ａのアップショット"},
    {u"（Ａのアップショット、遅く）", u"（Ａのバストショット、遅く）",
     "1:2 S128 [Ａのバストショット、遅く]", "Ａのアップショット、遅く"},
    {u"（Ａのアップショット、遅く）", u"Ａ：（アップショット、遅く）",
     "1:1 S129 [Ａ：（アップショット、遅く）]", "（アップショット、遅く）"},
    {u"（ＢＡのツーショット）", u"（ＢＢのツーショット）",
     "1:2 S131 [ＢＢ]", "ＢＡ"},
    {u"Ａ：（お辞儀、普通に、同時）", u"Ａ：（お時儀、普通に、同時）",
     "1:4 S101 [お時儀]", "お辞儀"},
    {u"Ａ：（お辞儀、普通に、同時）", u"Ａ：（お辞儀、ふつうに、同時）",
     "1:8 S102 [ふつうに]", "普通に"},
    {u"Ａ：（お辞儀、普通に、同時）", u"Ａ：（お辞儀、普通に、）",
     "1:4 S103 [お辞儀、普通に、]", "お辞儀、普通に"},
    {u"Ａ：（お辞儀、普通に、同時）", u"Ａ：（お辞儀普通に、同時）",
     "1:4 S104 [お辞儀普通に、同時]", "お辞儀、普通に、同時"},
    {u"Ａ：（お辞儀、普通に、同時）", u"Ａ：（普通にお辞儀）",
     "1:4 S145 [普通にお辞儀]", "お辞儀、普通に"},
    {u"Ａ：（お辞儀、普通に、同時）", u"Ａ：（お辞儀、普通に、同時",
     "1:3 S124 [（]", ""},
    {u"Ａ：（お辞儀、普通に、同時）", u"Ａ：お辞儀、普通に、同時）",
     "1:13 S123 [）]", ""},
    {u"Ａ：（お辞儀、普通に、同時）", u"Ａ：【お辞儀、普通に、同時】",
     "1:3 S125 [【お辞儀、普通に、同時】]", ""},
    {u"Ａ：（お辞儀、普通に、同時）", u"Ａ（お辞儀、普通に、同時）",
     "1:1 S119 [Ａ]", ""},
    {u"Ａ：（お辞儀、普通に、同時）", u"（Ａ：お辞儀、普通に、同時）",
     "1:1 S141 [（Ａ：お辞儀、普通に、同時）]", "Ａ：（お辞儀、普通に、同時）"},
    {u"Ａ：みなさん、こんばんは。夕方のニュースの時間です。", u"Ａ：（お辞儀）みなさん、こんばんは。",
     "1:3 S126 [（お辞儀）]", ""},
    {u"Ａ：みなさん、こんばんは。夕方のニュースの時間です。", u"Ａ、みなさん、こんばんは。",
     "1:1 S119 [Ａ]", ""},
    {u"Ａ：みなさん、こんばんは。夕方のニュースの時間です。", u"Ｃ：みなさん、こんばんは。",
     "1:1 S110 [Ｃ]", ""},
    {u"Ａ：みなさん、こんばんは。夕方のニュースの時間です。", u"田中：みなさん、こんばんは。",
     "1:1 S120 [田中]", ""},
    {u"Ａ：みなさん、こんばんは。夕方のニュースの時間です。", u"Ａ：",
     "1:1 S136 [Ａ：]", ""},
    {u"Ａ：今日は浴衣の田中です。三つの話題をお伝えします。（字幕：港祭り・停電訓練・健康体操）", u"Ａ：今日は浴衣の田中です。（字募：田中）",
     "1:14 S122 [（字募：田中）]", "（字幕：田中）"},
    {u"Ａ：今日は浴衣の田中です。三つの話題をお伝えします。（字幕：港祭り・停電訓練・健康体操）", u"Ａ：今日は浴衣の田中です。（字幕　田中）",
     "1:14 S122 [（字幕　田中）]", "（字幕：田中）"},
    {u"Ａ：今日は浴衣の田中です。三つの話題をお伝えします。（字幕：港祭り・停電訓練・健康体操）", u"Ａ：今日は浴衣の田中です。（字幕：田中",
     "1:14 S124 [（]", ""},
    {u"Ｂ：（Ａを見る、とても遅く）", u"Ｂ：（Ｃを見る、とても遅く）",
     "1:4 S109 [Ｃ]", ""},
    {u"Ｂ：（Ａを見る、とても遅く）", u"Ｂ：（Ｂを見る、とても遅く）",
     "1:4 S111 [Ｂ]", "Ａ"},
    {u"Ｂ：（Ａを見る、とても遅く）", u"Ｂ：（田中を見る、とても遅く）",
     "1:4 S101 [田中を見る]", "Ａを見る"},
    {u"Ｂ：今夜が最後ですからね。急がないと。（同時）", u"Ｂ：今夜が最後ですからね。（同時に）",
     "1:14 S122 [（同時に）]", "（同時）"},
    {u"スーパー：お祭りは今夜まで（赤）", u"スーパー：お祭りは今夜まで（赤色）",
     "1:15 S121 [赤色]", "赤"},
    {u"スーパー：お祭りは今夜まで（赤）", u"Ａ：スーパー：お祭りは今夜まで",
     "1:3 S142 [スーパー]", ""},
    {u"サブイメージ：Image\\stalls.jpg", u"サブイメージ；Image\\stalls.jpg",
     "1:1 S117 [サブイメージ]", ""},
    {u"サブイメージ：Image\\stalls.jpg", u"子イメージ：Image\\stalls.jpg",
     "1:1 S120 [子イメージ]", "サブイメージ"},
    {u"背景イメージ：Image\\harbour.jpg", u"",
     "20:2 S112 [背景イメージを消す]", ""},
    {u"右側スーパー：午後六時の岸壁", u"右スーパー：午後六時の岸壁",
     "1:1 S118 [右スーパー]; 23:2 S112 [右側スーパーオフ]", "右側スーパー"},
    {u"速報：花火大会は午後八時に終了しました", u"速報　花火大会は午後八時に終了しました",
     "1:1 S117 [速報]", ""},
    {u"速報：花火大会は午後八時に終了しました", u"緊急速報：花火大会は午後八時に終了しました",
     "1:1 S120 [緊急速報]", "速報"},
    {u"Ａ：（サウンドファイル：Voice\\suzuki.wav、少し、順次）", u"Ａ：（サウンドファイル：Voice\\suzuki.wav（字幕：鈴木さん））",
     "1:4 S127 [サウンドファイル：Voice\\suzuki.wav]", ""},
    {u"Ａ：（サウンドファイル：Voice\\suzuki.wav、少し、順次）", u"Ａ：（サウンドファイル　Voice\\suzuki.wav）",
     "1:13 S105 [V]", "：V"},
    {u"（画像オフ）", u"（画像を消す）",
     "1:2 S101 [画像を消す]", "画像オフ"},
    {u"（画像オフ）", u"Ａ：（画像オフ）",
     "1:1 S129 [Ａ：（画像オフ）]", "（画像オフ）"},
    {u"（画像オフ）", u"（画像オフ）\n（画像オフ）",
     "2:2 S112 [画像オフ]", ""},
    {u"（２．５秒待つ）", u"（二．五秒待つ）",
     "1:2 S106 [二．五]", "２．５"},
    {u"（２．５秒待つ）", u"（待つ：２．５秒）",
     "1:2 S101 [待つ：２．５秒]", "２．５秒待つ"},
    {u"Ｂ：（マイクを差し出す、遅く）", u"Ｂ：（マイクをさし出す、遅く）",
     "1:4 S101 [マイクをさし出す]", "マイクを差し出す"},
    {u"Ｂ：（とてもゆっくりしゃべる）", u"Ｂ：（とてもゆっくり話す）",
     "1:4 S101 [とてもゆっくり話す]", "とてもゆっくりしゃべる"},
    {u"（ロングショット、速く）", u"（ロングショット。速く）",
     "1:2 S101 [ロングショット。速く]", "ロングショット、速く"},
    {u"それでは、また明日の夕方にお会いしましょう。", u"それでは、また明日の夕方から夜にかけて市内のあちらこちらで行われる予定の花火大会とその会場の周りの交通規制についてくわしくお伝えします。",
     "1:56 S133 [いてくわしくお伝]", ""},
};
// clang-format on

// "1:4 S101 [text]", with the slip's line as the first.
std::string toldFrom(std::int32_t line, const std::vector<Diagnostic>& found,
                     std::u16string_view script) {
    std::string told;
    for (const Diagnostic& one : found) {
        const std::string placed = summary({one}, script);
        told += (told.empty() ? "" : "; ") + std::to_string(one.line - line + 1) +
                placed.substr(placed.find(':'));
    }
    return told;
}

TEST(Slips, AreNamedAtTheirPlace) {
    const Example example;
    for (const Slip& slip : kSlips) {
        std::u16string script = u"\n" + example.script;
        const std::size_t at = script.find((u"\n" + std::u16string(slip.line)).append(u"\n")) + 1;
        ASSERT_NE(at, 0U) << utf8(slip.line);
        script.replace(at, slip.line.size(), slip.written);
        const auto line = static_cast<std::int32_t>(
            std::count(script.begin(), script.begin() + static_cast<std::ptrdiff_t>(at), u'\n'));
        const std::vector<Diagnostic> found = foundInScript(script, example.programme);
        EXPECT_EQ(toldFrom(line + 1, found, script), slip.told) << utf8(slip.written);
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
