// The two roads from a request to a TVML script.
#ifndef TVML_HOST_CONVERSION_H
#define TVML_HOST_CONVERSION_H

#include <string>

#include "filter/conversion_run.h"

namespace tvml::host {

// Converts in this program. Throws a HostError when the run fails.
std::u16string convertHere(const ConversionRequest& request, ConversionReport& report);

// Has the library file convert, by the two calls that any host makes; it tells
// no problems of the run. The request's texts must be terminated by U+0000 and
// hold no other. Throws a HostError when the library cannot be loaded or fails.
std::u16string convertWithLibrary(const std::string& file, const ConversionRequest& request);

} // namespace tvml::host

#endif
