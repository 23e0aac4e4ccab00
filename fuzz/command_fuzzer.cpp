// Recognition of commands. Fields: vocabulary entries, name of a pose, phrase.
#include <algorithm>

#include "fuzz_input.h"
#include "reading/command_recognition.h"
#include "reading/script_text.h"

namespace {

using namespace tvml;

constexpr std::u16string_view kEnglishPose = u"pose";

bool takes(const CommandSpec& row, const Word& word, std::u16string_view head) {
    const std::size_t at = word.findIn(head);
    const std::size_t letters = lettersBefore(row.match);
    return row.match == Match::equals   ? word.equals(head)
           : row.match == Match::number ? at != kNone
                                        : at == letters;
}

// Without an index: the first row of the table.
const CommandSpec* rowOf(std::u16string_view phrase, const KeywordTable& words) {
    const std::size_t end = findSeparator(phrase, words);
    const auto head = end == kNone ? phrase : trimScriptText(phrase.substr(0, end), words);
    const auto found = std::ranges::find_if(kCommands, [&](const CommandSpec& row) {
        return std::ranges::any_of(
            row.words, [&](const RowWord& word) { return takes(row, words[word.key], head); });
    });
    return found == kCommands.end() ? nullptr : &*found;
}

void checkRecognition(const std::u16string& given, const TextMap& poses,
                      const KeywordTable& words) {
    std::u16string phrase = given;
    const Recognition recognition = recognizeCommand(phrase, words, poses, CommandIndex(words));
    FUZZ_CHECK(recognition.row == rowOf(given, words));
    using enum Recognition::Outcome;
    FUZZ_CHECK(recognition.outcome == row    ? phrase.starts_with(recognition.row->name)
               : recognition.outcome == pose ? phrase.starts_with(kEnglishPose)
                                             : phrase == given);
    FUZZ_CHECK(phrase.size() <= given.size() + 40); // the longest canonical name
}

void checkAdverbs(const std::u16string& list, const KeywordTable& words) {
    AdverbValues values;
    std::u16string_view rejected = list;
    FUZZ_CHECK(parseAdverbs(list, words, values, &rejected) ||
               (rejected.data() >= list.data() &&
                rejected.data() + rejected.size() <= list.data() + list.size()));
    std::u16string item = list;
    translateAdverb(item, words);
    const AdverbRow* adverb = findAdverb(list, words);
    FUZZ_CHECK(adverb == nullptr
                   ? std::ranges::find(kAdverbRows, item, &AdverbRow::english) == kAdverbRows.end()
                   : adverb->english == item);
}

// A number keeps its length and is a number once more.
void checkNumber(const std::u16string& text, const KeywordTable& words) {
    const std::u16string number = parseNumber(text, words);
    FUZZ_CHECK(number.empty() || number.size() == text.size());
    FUZZ_CHECK(number.find_first_not_of(u"-.0123456789") == number.npos);
    FUZZ_CHECK(number.find(u'.') == number.rfind(u'.') && !number.ends_with(u'.'));
    FUZZ_CHECK(number.empty() || parseNumber(number, words) == number);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input = fuzz::inputOf(data, size);
    const KeywordTable words = fuzz::vocabularyOf(fuzz::takeField(input));
    const TextMap poses{{fuzz::unitsOf(fuzz::takeField(input)), std::u16string(kEnglishPose)}};
    const std::u16string phrase(trimScriptText(fuzz::unitsOf(input), words));
    checkRecognition(phrase, poses, words);
    checkAdverbs(phrase, words);
    checkNumber(phrase, words);
    return 0;
}
