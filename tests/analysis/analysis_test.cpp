// What tools ask of a script: beats, names, and what may stand at a place.
#include "analysis/analysis.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "diagnostics/checking.h"
#include "memory_platform.h"
#include "run/ini_files.h"

namespace tvml {
namespace {

class Analyzed {
public:
    Analyzed() : files_(platform_) {
        platform_.files[u"/host/keyword.ini"] = vocabularyWith(u"");
        files_.load();
    }

    Analysis of(std::u16string_view script, const AnalysisWants& wants) const {
        return analyze(
            {{script, kNoLine, kNoLine, kExampleDescription}, files_.words, files_.settings}, wants,
            platform_);
    }

private:
    platform::MemoryPlatform platform_;
    IniFiles files_;
};

std::string shownBeat(const Beat& beat) {
    std::string text =
        std::to_string(beat.line) + " " + std::to_string(static_cast<int>(beat.kind));
    text += beat.who != 0 ? std::string(" ") + static_cast<char>(beat.who) : "";
    text += beat.name.empty() ? "" : " " + utf8(beat.name);
    text += beat.text.empty() ? "" : " <" + utf8(beat.text) + ">";
    text += " " + std::to_string(static_cast<int>(beat.seconds * 10));
    text += std::string(beat.isEstimate ? "~" : "") + (beat.blocks ? "" : " goes on");
    return text + (beat.isOffline ? " offline" : "");
}

// A change as "who.part=value", with the part's number.
std::string shownChanges(const Panel& panel) {
    std::string text = std::to_string(panel.beat.line) + (panel.writesNothing ? "-" : "");
    for (const ScreenChange& change : panel.changes) {
        text += ' ';
        text += change.who != 0 ? std::string(1, static_cast<char>(change.who)) + '.' : "";
        text += std::to_string(static_cast<int>(change.part)) + '=' + utf8(change.value);
        text += change.colour != nullptr ? " coloured" : "";
    }
    return text;
}

TEST(Analysis, StoryboardPanels) {
    AnalysisWants wants;
    wants.storyboard = true;
    const Storyboard board = Analyzed()
                                 .of(u"(set: NewsStudio)\n"
                                     u"title: News\n"
                                     u"\n"
                                     u"A: (bow, no blocking)\n"
                                     u"B: (look at A)\n"
                                     u"A: (banzai)\n"
                                     u"(dance)\n"
                                     u"super: Live (red)\n"
                                     u"(upshot of B, slow)\n"
                                     u"(twoshot of BA)\n"
                                     u"A: (voicetype: girl_en)\n"
                                     u"A: (character: suit)\n"
                                     u"(offline)\n"
                                     u"A: skipped\n"
                                     u"(online)\n"
                                     u"A: (caption: only this)\n",
                                     wants)
                                 .storyboard;
    std::string told;
    for (const Panel& panel : board.panels) {
        told += (told.empty() ? "" : "; ") + shownChanges(panel);
    }
    EXPECT_EQ(told, "1 0=NewsStudio; 2; 4 A.26=bow; 5 B.17=at A; 6 A.26=banzai; 7-; 8 8= Live  "
                    "coloured; 9 2=up B; 10 2=two BA; 11 A.23=girl_en; 12 A.22=suit; 13 15=on; 14; "
                    "15 15=off; 16");
    ASSERT_EQ(board.cast.size(), 3U);
    EXPECT_EQ(utf8(board.cast[1].model), "blazer");
    EXPECT_EQ(board.panels.back().caption, u"only this");

    // The bow goes on meanwhile, the look and the pose are waited for, a slow shot
    // takes twice its time, and what is skipped takes none.
    std::string starts;
    for (const Panel& panel : board.panels) {
        starts += std::to_string(static_cast<int>(panel.start * 10)) + ' ';
    }
    EXPECT_EQ(starts, "0 0 0 0 10 20 20 20 40 50 50 50 50 50 50 ");
    ASSERT_EQ(board.scenes.size(), 1U);
    EXPECT_EQ(board.scenes[0].title, u"News");
    EXPECT_DOUBLE_EQ(board.scenes[0].seconds, board.seconds);
}

TEST(Analysis, Beats) {
    AnalysisWants wants;
    wants.beats = true;
    std::string told;
    for (const Beat& beat : Analyzed()
                                .of(u"title: News\n"
                                    u"\n"
                                    u"Ａ：こんばんは。はい。（同時）\n"
                                    u"B: (walk 3 steps, fast, no blocking)\n"
                                    u"(dance)\n"
                                    u"(wait 2.5 seconds)\n"
                                    u"(offline)\n"
                                    u"(upshot of B)\n"
                                    u"(online)\n"
                                    u"速報：地震\n",
                                    wants)
                                .beats) {
        told += shownBeat(beat) + "; ";
    }
    EXPECT_EQ(told, "1 7 title <News> 0~; 3 0 A <こんばんは。はい。> 18~ goes on; "
                    "4 2 B walk  15~ goes on; 6 6 wait  25; 7 5 offline 0~ offline; "
                    "8 4 B upshot of  10~ offline; 9 5 online 0~; 10 11 flash <地震> 0~; ");
}

TEST(Analysis, TellsOnlyWhatIsWanted) {
    const Analysis nothing = Analyzed().of(u"(dance)\n", {});
    EXPECT_FALSE(nothing.tvml.empty());
    EXPECT_TRUE(nothing.problems.empty() && nothing.stories.empty() && nothing.beats.empty() &&
                nothing.elements.empty() && nothing.offer.names.empty());
    AnalysisWants wants;
    wants.problems = wants.elements = wants.offer = true;
    wants.stories = {1, 9};
    const Analysis all = Analyzed().of(u"(dance)\n\n", wants);
    EXPECT_EQ(all.tvml, nothing.tvml);
    EXPECT_EQ(std::ranges::count(all.problems, SourceKind::script, &Diagnostic::source), 1);
    EXPECT_EQ(all.stories.size(), 2U);
    EXPECT_EQ(all.lineCount, 2);
    EXPECT_EQ(all.elements.front().name, u"staging");
}

TEST(Analysis, Names) {
    AnalysisWants wants;
    wants.offer = true;
    const ProgrammeOffer offer = Analyzed().of(u"", wants).offer;
    const auto names = [&](OfferKind kind) {
        std::string text;
        for (const OfferedName& name : offer.of(kind)) {
            text += utf8(name.english) + (name.letters.empty() ? "" : "/" + utf8(name.letters));
            text += name.words.empty() ? " " : "=" + utf8(name.words.front()) + " ";
        }
        return text;
    };
    EXPECT_EQ(names(OfferKind::character), "A/A=Ａ B/B=Ｂ C/C=Ｃ ");
    EXPECT_EQ(names(OfferKind::set), "NewsStudio=ニューススタジオ ");
    EXPECT_EQ(names(OfferKind::model), "suit/A=スーツ blazer/B=背広 ");
    EXPECT_EQ(names(OfferKind::pose), "banzai=ばんざい salute/B=敬礼 ");
    EXPECT_EQ(names(OfferKind::tag), "flash=速報 ");
    EXPECT_EQ(offer.of(OfferKind::colour).size(), 10U);
    EXPECT_EQ(offer.of(OfferKind::voice).size(), 27U);
}

// The text at the bar is where the writer is.
class CompletionRecorder final : public RunListener {
public:
    explicit CompletionRecorder(std::u16string_view line) : line_(line) {}
    void programmeRead(const Programme& programme) override {
        ProgrammeOffer offer;
        OfferRecorder(offer).programmeRead(programme);
        const std::size_t place = line_.find(u'|');
        std::u16string line(line_);
        line.erase(place, 1);
        found = whatMayStand(programme.reader, offer, line, place);
        replaced = utf8(line.substr(found.replaced.start, found.replaced.units));
    }
    bool offers(std::u16string_view text) const {
        return std::ranges::find(found.all, text, &Completion::text) != found.all.end();
    }

    Completions found;
    std::string replaced;

private:
    std::u16string line_;
};

TEST(Analysis, WhatMayStand) {
    const struct {
        std::u16string_view line;
        const char* replaced;
        std::u16string_view offered;
        std::u16string_view notOffered;
    } rows[] = {
        {u"|", "", u"タイトル", u"お辞儀"},
        {u"ta|", "ta", u"title", u"タイトル"},
        {u"タイ|", "タイ", u"速報", u"flash"},
        {u"Ａ：（|", "", u"お辞儀", u"字幕オン"},
        {u"A: (bo|", "bo", u"bow", u"caption on"},
        {u"（字|）", "字", u"字幕オン", u"遅く"},
        {u"Ａ：（敬|", "敬", u"ばんざい", u"敬礼"},
        {u"Ｂ：（敬|", "敬", u"敬礼", u"タイトル"},
        {u"Ａ：（お辞儀、|", "", u"遅く", u"お辞儀"},
        {u"Ａ：（お辞儀、遅く、|", "", u"同時", u"速く"},
        {u"A: (bow, slow, no b|", "no b", u"no blocking", u"fast"},
        {u"（セット：ニュ|", "ニュ", u"ニューススタジオ", u"お辞儀"},
        {u"Ａ：（キャラクター：|", "", u"スーツ", u"背広"},
        {u"title: Ev|", "Ev", u"", u"title"},
        {u"Ａ：こん|", "Ａ：こん", u"", u"お辞儀"},
    };
    for (const auto& row : rows) {
        CompletionRecorder recorder(row.line);
        const Listeners listeners{&recorder};
        platform::MemoryPlatform platform;
        platform.files[u"/host/keyword.ini"] = vocabularyWith(u"");
        IniFiles files(platform);
        files.load();
        ConversionRun(files.words, files.settings, platform, &listeners)
            .convert({u"", kNoLine, kNoLine, kExampleDescription});
        EXPECT_EQ(recorder.replaced, row.replaced) << utf8(row.line);
        EXPECT_EQ(recorder.offers(row.offered), !row.offered.empty()) << utf8(row.line);
        EXPECT_FALSE(recorder.offers(row.notOffered)) << utf8(row.line);
    }
}

} // namespace
} // namespace tvml
