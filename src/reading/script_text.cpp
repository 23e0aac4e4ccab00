// The text services of the script's readers. Entries: the functions of the header.
#include "reading/script_text.h"

#include <array>

#include "vocabulary/unit_search.h"

namespace tvml {

std::u16string_view letterText(char16_t letter) {
    static constexpr std::u16string_view kLetters = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    return kLetters.substr(static_cast<std::size_t>(letter - u'A'), 1);
}

std::u16string_view characterLetterOf(std::u16string_view text, const KeywordTable& words) {
    const char16_t letter = text.size() == 1 ? words.letterOf(text.front()) : u'\0';
    return letter != 0 ? letterText(letter) : std::u16string_view{};
}

void replaceAll(std::u16string& text, std::u16string_view pattern,
                std::u16string_view replacement) {
    std::size_t found = pattern.empty() ? kNone : text.find(pattern);
    if (found == kNone) {
        return;
    }
    // Built anew in one pass, so that many occurrences stay linear.
    std::u16string result;
    std::size_t copied = 0;
    for (; found != kNone; found = text.find(pattern, copied)) {
        result.append(text, copied, found - copied).append(replacement);
        copied = found + pattern.size();
    }
    result.append(text, copied);
    text = std::move(result);
}

void replaceDoubleQuotes(std::u16string& text) {
    std::replace(text.begin(), text.end(), u'"', u'\'');
}

std::size_t unitsOfCharacter(std::u16string_view text, std::size_t at) {
    const auto isSurrogate = [&](std::size_t position, unsigned kind) {
        return position < text.size() && (text[position] & 0xFC00u) == kind;
    };
    return isSurrogate(at, 0xD800) && isSurrogate(at + 1, 0xDC00) ? 2 : 1;
}

bool isAsciiText(std::u16string_view text) {
    return !text.empty() && allAscii(text);
}

bool startsWithColon(std::u16string_view text, const KeywordTable& words) {
    return text.starts_with(u':') || words[u"colon"].starts(text);
}

bool endsWithClosingBracket(std::u16string_view text, const KeywordTable& words) {
    return !text.empty() && (text.back() == u')' || words[u"toji_kakko"].holds(text.back()));
}

std::size_t findSeparator(std::u16string_view text, const KeywordTable& words) {
    const std::array<const Word*, 3> separators{&words[u"kanma"], &words[u"touten1"],
                                                &words[u"touten2"]};
    for (const Word* word : separators) {
        if (word->starts({})) {
            return 0; // an empty word occurs at the start of everything
        }
    }
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::u16string_view rest = text.substr(at);
        if (rest.front() == u',' || separators[0]->starts(rest) || separators[1]->starts(rest) ||
            separators[2]->starts(rest)) {
            return at;
        }
    }
    return kNone;
}

bool startsWithSeparator(std::u16string_view text, const KeywordTable& words) {
    return text.starts_with(u',') || words[u"kanma"].starts(text) ||
           words[u"touten1"].starts(text) || words[u"touten2"].starts(text);
}

std::u16string decimalText(std::int32_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

} // namespace tvml
