// Speech that was hardly meant as speech, and tag lines with a slip. Entries:
// talkNeedsCheck, checkTalkLine, checkTagLine.
//
// Any text can be spoken, so only what clearly looks like something else is
// told: a warning about good speech is worse than none about bad.
#include "diagnostics/script_problems.h"

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

// Whether `text` holds one of the two units. All speech comes through here: the
// text is seen to its end, eight units a step and the last ones again.
bool holdsEither(std::u16string_view text, char16_t a, char16_t b) {
    using Units = std::uint16_t __attribute__((vector_size(16)));
    constexpr std::size_t kUnits = sizeof(Units) / sizeof(char16_t);
    if (text.size() < kUnits) {
        return std::any_of(text.begin(), text.end(),
                           [=](char16_t unit) { return unit == a || unit == b; });
    }
    const Units first = Units{} + static_cast<std::uint16_t>(a);
    const Units second = Units{} + static_cast<std::uint16_t>(b);
    const char16_t* const last = text.data() + text.size() - kUnits;
    Units units;
    std::memcpy(&units, last, sizeof units);
    auto found = (units == first) | (units == second);
    for (const char16_t* at = text.data(); at < last; at += kUnits) {
        std::memcpy(&units, at, sizeof units);
        found |= (units == first) | (units == second);
    }
    std::array<std::uint64_t, 2> halves;
    std::memcpy(halves.data(), &found, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}

char16_t firstUnitOr(const Word& word, char16_t fallback) {
    return word.hasUnits() ? word.textOrEmpty().front() : fallback;
}

// What writers type for a colon, besides a blank.
constexpr std::u16string_view kNotColons = u";；=＝.．。、,，－-｡､‥…";

// Colours that supers do not have; the words are no ordinary remarks.
constexpr std::array<std::u16string_view, 18> kOtherColours{
    u"紅",       u"朱",       u"紺",       u"ピンク",   u"レッド",   u"ブルー",
    u"グリーン", u"ホワイト", u"ブラック", u"イエロー", u"パープル", u"ブラウン",
    u"グレー",   u"pink",     u"grey",     u"cyan",     u"magenta",  u"gold"};

bool isOpening(char16_t unit, const KeywordTable& words) {
    return unit == u'(' || words[u"kakko"].holds(unit);
}

bool isClosing(char16_t unit, const KeywordTable& words) {
    return unit == u')' || words[u"toji_kakko"].holds(unit);
}

bool isColon(char16_t unit, const KeywordTable& words) {
    return unit == u':' || words[u"colon"].firstUnitIs(unit);
}

// The speech of a line: what stands behind its speaker.
std::u16string_view contentOf(const LineFacts& facts, const KeywordTable& words) {
    const std::u16string_view line = trimScriptText(facts.line, words);
    return facts.kind == LineKind::character ? dropAndTrim(dropAndTrim(line, 1, words), 1, words)
                                             : line;
}

// ---- lines without a speaker

bool isSlipForColon(std::u16string_view rest, const KeywordTable& words) {
    return rest.empty() || words.isBlank(rest.front()) || kNotColons.find(rest.front()) != kNone;
}

// "title Evening news": a marker or a declared tag whose colon is missing.
std::u16string_view uncolonedTag(const ScriptChecks& checks, std::u16string_view line) {
    for (std::size_t i = 0; i < kMarkerCount; ++i) {
        const std::size_t units = markerUnits(static_cast<Marker>(i), line, checks.words);
        if (units != kNone) {
            const bool slip = isSlipForColon(dropUnits(line, units), checks.words);
            return line.substr(0, slip ? units : 0);
        }
    }
    std::u16string_view found;
    const auto look = [&](const TextMap::value_type& entry) {
        if (isSlipForColon(line.substr(entry.first.size()), checks.words)) {
            found = line.substr(0, entry.first.size());
        }
        return !found.empty();
    };
    visitNamesStarting(checks.staging->tags.tagNames, line, look) ||
        visitNamesStarting(checks.staging->tags.tagTexts, line, look);
    return found;
}

// "B hello": a letter of the programme without its colon. "A" and "I" alone are
// English words.
bool isUncolonedSpeaker(const ScriptChecks& checks, std::u16string_view line) {
    const char16_t letter = checks.words.letterOf(line.front());
    if (letter == 0 || letter > checks.lastCharacter || line.size() < 2) {
        return false;
    }
    if (isOpening(line[1], checks.words)) {
        return true;
    }
    const bool isAscii = line.front() < 0x80;
    const bool mayBeText = isAscii && (line.front() == u'A' || line.front() == u'I' ||
                                       line.front() >= u'a' || line[1] != u' ');
    return isSlipForColon(line.substr(1), checks.words) && (!mayBeText || line[1] == u';');
}

ClosestNames closestTags(const ScriptChecks& checks, std::u16string_view head) {
    constexpr std::array<Key, 13> kMarkerWords{
        u"title",   u"subtitle",   u"leftsuper", u"rightsuper", u"super", u"mainimage", u"subimage",
        u"bgimage", u"rightimage", u"leftimage", u"bgm",        u"sound", u"tvml"};
    ClosestNames closest(head);
    for (const Key key : kMarkerWords) {
        closest.offer(checks.words[key].textOrEmpty());
    }
    for (std::size_t i = 0; i < kMarkerCount; ++i) {
        closest.offer(markerName(static_cast<Marker>(i)));
    }
    for (const auto& [japanese, english] : checks.staging->tags.tagNames) {
        closest.offer(japanese);
        closest.offer(english);
    }
    return closest;
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
bool tellHead(ScriptChecks& checks, const LineFacts& facts, std::u16string_view line) {
    const std::u16string_view reach = line.substr(0, kLongestHead);
    const std::size_t colon = std::min(reach.find(u':'), checks.words[u"colon"].findUnitsIn(reach));
    if (colon == kNone || line.substr(colon).starts_with(u"://") || --checks.suggestionsLeft < 0) {
        return false;
    }
    const std::u16string_view head = trimScriptText(line.substr(0, colon), checks.words);
    ClosestNames closest = closestTags(checks, head);
    const std::size_t limit = head.size() < 6 ? 1 : head.size() < 10 ? 2 : 3;
    if (closest.distance() <= limit && head.size() > 2) {
        checks.addAt("S118", facts, head, {head}).suggestions = closest.take();
        return true;
    }
    if (isName(head)) {
        Diagnostic& found = checks.addAt("S120", facts, head, {head});
        if (head.size() > 2) { // shorter ones are like too much
            found.suggestions = closest.take();
        }
        return true;
    }
    return false;
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
    return checks.markers.candidates(line) != 0 || checks.tagStarts.test(line.front() & 0xFFu) ||
           (letter != 0 && letter <= checks.lastCharacter) ||
           holdsEither(line.substr(0, kLongestHead), u':', firstUnitOr(words[u"colon"], u':'));
}

bool tellMissingSpeaker(ScriptChecks& checks, const LineFacts& facts) {
    const std::u16string_view line = trimScriptText(facts.line, checks.words);
    const std::u16string_view tag = uncolonedTag(checks, line);
    if (!tag.empty()) {
        checks.addAt("S117", facts, tag, {tag});
        return true;
    }
    if (isUncolonedSpeaker(checks, line)) {
        checks.addAt("S119", facts, line.substr(0, 1), {line.substr(0, 1), u"A"});
        return true;
    }
    return tellHead(checks, facts, line);
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

// Where the speech of a line begins.
std::size_t contentStart(const LineFacts& facts, const KeywordTable& words) {
    std::size_t at = 0;
    const auto skipBlanks = [&] {
        while (at < facts.line.size() && words.isBlank(facts.line[at])) {
            ++at;
        }
    };
    skipBlanks();
    for (int units = facts.kind == LineKind::character ? 2 : 0; units > 0; --units) {
        ++at;
        skipBlanks();
    }
    return std::min(at, facts.line.size());
}

// Brackets that do not balance, or that stand at the start of the speech. A
// group at the end is a caption unless the run says otherwise.
bool bracketsNeedCheck(const KeywordTable& words, const LineFacts& facts) {
    const Word& opening = words[u"kakko"];
    if (!holdsEither(facts.line, u'(', firstUnitOr(opening, u'('))) {
        return false;
    }
    const Word& closing = words[u"toji_kakko"];
    const char16_t open = firstUnitOr(opening, u'(');
    const char16_t close = firstUnitOr(closing, u')');
    int unclosed = 0;
    for (const char16_t unit : facts.line) { // without branches
        unclosed += int{unit == u'('} | int{unit == open};
        unclosed -= int{unit == u')'} | int{unit == close};
    }
    const std::size_t start = contentStart(facts, words);
    return unclosed > 0 || opening.size() > 1 || closing.size() > 1 || start == facts.line.size() ||
           isOpening(facts.line[start], words);
}

// A command that would do something on a line of its own, with this speaker or
// none.
bool isCommandText(const ScriptChecks& checks, const LineFacts& facts, std::u16string_view text) {
    const CommandOwner owner = commandOwner(checks, text);
    return owner == CommandOwner::character ||
           (owner == CommandOwner::studio && facts.speaker == 0);
}

// The word that a bracket group at the end of speech was meant to begin with.
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
            return std::u16string(word) + (word == captionWord ? u"：" : u":");
        }
    }
    for (const std::u16string_view word :
         {words[u"no_blocking"].textOrEmpty(), words[u"blocking"].textOrEmpty(),
          std::u16string_view(u"no blocking"), std::u16string_view(u"blocking")}) {
        const std::size_t limit = std::max(word.size(), head.size()) / 3;
        if (colon == group.size() && editDistance(head, word, limit) <= limit) {
            return std::u16string(word);
        }
    }
    return {};
}

void tellUnclosed(ScriptChecks& checks, const LineFacts& facts, std::u16string_view content,
                  const BracketScan& scan) {
    checks.addAt("S124", facts, content.substr(scan.unclosed, 1));
}

// A group in round brackets at the start or the end of the speech.
void tellGroups(ScriptChecks& checks, const LineFacts& facts, std::u16string_view content,
                bool endIsSpoken) {
    const BracketScan scan = scanBrackets(content, checks.words);
    if (scan.firstGroupEnd != kNone && scan.firstGroupEnd + 1 < content.size() &&
        isCommandText(checks, facts, content.substr(1, scan.firstGroupEnd - 1))) {
        const std::u16string_view group = content.substr(0, scan.firstGroupEnd + 1);
        checks.addAt("S126", facts, group, {group});
        return;
    }
    if (scan.unclosed != kNone) {
        return tellUnclosed(checks, facts, content, scan);
    }
    if (!scan.endsWithGroup || !endIsSpoken) {
        return;
    }
    const std::u16string_view whole = content.substr(scan.lastGroupStart);
    const std::u16string_view group =
        trimScriptText(whole.substr(1, whole.size() - 2), checks.words);
    if (isCommandText(checks, facts, group)) {
        checks.addAt("S126", facts, whole, {whole});
        return;
    }
    const std::u16string meant = closestGroupWord(checks, group);
    if (!meant.empty()) {
        checks.addAt("S122", facts, whole, {whole}).suggestions = {meant};
    }
}

// A cheap look at what may be a tag behind a speaker.
bool mayHoldTag(const ScriptChecks& checks, const LineFacts& facts) {
    const std::u16string_view content =
        dropUnits(facts.line, contentStart(facts, checks.words)).substr(0, kLongestHead);
    return !content.empty() &&
           (checks.markers.candidates(content) != 0 ||
            checks.tagStarts.test(content.front() & 0xFFu)) &&
           holdsEither(content, u':', firstUnitOr(checks.words[u"colon"], u':'));
}

bool tellSpokenTag(ScriptChecks& checks, const LineFacts& facts, std::u16string_view content) {
    const std::u16string_view tag = tagName(checks, content);
    if (!tag.empty()) {
        checks.addAt("S142", facts, tag, {tag});
    }
    return !tag.empty();
}

// A command in brackets of another kind.
bool tellOtherBrackets(ScriptChecks& checks, const LineFacts& facts, std::u16string_view content) {
    const std::size_t kind = content.empty() ? kNone : kOtherBrackets.find(content.front());
    if (kind == kNone || kind % 2 != 0 || content.size() < 3 ||
        content.back() != kOtherBrackets[kind + 1] ||
        !isCommandText(checks, facts, content.substr(1, content.size() - 2))) {
        return false;
    }
    checks.addAt("S125", facts, content, {content});
    return true;
}

// A bracketed line that its caption made speech though it begins as a command.
bool tellCaptionedCommand(ScriptChecks& checks, const LineFacts& facts,
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
    checks.addAt("S127", facts, command, {command});
    return true;
}

// ---- what the run told

void tellCut(ScriptChecks& checks, const LineFacts& facts, const Told& told) {
    constexpr std::size_t kShown = 8;
    const std::size_t units = std::min(kShown, told.where.size());
    std::optional<LinePart> end = told.part;
    if (end.has_value()) {
        end->start += end->units - units;
        end->units = units;
    }
    std::u16string_view shown = std::u16string_view(told.where).substr(told.where.size() - units);
    const bool inCharacter = !shown.empty() && (shown.back() & 0xFC00) == 0xD800;
    shown.remove_suffix(inCharacter ? 1 : 0);
    checks.add(inCharacter ? Code("S143") : Code("S133"), facts, end, {shown});
}

// Tells what needs no look at the line; returns whether the brackets at the end
// were spoken, and whether a caption made a command speech.
struct ToldOfTalk {
    bool endIsSpoken = false;
    bool captioned = false;
};

ToldOfTalk tellTold(ScriptChecks& checks, const LineFacts& facts) {
    ToldOfTalk result;
    bool cut = false;
    for (const Told& told : facts.told) {
        switch (told.what) {
        case ScriptProblem::speakerReplaced:
            checks.add("S110", facts, told.part, {told.where, checks.characters()});
            break;
        case ScriptProblem::modelMissing:
            tellModelless(checks, facts, told);
            break;
        case ScriptProblem::sentenceCutInWord:
            if (!cut) { // once a line
                tellCut(checks, facts, told);
            }
            cut = true;
            break;
        case ScriptProblem::bracketUnopened:
            checks.add("S123", facts, told.part);
            break;
        case ScriptProblem::captionWordUnknown:
            result.endIsSpoken = true;
            break;
        case ScriptProblem::captionMakesTalk:
            result.captioned = true;
            break;
        default:
            break;
        }
    }
    return result;
}

bool isColourLike(const ScriptChecks& checks, std::u16string_view name, ClosestNames& closest) {
    constexpr std::array<Key, 10> kColours{u"black",  u"white",  u"red",   u"brown", u"orange",
                                           u"yellow", u"purple", u"green", u"blue",  u"gray"};
    for (const Key key : kColours) {
        closest.offer(key.name());
        if (checks.words[key].size() > 1) {
            closest.offer(checks.words[key].textOrEmpty());
        } else if (name.starts_with(checks.words[key].textOrEmpty()) && name.ends_with(u'色')) {
            closest.offer(name, checks.words[key].textOrEmpty());
        }
    }
    constexpr std::size_t kClose = 2;
    return (closest.distance() <= kClose && name.size() > 2) ||
           (name.ends_with(u'色') && name.size() <= 5) ||
           std::find(kOtherColours.begin(), kOtherColours.end(), foldedText(name)) !=
               kOtherColours.end();
}

bool namesFile(std::u16string_view marker) {
    constexpr std::array<std::u16string_view, 6> kFiles{u"mainimage",  u"subimage",  u"bgimage",
                                                        u"rightimage", u"leftimage", u"bgm"};
    return std::find(kFiles.begin(), kFiles.end(), marker) != kFiles.end();
}

} // namespace

std::u16string_view tagName(const ScriptChecks& checks, std::u16string_view text) {
    std::u16string_view line = text;
    if (classifyLine(line, checks.staging->tags, checks.words, checks.markers) != LineKind::tag) {
        return {};
    }
    const std::size_t colon = std::min(line.find(u':'), checks.words[u"colon"].findUnitsIn(line));
    return trimScriptText(line.substr(0, colon), checks.words);
}

bool talkNeedsCheck(const ScriptChecks& checks, const LineFacts& facts) {
    const std::u16string_view line = facts.line;
    // A sentence in other brackets is a quotation, and no command.
    return line.empty() || (facts.kind == LineKind::other && mayLackSpeaker(checks, line)) ||
           (facts.kind == LineKind::character && mayHoldTag(checks, facts)) ||
           (isOtherClosing(line.back()) &&
            findUnit(line, firstUnitOr(checks.words[u"kuten"], u'.')) == kNone) ||
           bracketsNeedCheck(checks.words, facts);
}

void checkTalkLine(ScriptChecks& checks, const LineFacts& facts) {
    const ToldOfTalk told = tellTold(checks, facts);
    if (facts.kind == LineKind::other && tellMissingSpeaker(checks, facts)) {
        return;
    }
    const std::u16string_view content = contentOf(facts, checks.words);
    if (content.empty()) {
        if (facts.kind == LineKind::character) {
            checks.add("S136", facts, std::nullopt);
        }
        return;
    }
    if (tellSpokenTag(checks, facts, content) || tellOtherBrackets(checks, facts, content) ||
        (told.captioned && tellCaptionedCommand(checks, facts, content))) {
        return;
    }
    tellGroups(checks, facts, content, told.endIsSpoken);
}

void checkTagLine(ScriptChecks& checks, const LineFacts& facts) {
    for (const Told& told : facts.told) {
        if (told.what == ScriptProblem::templateMissing) {
            checks.add("S138", facts, std::nullopt, {told.detail});
        }
        ClosestNames closest(told.where);
        if (told.what == ScriptProblem::colourUnknown &&
            isColourLike(checks, told.where, closest)) {
            const std::size_t at = facts.line.rfind(told.where);
            checks
                .add("S121", facts, LinePart{at == kNone ? 0 : at, told.where.size()}, {told.where})
                .suggestions = closest.take();
        }
    }
    const std::u16string_view line = trimScriptText(facts.line, checks.words);
    if (namesFile(facts.takenName) && !line.empty() && isColon(line.back(), checks.words)) {
        const std::u16string_view marker =
            trimScriptText(line.substr(0, line.size() - 1), checks.words);
        checks.addAt("S137", facts, marker, {marker});
    }
}

Diagnostic& ScriptChecks::add(Code code, const LineFacts& facts, std::optional<LinePart> part,
                              std::initializer_list<std::u16string_view> values) {
    if (!part.has_value()) {
        const std::u16string_view text = trimScriptText(facts.line, words);
        part = LinePart{static_cast<std::size_t>(text.data() - facts.line.data()), text.size()};
    }
    found.push_back(
        makeDiagnostic(code, SourceKind::script, {facts.number, part->start, part->units}, values));
    return found.back();
}

Diagnostic& ScriptChecks::addAt(Code code, const LineFacts& facts, std::u16string_view where,
                                std::initializer_list<std::u16string_view> values) {
    return add(code, facts,
               LinePart{static_cast<std::size_t>(where.data() - facts.line.data()), where.size()},
               values);
}

std::u16string ScriptChecks::characters() const {
    std::u16string text = lastCharacter == u'A' ? u"A alone" : u"A to ";
    return lastCharacter == u'A' ? text : text.append(letterText(lastCharacter));
}

} // namespace tvml
