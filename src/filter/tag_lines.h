// Tag lines: titles, supers, pictures, music, embedded TVML, declared tags.
#ifndef TVML_FILTER_TAG_LINES_H
#define TVML_FILTER_TAG_LINES_H

#include <string>
#include <string_view>

#include "filter/run.h"
#include "filter/script_body.h"

namespace tvml {

// Writes tag lines into the body.
class TagLines {
public:
    TagLines(Run& run, ScriptBody& body) : run_(run), body_(body) {}

    // `line` is trimmed, `untrimmed` the line as the script has it. A line that
    // no handler takes writes nothing.
    void write(std::u16string_view line, std::u16string_view untrimmed);

private:
    bool writeDeclaredTag(std::u16string_view line);
    bool writeTagText(const TextMap::value_type& entry, std::u16string_view english,
                      std::u16string_view line);
    void writeMarker(Marker marker, std::size_t units, std::u16string_view line,
                     std::u16string_view untrimmed);
    void writeTitleText(TitleKind kind, std::u16string_view given);
    void startCard(TitleKind kind, std::u16string_view text);
    void writeSuper(std::size_t units, std::u16string_view untrimmed);
    void writeMainPicture(std::u16string_view file);
    void writeNumberedPicture(SimpleElement element, std::int32_t& count, std::u16string_view file);
    void writeSimple(SimpleElement element, std::u16string_view text);
    void writeTemplate(SimpleElement element, std::span<const Filling> fillings);

    Run& run_;
    ScriptBody& body_;
    TitleFonts fonts_; // of the title template chosen last
    std::u16string scratch_;
};

} // namespace tvml

#endif
