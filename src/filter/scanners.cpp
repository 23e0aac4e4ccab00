// Entries: the functions of the header.
#include "filter/scanners.h"

#include "filter/tvml_patterns.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

constexpr std::u16string_view kSkipScript = u"skipscript";

bool isSkipSwitch(std::u16string_view text, std::size_t at, std::u16string_view switchWord,
                  const KeywordTable& words) {
    return startsLine(text, at) && bool(PatternMatch(text, at, words)
                                            .then(kSkipScript)
                                            .then(u"(")
                                            .then(u"switch")
                                            .then(u"=")
                                            .then(switchWord)
                                            .then(u")"));
}

// Calls `visit(position)` for every occurrence of `word`, from the start.
template <typename Visit>
void visitOccurrences(std::u16string_view text, std::u16string_view word, Visit visit) {
    for (std::size_t at = findText(text, word); at != kNone; at = findText(text, word, at + 1)) {
        visit(at);
    }
}

// The letter's model that gives its talk speed or its TVML text: by Japanese
// name, then, when that one gives nothing, by English name. Null for none.
const CharacterModel* modelWith(const StagingDescription& staging, char16_t letter,
                                std::u16string_view name, std::u16string CharacterModel::*field) {
    for (const ModelTable* table : {&staging.modelsByJapaneseName, &staging.modelsByEnglishName}) {
        const CharacterModel* model = StagingDescription::modelIn(*table, letter, name);
        if (model != nullptr && !(model->*field).empty()) {
            return model;
        }
    }
    return nullptr;
}

// The line that a set command of `setting` becomes; empty when it stays.
std::u16string initialSetLine(Run& run, std::u16string_view command) {
    const bool opens = command.starts_with(u"openmodel");
    if (!opens && !command.starts_with(u"change")) {
        return {};
    }
    const StagingDescription& staging = run.staging;
    const auto english = staging.setEnglishNames.find(run.initialSetName);
    if (english != staging.setEnglishNames.end()) {
        run.initialSetName = english->second;
    }
    if (!opens) {
        return u"set: change( name=" + run.initialSetName + u" )";
    }
    const auto file = staging.setEnglishFiles.find(run.initialSetName);
    if (file == staging.setEnglishFiles.end()) {
        return {};
    }
    return u"set: openmodel( model=" + run.initialSetName + u", filename=\"" + file->second +
           u"\" )";
}

} // namespace

std::size_t findSkipSwitch(std::u16string_view text, std::u16string_view switchWord,
                           const KeywordTable& words) {
    std::size_t at = findText(text, kSkipScript);
    while (at != kNone && !isSkipSwitch(text, at, switchWord, words)) {
        at = findText(text, kSkipScript, at + 1);
    }
    return at;
}

std::size_t findLastSkipLine(std::u16string_view text, const KeywordTable& words) {
    std::size_t at = text.rfind(kSkipScript);
    while (at != kNone && !isSkipSwitch(text, at, u"off", words)) {
        at = at == 0 ? kNone : text.rfind(kSkipScript, at - 1);
    }
    return at;
}

bool endsSkipped(std::u16string_view text, const KeywordTable& words) {
    const std::size_t off = findSkipSwitch(text, u"off", words);
    const std::size_t on = findSkipSwitch(text, u"on", words);
    return off != kNone && (on == kNone || off < on);
}

void scanAutoGesture(Run& run, std::u16string_view text) {
    visitOccurrences(text, u"character", [&](std::size_t at) {
        char16_t letter = 0;
        bool on = false;
        const PatternMatch match = PatternMatch(text, at, run.words)
                                       .then(u"character")
                                       .then(u":")
                                       .then(u"autogesture")
                                       .then(u"(")
                                       .then(u"name")
                                       .then(u"=")
                                       .thenUnit(letter)
                                       .then(u",")
                                       .then(u"switch")
                                       .then(u"=")
                                       .thenSwitch(on)
                                       .then(u"\n");
        if (match && letter >= u'A' && letter <= run.state.lastCharacter) {
            run.autoGesture[Run::slot(letter)] = on;
        }
    });
}

void scanCameraAutoSwitching(Run& run, std::u16string_view text) {
    visitOccurrences(text, u"camera", [&](std::size_t at) {
        bool on = false;
        const PatternMatch match = PatternMatch(text, at, run.words)
                                       .then(u"camera")
                                       .then(u":")
                                       .then(u"autoswitching")
                                       .then(u"(")
                                       .then(u"switch")
                                       .then(u"=")
                                       .thenSwitch(on)
                                       .then(u"\n");
        if (match) {
            run.state.cameraAutoSwitching = on;
        }
    });
}

void applyCharacterSpeeds(Run& run) {
    for (const auto& [letter, name] : run.staging.currentModel) {
        if (run.staging.findModel(letter, name) != nullptr) {
            const CharacterModel* model =
                modelWith(run.staging, letter, name, &CharacterModel::speed);
            run.talkSpeed[Run::slot(letter)] =
                model != nullptr ? std::u16string_view(model->speed) : u"";
        }
    }
}

void insertCharacterModels(Run& run) {
    std::u16string& setting = run.staging.plain(PlainElement::setting);
    const std::size_t skipOn = findSkipSwitch(setting, u"on", run.words);
    const std::size_t lineEnd = skipOn == kNone ? kNone : setting.find(u'\n', skipOn);
    if (lineEnd == kNone) {
        return;
    }
    std::u16string models;
    for (const auto& [letter, name] : run.staging.currentModel) {
        const CharacterModel* model = modelWith(run.staging, letter, name, &CharacterModel::text);
        if (model != nullptr) {
            run.tellPartChanged(PlainElement::setting, lineEnd + 1 + models.size(), 0,
                                model->text.size(),
                                TextOrigin{u"model_for_char", model->element, 0});
            models += model->text;
        }
    }
    setting.insert(lineEnd + 1, models);
}

void applyInitialSet(Run& run) {
    if (run.initialSetName.empty()) {
        return;
    }
    const std::u16string_view setting = run.staging.plain(PlainElement::setting);
    std::u16string result;
    std::size_t copied = 0;
    visitOccurrences(setting, u"set", [&](std::size_t at) {
        if (at < copied || !startsLine(setting, at)) {
            return;
        }
        const PatternMatch match = PatternMatch(setting, at, run.words).then(u"set").then(u":");
        const std::u16string line = match ? initialSetLine(run, match.rest()) : std::u16string();
        if (!line.empty()) {
            result.append(setting, copied, at - copied);
            copied = std::min(setting.find(u'\n', at), setting.size());
            run.tellPartChanged(PlainElement::setting, result.size(), copied - at, line.size(),
                                TextOrigin{{}, 0, run.initialSetLine});
            result += line;
        }
    });
    result.append(setting, copied);
    run.staging.plain(PlainElement::setting) = std::move(result);
}

std::u16string_view placeholderOf(TitleKind kind) {
    return kind == TitleKind::title ? u"$TITLE" : u"$SUBTITLE";
}

bool TitleTextFinder::continuesAt(std::size_t at) {
    // The blanks between "drawing" and the colon belong to the pattern as well.
    const PatternMatch match = PatternMatch(text_, at, words_, PatternBlanks::drawing)
                                   .then(u"")
                                   .then(u":")
                                   .then(u"settext")
                                   .then(u"(")
                                   .then(u"name")
                                   .then(u"=")
                                   .thenLast(u"TITLETEXT");
    return match && standsBehind(match.position());
}

// Looks at the line on which `from` lies.
void TitleTextFinder::findLastPlaceholder(std::size_t from) {
    lineEnd_ = std::min(findUnit(text_, u'\n', from), text_.size());
    const std::size_t last = text_.substr(from, lineEnd_ - from).rfind(placeholder_);
    placeholderAt_ = last == kNone ? kNone : from + last;
}

// A placeholder stands at or behind `end`, on the same line.
bool TitleTextFinder::standsBehind(std::size_t end) {
    if (end >= lineEnd_) {
        findLastPlaceholder(end);
    }
    return placeholderAt_ != kNone && placeholderAt_ >= end;
}

// Moves `from` on to where a line goes on or begins that holds a placeholder at
// or behind it; false when there is none.
bool TitleTextFinder::toLineWithPlaceholder(std::size_t& from) {
    if (from < lineEnd_ && standsBehind(from)) {
        return true;
    }
    const std::size_t first = findText(text_, placeholder_, from);
    if (first == kNone) {
        return false;
    }
    const std::size_t lineFeed = text_.substr(from, first - from).rfind(u'\n');
    from += lineFeed == kNone ? 0 : lineFeed + 1;
    findLastPlaceholder(first);
    return true;
}

std::size_t TitleTextFinder::next(std::size_t from) {
    for (; toLineWithPlaceholder(from); from = lineEnd_) {
        const std::u16string_view before = text_.substr(0, placeholderAt_);
        std::size_t at = findText(before, kDrawing, from);
        while (at != kNone && !continuesAt(at + kDrawing.size())) {
            at = findText(before, kDrawing, at + kDrawing.size());
        }
        if (at != kNone) {
            return at;
        }
    }
    return kNone;
}

} // namespace tvml
