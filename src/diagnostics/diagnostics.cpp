// What counts among the diagnostics, and checks that need no file of their own.
// Entries: findCode, applyPolicy, checkScript, Finding.
#include "diagnostics/diagnostics.h"

#include <algorithm>

#include "diagnostics/finding.h"
#include "diagnostics/suggestions.h"
#include "reading/script_text.h"

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
                                    const platform::Platform& platform, Language language,
                                    const MediaNames* media) {
    DiagnosticCollector collector(request, language, media);
    const Listeners listeners{&collector};
    ConversionRun(words, settings, platform, &listeners).convert(request);
    return collector.take();
}

void dropConsequences(std::vector<Diagnostic>& found, std::u16string_view script,
                      std::u16string_view description, Language language) {
    constexpr std::array kAlways{Code("S109"), Code("S110"), Code("S113"),
                                 Code("S114"), Code("S115"), Code("S138")};
    constexpr std::array kWithName{Code("S101"), Code("S118"), Code("S120")};
    std::int32_t number = 1;
    const auto lineOf = [&](std::int32_t wanted) { // they come in the order of the lines
        for (; number < wanted; ++number) {
            script.remove_prefix(std::min(script.find(u'\n'), script.size() - 1) + 1);
        }
        return script.substr(0, script.find(u'\n'));
    };
    const auto isConsequence = [&](const Diagnostic& one) {
        if (std::ranges::find(kWithName, one.code) == kWithName.end() || one.line == 0) {
            return std::ranges::find(kAlways, one.code) != kAlways.end();
        }
        const std::u16string_view line = lineOf(one.line);
        const std::size_t start = std::min(one.column - 1, line.size());
        // The name of a pose or a tag that was not read any more.
        const std::u16string name = u'"' + std::u16string(line.substr(start, one.units)) + u'"';
        return description.find(name) != description.npos;
    };
    const std::size_t dropped = std::erase_if(found, isConsequence);
    if (dropped > 0) {
        found.push_back(makeDiagnostic("F405", language, SourceKind::script, {},
                                       {decimalText(static_cast<std::int32_t>(dropped))}));
    }
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
