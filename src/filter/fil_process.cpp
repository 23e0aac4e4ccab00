// The exported function. Entry: fil_process.
#include "fil_process.h"

#include <cstdint>
#include <limits>
#include <string_view>

#include "filter/conversion_run.h"

namespace {

// All that outlives a call.
struct Process {
    tvml::XmlLibrary xml; // stays initialised, so that calls do not pay for it
    tvml::KeywordTable words;
    tvml::TvmlIniMirvol settings{tvml::platform::system()};
};

Process process;

// The longest script whose size query still has a 32-bit answer.
constexpr std::size_t kLongestScript = std::numeric_limits<std::int32_t>::max() - 1;

std::u16string_view textOrEmpty(const char16_t* text) {
    return text != nullptr ? std::u16string_view(text) : std::u16string_view();
}

std::int32_t deliver(const tvml::TvmlScript& script, char16_t* output, std::int32_t outputSize) {
    if (script.size() > kLongestScript) {
        return 0;
    }
    const auto length = static_cast<std::int32_t>(script.size());
    if (output == nullptr) {
        return length + 1;
    }
    if (outputSize <= length) {
        if (outputSize >= 1) {
            output[0] = u'\0';
        }
        return 0;
    }
    script.copyTo(output);
    output[length] = u'\0';
    return length;
}

} // namespace

extern "C" std::int32_t fil_process(const char16_t* script, std::int32_t playFrom,
                                    std::int32_t playTo, const char16_t* description,
                                    char16_t* output, std::int32_t outputSize) {
    try {
        process.xml.hold();
        tvml::ConversionRun run(process.words, process.settings, tvml::platform::system());
        return deliver(
            run.convert({textOrEmpty(script), playFrom, playTo, textOrEmpty(description)}), output,
            outputSize);
    } catch (...) { // nothing may leave this function, whatever its type
        return 0;
    }
}
