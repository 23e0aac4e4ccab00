// The vocabulary that ships, held against the fixed counts of units by which
// the script is read: a word of another length would leave units over or take
// units of what follows.
#include <gtest/gtest.h>

#include "reading/command_recognition.h"
#include "reading/line_kind.h"
#include "reading/script_text.h"
#include "support/studio.h"

namespace tvml {
namespace {

class ShippedWords : public testing::Test {
protected:
    const KeywordTable words = tableOf(shippedWords());

    std::u16string_view text(Key key) const { return words[key].textOrEmpty(); }
    std::string recognized(std::u16string phrase) const {
        recognizeCommand(phrase, words, {}, CommandIndex(words));
        return shown(phrase);
    }
};

TEST_F(ShippedWords, NoneIsMissingOrEmpty) {
    for (std::size_t i = 0; i < kKeyCount; ++i) {
        EXPECT_NE(text(Key::at(i)), u"missing") << shown(kKeys[i]);
        EXPECT_FALSE(text(Key::at(i)).empty()) << shown(kKeys[i]);
    }
}

TEST_F(ShippedWords, MarkersLoseJustThemselves) {
    const struct {
        Marker marker;
        Key key;
    } rows[] = {
        {Marker::title, u"title"},
        {Marker::subtitle, u"subtitle"},
        {Marker::rightSuper, u"rightsuper"},
        {Marker::leftSuper, u"leftsuper"},
        {Marker::super, u"super"},
        {Marker::mainImage, u"mainimage"},
        {Marker::subImage, u"subimage"},
        {Marker::bgImage, u"bgimage"},
        {Marker::rightImage, u"rightimage"},
        {Marker::leftImage, u"leftimage"},
        {Marker::music, u"bgm"},
        {Marker::music, u"sound"},
        {Marker::embeddedTvml, u"tvml"},
    };
    for (const auto& row : rows) {
        const std::u16string line = std::u16string(text(row.key)) + u"：x";
        const MarkerSpelling* spelling = markerSpelling(row.marker, line, words);
        ASSERT_NE(spelling, nullptr) << shown(line);
        EXPECT_EQ(spelling->units, text(row.key).size()) << shown(line);
        for (std::size_t other = 0; other < kMarkerCount; ++other) {
            EXPECT_TRUE(other == static_cast<std::size_t>(row.marker) ||
                        markerSpelling(static_cast<Marker>(other), line, words) == nullptr)
                << shown(line) << " is taken by marker " << other;
        }
    }
}

// Every form of every row becomes the row's canonical text, with nothing left
// over and no other row in its way.
TEST_F(ShippedWords, EveryCommandIsRecognisedWhole) {
    for (const CommandSpec& row : kCommands) {
        const std::u16string_view before = row.match == Match::letter       ? u"Ａ"
                                           : row.match == Match::twoLetters ? u"ｂA"
                                           : row.match == Match::number     ? u"１２"
                                                                            : u"";
        const std::string inserted = row.match == Match::number ? "12" : shown(before);
        for (const RowWord& word : row.words) {
            std::u16string phrase(before);
            phrase.append(text(word.key)).append(u"、遅く");
            const std::string unit =
                row.match == Match::number ? " " + shown(unitOf(row.arguments)) + "s" : "";
            EXPECT_EQ(recognized(phrase), shown(row.name) + inserted + unit + "、遅く");
        }
    }
}

TEST_F(ShippedWords, EveryAdverbIsTranslatedWhole) {
    for (const AdverbRow& row : kAdverbRows) {
        std::u16string item(text(row.key));
        translateAdverb(item, words);
        EXPECT_EQ(shown(item), shown(row.english));
        EXPECT_EQ(text(row.key).size(), row.units) << shown(row.english);
    }
}

// Words that are compared or removed one unit at a time.
TEST_F(ShippedWords, PunctuationHasOneUnit) {
    for (const Key key :
         {Key(u"kakko"), Key(u"toji_kakko"), Key(u"colon"), Key(u"kanma"), Key(u"touten1"),
          Key(u"touten2"), Key(u"hyphen"), Key(u"period"), Key(u"kuten")}) {
        EXPECT_EQ(text(key).size(), 1U) << shown(key.name());
    }
    EXPECT_EQ(text(u"caption").size(), 2U);
    for (const Key key : {Key(u"kuten_kagikakko1"), Key(u"kuten_kagikakko2"), Key(u"kuten_kakko1"),
                          Key(u"kuten_kakko2")}) {
        EXPECT_TRUE(text(key).starts_with(text(u"kuten")) && text(key).size() == 2)
            << shown(key.name());
    }
}

TEST_F(ShippedWords, SetsHoldTheirCharacters) {
    for (const char16_t unit : {u',', u'，', u'、', u'､'}) {
        EXPECT_TRUE(words[u"touten3"].holds(unit)) << shown(std::u16string(1, unit));
    }
    EXPECT_TRUE(words[u"kakko_kakko"].holds(u'('));
    EXPECT_TRUE(words[u"kakko_kakko"].holds(text(u"kakko").front()));
    for (const char16_t unit : {u' ', u'\t', u'　'}) {
        EXPECT_TRUE(words[u"space_tab"].holds(unit));
        EXPECT_TRUE(words.isBlank(unit));
    }
    EXPECT_FALSE(words.isBlank(u'\n'));
}

TEST_F(ShippedWords, DigitsAndLettersStandForTheirAsciiForms) {
    constexpr std::size_t kZero = Key(u"num0").index();
    constexpr std::size_t kFirstForm = Key(u"a1").index();
    for (std::size_t digit = 0; digit < 10; ++digit) {
        const std::u16string number = u"－１．" + std::u16string(text(Key::at(kZero + digit)));
        EXPECT_EQ(shown(parseNumber(number, words)), "-1." + std::to_string(digit));
    }
    for (std::size_t i = 0; i < 52; ++i) {
        const std::u16string_view form = text(Key::at(kFirstForm + i));
        const std::string letter(1, static_cast<char>('A' + i / 2));
        EXPECT_EQ(shown(characterLetterOf(form, words)), letter);
        EXPECT_TRUE(words.isLetter(form.front())) << letter;
    }
}

} // namespace
} // namespace tvml
