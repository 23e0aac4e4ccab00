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
#include <utility>

namespace tvml::platform {

class MemoryPlatform final : public Platform {
public:
    std::u16string hostPath = u"/host/program";
    char16_t separator = u'/';
    std::map<std::u16string, std::u16string> files; // full path to text
    std::uint32_t seconds = 0;
    mutable unsigned openedFiles = 0;

    std::u16string hostProgramPath(std::size_t capacity) const override {
        return hostPath.size() < capacity ? hostPath : std::u16string();
    }

    char16_t pathSeparator() const override { return separator; }

    std::unique_ptr<IniFile> openIni(const std::u16string& path) const override {
        ++openedFiles;
        return std::make_unique<File>(*this, path);
    }

    std::string toUtf8(std::u16string_view text) const override { return system().toUtf8(text); }

    std::uint32_t secondsNow() const override { return seconds; }

private:
    std::u16string textOf(const std::u16string& path) const {
        const auto file = files.find(path);
        return file == files.end() ? std::u16string() : file->second;
    }

    class File final : public IniFile {
    public:
        File(const MemoryPlatform& platform, std::u16string path)
            : platform_(platform), path_(std::move(path)), text_(platform.textOf(path_)),
              entries_(text_) {}
        std::size_t readString(std::u16string_view section, std::u16string_view key,
                               std::u16string_view defaultText,
                               std::span<char16_t> buffer) const override {
            return entries_.readString(section, key, defaultText, buffer);
        }
        bool isCurrent() const override { return platform_.textOf(path_) == text_; }

    private:
        const MemoryPlatform& platform_;
        std::u16string path_;
        std::u16string text_;
        IniText entries_;
    };
};

} // namespace tvml::platform

#endif
