// What all fuzzers share: inputs are texts, so that seeds and findings can be
// read and edited. The fields of an input are separated by lines of "---".
#ifndef TVML_FUZZ_FUZZ_INPUT_H
#define TVML_FUZZ_FUZZ_INPUT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/decoding.h"
#include "platform/ini_text.h"
#include "vocabulary/keyword_table.h"

// An invariant of the code under test.
#define FUZZ_CHECK(condition)                                                                      \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #condition);           \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

namespace tvml::fuzz {

// As UTF-8, but surrogates stand for themselves and stray bytes for units of
// their value, so that every text of UTF-16 units has bytes that give it.
inline std::u16string unitsOf(std::string_view bytes) {
    const auto at = [&](std::size_t i) {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u;
    };
    std::u16string units;
    for (std::size_t i = 0; i < bytes.size();) {
        const unsigned first = at(i);
        const bool three = first >= 0xE0 && first < 0xF0 && (at(i + 1) & 0xC0) == 0x80 &&
                           (at(i + 2) & 0xC0) == 0x80;
        const unsigned unit =
            three ? (first & 0xF) << 12 | (at(i + 1) & 0x3F) << 6 | (at(i + 2) & 0x3F) : first;
        units += static_cast<char16_t>(unit);
        i += three ? 3 : 1;
    }
    return units;
}

// Takes the next field off the input; the last one is what is left.
inline std::string_view takeField(std::string_view& input) {
    constexpr std::string_view kSeparator = "\n---\n";
    const std::size_t end = input.find(kSeparator);
    const std::string_view field = input.substr(0, end);
    input.remove_prefix(end == input.npos ? input.size() : end + kSeparator.size());
    return field;
}

inline std::string_view inputOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

inline platform::IniText shippedVocabulary() {
    std::ifstream file(TVML_KEYWORD_INI, std::ios::binary);
    return platform::IniText(
        platform::decodeSettings(std::string(std::istreambuf_iterator<char>(file), {})));
}

// The shipped vocabulary under the entries of an input, which replace its words
// or end its load with a bad one. It is read once, not once an input.
class Vocabulary final : public platform::IniFile {
public:
    explicit Vocabulary(std::string_view entries)
        : entries_(u"[KEYWORD_STRING]\n" + unitsOf(entries)) {}

    std::size_t readString(std::u16string_view section, std::u16string_view key,
                           std::u16string_view fallback,
                           std::span<char16_t> buffer) const override {
        static const platform::IniText shipped = shippedVocabulary();
        std::array<char16_t, 128> word;
        const std::size_t size = shipped.readString(section, key, fallback, word);
        return entries_.readString(section, key, {word.data(), size}, buffer);
    }

private:
    const platform::IniText entries_;
};

inline KeywordTable vocabularyOf(std::string_view entries) {
    static const KeywordTable shipped = [] {
        KeywordTable words;
        words.loadFrom(Vocabulary({}));
        return words;
    }();
    KeywordTable words = shipped;
    if (!entries.empty()) {
        words.loadFrom(Vocabulary(entries));
    }
    return words;
}

// A host with the vocabulary and the settings of an input.
class Host final : public platform::Platform {
public:
    Host(std::string_view vocabulary, std::string_view settings)
        : vocabulary_(vocabulary), settings_(u"[TALK]\n" + unitsOf(settings)) {}

    std::u16string hostProgramPath(std::size_t) const override { return u"/host"; }
    char16_t pathSeparator() const override { return u'/'; }
    std::unique_ptr<platform::IniFile> openIni(const std::u16string& path) const override {
        if (path == u"/keyword.ini") {
            return std::make_unique<Vocabulary>(vocabulary_);
        }
        return std::make_unique<platform::IniText>(settings_);
    }
    std::string toUtf8(std::u16string_view text) const override {
        return platform::system().toUtf8(text);
    }
    std::uint32_t secondsNow() const override { return 1; }

private:
    const std::string_view vocabulary_;
    const std::u16string settings_;
};

} // namespace tvml::fuzz

#endif
