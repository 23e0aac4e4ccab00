// The ini service, against its rules. Fields: section, key, default, file bytes.
#include <algorithm>
#include <memory>
#include <optional>

#include "fuzz_input.h"

namespace {

using namespace tvml;

constexpr std::u16string_view kBlanks = u" \t\n\v\f\r\x1A";

std::u16string_view trimmed(std::u16string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::u16string_view unquoted(std::u16string_view text) {
    const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                        (text.front() == u'"' || text.front() == u'\'');
    return quoted ? text.substr(1, text.size() - 2) : text;
}

bool sameName(std::u16string_view a, std::u16string_view b) {
    const auto fold = [](char16_t unit) { return unit >= u'A' && unit <= u'Z' ? unit + 32 : unit; };
    return std::ranges::equal(a, b, [&](auto x, auto y) { return fold(x) == fold(y); });
}

// The value of a key by reading line after line; nothing when there is none.
std::optional<std::u16string_view> valueIn(std::u16string_view text, std::u16string_view section,
                                           std::u16string_view key) {
    bool inside = section.empty();
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(u"\n\r"), text.size());
        const std::u16string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t equals = line.find(u'=');
        if (line.empty() || line.front() == u';') {
            continue; // a comment
        } else if (line.front() == u'[') {
            const std::size_t close = line.rfind(u']');
            if (close != line.npos) {
                if (inside) {
                    return std::nullopt; // only the first section of a name counts
                }
                inside = sameName(trimmed(line.substr(1, close - 1)), section);
            }
        } else if (inside && sameName(trimmed(line.substr(0, equals)), key)) {
            return equals == line.npos ? std::nullopt
                                       : std::optional(unquoted(trimmed(line.substr(equals + 1))));
        }
    }
    return std::nullopt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input = fuzz::inputOf(data, size);
    const std::u16string section = fuzz::unitsOf(fuzz::takeField(input));
    const std::u16string key = fuzz::unitsOf(fuzz::takeField(input));
    const std::u16string fallback = fuzz::unitsOf(fuzz::takeField(input));
    const std::u16string text = platform::decodeSettings(input);
    FUZZ_CHECK(text.size() <= input.size() + 1);
    std::u16string_view expected = fallback;
    expected = unquoted(expected.substr(0, expected.find_last_not_of(u' ') + 1));
    expected = valueIn(text, trimmed(section), trimmed(key)).value_or(expected);
    expected = expected.substr(0, expected.find(u'\0'));
    const platform::IniText file(text);
    for (std::size_t room = 0; room <= expected.size() + 2; room += room / 8 + 1) {
        const auto buffer = std::make_unique<char16_t[]>(room); // exact, for the sanitizer
        const std::size_t count = file.readString(section, key, fallback, {buffer.get(), room});
        FUZZ_CHECK(count == std::min(expected.size(), room == 0 ? 0 : room - 1));
        FUZZ_CHECK(std::u16string_view(buffer.get(), count) == expected.substr(0, count));
        FUZZ_CHECK(room == 0 || buffer[count] == u'\0');
    }
    return 0;
}
