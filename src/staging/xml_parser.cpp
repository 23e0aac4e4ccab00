// The XML library behind one door. Entry: XMLParser.
#include "staging/xml_parser.h"

#include <algorithm>
#include <type_traits>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLString.hpp>

namespace tvml {
namespace {

namespace xml = xercesc;

static_assert(std::is_same_v<XMLCh, char16_t>, "texts go to and from the XML library as they are");

// An entity can be replaced at most so often that all replacements together
// stay near this many bytes, however long the description is.
constexpr std::size_t kExpansionBytes = std::size_t{32} << 20;
constexpr std::size_t kMostExpansions = 50000;

constexpr int kMostPauses = 10001;

XMLSize_t expansionLimit(std::uint32_t length) {
    const std::size_t most = kExpansionBytes / std::max<std::size_t>(length, 1);
    return std::clamp<std::size_t>(most, 1, kMostExpansions);
}

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
        if (!noted.has_value()) {
            const XMLCh* message = problem.getMessage();
            noted = XmlError{{problem.getLineNumber(), problem.getColumnNumber()},
                             message != nullptr ? message : u""};
        }
    }
    void resetErrors() override {}

    std::optional<XmlError> noted;
};

bool hasValue(const xml::DOMElement& element, const char16_t* name, std::u16string_view value) {
    const xml::DOMAttr* attribute = element.getAttributeNode(name);
    return attribute != nullptr && value == attribute->getValue();
}

} // namespace

XmlLibrary::~XmlLibrary() {
    if (held_) {
        xml::XMLPlatformUtils::Terminate();
    }
}

bool XmlLibrary::hold() {
    if (!held_) {
        try {
            xml::XMLPlatformUtils::Initialize();
            held_ = true;
        } catch (...) { // the library throws types of its own
            return false;
        }
    }
    return true;
}

class XMLParser::Document : public xml::XercesDOMParser {
public:
    explicit Document(std::uint32_t length, XmlOptions options) : options_(options) {
        limit_.setEntityExpansionLimit(expansionLimit(length));
        // Without a grammar, validation could only complain to nobody.
        setValidationScheme(Val_Never);
        setDoNamespaces(true);
        setLoadExternalDTD(false);
        setLoadSchema(false);
        setDisableDefaultEntityResolution(true);
        setSecurityManager(&limit_);
        if (options_.keepPositions) {
            setErrorHandler(&errors_);
        }
    }

    void startElement(const xml::XMLElementDecl& declaration, unsigned int uriId,
                      const XMLCh* prefix, const xml::RefVectorOf<xml::XMLAttr>& attributes,
                      XMLSize_t attributeCount, bool isEmpty, bool isRoot) override {
        if (options_.keepPositions) {
            const xml::Locator* locator = getScanner()->getLocator();
            positions_.push_back({locator->getLineNumber(), locator->getColumnNumber()});
        }
        XercesDOMParser::startElement(declaration, uriId, prefix, attributes, attributeCount,
                                      isEmpty, isRoot);
    }

    const std::vector<XmlPosition>& positions() const { return positions_; }
    const std::optional<XmlError>& error() const { return errors_.noted; }

private:
    xml::SecurityManager limit_;
    XmlOptions options_;
    ErrorNote errors_;
    std::vector<XmlPosition> positions_;
};

XMLParser::XMLParser(const char* bytes, std::uint32_t length, const platform::Platform& platform,
                     XmlOptions options) {
    // Without the library there is no document, which the reader can live with.
    if (bytes == nullptr || !library_.hold()) {
        return;
    }
    parser_ = std::make_unique<Document>(length, options);
    const xml::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes), length,
                                        "memory_buffer", false);
    for (int pauses = 0; xml::XMLPlatformUtils::fgTransService == nullptr && pauses < kMostPauses;
         ++pauses) {
        platform.pauseMilliseconds(1);
    }
    parser_->parse(source);
    document_ = static_cast<const xml::DOMNode*>(parser_->getDocument());
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
