// The diagnostics of a run as text. Entry: RunReport.
//
// What the script has wrong is heard from the run itself; what the description
// has wrong takes a look of its own at its text.
#include "host/run_report.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "diagnostics/diagnostics.h"
#include "platform/host_services.h"
#include "platform/platform.h"

namespace tvml::host {

class RunReport::Collector {
public:
    // The filter takes a line below 0 for none, the collector a line of 0.
    Collector(const ConversionRequest& request, SourceNames names)
        : request_(request), names_(std::move(names)),
          script_({request.script, request.playFrom, std::max(request.playTo, 0),
                   request.description}) {}

    ConversionReport& listener() { return script_; }

    std::string text() {
        const Sources sources{
            {names_.script, request_.script}, {names_.description, request_.description}, {}};
        // Colours are for people; files and pipes get plain text.
        const TextRenderer renderer(sources, platform::system(),
                                    platform::isTerminal(platform::OutputStream::error));
        std::string text;
        // The description first: its problems explain many of the script's.
        for (const auto& found : {descriptionProblems(), script_.take()}) {
            for (const Diagnostic& diagnostic : found) {
                text += renderer.render(diagnostic);
            }
        }
        return text;
    }

private:
    // With the vocabulary of the run, loaded anew, since the run keeps its own.
    std::vector<Diagnostic> descriptionProblems() const {
        KeywordTable words;
        words.load(platform::system());
        return checkDescription(request_.description, words, platform::system());
    }

    const ConversionRequest& request_;
    SourceNames names_;
    DiagnosticCollector script_;
};

RunReport::RunReport(const ConversionRequest& request, SourceNames names)
    : collector_(std::make_unique<Collector>(request, std::move(names))) {}

RunReport::~RunReport() = default;

ConversionReport& RunReport::listener() {
    return collector_->listener();
}

std::string RunReport::text() {
    return collector_->text();
}

} // namespace tvml::host
