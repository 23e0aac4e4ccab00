// What the examples of the table of diagnostics give, and the pages that show
// it.
#ifndef TVML_DIAGNOSTICS_EXAMPLES_H
#define TVML_DIAGNOSTICS_EXAMPLES_H

#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostics.h"

namespace tvml {

// An ini file with the entries of the same keys replaced by `lines`; a comment
// that names a key removes its entry.
std::u16string vocabularyWith(std::u16string_view iniText, std::u16string_view lines);

// What is found in a row's example. `shippedVocabulary` is the text of the
// "keyword.ini" that comes with the program.
std::vector<Diagnostic> foundInExample(const DiagnosticRow& row,
                                       std::u16string_view shippedVocabulary,
                                       const platform::Platform& platform, Language language);

// The page of all diagnostics, docs/diagnostics.md in English, with what each
// example really gives.
std::string diagnosticsPage(std::u16string_view shippedVocabulary,
                            const platform::Platform& platform, Language language);

} // namespace tvml

#endif
