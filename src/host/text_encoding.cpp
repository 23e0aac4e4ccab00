// Bytes to texts and back. Entries: decodeText, encodeText.
//
// UTF-16 is decoded here, as it needs no table; the rest is the platform's work.
#include "host/text_encoding.h"

#include <algorithm>
#include <utility>

#include "platform/host_services.h"
#include "platform/platform.h"

namespace tvml::host {
namespace {

constexpr char16_t kByteOrderMark = u'\uFEFF';

// A character outside the basic plane takes two units, each of a range of its
// own.
bool isFirstHalf(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

bool isSecondHalf(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

// From bytes, not by a copy of memory: the file's byte order is its own.
char16_t unitOf(char low, char high) {
    return static_cast<char16_t>(static_cast<unsigned char>(low) |
                                 (static_cast<unsigned char>(high) << 8));
}

// An odd byte at the end is half a unit that got lost.
DecodedText decodeUtf16(std::string_view bytes, InputEncoding encoding) {
    const std::size_t low = encoding == InputEncoding::utf16le ? 0 : 1;
    DecodedText result{std::u16string(bytes.size() / 2, u'\0'), encoding, std::nullopt};
    for (std::size_t i = 0; i < result.text.size(); ++i) {
        result.text[i] = unitOf(bytes[2 * i + low], bytes[2 * i + 1 - low]);
    }
    const std::size_t half = findHalfPair(result.text);
    if (half != std::u16string::npos) {
        result.text.resize(half);
        result.badOffset = 2 * half;
    } else if (bytes.size() % 2 != 0) {
        result.badOffset = bytes.size() - 1;
    }
    return result;
}

// As one encoding and no other.
DecodedText decodeAs(std::string_view bytes, InputEncoding encoding) {
    switch (encoding) {
    case InputEncoding::utf16le:
    case InputEncoding::utf16be:
        return decodeUtf16(bytes, encoding);
    default: {
        const auto page =
            encoding == InputEncoding::cp932 ? platform::CodePage::cp932 : platform::CodePage::utf8;
        platform::Decoding decoding = platform::decode(bytes, page);
        return {std::move(decoding.text), encoding, decoding.badOffset};
    }
    }
}

// Bytes of the character that this byte begins; 0 when it begins none.
std::size_t utf8Length(char lead) {
    const auto byte = static_cast<unsigned char>(lead);
    if (byte < 0x80) {
        return 1;
    }
    return byte < 0xC2 || byte > 0xF4 ? 0 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

// Whether bytes that are not all UTF-8 are so with some damage. Japanese
// characters take three bytes there, a sequence that code page 932 seldom has;
// two bytes could as well be two half-width letters of that.
bool isDamagedUtf8(std::string_view bytes) {
    std::size_t characters = 0;
    std::size_t damage = 0;
    while (!bytes.empty()) {
        const std::size_t length = utf8Length(bytes.front());
        std::size_t taken = 1;
        while (taken < std::min(length, bytes.size()) && (bytes[taken] & 0xC0) == 0x80) {
            ++taken;
        }
        characters += taken == length && length > 2 ? 1 : 0;
        damage += taken != length ? 1 : 0;
        bytes.remove_prefix(taken);
    }
    return characters > damage;
}

// A mark decides alone. A file that has one and does not decode is damaged, and
// to take it for another encoding would make nonsense of all of it.
DecodedText decodeDetected(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) {
        return decodeAs(bytes, InputEncoding::utf16le);
    }
    if (bytes.starts_with("\xFE\xFF")) {
        return decodeAs(bytes, InputEncoding::utf16be);
    }
    // Strict decoding finds out: a text of another encoding hardly ever passes.
    DecodedText unicode = decodeAs(bytes, InputEncoding::utf8);
    if (!unicode.badOffset || bytes.starts_with("\xEF\xBB\xBF") || isDamagedUtf8(bytes)) {
        return unicode;
    }
    return decodeAs(bytes, InputEncoding::cp932);
}

} // namespace

DecodedText decodeText(std::string_view bytes, InputEncoding encoding) {
    DecodedText result =
        encoding == InputEncoding::detect ? decodeDetected(bytes) : decodeAs(bytes, encoding);
    // In whatever encoding it came: the filter would take it for a letter.
    if (result.text.starts_with(kByteOrderMark)) {
        result.text.erase(0, 1);
    }
    return result;
}

bool isIso2022Jp(std::string_view bytes) {
    return bytes.find("\x1B$B") != std::string_view::npos ||
           bytes.find("\x1B$@") != std::string_view::npos;
}

// All of its characters are pairs with both top bits set; a quarter of any Japanese
// text is kana, which have rows of their own.
bool isEucJp(std::string_view bytes) {
    const auto at = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    std::size_t pairs = 0;
    std::size_t kana = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (at(i) < 0x80) {
            continue;
        }
        const bool isPair = at(i) >= 0xA1 && i + 1 < bytes.size() && at(i + 1) >= 0xA1;
        if (!isPair) {
            return false;
        }
        kana += at(i) == 0xA4 || at(i) == 0xA5 ? 1 : 0;
        ++pairs;
        ++i;
    }
    return pairs > 0 && 4 * kana >= pairs;
}

std::string_view encodingName(InputEncoding encoding) {
    switch (encoding) {
    case InputEncoding::utf16le:
        return "UTF-16LE";
    case InputEncoding::utf16be:
        return "UTF-16BE";
    case InputEncoding::cp932:
        return "CP932 (Shift_JIS)";
    default:
        return "UTF-8";
    }
}

std::string encodeText(std::u16string_view text, OutputEncoding encoding) {
    if (encoding == OutputEncoding::utf8) {
        return platform::system().toUtf8(text);
    }
    std::string bytes;
    bytes.reserve(2 * text.size() + 2);
    const auto append = [&bytes](char16_t unit) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    };
    append(kByteOrderMark); // without it no reader can know the encoding
    for (const char16_t unit : text) {
        append(unit);
    }
    return bytes;
}

std::size_t findHalfPair(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isFirstHalf(text[i]) && i + 1 < text.size() && isSecondHalf(text[i + 1])) {
            ++i;
        } else if (isFirstHalf(text[i]) || isSecondHalf(text[i])) {
            return i;
        }
    }
    return std::u16string_view::npos;
}

} // namespace tvml::host
