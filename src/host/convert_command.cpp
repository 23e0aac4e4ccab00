// A script in, a TVML script out. Entry: runConvert.
#include "host/convert_command.h"

#include <filesystem>
#include <system_error>

#include "host/archive_command.h"
#include "host/conversion.h"
#include "host/host_error.h"
#include "host/inputs.h"
#include "host/text_files.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

// Whether both names lead to one ordinary file. Devices and pipes can well be
// read and written at once, and a name that leads nowhere yet is no input.
bool areOneFile(const std::string& first, const std::string& second) {
    std::error_code unknown;
    const auto path = [](const std::string& name) {
        return std::filesystem::path(std::u8string(name.begin(), name.end()));
    };
    return first != kStandardStream &&
           std::filesystem::equivalent(path(first), path(second), unknown) && !unknown &&
           std::filesystem::is_regular_file(path(first), unknown);
}

// What can be known to be a mistake before any file is opened.
void checkUsage(const Options& options) {
    const auto refuse = [](const std::string& text) {
        throw HostError{kWrongUsage, "tvmlfilter: error: " + text};
    };
    const bool judges = options.failureLevel.has_value() || options.format == ReportFormat::json ||
                        !options.allowed.empty() || !options.denied.empty();
    if (!options.library.empty() && judges) {
        refuse("--library tells no problems, so none can be shown or counted; leave out either");
    }
    if (areOneFile(options.output, options.script) ||
        areOneFile(options.output, options.description)) {
        refuse("the output would replace its own input " + options.output +
               "; name another file with -o");
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
                           "a character was cut in two and became U+FFFD; shorten the sentence, or "
                           "keep the halves with --output-encoding utf-16le"));
    }
}

struct Converted {
    std::u16string text;
    bool failed = false; // by its problems
};

Converted convert(const Options& options, const Inputs& inputs) {
    const ConversionRequest request = inputs.request(options);
    if (!options.library.empty()) {
        return {convertWithLibrary(options.library, request)};
    }
    RunReport report(request, {inputs.scriptName, inputs.descriptionName});
    Converted result{convertHere(request, report.listener())};
    const Findings findings =
        report.findings(options.report(FailureLevel::none), VocabularyCheck::whenCutOff,
                        platform::OutputStream::error);
    // Before the output is written: a writer whose disk is full still learns
    // of them.
    warn(findings.lines);
    result.failed = findings.failed;
    return result;
}

} // namespace

// Everything is read and converted before anything is written, so that a
// failure on the way leaves no half of an output behind. Problems are no such
// failure, whatever their weight.
int runConvert(const Options& options) {
    if (options.scripts.size() > 1 || !options.outputFolder.empty()) {
        return runArchive(options);
    }
    checkUsage(options);
    const Converted converted = convert(options, readInputs(options));
    warnOfHalfPairs(options, converted.text);
    writeScript(options.output, converted.text, options.outputEncoding);
    return converted.failed ? kProblemsFound : kDone;
}

} // namespace tvml::host
