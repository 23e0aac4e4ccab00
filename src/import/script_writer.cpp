// Entry: ScriptWriter::write.
#include "import/script_writer.h"

#include <algorithm>

#include "import/play_lines.h"
#include "import/speech_text.h"
#include "reading/script_text.h"

namespace tvml::plays {
namespace {

constexpr std::u16string_view kBlanks = u" \t　";

std::u16string_view wordOr(const Word& word, std::u16string_view english) {
    return word.textOrEmpty().empty() ? english : word.textOrEmpty();
}

// Speech stands between double quotes in TVML.
std::u16string asSpoken(std::u16string_view text) {
    std::u16string spoken(text);
    replaceDoubleQuotes(spoken);
    return spoken;
}

std::u16string numberText(std::size_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

} // namespace

std::u16string WrittenScript::text() const {
    std::u16string all;
    for (const WrittenLine& line : lines) {
        all.append(line.text).push_back(u'\n');
    }
    return all;
}

ScriptWriter::ScriptWriter(const Sources& sources)
    : from_(sources), words_(sources.reader.words()), isJapanese_(sources.play.isJapanese) {}

WrittenScript ScriptWriter::write() {
    for (std::size_t item = 0; item < from_.play.items.size(); ++item) {
        place_ = {item, 0};
        writeItem(from_.play.items[item]);
    }
    writeCast();
    return std::move(script_);
}

void ScriptWriter::writeItem(const PlayItem& item) {
    switch (item.kind) {
    case ItemKind::speech:
        return writeSpeech(item);
    case ItemKind::heading:
        return writeHeading(item.parts.front());
    case ItemKind::other:
        return tell(item.parts.front(), item.parts.front().text);
    case ItemKind::direction:
        const char16_t speaker = item.name.empty() ? u'\0' : from_.cast.letterOf(item.name);
        for (std::size_t part = 0; part < item.parts.size(); ++part) {
            place_.second = part;
            writeDirection(item.parts[part], speaker);
        }
    }
}

// ---- speeches

// What stands around a direction that was left out is one line.
void ScriptWriter::writeSpeech(const PlayItem& item) {
    const char16_t letter = from_.cast.letterOf(item.name);
    bool isBehindAct = false;
    std::size_t moved = 0;
    for (std::size_t part = 0; part < item.parts.size(); ++part) {
        place_.second = part;
        const PlayPart& now = item.parts[part];
        if (isAct(now, letter)) {
            const bool isLast = speech_.empty() || part + 1 == item.parts.size();
            moved = isLast ? 0 : moveMarks(item.parts[part + 1]);
            writeDirection({now.kind, std::u16string(withoutOuterBrackets(now.text)), now.line},
                           letter);
            isBehindAct = true;
        } else {
            addSpeech(std::u16string_view(now.text).substr(moved), isBehindAct);
            isBehindAct = false;
            moved = 0;
        }
    }
    flush(letter);
}

// An aside is one when all of it is.
bool ScriptWriter::isAct(const PlayPart& part, char16_t speaker) const {
    if (part.kind != PartKind::aside) {
        return part.kind == PartKind::direction;
    }
    const auto clauses = from_.directions.read(withoutOuterBrackets(part.text), speaker);
    return !from_.refused.contains(place_) &&
           std::ranges::none_of(clauses, [](const auto& one) { return one.command.empty(); });
}

// The end of a sentence behind a direction belongs to what stands in front of it.
// Returns how many units there are.
std::size_t ScriptWriter::moveMarks(const PlayPart& next) {
    const std::size_t marks =
        next.kind == PartKind::spoken
            ? std::min(next.text.find_first_not_of(u"。．、，.,"), next.text.size())
            : 0;
    speech_.resize(speech_.find_last_not_of(kBlanks) + 1);
    speech_.append(next.text, 0, marks);
    return marks;
}

void ScriptWriter::addSpeech(std::u16string_view text, bool isBehindAct) {
    speechPlace_ = speech_.empty() ? place_ : speechPlace_;
    if (isBehindAct) {
        speech_.resize(speech_.find_last_not_of(kBlanks) + 1);
        text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
        appendLine(speech_, text);
    } else {
        speech_.append(text);
    }
}

// The line, so that all of it is spoken. Brackets that the filter would take for
// something else get the end of a sentence behind them.
void ScriptWriter::flush(char16_t letter) {
    speech_ = std::u16string(trimmed(speech_));
    if (speech_.empty()) {
        return;
    }
    const std::u16string start = head(letter);
    std::u16string line = start;
    line.append(speech_);
    bool isRight = false;
    if (from_.play.format == PlayFormat::subtitles) {
        std::u16string caption(wordOr(words_[u"caption"], u"caption"));
        caption = isJapanese_ ? caption.append(wordOr(words_[u"colon"], u":")) : u"caption: ";
        std::u16string captioned = line;
        captioned.append(isJapanese_ ? u"" : u" ").append(bracketed(caption.append(speech_)));
        isRight = isSpoken(captioned, speech_, speech_);
        if (isRight) {
            line = std::move(captioned);
        }
    }
    if (!isRight && !isSpoken(line, speech_, {})) {
        const std::u16string_view stop = isJapanese_ ? wordOr(words_[u"kuten"], u".") : u".";
        line.append(stop);
        speech_.append(stop);
    }
    script_.lines.push_back({std::move(line), asSpoken(speech_), speechPlace_, false});
    speech_.clear();
}

bool ScriptWriter::isSpoken(std::u16string_view line, std::u16string_view speech,
                            std::u16string_view caption) const {
    ScriptLine read;
    from_.reader.read(line, {from_.lastCharacter, {}}, read);
    const TalkReading* const talk = read.talk();
    return talk != nullptr && talk->blocking && talk->speech == asSpoken(speech) &&
           talk->captioned == !caption.empty() && talk->caption == asSpoken(caption);
}

// ---- directions and headings

void ScriptWriter::writeDirection(const PlayPart& part, char16_t speaker) {
    if (from_.refused.contains(place_)) {
        return tell(part, part.text);
    }
    for (ReadDirection& read : from_.directions.read(part.text, speaker)) {
        std::u16string command;
        if (!read.command.empty()) {
            flush(speaker);
            command = read.actor == 0 ? u"" : head(read.actor);
            command.append(bracketed(read.command));
            add(command, true);
        }
        tell(part, read.text, std::move(command));
    }
}

void ScriptWriter::writeHeading(const PlayPart& part) {
    ++script_.headings;
    addEmpty();
    if (from_.titles) {
        constexpr std::u16string_view kMarks = u"○〇◯●■□◇◆◎▼▽＃#【】 　";
        std::u16string_view text = part.text;
        text.remove_prefix(std::min(text.find_first_not_of(kMarks), text.size()));
        while (!text.empty() && holds(kMarks, text.back())) {
            text.remove_suffix(1);
        }
        text = text.empty() ? std::u16string_view(part.text) : text;
        add(titleStart().append(text));
        addEmpty();
    }
}

// A heading right behind another shares its card, as a scene does that begins an
// act.
std::u16string ScriptWriter::titleStart() {
    const std::size_t behindCard = titleLine_ + 2; // with the empty line
    const bool isSecond = titleLine_ != kNowhere && script_.lines.size() == behindCard;
    titleLine_ = isSecond ? kNowhere : script_.lines.size();
    if (isSecond) {
        script_.lines.pop_back();
    }
    const std::u16string_view english = isSecond ? u"subtitle" : u"title";
    const Word& word = isSecond ? words_[u"subtitle"] : words_[u"title"];
    std::u16string start(isJapanese_ ? wordOr(word, english) : english);
    return start.append(isJapanese_ ? wordOr(words_[u"colon"], u":") : u": ");
}

void ScriptWriter::tell(const PlayPart& part, std::u16string_view text, std::u16string command) {
    script_.directions.push_back({part.line, std::u16string(text), std::move(command)});
}

// ---- the cast

// There are no comments in scripts; those of TVML are the nearest thing, which the
// player passes over.
void ScriptWriter::writeCast() {
    std::u16string start(isJapanese_ ? wordOr(words_[u"tvml"], u"tvml") : u"tvml");
    start.append(isJapanese_ ? wordOr(words_[u"colon"], u":") : u": ").append(u"// ");
    const auto row = [&](std::u16string_view text) { add(std::u16string(start).append(text)); };
    addEmpty();
    row(isJapanese_ ? u"配役" : u"Cast");
    for (const CastMember& member : from_.cast.members()) {
        std::u16string text(1, member.letter);
        text.append(u"  ").append(!member.name.empty() ? std::u16string_view(member.name)
                                  : isJapanese_        ? u"（名前なし）"
                                                       : u"(no name)");
        row(text.append(u"  ").append(numberText(member.speeches)));
    }
}

// ---- lines

std::u16string ScriptWriter::head(char16_t letter) const {
    const Key key = Key::at(Key(u"A2").index() + 2 * static_cast<std::size_t>(letter - u'A'));
    const std::u16string_view own = words_[key].textOrEmpty();
    std::u16string text =
        isJapanese_ && own.size() == 1 ? std::u16string(own) : std::u16string(1, letter);
    return text.append(isJapanese_ ? wordOr(words_[u"colon"], u":") : u": ");
}

std::u16string ScriptWriter::bracketed(std::u16string_view text) const {
    const bool isWide =
        isJapanese_ && words_[u"kakko"].equals(u"（") && words_[u"toji_kakko"].holds(u'）');
    std::u16string result(1, isWide ? u'（' : u'(');
    result.append(text).push_back(isWide ? u'）' : u')');
    return result;
}

void ScriptWriter::add(std::u16string text, bool isCommand) {
    script_.lines.push_back({std::move(text), {}, place_, isCommand});
}

void ScriptWriter::addEmpty() {
    if (!script_.lines.empty() && !script_.lines.back().text.empty()) {
        script_.lines.emplace_back();
    }
}

} // namespace tvml::plays
