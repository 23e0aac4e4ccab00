// The built-in TVML that stands in where a filter description is silent: one
// operation per text, each made of whole lines that end with a line feed.
#ifndef TVML_STAGING_BUILTIN_STAGING_H
#define TVML_STAGING_BUILTIN_STAGING_H

#include <string_view>

namespace tvml::BuiltinStaging {

// The studio: set, desk, lights, camera, idle behaviour of "A" and "B", captions.
std::u16string_view studioSetUp();

// "$1" card number, "$2" and "$3" font and size of the title, "$4" and "$5" of
// the subtitle, "$TITLE" and "$SUBTITLE" the texts.
std::u16string_view titleCard();

// "$1" the text or the file name.
std::u16string_view leftSuper();
std::u16string_view rightSuper();
std::u16string_view rightPicture();
std::u16string_view leftPicture();

// "$1" font, "$2" size, "$3" to "$5" text colour, "$6" to "$8" edge colour,
// "$9" the text, "$10" the offset.
std::u16string_view super();

// "$1" the plate's number, "$2" the file name, "$3" the number of the plate
// that it replaces.
std::u16string_view subPicture();
std::u16string_view backgroundPicture();

// The four lighting presets.
std::u16string_view daylight();
std::u16string_view night();
std::u16string_view candlelight();
std::u16string_view lightOff();

} // namespace tvml::BuiltinStaging

#endif
