// Character commands that change how a character speaks and behaves from now
// on, and recorded speech. Entries: speak…, playSoundFile, setVoiceType,
// setAutoGesture, setManualGesture, setModel.
#include <algorithm>

#include "generation/character_call.h"
#include "generation/command_arguments.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

bool inProgramme(const CharacterCall& call) {
    return call.name >= u'A' && call.name <= call.run.state.lastCharacter;
}

bool setTalkSpeed(CharacterCall& call, std::u16string_view speed, std::u16string_view ending) {
    if (!readTail(call.run, call.rest).has_value()) {
        return false;
    }
    if (inProgramme(call)) {
        call.run.talkSpeed[Run::slot(call.name)] = speed;
        call.out.append(u"// set character ").append(letterText(call.name));
        call.out.append(u" talk speed to ").append(ending).append(u".\n");
    }
    return true;
}

bool setTalkSpeed(CharacterCall& call, TalkSpeed speed, std::u16string_view ending) {
    return setTalkSpeed(call, call.run.settings.speed(speed), ending);
}

// What follows the name and its colon, trimmed; none without a colon.
std::optional<std::u16string_view> behindColon(const CharacterCall& call) {
    const std::u16string_view rest = trimScriptText(call.rest, call.run.words);
    if (!startsWithColon(rest, call.run.words)) {
        call.run.tell(ScriptProblem::colonMissing, rest);
        return std::nullopt;
    }
    return dropAndTrim(rest, 1, call.run.words);
}

// The 27 voice types are the canonical names of consecutive recognition rows.
constexpr std::size_t kFirstVoiceRow = 82;
constexpr std::size_t kVoiceRows = 27;
static_assert(kCommandRows[kFirstVoiceRow].canonical == u"man_ja");
static_assert(kCommandRows[kFirstVoiceRow + kVoiceRows - 1].canonical == u"littlekid");

bool isVoiceType(std::u16string_view word) {
    const auto rows = std::span(kCommandRows).subspan(kFirstVoiceRow, kVoiceRows);
    return std::any_of(rows.begin(), rows.end(),
                       [word](const CommandRow& row) { return row.canonical == word; });
}

// The parts of a sound-file command.
struct SoundFile {
    std::u16string_view file;
    std::u16string_view caption;
    AdverbValues adverbs;
};

// Takes the adverbs off the end of `text`: behind the first `touten3` character
// whose rest reads as adverbs. Most rests fail at their first item, so that is
// read first; where the rest begins and where its first separator stands is
// looked up once, not once per character.
void takeTrailingAdverbs(const KeywordTable& words, std::u16string_view& text,
                         AdverbValues& adverbs) {
    const Word& marks = words[u"touten3"];
    std::size_t start = 0;
    std::size_t separator = 0;
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (!marks.holds(text[at])) {
            continue;
        }
        start = std::max(start, at + 1);
        while (start < text.size() && words.isBlank(text[start])) {
            ++start;
        }
        if (separator != kNone && separator <= start) {
            const std::size_t found = findSeparator(text.substr(start), words);
            separator = found == kNone ? kNone : found + start;
        }
        const std::u16string_view item = text.substr(start, separator - start);
        AdverbValues values;
        if (findAdverb(trimScriptText(item, words), words) != nullptr &&
            parseAdverbs(text.substr(start), words, values)) {
            adverbs = values;
            text = trimScriptText(text.substr(0, at), words);
            return;
        }
    }
}

// Whether a text holds a word, looked up once for all texts that end at the
// same place.
class LastOccurrence {
public:
    LastOccurrence(std::u16string_view text, const Word& word)
        : position_(word.loaded() ? text.rfind(word.textOrEmpty()) : kNone) {}
    LastOccurrence(std::u16string_view text, std::u16string_view word)
        : position_(text.rfind(word)) {}
    bool atOrAfter(std::size_t start) const { return position_ != kNone && position_ >= start; }

private:
    std::size_t position_;
};

// Takes a caption in brackets off the end of the sound file's text.
void takeCaption(const KeywordTable& words, SoundFile& sound) {
    constexpr std::u16string_view kCaption = u"caption";
    const std::u16string_view text = sound.file;
    if (text.empty() || (text.back() != u')' && !words[u"toji_kakko"].firstUnitIs(text.back()))) {
        return;
    }
    const LastOccurrence captionWord(text, words[u"caption"]);
    const LastOccurrence captionEnglish(text, kCaption);
    const LastOccurrence colon(text, u":");
    const LastOccurrence colonWord(text, words[u"colon"]);
    const Word& brackets = words[u"kakko_kakko"];
    std::size_t failed = 0; // where the last group that is none begins
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (at < failed || !brackets.holds(text[at])) {
            continue; // behind a bracket that is a blank comes the same group
        }
        std::u16string_view group = dropAndTrim(text, at + 1, words);
        const auto startOf = [text](std::u16string_view part) {
            return static_cast<std::size_t>(part.data() - text.data());
        };
        failed = group.empty() ? text.size() : startOf(group);
        if (captionWord.atOrAfter(startOf(group))) {
            group = dropAndTrim(group, 2, words);
        } else if (captionEnglish.atOrAfter(startOf(group))) {
            group = dropAndTrim(group, kCaption.size(), words);
        } else {
            continue;
        }
        if (colon.atOrAfter(startOf(group)) || colonWord.atOrAfter(startOf(group))) {
            group = dropUnits(group, 1);
            group.remove_suffix(group.empty() ? 0 : 1);
            sound.caption = trimScriptText(group, words);
            sound.file = trimScriptText(text.substr(0, at), words);
            return;
        }
    }
}

bool switchGesture(CharacterCall& call, bool on) {
    if (!readTail(call.run, call.rest).has_value()) {
        return false;
    }
    call.run.autoGesture[Run::slot(call.name)] = on;
    appendAutoGesture(call.name, on, call.out);
    return true;
}

} // namespace

bool speakNormally(CharacterCall& call) {
    const CharacterModel* model = call.run.staging.currentModelOf(call.name);
    return model != nullptr ? setTalkSpeed(call, model->speed, u"normal")
                            : setTalkSpeed(call, TalkSpeed::normally, u"normal");
}

bool speakSlow(CharacterCall& call) {
    return setTalkSpeed(call, TalkSpeed::slow, u"slow");
}

bool speakVerySlow(CharacterCall& call) {
    return setTalkSpeed(call, TalkSpeed::verySlow, u"very slow");
}

bool speakFast(CharacterCall& call) {
    return setTalkSpeed(call, TalkSpeed::fast, u"fast");
}

bool speakVeryFast(CharacterCall& call) {
    return setTalkSpeed(call, TalkSpeed::veryFast, u"very fast");
}

bool playSoundFile(CharacterCall& call) {
    const auto text = behindColon(call);
    if (!text.has_value()) {
        return false;
    }
    SoundFile sound{*text, {}, {}};
    takeTrailingAdverbs(call.run.words, sound.file, sound.adverbs);
    takeCaption(call.run.words, sound);
    call.run.tellFile(FileUse::speech, sound.file);
    std::u16string caption(sound.caption);
    replaceDoubleQuotes(caption);

    std::u16string& out = call.out;
    out.append(u"character: talkfile( name=").append(letterText(call.name));
    out.append(u", filename=\"").append(sound.file).append(u"\"");
    if (!sound.adverbs.degree.empty()) {
        out.append(u", lipsync=").append(sound.adverbs.degree);
    }
    out.append(u", caption=\"").append(caption).append(u"\"");
    if (!sound.adverbs.blocking.empty()) {
        out.append(u", wait=").append(sound.adverbs.blocking);
    }
    out += u" )\n";
    return true;
}

bool setVoiceType(CharacterCall& call) {
    const auto text = behindColon(call);
    if (!text.has_value()) {
        return false;
    }
    const std::size_t separator = findSeparator(*text, call.run.words);
    const std::u16string_view given =
        separator == kNone ? *text : trimScriptText(text->substr(0, separator), call.run.words);
    std::u16string voice(given);
    recognizeCommand(voice, call.run.words, call.run.staging.poseNames, *call.run.commands);
    if (!isVoiceType(voice)) {
        call.run.tell(ScriptProblem::voiceUnknown, given);
        return false;
    }
    if (separator != kNone &&
        !readAdverbs(call.run, dropAndTrim(*text, separator + 1, call.run.words)).has_value()) {
        return false;
    }
    call.out.append(u"character: setvoice( name=").append(letterText(call.name));
    call.out.append(u", voicetype=").append(voice).append(u" )\n");
    return true;
}

bool setAutoGesture(CharacterCall& call) {
    return switchGesture(call, true);
}
bool setManualGesture(CharacterCall& call) {
    return switchGesture(call, false);
}

bool setModel(CharacterCall& call) {
    const auto name = behindColon(call);
    if (!name.has_value()) {
        return false;
    }
    StagingDescription& staging = call.run.staging;
    const CharacterModel* model = staging.findModel(call.name, *name);
    if (model == nullptr) {
        call.run.tell(ScriptProblem::modelUnknown, *name);
        return false;
    }
    staging.currentModel.insert_or_assign(call.name, std::u16string(*name));
    call.run.models[Run::slot(call.name)] = model;
    call.out.append(u"// set the model of character ").append(letterText(call.name));
    call.out.append(u" to \"").append(*name).append(u".\"\n");
    call.run.talkSpeed[Run::slot(call.name)] = model->speed;
    return true;
}

} // namespace tvml
