// The two roads from a request to a TVML script.
#ifndef TVML_HOST_CONVERSION_H
#define TVML_HOST_CONVERSION_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/analysis.h"
#include "run/ini_files.h"

namespace tvml::host {

// Of which vocabularies problems are told: none, those that could not be loaded
// whole, or every one.
enum class VocabularyCheck : std::uint8_t { never, whenCutOff, always };

// The filter in this program, with the vocabulary and the settings beside it.
class Filter {
public:
    // Reads both ini files.
    Filter();

    // Converts and tells what is wanted. Throws a HostError when the run fails.
    Analysis run(const ConversionRequest& request, AnalysisWants wants,
                 VocabularyCheck check = VocabularyCheck::never,
                 const std::optional<MediaNames>& media = std::nullopt);

    // What the vocabulary and a description have wrong.
    std::vector<Diagnostic> check(std::u16string_view description, VocabularyCheck check);

    const KeywordTable& words() const { return files_->words; }

    // The file of the words, with its text when run() was to check it.
    SourceText vocabulary() const { return {vocabularyName_, vocabularyText_}; }

private:
    // The text to check; none when it is not to be checked.
    std::optional<std::u16string_view> vocabularyFor(VocabularyCheck check);

    std::unique_ptr<IniFiles> files_; // too large for a small stack
    std::string vocabularyName_;
    std::u16string vocabularyText_;
};

// Has the library file convert, by the two calls that any host makes; it tells
// no problems of the run. The request's texts must be terminated by U+0000 and
// hold no other. Throws a HostError when the library cannot be loaded or fails.
std::u16string convertWithLibrary(const std::string& file, const ConversionRequest& request);

} // namespace tvml::host

#endif
