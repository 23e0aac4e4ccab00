// The pictures and sounds of a programme on this machine.
#ifndef TVML_HOST_MEDIA_FOLDER_H
#define TVML_HOST_MEDIA_FOLDER_H

#include <optional>
#include <string>
#include <vector>

#include "diagnostics/media_names.h"

namespace tvml::host {

// The files in all of these folders and below; none when there are no folders.
// Throws a HostError when one cannot be read.
std::optional<MediaNames> mediaIn(const std::vector<std::string>& folders);

// The files in one folder and below, as scripts name them; none of a folder that
// cannot be read.
std::vector<std::u16string> filesIn(const std::string& folder);

} // namespace tvml::host

#endif
