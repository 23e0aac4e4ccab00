// Entries: the functions of the header.
#include "support/studio.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "reading/script_text.h"

namespace tvml {
namespace {

constexpr std::size_t kLongestWord = 126;

Words readShippedWords() {
    std::ifstream file(TVML_KEYWORD_INI, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const platform::IniText ini(utf16(bytes));
    Words words;
    std::array<char16_t, kLongestWord + 2> buffer;
    for (const std::u16string_view key : kKeys) {
        const std::size_t length = ini.readString(u"KEYWORD_STRING", key, u"missing", buffer);
        words.emplace(key, std::u16string(buffer.data(), length));
    }
    return words;
}

} // namespace

// A path is the standard library's way from UTF-8 to UTF-16.
std::u16string utf16(std::string_view utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).u16string();
}

std::u16string expand(std::u16string_view notation) {
    std::u16string text;
    for (std::size_t i = 0; i < notation.size(); ++i) {
        if (notation[i] == u'{' && !text.empty()) {
            const std::size_t end = notation.find(u'}', i);
            const std::u16string_view digits = notation.substr(i + 1, end - i - 1);
            const auto count = std::stoul(std::string(digits.begin(), digits.end()));
            text.append(count - 1, text.back());
            i = end;
        } else {
            text += notation[i] == u'|' ? u'\n' : notation[i];
        }
    }
    return text;
}

std::string shown(std::u16string_view text) {
    std::u16string bars(text);
    replaceAll(bars, u"\n", u"|");
    return platform::system().toUtf8(bars);
}

Words shippedWords(const Words& replaced) {
    static const Words kShipped = readShippedWords();
    Words words = replaced;
    words.insert(kShipped.begin(), kShipped.end());
    return words;
}

std::u16string iniText(const Words& words) {
    std::u16string text = u"[KEYWORD_STRING]\n";
    for (const auto& [key, word] : words) {
        text.append(key).append(u"=\"").append(word).append(u"\"\n");
    }
    return text;
}

KeywordTable tableOf(const Words& words) {
    KeywordTable table;
    for (std::size_t i = 0; i < kKeyCount; ++i) {
        const auto word = words.find(kKeys[i]);
        if (word != words.end()) {
            table.set(Key::at(i), word->second);
        }
    }
    return table;
}

std::u16string titleElement(std::u16string_view text) {
    return u"<title titlefont_ja='TJ' titlefont_en='TE' subtitlefont_ja='SJ' "
           u"subtitlefont_en='SE'>" +
           std::u16string(text) + u"</title>";
}

std::u16string tellingTemplates() {
    std::u16string elements;
    const auto add = [&](std::u16string_view name) {
        elements.append(u"<").append(name).append(u">").append(name);
        elements.append(u" $1 $2 $3 $4 $5</").append(name).append(u">");
    };
    for (const ElementRow& row : kCharacterElements) {
        if (row.name != u"talk" && row.name != u"subimagetalk") {
            add(row.name);
        }
    }
    for (const BuiltinRow& row : kSimpleElements) {
        add(row.name);
    }
    for (std::size_t i = indexOf(PlainElement::longshot); i < kPlainElements.size(); ++i) {
        add(kPlainElements[i].name);
    }
    add(kTwoshotElement);
    return elements;
}

ShippedProgramme::ShippedProgramme() : description(u"<staging>") {
    memory.files[u"/host/keyword.ini"] = iniText(shippedWords());
    files.load();
    description.append(kTwoCharacters).append(u"</staging>");
}

Studio::Studio(std::u16string_view elements, Words words) {
    platform.files[u"/host/keyword.ini"] = iniText(words);
    description_.append(u"<staging>").append(elements).append(u"</staging>");
    replaceAll(description_, u"|", u"\n");
}

std::string Studio::whole(std::u16string_view script, std::int32_t playFrom, std::int32_t playTo,
                          RunListener* listener) {
    const std::u16string lines = expand(script);
    files_.load();
    Listeners listeners;
    if (listener != nullptr) {
        listeners.add(*listener);
    }
    ConversionRun run(files_.words, files_.settings, platform,
                      listener != nullptr ? &listeners : nullptr);
    return shown(run.convert({lines, playFrom, playTo, description_}).text());
}

std::string Studio::body(std::u16string_view script, std::int32_t playFrom, std::int32_t playTo,
                         RunListener* listener) {
    constexpr std::string_view kInitializeEnd = "//! initializeEnd|";
    const std::string text = whole(script, playFrom, playTo, listener);
    const std::size_t found = text.find(kInitializeEnd);
    return found == text.npos ? "no initializeEnd: " + text
                              : text.substr(found + kInitializeEnd.size());
}

} // namespace tvml
