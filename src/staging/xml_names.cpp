// The rules of namespaces. Entries: Namespaces, checkQualified.
#include "staging/xml_names.h"

#include <algorithm>

#include "staging/xml_fault.h"
#include "staging/xml_limits.h"

namespace tvml {
namespace {

constexpr std::u16string_view kXml = u"xml";
constexpr std::u16string_view kXmlns = u"xmlns";
constexpr std::u16string_view kXmlNamespace = u"http://www.w3.org/XML/1998/namespace";
constexpr std::u16string_view kXmlnsNamespace = u"http://www.w3.org/2000/xmlns/";

// What may stand in a name, but not first.
bool canBeFirst(char16_t unit) {
    return !(unit >= u'0' && unit <= u'9') && unit != u'-' && unit != u'.' && unit != u'\u00B7';
}

} // namespace

void checkQualified(std::u16string_view name) {
    const std::size_t colon = name.find(u':');
    checkXml(colon == name.npos ||
                 (colon > 0 && colon + 1 < name.size() && canBeFirst(name[colon + 1]) &&
                  name.find(u':', colon + 1) == name.npos),
             u"invalid name '{}'", name);
}

void checkWithoutColon(std::u16string_view name) {
    checkXml(name.find(u':') == name.npos,
             u"colon is illegal in names when namespaces are enabled");
}

bool Namespaces::concern(std::u16string_view name) {
    return name == kXmlns || name.find(u':') != name.npos;
}

void Namespaces::open(std::u16string_view element, const std::vector<Attribute>& attributes,
                      std::size_t depth) {
    checkQualified(element);
    for (const Attribute& attribute : attributes) {
        if (attribute.isSpecified) {
            checkQualified(attribute.name);
        }
        if (attribute.name == kXmlns || QualifiedName(attribute.name).prefix == kXmlns) {
            declare(attribute, depth);
        }
    }
    namespaceOf(QualifiedName(element).prefix);
    checkAttributes(attributes);
}

void Namespaces::close(std::size_t depth) {
    while (!declared_.empty() && declared_.back().depth == depth) {
        declared_.back().at->second.pop_back();
        declared_.pop_back();
    }
}

void Namespaces::declare(const Attribute& attribute, std::size_t depth) {
    const QualifiedName name(attribute.name);
    const bool hasPrefix = !name.prefix.empty();
    const bool isXml = hasPrefix && name.local == kXml;
    checkXml(!hasPrefix || name.local != kXmlns, u"'xmlns' cannot be used as a prefix");
    checkXml(!isXml || attribute.value == kXmlNamespace,
             u"the prefix 'xml' cannot stand for another namespace");
    checkXml(!hasPrefix || !attribute.value.empty(), u"the namespace of prefix '{}' is empty",
             name.local);
    checkXml(attribute.value != kXmlnsNamespace, u"the namespace of 'xmlns' cannot be used");
    checkXml(isXml || attribute.value != kXmlNamespace,
             u"no other prefix can stand for the namespace of 'xml'");
    if (hasPrefix) {
        prefixCount_ += attribute.isSpecified ? 1 : 0;
        checkXml(prefixCount_ <= kMostNamespaces, u"there are too many namespaces");
        const auto at = prefixes_.try_emplace(std::u16string(name.local)).first;
        declared_.push_back({at, depth});
        at->second.emplace_back(attribute.value);
    }
}

std::u16string_view Namespaces::namespaceOf(std::u16string_view prefix) const {
    if (prefix.empty()) {
        return {};
    }
    if (prefix == kXml || prefix == kXmlns) {
        return prefix == kXml ? kXmlNamespace : kXmlnsNamespace;
    }
    const auto found = prefixes_.find(prefix);
    checkXml(found != prefixes_.end() && !found->second.empty(),
             u"prefix '{}' can not be resolved to namespace URI", prefix);
    return found->second.back();
}

// Two prefixes can stand for the same namespace, and so two names be the same.
void Namespaces::checkAttributes(const std::vector<Attribute>& attributes) const {
    std::vector<std::pair<std::u16string_view, std::u16string_view>> seen;
    for (const Attribute& attribute : attributes) {
        const QualifiedName name(attribute.name);
        const std::pair resolved(namespaceOf(name.prefix), name.local);
        if (name.prefix.empty() || !attribute.isSpecified) {
            continue;
        }
        checkXml(std::find(seen.begin(), seen.end(), resolved) == seen.end(),
                 u"attribute '{}' is already specified for this element", name.local);
        seen.push_back(resolved);
    }
}

} // namespace tvml
