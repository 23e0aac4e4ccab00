// Entries: the functions of the header.
#include "analysis/source_texts.h"

#include <algorithm>

namespace tvml {

bool isXml(std::string_view file, std::u16string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(u" \t\n\r"), text.size()));
    return file.ends_with(".xml") || file.ends_with(".XML") || text.starts_with(u"<?xml") ||
           text.starts_with(u"<!") || text.starts_with(u"<staging");
}

// Blanks are allowed in front of the document, so the declaration's place can
// stay and all positions with it.
void blankXmlDeclaration(std::u16string& description) {
    constexpr std::u16string_view kBlanks = u" \t\n\r";
    constexpr std::u16string_view kOpen = u"<?xml";
    const std::size_t start = description.find_first_not_of(kBlanks);
    if (start == std::u16string::npos || description.compare(start, kOpen.size(), kOpen) != 0 ||
        description.find_first_of(kBlanks, start) != start + kOpen.size()) {
        return; // none, or an instruction such as <?xml-stylesheet ...?>
    }
    const std::size_t end = description.find(u"?>", start);
    if (end != std::u16string::npos) {
        const auto at = [&description](std::size_t offset) {
            return description.begin() + static_cast<std::ptrdiff_t>(offset);
        };
        std::replace_if(
            at(start), at(end + 2), [](char16_t unit) { return unit != u'\n'; }, u' ');
    }
}

void endLinesWithFeeds(std::u16string& script) {
    for (std::size_t at = script.find(u'\r'); at != script.npos; at = script.find(u'\r', at + 1)) {
        if (script.compare(at, 2, u"\r\n") != 0) {
            script[at] = u'\n';
        }
    }
}

} // namespace tvml
