// A filter description as an XML document in memory, and a cursor that walks it.
#ifndef TVML_STAGING_XML_PARSER_H
#define TVML_STAGING_XML_PARSER_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvml {

struct XmlDocument;
struct XmlNode;

// The kind of the node under the cursor.
enum class NodeKind : std::uint8_t {
    none = 0,
    element = 1,
    text = 2,
    comment = 3,
    cdata = 4,
    other = 5
};

// An element's start tag in the text, in UTF-16 units; without length when the
// text does not hold it, since it stands in an entity.
struct XmlTag {
    std::size_t offset = 0;
    std::size_t length = 0;
    std::size_t parent = 0; // number of the element around it, 0 without one
};

// Where and why the XML ended before its end.
struct XmlError {
    std::size_t offset = 0;
    std::u16string message{};
};

struct XmlOptions {
    bool keepPositions = false; // fill tags() and error()
};

// Parses a text, which may go when that is done. An error in the XML ends the
// parse silently: the nodes built before it stay. Lone surrogates count as
// U+FFFD; a declaration (`<?xml ...?>`) is an error. The description is
// untrusted: it cannot make the parser open a file or a connection, and what
// would take much more time or memory than its length accounts for (see
// xml_limits.h) ends the parse like an error. Throws std::bad_alloc.
std::shared_ptr<const XmlDocument> parseXml(std::u16string_view text, XmlOptions options = {});

// A walk through a document. Texts that the queries return belong to the document
// and stay valid as long as any walk through it.
class XMLParser {
public:
    explicit XMLParser(std::u16string_view text, XmlOptions options = {})
        : XMLParser(parseXml(text, options)) {}
    explicit XMLParser(std::shared_ptr<const XmlDocument> document);
    virtual ~XMLParser();
    XMLParser(const XMLParser&) = delete;
    XMLParser& operator=(const XMLParser&) = delete;

    // Moves to the next node in document order, first to the document itself.
    // False when the walk is over.
    bool nextNode();

    NodeKind nodeKind() const;

    // The element `levelsUp` parents above the cursor is named `name` and has
    // the given attribute values; attributes without a name are not asked for.
    // The cursor must stand on an element or a text.
    bool matchElement(std::u16string_view name, unsigned levelsUp,
                      const char16_t* attrName1 = nullptr, std::u16string_view attrValue1 = {},
                      const char16_t* attrName2 = nullptr,
                      std::u16string_view attrValue2 = {}) const;

    // The qualified name of the cursor's element, empty when it is none.
    std::u16string_view elementName() const;

    // The content of the cursor element's first child without white space at its
    // ends, when that child is a text; none when there is no such text or it is
    // empty.
    std::optional<std::u16string_view> elementText() const;

    // None when the cursor's node is no element or has no attributes at all;
    // empty when it has others but not this one.
    std::optional<std::u16string_view> attributeValue(const char16_t* name) const;
    bool hasAttributeValue(const char16_t* name) const;

    // Number of the cursor's element in document order, from 1.
    std::size_t elementNumber() const { return elementNumber_; }

    // One per element in document order, when they were asked for.
    const std::vector<XmlTag>& tags() const;
    const std::optional<XmlError>& error() const;

private:
    const XmlNode* currentElement() const;
    std::optional<std::u16string_view> valueAt(const XmlNode& element,
                                               std::u16string_view name) const;

    const std::shared_ptr<const XmlDocument> document_;
    std::size_t current_ = std::u16string_view::npos; // number of the node, npos without one
    std::size_t elementNumber_ = 0;
};

} // namespace tvml

#endif
