// Renaming of letters and of declared names. Each line that changes is read again:
// what would then mean something else is refused.
#include <algorithm>
#include <array>

#include "analysis/description_places.h"
#include "analysis/line_rewriting.h"
#include "lsp/server_state.h"
#include "reading/script_text.h"

namespace tvml::lsp {
namespace {

constexpr char16_t kWideLetters = u'Ａ' - u'A';

bool isLetterPart(const LinePart& part) {
    return (part.kind == PartKind::speaker || part.kind == PartKind::argument) &&
           part.place.units == 1 && part.english.size() == 1;
}

bool isDeclaredPart(const LinePart& part) {
    return part.kind == PartKind::tag || part.kind == PartKind::pose || part.kind == PartKind::name;
}

// A to Z in half-width capitals, 0 for all else.
char16_t letterIn(std::u16string_view text) {
    if (text.size() != 1) {
        return 0;
    }
    const char16_t unit =
        text.front() >= u'Ａ' ? static_cast<char16_t>(text.front() - kWideLetters) : text.front();
    const char16_t capital =
        unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
    return capital >= u'A' && capital <= u'Z' ? capital : u'\0';
}

// As wide as the letter that it stands for.
std::u16string letterLike(char16_t written, char16_t letter) {
    return std::u16string(1,
                          written >= u'Ａ' ? static_cast<char16_t>(letter + kWideLetters) : letter);
}

// A line with edits of its parts.
std::u16string edited(std::u16string_view line, const std::vector<TextEdit>& edits) {
    std::u16string text;
    std::size_t copied = 0;
    for (const TextEdit& edit : edits) {
        text.append(line.substr(copied, edit.range.start.unit - copied)).append(edit.text);
        copied = edit.range.end.unit;
    }
    return text.append(line.substr(copied));
}

// Nothing that a description or a script would read as more than a name.
bool isUsableName(std::u16string_view name) {
    return !name.empty() && name.find_first_of(u"<>&\"':：()（）,、，\n\r\t ") == kNone;
}

bool isTaken(const ProgrammeOffer& offer, std::u16string_view name) {
    return std::ranges::any_of(offer.names, [name](const OfferedName& one) {
        return one.english == name || std::ranges::find(one.words, name) != one.words.end();
    });
}

} // namespace

std::optional<Range> LanguageServer::renamed(const Uri& uri, Position place) {
    Document* document = find(uri);
    if (document == nullptr) {
        return std::nullopt;
    }
    DescriptionFile& file = descriptionOf(*document);
    if (document->isDescription) {
        const std::size_t offset = document->text.offsetOf(place);
        for (const DeclaredName& name : declaredNames(*file.programme)) {
            if (offset >= name.offset && offset <= name.offset + name.name.size()) {
                const Position start = document->text.positionOf(name.offset);
                return TextDocument::within(start.line, start.unit, name.name.size());
            }
        }
        return std::nullopt;
    }
    const LineParts parts = partsOf(*file.programme, document->text.line(place.line));
    const LinePart* part = parts.at(place.unit);
    return part != nullptr && (isLetterPart(*part) || isDeclaredPart(*part))
               ? std::optional(
                     TextDocument::within(place.line, part->place.start, part->place.units))
               : std::nullopt;
}

// Edits of all parts of a script that `wanted` gives another text; the number of the
// first line, from 1, that would mean something else, or 0.
template <typename Wanted>
std::size_t LanguageServer::editParts(Document& document, const LoadedProgramme& after,
                                      Wanted wanted, Edits& edits) {
    const LoadedProgramme& before = *descriptionOf(document).programme;
    for (std::size_t number = 0; number < document.text.lineCount(); ++number) {
        const std::u16string_view line = document.text.line(number);
        const LineParts parts = partsOf(before, line);
        std::vector<TextEdit> own;
        for (const LinePart& part : parts.all) {
            std::optional<std::u16string> text =
                wanted(part, line.substr(part.place.start, part.place.units));
            if (text.has_value()) {
                own.push_back({TextDocument::within(number, part.place.start, part.place.units),
                               std::move(*text)});
            }
        }
        if (!meansTheSame(parts, partsOf(after, edited(line, own)))) {
            return number + 1;
        }
        if (!own.empty()) {
            std::ranges::move(own, std::back_inserter(edits[document.uri]));
        }
    }
    return 0;
}

RenameResult LanguageServer::refusal(Message why,
                                     std::initializer_list<std::u16string_view> values) {
    return {{}, formatted(why, language_, values)};
}

RenameResult LanguageServer::renameLetter(Document& document, char16_t from,
                                          std::u16string_view to) {
    const char16_t letter = letterIn(to);
    const LoadedProgramme& programme = *descriptionOf(document).programme;
    if (letter == 0 || letter > programme.context().lastCharacter) {
        return refusal(Message::lsp_noLetter, {to});
    }
    bool isUsed = false;
    RenameResult result;
    const auto wanted = [&](const LinePart& part,
                            std::u16string_view written) -> std::optional<std::u16string> {
        if (!isLetterPart(part)) {
            return std::nullopt;
        }
        isUsed = isUsed || part.english.front() == letter;
        return part.english.front() == from ? std::optional(letterLike(written.front(), letter))
                                            : std::nullopt;
    };
    const std::size_t other = editParts(document, programme, wanted, result.edits);
    if (isUsed) {
        return refusal(Message::lsp_letterUsed, {std::u16string(1, letter)});
    }
    return other != 0
               ? refusal(Message::lsp_otherMeaning, {decimalText(static_cast<std::int32_t>(other))})
               : result;
}

// The description and all open scripts that use it. A name that nothing declares
// belongs to the vocabulary, which is not edited here.
RenameResult LanguageServer::renameName(Document& asked, const std::u16string& from,
                                        std::u16string_view to) {
    DescriptionFile& file = descriptionOf(asked);
    if (!isUsableName(to) || isTaken(file.programme->offer(), to)) {
        return refusal(Message::lsp_nameTaken, {to});
    }
    RenameResult result;
    std::vector<TextEdit>& own = result.edits[file.uri];
    for (const DeclaredName& name : declaredNames(*file.programme)) {
        if (name.name == from) {
            const Position start = file.text.positionOf(name.offset);
            own.push_back(
                {TextDocument::within(start.line, start.unit, from.size()), std::u16string(to)});
        }
    }
    if (own.empty()) {
        return refusal(Message::lsp_notDeclared, {from});
    }
    TextDocument text = file.text;
    std::for_each(own.rbegin(), own.rend(), [&text](const TextEdit& edit) { text.change(edit); });
    const LoadedProgramme after(surroundings_.iniFiles().words, text.text(),
                                surroundings_.platform());
    const auto wanted = [&](const LinePart& part,
                            std::u16string_view written) -> std::optional<std::u16string> {
        return isDeclaredPart(part) && written == from ? std::optional(std::u16string(to))
                                                       : std::nullopt;
    };
    for (auto& [key, document] : documents_) {
        if (document->isDescription || &descriptionOf(*document) != &file) {
            continue;
        }
        if (const std::size_t other = editParts(*document, after, wanted, result.edits)) {
            return refusal(Message::lsp_otherMeaning,
                           {decimalText(static_cast<std::int32_t>(other))});
        }
    }
    return result;
}

RenameResult LanguageServer::rename(const Uri& uri, Position place, std::u16string_view name) {
    Document* document = find(uri);
    const std::optional<Range> range = renamed(uri, place);
    if (document == nullptr || !range.has_value()) {
        return refusal(Message::lsp_nothingToRename, {});
    }
    const std::u16string_view line = document->text.line(range->start.line);
    const std::u16string written(
        line.substr(range->start.unit, range->end.unit - range->start.unit));
    if (!document->isDescription) {
        const LineParts parts = partsOf(*descriptionOf(*document).programme, line);
        const LinePart* part = parts.at(place.unit);
        if (part != nullptr && isLetterPart(*part)) {
            return renameLetter(*document, part->english.front(), name);
        }
    }
    return renameName(*document, written, name);
}

} // namespace tvml::lsp
