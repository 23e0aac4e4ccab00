// docs/script-language.md lists the words of the code's tables and of the
// shipped vocabulary, each in its section, and no others; docs/description.md
// names every element.
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

const KeywordTable& words() {
    static const KeywordTable table = [] {
        KeywordTable loaded;
        loaded.load(platform::system());
        return loaded;
    }();
    return table;
}

std::u16string textOf(Key key) {
    return std::u16string(words()[key].textOrEmpty());
}

std::string inBackquotes(std::u16string_view text) {
    std::string quoted(1, '`');
    return quoted.append(utf8Of(text)).append(1, '`');
}

// The two cells that a word's row on the page begins with.
std::string pageRow(std::u16string_view english, const Spellings& vocabulary) {
    std::string row = "| " + inBackquotes(english) + " |";
    for (const std::u16string& spelling : vocabulary) {
        row += (&spelling == &vocabulary.front() ? " " : ", ") + inBackquotes(spelling);
    }
    return row;
}

// The first two cells of all rows of the tables in a section.
Rows rowsOfSection(const std::string& name) {
    std::istringstream page(readRepositoryFile("docs/script-language.md"));
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

void expectSection(const std::string& name, Rows expected) {
    Rows rows = rowsOfSection(name);
    std::sort(rows.begin(), rows.end());
    std::sort(expected.begin(), expected.end());
    Rows difference;
    std::set_difference(expected.begin(), expected.end(), rows.begin(), rows.end(),
                        std::back_inserter(difference));
    for (const std::string& row : difference) {
        ADD_FAILURE() << "section " << name << " lacks the row " << row;
    }
    difference.clear();
    std::set_difference(rows.begin(), rows.end(), expected.begin(), expected.end(),
                        std::back_inserter(difference));
    for (const std::string& row : difference) {
        ADD_FAILURE() << "section " << name << " has the row " << row << " for nothing";
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

std::string rowOf(const CommandSpec& command) {
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

Rows rowsOf(std::initializer_list<Taker> takers) {
    Rows rows;
    for (const CommandSpec& command : kCommands) {
        if (std::find(takers.begin(), takers.end(), command.taker) != takers.end()) {
            rows.push_back(rowOf(command));
        }
    }
    return rows;
}

TEST(ReferencePage, CommandsAreThoseOfTheTables) {
    expectSection("Staging commands", rowsOf({Taker::staging}));
    expectSection("Character commands", rowsOf({Taker::character, Taker::setting}));
    expectSection("Voices", rowsOf({Taker::voice}));
    expectSection("Words without effect", rowsOf({Taker::nobody}));
}

TEST(ReferencePage, AdverbsAndColoursAreThoseOfTheTables) {
    Rows adverbs;
    for (const AdverbRow& row : kAdverbRows) {
        adverbs.push_back(pageRow(row.english, {textOf(row.key)}));
    }
    expectSection("Adverbs", adverbs);
    Rows colours;
    for (const ColourSpec& colour : kColours) {
        colours.push_back(pageRow(colour.word.name(), {textOf(colour.word)}));
    }
    expectSection("Colours", colours);
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

TEST(ReferencePage, MarkersAreThoseOfTheReader) {
    Spellings known;
    const Rows rows = rowsOfSection("Markers");
    ASSERT_EQ(rows.size(), kMarkerCount);
    for (const MarkerSpec& marker : kMarkers) {
        const std::string start = "| " + inBackquotes(marker.name);
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const std::string& candidate) {
            return candidate.starts_with(start);
        });
        ASSERT_NE(row, rows.end()) << start;
        for (const std::u16string& spelling : spellingsIn(*row)) {
            const MarkerSpelling* read = markerSpelling(marker.marker, spelling, words());
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

TEST(ReferencePage, PunctuationIsThatOfTheVocabulary) {
    const std::string page = readRepositoryFile("docs/script-language.md");
    ASSERT_EQ(words().problem(), LoadProblem::none);
    for (const Key key : {Key(u"kakko"), Key(u"toji_kakko"), Key(u"colon"), Key(u"caption"),
                          Key(u"kanma"), Key(u"touten1"), Key(u"touten2"), Key(u"hyphen"),
                          Key(u"period"), Key(u"kuten"), Key(u"num0"), Key(u"num9")}) {
        EXPECT_NE(page.find(inBackquotes(textOf(key))), std::string::npos) << utf8Of(key.name());
    }
}

TEST(DescriptionPage, NamesEveryElement) {
    const std::string page = readRepositoryFile("docs/description.md");
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

} // namespace
} // namespace tvml
