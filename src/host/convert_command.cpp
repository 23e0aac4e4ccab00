// A script in, a TVML script out. Entry: runConvert.
#include "host/convert_command.h"

#include "host/archive_command.h"
#include "host/conversion.h"
#include "host/host_error.h"
#include "host/inputs.h"
#include "host/media_folder.h"
#include "host/run_report.h"
#include "host/source_map_json.h"
#include "host/text_files.h"
#include "host/watch.h"
#include "platform/host_services.h"
#include "platform/platform.h"

namespace tvml::host {
namespace {

void checkSourceMap(const Options& options) {
    if (!options.library.empty()) {
        refuse(Message::usage_librarySourceMap);
    }
    const std::string& map = options.sourceMap;
    if (map == options.output || areOneFile(map, options.output) ||
        areOneFile(map, options.script) || areOneFile(map, options.description)) {
        refuse(Message::usage_sourceMapFile);
    }
}

void checkWatch(const Options& options) {
    for (const std::string& file : {options.output, options.script, options.description}) {
        if (file == kStandardStream) {
            refuse(Message::usage_watchFiles);
        }
    }
}

// What can be known to be a mistake before any file is opened.
void checkUsage(const Options& options) {
    if (!options.sourceMap.empty()) {
        checkSourceMap(options);
    }
    if (options.watch) {
        checkWatch(options);
    }
    const bool judges = options.failureLevel.has_value() || options.format == ReportFormat::json ||
                        !options.allowed.empty() || !options.denied.empty() ||
                        !options.media.empty();
    if (!options.library.empty() && judges) {
        refuse(Message::usage_libraryProblems);
    }
    if (areOneFile(options.output, options.script) ||
        areOneFile(options.output, options.description)) {
        refuse(Message::usage_outputIsInput, {options.output});
    }
}

void warn(const std::string& lines) {
    // When even the warnings cannot be written, nobody can be told.
    platform::writeStream(platform::OutputStream::error, lines);
}

// Long sentences are cut by units, also between the two of one character. UTF-8
// has no form for a half, so something of the script is lost in it.
void warnOfHalfPairs(const Options& options, std::u16string_view text) {
    const std::size_t half = findHalfPair(text);
    if (options.outputEncoding == OutputEncoding::utf8 && half != std::u16string_view::npos) {
        warn(outputWarning(options.format, outputName(options.output), positionIn(text, half),
                           Message::convert_halfPair));
    }
}

struct Converted {
    std::u16string text;
    Analysis analysis;   // but for the library's
    bool failed = false; // by its problems
    bool descriptionBroken = false;
};

// One run for all that is wanted: another could choose other variants.
Converted convert(const Options& options, const Inputs& inputs) {
    const ConversionRequest request = inputs.request(options);
    if (!options.library.empty()) {
        return {convertWithLibrary(options.library, request), {}};
    }
    Filter filter;
    AnalysisWants wants;
    wants.problems = true;
    wants.returnsAsLineEnds = inputs.lineEnds == LineEnds::returns;
    wants.sourceMap = wants.elements = !options.sourceMap.empty();
    Converted result{
        {}, filter.run(request, wants, VocabularyCheck::whenCutOff, mediaIn(options.media))};
    result.text = std::move(result.analysis.tvml);
    const Sources sources = inputs.sources(filter.vocabulary());
    const Findings findings =
        findingsOf(std::move(result.analysis.problems), sources, options.report(FailureLevel::none),
                   platform::OutputStream::error);
    // Before the output is written: a writer whose disk is full still learns
    // of them.
    warn(findings.lines);
    result.failed = findings.failed;
    result.descriptionBroken = findings.descriptionBroken;
    return result;
}

void writeSourceMap(const Options& options, const Inputs& inputs, const Analysis& analysis) {
    writeBytes(options.sourceMap, sourceMapJson(analysis.sourceMap,
                                                {outputName(options.output), inputs.scriptName,
                                                 inputs.descriptionName},
                                                analysis.elements, platform::system()));
}

// Everything is read and converted before anything is written, so that a
// failure on the way leaves no half of an output behind. Problems are no such
// failure, whatever their weight; but who watches has an output already, and one
// from half a description is no better.
int convertOnce(const Options& options) {
    const Inputs inputs = readInputs(options);
    const Converted converted = convert(options, inputs);
    warnOfHalfPairs(options, converted.text);
    if (options.watch && converted.descriptionBroken) {
        throw inputOrOutputError(options.output, {}, Message::convert_keptOutput);
    }
    writeScript(options.output, converted.text, options.outputEncoding);
    if (!options.sourceMap.empty()) {
        writeSourceMap(options, inputs, converted.analysis);
    }
    return converted.failed ? kProblemsFound : kDone;
}

// JSON is for programs, which see the output change.
void convertAndTell(const Options& options) {
    convertOnce(options);
    if (options.format == ReportFormat::text) {
        warn("tvmlfilter: " + say(Message::watch_wrote, {options.output}) + "\n");
    }
}

} // namespace

int runConvert(const Options& options) {
    if (options.scripts.size() > 1 || !options.outputFolder.empty()) {
        return runArchive(options);
    }
    checkUsage(options);
    return options.watch ? watchInputs(options, [&options] { convertAndTell(options); })
                         : convertOnce(options);
}

} // namespace tvml::host
