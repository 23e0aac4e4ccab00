// From the text of a description to the nodes of its document.
#ifndef TVML_STAGING_XML_READER_H
#define TVML_STAGING_XML_READER_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "staging/xml_parser.h"

namespace tvml {

struct XmlNode {
    NodeKind kind = NodeKind::other;
    std::size_t parent = 0;     // number of the node in which it stands
    std::u16string_view name{}; // of an element, qualified
    // The units of a text in the document's texts, or the attributes of an element.
    std::size_t first = 0;
    std::size_t count = 0;
};

struct XmlAttribute {
    std::u16string_view name; // qualified
    std::size_t first;        // units of the value in the document's texts
    std::size_t count;
};

struct XmlNameHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view name) const {
        return std::hash<std::u16string_view>{}(name);
    }
};

struct XmlDocument {
    std::unordered_set<std::u16string, XmlNameHash, std::equal_to<>> names;
    std::vector<XmlNode> nodes; // in document order; the first is the document itself
    std::vector<XmlAttribute> attributes;
    std::u16string texts;     // all of them, and the values of attributes
    std::vector<XmlTag> tags; // when they were asked for
    std::optional<XmlError> error;

    std::u16string_view units(std::size_t first, std::size_t count) const {
        return std::u16string_view(texts).substr(first, count);
    }
};

// Reads up to the first error; what stands before is in the document. Throws
// std::bad_alloc.
void readXml(std::u16string_view text, const XmlOptions& options, XmlDocument& document);

} // namespace tvml

#endif
