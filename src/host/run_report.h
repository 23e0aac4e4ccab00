// What a run and its texts have wrong, gathered to be shown. How it is found and
// worded is the work of the diagnostics; here it is put together, weighed and
// brought into the form that was asked for.
#ifndef TVML_HOST_RUN_REPORT_H
#define TVML_HOST_RUN_REPORT_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic_table.h"
#include "filter/conversion_run.h"
#include "host/host_error.h"
#include "platform/host_services.h"

namespace tvml::host {

// The form of what a command reports: for people or, as JSON, for programs.
enum class ReportFormat : std::uint8_t { text, json };

// From which severity on a run counts as failed.
enum class FailureLevel : std::uint8_t { note, warning, error, none };

struct ReportOptions {
    ReportFormat format = ReportFormat::text;
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

// The names by which messages call the texts.
struct SourceNames {
    std::string script;
    std::string description;
};

// Of which vocabularies problems are told: every one, or those that could not be
// loaded whole.
enum class VocabularyCheck : std::uint8_t { always, whenCutOff };

class RunReport {
public:
    // `request` is what the run will convert.
    RunReport(const ConversionRequest& request, SourceNames names);
    ~RunReport();

    // To be given to one run.
    ConversionReport& listener();

    // To be called once, after the run; `stream` is where the lines will go.
    // Throws a HostError when the XML library fails.
    Findings findings(const ReportOptions& options, VocabularyCheck vocabulary,
                      platform::OutputStream stream);

private:
    class Collector;
    std::unique_ptr<Collector> collector_;
};

// A warning about the output, in the form of the findings.
std::string outputWarning(ReportFormat format, std::string_view file, TextPosition position,
                          std::string_view text);

// The row of the table of diagnostics that has the code, in any case. Throws a
// HostError for wrong usage that names the closest code when there is none.
Code codeNamed(const std::string& text);

} // namespace tvml::host

#endif
