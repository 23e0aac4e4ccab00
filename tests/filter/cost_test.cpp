// Cost grows with the script, not faster. The core of this program counts its
// work: that is what is compared, not time.
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <functional>
#include <utility>

#include "support/counted_work.h"
#include "support/studio.h"

namespace tvml {
namespace {

constexpr std::size_t kFew = 1'000;
constexpr std::size_t kMany = 20'000;
constexpr double kMostGrowth = 1.3;
constexpr double kMostGrowthOfTables = 1.45; // ordered: log(kMany) / log(kFew)

// Of a long line the output grows in one buffer, whose doublings count unevenly;
// what is quadratic grows twentyfold.
constexpr double kMostGrowthOfALine = 2.0;

using Make = std::function<std::u16string(std::size_t count)>;

std::uint64_t workOf(const std::u16string& script, const std::u16string& description,
                     const Words& replaced = {}) {
    static platform::MemoryPlatform memory;
    memory.files[u"/host/keyword.ini"] = iniText(shippedWords(replaced));
    static KeywordTable words;
    static TvmlIniMirvol settings(memory);
    words.load(memory);
    const std::uint64_t before = countedWork();
    words.load(memory);
    settings.load();
    ConversionRun(words, settings, memory).convert({script, 0, 0, description});
    return countedWork() - before;
}

void expectLinear(const std::string& name, const std::u16string& description, const Make& make,
                  double mostGrowth = kMostGrowth, const Words& replaced = {}) {
    const std::uint64_t nothing = workOf(u"", description, replaced);
    const auto perItem = [&](std::size_t count) {
        return static_cast<double>(workOf(make(count), description, replaced) - nothing) /
               static_cast<double>(count);
    };
    const double few = perItem(kFew);
    EXPECT_GT(few, 1.0) << name << " costs nothing: nobody counts";
    EXPECT_LT(perItem(kMany), few * mostGrowth) << name;
}

Make lines(std::u16string_view text) {
    return [item = expand(text) + u'\n'](std::size_t count) {
        std::u16string script;
        for (std::size_t i = 0; i < count; ++i) {
            script += item;
        }
        return script;
    };
}

TEST(Cost, GrowsWithTheNumberOfLines) {
    const std::u16string card = u"<title titlefont_ja='a' titlefont_en='b' subtitlefont_ja='c' "
                                u"subtitlefont_en='d'>drawing:settext(name=TITLETEXT";
    const std::u16string description =
        u"<staging>" + std::u16string(kTwoCharacters) + card +
        u" font name='$2' size='$3' $TITLE\ndrawing:settext(name=TITLETEXT font name='$4' "
        u"size='$5' "
        u"$SUBTITLE</title><opening>skipscript(switch=off)</opening></staging>";
    const std::u16string_view rows[] = {
        u"Ａ：今日は、いい天気です。明日も、そうでしょう。（同時）",
        u"B: Good morning, all. Here is the news (caption: News)",
        u"title: One|subtitle: Two",
        u"title: One",
        u"subtitle: One|",
        u"title: $SUBTITLE|subtitle:$TITLE",
        u"mainimage: a.png",
        u"super: Hello (red)",
        u"subimage: a.png|(hide picture)",
        u"tvml: drawing: settext( name=TITLETEXT, text=$TITLE )",
        u"tvml: drawing: openbase( name=MAINIMAGEBASE|mainimage: a.png",
        u"tvml: drawing: settext( name=TITLETEXT, $TITLE|title: a|subtitle: b",
        u"tvml: $TITLE drawing|title: a|subtitle: b",
        u"tvml: font name size|title: a|subtitle: b",
        u"（お辞儀、遅く）|(upshot of B)|（３秒待つ）|B:(look at A, fast)|(set: x)|(dance)",
        u"(character: Taro)|(sit)|(auto gesture)|（喜）|(soundfile: a.wav, slow)|(voicetype: man)",
        u"",
    };
    for (const std::u16string_view row : rows) {
        expectLinear(shown(row), description, lines(row));
    }
    const std::u16string bareCard =
        u"<staging>" + card +
        u" $TITLE\ndrawing:settext(name=TITLETEXT $SUBTITLE</title></staging>";
    expectLinear("card without arguments", bareCard, lines(u"title: One|subtitle: Two"));
    expectLinear("cards far apart", bareCard, lines(u"title: One|title: One|subtitle: Two"));
    expectLinear("built-in card", u"<staging/>", lines(u"title: One|subtitle: Two"));
}

// One line, long by repetition of a part between a head and a tail.
TEST(Cost, GrowsWithTheLengthOfALine) {
    const struct {
        std::u16string_view head;
        std::u16string_view part;
        std::u16string_view tail;
        Words words{};
    } rows[] = {
        {u"", u"(", u""},
        {u"(", u"(", u")"},
        {u"", u")", u""},
        {u"x", u"（", u"）"},
        {u"", u"()", u""},
        {u"", u"(caption ", u")"},
        {u"(", u"（字幕 ", u")"},
        {u"", u"、", u""},
        {u"あ", u",", u""},
        {u"", u"a, ", u""},
        {u"", u"a,", u"b"},
        {u"", u".' ", u""},
        {u"", u"。」", u""},
        {u"", u"。", u""},
        {u"", u"　", u"x"},
        {u"", u" x", u" "},
        {u"(bow", u",fast", u")"},
        {u"(bow", u",", u")"},
        {u"(bow,", u" ", u", fast)"},
        {u"(soundfile:x", u",slow", u",x)"},
        {u"(soundfile:x", u",", u",slow)"},
        {u"(soundfile:x", u"((", u"))"},
        {u"(soundfile:x", u"(字幕x", u")"},
        {u"(soundfile:x", u", ", u")"},
        {u"(walk ", u"1", u" steps)"},
        {u"", u"歩歩く", u""},
        {u"(", u"3歩", u"歩く)"},
        {u"super:", u"(", u")"},
        {u"super:", u" (red)", u""},
        {u"title:", u"$TITLE", u""},
        {u"title:", u"drawing", u"\nsubtitle:x"},
        {u"tvml:", u"drawing:settext(name=TITLETEXT ", u""},
        {u"tvml:", u"drawing:settext(name=TITLETEXT ", u"$TITLE"},
        {u"tvml:", u"$TITLE", u"\ntitle:x\nsubtitle:y"},
        {u"subimage:", u"$3", u""},
        {u"(set:", u"、", u"x)"},
        {u"(look at", u" ", u"A)"},
        {u"Hi (caption: ", u"$2", u")"},
        {u"Hi", u"　", u"you)", {{u"kakko", u"　"}}},
        {u"（Hi", u"　", u"you)", {{u"kakko", u"　　"}}},
        {u"Hi", u"　 ", u"you)", {{u"kakko", u"　"}}},
        {u"Hi", u"( ", u"you)", {{u"space", u"("}}},
        {u"(soundfile:x", u"　", u"y))", {{u"kakko_kakko", u"　"}}},
    };
    const std::u16string description =
        u"<staging>" + std::u16string(kTwoCharacters) + u"</staging>";
    for (const auto& row : rows) {
        expectLinear(
            shown(row.head) + shown(row.part) + "..." + shown(row.tail), description,
            [&](std::size_t count) {
                std::u16string line(row.head);
                for (std::size_t i = 0; i < count; ++i) {
                    line += row.part;
                }
                return line.append(row.tail);
            },
            kMostGrowthOfALine, row.words);
    }
}

TEST(Cost, GrowsWithTheDescription) {
    const struct {
        std::u16string_view element;
        std::u16string_view line;
    } rows[] = {
        {u"<tag japanesename='x#' englishname='y#'>t</tag>", u"x#：a"},
        {u"<pose japanesename='p#' englishname='q#'>t</pose>", u"(p#)"},
        {u"<bow>b#</bow>", u"(bow)"},
        {u"<opening>set:openmodel character:autogesture(name=A skipscript(</opening>", u""},
    };
    for (const auto& row : rows) {
        const auto numbered = [](std::u16string_view text, std::size_t count) {
            std::u16string all;
            for (std::size_t i = 0; i < count; ++i) {
                const std::string number = std::to_string(100'000 + i);
                for (const char16_t unit : text) {
                    unit == u'#' ? all.append(number.begin(), number.end()) : all += unit;
                }
                all += u'\n';
            }
            return all;
        };
        const auto perItem = [&](std::size_t count) {
            const std::u16string description = u"<staging>" + numbered(row.element, count);
            return static_cast<double>(workOf(numbered(row.line, count), description)) /
                   static_cast<double>(count);
        };
        EXPECT_LT(perItem(kMany), perItem(kFew) * kMostGrowthOfTables) << shown(row.element);
    }
}

std::u16string repeated(std::size_t count, std::u16string_view part) {
    std::u16string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += part;
    }
    return text;
}

// The end of a clause that is cut again and again is looked for once. The search
// goes many units a step, so that it takes a long clause to show in the sum.
TEST(Cost, GrowsWithAClauseBeforeItsComma) {
    const std::u16string description = u"<staging>" + std::u16string(kTwoCharacters);
    for (const auto& [unit, end] : {std::pair(u"い", u"、う"), std::pair(u"x", u", y")}) {
        const auto perUnit = [&](std::size_t count) {
            return static_cast<double>(workOf(u"A:" + repeated(count, unit) + end, description)) /
                   static_cast<double>(count);
        };
        EXPECT_LT(perUnit(400'000), perUnit(20'000) * kMostGrowth) << shown(unit);
    }
}

// Every line of the script meets all that the description is long by.
TEST(Cost, GrowsWithScriptAndDescriptionTogether) {
    struct Texts {
        std::u16string description;
        std::u16string script;
    };
    const auto element = [](std::u16string_view name, const std::u16string& text) {
        const std::u16string tag(name);
        return u"<staging>" + std::u16string(kTwoCharacters) + u"<" + tag + u">" + text + u"</" +
               tag.substr(0, tag.find(u' ')) + u">";
    };
    constexpr std::u16string_view kTag = u"tag japanesename='x' englishname='y'";
    // Names of which each begins with the one before.
    const auto names = [](std::size_t count, std::u16string_view unit) {
        std::u16string description = u"<staging>";
        for (std::size_t i = 1; i * i < count; ++i) {
            const std::u16string name = u"a" + repeated(i, unit);
            description +=
                u"<tag japanesename='" + name + u"j' englishname='" + name + u"'>t</tag>";
        }
        return description;
    };
    const struct {
        const char* name;
        std::function<Texts(std::size_t count)> make;
    } rows[] = {
        {"a tag without a text",
         [&](std::size_t n) {
             return Texts{element(kTag, repeated(n, u"$1")), repeated(n, u"x:\n")};
         }},
        {"a tag with a mark of no placeholder",
         [&](std::size_t n) {
             return Texts{element(kTag, u"$$1" + repeated(n, u"$1")), repeated(n, u"x:\n")};
         }},
        {"a caption without a text",
         [&](std::size_t n) {
             return Texts{element(u"leftsuper", repeated(n, u"$1")), repeated(n, u"leftsuper:\n")};
         }},
        {"a picture without a name",
         [&](std::size_t n) {
             return Texts{element(u"bgimage", u"$7" + repeated(n, u"$2")),
                          repeated(n, u"bgimage:\n")};
         }},
        {"talk without captions",
         [&](std::size_t n) {
             return Texts{element(u"talk", repeated(n, u"$4")), repeated(n, u"A:Hi\n")};
         }},
        {"names that begin with each other",
         [&](std::size_t n) {
             const auto root = static_cast<std::size_t>(std::sqrt(static_cast<double>(n)));
             return Texts{names(n, u"a"), repeated(root, repeated(root, u"a") + u'\n')};
         }},
        {"names that end in blanks",
         [&](std::size_t n) {
             const auto root = static_cast<std::size_t>(std::sqrt(static_cast<double>(n)));
             return Texts{names(n, u" "), repeated(root, u"a" + repeated(root, u" ") + u"x\n")};
         }},
    };
    for (const auto& row : rows) {
        const auto perUnit = [&](std::size_t count) {
            const Texts texts = row.make(count);
            return static_cast<double>(workOf(texts.script, texts.description)) /
                   static_cast<double>(texts.script.size() + texts.description.size());
        };
        EXPECT_LT(perUnit(10'000), perUnit(1'000) * kMostGrowth) << row.name;
    }
}

// A "$" that a line does not fill is text like any other, in every kind of text.
TEST(Cost, OfFillingIsThatOfWriting) {
    constexpr double kMostPerUnit = 20; // most of it for looking for cards that wait
    const struct {
        std::u16string_view start;
        std::u16string_view end;
        std::u16string_view line;
    } rows[] = {
        {u"<pose japanesename='p' englishname='q'>", u"</pose>", u"(p)"},
        {u"<longshot>", u"</longshot>", u"(longshot)"},
        {u"<bow>", u"</bow>", u"(bow)"},
        {u"<tag japanesename='p' englishname='q'>", u"</tag>", u"p:x"},
    };
    for (const auto& row : rows) {
        std::u16string description = u"<staging>" + std::u16string(kTwoCharacters);
        description.append(row.start).append(repeated(kFew, u"$5")).append(row.end);
        const std::uint64_t work = workOf(lines(row.line)(kFew), description);
        EXPECT_LT(static_cast<double>(work) / (kFew * 2 * kFew), kMostPerUnit) << shown(row.start);
    }
}

// What a model says of a character is not looked at again with every line.
TEST(Cost, OfTalkDoesNotDependOnTheModel) {
    const std::u16string talk = lines(u"A: Hi")(kFew);
    const auto costOfTalk = [&](std::size_t units) {
        const std::u16string description =
            u"<staging><talk>t</talk><model_for_char character='A' japanesename='j' "
            u"englishname='e' default='no' speed='" +
            std::u16string(units, u'1') + u"'>m</model_for_char></staging>";
        return static_cast<double>(workOf(talk, description) - workOf(u"", description));
    };
    EXPECT_LT(costOfTalk(20'000), costOfTalk(20) * kMostGrowth);
}

TEST(Cost, GrowsWithALineOfTheDescription) {
    for (const std::u16string_view part :
         {u"character:autogesture(name=A,switch=", u"camera:autoswitching(switch=on ", u"set:",
          u"skipscript(switch=off"}) {
        const auto perItem = [&](std::size_t count) {
            std::u16string description = u"<staging><setting>";
            for (std::size_t i = 0; i < count; ++i) {
                description += part;
            }
            return static_cast<double>(workOf(u"(set: x)", description + u"</setting>")) /
                   static_cast<double>(count);
        };
        EXPECT_LT(perItem(kMany), perItem(kFew) * kMostGrowthOfALine) << shown(part);
    }
}

} // namespace
} // namespace tvml
