// The cursor in a document. Entry: XMLParser.
#include "staging/xml_parser.h"

#include "staging/xml_reader.h"

namespace tvml {

XMLParser::XMLParser(std::u16string_view text, XmlOptions options)
    : document_(std::make_unique<XmlDocument>()) {
    readXml(text, options, *document_);
}

XMLParser::~XMLParser() = default;

bool XMLParser::nextNode() {
    if (!started_) {
        started_ = true;
        current_ = document_->tree.root();
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

const std::vector<XmlTag>& XMLParser::tags() const {
    return document_->tags;
}

const std::optional<XmlError>& XMLParser::error() const {
    return document_->error;
}

} // namespace tvml
