// One conversion: a script and a description in, a TVML script out.
#ifndef TVML_FILTER_CONVERSION_RUN_H
#define TVML_FILTER_CONVERSION_RUN_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "filter/script_body.h"
#include "filter/tag_lines.h"
#include "filter/tvml_script.h"
#include "platform/platform.h"
#include "reading/line_reader.h"
#include "run/run.h"

namespace tvml {

// In place of a line number: no line was asked for, or there is none to name.
inline constexpr std::int32_t kNoLine = -1;

// What a caller asks for; the texts must outlive the run. Line numbers count
// from 1. Other numbers than those of lines mean what the host's call makes of
// them, see fil_process.h; kNoLine means nothing there, too.
struct ConversionRequest {
    std::u16string_view script;
    std::int32_t playFrom = kNoLine; // "playfromhere()" comes before this line
    std::int32_t playTo = kNoLine;   // "end()" comes after this line
    std::u16string_view description;
    std::shared_ptr<const XmlDocument> parsed{}; // the description, if that was done
};

class ConversionRun {
public:
    // `words` and `settings` are those of this conversion. `listeners`, when given,
    // hear of all that happens.
    ConversionRun(const KeywordTable& words, const TvmlIniMirvol& settings,
                  const platform::Platform& platform, const Listeners* listeners = nullptr);

    // Converts once; an object serves one conversion. The result refers to this
    // object and to the script of the request. Throws TvmlException when the XML
    // machinery fails.
    TvmlScript convert(const ConversionRequest& request);

private:
    void readDescription(const ConversionRequest& request);
    void convertLines(const ConversionRequest& request);
    void convertLine(std::u16string_view text, bool isPlain);
    void writeLine(bool isPlain);
    void writeCommand();
    void mark(std::u16string_view text, std::int32_t line);

    const KeywordTable& words_;
    const platform::Platform& platform_;
    Run run_;
    LineReader reader_;
    LineContext context_; // of the next line
    ScriptLine line_;
    ScriptBody body_;
    TagLines tags_;
    std::u16string text_; // TVML of the line at hand
    std::vector<TalkPiece> talk_;
};

} // namespace tvml

#endif
