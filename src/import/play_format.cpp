// Entries: isTimeLine, readPlay.
#include "import/play_format.h"

#include <algorithm>

#include "import/play_readers.h"

namespace tvml::plays {
namespace {

constexpr std::size_t kLongestTimeLine = 120;

std::vector<PlayItem> itemsOf(Lines lines, PlayFormat format) {
    switch (format) {
    case PlayFormat::japanese:
        return readJapanesePlay(lines);
    case PlayFormat::english:
        return readEnglishPlay(lines);
    case PlayFormat::fountain:
        return readFountain(lines);
    case PlayFormat::subtitles:
        return readSubtitles(lines);
    }
    return {};
}

std::size_t speechesIn(const std::vector<PlayItem>& items) {
    return static_cast<std::size_t>(std::ranges::count(items, ItemKind::speech, &PlayItem::kind));
}

// What a reader made of the text is the best sign that it is of its kind: the one
// that finds the most speeches takes it.
Play bestOf(Lines lines, bool isJapanese) {
    const auto read = [&](PlayFormat format) {
        return Play{format, isJapanese, itemsOf(lines, format)};
    };
    if (std::ranges::any_of(lines, [](const PlayLine& line) { return isTimeLine(line.text); })) {
        return read(PlayFormat::subtitles);
    }
    Play best = read(isJapanese ? PlayFormat::japanese : PlayFormat::english);
    for (const PlayFormat format : {PlayFormat::english, PlayFormat::fountain}) {
        Play other = format == best.format ? Play{} : read(format);
        if (speechesIn(other.items) > speechesIn(best.items)) {
            best = std::move(other);
        }
    }
    return best;
}

} // namespace

bool isTimeLine(std::u16string_view line) {
    if (line.size() > kLongestTimeLine) {
        return false;
    }
    const std::size_t arrow = line.find(u"-->");
    const auto isTime = [](std::u16string_view time) {
        return time.find(u':') != kNowhere && std::ranges::count_if(time, isDigit) >= 6 &&
               isDigit(time.front());
    };
    return arrow != kNowhere && isTime(trimmed(line.substr(0, arrow))) &&
           isTime(trimmed(line.substr(arrow + 3)));
}

Play readPlay(std::u16string_view text, std::optional<PlayFormat> format) {
    const std::u16string plain = withoutRubies(text);
    const std::vector<PlayLine> lines = linesOf(plain);
    const bool isJapanese = holdsJapanese(plain);
    return format ? Play{*format, isJapanese, itemsOf(lines, *format)} : bestOf(lines, isJapanese);
}

} // namespace tvml::plays
