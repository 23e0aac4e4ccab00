// What scripts and descriptions can say, with the words of the vocabulary that
// is loaded. Entry: runList.
//
// Every row comes from the table by which the filter reads; nothing is listed
// from memory.
#include "host/list_command.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

#include <nlohmann/json.hpp>

#include "diagnostics/element_names.h"
#include "generation/command_names.h"
#include "host/conversion.h"
#include "host/text_files.h"
#include "host/text_table.h"
#include "platform/host_services.h"
#include "reading/command_tables.h"
#include "reading/script_text.h"

namespace tvml::host {
namespace {

using Json = nlohmann::ordered_json;
using Texts = std::vector<std::u16string>;

constexpr int kJsonVersion = 1;

std::string utf8(std::u16string_view text) {
    return platform::system().toUtf8(text);
}

// ---- what is loaded

// The vocabulary, and the names that a description adds when one is given.
class Loaded final : public ConversionReport {
public:
    explicit Loaded(const Options& options) {
        words.load(platform::system());
        if (!options.description.empty()) {
            const std::u16string text = readDescription(
                options.description, options.descriptionEncoding.value_or(options.encoding));
            convertHere({{}, 0, -1, text}, *this);
        }
    }

    void descriptionRead(const StagingDescription& staging, const TemplateDb&, char16_t,
                         const DiagnosticLog&) override {
        tags = staging.tags;
        poses = staging.poseNames;
        for (const auto& [name, texts] : staging.poseTemplates) {
            poseNames.insert(name);
        }
    }

    // A word as a script writes it; none when it was never loaded.
    std::u16string word(Key key) const { return std::u16string(words[key].textOrEmpty()); }

    KeywordTable words;
    DeclaredTags tags;
    TextMap poses; // Japanese -> English names
    std::set<std::u16string> poseNames;
};

// The vocabulary's names that lead to an English one.
Texts namesFor(const TextMap& names, std::u16string_view english) {
    Texts found;
    for (const auto& [name, target] : names) {
        if (target == english && name != english) {
            found.push_back(name);
        }
    }
    return found;
}

// ---- rows

// One thing that can be said: how in English, of which kind, with which words.
struct Entry {
    std::u16string name;
    std::string_view kind;
    Texts words;
    std::vector<std::string> keys; // of the words in keyword.ini
};

// What stands before the word of a row, as a writer would put it.
struct Sample {
    std::u16string english;
    std::u16string vocabulary;
};

Sample sampleFor(Match match, const Loaded& loaded) {
    switch (match) {
    case Match::letter:
        return {u"B", loaded.word(u"B2")};
    case Match::twoLetters:
        return {u"AB", loaded.word(u"A2") + loaded.word(u"B2")};
    case Match::number:
        return {u"3", loaded.word(u"num3")};
    case Match::equals:
    case Match::starts:
        break;
    }
    return {};
}

bool holds(const std::vector<std::u16string_view>& names, std::u16string_view name) {
    return std::ranges::find(names, name) != names.end();
}

// The table that takes a canonical name. Voices lie between the row of their
// command and that of the first switch.
std::string_view kindOf(const CommandRow& row) {
    if (holds(stagingCommandNames(), row.canonical)) {
        return "staging";
    }
    if (holds(characterCommandNames(), row.canonical)) {
        return "character";
    }
    return row.match == Match::starts ? "voice" : "without effect";
}

void addWord(Entry& entry, const Loaded& loaded, Key key, std::u16string_view before) {
    entry.keys.push_back(utf8(key.name()));
    if (loaded.words[key].loaded()) {
        entry.words.push_back(std::u16string(before) + loaded.word(key));
    }
}

std::vector<Entry> commands(const Loaded& loaded) {
    std::vector<Entry> entries;
    for (const CommandRow& row : kCommandRows) {
        const Sample sample = sampleFor(row.match, loaded);
        std::u16string name = std::u16string(row.canonical).append(sample.english);
        name.append(row.suffix);
        // Two words of different lengths have a row each.
        if (entries.empty() || entries.back().name != name) {
            entries.push_back({name, kindOf(row), {}, {}});
        }
        for (const RowWord& word : row.words) {
            addWord(entries.back(), loaded, word.key, sample.vocabulary);
        }
    }
    for (const AdverbRow& row : kAdverbRows) {
        entries.push_back({std::u16string(row.english), "adverb", {}, {}});
        addWord(entries.back(), loaded, row.key, {});
    }
    for (const std::u16string& name : loaded.poseNames) {
        entries.push_back({name, "pose", namesFor(loaded.poses, name), {}});
    }
    return entries;
}

std::vector<Entry> tags(const Loaded& loaded) {
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < kMarkerCount; ++i) {
        Entry entry{{}, "marker", {}, {}};
        Texts english;
        for (const MarkerSpelling& spelling : markerSpellings(static_cast<Marker>(i))) {
            if (spelling.english.empty()) {
                addWord(entry, loaded, spelling.word, {});
            } else {
                english.emplace_back(spelling.english);
            }
        }
        entry.name = joined(english, u", ");
        entries.push_back(std::move(entry));
    }
    for (const auto& [name, text] : loaded.tags.tagTexts) {
        entries.push_back({name, "declared", namesFor(loaded.tags.tagNames, name), {}});
    }
    return entries;
}

// ---- showing

std::string show(std::string_view table, const Options& options, const TextTable& text, Json rows) {
    if (options.format == ReportFormat::text) {
        return utf8(text.text());
    }
    const Json document{{"version", kJsonVersion}, {"list", table}, {"rows", std::move(rows)}};
    return document.dump() + "\n";
}

std::string showEntries(std::string_view table, const Options& options,
                        const std::vector<Entry>& entries) {
    TextTable text({{u"ENGLISH"}, {u"KIND"}, {u"IN THE VOCABULARY"}});
    Json rows = Json::array();
    for (const Entry& entry : entries) {
        text.add({entry.name, std::u16string(entry.kind.begin(), entry.kind.end()),
                  joined(entry.words, u", ")});
        Json words = Json::array();
        for (const std::u16string& word : entry.words) {
            words.push_back(utf8(word));
        }
        rows.push_back({{"english", utf8(entry.name)},
                        {"kind", entry.kind},
                        {"words", std::move(words)},
                        {"keys", entry.keys}});
    }
    return show(table, options, text, std::move(rows));
}

// What each key's word says in English, where a table has it.
std::map<std::string, std::u16string> meanings(const Loaded& loaded) {
    std::map<std::string, std::u16string> english;
    for (const auto& entries : {commands(loaded), tags(loaded)}) {
        for (const Entry& entry : entries) {
            for (const std::string& key : entry.keys) {
                english.emplace(key, entry.name);
            }
        }
    }
    return english;
}

// Blanks at the ends of a word would not be seen; the ini file wants such a
// word in quotes as well.
std::u16string visible(const Loaded& loaded, Key key) {
    const std::u16string word = loaded.word(key);
    if (!loaded.words[key].loaded()) {
        return u"(not loaded)";
    }
    const bool blank =
        word.empty() || loaded.words.isBlank(word.front()) || loaded.words.isBlank(word.back());
    return blank ? u"\"" + word + u"\"" : word;
}

std::string showWords(const Options& options, const Loaded& loaded) {
    TextTable text({{u"KEY"}, {u"WORD"}, {u"ENGLISH"}});
    Json rows = Json::array();
    const auto english = meanings(loaded);
    for (std::size_t i = 0; i < kKeyCount; ++i) {
        const Key key = Key::at(i);
        const std::string name = utf8(key.name());
        const auto meaning = english.find(name);
        const bool known = meaning != english.end();
        text.add({std::u16string(key.name()), visible(loaded, key), known ? meaning->second : u""});
        rows.push_back(
            {{"key", name},
             {"word", loaded.words[key].loaded() ? Json(utf8(loaded.word(key))) : Json()},
             {"english", known ? Json(utf8(meaning->second)) : Json()}});
    }
    return show("words", options, text, std::move(rows));
}

// ---- elements

std::string_view kindName(ElementKind kind) {
    // In the order of ElementKind.
    static constexpr std::array<std::string_view, 12> kNames{
        "",         "number",    "text", "by character", "variants", "by pair",
        "variants", "character", "sets", "pose",         "tag",      "switch"};
    return kNames[static_cast<std::size_t>(kind)];
}

// What stands in when a description lacks the element; empty for nothing.
std::u16string_view defaultOf(std::u16string_view name) {
    for (const ElementRow& row : kCharacterElements) {
        if (row.name == name) {
            return row.defaultText;
        }
    }
    const auto inBuiltins = [name](const auto& rows) {
        const auto row = std::ranges::find(rows, name, &BuiltinRow::name);
        return row == rows.end() ? std::u16string_view{} : defaultTextOf(*row);
    };
    if (name == kTwoshotElement || name == kTitleElement) {
        return name == kTwoshotElement ? kTwoshotDefault : BuiltinStaging::titleCard();
    }
    const std::u16string_view simple = inBuiltins(kSimpleElements);
    return simple.empty() ? inBuiltins(kPlainElements) : simple;
}

// The first line, and how many follow.
std::u16string inBrief(std::u16string_view text) {
    constexpr std::size_t kShown = 60;
    const std::u16string_view line = text.substr(0, text.find(u'\n'));
    const auto more = std::ranges::count(text, u'\n') - 1;
    std::u16string brief(line.substr(0, kShown));
    brief += line.size() > kShown ? u"…" : u"";
    return more <= 0 ? brief : brief + u" (+" + decimalText(static_cast<std::int32_t>(more)) + u")";
}

// How many values "$1", "$2" and so on have. Only one element has a tenth;
// elsewhere "$11" is "$1" and a digit.
unsigned valueCount(const ElementMeaning& meaning, std::u16string_view builtIn) {
    return builtIn.find(u"$10") == builtIn.npos ? meaning.placeholders : 10;
}

std::string showElements(const Options& options) {
    TextTable text({{u"ELEMENT"}, {u"KIND"}, {u"VALUES", true}, {u"BUILT IN"}, {u"ATTRIBUTES"}});
    Json rows = Json::array();
    for (const std::u16string& name : elementNames()) {
        const ElementMeaning meaning = meaningOf(name);
        if (meaning.kind == ElementKind::switching) {
            continue; // told by the element that it belongs to
        }
        const std::string_view kind = kindName(meaning.kind);
        const auto attributes = attributesOf(meaning.kind);
        const std::u16string_view builtIn = defaultOf(name);
        const unsigned values = valueCount(meaning, builtIn);
        text.add({name, std::u16string(kind.begin(), kind.end()),
                  values == 0 ? u"" : decimalText(static_cast<std::int32_t>(values)),
                  inBrief(builtIn), joined({attributes.begin(), attributes.end()}, u", ")});
        Json names = Json::array();
        for (const std::u16string_view attribute : attributes) {
            names.push_back(utf8(attribute));
        }
        const bool switched = meaningOf(name + u"_switch").kind == ElementKind::switching;
        rows.push_back({{"element", utf8(name)},
                        {"kind", kind},
                        {"values", values},
                        {"attributes", std::move(names)},
                        {"switch", switched},
                        {"builtIn", utf8(builtIn)}});
    }
    return show("elements", options, text, std::move(rows));
}

std::string listing(const Options& options) {
    if (options.listed == ListedTable::elements) {
        return showElements(options);
    }
    const Loaded loaded(options);
    switch (options.listed) {
    case ListedTable::tags:
        return showEntries("tags", options, tags(loaded));
    case ListedTable::words:
        return showWords(options, loaded);
    default:
        return showEntries("commands", options, commands(loaded));
    }
}

} // namespace

int runList(const Options& options) {
    if (const auto failure =
            platform::writeStream(platform::OutputStream::output, listing(options))) {
        throw inputOrOutputError(outputName(kStandardStream), {}, *failure);
    }
    return kDone;
}

} // namespace tvml::host
