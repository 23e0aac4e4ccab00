// What the lines of an ini text mean. Entries: IniText, which reads them once,
// keeps the entries sorted and answers lookups from them, and readIniSection,
// which lists them with their places.
//
// The sorted order is by hash first, so that a lookup among a few hundred keys costs
// a few comparisons of numbers; equal hashes are told apart by their text, so
// that a file made of colliding keys cannot make lookups slow either.
#include "platform/ini_text.h"

#include <algorithm>
#include <bit>
#include <compare>
#include <cstring>
#include <utility>

namespace tvml::platform {
namespace {

// Only A to Z compare without case, as in the Windows service: no other letter
// with a small and a capital form can take the place of a key's.
char16_t fold(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

// The number that decides about nearly all comparisons of two entries.
std::uint64_t rank(std::uint32_t section, std::u16string_view key) {
    std::uint32_t hash = 0;
    for (const char16_t unit : key) {
        hash = std::rotl(hash, 5) ^ fold(unit);
    }
    return (std::uint64_t{section} << 32) | hash;
}

// Most names are spelt alike in file and program, so equal bytes come first.
std::strong_ordering compareFolded(std::u16string_view a, std::u16string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    if (common != 0 && std::memcmp(a.data(), b.data(), common * sizeof(char16_t)) != 0) {
        for (std::size_t i = 0; i < common; ++i) {
            const auto order = fold(a[i]) <=> fold(b[i]);
            if (order != 0) {
                return order;
            }
        }
    }
    return a.size() <=> b.size();
}

// The full-width blank is none, since it is a word of the vocabulary itself. The
// old end-of-file mark (0x1A) is one, since old editors left it at a file's end.
bool isBlank(char16_t unit) {
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r') || unit == 0x1A;
}

std::u16string_view trimEnd(std::u16string_view text) {
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::u16string_view trim(std::u16string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    return trimEnd(text);
}

std::u16string_view unquote(std::u16string_view text) {
    const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                        (text.front() == u'"' || text.front() == u'\'');
    return quoted ? text.substr(1, text.size() - 2) : text;
}

// The default text is treated like a value, but only spaces are dropped and
// only at its end.
std::u16string_view trimDefault(std::u16string_view text) {
    while (text.ends_with(u' ')) {
        text.remove_suffix(1);
    }
    return unquote(text);
}

bool endsLine(char16_t unit) {
    return unit == u'\n' || unit == u'\r';
}

// The number of units in front of the first line end. Four units at a time
// while none of the four is as small as a line end: this search sees every
// unit of the file and is the longest part of opening it.
std::size_t lineLength(std::u16string_view text) {
    constexpr std::uint64_t kEach = 0x0001000100010001U;
    std::size_t length = 0;
    for (std::uint64_t four = 0; length + 4 <= text.size(); length += 4) {
        std::memcpy(&four, text.data() + length, sizeof four);
        if (((four - kEach * 14) & ~four & (kEach << 15)) != 0) {
            break;
        }
    }
    while (length < text.size() && !endsLine(text[length])) {
        ++length;
    }
    return length;
}

bool isAt(std::u16string_view text, std::size_t place, char16_t unit) {
    return place < text.size() && text[place] == unit;
}

// Inline for the reading of whole files.
inline std::u16string_view takeLine(std::u16string_view& rest) {
    const std::size_t length = lineLength(rest);
    const std::u16string_view line = rest.substr(0, length);
    const bool isPair = isAt(rest, length, u'\r') && isAt(rest, length + 1, u'\n');
    rest.remove_prefix(std::min(length + (isPair ? 2 : 1), rest.size()));
    return line;
}

// What a line says.
struct Meaning {
    enum class Kind : std::uint8_t { nothing, header, entry };
    Kind kind = Kind::nothing;
    std::u16string_view name; // of the section, or the key
    std::u16string_view value = {};
    bool hasValue = false;
};

// Of a line without blanks around it. A line that starts like a section and does
// not end like one is nothing; any other line without an equals sign is a key
// without a value.
Meaning meaningOf(std::u16string_view line) {
    if (line.empty() || line.front() == u';') {
        return {};
    }
    if (line.front() == u'[') {
        const std::size_t end = line.rfind(u']');
        return end == line.npos ? Meaning{}
                                : Meaning{Meaning::Kind::header, trim(line.substr(1, end - 1))};
    }
    const std::size_t equals = line.find(u'=');
    if (equals == line.npos) {
        return {Meaning::Kind::entry, line};
    }
    return {Meaning::Kind::entry, trimEnd(line.substr(0, equals)),
            unquote(trim(line.substr(equals + 1))), true};
}

// A terminator inside the value ends it, so that the count and the terminator
// always tell the same length.
std::size_t copyTerminated(std::u16string_view value, std::span<char16_t> buffer) {
    if (buffer.empty()) {
        return 0;
    }
    const std::size_t room = std::min(value.size(), buffer.size() - 1);
    std::size_t count = 0;
    while (count < room && value[count] != u'\0') {
        buffer[count] = value[count];
        ++count;
    }
    buffer[count] = u'\0';
    return count;
}

} // namespace

IniText::IniText(std::u16string text) : text_(std::move(text)), sections_(1) {
    if (text_.size() > UINT32_MAX) {
        text_.clear();
    }
    std::uint32_t section = 0;
    for (std::u16string_view rest = text_; !rest.empty();) {
        addLine(trim(takeLine(rest)), section);
    }
    sortIndex();
}

std::size_t IniText::readString(std::u16string_view section, std::u16string_view key,
                                std::u16string_view defaultText, std::span<char16_t> buffer) const {
    const Section* const found = findSection(trim(section));
    const Entry* const entry = found ? findEntry(found->index, trim(key)) : nullptr;
    const bool hasValue = entry != nullptr && entry->value.begin != 0;
    return copyTerminated(hasValue ? view(entry->value) : trimDefault(defaultText), buffer);
}

std::u16string_view IniText::view(Stretch part) const {
    return std::u16string_view(text_).substr(part.begin, part.length);
}

IniText::Stretch IniText::stretch(std::u16string_view part) const {
    return {static_cast<std::uint32_t>(part.data() - text_.data()),
            static_cast<std::uint32_t>(part.size())};
}

// An entry without a value is kept: it hides later entries of its key.
void IniText::addLine(std::u16string_view line, std::uint32_t& section) {
    const Meaning meaning = meaningOf(line);
    if (meaning.kind == Meaning::Kind::header) {
        section = static_cast<std::uint32_t>(sections_.size());
        sections_.push_back({section, stretch(meaning.name)});
    } else if (meaning.kind == Meaning::Kind::entry) {
        const Stretch value = meaning.hasValue ? stretch(meaning.value) : Stretch{};
        entries_.push_back({rank(section, meaning.name), stretch(meaning.name), value});
    }
}

void IniText::sortIndex() {
    std::sort(sections_.begin(), sections_.end(), [this](const Section& a, const Section& b) {
        const auto order = compareFolded(view(a.name), view(b.name));
        return order != 0 ? order < 0 : a.index < b.index;
    });
    std::sort(entries_.begin(), entries_.end(), [this](const Entry& a, const Entry& b) {
        if (a.rank != b.rank) {
            return a.rank < b.rank;
        }
        const auto order = compareFolded(view(a.key), view(b.key));
        return order != 0 ? order < 0 : a.key.begin < b.key.begin;
    });
}

const IniText::Section* IniText::findSection(std::u16string_view name) const {
    const auto found =
        std::partition_point(sections_.begin(), sections_.end(), [&](const Section& section) {
            return compareFolded(view(section.name), name) < 0;
        });
    const bool equal = found != sections_.end() && compareFolded(view(found->name), name) == 0;
    return equal ? &*found : nullptr;
}

const IniText::Entry* IniText::findEntry(std::uint32_t section, std::u16string_view key) const {
    const std::uint64_t wanted = rank(section, key);
    const auto found =
        std::partition_point(entries_.begin(), entries_.end(), [&](const Entry& entry) {
            return entry.rank != wanted ? entry.rank < wanted
                                        : compareFolded(view(entry.key), key) < 0;
        });
    const bool equal = found != entries_.end() && found->rank == wanted &&
                       compareFolded(view(found->key), key) == 0;
    return equal ? &*found : nullptr;
}

IniSection readIniSection(std::u16string_view text, std::u16string_view name) {
    IniSection section;
    name = trim(name);
    bool found = name.empty(); // what precedes the first header, and no later one
    bool inside = found;
    for (std::int32_t number = 1; !text.empty(); ++number) {
        const std::u16string_view whole = takeLine(text);
        const auto part = [&](std::u16string_view of) {
            return IniPart{of, number, static_cast<std::size_t>(of.data() - whole.data())};
        };
        const std::u16string_view line = trim(whole);
        const Meaning meaning = meaningOf(line);
        if (meaning.kind == Meaning::Kind::header) {
            inside = !found && sameIniName(meaning.name, name);
            found = found || inside;
            section.header = inside ? part(line) : section.header;
        } else if (meaning.kind == Meaning::Kind::entry && inside) {
            section.entries.push_back(
                {part(meaning.name), meaning.hasValue ? part(meaning.value) : IniPart{}});
        }
    }
    return section;
}

std::u16string_view takeIniLine(std::u16string_view& rest) {
    return takeLine(rest);
}

bool sameIniName(std::u16string_view a, std::u16string_view b) {
    return compareFolded(a, b) == 0;
}

} // namespace tvml::platform
