// The component's own settings file, "Mirvol.ini": the five talk speeds.
#ifndef TVML_RUN_SETTINGS_H
#define TVML_RUN_SETTINGS_H

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace tvml {

// A reader of one ini file in the folder of the host program.
class TvmlInifile {
public:
    explicit TvmlInifile(const platform::Platform& platform) : platform_(&platform) {}
    virtual ~TvmlInifile() = default;
    TvmlInifile(const TvmlInifile&) = delete;
    TvmlInifile& operator=(const TvmlInifile&) = delete;

    virtual bool load() = 0;
    virtual bool release() = 0;

    // Names the file. False, with the path unchanged, when `name` is null, too
    // long, or gives a path of more than 260 units.
    bool setFile(const char16_t* name);

    // Reads a key through the ini service. False when the value has 127 units
    // or more (the service cuts what does not fit).
    bool readString(std::u16string_view section, std::u16string_view key,
                    std::u16string_view defaultText, std::span<char16_t> buffer,
                    std::u16string_view& value) const;

    const std::u16string& path() const { return path_; }

private:
    const platform::Platform* platform_;
    std::u16string path_;
    std::unique_ptr<platform::IniFile> file_;
};

enum class TalkSpeed : std::uint8_t { normally, slow, verySlow, fast, veryFast };
inline constexpr std::size_t kTalkSpeedCount = 5;

class TvmlIniMirvol final : public TvmlInifile {
public:
    using TvmlInifile::TvmlInifile;

    // Reads the five speeds. Stops with false at the first one that is too long
    // or marked as an error; that one and the later ones keep what they held.
    bool load() override;
    bool release() override;

    // The speed as a TVML number text. One that was never read is its default.
    std::u16string_view speed(TalkSpeed which) const;

private:
    std::array<std::optional<std::u16string>, kTalkSpeedCount> speeds_;
};

} // namespace tvml

#endif
