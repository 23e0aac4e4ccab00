// One conversion, heard by all who were asked for. Entry: analyze.
#include "analysis/analysis.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "filter/conversion_run.h"

namespace tvml {
namespace {

void append(std::vector<Diagnostic>& all, std::vector<Diagnostic> more) {
    all.insert(all.end(), std::make_move_iterator(more.begin()),
               std::make_move_iterator(more.end()));
}

bool isBrokenDescription(const Diagnostic& found) {
    return found.code == Code("D318");
}

std::vector<Diagnostic> problemsOfDescription(const AnalysisRequest& request,
                                              const ConversionRequest& conversion,
                                              const platform::Platform& platform) {
    return request.ofDescription != nullptr
               ? *request.ofDescription
               : checkDescription(conversion.description, request.words, platform, request.language,
                                  conversion.parsed);
}

} // namespace

Analysis analyze(const AnalysisRequest& request, const AnalysisWants& wants,
                 const platform::Platform& platform) {
    ConversionRequest conversion = request.conversion;
    if (conversion.parsed == nullptr && (wants.problems || wants.elements)) {
        conversion.parsed = parseDescription(conversion.description);
    }
    DiagnosticCollector problems(conversion, request.language, request.media);
    StoryRecorder stories(wants.stories.first, wants.stories.last);
    SourceMapRecorder map;
    UseRecorder uses;
    BeatRecorder beats;
    StoryboardRecorder storyboard;
    Analysis result;
    OfferRecorder offer(result.offer);
    Listeners listeners;
    const auto listen = [&listeners](bool wanted, RunListener& listener) {
        if (wanted) {
            listeners.add(listener);
        }
    };
    listen(wants.problems, problems);
    listen(wants.stories.last >= wants.stories.first, stories);
    listen(wants.sourceMap, map);
    listen(wants.uses, uses);
    listen(wants.beats, beats);
    listen(wants.storyboard, storyboard);
    listen(wants.statistics, result.statistics);
    listen(wants.offer, offer);

    // Not on the stack, which may be small.
    const auto run =
        std::make_unique<ConversionRun>(request.words, request.settings, platform, &listeners);
    result.tvml = run->convert(conversion).text();
    if (wants.vocabulary.has_value()) {
        append(result.problems,
               checkVocabulary(request.words, *wants.vocabulary, request.language));
    }
    if (wants.problems) {
        append(result.problems, problemsOfDescription(request, conversion, platform));
        std::vector<Diagnostic> ofScript = problems.take();
        if (std::any_of(result.problems.begin(), result.problems.end(), isBrokenDescription)) {
            dropConsequences(ofScript, conversion.script, conversion.description, request.language);
        }
        if (wants.returnsAsLineEnds) {
            result.problems.push_back(returnsAsLineEnds(conversion.script, request.language));
        }
        append(result.problems, std::move(ofScript));
    }
    if (wants.elements) {
        result.elements = elementPlaces(conversion.description, conversion.parsed);
    }
    result.stories = stories.take();
    result.lineCount = stories.lineCount();
    result.sourceMap = map.take();
    result.uses = uses.take();
    result.beats = beats.take();
    if (wants.storyboard) {
        result.storyboard = storyboard.take();
    }
    return result;
}

} // namespace tvml
