// The text of one ini file, indexed for lookup: the portable heart of the ini
// service, for platforms that have none and for tests.
#ifndef TVML_PLATFORM_INI_TEXT_H
#define TVML_PLATFORM_INI_TEXT_H

#include "platform/platform.h"

#include <cstddef>
#include <cstdint>
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

} // namespace tvml::platform

#endif
