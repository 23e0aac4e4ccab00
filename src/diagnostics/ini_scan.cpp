// Entry: scanIni.
#include "diagnostics/ini_scan.h"

#include <algorithm>

namespace tvml {
namespace {

bool isBlank(char16_t unit) {
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r') || unit == 0x1A;
}

std::u16string_view trim(std::u16string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::u16string_view unquote(std::u16string_view text) {
    const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                        (text.front() == u'"' || text.front() == u'\'');
    return quoted ? text.substr(1, text.size() - 2) : text;
}

char16_t lower(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

IniEntry entryOf(std::u16string_view whole, std::u16string_view line, std::int32_t number) {
    const auto range = [&](std::u16string_view part) {
        return TextRange{number, static_cast<std::size_t>(part.data() - whole.data()), part.size()};
    };
    const std::size_t equals = line.find(u'=');
    IniEntry entry;
    entry.key = trim(line.substr(0, equals));
    entry.keyRange = range(entry.key);
    entry.hasValue = equals != line.npos;
    entry.value = entry.hasValue ? unquote(trim(line.substr(equals + 1))) : line.substr(0, 0);
    entry.valueRange = entry.value.empty() ? entry.keyRange : range(entry.value);
    return entry;
}

} // namespace

bool sameIniName(std::u16string_view a, std::u16string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t x, char16_t y) { return lower(x) == lower(y); });
}

std::vector<IniEntry> scanIni(std::u16string_view text, std::u16string_view section,
                              TextRange& header) {
    std::vector<IniEntry> entries;
    header = {};
    bool inside = false;
    std::int32_t number = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(u'\n'), text.size());
        const std::u16string_view whole = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        ++number;
        const std::u16string_view line = trim(whole);
        if (line.empty() || line.front() == u';') {
            continue;
        }
        const std::size_t bracket = line.front() == u'[' ? line.rfind(u']') : line.npos;
        if (bracket != line.npos) {
            inside = header.line == 0 && sameIniName(trim(line.substr(1, bracket - 1)), section);
            if (inside) {
                header = {number, static_cast<std::size_t>(line.data() - whole.data()),
                          line.size()};
            }
        } else if (inside && line.front() != u'[') {
            entries.push_back(entryOf(whole, line, number));
        }
    }
    return entries;
}

} // namespace tvml
