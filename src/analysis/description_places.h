// What stands at a place of a description, and what may stand there. Half-typed
// descriptions are no XML yet, so the text is looked at around the place alone.
#ifndef TVML_ANALYSIS_DESCRIPTION_PLACES_H
#define TVML_ANALYSIS_DESCRIPTION_PLACES_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/programme.h"
#include "diagnostics/element_names.h"

namespace tvml {

enum class DescriptionPart : std::uint8_t { text, element, attribute, value, placeholder };

struct DescriptionPlace {
    DescriptionPart part = DescriptionPart::text;
    std::u16string element;   // at hand: whose tag or text it is
    std::u16string attribute; // whose value it is
    std::size_t start = 0;    // of what is typed, up to the place
    bool isEndTag = false;    // a name behind "</"
};
DescriptionPlace placeIn(std::u16string_view description, std::size_t offset);

// A name that may stand there, with what it needs behind it.
struct DescriptionName {
    std::u16string text;
    std::u16string ending;
};
std::vector<DescriptionName> namesAt(const DescriptionPlace& place);

// The text that stands in for an element that a description lacks; empty for none.
std::u16string_view builtInTextOf(std::u16string_view element);

// How many of "$1", "$2" and so on the element's text gets.
unsigned valueCountOf(std::u16string_view element);

// A name that an element declares: its attribute's value, or a field of <set>.
struct DeclaredName {
    std::size_t offset = 0; // of the name as the text has it
    std::u16string_view name;
};

// All places that declare names of tags, poses, models and sets.
std::vector<DeclaredName> declaredNames(const LoadedProgramme& programme);

} // namespace tvml

#endif
