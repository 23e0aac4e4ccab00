// A platform in memory: the host program, the files and the clock are what a
// test says, and pauses only add up.
#ifndef TVML_TESTS_PLATFORM_MEMORY_PLATFORM_H
#define TVML_TESTS_PLATFORM_MEMORY_PLATFORM_H

#include "platform/ini_text.h"
#include "platform/platform.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace tvml::platform {

class MemoryPlatform final : public Platform {
public:
    std::u16string hostPath = u"/host/program";
    char16_t separator = u'/';
    std::map<std::u16string, std::u16string> files; // full path to text
    std::uint32_t seconds = 0;
    mutable unsigned pausedMilliseconds = 0;

    std::u16string hostProgramPath(std::size_t capacity) const override {
        return hostPath.size() < capacity ? hostPath : std::u16string();
    }

    char16_t pathSeparator() const override { return separator; }

    std::unique_ptr<IniFile> openIni(const std::u16string& path) const override {
        const auto file = files.find(path);
        return std::make_unique<IniText>(file == files.end() ? std::u16string() : file->second);
    }

    std::string toUtf8(std::u16string_view text) const override { return system().toUtf8(text); }

    std::uint32_t secondsNow() const override { return seconds; }

    void pauseMilliseconds(unsigned milliseconds) const override {
        pausedMilliseconds += milliseconds;
    }
};

} // namespace tvml::platform

#endif
