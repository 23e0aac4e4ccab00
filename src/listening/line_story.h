// What a conversion did with some lines of its script, step by step: what each
// line was taken for, which words and rows took it, which templates wrote it.
#ifndef TVML_LISTENING_LINE_STORY_H
#define TVML_LISTENING_LINE_STORY_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "run/events.h"

namespace tvml {

// An adverb as the line has it, and what it sets: "speed", "degree" or "wait".
struct AdverbStory {
    std::u16string item;
    std::u16string english;
    std::u16string_view field;
    std::u16string_view value;
};

// Which of its key's variants a template is, both from 1; 0 for a built-in text
// and for elements without variants.
struct VariantPlace {
    std::size_t number = 0;
    std::size_t count = 0;
    bool atRandom = false;
    std::u16string key; // letter or letters that it is for, empty for all
};

struct TemplateStory {
    std::u16string element;
    std::size_t number = 0; // of the element in the description, 0 for a built-in text
    VariantPlace variant;
    std::size_t times = 1; // that the line used it
};

// Texts are in UTF-16 and owned.
struct LineStory {
    std::int32_t line = 0;
    std::u16string text; // untrimmed
    LineKind kind = LineKind::empty;
    bool isCommand = false;
    std::u16string speaker; // letter, empty when the line names none

    // The word at the front of the command or tag line, as it is written, and
    // the key of the vocabulary that has it; empty for English words.
    std::u16string word;
    std::u16string key;

    // The phrase as the tables are asked for it, with its canonical name; empty
    // for a line that is no command.
    std::u16string phrase;
    TakenBy takenBy = TakenBy::nothing;
    std::u16string takenName; // of the row, the pose, the marker or the declared tag

    std::vector<AdverbStory> adverbs; // of the last list that was understood
    std::vector<TemplateStory> templates;
    CardStep card = CardStep::none;
};

// Give it to the run as a listener, convert, and take the stories.
class StoryRecorder final : public RunListener {
public:
    // Of the lines `first` to `last`, both from 1.
    StoryRecorder(std::int32_t first, std::int32_t last) : first_(first), last_(last) {}

    // One for each of the lines that the script has.
    std::vector<LineStory> take() { return std::move(stories_); }

    // Lines of the script.
    std::int32_t lineCount() const { return lineCount_; }

    void programmeRead(const Programme& programme) override;
    void lineConverted(const ScriptLine& line, const LineOutcome& outcome) override;

private:
    const std::int32_t first_;
    const std::int32_t last_;
    std::int32_t lineCount_ = 0;
    std::vector<LineStory> stories_;
    const KeywordTable* words_ = nullptr;          // while the run lasts
    std::map<std::size_t, VariantPlace> variants_; // by the element's number
};

} // namespace tvml

#endif
