// The built-in staging texts. Entries: one function per text.
#include "staging/builtin_staging.h"

namespace tvml::BuiltinStaging {
namespace {

// clang-format off
constexpr std::u16string_view kStudioSetUp =
    u"skipscript( switch=on )\n"
    u"set:openmodel( name=S2, filename=\"Set\\hall\\hall.obj\" )\n"
    u"set: change( name=S2 )\n"
    u"prop:openmodel(name=desk, filename=\"Set\\bmroom\\desk.obj\")\n"
    u"prop: position( name=desk, x=0.00, y=0.05, z=0.20, ry=0.00, scale=1.0 )\n"
    u"light: flat(name=flatd, r=0.1, g=0.1, b=0.1, vx=0.00, vy=1.00, vz=1.00)\n"
    u"light: switch(name=flatd, switch=on)\n"
    u"light: flat(name=flat0, r=0.8, g=0.8, b=0.8, vx=0.00, vy=1.00, vz=1.00)\n"
    u"light: switch(name=flat0, switch=on)\n"
    u"light: flat(name=flat1, r=0.8, g=0.8, b=0.8, vx=1.00, vy=1.00, vz=1.00)\n"
    u"light: switch(name=flat1, switch=on)\n"
    u"light: flat(name=flat2, r=0.8, g=0.8, b=0.8, vx=-1.00, vy=1.00, vz=1.00)\n"
    u"light: switch(name=flat2, switch=on)\n"
    u"light: point(name=point1, r=0.8, g=0.8, b=0.8, x=0.5, y=0.7, z=0.4, constant=0.0, "
    u"linear=1.0, quadratic=1.0)\n"
    u"light: switch(name=point1, switch=on)\n"
    u"light: point(name=point2, r=0.8, g=0.8, b=0.8, x=-0.5, y=0.7, z=0.4, constant=0.0, "
    u"linear=1.0, quadratic=1.0)\n"
    u"light: switch(name=point2, switch=on)\n"
    u"light: point(name=point3, r=0.90, g=0.90, b=0.90, x=0.0, y=0.5, z=-1.0, constant=0.0, "
    u"linear=1.0)\n"
    u"light: switch(name=point3, switch=off)\n"
    u"light: point(name=point4, r=0.90, g=0.90, b=0.90, x=0.0, y=1.0, z=1.0, constant=0.0, "
    u"linear=1.0)\n"
    u"light: switch(name=point4, switch=off)\n"
    u"camera: twoshot(name=Cam, target1=A, target2=B, adjy=-0.1, transition=immediate)\n"
    u"character: gaze(name=A, ry=20, rx=6)\n"
    u"character: gaze(name=B, ry=-20, rx=6)\n"
    u"character: swing(name=A, switch=on, degree=1.5)\n"
    u"character: swing(name=B, switch=on, degree=1.5)\n"
    u"character: blink(name=A, switch=on, frequency=3.0)\n"
    u"character: blink(name=B, switch=on, frequency=3.0)\n"
    u"camera:switch(name=Cam)\n"
    u"setcaption(switch=on, border=on)\n"
    u"skipscript( switch=off )\n";

constexpr std::u16string_view kTitleCard =
    u"skipscript( switch=on )\n"
    u"drawing: openbase( name=TITLE$1, color=transparent )\n"
    u"drawing: settext( name=TITLETEXT$11, text=\"<font name='$2' r='1.0' g='1.0' b='1.0' "
    u"size='$3'>$TITLE</font>\", parent=TITLE$1, y=15%, height=25%, width=90%, align=top, "
    u"overtext=flowreturn )\n"
    u"drawing: settext( name=TITLETEXT$12, text=\"<font name='$4' r='1.0' g='1.0' b='1.0' "
    u"size='$5'>$SUBTITLE</font>\", parent=TITLE$1, y=-25%, height=25%, width=85%, align=top, "
    u"overtext=flowreturn )\n"
    u"captionout()\n"
    u"drawing: display(name=TITLE$1, switch=on )\n"
    u"skipscript( switch=off )\n"
    u"wait(time=4.0)\n"
    u"drawing: display(name=TITLE$1, switch=off )\n";

constexpr std::u16string_view kLeftSuper =
    u"skipscript( switch=on )\n"
    u"drawing: openbase( name=LEFTSUPERBASE )\n"
    u"drawing: settext( name=LEFTSUPER, text=\"<font r='1.0' g='1.0' b='1.0' "
    u"size='35%'>$1</font>\", parent=LEFTSUPERBASE, x=-48%, y=48%, refmode=topleft, height=15%, "
    u"width=48%, overtext=flowreturn, align=topleft, halftone=30%, basecolor=ffff00 )\n"
    u"drawing: display( name=LEFTSUPERBASE, switch=on )\n"
    u"skipscript( switch=off )\n";

constexpr std::u16string_view kRightSuper =
    u"skipscript( switch=on )\n"
    u"drawing: openbase( name=RIGHTSUPERBASE )\n"
    u"drawing: settext( name=RIGHTSUPER, text=\"<font r='1.0' g='1.0' b='1.0' "
    u"size='35%'>$1</font>\", parent=RIGHTSUPERBASE, x=48%, y=48%, refmode=topright, height=15%, "
    u"width=48%, overtext=flowreturn, align=topright, halftone=30%, basecolor=ffff00 )\n"
    u"drawing: display( name=RIGHTSUPERBASE, switch=on )\n"
    u"skipscript( switch=off )\n";

constexpr std::u16string_view kRightPicture =
    u"skipscript( switch=on )\n"
    u"drawing: openbase( name=RIGHTIMAGEBASE )\n"
    u"drawing: setimage( name=RIGHTIMAGE, filename=\"$1\", parent=RIGHTIMAGEBASE, x=48%, y=48%, "
    u"refmode=topright, align=topright, aspect=fix )\n"
    u"drawing: display( name=RIGHTIMAGEBASE, switch=on )\n"
    u"skipscript( switch=off )\n";

constexpr std::u16string_view kLeftPicture =
    u"skipscript( switch=on )\n"
    u"drawing: openbase( name=LEFTIMAGEBASE )\n"
    u"drawing: setimage( name=LEFTIMAGE, filename=\"$1\", parent=LEFTIMAGEBASE, x=-48%, y=48%, "
    u"refmode=topleft, align=topleft, aspect=fix )\n"
    u"drawing: display( name=LEFTIMAGEBASE, switch=on )\n"
    u"skipscript( switch=off )\n";

constexpr std::u16string_view kSuper =
    u"super: on( text=\"<font name='$1' size='$2' r='$3' g='$4' b='$5'><border width='1' r='$6' "
    u"g='$7' b='$8'>$9</border></font>\", y=$10 )\n";

constexpr std::u16string_view kSubPicture =
    u"skipscript( switch=on )\n"
    u"prop: openimageplate( name=IMAGEPLATE$1, filename=\"$2\", hsize=1.2, vsize=0.9, aspect=fit "
    u")\n"
    u"prop: position( name=IMAGEPLATE$1, x=0.0, y=1.5, z=-1.7, rx=0.0, ry=0.0, rz=0.0 )\n"
    u"prop: visible( name=IMAGEPLATE$3, switch=off )\n"
    u"prop: visible( name=IMAGEPLATE$1, switch=on )\n"
    u"skipscript( switch=off )\n";

constexpr std::u16string_view kBackgroundPicture =
    u"skipscript( switch=on )\n"
    u"prop: openimageplate( name=BGIMAGEPLATE$1, filename=\"$2\", hsize=4.0, vsize=3.0 )\n"
    u"prop: position( name=BGIMAGEPLATE$1, x=0.0, y=1.5, z=-2.5, rx=0.0, ry=0.0, rz=0.0 )\n"
    u"prop: visible( name=BGIMAGEPLATE$3, switch=off )\n"
    u"prop: visible( name=BGIMAGEPLATE$1, switch=on )\n"
    u"skipscript( switch=off )\n";

// One line a light, the same lights in every preset.
constexpr std::u16string_view kDaylight =
    u"light:switch(name=flat0, switch=on)\n"
    u"light:switch(name=flat1, switch=on)\n"
    u"light:switch(name=flat2, switch=on)\n"
    u"light:switch(name=point1, switch=on)\n"
    u"light:switch(name=point2, switch=on)\n"
    u"light:switch(name=point3, switch=off)\n"
    u"light:switch(name=point4, switch=off)\n";

constexpr std::u16string_view kNight =
    u"light:switch(name=flat0, switch=on)\n"
    u"light:switch(name=flat1, switch=off)\n"
    u"light:switch(name=flat2, switch=off)\n"
    u"light:switch(name=point1, switch=off)\n"
    u"light:switch(name=point2, switch=off)\n"
    u"light:switch(name=point3, switch=on)\n"
    u"light:switch(name=point4, switch=on)\n";

constexpr std::u16string_view kCandlelight =
    u"light:switch(name=flat0, switch=off)\n"
    u"light:switch(name=flat1, switch=off)\n"
    u"light:switch(name=flat2, switch=off)\n"
    u"light:switch(name=point1, switch=on)\n"
    u"light:switch(name=point2, switch=on)\n"
    u"light:switch(name=point3, switch=off)\n"
    u"light:switch(name=point4, switch=off)\n";

constexpr std::u16string_view kLightOff =
    u"light:switch(name=flat0, switch=off)\n"
    u"light:switch(name=flat1, switch=off)\n"
    u"light:switch(name=flat2, switch=off)\n"
    u"light:switch(name=point1, switch=off)\n"
    u"light:switch(name=point2, switch=off)\n"
    u"light:switch(name=point3, switch=off)\n"
    u"light:switch(name=point4, switch=off)\n";

// clang-format on

} // namespace

std::u16string_view studioSetUp() {
    return kStudioSetUp;
}
std::u16string_view titleCard() {
    return kTitleCard;
}
std::u16string_view leftSuper() {
    return kLeftSuper;
}
std::u16string_view rightSuper() {
    return kRightSuper;
}
std::u16string_view rightPicture() {
    return kRightPicture;
}
std::u16string_view leftPicture() {
    return kLeftPicture;
}
std::u16string_view super() {
    return kSuper;
}
std::u16string_view subPicture() {
    return kSubPicture;
}
std::u16string_view backgroundPicture() {
    return kBackgroundPicture;
}
std::u16string_view daylight() {
    return kDaylight;
}
std::u16string_view night() {
    return kNight;
}
std::u16string_view candlelight() {
    return kCandlelight;
}
std::u16string_view lightOff() {
    return kLightOff;
}

} // namespace tvml::BuiltinStaging
