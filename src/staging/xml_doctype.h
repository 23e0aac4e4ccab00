// What a document type declares, as far as it changes how a document is read.
#ifndef TVML_STAGING_XML_DOCTYPE_H
#define TVML_STAGING_XML_DOCTYPE_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "staging/xml_limits.h"

namespace tvml {

// What text an element may hold.
enum class TextContent : std::uint8_t { any, blanks, none };

struct XmlEntity {
    std::u16string value;
    std::optional<std::size_t> weight{}; // expansions of a reference to it
    std::size_t height = 0;              // entities that open inside each other in it
};

// All members throw XmlFault where a limit is reached.
class DocumentType {
public:
    // A declaration of an entity; one that is not in the document has no value.
    void declareEntity(std::u16string_view name, bool isParameter,
                       std::optional<std::u16string_view> value);

    // The next token of any other declaration.
    void addToken(std::u16string_view token);

    TextContent contentOf(std::u16string_view element) const;

    XmlEntity* findEntity(std::u16string_view name);
    void countExpansions(std::size_t count);

    // Counts the expansions for the references in an attribute value, and for
    // those to parameter entities between declarations.
    void countReferences(std::u16string_view text);
    void countParameterReferences(std::u16string_view text);

    bool hasEntities() const { return !general_.empty(); }

private:
    // What the next token is.
    enum class State : std::uint8_t { other, elementName, elementContent, attributes, notation };
    using Entities = std::map<std::u16string, XmlEntity, std::less<>>;

    // Entities that refer to others, by the names of those.
    using Users = std::map<std::u16string, std::vector<Entities::value_type*>, std::less<>>;
    struct Nesting {
        Users users;
        std::size_t referring = 0;  // entities that hold references
        std::size_t references = 0; // in all of them, to different ones
        std::size_t highest = 0;
    };

    static void noteNesting(Nesting& nesting, const Entities& entities,
                            Entities::value_type& declared, char16_t mark);
    static void raiseUsers(Nesting& nesting, Entities::value_type& declared);
    void startDeclaration(std::u16string_view token);
    void addContent(std::u16string_view token);
    void countDeclaration();
    static std::size_t weightOf(Entities& entities, XmlEntity& entity, char16_t mark,
                                std::size_t levels);
    static std::size_t weightOfReferences(Entities& entities, std::u16string_view text,
                                          char16_t mark, std::size_t levels);

    State state_ = State::other;
    std::u16string element_; // whose declaration is read
    std::map<std::u16string, TextContent, std::less<>> contents_;
    Entities general_;
    Entities parameter_;
    Nesting generalNesting_;
    Nesting parameterNesting_;
    std::size_t declarations_ = 0;
    std::size_t expansionsLeft_ = kMostExpansions;
};

} // namespace tvml

#endif
