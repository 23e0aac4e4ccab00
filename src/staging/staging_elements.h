// The elements of a filter description: the template collections, the simple
// templates and the plain texts, each with what stands in when it is missing.
// One table per kind; a kind's enumerators and its rows have the same order.
#ifndef TVML_STAGING_STAGING_ELEMENTS_H
#define TVML_STAGING_STAGING_ELEMENTS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "staging/builtin_staging.h"

namespace tvml {

// Elements whose variants belong to characters.
enum class CharacterElement : std::uint8_t {
    talk,
    subimagetalk,
    happy,
    angry,
    sad,
    surprise,
    komatta,
    hatena,
    fear,
    disgust,
    neutral,
    bow,
    nod,
    nodnod,
    no,
    nono,
    well,
    lookforward,
    lookatfellow,
    lookatn,
    lookatcamera,
    lookatpicture,
    lookaside,
    lookright,
    lookleft,
    lookup,
    lookdown,
    lookbehind,
    shake,
    stopshaking,
    openmouth,
    closemouth,
    stand,
    sit,
    walk,
    walknsteps,
    turn,
    turnndegrees,
    bye,
    fall,
    fallbackward,
    getup,
    jump,
    invisible,
    visible,
    closeup,
};

enum class SimpleElement : std::uint8_t {
    leftsuper,
    rightsuper,
    super,
    subimage,
    bgimage,
    rightimage,
    leftimage,
    bgm,
};

enum class PlainElement : std::uint8_t {
    setting,
    opening,
    ending,
    longshot,
    trackshot,
    leftsuperoff,
    rightsuperoff,
    superoff,
    hidepicture,
    hidebgpicture,
    hiderightpicture,
    hideleftpicture,
    daylight,
    night,
    candlelight,
    lightoff,
};

struct ElementRow {
    std::u16string_view name;
    std::u16string_view defaultText;
};

// clang-format off
inline constexpr std::array<ElementRow, 46> kCharacterElements{{
    {u"talk",
     u"character: talk(name=$1, text=\"$2\", lipsync=$3, caption=\"$4\", speed=$5, pitch=$6, "
     u"intonation=$7, volume=$8, wait=$9)\n"},
    {u"subimagetalk",
     u"character: talk(name=$1, text=\"$2\", lipsync=$3, caption=\"$4\", speed=$5, pitch=$6, "
     u"intonation=$7, volume=$8, wait=$9)\n"},
    {u"happy",
     u"character: expression( name=$1, type=happy, degree=$2, speed=$3, wait=$4 )\n"},
    {u"angry",
     u"character: expression( name=$1, type=angry, degree=$2, speed=$3, wait=$4 )\n"},
    {u"sad",
     u"character: expression( name=$1, type=sad, degree=$2, speed=$3, wait=$4 )\n"},
    {u"surprise",
     u"character: expression( name=$1, type=surprise, degree=$2, speed=$3, wait=$4 )\n"},
    {u"komatta",
     u"character: expression( name=$1, type=komatta, degree=$2, speed=$3, wait=$4 )\n"},
    {u"hatena",
     u"character: expression( name=$1, type=hatena, degree=$2, speed=$3, wait=$4 )\n"},
    {u"fear",
     u"character: expression( name=$1, type=fear, degree=$2, speed=$3, wait=$4 )\n"},
    {u"disgust",
     u"character: expression( name=$1, type=disgust, degree=$2, speed=$3, wait=$4 )\n"},
    {u"neutral",
     u"character: expression( name=$1, type=neutral, degree=$2, speed=$3, wait=$4 )\n"},
    {u"bow",
     u"character: bow( name=$1, speed=$2, level=$3, type=normal, wait=$4 )\n"},
    {u"nod",
     u"character: action( name=$1, action=nod, speed=$2, degree=$3, wait=$4 )\n"},
    {u"nodnod",
     u"character: action( name=$1, action=nodnod, speed=$2, degree=$3, wait=$4 )\n"},
    {u"no",
     u"character: action( name=$1, action=no, speed=$2, degree=$3, wait=$4 )\n"},
    {u"nono",
     u"character: action( name=$1, action=nono, speed=$2, degree=$3, wait=$4 )\n"},
    {u"well",
     u"character: action( name=$1, action=well, speed=$2, degree=$3, wait=$4 )\n"},
    {u"lookforward",
     u"character: look( name=$1, target=lookforward, speed=$2, wait=$3 )\n"},
    {u"lookatfellow",
     u"character: look( name=$1, target=$2, speed=$3, type=witheye, wait=$4 )\n"},
    {u"lookatn",
     u"character: look( name=$1, target=$2, speed=$3, type=witheye, wait=$4 )\n"},
    {u"lookatcamera",
     u"character: look( name=$1, target=camera, speed=$2, wait=$3 )\n"},
    {u"lookatpicture",
     u"character: look( name=$1, target=$2, speed=$3, wait=$4 )\n"},
    {u"lookaside",
     u"character: gaze( name=$1, rx=-10, ry=35, speed=$2, wait=$3 )\n"},
    {u"lookright",
     u"character: gaze( name=$1, ry=$2, speed=$3, wait=$4 )\n"},
    {u"lookleft",
     u"character: gaze( name=$1, ry=$2, speed=$3, wait=$4 )\n"},
    {u"lookup",
     u"character: gaze( name=$1, rx=$2, speed=$3, wait=$4 )\n"},
    {u"lookdown",
     u"character: gaze( name=$1, rx=$2, speed=$3, wait=$4 )\n"},
    {u"lookbehind",
     u"character: gaze( name=$1, ry=150, speed=$2, wait=$3 )\n"},
    {u"shake",
     u"character: shake( name=$1, switch=on, degree=$2 )\n"},
    {u"stopshaking",
     u"character: shake( name=$1, switch=off, degree=$2 )\n"},
    {u"openmouth",
     u"character: openmouth( name=$1, switch=on, degree=$2, speed=$3, wait=$4 )\n"},
    {u"closemouth",
     u"character: openmouth( name=$1, switch=off, degree=$2, speed=$3, wait=$4 )\n"},
    {u"stand",
     u"character: stand( name=$1, speed=$2, wait=$3 )\n"},
    {u"sit",
     u"character: sit( name=$1, speed=$2, wait=$3, hiplevel=$4, hipposition=$5 )\n"},
    {u"walk",
     u"character: walk( name=$1, step=1, speed=$2, wait=$3 )\n"},
    {u"walknsteps",
     u"character: walk( name=$1, step=$2, speed=$3, wait=$4 )\n"},
    {u"turn",
     u"character: turn( name=$1, d=90, speed=$2, mode=relative, wait=$3 )\n"},
    {u"turnndegrees",
     u"character: turn( name=$1, d=$2, speed=$3, mode=relative, wait=$4 )\n"},
    {u"bye",
     u"character: byebye( name=$1, speed=$2, degree=$3, wait=$4 )\n"},
    {u"fall",
     u"character: tumble( name=$1, rx=90, speed=$2, wait=$3 )\n"},
    {u"fallbackward",
     u"character: tumble( name=$1, rx=-90, speed=$2, wait=$3 )\n"},
    {u"getup",
     u"character: tumble( name=$1, rx=0.0, rz=0.0, speed=$2, wait=$3 )\n"},
    {u"jump",
     u"character: jump( name=$1, x=0.00, y=0.00, z=0.00, d=0.00, height=$2, speed=$3, "
     u"mode=relative, wait=$4 )\n"},
    {u"invisible",
     u"character: visible( name=$1, switch=off )\n"},
    {u"visible",
     u"character: visible( name=$1, switch=on )\n"},
    {u"closeup",
     u"camera: closeup( name=Cam, target=$1, speed=$2, dolly=on, track=off, type=servo, "
     u"transition=continuous, wait=$3, adjx=0.000, adjy=0.000, adjz=0.000, adjrx=0.00, "
     u"adjry=0.00, adjrz=0.00, adjvangle=0.00, adjtilt=0.00, adjpan=0.00, adjzoom=1.00 )\n"},
}};

inline constexpr std::u16string_view kTwoshotElement = u"twoshot";
inline constexpr std::u16string_view kTwoshotDefault =
    u"camera: twoshot( name=Cam, target1=$1, target2=$2, speed=$3, dolly=on, track=off, "
    u"type=servo, transition=continuous, wait=$4, adjx=0.000, adjy=0.000, adjz=0.000, "
    u"adjrx=0.00, adjry=0.00, adjrz=0.00, adjvangle=0.00, adjtilt=0.00, adjpan=0.00, "
    u"adjzoom=1.00 )\n";

inline constexpr std::u16string_view kTitleElement = u"title";

// A built-in text, named so that the table stays a constant.
struct BuiltinRow {
    std::u16string_view name;
    std::u16string_view (*defaultText)(); // null when the default is empty or a line
    std::u16string_view line;
};

inline constexpr std::array<BuiltinRow, 8> kSimpleElements{{
    {u"leftsuper",  BuiltinStaging::leftSuper,         u""},
    {u"rightsuper", BuiltinStaging::rightSuper,        u""},
    {u"super",      BuiltinStaging::super,             u""},
    {u"subimage",   BuiltinStaging::subPicture,        u""},
    {u"bgimage",    BuiltinStaging::backgroundPicture, u""},
    {u"rightimage", BuiltinStaging::rightPicture,      u""},
    {u"leftimage",  BuiltinStaging::leftPicture,       u""},
    {u"bgm",        nullptr, u"sound: playfile( filename=\"$1\" )\n"},
}};

inline constexpr std::array<BuiltinRow, 16> kPlainElements{{
    {u"setting",          BuiltinStaging::studioSetUp, u""},
    {u"opening",          nullptr, u""},
    {u"ending",           nullptr, u""},
    {u"longshot",         nullptr, u""},
    {u"trackshot",        nullptr, u""},
    {u"leftsuperoff",     nullptr, u"drawing: display( name=LEFTSUPERBASE, switch=off )\n"},
    {u"rightsuperoff",    nullptr, u"drawing: display( name=RIGHTSUPERBASE, switch=off )\n"},
    {u"superoff",         nullptr, u"super: off()\n"},
    {u"hidepicture",      nullptr, u"prop: visible( name=IMAGEPLATE$1, switch=off )\n"},
    {u"hidebgpicture",    nullptr, u"prop: visible( name=BGIMAGEPLATE$1, switch=off )\n"},
    {u"hiderightpicture", nullptr, u"drawing: display( name=RIGHTIMAGEBASE, switch=off )\n"},
    {u"hideleftpicture",  nullptr, u"drawing: display( name=LEFTIMAGEBASE, switch=off )\n"},
    {u"daylight",         BuiltinStaging::daylight,    u""},
    {u"night",            BuiltinStaging::night,       u""},
    {u"candlelight",      BuiltinStaging::candlelight, u""},
    {u"lightoff",         BuiltinStaging::lightOff,    u""},
}};
// clang-format on

inline constexpr std::u16string_view kTitleFontEnglish = u"Century";

inline std::u16string_view defaultTextOf(const BuiltinRow& row) {
    return row.defaultText != nullptr ? row.defaultText() : row.line;
}

constexpr std::size_t indexOf(CharacterElement element) {
    return static_cast<std::size_t>(element);
}
constexpr std::size_t indexOf(SimpleElement element) {
    return static_cast<std::size_t>(element);
}
constexpr std::size_t indexOf(PlainElement element) {
    return static_cast<std::size_t>(element);
}

static_assert(kCharacterElements[indexOf(CharacterElement::closeup)].name == u"closeup");
static_assert(kCharacterElements[indexOf(CharacterElement::sit)].name == u"sit");
static_assert(kSimpleElements[indexOf(SimpleElement::bgm)].name == u"bgm");
static_assert(kPlainElements[indexOf(PlainElement::lightoff)].name == u"lightoff");
static_assert(kPlainElements[indexOf(PlainElement::superoff)].name == u"superoff");

} // namespace tvml

#endif
