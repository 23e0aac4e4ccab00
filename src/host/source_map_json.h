// A source map as JSON, see docs/source-map.md.
#ifndef TVML_HOST_SOURCE_MAP_JSON_H
#define TVML_HOST_SOURCE_MAP_JSON_H

#include <string>
#include <vector>

#include "diagnostics/diagnostics.h"
#include "listening/source_map.h"

namespace tvml::host {

// UTF-8, as messages name the files.
struct SourceMapNames {
    std::string output;
    std::string script;
    std::string description;
};

// One JSON object. `places` are those of the description's elements.
std::string sourceMapJson(const SourceMap& map, const SourceMapNames& names,
                          const std::vector<ElementPlace>& places,
                          const platform::Platform& platform);

} // namespace tvml::host

#endif
