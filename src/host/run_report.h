// What a run and its texts have wrong, to be shown. How it is found and worded is
// the work of the diagnostics; here it is weighed and brought into the form that
// was asked for.
#ifndef TVML_HOST_RUN_REPORT_H
#define TVML_HOST_RUN_REPORT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostics.h"
#include "host/host_error.h"
#include "platform/host_services.h"

namespace tvml::host {

// The form of what a command reports: for people or, as JSON, for programs.
enum class ReportFormat : std::uint8_t { text, json };

// From which severity on a run counts as failed.
enum class FailureLevel : std::uint8_t { note, warning, error, none };

// Whether findings are coloured: on a terminal that shows colours, or as told.
enum class ColorChoice : std::uint8_t { automatic, always, never };

struct ReportOptions {
    ReportFormat format = ReportFormat::text;
    ColorChoice color = ColorChoice::automatic;
    FailureLevel failureLevel = FailureLevel::none;
    std::vector<Code> allowed; // left out
    std::vector<Code> denied;  // count as errors
};

// UTF-8 lines, each with its line feed; empty when there is nothing to say.
struct Findings {
    std::string lines;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;
    bool failed = false;            // the failure level is reached
    bool descriptionBroken = false; // its XML; what stands behind the fault is lost
};

// How the terminal is that shows a stream. NO_COLOR (whatever its value, unless
// empty) and TERM=dumb say that it shows no colours.
Screen screenOf(platform::OutputStream stream, ColorChoice color);

// Weighs what was found and brings it into the form that was asked for; `stream`
// is where the lines will go.
Findings findingsOf(std::vector<Diagnostic> found, const Sources& sources,
                    const ReportOptions& options, platform::OutputStream stream);

// A warning about the output, in the form of the findings.
std::string outputWarning(ReportFormat format, std::string_view file, TextPosition position,
                          Message message);

// The row of the table of diagnostics that has the code, in any case. Throws a
// HostError for wrong usage that names the closest code when there is none.
Code codeNamed(const std::string& text);

} // namespace tvml::host

#endif
