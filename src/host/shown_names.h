// Names of the tables as the user knows them.
#ifndef TVML_HOST_SHOWN_NAMES_H
#define TVML_HOST_SHOWN_NAMES_H

#include <string>

#include "analysis/programme_offer.h"

namespace tvml::host {

// The word of the vocabulary or the description for a command, a tag or a pose
// in languages that name them so, with "～" for an argument; else the name, which
// is English.
std::u16string shownName(const ProgrammeOffer& offer, const std::u16string& english);

} // namespace tvml::host

#endif
