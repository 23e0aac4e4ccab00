// Entries: placeIn, namesAt, declaredNames.
#include "analysis/description_places.h"

#include <algorithm>
#include <array>

#include "diagnostics/description_source.h"
#include "reading/script_text.h"
#include "staging/builtin_staging.h"
#include "staging/staging_elements.h"

namespace tvml {
namespace {

constexpr std::u16string_view kBlanks = u" \t\r\n";

bool isNameUnit(char16_t unit) {
    return unit > u' ' && std::u16string_view(u"<>/=\"'$&").find(unit) == kNone;
}

std::size_t nameStart(std::u16string_view text) {
    std::size_t start = text.size();
    while (start > 0 && isNameUnit(text[start - 1])) {
        --start;
    }
    return start;
}

std::u16string_view nameBehind(std::u16string_view text, std::size_t from) {
    std::size_t end = from;
    while (end < text.size() && isNameUnit(text[end])) {
        ++end;
    }
    return text.substr(from, end - from);
}

std::u16string_view lastNameOf(std::u16string_view text) {
    text = text.substr(0, text.find_last_not_of(kBlanks) + 1);
    return text.substr(nameStart(text));
}

// The element around the end of a text, by its tags alone: the last that begins and
// does not end. One look at each tag, from the end to the one that is found.
std::u16string_view openElement(std::u16string_view text) {
    std::size_t closed = 0;
    for (std::size_t at = text.rfind(u'<'); at != kNone;
         at = at == 0 ? kNone : text.rfind(u'<', at - 1)) {
        const std::size_t end = text.find(u'>', at);
        const bool isWhole = end != kNone && text[end - 1] == u'/';
        if (text.substr(at).starts_with(u"</")) {
            ++closed;
        } else if (!isWhole && !text.substr(at).starts_with(u"<!")) {
            if (closed == 0) {
                return nameBehind(text, at + 1);
            }
            --closed;
        }
    }
    return {};
}

// Inside a tag that is not finished.
DescriptionPlace placeInTag(std::u16string_view text, std::size_t open) {
    DescriptionPlace place;
    const std::u16string_view tag = text.substr(open);
    place.isEndTag = tag.starts_with(u"</");
    place.element = nameBehind(text, open + (place.isEndTag ? 2 : 1));
    place.start = open + nameStart(tag);
    if (tag.find_first_of(kBlanks) == kNone) {
        place.part = DescriptionPart::element;
        place.element = place.isEndTag ? openElement(text.substr(0, open)) : u"";
        return place;
    }
    const std::size_t equals = tag.rfind(u'=');
    const std::size_t quote = equals == kNone ? kNone : tag.find_first_of(u"\"'", equals);
    const bool isValue = quote != kNone && tag.find(tag[quote], quote + 1) == kNone;
    place.part = isValue ? DescriptionPart::value : DescriptionPart::attribute;
    if (isValue) {
        place.attribute = lastNameOf(tag.substr(0, equals));
        place.start = open + quote + 1;
    }
    return place;
}

std::vector<DescriptionName> elementsFor(const DescriptionPlace& place) {
    if (place.isEndTag) {
        return {{place.element, u">"}};
    }
    std::vector<DescriptionName> names;
    for (const std::u16string& name : elementNames()) {
        names.push_back({name, attributesOf(meaningOf(name).kind).empty() ? u">" : u""});
    }
    return names;
}

std::vector<DescriptionName> attributesFor(const DescriptionPlace& place) {
    std::vector<DescriptionName> names;
    for (const std::u16string_view name : attributesOf(meaningOf(place.element).kind)) {
        names.push_back({std::u16string(name), u"=\"\""});
    }
    return names;
}

std::vector<DescriptionName> valuesFor(const DescriptionPlace& place) {
    std::vector<DescriptionName> names;
    if (place.attribute == u"default") {
        return {{u"yes", u""}, {u"no", u""}};
    }
    if (place.attribute.starts_with(u"character")) {
        for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
            names.push_back({std::u16string(1, letter), u""});
        }
    }
    return names;
}

std::vector<DescriptionName> textsFor(const DescriptionPlace& place) {
    std::vector<DescriptionName> names;
    if (meaningOf(place.element).kind == ElementKind::switching) {
        return {{u"random", u""}, {u"toggle", u""}};
    }
    for (unsigned number = 1; number <= valueCountOf(place.element); ++number) {
        names.push_back({u"$" + decimalText(static_cast<std::int32_t>(number)), u""});
    }
    return names;
}

std::size_t offsetOf(std::u16string_view text, const ElementPlace& place) {
    std::size_t start = 0;
    for (std::int32_t line = 1; line < place.line; ++line) {
        start = std::min(text.find(u'\n', start), text.size() - 1) + 1;
    }
    return start + place.column - 1;
}

void addField(std::u16string_view text, std::size_t from, std::u16string_view field,
              std::vector<DeclaredName>& names) {
    const std::size_t first = field.find_first_not_of(kBlanks);
    if (first != kNone) {
        const std::size_t last = field.find_last_not_of(kBlanks);
        names.push_back({from + first, text.substr(from + first, last - first + 1)});
    }
}

// Two names of each line of <set>, apart by "::".
void addSets(std::u16string_view text, std::size_t start, std::vector<DeclaredName>& names) {
    const std::size_t end = std::min(text.find(u'<', start), text.size());
    while (start < end) {
        const std::size_t lineEnd = std::min(text.find(u'\n', start), end);
        const std::u16string_view line = text.substr(start, lineEnd - start);
        const std::size_t second = line.find(u"::");
        const std::size_t third = second == kNone ? kNone : line.find(u"::", second + 2);
        if (third != kNone) {
            addField(text, start, line.substr(0, second), names);
            addField(text, start + second + 2, line.substr(second + 2, third - second - 2), names);
        }
        start = lineEnd + 1;
    }
}

} // namespace

DescriptionPlace placeIn(std::u16string_view description, std::size_t offset) {
    const std::u16string_view text = description.substr(0, std::min(offset, description.size()));
    const std::size_t open = text.rfind(u'<');
    const std::size_t close = text.rfind(u'>');
    if (open != kNone && (close == kNone || close < open)) {
        return placeInTag(text, open);
    }
    DescriptionPlace place;
    place.element = openElement(text);
    const std::size_t dollar = text.find_last_not_of(u"0123456789");
    const bool isPlaceholder = dollar != kNone && text[dollar] == u'$';
    place.part = isPlaceholder ? DescriptionPart::placeholder : DescriptionPart::text;
    place.start = isPlaceholder ? dollar : nameStart(text);
    return place;
}

std::vector<DescriptionName> namesAt(const DescriptionPlace& place) {
    switch (place.part) {
    case DescriptionPart::element:
        return elementsFor(place);
    case DescriptionPart::attribute:
        return attributesFor(place);
    case DescriptionPart::value:
        return valuesFor(place);
    case DescriptionPart::text:
    case DescriptionPart::placeholder:
        break;
    }
    return textsFor(place);
}

std::u16string_view builtInTextOf(std::u16string_view element) {
    for (const ElementRow& row : kCharacterElements) {
        if (row.name == element) {
            return row.defaultText;
        }
    }
    const auto inBuiltins = [element](const auto& rows) {
        const auto row = std::ranges::find(rows, element, &BuiltinRow::name);
        return row == rows.end() ? std::u16string_view{} : defaultTextOf(*row);
    };
    if (element == kTwoshotElement || element == kTitleElement) {
        return element == kTwoshotElement ? kTwoshotDefault : BuiltinStaging::titleCard();
    }
    const std::u16string_view simple = inBuiltins(kSimpleElements);
    return simple.empty() ? inBuiltins(kPlainElements) : simple;
}

// Only one element has a tenth; elsewhere "$11" is "$1" and a digit.
unsigned valueCountOf(std::u16string_view element) {
    return builtInTextOf(element).find(u"$10") == kNone ? meaningOf(element).placeholders : 10;
}

std::vector<DeclaredName> declaredNames(const LoadedProgramme& programme) {
    static constexpr std::array<std::u16string_view, 2> kAttributes{u"japanesename",
                                                                    u"englishname"};
    const std::u16string_view text = programme.description();
    std::vector<DeclaredName> names;
    for (const ElementPlace& place : programme.elements()) {
        if (place.line == 0) {
            continue;
        }
        const std::size_t start = offsetOf(text, place);
        const std::size_t end = std::min(text.find(u'>', start), text.size() - 1);
        const std::u16string_view tag = text.substr(start, end - start + 1);
        for (const std::u16string_view attribute : kAttributes) {
            const std::u16string_view value = attributeSource(tag, attribute);
            if (!value.empty()) {
                names.push_back({static_cast<std::size_t>(value.data() - text.data()), value});
            }
        }
        if (place.name == u"set") {
            addSets(text, end + 1, names);
        }
    }
    return names;
}

} // namespace tvml
