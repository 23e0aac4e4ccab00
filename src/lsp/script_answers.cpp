// Answers about places of scripts: completion, hover, definition, references. For
// descriptions see description_answers.cpp.
#include <algorithm>

#include "analysis/description_places.h"
#include "lsp/server_state.h"

namespace tvml::lsp {
namespace {

constexpr std::size_t kShownLines = 16; // of TVML, when the mouse rests on a line

ItemKind itemKind(OfferKind kind) {
    switch (kind) {
    case OfferKind::character:
        return ItemKind::character;
    case OfferKind::set:
    case OfferKind::model:
    case OfferKind::voice:
    case OfferKind::pose:
        return ItemKind::name;
    default:
        return ItemKind::word;
    }
}

Message kindText(OfferKind kind) {
    switch (kind) {
    case OfferKind::marker:
        return Message::kind_marker;
    case OfferKind::tag:
        return Message::kind_declared;
    case OfferKind::staging:
        return Message::kind_staging;
    case OfferKind::pose:
        return Message::kind_pose;
    case OfferKind::untaken:
        return Message::kind_untaken;
    case OfferKind::adverb:
        return Message::kind_adverb;
    case OfferKind::voice:
        return Message::kind_voice;
    default:
        return Message::kind_character;
    }
}

// What of the converted script a line wrote.
std::u16string tvmlOf(const Analysis& analysis, std::int32_t line) {
    std::u16string text;
    std::u16string_view rest = analysis.tvml;
    std::size_t shown = 0;
    for (std::size_t i = 0; i < analysis.sourceMap.lineCount(); ++i) {
        const std::size_t end = std::min(rest.find(u'\n'), rest.size());
        if (analysis.sourceMap.comesFrom(i, line) && ++shown <= kShownLines) {
            text.append(rest.substr(0, end)).append(u"\n");
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return shown > kShownLines ? text.append(u"…\n") : text;
}

auto usesOf(const Analysis& analysis, std::size_t line) {
    return std::ranges::equal_range(analysis.uses, static_cast<std::int32_t>(line) + 1, {},
                                    &LineUse::line);
}

std::u16string fenced(std::u16string_view text) {
    return std::u16string(u"```tvml\n").append(text).append(u"```\n");
}

} // namespace

// ---- completion

CompletionList LanguageServer::complete(const Uri& uri, Position place) {
    Document* document = find(uri);
    if (document == nullptr) {
        return {};
    }
    if (document->isDescription) {
        return completeDescription(*document, place);
    }
    const LoadedProgramme& programme = *descriptionOf(*document).programme;
    const std::u16string_view line = document->text.line(place.line);
    const Completions may = whatMayStand(programme.reader(), programme.offer(), line, place.unit);
    CompletionList list{TextDocument::within(place.line, may.replaced.start, may.replaced.units),
                        {}};
    for (const MediaFile& file : document->mediaFiles) {
        if (may.file != FileUse::none) {
            list.items.push_back({file.name, file.name + may.ending, {}, ItemKind::file});
        }
    }
    for (const Completion& one : may.all) {
        std::u16string detail(textOf(kindText(one.kind), language_));
        detail += one.english == one.text ? u"" : u" · ";
        detail += one.english == one.text ? u"" : one.english;
        list.items.push_back(
            {one.text, one.text + one.ending, std::move(detail), itemKind(one.kind)});
    }
    return list;
}

// ---- hover

// What the line is and what it becomes, as `explain` tells in full.
std::u16string LanguageServer::storyOf(Document& document, std::size_t line,
                                       const LineParts& parts) {
    const Analysis& analysis = analysisOf(document);
    std::u16string text = u"**";
    text += textOf(parts.isCommand ? Message::kind_commandLine
                   : !parts.all.empty() && (parts.all.front().kind == PartKind::marker ||
                                            parts.all.front().kind == PartKind::tag)
                       ? Message::kind_tagLine
                       : Message::kind_talk,
                   language_);
    text += u"**";
    for (const LinePart& part : parts.all) {
        if (!part.english.empty()) {
            text.append(u" · ").append(part.english);
        }
    }
    text += u"\n\n";
    for (const LineUse& use : usesOf(analysis, line)) {
        text.append(u"`<").append(use.element).append(u">` ");
        text.append(use.number == 0 ? textOf(Message::explain_builtIn, language_) : u"");
        text += u"\n\n";
    }
    const std::u16string tvml = tvmlOf(analysis, static_cast<std::int32_t>(line) + 1);
    text += tvml.empty() ? std::u16string(textOf(Message::explain_noOutput, language_)) + u"\n"
                         : fenced(tvml);
    for (const Diagnostic& problem : analysis.problems) {
        if (problem.source == SourceKind::script &&
            problem.line == static_cast<std::int32_t>(line) + 1) {
            text.append(u"\n---\n").append(problem.message).append(u"\n\n");
            text.append(textOf(problem.code.explanation(), language_)).append(u"\n");
        }
    }
    return text;
}

std::optional<Hover> LanguageServer::hover(const Uri& uri, Position place) {
    Document* document = find(uri);
    if (document == nullptr) {
        return std::nullopt;
    }
    if (document->isDescription) {
        return hoverElement(*document, place);
    }
    const LineParts parts =
        partsOf(*descriptionOf(*document).programme, document->text.line(place.line));
    if (parts.trimmed.units == 0) {
        return std::nullopt;
    }
    const LinePart* part = parts.at(place.unit);
    const LinePlace shown = part != nullptr ? part->place : parts.trimmed;
    return Hover{TextDocument::within(place.line, shown.start, shown.units),
                 storyOf(*document, place.line, parts)};
}

// ---- definition and references

Location LanguageServer::elementAt(DescriptionFile& file, std::size_t number) {
    const std::vector<ElementPlace>& all = file.programme->elements();
    const ElementPlace place =
        number > 0 && number <= all.size() ? all[number - 1] : ElementPlace{};
    if (place.line == 0) {
        return {};
    }
    return {file.uri, TextDocument::within(static_cast<std::size_t>(place.line) - 1,
                                           place.column - 1, place.name.size() + 1)};
}

namespace {

// The number of the element that declares a name, 0 for none.
std::size_t elementOf(const StagingDescription& staging, const LinePart& part,
                      std::u16string_view name) {
    if (part.kind == PartKind::tag) {
        const auto tag = staging.tagElements.find(part.english);
        return tag == staging.tagElements.end() ? 0 : tag->second;
    }
    if (part.kind == PartKind::speaker && !part.english.empty()) {
        const CharacterModel* model = staging.currentModelOf(part.english.front());
        return model == nullptr ? 0 : model->element;
    }
    if (part.kind == PartKind::name) {
        for (const auto& table : {&staging.modelsByEnglishName, &staging.modelsByJapaneseName}) {
            for (const auto& [letter, models] : *table) {
                const auto model = models.find(name);
                if (model != models.end()) {
                    return model->second->element;
                }
            }
        }
    }
    return 0;
}

} // namespace

std::size_t LanguageServer::usedElement(Document& document, std::size_t line,
                                        const LinePart* part) {
    const std::u16string_view text = document.text.line(line);
    const LoadedProgramme& programme = *descriptionOf(document).programme;
    const std::size_t declared = part == nullptr
                                     ? 0
                                     : elementOf(programme.staging(), *part,
                                                 text.substr(part->place.start, part->place.units));
    if (declared != 0) {
        return declared;
    }
    for (const LineUse& use : usesOf(analysisOf(document), line)) {
        if (use.number != 0) {
            return use.number;
        }
    }
    return 0;
}

std::vector<Location> LanguageServer::definition(const Uri& uri, Position place) {
    Document* document = find(uri);
    if (document == nullptr || document->isDescription) {
        return {};
    }
    DescriptionFile& file = descriptionOf(*document);
    const std::u16string_view line = document->text.line(place.line);
    const LineParts parts = partsOf(*file.programme, line);
    const LinePart* part = parts.at(place.unit);
    if (part != nullptr && part->kind == PartKind::file) {
        for (const Link& link : links(uri)) {
            if (link.range.start.line == place.line) {
                return {{link.target, {}}};
            }
        }
        return {};
    }
    if (part != nullptr && part->kind == PartKind::name) {
        const std::u16string_view name = line.substr(part->place.start, part->place.units);
        for (const DeclaredName& declared : declaredNames(*file.programme)) {
            if (declared.name == name) {
                const Position start = file.text.positionOf(declared.offset);
                return {{file.uri, TextDocument::within(start.line, start.unit, name.size())}};
            }
        }
    }
    const Location found = elementAt(file, usedElement(*document, place.line, part));
    return found.uri.empty() ? std::vector<Location>{} : std::vector{found};
}

// The lines that use an element: the one at hand, or the one that serves the line.
std::vector<Location> LanguageServer::references(const Uri& uri, Position place) {
    Document* asked = find(uri);
    if (asked == nullptr) {
        return {};
    }
    DescriptionFile& file = descriptionOf(*asked);
    const LineParts parts = partsOf(*file.programme, asked->text.line(place.line));
    const std::size_t number = asked->isDescription
                                   ? elementBefore(file, place)
                                   : usedElement(*asked, place.line, parts.at(place.unit));
    std::vector<Location> found;
    for (auto& [key, document] : documents_) {
        if (number != 0 && !document->isDescription && &descriptionOf(*document) == &file) {
            addUses(*document, number, found);
        }
    }
    return found;
}

void LanguageServer::addUses(Document& document, std::size_t number, std::vector<Location>& found) {
    const LoadedProgramme& programme = *descriptionOf(document).programme;
    const std::vector<LineUse>& uses = analysisOf(document).uses;
    auto use = uses.begin();
    for (std::size_t line = 0; line < document.text.lineCount(); ++line) {
        bool isUsed = false;
        for (; use != uses.end() && use->line <= static_cast<std::int32_t>(line) + 1; ++use) {
            isUsed = isUsed || use->number == number;
        }
        const std::u16string_view text = document.text.line(line);
        const LineParts parts = partsOf(programme, text);
        LinePlace shown = parts.trimmed;
        for (const LinePart& part : parts.all) {
            const bool names = part.kind != PartKind::speaker &&
                               elementOf(programme.staging(), part,
                                         text.substr(part.place.start, part.place.units)) == number;
            shown = names ? part.place : shown;
            isUsed = isUsed || names;
        }
        if (isUsed) {
            found.push_back({document.uri, TextDocument::within(line, shown.start, shown.units)});
        }
    }
}

} // namespace tvml::lsp
