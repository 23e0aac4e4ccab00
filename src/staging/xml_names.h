// Names with a prefix, and what the prefixes stand for.
#ifndef TVML_STAGING_XML_NAMES_H
#define TVML_STAGING_XML_NAMES_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

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

// The prefixes that the open elements declare. Elements are looked up by their
// names as written, so prefixes are checked for mistakes and used for nothing else.
class Namespaces {
public:
    struct Attribute {
        std::u16string_view name;
        std::u16string_view value;
        bool isSpecified; // in the start tag, where others are defaults
    };

    // Elements without such a name, their own or an attribute's, need no look.
    static bool concern(std::u16string_view name);

    // Takes in what a start tag declares, and checks its names; `depth` is the
    // number of elements around it. Throws XmlFault.
    void open(std::u16string_view element, const std::vector<Attribute>& attributes,
              std::size_t depth);

    // Forgets what the element at this depth declared, which is the innermost.
    void close(std::size_t depth);

private:
    void declare(const Attribute& attribute, std::size_t depth);
    std::u16string_view namespaceOf(std::u16string_view prefix) const;
    void checkAttributes(const std::vector<Attribute>& attributes) const;

    using Meanings = std::map<std::u16string, std::vector<std::u16string>, std::less<>>;
    struct Declared {
        Meanings::iterator at;
        std::size_t depth;
    };
    Meanings prefixes_;
    std::vector<Declared> declared_; // by all open elements
    std::size_t prefixCount_ = 0;
};

} // namespace tvml

#endif
