// The markers of tag lines and the colours of supers: one table each for all who
// ask. Which marker a line has is told in line_kind.h, what it writes by the tag
// lines of the filter.
#ifndef TVML_READING_MARKER_SPEC_H
#define TVML_READING_MARKER_SPEC_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "vocabulary/keys.h"

namespace tvml {

// In the order in which the kind of a line is tested.
enum class Marker : std::uint8_t {
    title,
    subtitle,
    rightSuper,
    leftSuper,
    super,
    mainImage,
    subImage,
    bgImage,
    rightImage,
    leftImage,
    music,
    embeddedTvml,
};
inline constexpr std::size_t kMarkerCount = 12;

// What the file is for that a line names.
enum class FileUse : std::uint8_t { none, picture, sound, speech };

// One way to write a marker: a fixed English text or a vocabulary word.
struct MarkerSpelling {
    std::u16string_view english = {}; // empty for a vocabulary word
    Key word = Key::at(0);
    std::size_t units = 0; // that a line loses when it starts with it, whatever the word's length
};

class MarkerSpellings {
public:
    constexpr MarkerSpellings(std::initializer_list<MarkerSpelling> spellings) {
        for (const MarkerSpelling& spelling : spellings) {
            spellings_[count_++] = spelling;
        }
    }
    constexpr const MarkerSpelling* begin() const { return spellings_.data(); }
    constexpr const MarkerSpelling* end() const { return spellings_.data() + count_; }

private:
    std::array<MarkerSpelling, 4> spellings_{};
    std::size_t count_ = 0;
};

struct MarkerSpec {
    Marker marker;
    std::u16string_view name;    // the first English spelling
    FileUse use;                 // of the file that it names
    MarkerSpellings spellings;   // tried in this order
    std::u16string_view element; // of the description that shows it; empty for none of its own
};

namespace detail {

constexpr MarkerSpelling english(std::u16string_view text) {
    return {text, Key::at(0), text.size()};
}
constexpr MarkerSpelling word(Key key, std::size_t units) {
    return {{}, key, units};
}

// clang-format off
constexpr std::array<MarkerSpec, kMarkerCount> markerSpecs() {
    using enum Marker;
    using enum FileUse;
    return {{
        {title,        u"title",      none,    {english(u"title"),      word(u"title", 4)},      u"title"},
        {subtitle,     u"subtitle",   none,    {english(u"subtitle"),   word(u"subtitle", 6)},   u"title"},
        {rightSuper,   u"rightsuper", none,    {english(u"rightsuper"), word(u"rightsuper", 6)}, u"rightsuper"},
        {leftSuper,    u"leftsuper",  none,    {english(u"leftsuper"),  word(u"leftsuper", 6)},  u"leftsuper"},
        {super,        u"super",      none,    {english(u"super"),      word(u"super", 4)},      u"super"},
        {mainImage,    u"mainimage",  picture, {english(u"mainimage"),  word(u"mainimage", 7)},  u""},
        {subImage,     u"subimage",   picture, {english(u"subimage"),   word(u"subimage", 6)},   u"subimage"},
        {bgImage,      u"bgimage",    picture, {english(u"bgimage"),    word(u"bgimage", 6)},    u"bgimage"},
        {rightImage,   u"rightimage", picture, {english(u"rightimage"), word(u"rightimage", 6)}, u"rightimage"},
        {leftImage,    u"leftimage",  picture, {english(u"leftimage"),  word(u"leftimage", 6)},  u"leftimage"},
        {music,        u"bgm",        sound,   {english(u"bgm"), word(u"bgm", 3), english(u"BGM"), word(u"sound", 4)}, u"bgm"},
        {embeddedTvml, u"tvml",       none,    {english(u"tvml"), word(u"tvml", 4), english(u"TVML")}, u""},
    }};
}
// clang-format on

} // namespace detail

inline constexpr std::array kMarkers = detail::markerSpecs();

constexpr const MarkerSpec& specOf(Marker marker) {
    return kMarkers[static_cast<std::size_t>(marker)];
}

// The order in which a tag line's marker is looked up, which is not that of the
// line's kind: with odd vocabularies it decides between two markers.
inline constexpr std::array<Marker, kMarkerCount> kMarkerOrder{
    Marker::title,      Marker::subtitle,  Marker::leftSuper, Marker::rightSuper,
    Marker::super,      Marker::mainImage, Marker::subImage,  Marker::bgImage,
    Marker::rightImage, Marker::leftImage, Marker::music,     Marker::embeddedTvml,
};

// A colour of a super, its text and its edge as red, green and blue. The key and
// the English word have the same name.
struct ColourSpec {
    Key word;
    std::array<std::u16string_view, 3> text;
    std::array<std::u16string_view, 3> edge;
};

// clang-format off
inline constexpr std::array<ColourSpec, 10> kColours{{
    {u"black",  {u"0.0", u"0.0", u"0.0"}, {u"1.0", u"1.0", u"1.0"}},
    {u"white",  {u"1.0", u"1.0", u"1.0"}, {u"0.0", u"0.0", u"0.0"}},
    {u"red",    {u"1.0", u"0.0", u"0.0"}, {u"0.0", u"1.0", u"1.0"}},
    {u"brown",  {u"0.5", u"0.0", u"0.0"}, {u"0.5", u"1.0", u"1.0"}},
    {u"orange", {u"1.0", u"0.5", u"0.0"}, {u"0.0", u"0.5", u"1.0"}},
    {u"yellow", {u"1.0", u"1.0", u"0.0"}, {u"0.0", u"0.0", u"1.0"}},
    {u"purple", {u"0.5", u"0.0", u"0.5"}, {u"0.5", u"1.0", u"0.5"}},
    {u"green",  {u"0.0", u"0.5", u"0.0"}, {u"1.0", u"0.5", u"1.0"}},
    {u"blue",   {u"0.0", u"0.0", u"1.0"}, {u"1.0", u"1.0", u"0.0"}},
    {u"gray",   {u"0.5", u"0.5", u"0.5"}, {u"0.0", u"0.0", u"0.0"}},
}};
// clang-format on

namespace detail {

constexpr bool markersAreInOrder() {
    for (std::size_t i = 0; i < kMarkerCount; ++i) {
        if (kMarkers[i].marker != static_cast<Marker>(i) ||
            kMarkers[i].spellings.begin()->english != kMarkers[i].name) {
            return false;
        }
    }
    return true;
}

// No English spelling begins with one that is tested before it.
constexpr bool englishMarkersAreReached() {
    for (std::size_t i = 0; i < kMarkerCount; ++i) {
        for (const MarkerSpelling& spelling : kMarkers[i].spellings) {
            for (std::size_t j = 0; j < i; ++j) {
                for (const MarkerSpelling& earlier : kMarkers[j].spellings) {
                    if (!earlier.english.empty() && spelling.english.starts_with(earlier.english)) {
                        return false;
                    }
                }
            }
        }
    }
    return true;
}

constexpr bool everyMarkerHasItsTurn() {
    unsigned seen = 0;
    for (const Marker marker : kMarkerOrder) {
        seen |= 1u << static_cast<unsigned>(marker);
    }
    return seen == (1u << kMarkerCount) - 1;
}

constexpr bool coloursDiffer() {
    for (std::size_t i = 0; i < kColours.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (kColours[i].word == kColours[j].word) {
                return false;
            }
        }
    }
    return true;
}

static_assert(markersAreInOrder(), "a marker's row stands at its place and has its name");
static_assert(englishMarkersAreReached(), "no marker hides another one");
static_assert(everyMarkerHasItsTurn(), "every marker is looked up");
static_assert(coloursDiffer(), "a colour has one row");

} // namespace detail

} // namespace tvml

#endif
