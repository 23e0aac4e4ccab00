// A call gets by with the stack that the header asks for.
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "fil_process.h"
#include "robustness/programme.h"
#include "robustness/stack_use.h"

namespace tvml {
namespace {

using Text = std::u16string;

constexpr std::size_t kStackOfACall = 48 * 1024;

Text repeated(std::size_t count, const Text& part) {
    Text text;
    for (std::size_t i = 0; i < count; ++i) {
        text += part;
    }
    return text;
}

// Entities of which each holds a reference to the one before.
Text chain(std::size_t count, const Text& kind, const Text& before, const Text& after) {
    const auto name = [](std::size_t i) { return u"a" + Text(i, u'x'); };
    Text text = u"<!ENTITY " + kind + name(0) + u" ' '>";
    for (std::size_t i = 1; i <= count; ++i) {
        text += u"<!ENTITY " + kind + name(i) + u" '" + before + name(i - 1) + u";" + after + u"'>";
    }
    return text;
}

Text last(std::size_t count) {
    return u"a" + Text(count, u'x') + u";";
}

struct Row {
    const char* name;
    std::function<Text(std::size_t depth)> description;
};

const Row kRows[] = {
    {"nested elements", [](auto n) { return repeated(n, u"<a>") + repeated(n, u"</a>"); }},
    {"nested content models",
     [](auto n) {
         return u"<!DOCTYPE s [<!ELEMENT s " + Text(n, u'(') + u"a" + Text(n, u')') + u">]><s/>";
     }},
    {"entities in text",
     [](auto n) {
         return u"<!DOCTYPE s [" + chain(n, u"", u"<b>&", u"</b>") + u"]><s>&" + last(n) + u"</s>";
     }},
    {"entities in attributes",
     [](auto n) {
         return u"<!DOCTYPE s [" + chain(n, u"", u"&", u"") + u"]><s a='&" + last(n) + u"'/>";
     }},
    {"entities in default values",
     [](auto n) {
         return u"<!DOCTYPE s [" + chain(n, u"", u"&", u"") + u"<!ATTLIST s a CDATA '&" + last(n) +
                u"'>]><s/>";
     }},
    {"entities declared before what is in them",
     [](auto n) {
         Text text;
         for (std::size_t i = n; i > 0; --i) {
             text += u"<!ENTITY a" + Text(i, u'x') + u" '&a" + Text(i - 1, u'x') + u";'>";
         }
         return u"<!DOCTYPE s [" + text + u"<!ENTITY a ' '>]><s a='&" + last(n) + u"'/>";
     }},
    {"entities between declarations",
     [](auto n) {
         return u"<!DOCTYPE s [" + chain(n, u"% ", u"&#37;", u"") + u"%" + last(n) + u"]><s/>";
     }},
    {"brackets in talk",
     [](auto n) {
         return u"<staging><talk>" + Text(n, u'(') +
                u"$2</talk><model_for_char character='A' "
                u"japanesename='j' englishname='e' default='no'>m</model_for_char></staging>";
     }},
};

TEST(Stack, OfACallIsSmallWhateverItIsGiven) {
    for (const Row& row : kRows) {
        for (const std::size_t depth : {1, 5, 30, 49, 50, 51, 100, 900, 100'000}) {
            if (depth > 900 && std::string_view(row.name).starts_with("entit")) {
                continue; // the names would be longer than all else
            }
            const Text description = row.description(depth);
            const Text script =
                u"A: " + Text(depth, u'(') + u"hello" + Text(depth, u')') + u"\n(bow)";
            EXPECT_LT(stackUsedBy([&] {
                          fil_process(script.c_str(), 0, 0, description.c_str(), nullptr, 0);
                      }),
                      kStackOfACall)
                << row.name << ' ' << depth;
        }
    }
    for (const Programme& programme : {kRichProgramme, kBrokenProgramme, kEndlessProgramme,
                                       kDeclaringProgramme, kListingProgramme}) {
        Text buffer(kBufferUnits, u'\0');
        EXPECT_LT(stackUsedBy([&] { programme.convert(buffer); }), kStackOfACall) << programme.name;
    }
}

} // namespace
} // namespace tvml
