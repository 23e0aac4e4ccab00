// What is spoken in a speech, and the directions in it.
#ifndef TVML_IMPORT_SPEECH_TEXT_H
#define TVML_IMPORT_SPEECH_TEXT_H

#include "import/play.h"
#include "import/play_lines.h"

namespace tvml::plays {

// Gathers the lines of one speech and parts them in the end.
class SpeechText {
public:
    void add(std::u16string_view line, std::int32_t number);

    const std::u16string& text() const { return text_; }
    bool empty() const { return text_.empty(); }

    // Brackets at the ends of the speech, and behind the end of a sentence or a
    // clause, hold directions, as square ones do everywhere; others in the middle
    // of a sentence are asides.
    std::vector<PlayPart> parts() const;

private:
    struct LineStart {
        std::size_t at;
        std::int32_t number;
    };
    class Parting;

    std::u16string text_;
    std::vector<LineStart> starts_;
};

// A direction in front of a speech, as in "太郎（小声で）「…」".
PlayPart directionPart(std::u16string_view text, std::int32_t line);

// Without the brackets around all of it.
std::u16string_view withoutOuterBrackets(std::u16string_view text);

// A speech, or directions of its speaker when nothing in it is spoken.
void addSpeech(std::vector<PlayItem>& items, std::int32_t line, std::u16string_view name,
               std::vector<PlayPart> parts);

inline constexpr std::u16string_view kOpenings = u"（(［[〔【";
inline constexpr std::u16string_view kClosings = u"）)］]〕】";

} // namespace tvml::plays

#endif
