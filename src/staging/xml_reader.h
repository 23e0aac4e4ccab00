// From the text of a description to the tree of its nodes.
#ifndef TVML_STAGING_XML_READER_H
#define TVML_STAGING_XML_READER_H

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "staging/xml_parser.h"
#include "staging/xml_tree.h"

namespace tvml {

struct XmlDocument {
    std::set<std::u16string, std::less<>> names; // of elements and attributes
    XmlTree tree;
    std::vector<XmlTag> tags; // when they were asked for
    std::optional<XmlError> error;
};

// Reads up to the first error; what stands before is in the document. Throws
// std::bad_alloc.
void readXml(std::u16string_view text, const XmlOptions& options, XmlDocument& document);

} // namespace tvml

#endif
