// The diagnostics of a run as text. Entries: findingsOf, codeNamed.
#include "host/run_report.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include <nlohmann/json.hpp>

#include "host/language.h"
#include "platform/platform.h"

namespace tvml::host {
namespace {

std::optional<Severity> severityOf(FailureLevel level) {
    return level == FailureLevel::none ? std::nullopt : std::optional(static_cast<Severity>(level));
}
static_assert(static_cast<Severity>(FailureLevel::error) == Severity::error);

void count(Severity severity, Findings& findings) {
    findings.notes += severity == Severity::note ? 1 : 0;
    findings.warnings += severity == Severity::warning ? 1 : 0;
    findings.errors += severity == Severity::error ? 1 : 0;
}

// Files and pipes get plain text.
bool showsColours(platform::OutputStream stream) {
    const char* const refused = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    return platform::isTerminal(stream) && (refused == nullptr || *refused == '\0') &&
           (terminal == nullptr || std::string_view(terminal) != "dumb");
}

} // namespace

Screen screenOf(platform::OutputStream stream, ColorChoice color) {
    return {color == ColorChoice::always ||
                (color == ColorChoice::automatic && showsColours(stream)),
            platform::terminalColumns(stream)};
}

Findings findingsOf(std::vector<Diagnostic> found, const Sources& sources,
                    const ReportOptions& options, platform::OutputStream stream) {
    Findings result;
    result.descriptionBroken = std::ranges::any_of(
        found, [](const Diagnostic& diagnostic) { return diagnostic.code.row().code == "D318"; });
    result.failed =
        applyPolicy({severityOf(options.failureLevel), options.allowed, options.denied}, found);
    const TextRenderer renderer(sources, platform::system(), language(),
                                screenOf(stream, options.color));
    for (const Diagnostic& diagnostic : found) {
        count(diagnostic.severity, result);
        result.lines += options.format == ReportFormat::json
                            ? renderJson(diagnostic, sources, platform::system())
                            : renderer.render(diagnostic);
    }
    return result;
}

std::string outputWarning(ReportFormat format, std::string_view file, TextPosition position,
                          Message message) {
    const std::string text = say(message);
    if (format == ReportFormat::text) {
        return diagnosticLine(file, position, Message::severity_warning, text) + "\n";
    }
    // With the members that renderJson writes, so that all lines read alike.
    nlohmann::ordered_json object{{"version", kJsonVersion},
                                  {"code", nullptr},
                                  {"severity", "warning"},
                                  {"source", "output"},
                                  {"file", file},
                                  {"line", position.line},
                                  {"column", position.column},
                                  {"endColumn", position.column},
                                  {"message", text},
                                  {"suggestions", nlohmann::ordered_json::array()}};
    return object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

Code codeNamed(const std::string& text) {
    std::string name = text;
    std::ranges::transform(name, name.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    if (const std::optional<Code> code = findCode(name)) {
        return *code;
    }
    refuse(Message::usage_code, {text, closestCode(name).row().code});
}

} // namespace tvml::host
