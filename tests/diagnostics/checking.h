// Runs the checks on texts in memory and writes what they find on one line:
// "2:3 S102 [早く]" for each diagnostic, joined by "; ", with the text that the
// range marks; "0:0" where the whole text is meant.
#ifndef TVML_TESTS_DIAGNOSTICS_CHECKING_H
#define TVML_TESTS_DIAGNOSTICS_CHECKING_H

#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/examples.h"

namespace tvml {

// A file of the source tree.
std::string repositoryFile(const std::string& name);
std::u16string utf16(std::string_view utf8);
std::string utf8(std::u16string_view text);

const std::u16string& shippedVocabulary();
std::u16string vocabularyWith(std::u16string_view lines);

// A programme to check: by default the one of the table's examples.
struct TestProgramme {
    std::u16string description = std::u16string(kExampleDescription);
    std::u16string vocabulary = vocabularyWith(u"");
    std::int32_t playFrom = kNoLine;
    std::int32_t playTo = kNoLine;
};

std::vector<Diagnostic> foundInScript(std::u16string_view script,
                                      const TestProgramme& programme = {});
std::vector<Diagnostic> foundInDescription(std::u16string_view description);
std::vector<Diagnostic> foundInVocabulary(std::u16string_view iniText);

std::string summary(const std::vector<Diagnostic>& found, std::u16string_view source);

// As foundIn…, summarised.
std::string checkedScript(std::u16string_view script, const TestProgramme& programme = {});
std::string checkedDescription(std::u16string_view description);
std::string checkedVocabulary(std::u16string_view lines);

} // namespace tvml

#endif
