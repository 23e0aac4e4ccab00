// The storyboard as JSON, for the page that draws it and for other programs.
// docs/storyboard.md and web/storyboard/model.schema.json say what it holds.
#ifndef TVML_HOST_STORYBOARD_JSON_H
#define TVML_HOST_STORYBOARD_JSON_H

#include <map>
#include <string>

#include "analysis/analysis.h"

namespace tvml::host {

struct StoryboardSource {
    std::string script; // as messages name it
    std::string description;
    std::map<std::u16string, bool> exists;          // by the names that the script gives files
    std::map<std::u16string, std::string> pictures; // as data: addresses, where they are wanted
};

// In UTF-8, on one line. Every `<` of a text is escaped, so that the result can
// stand in a page as it is.
std::string storyboardJson(const Analysis& analysis, const StoryboardSource& source);

} // namespace tvml::host

#endif
