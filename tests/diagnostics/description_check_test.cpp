// Descriptions and what is said about them, beyond the table's examples.
#include <gtest/gtest.h>

#include "diagnostics/checking.h"

namespace tvml {
namespace {

struct Row {
    std::u16string_view elements; // between <staging> on line 1 and its end tag
    std::string_view told;
};

std::string toldOf(std::u16string_view elements) {
    return checkedDescription(
        std::u16string(u"<staging>\n").append(elements).append(u"\n</staging>\n"));
}

TEST(DescriptionCheck, Elements) {
    constexpr Row kRows[] = {
        // Places inside tags, attributes over several lines, references.
        {u"<numofchar>2</numofchar>\n<bow\n character='Z'>b( $1 )</bow>", "4:13 D313 [Z]"},
        {u"<bow Character='A'>b( $1 )</bow>", "2:6 D319 [Character]"},
        {u"<closeup>c( $1, &lt;$4&gt; )</closeup>", "2:21 D321 [$4]"},
        {u"<title titlefont_ja='a' titlefont_en='a' subtitlefont_ja='a' subtitlefont_en='a'>"
         u"drawing: settext( name=TITLETEXT1, text=\"$TITLE\" )</title>",
         "2:1 D323 [<title titlefont_ja='a' titlefont_en='a' subtitlefont_ja='a' "
         "subtitlefont_en='a'>]"},
        {u"<tag japanesename='あ' englishname='ah'>x( $1, $2 )</tag>", "2:47 D321 [$2]"},
        {u"<super>super: on( text=\"$9\", y=$10 )</super>", ""},
        {u"<talk>t( $1, \"$2\" )</talk>\n<talk>t( \"$2\" )</talk>", "3:1 D322 [<talk>]"},
        {u"<twoshot character1='A'>t( $1, $2 )</twoshot>", "2:22 D320 [A]"},
        {u"<pose japanesename=' 礼' englishname='rei'>p( $1 )</pose>", "2:21 D331 [ 礼]"},
        {u"<pose japanesename='礼' englishname='a,b'>p( $1 )</pose>", "2:37 D331 [a,b]"},
        {u"<pose japanesename='礼' englishname='a'>p( $1 )</pose>\n"
         u"<pose japanesename='礼' englishname='b'>p( $1 )</pose>",
         "2:21 D331 [礼]"},
        {u"<pose japanesename='お辞儀' englishname='bow'>p( $1 )</pose>", ""},
        {u"<pose japanesename='礼'>p( $1 )</pose>", "2:1 D309 [<pose japanesename='礼'>]"},
        {u"<set>\n体育館::Gym::gym.obj\n講堂::Gym::hall.obj\n</set>", "4:5 D311 [Gym]"},
        {u"<bow>b( $1 )<b/> more</bow>", "2:13 D349 [<b]"},
        {u"<bow><![CDATA[b( $1 )]]></bow>", "2:6 D345 [<![CDATA[]"},
        {u"<opening>\n// half ( a \"remark\nok( 1 )\n</opening>", ""},
        {u"<opening>\nlong( a=1,\n b=2 )\n</opening>", ""},
        {u"<set>\n<!-- rooms -->\n体育館::Gym::gym.obj\n</set>", "2:1 D303 [<set>]"},
        {u"<tag japanesename='続報：' englishname='more '>x( $1 )</tag>",
         "2:20 D331 [続報：]; 2:38 D331 [more ]"},
        {u"<tag japanesename='続報' englishname='title'>x( $1 )</tag>", "2:37 D350 [title]"},
        {u"<bow>character: bow( name=%1 )</bow>", "2:27 D333 [%1]"},
        // The form of TVML: what is wrong, and good forms of all kinds.
        {u"<opening>\nset: change（ name=S ）\n</opening>", "3:12 D339 [（]"},
        {u"<opening>\nset: change( name=“S” )\n</opening>", "3:19 D339 [“]"},
        {u"<opening>\nset： change( name=S )\n</opening>", "3:4 D339 [：]"},
        {u"<opening>\nset: change( name=S　file=\"a\" )\n</opening>", "3:21 D340 [file]"},
        {u"<opening>\nset: change( name S )\n</opening>", "3:14 D341 [name]"},
        {u"<opening>\nset change( name=S )\n</opening>", "3:1 D342 [set]"},
        {u"<opening>\ncamara: shot( name=Cam )\n</opening>", "3:1 D343 [camara]"},
        {u"<opening>\ndrawing: settext( text=\"&lt;b size=\"3\"&gt;\" )\n</opening>",
         "3:36 D344 [\"3\"]"},
        {u"<opening>\nwait(time=4.0)\nset:change(name=A b,\n x=-1.5)\nsuper: off()\n"
         u"sound: playfile( filename=\"（夏）,＝：.wav\" , wait=no )\n</opening>",
         ""},
        {u"<nod>character: action( name=$1, speed=$3, degree=$2, wait=$4 )</nod>",
         "2:40 D334 [$3]"},
        {u"<lookatn>character: gaze( name=$2, target=$1, speed=$3 )</lookatn>", "2:32 D334 [$2]"},
        {u"<bow>character: bow( name=$1, speed=${2} )</bow>", "2:37 D333 [${2}]"},
        {u"<bow>character: bow( name=$1, speed=$3, angle=$2 )</bow>", "2:37 D334 [$3]"},
        {u"<night>n()</night>\nwords\n<super>s( $9 )</super>", "3:1 D352 [words]"},
        {u"<pose japanesename='夜' englishname='night'>p( $1 )</pose>", "2:21 D353 [夜]"},
        {u"<Bow>b( $1 )</Bow>", "2:1 D315 [<Bow>]"},
        {u"<opening>\nok( 1 )\nbad( 1 ))\n</opening>", "4:1 D328 [bad( 1 ))]"},
        {u"<night>n()</night>\n<night></night>", "3:1 D303 [<night>]"},
        {u"<fallbackward_switch>　</fallbackward_switch>", "2:1 D304 [<fallbackward_switch>]"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(toldOf(row.elements), row.told) << utf8(row.elements);
    }
}

TEST(DescriptionCheck, ReachDependsOnTheNumberOfCharacters) {
    const auto programme = [](std::u16string_view number, std::u16string_view elements) {
        return std::u16string(u"<numofchar>")
            .append(number)
            .append(u"</numofchar>")
            .append(elements);
    };
    const std::u16string pairs = u"<twoshot>t( $1, $2 )</twoshot><lookatfellow>l( $1, $2 )"
                                 u"</lookatfellow><lookatn>l( $1, $2 )</lookatn>";
    EXPECT_EQ(toldOf(programme(u"1", pairs)),
              "2:25 D325 [<twoshot>]; 2:55 D325 [<lookatfellow>]; 2:95 D325 [<lookatn>]");
    EXPECT_EQ(toldOf(programme(u"2", pairs)), "");
    EXPECT_EQ(toldOf(programme(u"3", pairs)), "2:55 D325 [<lookatfellow>]");
    EXPECT_EQ(toldOf(programme(u"2", u"<twoshot character1='B' character2='a'>t()</twoshot>"
                                     u"<twoshot>t( $1, $2 )</twoshot>")),
              "2:77 D325 [<twoshot>]");
}

TEST(DescriptionCheck, BrokenAndForeignTexts) {
    struct {
        std::u16string_view description;
        std::string_view told;
    } const rows[] = {
        {u"no xml", "1:1 D318 [n]"},
        {u"<?xml version='1.0'?><staging/>", "1:1 D318 [<?xml]"},
        {u"<filter><staging><bow>b( $1 )</bow></staging><bow/></filter>", "1:46 D316 [<bow/>]"},
        {u"<a><bow/></a>", "1:1 D317 [<a>]"},
        {u"<staging><bow>b( $1 )</bow>", "1:27 D318 [>]"},
        // The cause, not what the parser stumbles over at last.
        {u"<staging>\n<bow>b( $1 )\n<night>n()</night>\n<nod>n( $1 )</nod>\n</staging>",
         "2:1 D318 [<bow>]"},
        {u"<staging>\n<bow>b( $1 )</bwo>\n</staging>", "2:13 D318 [</bwo>]"},
        {u"<staging>\n<night>a( x=\"R&B\" )</night>\n</staging>", "2:15 D318 [&]"},
        {u"<staging>\n<night>a( x=\"1 < 2\" )</night>\n</staging>", "2:16 D318 [<]"},
        {u"<staging>\n<night\nset: x( a=\"1\", b=2 )\n</night>\n</staging>", "2:1 D318 [<night]"},
        {u"<staging>\n<night>n()</night\n<nod>n( $1 )</nod>\n</staging>", "2:11 D318 [</night]"},
        {u"<staging>\n<!-- a ->\n<night>n()</night>\n<!-- b -->\n</staging>",
         "2:1 D318 [<!-- a ->]"},
        {u"<staging>\n＜night＞n()\n</night>\n</staging>", "2:1 D318 [＜night＞]"},
        {u"<staging>\n<super>s( text=\"<font size='1'&gt;$9\" )</super>\n</staging>",
         "2:17 D318 [<]"},
        {u"<staging>\n<bow character=A>b( $1 )</bow>\n</staging>", "2:15 D318 [=]"},
        {u"<staging>\n<!-- & < --><night>n()</night></staging></staging>",
         "2:41 D318 [</staging>]"},
        // Elements of an entity are not read, and have no place of their own.
        {u"<!DOCTYPE s [<!ENTITY e '<bow/>'>]>\n<staging>&e;</staging>", "0:0 D316"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(checkedDescription(row.description), row.told) << utf8(row.description);
    }
}

TEST(DescriptionCheck, ElementPlacesFollowTheirNumbers) {
    const std::vector<ElementPlace> places =
        elementPlaces(u"<staging>\n<numofchar>1</numofchar>\n  <bow\n>b</bow></staging>");
    ASSERT_EQ(places.size(), 3u);
    EXPECT_EQ(places[2].name, u"bow");
    EXPECT_EQ(places[2].line, 3);
    EXPECT_EQ(places[2].column, 3u);
}

} // namespace
} // namespace tvml
