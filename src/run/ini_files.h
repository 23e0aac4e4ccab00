// The two ini files beside the host program: all that outlives a conversion.
#ifndef TVML_RUN_INI_FILES_H
#define TVML_RUN_INI_FILES_H

#include "platform/platform.h"
#include "run/settings.h"
#include "vocabulary/keyword_table.h"

namespace tvml {

struct IniFiles {
    explicit IniFiles(const platform::Platform& system) : settings(system), platform(system) {}

    // Reads both anew. What cannot be read keeps what it held.
    void load() {
        words.load(platform);
        settings.load();
    }

    KeywordTable words;
    TvmlIniMirvol settings;
    const platform::Platform& platform;
};

} // namespace tvml

#endif
