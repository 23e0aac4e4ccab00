// The line loop of a run, and what a run leaves to the next.
#include "filter/conversion_run.h"

#include <limits>

#include "support/rows.h"

namespace tvml {
namespace {

TEST(ConversionRun, PlayMarksStandAtTheirLines) {
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    const struct {
        std::u16string_view script;
        std::int32_t from;
        std::int32_t to;
        const char* body;
    } rows[] = {
        {u"", 0, 0, "end()|"},
        {u"", 1, 1, "end()|"},
        {u"", 0, 2, ""},
        {u"", 0, -1, ""},
        {u"tvml:1|tvml:2", 1, 2, "playfromhere()|1|2|end()|"},
        {u"tvml:1|tvml:2|", 1, 3, "playfromhere()|1|2|end()|"},
        {u"tvml:1|tvml:2|", 2, 1, "1|playfromhere()|end()|2|"},
        {u"tvml:1|tvml:2", 3, 4, "1|2|"},
        {u"tvml:1|tvml:2", 0, 0, "end()|1|2|"},
        {u"tvml:1|tvml:2", -1, -1, "1|2|"},
        {u"||tvml:3|", 2, 1, "playfromhere()|end()|3|"},
        {u"||", 0, 3, "end()|"},
        {u"tvml:1", kMost, kMost, "1|"},
        {u"tvml:1", kLeast, kLeast, "1|"},
    };
    Studio studio;
    for (const auto& row : rows) {
        EXPECT_EQ(studio.body(row.script, row.from, row.to), row.body) << shown(row.script);
    }
}

TEST(ConversionRun, Lines) {
    checkRows("filter/lines.rows", [](const Row& row) { return row.body(); });
}

// A description ends at its terminator and may come without anything.
TEST(ConversionRun, Descriptions) {
    platform::MemoryPlatform memory;
    const KeywordTable words;
    const TvmlIniMirvol settings(memory);
    const auto convert = [&](std::u16string_view description) {
        return shown(
            ConversionRun(words, settings, memory).convert({u"", 9, 9, description}).text());
    };
    using namespace std::string_view_literals;
    EXPECT_EQ(convert(u"<staging><setting>a</setting>\0<ending>b</ending>"sv),
              "//! TVML Version 3.0|a|//! initializeEnd|");
    EXPECT_EQ(convert(u""), convert(u"<staging/>"));
    EXPECT_TRUE(convert(u"").starts_with("//! TVML Version 3.0|//! initializeStart|skipscript("));
}

// Whatever a run did, the next one starts anew; only words and settings stay.
TEST(ConversionRun, NothingStaysForTheNextRun) {
    Studio studio(std::u16string(kTwoCharacters) + tellingTemplates() +
                  u"<bow>second</bow><bow_switch>toggle</bow_switch><opening>open</opening>"
                  u"<set>広場::Plaza::p</set>");
    const std::u16string_view scripts[] = {
        u"subimage:p|bgimage:p|rightimage:p|leftimage:p|mainimage:p|leftsuper:s|rightsuper:s|"
        u"title:t|Hi|(auto camera switching)|(auto gesture)|(speak slow)|(opening off)|(ending "
        u"off)|"
        u"(character: Taro)|(bow)|title:t",
        u"(night)|(set: Plaza)|subtitle:s",
        u"(hide picture)|(hide bg picture)|(hide right picture)|(hide left picture)|subtitle:s|"
        u"(back to studio)|(left super off)|(right super off)|(longshot)|(nod)|(bow)|Hi|(daylight)|"
        u"mainimage:q|subimage:q|(look at picture)",
    };
    for (const std::u16string_view script : scripts) {
        const std::string before = studio.whole(script);
        for (const std::u16string_view other : scripts) {
            studio.whole(other);
            EXPECT_EQ(studio.whole(script), before) << shown(other);
        }
    }
}

TEST(ConversionRun, WordsAndSettingsAreReadAnew) {
    Studio studio;
    studio.platform.files[u"/host/Mirvol.ini"] = u"[TALK]\nspeak_slow=0.25\n";
    const std::u16string_view script = u"（喜）|（楽）";
    const std::string happy = "character: expression( name=A, type=happy, degree=1.0, speed=1.0, "
                              "wait=no )|";
    EXPECT_EQ(studio.body(u"（喜）"), happy);
    EXPECT_EQ(studio.body(u"（楽）"), "");
    studio.platform.files[u"/host/keyword.ini"] = iniText(shippedWords({{u"happy", u"楽"}}));
    EXPECT_EQ(studio.body(u"（楽）"), happy);
    EXPECT_EQ(studio.body(u"（喜）"), "");
    studio.platform.files.clear(); // the words of the last load stay
    EXPECT_EQ(studio.body(script), happy);
}

TEST(ConversionRun, RandomChoiceIsThatOfTheSecond) {
    std::u16string elements(kTwoCharacters);
    for (char16_t i = u'a'; i <= u'p'; ++i) {
        elements += u"<bow>" + std::u16string(1, i) + u"</bow>";
    }
    Studio studio(elements);
    const std::u16string_view script = u"(bow)|(bow)|(bow)|(bow)|(bow)|(bow)|(bow)|(bow)";
    const std::string first = studio.body(script);
    EXPECT_EQ(studio.body(script), first);
    int different = 0;
    for (studio.platform.seconds = 1; studio.platform.seconds < 20; ++studio.platform.seconds) {
        different += studio.body(script) != first ? 1 : 0;
    }
    EXPECT_GE(different, 18);
}

} // namespace
} // namespace tvml
