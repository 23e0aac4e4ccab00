// Listening to single lines. Entry: StoryRecorder.
#include "diagnostics/line_story.h"

#include <algorithm>

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

// The front of a phrase, up to its adverbs or what else a separator leads in.
std::u16string_view headOf(std::u16string_view phrase, const KeywordTable& words) {
    const std::size_t separator = findSeparator(phrase, words);
    return separator == kNone ? phrase : trimScriptText(phrase.substr(0, separator), words);
}

// The name in a declared tag's line: its Japanese or its English one.
std::u16string_view declaredName(std::u16string_view line, std::u16string_view english,
                                 const DeclaredTags& tags) {
    std::u16string_view name = line.substr(0, english.size());
    visitNamesStarting(tags.tagNames, line, [&](const TextMap::value_type& entry) {
        const bool found = entry.second == english;
        name = found ? std::u16string_view(entry.first) : name;
        return found;
    });
    return name;
}

} // namespace

LineStory* StoryRecorder::story() {
    const bool wanted = lineCount_ >= first_ && lineCount_ <= last_;
    return wanted && !stories_.empty() ? &stories_.back() : nullptr;
}

void StoryRecorder::descriptionRead(const StagingDescription& staging, const TemplateDb& templates,
                                    char16_t, const DiagnosticLog&) {
    staging_ = &staging;
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

void StoryRecorder::lineStarted(std::int32_t number, std::u16string_view line) {
    lineCount_ = number;
    if (number >= first_ && number <= last_) {
        LineStory& next = stories_.emplace_back();
        next.line = number;
        next.text = line;
    }
}

void StoryRecorder::lineClassified(LineKind kind, std::u16string_view speaker, bool isCommand) {
    if (LineStory* line = story()) {
        line->kind = kind;
        line->isCommand = isCommand;
        line->speaker = kind == LineKind::character ? speaker : std::u16string_view{};
    }
}

void StoryRecorder::rewritten(std::u16string_view before, std::u16string_view after) {
    LineStory* line = story();
    if (line != nullptr && line->isCommand && line->phrase.empty()) {
        line->word = headOf(before, *words_);
        line->phrase = after;
    }
}

void StoryRecorder::recognized(const Recognition& recognition) {
    if (LineStory* line = story(); line != nullptr && recognition.word != nullptr) {
        line->key = recognition.word->key.name();
        line->word = (*words_)[recognition.word->key].textOrEmpty();
    }
}

// The list is read again item by item, by the reader's own look-ups.
void StoryRecorder::adverbsRead(std::u16string_view list, const AdverbValues&) {
    LineStory* line = story();
    if (line == nullptr) {
        return;
    }
    line->adverbs.clear();
    while (!list.empty()) {
        const std::u16string_view item = headOf(list, *words_);
        const AdverbRow* row = findAdverb(item, *words_);
        if (row != nullptr) {
            line->adverbs.push_back({std::u16string(item), std::u16string(row->english),
                                     fieldName(row->field), row->value});
        }
        const std::size_t separator = findSeparator(list, *words_);
        list =
            separator == kNone ? std::u16string_view{} : dropAndTrim(list, separator + 1, *words_);
    }
}

void StoryRecorder::nameTag(LineStory& line) const {
    const std::u16string_view trimmed = trimScriptText(line.text, *words_);
    for (std::size_t i = 0; i < kMarkerCount; ++i) {
        const auto marker = static_cast<Marker>(i);
        if (markerName(marker) == line.takenName) {
            const std::size_t units = markerUnits(marker, trimmed, *words_);
            if (units != kNone) {
                line.word = trimmed.substr(0, units);
                return;
            }
        }
    }
    line.word = declaredName(trimmed, line.takenName, staging_->tags);
}

void StoryRecorder::taken(TakenBy by, std::u16string_view name) {
    if (LineStory* line = story()) {
        line->takenBy = by;
        line->takenName = name;
        if (by == TakenBy::tag) {
            nameTag(*line);
        }
    }
}

void StoryRecorder::templateChosen(std::u16string_view element, std::size_t number) {
    LineStory* line = story();
    if (line == nullptr) {
        return;
    }
    const auto used = std::ranges::find_if(line->templates, [&](const TemplateStory& one) {
        return one.element == element && one.number == number;
    });
    if (used != line->templates.end()) {
        ++used->times;
        return;
    }
    const auto place = variants_.find(number);
    line->templates.push_back({std::u16string(element), number,
                               place == variants_.end() ? VariantPlace{} : place->second, 1});
}

void StoryRecorder::titleCard(std::u16string_view, bool completed) {
    if (LineStory* line = story()) {
        line->startsCard = !completed;
        line->completesCard = completed;
    }
}

} // namespace tvml
