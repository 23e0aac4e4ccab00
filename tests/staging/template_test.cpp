// Templates: filling, and the choice among variants.
#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <vector>

#include "staging/template_db.h"
#include "support/studio.h"

namespace tvml {
namespace {

// The rule, step by step: one placeholder after another, everywhere.
std::u16string filledInSequence(std::u16string text, std::span<const Filling> fillings) {
    for (const Filling& filling : fillings) {
        std::size_t at = text.find(std::u16string_view(filling.placeholder));
        while (at != kNone) {
            text.replace(at, filling.placeholder.size(), filling.value);
            at = filling.firstOnly ? kNone
                                   : text.find(std::u16string_view(filling.placeholder),
                                               at + filling.value.size());
        }
    }
    return text;
}

TEST(Template, FillsAsOnePlaceholderAfterAnother) {
    constexpr std::u16string_view kPieces[] = {u"$1", u"$1", u"$2",    u"$10", u"$TITLE", u"$",
                                               u"1",  u"a",  u"TITLE", u"$3",  u"0",      u""};
    constexpr Placeholder kPlaceholders[] = {u"$1", u"$10", u"$2", u"$TITLE", u"$3"};
    constexpr std::u16string_view kValues[] = {u"",  u"x",     u"$",  u"1",  u"0",
                                               u"v", u"a$1$2", u"$3", u"wy", u"a$TIT"};
    std::mt19937 random(20240501);
    const auto pick = [&](const auto& texts) { return texts[random() % std::size(texts)]; };
    for (int round = 0; round < 20'000; ++round) {
        std::u16string text;
        for (std::size_t pieces = random() % 9; pieces > 0; --pieces) {
            text += pick(kPieces);
        }
        const Template kept(text);
        // One template is filled again and again, also in other orders.
        for (int again = 0; again < 8; ++again) {
            std::vector<Filling> fillings;
            for (std::size_t count = random() % 5; count > 0; --count) {
                fillings.push_back({pick(kPlaceholders), pick(kValues), random() % 8 == 0});
            }
            std::u16string out = u"kept ";
            kept.fill(fillings, out);
            const std::u16string expected = filledInSequence(text, fillings);
            ASSERT_EQ(shown(out), "kept " + shown(expected)) << shown(text);
            std::u16string other = text;
            fillText(other, fillings);
            ASSERT_EQ(shown(other), shown(expected)) << shown(text);
        }
    }
}

// Many placeholders right behind each other are skipped where they come to nothing.
TEST(Template, FillsManyPlaceholdersWithNothing) {
    constexpr std::u16string_view kPieces[] = {u"$1", u"$1", u"$2", u"$10", u"$2", u"$", u"x"};
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::u16string text;
        for (std::size_t pieces = random() % 1000; pieces > 0; --pieces) {
            text += kPieces[random() % (round % 2 == 0 ? 5 : 7)];
        }
        const Template kept(text);
        for (unsigned empty = 0; empty < 8; ++empty) {
            const auto value = [&](unsigned bit) {
                return (empty & bit) != 0 ? std::u16string_view()
                                          : std::u16string_view(u"a long value");
            };
            const Filling fillings[] = {{u"$10", value(1)}, {u"$1", value(2)}, {u"$2", value(4)}};
            std::u16string out;
            kept.fill(fillings, out);
            ASSERT_EQ(shown(out), shown(filledInSequence(text, fillings))) << shown(text);
        }
    }
}

// Where one placeholder must be replaced after another, filling with nothing has
// an end.
TEST(Template, RefusesToLoseWithoutBound) {
    std::u16string text = u"$$2";
    while (text.size() < kMostLostUnits / 8) {
        text += u"$1";
    }
    const Template kept(text);
    const Filling fillings[] = {{u"$1", u""}, {u"$2", u"1"}, {u"$3", u""}};
    std::u16string out;
    for (int i = 0; i < 8; ++i) {
        kept.fill(fillings, out);
    }
    EXPECT_EQ(shown(out), "$1$1$1$1$1$1$1$1");
    EXPECT_THROW(kept.fill(fillings, out), std::length_error);
}

TEST(Template, RefusesToGrowWithoutBound) {
    std::u16string out;
    std::u16string twos;
    for (int i = 0; i < 4096; ++i) {
        twos += u"$2";
    }
    const std::u16string ones(1 << 10, u'x');
    const Filling small[] = {{u"$1", twos}, {u"$2", ones}};
    Template(u"$1").fill(small, out);
    EXPECT_EQ(out.size(), std::size_t{4096} << 10);
    const std::u16string big(kFilledLimit / 4096 + 1, u'x');
    const Filling large[] = {{u"$1", twos}, {u"$2", big}};
    EXPECT_THROW(Template(u"$1").fill(large, out), std::length_error);
}

std::string textOf(const Variant* variant) {
    return variant == nullptr ? "-" : shown(variant->text.text());
}

TEST(TemplateChoice, TogglesPerKeyThatHasVariants) {
    TemplateCollection collection;
    RandomGenerator random;
    const auto select = [&](std::string_view keys) {
        std::string chosen;
        for (const char key : keys) {
            chosen += textOf(
                collection.selectTemplate(static_cast<char16_t>(key), SwitchMode::toggle, random));
        }
        return chosen;
    };
    EXPECT_EQ(select("A$"), "--");
    for (const char16_t key : {u'A', u'$', u'A', u'$', u'$'}) {
        const std::u16string number(
            1, static_cast<char16_t>(
                   u'1' + (collection.variantsOf(key) ? collection.variantsOf(key)->size() : 0)));
        EXPECT_TRUE(collection.registerTemplate(key, std::u16string(1, key) + number));
    }
    EXPECT_FALSE(collection.registerTemplate(u'a', u"x"));
    EXPECT_EQ(select("AAA"), "A1A2A1");
    EXPECT_EQ(select("BCBC"), "$1$2$3$1"); // characters without variants share the counter
    EXPECT_EQ(select("A$Z"), "A2$2$3");
}

TEST(TemplateChoice, PairsTitlesAndSimpleTemplates) {
    RandomGenerator random;
    PairTemplateCollection pairs;
    EXPECT_EQ(textOf(pairs.selectTemplate(u"AB", SwitchMode::toggle, random)), "-");
    pairs.registerTemplate(u"AB", u"ab");
    pairs.registerTemplate(u"$", u"shared");
    EXPECT_EQ(textOf(pairs.selectTemplate(u"AB", SwitchMode::random, random)), "ab");
    EXPECT_EQ(textOf(pairs.selectTemplate(u"BA", SwitchMode::toggle, random)), "shared");

    SimpleTemplateCollection simple;
    EXPECT_EQ(textOf(simple.selectTemplate(SwitchMode::toggle, random)), "-");
    EXPECT_EQ(textOf(simple.selectTemplate(SwitchMode::random, random)), "-");
    simple.registerTemplate(u"1");
    EXPECT_EQ(textOf(simple.selectTemplate(SwitchMode::toggle, random)), "1");
    simple.registerTemplate(u"2");
    EXPECT_EQ(textOf(simple.selectTemplate(SwitchMode::toggle, random)), "1");
    EXPECT_EQ(textOf(simple.selectTemplate(SwitchMode::toggle, random)), "2");

    TitleTemplateCollection titles;
    TitleFonts fonts{u"k", u"e", u"p", u"t"};
    EXPECT_EQ(textOf(titles.selectTemplate(SwitchMode::toggle, random, fonts)), "-");
    EXPECT_EQ(fonts.titlefont_ja, u"k");
    EXPECT_FALSE(titles.registerTemplate(u"", {u"a", u"b", u"c", u"d"}));
    EXPECT_FALSE(titles.registerTemplate(u"x", {u"a", u"b", u"", u"d"}));
    EXPECT_TRUE(titles.registerTemplate(u"1", {u"a", u"b", u"c", u"d"}));
    EXPECT_TRUE(titles.registerTemplate(u"2", {u"e", u"f", u"g", u"h"}));
    EXPECT_EQ(textOf(titles.selectTemplate(SwitchMode::toggle, random, fonts)), "1");
    EXPECT_EQ(textOf(titles.selectTemplate(SwitchMode::toggle, random, fonts)), "2");
    EXPECT_EQ(fonts.titlefont_ja + fonts.subtitlefont_en, u"eh");
}

TEST(TemplateChoice, RandomThresholds) {
    const struct {
        std::size_t count;
        std::uint32_t draw;
        std::size_t number;
    } rows[] = {
        {1, 0, 1},     {1, 32767, 1}, {2, 16383, 1}, {2, 16384, 2}, {2, 32767, 2}, {3, 10922, 1},
        {3, 10923, 2}, {3, 21844, 2}, {3, 21845, 3}, {3, 32767, 3}, {7, 4681, 1},  {7, 4682, 2},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(randomVariant(row.count, row.draw), row.number) << row.draw;
    }
    // All numbers come, about equally often, and the same ones for one seed.
    RandomGenerator first(7);
    RandomGenerator second(7);
    int counts[4] = {};
    for (int i = 0; i < 4000; ++i) {
        const std::uint32_t draw = first.next();
        ASSERT_LE(draw, 32767U);
        ASSERT_EQ(draw, second.next());
        ++counts[randomVariant(4, draw) - 1];
    }
    for (const int count : counts) {
        EXPECT_NEAR(count, 1000, 150);
    }
}

} // namespace
} // namespace tvml
