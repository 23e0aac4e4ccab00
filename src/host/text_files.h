// Scripts and descriptions from files, and the converted script into one. All
// of these throw a HostError that names the file and says what to do.
#ifndef TVML_HOST_TEXT_FILES_H
#define TVML_HOST_TEXT_FILES_H

#include <cstdint>
#include <string>
#include <string_view>

#include "host/host_error.h"
#include "host/text_encoding.h"

namespace tvml::host {

// What a file's lines end with: line feeds, with or without a carriage return, or
// carriage returns alone.
enum class LineEnds : std::uint8_t { feeds, returns };

struct ScriptText {
    std::u16string text;
    LineEnds lineEnds = LineEnds::feeds;
    InputEncoding encoding = InputEncoding::utf8; // that was detected or given
};

// The script with line feeds as its line ends. "-" is standard input.
ScriptText readScript(const std::string& file, InputEncoding encoding);

// As readScript, and blanks stand in place of a leading XML declaration: the
// filter gives a description its own. Lines and columns stay what they are in
// the file.
std::u16string readDescription(const std::string& file, InputEncoding encoding);

// The same of a text that was read as a script.
std::u16string asDescription(std::u16string text);

// Writes the whole text, or nothing. "-" is standard output.
void writeScript(const std::string& file, std::u16string_view text, OutputEncoding encoding);

// The same with bytes as they are.
void writeBytes(const std::string& file, std::string_view bytes);

// Whether both names lead to one ordinary file. Devices and pipes can well be
// read and written at once, and a name that leads nowhere yet is no input.
bool areOneFile(const std::string& first, const std::string& second);

// To standard output.
void writeOutput(std::string_view text);

// Where `offset` is in `text`.
TextPosition positionIn(std::u16string_view text, std::size_t offset);

} // namespace tvml::host

#endif
