// Command phrases, adverb lists, numbers.
#include "reading/command_recognition.h"

#include "support/rows.h"

namespace tvml {
namespace {

TEST(CommandRecognition, Phrases) {
    const TextMap poses{
        {u"踊る", u"dance"}, {u"喜", u"glad"}, {u"bow", u"deep bow"}, {u"", u"still"}};
    checkRows("reading/phrases.rows", [&](const Row& row) {
        const KeywordTable words = tableOf(row.words);
        std::u16string phrase = row.input;
        recognizeCommand(phrase, words, poses, CommandIndex(words));
        return shown(phrase);
    });
}

TEST(CommandRecognition, AdverbLists) {
    checkRows("reading/adverbs.rows", [](const Row& row) {
        AdverbValues values{u"old", u"old", u"old"};
        const bool accepted = parseAdverbs(row.input, tableOf(row.words), values);
        std::string result;
        for (const std::u16string_view value : {values.speed, values.degree, values.blocking}) {
            result += (value.empty() ? "-" : shown(value)) + " ";
        }
        return result + (accepted ? "yes" : "no");
    });
}

TEST(CommandRecognition, AdverbsLoseFixedUnits) {
    const KeywordTable words = tableOf(shippedWords({{u"much", u"大"}, {u"slow", u"とても"}}));
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"とても速く", "very fast"}, {u"とても遅く", "slowも遅く"},
        {u"大いに笑う", "muchう"},    {u"大", "much"},
        {u"同時に", "no blockingに"}, {u"fast", "fast"}};
    for (const auto& [given, translated] : rows) {
        std::u16string item(given);
        translateAdverb(item, words);
        EXPECT_EQ(shown(item), translated);
    }
}

TEST(CommandRecognition, Numbers) {
    const KeywordTable words = tableOf(shippedWords({{u"num7", u"77"}, {u"num8", u"0"}}));
    checkRows("reading/numbers.rows",
              [&](const Row& row) { return shown(parseNumber(row.input, words)); });
}

} // namespace
} // namespace tvml
