// What a line says, with the places of its parts and of what is wrong with it.
#include "reading/line_reader.h"

#include <gtest/gtest.h>

#include "reading/script_text.h"
#include "support/studio.h"

namespace tvml {
namespace {

// A programme of A to C, of whom C has no model, with a set and two poses.
class Names final : public ProgrammeNames {
public:
    Names() {
        tags.tagNames = {{u"速報", u"flash"}, {u"空", u"none"}, {u"題字", u"subimage"}};
        tags.tagTexts = {{u"flash", u"x"}, {u"subimage", u"y"}};
        poseNames = {{u"踊る", u"dance"}};
    }
    bool hasPose(std::u16string_view name, char16_t letter) const override {
        return name == u"dance" || (name == u"salute" && letter == u'B');
    }
    std::u16string_view setNamed(std::u16string_view name) const override {
        return name == u"広場" || name == u"Plaza" ? u"Plaza" : u"";
    }
    bool hasModel(std::u16string_view name, char16_t letter) const override {
        return name == u"casual" && letter == u'A';
    }
    bool wearsModel(char16_t letter) const override { return letter < u'C'; }
};

class Reading {
public:
    explicit Reading(std::u16string_view text, const Words& replaced = {})
        : words_(tableOf(shippedWords(replaced))), reader_(words_, names_), text_(text) {
        LineContext context;
        context.lastCharacter = u'C';
        context.conditions.set(Condition::severalCharacters, true);
        context.conditions.set(Condition::bgImageShown, true);
        reader_.read(text_, context, line);
    }

    // "[part]start+units" of a part that was read from the line.
    std::string part(std::u16string_view text) const {
        const auto place = line.placeOf(text);
        return "[" + shown(text) + "]" +
               (place.has_value()
                    ? std::to_string(place->start) + "+" + std::to_string(place->units)
                    : "-");
    }

    std::string told() const;

    ScriptLine line;

private:
    Names names_;
    KeywordTable words_;
    LineReader reader_;
    std::u16string text_;
};

std::string Reading::told() const {
    std::string result;
    if (const TagReading* tag = line.tag()) {
        result = "tag " + shown(tag->english) + " " + part(tag->name) + " " + part(tag->value);
        result += tag->colour.empty() ? "" : " colour " + part(tag->colour);
        result += tag->colourSpec == nullptr ? "" : "=" + shown(tag->colourSpec->word.name());
        return result;
    }
    result = line.speaker == 0 ? "" : std::string(1, static_cast<char>(line.speaker)) + ": ";
    if (const TalkReading* talk = line.talk()) {
        result += "talk " + part(talk->speech);
        result += talk->captioned ? " caption " + part(talk->caption) : "";
        return result + (talk->blocking ? "" : " no blocking");
    }
    const RecognizedCommand& command = *line.command();
    result += command.spec != nullptr ? "row " + shown(command.spec->name)
              : command.taken         ? "pose " + part(command.pose)
                                      : "nobody";
    for (const char16_t letter : command.letters) {
        result += letter != 0 ? std::string(" ") + static_cast<char>(letter) : "";
    }
    result += command.number.empty() ? "" : " number " + shown(command.number);
    result += command.name.empty() ? "" : " name " + part(command.name);
    result += command.english.empty() ? "" : "=" + shown(command.english);
    result += command.caption.empty() ? "" : " caption " + part(command.caption);
    for (const ReadAdverb& adverb : command.items) {
        result += " " + part(adverb.item) + "=" + shown(adverb.row->value);
    }
    return result;
}

TEST(ScriptLine, PartsAndPlaces) {
    const struct {
        std::u16string_view line;
        const char* told;
    } rows[] = {
        {u"  title : Evening News ", "tag title [title]2+5 [Evening News]10+12"},
        {u"速報：地震", "tag flash [速報]0+2 [地震]3+2"},
        {u"空：x", "tag  []- []-"},
        {u"題字：p.png", "tag subimage [題字]0+2 [p.png]3+5"},
        {u"super: Live (red) ", "tag super [super]0+5 [ Live (red) ]6+12"},
        {u"super: Live (red)", "tag super [super]0+5 [ Live ]6+6 colour [red]13+3=red"},
        {u"スーパー：開店（紅）", "tag super [スーパー]0+4 [開店（紅）]5+5 colour [紅]8+1"},
        {u" Ｂ：　はい。（字幕： ええ）（同時）",
         "B: talk [はい。]4+3 caption [ええ]12+2 no blocking"},
        {u"b: say \"x\" (caption: y)", "B: talk [say 'x']3+7 caption [y]21+1"},
        {u"Z: hi", "A: talk [hi]3+2"},
        {u"hi (there)", "talk [hi (there)]0+10"},
        {u"Ａ：（お辞儀、遅く，  同時）", "A: row bow [遅く]7+2=0.5 [同時]12+2=no"},
        {u"Ａ：（ Ｂを見る、速く ）", "A: row look at  B [速く]9+2=2.0"},
        {u"（ＢＡのツーショット）", "row twoshot of  B A"},
        {u"Ａ：（１２歩歩く、遅く）", "A: row walk  number 12 [遅く]9+2=0.5"},
        {u"A:(walk 3 steps, fast)", "A: row walk  number 3 [fast]17+4=2.0"},
        {u"（セット： 広場 、速く）", "row set name [広場]6+2=Plaza [速く]10+2=2.0"},
        {u"A:(soundfile: v.wav (xcaption: Hi)、much)",
         "A: row soundfile name [v.wav]14+5 caption [: Hi]29+4 [much]35+4=2.0"},
        {u"A:(voicetype: girl_en)", "A: row voicetype name [girl_en]14+7=girl_en"},
        {u"Ａ：（キャラクター：casual）", "A: row character name [casual]10+6"},
        {u"（背景イメージを消す）", "row hide bg picture"},
        {u"A:(踊る, slow)", "A: pose [dance]3+2 [slow]7+4=0.5"},
        {u"B:(salute)", "B: pose [salute]3+6"},
        {u"A:(salute)", "A: nobody"},
        {u"(set: Plaza", "talk [(set: Plaza]0+11"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Reading(row.line).told(), row.told) << shown(row.line);
    }
}

// Where the phrase was rewritten, and with words that have other lengths than
// the units that are taken off.
TEST(ScriptLine, PlacesInRewrittenPhrases) {
    const struct {
        std::u16string_view line;
        Words words;
        const char* where;
    } rows[] = {
        {u"Ａ：（深いお辞儀、x）", {{u"bow", u"深いお辞儀"}}, "[x]9+1"},
        {u"（３歩、速く、x）", {{u"walk_n", u"歩"}}, "[x]7+1"},
        {u"（Ｂを見るx）", {}, "[x]5+1"},
    };
    for (const auto& row : rows) {
        const Reading reading(row.line, row.words);
        ASSERT_FALSE(reading.line.problems.empty()) << shown(row.line);
        EXPECT_EQ(reading.part(reading.line.problems.front().where), row.where);
    }
}

TEST(ScriptLine, Problems) {
    using enum ScriptProblem;
    const struct {
        std::u16string_view line;
        ScriptProblem what;
        const char* where;
    } rows[] = {
        {u"(opening off, fast)", argumentsRefused, "[, fast]12+6"},
        {u"（お辞儀、速く、大声で）", adverbUnknown, "[大声で]8+3"},
        {u"(nod,)", adverbMissing, "[]5+0"},
        {u"(bow deeply)", separatorMissing, "[deeply]5+6"},
        {u"(voicetype girl)", colonMissing, "[girl]11+4"},
        {u"（セット広場）", colonMissing, "[広場]4+2"},
        {u"(walk x steps)", numberInvalid, "[x]6+1"},
        {u"(wait -1 seconds)", numberInvalid, "[-1]6+2"},
        {u"(wait , slow)", numberMissing, "[,]6+1"},
        {u"(walk 3 feet)", unitMissing, "[feet]8+4"},
        {u"(look at 1)", letterInvalid, "[1]9+1"},
        {u"(twoshot of A1)", letterInvalid, "[A1]12+2"},
        {u"（Ｚのアップショット）", letterReplaced, "[Ｚ]1+1"},
        {u"（ＡＺのツーショット）", letterReplaced, "[Ｚ]2+1"},
        {u"（ＣＣのツーショット）", pairReplaced, "[ＣＣ]1+2"},
        {u"Z: hi", speakerReplaced, "[Z]0+1"},
        {u"Ａ：（Ａを見る）", looksAtItself, "[Ａ]3+1"},
        {u"C:(sit)", modelMissing, "[]-"},
        {u"(hide picture)", conditionNotMet, "[hide picture]1+12"},
        {u"（画像オフ）", conditionNotMet, "[hide picture]1+4"},
        {u"(set: Nowhere)", setUnknown, "[Nowhere]6+7"},
        {u"(character: X)", modelUnknown, "[X]12+1"},
        {u"(voicetype: robot)", voiceUnknown, "[robot]12+5"},
        {u"super: x (pink)", colourUnknown, "[pink]10+4"},
        {u"hi (there)", captionWordUnknown, "[(there]3+6"},
        {u"hi)", bracketUnopened, "[)]2+1"},
        {u"(soundfile: x (caption: y))", captionMakesTalk, "[(soundfile: x (caption: y))]0+27"},
        {u"空：x", tagUntaken, "[]-"},
    };
    for (const auto& row : rows) {
        const Reading reading(row.line);
        const LineProblem* found = reading.line.findProblem(row.what);
        ASSERT_NE(found, nullptr) << shown(row.line);
        EXPECT_EQ(reading.part(found->where), row.where) << shown(row.line);
    }
}

// Where the two-unit caption word begins a group without its colon, the English
// word is tried for a command, and the line is talk without a caption.
TEST(ScriptLine, CaptionWordThatBeginsTheEnglishOne) {
    const Words words{{u"caption", u"ca"}};
    EXPECT_EQ(Reading(u"A: (caption: x)", words).told(), "A: talk [(caption: x)]3+12");
    EXPECT_EQ(Reading(u"A: (ca: x)", words).told(), "A: talk []3+0 caption [x]8+1");
    EXPECT_EQ(Reading(u"A: (caption x)", words).told(), "A: nobody");
}

} // namespace
} // namespace tvml
