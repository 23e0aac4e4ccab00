// Code actions: suggestions taken, lines added, lines said in the other language.
#include <algorithm>

#include "analysis/line_rewriting.h"
#include "lsp/server_state.h"

namespace tvml::lsp {
namespace {

bool touches(const Range& one, const Range& other) {
    return one.start.line <= other.end.line && other.start.line <= one.end.line;
}

Findings::Finding asFinding(const Diagnostic& one) {
    return {rangeOf(one), one.severity, std::string(one.code.row().code), one.message};
}

Edits editsOf(const Uri& uri, std::vector<TextEdit> edits) {
    return {{uri, std::move(edits)}};
}

bool isFixable(const Diagnostic& one) {
    return one.source == SourceKind::script && one.line > 0 && one.units > 0 &&
           !one.suggestions.empty();
}

// The closest suggestion for all that has one. Of two that overlap the first.
std::vector<TextEdit> allFixes(const std::vector<Diagnostic>& problems) {
    std::vector<TextEdit> edits;
    for (const Diagnostic& one : problems) {
        const Range range = rangeOf(one);
        if (isFixable(one) && (edits.empty() || edits.back().range.end <= range.start)) {
            edits.push_back({range, one.suggestions.front()});
        }
    }
    return edits;
}

} // namespace

void LanguageServer::addFixes(Document& document, const Range& range,
                              std::vector<Action>& actions) {
    for (const Diagnostic& one : analysisOf(document).problems) {
        if (!isFixable(one) || !touches(rangeOf(one), range)) {
            continue;
        }
        for (const std::u16string& suggestion : one.suggestions) {
            actions.push_back({formatted(Message::lsp_replace, language_, {suggestion}),
                               ActionKind::fix, editsOf(document.uri, {{rangeOf(one), suggestion}}),
                               asFinding(one)});
        }
    }
}

void LanguageServer::addRewritings(Document& document, std::size_t line,
                                   std::vector<Action>& actions) {
    const LoadedProgramme& programme = *descriptionOf(document).programme;
    const std::u16string_view text = document.text.line(line);
    const Range whole = TextDocument::within(line, 0, text.size());
    for (const Diagnostic& one : analysisOf(document).problems) {
        const bool lacks = one.code == Code("S134") && rangeOf(one).start.line == line;
        const std::optional<std::u16string> subtitle =
            lacks ? subtitleFor(programme, text) : std::nullopt;
        if (subtitle.has_value()) {
            actions.push_back({formatted(Message::lsp_insert, language_, {*subtitle}),
                               ActionKind::fix,
                               editsOf(document.uri, {{{whole.end, whole.end}, u"\n" + *subtitle}}),
                               asFinding(one)});
        }
    }
    if (const std::optional<std::u16string> other = inOtherLanguage(programme, text)) {
        actions.push_back({formatted(Message::lsp_otherWords, language_, {*other}),
                           ActionKind::rewrite, editsOf(document.uri, {{whole, *other}}),
                           std::nullopt});
    }
}

std::vector<Action> LanguageServer::actions(const Uri& uri, const Range& range) {
    std::vector<Action> actions;
    Document* document = find(uri);
    if (document == nullptr || document->isDescription) {
        return actions;
    }
    addFixes(*document, range, actions);
    addRewritings(*document, range.start.line, actions);
    std::vector<TextEdit> all = allFixes(analysisOf(*document).problems);
    if (all.size() > 1) {
        actions.push_back({counted(Message::lsp_fixAll, language_, all.size()), ActionKind::fixAll,
                           editsOf(document->uri, std::move(all)), std::nullopt});
    }
    return actions;
}

} // namespace tvml::lsp
