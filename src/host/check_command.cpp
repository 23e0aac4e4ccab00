// All that can be said about a script, its description and the vocabulary,
// without an output. Entry: runCheck.
#include "host/check_command.h"

#include "diagnostics/diagnostics.h"
#include "host/conversion.h"
#include "host/host_error.h"
#include "host/inputs.h"
#include "host/language.h"
#include "host/text_files.h"
#include "platform/platform.h"

namespace tvml::host {

// The script is converted, since only a conversion knows what its lines do, and
// the result is dropped. The findings are what the command is for, so they are
// its output; the count is a remark to the person at the terminal.
int runCheck(const Options& options) {
    const Inputs inputs = readInputs(options);
    const ConversionRequest request = inputs.request(options);
    Filter filter;
    AnalysisWants wants;
    wants.problems = true;
    wants.returnsAsLineEnds = inputs.lineEnds == LineEnds::returns;
    Analysis analysis = filter.run(request, wants, VocabularyCheck::always);
    const Sources sources = inputs.sources(filter.vocabulary());
    const Findings findings =
        findingsOf(std::move(analysis.problems), sources, options.report(FailureLevel::error),
                   platform::OutputStream::output);
    writeOutput(findings.lines);
    const std::string comma = say(Message::list_comma);
    platform::writeStream(platform::OutputStream::error,
                          inputs.scriptName + ": " +
                              sayCounted(Message::count_errors, findings.errors) + comma +
                              sayCounted(Message::count_warnings, findings.warnings) + comma +
                              sayCounted(Message::count_notes, findings.notes) + "\n");
    return findings.failed ? kProblemsFound : kDone;
}

std::string explanationText(const std::string& code) {
    return explanationOf(codeNamed(code), platform::system(), language());
}

} // namespace tvml::host
