// The XML library behind one door. Entry: XMLParser.
#include "staging/xml_parser.h"

#include "staging/xml_memory.h"

#include <algorithm>
#include <new>
#include <set>
#include <string>
#include <type_traits>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PanicHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

namespace tvml {
namespace {

namespace xml = xercesc;

static_assert(std::is_same_v<XMLCh, char16_t>, "texts go to and from the XML library as they are");

// What a description may ask of the library. The parse ends at the first thing
// beyond, as at an error in the XML. A staging needs but a small part of each;
// without them the cost of a description could grow much faster than its size,
// because the library keeps such things in lists that it searches from an end.
constexpr XMLSize_t kMostAttributes = 250;      // of one element
constexpr std::size_t kMostDepth = 1000;        // elements inside each other
constexpr std::size_t kMostNames = 4000;        // different names and namespaces
constexpr std::size_t kMostNamespaces = 100;    // with a prefix
constexpr std::size_t kMostDeclarations = 1000; // of a document type
constexpr std::size_t kLongestEntity = 65536;   // units
constexpr std::size_t kMostExpansions = 50000;  // of entities
constexpr std::size_t kMostOpenEntities = 50;   // inside each other
constexpr std::size_t kAddedUnits = 4'000'000;  // of text that entities and defaults add

constexpr int kMostPauses = 10001;

// Thrown through the library, which takes it for its own way to end a parse.
constexpr xml::XMLErrs::Codes kEndOfParse = xml::XMLErrs::EntityExpansionLimitExceeded;

const xml::DOMNode* node(const void* pointer) {
    return static_cast<const xml::DOMNode*>(pointer);
}

const xml::DOMElement* elementOf(const xml::DOMNode* at) {
    return at != nullptr && at->getNodeType() == xml::DOMNode::ELEMENT_NODE
               ? static_cast<const xml::DOMElement*>(at)
               : nullptr;
}

// Notes where a parse ended; says nothing to anyone.
class ErrorNote final : public xml::ErrorHandler {
public:
    void warning(const xml::SAXParseException&) override {}
    void error(const xml::SAXParseException&) override {}
    void fatalError(const xml::SAXParseException& problem) override {
        const XMLCh* message = problem.getMessage();
        note({problem.getLineNumber(), problem.getColumnNumber()},
             message != nullptr ? message : u"");
    }
    void resetErrors() override {}

    void note(XmlPosition position, std::u16string_view message) {
        if (!noted.has_value()) {
            noted = XmlError{position, std::u16string(message)};
        }
    }

    std::optional<XmlError> noted;
};

bool hasValue(const xml::DOMElement& element, const char16_t* name, std::u16string_view value) {
    const xml::DOMAttr* attribute = element.getAttributeNode(name);
    return attribute != nullptr && value == attribute->getValue();
}

// What a parse finds out besides the document, and what it has used up. Outlives
// the builder, which is not destroyed when memory ran out.
struct ParseNotes {
    explicit ParseNotes(XmlOptions given) : options(given) {}

    const XmlOptions options;
    ErrorNote errors;
    std::vector<XmlPosition> positions;
    std::set<std::u16string, std::less<>> names;
    std::size_t depth = 0;
    std::size_t declarations = 0;
    std::size_t addedUnits = 0;
};

// The library's own builder of documents, held within the limits.
class Builder final : public xml::XercesDOMParser {
public:
    Builder(ParseMemory& memory, ParseNotes& notes)
        : XercesDOMParser(nullptr, &memory), memory_(memory), notes_(notes) {
        // Without a grammar, validation could only complain to nobody.
        setValidationScheme(Val_Never);
        setDoNamespaces(true);
        setLoadExternalDTD(false);
        setLoadSchema(false);
        setDisableDefaultEntityResolution(true);
        if (notes_.options.keepPositions) {
            setErrorHandler(&notes_.errors);
        }
    }

    void tooManyReaders() { check(false, u"The entities expand too far."); }

    void startElement(const xml::XMLElementDecl& declaration, unsigned int uriId,
                      const XMLCh* prefix, const xml::RefVectorOf<xml::XMLAttr>& attributes,
                      XMLSize_t attributeCount, bool isEmpty, bool isRoot) override {
        check(attributeCount <= kMostAttributes, u"An element has too many attributes.");
        check(++notes_.depth <= kMostDepth, u"The elements are nested too deeply.");
        addName(prefix);
        addName(declaration.getBaseName());
        for (XMLSize_t i = 0; i < attributeCount; ++i) {
            addAttribute(*attributes.elementAt(i));
        }
        if (notes_.options.keepPositions) {
            notes_.positions.push_back(position());
        }
        XercesDOMParser::startElement(declaration, uriId, prefix, attributes, attributeCount,
                                      isEmpty, isRoot);
    }

    void endElement(const xml::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                    const XMLCh* prefix) override {
        --notes_.depth;
        XercesDOMParser::endElement(declaration, uriId, isRoot, prefix);
    }

    void entityDecl(const xml::DTDEntityDecl& declaration, bool isParameter,
                    bool isIgnored) override {
        addDeclaration();
        check(declaration.getValueLen() <= kLongestEntity, u"An entity is too long.");
        memory_.limitReaders(kAddedUnits / (declaration.getValueLen() + 1));
        XercesDOMParser::entityDecl(declaration, isParameter, isIgnored);
    }

    void attDef(const xml::DTDElementDecl& element, const xml::DTDAttDef& attribute,
                bool isIgnored) override {
        addDeclaration();
        XercesDOMParser::attDef(element, attribute, isIgnored);
    }

    void startAttList(const xml::DTDElementDecl& element) override {
        addDeclaration();
        XercesDOMParser::startAttList(element);
    }

    void elementDecl(const xml::DTDElementDecl& element, bool isIgnored) override {
        addDeclaration();
        XercesDOMParser::elementDecl(element, isIgnored);
    }

    void notationDecl(const xml::XMLNotationDecl& notation, bool isIgnored) override {
        addDeclaration();
        XercesDOMParser::notationDecl(notation, isIgnored);
    }

private:
    XmlPosition position() const {
        const xml::Locator* locator = getScanner()->getLocator();
        return {locator->getLineNumber(), locator->getColumnNumber()};
    }

    void check(bool withinLimit, std::u16string_view problem) {
        if (!withinLimit) {
            notes_.errors.note(position(), problem);
            throw kEndOfParse;
        }
    }

    void addDeclaration() {
        check(++notes_.declarations <= kMostDeclarations,
              u"The document type has too many declarations.");
    }

    void addName(const XMLCh* text) {
        if (text == nullptr || *text == u'\0') {
            return;
        }
        const std::u16string_view name = text;
        if (!notes_.names.contains(name)) {
            check(notes_.names.size() < kMostNames, u"There are too many different names.");
            notes_.names.emplace(name);
        }
    }

    void addAttribute(const xml::XMLAttr& attribute) {
        addName(attribute.getPrefix());
        addName(attribute.getName());
        if (xml::XMLString::equals(attribute.getPrefix(), xml::XMLUni::fgXMLNSString) ||
            xml::XMLString::equals(attribute.getName(), xml::XMLUni::fgXMLNSString)) {
            addName(attribute.getValue());
        }
        if (!attribute.getSpecified()) {
            notes_.addedUnits += kAttributeUnits + xml::XMLString::stringLen(attribute.getValue());
            check(notes_.addedUnits <= kAddedUnits, u"Too many attributes have default values.");
        }
    }

    // What an attribute takes in memory besides its value, in units.
    static constexpr std::size_t kAttributeUnits = 100;

    ParseMemory& memory_;
    ParseNotes& notes_;
};

// The bytes before one prefix too many. The library compares every name of a tag
// with all prefixes before anyone sees the tag, so the text is looked at instead,
// which is exact enough: other texts have no use for this word.
std::size_t lengthWithinLimits(std::string_view bytes) {
    constexpr std::string_view kDeclaration = "xmlns:";
    std::size_t end = 0;
    for (std::size_t i = 0; i <= kMostNamespaces; ++i) {
        end = bytes.find(kDeclaration, end);
        if (end == bytes.npos) {
            return bytes.size();
        }
        end += kDeclaration.size();
    }
    return end;
}

// The library ends the process when its start goes wrong in a way that it does
// not expect, unless somebody else deals with it.
class ThrowingPanic final : public xml::PanicHandler {
public:
    void panic(const PanicReasons reason) override { throw reason; }
};

} // namespace

XmlLibrary::~XmlLibrary() {
    if (!held_) {
        return;
    }
    xml::XMLPlatformUtils::Terminate();
    if (xml::XMLPlatformUtils::fgMemoryManager == nullptr) { // nobody holds it any more
        ::operator delete(memory_);
    }
}

bool XmlLibrary::hold() {
    static bool broken = false; // a start that failed cannot be repeated
    if (held_ || broken) {
        return held_;
    }
    if (xml::XMLPlatformUtils::fgMemoryManager != nullptr) {
        xml::XMLPlatformUtils::Initialize(); // only counts the holders
        held_ = true;
        return true;
    }
    static ThrowingPanic panic;
    auto* memory = new StartMemory;
    try {
        xml::XMLPlatformUtils::Initialize(xml::XMLUni::fgXercescDefaultLocale, nullptr, &panic,
                                          memory);
    } catch (const std::bad_alloc&) {
        broken = true;
        throw;
    } catch (...) { // the library throws types of its own
        broken = true;
        return false;
    }
    if (memory->reserveUsed()) {
        xml::XMLPlatformUtils::Terminate();
        delete memory;
        throw std::bad_alloc();
    }
    StartMemory::retire(memory);
    memory_ = memory;
    held_ = true;
    return true;
}

class XMLParser::Document {
public:
    explicit Document(XmlOptions options)
        : memory_(kMostExpansions + 1, kMostOpenEntities + 1,
                  [this] { builder_->tooManyReaders(); }),
          notes_(options), builder_(new (&memory_) Builder(memory_, notes_)) {}
    ~Document() { delete builder_; }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    void parse(std::string_view bytes) {
        const xml::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data()),
                                            lengthWithinLimits(bytes), "memory_buffer", false,
                                            &memory_);
        try {
            builder_->parse(source);
        } catch (const xml::OutOfMemoryException&) {
            builder_ = nullptr; // in pieces; its memory is all that can be freed
            throw;
        }
    }

    const xml::DOMNode* root() { return builder_->getDocument(); }
    const std::vector<XmlPosition>& positions() const { return notes_.positions; }
    const std::optional<XmlError>& error() const { return notes_.errors.noted; }

private:
    ParseMemory memory_; // outlives the builder
    ParseNotes notes_;
    Builder* builder_ = nullptr;
};

XMLParser::XMLParser(const char* bytes, std::uint32_t length, const platform::Platform& platform,
                     XmlOptions options) {
    // Without the library there is no document, which the reader can live with.
    if (bytes == nullptr || !library_.hold()) {
        return;
    }
    for (int pauses = 0; xml::XMLPlatformUtils::fgTransService == nullptr && pauses < kMostPauses;
         ++pauses) {
        platform.pauseMilliseconds(1);
    }
    try {
        parser_ = std::make_unique<Document>(options);
        parser_->parse({bytes, length});
        document_ = parser_->root();
    } catch (const xml::OutOfMemoryException&) {
        throw std::bad_alloc();
    }
}

XMLParser::~XMLParser() = default;

bool XMLParser::nextNode() {
    if (!started_) {
        started_ = true;
        current_ = document_;
        return true;
    }
    if (current_ == nullptr) {
        return false;
    }
    const xml::DOMNode* next = node(current_)->getFirstChild();
    for (const xml::DOMNode* at = node(current_); next == nullptr && at != nullptr;
         at = at->getParentNode()) {
        next = at->getNextSibling();
    }
    if (next == nullptr) {
        return false;
    }
    current_ = next;
    elementNumber_ += elementOf(next) != nullptr ? 1 : 0;
    return true;
}

NodeKind XMLParser::nodeKind() const {
    if (current_ == nullptr) {
        return NodeKind::none;
    }
    switch (node(current_)->getNodeType()) {
    case xml::DOMNode::ELEMENT_NODE:
        return NodeKind::element;
    case xml::DOMNode::TEXT_NODE:
        return NodeKind::text;
    case xml::DOMNode::COMMENT_NODE:
        return NodeKind::comment;
    case xml::DOMNode::CDATA_SECTION_NODE:
        return NodeKind::cdata;
    default:
        return NodeKind::other;
    }
}

bool XMLParser::matchElement(std::u16string_view name, unsigned levelsUp, const char16_t* attrName1,
                             std::u16string_view attrValue1, const char16_t* attrName2,
                             std::u16string_view attrValue2) const {
    const NodeKind kind = nodeKind();
    if (kind != NodeKind::element && kind != NodeKind::text) {
        return false;
    }
    const xml::DOMNode* at = node(current_);
    for (; levelsUp > 0 && at != nullptr; --levelsUp) {
        at = at->getParentNode();
    }
    const xml::DOMElement* element = elementOf(at);
    if (element == nullptr || name != element->getTagName()) {
        return false;
    }
    return (attrName1 == nullptr || hasValue(*element, attrName1, attrValue1)) &&
           (attrName1 == nullptr || attrName2 == nullptr ||
            hasValue(*element, attrName2, attrValue2));
}

std::u16string_view XMLParser::elementName() const {
    const xml::DOMElement* element = elementOf(node(current_));
    return element != nullptr ? std::u16string_view(element->getTagName()) : std::u16string_view{};
}

std::optional<std::u16string_view> XMLParser::elementText() const {
    const xml::DOMElement* element = elementOf(node(current_));
    const xml::DOMNode* child = element != nullptr ? element->getFirstChild() : nullptr;
    if (child == nullptr || child->getNodeType() != xml::DOMNode::TEXT_NODE) {
        return std::nullopt;
    }
    static constexpr std::u16string_view kWhiteSpace = u" \t\r\n";
    const std::u16string_view text = child->getNodeValue();
    const std::size_t first = text.find_first_not_of(kWhiteSpace);
    if (first == std::u16string_view::npos) {
        return std::nullopt;
    }
    return text.substr(first, text.find_last_not_of(kWhiteSpace) + 1 - first);
}

std::optional<std::u16string_view> XMLParser::attributeValue(const char16_t* name) const {
    const xml::DOMElement* element = elementOf(node(current_));
    if (name == nullptr || element == nullptr || !element->hasAttributes()) {
        return std::nullopt;
    }
    return std::u16string_view(element->getAttribute(name));
}

bool XMLParser::hasAttributeValue(const char16_t* name) const {
    const auto value = attributeValue(name);
    return value.has_value() && !value->empty();
}

const std::vector<XmlPosition>& XMLParser::positions() const {
    static const std::vector<XmlPosition> kNoPositions;
    return parser_ != nullptr ? parser_->positions() : kNoPositions;
}

const std::optional<XmlError>& XMLParser::error() const {
    static const std::optional<XmlError> kNoError;
    return parser_ != nullptr ? parser_->error() : kNoError;
}

} // namespace tvml
