// The numbers of placeholders that the checks presume are those that the
// commands fill.
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "diagnostics/checking.h"
#include "diagnostics/element_names.h"
#include "memory_platform.h"
#include "run/ini_files.h"

namespace tvml {
namespace {

constexpr std::u16string_view kScript =
    u"A:(bow)\nA:(happy)\nA:(angry)\nA:(sad)\nA:(surprise)\nA:(komatta)\nA:(hatena)\nA:(fear)\n"
    u"A:(disgust)\nA:(neutral)\nA:(nodnod)\nA:(nod)\nA:(nono)\nA:(no)\nA:(well)\n"
    u"A:(look forward)\nA:(look at fellow)\nA:(look at camera)\nA:(look aside)\nA:(look at B)\n"
    u"A:(look right)\nA:(look left)\nA:(look up)\nA:(look down)\nA:(look behind)\nA:(shake)\n"
    u"A:(stop shaking)\nA:(open mouth)\nA:(close mouth)\nA:(stand)\nA:(sit)\nA:(walk 3 steps)\n"
    u"A:(walk)\nA:(turn 3 degrees)\nA:(turn)\nA:(bye)\nA:(fall backward)\nA:(fall)\nA:(get up)\n"
    u"A:(jump)\nA:(invisible)\nA:(visible)\n"
    u"A:hello\nsubimage:a.png\nA:(look at picture)\nA:hello\nbgimage:a.png\nrightimage:a.png\n"
    u"leftimage:a.png\nleftsuper:x\nrightsuper:x\nsuper:x\nbgm:a.wav\n"
    u"(hide picture)\n(hide bg picture)\n(hide right picture)\n(hide left picture)\n"
    u"(left super off)\n(right super off)\n(super off)\n(upshot of A)\n(twoshot)\n"
    u"(trackshot on A)\n(longshot)\n(daylight)\n(night)\n(candlelight)\n(light off)\n";

// The description in which each such element's text is its name and all
// placeholders of one digit.
std::u16string tellingDescription() {
    std::u16string text = u"<staging><model_for_char character='A' japanesename='a' "
                          u"englishname='a' default='yes'>model</model_for_char>";
    for (const std::u16string& name : elementNames()) {
        const ElementKind kind = meaningOf(name).kind;
        if (kind == ElementKind::plain || kind == ElementKind::character ||
            kind == ElementKind::simple || kind == ElementKind::twoshot) {
            text.append(u"<").append(name).append(u">").append(name);
            text.append(u" $1 $2 $3 $4 $5 $6 $7 $8 $9</").append(name).append(u">");
        }
    }
    return text.append(u"</staging>");
}

TEST(ElementNames, PlaceholdersAreThoseThatCommandsFill) {
    platform::MemoryPlatform platform;
    platform.files[u"/host/keyword.ini"] = vocabularyWith(u"");
    IniFiles files(platform);
    files.load();
    const std::u16string description = tellingDescription();
    const std::u16string output = ConversionRun(files.words, files.settings, platform)
                                      .convert({kScript, 0, 99, description})
                                      .text();
    for (const std::u16string& name : elementNames()) {
        const ElementMeaning meaning = meaningOf(name);
        if (description.find(u"<" + name + u">" + name + u" ") == kNone) {
            continue;
        }
        const std::size_t at = output.find(u"\n" + name + u" ");
        ASSERT_NE(at, kNone) << utf8(name);
        const std::u16string line = output.substr(at + 1, output.find(u'\n', at + 1) - at - 1);
        for (unsigned number = 1; number <= 9; ++number) {
            const std::u16string placeholder{u'$', static_cast<char16_t>(u'0' + number)};
            EXPECT_EQ(line.find(placeholder) == kNone, number <= meaning.placeholders)
                << utf8(line) << ", $" << number;
        }
    }
}

} // namespace
} // namespace tvml
