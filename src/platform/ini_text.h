// The text of one ini file, indexed for lookup: the portable heart of the ini
// service, for platforms that have none and for tests. Beside it, for messages
// about such a text, its entries with their places, by the same rules.
#ifndef TVML_PLATFORM_INI_TEXT_H
#define TVML_PLATFORM_INI_TEXT_H

#include "platform/platform.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tvml::platform {

class IniText final : public IniFile {
public:
    // Indexes the whole text at once; reads then allocate nothing.
    explicit IniText(std::u16string text);

    std::size_t readString(std::u16string_view section, std::u16string_view key,
                           std::u16string_view defaultText,
                           std::span<char16_t> buffer) const override;

private:
    // A stretch of text_. Offsets stay valid when the object moves and take
    // half the room of a view; a file of short lines has millions of them.
    struct Stretch {
        std::uint32_t begin;
        std::uint32_t length;
    };
    struct Entry {
        std::uint64_t rank; // section index above the hash of the folded key
        Stretch key;
        Stretch value; // at 0, where no value can stand, when the line has none
    };
    // The first section, of empty name, holds what precedes the first header.
    struct Section {
        std::uint32_t index; // place among the sections of the file
        Stretch name;
    };

    std::u16string_view view(Stretch part) const;
    Stretch stretch(std::u16string_view part) const;
    void addLine(std::u16string_view line, std::uint32_t& section);
    void sortIndex();
    const Section* findSection(std::u16string_view name) const;
    const Entry* findEntry(std::uint32_t section, std::u16string_view key) const;

    std::u16string text_;
    std::vector<Section> sections_; // by folded name, the first of a name first
    std::vector<Entry> entries_;    // by rank and folded key, the first of a key first
};

// A part of one line of an ini text.
struct IniPart {
    std::u16string_view text;
    std::int32_t line = 0;
    std::size_t start = 0; // the units of the line in front of it
};

struct IniEntry {
    IniPart key;   // as written
    IniPart value; // without enclosing quotes; empty when the line has none
};

// Its views are into the text that it was read from.
struct IniSection {
    std::optional<IniPart> header;
    std::vector<IniEntry> entries; // in the order of the text
};

// The section whose entries a lookup in `name` finds, with those that others
// hide. It has no header when there is none of that name, or when the section is
// what precedes the first header.
IniSection readIniSection(std::u16string_view text, std::u16string_view name);

// Takes the first line off `rest`. CR, LF and CR LF each end a line.
std::u16string_view takeIniLine(std::u16string_view& rest);

// Whether two sections or two keys have the same name.
bool sameIniName(std::u16string_view a, std::u16string_view b);

} // namespace tvml::platform

#endif
