// The steps of a conversion in their order. Entry: ConversionRun::convert.
#include "filter/conversion_run.h"

#include <limits>

#include "filter/scanners.h"
#include "generation/commands.h"
#include "generation/talk.h"
#include "reading/script_lines.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

constexpr std::u16string_view kPlayFromHere = u"playfromhere()\n";
constexpr std::u16string_view kEnd = u"end()\n";

// A description ends at its first U+0000, as a script does.
std::u16string_view upToTerminator(std::u16string_view text) {
    return text.substr(0, findUnit(text, u'\0'));
}

} // namespace

ConversionRun::ConversionRun(const KeywordTable& words, const TvmlIniMirvol& settings,
                             const platform::Platform& platform, const Listeners* listeners)
    : words_(words), platform_(platform), run_(words, settings, listeners),
      reader_(words, run_.staging), body_(words, listeners), tags_(run_, body_) {}

TvmlScript ConversionRun::convert(const ConversionRequest& request) {
    run_.random = RandomGenerator(platform_.secondsNow());
    readDescription(request);
    run_.resolveModels();
    applyCharacterSpeeds(run_);
    for (const PlainElement text : {PlainElement::setting, PlainElement::opening}) {
        scanAutoGesture(run_, run_.staging.plain(text));
    }
    for (const PlainElement text : {PlainElement::setting, PlainElement::opening}) {
        scanCameraAutoSwitching(run_, run_.staging.plain(text));
    }
    convertLines(request);
    insertCharacterModels(run_);
    applyInitialSet(run_);
    TvmlScript script = assembleScript(run_, body_);
    if (run_.listeners != nullptr) {
        run_.listeners->tell(script);
    }
    return script;
}

void ConversionRun::readDescription(const ConversionRequest& request) {
    DiagnosticLog log;
    DescriptionReader reader(words_, platform_, run_.staging, run_.templates, log);
    run_.state.lastCharacter = request.parsed != nullptr
                                   ? reader.readFilDescription(request.parsed)
                                   : reader.readFilDescription(upToTerminator(request.description));
    if (run_.listeners != nullptr) {
        run_.listeners->tell(
            Programme{reader_, run_.staging, run_.templates, run_.state.lastCharacter, log});
    }
}

void ConversionRun::convertLines(const ConversionRequest& request) {
    context_ = {run_.state.lastCharacter, run_.state.conditions()};
    std::int32_t& number = run_.state.lineNumber;
    for (ScriptLines lines(request.script); lines.next();) {
        number += number < std::numeric_limits<std::int32_t>::max() ? 1 : 0;
        if (number == request.playFrom) {
            mark(kPlayFromHere, request.playFrom);
        }
        if (std::int64_t{number} == std::int64_t{request.playTo} + 1) {
            mark(kEnd, request.playTo);
        }
        convertLine(lines.line(), lines.isPlain());
    }
    const std::int64_t behindLast = std::int64_t{request.playTo} - number;
    if (behindLast == 0 || behindLast == 1) {
        mark(kEnd, request.playTo);
    }
}

void ConversionRun::convertLine(std::u16string_view text, bool isPlain) {
    reader_.read(text, context_, line_, {isPlain});
    if (run_.listeners == nullptr) {
        return writeLine(isPlain);
    }
    run_.outcome.clear(run_.state.lineNumber);
    writeLine(isPlain);
    run_.listeners->tell(line_, run_.outcome);
}

void ConversionRun::writeLine(bool isPlain) {
    if (line_.talk() != nullptr) {
        text_.clear();
        talk_.clear();
        generateTalk(run_, line_, !isPlain, {text_, talk_});
        body_.append(talk_, run_.state.lineNumber);
        body_.append(text_, run_.state.lineNumber);
        return;
    }
    if (line_.tag() != nullptr) {
        tags_.write(*line_.tag());
    } else if (line_.command() != nullptr) {
        writeCommand();
    }
    context_.conditions = run_.state.conditions();
}

void ConversionRun::writeCommand() {
    const RecognizedCommand& command = *line_.command();
    if (!command.taken) {
        return;
    }
    text_.clear();
    if (command.spec != nullptr && command.spec->taker == Taker::staging) {
        generateStagingCommand(run_, command, text_);
    } else {
        generateCharacterCommand(run_, line_, text_);
    }
    body_.append(text_, run_.state.lineNumber);
}

// A line that tells the player where to begin or to end; no script line wrote it.
void ConversionRun::mark(std::u16string_view text, std::int32_t line) {
    body_.append(text, line, true);
}

} // namespace tvml
