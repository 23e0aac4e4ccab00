// Entry: shownName.
#include "host/shown_names.h"

#include <algorithm>

#include "host/language.h"

namespace tvml::host {
namespace {

// Names of rows with an argument are offered with a sample of it; a word has so
// many units of one in front.
struct Sample {
    std::u16string_view english;
    std::size_t units;
};
constexpr Sample kSamples[] = {
    {u"", 0}, {u" B", 1}, {u" AB", 2}, {u" 3 steps", 1}, {u" 3 degrees", 1}, {u" 3 seconds", 1},
};

} // namespace

std::u16string shownName(const ProgrammeOffer& offer, const std::u16string& english) {
    if (!namesCommandsByWords(language())) {
        return english;
    }
    const std::size_t trimmed = english.find_last_not_of(u' ') + 1;
    for (const Sample& sample : kSamples) {
        const std::u16string wanted = english.substr(0, trimmed).append(sample.english);
        const auto name = std::ranges::find(offer.names, wanted, &OfferedName::english);
        const bool fits = sample.units > 0 || trimmed == english.size();
        if (fits && name != offer.names.end() && !name->words.empty()) {
            const std::u16string word = name->words.front();
            return (sample.units > 0 ? u"～" : u"") +
                   word.substr(std::min(sample.units, word.size()));
        }
    }
    return english;
}

} // namespace tvml::host
