// The example programmes: what they become, and that together they show every
// command, marker and adverb of the script language without a problem.
#include "repository_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "filter/conversion_run.h"
#include "run/ini_files.h"

namespace tvml {
namespace {

using Names = std::set<std::string>;

// Keeps what a conversion tells.
class Listener final : public RunListener {
public:
    void programmeRead(const Programme& programme) override {
        for (const DiagnosticLog::Entry& entry : programme.log.entries()) {
            problems.push_back("description: " + utf8Of(entry.element) + ": problem " +
                               std::to_string(static_cast<int>(entry.problem)));
        }
    }
    void lineConverted(const ScriptLine& line, const LineOutcome& outcome) override {
        lines = outcome.number;
        if (line.takenBy() != TakenBy::nothing) {
            takenNames[line.takenBy()].insert(utf8Of(line.takenName()));
        }
        if (line.command() != nullptr) {
            for (const ReadAdverb& adverb : line.command()->items) {
                adverbs.insert(utf8Of(adverb.row->english));
            }
            if (!line.command()->taken) {
                problems.push_back(utf8Of(line.text) + ": nobody takes it");
            }
        }
        for (const auto* all : {&line.problems, &outcome.problems}) {
            for (const LineProblem& one : *all) {
                problems.push_back(utf8Of(line.text) + ": problem " +
                                   std::to_string(static_cast<int>(one.what)) + " at \"" +
                                   utf8Of(one.where) + "\"");
            }
        }
    }

    std::vector<std::string> problems;
    std::map<TakenBy, Names> takenNames;
    Names adverbs;
    int lines = 0;
};

struct Converted {
    std::string tvml;
    Listener heard;
};

Converted convert(const std::string& script, const std::string& description) {
    Converted result;
    IniFiles files(platform::system());
    files.load();
    const Listeners listeners{&result.heard};
    ConversionRun run(files.words, files.settings, platform::system(), &listeners);
    const std::u16string scriptText = utf16Of(script);
    const std::u16string descriptionText = utf16Of(description);
    result.tvml = utf8Of(run.convert({scriptText, kNoLine, kNoLine, descriptionText}).text());
    EXPECT_EQ(files.words.problem(), LoadProblem::none);
    return result;
}

const std::map<std::string, Converted>& examples() {
    static const std::map<std::string, Converted> converted = [] {
        std::map<std::string, Converted> all;
        for (const std::string name : {"news_en", "news_ja", "weather_ja"}) {
            const std::string folder = "examples/" + name;
            all.emplace(name, convert(readRepositoryFile(folder + "/programme.txt"),
                                      readRepositoryFile(folder + "/description.xml")));
        }
        return all;
    }();
    return converted;
}

TEST(Examples, ConvertToTheirGoldenCopies) {
    for (const auto& [name, example] : examples()) {
        std::istringstream golden(readRepositoryFile("examples/" + name + "/golden.tvml"));
        std::istringstream given(example.tvml);
        std::string expected;
        std::string line;
        for (int number = 1; std::getline(given, line); ++number) {
            ASSERT_TRUE(std::getline(golden, expected)) << name << " grew at line " << number;
            ASSERT_EQ(line, expected) << name << ", line " << number
                                      << "; scripts/refresh-golden.sh writes golden copies anew";
        }
        EXPECT_FALSE(std::getline(golden, expected)) << name << " lost: " << expected;
    }
}

TEST(Examples, HaveNoProblems) {
    for (const auto& [name, example] : examples()) {
        for (const std::string& problem : example.heard.problems) {
            ADD_FAILURE() << name << ": " << problem;
        }
    }
}

Names namesOf(std::initializer_list<Taker> takers) {
    Names names;
    for (const CommandSpec& row : kCommands) {
        if (std::ranges::find(takers, row.taker) != takers.end()) {
            names.insert(utf8Of(row.name));
        }
    }
    return names;
}

void expectShown(const Names& all, const Names& shown, const char* kind) {
    for (const std::string& name : all) {
        EXPECT_TRUE(shown.contains(name)) << "no example has the " << kind << " \"" << name << '"';
    }
}

TEST(Examples, ShowTheWholeLanguage) {
    std::map<TakenBy, Names> shown;
    Names adverbs;
    for (const auto& [name, example] : examples()) {
        for (const auto& [table, names] : example.heard.takenNames) {
            shown[table].insert(names.begin(), names.end());
        }
        adverbs.insert(example.heard.adverbs.begin(), example.heard.adverbs.end());
    }
    Names markers;
    for (const MarkerSpec& marker : kMarkers) {
        markers.insert(utf8Of(marker.name));
    }
    Names allAdverbs;
    for (const AdverbRow& row : kAdverbRows) {
        allAdverbs.insert(utf8Of(row.english));
    }
    expectShown(namesOf({Taker::staging}), shown[TakenBy::staging], "staging command");
    expectShown(namesOf({Taker::character, Taker::setting}), shown[TakenBy::character],
                "character command");
    expectShown(markers, shown[TakenBy::tag], "tag line");
    expectShown(allAdverbs, adverbs, "adverb");
    EXPECT_FALSE(shown[TakenBy::pose].empty());
}

// A script without a description of its own has two characters who can talk,
// sit and change clothes.
TEST(DefaultDescription, ServesTwoCharacters) {
    const Converted show = convert("A: Hello.\nB: Hello.\nA: (sit)\nB: (character: casual)\n"
                                   "A: (look at fellow)\n(twoshot)\n",
                                   readRepositoryFile("config/default.xml"));
    EXPECT_EQ(show.heard.problems, std::vector<std::string>{});
    EXPECT_EQ(show.heard.lines, 6);
    for (const char* part : {"talk( name=A, text=\"Hello.\"", "talk( name=B, text=\"Hello.\"",
                             "openmodel( name=A", "openmodel( name=B", "hiplevel=0.50"}) {
        EXPECT_NE(show.tvml.find(part), std::string::npos) << part;
    }
}

} // namespace
} // namespace tvml
