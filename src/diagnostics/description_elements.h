// One description on its way through the checks, and its elements.
#ifndef TVML_DIAGNOSTICS_DESCRIPTION_ELEMENTS_H
#define TVML_DIAGNOSTICS_DESCRIPTION_ELEMENTS_H

#include <optional>
#include <string>
#include <string_view>

#include "diagnostics/description_source.h"
#include "diagnostics/element_names.h"

namespace tvml {

// An element directly under <staging>. The source views are empty for elements
// that come out of an entity.
struct ElementFacts {
    std::u16string_view name;
    ElementMeaning meaning;
    std::optional<std::u16string> text; // its first text, trimmed
    std::u16string_view tag;            // source of the start tag
    std::u16string_view body;           // source between the tags

    // The value of an attribute; empty without one.
    std::u16string_view attribute(std::u16string_view attributeName) const {
        return attributeSource(tag, attributeName);
    }
};

struct DescriptionChecks {
    DescriptionChecks(const KeywordTable& vocabulary, std::u16string_view sourceText,
                      Language theLanguage)
        : words(vocabulary), source(sourceText), language(theLanguage) {}

    const KeywordTable& words;
    DescriptionSource source;
    const Language language;
    char16_t lastCharacter = 0;
    std::vector<Diagnostic> found;

    // Adds a diagnostic about a part of the source; an empty view without data
    // stands for the whole text.
    Diagnostic& add(Code code, std::u16string_view part, TextValues values = {}) {
        found.push_back(makeDiagnostic(code, language, SourceKind::description,
                                       part.data() == nullptr ? TextRange{} : source.rangeOf(part),
                                       values));
        return found.back();
    }

    std::u16string_view text(Message message) const { return textOf(message, language); }
};

// What the text of a template has wrong.
void checkTemplate(DescriptionChecks& checks, const ElementFacts& element);

// The first place of `text` in the source of an element's body, else its tag.
std::u16string_view placeInBody(const ElementFacts& element, std::u16string_view text);

} // namespace tvml

#endif
