// What counts among the diagnostics, and checks that need no file of their own.
// Entries: findCode, applyPolicy, checkScript, Finding.
#include "diagnostics/diagnostics.h"

#include <algorithm>

#include "diagnostics/finding.h"
#include "diagnostics/suggestions.h"

namespace tvml {

std::optional<Code> findCode(std::string_view text) {
    const std::size_t row = detail::rowOfCode(text);
    return row < kDiagnosticRows.size() ? std::optional(Code::at(row)) : std::nullopt;
}

Code closestCode(std::string_view text) {
    const std::u16string given(text.begin(), text.end());
    const auto distance = [&](const DiagnosticRow& row) {
        return editDistance(given, std::u16string(row.code.begin(), row.code.end()),
                            given.size() + 4);
    };
    const auto closest = std::ranges::min_element(kDiagnosticRows, {}, distance);
    return Code::at(static_cast<std::size_t>(closest - kDiagnosticRows.begin()));
}

std::string_view severityName(Severity severity) {
    static constexpr std::array<std::string_view, 3> kNames{"note", "warning", "error"};
    return kNames[static_cast<std::size_t>(severity)];
}

Message severityText(Severity severity) {
    static constexpr std::array kTexts{Message::severity_note, Message::severity_warning,
                                       Message::severity_error};
    return kTexts[static_cast<std::size_t>(severity)];
}

bool applyPolicy(const SeverityPolicy& policy, std::vector<Diagnostic>& diagnostics) {
    const auto listed = [](const std::vector<Code>& codes, Code code) {
        return std::find(codes.begin(), codes.end(), code) != codes.end();
    };
    std::erase_if(diagnostics,
                  [&](const Diagnostic& found) { return listed(policy.allowed, found.code); });
    bool failed = false;
    for (Diagnostic& found : diagnostics) {
        if (listed(policy.denied, found.code)) {
            found.severity = Severity::error;
        }
        failed =
            failed || (policy.failureLevel.has_value() && found.severity >= *policy.failureLevel);
    }
    return failed;
}

std::vector<Diagnostic> checkScript(const ConversionRequest& request, const KeywordTable& words,
                                    const TvmlIniMirvol& settings,
                                    const platform::Platform& platform, Language language) {
    DiagnosticCollector collector(request, language);
    const Listeners listeners{&collector};
    ConversionRun(words, settings, platform, &listeners).convert(request);
    return collector.take();
}

const SourceText& Sources::of(SourceKind kind) const {
    return kind == SourceKind::script        ? script
           : kind == SourceKind::description ? description
                                             : vocabulary;
}

Diagnostic makeDiagnostic(Code code, Language language, SourceKind source, TextRange range,
                          TextValues values) {
    const std::size_t column = range.line > 0 ? range.start + 1 : 0;
    return {code,
            code.row().severity,
            source,
            range.line,
            column,
            range.units,
            formatted(code.message(), language, values),
            {}};
}

std::u16string charactersText(char16_t last, Language language) {
    return last == u'A' ? std::u16string(textOf(Message::characters_one, language))
                        : formatted(Message::characters_several, language, {{&last, 1}});
}

void sortByPlace(std::vector<Diagnostic>& diagnostics) {
    std::stable_sort(diagnostics.begin(), diagnostics.end(),
                     [](const Diagnostic& a, const Diagnostic& b) {
                         return a.line != b.line ? a.line < b.line : a.column < b.column;
                     });
}

} // namespace tvml
