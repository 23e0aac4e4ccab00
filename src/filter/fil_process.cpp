// The exported function. Entry: fil_process.
#include "fil_process.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "filter/conversion_run.h"
#include "filter/delivery.h"
#include "platform/call_turn.h"
#include "run/ini_files.h"
#include "vocabulary/unit_search.h"

namespace {

// All that outlives a call.
struct Process {
    tvml::IniFiles files{tvml::platform::system()};
};

Process process;

std::u16string_view textOrEmpty(const char16_t* text) {
    return text != nullptr ? std::u16string_view(text, tvml::terminatedLength(text))
                           : std::u16string_view();
}

bool overlap(std::u16string_view a, std::u16string_view b) {
    const std::less<> before;
    return before(a.data(), b.data() + b.size()) && before(b.data(), a.data() + a.size());
}

// Where the result goes; empty when the buffer does not hold it. The host may
// say that the buffer is larger than it is.
std::u16string_view placeOf(std::size_t resultUnits, const char16_t* output,
                            std::int32_t outputSize) {
    const bool fits =
        output != nullptr && std::int64_t{outputSize} > static_cast<std::int64_t>(resultUnits);
    return fits ? std::u16string_view(output, resultUnits + 1) : std::u16string_view();
}

} // namespace

extern "C" std::int32_t fil_process(const char16_t* script, std::int32_t playFrom,
                                    std::int32_t playTo, const char16_t* description,
                                    char16_t* output, std::int32_t outputSize) {
    const tvml::platform::CallTurn turn;
    if (!turn.isOurs() || !tvml::platform::prepareToThrow()) {
        return 0;
    }
    try {
        process.files.load();
        // Not on the stack, of which a host's thread may have little.
        const auto run = std::make_unique<tvml::ConversionRun>(
            process.files.words, process.files.settings, tvml::platform::system());
        const std::u16string_view text = textOrEmpty(script);
        tvml::TvmlScript result = run->convert({text, playFrom, playTo, textOrEmpty(description)});
        if (overlap(text, placeOf(result.size(), output, outputSize))) {
            result.writeTalk(); // the result takes the place of the script
        }
        return tvml::deliver(result, output, outputSize);
    } catch (...) { // nothing may leave this function, whatever its type
        return 0;
    }
}
