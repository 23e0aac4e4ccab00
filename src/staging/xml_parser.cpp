// The XML library behind one door. Entry: XMLParser.
#include "staging/xml_parser.h"

#include "staging/xml_memory.h"
#include "staging/xml_tree.h"

#include <algorithm>
#include <new>
#include <set>
#include <string>
#include <type_traits>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PanicHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLChar.hpp>
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

// What a parse finds out besides the document, and what it has used up. Outlives
// the builder, which is not destroyed when memory ran out.
struct ParseNotes {
    explicit ParseNotes(XmlOptions given) : options(given) {}

    const XmlOptions options;
    ErrorNote errors;
    std::vector<XmlPosition> positions;
    std::set<std::u16string, std::less<>> names;
    XmlTree tree;
    std::vector<xml::XMLElementDecl::CharDataOpts> content; // of the open elements
    std::u16string qualifiedName;                           // the one at hand
    std::size_t declarations = 0;
    std::size_t addedUnits = 0;
};

// Builds the tree from what the library's scanner reports, within the limits.
class Builder final : public xml::SAXParser {
public:
    Builder(ParseMemory& memory, ParseNotes& notes)
        : SAXParser(nullptr, &memory), memory_(memory), notes_(notes), tree_(notes.tree) {
        // Without a grammar, validation could only complain to nobody.
        setValidationScheme(Val_Never);
        setDoNamespaces(true);
        setLoadExternalDTD(false);
        setLoadSchema(false);
        setDisableDefaultEntityResolution(true);
        // The scanner reports to this object once it has handlers; they are not
        // called, since their calls are overridden.
        setDocumentHandler(&unused_);
        setDTDHandler(&unused_);
        if (notes_.options.keepPositions) {
            setErrorHandler(&notes_.errors);
        }
    }

    void tooManyReaders() { check(false, u"The entities expand too far."); }

    // ---- the document

    void startDocument() override { tree_.start(); }
    void endDocument() override {}
    void resetDocument() override {}
    void XMLDecl(const XMLCh*, const XMLCh*, const XMLCh*, const XMLCh*) override {}

    void doctypeDecl(const xml::DTDElementDecl&, const XMLCh*, const XMLCh*, bool, bool) override {
        tree_.add(NodeKind::other);
    }
    void docComment(const XMLCh*) override { tree_.add(NodeKind::comment); }
    void docPI(const XMLCh*, const XMLCh*) override { tree_.add(NodeKind::other); }

    void startElement(const xml::XMLElementDecl& declaration, unsigned int, const XMLCh* prefix,
                      const xml::RefVectorOf<xml::XMLAttr>& attributes, XMLSize_t attributeCount,
                      bool isEmpty, bool) override {
        check(attributeCount <= kMostAttributes, u"An element has too many attributes.");
        check(notes_.content.size() < kMostDepth, u"The elements are nested too deeply.");
        const std::u16string_view name = qualifiedName(prefix, declaration.getBaseName());
        std::vector<XmlNode::Attribute> kept;
        kept.reserve(attributeCount);
        for (XMLSize_t i = 0; i < attributeCount; ++i) {
            kept.push_back(keptAttribute(*attributes.elementAt(i)));
        }
        XmlNode& element = tree_.add(NodeKind::element);
        element.name = name;
        element.attributes = std::move(kept);
        if (notes_.options.keepPositions) {
            notes_.positions.push_back(position());
        }
        if (!isEmpty) {
            notes_.content.push_back(declaration.getCharDataOpts());
            tree_.open();
        }
    }

    void endElement(const xml::XMLElementDecl&, unsigned int, bool, const XMLCh*) override {
        notes_.content.pop_back();
        tree_.close();
    }

    void startEntityReference(const xml::XMLEntityDecl&) override {
        tree_.add(NodeKind::other);
        tree_.open();
    }
    void endEntityReference(const xml::XMLEntityDecl&) override { tree_.close(); }

    // Where the document type does not allow text, a document has none.
    void docCharacters(const XMLCh* text, XMLSize_t length, bool isCdata) override {
        if (notes_.content.empty()) {
            return;
        }
        if (isCdata) {
            tree_.add(NodeKind::cdata);
        } else if (notes_.content.back() == xml::XMLElementDecl::AllCharData ||
                   (notes_.content.back() == xml::XMLElementDecl::SpacesOk &&
                    xml::XMLChar1_0::isAllSpaces(text, length))) {
            tree_.addText({text, length});
        }
    }
    void ignorableWhitespace(const XMLCh* text, XMLSize_t length, bool) override {
        if (!notes_.content.empty()) {
            tree_.addText({text, length});
        }
    }

    // ---- the document type

    void resetDocType() override {}
    void startIntSubset() override {}
    void endIntSubset() override {}
    void startExtSubset() override {}
    void endExtSubset() override {}
    void doctypeComment(const XMLCh*) override {}
    void doctypePI(const XMLCh*, const XMLCh*) override {}
    void doctypeWhitespace(const XMLCh*, XMLSize_t) override {}
    void endAttList(const xml::DTDElementDecl&) override {}
    void TextDecl(const XMLCh*, const XMLCh*) override {}

    void entityDecl(const xml::DTDEntityDecl& declaration, bool, bool) override {
        addDeclaration();
        check(declaration.getValueLen() <= kLongestEntity, u"An entity is too long.");
        memory_.limitReaders(kAddedUnits / (declaration.getValueLen() + 1));
    }
    void attDef(const xml::DTDElementDecl&, const xml::DTDAttDef&, bool) override {
        addDeclaration();
    }
    void startAttList(const xml::DTDElementDecl&) override { addDeclaration(); }
    void elementDecl(const xml::DTDElementDecl&, bool) override { addDeclaration(); }
    void notationDecl(const xml::XMLNotationDecl&, bool) override { addDeclaration(); }

private:
    XmlPosition position() const {
        const xml::Locator* locator = getScanner().getLocator();
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

    // A view of the one copy of a name that is kept.
    std::u16string_view nameOf(std::u16string_view text) {
        const auto found = notes_.names.find(text);
        if (found != notes_.names.end()) {
            return *found;
        }
        check(notes_.names.size() < kMostNames, u"There are too many different names.");
        return *notes_.names.emplace(text).first;
    }

    std::u16string_view qualifiedName(const XMLCh* prefix, const XMLCh* name) {
        if (prefix == nullptr || *prefix == u'\0') {
            return nameOf(name);
        }
        notes_.qualifiedName.assign(prefix).append(u":").append(name);
        return nameOf(notes_.qualifiedName);
    }

    XmlNode::Attribute keptAttribute(const xml::XMLAttr& attribute) {
        const std::u16string_view value = attribute.getValue();
        const std::u16string_view name = qualifiedName(attribute.getPrefix(), attribute.getName());
        if (name.starts_with(xml::XMLUni::fgXMLNSString)) {
            nameOf(value);
        }
        if (!attribute.getSpecified()) {
            notes_.addedUnits += kAttributeUnits + value.size();
            check(notes_.addedUnits <= kAddedUnits, u"Too many attributes have default values.");
        }
        return {name, std::u16string(value)};
    }

    // What an attribute takes in memory besides its value, in units.
    static constexpr std::size_t kAttributeUnits = 100;

    ParseMemory& memory_;
    ParseNotes& notes_;
    XmlTree& tree_;
    xml::HandlerBase unused_;
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
    } catch (xml::PanicHandler::PanicReasons reason) {
        broken = true;
        if (reason == xml::PanicHandler::Panic_AllStaticInitErr) { // no memory for its statics
            throw std::bad_alloc();
        }
        return false;
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

    const XmlNode* root() { return notes_.tree.root(); }
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
    const XmlNode* next = current_->firstChild;
    for (const XmlNode* at = current_; next == nullptr && at != nullptr; at = at->parent) {
        next = at->nextSibling;
    }
    if (next == nullptr) {
        return false;
    }
    current_ = next;
    elementNumber_ += next->kind == NodeKind::element ? 1 : 0;
    return true;
}

NodeKind XMLParser::nodeKind() const {
    return current_ != nullptr ? current_->kind : NodeKind::none;
}

const XmlNode* XMLParser::currentElement() const {
    return nodeKind() == NodeKind::element ? current_ : nullptr;
}

bool XMLParser::matchElement(std::u16string_view name, unsigned levelsUp, const char16_t* attrName1,
                             std::u16string_view attrValue1, const char16_t* attrName2,
                             std::u16string_view attrValue2) const {
    const NodeKind kind = nodeKind();
    if (kind != NodeKind::element && kind != NodeKind::text) {
        return false;
    }
    const XmlNode* at = current_;
    for (; levelsUp > 0 && at != nullptr; --levelsUp) {
        at = at->parent;
    }
    if (at == nullptr || at->kind != NodeKind::element || name != at->name) {
        return false;
    }
    const auto hasValue = [at](const char16_t* attribute, std::u16string_view value) {
        const XmlNode::Attribute* found = at->attribute(attribute);
        return found != nullptr && found->value == value;
    };
    return attrName1 == nullptr || (hasValue(attrName1, attrValue1) &&
                                    (attrName2 == nullptr || hasValue(attrName2, attrValue2)));
}

std::u16string_view XMLParser::elementName() const {
    const XmlNode* element = currentElement();
    return element != nullptr ? element->name : std::u16string_view{};
}

std::optional<std::u16string_view> XMLParser::elementText() const {
    const XmlNode* element = currentElement();
    const XmlNode* child = element != nullptr ? element->firstChild : nullptr;
    if (child == nullptr || child->kind != NodeKind::text) {
        return std::nullopt;
    }
    static constexpr std::u16string_view kWhiteSpace = u" \t\r\n";
    const std::u16string_view text = child->text;
    const std::size_t first = text.find_first_not_of(kWhiteSpace);
    if (first == std::u16string_view::npos) {
        return std::nullopt;
    }
    return text.substr(first, text.find_last_not_of(kWhiteSpace) + 1 - first);
}

std::optional<std::u16string_view> XMLParser::attributeValue(const char16_t* name) const {
    const XmlNode* element = currentElement();
    if (name == nullptr || element == nullptr || element->attributes.empty()) {
        return std::nullopt;
    }
    const XmlNode::Attribute* found = element->attribute(name);
    return found != nullptr ? std::u16string_view(found->value) : std::u16string_view{};
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
