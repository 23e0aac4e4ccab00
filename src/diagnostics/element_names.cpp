// Entries: meaningOf, attributesOf, elementNames, suggestedElements.
#include "diagnostics/element_names.h"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "diagnostics/meant_words.h"
#include "diagnostics/suggestions.h"
#include "staging/staging_elements.h"

namespace tvml {
namespace {

// clang-format off
constexpr std::array<std::u16string_view, 1> kCharacterAttributes{u"character"};
constexpr std::array<std::u16string_view, 2> kPairAttributes{u"character1", u"character2"};
constexpr std::array<std::u16string_view, 4> kTitleAttributes{
    u"titlefont_ja", u"titlefont_en", u"subtitlefont_ja", u"subtitlefont_en"};
constexpr std::array<std::u16string_view, 11> kModelAttributes{
    u"character", u"japanesename", u"englishname", u"default", u"hiplevel", u"hipposition",
    u"lipsync", u"speed", u"pitch", u"intonation", u"volume"};
constexpr std::array<std::u16string_view, 2> kNameAttributes{u"japanesename", u"englishname"};
constexpr std::array<std::u16string_view, 3> kPoseAttributes{u"japanesename", u"englishname", u"character"};

struct CountRow {
    std::u16string_view name;
    unsigned placeholders;
};

// Plain texts whose command fills more than their built-in text shows.
constexpr std::array<CountRow, 2> kPlainCounts{{{u"longshot", 2}, {u"trackshot", 3}}};

// Elements that are no row of the tables of templates and texts.
struct OwnRow {
    std::u16string_view name;
    ElementMeaning meaning;
};
constexpr std::array<OwnRow, 5> kOwnElements{{
    {u"numofchar",      {ElementKind::number, 0}},
    {u"model_for_char", {ElementKind::model, 0}},
    {u"set",            {ElementKind::set, 0}},
    {u"pose",           {ElementKind::pose, 4}},
    {u"tag",            {ElementKind::tag, 1}},
}};
// clang-format on

// The highest placeholder of a built-in text: they use all that are filled. One
// digit decides: "$11" is "$1" and a 1.
unsigned highestPlaceholder(std::u16string_view text) {
    unsigned highest = 0;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == u'$' && text[i + 1] >= u'1' && text[i + 1] <= u'9') {
            highest = std::max(highest, static_cast<unsigned>(text[i + 1] - u'0'));
        }
    }
    return highest;
}

struct Elements {
    std::vector<std::u16string> names;
    std::unordered_map<std::u16string, ElementMeaning> meanings;

    void add(std::u16string_view name, ElementMeaning meaning) {
        names.emplace_back(name);
        meanings.emplace(name, meaning);
    }
    void addSwitched(std::u16string_view name, ElementKind kind, std::u16string_view builtin) {
        add(name, {kind, highestPlaceholder(builtin)});
        add(std::u16string(name) + u"_switch", {ElementKind::switching, 0});
    }
};

Elements makeElements() {
    Elements elements;
    for (const OwnRow& row : kOwnElements) {
        elements.add(row.name, row.meaning);
    }
    for (const BuiltinRow& row : kPlainElements) {
        const auto known =
            std::find_if(kPlainCounts.begin(), kPlainCounts.end(),
                         [&](const CountRow& count) { return count.name == row.name; });
        elements.add(row.name, {ElementKind::plain, known != kPlainCounts.end()
                                                        ? known->placeholders
                                                        : highestPlaceholder(defaultTextOf(row))});
    }
    for (const ElementRow& row : kCharacterElements) {
        elements.addSwitched(row.name, ElementKind::character, row.defaultText);
    }
    for (const BuiltinRow& row : kSimpleElements) {
        elements.addSwitched(row.name, ElementKind::simple, defaultTextOf(row));
    }
    elements.addSwitched(kTwoshotElement, ElementKind::twoshot, kTwoshotDefault);
    elements.addSwitched(kTitleElement, ElementKind::title, BuiltinStaging::titleCard());
    return elements;
}

const Elements& allElements() {
    static const Elements kElements = makeElements();
    return kElements;
}

// A name as it is compared with words: without "_", "<" and the like.
std::u16string elementKey(std::u16string_view name) {
    std::u16string key = wordKey(name);
    std::erase(key, u'_');
    return key;
}

// The element of a command, of an adverb behind a comma or not.
std::u16string elementOf(Sense sense, std::u16string_view target) {
    if (sense != Sense::command) {
        return std::u16string(target);
    }
    const std::u16string_view name = target.substr(0, target.find(u','));
    return std::u16string(std::ranges::find(kCommands, name, &CommandSpec::name)->element);
}

} // namespace

std::vector<std::u16string> suggestedElements(std::u16string_view name) {
    if (name.size() > ClosestNames::kLongestGiven) {
        return {};
    }
    for (const std::u16string& element : elementNames()) {
        if (wordKey(element) == wordKey(name)) { // in capitals, or in two words
            return {element};
        }
    }
    const MeaningIndex& table = MeaningIndex::instance();
    const std::u16string key = elementKey(name);
    std::vector<std::u16string> found;
    for (const Sense sense : {Sense::element, Sense::command}) {
        for (const std::u16string& form : {wordKey(name), key}) {
            for (const std::u16string_view target : table.find(sense, form)) {
                const std::u16string element = elementOf(sense, target);
                if (found.empty() && meaningOf(element).kind != ElementKind::unknown) {
                    found.push_back(element);
                }
            }
        }
    }
    if (!found.empty() || table.knows(key)) {
        return found;
    }
    ClosestNames closest(name);
    for (const std::u16string& element : elementNames()) {
        closest.offer(element);
    }
    return closest.take();
}

ElementMeaning meaningOf(std::u16string_view name) {
    const auto& meanings = allElements().meanings;
    const auto found = meanings.find(std::u16string(name));
    return found == meanings.end() ? ElementMeaning{} : found->second;
}

std::span<const std::u16string_view> attributesOf(ElementKind kind) {
    switch (kind) {
    case ElementKind::character:
        return kCharacterAttributes;
    case ElementKind::twoshot:
        return kPairAttributes;
    case ElementKind::title:
        return kTitleAttributes;
    case ElementKind::model:
        return kModelAttributes;
    case ElementKind::pose:
        return kPoseAttributes;
    case ElementKind::tag:
        return kNameAttributes;
    default:
        return {};
    }
}

const std::vector<std::u16string>& elementNames() {
    return allElements().names;
}

} // namespace tvml
