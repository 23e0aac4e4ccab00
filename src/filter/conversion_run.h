// One conversion: a script and a description in, a TVML script out.
#ifndef TVML_FILTER_CONVERSION_RUN_H
#define TVML_FILTER_CONVERSION_RUN_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "filter/run.h"
#include "filter/script_body.h"
#include "filter/tag_lines.h"
#include "filter/tvml_script.h"
#include "platform/platform.h"

namespace tvml {

// What a caller asks for; the texts must outlive the run. Line numbers count
// from 1.
struct ConversionRequest {
    std::u16string_view script;
    std::int32_t playFrom = 0; // "playfromhere()" comes before this line
    std::int32_t playTo = 0;   // "end()" comes after this line
    std::u16string_view description;
};

class ConversionRun {
public:
    // `words` and `settings` are read anew from the host's ini files by run().
    ConversionRun(KeywordTable& words, TvmlIniMirvol& settings, const platform::Platform& platform,
                  ConversionReport* report = nullptr);

    // Converts once; an object serves one conversion. The result refers to this
    // object and to the script of the request. Throws TvmlException when the XML
    // machinery fails.
    TvmlScript convert(const ConversionRequest& request);

private:
    void readDescription(std::u16string_view description);
    void convertLines(const ConversionRequest& request);
    void convertLine(std::u16string_view untrimmed);
    void convertSpoken(std::u16string_view line, std::u16string_view speaker);
    std::u16string_view takeSpeaker(std::u16string_view& line);
    void mark(std::u16string_view text, std::int32_t line);

    KeywordTable& words_;
    TvmlIniMirvol& settings_;
    const platform::Platform& platform_;
    Run run_;
    std::optional<MarkerIndex> markers_; // of the words that are loaded
    ScriptBody body_;
    TagLines tags_;
    std::u16string line_; // TVML of the line at hand
    std::vector<TalkPiece> talk_;
};

} // namespace tvml

#endif
