// Entry: ScriptConverter.
#include "host/script_converter.h"

#include <utility>

#include "host/host_error.h"
#include "host/media_folder.h"
#include "host/run_report.h"
#include "host/source_map_json.h"
#include "host/text_files.h"
#include "platform/platform.h"

namespace tvml::host {

ScriptConverter::ScriptConverter(Options options, Tell tell)
    : options_(std::move(options)), tell_(std::move(tell)) {
    if (options_.quiet) {
        tell_ = [](const std::string&) {};
    }
}

Inputs ScriptConverter::read() {
    Inputs inputs = readScriptInput(options_);
    if (!description_.has_value()) {
        description_ = descriptionOf(options_);
    }
    inputs.description = *description_;
    return inputs;
}

// One run for all that is wanted: another could choose other variants.
ScriptConverter::Converted ScriptConverter::runHere(const Inputs& inputs) {
    if (!filter_.has_value()) {
        filter_.emplace();
        media_ = mediaIn(options_.media);
    }
    AnalysisWants wants;
    wants.problems = wantsProblems();
    wants.returnsAsLineEnds = inputs.lineEnds == LineEnds::returns;
    wants.sourceMap = wants.elements = !options_.sourceMap.empty();
    Converted result{
        {},
        filter_->run(inputs.request(options_), wants,
                     wants.problems ? VocabularyCheck::whenCutOff : VocabularyCheck::never, media_),
    };
    result.text = std::move(result.analysis.tvml);
    const Sources sources = inputs.sources(filter_->vocabulary());
    const Findings findings =
        findingsOf(std::move(result.analysis.problems), sources,
                   options_.report(FailureLevel::none), platform::OutputStream::error);
    // Before the output is written: a writer whose disk is full still learns
    // of them.
    tell_(findings.lines);
    result.failed = findings.failed;
    result.descriptionBroken = findings.descriptionBroken;
    return result;
}

ScriptConverter::Converted ScriptConverter::run(const Inputs& inputs) {
    return options_.library.empty()
               ? runHere(inputs)
               : Converted{convertWithLibrary(options_.library, inputs.request(options_)), {}};
}

// Long sentences are cut by units, also between the two of one character. UTF-8
// has no form for a half, so something of the script is lost in it.
void ScriptConverter::warnOfHalfPairs(std::u16string_view text) const {
    const std::size_t half = findHalfPair(text);
    if (options_.outputEncoding == OutputEncoding::utf8 && half != std::u16string_view::npos) {
        tell_(outputWarning(options_.format, outputName(options_.output), positionIn(text, half),
                            Message::convert_halfPair));
    }
}

void ScriptConverter::write(const Inputs& inputs, const Converted& converted) const {
    writeScript(options_.output, converted.text, options_.outputEncoding);
    if (!options_.sourceMap.empty()) {
        const Analysis& analysis = converted.analysis;
        writeBytes(options_.sourceMap, sourceMapJson(analysis.sourceMap,
                                                     {outputName(options_.output),
                                                      inputs.scriptName, inputs.descriptionName},
                                                     analysis.elements, platform::system()));
    }
}

// Everything is read and converted before anything is written, so that a
// failure on the way leaves no half of an output behind. Problems are no such
// failure, whatever their weight; but who watches has an output already, and one
// from half a description is no better.
int ScriptConverter::convert(const std::string& script, const std::string& output) {
    options_.script = script;
    options_.output = output;
    const Inputs inputs = read();
    const Converted converted = run(inputs);
    warnOfHalfPairs(converted.text);
    if (options_.watch && converted.descriptionBroken) {
        throw inputOrOutputError(output, {}, Message::convert_keptOutput);
    }
    write(inputs, converted);
    return converted.failed ? kProblemsFound : kDone;
}

} // namespace tvml::host
