// What the elements of a description may hold: names, attributes, placeholders.
#ifndef TVML_DIAGNOSTICS_ELEMENT_NAMES_H
#define TVML_DIAGNOSTICS_ELEMENT_NAMES_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tvml {

enum class ElementKind : std::uint8_t {
    unknown,
    number,    // <numofchar>
    plain,     // a text that counts once
    character, // variants of characters
    simple,    // variants without characters
    twoshot,
    title,
    model,
    set,
    pose,
    tag,
    switching, // <…_switch>
};

// What an element name means.
struct ElementMeaning {
    ElementKind kind = ElementKind::unknown;
    unsigned placeholders = 0; // "$1" to this one are filled
};
ElementMeaning meaningOf(std::u16string_view name);

// The attributes that an element of this kind can have.
std::span<const std::u16string_view> attributesOf(ElementKind kind);

// All names, in the order of the tables.
const std::vector<std::u16string>& elementNames();

// What an unknown name was meant to be: by its meaning, else by its spelling.
std::vector<std::u16string> suggestedElements(std::u16string_view name);

} // namespace tvml

#endif
