// The page that draws storyboards, made from web/storyboard when the program is
// built.
#ifndef TVML_HOST_STORYBOARD_PAGE_H
#define TVML_HOST_STORYBOARD_PAGE_H

#include <string_view>

namespace tvml::host {

// The page around its model: what stands before the JSON and what behind it. Both
// are empty in a program that was built without the page.
extern const std::string_view kStoryboardPageHead;
extern const std::string_view kStoryboardPageTail;

} // namespace tvml::host

#endif
