// Plays and radio scripts in Japanese. Entry: readJapanesePlay.
//
// A speech begins with a name and one of three signs: 太郎「…」, 太郎：…,
// 太郎　…. Quotes say where it ends; the others go on while lines follow that
// cannot be directions.
#include <algorithm>
#include <array>
#include <map>
#include <optional>

#include "import/line_walk.h"

namespace tvml::plays {
namespace {

enum class Layout : std::uint8_t { quote, colon, blank };

constexpr std::size_t kLongestName = 12;
constexpr std::size_t kLongestBlankName = 8;
constexpr std::size_t kLongestHead = 40; // with directions

struct Head {
    Layout layout = Layout::quote;
    std::u16string name;
    std::vector<PlayPart> directions{};
    std::size_t content = 0; // where the speech begins, behind the sign
    bool isSpaced = false;   // blanks part words in front of the sign
};

// What stands in front of colons and is nobody.
constexpr std::array<std::u16string_view, 39> kNobody{
    u"戯曲",         u"ラジオドラマ", u"テレビドラマ", u"ドラマ",   u"朗読劇",   u"作",
    u"作者",         u"原作",         u"脚本",         u"演出",     u"時",       u"所",
    u"時間",         u"場所",         u"日時",         u"題名",     u"題",       u"タイトル",
    u"サブタイトル", u"注",           u"備考",         u"あらすじ", u"制作",     u"製作",
    u"音楽",         u"音響",         u"照明",         u"効果音",   u"SE",       u"ＳＥ",
    u"BGM",          u"ＢＧＭ",       u"テロップ",     u"字幕",     u"スーパー", u"登場人物",
    u"人物",         u"配役",         u"キャスト"};

bool isName(std::u16string_view name, Layout layout) {
    constexpr std::u16string_view kNever =
        u"。、，．.,！!？?「」『』“”\"：:；;…‥→⇒=＝#＃※＊*（）()［］[]"
        u"【】〔〕○〇◯●■□◇◆◎▼▽―─—～〜\\￥%％";
    const std::size_t most = layout == Layout::blank ? kLongestBlankName : kLongestName;
    return !name.empty() && name.size() <= most && name.find_first_of(kNever) == kNowhere &&
           !std::ranges::all_of(name, isDigit) && std::ranges::find(kNobody, name) == kNobody.end();
}

std::size_t findSign(std::u16string_view line, Layout layout) {
    const std::u16string_view reach = line.substr(0, kLongestHead);
    switch (layout) {
    case Layout::quote:
        return reach.find_first_of(u"「『");
    case Layout::colon:
        return reach.find_first_of(u"：:");
    case Layout::blank:
        return std::min({reach.find(u'　'), reach.find(u'\t'), reach.find(u"  ")});
    }
    return kNowhere;
}

// Takes the groups in brackets off the end of what stands in front of the sign.
void takeDirections(std::u16string_view& head, std::int32_t line, Head& found) {
    for (head = trimmed(head); !head.empty() && holds(kClosings, head.back());
         head = trimmed(head)) {
        const std::size_t open = head.find_last_of(kOpenings);
        if (open == kNowhere) {
            return;
        }
        found.directions.insert(found.directions.begin(),
                                directionPart(head.substr(open + 1, head.size() - open - 2), line));
        head = head.substr(0, open);
    }
}

// 山田　太郎, but not 太　郎, as it is typeset.
bool isSpaced(std::u16string_view head) {
    const auto blanks = static_cast<std::size_t>(std::ranges::count_if(head, isBlank));
    return blanks > 0 && head.size() - blanks > blanks + 1;
}

std::optional<Head> headIn(const PlayLine& line, Layout layout) {
    const std::size_t sign = findSign(line.text, layout);
    const bool isIndented = layout == Layout::blank && line.indent > 0;
    if (sign == kNowhere || sign == 0 || isIndented) {
        return std::nullopt;
    }
    Head found{layout, {}, {}, sign + 1, false};
    std::u16string_view head = line.text.substr(0, sign);
    // "太郎：「…」" is a quote with a colon in front of it.
    if (layout == Layout::quote) {
        head = trimmed(head);
        head.remove_suffix(!head.empty() && holds(u"：:", head.back()) ? 1 : 0);
    }
    takeDirections(head, line.number, found);
    found.name = withoutBlanks(head);
    found.isSpaced = isSpaced(head);
    return isName(found.name, layout) ? std::optional(std::move(found)) : std::nullopt;
}

// The names that the whole text makes likely.
class KnownNames {
public:
    explicit KnownNames(Lines lines) {
        for (const PlayLine& line : lines) {
            for (const Layout layout : {Layout::quote, Layout::colon, Layout::blank}) {
                if (const auto head = headIn(line, layout); head && isClean(line, *head)) {
                    ++names_[head->name];
                    counts_[static_cast<std::size_t>(layout)] += head->isSpaced ? 0 : 1;
                    break;
                }
            }
        }
    }

    bool trust(const Head& head) const {
        const auto known = names_.find(head.name);
        const std::size_t times = known == names_.end() ? 0 : known->second;
        if (head.isSpaced && count(Layout::blank) > count(head.layout)) {
            return false; // a name, a blank and a speech with the sign in it
        }
        switch (head.layout) {
        case Layout::quote:
            return times > 1 ||
                   (times == 1 && !endsLikePhrase(head.name) &&
                    count(Layout::quote) >= count(Layout::blank) + count(Layout::colon));
        case Layout::colon:
            return times > 0;
        case Layout::blank:
            return times > 1 || count(Layout::blank) > count(Layout::quote) + count(Layout::colon);
        }
        return false;
    }

private:
    // Nothing follows the quote on its line, or it does not end there.
    static bool isClean(const PlayLine& line, const Head& head) {
        const bool ends = holds(u"」』）)", line.text.back());
        return head.layout != Layout::quote || ends ||
               line.text.find_first_of(u"」』", head.content) == kNowhere;
    }

    // 太郎は「…」: a sentence about him.
    static bool endsLikePhrase(std::u16string_view name) {
        return name.size() > 1 && holds(u"はがもにをへでとの", name.back()) &&
               !std::ranges::all_of(name, isHiragana);
    }

    std::size_t count(Layout layout) const { return counts_[static_cast<std::size_t>(layout)]; }

    std::map<std::u16string, std::size_t, std::less<>> names_;
    std::array<std::size_t, 3> counts_{};
};

class JapanesePlayReader final : public LineWalk {
public:
    explicit JapanesePlayReader(Lines lines) : LineWalk(lines), names_(lines) {
        for (const PlayLine& line : lines) {
            widest_ = std::max(widest_, line.width);
        }
    }

private:
    void readLine(const PlayLine& line) override {
        if (line.empty() || isRuler(line.text)) {
            return;
        }
        if (isCastHead(line.text)) {
            return readCast();
        }
        if (isJapaneseHeading(line.text)) {
            items_.push_back(
                {ItemKind::heading, line.number, {}, {directionPart(line.text, line.number)}});
        } else if (std::optional<Head> head = headOf(line)) {
            readSpeech(line, std::move(*head));
        } else {
            add(ItemKind::direction, line, line.text);
        }
    }

    // The list goes on to the empty line behind its first entry, or to a heading.
    void readCast() {
        const std::size_t first = at_;
        for (; at_ < lines_.size(); ++at_) {
            const PlayLine& line = lines_[at_];
            const bool isEnd = line.empty() ? at_ > first + 1 && !lines_[at_ - 1].empty()
                                            : at_ > first && isJapaneseHeading(line.text);
            const bool isSpeech = !line.empty() && headIn(line, Layout::quote).has_value();
            if (isEnd || isSpeech) {
                break;
            }
            if (!line.empty()) {
                add(ItemKind::other, line, line.text);
            }
        }
        --at_;
    }

    std::optional<Head> headOf(const PlayLine& line) const {
        for (const Layout layout : {Layout::quote, Layout::colon, Layout::blank}) {
            std::optional<Head> head = headIn(line, layout);
            if (head && names_.trust(*head)) {
                return head;
            }
        }
        return std::nullopt;
    }

    void readSpeech(const PlayLine& line, Head head) {
        addSpoken(line.number, head.name, std::move(head.directions),
                  head.layout == Layout::quote ? readQuote(line, head.content)
                                               : readOpenSpeech(line, head.content));
    }

    // ---- quotes

    // Up to the closing quote, on whatever line that is, and what follows it.
    std::vector<PlayPart> readQuote(const PlayLine& line, std::size_t content) {
        const char16_t open = line.text[content - 1];
        const char16_t close = open == u'「' ? u'」' : u'』';
        SpeechText speech;
        std::size_t depth = 1;
        for (const PlayLine* now = &line; now != nullptr; now = nextInQuote()) {
            const std::u16string_view rest = now->text.substr(now == &line ? content : 0);
            const std::size_t end = closingQuote(rest, open, close, depth);
            speech.add(rest.substr(0, end), now->number);
            if (end != kNowhere) {
                std::vector<PlayPart> parts = speech.parts();
                return withTail(std::move(parts), trimmed(rest.substr(end + 1)), now->number);
            }
        }
        return speech.parts();
    }

    static std::size_t closingQuote(std::u16string_view text, char16_t open, char16_t close,
                                    std::size_t& depth) {
        for (std::size_t at = 0; at < text.size(); ++at) {
            depth += text[at] == open ? 1 : 0;
            depth -= text[at] == close ? 1 : 0;
            if (depth == 0) {
                return at;
            }
        }
        return kNowhere;
    }

    // The next line; none where the quote was never closed.
    const PlayLine* nextInQuote() {
        const std::size_t next = at_ + 1;
        if (next == lines_.size() || lines_[next].empty() || isJapaneseHeading(lines_[next].text)) {
            return nullptr;
        }
        const std::optional<Head> head = headIn(lines_[next], Layout::quote);
        if (head && names_.trust(*head)) {
            return nullptr;
        }
        at_ = next;
        return &lines_[at_];
    }

    // More of the speech in quotes of its own, or a direction.
    static std::vector<PlayPart> withTail(std::vector<PlayPart> parts, std::u16string_view tail,
                                          std::int32_t line) {
        while (!tail.empty()) {
            const std::u16string_view rest = tail.substr(1);
            const std::size_t quote =
                holds(u"「『", tail.front()) ? rest.find_first_of(u"」』") : kNowhere;
            const std::size_t group =
                holds(kOpenings, tail.front()) ? rest.find_first_of(kClosings) : kNowhere;
            const std::size_t end = std::min(quote, group);
            if (end == kNowhere) {
                parts.push_back(directionPart(tail, line));
                break;
            }
            parts.push_back({quote != kNowhere ? PartKind::spoken : PartKind::direction,
                             std::u16string(trimmed(rest.substr(0, end))), line});
            tail = trimmed(rest.substr(end + 1));
        }
        std::erase_if(parts, [](const PlayPart& part) { return part.text.empty(); });
        return parts;
    }

    // ---- speeches without quotes

    std::vector<PlayPart> readOpenSpeech(const PlayLine& line, std::size_t content) {
        SpeechText speech;
        speech.add(trimmed(line.text.substr(content)), line.number);
        const std::u16string_view rest = line.text.substr(content);
        const std::size_t blanks = rest.size() - trimmed(rest).size();
        const std::size_t column = line.indent + content + blanks;
        while (at_ + 1 < lines_.size() && goesOn(lines_[at_], lines_[at_ + 1], speech, column)) {
            ++at_;
            speech.add(lines_[at_].text, lines_[at_].number);
        }
        return speech.parts();
    }

    // A short line that ends a sentence ends the speech, where a direction may
    // follow, unless the next one begins below the words.
    bool goesOn(const PlayLine& line, const PlayLine& next, const SpeechText& speech,
                std::size_t column) const {
        if (next.empty() || isRuler(next.text) || isJapaneseHeading(next.text) || headOf(next)) {
            return false;
        }
        constexpr std::size_t kOfDirections = 3; // indent, by custom
        const bool isBelow = next.indent == column && column != kOfDirections;
        const bool isFull = 5 * line.width >= 4 * widest_;
        const bool beginsWithGroup = holds(kOpenings, next.text.front());
        return beginsWithGroup || isBelow || isFull || speech.empty() || !endsSentence(line.text);
    }

    const KnownNames names_;
    std::size_t widest_ = 0;
};

} // namespace

std::vector<PlayItem> readJapanesePlay(Lines lines) {
    return JapanesePlayReader(lines).read();
}

} // namespace tvml::plays
