// Bytes that come from outside, made into UTF-16 text. Used by the native
// platform only; on Windows the system decodes its files itself.
#ifndef TVML_PLATFORM_DECODING_H
#define TVML_PLATFORM_DECODING_H

#include <optional>
#include <string>
#include <string_view>

namespace tvml::platform {

// The text of `bytes`, or nothing when they are not well-formed UTF-8.
std::optional<std::u16string> decodeUtf8(std::string_view bytes);

// The text of a settings file, without its byte order mark:
//  - UTF-16 in either byte order, or UTF-8, when a byte order mark says so;
//  - UTF-8 when the bytes are well-formed UTF-8;
//  - code page 932 otherwise.
// Always gives a text: what cannot be decoded becomes U+FFFD, and lone
// surrogates of a UTF-16 file are kept.
std::u16string decodeSettings(std::string_view bytes);

// The control character that a file means by one of the code page 932 converter:
// the converter follows a hardware table in which three of them have changed
// places.
char16_t asciiControl(char16_t unit);

} // namespace tvml::platform

#endif
