// What scripts and descriptions can say, with the words of the vocabulary that
// is loaded. Entry: runList.
//
// Every row comes from the table by which the filter reads; nothing is listed
// from memory.
#include "host/list_command.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <utility>

#include <nlohmann/json.hpp>

#include "analysis/description_places.h"
#include "diagnostics/element_names.h"
#include "host/conversion.h"
#include "host/inputs.h"
#include "host/language.h"
#include "host/text_files.h"
#include "host/text_table.h"
#include "platform/host_services.h"
#include "reading/script_text.h"

namespace tvml::host {
namespace {

using Json = nlohmann::ordered_json;
using Texts = std::vector<std::u16string>;

constexpr int kJsonVersion = 1;

// ---- what is offered

struct KindName {
    OfferKind kind;
    std::string_view name; // in JSON
    Message text;
};

// What the two lists of names hold, and how they call it.
constexpr std::array<KindName, 7> kCommandKinds{{
    {OfferKind::staging, "staging", Message::kind_staging},
    {OfferKind::action, "character", Message::kind_character},
    {OfferKind::setting, "character", Message::kind_character},
    {OfferKind::voice, "voice", Message::kind_voice},
    {OfferKind::untaken, "without effect", Message::kind_untaken},
    {OfferKind::adverb, "adverb", Message::kind_adverb},
    {OfferKind::pose, "pose", Message::kind_pose},
}};
constexpr std::array<KindName, 2> kTagKinds{{
    {OfferKind::marker, "marker", Message::kind_marker},
    {OfferKind::tag, "declared", Message::kind_declared},
}};

// The lists of one kind of name.
struct KindList {
    ListedTable table;
    OfferKind kind;
    std::string_view name;
    bool ofDescription;
};
constexpr std::array<KindList, 8> kKindLists{{
    {ListedTable::sets, OfferKind::set, "sets", true},
    {ListedTable::models, OfferKind::model, "models", true},
    {ListedTable::characters, OfferKind::character, "characters", true},
    {ListedTable::poses, OfferKind::pose, "poses", true},
    {ListedTable::voices, OfferKind::voice, "voices", false},
    {ListedTable::colours, OfferKind::colour, "colours", false},
    {ListedTable::adverbs, OfferKind::adverb, "adverbs", false},
    {ListedTable::markers, OfferKind::marker, "markers", false},
}};

const KindList* kindListOf(ListedTable table) {
    const auto row = std::ranges::find(kKindLists, table, &KindList::table);
    return row == kKindLists.end() ? nullptr : &*row;
}

// The vocabulary, and the names that a description adds when one is given.
struct Loaded {
    Filter filter;
    ProgrammeOffer offer;

    explicit Loaded(const Options& options) {
        const KindList* const list = kindListOf(options.listed);
        if (options.description.empty() && (list == nullptr || !list->ofDescription)) {
            offer = offerOf(filter.words());
            return;
        }
        const std::u16string text = descriptionOf(options);
        AnalysisWants wants;
        wants.offer = true;
        offer = filter.run({{}, kNoLine, kNoLine, text}, wants).offer;
    }

    const Word& word(Key key) const { return filter.words()[key]; }
};

std::u16string englishOf(const OfferedName& name) {
    Texts all{name.english};
    all.insert(all.end(), name.otherEnglish.begin(), name.otherEnglish.end());
    return joined(all, u", ");
}

// ---- showing

std::string show(std::string_view table, const Options& options, const TextTable& text, Json rows) {
    if (options.format == ReportFormat::text) {
        return utf8(text.text());
    }
    const Json document{{"version", kJsonVersion}, {"list", table}, {"rows", std::move(rows)}};
    return document.dump() + "\n";
}

// The names of one kind, and of models and poses whose they are.
std::string showKind(const Options& options, const Loaded& loaded, const KindList& list) {
    const bool owned = list.table == ListedTable::models || list.table == ListedTable::poses;
    TextTable text({{label(Message::head_english)},
                    {label(list.ofDescription ? Message::head_japanese : Message::head_vocabulary)},
                    {owned ? label(Message::head_whose) : u""}});
    Json rows = Json::array();
    for (const OfferedName& name : loaded.offer.of(list.kind)) {
        const std::u16string english = englishOf(name);
        const std::u16string whose =
            name.letters.empty() ? std::u16string(label(Message::list_everybody)) : name.letters;
        text.add({english, joined(name.words, u", "), owned ? whose : u""});
        Json words = Json::array();
        for (const std::u16string& word : name.words) {
            words.push_back(utf8(word));
        }
        rows.push_back({{"english", utf8(english)},
                        {"words", std::move(words)},
                        {"letters", utf8(name.letters)}});
    }
    if (rows.empty() && options.format == ReportFormat::text) {
        return say(Message::list_none) + "\n";
    }
    return show(list.name, options, text, std::move(rows));
}

std::string showNames(std::string_view table, const Options& options, const Loaded& loaded,
                      std::span<const KindName> kinds) {
    TextTable text({{label(Message::head_english)},
                    {label(Message::head_kind)},
                    {label(Message::head_vocabulary)}});
    Json rows = Json::array();
    for (const OfferedName& name : loaded.offer.names) {
        const auto kind = std::ranges::find(kinds, name.kind, &KindName::kind);
        if (kind == kinds.end()) {
            continue;
        }
        const std::u16string english = englishOf(name);
        text.add({english, std::u16string(label(kind->text)), joined(name.words, u", ")});
        Json words = Json::array();
        for (const std::u16string& word : name.words) {
            words.push_back(utf8(word));
        }
        Json keys = Json::array();
        for (const std::u16string_view key : name.keys) {
            keys.push_back(utf8(key));
        }
        rows.push_back({{"english", utf8(english)},
                        {"kind", kind->name},
                        {"words", std::move(words)},
                        {"keys", std::move(keys)}});
    }
    return show(table, options, text, std::move(rows));
}

// What each key's word says in English, where a table has it. Colours are not
// told: their keys are their names.
std::map<std::u16string_view, std::u16string> meanings(const Loaded& loaded) {
    std::map<std::u16string_view, std::u16string> english;
    for (const OfferedName& name : loaded.offer.names) {
        for (const std::u16string_view key : name.keys) {
            if (name.kind != OfferKind::colour && name.kind != OfferKind::character) {
                english.emplace(key, englishOf(name));
            }
        }
    }
    return english;
}

// Blanks at the ends of a word would not be seen; the ini file wants such a
// word in quotes as well.
std::u16string visible(const Loaded& loaded, Key key) {
    const std::u16string word(loaded.word(key).textOrEmpty());
    if (!loaded.word(key).loaded()) {
        return std::u16string(label(Message::list_notLoaded));
    }
    const KeywordTable& words = loaded.filter.words();
    const bool blank = word.empty() || words.isBlank(word.front()) || words.isBlank(word.back());
    return blank ? u"\"" + word + u"\"" : word;
}

std::string showWords(const Options& options, const Loaded& loaded) {
    TextTable text(
        {{label(Message::head_key)}, {label(Message::head_word)}, {label(Message::head_english)}});
    Json rows = Json::array();
    const auto english = meanings(loaded);
    for (std::size_t i = 0; i < kKeyCount; ++i) {
        const Key key = Key::at(i);
        const auto meaning = english.find(key.name());
        const bool known = meaning != english.end();
        text.add({std::u16string(key.name()), visible(loaded, key), known ? meaning->second : u""});
        rows.push_back(
            {{"key", utf8(key.name())},
             {"word",
              loaded.word(key).loaded() ? Json(utf8(loaded.word(key).textOrEmpty())) : Json()},
             {"english", known ? Json(utf8(meaning->second)) : Json()}});
    }
    return show("words", options, text, std::move(rows));
}

// ---- elements

// The words of JSON.
std::string_view kindName(ElementKind kind) {
    // In the order of ElementKind.
    static constexpr std::array<std::string_view, 12> kNames{
        "",         "number",    "text", "by character", "variants", "by pair",
        "variants", "character", "sets", "pose",         "tag",      "switch"};
    return kNames[static_cast<std::size_t>(kind)];
}

// The same for people; no element is of the first kind, and the last is not shown.
std::u16string kindText(ElementKind kind) {
    static constexpr std::array<Message, 11> kTexts{
        Message::element_text,      Message::element_number,   Message::element_text,
        Message::element_character, Message::element_variants, Message::element_pair,
        Message::element_variants,  Message::element_model,    Message::element_sets,
        Message::element_pose,      Message::element_tag};
    return std::u16string(label(kTexts[static_cast<std::size_t>(kind)]));
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

std::string showElements(const Options& options) {
    TextTable text({{label(Message::head_element)},
                    {label(Message::head_kind)},
                    {label(Message::head_values), true},
                    {label(Message::head_builtIn)},
                    {label(Message::head_attributes)}});
    Json rows = Json::array();
    for (const std::u16string& name : elementNames()) {
        const ElementMeaning meaning = meaningOf(name);
        if (meaning.kind == ElementKind::switching) {
            continue; // told by the element that it belongs to
        }
        const std::string_view kind = kindName(meaning.kind);
        const auto attributes = attributesOf(meaning.kind);
        const std::u16string_view builtIn = builtInTextOf(name);
        const unsigned values = valueCountOf(name);
        text.add({name, kindText(meaning.kind),
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
    if (const KindList* const list = kindListOf(options.listed)) {
        return showKind(options, loaded, *list);
    }
    switch (options.listed) {
    case ListedTable::tags:
        return showNames("tags", options, loaded, kTagKinds);
    case ListedTable::words:
        return showWords(options, loaded);
    default:
        return showNames("commands", options, loaded, kCommandKinds);
    }
}

} // namespace

int runList(const Options& options) {
    writeOutput(listing(options));
    return kDone;
}

} // namespace tvml::host
