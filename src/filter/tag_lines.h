// Tag lines: titles, supers, pictures, music, embedded TVML, declared tags.
#ifndef TVML_FILTER_TAG_LINES_H
#define TVML_FILTER_TAG_LINES_H

#include <string>
#include <string_view>

#include "filter/script_body.h"
#include "run/run.h"

namespace tvml {

// Writes tag lines into the body.
class TagLines {
public:
    TagLines(Run& run, ScriptBody& body) : run_(run), body_(body) {}

    // A line that nothing takes writes nothing.
    void write(const TagReading& tag);

private:
    void append(std::u16string_view text) { body_.append(text, run_.state.lineNumber); }
    void writeDeclaredTag(const TagReading& tag);
    void writeMarker(Marker marker, const TagReading& tag);
    void writeTitleText(TitleKind kind, std::u16string_view given);
    void startCard(TitleKind kind, std::u16string_view text);
    void writeSuper(const TagReading& tag);
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
