// Entries: chooseIniFolder, iniPlatform.
#include "host/ini_folder.h"

#include "host/language.h"

namespace tvml::host {
namespace {

constexpr std::size_t kPathUnits = 32768; // long enough for any path of any system

class IniPlatform final : public platform::Platform {
public:
    std::u16string folder; // empty: the program's

    std::u16string hostProgramPath(std::size_t capacity) const override {
        if (folder.empty()) {
            return platform::system().hostProgramPath(capacity);
        }
        std::u16string path = folder + pathSeparator();
        path += u"program"; // any name: its folder is asked for
        return path.size() < capacity ? path : std::u16string();
    }
    char16_t pathSeparator() const override { return platform::system().pathSeparator(); }
    std::unique_ptr<platform::IniFile> openIni(const std::u16string& path) const override {
        return platform::system().openIni(path);
    }
    std::string toUtf8(std::u16string_view text) const override {
        return platform::system().toUtf8(text);
    }
    std::uint32_t secondsNow() const override { return platform::system().secondsNow(); }
};

IniPlatform chosen;

} // namespace

void chooseIniFolder(const std::string& folder) {
    chosen.folder = utf16(folder);
}

const platform::Platform& iniPlatform() {
    return chosen;
}

std::string iniFile(std::u16string_view name) {
    const std::u16string program = chosen.hostProgramPath(kPathUnits);
    const std::size_t separator = program.rfind(chosen.pathSeparator());
    return chosen.toUtf8(program.substr(0, separator + 1).append(name));
}

} // namespace tvml::host
