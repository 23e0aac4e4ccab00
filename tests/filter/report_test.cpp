// What a run tells about itself, and that its output does not depend on it.
#include "filter/report.h"

#include <gtest/gtest.h>

#include "support/studio.h"

namespace tvml {
namespace {

class Notes final : public ConversionReport {
public:
    void problem(ScriptProblem what, std::u16string_view where,
                 std::u16string_view detail) override {
        problems.push_back({what, shown(where), shown(detail)});
    }
    void lineStarted(std::int32_t number, std::u16string_view line) override {
        steps += std::to_string(number) + "<" + shown(line) + "> ";
    }
    void lineClassified(LineKind kind, std::u16string_view speaker, bool isCommand) override {
        steps +=
            shown(lineKindText(kind)) + "(" + shown(speaker) + (isCommand ? ",command) " : ") ");
    }
    void taken(TakenBy by, std::u16string_view name) override {
        steps += std::to_string(static_cast<int>(by)) + ":" + shown(name) + " ";
    }
    void templateChosen(std::u16string_view element, std::size_t number) override {
        steps += shown(element) + "#" + std::to_string(number) + " ";
    }
    void adverbsRead(std::u16string_view, const AdverbValues& values) override {
        steps += "[" + shown(values.speed) + "," + shown(values.degree) + "] ";
    }

    void spoken(char16_t letter, std::u16string_view speech, std::u16string_view speed) override {
        steps += shown({&letter, 1}) + " says<" + shown(speech) + "> at " + shown(speed) + " ";
    }
    void fileNamed(FileUse use, std::u16string_view file) override {
        steps += "file" + std::to_string(static_cast<int>(use)) + "<" + shown(file) + "> ";
    }

    struct Note {
        ScriptProblem what;
        std::string where;
        std::string detail;
    };
    std::vector<Note> problems;
    std::string steps;
};

TEST(Report, Problems) {
    using enum ScriptProblem;
    const struct {
        std::u16string_view line;
        ScriptProblem what;
        const char* where;
    } rows[] = {
        {u"(dance)", commandUnknown, "dance"},
        {u"(opening off, fast)", commandRejected, ", fast"},
        {u"(bow, fast, loudly)", adverbUnknown, "loudly"},
        {u"(nod,)", adverbMissing, ""},
        {u"(bow deeply)", separatorMissing, "deeply"},
        {u"(voicetype girl)", colonMissing, "girl"},
        {u"(set Plaza)", colonMissing, "Plaza"},
        {u"(walk x steps)", numberInvalid, "x"},
        {u"(wait -1 seconds)", numberInvalid, "-1"},
        {u"(walk 3 feet)", unitMissing, "feet"},
        {u"(look at 1)", letterInvalid, "1"},
        {u"(twoshot of A1)", letterInvalid, "A1"},
        {u"(upshot of Z)", letterReplaced, "Z"},
        {u"Z: hi", speakerReplaced, "Z"},
        {u"A:(look at A)", looksAtItself, "A"},
        {u"(hide picture)", conditionNotMet, "hide picture"},
        {u"(set: Nowhere)", setUnknown, "Nowhere"},
        {u"(character: X)", modelUnknown, "X"},
        {u"(voicetype: robot)", voiceUnknown, "robot"},
        {u"super: x (pink)", colourUnknown, "pink"},
        {u"hi (there)", captionWordUnknown, "(there"},
        {u"hi)", bracketUnopened, ")"},
        {u"(soundfile: x (caption: y))", captionMakesTalk, "(soundfile: x (caption: y))"},
    };
    Studio studio;
    for (const auto& row : rows) {
        Notes notes;
        const std::string body = studio.body(row.line, -1, -1, &notes);
        const bool told =
            std::any_of(notes.problems.begin(), notes.problems.end(), [&](const Notes::Note& note) {
                return note.what == row.what && note.where == row.where;
            });
        EXPECT_TRUE(told) << shown(row.line);
        EXPECT_EQ(studio.body(row.line), body);
    }
    Notes notes;
    Studio(u"").body(u"Hi|あ{99}", -1, -1, &notes);
    ASSERT_EQ(notes.problems.size(), 3U);
    EXPECT_EQ(notes.problems[0].what, modelMissing);
    EXPECT_EQ(notes.problems[0].detail, "A");
    EXPECT_EQ(notes.problems[1].what, sentenceCutInWord);
}

TEST(Report, StepsOfEachLine) {
    const struct {
        std::u16string_view line;
        const char* steps;
    } rows[] = {
        {u" ", "1< > () "},
        {u"title: x", "1<title: x> tag() title#0 0:title "},
        {u"b: (happy, fast) ", "1<b: (happy, fast) > character(B,command) [2.0,] [2.0,] happy#0 "
                               "2:happy "},
        {u"(待つ)", "1<(待つ)> other(NO,command) 1:wait "},
        {u"Hi", "1<Hi> other(NO) talk#5 A says<Hi> at 1.1 "},
        {u"(caption: x)", "1<(caption: x)> other(NO) talk#5 A says<> at 1.1 "},
        {u"B: はい。いいえ。(caption: x)(no blocking)",
         "1<B: はい。いいえ。(caption: x)(no blocking)> character(B) talk#5 B says<はい。いいえ。> "
         "at 1.0 "},
        {u"bgm: m.wav", "1<bgm: m.wav> tag() file1<m.wav> bgm#0 0:bgm "},
        {u"mainimage: M\\a.png", "1<mainimage: M\\a.png> tag() file0<M\\a.png> 0:mainimage "},
        {u"B:(soundfile: v.wav)",
         "1<B:(soundfile: v.wav)> character(B,command) file2<v.wav> 2:soundfile "},
        {u"dance:x", "1<dance:x> tag() tag#6 0:dance "},
        {u"(jig)", "1<(jig)> other(NO,command) pose#7 3:jig "},
    };
    Studio studio(std::u16string(kTwoCharacters) +
                  u"<tag japanesename='d' englishname='dance'>x</tag>"
                  u"<pose japanesename='j' englishname='jig'>x</pose>");
    for (const auto& row : rows) {
        Notes notes;
        EXPECT_EQ(studio.body(row.line), studio.body(row.line, -1, -1, &notes));
        EXPECT_EQ(notes.steps, row.steps);
    }
}

} // namespace
} // namespace tvml
