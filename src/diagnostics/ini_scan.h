// The entries of an ini text with their places, for messages about them.
#ifndef TVML_DIAGNOSTICS_INI_SCAN_H
#define TVML_DIAGNOSTICS_INI_SCAN_H

#include <string_view>
#include <vector>

#include "diagnostics/finding.h"

namespace tvml {

struct IniEntry {
    std::u16string_view key;   // as written
    std::u16string_view value; // without enclosing quotes
    TextRange keyRange;
    TextRange valueRange;
    bool hasValue = false; // there is an equals sign
};

// The entries of the first section `section`, read as the ini service reads
// them. `header` becomes the place of the section's line, with a line of 0 when
// there is no such section.
std::vector<IniEntry> scanIni(std::u16string_view text, std::u16string_view section,
                              TextRange& header);

// Names compare without case, for ASCII letters only.
bool sameIniName(std::u16string_view a, std::u16string_view b);

} // namespace tvml

#endif
