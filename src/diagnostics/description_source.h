// The text of a description and the places of its elements in it.
#ifndef TVML_DIAGNOSTICS_DESCRIPTION_SOURCE_H
#define TVML_DIAGNOSTICS_DESCRIPTION_SOURCE_H

#include <string_view>
#include <vector>

#include "diagnostics/finding.h"

namespace tvml {

class DescriptionSource {
public:
    // `text` must outlive the object.
    explicit DescriptionSource(std::u16string_view text);

    std::u16string_view text() const { return text_; }

    // The range of `units` units at an offset, cut at the end of its line.
    TextRange rangeAt(std::size_t offset, std::size_t units) const;

    // The start tag, "<" and ">" included; empty when the text does not hold it.
    std::u16string_view textOf(XmlTag tag) const;

    // The range of a view that is a part of the text.
    TextRange rangeOf(std::u16string_view part) const;

private:
    std::u16string_view text_;
    std::vector<std::size_t> lineStarts_;
};

// The names of the attributes in a start tag, in their order; parts of `tag`.
std::vector<std::u16string_view> attributeNames(std::u16string_view tag);

// The value of an attribute in a start tag as the source has it, with its
// references; empty without one. A part of `tag`.
std::u16string_view attributeSource(std::u16string_view tag, std::u16string_view name);

} // namespace tvml

#endif
