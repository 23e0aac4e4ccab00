// What the texts of files are before they are read: scripts or descriptions, with
// or without what XML begins with.
#ifndef TVML_ANALYSIS_SOURCE_TEXTS_H
#define TVML_ANALYSIS_SOURCE_TEXTS_H

#include <string>
#include <string_view>

namespace tvml {

// Whether a text that was read as a script is a description: by its name, or by how
// XML begins.
bool isXml(std::string_view file, std::u16string_view text);

// Puts blanks in place of a leading XML declaration: the filter gives a description
// its own. Lines and columns stay what they are.
void blankXmlDeclaration(std::u16string& description);

// Puts line feeds in place of carriage returns that end lines alone.
void endLinesWithFeeds(std::u16string& script);

} // namespace tvml

#endif
