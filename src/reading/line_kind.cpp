// Line kinds and marker words. Entries: classifyLine, markerUnits,
// markerSpellings.
#include "reading/line_kind.h"

#include <bit>
#include <optional>
#include <span>

#include "reading/script_text.h"

namespace tvml {
namespace {

constexpr MarkerSpelling english(std::u16string_view text) {
    return {text, Key(u"title"), text.size()};
}
constexpr MarkerSpelling word(Key key, std::size_t units) {
    return {{}, key, units};
}

struct MarkerRow {
    std::array<std::optional<MarkerSpelling>, 4> spellings; // tried in this order
};

// clang-format off
// One row a Marker, in its order.
constexpr std::array<MarkerRow, kMarkerCount> kMarkers{{
    {{english(u"title"),      word(u"title", 4)}},
    {{english(u"subtitle"),   word(u"subtitle", 6)}},
    {{english(u"rightsuper"), word(u"rightsuper", 6)}},
    {{english(u"leftsuper"),  word(u"leftsuper", 6)}},
    {{english(u"super"),      word(u"super", 4)}},
    {{english(u"mainimage"),  word(u"mainimage", 7)}},
    {{english(u"subimage"),   word(u"subimage", 6)}},
    {{english(u"bgimage"),    word(u"bgimage", 6)}},
    {{english(u"rightimage"), word(u"rightimage", 6)}},
    {{english(u"leftimage"),  word(u"leftimage", 6)}},
    {{english(u"bgm"),        word(u"bgm", 3),        english(u"BGM"),  word(u"sound", 4)}},
    {{english(u"tvml"),       word(u"tvml", 4),       english(u"TVML")}},
}};
// clang-format on

bool startsWith(std::u16string_view line, const MarkerSpelling& spelling,
                const KeywordTable& words) {
    return spelling.english.empty() ? words[spelling.word].starts(line)
                                    : line.starts_with(spelling.english);
}

bool colonFollows(std::u16string_view line, std::size_t units, const KeywordTable& words) {
    return startsWithColon(dropAndTrim(line, units, words), words);
}

bool isDeclaredTag(std::u16string_view line, const TextMap& names, const KeywordTable& words) {
    return visitNamesStarting(names, line, [&](const TextMap::value_type& entry) {
        return colonFollows(line, entry.first.size(), words);
    });
}

} // namespace

std::u16string_view lineKindText(LineKind kind) {
    static constexpr std::array<std::u16string_view, 4> kTexts{u"", u"tag", u"character", u"other"};
    return kTexts[static_cast<std::size_t>(kind)];
}

std::u16string_view markerName(Marker marker) {
    return kMarkers[static_cast<std::size_t>(marker)].spellings[0]->english;
}

std::vector<MarkerSpelling> markerSpellings(Marker marker) {
    std::vector<MarkerSpelling> spellings;
    for (const auto& spelling : kMarkers[static_cast<std::size_t>(marker)].spellings) {
        if (spelling.has_value()) {
            spellings.push_back(*spelling);
        }
    }
    return spellings;
}

MarkerIndex::MarkerIndex(const KeywordTable& words) {
    for (std::size_t i = 0; i < kMarkerCount; ++i) {
        const auto bit = static_cast<Markers>(1u << i);
        for (const auto& spelling : kMarkers[i].spellings) {
            if (!spelling.has_value()) {
                continue;
            }
            const Word& word = words[spelling->word];
            const std::u16string_view text =
                spelling->english.empty() ? word.textOrEmpty() : spelling->english;
            if (!text.empty()) {
                byFirstUnit_[bucketOf(text.front())] |= bit;
            } else if (word.loaded()) {
                anyLine_ |= bit;
            }
        }
    }
    for (Markers& markers : byFirstUnit_) {
        markers |= anyLine_;
    }
}

std::size_t markerUnits(Marker marker, std::u16string_view line, const KeywordTable& words) {
    for (const auto& spelling : kMarkers[static_cast<std::size_t>(marker)].spellings) {
        if (spelling.has_value() && startsWith(line, *spelling, words)) {
            return spelling->units;
        }
    }
    return kNone;
}

LineKind classifyLine(std::u16string_view& line, const DeclaredTags& tags,
                      const KeywordTable& words, const MarkerIndex& markers) {
    line = trimScriptText(line, words);
    if (line.empty()) {
        return LineKind::empty;
    }
    if (isDeclaredTag(line, tags.tagNames, words) || isDeclaredTag(line, tags.tagTexts, words)) {
        return LineKind::tag;
    }
    // The first marker that starts the line decides, with or without a colon.
    for (unsigned left = markers.candidates(line); left != 0; left &= left - 1) {
        const auto marker = static_cast<Marker>(std::countr_zero(left));
        const std::size_t units = markerUnits(marker, line, words);
        if (units != kNone) {
            return colonFollows(line, units, words) ? LineKind::tag : LineKind::other;
        }
    }
    const bool namesCharacter = words.isLetter(line.front()) && colonFollows(line, 1, words);
    return namesCharacter ? LineKind::character : LineKind::other;
}

} // namespace tvml
