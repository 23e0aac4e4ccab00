// The encodings of the host's files.
#ifndef TVML_HOST_TEXT_ENCODING_H
#define TVML_HOST_TEXT_ENCODING_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tvml::host {

enum class InputEncoding : std::uint8_t { detect, utf8, utf16le, utf16be, cp932 };
enum class OutputEncoding : std::uint8_t { utf8, utf16le };

// A text in UTF-16, without a byte order mark, up to the first bytes that are
// none in the encoding.
struct DecodedText {
    std::u16string text;
    InputEncoding encoding;               // that was detected or given
    std::optional<std::size_t> badOffset; // of those bytes, in bytes
};

// Detection: the encoding that a byte order mark tells; without one UTF-8 when
// all bytes, or nearly all, are UTF-8; else code page 932.
DecodedText decodeText(std::string_view bytes, InputEncoding encoding);

// Whether the bytes are of an encoding that is not read, though they decode as one
// that is: the escape sequences of the first are ASCII, and the pairs of the second
// half-width katakana.
bool isIso2022Jp(std::string_view bytes);
bool isEucJp(std::string_view bytes);

// As messages show it, such as "UTF-8".
std::string_view encodingName(InputEncoding encoding);

// UTF-8 without, UTF-16LE with a byte order mark. Half a surrogate pair becomes
// U+FFFD in UTF-8.
std::string encodeText(std::u16string_view text, OutputEncoding encoding);

// Where the first half of a surrogate pair stands that lacks the other half;
// npos when there is none.
std::size_t findHalfPair(std::u16string_view text);

} // namespace tvml::host

#endif
