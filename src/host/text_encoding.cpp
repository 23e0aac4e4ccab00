// Bytes to texts and back. Entries: decodeText, encodeText.
//
// UTF-16 is decoded here, as it needs no table; the rest is the platform's work.
#include "host/text_encoding.h"

#include <utility>

#include "platform/host_services.h"
#include "platform/platform.h"

namespace tvml::host {
namespace {

constexpr char16_t kByteOrderMark = u'\uFEFF';

bool isFirstHalf(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

bool isSecondHalf(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

char16_t unitOf(char low, char high) {
    return static_cast<char16_t>(static_cast<unsigned char>(low) |
                                 (static_cast<unsigned char>(high) << 8));
}

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

DecodedText decodeDetected(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) {
        return decodeAs(bytes, InputEncoding::utf16le);
    }
    if (bytes.starts_with("\xFE\xFF")) {
        return decodeAs(bytes, InputEncoding::utf16be);
    }
    DecodedText unicode = decodeAs(bytes, InputEncoding::utf8);
    if (!unicode.badOffset || bytes.starts_with("\xEF\xBB\xBF")) {
        return unicode;
    }
    // Japanese text in code page 932 is hardly ever well-formed UTF-8.
    DecodedText japanese = decodeAs(bytes, InputEncoding::cp932);
    return !japanese.badOffset || *japanese.badOffset > *unicode.badOffset ? japanese : unicode;
}

} // namespace

DecodedText decodeText(std::string_view bytes, InputEncoding encoding) {
    DecodedText result =
        encoding == InputEncoding::detect ? decodeDetected(bytes) : decodeAs(bytes, encoding);
    if (result.text.starts_with(kByteOrderMark)) {
        result.text.erase(0, 1);
    }
    return result;
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
    append(kByteOrderMark);
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
