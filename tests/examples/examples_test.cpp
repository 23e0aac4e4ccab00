// The example programmes: what they become, and that together they show every
// command, marker and adverb of the script language without a problem.
#include "repository_files.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

#include "filter/conversion_run.h"
#include "generation/command_names.h"

namespace tvml {
namespace {

using Names = std::set<std::string>;

// Keeps what a conversion tells.
class Listener final : public ConversionReport {
public:
    void descriptionRead(const StagingDescription&, const TemplateDb&, char16_t,
                         const DiagnosticLog& log) override {
        for (const DiagnosticLog::Entry& entry : log.entries()) {
            problems.push_back("description: " + utf8Of(entry.element) + ": problem " +
                               std::to_string(static_cast<int>(entry.problem)));
        }
    }
    void lineStarted(std::int32_t number, std::u16string_view line) override {
        line_ = std::to_string(number) + ": " + utf8Of(line);
        lines = number;
    }
    void adverbsRead(std::u16string_view, const AdverbValues& values) override {
        for (const AdverbRow& row : kAdverbRows) {
            if (values.*row.field == row.value) {
                adverbs.insert(utf8Of(row.english));
            }
        }
    }
    void taken(TakenBy table, std::u16string_view name) override {
        takenNames[table].insert(utf8Of(name));
    }
    void problem(ScriptProblem what, std::u16string_view where, std::u16string_view) override {
        problems.push_back(line_ + ": problem " + std::to_string(static_cast<int>(what)) +
                           " at \"" + utf8Of(where) + "\"");
    }

    std::vector<std::string> problems;
    std::map<TakenBy, Names> takenNames;
    Names adverbs;
    int lines = 0;

private:
    std::string line_;
};

struct Converted {
    std::string tvml;
    Listener heard;
};

Converted convert(const std::string& script, const std::string& description) {
    Converted result;
    KeywordTable words;
    TvmlIniMirvol settings(platform::system());
    ConversionRun run(words, settings, platform::system(), &result.heard);
    const std::u16string scriptText = utf16Of(script);
    const std::u16string descriptionText = utf16Of(description);
    result.tvml = utf8Of(run.convert({scriptText, 0, -1, descriptionText}).text());
    EXPECT_EQ(words.problem(), LoadProblem::none);
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

Names namesOf(const std::vector<std::u16string_view>& names) {
    Names result;
    for (const std::u16string_view name : names) {
        result.insert(utf8Of(name));
    }
    return result;
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
    for (std::size_t i = 0; i < kMarkerCount; ++i) {
        markers.insert(utf8Of(markerName(static_cast<Marker>(i))));
    }
    Names allAdverbs;
    for (const AdverbRow& row : kAdverbRows) {
        allAdverbs.insert(utf8Of(row.english));
    }
    expectShown(namesOf(stagingCommandNames()), shown[TakenBy::stagingCommand], "staging command");
    expectShown(namesOf(characterCommandNames()), shown[TakenBy::characterCommand],
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
