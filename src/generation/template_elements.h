// The elements of the command table as the staging knows them. A row that names
// no element of its kind does not compile.
#ifndef TVML_GENERATION_TEMPLATE_ELEMENTS_H
#define TVML_GENERATION_TEMPLATE_ELEMENTS_H

#include <array>
#include <optional>
#include <string_view>

#include "reading/command_spec.h"
#include "staging/staging_elements.h"

namespace tvml {

template <typename Element, typename Rows>
constexpr std::optional<Element> elementIn(const Rows& rows, std::u16string_view name) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].name == name) {
            return static_cast<Element>(i);
        }
    }
    return std::nullopt;
}

// A row's element: the template of a character, or a text.
struct RowElement {
    std::optional<CharacterElement> character;
    std::optional<PlainElement> plain;
};

namespace detail {

constexpr std::array<RowElement, kCommands.size()> rowElements() {
    std::array<RowElement, kCommands.size()> elements{};
    for (std::size_t i = 0; i < kCommands.size(); ++i) {
        elements[i] = {elementIn<CharacterElement>(kCharacterElements, kCommands[i].element),
                       elementIn<PlainElement>(kPlainElements, kCommands[i].element)};
    }
    return elements;
}

} // namespace detail

inline constexpr std::array kRowElements = detail::rowElements();

constexpr const RowElement& elementOf(const CommandSpec& row) {
    return kRowElements[static_cast<std::size_t>(&row - kCommands.data())];
}

namespace detail {

constexpr bool elementsExist() {
    for (const CommandSpec& row : kCommands) {
        const RowElement& element = elementOf(row);
        if (!row.element.empty() && row.element != kTwoshotElement &&
            !element.character.has_value() && !element.plain.has_value()) {
            return false;
        }
        const bool fills = row.action == Action::fillTemplate || row.action == Action::closeUp;
        const bool writes = row.action == Action::writeText || row.action == Action::hidePlate ||
                            row.action == Action::light;
        if ((fills && !element.character.has_value()) || (writes && !element.plain.has_value())) {
            return false;
        }
    }
    return true;
}

static_assert(elementsExist(), "every command's element is one of the description");

} // namespace detail

} // namespace tvml

#endif
