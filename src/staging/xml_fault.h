// Why a parse ends before the end of its text.
#ifndef TVML_STAGING_XML_FAULT_H
#define TVML_STAGING_XML_FAULT_H

#include <cstdint>
#include <string_view>

#include "staging/xml_expat.h"

namespace tvml {

// Thrown where the library would go on. `message` is a literal; its "{}" stands
// for `name`, which must live until the parse has ended.
struct XmlFault {
    std::u16string_view message;
    std::u16string_view name{};
};

inline void checkXml(bool right, std::u16string_view message, std::u16string_view name = {}) {
    if (!right) {
        throw XmlFault{message, name};
    }
}

// Where people look for an error: where the library names it, behind the
// reference there, or where the text ended too early.
enum class XmlErrorPlace : std::uint8_t { named, behindReference, endOfText };

// What is told about an error that the library found. "{}" stands for the open
// element or for what is referred to.
struct XmlErrorText {
    XML_Error code;
    std::u16string_view message;
    XmlErrorPlace where = XmlErrorPlace::named;
    std::size_t shift = 0; // units behind the place
};

constexpr XmlErrorText kXmlErrorTexts[] = {
    // clang-format off
    {XML_ERROR_SYNTAX,                 u"invalid document structure"},
    {XML_ERROR_NO_ELEMENTS,            u"input ended before all started tags were ended; last tag started is '{}'",
                                       XmlErrorPlace::endOfText},
    {XML_ERROR_INVALID_TOKEN,          u"invalid character or markup"},
    {XML_ERROR_UNCLOSED_TOKEN,         u"unexpected end of input", XmlErrorPlace::endOfText},
    {XML_ERROR_PARTIAL_CHAR,           u"unexpected end of input", XmlErrorPlace::endOfText},
    {XML_ERROR_TAG_MISMATCH,           u"expected end of tag '{}'"},
    {XML_ERROR_DUPLICATE_ATTRIBUTE,    u"an attribute is already specified for this element"},
    {XML_ERROR_JUNK_AFTER_DOC_ELEMENT, u"comment or processing instruction expected"},
    {XML_ERROR_PARAM_ENTITY_REF,       u"parameter entity reference inside a declaration"},
    {XML_ERROR_UNDEFINED_ENTITY,       u"entity '{}' not found", XmlErrorPlace::behindReference},
    {XML_ERROR_RECURSIVE_ENTITY_REF,   u"recursive entity expansion '{}'", XmlErrorPlace::behindReference},
    {XML_ERROR_ASYNC_ENTITY,           u"partial markup in entity value"},
    {XML_ERROR_BAD_CHAR_REF,           u"invalid character reference", XmlErrorPlace::behindReference},
    {XML_ERROR_BINARY_ENTITY_REF,      u"unparsed entity '{}' cannot be referred to", XmlErrorPlace::behindReference},
    {XML_ERROR_ATTRIBUTE_EXTERNAL_ENTITY_REF, u"external entity cannot be referred to from attribute value",
                                       XmlErrorPlace::behindReference},
    {XML_ERROR_MISPLACED_XML_PI,       u"XML or TEXT declaration must start at line 1, column 1",
                                       XmlErrorPlace::named, 6},
    {XML_ERROR_UNCLOSED_CDATA_SECTION, u"unterminated CDATA section", XmlErrorPlace::endOfText},
    {XML_ERROR_EXTERNAL_ENTITY_HANDLING, u"unable to open external entity '{}'", XmlErrorPlace::behindReference},
    {XML_ERROR_INCOMPLETE_PE,          u"partial markup in parameter entity replacement text"},
    {XML_ERROR_PUBLICID,               u"invalid character in public id"},
    {XML_ERROR_AMPLIFICATION_LIMIT_BREACH, u"the entities expand too far"},
    // clang-format on
};
constexpr XmlErrorText kUnclosedComment{XML_ERROR_UNCLOSED_TOKEN, u"unterminated comment",
                                        XmlErrorPlace::endOfText};
constexpr XmlErrorText kOtherError{XML_ERROR_NONE, u"invalid document structure"};

// `inComment`: the library stands at a comment; `inElement`: an element is open.
constexpr const XmlErrorText& errorTextOf(XML_Error code, bool inComment, bool inElement) {
    if (code == XML_ERROR_UNCLOSED_TOKEN && inComment) {
        return kUnclosedComment;
    }
    if (code == XML_ERROR_NO_ELEMENTS && !inElement) {
        return kOtherError;
    }
    for (const XmlErrorText& text : kXmlErrorTexts) {
        if (text.code == code) {
            return text;
        }
    }
    return kOtherError;
}

} // namespace tvml

#endif
