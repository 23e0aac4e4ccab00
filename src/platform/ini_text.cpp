// Reads the lines of an ini text once, keeps the entries sorted and answers
// lookups from them. Entry: IniText.
//
// The order is by hash first, so that a lookup among a few hundred keys costs
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

// Only the plain letters have two forms here, as in the Windows service: no
// look-alike can take the place of a key.
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

// Wider blanks are none: the full-width one is itself a word of the vocabulary.
// The old end-of-file mark is one, because editors left it at the end.
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

// Takes the first line off `rest`. Both marks of a CR LF end a line; the empty
// line between them means nothing.
std::u16string_view takeLine(std::u16string_view& rest) {
    const std::size_t length = lineLength(rest);
    const std::u16string_view line = rest.substr(0, length);
    rest.remove_prefix(std::min(length + 1, rest.size()));
    return line;
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

// A line that starts like a section and does not end like one is nothing; any
// other line without an equals sign is a key without a value, and hides later
// entries of that key.
void IniText::addLine(std::u16string_view line, std::uint32_t& section) {
    if (line.empty() || line.front() == u';') {
        return;
    }
    if (line.front() == u'[') {
        const std::size_t end = line.rfind(u']');
        if (end != line.npos) {
            section = static_cast<std::uint32_t>(sections_.size());
            sections_.push_back({section, stretch(trim(line.substr(1, end - 1)))});
        }
        return;
    }
    const std::size_t equals = line.find(u'=');
    const std::u16string_view key = trimEnd(line.substr(0, equals));
    Stretch value = {};
    if (equals != line.npos) {
        value = stretch(unquote(trim(line.substr(equals + 1))));
    }
    entries_.push_back({rank(section, key), stretch(key), value});
}

void IniText::sortIndex() {
    std::ranges::sort(sections_, [this](const Section& a, const Section& b) {
        const auto order = compareFolded(view(a.name), view(b.name));
        return order != 0 ? order < 0 : a.index < b.index;
    });
    std::ranges::sort(entries_, [this](const Entry& a, const Entry& b) {
        if (a.rank != b.rank) {
            return a.rank < b.rank;
        }
        const auto order = compareFolded(view(a.key), view(b.key));
        return order != 0 ? order < 0 : a.key.begin < b.key.begin;
    });
}

const IniText::Section* IniText::findSection(std::u16string_view name) const {
    const auto found = std::ranges::partition_point(sections_, [&](const Section& section) {
        return compareFolded(view(section.name), name) < 0;
    });
    const bool equal = found != sections_.end() && compareFolded(view(found->name), name) == 0;
    return equal ? &*found : nullptr;
}

const IniText::Entry* IniText::findEntry(std::uint32_t section, std::u16string_view key) const {
    const std::uint64_t wanted = rank(section, key);
    const auto found = std::ranges::partition_point(entries_, [&](const Entry& entry) {
        return entry.rank != wanted ? entry.rank < wanted : compareFolded(view(entry.key), key) < 0;
    });
    const bool equal = found != entries_.end() && found->rank == wanted &&
                       compareFolded(view(found->key), key) == 0;
    return equal ? &*found : nullptr;
}

} // namespace tvml::platform
