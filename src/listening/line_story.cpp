// Listening to single lines. Entry: StoryRecorder.
#include "listening/line_story.h"

#include <algorithm>

#include "reading/script_text.h"

#include "reading/script_text.h"

namespace tvml {
namespace {

std::u16string_view fieldName(std::u16string_view AdverbValues::*field) {
    return field == &AdverbValues::speed    ? u"speed"
           : field == &AdverbValues::degree ? u"degree"
                                            : u"wait";
}

void addVariants(const VariantList* list, SwitchMode mode, std::u16string key,
                 std::map<std::size_t, VariantPlace>& places) {
    const std::size_t count = list == nullptr ? 0 : list->size();
    for (std::size_t number = 1; number <= count; ++number) {
        places[list->variant(number).element] = {number, count, mode == SwitchMode::random, key};
    }
}

// The word at the front of a command: as the vocabulary has it, or as written, up
// to the adverbs.
void nameCommand(const RecognizedCommand& command, const KeywordTable& words, LineStory& story) {
    story.phrase = command.phrase;
    if (const RowWord* word = command.recognition.word) {
        story.word = words[word->key].textOrEmpty();
        story.key = word->key.name();
        return;
    }
    const std::size_t separator = findSeparator(command.inner, words);
    story.word = separator == kNone ? command.inner
                                    : trimScriptText(command.inner.substr(0, separator), words);
}

void addAdverbs(const RecognizedCommand& command, LineStory& story) {
    for (const ReadAdverb& one : command.items) {
        story.adverbs.push_back({std::u16string(one.item), std::u16string(one.row->english),
                                 fieldName(one.row->field), one.row->value});
    }
}

void addTemplate(const TemplateUse& use, const std::map<std::size_t, VariantPlace>& variants,
                 LineStory& story) {
    const auto used = std::ranges::find_if(story.templates, [&](const TemplateStory& one) {
        return one.element == use.element && one.number == use.number;
    });
    if (used != story.templates.end()) {
        ++used->times;
        return;
    }
    const auto place = variants.find(use.number);
    story.templates.push_back({std::u16string(use.element), use.number,
                               place == variants.end() ? VariantPlace{} : place->second, 1});
}

} // namespace

void StoryRecorder::programmeRead(const Programme& programme) {
    const StagingDescription& staging = programme.staging;
    const TemplateDb& templates = programme.templates;
    words_ = &programme.reader.words();
    for (std::size_t i = 0; i < templates.characters.size(); ++i) {
        const TemplateCollection& collection = templates.characters[i];
        const SwitchMode mode = staging.characterModes[i];
        addVariants(collection.variantsOf(sharedKey), mode, {}, variants_);
        for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
            addVariants(collection.variantsOf(letter), mode, {letter}, variants_);
        }
    }
    for (std::size_t i = 0; i < templates.simples.size(); ++i) {
        addVariants(&templates.simples[i].variants(), staging.simpleModes[i], {}, variants_);
    }
    addVariants(templates.twoshot.variantsOf(std::u16string_view(&sharedKey, 1)),
                staging.twoshotMode, {}, variants_);
    for (char16_t first = u'A'; first <= u'Z'; ++first) {
        for (char16_t second = first; second <= u'Z'; ++second) {
            const std::u16string pair{first, second};
            addVariants(templates.twoshot.variantsOf(pair), staging.twoshotMode, pair, variants_);
        }
    }
    addVariants(&templates.title.variants(), staging.titleMode, {}, variants_);
    variants_.erase(0); // all built-in texts
}

void StoryRecorder::lineConverted(const ScriptLine& line, const LineOutcome& outcome) {
    lineCount_ = outcome.number;
    if (outcome.number < first_ || outcome.number > last_) {
        return;
    }
    LineStory& story = stories_.emplace_back();
    story.line = outcome.number;
    story.text = line.text;
    story.kind = line.kind;
    story.isCommand = line.command() != nullptr;
    if (line.speaker != 0) {
        story.speaker = letterText(line.speaker);
    }
    if (const RecognizedCommand* command = line.command()) {
        nameCommand(*command, *words_, story);
        addAdverbs(*command, story);
    } else if (const TagReading* tag = line.tag()) {
        story.word = tag->name;
    }
    story.takenBy = line.takenBy();
    story.takenName = line.takenName();
    for (const TemplateUse& use : outcome.templates) {
        addTemplate(use, variants_, story);
    }
    story.card = outcome.card;
}

} // namespace tvml
