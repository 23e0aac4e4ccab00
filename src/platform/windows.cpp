// The operating system on Windows. Entry: system(). The only file that knows
// wchar_t: here its units are those of all texts of this system.
#include "platform/ini_text.h"
#include "platform/platform.h"

#include <algorithm>
#include <climits>
#include <ctime>
#include <new>
#include <utility>

#include "platform/windows_api.h"

namespace tvml::platform {
namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

// The same units under the name that the system's calls use.
wchar_t* wide(char16_t* text) {
    return reinterpret_cast<wchar_t*>(text);
}

const wchar_t* wide(const char16_t* text) {
    return reinterpret_cast<const wchar_t*>(text);
}

// The service opens the file anew for every read; it keeps the last file in a
// cache of its own.
class ProfileFile final : public IniFile {
public:
    explicit ProfileFile(std::u16string path) : path_(std::move(path)) {}

    std::size_t readString(std::u16string_view section, std::u16string_view key,
                           std::u16string_view defaultText,
                           std::span<char16_t> buffer) const override {
        // The service has no defined answer for a buffer without room.
        if (buffer.size() < 2) {
            std::ranges::fill(buffer, u'\0');
            return 0;
        }
        // The service wants terminated texts; views need not be. An empty
        // text is no null pointer, which would ask for lists of names.
        const std::u16string sectionName(section);
        const std::u16string keyName(key);
        const std::u16string fallback(defaultText);
        const auto size = static_cast<DWORD>(std::min<std::size_t>(buffer.size(), INT_MAX));
        return GetPrivateProfileStringW(wide(sectionName.c_str()), wide(keyName.c_str()),
                                        wide(fallback.c_str()), wide(buffer.data()), size,
                                        wide(path_.c_str()));
    }

private:
    std::u16string path_;
};

class WindowsPlatform final : public Platform {
public:
    std::u16string hostProgramPath(std::size_t capacity) const override {
        std::u16string path(capacity, u'\0');
        const DWORD length = GetModuleFileNameW(GetModuleHandleW(nullptr), wide(path.data()),
                                                static_cast<DWORD>(capacity));
        // A path that was cut to fit reports the whole capacity.
        path.resize(length < capacity ? length : 0);
        return path;
    }

    char16_t pathSeparator() const override { return u'\\'; }

    std::unique_ptr<IniFile> openIni(const std::u16string& path) const override {
        // Without a path the service reads a file of the system, and a path
        // cut at a terminator is the path of another file.
        if (path.empty() || path.find(u'\0') != path.npos) {
            return std::make_unique<IniText>(std::u16string());
        }
        return std::make_unique<ProfileFile>(path);
    }

    std::string toUtf8(std::u16string_view text) const override;

    std::uint32_t secondsNow() const override {
        return static_cast<std::uint32_t>(std::time(nullptr));
    }
};

std::string WindowsPlatform::toUtf8(std::u16string_view text) const {
    // The system takes a length of zero for an error.
    if (text.empty()) {
        return {};
    }
    // Its lengths are signed 32-bit numbers, and a unit takes up to 3 bytes.
    if (text.size() > INT_MAX / 3) {
        throw std::bad_alloc();
    }
    const int units = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, wide(text.data()), units, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide(text.data()), units, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

} // namespace

const Platform& system() {
    static const WindowsPlatform platform;
    return platform;
}

} // namespace tvml::platform
