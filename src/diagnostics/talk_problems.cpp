// Speech that was hardly meant as speech, and tag lines with a slip. Entries:
// talkNeedsCheck, checkTalkLine, checkTagLine.
//
// Any text can be spoken, so only what clearly looks like something else is
// told: a warning about good speech is worse than none about bad.
#include "diagnostics/layout_problems.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "diagnostics/suggestions.h"
#include "reading/brackets.h"
#include "reading/script_text.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

// A tag or a speaker's name before a colon is not longer.
constexpr std::size_t kLongestHead = 24;
constexpr std::size_t kLongestName = 10;

// Brackets that are none of a script, each followed by its partner.
constexpr std::u16string_view kOtherBrackets = u"【】［］〔〕〈〉《》「」『』｛｝＜＞[]{}<>";

// Without a search: every speech asks for its last unit.
constexpr bool isOtherClosing(char16_t unit) {
    if (unit < 0x80) {
        return unit == u']' || unit == u'}' || unit == u'>';
    }
    const bool isCornered = unit >= 0x3009 && unit <= 0x3015 && unit % 2 == 1 && unit != 0x3013;
    return isCornered || unit == u'］' || unit == u'｝' || unit == u'＞';
}

constexpr bool closingsAreKnown() {
    for (std::size_t i = 0; i < kOtherBrackets.size(); ++i) {
        if (isOtherClosing(kOtherBrackets[i]) != (i % 2 == 1)) {
            return false;
        }
    }
    return true;
}
static_assert(closingsAreKnown());

// Whether `text` holds one of the three units. All speech comes through here: the
// text is seen to its end, eight units a step and the last ones again.
bool holdsAny(std::u16string_view text, char16_t a, char16_t b, char16_t c) {
    using Units = std::uint16_t __attribute__((vector_size(16)));
    constexpr std::size_t kUnits = sizeof(Units) / sizeof(char16_t);
    if (text.size() < kUnits) {
        return std::any_of(text.begin(), text.end(),
                           [=](char16_t unit) { return unit == a || unit == b || unit == c; });
    }
    const Units first = Units{} + static_cast<std::uint16_t>(a);
    const Units second = Units{} + static_cast<std::uint16_t>(b);
    const Units third = Units{} + static_cast<std::uint16_t>(c);
    const char16_t* const last = text.data() + text.size() - kUnits;
    Units units;
    std::memcpy(&units, last, sizeof units);
    auto found = (units == first) | (units == second) | (units == third);
    for (const char16_t* at = text.data(); at < last; at += kUnits) {
        std::memcpy(&units, at, sizeof units);
        found |= (units == first) | (units == second) | (units == third);
    }
    std::array<std::uint64_t, 2> halves;
    std::memcpy(halves.data(), &found, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}

bool holdsEither(std::u16string_view text, char16_t a, char16_t b) {
    return holdsAny(text, a, b, b);
}

char16_t firstUnitOr(const Word& word, char16_t fallback) {
    return word.hasUnits() ? word.textOrEmpty().front() : fallback;
}

// What writers type for a colon, besides a blank.
constexpr std::u16string_view kNotColons = u";；=＝.．。、,，－-｡､‥…︓∶";

// After these a sentence may go on, as in "スーパー、閉店です。".
constexpr std::u16string_view kCommas = u"、,，､. 　－-";

bool isOpening(char16_t unit, const KeywordTable& words) {
    return unit == u'(' || words[u"kakko"].holds(unit);
}

bool isClosing(char16_t unit, const KeywordTable& words) {
    return unit == u')' || words[u"toji_kakko"].holds(unit);
}

bool isColon(char16_t unit, const KeywordTable& words) {
    return unit == u':' || words[u"colon"].firstUnitIs(unit);
}

// ---- lines without a speaker

bool isSlipForColon(std::u16string_view rest, const KeywordTable& words) {
    return rest.empty() || words.isBlank(rest.front()) || kNotColons.find(rest.front()) != kNone;
}

// Whether what stands behind a marker or a letter reads like the rest of a
// sentence: behind a comma up to a full stop, in English with a small letter, or
// with the next item of a list. Behind a letter only a list does.
bool continuesSentence(std::u16string_view rest, const KeywordTable& words, bool isWord = true) {
    if (rest.empty() || kCommas.find(rest.front()) == kNone) {
        return false;
    }
    const std::u16string_view next = trimScriptText(dropUnits(rest, 1), words);
    if (next.empty()) {
        return false;
    }
    const bool isStop = std::u16string_view(u"。．.!！?？").find(next.back()) != kNone;
    const bool isFile = next.find(u'\\') != kNone || next.find(u'/') != kNone;
    const bool isSmall = next.front() >= u'a' && next.front() <= u'z';
    const bool isBlank = words.isBlank(rest.front());
    const bool isListed = words.letterOf(next.front()) != 0 && !isBlank && next.front() >= 0x80;
    const bool isNumber = foldedText(next.substr(0, 1)).front() >= u'0' &&
                          foldedText(next.substr(0, 1)).front() <= u'9';
    const bool goesOn = (isStop && !isBlank) || (isSmall && !isFile);
    return (goesOn && isWord) || isListed || (isNumber && !isBlank);
}

// "タイトル「夕方のニュース」": a play's layout around a marker.
bool isQuoted(std::u16string_view rest) {
    return rest.size() > 2 && rest.front() == u'「' && rest.find(u'」') == rest.size() - 1;
}

// "title Evening news": a marker or a declared tag whose colon is missing.
std::u16string_view uncolonedTag(const ScriptChecks& checks, std::u16string_view line) {
    for (std::size_t i = 0; i < kMarkerCount; ++i) {
        if (const MarkerSpelling* marker =
                markerSpelling(static_cast<Marker>(i), line, checks.words)) {
            const std::u16string_view rest = dropUnits(line, marker->units);
            const bool slip = isQuoted(rest) || (isSlipForColon(rest, checks.words) &&
                                                 !continuesSentence(rest, checks.words));
            return line.substr(0, slip ? marker->units : 0);
        }
    }
    std::u16string_view found;
    const auto look = [&](const LeadingNames::Entry& entry) {
        const std::u16string_view rest = line.substr(entry.first.size());
        if (isSlipForColon(rest, checks.words) && !continuesSentence(rest, checks.words)) {
            found = line.substr(0, entry.first.size());
        }
        return !found.empty();
    };
    checks.staging.tags.tagNames.visitStarting(line, look) ||
        checks.staging.tags.tagTexts.visitStarting(line, look);
    return found;
}

// The tag with a colon in place of what was typed for one. A tag with nothing
// behind it lacks more than that.
void tellUncolonedTag(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view line,
                      std::u16string_view tag) {
    const std::u16string_view rest = line.substr(tag.size());
    std::size_t slip = 0;
    while (slip < rest.size() && (checks.words.isBlank(rest[slip]) ||
                                  (kNotColons.find(rest[slip]) != kNone && rest[slip] != u'…'))) {
        ++slip;
    }
    if (slip == rest.size()) {
        checks.addAt("S117", checked, tag, {tag});
        return;
    }
    std::u16string meant(tag);
    const bool isEnglish = looksEnglish(tag);
    meant.append(isEnglish ? u": " : u"：");
    if (isQuoted(rest)) {
        meant.append(rest.substr(1, rest.size() - 2));
        slip = rest.size();
    }
    checks.addAt("S117", checked, line.substr(0, tag.size() + slip), {tag}).suggestions = {meant};
}

// "B hello": a letter of the programme without its colon. "A" and "I" alone are
// English words.
bool isUncolonedSpeaker(const ScriptChecks& checks, std::u16string_view line) {
    const char16_t letter = checks.words.letterOf(line.front());
    if (letter == 0 || letter > checks.lastCharacter || line.size() < 2) {
        return false;
    }
    if (isOpening(line[1], checks.words)) {
        const std::size_t end = line.find_first_of(u")）");
        return end != kNone && commandOwner(checks, line.substr(2, end - 2)) != CommandOwner::none;
    }
    if (continuesSentence(line.substr(1), checks.words, false)) {
        return false;
    }
    const bool isAscii = line.front() < 0x80;
    const bool mayBeText = isAscii && (line.front() == u'A' || line.front() == u'I' ||
                                       line.front() >= u'a' || line[1] != u' ');
    return isSlipForColon(line.substr(1), checks.words) && (!mayBeText || line[1] == u';');
}

// With a spent memory only so many tags are looked at, so that a head costs a
// bounded time.
constexpr std::size_t kMostTags = 100;

ClosestNames closestTags(ScriptChecks& checks, std::u16string_view head) {
    ClosestNames closest(head);
    for (const MarkerSpec& marker : kMarkers) {
        for (const MarkerSpelling& spelling : marker.spellings) {
            if (spelling.english.empty()) {
                closest.offer(checks.words[spelling.word].textOrEmpty());
            }
        }
    }
    for (const MarkerSpec& marker : kMarkers) {
        closest.offer(marker.name);
    }
    std::size_t left =
        checks.suggestions.isSpent() ? kMostTags : checks.staging.tags.tagNames.all().size();
    checks.suggestions.compare(2 * left);
    for (const auto& [japanese, english] : checks.staging.tags.tagNames.all()) {
        if (left-- == 0) {
            break;
        }
        closest.offer(japanese);
        closest.offer(english);
    }
    return closest;
}

// "1：" and "林：" name somebody, "10:30" is a time.
bool isOneSignName(std::u16string_view head, std::u16string_view rest) {
    const std::u16string folded = foldedText(head.substr(0, 1));
    const bool isDigit = !folded.empty() && folded.front() >= u'0' && folded.front() <= u'9';
    const bool isKanji = !head.empty() && head.front() >= 0x3400 && head.front() <= 0x9FFF;
    return head.size() == 1 && !rest.empty() && rest.front() > u'9' &&
           (isKanji || (isDigit && foldedText(rest.substr(0, 1)).front() > u'9'));
}

bool isName(std::u16string_view head) {
    return head.size() >= 2 && head.size() <= kLongestName &&
           std::all_of(head.begin(), head.end(), [](char16_t unit) {
               return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z') ||
                      (unit >= 0x3040 && unit <= 0x30FF) || (unit >= 0x3400 && unit <= 0x9FFF) ||
                      unit == u'々';
           });
}

// A head before a colon: nearly a tag, or a name that is no speaker.
bool tellHead(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view line) {
    const std::u16string_view reach = line.substr(0, kLongestHead);
    const std::size_t colon = std::min(reach.find(u':'), checks.words[u"colon"].findUnitsIn(reach));
    if (colon == kNone || line.substr(colon).starts_with(u"://")) {
        return false;
    }
    const std::u16string_view head = trimScriptText(line.substr(0, colon), checks.words);
    const Suggestions meant = suggestedTags(checks, head);
    ClosestNames closest = closestTags(checks, head);
    const std::size_t limit = head.size() < 6 ? 1 : head.size() < 10 ? 2 : 3;
    const bool isNear = closest.distance() <= limit && head.size() > 2;
    const std::u16string_view rest = trimScriptText(line.substr(colon + 1), checks.words);
    if (!isNear && !isName(head) && !isOneSignName(head, rest) && meant.empty()) {
        return false;
    }
    std::vector<std::u16string> tags = meant;
    if (tags.empty() && head.size() > 2) { // shorter ones are like too much
        tags = closest.take();
    }
    if (!isNear && tags.empty()) {
        checks.addOnce("S120", checked, head, {head});
    } else {
        checks.addAt(isNear ? Code("S118") : Code("S120"), checked, head, {head}).suggestions =
            std::move(tags);
    }
    return true;
}

// A cheap look that leaves out nearly all good lines without a speaker.
bool mayLackSpeaker(const ScriptChecks& checks, std::u16string_view line) {
    const KeywordTable& words = checks.words;
    if (words.isBlank(line.front())) {
        line = trimScriptText(line, words);
    }
    if (line.empty()) {
        return false;
    }
    const char16_t letter = words.letterOf(line.front());
    return checks.reader.markers().candidates(line) != 0 ||
           checks.tagStarts.test(line.front() & 0xFFu) ||
           (letter != 0 && letter <= checks.lastCharacter) ||
           holdsEither(line.substr(0, kLongestHead), u':', firstUnitOr(words[u"colon"], u':'));
}

bool tellMissingSpeaker(ScriptChecks& checks, const CheckedLine& checked) {
    const std::u16string_view line = checked.line.trimmed;
    const std::u16string_view tag = uncolonedTag(checks, line);
    if (!tag.empty()) {
        tellUncolonedTag(checks, checked, line, tag);
        return true;
    }
    if (checkSpeaker(checks, checked)) {
        return true;
    }
    if (isUncolonedSpeaker(checks, line)) {
        const std::u16string_view sign = line.substr(1, 1);
        const bool isKept = isOpening(sign.front(), checks.words);
        Diagnostic& told = checks.addAt("S119", checked, line.substr(0, isKept ? 1 : 2),
                                        {line.substr(0, 1), u"A"});
        told.suggestions = {std::u16string(line.substr(0, 1)) +
                            (line.front() < 0x80 ? u':' : u'：')};
        const bool maybeWord =
            line.size() > 2 && sign == u" " && line[2] >= u'a' && line[2] <= u'z';
        told.severity = maybeWord ? Severity::note : told.severity; // "B vitamins are good."
        return true;
    }
    return checkLayout(checks, checked) || tellHead(checks, checked, line);
}

// ---- brackets

// The outermost bracket of a text that nothing closes, and the group that the
// text begins with.
struct BracketScan {
    std::size_t unclosed = kNone;
    std::size_t firstGroupEnd = kNone; // of its closing bracket
    bool endsWithGroup = false;
    std::size_t lastGroupStart = kNone;
};

BracketScan scanBrackets(std::u16string_view text, const KeywordTable& words) {
    BracketScan scan;
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isOpening(text[i], words)) {
            open.push_back(i);
        } else if (isClosing(text[i], words) && !open.empty()) {
            scan.lastGroupStart = open.back();
            scan.endsWithGroup = i + 1 == text.size();
            open.pop_back();
            if (scan.lastGroupStart == 0) {
                scan.firstGroupEnd = i;
            }
        }
    }
    scan.unclosed = open.empty() ? kNone : open.front();
    return scan;
}

// Brackets that do not balance, or that stand at the start of the speech, and
// readings of words. A group at the end is a caption unless the run says otherwise.
bool bracketsNeedCheck(const KeywordTable& words, const ScriptLine& line) {
    const Word& opening = words[u"kakko"];
    if (!holdsAny(line.text, u'(', firstUnitOr(opening, u'('), u'《')) {
        return false;
    }
    const Word& closing = words[u"toji_kakko"];
    const char16_t open = firstUnitOr(opening, u'(');
    const char16_t close = firstUnitOr(closing, u')');
    int unclosed = 0;
    int readings = 0;
    for (const char16_t unit : line.text) { // without branches
        readings += int{unit == u'《'};
        unclosed += int{unit == u'('} | int{unit == open};
        unclosed -= int{unit == u')'} | int{unit == close};
    }
    return unclosed > 0 || readings > 0 || opening.size() > 1 || closing.size() > 1 ||
           line.content.empty() || isOpening(line.content.front(), words);
}

// A command that would do something on a line of its own, with this speaker or
// none.
bool isCommandText(const ScriptChecks& checks, const CheckedLine& checked,
                   std::u16string_view text) {
    const CommandOwner owner = commandOwner(checks, text);
    return owner == CommandOwner::character ||
           (owner == CommandOwner::studio && checked.speaker() == 0);
}

// Round brackets of the language that the text is in.
std::u16string bracketed(const KeywordTable& words, std::u16string_view text) {
    const bool isEnglish = looksEnglish(text.substr(0, 1));
    const std::u16string_view own = words[u"kakko"].textOrEmpty().substr(0, 1);
    const std::u16string_view closing = words[u"toji_kakko"].textOrEmpty().substr(0, 1);
    std::u16string whole(isEnglish || own.empty() ? u"(" : own);
    return whole.append(text).append(isEnglish || closing.empty() ? u")" : closing);
}

// The caption that a group was meant to be: the word, a colon, and what stands
// behind the first `units` of the group.
std::u16string captionGroup(const KeywordTable& words, std::u16string_view word,
                            std::u16string_view group, std::size_t units) {
    std::u16string_view text = dropAndTrim(group, units, words);
    while (!text.empty() &&
           (isColon(text.front(), words) || kNotColons.find(text.front()) != kNone)) {
        text = dropAndTrim(text, 1, words);
    }
    const std::u16string_view own = words[u"colon"].textOrEmpty();
    const bool isEnglish = looksEnglish(word) || own.empty();
    return bracketed(words, std::u16string(word).append(isEnglish ? u": " : own).append(text));
}

// What a bracket group at the end of speech was meant to be.
std::u16string closestGroupWord(const ScriptChecks& checks, std::u16string_view group) {
    const KeywordTable& words = checks.words;
    std::size_t colon = 0;
    while (colon < group.size() && !isColon(group[colon], words)) {
        ++colon;
    }
    const std::u16string head = foldedText(trimScriptText(group.substr(0, colon), words));
    const std::u16string_view captionWord = words[u"caption"].textOrEmpty();
    for (const std::u16string_view word : {captionWord, std::u16string_view(u"caption")}) {
        const bool uncoloned = colon == group.size() && !word.empty() && group.starts_with(word) &&
                               isSlipForColon(group.substr(word.size()), words);
        const std::size_t limit = closeLimit(word.size());
        if (uncoloned ||
            (colon < group.size() && editDistance(head, foldedText(word), limit) <= limit)) {
            return captionGroup(words, word, group, uncoloned ? word.size() : colon);
        }
    }
    for (const std::u16string_view word :
         {words[u"no_blocking"].textOrEmpty(), words[u"blocking"].textOrEmpty(),
          std::u16string_view(u"no blocking"), std::u16string_view(u"blocking")}) {
        const std::size_t limit = std::max(word.size(), head.size()) / 3;
        if (colon == group.size() && editDistance(head, word, limit) <= limit) {
            return bracketed(words, word);
        }
    }
    return {};
}

// ":-)" and ":(".
bool isEmoticon(std::u16string_view line, std::u16string_view bracket) {
    const std::size_t at = static_cast<std::size_t>(bracket.data() - line.data());
    return bracket.data() >= line.data() && at > 0 && at < line.size() && line[at] < 0x80 &&
           std::u16string_view(u":;-=^'8xX").find(line[at - 1]) != kNone;
}

void tellUnclosed(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view content,
                  const BracketScan& scan) {
    const std::u16string_view group = content.substr(scan.unclosed);
    if (isEmoticon(checked.line.text, group)) {
        return;
    }
    const std::u16string_view inner = group.substr(1);
    const std::u16string_view word = checks.words[u"caption"].textOrEmpty();
    const bool isCaption = (!word.empty() && inner.starts_with(word)) ||
                           inner.starts_with(u"caption") ||
                           findAdverb(trimScriptText(inner, checks.words), checks.words) != nullptr;
    if (isCaption) { // it ends the line, so its end is known
        checks.addAt("S124", checked, group).suggestions = {bracketed(checks.words, inner)};
    } else {
        checks.addAt("S124", checked, group.substr(0, 1));
    }
}

// An adverb that says how something is done, and not whether the script waits.
bool isAction(std::u16string_view group, const KeywordTable& words) {
    const AdverbRow* const row = findAdverb(group, words);
    return row != nullptr && row->field != &AdverbValues::blocking;
}

// A group in round brackets at the start or the end of the speech.
void tellGroups(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view content,
                bool endIsSpoken) {
    const BracketScan scan = scanBrackets(content, checks.words);
    if (scan.firstGroupEnd != kNone && scan.firstGroupEnd + 1 < content.size() &&
        isCommandText(checks, checked, content.substr(1, scan.firstGroupEnd - 1))) {
        const std::u16string_view group = content.substr(0, scan.firstGroupEnd + 1);
        checks.addAt("S126", checked, group, {group});
        return;
    }
    if (scan.unclosed != kNone) {
        return tellUnclosed(checks, checked, content, scan);
    }
    if (!scan.endsWithGroup || !endIsSpoken) {
        return;
    }
    const std::u16string_view whole = content.substr(scan.lastGroupStart);
    const std::u16string_view group =
        trimScriptText(whole.substr(1, whole.size() - 2), checks.words);
    if (isCommandText(checks, checked, group) || isAction(group, checks.words)) {
        checks.addAt("S126", checked, whole, {whole});
        return;
    }
    const std::u16string meant = closestGroupWord(checks, group);
    if (!meant.empty()) {
        checks.addAt("S122", checked, whole, {whole}).suggestions = {meant};
    }
}

// A cheap look at what may be a tag behind a speaker.
bool mayHoldTag(const ScriptChecks& checks, const ScriptLine& line) {
    const std::u16string_view content = line.content.substr(0, kLongestHead);
    return !content.empty() &&
           (checks.reader.markers().candidates(content) != 0 ||
            checks.tagStarts.test(content.front() & 0xFFu)) &&
           holdsEither(content, u':', firstUnitOr(checks.words[u"colon"], u':'));
}

bool tellSpokenTag(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view content) {
    const std::u16string_view tag = tagName(checks, content);
    if (!tag.empty()) {
        checks.addAt("S142", checked, checked.line.trimmed, {tag}).suggestions = {
            std::u16string(content)};
    }
    return !tag.empty();
}

// A command in brackets of another kind.
bool tellOtherBrackets(ScriptChecks& checks, const CheckedLine& checked,
                       std::u16string_view content) {
    const std::size_t kind = content.empty() ? kNone : kOtherBrackets.find(content.front());
    if (kind == kNone || kind % 2 != 0 || content.size() < 3 ||
        content.back() != kOtherBrackets[kind + 1] ||
        !isCommandText(checks, checked, content.substr(1, content.size() - 2))) {
        return false;
    }
    checks.addAt("S125", checked, content, {content});
    return true;
}

// A bracketed line that its caption made speech though it begins as a command.
bool tellCaptionedCommand(ScriptChecks& checks, const CheckedLine& checked,
                          std::u16string_view content) {
    const std::u16string_view inner = dropAndTrim(content, 1, checks.words);
    std::size_t end = 0;
    while (end < inner.size() && !isOpening(inner[end], checks.words) &&
           !isClosing(inner[end], checks.words)) {
        ++end;
    }
    const std::u16string_view command = trimScriptText(inner.substr(0, end), checks.words);
    if (end == inner.size() || !isOpening(inner[end], checks.words) ||
        commandOwner(checks, command) == CommandOwner::none) {
        return false;
    }
    checks.addAt("S127", checked, command, {command});
    return true;
}

// ---- what the run told

void tellCut(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view piece) {
    constexpr std::size_t kShown = 8;
    const std::u16string_view end = piece.substr(piece.size() - std::min(kShown, piece.size()));
    const bool inCharacter = !end.empty() && (end.back() & 0xFC00) == 0xD800;
    checks.addAt(inCharacter ? Code("S143") : Code("S133"), checked, end,
                 {end.substr(0, end.size() - (inCharacter ? 1 : 0))});
}

// What needs no look at the line.
void tellRead(ScriptChecks& checks, const CheckedLine& checked) {
    for (const LineProblem& told : checked.line.problems) {
        if (told.what == ScriptProblem::speakerReplaced) {
            checks.addAt("S110", checked, told.where, {told.where, checks.characters()});
        } else if (told.what == ScriptProblem::bracketUnopened &&
                   !isEmoticon(checked.line.text, told.where)) {
            checks.addAt("S123", checked, told.where);
        }
    }
    bool cut = false;
    for (const LineProblem& told : checked.outcome.problems) {
        if (told.what == ScriptProblem::modelMissing) {
            tellModelless(checks, checked, told);
        } else if (told.what == ScriptProblem::sentenceCutInWord && !cut) { // once a line
            tellCut(checks, checked, told.where);
            cut = true;
        }
    }
}

// Names that are no remark in brackets: known ones, those of colours that supers
// do not have, and slips.
bool isColourLike(const ScriptChecks& checks, std::u16string_view name, ClosestNames& closest) {
    for (const ColourSpec& colour : kColours) {
        const std::u16string_view word = checks.words[colour.word].textOrEmpty();
        closest.offer(colour.word.name());
        if (word.size() > 1) {
            closest.offer(word);
        }
    }
    constexpr std::size_t kClose = 2;
    return (closest.distance() <= kClose && name.size() > 2) ||
           (name.ends_with(u'色') && name.size() <= 5);
}

void checkColour(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view name) {
    const bool isKnown = !checks.suggestions.meant().find(Sense::colour, name).targets.empty();
    ClosestNames closest(name);
    if (isKnown || isColourLike(checks, name, closest)) {
        checks.addAt("S121", checked, name, {name}).suggestions =
            isKnown ? suggestedColours(checks, name) : closest.take();
    }
}

} // namespace

std::u16string_view tagName(const ScriptChecks& checks, std::u16string_view text) {
    std::u16string_view line = text;
    if (checks.reader.kindOf(line) != LineKind::tag) {
        return {};
    }
    const std::size_t colon = std::min(line.find(u':'), checks.words[u"colon"].findUnitsIn(line));
    return trimScriptText(line.substr(0, colon), checks.words);
}

bool talkNeedsCheck(const ScriptChecks& checks, const ScriptLine& line) {
    const std::u16string_view text = line.text;
    // A sentence in other brackets is a quotation, and no command.
    return text.empty() || (line.kind == LineKind::other && mayLackSpeaker(checks, text)) ||
           layoutNeedsCheck(checks, line) ||
           (line.kind == LineKind::character && mayHoldTag(checks, line)) ||
           (isOtherClosing(text.back()) &&
            findUnit(text, firstUnitOr(checks.words[u"kuten"], u'.')) == kNone) ||
           bracketsNeedCheck(checks.words, line);
}

void checkTalkLine(ScriptChecks& checks, const CheckedLine& checked) {
    const ScriptLine& line = checked.line;
    const std::size_t told = checks.found.size();
    if (line.hasProblem(ScriptProblem::bracketUnopened) && checkContent(checks, checked)) {
        return;
    }
    checks.found.erase(checks.found.begin() + static_cast<std::ptrdiff_t>(told),
                       checks.found.end());
    tellRead(checks, checked);
    if (line.kind == LineKind::other && tellMissingSpeaker(checks, checked)) {
        return;
    }
    if (line.content.empty()) {
        checks.add("S136", checked, std::nullopt);
        return;
    }
    if (checkContent(checks, checked)) {
        return;
    }
    const bool captioned = line.hasProblem(ScriptProblem::captionMakesTalk);
    if (tellSpokenTag(checks, checked, line.content) ||
        tellOtherBrackets(checks, checked, line.content) ||
        (captioned && tellCaptionedCommand(checks, checked, line.content))) {
        return;
    }
    tellGroups(checks, checked, line.content, line.hasProblem(ScriptProblem::captionWordUnknown));
}

void checkTagLine(ScriptChecks& checks, const CheckedLine& checked) {
    const TagReading& tag = *checked.line.tag();
    for (const LineProblem& told : checked.outcome.problems) {
        if (told.what == ScriptProblem::templateMissing) {
            checks.add("S138", checked, std::nullopt, {told.detail});
        }
    }
    const std::size_t told = checks.found.size();
    checkTagValue(checks, checked);
    if (told == checks.found.size() && !tag.colour.empty() && tag.colourSpec == nullptr) {
        checkColour(checks, checked, tag.colour);
    }
    if (checked.line.file().use != FileUse::none && tag.value.empty()) {
        checks.addAt("S137", checked, tag.name, {tag.name});
    }
}

ScriptChecks::ScriptChecks(const Programme& programme, Language theLanguage)
    : reader(programme.reader), words(programme.reader.words()), staging(programme.staging),
      lastCharacter(programme.lastCharacter), language(theLanguage), suggestions(words) {
    for (const std::u16string_view units :
         {std::u16string_view(u"():"), words[u"kakko"].textOrEmpty(),
          words[u"toji_kakko"].textOrEmpty(), words[u"colon"].textOrEmpty()}) {
        for (const char16_t unit : units) {
            signs.set(unit & 0xFFu);
        }
    }
    for (const LeadingNames* names : {&staging.tags.tagNames, &staging.tags.tagTexts}) {
        for (const auto& [name, value] : names->all()) {
            tagStarts.set(name.front() & 0xFFu);
        }
    }
}

Diagnostic& ScriptChecks::add(Code code, const CheckedLine& checked, std::optional<LinePlace> place,
                              TextValues values) {
    if (!place.has_value()) {
        place = checked.line.placeOf(checked.line.trimmed);
    }
    const LinePlace at = place.value_or(LinePlace{});
    found.push_back(makeDiagnostic(code, language, SourceKind::script,
                                   {checked.outcome.number, at.start, at.units}, values));
    return found.back();
}

Diagnostic& ScriptChecks::addAt(Code code, const CheckedLine& checked, std::u16string_view where,
                                TextValues values) {
    return add(code, checked, checked.line.placeOf(where), values);
}

void ScriptChecks::addOnce(Code code, const CheckedLine& checked, std::u16string_view where,
                           TextValues values) {
    const auto known = std::find_if(repeated_.begin(), repeated_.end(),
                                    [code](const Repeated& each) { return each.code == code; });
    if (known != repeated_.end()) {
        ++known->count;
        return;
    }
    repeated_.push_back({code, found.size(), 1});
    addAt(code, checked, where, values);
}

void ScriptChecks::tellCounts() {
    for (const Repeated& each : repeated_) {
        if (each.count > 1) {
            found[each.first].message += counted(Message::repeated_more, language, each.count - 1);
        }
    }
}

const CommandMeanings& ScriptChecks::meanings() {
    if (!meanings_.has_value()) {
        meanings_.emplace(words, staging);
    }
    return *meanings_;
}

std::u16string_view ScriptChecks::markerName(std::u16string_view english) const {
    if (!namesCommandsByWords(language)) {
        return english;
    }
    for (const MarkerSpec& marker : kMarkers) {
        for (const MarkerSpelling& spelling : marker.spellings) {
            if (marker.name == english && spelling.english.empty() &&
                words[spelling.word].hasUnits()) {
                return words[spelling.word].textOrEmpty();
            }
        }
    }
    return english;
}

std::u16string ScriptChecks::characters() const {
    return charactersText(lastCharacter, language);
}

} // namespace tvml
