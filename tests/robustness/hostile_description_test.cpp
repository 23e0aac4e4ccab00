// Descriptions that are made to exhaust the machine. Each stands between an
// opening and an ending, so that the result shows how far the reading came.
#include <cstdlib>
#include <ctime>
#include <functional>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "fil_process.h"
#include "robustness/allocations.h"

namespace tvml {
namespace {

using Text = std::u16string;

Text number(std::size_t value) {
    const std::string digits = std::to_string(value);
    return {digits.begin(), digits.end()};
}

// `count` times `before`, a number that is different every time, `after`.
Text series(std::size_t count, const Text& before, const Text& after = {}) {
    Text text;
    for (std::size_t i = 0; i < count; ++i) {
        text += before + number(9'999'999 - i) + after;
    }
    return text;
}

Text repeated(std::size_t count, const Text& part) {
    Text text;
    text.reserve(count * part.size());
    for (std::size_t i = 0; i < count; ++i) {
        text += part;
    }
    return text;
}

// Entities of which each contains the one before ten times. `mark` is "&" or,
// for parameter entities, a "%" that counts only when the entity is expanded.
Text laughs(std::size_t count, const Text& kind, const Text& mark) {
    Text text = u"<!ENTITY " + kind + u"a0 ' '>";
    for (std::size_t i = 1; i <= count; ++i) {
        text += u"<!ENTITY " + kind + u"a" + number(i) + u" '" +
                repeated(10, mark + u"a" + number(i - 1) + u";") + u"'>";
    }
    return text;
}

enum class Reads { nothing, start, everything };

struct Row {
    const char* name;
    Reads reads;
    std::size_t count;     // in every test run
    std::size_t fullCount; // when TVML_ROBUSTNESS_FULL is set
    std::function<Text(std::size_t count)> content;
    std::function<Text(std::size_t count)> documentType = nullptr;

    friend void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }
};

// clang-format off
const Row kRows[] = {
    {"text", Reads::everything, 1'000'000, 100'000'000,
     [](auto n) { return u"<longshot>" + Text(n, u'x') + u"</longshot>"; }},
    {"japanese text", Reads::everything, 1'000'000, 100'000'000,
     [](auto n) { return u"<longshot>" + Text(n, u'あ') + u"</longshot>"; }},
    {"text of many lines", Reads::everything, 100'000, 10'000'000,
     [](auto n) { return u"<longshot>" + repeated(n, u"  x  \n") + u"</longshot>"; }},
    {"text of lone surrogates", Reads::everything, 1'000'000, 100'000'000,
     [](auto n) { return u"<longshot>" + repeated(n / 4, u"\xDC00\xDC00\xD800x") + u"</longshot>"; }},
    {"character references", Reads::everything, 100'000, 10'000'000,
     [](auto n) { return u"<longshot>" + repeated(n, u"&#65;") + u"</longshot>"; }},
    {"templates", Reads::everything, 30'000, 1'000'000,
     [](auto n) { return repeated(n, u"<talk>x $1</talk>"); }},
    {"templates with attributes", Reads::everything, 30'000, 1'000'000,
     [](auto n) { return repeated(n, u"<talk character='A'>x $1</talk>"); }},
    {"models", Reads::everything, 20'000, 500'000,
     [](auto n) { return series(n, u"<model_for_char character='A' englishname='e' default='yes' japanesename='", u"'>x</model_for_char>"); }},
    {"sets", Reads::everything, 50'000, 1'000'000,
     [](auto n) { return u"<set>" + series(n, u"a::", u"::b\n") + u"</set>"; }},
    {"comments", Reads::everything, 50'000, 1'000'000,
     [](auto n) { return repeated(n, u"<!---->"); }},
    {"a long attribute", Reads::everything, 1'000'000, 100'000'000,
     [](auto n) { return u"<talk character='" + Text(n, u'x') + u"'>x</talk>"; }},
    {"nested elements", Reads::start, 100'000, 1'000'000,
     [](auto n) { return repeated(n, u"<a>") + repeated(n, u"</a>"); }},
    {"open elements", Reads::start, 100'000, 1'000'000,
     [](auto n) { return repeated(n, u"<a>"); }},
    {"some nested elements", Reads::everything, 900, 900,
     [](auto n) { return repeated(n, u"<a>") + repeated(n, u"</a>"); }},
    {"attributes", Reads::start, 50'000, 1'000'000,
     [](auto n) { return u"<talk" + series(n, u" a", u"=''") + u">x</talk>"; }},
    {"some attributes", Reads::everything, 250, 250,
     [](auto n) { return u"<talk" + series(n, u" a", u"=''") + u">x</talk>"; }},
    {"prefixes", Reads::start, 50'000, 1'000'000,
     [](auto n) { return u"<talk" + series(n, u" xmlns:p", u"='u'") + series(n, u" p", u":x=''") + u">x</talk>"; }},
    {"names of elements", Reads::start, 100'000, 1'000'000,
     [](auto n) { return series(n, u"<e", u"/>"); }},
    {"names of attributes", Reads::start, 100'000, 1'000'000,
     [](auto n) { return series(n, u"<e a", u"=''/>"); }},
    {"namespaces", Reads::start, 100'000, 1'000'000,
     [](auto n) { return series(n, u"<e xmlns='", u"'/>"); }},
    {"entities", Reads::everything, 10'000, 10'000,
     [](auto n) { return u"<talk x='&a0;'>x" + repeated(n, u"&a0;") + u"</talk>"; },
     [](auto) { return laughs(0, u"", u"&"); }},
    {"entities in entities", Reads::start, 5, 30,
     [](auto n) { return u"<talk>x&a" + number(n) + u";</talk>"; },
     [](auto n) { return laughs(n, u"", u"&"); }},
    {"entities in attributes", Reads::start, 5, 30,
     [](auto n) { return u"<talk x='&a" + number(n) + u";'>x</talk>"; },
     [](auto n) { return laughs(n, u"", u"&"); }},
    {"entities in default values", Reads::nothing, 5, 30,
     [](auto) { return Text(); },
     [](auto n) { return laughs(n, u"", u"&") + u"<!ATTLIST talk x CDATA '&a" + number(n) + u";'>"; }},
    {"parameter entities", Reads::nothing, 5, 30,
     [](auto) { return Text(); },
     [](auto n) { return laughs(n, u"% ", u"&#37;") + u"%a" + number(n) + u";"; }},
    {"entities that contain themselves", Reads::start, 1, 1,
     [](auto) { return u"<talk>x&a;</talk>"; },
     [](auto) { return u"<!ENTITY a '&b;'><!ENTITY b '&a;'>"; }},
    {"a long entity many times", Reads::start, 1'000, 100'000,
     [](auto n) { return u"<talk>x" + repeated(n, u"&a;") + u"</talk>"; },
     [](auto) { return u"<!ENTITY a '" + Text(60'000, u'x') + u"'>"; }},
    {"an entity that is too long", Reads::nothing, 100'000, 10'000'000,
     [](auto) { return u"<talk>x&a;</talk>"; },
     [](auto n) { return u"<!ENTITY a '" + Text(n, u'x') + u"'>"; }},
    {"entities inside each other", Reads::start, 60, 1'000,
     [](auto n) { return u"<talk>x&a" + number(n) + u";</talk>"; },
     [](auto n) {
         Text text = u"<!ENTITY a0 'x'>";
         for (std::size_t i = 1; i <= n && i < 900; ++i) {
             text += u"<!ENTITY a" + number(i) + u" '&a" + number(i - 1) + u";'>";
         }
         return text;
     }},
    {"nested elements in an entity", Reads::start, 5'000, 9'000,
     [](auto) { return u"<talk>x&a;</talk>"; },
     [](auto n) { return u"<!ENTITY a '" + repeated(n, u"<a>") + repeated(n, u"</a>") + u"'>"; }},
    {"default values", Reads::start, 10'000, 1'000'000,
     [](auto n) { return repeated(n, u"<e/>"); },
     [](auto) { return u"<!ATTLIST e" + series(240, u" a", u" CDATA 'x'") + u">"; }},
    {"long default values", Reads::start, 10'000, 1'000'000,
     [](auto n) { return repeated(n, u"<e/>"); },
     [](auto n) { return u"<!ATTLIST e a CDATA '" + Text(n, u'x') + u"'>"; }},
    {"declarations of entities", Reads::nothing, 50'000, 1'000'000,
     [](auto) { return Text(); }, [](auto n) { return series(n, u"<!ENTITY a", u" 'x'>"); }},
    {"declarations of attributes", Reads::nothing, 50'000, 1'000'000,
     [](auto) { return Text(); },
     [](auto n) { return u"<!ATTLIST e" + series(n, u" a", u" CDATA 'x'") + u">"; }},
    {"declarations of elements", Reads::nothing, 50'000, 1'000'000,
     [](auto) { return Text(); }, [](auto n) { return series(n, u"<!ELEMENT a", u" ANY>"); }},
    {"a deep content model", Reads::everything, 50'000, 1'000'000,
     [](auto) { return Text(); },
     [](auto n) { return u"<!ELEMENT e " + Text(n, u'(') + u"a" + Text(n, u')') + u">"; }},
    {"a long content model", Reads::everything, 100'000, 6'500'000,
     [](auto) { return Text(); },
     [](auto n) { return u"<!ELEMENT e (a" + repeated(n, u",a") + u")>"; }},
    {"entities beside a long default value", Reads::everything, 40'000, 40'000,
     [](auto n) { return repeated(n, u"&e;"); },
     [](auto n) { return u"<!ENTITY e ' '><!ATTLIST e a CDATA '" + Text(10 * n, u'x') + u"'>"; }},
    {"a content model of many groups", Reads::everything, 50'000, 1'000'000,
     [](auto) { return Text(); },
     [](auto n) { return u"<!ELEMENT e (" + series(n, u"(a", u"|b|c?)*,") + u"d)+>"; }},
    {"a content model that does not end", Reads::nothing, 50'000, 1'000'000,
     [](auto) { return Text(); },
     [](auto n) { return u"<!ELEMENT e " + repeated(n, u"(a,") + u">"; }},
    {"mixed content of many names", Reads::everything, 50'000, 1'000'000,
     [](auto) { return Text(); },
     [](auto n) { return u"<!ELEMENT e (#PCDATA" + series(n, u"|a") + u")*>"; }},
    {"a long enumeration", Reads::everything, 50'000, 1'000'000,
     [](auto) { return Text(); },
     [](auto n) { return u"<!ATTLIST e a (x" + series(n, u"|a") + u") #IMPLIED>"; }},
};
// clang-format on

Text descriptionOf(const Row& row, std::size_t count) {
    Text text;
    if (row.documentType) {
        text = u"<!DOCTYPE staging [" + row.documentType(count) + u"]>";
    }
    return text + u"<staging><opening>OPENING</opening>" + row.content(count) +
           u"<ending>ENDING</ending></staging>";
}

Reads readOf(const Text& description) {
    Text script(4000, u'\0');
    const std::int32_t length = fil_process(u"A: hello\n", 0, 0, description.c_str(), script.data(),
                                            static_cast<std::int32_t>(script.size()));
    script.resize(static_cast<std::size_t>(length));
    if (script.ends_with(u"ENDING\n")) {
        return Reads::everything;
    }
    return script.find(u"OPENING") != Text::npos ? Reads::start : Reads::nothing;
}

class HostileDescription : public testing::TestWithParam<Row> {};

// The bounds leave room for slow machines and for sanitizers; without the limits
// of the parser the times are those of quadratic or exponential growth.
TEST_P(HostileDescription, TakesTimeAndMemoryInProportion) {
    const Row& row = GetParam();
    const bool full = std::getenv("TVML_ROBUSTNESS_FULL") != nullptr;
    const Text description = descriptionOf(row, full ? row.fullCount : row.count);
    allocations::resetPeak();
    const std::clock_t start = std::clock();
    EXPECT_EQ(readOf(description), row.reads);
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    const auto units = static_cast<double>(description.size());
    EXPECT_LT(seconds, 5 + units * 5e-6);
    EXPECT_LT(static_cast<double>(allocations::peakBytes()), 64e6 + units * 100);
}

INSTANTIATE_TEST_SUITE_P(Rows, HostileDescription, testing::ValuesIn(kRows), [](const auto& row) {
    std::string name = row.param.name;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
});

// The values of a model that contain each other's placeholders multiply their
// lengths; a talk line of them fails the call before it takes the memory.
TEST(HostileValues, FailTheCallThatWouldGrowWithoutBound) {
    const auto model = [](std::size_t count) {
        return u"<staging><model_for_char character='A' japanesename='j' englishname='e' "
               u"default='yes' lipsync='" +
               repeated(count, u"$5") + u"' speed='" + repeated(count, u"$6") + u"' pitch='" +
               repeated(count, u"$7") + u"' intonation='" + repeated(count, u"$8") + u"' volume='" +
               repeated(count, u"$9") + u"'>x</model_for_char><talk>$3</talk></staging>";
    };
    const auto size = [&](std::size_t count) {
        return fil_process(u"A: hello\n", 0, 0, model(count).c_str(), nullptr, 0);
    };
    const std::int32_t none = size(0);
    EXPECT_GT(none, 0);
    EXPECT_EQ(size(10), none + 3 * 99'999); // "yes" for "1.0", 10^5 times
    allocations::resetPeak();
    EXPECT_EQ(size(1000), 0);
    EXPECT_LT(allocations::peakBytes(), std::size_t{64} << 20);
    EXPECT_EQ(size(0), none);
}

} // namespace
} // namespace tvml
