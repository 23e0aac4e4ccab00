// Filling of talk commands. Entry: generateTalk.
#include "generation/talk.h"

#include <array>
#include <utility>

#include "reading/script_text.h"
#include "reading/talk_splitter.h"

namespace tvml {
namespace {

// The most units of prepared templates that a run keeps: a description can make
// a template as long as it likes, and a script can ask for any number of them.
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

// The template stays as long as the run; null for one that is not to be kept.
const Template* prepareTalk(PreparedTalks& talks, const PreparedTalks::Key& key,
                            const Variant& variant, std::u16string_view speed) {
    const auto& [captioned, letter, ofVariant, model, speedAddress] = key;
    const auto found = talks.kept.find(key);
    if (found != talks.kept.end()) {
        return &found->second;
    }
    Template text(preparedText(variant, letter, *model, speed));
    const std::size_t units = text.text().size() + kUnitsOfOne;
    if (units > kPreparedUnits - talks.units) {
        talks.unkept = std::move(text);
        return nullptr;
    }
    talks.units += units;
    return &talks.kept.emplace(key, std::move(text)).first->second;
}

// A template, null for none. One that cannot wait is to be filled before the next
// one is selected.
struct SelectedTalk {
    const Template* text = nullptr;
    bool canWait = false;
};

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
        return {latest.text, latest.canWait};
    }
    const Template* text = prepareTalk(
        run.preparedTalks, {captioned, letter, variant, model, speed.data()}, *variant, speed);
    if (text == nullptr) {
        return {&run.preparedTalks.unkept, false};
    }
    const bool canWait = text->leavesNoMarks(TalkPiece{text, {}, {}, false, captioned}.fillings());
    latest = {variant, model, speed.data(), text, canWait};
    return {text, canWait};
}

// Writes the pieces of one talk line.
class TalkLine final : public PieceSink {
public:
    // `canWait` is false for a line that the pieces cannot refer to.
    TalkLine(Run& run, const ScriptLine& line, bool mayHoldMarks, const TalkOutput& out)
        : run_(run), speaker_(line.actor()), out_(out), blocking_(line.talk()->blocking),
          mayHoldMarks_(mayHoldMarks), canWait_(!line.talkIsCopied()) {}

    const KeywordTable& words() const { return run_.words; }

    bool speakerIsKnown() const { return speaker_ <= run_.state.lastCharacter; }

    void captioned(std::u16string_view speech, std::u16string_view caption) {
        emit(speech, caption, blocking_, true);
    }

    void piece(std::u16string_view text, bool lastOfSpeech, bool cutInWord) override {
        if (cutInWord) {
            run_.tell(ScriptProblem::sentenceCutInWord, text);
        }
        emit(text, {}, blocking_ || !lastOfSpeech, false);
    }

private:
    // A piece that cannot be spoken silences the whole line.
    void emit(std::u16string_view speech, std::u16string_view caption, bool wait, bool captioned) {
        const SelectedTalk talk = failed_ || !speakerIsKnown()
                                      ? SelectedTalk{}
                                      : selectTalkTemplate(run_, speaker_, captioned);
        if (talk.text == nullptr) {
            failed_ = true;
            out_.text.clear();
            out_.pieces.clear();
            return;
        }
        if (run_.listeners != nullptr) {
            run_.outcome.spoken.push_back({speaker_, speech, run_.talkSpeed[Run::slot(speaker_)]});
        }
        const TalkPiece piece{talk.text, speech, caption, wait, captioned};
        canWait_ = canWait_ && talk.canWait && !(mayHoldMarks_ && piece.holdsMarks());
        if (canWait_) {
            out_.pieces.emplace_back() = piece;
        } else {
            writeText(piece);
        }
    }

    // After the first piece that cannot wait, nothing of the line does.
    void writeText(TalkPiece piece) {
        for (const TalkPiece& earlier : out_.pieces) {
            earlier.text->fill(earlier.fillings(), out_.text);
        }
        out_.pieces.clear();
        piece.text->fill(piece.fillings(), out_.text);
    }

    Run& run_;
    const char16_t speaker_;
    const TalkOutput& out_;
    const bool blocking_; // of the last piece
    const bool mayHoldMarks_;
    bool canWait_;
    bool failed_ = false;
};

void generateJapaneseTalk(std::u16string_view speech, TalkLine& talk) {
    splitJapaneseTalk(speech, talk.words(), talk);
}

void generateEnglishTalk(std::u16string_view speech, TalkLine& talk) {
    splitEnglishTalk(speech, talk.words(), talk);
}

} // namespace

void generateTalk(Run& run, const ScriptLine& line, bool mayHoldMarks, TalkOutput out) {
    if (line.content.empty()) {
        return;
    }
    run.state.talkStarted = true;
    const TalkReading& reading = *line.talk();
    TalkLine talk(run, line, mayHoldMarks, out);
    if (reading.captioned) {
        talk.captioned(reading.speech, reading.caption);
    } else if (!talk.speakerIsKnown()) {
        return;
    } else if (isAsciiText(reading.speech)) {
        generateEnglishTalk(reading.speech, talk);
    } else {
        generateJapaneseTalk(reading.speech, talk);
    }
}

} // namespace tvml
