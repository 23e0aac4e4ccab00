// The diagnostics of a run as text. Entries: RunReport, codeNamed.
//
// What the script has wrong is heard from the run itself; what the description
// and the vocabulary have wrong takes a look of its own at their texts.
#include "host/run_report.h"

#include <algorithm>
#include <utility>

#include <nlohmann/json.hpp>

#include "diagnostics/diagnostics.h"
#include "filter/tvml_exception.h"
#include "host/inputs.h"
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

} // namespace

class RunReport::Collector {
public:
    // The filter takes a line below 0 for none, the collector a line of 0.
    Collector(const ConversionRequest& request, SourceNames names)
        : request_(request), names_(std::move(names)),
          script_({request.script, request.playFrom, std::max(request.playTo, 0),
                   request.description}) {
        xml_.hold();
    }

    ConversionReport& listener() { return script_; }

    Findings findings(const ReportOptions& options, VocabularyCheck vocabulary, bool coloured) {
        // Loaded anew: the run keeps its own.
        KeywordTable words;
        words.load(platform::system());
        std::vector<Diagnostic> found = vocabularyProblems(words, vocabulary);
        // In this order: what is wrong with the words explains problems of the
        // description, and those of both explain many of the script's.
        append(found, checkDescription(request_.description, words, platform::system()));
        append(found, script_.take());
        Findings result;
        result.descriptionBroken = std::ranges::any_of(found, [](const Diagnostic& diagnostic) {
            return diagnostic.code.row().code == "D318";
        });
        result.failed =
            applyPolicy({severityOf(options.failureLevel), options.allowed, options.denied}, found);
        show(found, options.format, coloured, result);
        return result;
    }

private:
    static void append(std::vector<Diagnostic>& all, std::vector<Diagnostic> more) {
        all.insert(all.end(), std::make_move_iterator(more.begin()),
                   std::make_move_iterator(more.end()));
    }

    std::vector<Diagnostic> vocabularyProblems(const KeywordTable& words, VocabularyCheck which) {
        if (which == VocabularyCheck::whenCutOff && words.problem() == LoadProblem::none) {
            return {};
        }
        vocabularyName_ = fileOfProgram(u"keyword.ini");
        vocabulary_ = platform::readSettings(vocabularyName_);
        return checkVocabulary(words, vocabulary_);
    }

    void show(const std::vector<Diagnostic>& found, ReportFormat format, bool coloured,
              Findings& result) const {
        const Sources sources{{names_.script, request_.script},
                              {names_.description, request_.description},
                              {vocabularyName_, vocabulary_}};
        const TextRenderer renderer(sources, platform::system(), coloured);
        for (const Diagnostic& diagnostic : found) {
            count(diagnostic.severity, result);
            result.lines += format == ReportFormat::json
                                ? renderJson(diagnostic, sources, platform::system())
                                : renderer.render(diagnostic);
        }
    }

    XmlLibrary xml_; // held from the run to the description check: its start is dear
    const ConversionRequest request_;
    SourceNames names_;
    std::string vocabularyName_;
    std::u16string vocabulary_;
    DiagnosticCollector script_;
};

RunReport::RunReport(const ConversionRequest& request, SourceNames names)
    : collector_(std::make_unique<Collector>(request, std::move(names))) {}

RunReport::~RunReport() = default;

ConversionReport& RunReport::listener() {
    return collector_->listener();
}

Findings RunReport::findings(const ReportOptions& options, VocabularyCheck vocabulary,
                             platform::OutputStream stream) {
    try {
        // Colours are for people; files and pipes get plain text.
        return collector_->findings(options, vocabulary, platform::isTerminal(stream));
    } catch (const TvmlException& problem) {
        throw HostError{kInputOrOutputFailed,
                        "tvmlfilter: error: the XML library failed: " + problem.message()};
    }
}

std::string outputWarning(ReportFormat format, std::string_view file, TextPosition position,
                          std::string_view text) {
    if (format == ReportFormat::text) {
        return diagnosticLine(file, position, "warning", text) + "\n";
    }
    // As renderJson writes them, for one reader of all lines.
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
    const std::string_view closest = closestCode(name).row().code;
    throw HostError{kWrongUsage, "tvmlfilter: error: " + text +
                                     " is no code of a diagnostic; the closest one is " +
                                     std::string(closest)};
}

} // namespace tvml::host
