// The folder of both ini files: that of the program, or the one that a project names.
#ifndef TVML_HOST_INI_FOLDER_H
#define TVML_HOST_INI_FOLDER_H

#include <string>
#include <string_view>

#include "platform/platform.h"

namespace tvml::host {

// One for the whole program. An empty folder is the program's.
void chooseIniFolder(const std::string& folder);

// The system, for which the host program stands in that folder.
const platform::Platform& iniPlatform();

// The path of an ini file, such as "keyword.ini".
std::string iniFile(std::u16string_view name);

} // namespace tvml::host

#endif
