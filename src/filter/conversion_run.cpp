// The steps of a conversion in their order. Entry: ConversionRun::convert.
#include "filter/conversion_run.h"

#include <limits>

#include "filter/scanners.h"
#include "generation/commands.h"
#include "generation/talk.h"
#include "reading/brackets.h"
#include "reading/script_text.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

constexpr std::u16string_view kPlayFromHere = u"playfromhere()\n";
constexpr std::u16string_view kEnd = u"end()\n";
constexpr std::u16string_view kNoSpeaker = u"NO";

// A script and a description end at their first U+0000.
std::u16string_view upToTerminator(std::u16string_view text) {
    return text.substr(0, findUnit(text, u'\0'));
}

bool isCommand(std::u16string_view line, const KeywordTable& words) {
    return (line.starts_with(u'(') || words[u"kakko"].starts(line)) &&
           endsWithClosingBracket(line, words);
}

} // namespace

ConversionRun::ConversionRun(KeywordTable& words, TvmlIniMirvol& settings,
                             const platform::Platform& platform, ConversionReport* report)
    : words_(words), settings_(settings), platform_(platform), run_(words, settings, report),
      body_(words, report), tags_(run_, body_) {}

TvmlScript ConversionRun::convert(const ConversionRequest& request) {
    words_.load(platform_);
    settings_.load();
    markers_.emplace(words_);
    run_.commands.emplace(words_);
    if (run_.report != nullptr) {
        run_.report->vocabularyLoaded(words_);
    }
    run_.random = RandomGenerator(platform_.secondsNow());
    readDescription(upToTerminator(request.description));
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
    if (run_.report != nullptr) {
        run_.report->finished(script);
    }
    return script;
}

void ConversionRun::readDescription(std::u16string_view description) {
    DiagnosticLog log;
    ReadingOptions options;
    options.keepPositions = run_.report != nullptr && run_.report->wantsPositions();
    DescriptionReader reader(words_, platform_, run_.staging, run_.templates, log);
    run_.state.lastCharacter = reader.readFilDescription(description, options);
    if (run_.report != nullptr) {
        run_.report->descriptionRead(run_.staging, run_.templates, run_.state.lastCharacter, log);
    }
}

void ConversionRun::convertLines(const ConversionRequest& request) {
    std::int32_t& number = run_.state.lineNumber;
    std::u16string_view rest = upToTerminator(request.script);
    while (!rest.empty()) {
        number += number < std::numeric_limits<std::int32_t>::max() ? 1 : 0;
        run_.line = findFirstLine(rest);
        const std::size_t end = run_.line.end;
        const std::u16string_view line = rest.substr(0, end);
        rest = end == kNone ? std::u16string_view{} : rest.substr(end + 1);
        if (run_.report != nullptr) {
            run_.report->lineStarted(number, line);
        }
        if (number == request.playFrom) {
            mark(kPlayFromHere, request.playFrom);
        }
        if (std::int64_t{number} == std::int64_t{request.playTo} + 1) {
            mark(kEnd, request.playTo);
        }
        convertLine(line);
    }
    const std::int64_t behindLast = std::int64_t{request.playTo} - number;
    if (behindLast == 0 || behindLast == 1) {
        mark(kEnd, request.playTo);
    }
}

void ConversionRun::convertLine(std::u16string_view untrimmed) {
    std::u16string_view line = untrimmed;
    const LineKind kind = classifyLine(line, run_.staging.tags, words_, *markers_);
    switch (kind) {
    case LineKind::empty:
        if (run_.report != nullptr) {
            run_.report->lineClassified(kind, {}, false);
        }
        return;
    case LineKind::tag:
        if (run_.report != nullptr) {
            run_.report->lineClassified(kind, {}, false);
        }
        tags_.write(line, untrimmed);
        return;
    case LineKind::character: {
        const std::u16string_view speaker = takeSpeaker(line);
        convertSpoken(line, speaker);
        return;
    }
    case LineKind::other:
        convertSpoken(line, kNoSpeaker);
        return;
    }
}

// Takes the letter and the colon off the line. A letter that the programme does
// not have is "A".
std::u16string_view ConversionRun::takeSpeaker(std::u16string_view& line) {
    const std::u16string_view mark = line.substr(0, 1);
    line = dropAndTrim(dropAndTrim(line, 1, words_), 1, words_);
    const std::u16string_view letter = characterLetterOf(mark, words_);
    if (letter.empty() || letter.front() > run_.state.lastCharacter) {
        run_.tell(ScriptProblem::speakerReplaced, mark);
        return letterText(u'A');
    }
    return letter;
}

void ConversionRun::convertSpoken(std::u16string_view line, std::u16string_view speaker) {
    const bool command = isCommand(line, words_);
    const bool captioned = command && findCaption(line, words_).has_value();
    if (run_.report != nullptr) {
        run_.report->lineClassified(speaker == kNoSpeaker ? LineKind::other : LineKind::character,
                                    speaker, command && !captioned);
        if (captioned) {
            run_.report->problem(ScriptProblem::captionMakesTalk, line, {});
        }
    }
    line_.clear();
    if (!command || captioned) {
        talk_.clear();
        generateTalk(run_, speaker == kNoSpeaker ? letterText(u'A') : speaker, line,
                     {line_, talk_});
        body_.append(talk_);
    } else {
        const std::u16string phrase = commandPhrase(run_, line);
        const bool taken = (speaker == kNoSpeaker && generateStagingCommand(run_, phrase, line_)) ||
                           generateCharacterCommand(run_, speaker, phrase, line_);
        if (!taken) {
            run_.tell(ScriptProblem::commandUnknown, phrase);
        }
    }
    body_.append(line_);
}

// A line of the player's, which no script line wrote.
void ConversionRun::mark(std::u16string_view text, std::int32_t line) {
    if (run_.report != nullptr) {
        run_.report->playMark(line);
    }
    body_.append(text);
}

} // namespace tvml
