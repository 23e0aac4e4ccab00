// Entries: commandPhrase, readTail, readCount and the letters of shots.
#include "generation/command_arguments.h"

#include "generation/commands.h"
#include "reading/script_text.h"

namespace tvml {

std::u16string commandPhrase(const Run& run, std::u16string_view line) {
    line.remove_prefix(line.empty() ? 0 : 1);
    line.remove_suffix(line.empty() ? 0 : 1);
    line = trimScriptText(line, run.words);
    std::u16string phrase(line);
    const Recognition recognition =
        recognizeCommand(phrase, run.words, run.staging.poseNames, *run.commands);
    if (run.report != nullptr) {
        run.report->rewritten(line, phrase);
        run.report->recognized(recognition);
    }
    return phrase;
}

std::optional<AdverbValues> readAdverbs(const Run& run, std::u16string_view list) {
    AdverbValues values;
    std::u16string_view rejected;
    if (!parseAdverbs(list, run.words, values, &rejected)) {
        run.tell(rejected.empty() ? ScriptProblem::adverbMissing : ScriptProblem::adverbUnknown,
                 rejected.empty() ? list : rejected);
        return std::nullopt;
    }
    if (run.report != nullptr) {
        run.report->adverbsRead(list, values);
    }
    return values;
}

std::optional<AdverbValues> readTail(const Run& run, std::u16string_view rest) {
    if (rest.empty()) {
        return AdverbValues{};
    }
    rest = trimScriptText(rest, run.words);
    if (!startsWithSeparator(rest, run.words)) {
        run.tell(ScriptProblem::separatorMissing, rest);
        return std::nullopt;
    }
    return readAdverbs(run, dropAndTrim(rest, 1, run.words));
}

bool isShotLetter(char16_t unit) {
    const auto within = [unit](char16_t first, char16_t last) {
        return unit >= first && unit <= last;
    };
    return within(u'a', u'z') || within(u'A', u'Z') || within(0xFF41, 0xFF5A) ||
           within(0xFF21, 0xFF3A);
}

char16_t programmeLetter(const Run& run, std::u16string_view unit) {
    const std::u16string_view letter = characterLetterOf(unit, run.words);
    if (letter.empty() || letter.front() > run.state.lastCharacter) {
        run.tell(ScriptProblem::letterReplaced, unit);
        return u'A';
    }
    return letter.front();
}

std::optional<Count> readCount(const Run& run, std::u16string_view text, std::u16string_view unit,
                               bool negativeAllowed) {
    const std::size_t blank = text.find(u' ');
    std::u16string number;
    if (blank != kNone) {
        number = parseNumber(text.substr(0, blank), run.words);
    }
    if (number.empty() || (!negativeAllowed && number.front() == u'-')) {
        run.tell(ScriptProblem::numberInvalid, text.substr(0, blank));
        return std::nullopt;
    }
    std::u16string_view rest = dropAndTrim(text, blank, run.words);
    if (!rest.starts_with(unit)) {
        run.tell(ScriptProblem::unitMissing, rest, unit);
        return std::nullopt;
    }
    rest = rest.substr(unit.size());
    if (rest.starts_with(u's')) {
        rest = rest.substr(1);
    }
    return Count{std::move(number), rest};
}

} // namespace tvml
