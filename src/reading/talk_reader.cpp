// The bracket groups at the end of speech. Entry: TalkReader::read.
#include "reading/talk_reader.h"

#include <optional>

#include "reading/brackets.h"
#include "reading/script_text.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

std::u16string_view withoutLastUnit(std::u16string_view text, const KeywordTable& words) {
    text.remove_suffix(text.empty() ? 0 : 1);
    return trimScriptText(text, words);
}

std::optional<bool> blockingValue(std::u16string_view group, const KeywordTable& words) {
    if (group == u"no blocking" || words[u"no_blocking"].equals(group)) {
        return false;
    }
    if (group == u"blocking" || words[u"blocking"].equals(group)) {
        return true;
    }
    return std::nullopt;
}

} // namespace

// Speech stands between double quotes in TVML, so it is read with apostrophes in
// place of its own.
void TalkReader::read(bool mayHoldQuotes) {
    line_.part_ = ScriptLine::Part::talk;
    std::u16string_view text = line_.content;
    if (mayHoldQuotes && findUnit(text, u'"') != kNone) {
        line_.copied_ = text;
        line_.copy_.assign(text);
        replaceDoubleQuotes(line_.copy_);
        text = line_.copy_;
    }
    talk_ = {text, {}, false, true};
    if (endsWithClosingBracket(text, words_)) {
        readGroups(text);
    }
}

// A group that says whether to wait comes last; in front of it, or instead, may
// be a caption. All other groups are spoken.
void TalkReader::readGroups(std::u16string_view line) {
    const std::u16string_view inner = withoutLastUnit(line, words_);
    const std::size_t open = findLastOpeningBracket(inner, words_);
    if (open == kNone) {
        line_.problem(ScriptProblem::bracketUnopened, line.substr(line.size() - 1));
        return;
    }
    const auto blocking = blockingValue(dropAndTrim(inner, open + 1, words_), words_);
    if (!blocking.has_value()) {
        return readCaption(line, inner);
    }
    talk_.blocking = *blocking;
    talk_.speech = trimScriptText(inner.substr(0, open), words_);
    const bool anotherGroup =
        !talk_.speech.empty() &&
        (talk_.speech.back() == u')' || words_[u"toji_kakko"].firstUnitIs(talk_.speech.back()));
    if (anotherGroup) {
        readCaption(talk_.speech, withoutLastUnit(talk_.speech, words_));
    }
}

// `whole` is spoken when its last group is no caption; `inner` is `whole` without
// the closing bracket.
void TalkReader::readCaption(std::u16string_view whole, std::u16string_view inner) {
    if (const auto group = findCaption(inner, words_)) {
        talk_.speech = trimScriptText(inner.substr(0, group->open), words_);
        talk_.caption = group->caption;
        talk_.captioned = true;
        return;
    }
    talk_.speech = whole;
    const std::size_t open = findLastOpeningBracket(inner, words_);
    line_.problem(ScriptProblem::captionWordUnknown, inner.substr(open == kNone ? 0 : open));
}

} // namespace tvml
