// A script in, a TVML script out. Entry: runConvert.
#include "host/convert_command.h"

#include "host/archive_command.h"
#include "host/archive_worker.h"
#include "host/dependencies.h"
#include "host/host_error.h"
#include "host/inputs.h"
#include "host/script_converter.h"
#include "host/text_files.h"
#include "host/watch.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

void checkSourceMap(const Options& options) {
    if (!options.library.empty()) {
        refuse(Message::usage_librarySourceMap);
    }
    const std::string& map = options.sourceMap;
    if (map == options.output || areOneFile(map, options.output) || isInput(options, map)) {
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
    if (!options.dependencyFile.empty()) {
        checkDependencyFile(options, {{options.output, options.script}});
    }
    refuseArchiveOptions(options);
    const bool judges = options.failureLevel.has_value() || options.format == ReportFormat::json ||
                        !options.allowed.empty() || !options.denied.empty() ||
                        !options.media.empty();
    if (!options.library.empty() && judges) {
        refuse(Message::usage_libraryProblems);
    }
    if (isInput(options, options.output)) {
        refuse(Message::usage_outputIsInput, {options.output});
    }
}

void tell(const std::string& lines) {
    // When even the warnings cannot be written, nobody can be told.
    platform::writeStream(platform::OutputStream::error, lines);
}

int convertOnce(const Options& options) {
    const int exitCode = ScriptConverter(options, tell).convert(options.script, options.output);
    if (!options.dependencyFile.empty()) {
        writeDependencies(options, {{options.output, options.script}});
    }
    return exitCode;
}

// JSON is for programs, which see the output change.
void convertAndTell(const Options& options) {
    convertOnce(options);
    if (options.format == ReportFormat::text && !options.quiet) {
        tell("tvmlfilter: " + say(Message::watch_wrote, {options.output}) + "\n");
    }
}

} // namespace

int runConvert(const Options& options) {
    if (options.isWorker) {
        return runArchiveWorker(options);
    }
    if (options.scripts.size() > 1 || !options.outputFolder.empty() || !options.folders.empty()) {
        return runArchive(options);
    }
    checkUsage(options);
    return options.watch ? watchInputs(options, [&options] { convertAndTell(options); })
                         : convertOnce(options);
}

} // namespace tvml::host
