// Why the XML of a description is broken, in the words of people who write it.
#ifndef TVML_DIAGNOSTICS_XML_CAUSE_H
#define TVML_DIAGNOSTICS_XML_CAUSE_H

#include <cstdint>
#include <string_view>

namespace tvml {

enum class XmlMistake : std::uint8_t {
    none,           // nothing of the following
    loneAmpersand,  // "&" that begins no reference
    loneLess,       // "<" that begins no markup
    strayEndTag,    // an end tag of no open element
    unclosed,       // an element that something else ends before its end tag
    attributeQuote, // a value without quotes, or with quotes that are never closed
    declaration,    // an XML declaration, of which the filter writes its own
    tagEnd,         // a tag without its ">"
    commentEnd,     // a comment that goes on into the next one
    rootEnd,        // the text ends before the end tag of its root
};

struct XmlCause {
    XmlMistake mistake = XmlMistake::none;
    std::u16string_view where; // part of the text
    std::u16string_view name;  // of the element that is open
    std::u16string_view open;  // its start tag
};

// The first mistake in the text. Comments, sections, instructions and a document
// type are passed over. Costs one pass.
XmlCause causeOf(std::u16string_view text);

} // namespace tvml

#endif
