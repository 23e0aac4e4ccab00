// A description and a vocabulary, read once and kept: for questions about single
// lines and places that need no conversion.
#ifndef TVML_ANALYSIS_PROGRAMME_H
#define TVML_ANALYSIS_PROGRAMME_H

#include <memory>
#include <string>
#include <vector>

#include "analysis/programme_offer.h"
#include "diagnostics/diagnostics.h"

namespace tvml {

// Refers to itself; it stays where it was made.
class LoadedProgramme {
public:
    // The words must outlive the object and stay as they are.
    LoadedProgramme(const KeywordTable& words, std::u16string description,
                    const platform::Platform& platform);
    LoadedProgramme(const LoadedProgramme&) = delete;
    LoadedProgramme& operator=(const LoadedProgramme&) = delete;

    const std::u16string& description() const { return description_; }
    const std::shared_ptr<const XmlDocument>& parsed() const { return parsed_; }
    const StagingDescription& staging() const { return staging_; }
    const LineReader& reader() const { return reader_; }
    const ProgrammeOffer& offer() const { return offer_; }
    const std::vector<ElementPlace>& elements() const { return elements_; }

    // Of a line that stands alone: the programme's letters, and no conditions.
    LineContext context() const { return {lastCharacter_, {}}; }

private:
    const std::u16string description_;
    std::shared_ptr<const XmlDocument> parsed_;
    StagingDescription staging_;
    TemplateDb templates_;
    DiagnosticLog log_;
    LineReader reader_;
    ProgrammeOffer offer_;
    std::vector<ElementPlace> elements_;
    char16_t lastCharacter_ = u'Z';
};

} // namespace tvml

#endif
