// Turns the bytes of paths and settings files into UTF-16 text. Entry:
// decodeSettings; decodeUtf8 is its strict half, also used for paths.
#include "platform/decoding.h"

#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/ustring.h>

namespace tvml::platform {
namespace {

constexpr char16_t kReplacement = u'\uFFFD';

// Every encoding here gives at most one unit for each byte, so a text as long
// as the bytes always holds the result.
std::u16string roomFor(std::string_view bytes) {
    if (bytes.size() > INT32_MAX) {
        throw std::bad_alloc();
    }
    return std::u16string(bytes.size(), u'\0');
}

// For files that say they are UTF-8: damage is replaced where it stands.
std::u16string decodeLenientUtf8(std::string_view bytes) {
    std::u16string text = roomFor(bytes);
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(text.data(), static_cast<std::int32_t>(text.size()), &length, bytes.data(),
                         static_cast<std::int32_t>(bytes.size()), kReplacement, nullptr, &status);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

// An odd last byte is half a unit that got lost.
std::u16string decodeUtf16(std::string_view bytes, std::endian order) {
    std::u16string text(bytes.size() / 2, u'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * 2);
    if (order != std::endian::native) {
        for (char16_t& unit : text) {
            unit = static_cast<char16_t>((unit << 8) | (unit >> 8));
        }
    }
    if (bytes.size() % 2 != 0) {
        text.push_back(kReplacement);
    }
    return text;
}

constexpr bool isLead(unsigned char byte) {
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

constexpr bool isTrail(unsigned char byte) {
    return byte >= 0x40 && byte <= 0xFC && byte != 0x7F;
}

// Windows makes a middle dot of a pair that is none, second byte and all, even
// where that is a line end.
std::string withDotsForBadPairs(std::string_view bytes) {
    std::string pairs(bytes);
    for (std::size_t i = 0; i + 1 < pairs.size(); ++i) {
        if (!isLead(static_cast<unsigned char>(pairs[i]))) {
            continue;
        }
        if (!isTrail(static_cast<unsigned char>(pairs[i + 1]))) {
            pairs[i] = '\x81';
            pairs[i + 1] = '\x45';
        }
        ++i;
    }
    return pairs;
}

// What Windows makes of bytes that stand for nothing.
char16_t damaged(std::string_view bytes) {
    switch (bytes.size() == 1 ? static_cast<unsigned char>(bytes.front()) : 0) {
    case 0x80:
        return 0x80;
    case 0xA0:
        return 0xF8F0;
    case 0xFD:
        return 0xF8F1;
    case 0xFE:
        return 0xF8F2;
    case 0xFF:
        return 0xF8F3;
    default:
        return u'\u30FB';
    }
}

void U_CALLCONV writeDamaged(const void*, UConverterToUnicodeArgs* args, const char* bytes,
                             std::int32_t length, UConverterCallbackReason reason,
                             UErrorCode* status) {
    if (reason <= UCNV_IRREGULAR) {
        *status = U_ZERO_ERROR;
        const char16_t unit = damaged({bytes, static_cast<std::size_t>(length)});
        ucnv_cbToUWriteUChars(args, &unit, 1, 0, status);
    }
}

// An installation of the converter library without Japanese tables still
// leaves the ASCII part of the file readable.
std::u16string decodeAscii(std::string_view bytes) {
    std::u16string text = roomFor(bytes);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        text[i] = byte < 0x80 ? byte : kReplacement;
    }
    return text;
}

std::u16string decodeCodePage932(std::string_view bytes) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(
        ucnv_open("ibm-943_P15A-2003", &status), &ucnv_close);
    if (U_FAILURE(status)) {
        return decodeAscii(bytes);
    }
    ucnv_setToUCallBack(converter.get(), writeDamaged, nullptr, nullptr, nullptr, &status);
    std::u16string text = roomFor(bytes);
    const std::string pairs = withDotsForBadPairs(bytes);
    const std::int32_t length =
        ucnv_toUChars(converter.get(), text.data(), static_cast<std::int32_t>(text.size()),
                      pairs.data(), static_cast<std::int32_t>(pairs.size()), &status);
    text.resize(static_cast<std::size_t>(length));
    for (char16_t& unit : text) {
        unit = asciiControl(unit);
    }
    return text;
}

} // namespace

char16_t asciiControl(char16_t unit) {
    switch (unit) {
    case 0x1A:
        return 0x7F;
    case 0x1C:
        return 0x1A;
    case 0x7F:
        return 0x1C;
    default:
        return unit;
    }
}

std::optional<std::u16string> decodeUtf8(std::string_view bytes) {
    std::u16string text = roomFor(bytes);
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8(text.data(), static_cast<std::int32_t>(text.size()), &length, bytes.data(),
                  static_cast<std::int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::u16string decodeSettings(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) {
        return decodeUtf16(bytes.substr(2), std::endian::little);
    }
    if (bytes.starts_with("\xFE\xFF")) {
        return decodeUtf16(bytes.substr(2), std::endian::big);
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        return decodeLenientUtf8(bytes.substr(3));
    }
    // Files without a mark come from editors of two times: older ones wrote
    // code page 932, newer ones UTF-8. Code page 932 text of more than a few
    // letters is practically never well-formed UTF-8, so nothing is guessed.
    if (std::optional<std::u16string> text = decodeUtf8(bytes)) {
        return std::move(*text);
    }
    return decodeCodePage932(bytes);
}

} // namespace tvml::platform
