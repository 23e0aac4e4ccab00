// A filter description as an XML document in memory, and a cursor that walks it.
#ifndef TVML_STAGING_XML_PARSER_H
#define TVML_STAGING_XML_PARSER_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace tvml {

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

// Keeps the XML library initialised, so that a run does not pay for it. While no
// such object holds it, every XMLParser initialises it for itself.
class XmlLibrary {
public:
    XmlLibrary() = default;
    XmlLibrary(const XmlLibrary&) = delete;
    XmlLibrary& operator=(const XmlLibrary&) = delete;
    ~XmlLibrary();

    // True when the library can be used. Throws std::bad_alloc when there is no
    // memory to start it, and tries again after that; other failures stay.
    bool hold();

private:
    bool held_ = false;
    void* memory_ = nullptr; // of the library's start, when it happened here
};

// The place right behind an element's start tag, both numbers from 1.
struct XmlPosition {
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

// Where and why the XML ended before its end.
struct XmlError {
    XmlPosition position;
    std::u16string message;
};

struct XmlOptions {
    bool keepPositions = false; // fill positions() and error()
};

// Texts that the queries return belong to the document and stay valid as long
// as the parser.
class XMLParser {
public:
    // Parses `length` bytes of UTF-8; null parses nothing. An error in the XML
    // ends the parse silently: the nodes built before it stay. The description
    // is untrusted: it cannot make the parser open a file or a connection, and
    // what would take much more time or memory than its length accounts for (see
    // the limits in the .cpp) ends the parse like an error. Throws std::bad_alloc.
    XMLParser(const char* bytes, std::uint32_t length, const platform::Platform& platform,
              XmlOptions options = {});
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
    const std::vector<XmlPosition>& positions() const;
    const std::optional<XmlError>& error() const;

private:
    class Document; // the XML library's parser and the document

    const XmlNode* currentElement() const;

    XmlLibrary library_; // outlives the document
    std::unique_ptr<Document> parser_;
    const XmlNode* document_ = nullptr;
    const XmlNode* current_ = nullptr;
    bool started_ = false;
    std::size_t elementNumber_ = 0;
};

} // namespace tvml

#endif
