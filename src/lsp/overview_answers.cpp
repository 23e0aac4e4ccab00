// Answers about a document as a whole: its outline, folds, tokens, links, and the
// converted script.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "lsp/server_state.h"
#include "staging/tvml_exception.h"

namespace tvml::lsp {
namespace {

// "1:05", about.
std::u16string clockText(double seconds) {
    const auto whole = static_cast<long>(std::lround(seconds));
    char text[32];
    std::snprintf(text, sizeof text, "%ld:%02ld", whole / 60, whole % 60);
    return {text, text + std::char_traits<char>::length(text)};
}

bool isSet(const Beat& beat) {
    return beat.kind == BeatKind::studio && !beat.text.empty();
}

// Headings are titles that begin a card, and sets; a title takes the sets behind it.
class Outline {
public:
    Outline(const TextDocument& text, Language language) : text_(text), language_(language) {}

    std::vector<Symbol> of(const std::vector<Beat>& beats) {
        for (const Beat& beat : beats) {
            const auto line = static_cast<std::size_t>(std::max(beat.line, 1)) - 1;
            const bool isCard = beat.kind == BeatKind::title && beat.name == u"title";
            if (isCard || isSet(beat)) {
                begin(beat, line, isCard);
            }
            total_ += beat.isOffline ? 0 : beat.seconds;
        }
        const std::size_t last = text_.lineCount();
        endSet(last);
        endCard(last);
        return std::move(all_);
    }

private:
    struct Open {
        Symbol* symbol = nullptr;
        double since = 0;
    };

    void begin(const Beat& beat, std::size_t line, bool isCard) {
        endSet(line);
        if (isCard) {
            endCard(line);
        }
        std::vector<Symbol>& into = isCard || card_.symbol == nullptr ? all_ : card_.symbol->parts;
        Symbol& symbol = into.emplace_back();
        symbol.name = beat.text.empty() ? beat.name : beat.text;
        symbol.isSet = !isCard;
        symbol.selected = TextDocument::within(line, 0, text_.line(line).size());
        symbol.range = symbol.selected;
        (isCard ? card_ : set_) = {&symbol, total_};
    }

    void end(Open& open, std::size_t line) {
        if (open.symbol == nullptr) {
            return;
        }
        const std::size_t last = std::max(line, open.symbol->range.start.line + 1) - 1;
        open.symbol->range.end = {last, text_.line(last).size()};
        open.symbol->detail =
            formatted(Message::lsp_about, language_, {clockText(total_ - open.since)});
        open = {};
    }
    void endSet(std::size_t line) { end(set_, line); }
    void endCard(std::size_t line) { end(card_, line); }

    const TextDocument& text_;
    const Language language_;
    std::vector<Symbol> all_;
    Open card_;
    Open set_;
    double total_ = 0;
};

void addFolds(const std::vector<Symbol>& symbols, std::vector<LineSpan>& folds) {
    for (const Symbol& symbol : symbols) {
        if (symbol.range.end.line > symbol.range.start.line) {
            folds.push_back({symbol.range.start.line, symbol.range.end.line});
        }
        addFolds(symbol.parts, folds);
    }
}

} // namespace

std::vector<Symbol> LanguageServer::symbols(const Uri& uri) {
    Document* document = find(uri);
    if (document == nullptr) {
        return {};
    }
    if (!document->isDescription) {
        return Outline(document->text, language_).of(analysisOf(*document).beats);
    }
    std::vector<Symbol> all;
    DescriptionFile& file = descriptionOf(*document);
    for (std::size_t number = 1; number <= file.programme->elements().size(); ++number) {
        const Location at = elementAt(file, number);
        if (!at.uri.empty()) {
            all.push_back(
                {file.programme->elements()[number - 1].name, {}, false, at.range, at.range, {}});
        }
    }
    return all;
}

std::vector<LineSpan> LanguageServer::folds(const Uri& uri) {
    std::vector<LineSpan> folds;
    const Document* document = find(uri);
    if (document != nullptr && !document->isDescription) {
        addFolds(symbols(uri), folds);
    }
    return folds;
}

std::vector<Token> LanguageServer::tokens(const Uri& uri) {
    std::vector<Token> all;
    Document* document = find(uri);
    if (document == nullptr || document->isDescription) {
        return all;
    }
    const LoadedProgramme& programme = *descriptionOf(*document).programme;
    for (std::size_t line = 0; line < document->text.lineCount(); ++line) {
        for (const LinePart& part : partsOf(programme, document->text.line(line)).all) {
            all.push_back({line, part.place.start, part.place.units, part.kind});
        }
    }
    return all;
}

// Names of files that are there, as the player's system compares them.
std::vector<Link> LanguageServer::links(const Uri& uri) {
    std::vector<Link> all;
    Document* document = find(uri);
    if (document == nullptr || document->isDescription || !document->media.has_value()) {
        return all;
    }
    std::map<std::u16string, Uri, std::less<>> found; // a name is looked for once
    const auto targetOf = [&](std::u16string_view name) -> const Uri& {
        const auto known = found.find(name);
        if (known != found.end()) {
            return known->second;
        }
        const auto file = std::ranges::find_if(document->mediaFiles, [name](const MediaFile& one) {
            return MediaNames({one.name}).holds(name);
        });
        return found[std::u16string(name)] =
                   file == document->mediaFiles.end() ? Uri() : uriOf(file->path);
    };
    const LoadedProgramme& programme = *descriptionOf(*document).programme;
    for (std::size_t line = 0; line < document->text.lineCount(); ++line) {
        const std::u16string_view text = document->text.line(line);
        for (const LinePart& part : partsOf(programme, text).all) {
            const Uri target = part.kind == PartKind::file
                                   ? targetOf(text.substr(part.place.start, part.place.units))
                                   : Uri();
            if (!target.empty()) {
                all.push_back(
                    {TextDocument::within(line, part.place.start, part.place.units), target});
            }
        }
    }
    return all;
}

std::vector<Range> LanguageServer::selections(const Uri& uri, Position place) {
    std::vector<Range> all;
    Document* document = find(uri);
    if (document == nullptr) {
        return all;
    }
    const auto add = [&](LinePlace part) {
        const Range range = TextDocument::within(place.line, part.start, part.units);
        const bool holds = place.unit >= part.start && place.unit <= part.start + part.units;
        if (part.units > 0 && holds && (all.empty() || all.back() != range)) {
            all.push_back(range);
        }
    };
    if (!document->isDescription) {
        const LineParts parts =
            partsOf(*descriptionOf(*document).programme, document->text.line(place.line));
        const LinePart* part = parts.at(place.unit);
        add(part != nullptr ? part->place : LinePlace{});
        add(parts.inside);
        add(parts.content);
        add(parts.trimmed);
    }
    add({0, document->text.line(place.line).size()});
    const Range whole = document->text.whole();
    if (all.empty() || all.back() != whole) {
        all.push_back(whole);
    }
    return all;
}

// ---- the converted script

Preview LanguageServer::preview(const Uri& uri) {
    Preview result;
    Document* document = find(uri);
    if (document == nullptr || document->isDescription) {
        return result;
    }
    const Analysis& analysis = analysisOf(*document);
    result.tvml = analysis.tvml;
    result.seconds = secondsOf(uri);
    for (std::size_t i = 0; i < analysis.sourceMap.lineCount(); ++i) {
        std::vector<std::size_t>& lines = result.lines.emplace_back();
        for (const std::uint32_t number : analysis.sourceMap.originsOf(i)) {
            const std::int32_t line = analysis.sourceMap.origin(number).line;
            if (line > 0) {
                lines.push_back(static_cast<std::size_t>(line) - 1);
            }
        }
    }
    return result;
}

double LanguageServer::secondsOf(const Uri& uri) {
    Document* document = find(uri);
    double seconds = 0;
    if (document != nullptr && !document->isDescription) {
        for (const Beat& beat : analysisOf(*document).beats) {
            seconds += beat.isOffline ? 0 : beat.seconds;
        }
    }
    return seconds;
}

std::optional<std::string> LanguageServer::play(const Uri& uri, std::size_t line) {
    Document* document = find(uri);
    if (document == nullptr || document->isDescription) {
        return std::nullopt;
    }
    const LoadedProgramme& programme = *descriptionOf(*document).programme;
    const IniFiles& ini = surroundings_.iniFiles();
    analysisOf(*document); // prepares the text
    try {
        const Analysis played = analyze({{document->analysed, static_cast<std::int32_t>(line) + 1,
                                          kNoLine, programme.description(), programme.parsed()},
                                         ini.words,
                                         ini.settings,
                                         language_},
                                        {}, surroundings_.platform());
        return surroundings_.play(document->project, played.tvml);
    } catch (const TvmlException& problem) {
        return problem.message();
    }
}

} // namespace tvml::lsp
