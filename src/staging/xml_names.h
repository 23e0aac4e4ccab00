// Names with a prefix, and what the prefixes stand for.
#ifndef TVML_STAGING_XML_NAMES_H
#define TVML_STAGING_XML_NAMES_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "staging/xml_tree.h"

namespace tvml {

// A name in its two parts; without a prefix, that part is empty.
struct QualifiedName {
    explicit QualifiedName(std::u16string_view name) {
        const std::size_t colon = name.find(u':');
        prefix = name.substr(0, colon == name.npos ? 0 : colon);
        local = name.substr(colon == name.npos ? 0 : colon + 1);
    }
    std::u16string_view prefix;
    std::u16string_view local;
};

// A name that the library let pass has at most one colon, and that between two
// names. Throws XmlFault.
void checkQualified(std::u16string_view name);

// A name of what has no prefixes, such as an entity. Throws XmlFault.
void checkWithoutColon(std::u16string_view name);

// The prefixes that the open elements declare. The document uses qualified names
// only, so all that a prefix can do is be wrong.
class Namespaces {
public:
    // Takes in what a start tag declares, and checks its names; the first
    // `specified` attributes stand in it, the others are defaults. Throws
    // XmlFault.
    void open(std::u16string_view element, const std::vector<XmlNode::Attribute>& attributes,
              std::size_t specified);

    // Forgets what the element opened last declared.
    void close();

private:
    void declare(const XmlNode::Attribute& attribute);
    std::u16string_view namespaceOf(std::u16string_view prefix) const;
    void checkAttributes(const std::vector<XmlNode::Attribute>& attributes, std::size_t specified);

    using Meanings = std::map<std::u16string, std::vector<std::u16string>, std::less<>>;
    Meanings prefixes_;
    std::vector<Meanings::iterator> declared_; // of all open elements
    std::vector<std::size_t> marks_;           // how many there were before each
};

} // namespace tvml

#endif
