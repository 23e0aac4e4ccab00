// The operating system of a page, which has neither files nor a clock of its own:
// the caller hands their contents in. Entry: system().
#include "platform/page.h"
#include "platform/ini_text.h"
#include "platform/platform.h"

namespace tvml::platform {
namespace {

constexpr std::u16string_view kProgram = u"/page";
constexpr char32_t kReplacement = U'\uFFFD';

bool isLead(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isTrail(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Takes the first character off `text`.
char32_t takeCharacter(std::u16string_view& text) {
    const char16_t first = text.front();
    text.remove_prefix(1);
    if (!isLead(first) && !isTrail(first)) {
        return first;
    }
    if (isTrail(first) || text.empty() || !isTrail(text.front())) {
        return kReplacement;
    }
    const char32_t second = text.front();
    text.remove_prefix(1);
    return 0x10000 + ((char32_t{first} - 0xD800) << 10) + (second - 0xDC00);
}

void appendUtf8(char32_t character, std::string& bytes) {
    const auto put = [&](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    if (character < 0x80) {
        put(character);
        return;
    }
    if (character < 0x800) {
        put(0xC0 | (character >> 6));
    } else {
        if (character < 0x10000) {
            put(0xE0 | (character >> 12));
        } else {
            put(0xF0 | (character >> 18));
            put(0x80 | ((character >> 12) & 0x3F));
        }
        put(0x80 | ((character >> 6) & 0x3F));
    }
    put(0x80 | (character & 0x3F));
}

// An IniText that knows whether it would be read the same once more.
class PageIniFile final : public IniFile {
public:
    explicit PageIniFile(const std::u16string& current)
        : current_(current), read_(current), text_(current) {}

    std::size_t readString(std::u16string_view section, std::u16string_view key,
                           std::u16string_view defaultText,
                           std::span<char16_t> buffer) const override {
        return text_.readString(section, key, defaultText, buffer);
    }

    bool isCurrent() const override { return read_ == current_; }

private:
    const std::u16string& current_;
    std::u16string read_;
    IniText text_;
};

class PagePlatform final : public Platform {
public:
    std::u16string hostProgramPath(std::size_t capacity) const override {
        return kProgram.size() < capacity ? std::u16string(kProgram) : std::u16string();
    }

    char16_t pathSeparator() const override { return u'/'; }

    std::unique_ptr<IniFile> openIni(const std::u16string& path) const override {
        static const std::u16string missing;
        const PageInputs& inputs = pageInputs();
        const std::u16string_view name(path);
        if (name.ends_with(u"/keyword.ini")) {
            return std::make_unique<PageIniFile>(inputs.keywordIni);
        }
        return std::make_unique<PageIniFile>(name.ends_with(u"/Mirvol.ini") ? inputs.mirvolIni
                                                                            : missing);
    }

    std::string toUtf8(std::u16string_view text) const override {
        std::string bytes;
        bytes.reserve(text.size());
        while (!text.empty()) {
            appendUtf8(takeCharacter(text), bytes);
        }
        return bytes;
    }

    std::uint32_t secondsNow() const override { return pageInputs().seconds; }
};

} // namespace

PageInputs& pageInputs() {
    static PageInputs inputs;
    return inputs;
}

const Platform& system() {
    static const PagePlatform platform;
    return platform;
}

} // namespace tvml::platform
