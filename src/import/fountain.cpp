// Screenplays in the Fountain layout. Entry: readFountain.
//
// A name in capitals stands alone between an empty line and what is said, which
// goes on to the next empty line. Signs at the start of a line force what it is.
#include <algorithm>
#include <array>

#include "import/line_walk.h"

namespace tvml::plays {
namespace {

constexpr std::size_t kLongestName = 60;

// The emphasis of a text, and the signs that a backslash protects.
std::u16string plainText(std::u16string_view text) {
    std::u16string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isProtected =
            text[at] == u'\\' && at + 1 < text.size() && holds(u"*_\\", text[at + 1]);
        at += isProtected ? 1 : 0;
        if (isProtected || !holds(u"*_", text[at])) {
            plain.push_back(text[at]);
        }
    }
    return plain;
}

// The lines without notes, [[…]], and what is commented out, /*…*/. Each keeps its
// number; what is cut lies in `cut`.
class Uncommented {
public:
    explicit Uncommented(Lines lines) {
        texts_.reserve(lines.size()); // the lines refer to them
        for (const PlayLine& line : lines) {
            texts_.push_back(kept(line.text));
            const std::u16string_view text = trimmed(texts_.back());
            const bool wasCut = text.size() < line.text.size();
            // A line that was all comment is none.
            if (!wasCut || !text.empty()) {
                lines_.push_back({text, line.indent, line.width, line.number});
            }
        }
    }
    Lines lines() const { return lines_; }

private:
    // Looks at each unit once, however many signs begin nothing.
    std::u16string kept(std::u16string_view text) {
        std::u16string rest;
        for (std::size_t at = 0; at < text.size();) {
            const std::u16string_view pair = text.substr(at, 2);
            const bool begins = end_.empty() && (pair == u"[[" || pair == u"/*");
            const bool ends = !end_.empty() && pair == end_;
            if (begins) {
                end_ = pair == u"[[" ? u"]]" : u"*/";
            } else if (ends) {
                end_ = {};
            } else if (end_.empty()) {
                rest.push_back(text[at]);
            }
            at += begins || ends ? 2 : 1;
        }
        return rest;
    }

    std::u16string_view end_; // of what is being cut
    std::vector<std::u16string> texts_;
    std::vector<PlayLine> lines_;
};

bool isTransition(std::u16string_view line) {
    return std::ranges::none_of(line, isLower) && line.ends_with(u"TO:");
}

bool isSceneHeading(std::u16string_view line) {
    const bool isForced = line.size() > 1 && line[0] == u'.' && line[1] != u'.';
    return isForced ||
           (isEnglishHeading(line) && holds(u"IiEe", line.front()) && line.find(u'.') != kNowhere);
}

// What stands in front of the directions and the sign for two at once.
std::u16string_view nameOf(std::u16string_view line) {
    line.remove_prefix(line.starts_with(u'@') ? 1 : 0);
    line.remove_suffix(line.ends_with(u'^') ? 1 : 0);
    return trimmed(line.substr(0, line.find_first_of(u"(（")));
}

bool isCharacterName(std::u16string_view line) {
    if (line.starts_with(u'@')) {
        return !nameOf(line).empty();
    }
    const std::u16string_view name = nameOf(line);
    return !name.empty() && line.size() <= kLongestName && std::ranges::none_of(name, isLower) &&
           std::ranges::any_of(name, isUpper) && !holds(u"!.>#=~", line.front()) &&
           !isTransition(line) && !holds(u".:!?", name.back());
}

class FountainReader final : public LineWalk {
public:
    explicit FountainReader(Lines lines) : LineWalk(lines) { readTitlePage(); }

private:
    // "Key: value" up to the first empty line.
    void readTitlePage() {
        constexpr std::array<std::u16string_view, 9> kKeys{u"title:",   u"credit:", u"author:",
                                                           u"authors:", u"source:", u"draft date:",
                                                           u"contact:", u"notes:",  u"copyright:"};
        const auto isKey = [&](std::u16string_view line) {
            std::u16string small(line.substr(0, 12));
            std::ranges::transform(small, small.begin(), [](char16_t unit) {
                return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
            });
            return std::ranges::any_of(
                kKeys, [&](std::u16string_view key) { return small.starts_with(key); });
        };
        if (lines_.empty() || !isKey(lines_[0].text)) {
            return;
        }
        for (; at_ < lines_.size() && !lines_[at_].empty(); ++at_) {
            addPlain(ItemKind::other, lines_[at_], lines_[at_].text);
        }
    }

    void readLine(const PlayLine& line) override {
        const std::u16string_view text = line.text;
        if (text.empty() || isRuler(text)) {
            return;
        }
        if (text.front() == u'#' || text.front() == u'=') {
            addPlain(ItemKind::other, line, text);
        } else if (isSceneHeading(text) && isAfterEmpty()) {
            addHeading(line);
        } else if (text.front() == u'!') {
            addPlain(ItemKind::direction, line, text.substr(1));
        } else if (text.front() == u'~') {
            addPlain(ItemKind::direction, line, text.substr(1));
        } else if (text.front() == u'>' || isTransition(text)) {
            addPlain(ItemKind::direction, line,
                     text.substr(text.front() == u'>' ? 1 : 0, text.find(u'<', 1) - 1));
        } else if (isAfterEmpty() && isCharacterName(text) && hasSpeech()) {
            readSpeech(line);
        } else {
            addPlain(ItemKind::direction, line, text);
        }
    }

    bool isAfterEmpty() const { return at_ == 0 || lines_[at_ - 1].empty(); }
    bool hasSpeech() const { return at_ + 1 < lines_.size() && !lines_[at_ + 1].empty(); }

    void addPlain(ItemKind kind, const PlayLine& line, std::u16string_view text) {
        add(kind, line, plainText(text));
    }

    // Without a forcing stop and a number between "#".
    void addHeading(const PlayLine& line) {
        std::u16string_view text = line.text;
        text.remove_prefix(text.front() == u'.' ? 1 : 0);
        const std::size_t number = text.size() > 2 && text.back() == u'#'
                                       ? text.find_last_of(u'#', text.size() - 2)
                                       : kNowhere;
        addPlain(ItemKind::heading, line, trimmed(text.substr(0, number)));
    }

    void readSpeech(const PlayLine& line) {
        SpeechText speech;
        while (hasSpeech()) {
            const PlayLine& next = lines_[++at_];
            std::u16string_view text = next.text;
            text.remove_prefix(text.front() == u'~' ? 1 : 0);
            speech.add(trimmed(plainText(text)), next.number);
        }
        addSpoken(line.number, nameOf(line.text), extensionsOf(line), speech.parts());
    }

    // (V.O.) and the like, but not that somebody goes on speaking.
    static std::vector<PlayPart> extensionsOf(const PlayLine& line) {
        std::vector<PlayPart> parts;
        std::u16string_view rest = line.text;
        for (std::size_t open = rest.find_first_of(u"(（"); open != kNowhere;
             open = rest.find_first_of(u"(（")) {
            const std::size_t close = std::min(rest.find_first_of(u")）", open), rest.size());
            const std::u16string_view inner = trimmed(rest.substr(open + 1, close - open - 1));
            if (!inner.starts_with(u"CONT") && !inner.empty()) {
                parts.push_back(directionPart(inner, line.number));
            }
            rest.remove_prefix(std::min(close + 1, rest.size()));
        }
        return parts;
    }
};

} // namespace

std::vector<PlayItem> readFountain(Lines lines) {
    const Uncommented uncommented(lines);
    return FountainReader(uncommented.lines()).read();
}

} // namespace tvml::plays
