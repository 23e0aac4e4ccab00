// Entries: inOtherLanguage, subtitleFor, meansTheSame. Whatever is written is read
// again before it is offered.
#include "analysis/line_rewriting.h"

#include <algorithm>
#include <utility>

#include "diagnostics/suggestions.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

// Names that tables know by both languages; letters and numbers are neither.
const OfferedName* nameOf(const LoadedProgramme& programme, const LinePart& part) {
    const auto fits = [&part](const OfferedName& name) {
        const bool sameKind =
            part.kind == PartKind::adverb   ? name.kind == OfferKind::adverb
            : part.kind == PartKind::marker ? name.kind == OfferKind::marker
            : part.kind == PartKind::tag    ? name.kind == OfferKind::tag
            : part.kind == PartKind::pose   ? name.kind == OfferKind::pose
            : part.kind == PartKind::colour ? name.kind == OfferKind::colour
            : part.kind == PartKind::name
                ? name.kind == OfferKind::set || name.kind == OfferKind::voice
                : part.kind == PartKind::command &&
                      (name.kind == OfferKind::staging || name.kind == OfferKind::action ||
                       name.kind == OfferKind::setting);
        return sameKind && name.english == part.english;
    };
    const auto name = std::ranges::find_if(programme.offer().names, fits);
    return name == programme.offer().names.end() || name->words.empty() ? nullptr : &*name;
}

bool saysTheSame(const LineParts& before, const LineParts& after) {
    return std::ranges::equal(before.all, after.all, [](const LinePart& a, const LinePart& b) {
        return a.kind == b.kind && a.english == b.english;
    });
}

} // namespace

std::optional<std::u16string> inOtherLanguage(const LoadedProgramme& programme,
                                              std::u16string_view line) {
    const LineParts parts = partsOf(programme, line);
    std::optional<bool> toWords; // decided by the first word
    std::u16string text;
    std::size_t copied = 0;
    for (const LinePart& part : parts.all) {
        if (part.kind == PartKind::command && part.english.empty()) {
            return std::nullopt; // nothing takes it, so nothing says it otherwise
        }
        const OfferedName* name = nameOf(programme, part);
        if (name == nullptr) {
            continue;
        }
        const std::u16string_view written = line.substr(part.place.start, part.place.units);
        toWords = toWords.value_or(looksEnglish(written));
        text.append(line.substr(copied, part.place.start - copied));
        text.append(*toWords ? name->words.front() : name->english);
        copied = part.place.start + part.place.units;
    }
    text.append(line.substr(copied));
    const bool changed = toWords.has_value() && text != line;
    return changed && saysTheSame(parts, partsOf(programme, text)) ? std::optional(std::move(text))
                                                                   : std::nullopt;
}

std::optional<std::u16string> subtitleFor(const LoadedProgramme& programme,
                                          std::u16string_view line) {
    const LineParts parts = partsOf(programme, line);
    if (parts.all.empty() || parts.all.front().kind != PartKind::marker ||
        parts.all.front().english != u"title") {
        return std::nullopt;
    }
    const LinePlace word = parts.all.front().place;
    const KeywordTable& words = programme.reader().words();
    const bool english = looksEnglish(line.substr(word.start, word.units));
    const std::u16string_view own = words[u"subtitle"].textOrEmpty();
    std::u16string text(english || own.empty() ? u"subtitle" : own);
    const std::u16string_view colon = words[u"colon"].textOrEmpty();
    return text.append(english || colon.empty() ? u": " : colon);
}

bool meansTheSame(const LineParts& before, const LineParts& after) {
    return before.isCommand == after.isCommand &&
           std::ranges::equal(before.all, after.all, {}, &LinePart::kind, &LinePart::kind);
}

} // namespace tvml
