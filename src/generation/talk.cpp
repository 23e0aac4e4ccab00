// Filling of talk commands. Entry: generateTalk.
#include "generation/talk.h"

#include <array>

#include "reading/brackets.h"
#include "reading/script_text.h"
#include "reading/talk_splitter.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

constexpr std::u16string_view waitValue(bool blocking) {
    return blocking ? u"yes" : u"no";
}

// Writes the pieces of one talk line.
class TalkLine final : public PieceSink {
public:
    TalkLine(Run& run, char16_t speaker, std::u16string& out)
        : run_(run), speaker_(speaker), out_(out), start_(out.size()) {}

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
        emit(speech, caption, waitValue(blocking), true);
    }

    void piece(std::u16string_view text, bool lastOfSpeech, bool cutInWord) override {
        if (cutInWord) {
            run_.tell(ScriptProblem::sentenceCutInWord, text);
        }
        emit(text, {}, waitValue(blocking_ || !lastOfSpeech), false);
    }

private:
    bool speakerIsKnown() const { return speaker_ >= u'A' && speaker_ <= run_.state.lastCharacter; }

    // A piece that cannot be spoken silences the whole line.
    void emit(std::u16string_view speech, std::u16string_view caption, std::u16string_view wait,
              bool withCaption) {
        const Template* talk =
            failed_ || !speakerIsKnown() ? nullptr : selectTalkTemplate(run_, speaker_);
        if (talk == nullptr) {
            failed_ = true;
            out_.resize(start_);
            return;
        }
        const std::array<Filling, 3> fillings{{
            {u"$9", wait},
            {u"$4", caption},
            {u"$2", speech, withCaption},
        }};
        talk->fill(fillings, out_);
        if (run_.report != nullptr) {
            run_.report->spoken(speaker_, speech, run_.talkSpeed[Run::slot(speaker_)]);
        }
    }

    Run& run_;
    const char16_t speaker_;
    std::u16string& out_;
    const std::size_t start_;
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
    OpeningBrackets brackets(groups.inner, run.words);
    for (std::size_t open = brackets.next(); open != kNone; open = brackets.next()) {
        const auto caption = captionOf(groups.inner.substr(open + 1), run.words);
        if (caption.has_value()) {
            talk.sayWithCaption(trimScriptText(groups.inner.substr(0, open), run.words), *caption,
                                groups.blocking);
            return;
        }
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

// So many units of prepared templates a run keeps; a description can make them
// as long as it likes.
constexpr std::size_t kPreparedUnits = std::size_t{4} << 20;

// The first six placeholders in the order of filling. What they are filled with
// seldom changes, so each character's templates are kept with them filled in.
PreparedTalk prepareTalk(const Variant& variant, char16_t letter, const CharacterModel& model,
                         const std::u16string& talkSpeed) {
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
    return {&model, talkSpeed, Template(std::move(text))};
}

} // namespace

const Template* selectTalkTemplate(Run& run, char16_t letter) {
    const CharacterModel* model = run.models[Run::slot(letter)];
    if (model == nullptr) {
        run.tell(ScriptProblem::modelMissing, {}, letterText(letter));
        return nullptr;
    }
    const auto element =
        run.state.subImageShown ? CharacterElement::subimagetalk : CharacterElement::talk;
    const Variant* variant = run.select(element, letter);
    if (variant == nullptr) {
        return nullptr;
    }
    const std::u16string& talkSpeed = run.talkSpeed[Run::slot(letter)];
    auto& kept = run.preparedTalk[Run::slot(letter)];
    const auto found = kept.find(variant);
    if (found != kept.end() && found->second.model == model && found->second.speed == talkSpeed) {
        return &found->second.text;
    }
    PreparedTalk prepared = prepareTalk(*variant, letter, *model, talkSpeed);
    run.preparedUnits += prepared.text.text().size();
    if (run.preparedUnits > kPreparedUnits) {
        run.preparedUnits -= prepared.text.text().size();
        run.unkeptTalk = std::move(prepared);
        return &run.unkeptTalk.text;
    }
    PreparedTalk& entry = kept[variant];
    run.preparedUnits -= entry.text.text().size();
    entry = std::move(prepared);
    return &entry.text;
}

void generateTalk(Run& run, std::u16string_view speaker, std::u16string_view line,
                  std::u16string& out) {
    if (speaker.empty() || line.empty()) {
        return;
    }
    run.state.talkStarted = true;
    std::u16string quoted;
    if (findUnit(line, u'"') != kNone) {
        quoted = line;
        replaceDoubleQuotes(quoted);
        if (run.report != nullptr) {
            run.report->rewritten(line, quoted);
        }
        line = quoted;
    }
    TalkLine talk(run, speaker.front(), out);
    sayLine(run, line, talk);
}

} // namespace tvml
