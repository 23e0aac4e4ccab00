// The exported function. Entry: fil_process.
#include "fil_process.h"

#include <cstdint>
#include <functional>
#include <string_view>

#include "filter/conversion_run.h"
#include "filter/delivery.h"
#include "vocabulary/unit_search.h"

namespace {

// All that outlives a call.
struct Process {
    tvml::XmlLibrary xml; // stays initialised, so that calls do not pay for it
    tvml::KeywordTable words;
    tvml::TvmlIniMirvol settings{tvml::platform::system()};
};

Process process;

std::u16string_view textOrEmpty(const char16_t* text) {
    return text != nullptr ? std::u16string_view(text, tvml::terminatedLength(text))
                           : std::u16string_view();
}

// A host may have the script replaced by the result.
bool overlaps(std::u16string_view script, const char16_t* output, std::int32_t outputSize) {
    const std::less<> before;
    return output != nullptr && outputSize > 0 && before(output, script.data() + script.size()) &&
           before(script.data(), output + outputSize);
}

} // namespace

extern "C" std::int32_t fil_process(const char16_t* script, std::int32_t playFrom,
                                    std::int32_t playTo, const char16_t* description,
                                    char16_t* output, std::int32_t outputSize) {
    try {
        process.xml.hold();
        tvml::ConversionRun run(process.words, process.settings, tvml::platform::system());
        const std::u16string_view text = textOrEmpty(script);
        tvml::TvmlScript result = run.convert({text, playFrom, playTo, textOrEmpty(description)});
        if (overlaps(text, output, outputSize)) {
            result.writeTalk();
        }
        return tvml::deliver(result, output, outputSize);
    } catch (...) { // nothing may leave this function, whatever its type
        return 0;
    }
}
