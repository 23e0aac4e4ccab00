// Entry: LoadedProgramme.
#include "analysis/programme.h"

#include "staging/tvml_exception.h"

namespace tvml {

LoadedProgramme::LoadedProgramme(const KeywordTable& words, std::u16string description,
                                 const platform::Platform& platform)
    : description_(std::move(description)), parsed_(parseDescription(description_)),
      reader_(words, staging_) {
    try {
        lastCharacter_ = DescriptionReader(words, platform, staging_, templates_, log_)
                             .readFilDescription(parsed_);
    } catch (const TvmlException&) {
        // What was read before stays; a conversion tells of the failure.
    }
    OfferRecorder(offer_).programmeRead({reader_, staging_, templates_, lastCharacter_, log_});
    elements_ = elementPlaces(description_, parsed_);
}

} // namespace tvml
