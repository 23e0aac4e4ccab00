// Programmes that use much of the filter in few words, for tests that convert
// them once for every allocation.
#ifndef TVML_TESTS_ROBUSTNESS_PROGRAMME_H
#define TVML_TESTS_ROBUSTNESS_PROGRAMME_H

#include <cstdint>
#include <ostream>
#include <string>

#include "fil_process.h"

namespace tvml {

inline constexpr std::size_t kBufferUnits = 8000;

struct Programme {
    const char* name;
    const char16_t* script;
    const char16_t* description;

    std::int32_t convert(std::u16string& buffer) const {
        return fil_process(script, 1, 2, description, buffer.data(),
                           static_cast<std::int32_t>(buffer.size()));
    }

    friend void PrintTo(const Programme& programme, std::ostream* out) { *out << programme.name; }
};

inline constexpr Programme kRichProgramme{
    "rich",
    u"title: First\nsubtitle: Second\ntitle: \"Third\"\nsuper: text (red)\nsubimage: a.jpg\n"
    u"Ａ：「おはよう。」こんにちは。お元気ですか。（字幕：挨拶）\nB: Good morning. It is a "
    u"\"long\" "
    u"line, with clauses, that goes on, and on, and on, until it is cut, somewhere, (blocking)\n"
    u"A: (bow, slow, much)\nＢ：（－９０．５度まわる、遅く）\n（ＡＢのツーショット）\n"
    u"A: (model: suit)\nA: (riddle)\nnotice: rain\n(set: sea)\ntvml: x()\n(daylight)\n",
    u"<!DOCTYPE staging [<!ENTITY e 'text'><!ATTLIST talk x CDATA 'y'>]><staging>"
    u"<numofchar>2</numofchar><setting>skipscript( switch=on )\nset: openmodel( name=x )\n"
    u"skipscript( switch=off )</setting><opening>opening &e;</opening><talk_switch>toggle"
    u"</talk_switch><talk>$1 $2 $3 $4 $9</talk><talk character='B'>b $2 $$1</talk>"
    u"<model_for_char character='A' japanesename='服' englishname='suit' default='yes'"
    u" speed='&e;'>model</model_for_char><model_for_char character='B' japanesename='服'"
    u" englishname='coat' default='no'>model</model_for_char><pose japanesename='謎'"
    u" englishname='riddle'>pose $1</pose><tag japanesename='報' englishname='notice'>$1</tag>"
    u"<set>海::sea::a.obj</set><!-- --><twoshot character1='A' character2='B'>$1</twoshot>"
    u"</staging>"};

inline constexpr Programme kBrokenProgramme{
    "broken", u"A: hello\n(nonsense)\n",
    u"<staging><x:opening xmlns:x='u'/><opening><![CDATA[x]]></opening><ending>end</ending>"
    u"<talk>a<b></talk></staging>"};

// Ends at a limit of the parser, inside the document type.
inline constexpr Programme kEndlessProgramme{
    "endless", u"A: hello\n",
    u"<!DOCTYPE s [<!ENTITY % a '<!ENTITY e \"xxxxxxxxxx\">'><!ENTITY % b '&#37;a;&#37;a;'>"
    u"<!ENTITY f '&f;'>%b;<!ATTLIST s x CDATA '&f;'>]><staging><ending>end</ending></staging>"};

// Declares whatever a document type can declare, and refers to it.
inline constexpr Programme kDeclaringProgramme{
    "declaring", u"A: hello\n",
    u"<!DOCTYPE staging [<!ELEMENT staging (talk|(opening, (ending?, x+)*)|y)*>"
    u"<!ELEMENT ending (#PCDATA|x)*><!ELEMENT x EMPTY><!NOTATION n SYSTEM 'n'>"
    u"<!ATTLIST talk character CDATA 'A' x (p|q|r) 'q' y NMTOKENS #IMPLIED z ID #REQUIRED>"
    u"<!ENTITY a 'in <x/> a'><!ENTITY b '<x>&a;&a;</x>'><!ENTITY % c '<!ENTITY d \"in d\">'>%c;"
    u"<!ENTITY f SYSTEM 'f'><!ENTITY g PUBLIC 'g' 'g' NDATA n>]><staging xmlns:ｎ='u'>"
    u"<opening>open&lt;<ｎ:x ｎ:ｙ='&a;'/></opening><talk y=' &d;  e '>&b; <!-- -->t</talk>"
    u"<ending>end</ending>&f;</staging>"};

// Content models that make the library's own tables grow, every type of attribute
// and of default, and entities of the kinds that are left. Ends at the last one,
// which stands outside.
inline constexpr Programme kListingProgramme{
    "listing", u"A: hello\n",
    u"<!DOCTYPE staging [<!ELEMENT a (b|c)*><!ELEMENT b (a,a,a?,(a|(b,c+)*))><!ELEMENT c ANY>"
    u"<!ELEMENT d (((((((((((((((((((((((((((((((((((((((("
    u"a,b)|c)))))))))))))))))))))))))))))))))))))))>"
    u"<!ELEMENT a:b (#PCDATA)>"
    u"<!NOTATION n PUBLIC 'p'><!NOTATION m PUBLIC 'p' 's'><!ENTITY u SYSTEM 'u' NDATA n>"
    u"<!ENTITY e '&#38;#60;'>"
    u"<!ATTLIST ending i IDREF #IMPLIED j IDREFS #IMPLIED k ENTITY #IMPLIED l ENTITIES #IMPLIED"
    u" m NMTOKEN 'm' n NOTATION (n|m) 'n' o CDATA #FIXED '&e;&#65;' p ID #IMPLIED"
    u" q (one|two|three) #REQUIRED><!ATTLIST ending r CDATA 'r' s CDATA ' s  s '>"
    u"<!ENTITY x '&e;&e;<!--x--><?x y?><![CDATA[x]]>'>"
    u"<!ENTITY % v '<!ENTITY y \"y\">'><!ENTITY % w '&#37;v;'>%w;<!ENTITY % z PUBLIC 'p' 's'>"
    u"<?p i?><!-- c -->%z;<!ENTITY late 'late'>]>"
    u"<staging><ending k='u' q='two'>&x;&late;end</ending></staging>"};

} // namespace tvml

#endif
