// However a play is written, what it costs to read grows with its length alone.
#include <gtest/gtest.h>

#include "import/play_import.h"
#include "support/counted_work.h"
#include "support/studio.h"

namespace tvml::plays {
namespace {

std::uint64_t workOf(const std::u16string& text, std::optional<PlayFormat> format) {
    ShippedProgramme shipped;
    const std::uint64_t before = countedWork();
    importPlay(
        {text, format, {}, true, shipped.description, shipped.files.words, shipped.files.settings},
        shipped.memory);
    return countedWork() - before;
}

// The notation of expand(); "N" is a number that is another each time.
std::u16string repeated(std::u16string_view pattern, int times) {
    std::u16string text;
    for (int time = 0; time < times; ++time) {
        for (const char16_t unit : pattern) {
            const std::string digits = std::to_string(time);
            unit == u'N' ? text.append(digits.begin(), digits.end()) : text.append(1, unit);
        }
    }
    return text;
}

struct CostRow {
    std::u16string_view before;
    std::u16string_view pattern;
    std::optional<PlayFormat> format;
};

TEST(ImportCost, GrowsWithTheText) {
    using enum PlayFormat;
    const CostRow rows[] = {
        {u"", u"太郎「やあ」\n", {}},
        {u"", u"人N「やあ」\n", {}},
        {u"", u"太郎「あ」\n人N・太郎「い」\n", {}},
        {u"太郎「", u"（", japanese},
        {u"太郎「", u"「", japanese},
        {u"太郎「", u"漢字（かんじ）", japanese},
        {u"太郎「", u"［＃", japanese},
        {u"太郎「", u"｜漢《", japanese},
        {u"太郎「あ」", u"「い」（", japanese},
        {u"太郎「あ", u"（お辞儀、うん）", japanese},
        {u"太郎「あ」\n", u"太郎、お辞儀、", japanese},
        {u"太郎：あ\n", u"　続き\n", japanese},
        {u"", u"登場人物\n", japanese},
        {u"", u"ANNA. (bow) Hello (there) you. [x]\n", english},
        {u"", u"ANNA.\n", english},
        {u"", u"(\n", english},
        {u"ANNA. ", u"and\n\n", english},
        {u"", u"/*[[", fountain},
        {u"", u"\nANNA (a) (b) ^\n(bow)\nHi\n", fountain},
        {u"1\n00:00:01,000 --> 00:00:02,000\n", u"<", subtitles},
        {u"1\n00:00:01,000 --> 00:00:02,000\n", u"- a\n", subtitles},
        {u"", u"1\n00:00:01,000 --> 00:00:02,000\n（人N）あ（い）\n\n", subtitles},
    };
    for (const CostRow& row : rows) {
        const auto at = [&](int times) {
            return static_cast<double>(
                workOf(std::u16string(row.before) + repeated(row.pattern, times), row.format));
        };
        const double least = at(0);
        const double once = at(1500) - least;
        const double fourfold = at(6000) - least;
        EXPECT_GT(once, 1500) << "nobody counts";
        EXPECT_LT(fourfold, 6 * once) << shown(row.before) << shown(row.pattern);
    }
}

} // namespace
} // namespace tvml::plays
