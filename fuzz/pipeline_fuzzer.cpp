// The whole conversion. Fields: script, description, vocabulary entries,
// settings, first line to play, last line to play.
#include <memory>
#include <stdexcept>

#include "filter/conversion_run.h"
#include "filter/delivery.h"
#include "fuzz_input.h"

namespace {

using namespace tvml;

constexpr std::u16string_view kHeader = u"//! TVML Version 3.0\n";
constexpr char16_t kCanary = 0xDEAD;

// Counts the work of a run: whatever is written comes from a chosen template.
class WorkReport final : public ConversionReport {
public:
    void templateChosen(std::u16string_view, std::size_t) override { ++templates; }
    void lineStarted(std::int32_t, std::u16string_view) override { ++lines; }
    void problem(ScriptProblem, std::u16string_view, std::u16string_view) override { ++problems; }

    std::size_t templates = 0;
    std::size_t lines = 0;
    std::size_t problems = 0;
};

// A host's two calls, and those of a host that is wrong about the size.
void checkDelivery(const TvmlScript& script) {
    const std::int32_t size = deliver(script, nullptr, 0);
    FUZZ_CHECK(size >= 2 && static_cast<std::size_t>(size) == script.size() + 1);
    const auto units = static_cast<std::size_t>(size);
    const auto buffer = std::make_unique<char16_t[]>(units + 1);
    std::fill_n(buffer.get(), units + 1, kCanary);
    FUZZ_CHECK(deliver(script, buffer.get(), 0) == 0 && buffer[0] == kCanary);
    FUZZ_CHECK(deliver(script, buffer.get(), size - 1) == 0);
    FUZZ_CHECK(buffer[0] == u'\0' && buffer[1] == kCanary);
    FUZZ_CHECK(deliver(script, buffer.get(), size) == size - 1);
    FUZZ_CHECK(buffer[units - 1] == u'\0' && buffer[units] == kCanary);
    FUZZ_CHECK(std::u16string_view(buffer.get(), units - 1) == script.text());
    FUZZ_CHECK(script.text().starts_with(kHeader));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input = fuzz::inputOf(data, size);
    const std::u16string script = fuzz::unitsOf(fuzz::takeField(input));
    const std::u16string description = fuzz::unitsOf(fuzz::takeField(input));
    const std::string_view vocabulary = fuzz::takeField(input);
    const fuzz::Host platform(vocabulary, fuzz::takeField(input));
    const std::int32_t playFrom = std::atoi(std::string(fuzz::takeField(input)).c_str());
    const std::int32_t playTo = std::atoi(std::string(input).c_str());
    const ConversionRequest request{script, playFrom, playTo, description};

    KeywordTable words;
    TvmlIniMirvol settings(platform);
    WorkReport report;
    try {
        ConversionRun run(words, settings, platform);
        const TvmlScript result = run.convert(request);
        checkDelivery(result);
        ConversionRun toldRun(words, settings, platform, &report);
        const TvmlScript told = toldRun.convert(request);
        FUZZ_CHECK(result.text() == told.text());
    } catch (const std::length_error&) {
        return 0; // values that multiply each other; the exported function returns 0
    }
    // Every line and every piece of speech takes a few templates at most.
    FUZZ_CHECK(report.lines <= script.size());
    FUZZ_CHECK(report.templates <= script.size());
    FUZZ_CHECK(report.problems <= 4 * script.size() + 4);
    return 0;
}
