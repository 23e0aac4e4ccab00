// A script in, a TVML script out. Entry: runConvert.
#include "host/convert_command.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "host/conversion.h"
#include "host/host_error.h"
#include "host/run_report.h"
#include "host/text_files.h"
#include "platform/host_services.h"
#include "platform/platform.h"

namespace tvml::host {
namespace {

// Long enough for any path of any system.
constexpr std::size_t kPathUnits = 32768;

// Made from the ini files' folder, so that all that comes with the program is
// in one place.
std::string defaultDescription() {
    const platform::Platform& system = platform::system();
    const std::u16string program = system.hostProgramPath(kPathUnits);
    const std::size_t separator = program.rfind(system.pathSeparator());
    return system.toUtf8(program.substr(0, separator + 1) + u"default.xml");
}

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
    if (options.script == kStandardStream && options.description == kStandardStream) {
        refuse("only one of script and description can come from standard input");
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
        warn(diagnosticLine(outputName(options.output), positionIn(text, half), "warning",
                            "a character was cut in two and became U+FFFD; shorten the sentence, "
                            "or keep the halves with --output-encoding utf-16le") +
             "\n");
    }
}

std::u16string convert(const Options& options, const ConversionRequest& request,
                       SourceNames names) {
    if (!options.library.empty()) {
        return convertWithLibrary(options.library, request);
    }
    RunReport report(request, std::move(names));
    std::u16string text = convertHere(request, report.listener());
    // Before the output is written: a writer whose disk is full still learns
    // of them.
    warn(report.text());
    return text;
}

} // namespace

// Everything is read and converted before anything is written, so that a
// failure on the way leaves no half of an output behind.
int runConvert(const Options& options) {
    checkUsage(options);
    const bool given = !options.description.empty();
    const std::string descriptionFile = given ? options.description : defaultDescription();
    const std::u16string script = readScript(options.script, options.encoding);
    // The description that comes with the program has its own encoding.
    const std::u16string description = readDescription(
        descriptionFile,
        given ? options.descriptionEncoding.value_or(options.encoding) : InputEncoding::detect);
    const ConversionRequest request{script, options.playFrom, options.playTo, description};
    const std::u16string text =
        convert(options, request,
                {std::string(inputName(options.script)), std::string(inputName(descriptionFile))});
    warnOfHalfPairs(options, text);
    writeScript(options.output, text, options.outputEncoding);
    return kDone;
}

} // namespace tvml::host
