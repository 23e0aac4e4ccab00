// Reading "Mirvol.ini". Entry: TvmlIniMirvol::load.
#include "run/settings.h"

#include "vocabulary/keyword_table.h"

namespace tvml {
namespace {

constexpr std::size_t kPathUnits = 261; // with its terminator
constexpr std::size_t kBufferUnits = 128;
constexpr std::u16string_view kErrorMark = u"Mirvol.ini error";

struct SpeedRow {
    std::u16string_view key;
    std::u16string_view defaultText;
};

// In the order of TalkSpeed, which is the order of reading.
constexpr std::array<SpeedRow, kTalkSpeedCount> kSpeeds{{
    {u"speak_normally", u"1.0"},
    {u"speak_slow", u"0.7"},
    {u"speak_very_slow", u"0.2"},
    {u"speak_fast", u"1.1"},
    {u"speak_very_fast", u"1.8"},
}};

} // namespace

bool TvmlInifile::setFile(const char16_t* name) {
    if (name == nullptr || std::u16string_view(name).size() >= kPathUnits) {
        return false;
    }
    std::u16string path = hostIniPath(*platform_, name);
    if (path.empty()) {
        return false;
    }
    if (file_ == nullptr || path != path_ || !file_->isCurrent()) {
        file_.reset();
        path_ = std::move(path);
        file_ = platform_->openIni(path_);
    }
    return true;
}

bool TvmlInifile::readString(std::u16string_view section, std::u16string_view key,
                             std::u16string_view defaultText, std::span<char16_t> buffer,
                             std::u16string_view& value) const {
    if (file_ == nullptr) {
        value = defaultText;
        return true;
    }
    const std::size_t length = file_->readString(section, key, defaultText, buffer);
    value = std::u16string_view(buffer.data(), length);
    return length < kBufferUnits - 1;
}

bool TvmlIniMirvol::load() {
    setFile(u"Mirvol.ini");
    std::array<char16_t, kBufferUnits> buffer;
    for (std::size_t i = 0; i < kSpeeds.size(); ++i) {
        std::u16string_view value;
        if (!readString(u"TALK", kSpeeds[i].key, kSpeeds[i].defaultText, buffer, value) ||
            value == kErrorMark) {
            return false;
        }
        speeds_[i] = std::u16string(value);
    }
    return true;
}

bool TvmlIniMirvol::release() {
    speeds_.fill(std::nullopt);
    return true;
}

std::u16string_view TvmlIniMirvol::speed(TalkSpeed which) const {
    const auto index = static_cast<std::size_t>(which);
    return speeds_[index].has_value() ? std::u16string_view(*speeds_[index])
                                      : kSpeeds[index].defaultText;
}

} // namespace tvml
