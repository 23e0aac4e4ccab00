// Listening for problems costs little on lines that have none.
#include <gtest/gtest.h>

#include "diagnostics/diagnostics.h"
#include "support/counted_work.h"
#include "support/studio.h"

namespace tvml {
namespace {

constexpr int kLines = 1000;
constexpr double kMost = 1.2;

std::uint64_t workOf(const std::u16string& script, bool listening) {
    ShippedProgramme shipped;
    const ConversionRequest request{script, kNoLine, kNoLine, shipped.description};
    const std::uint64_t before = countedWork();
    DiagnosticCollector collector(request);
    const Listeners listeners{&collector};
    ConversionRun run(shipped.files.words, shipped.files.settings, shipped.memory,
                      listening ? &listeners : nullptr);
    // What is said is written when the text is wanted.
    EXPECT_FALSE(run.convert(request).text().empty());
    EXPECT_TRUE(collector.take().empty());
    return countedWork() - before;
}

TEST(CollectorCost, IsSmallOnGoodLines) {
    for (const std::u16string_view line :
         {u"Ａ：みなさん、こんばんは。夕方のニュースの時間です。\n",
          u"みなさん、こんばんは。夕方のニュースの時間です。\n",
          u"A: Good evening and welcome to the news of the day.\n",
          u"Good evening and welcome to the news of the day.\n",
          u"Ｂ：みなさん、こんばんは。（字幕：夕方のニュース）\n",
          u"Ｂ：「浜鍋も売り切れました。」と、鈴木さんは\"話\"していました。\n",
          u"Ａ：（お辞儀、遅く）\n", u"スーパー：お祭りは今夜まで（赤）\n"}) {
        std::u16string script;
        for (int i = 0; i < kLines; ++i) {
            script += line;
        }
        const auto plain = static_cast<double>(workOf(script, false) - workOf(u"", false));
        const auto listening = static_cast<double>(workOf(script, true) - workOf(u"", true));
        EXPECT_GT(plain, kLines) << "nobody counts";
        EXPECT_LT(listening, plain * kMost) << shown(line) << listening / plain;
    }
}

} // namespace
} // namespace tvml
