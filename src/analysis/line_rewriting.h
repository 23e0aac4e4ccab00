// Lines said in other words: what an editor may put in place of a line.
#ifndef TVML_ANALYSIS_LINE_REWRITING_H
#define TVML_ANALYSIS_LINE_REWRITING_H

#include <optional>
#include <string>
#include <string_view>

#include "analysis/line_parts.h"

namespace tvml {

// The line with English words in place of those of the vocabulary and the
// description, or the other way round. None when there is nothing to say otherwise,
// or when the line would not mean the same.
std::optional<std::u16string> inOtherLanguage(const LoadedProgramme& programme,
                                              std::u16string_view line);

// A title line gets a subtitle line behind it, with the same kind of words. None for
// other lines.
std::optional<std::u16string> subtitleFor(const LoadedProgramme& programme,
                                          std::u16string_view line);

// Whether a line in which names were changed still says the same about them: parts of
// the same kinds in the same order.
bool meansTheSame(const LineParts& before, const LineParts& after);

} // namespace tvml

#endif
