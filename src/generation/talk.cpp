// Filling of talk commands. Entry: generateTalk.
#include "generation/talk.h"

#include <array>
#include <utility>

#include "reading/brackets.h"
#include "reading/script_text.h"
#include "reading/talk_splitter.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

// So many units of prepared templates a run keeps; a description can make them
// as long as it likes, and a script can ask for as many as it likes.
constexpr std::size_t kPreparedUnits = std::size_t{4} << 20;
constexpr std::size_t kUnitsOfOne = 128; // besides its text

// The first six placeholders in the order of filling. What they are filled with
// seldom changes, so each character's templates are kept with them filled in.
std::u16string preparedText(const Variant& variant, char16_t letter, const CharacterModel& model,
                            std::u16string_view talkSpeed) {
    const std::array<Filling, 6> fillings{{
        {u"$1", letterText(letter)},
        {u"$3", model.lipsync},
        {u"$5", talkSpeed},
        {u"$6", model.pitch},
        {u"$7", model.intonation},
        {u"$8", model.volume},
    }};
    std::u16string text = variant.text.text();
    fillText(text, fillings);
    return text;
}

// A template, null for none; it stays as long as the run or until the next one
// is selected.
struct SelectedTalk {
    const Template* text = nullptr;
    bool stays = false;
};

SelectedTalk prepareTalk(PreparedTalks& talks, const PreparedTalks::Key& key,
                         const Variant& variant, std::u16string_view speed) {
    const auto& [captioned, letter, ofVariant, model, speedAddress] = key;
    const auto found = talks.kept.find(key);
    if (found != talks.kept.end()) {
        return {&found->second, true};
    }
    Template text(preparedText(variant, letter, *model, speed));
    const std::size_t units = text.text().size() + kUnitsOfOne;
    if (units > kPreparedUnits - talks.units) {
        talks.unkept = std::move(text);
        return {&talks.unkept, false};
    }
    talks.units += units;
    return {&talks.kept.emplace(key, std::move(text)).first->second, true};
}

// The talk look-up: the next talk template of the character with its name and
// its model's values filled in.
SelectedTalk selectTalkTemplate(Run& run, char16_t letter, bool captioned) {
    const CharacterModel* model = run.models[Run::slot(letter)];
    if (model == nullptr) {
        run.tell(ScriptProblem::modelMissing, {}, letterText(letter));
        return {};
    }
    const auto element =
        run.state.subImageShown ? CharacterElement::subimagetalk : CharacterElement::talk;
    const Variant* variant = run.select(element, letter);
    if (variant == nullptr) {
        return {};
    }
    const std::u16string_view speed = run.talkSpeed[Run::slot(letter)];
    PreparedTalk& latest = run.preparedTalks.latest[captioned ? 1 : 0][Run::slot(letter)]
                                                   [variant->element % PreparedTalks::kPlaces];
    if (latest.variant == variant && latest.model == model && latest.speed == speed.data()) {
        return {latest.text, true};
    }
    const SelectedTalk talk = prepareTalk(
        run.preparedTalks, {captioned, letter, variant, model, speed.data()}, *variant, speed);
    if (talk.stays) {
        latest = {variant, model, speed.data(), talk.text};
    }
    return talk;
}

// Writes the pieces of one talk line.
class TalkLine final : public PieceSink {
public:
    // `lineStays` is false for a line that the pieces cannot refer to.
    TalkLine(Run& run, char16_t speaker, TalkOutput out, bool lineStays)
        : run_(run), speaker_(speaker), out_(out), canWait_(lineStays) {}

    // Speaks a text with the rules of its script.
    void say(std::u16string_view speech, bool blocking) {
        blocking_ = blocking;
        if (!speakerIsKnown()) {
            return;
        }
        if (isAsciiText(speech)) {
            splitEnglishTalk(speech, run_.words, *this);
        } else {
            splitJapaneseTalk(speech, run_.words, *this);
        }
    }

    void sayWithCaption(std::u16string_view speech, std::u16string_view caption, bool blocking) {
        emit({nullptr, speech, caption, blocking, true});
    }

    void piece(std::u16string_view text, bool lastOfSpeech, bool cutInWord) override {
        if (cutInWord) {
            run_.tell(ScriptProblem::sentenceCutInWord, text);
        }
        emit({nullptr, text, {}, blocking_ || !lastOfSpeech, false});
    }

private:
    bool speakerIsKnown() const { return speaker_ >= u'A' && speaker_ <= run_.state.lastCharacter; }

    // A piece that cannot be spoken silences the whole line.
    void emit(TalkPiece piece) {
        const SelectedTalk talk = failed_ || !speakerIsKnown()
                                      ? SelectedTalk{}
                                      : selectTalkTemplate(run_, speaker_, piece.captioned);
        if (talk.text == nullptr) {
            failed_ = true;
            out_.text.clear();
            out_.pieces.clear();
            return;
        }
        if (run_.report != nullptr) {
            run_.report->spoken(speaker_, piece.speech, run_.talkSpeed[Run::slot(speaker_)]);
        }
        piece.text = talk.text;
        canWait_ = canWait_ && talk.stays && piece.canWait(run_.line.mayHoldMarks);
        if (canWait_) {
            out_.pieces.push_back(piece);
        } else {
            writeText(piece);
        }
    }

    // After the first piece that cannot wait, nothing of the line does.
    void writeText(const TalkPiece& piece) {
        for (const TalkPiece& earlier : out_.pieces) {
            earlier.text->fill(earlier.fillings(), out_.text);
        }
        out_.pieces.clear();
        piece.text->fill(piece.fillings(), out_.text);
    }

    Run& run_;
    const char16_t speaker_;
    const TalkOutput out_;
    bool canWait_;
    bool blocking_ = true;
    bool failed_ = false;
};

// One talk line while its bracket groups are read: `whole` is what is said when
// no caption is found, `inner` is `whole` without its closing bracket.
struct Groups {
    std::u16string_view whole;
    std::u16string_view inner;
    bool blocking = true;
};

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

void tellUnknownGroup(const Run& run, std::u16string_view inner) {
    if (run.report == nullptr) {
        return;
    }
    const std::size_t open = findLastOpeningBracket(inner, run.words);
    run.tell(ScriptProblem::captionWordUnknown, inner.substr(open == kNone ? 0 : open));
}

void sayCaptionedOrWhole(Run& run, const Groups& groups, TalkLine& talk) {
    if (const auto group = findCaption(groups.inner, run.words)) {
        talk.sayWithCaption(trimScriptText(groups.inner.substr(0, group->open), run.words),
                            group->caption, groups.blocking);
        return;
    }
    tellUnknownGroup(run, groups.inner);
    talk.say(groups.whole, groups.blocking);
}

void sayLine(Run& run, std::u16string_view line, TalkLine& talk) {
    if (!endsWithClosingBracket(line, run.words)) {
        talk.say(line, true);
        return;
    }
    Groups groups{line, withoutLastUnit(line, run.words)};
    const std::size_t open = findLastOpeningBracket(groups.inner, run.words);
    if (open == kNone) {
        run.tell(ScriptProblem::bracketUnopened, line.substr(line.size() - 1));
        talk.say(line, true);
        return;
    }
    const auto blocking = blockingValue(dropAndTrim(groups.inner, open + 1, run.words), run.words);
    if (blocking.has_value()) {
        groups.blocking = *blocking;
        groups.whole = trimScriptText(groups.inner.substr(0, open), run.words);
        const bool anotherGroup =
            !groups.whole.empty() && (groups.whole.back() == u')' ||
                                      run.words[u"toji_kakko"].firstUnitIs(groups.whole.back()));
        if (!anotherGroup) {
            talk.say(groups.whole, groups.blocking);
            return;
        }
        groups.inner = withoutLastUnit(groups.whole, run.words);
    }
    sayCaptionedOrWhole(run, groups, talk);
}

} // namespace

void generateTalk(Run& run, std::u16string_view speaker, std::u16string_view line, TalkOutput out) {
    if (speaker.empty() || line.empty()) {
        return;
    }
    run.state.talkStarted = true;
    std::u16string quoted;
    if (run.line.mayHoldQuotes && findUnit(line, u'"') != kNone) {
        quoted = line;
        replaceDoubleQuotes(quoted);
        if (run.report != nullptr) {
            run.report->rewritten(line, quoted);
        }
        line = quoted;
    }
    TalkLine talk(run, speaker.front(), out, quoted.empty());
    sayLine(run, line, talk);
}

} // namespace tvml
