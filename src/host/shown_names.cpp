// Entry: shownName.
#include "host/shown_names.h"

#include <algorithm>

#include "host/language.h"

namespace tvml::host {
namespace {

// Names of rows with an argument are offered with a sample of it.
bool isOffered(const OfferedName& offered, const std::u16string& english) {
    constexpr std::u16string_view kSamples[] = {u"",        u"B",         u"AB",
                                                u"3 steps", u"3 degrees", u"3 seconds"};
    return !offered.words.empty() && std::ranges::any_of(kSamples, [&](std::u16string_view sample) {
        return offered.english == std::u16string(english).append(sample);
    });
}

} // namespace

std::u16string shownName(const ProgrammeOffer& offer, const std::u16string& english) {
    const auto name = std::ranges::find_if(
        offer.names, [&](const OfferedName& offered) { return isOffered(offered, english); });
    return namesCommandsByWords(language()) && name != offer.names.end() ? name->words.front()
                                                                         : english;
}

} // namespace tvml::host
