// Script lines and what is said about them, beyond a writer's single slips.
#include <gtest/gtest.h>

#include "diagnostics/checking.h"
#include "diagnostics/suggestions.h"

namespace tvml {
namespace {

struct Row {
    std::u16string_view script;
    std::string_view told;
    std::string_view suggestions; // of the first diagnostic
};

void expectTold(const Row& row, const TestProgramme& programme = {}) {
    const std::vector<Diagnostic> found = foundInScript(row.script, programme);
    EXPECT_EQ(summary(found, row.script), row.told) << utf8(row.script);
    std::string suggestions;
    for (const std::u16string& one :
         found.empty() ? std::vector<std::u16string>{} : found[0].suggestions) {
        suggestions += (suggestions.empty() ? "" : ", ") + utf8(one);
    }
    EXPECT_EQ(suggestions, row.suggestions) << utf8(row.script);
}

TEST(ScriptCheck, Commands) {
    constexpr Row kRows[] = {
        {u"A: (bwo)\n", "1:5 S101 [bwo]", "bow"},
        {u"A: (Bow)\n", "1:5 S101 [Bow]", "bow"},
        {u"A: (wlak 3 steps)\n", "1:5 S101 [wlak 3 steps]", "walk 3 steps"},
        {u"(upshot fo A)\n", "1:2 S101 [upshot fo A]", "upshot of A"},
        {u"A: (speak slowly)\n", "1:5 S101 [speak slowly]", "speak slow"},
        {u"Ａ：（深くお辞儀する）\n", "1:4 S145 [深くお辞儀する]", "お辞儀、たくさん"},
        {u"（ばんさい）\n", "1:2 S101 [ばんさい]", "ばんざい"},
        {u"（全く違うことば）\n", "1:2 S101 [全く違うことば]", ""},
        {u"（）\n", "1:2 S101 []", ""},
        {u"A: (bow slowly)\n", "1:5 S104 [bow slowly]", "bow, slow"},
        {u"Ａ：（とても速くお辞儀）\n", "1:4 S145 [とても速くお辞儀]", "お辞儀、とても速く"},
        // Two slips of one line are told both, one slip once.
        {u"Ａ：（お時儀、ゆっくり）\n", "1:4 S101 [お時儀]; 1:8 S102 [ゆっくり]", "お辞儀"},
        {u"（夜、ゆっくり）\n", "1:4 S102 [ゆっくり]", "遅く"},
        {u"Ａ：（うん、、速く）\n", "1:4 S103 [うん、、速く]", "うん、速く"},
        {u"A: (walk 3 paces)\n", "1:5 S107 [walk 3 paces]", "walk 3 steps"},
        {u"A: (turn left)\n", "1:10 S106 [left]", ""},
        {u"(wait -3 seconds)\n", "1:2 S106 [wait -3 seconds]", "wait 3 seconds"},
        {u"(twoshot of AD, slow)\n", "1:14 S109 [D]", ""},
        {u"A: (look at D)\n", "1:13 S109 [D]; 1:13 S111 [D]", ""},
        {u"A: (look at fellow)\n", "1:5 S112 [look at fellow]", "look at B"},
        {u"（ツーショット、遅く）\n", "1:2 S112 [ツーショット、遅く]", "ＡＢのツーショット、遅く"},
        {u"Ｃ：（座る）\nＣ：はい。\n", "1:1 S113 [Ｃ：（座る）]", ""},
        {u"Ｄ：（お辞儀）\n", "1:1 S110 [Ｄ]", ""},
        {u"（セット：）\n", "1:6 S114 []", ""},
        {u"Ａ：（サウンドファイル：a、b.wav）\n", "1:15 S102 [b.wav]", ""},
        {u"\t Ａ ： （ お辞義 、遅く ）　\n", "1:9 S101 [お辞義 、遅く]", "お辞儀、遅く"},
        // Right words in the wrong place.
        {u"（速報：花火）\n", "1:1 S140 [（速報：花火）]", "速報：花火"},
        {u"Ａ：（ sub image: a.jpg）\n", "1:5 S101 [sub image]", ""},
        {u"(b : bow, slow)\n", "1:1 S141 [(b : bow, slow)]", "b:(bow, slow)"},
        {u"(b: see you)\n", "1:2 S101 [b]", ""},
        {u"（待つ：３秒）\n", "1:2 S101 [待つ：３秒]", "３秒待つ"},
        {u"Ａ：（banzai: slow）\n", "1:4 S101 [banzai: slow]", "banzai, slow"},
        {u"（敬礼、遅く）\n", "1:2 S139 [敬礼]", ""},
        {u"Ｃ：（salute）\n", "1:4 S139 [salute]", ""},
        {u"A: (look at screen)\n", "1:5 S101 [look at screen]", "look at picture"},
    };
    for (const Row& row : kRows) {
        expectTold(row);
    }
}

TEST(ScriptCheck, TalkAndTags) {
    constexpr Row kRows[] = {
        {u"Ａ：ありがとう（お辞儀）\n", "1:8 S126 [（お辞儀）]", ""},
        {u"Ａ：こんにちは（同時に）\n", "1:8 S122 [（同時に）]", "（同時）"},
        {u"A: hello (Caption: x)\n", "1:10 S122 [(Caption: x)]", "(caption: x)"},
        {u"A: say \"hi\" (captoin: x)\n", "1:13 S122 [(captoin: x)]", "(caption: x)"},
        {u"Title: news\n", "1:1 S118 [Title]", "title"},
        {u"たいとる：ニュース\n", "1:1 S118 [たいとる]", "タイトル"},
        {u"flsah: news\n", "1:1 S118 [flsah]", "flash"},
        {u"B hello\n", "1:1 S119 [B ]", "B:"},
        {u"super:hello (RED)\n", "1:14 S121 [RED]", "red"},
        {u"Ａ：（お辞儀）。\n", "1:3 S126 [（お辞儀）。]", "（お辞儀）"},
        {u"Ａ：（うん）はい（字幕：はい）\n", "1:3 S126 [（うん）]", ""},
        {u"タイトル：a\nタイトル：b\nサブタイトル：c\n", "1:1 S134 [タイトル：a]", ""},
        {u"サブタイトル：a\nタイトル：b\n", "", ""},
        {u"B: flash : fire\n", "1:1 S142 [B: flash : fire]", "flash : fire"},
        {u"title = News\n", "1:1 S117 [title = ]", "title: "},
        {u"(twoshot of A)\n", "1:13 S146 [A]", "AB"},
        {u"A. Good evening.\n", "1:1 S119 [A.]", "A:"},
        {u"B - Good evening.\n", "1:1 S119 [B -]", "B:"},
        {u"A (happy): Good evening.\n", "1:1 S119 [A (happy):]", "A:"},
        {u"A and B: Good evening.\n", "1:1 S155 [A and B:]", ""},
        {u"[A enters]\n", "1:1 S151 [[A enters]]", ""},
        {u"KATE\nGood evening.\n", "1:1 S166 [KATE]", ""},
        {u"A. Smith is here. B. J. Thomas, too.\n", "1:1 S119 [A.]", "A:"}, // a note
        {u"A. B. Smith is here.\n", "", ""},
        {u"A - that is, nobody.\n", "", ""},
        {u"image: a.jpg\n", "1:1 S120 [image]", "subimage"},
    };
    for (const Row& row : kRows) {
        expectTold(row);
    }
}

TEST(ScriptCheck, TextsAsOtherSystemsStoreThem) {
    constexpr Row kRows[] = {
        {u"A: か\u3099\n", "1:4 S173 [か\u3099]", "が"},
        {u"A: ハ\u309A\n", "1:4 S173 [ハ\u309A]", "パ"},
        {u"A: ウ\u3099\n", "1:4 S173 [ウ\u3099]", "ヴ"},
        {u"A: ま\u3099\n", "1:4 S173 [ま\u3099]", ""}, // there is no such character
        {u"A: one\nA: て\u3099か\u3099\nA: は\u3099\n", "2:4 S173 [て\u3099]", "で"},
        {u"A: one\rA: two\r", "1:7 F410 []", ""},
        {u"A: one\r\n", "", ""},
    };
    for (const Row& row : kRows) {
        expectTold(row);
    }
}

TEST(ScriptCheck, GoodSpeechIsLeftAlone) {
    constexpr std::u16string_view kGood = u"Ａ：（笑）そうですね。\n"
                                          u"Ａ：あすの最高気温は三十度（昼）です。\n"
                                          u"Ａ：明日は晴れ（夜）\n"
                                          u"Ａ：セットの話（セットの話です）\n"
                                          u"Ａ：「はい。」\n"
                                          u"Ａ：「こんにちは」と言う（笑）（字幕：ご挨拶）\n"
                                          u"Ａ：（苦笑）はい（字幕：はい）\n"
                                          u"Ａさんは元気です。\n"
                                          u"A hello from nobody.\n"
                                          u"I think so.\n"
                                          u"時刻は10:30です。\n"
                                          u"see http://example.org\n"
                                          u"タイトルは何ですか。\n"
                                          u"titles are fine.\n"
                                          u"スーパー：お祭り（土）\n"
                                          u"スーパー：開店（税込）\n"
                                          u"Ａ：タイトルは、こうです：夕方\n"
                                          u"Ａ：スーパーで十時：買い物\n"
                                          u"Ａ：一、二（三）、四（五）。\n"
                                          u"スーパー、閉店です。\n"
                                          u"タイトル、それは番組の顔です。\n"
                                          u"Ｂ－１グランプリが始まりました。\n"
                                          u"Ａ、Ｂ、Ｃの三つから選んでください。\n"
                                          u"Ａ（優）は五人でした。\n"
                                          u"title holders arrive\n"
                                          u"flash floods are expected\n"
                                          u"A: We won :-)\n"
                                          u"A: Oh no :(\n"
                                          u"彼は「こんにちは」と言いました。\n"
                                          u"Ａ：お辞儀をしてから、座ってください。\n"
                                          u"第一回の放送は、あすの夜です。\n"
                                          u"(offline)\n(online)\n"
                                          u"(wait)\n";
    EXPECT_EQ(checkedScript(kGood), "");
}

// Texts for other readers, told once for each kind, and things in wrong places.
TEST(ScriptCheck, OtherLayouts) {
    constexpr Row kRows[] = {
        {u"Ａお辞儀\n", "1:1 S150 [Ａお辞儀]", "Ａ：（お辞儀）"},
        {u"ロングショット、遅く\n", "1:1 S150 [ロングショット、遅く]", "（ロングショット、遅く）"},
        {u"田中「はい。」\n佐藤「ええ。」\n田中（笑って）「そう。」\n", "1:1 S166 [田中「]", ""},
        {u"田中　はい。\n佐藤　ええ。\n", "1:1 S166 [田中　]", ""},
        {u"TANAKA. Good evening.\n", "1:1 S166 [TANAKA.]", ""},
        {u"田中：はい\n佐藤：ええ\n", "1:1 S120 [田中]", ""},
        {u"# 第三稿\n// ここはカット\n", "1:1 S151 [# 第三稿]", ""},
        {u"〇　港の岸壁・朝\nINT. HARBOUR - DAY\n", "1:1 S152 [〇　港の岸壁・朝]", ""},
        {u"Ｂ「こんにちは。」\n", "1:1 S119 [Ｂ「]", "Ｂ："},
        {u"（Ｂ）こんにちは。\n", "1:1 S119 [（Ｂ）]", "Ｂ："},
        {u"Ａ／Ｂ：さようなら。\n", "1:1 S155 [Ａ／Ｂ：]", ""},
        {u"\u0410：こんにちは。\n", "1:1 S156 [\u0410：]", "Ａ："},
        {u"\uFEFF\u200BＢ：こんにちは。\n", "1:1 S157 [\uFEFF\u200BＢ：]", "Ｂ："},
        {u"> Ａ：こんにちは。\n", "1:1 S171 [> Ａ：]", "Ａ："},
        {u"Ａ：こんにちは（字幕：ご挨拶）。\n", "1:3 S158 [こんにちは（字幕：ご挨拶）。]",
         "こんにちは。（字幕：ご挨拶）"},
        {u"Ａ：こんにちは。（同時）（字幕：ご挨拶）\n", "1:9 S158 [（同時）（字幕：ご挨拶）]",
         "（字幕：ご挨拶）（同時）"},
        {u"Ａ：こんにちは。【字幕：ご挨拶】\n", "1:9 S125 [【字幕：ご挨拶】]", "（字幕：ご挨拶）"},
        {u"A: *bow*\n", "1:4 S125 [*bow*]", "(bow)"},
        {u"スーパー：（赤）生中継\n", "1:6 S164 [（赤）生中継]", "生中継（赤）"},
        {u"スーパー：生中継（赤）。\n", "1:6 S164 [生中継（赤）。]", "生中継（赤）"},
        {u"スーパー：生中継（赤\n", "1:6 S164 [生中継（赤]", "生中継（赤）"},
        {u"サブイメージ：「Image\\map.png」\n", "1:8 S162 [「Image\\map.png」]", "Image\\map.png"},
    };
    for (const Row& row : kRows) {
        expectTold(row);
    }
}

// What messages say where two words could be exchanged without another place or
// code.
TEST(ScriptCheck, Messages) {
    const struct {
        std::u16string_view script;
        std::string_view message;
    } rows[] = {
        {u"タイトル：夕方\n", "the title card has no subtitle"},
        {u"サブタイトル：港町\n", "the title card has no title"},
        {u"タイトル：夕方\n\nサブタイトル：港町\n",
         "the subtitle does not follow its title of line 1 directly; each becomes a card of its "
         "own"},
        {u"サブタイトル：港町\n\nタイトル：夕方\n",
         "the title does not follow its subtitle of line 1 directly; each becomes a card of its "
         "own"},
        {u"Ｂ：（キャラクター：着物）\n",
         "character B has no model \"着物\" (there is: 背広); the model does not change"},
        {u"Ａ：（敬礼）\n", "\"敬礼\" is a pose of B, not of A; the line writes nothing"},
        {u"（オープニングオフ、同時）\n",
         "\"、同時\" cannot stand behind this command; it is not carried out"},
        {u"（Ｄのアップショット）\n",
         "\"Ｄ\" is no character of this programme, which has A to C; A is used instead"},
    };
    for (const auto& row : rows) {
        const std::vector<Diagnostic> found = foundInScript(row.script);
        ASSERT_EQ(found.size(), 1U) << utf8(row.script);
        EXPECT_EQ(utf8(found[0].message), row.message);
    }
}

TEST(ScriptCheck, AtMostThreeSuggestionsTheClosestFirst) {
    ClosestNames closest(u"abcdef");
    for (const std::u16string_view name : {u"abcdxx", u"abcdex", u"abxdef", u"xbcdef", u"abcdey"}) {
        closest.offer(name);
    }
    EXPECT_EQ(closest.take(), (std::vector<std::u16string>{u"abcdex", u"abxdef", u"xbcdef"}));
}

// A tag of the description is no marker, whatever its English name.
TEST(ScriptCheck, DeclaredTagsNamedLikeMarkers) {
    TestProgramme programme;
    programme.description = u"<staging><tag japanesename='速報' englishname='subimage'>x</tag>"
                            u"<tag japanesename='題' englishname='super'>y</tag></staging>";
    EXPECT_EQ(checkedScript(u"速報：\n題：開店（紅）\n", programme), "");
    EXPECT_EQ(checkedScript(u"サブイメージ：\n", programme), "1:1 S137 [サブイメージ]");
}

TEST(MediaNames, AreComparedAsThePlayersSystemDoes) {
    const MediaNames media({u"map.png", u"Sound/Theme.wav", u"絵/港.jpg"});
    struct {
        std::u16string_view name;
        bool there;
        std::vector<std::u16string> meant;
    } const rows[] = {
        {u"MAP.png", true, {}},
        {u".\\sound\\theme.WAV", true, {}},
        {u"絵\\港.jpg", true, {}},
        {u"C:\\anything.png", true, {}},
        {u"\\\\server\\x.png", true, {}},
        {u"theme.wav", false, {u"Sound\\Theme.wav"}},
        {u"mpa.png", false, {u"map.png"}},
        {u"絵￥港.jpg", false, {u"絵\\港.jpg"}},
        {u"quite another thing.gif", false, {}},
        {u"", false, {}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(media.holds(row.name), row.there) << utf8(row.name);
        if (!row.there) {
            EXPECT_EQ(media.closestTo(row.name), row.meant) << utf8(row.name);
        }
    }
}

TEST(ScriptCheck, PlayedLines) {
    constexpr std::u16string_view kScript = u"Ａ：はい。\nＢ：はい。\n";
    struct {
        std::int32_t from;
        std::int32_t to;
        std::string_view told;
    } const rows[] = {
        {0, 0, ""},
        {1, 2, ""},
        {2, 3, ""},
        {3, 2, "0:0 F406; 2:1 F404 [Ｂ：はい。]"},
        {1, 4, "2:1 F404 [Ｂ：はい。]"},
        {-2, 0, "2:1 F404 [Ｂ：はい。]"},
        {kNoLine, kNoLine, ""},
    };
    for (const auto& row : rows) {
        TestProgramme programme;
        programme.playFrom = row.from;
        programme.playTo = row.to;
        EXPECT_EQ(checkedScript(kScript, programme), row.told) << row.from << " to " << row.to;
    }
}

// A script of nothing but mistakes and hostile lines ends in good time, with
// every range inside its line.
TEST(ScriptCheck, BadTextsAreBounded) {
    std::u16string script;
    for (const std::u16string_view line :
         {u"（", u"）", u"（（（（", u"（）", u"Ａ：", u"：", u"（：", u"\"（\"", u"（、）"}) {
        script.append(line).append(u"\n");
    }
    script.append(20000, u'（').append(u"\n（").append(20000, u'あ').append(u"）\n");
    for (int i = 0; i < 3000; ++i) {
        script.append(u"（お辞義、早く）\n");
    }
    EXPECT_EQ(checkedScript(script).find("outside"), std::string::npos);
}

TEST(Suggestions, EditDistance) {
    struct {
        std::u16string_view a;
        std::u16string_view b;
        std::size_t limit;
        std::size_t distance;
    } const rows[] = {
        {u"", u"", 0, 0},         {u"bow", u"bow", 2, 0},    {u"bow", u"bwo", 2, 1},
        {u"bow", u"bo", 2, 1},    {u"bow", u"boww", 2, 1},   {u"bow", u"cow", 2, 1},
        {u"abcd", u"badc", 3, 2}, {u"bow", u"nodnod", 2, 3}, {u"abc", u"xyz", 1, 2},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(editDistance(row.a, row.b, row.limit), row.distance) << utf8(row.b);
        EXPECT_EQ(editDistance(row.b, row.a, row.limit), row.distance) << utf8(row.b);
    }
}

// Names that are missing are compared with those that are there only so often, that
// many of both do not cost their product. All of them are told all the same.
TEST(ScriptCheck, ManyMissingNamesAreNotComparedWithAllOthers) {
    constexpr std::size_t kSets = 3000;
    std::u16string sets;
    std::u16string script;
    for (std::size_t i = 0; i < kSets; ++i) {
        const std::u16string number = utf16(std::to_string(10'000 + i));
        sets.append(u"セット").append(number).append(u"::Set").append(number).append(u"::x.obj\n");
        script.append(u"(set: Sett").append(number).append(u")\n");
    }
    TestProgramme programme;
    programme.description.insert(programme.description.find(u"</staging>"),
                                 u"<set>" + sets + u"</set>");
    const std::vector<Diagnostic> found = foundInScript(script, programme);
    ASSERT_EQ(found.size(), kSets);
    EXPECT_FALSE(found.front().suggestions.empty());
    EXPECT_TRUE(found.back().suggestions.empty());
    const auto compared = static_cast<std::size_t>(std::ranges::count_if(
        found, [](const Diagnostic& each) { return !each.suggestions.empty(); }));
    EXPECT_LE(compared * 2 * kSets, 3U * 500'000U);
}

} // namespace
} // namespace tvml
