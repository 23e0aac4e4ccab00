// The cursor in a document. Entry: XMLParser.
#include "staging/xml_parser.h"

#include <utility>

#include "staging/xml_reader.h"
#include "vocabulary/word.h"

namespace tvml {

std::shared_ptr<const XmlDocument> parseXml(std::u16string_view text, XmlOptions options) {
    const auto document = std::make_shared<XmlDocument>();
    readXml(text, options, *document);
    return document;
}

XMLParser::XMLParser(std::shared_ptr<const XmlDocument> document)
    : document_(std::move(document)) {}

XMLParser::~XMLParser() = default;

bool XMLParser::nextNode() {
    const std::size_t next = current_ == kNone ? 0 : current_ + 1;
    if (next >= document_->nodes.size()) {
        return false;
    }
    current_ = next;
    elementNumber_ += nodeKind() == NodeKind::element ? 1 : 0;
    return true;
}

NodeKind XMLParser::nodeKind() const {
    return current_ != kNone ? document_->nodes[current_].kind : NodeKind::none;
}

const XmlNode* XMLParser::currentElement() const {
    return nodeKind() == NodeKind::element ? &document_->nodes[current_] : nullptr;
}

std::optional<std::u16string_view> XMLParser::valueAt(const XmlNode& element,
                                                      std::u16string_view name) const {
    for (std::size_t i = element.first; i < element.first + element.count; ++i) {
        const XmlAttribute& attribute = document_->attributes[i];
        if (attribute.name == name) {
            return document_->units(attribute.first, attribute.count);
        }
    }
    return std::nullopt;
}

bool XMLParser::matchElement(std::u16string_view name, unsigned levelsUp, const char16_t* attrName1,
                             std::u16string_view attrValue1, const char16_t* attrName2,
                             std::u16string_view attrValue2) const {
    const NodeKind kind = nodeKind();
    if (kind != NodeKind::element && kind != NodeKind::text) {
        return false;
    }
    std::size_t at = current_;
    for (; levelsUp > 0 && at > 0; --levelsUp) {
        at = document_->nodes[at].parent;
    }
    const XmlNode& node = document_->nodes[at];
    return levelsUp == 0 && node.kind == NodeKind::element && node.name == name &&
           (attrName1 == nullptr ||
            (valueAt(node, attrName1) == attrValue1 &&
             (attrName2 == nullptr || valueAt(node, attrName2) == attrValue2)));
}

std::u16string_view XMLParser::elementName() const {
    const XmlNode* element = currentElement();
    return element != nullptr ? element->name : std::u16string_view{};
}

std::optional<std::u16string_view> XMLParser::elementText() const {
    const auto& nodes = document_->nodes;
    const std::size_t child = current_ + 1;
    if (currentElement() == nullptr || child == nodes.size() || nodes[child].parent != current_ ||
        nodes[child].kind != NodeKind::text) {
        return std::nullopt;
    }
    static constexpr std::u16string_view kWhiteSpace = u" \t\r\n";
    const std::u16string_view text = document_->units(nodes[child].first, nodes[child].count);
    const std::size_t first = text.find_first_not_of(kWhiteSpace);
    if (first == std::u16string_view::npos) {
        return std::nullopt;
    }
    return text.substr(first, text.find_last_not_of(kWhiteSpace) + 1 - first);
}

std::optional<std::u16string_view> XMLParser::attributeValue(const char16_t* name) const {
    const XmlNode* element = currentElement();
    if (name == nullptr || element == nullptr || element->count == 0) {
        return std::nullopt;
    }
    return valueAt(*element, name).value_or(std::u16string_view{});
}

bool XMLParser::hasAttributeValue(const char16_t* name) const {
    const auto value = attributeValue(name);
    return value.has_value() && !value->empty();
}

const std::vector<XmlTag>& XMLParser::tags() const {
    return document_->tags;
}

const std::optional<XmlError>& XMLParser::error() const {
    return document_->error;
}

} // namespace tvml
