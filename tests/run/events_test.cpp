// What a run tells to those who listen, and that its output does not depend on
// them.
#include "run/events.h"

#include <gtest/gtest.h>

#include "support/studio.h"

namespace tvml {
namespace {

class Notes final : public RunListener {
public:
    void lineConverted(const ScriptLine& line, const LineOutcome& outcome) override {
        steps += std::to_string(outcome.number) + "<" + shown(line.text) + "> " +
                 shown(lineKindText(line.kind)) + " ";
        for (const TemplateUse& use : outcome.templates) {
            steps += shown(use.element) + "#" + std::to_string(use.number) + " ";
        }
        for (const SpokenPiece& piece : outcome.spoken) {
            steps += shown({&piece.letter, 1}) + " says<" + shown(piece.speech) + "> at " +
                     shown(piece.speed) + " ";
        }
        steps += std::to_string(static_cast<int>(line.takenBy())) + ":" + shown(line.takenName());
        steps += outcome.card == CardStep::none     ? ""
                 : outcome.card == CardStep::starts ? " {"
                                                    : " }";
        const ScriptLine::NamedFile file = line.file();
        steps += file.use == FileUse::none ? "" : " file<" + shown(file.name) + ">";
        for (const LineProblem& one : outcome.problems) {
            problems.push_back({one.what, shown(one.where), shown(one.detail)});
        }
    }

    struct Note {
        ScriptProblem what;
        std::string where;
        std::string detail;
        bool operator==(const Note&) const = default;
    };
    std::vector<Note> problems;
    std::string steps;
};

TEST(Events, WhatBecomesOfALine) {
    const struct {
        std::u16string_view line;
        const char* steps;
    } rows[] = {
        {u" ", "1< >  0:"},
        {u"title: x", "1<title: x> tag title#0 1:title {"},
        {u"b: (happy, fast) ", "1<b: (happy, fast) > character happy#0 3:happy"},
        {u"(待つ)", "1<(待つ)> other 2:wait"},
        {u"Hi", "1<Hi> other talk#5 A says<Hi> at 1.1 0:"},
        {u"(caption: x)", "1<(caption: x)> other talk#5 A says<> at 1.1 0:"},
        {u"B: はい。いいえ。(caption: x)(no blocking)",
         "1<B: はい。いいえ。(caption: x)(no blocking)> character talk#5 B says<はい。いいえ。> at "
         "1.0 0:"},
        {u"はい。いいえ。",
         "1<はい。いいえ。> other talk#5 talk#5 A says<はい。> at 1.1 A says<いいえ。> at 1.1 0:"},
        {u"bgm: m.wav", "1<bgm: m.wav> tag bgm#0 1:bgm file<m.wav>"},
        {u"mainimage: M\\a.png", "1<mainimage: M\\a.png> tag 1:mainimage file<M\\a.png>"},
        {u"B:(soundfile: v.wav)", "1<B:(soundfile: v.wav)> character 3:soundfile file<v.wav>"},
        {u"dance:x", "1<dance:x> tag tag#6 1:dance"},
        {u"(jig)", "1<(jig)> other pose#7 4:jig"},
        {u"(nothing)", "1<(nothing)> other 0:"},
        {u"title: x|subtitle: y",
         "1<title: x> tag title#0 1:title {2<subtitle: y> tag 1:subtitle }"},
    };
    Studio studio(std::u16string(kTwoCharacters) +
                  u"<tag japanesename='d' englishname='dance'>x</tag>"
                  u"<pose japanesename='j' englishname='jig'>x</pose>");
    for (const auto& row : rows) {
        Notes notes;
        EXPECT_EQ(studio.body(row.line), studio.body(row.line, kNoLine, kNoLine, &notes));
        EXPECT_EQ(notes.steps, row.steps);
    }
}

TEST(Events, ProblemsFoundWhileWriting) {
    using enum ScriptProblem;
    Notes notes;
    Studio(u"").body(u"Hi|title: x", kNoLine, kNoLine, &notes);
    Studio().body(u"あ{99}|(look at picture)", kNoLine, kNoLine, &notes);
    const std::string piece = shown(expand(u"あ{58}"));
    const std::vector<Notes::Note> expected{{modelMissing, "", "A"},
                                            {sentenceCutInWord, piece, ""},
                                            {conditionNotMet, "", "look at picture"}};
    EXPECT_EQ(notes.problems, expected);
}

} // namespace
} // namespace tvml
