// Everything that a tool asks of a script: texts in, plain structs out. No files,
// no JSON, no terminal; the command line, and every other tool, is a door to it.
//
// Conventions
//  1. Texts are UTF-16; lines and columns count from 1, places within a line from
//     0, all in UTF-16 units.
//  2. The texts of a request are read only while a function runs; what it returns
//     owns what it holds.
//  3. Line numbers of a request are those of fil_process; kNoLine plays from the
//     start and to the end.
//  4. A failure of the XML machinery is thrown as a TvmlException, as by the
//     conversion. Nothing else is thrown but std::bad_alloc.
#ifndef TVML_ANALYSIS_ANALYSIS_H
#define TVML_ANALYSIS_ANALYSIS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/line_uses.h"
#include "analysis/programme_offer.h"
#include "diagnostics/diagnostics.h"
#include "listening/beats.h"
#include "listening/line_story.h"
#include "listening/script_statistics.h"
#include "listening/source_map.h"
#include "listening/storyboard.h"

namespace tvml {

struct AnalysisRequest {
    ConversionRequest conversion;
    const KeywordTable& words;
    const TvmlIniMirvol& settings;
    Language language = Language::en;  // of the problems
    const MediaNames* media = nullptr; // the pictures and sounds that are there, when known

    // What the description has wrong, when it was checked before.
    const std::vector<Diagnostic>* ofDescription = nullptr;
};

// Lines from `first` to `last`, both from 1.
struct LineRange {
    std::int32_t first = 1;
    std::int32_t last = 0; // none
};

// What a tool wants to know besides the converted script.
struct AnalysisWants {
    bool problems = false;                              // of the script and the description
    bool returnsAsLineEnds = false;                     // the script had them; it is to be told
    std::optional<std::u16string_view> vocabulary = {}; // the words' ini text, to be checked, too
    LineRange stories = {};
    bool sourceMap = false;
    bool elements = false; // the places of the description's elements
    bool uses = false;     // of templates
    bool beats = false;
    bool storyboard = false;
    bool statistics = false;
    bool offer = false;
};

// What was not wanted is empty.
struct Analysis {
    std::u16string tvml;

    // What is wrong with the vocabulary, the description and the script, in this
    // order: each explains many problems of the next.
    std::vector<Diagnostic> problems;
    std::vector<LineStory> stories;
    SourceMap sourceMap;
    std::vector<ElementPlace> elements;
    std::vector<LineUse> uses; // in the order of the lines
    std::vector<Beat> beats;
    Storyboard storyboard;
    ScriptStatistics statistics;
    ProgrammeOffer offer;
    std::int32_t lineCount = 0; // of the script; known when stories are wanted
};

Analysis analyze(const AnalysisRequest& request, const AnalysisWants& wants,
                 const platform::Platform& platform);

} // namespace tvml

#endif
