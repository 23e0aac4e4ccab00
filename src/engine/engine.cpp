// The filter as a page calls it: texts come in through buffers that the caller
// takes here, and the result is read where engine_result says. The functions are
// not reentrant. Entry: engine_convert.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "filter/conversion_run.h"
#include "platform/page.h"
#include "run/ini_files.h"

#define ENGINE_FUNCTION(name) extern "C" __attribute__((export_name(#name)))

namespace {

// A text in the caller's buffer, in UTF-16 units.
struct EngineText {
    const char16_t* units;
    std::uint32_t length;
};

// As texts of the exported library function, these end at their first terminator.
std::u16string_view view(const EngineText& text) {
    const std::u16string_view all(text.units, text.length);
    return all.substr(0, all.find(u'\0'));
}

std::u16string& result() {
    static std::u16string text;
    return text;
}

// The vocabulary and the settings that go with the inputs of a call. Each pair of
// files starts from nothing: what others held before is no part of a result.
tvml::IniFiles& filesFor(const EngineText& keywordIni, const EngineText& mirvolIni) {
    static std::unique_ptr<tvml::IniFiles> files;
    tvml::platform::PageInputs& inputs = tvml::platform::pageInputs();
    const std::u16string_view keywords(keywordIni.units, keywordIni.length);
    const std::u16string_view speeds(mirvolIni.units, mirvolIni.length);
    if (files == nullptr || inputs.keywordIni != keywords || inputs.mirvolIni != speeds) {
        inputs.keywordIni = keywords;
        inputs.mirvolIni = speeds;
        files = std::make_unique<tvml::IniFiles>(tvml::platform::system());
        files->load();
    }
    return *files;
}

} // namespace

// What the caller lays out, in this order, in 32-bit words.
struct EngineRequest {
    EngineText script;
    EngineText description;
    EngineText keywordIni;
    EngineText mirvolIni;
    std::int32_t playFrom;
    std::int32_t playTo;
    std::uint32_t seconds;
};

ENGINE_FUNCTION(engine_take) void* engine_take(std::size_t bytes) {
    return std::malloc(bytes);
}

ENGINE_FUNCTION(engine_give_back) void engine_give_back(void* memory) {
    std::free(memory);
}

// The length of the result in units, or -1 when the filter fails.
ENGINE_FUNCTION(engine_convert) std::int32_t engine_convert(const EngineRequest* request) {
    try {
        const tvml::IniFiles& files = filesFor(request->keywordIni, request->mirvolIni);
        tvml::platform::pageInputs().seconds = request->seconds;
        const auto run = std::make_unique<tvml::ConversionRun>(files.words, files.settings,
                                                               tvml::platform::system());
        result() = run->convert({view(request->script), request->playFrom, request->playTo,
                                 view(request->description)})
                       .text();
        return static_cast<std::int32_t>(result().size());
    } catch (...) { // nothing may leave the module, whatever its type
        result().clear();
        return -1;
    }
}

ENGINE_FUNCTION(engine_result) const char16_t* engine_result() {
    return result().data();
}
