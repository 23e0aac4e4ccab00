// Subtitles in the SubRip layout. Entry: readSubtitles.
//
// A number, a line of times and the text, up to an empty line; each text is a
// speech. Names stand in front of a colon, or in brackets that come again.
#include <algorithm>
#include <map>

#include "import/line_walk.h"
#include "import/play_format.h"

namespace tvml::plays {
namespace {

constexpr std::size_t kLongestName = 20;
constexpr std::size_t kLongestTag = 64;

bool isNumber(std::u16string_view line) {
    return !line.empty() && std::ranges::all_of(line, isDigit);
}

// Without <i> and {\an8}.
std::u16string withoutTags(std::u16string_view text) {
    std::u16string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool mayBegin = text[at] == u'<' || text.substr(at, 2) == u"{\\";
        const std::size_t end =
            mayBegin ? text.substr(at, kLongestTag).find(text[at] == u'<' ? u'>' : u'}') : kNowhere;
        if (end != kNowhere && end > 1) {
            at += end;
        } else {
            plain.push_back(text[at]);
        }
    }
    return plain;
}

// The name in brackets that a text begins with, when more follows it.
std::u16string_view bracketedName(std::u16string_view text) {
    if (text.empty() || !holds(kOpenings, text.front())) {
        return {};
    }
    const std::size_t close = text.substr(0, kLongestName + 2).find_first_of(kClosings);
    return close == kNowhere || close + 1 >= text.size() ? std::u16string_view{}
                                                         : trimmed(text.substr(1, close - 1));
}

// In capitals, or in Japanese.
std::u16string_view nameBeforeColon(std::u16string_view text) {
    const std::size_t colon = text.substr(0, kLongestName).find_first_of(u":：");
    const std::u16string_view name = trimmed(text.substr(0, colon == kNowhere ? 0 : colon));
    const bool isName = !name.empty() && std::ranges::none_of(name, isLower) &&
                        !std::ranges::all_of(name, isDigit) &&
                        name.find_first_of(u"。、.,!?！？「」()（）♪") == kNowhere;
    return isName && colon + 1 < text.size() ? name : std::u16string_view{};
}

class SubtitleReader final : public LineWalk {
public:
    explicit SubtitleReader(Lines lines) : LineWalk(lines) {
        for (const PlayLine& line : lines) {
            const std::u16string_view name = bracketedName(line.text);
            names_[std::u16string(name)] += name.empty() ? 0 : 1;
        }
    }

private:
    void readLine(const PlayLine& line) override {
        if (isTimeLine(line.text)) {
            readText();
        } else if (!line.empty() && !isCounter()) {
            add(ItemKind::other, line, line.text);
        }
    }

    bool isCounter() const {
        return isNumber(lines_[at_].text) && at_ + 1 < lines_.size() &&
               isTimeLine(lines_[at_ + 1].text);
    }

    // A dash in front of each line means that two speak.
    void readText() {
        SpeechText speech;
        std::int32_t first = 0;
        const auto isEnd = [this](std::size_t next) {
            return next >= lines_.size() || lines_[next].empty();
        };
        while (!isEnd(at_ + 1)) {
            const PlayLine& line = lines_[++at_];
            const std::u16string plain = withoutTags(line.text);
            std::u16string_view text = trimmed(plain);
            const bool isNext = text.size() > 1 && holds(u"-–－", text.front());
            if (isNext) {
                finish(speech, first);
                text = trimmed(text.substr(1));
            }
            first = speech.empty() ? line.number : first;
            speech.add(text, line.number);
        }
        finish(speech, first);
    }

    void finish(SpeechText& speech, std::int32_t line) {
        const std::u16string_view text = speech.text();
        std::u16string_view name = nameBeforeColon(text);
        std::size_t head = name.empty() ? 0 : text.find_first_of(u":：") + 1;
        if (name.empty() && names_[std::u16string(bracketedName(text))] > 1) {
            name = bracketedName(text);
            head = text.find_first_of(kClosings) + 1;
        }
        SpeechText rest;
        rest.add(trimmed(text.substr(head)), line);
        addSpeech(items_, line, name, rest.parts());
        speech = {};
    }

    std::map<std::u16string, std::size_t> names_;
};

} // namespace

std::vector<PlayItem> readSubtitles(Lines lines) {
    return SubtitleReader(lines).read();
}

} // namespace tvml::plays
