// Line kinds and marker words. Entries: classifyLine, markerSpelling.
#include "reading/line_kind.h"

#include <bit>

#include "reading/script_text.h"

namespace tvml {
namespace {

bool startsWith(std::u16string_view line, const MarkerSpelling& spelling,
                const KeywordTable& words) {
    return spelling.english.empty() ? words[spelling.word].starts(line)
                                    : line.starts_with(spelling.english);
}

bool isDeclaredTag(std::u16string_view line, const LeadingNames& names, const KeywordTable& words) {
    ColonBehind colonBehind(line, words);
    return !names.empty() && names.visitStarting(line, [&](const LeadingNames::Entry& entry) {
        return colonBehind(entry.first.size());
    });
}

} // namespace

std::u16string_view lineKindText(LineKind kind) {
    static constexpr std::array<std::u16string_view, 4> kTexts{u"", u"tag", u"character", u"other"};
    return kTexts[static_cast<std::size_t>(kind)];
}

const LeadingNames::Sorted& LeadingNames::sorted() const {
    if (sorted_.size() != names_.size()) {
        sorted_.clear();
        sorted_.reserve(names_.size());
        for (const Entry& entry : names_) {
            sorted_.push_back(&entry);
        }
    }
    return sorted_;
}

bool ColonBehind::operator()(std::size_t units) {
    at_ = std::min(std::max(at_, units), line_.size());
    while (at_ < line_.size() && words_.isBlank(line_[at_])) {
        ++at_;
    }
    return startsWithColon(line_.substr(at_), words_);
}

MarkerIndex::MarkerIndex(const KeywordTable& words) {
    Markers anySecondUnit = 0;
    for (std::size_t i = 0; i < kMarkerCount; ++i) {
        const auto bit = static_cast<Markers>(1u << i);
        for (const MarkerSpelling& spelling : kMarkers[i].spellings) {
            const Word& word = words[spelling.word];
            const std::u16string_view text =
                spelling.english.empty() ? word.textOrEmpty() : spelling.english;
            if (!text.empty()) {
                byFirstUnit_[bucketOf(text[0])] |= bit;
            } else if (word.loaded()) {
                anyLine_ |= bit;
            }
            if (text.size() > 1) {
                bySecondUnit_[bucketOf(text[1])] |= bit;
            } else {
                anySecondUnit |= bit;
            }
        }
    }
    for (std::size_t i = 0; i < kBuckets; ++i) {
        byFirstUnit_[i] |= anyLine_;
        bySecondUnit_[i] |= anySecondUnit;
    }
}

const MarkerSpelling* markerSpelling(Marker marker, std::u16string_view line,
                                     const KeywordTable& words) {
    for (const MarkerSpelling& spelling : specOf(marker).spellings) {
        if (startsWith(line, spelling, words)) {
            return &spelling;
        }
    }
    return nullptr;
}

LineKind classifyLine(std::u16string_view& trimmed, const DeclaredTags& tags,
                      const KeywordTable& words, const MarkerIndex& markers) {
    const std::u16string_view line = trimScriptText(trimmed, words);
    trimmed = line;
    if (line.empty()) {
        return LineKind::empty;
    }
    if (isDeclaredTag(line, tags.tagNames, words) || isDeclaredTag(line, tags.tagTexts, words)) {
        return LineKind::tag;
    }
    // The first marker that starts the line decides, with or without a colon.
    for (unsigned left = markers.candidates(line); left != 0; left &= left - 1) {
        const auto marker = static_cast<Marker>(std::countr_zero(left));
        if (const MarkerSpelling* spelling = markerSpelling(marker, line, words)) {
            return ColonBehind(line, words)(spelling->units) ? LineKind::tag : LineKind::other;
        }
    }
    const bool namesCharacter = words.isLetter(line.front()) && ColonBehind(line, words)(1);
    return namesCharacter ? LineKind::character : LineKind::other;
}

} // namespace tvml
