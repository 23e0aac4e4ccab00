// Plays become scripts: what each layout gives, who gets which letter, and that all
// that is spoken in a play is spoken in its script.
#include "import/play_import.h"

#include <algorithm>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "diagnostics/diagnostics.h"
#include "support/studio.h"

namespace tvml::plays {
namespace {

// Every letter is a character with a model; one pose.
std::u16string wholeCast() {
    std::u16string text = u"<staging><numofchar>26</numofchar>";
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
        text.append(u"<model_for_char character='").push_back(letter);
        text.append(u"' japanesename='服' englishname='suit' default='yes'>m</model_for_char>");
    }
    return text + u"<pose japanesename='敬礼' englishname='salute'>salute $1</pose>"
                  u"<talk>talk $1 [$2] [$4]</talk></staging>";
}

class Importer {
public:
    explicit Importer(std::u16string description = wholeCast())
        : description_(std::move(description)) {
        platform_.files[u"/host/keyword.ini"] = iniText(shippedWords());
        files_.load();
    }

    ImportedPlay play(std::u16string_view text, std::vector<CastWish> wishes = {},
                      bool titles = false, std::optional<PlayFormat> format = {}) {
        return importPlay(
            {text, format, wishes, titles, description_, files_.words, files_.settings}, platform_);
    }

    std::vector<Diagnostic> problems(std::u16string_view script) {
        return checkScript({script, kNoLine, kNoLine, description_}, files_.words, files_.settings,
                           platform_);
    }

    std::u16string tvml(std::u16string_view script) {
        return ConversionRun(files_.words, files_.settings, platform_)
            .convert({script, kNoLine, kNoLine, description_})
            .text();
    }

private:
    platform::MemoryPlatform platform_;
    IniFiles files_{platform_};
    const std::u16string description_;
};

// The script up to its table of the cast, line feeds as bars.
std::string scriptOf(const ImportedPlay& play) {
    const std::size_t table = play.script.find(u"// ");
    const std::size_t line = play.script.rfind(u'\n', table);
    std::string text = shown(std::u16string_view(play.script).substr(0, line + 1));
    while (text.ends_with('|')) {
        text.pop_back();
    }
    return text;
}

std::string directionsOf(const ImportedPlay& play) {
    std::string all;
    for (const ToldDirection& told : play.directions) {
        all +=
            std::to_string(told.line) + (told.command.empty() ? "-" : "+") + shown(told.text) + ";";
    }
    return all;
}

// ---- layouts

struct LayoutRow {
    const char* what;
    PlayFormat format;
    std::u16string_view play;
    std::string script;
    std::string directions; // "+" for used, "-" for left out
};

TEST(Import, Layouts) {
    using enum PlayFormat;
    const LayoutRow rows[] = {
        {"quotes over several lines, with quotes in them", japanese,
         u"太郎「おはよう、\n　　『花子』と「次郎」」\n花子「うん」\n",
         "Ａ：おはよう、『花子』と「次郎」|Ｂ：うん", ""},
        {"a name with blanks and a direction, a colon in front of the quote", japanese,
         u"太　郎（笑って）「やあ」\n花子：「はい」\n", "Ａ：（喜）|Ａ：やあ|Ｂ：はい",
         "1+笑って;"},
        {"directions at both ends, in the middle, and what only looks like one", japanese,
         u"太郎「（敬礼）日本放送協会（ＮＨＫ）です。（独り言のように）ねえ（お辞儀）、どう（泣く）"
         u"」"
         u"\n",
         "Ａ：（敬礼）|Ａ：日本放送協会（ＮＨＫ）です。ねえ、|Ａ：（お辞儀）|Ａ：どう|Ａ：（哀）",
         "1+敬礼;1-独り言のように;1+お辞儀;1+泣く;"},
        {"verbs that go on to the next one, and people who only act in the next clause", japanese,
         u"太郎「（うなずいて）うん、（手を振りながら）また。（座って）ふう」\n（二人、去る）\n",
         "Ａ：（うん）|Ａ：うん、|Ａ：（バイバイ）|Ａ：また。|Ａ：（座る）|Ａ：ふう",
         "1+うなずいて;1+手を振りながら;1+座って;2-二人、去る;"},
        {"readings in every form", japanese,
         u"太郎「漢字《かんじ》と｜先生《せんせい》、彼女（かのじょ）が［＃「が」に傍点］」\n",
         "Ａ：漢字と先生、彼女が", ""},
        {"colons, and lines that go on", japanese,
         u"太郎：きょうはとてもいい天気なので、\n　　公園に行こう。\n花子：ええ。\n\n花子、座る。"
         u"\n",
         "Ａ：きょうはとてもいい天気なので、公園に行こう。|Ｂ：ええ。|Ｂ：（座る）",
         "5+花子、座る。;"},
        {"blanks, where a short line ends a speech", japanese,
         u"太郎　おはよう。\n　　　花子、座る。\n花子　きのうは遅くまで起きていたので\n　　　眠い。"
         u"\n",
         "Ａ：おはよう。|Ｂ：（座る）|Ｂ：きのうは遅くまで起きていたので眠い。", "2+花子、座る。;"},
        {"lines below the words, and with directions", japanese,
         u"ドラマ「海」\n祖父　　うん（うなずく）。\n　　　　（笑って）そう。\n真央　　はい。\n　　"
         u"　　ええ。\n"
         u"祖父Ｍ　いい子だ。\n",
         "Ａ：うん。|Ａ：（うん）|Ａ：（喜）|Ａ：そう。|Ｂ：はい。ええ。|Ｃ：いい子だ。", ""},
        {"a sentence with a quote in it is no speech", japanese,
         u"太郎「やあ」\n次郎は「さようなら」と書いた紙を見せる。\n花子「ああ」と手を振る。\n花子「"
         u"ええ」\n",
         "Ｂ：やあ|Ａ：ああ|Ａ：（バイバイ）|Ａ：ええ",
         "2-次郎は「さようなら」と書いた紙を見せる。;3+と手を振る。;"},
        {"a list of the cast is none either", japanese,
         u"登場人物\n太郎　高校生\n花子　大学生\n\n太郎　やあ。\n花子　ええ。\n",
         "Ａ：やあ。|Ｂ：ええ。", "1-登場人物;2-太郎　高校生;3-花子　大学生;"},
        {"a quote that is never closed ends with the speech", japanese,
         u"太郎「やあ\n花子「ええ」\n\n花子「はい」\n", "Ｂ：やあ|Ａ：ええ|Ａ：はい", ""},
        {"full stops and colons", english,
         u"ANNA. Good evening.\nWe are on the air.\n\nMR. BELL: Yes. (waves) Hello (again) "
         u"there.\n",
         "A: Good evening. We are on the air.|B: Yes.|B: (bye)|B: Hello (again) there.",
         "4+waves;"},
        {"brackets behind brackets", english, u"ANNA. The (new) (old) one (sings) (bows).\nYes.\n",
         "A: The (new) (old) one (sings).|A: (bow)|A: Yes.", ""},
        {"a name alone, directions in every place", english,
         u"ANNA.\nWhat is it?\n\nBELL (bows). Nothing. [_She sits._]\n\n(ANNA jumps.)\n\nANNA: "
         u"Oh!\n",
         "A: What is it?|B: (bow)|B: Nothing.|B: (sit)|A: (jump)|A: Oh!", ""},
        {"several at once, and who comes and goes", english,
         u"ANNA.\nHush.\n  Exit.\n\nBELL.\nOh.\n_Enter Carl._\n\nANNA and BELL.\nGood night.\n",
         "A: Hush.|B: Oh.|A: Good night.", ""},
        {"small names, where they come again", english, u"Anna: One.\nBell: Two.\nAnna: Three.\n",
         "A: One.|B: Two.|A: Three.", ""},
        {"screenplays", fountain,
         u"Title: It\n\nINT. HOUSE - DAY #1#\n\nSnow.\n\nANNA (V.O.)\n(bows)\nIt is\n*so* cold.\n\n"
         u"/* BELL\nno */\n\n@McBell ^\nYes. [[really]]\n\nANNA (CONT'D)\nGo!\n\nCUT TO:\n\n> END "
         u"<\n",
         "A: (bow)|A: It is so cold.|B: Yes.|A: Go!",
         "1-Title: It;5-Snow.;7-V.O.;8+bows;21-CUT TO:;23-END;"},
        {"subtitles with their captions", subtitles,
         u"1\n00:00:01,000 --> 00:00:02,000\n<i>こんばんは、</i>\nＣＭ（六時）です。\n\n"
         u"2\n00:00:03,000 --> 00:00:04,000\n花子：はい\n\n3\n00:00:03,000 --> "
         u"00:00:04,000\n花子：ええ\n",
         "Ｂ：こんばんは、ＣＭ（六時）です。（字幕：こんばんは、ＣＭ（六時）です。）|"
         "Ａ：はい（字幕：はい）|"
         "Ａ：ええ（字幕：ええ）",
         ""},
        {"two speakers in one subtitle", subtitles,
         u"1\n00:00:01,000 --> 00:00:02,000\n- Hello.\n- ANNA: Bye.\n",
         "A: Hello. (caption: Hello.)|B: Bye. (caption: Bye.)", ""},
    };
    Importer importer;
    for (const LayoutRow& row : rows) {
        const ImportedPlay play = importer.play(row.play);
        EXPECT_EQ(play.format, row.format) << row.what;
        EXPECT_EQ(scriptOf(play), row.script) << row.what;
        EXPECT_EQ(play.speechesIn, play.speechesOut) << row.what;
        if (!row.directions.empty()) {
            EXPECT_EQ(directionsOf(play), row.directions) << row.what;
        }
    }
}

TEST(Import, HeadingsBecomeTitlesWhenAsked) {
    struct HeadingRow {
        std::u16string_view play;
        std::string with;
        std::string without;
    };
    const HeadingRow rows[] = {
        {u"○駅前・朝\n太郎「やあ」\n第二場\n\n【教室】\n太郎「はい」\n１２　校庭\n太郎「うん」\n",
         "タイトル：駅前・朝||Ａ：やあ||タイトル：第二場|サブタイトル：教室||Ａ：はい||"
         "タイトル：１２　校庭||Ａ：うん",
         "Ａ：やあ||Ａ：はい||Ａ：うん"},
        {u"ACT I\n\nSCENE 2. A hall.\n\nANNA. Act now.\n",
         "title: ACT I|subtitle: SCENE 2. A hall.||A: Act now.", "A: Act now."},
        {u"EXT. LAKE - DAY\n\nANNA\nHello\n", "title: EXT. LAKE - DAY||A: Hello", "A: Hello"},
    };
    Importer importer;
    for (const HeadingRow& row : rows) {
        EXPECT_EQ(scriptOf(importer.play(row.play, {}, true)), row.with);
        EXPECT_EQ(scriptOf(importer.play(row.play)), row.without);
    }
}

// ---- the cast

std::string castOf(const ImportedPlay& play) {
    std::string all;
    for (const CastMember& member : play.cast) {
        all += shown(std::u16string(1, member.letter)) + " " + shown(member.name) + " " +
               std::to_string(member.speeches) + (member.shares ? " shares; " : "; ");
    }
    return all;
}

TEST(Import, Cast) {
    Importer importer;
    const std::u16string_view text =
        u"太郎「一」\n花子「二」\n花子「三」\n次郎「四」\n太郎・次郎「五」\n";
    EXPECT_EQ(castOf(importer.play(text)), "A 花子 2; B 太郎 1; C 次郎 1; B 太郎・次郎 1 shares; ");
    const ImportedPlay wished =
        importer.play(text, {{u"次郎", u'A'}, {u"花子", u'C'}, {u"三郎", u'D'}});
    EXPECT_EQ(castOf(wished), "C 花子 2; B 太郎 1; A 次郎 1; B 太郎・次郎 1 shares; ");
    EXPECT_EQ(wished.unknownWishes, std::vector<std::u16string>{u"三郎"});
    EXPECT_TRUE(wished.script.ends_with(u"ＴＶＭＬ：// 配役\n"
                                        u"ＴＶＭＬ：// C  花子  2\n"
                                        u"ＴＶＭＬ：// B  太郎  1\n"
                                        u"ＴＶＭＬ：// A  次郎  1\n"
                                        u"ＴＶＭＬ：// B  太郎・次郎  1\n"))
        << shown(wished.script);
}

// The letters are spent: nobody's speech is lost, and the most important voices
// stay their own.
TEST(Import, MoreNamesThanLetters) {
    std::u16string text;
    for (int name = 0; name < 3000; ++name) {
        std::u16string line = u"人";
        for (const char digit : std::to_string(name)) {
            line.push_back(static_cast<char16_t>(u'０' + (digit - '0')));
        }
        text.append(line).append(name < 25 ? u"「あ」\n" : u"「い」\n");
        text.append(name < 25 ? line.append(u"「う」\n") : u"");
    }
    const ImportedPlay play = Importer().play(text);
    EXPECT_EQ(play.speechesIn, 3025U);
    EXPECT_EQ(play.speechesOut, 3025U);
    ASSERT_EQ(play.cast.size(), 3000U);
    EXPECT_EQ(play.cast[24].letter, u'Y');
    EXPECT_EQ(play.cast[25].letter, u'Z');
    EXPECT_FALSE(play.cast[25].shares);
    EXPECT_TRUE(std::all_of(play.cast.begin() + 26, play.cast.end(), [](const CastMember& member) {
        return member.letter == u'Z' && member.shares;
    }));
}

// ---- directions

TEST(Import, DirectionsThatHaveNoEffectAreLeftOut) {
    // The shot needs letters, the picture is not there, and nobody is named.
    const ImportedPlay play =
        Importer().play(u"太郎「やあ」\n（画像オフ）\n（お辞儀する）\n"
                        u"（太郎、立ち上がり、お辞儀する。泣き叫ぶ声がする）\n");
    EXPECT_EQ(directionsOf(play),
              "2-画像オフ;3-お辞儀する;4-立ち上がり;4+お辞儀する;4-泣き叫ぶ声がする;");
    EXPECT_EQ(scriptOf(play), "Ａ：やあ|Ａ：（お辞儀）");
}

// ---- nothing spoken is lost

// What the talk lines of a TVML script say, by speaker, without blanks.
std::u16string spokenIn(std::u16string_view tvml) {
    std::u16string all;
    char16_t last = 0;
    for (std::size_t at = tvml.find(u"talk "); at != tvml.npos; at = tvml.find(u"talk ", at + 1)) {
        const std::size_t end = tvml.find(u"] [", at);
        const char16_t speaker = tvml[at + 5];
        all.append(speaker == last ? u"" : u"/").append(tvml.substr(at + 8, end - at - 8));
        last = speaker;
    }
    std::erase_if(all, [](char16_t unit) { return unit == u' ' || unit == u'　'; });
    return all;
}

// What was heard where it is not what was expected.
std::u16string firstDifference(const std::u16string& heard, const std::u16string& expected) {
    const auto [at, other] = std::ranges::mismatch(heard, expected);
    const auto place = static_cast<std::size_t>(at - heard.begin());
    return heard == expected ? u""
                             : heard.substr(place - std::min<std::size_t>(place, 20), 60) + u"…";
}

// The rows of a layout as a play of them, and what is to be heard.
struct Speeches {
    std::u16string_view before; // the name
    std::u16string_view between;
    std::u16string_view behind;
    bool isJapanese;
    bool isMarked = true; // what looks like something else; subtitles have captions for it
};

TEST(Import, AllThatIsSpokenIsSpoken) {
    // Each looks like something else somewhere in the script or the play. The mark
    // behind is what is added so that it is spoken.
    const std::vector<std::pair<std::u16string, std::u16string>> japanese{
        {u"こんにちは。元気ですか", u""},
        {u"お辞儀", u""},
        {u"タイトル：夜", u""},
        {u"Ｂ：と書いてある", u""},
        {u"三つ（字幕：夜）ある", u""},
        {u"（同時", u""},
        {u"彼は\"はい\"と言った", u""},
        {u"それは、『（お辞儀）』です", u""},
        {u"長い話を、いつまでも、いつまでも、いつまでも、いつまでも、いつまでも、いつまでも、する人"
         u"です",
         u""},
        {u"＄１と$2と%1", u""},
        {u"…………", u""},
        {u"(wait 2 seconds", u""},
        {u"A & B < C", u""},
        {u"“（同時）", u"。"},
        {u"“（字幕：夜）", u"。"},
    };
    const std::vector<std::pair<std::u16string, std::u16string>> english{
        {u"Good evening. How are you?", u""},
        {u"bow", u""},
        {u"title: one", u""},
        {u"he said (caption: no) to us", u""},
        {u"(no blocking", u""},
        {u"\"(no blocking)", u"."},
        {u"it costs $1, or 50% of \"it\"", u""},
        {u"one, two, three, four, five, six, seven, eight, nine, ten, eleven, twelve and thirteen",
         u""},
    };
    const Speeches layouts[] = {
        {u"", u"「", u"」\n", true},
        {u"", u"：", u"\n\n", true},
        {u"", u"　", u"\n\n", true},
        {u"", u". ", u"\n\n", false},
        {u"", u": ", u"\n\n", false},
        {u"\n", u"\n", u"\n\n", false},
        {u"1\n00:00:01,000 --> 00:00:02,000\n", u": ", u"\n\n", false, false},
    };
    Importer importer;
    std::mt19937 random(1);
    for (const Speeches& layout : layouts) {
        const auto& texts = layout.isJapanese ? japanese : english;
        const std::u16string_view names[] = {layout.isJapanese ? u"太郎" : u"ANNA",
                                             layout.isJapanese ? u"花子" : u"BELL"};
        std::u16string play;
        std::u16string expected;
        std::size_t count = 0;
        std::size_t last = 2;
        for (int round = 0; round < 120; ++round) {
            const auto& [text, mark] = texts[random() % texts.size()];
            // The one who begins has more to say: A.
            const std::size_t who = round < 2 ? 0 : static_cast<std::size_t>(round % 2);
            play.append(layout.before).append(names[who]).append(layout.between);
            play.append(text).append(layout.behind);
            expected.append(who == last ? u"" : u"/")
                .append(text)
                .append(layout.isMarked ? mark : u"");
            last = who;
            ++count;
        }
        std::ranges::replace(expected, u'"', u'\'');
        std::erase_if(expected, [](char16_t unit) { return unit == u' ' || unit == u'　'; });
        const ImportedPlay imported = importer.play(play);
        const std::string what = shown(layout.between);
        EXPECT_EQ(imported.speechesIn, count) << what;
        EXPECT_EQ(imported.speechesOut, count) << what;
        EXPECT_EQ(shown(firstDifference(spokenIn(importer.tvml(imported.script)), expected)), "")
            << what;
        for (const Diagnostic& found : importer.problems(imported.script)) {
            EXPECT_NE(found.severity, Severity::error) << what << found.line;
        }
    }
}

} // namespace
} // namespace tvml::plays
