// Expat as this code uses it: in its form that reads and gives UTF-16 units.
#ifndef TVML_STAGING_XML_EXPAT_H
#define TVML_STAGING_XML_EXPAT_H

#ifndef XML_UNICODE
#define XML_UNICODE
#endif
#include <expat.h>

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

namespace tvml {

static_assert(sizeof(XML_Char) == sizeof(char16_t) && std::is_unsigned_v<XML_Char>,
              "texts go to and from the XML library as they are");

// The library has a 16-bit type of its own for what is char16_t here.
inline std::u16string_view unitsOf(const XML_Char* text) {
    return reinterpret_cast<const char16_t*>(text);
}
inline std::u16string_view unitsOf(const XML_Char* text, int length) {
    return {reinterpret_cast<const char16_t*>(text), static_cast<std::size_t>(length)};
}

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ParserHandle = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser>;

} // namespace tvml

#endif
