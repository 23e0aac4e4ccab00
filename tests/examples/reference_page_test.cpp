// The pages script-language.md list the words of the code's tables and of the
// shipped vocabulary, each in its section, and no others; the pages
// description.md name every element.
#include "repository_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "reading/command_spec.h"
#include "reading/line_kind.h"
#include "staging/staging_elements.h"

namespace tvml {
namespace {

using Rows = std::vector<std::string>;
using Spellings = std::vector<std::u16string>;

std::u16string textOf(Key key) {
    return std::u16string(shippedWords()[key].textOrEmpty());
}

std::string inBackquotes(std::u16string_view text) {
    std::string quoted(1, '`');
    return quoted.append(utf8Of(text)).append(1, '`');
}

// A section as each page calls it.
struct Section {
    const char* english;
    const char* japanese;
};
constexpr Section kStaging{"Staging commands", "スタジオの命令"};
constexpr Section kCharacters{"Character commands", "登場人物の命令"};
constexpr Section kVoices{"Voices", "声"};
constexpr Section kWithoutEffect{"Words without effect", "効果のない語"};
constexpr Section kAdverbs{"Adverbs", "修飾語"};
constexpr Section kColourWords{"Colours", "色"};
constexpr Section kMarkerWords{"Markers", "目印"};

// A page puts the words of its own language first.
struct PageLanguage {
    std::string folder;
    bool japanese;
};

std::string cellOf(const Spellings& spellings) {
    std::string cell;
    for (const std::u16string& spelling : spellings) {
        cell += (cell.empty() ? "" : ", ") + inBackquotes(spelling);
    }
    return cell;
}

class ReferencePage : public testing::TestWithParam<PageLanguage> {
protected:
    std::string page(const char* name) const {
        return readRepositoryFile(GetParam().folder + name);
    }
    Rows rowsOfSection(const Section& section) const;
    std::string pageRow(std::u16string_view english, const Spellings& vocabulary) const;
    std::string rowOf(const CommandSpec& command) const;
    Rows rowsOf(std::initializer_list<Taker> takers) const;
    void expectSection(const Section& section, Rows expected) const;
};

// The two cells that a word's row on the page begins with.
std::string ReferencePage::pageRow(std::u16string_view english, const Spellings& vocabulary) const {
    const std::string name = inBackquotes(english);
    const std::string words = cellOf(vocabulary);
    return GetParam().japanese ? "| " + words + " | " + name : "| " + name + " | " + words;
}

// The first two cells of all rows of the tables in a section.
Rows ReferencePage::rowsOfSection(const Section& section) const {
    const std::string name = GetParam().japanese ? section.japanese : section.english;
    std::istringstream page(this->page("script-language.md"));
    Rows rows;
    bool inside = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("## ")) {
            inside = line == "## " + name;
        } else if (inside && line.starts_with("| `")) {
            rows.push_back(line.substr(0, line.find(" |", line.find(" | ") + 3)));
        }
    }
    return rows;
}

void ReferencePage::expectSection(const Section& section, Rows expected) const {
    Rows rows = rowsOfSection(section);
    std::sort(rows.begin(), rows.end());
    std::sort(expected.begin(), expected.end());
    Rows difference;
    std::set_difference(expected.begin(), expected.end(), rows.begin(), rows.end(),
                        std::back_inserter(difference));
    for (const std::string& row : difference) {
        ADD_FAILURE() << "section " << section.english << " lacks the row " << row;
    }
    difference.clear();
    std::set_difference(rows.begin(), rows.end(), expected.begin(), expected.end(),
                        std::back_inserter(difference));
    for (const std::string& row : difference) {
        ADD_FAILURE() << "section " << section.english << " has the row " << row << " for nothing";
    }
}

// What stands before the word of a row on the page, as a writer would put it.
struct Sample {
    std::u16string english;
    std::u16string vocabulary;
};

Sample sampleFor(Match match) {
    switch (match) {
    case Match::letter:
        return {u"B", textOf(u"B2")};
    case Match::twoLetters:
        return {u"AB", textOf(u"A2") + textOf(u"B2")};
    case Match::number:
        return {u"3", textOf(u"num3")};
    case Match::equals:
    case Match::starts:
        break;
    }
    return {};
}

std::string ReferencePage::rowOf(const CommandSpec& command) const {
    const Sample sample = sampleFor(command.match);
    std::u16string english = std::u16string(command.name).append(sample.english);
    if (command.match == Match::number) {
        english.append(u" ").append(unitOf(command.arguments)).append(u"s");
    }
    Spellings vocabulary;
    for (const RowWord& word : command.words) {
        vocabulary.push_back(sample.vocabulary + textOf(word.key));
    }
    return pageRow(english, vocabulary);
}

Rows ReferencePage::rowsOf(std::initializer_list<Taker> takers) const {
    Rows rows;
    for (const CommandSpec& command : kCommands) {
        if (std::find(takers.begin(), takers.end(), command.taker) != takers.end()) {
            rows.push_back(rowOf(command));
        }
    }
    return rows;
}

TEST_P(ReferencePage, CommandsAreThoseOfTheTables) {
    expectSection(kStaging, rowsOf({Taker::staging}));
    expectSection(kCharacters, rowsOf({Taker::character, Taker::setting}));
    expectSection(kVoices, rowsOf({Taker::voice}));
    expectSection(kWithoutEffect, rowsOf({Taker::nobody}));
}

TEST_P(ReferencePage, AdverbsAndColoursAreThoseOfTheTables) {
    Rows adverbs;
    for (const AdverbRow& row : kAdverbRows) {
        adverbs.push_back(pageRow(row.english, {textOf(row.key)}));
    }
    expectSection(kAdverbs, adverbs);
    Rows colours;
    for (const ColourSpec& colour : kColours) {
        colours.push_back(pageRow(colour.word.name(), {textOf(colour.word)}));
    }
    expectSection(kColourWords, colours);
}

// The texts between backquotes.
Spellings spellingsIn(const std::string& row) {
    Spellings spellings;
    std::istringstream parts(row);
    std::string part;
    while (std::getline(parts, part, '`') && std::getline(parts, part, '`')) {
        spellings.push_back(utf16Of(part));
    }
    return spellings;
}

TEST_P(ReferencePage, MarkersAreThoseOfTheReader) {
    Spellings known;
    const Rows rows = rowsOfSection(kMarkerWords);
    ASSERT_EQ(rows.size(), kMarkerCount);
    for (const MarkerSpec& marker : kMarkers) {
        const std::string name = inBackquotes(marker.name);
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const std::string& candidate) {
            return candidate.find(name) != std::string::npos;
        });
        ASSERT_NE(row, rows.end()) << name;
        for (const std::u16string& spelling : spellingsIn(*row)) {
            const MarkerSpelling* read = markerSpelling(marker.marker, spelling, shippedWords());
            ASSERT_NE(read, nullptr) << utf8Of(spelling);
            EXPECT_EQ(read->units, spelling.size()) << utf8Of(spelling);
            known.push_back(spelling);
        }
    }
    for (const auto& [first, last] :
         {std::pair(Key(u"title"), Key(u"super")), std::pair(Key(u"mainimage"), Key(u"tvml"))}) {
        for (std::size_t i = first.index(); i <= last.index(); ++i) {
            EXPECT_EQ(std::count(known.begin(), known.end(), textOf(Key::at(i))), 1)
                << utf8Of(Key::at(i).name());
        }
    }
}

TEST_P(ReferencePage, PunctuationIsThatOfTheVocabulary) {
    const std::string page = this->page("script-language.md");
    ASSERT_EQ(shippedWords().problem(), LoadProblem::none);
    for (const Key key : {Key(u"kakko"), Key(u"toji_kakko"), Key(u"colon"), Key(u"caption"),
                          Key(u"kanma"), Key(u"touten1"), Key(u"touten2"), Key(u"hyphen"),
                          Key(u"period"), Key(u"kuten"), Key(u"num0"), Key(u"num9")}) {
        EXPECT_NE(page.find(inBackquotes(textOf(key))), std::string::npos) << utf8Of(key.name());
    }
}

TEST_P(ReferencePage, EveryElementIsNamed) {
    const std::string page = this->page("description.md");
    std::vector<std::u16string_view> names{kTwoshotElement, kTitleElement};
    const auto add = [&names](const auto& table) {
        for (const auto& row : table) {
            names.push_back(row.name);
        }
    };
    add(kCharacterElements);
    add(kSimpleElements);
    add(kPlainElements);
    for (const std::u16string_view name : names) {
        EXPECT_NE(page.find(inBackquotes(name)), std::string::npos) << utf8Of(name);
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, ReferencePage,
                         testing::Values(PageLanguage{"docs/", false},
                                         PageLanguage{"docs/ja/", true}),
                         [](const auto& page) { return page.param.japanese ? "ja" : "en"; });

} // namespace
} // namespace tvml
