// Making diagnostics: shared by all checks of this folder.
#ifndef TVML_DIAGNOSTICS_FINDING_H
#define TVML_DIAGNOSTICS_FINDING_H

#include "diagnostics/diagnostics.h"

namespace tvml {

// A part of one line. `start` counts from 0.
struct TextRange {
    std::int32_t line = 0; // 0 for the whole text
    std::size_t start = 0;
    std::size_t units = 0;
};

// A diagnostic whose message has `values` for %1, %2 and so on.
Diagnostic makeDiagnostic(Code code, Language language, SourceKind source, TextRange range,
                          TextValues values = {});

// "A to C", "A alone": the characters of a programme.
std::u16string charactersText(char16_t last, Language language);

void sortByPlace(std::vector<Diagnostic>& diagnostics);

} // namespace tvml

#endif
