// Texts of the catalogue as lines of a terminal.
#ifndef TVML_HOST_TEXT_FLOW_H
#define TVML_HOST_TEXT_FLOW_H

#include <cstddef>
#include <string>
#include <string_view>

namespace tvml::host {

// The text in lines of at most `columns`, each with its line feed. A line of the
// text is a paragraph; one with a tab is a row of two columns, and lines up with
// its neighbours, `indent` columns from the left. Japanese goes on in the next
// line anywhere but in front of what closes and behind what opens.
std::u16string flowed(std::u16string_view text, std::size_t columns, std::size_t indent = 2);

// The columns that are to be filled on standard output.
std::size_t outputColumns();

} // namespace tvml::host

#endif
