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
                                    const platform::Platform& platform) {
    DiagnosticCollector collector(request);
    const Listeners listeners{&collector};
    ConversionRun(words, settings, platform, &listeners).convert(request);
    return collector.take();
}

const SourceText& Sources::of(SourceKind kind) const {
    return kind == SourceKind::script        ? script
           : kind == SourceKind::description ? description
                                             : vocabulary;
}

Diagnostic makeDiagnostic(Code code, SourceKind source, TextRange range,
                          std::initializer_list<std::u16string_view> values) {
    Diagnostic found{code, code.row().severity, source, range.line, 0, range.units, {}, {}};
    found.column = range.line > 0 ? range.start + 1 : 0;
    const std::u16string_view text = code.row().message;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t value =
            text[i] == u'%' && i + 1 < text.size() ? std::size_t(text[i + 1] - u'1') : text.size();
        if (value < values.size()) {
            found.message += *(values.begin() + value);
            ++i;
        } else {
            found.message += text[i];
        }
    }
    return found;
}

void sortByPlace(std::vector<Diagnostic>& diagnostics) {
    std::stable_sort(diagnostics.begin(), diagnostics.end(),
                     [](const Diagnostic& a, const Diagnostic& b) {
                         return a.line != b.line ? a.line < b.line : a.column < b.column;
                     });
}

} // namespace tvml
