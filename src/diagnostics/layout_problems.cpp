// Entries: layoutNeedsCheck, checkSpeaker, checkLayout, checkContent, checkTagValue.
//
// Nearly any text can be spoken, so most of this is told as a note; a warning
// stands where something is lost or certainly spoken by mistake.
#include "diagnostics/layout_problems.h"

#include <algorithm>
#include <array>

#include "diagnostics/script_suggestions.h"
#include "diagnostics/suggestions.h"
#include "reading/brackets.h"
#include "reading/script_text.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

// A text with more units is no command that lost its brackets.
constexpr std::size_t kLongestBare = 24;
constexpr std::size_t kLongestName = 10;

constexpr std::u16string_view kSentenceEnds = u"。．.！!？?」』”\"…‥";

bool isKanaOrKanji(char16_t unit) {
    return (unit >= 0x3041 && unit <= 0x30FF) || (unit >= 0x3400 && unit <= 0x9FFF) ||
           unit == u'々';
}
bool isHiragana(char16_t unit) {
    return unit >= 0x3041 && unit <= 0x3096;
}
bool isUpper(char16_t unit) {
    return unit >= u'A' && unit <= u'Z';
}
bool isLower(char16_t unit) {
    return unit >= u'a' && unit <= u'z';
}

bool isOpening(char16_t unit, const KeywordTable& words) {
    return unit == u'(' || words[u"kakko"].holds(unit);
}
bool isClosing(char16_t unit, const KeywordTable& words) {
    return unit == u')' || words[u"toji_kakko"].holds(unit);
}
bool isColon(char16_t unit, const KeywordTable& words) {
    return unit == u':' || words[u"colon"].firstUnitIs(unit);
}

// The brackets and the colon of the text's language around and in a text.
std::u16string bracketed(std::u16string_view text) {
    const bool english = looksEnglish(text);
    std::u16string result(1, english ? u'(' : u'（');
    result.append(text).push_back(english ? u')' : u'）');
    return result;
}

// ---- commands without brackets

// Words that people say as often as they are meant as commands.
constexpr std::array<std::u16string_view, 8> kSaidNames{u"nod",  u"nodnod", u"no",     u"nono",
                                                        u"well", u"bye",    u"hatena", u"neutral"};

// Whose command a text is, with a right list of adverbs behind it or none.
CommandOwner bareOwner(const ScriptChecks& checks, std::u16string_view text) {
    const KeywordTable& words = checks.words;
    if (text.empty() || text.size() > kLongestBare || kSentenceEnds.find(text.back()) != kNone) {
        return CommandOwner::none;
    }
    const std::size_t head = std::min(findSeparator(text, words), text.size());
    std::u16string_view rest = text.substr(head);
    while (!rest.empty()) {
        rest.remove_prefix(1);
        const std::size_t end = std::min(findSeparator(rest, words), rest.size());
        if (findAdverb(trimScriptText(rest.substr(0, end), words), words) == nullptr) {
            return CommandOwner::none;
        }
        rest.remove_prefix(end);
    }
    return commandOwner(checks, text);
}

// English words alone, and what people say, may well be speech.
bool maybeSaid(const ScriptChecks& checks, std::u16string_view text) {
    if (looksEnglish(text) && text.find(u' ') == kNone) {
        return true;
    }
    return std::any_of(kSaidNames.begin(), kSaidNames.end(), [&](std::u16string_view name) {
        return std::any_of(kCommands.begin(), kCommands.end(), [&](const CommandSpec& row) {
            return row.name == name &&
                   std::any_of(row.words.begin(), row.words.end(), [&](const RowWord& word) {
                       return checks.words[word.key].textOrEmpty() == text;
                   });
        });
    });
}

bool tellBareCommand(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view text) {
    const CommandOwner owner = bareOwner(checks, text);
    if (owner == CommandOwner::none || (owner == CommandOwner::studio && checked.speaker() != 0)) {
        return false;
    }
    Diagnostic& told = checks.addAt("S150", checked, text, {text});
    told.severity = maybeSaid(checks, text) ? Severity::note : told.severity;
    told.suggestions = {bracketed(text)};
    return true;
}

// "Ａお辞儀": a letter and a command of a character, with neither colon nor
// brackets.
bool tellLetterAndCommand(ScriptChecks& checks, const CheckedLine& checked,
                          std::u16string_view line) {
    const char16_t letter = checks.words.letterOf(line.front());
    if (letter == 0 || letter > checks.lastCharacter || line.size() < 3) {
        return false;
    }
    const bool isAscii = line.front() < 0x80;
    const std::u16string_view rest = trimScriptText(line.substr(1), checks.words);
    if ((isAscii && line[1] != u' ') || bareOwner(checks, rest) != CommandOwner::character) {
        return false;
    }
    checks.addAt("S150", checked, line, {rest}).suggestions = {
        std::u16string(line.substr(0, 1)).append(isAscii ? u": " : u"：").append(bracketed(rest))};
    return true;
}

// ---- signs that other texts begin lines with

enum class LineSign : std::uint8_t { none, comment, heading, ruler };

bool isSceneWord(std::u16string_view line) {
    constexpr std::array<std::u16string_view, 7> kStarts{u"INT.",   u"EXT.",   u"INT/",    u"FADE ",
                                                         u"CUT TO", u"シーン", u"【シーン"};
    const bool starts = std::any_of(kStarts.begin(), kStarts.end(), [&](std::u16string_view word) {
        return line.starts_with(word);
    });
    const std::size_t scene =
        line.starts_with(u'第') ? line.substr(0, 6).find_first_of(u"場幕景話回") : kNone;
    const bool isNumbered = (line.starts_with(u"Scene ") || line.starts_with(u"SCENE ") ||
                             line.starts_with(u"ACT ") || line.starts_with(u"Act ")) &&
                            line.size() < 40;
    return (starts && line.size() < 60) || isNumbered ||
           (scene != kNone && line.size() < 24 && kSentenceEnds.find(line.back()) == kNone);
}

// "[A enters]", "［拍手］": nothing but words in square brackets.
bool isDirection(std::u16string_view line) {
    const bool isSquare = (line.front() == u'[' && line.back() == u']') ||
                          (line.front() == u'［' && line.back() == u'］');
    return isSquare && line.size() > 3 && line.find_first_of(u"]］") == line.size() - 1;
}

LineSign signOf(std::u16string_view line) {
    const char16_t first = line.front();
    const bool isRuler =
        line.size() >= 3 && line.find_first_not_of(u"-－―─—=＝*＊・_＿～~ 　") == kNone;
    if (isRuler) {
        return LineSign::ruler;
    }
    if (first == u'※' || first == u';' || first == u'；' || line.starts_with(u"//") ||
        line.starts_with(u"／／") || first == u'#' || first == u'＃' || line.starts_with(u"/*") ||
        line.starts_with(u"<!--") || isDirection(line)) {
        return LineSign::comment;
    }
    const bool isCircled = (first == u'○' || first == u'〇' || first == u'◯' || first == u'●' ||
                            first == u'■' || first == u'◇' || first == u'◆') &&
                           line.size() > 1 && kSentenceEnds.find(line.back()) == kNone;
    return isCircled || isSceneWord(line) ? LineSign::heading : LineSign::none;
}

bool tellSign(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view line) {
    switch (signOf(line)) {
    case LineSign::none:
        return false;
    case LineSign::comment:
        checks.addOnce("S151", checked, line, {});
        return true;
    case LineSign::heading:
        checks.addOnce("S152", checked, line, {});
        return true;
    case LineSign::ruler:
        checks.addOnce("S153", checked, line, {});
        return true;
    }
    return false;
}

// ---- speakers of other layouts

// Letters of other alphabets that look like Latin ones, each with the one.
constexpr std::u16string_view kLookAlikes = u"АAВBСCЕEНHКKМMОOРPТTХXУYΑAΒBΕEΖZΗHΙIΚKΜMΝNΟOΡPΤTΧXΥY";

char16_t lookAlikeOf(char16_t unit) {
    for (std::size_t i = 0; i < kLookAlikes.size(); i += 2) {
        if (kLookAlikes[i] == unit) {
            return kLookAlikes[i + 1];
        }
    }
    return 0;
}

constexpr std::u16string_view kInvisible =
    u"\x200B\x200C\x200D\x2060\xFEFF\x00A0\x00AD\x180E\x2003\x2002";

std::u16string speakerText(char16_t letter, std::u16string_view line) {
    const bool isWide = !looksEnglish(line);
    const char16_t shown = isWide ? static_cast<char16_t>(letter - u'A' + u'Ａ') : letter;
    return std::u16string{shown, isWide ? u'：' : u':'};
}

// What stands before the colon of a line, where it cannot be a sentence.
std::u16string_view headBeforeColon(const ScriptChecks& checks, std::u16string_view line) {
    const std::u16string_view reach = line.substr(0, kLongestName + 2);
    const std::size_t colon = std::min(reach.find(u':'), checks.words[u"colon"].findUnitsIn(reach));
    return colon == kNone ? std::u16string_view{} : line.substr(0, colon + 1);
}

// "ＡＢ：", "A/B:", "ＡとＢ：".
bool namesSeveral(const ScriptChecks& checks, std::u16string_view head) {
    std::size_t letters = 0;
    constexpr std::u16string_view kAnd = u" and ";
    const std::size_t both = head.find(kAnd);
    for (std::size_t i = 0; i < head.size(); ++i) {
        if (i == both) {
            i += kAnd.size() - 1;
            continue;
        }
        const char16_t unit = head[i];
        const char16_t letter = checks.words.letterOf(unit);
        const bool isLetter = letter != 0 && letter <= checks.lastCharacter && !isLower(unit);
        letters += isLetter ? 1 : 0;
        if (!isLetter && std::u16string_view(u"、，,・/／&＆+＋と　 ").find(unit) == kNone) {
            return false;
        }
    }
    return letters >= 2 && letters <= 4;
}

bool tellHeadOfSpeaker(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view line) {
    const std::u16string_view whole = headBeforeColon(checks, line);
    if (whole.empty()) {
        return false;
    }
    const std::u16string_view head =
        trimScriptText(whole.substr(0, whole.size() - 1), checks.words);
    if (head.empty()) {
        checks.addAt("S154", checked, whole).suggestions = {speakerText(u'A', line)};
        return true;
    }
    if (namesSeveral(checks, head)) {
        checks.addAt("S155", checked, whole, {head});
        return true;
    }
    const char16_t lookAlike = head.size() == 1 ? lookAlikeOf(head.front()) : u'\0';
    const char16_t letter = lookAlike != 0 ? lookAlike : checks.words.letterOf(head.front());
    constexpr std::array<std::u16string_view, 8> kTitles{u"さん", u"くん", u"ちゃん", u"君",
                                                         u"様",   u"氏",   u"先生",   u"役"};
    const std::u16string_view tail = head.substr(1);
    const bool isTitled =
        std::find(kTitles.begin(), kTitles.end(), tail) != kTitles.end() ||
        (tail.size() == 1 && foldedText(tail).front() >= u'0' && foldedText(tail).front() <= u'9');
    if (letter != 0 && letter <= checks.lastCharacter && (lookAlike != 0 || isTitled)) {
        checks.addAt("S156", checked, whole, {head}).suggestions = {speakerText(letter, line)};
        return true;
    }
    return false;
}

// Signs that people write for the colon, and quotes that open a speech.
constexpr std::u16string_view kSpeakerSigns = u"「『“︓∶＞>〉》⇒→｜|";

// "Ｂ「こんにちは。」", "Ｂこんにちは", "（Ｂ）こんにちは".
bool tellLetterAtStart(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view line) {
    const bool isBracketed =
        line.size() > 3 && isOpening(line[0], checks.words) && isClosing(line[2], checks.words);
    const std::size_t at = isBracketed ? 1 : 0;
    const char16_t letter = checks.words.letterOf(line[at]);
    if (letter == 0 || letter > checks.lastCharacter || line.size() < 3 || isLower(line[at])) {
        return false;
    }
    const std::u16string_view rest = line.substr(isBracketed ? 3 : 1);
    const bool isSign = kSpeakerSigns.find(rest.front()) != kNone;
    constexpr std::u16string_view kParticles = u"はがをにのともでへやかさくちよりまだ";
    const bool isSpeech =
        line[at] >= 0x80 && isHiragana(rest.front()) && kParticles.find(rest.front()) == kNone;
    if (!isSign && !isSpeech && !isBracketed) {
        return false;
    }
    const std::size_t units = (isBracketed ? 3U : 1U) + (isSign ? 1U : 0U);
    Diagnostic& told =
        checks.addAt("S119", checked, line.substr(0, units), {line.substr(at, 1), u"A"});
    told.severity = isSign ? told.severity : Severity::note;
    told.suggestions = {speakerText(letter, line)};
    return true;
}

// "A. Good evening.", "A - Good evening.", "A) Good evening.": a capital letter
// and a sign that other scripts have behind a speaker. Initials and sentences that
// go on have other units behind the sign.
bool tellSignedSpeaker(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view line) {
    const char16_t letter = line.front();
    if (!isUpper(letter) || letter > checks.lastCharacter || line.size() < 5) {
        return false;
    }
    std::size_t at = line[1] == u' ' ? 2 : 1;
    const bool isDash = line[at] == u'-' || line[at] == u'–' || line[at] == u'—';
    if (at == 2 ? !isDash : line[at] != u'.' && line[at] != u')') {
        return false;
    }
    ++at;
    const bool begins = at + 2 < line.size() && line[at] == u' ' &&
                        (isUpper(line[at + 1]) || line[at + 1] == u'"') && line[at + 2] != u'.';
    if (!begins) {
        return false;
    }
    Diagnostic& told = checks.addAt("S119", checked, line.substr(0, at), {line.substr(0, 1), u"A"});
    told.severity = Severity::note;
    told.suggestions = {speakerText(letter, line)};
    return true;
}

// "A (happy): Hello.": a direction between the letter and the colon.
bool tellDirectedSpeaker(ScriptChecks& checks, const CheckedLine& checked,
                         std::u16string_view line) {
    const char16_t letter = checks.words.letterOf(line.front());
    const std::size_t open = line.size() > 2 && line[1] == u' ' ? 2 : 1;
    if (letter == 0 || letter > checks.lastCharacter || line.size() < 5 ||
        !isOpening(line[open], checks.words)) {
        return false;
    }
    std::size_t close = open;
    while (close < line.size() && !isClosing(line[close], checks.words)) {
        ++close;
    }
    if (close + 1 >= line.size() || !isColon(line[close + 1], checks.words)) {
        return false;
    }
    checks.addAt("S119", checked, line.substr(0, close + 2), {line.substr(0, 1), u"A"})
        .suggestions = {speakerText(letter, line)};
    return true;
}

bool isPlayName(std::u16string_view text) {
    return text.size() >= 2 && text.size() <= kLongestName &&
           std::all_of(text.begin(), text.end(), isKanaOrKanji);
}

// "田中「…」", "田中（笑って）「…」", "田中　…", "TANAKA. …".
bool isPlayLine(std::u16string_view line, std::size_t& units) {
    const std::size_t quote = line.substr(0, 24).find_first_of(u"「『");
    if (quote != kNone && quote > 1) {
        const std::u16string_view before = line.substr(0, quote);
        const std::u16string_view name = before.substr(0, before.find_first_of(u"（("));
        const bool closes =
            line.back() == u'」' || line.back() == u'』' || line.find_first_of(u"」』") == kNone;
        units = quote + 1;
        const bool isDirection =
            name.size() == before.size() || before.back() == u'）' || before.back() == u')';
        return closes && isDirection && isPlayName(name);
    }
    const std::size_t blank = line.substr(0, kLongestName).find(u'　');
    if (blank != kNone && blank + 1 < line.size() && blank <= 6) {
        units = blank + 1;
        return isPlayName(line.substr(0, blank)) && kSentenceEnds.find(line.back()) != kNone;
    }
    std::size_t upper = 0;
    while (upper < line.size() && (isUpper(line[upper]) || (upper > 1 && line[upper] == u' '))) {
        ++upper;
    }
    units = upper + 1;
    if (upper == line.size() && upper >= 3 && upper <= 20) {
        units = upper; // a name on a line of its own, above the speech
        return true;
    }
    return upper >= 3 && upper <= 20 && upper + 2 < line.size() && line[upper] == u'.' &&
           line[upper + 1] == u' ';
}

// "・Ａ：", "> Ａ：" and what cannot be seen in front of a speaker.
bool tellInvisible(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view line) {
    std::size_t first = line.find_first_not_of(kInvisible);
    const bool isInvisible = first != 0;
    if (!isInvisible) {
        first = line.find_first_not_of(u"・>＞\"“*•-－ 　1234567890１２３４５６７８９０.．）)");
    }
    if (first == 0 || first == kNone) {
        return false;
    }
    const std::u16string_view rest = line.substr(first);
    const std::u16string_view head = headBeforeColon(checks, rest);
    const std::size_t units = head.empty() ? 0 : head.size();
    const char16_t letter = units == 2 ? checks.words.letterOf(rest.front()) : u'\0';
    if (!isInvisible && (letter == 0 || letter > checks.lastCharacter)) {
        return false;
    }
    if (!isInvisible) {
        checks.addAt("S171", checked, line.substr(0, first + units), {line.substr(0, first)})
            .suggestions = {std::u16string(head)};
        return true;
    }
    checks.addAt("S157", checked, line.substr(0, first + units)).suggestions = {
        std::u16string(rest.substr(0, std::max<std::size_t>(units, 1)))};
    return true;
}

// ---- captions and blocking words

struct Group {
    std::size_t start = kNone; // of the opening bracket
    std::size_t end = kNone;   // behind the closing one
    bool isEmpty() const { return start == kNone; }
};

// The bracket group that a text ends with.
Group lastGroup(std::u16string_view text, const KeywordTable& words) {
    int depth = 0;
    for (std::size_t i = text.size(); i-- > 0;) {
        depth += isClosing(text[i], words) ? 1 : isOpening(text[i], words) ? -1 : 0;
        if (depth == 0) {
            return isOpening(text[i], words) && i + 1 < text.size() ? Group{i, text.size()}
                                                                    : Group{};
        }
    }
    return {};
}

Group firstGroup(std::u16string_view text, const KeywordTable& words) {
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        depth += isOpening(text[i], words) ? 1 : isClosing(text[i], words) ? -1 : 0;
        if (depth == 0) {
            return i > 0 ? Group{0, i + 1} : Group{};
        }
    }
    return {};
}

std::u16string_view innerOf(std::u16string_view group, const KeywordTable& words) {
    return trimScriptText(group.substr(1, group.size() - 2), words);
}

// Words that people write for the one of a caption.
constexpr std::array<std::u16string_view, 14> kCaptionWords{
    u"字幕",         u"テロップ", u"サブタイトル", u"キャプション", u"字募",     u"字慕",
    u"テロップ字幕", u"じまく",   u"caption",      u"captions",     u"subtitle", u"subtitles",
    u"telop",        u"cc"};

std::u16string_view captionWord(const ScriptChecks& checks, std::u16string_view sample) {
    const std::u16string_view word = checks.words[u"caption"].textOrEmpty();
    return looksEnglish(sample) || word.empty() ? u"caption" : word;
}

// The text of a caption in a group such as "字幕：ご挨拶"; none when it is none.
struct Caption {
    bool isRight = false;     // its word is the vocabulary's
    std::u16string_view text; // empty for none
};
Caption captionOf(const ScriptChecks& checks, std::u16string_view inner) {
    std::size_t colon = 0;
    while (colon < inner.size() && !isColon(inner[colon], checks.words) && inner[colon] != u'「') {
        ++colon;
    }
    const std::u16string_view word = trimScriptText(inner.substr(0, colon), checks.words);
    if (colon == inner.size() || word.empty()) {
        return {};
    }
    std::u16string_view text = trimScriptText(inner.substr(colon + 1), checks.words);
    const bool isQuoted = inner[colon] == u'「';
    if (isQuoted && text.ends_with(u'」')) {
        text.remove_suffix(1);
    }
    const bool isRight =
        !isQuoted && (word == checks.words[u"caption"].textOrEmpty() || word == u"caption");
    const std::u16string folded = foldedText(word);
    const bool isKnown = isRight || std::any_of(kCaptionWords.begin(), kCaptionWords.end(),
                                                [&](std::u16string_view known) {
                                                    return foldedText(known) == folded;
                                                });
    return isKnown ? Caption{isRight, text} : Caption{};
}

bool isBlocking(const ScriptChecks& checks, std::u16string_view text) {
    const AdverbRow* const row = findAdverb(text, checks.words);
    return row != nullptr && row->field == &AdverbValues::blocking;
}

bool isEndGroup(const ScriptChecks& checks, std::u16string_view inner) {
    return isBlocking(checks, inner) || !captionOf(checks, inner).text.empty();
}

std::u16string captionGroup(const ScriptChecks& checks, std::u16string_view inner) {
    const std::u16string_view text = captionOf(checks, inner).text;
    if (text.empty()) {
        return bracketed(inner);
    }
    const bool english = looksEnglish(inner);
    return bracketed(
        std::u16string(captionWord(checks, inner)).append(english ? u": " : u"：").append(text));
}

// A caption or a blocking word that does not end the line.
bool tellMisplacedGroup(ScriptChecks& checks, const CheckedLine& checked,
                        std::u16string_view content) {
    const KeywordTable& words = checks.words;
    if (isOpening(content.front(), words)) {
        const Group group = firstGroup(content, words);
        const std::u16string_view rest =
            group.isEmpty() ? u"" : trimScriptText(content.substr(group.end), words);
        const std::u16string_view inner =
            group.isEmpty() ? u"" : innerOf(content.substr(0, group.end), words);
        if (!rest.empty() && !inner.empty() && !isOpening(rest.front(), words) &&
            isEndGroup(checks, inner)) {
            checks.addAt("S158", checked, content, {content.substr(0, group.end)}).suggestions = {
                std::u16string(rest)
                    .append(looksEnglish(rest) ? u" " : u"")
                    .append(captionGroup(checks, inner))};
            return true;
        }
    }
    const std::size_t last = content.find_last_not_of(u"。．.、，,！!？?");
    if (last != kNone && last + 1 < content.size() && isClosing(content[last], words)) {
        const std::u16string_view before = content.substr(0, last + 1);
        const Group group = lastGroup(before, words);
        const std::u16string_view inner =
            group.isEmpty() || group.start == 0 ? u"" : innerOf(before.substr(group.start), words);
        if (!inner.empty() && isEndGroup(checks, inner)) {
            checks.addAt("S158", checked, content, {before.substr(group.start)}).suggestions = {
                std::u16string(trimScriptText(content.substr(0, group.start), words))
                    .append(content.substr(last + 1))
                    .append(looksEnglish(content) ? u" " : u"")
                    .append(captionGroup(checks, inner))};
            return true;
        }
    }
    return false;
}

// "（同時）（字幕：…）" and "（テロップ：…）" at the end.
bool tellEndGroups(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view content) {
    const KeywordTable& words = checks.words;
    const Group last = lastGroup(content, words);
    if (last.isEmpty() || last.start == 0) {
        return false;
    }
    const std::u16string_view inner = innerOf(content.substr(last.start), words);
    const std::u16string_view before = trimScriptText(content.substr(0, last.start), words);
    const Caption caption = captionOf(checks, inner);
    const Group earlier = lastGroup(before, words);
    if (!caption.text.empty() && !earlier.isEmpty() && earlier.start > 0) {
        const std::u16string_view blocking = before.substr(earlier.start);
        if (isBlocking(checks, innerOf(blocking, words))) {
            const std::u16string_view groups = content.substr(earlier.start);
            checks.addAt("S158", checked, groups, {blocking}).suggestions = {
                captionGroup(checks, inner).append(blocking)};
            return true;
        }
    }
    if (!caption.text.empty() && !caption.isRight) {
        const std::u16string_view group = content.substr(last.start);
        checks.addAt("S122", checked, group, {group}).suggestions = {captionGroup(checks, inner)};
        return true;
    }
    return false;
}

// Captions, blocking words and commands between other signs.
struct SignPair {
    char16_t open;
    char16_t close;
};
constexpr std::array<SignPair, 18> kOtherSigns{{
    {u'【', u'】'},
    {u'［', u'］'},
    {u'〔', u'〕'},
    {u'〈', u'〉'},
    {u'《', u'》'},
    {u'「', u'」'},
    {u'『', u'』'},
    {u'｛', u'｝'},
    {u'＜', u'＞'},
    {u'[', u']'},
    {u'{', u'}'},
    {u'<', u'>'},
    {u'“', u'”'},
    {u'｢', u'｣'},
    {u'*', u'*'},
    {u'＊', u'＊'},
    {u'_', u'_'},
    {u'"', u'"'},
}};

const SignPair* closedBy(char16_t unit) {
    const auto pair = std::find_if(kOtherSigns.begin(), kOtherSigns.end(),
                                   [unit](const SignPair& each) { return each.close == unit; });
    return pair == kOtherSigns.end() ? nullptr : pair;
}

bool tellOtherSigns(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view content) {
    const SignPair* const pair = closedBy(content.back());
    const std::size_t open =
        pair == nullptr ? kNone : content.substr(0, content.size() - 1).rfind(pair->open);
    if (open == kNone || open + 2 >= content.size()) {
        return false;
    }
    const std::u16string_view group = content.substr(open);
    const std::u16string_view inner = innerOf(group, checks.words);
    const CommandOwner owner = open == 0 ? bareOwner(checks, inner) : CommandOwner::none;
    const bool isCommand = owner == CommandOwner::character ||
                           (owner == CommandOwner::studio && checked.speaker() == 0);
    const bool isTail = isBlocking(checks, inner) || captionOf(checks, inner).isRight;
    if (!isCommand && (!isTail || open == 0)) {
        return false;
    }
    Diagnostic& told = checks.addAt("S125", checked, group, {group});
    const bool isQuote =
        pair->open == u'“' || pair->open == u'"' || pair->open == u'「' || pair->open == u'『';
    told.severity = isQuote && isCommand ? Severity::note : told.severity;
    told.suggestions = {isCommand ? bracketed(inner) : captionGroup(checks, inner)};
    return true;
}

// "こんにちは。字幕：ご挨拶": a caption without brackets, behind a sentence.
bool tellBareCaption(ScriptChecks& checks, const CheckedLine& checked,
                     std::u16string_view content) {
    for (const std::u16string_view word :
         {checks.words[u"caption"].textOrEmpty(), std::u16string_view(u"caption")}) {
        const std::size_t at = word.empty() ? kNone : content.rfind(word);
        if (at == kNone || at == 0 || at + word.size() + 1 >= content.size() ||
            !isColon(content[at + word.size()], checks.words)) {
            continue;
        }
        const char16_t before = content[content.find_last_not_of(u" 　", at - 1) == kNone
                                            ? 0
                                            : content.find_last_not_of(u" 　", at - 1)];
        if (kSentenceEnds.find(before) != kNone && !isClosing(content.back(), checks.words)) {
            const std::u16string_view caption = content.substr(at);
            checks.addAt("S159", checked, caption, {caption}).suggestions = {bracketed(caption)};
            return true;
        }
    }
    return false;
}

// "こんにちは。同時": a blocking word behind a sentence.
bool tellBareBlocking(ScriptChecks& checks, const CheckedLine& checked,
                      std::u16string_view content) {
    constexpr std::size_t kLongestWord = 16;
    const std::size_t reach = content.size() - std::min(content.size(), kLongestWord);
    const std::size_t end = content.find_last_of(u"。．.！!？?");
    if (end == kNone || end < reach || end + 1 == content.size()) {
        return false;
    }
    const std::u16string_view word = trimScriptText(content.substr(end + 1), checks.words);
    if (!isBlocking(checks, word)) {
        return false;
    }
    checks.addAt("S159", checked, word, {word}).suggestions = {bracketed(word)};
    return true;
}

// "漢字《かんじ》": how a word is read, as books and radio scripts have it.
bool tellReading(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view content) {
    const std::size_t open = findUnit(content, u'《');
    const std::size_t close = open == kNone ? kNone : content.find(u'》', open);
    if (close == kNone || open == 0 || close == open + 1 || isHiragana(content[open - 1]) ||
        !std::all_of(content.begin() + static_cast<std::ptrdiff_t>(open + 1),
                     content.begin() + static_cast<std::ptrdiff_t>(close), isKanaOrKanji)) {
        return false;
    }
    checks.addOnce("S174", checked, content.substr(open, close + 1 - open),
                   {content.substr(open, close + 1 - open)});
    return true;
}

// "（お辞儀", "お辞儀）", "（お辞儀］" and "（お辞儀）。".
bool tellHalfBracketed(ScriptChecks& checks, const CheckedLine& checked,
                       std::u16string_view content) {
    constexpr std::u16string_view kEnds = u"）)］]】」。．.";
    std::u16string_view inner = content;
    const bool opens = isOpening(inner.front(), checks.words);
    inner.remove_prefix(opens ? 1 : 0);
    const std::size_t before = inner.size();
    while (!inner.empty() && kEnds.find(inner.back()) != kNone) {
        inner.remove_suffix(1);
    }
    const bool closes = inner.size() < before && (opens || isClosing(content.back(), checks.words));
    if (!opens && !closes) {
        return false;
    }
    const CommandOwner owner = bareOwner(checks, trimScriptText(inner, checks.words));
    if (owner == CommandOwner::none || (owner == CommandOwner::studio && checked.speaker() != 0)) {
        return false;
    }
    const std::u16string meant = bracketed(trimScriptText(inner, checks.words));
    const Code code = !closes ? Code("S124") : opens ? Code("S126") : Code("S123");
    checks.addAt(code, checked, content, {content}).suggestions = {meant};
    return true;
}

// "Ｂ：：こんにちは" and "Ａ：Ｂ：こんにちは".
bool tellSecondSpeaker(ScriptChecks& checks, const CheckedLine& checked,
                       std::u16string_view content) {
    const KeywordTable& words = checks.words;
    if (checked.speaker() == 0) {
        return false;
    }
    if (isColon(content.front(), words)) {
        checks.addAt("S160", checked, content.substr(0, 1));
        return true;
    }
    const char16_t letter = words.letterOf(content.front());
    if (content.size() > 2 && letter != 0 && letter <= checks.lastCharacter &&
        isColon(content[1], words)) {
        checks.addAt("S161", checked, content.substr(0, 2), {content.substr(0, 1)});
        return true;
    }
    return false;
}

// ---- what tag lines show

// The name of the colour that a word means, as the loaded vocabulary has it.
std::u16string colourMeantBy(ScriptChecks& checks, std::u16string_view given) {
    given = trimScriptText(given, checks.words);
    const bool isColour =
        std::any_of(kColours.begin(), kColours.end(), [&](const ColourSpec& colour) {
            return given == checks.words[colour.word].textOrEmpty() || given == colour.word.name();
        });
    if (isColour) {
        return std::u16string(given);
    }
    const bool isKnown = !checks.suggestions.meant().find(Sense::colour, given).targets.empty();
    const Suggestions meant = isKnown ? suggestedColours(checks, given) : Suggestions{};
    return meant.empty() ? std::u16string() : meant.front();
}

constexpr std::array<std::u16string_view, 9> kPictureEndings{
    u".png", u".jpg", u".jpeg", u".bmp", u".gif", u".tif", u".tiff", u".tga", u".webp"};
constexpr std::array<std::u16string_view, 8> kSoundEndings{u".wav", u".mp3", u".mid",  u".midi",
                                                           u".aif", u".ogg", u".aiff", u".m4a"};

bool endsWithOne(std::u16string_view name, std::span<const std::u16string_view> endings) {
    return std::any_of(endings.begin(), endings.end(),
                       [&](std::u16string_view ending) { return name.ends_with(ending); });
}

// A file name that no system has: yen signs for backslashes, quotes around it,
// full-width letters.
void tellFileName(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view name,
                  FileUse use) {
    std::u16string meant(name);
    const bool isQuoted = meant.size() > 2 && closedBy(meant.back()) != nullptr &&
                          closedBy(meant.back())->open == meant.front();
    if (isQuoted) {
        meant = meant.substr(1, meant.size() - 2);
    }
    for (char16_t& unit : meant) {
        unit = unit == u'￥' || unit == u'¥'      ? u'\\'
               : unit >= 0xFF01 && unit <= 0xFF5E ? static_cast<char16_t>(unit - 0xFF01 + u'!')
                                                  : unit;
    }
    const std::u16string folded = foldedText(meant);
    const bool isOther = use == FileUse::picture ? endsWithOne(folded, kSoundEndings)
                                                 : endsWithOne(folded, kPictureEndings);
    if (meant != name) {
        checks.addAt("S162", checked, name, {name}).suggestions = {meant};
    } else if (isOther) {
        checks.addAt("S163", checked, name, {name});
    }
}

// A colour of a super in brackets of other kinds or at the wrong end.
void tellColour(ScriptChecks& checks, const CheckedLine& checked, std::u16string_view value) {
    const KeywordTable& words = checks.words;
    const auto tell = [&](std::u16string_view place, std::u16string_view colour,
                          std::u16string_view rest) {
        checks.addAt("S164", checked, value, {place}).suggestions = {
            std::u16string(rest).append(bracketed(colour))};
    };
    const std::u16string_view trimmed = value.substr(0, value.find_last_not_of(u"。．.、") + 1);
    if (trimmed.empty()) {
        return;
    }
    const SignPair* const pair = closedBy(trimmed.back());
    const bool isRound = isClosing(trimmed.back(), words);
    const std::size_t open = pair != nullptr ? trimmed.rfind(pair->open) : kNone;
    if (open != kNone && open > 0) {
        const std::u16string colour =
            colourMeantBy(checks, trimmed.substr(open + 1, trimmed.size() - open - 2));
        if (!colour.empty()) {
            tell(trimmed.substr(open), colour, trimmed.substr(0, open));
        }
    } else if (isRound && trimmed.size() < value.size()) {
        const Group group = lastGroup(trimmed, words);
        const std::u16string colour =
            group.isEmpty() ? u""
                            : colourMeantBy(checks, innerOf(trimmed.substr(group.start), words));
        if (!colour.empty() && group.start > 0) {
            tell(trimmed.substr(group.start), colour, trimmed.substr(0, group.start));
        }
    } else if (isOpening(value.front(), words)) {
        const Group group = firstGroup(value, words);
        const std::u16string colour =
            group.isEmpty() ? u""
                            : colourMeantBy(checks, innerOf(value.substr(0, group.end), words));
        const std::u16string_view rest =
            group.isEmpty() ? u"" : trimScriptText(value.substr(group.end), words);
        if (!colour.empty() && !rest.empty()) {
            tell(value.substr(0, group.end), colour, rest);
        }
    } else {
        const std::size_t last = value.find_last_of(u"(（");
        const std::u16string colour = last == kNone || last == 0
                                          ? std::u16string()
                                          : colourMeantBy(checks, value.substr(last + 1));
        if (!colour.empty()) {
            tell(value.substr(last), colour, value.substr(0, last));
        }
    }
}

// A group at the end of a tag line that has no colours.
void tellUselessColour(ScriptChecks& checks, const CheckedLine& checked,
                       std::u16string_view value) {
    const Group group = lastGroup(value, checks.words);
    const std::u16string_view inner =
        group.isEmpty() ? u"" : innerOf(value.substr(group.start), checks.words);
    if (!inner.empty() && !colourMeantBy(checks, inner).empty()) {
        checks.addAt("S165", checked, value.substr(group.start), {value.substr(group.start)});
    }
}

} // namespace

namespace {

bool endsSentence(char16_t unit) {
    return unit == u'。' || unit == u'.' || unit == u'！' || unit == u'？' || unit == u'!' ||
           unit == u'?' || unit == u'」';
}

// What the first units tell of a line without a speaker.
bool beginsOddly(std::u16string_view line) {
    const char16_t first = line.front();
    if (first < 0x80) {
        return first == u'#' || first == u'/' || first == u'*' || first == u'-' || first == u'=' ||
               first == u'<' || first == u'_' || first == u';' || first == u'~' ||
               isUpper(line[1]) || line.starts_with(u"Scene ") || line.starts_with(u"Act ");
    }
    // Kana, kanji and what else Japanese sentences begin with, but for scenes.
    const bool isWordUnit =
        isKanaOrKanji(first) && first != u'第' && first != u'シ' && first != u'〇';
    const bool isQuote = line.back() == u'」' || line.back() == u'』';
    return !isWordUnit || isQuote || line[1] == u'　' ||
           (line.size() > 4 && (line[2] == u'　' || line[3] == u'　' || line[4] == u'　'));
}

// The word of a caption behind a sentence.
bool holdsBareCaption(const ScriptChecks& checks, std::u16string_view content) {
    const std::u16string_view word = checks.words[u"caption"].textOrEmpty();
    const std::size_t at = word.empty() ? kNone : findUnit(content, word.front());
    return at != kNone && content.substr(at).starts_with(word) &&
           !isOpening(content[at == 0 ? 0 : at - 1], checks.words);
}

} // namespace

bool layoutNeedsCheck(const ScriptChecks& checks, const ScriptLine& line) {
    const std::u16string_view content = line.content;
    if (content.size() < 2) {
        return true;
    }
    const char16_t last = content.back();
    const char16_t beforeLast = content[content.size() - 2];
    const bool ends = endsSentence(last);
    const auto isSign = [&](char16_t unit) { return checks.signs.test(unit & 0xFFu); };
    if (ends && !isSign(beforeLast) && !isSign(content.front()) && !isSign(content[1])) {
        return line.kind == LineKind::other && beginsOddly(content); // most speech ends here
    }
    const bool closes = isClosing(last, checks.words);
    const bool isShort = content.size() <= kLongestBare && !ends && !closes;
    if (isShort || last == u'*' || last == u'_' || last == u'”' ||
        isClosing(beforeLast, checks.words) || isOpening(content.front(), checks.words)) {
        return true;
    }
    if (closes && line.talk() != nullptr && line.talk()->captioned) {
        // A caption at the end is right, unless another group stands in front of it.
        const std::u16string_view speech = line.talk()->speech;
        return !speech.empty() && isClosing(speech.back(), checks.words);
    }
    if (closes && findUnit(content, u'(') != kNone) {
        return true;
    }
    return line.kind == LineKind::other
               ? beginsOddly(content)
               : isColon(content.front(), checks.words) || isColon(content[1], checks.words) ||
                     (!ends && !closes && holdsBareCaption(checks, content));
}

bool checkSpeaker(ScriptChecks& checks, const CheckedLine& checked) {
    const std::u16string_view line = checked.line.trimmed;
    return !line.empty() &&
           (tellDirectedSpeaker(checks, checked, line) || tellSignedSpeaker(checks, checked, line));
}

bool checkLayout(ScriptChecks& checks, const CheckedLine& checked) {
    const std::u16string_view line = checked.line.trimmed;
    if (line.empty()) {
        return false;
    }
    std::size_t units = 0;
    if (tellInvisible(checks, checked, line) || tellBareCommand(checks, checked, line) ||
        tellLetterAndCommand(checks, checked, line) || tellSign(checks, checked, line) ||
        tellHeadOfSpeaker(checks, checked, line) || tellLetterAtStart(checks, checked, line)) {
        return true;
    }
    if (isPlayLine(line, units)) {
        checks.addOnce("S166", checked, line.substr(0, units), {});
        return true;
    }
    return false;
}

bool checkContent(ScriptChecks& checks, const CheckedLine& checked) {
    const std::u16string_view content = checked.line.content;
    if (content.empty()) {
        return false;
    }
    return tellSecondSpeaker(checks, checked, content) ||
           (checked.speaker() != 0 && tellBareCommand(checks, checked, content)) ||
           tellOtherSigns(checks, checked, content) ||
           tellMisplacedGroup(checks, checked, content) ||
           tellEndGroups(checks, checked, content) || tellBareCaption(checks, checked, content) ||
           tellBareBlocking(checks, checked, content) || tellReading(checks, checked, content) ||
           tellHalfBracketed(checks, checked, content);
}

void checkTagValue(ScriptChecks& checks, const CheckedLine& checked) {
    const TagReading& tag = *checked.line.tag();
    if (tag.value.empty()) {
        return;
    }
    if (const FileUse use = checked.line.file().use; use != FileUse::none) {
        return tellFileName(checks, checked, tag.value, use);
    }
    if (tag.colourSpec != nullptr || !tag.colour.empty()) {
        return;
    }
    const std::u16string_view name = checked.line.takenName();
    if (name == u"super") {
        tellColour(checks, checked, tag.value);
    } else if (name != u"tvml" && !name.empty()) {
        tellUselessColour(checks, checked, tag.value);
    }
}

} // namespace tvml
