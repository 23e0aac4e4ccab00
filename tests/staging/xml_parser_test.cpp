// The walk through a document, and documents that mean harm.
#include "staging/xml_expat.h"
#include "staging/xml_parser.h"

#include <gtest/gtest.h>

#include "support/studio.h"
#include "temporary_folder.h"

namespace tvml {
namespace {

std::u16string wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

// Each node by its kind: an element as its name and its text, others as digits.
std::string walked(std::u16string_view text) {
    XMLParser xml(text);
    std::string nodes;
    while (xml.nextNode()) {
        if (xml.nodeKind() == NodeKind::element) {
            nodes += shown(xml.elementName());
            nodes += xml.elementText() ? "=" + shown(*xml.elementText()) : "";
        } else {
            nodes += std::to_string(static_cast<int>(xml.nodeKind()));
        }
        nodes += " ";
    }
    return nodes;
}

TEST(XmlParser, WalksInDocumentOrderUpToTheFirstError) {
    const struct {
        std::u16string_view xml;
        const char* nodes;
    } rows[] = {
        {u"", "5 "},
        {u"no xml", "5 "},
        {u"<s/>", "5 s "},
        {u"<s><a>1</a><b><c/></b>2</s>", "5 s a=1 2 b c 2 "},
        {u"<?p q?><s><!--c--><![CDATA[d]]> e</s><!--f-->", "5 5 s 3 4 2 3 "},
        // the text of an element is its first child only, without white space
        {u"<a> \t\r\n x y \n</a>", "5 a=x y 2 "},
        {u"<a>x<!--c-->y</a>", "5 a=x 2 3 2 "},
        {u"<a><!--c-->x</a>", "5 a 3 2 "},
        {u"<a><![CDATA[x]]></a>", "5 a 4 "},
        {u"<a>x<![CDATA[y]]></a>", "5 a=x 2 4 "},
        {u"<a> \n </a>", "5 a 2 "},
        {u"<a>\u3000x</a>", "5 a=\xE3\x80\x80x 2 "},
        {u"<a>&lt;&amp;&#x3042;&#65;</a>", "5 a=<&\xE3\x81\x82"
                                           "A 2 "},
        {u"<n:a xmlns:n='u'/>", "5 n:a "},
        // what stands before an error counts
        {u"<s><a>1</a><b>2</s>", "5 s a=1 2 b=2 2 "},
        {u"<s><a>1</a>&undefined;<b/></s>", "5 s a=1 2 "},
        {u"<s><a x='1' x='2'/></s>", "5 s "},
        {u"<?xml version='1.0'?><s/>", "5 "},
        {u"\uFEFF<s/>", "5 "},
        {u"<s/><t/>", "5 s "},
        {u"<S></s>", "5 S "},
        // an entity is a node of its own, so it gives its element no text
        {u"<!DOCTYPE s [<!ENTITY e 'v'>]><s>&e;</s>", "5 5 s 5 2 "},
        {u"<!DOCTYPE s [<!ENTITY e 'v'>]><s>x&e;</s>", "5 5 s=x 2 5 2 "},
        // a document type can leave no room for text
        {u"<!DOCTYPE s [<!ELEMENT s EMPTY>]><s> x<a>y</a></s>", "5 5 s a=y 2 "},
        {u"<!DOCTYPE s [<!ELEMENT s (a)>]><s>x<a/> <a/>&#32;x</s>", "5 5 s a 2 a "},
        {u"<!DOCTYPE s [<!ELEMENT s (a)><!ELEMENT s (#PCDATA)>]><s>x</s>", "5 5 s=x 2 "},
        {u"<!DOCTYPE s [<!ELEMENT s ANY>]><s>x<![CDATA[]]></s>", "5 5 s=x 2 4 "},
        // text that an error stands in is lost, up to a reference in it
        {u"<s><a>1\n2\u00012</a>", "5 s a "},
        {u"<s><a>1&#50;3&lt;4\uFFFE5</a>", "5 s a=123 2 "},
        {u"<s><a>1]]>2</a>", "5 s a "},
        {u"<s><a>1&lt;]]></a>", "5 s a=1 2 "},
        {u"<s><a>1&#0;2</a>", "5 s a=1 2 "},
        {u"<s><a>1]]", "5 s a=1]] 2 "},
        {u"<s><a>1<b x=", "5 s a=1 2 "},
        {u"<s>1<![CDATA[2", "5 s=1 2 "},
        // entities are read where they stand, and must be whole
        {u"<!DOCTYPE s [<!ENTITY e ''>]><s>&e;x</s>", "5 5 s 5 2 "},
        {u"<!DOCTYPE s [<!ENTITY e '<a>v</a>'>]><s>&e;</s>", "5 5 s 5 a=v 2 "},
        {u"<!DOCTYPE s [<!ENTITY e '&f;&f;'><!ENTITY f 'v'>]><s>&e;<b/></s>", "5 5 s 5 5 2 5 2 b "},
        {u"<!DOCTYPE s [<!ENTITY e 'v<a>w'>]><s>&e;<b/></a></s>", "5 5 s 5 2 a=w 2 b "},
        {u"<!DOCTYPE s [<!ENTITY e 'v</s>'>]><s>&e;<b/></s>", "5 5 s 5 2 "},
        {u"<!DOCTYPE s [<!ENTITY e 'v<a x='>]><s>&e;<b/></s>", "5 5 s 5 2 "},
        {u"<!DOCTYPE s [<!ENTITY e 'v<!--'>]><s>&e;<b/></s>", "5 5 s 5 2 "},
        {u"<!DOCTYPE s [<!ENTITY e '<?xml version=\"1.0\"?>v'>]><s>&e;<b/></s>", "5 5 s 5 "},
        {u"<!DOCTYPE s [<!ENTITY e 'v&e;'>]><s>&e;<b/></s>", "5 5 s 5 2 5 2 "},
        {u"<!DOCTYPE s [<!ENTITY e 'v&f;'><!ENTITY f '&e;'>]><s>&e;<b/></s>", "5 5 s 5 2 5 "},
        {u"<!DOCTYPE s [<!ENTITY e 'v&#13;'>]><s><a>&e;</a></s>", "5 5 s a 5 2 "},
        {u"<!DOCTYPE s [<!ENTITY lt '&#38;#60;'>]><s>&lt;</s>", "5 5 s=< 2 "},
        {u"<!DOCTYPE s SYSTEM 'none'><s>x&undefined;y</s>", "5 5 s=xy 2 "},
        {u"<!DOCTYPE s [<!ENTITY e SYSTEM 'none'>]><s>x&e;y</s>", "5 5 s=x 2 "},
        {u"<!DOCTYPE s [<!ENTITY % p '<!ENTITY e \"v\">'>%p;]><s>&e;</s>", "5 5 s 5 2 "},
        {u"<!DOCTYPE s [<!ENTITY e:f 'v'>]><s/>", "5 5 "},
        {u"<!DOCTYPE s [<!ENTITY e 'v'><!ATTLIST s x ID #IMPLIED><!ENTITY e '&e;'>]><s>&e;</s>",
         "5 5 s 5 2 "},
        // names and their prefixes
        {u"<s><n:a/></s>", "5 s "},
        {u"<s><a n:x='1'/></s>", "5 s "},
        {u"<s><n:a xmlns:n='u'/><n:b/></s>", "5 s n:a "},
        {u"<s><a xmlns:m='u' xmlns:n='u' m:x='1' n:x='1'/></s>", "5 s "},
        {u"<s><a xmlns:m='u' xmlns:n='v' m:x='1' n:x='1'/></s>", "5 s a "},
        {u"<s><a xmlns:n=''/></s>", "5 s "},
        {u"<s><a xmlns=''/><xml:b xml:x='1'/></s>", "5 s a xml:b "},
        {u"<s><a xmlns:xml='u'/></s>", "5 s "},
        {u"<s><a xmlns='http://www.w3.org/XML/1998/namespace'/></s>", "5 s "},
        {u"<s><a:b:c xmlns:a='u'/></s>", "5 s "},
        {u"<s><a: xmlns:a='u'/></s>", "5 s "},
        {u"<s><a:1 xmlns:a='u'/></s>", "5 s "},
        {u"<s><?a:b?></s>", "5 s "},
        {u"<!DOCTYPE s [<!ATTLIST a n:x CDATA '1'>]><s><a xmlns:n='u'/><a/></s>", "5 5 s a "},
        {u"<s><ａ ｂ='1'>ａ</ａ><々/>x</s>", "5 s ａ=ａ 2 々 2 "},
        {u"<s><ａ>1</ｂ></s>", "5 s ａ=1 2 "},
        {u"<!DOCTYPE s [<!ELEMENT ａ EMPTY><!ENTITY ｅ 'v'>]><s><ａ>1</ａ>&ｅ;</s>",
         "5 5 s ａ 5 2 "},
        {u"<s><!-- <ａ> ' --><![CDATA[<ａ]]><b x='<'/></s>", "5 s 3 4 "},
        {u"<s>\xD800x\xDC00</s>", "5 s=\xEF\xBF\xBDx\xEF\xBF\xBD 2 "},
        {u"<s>\xD83D\xDE00</s>", "5 s=\xF0\x9F\x98\x80 2 "},
        {u"<s>a\r\nb\rc</s>", "5 s=a|b|c 2 "},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(walked(row.xml), row.nodes) << shown(row.xml);
    }
}

TEST(XmlParser, AttributesAndMatches) {
    XMLParser xml(u"<staging><a x='1' y=''>t</a><b/></staging>");
    const auto moveTo = [&](std::u16string_view name) {
        while (xml.nextNode() && xml.elementName() != name) {
        }
    };
    moveTo(u"a");
    EXPECT_TRUE(xml.matchElement(u"staging", 1));
    EXPECT_TRUE(xml.matchElement(u"a", 0));
    EXPECT_TRUE(xml.matchElement(u"a", 0, u"x", u"1", u"y", u""));
    EXPECT_FALSE(xml.matchElement(u"A", 0));
    EXPECT_FALSE(xml.matchElement(u"staging", 0));
    EXPECT_FALSE(xml.matchElement(u"staging", 2)); // the document
    EXPECT_FALSE(xml.matchElement(u"staging", 9));
    EXPECT_FALSE(xml.matchElement(u"a", 0, u"x", u"2"));
    EXPECT_FALSE(xml.matchElement(u"a", 0, u"x", u"1", u"y", u"2"));
    EXPECT_FALSE(xml.matchElement(u"a", 0, u"z", u""));
    EXPECT_FALSE(xml.matchElement(u"staging", 1, u"x", u"1"));
    EXPECT_EQ(xml.attributeValue(u"x"), u"1");
    EXPECT_EQ(xml.attributeValue(u"z"), u"");
    EXPECT_FALSE(xml.attributeValue(nullptr).has_value());
    EXPECT_TRUE(xml.hasAttributeValue(u"x"));
    EXPECT_FALSE(xml.hasAttributeValue(u"y") || xml.hasAttributeValue(u"z"));
    xml.nextNode(); // the text in it
    EXPECT_TRUE(xml.matchElement(u"a", 1));
    EXPECT_FALSE(xml.attributeValue(u"x") || xml.elementText());
    moveTo(u"b");
    EXPECT_FALSE(xml.attributeValue(u"x").has_value());
    EXPECT_EQ(xml.elementNumber(), 3U);
}

// The declared type of an attribute says what becomes of its white space, and
// the document type can add attributes.
TEST(XmlParser, AttributeValuesFollowTheDocumentType) {
    const struct {
        std::u16string_view xml;
        const char* value; // of x, at the last element
    } rows[] = {
        {u"<a x=' p\r\nq\t'/>", " p q "},
        {u"<a x='&#10;&lt;&#65;'/>", "|<A"},
        {u"<!DOCTYPE a [<!ATTLIST a x CDATA 'd'>]><a/>", "d"},
        {u"<!DOCTYPE a [<!ATTLIST a x CDATA 'd'>]><a x=' e '/>", " e "},
        {u"<!DOCTYPE a [<!ATTLIST a x NMTOKENS #IMPLIED>]><a x=' p  q '/>", "p q"},
        {u"<!DOCTYPE a [<!ATTLIST a x CDATA 'd' x CDATA 'e'>]><a/>", "d"},
        {u"<!DOCTYPE a [<!ENTITY e ' f&g; '><!ENTITY g 'h'>]><a x='&e;'/>", " fh "},
        {u"<!DOCTYPE a [<!ENTITY e 'f'><!ATTLIST b x CDATA '&e;'>]><a x='1'><b/></a>", "f"},
        {u"<!DOCTYPE a [<!ENTITY e '<b/>'><!ATTLIST b x CDATA 'd'>]><a>&e;</a>", "d"},
        {u"<!DOCTYPE a SYSTEM 'none'><a x='p&undefined;q'/>", "pq"},
        {u"<a x='1'><b x='<'/></a>", "1"},
    };
    for (const auto& row : rows) {
        XMLParser xml(row.xml);
        std::string value;
        while (xml.nextNode()) {
            value = xml.nodeKind() == NodeKind::element
                        ? shown(xml.attributeValue(u"x").value_or(u"none"))
                        : value;
        }
        EXPECT_EQ(value, row.value) << shown(row.xml);
    }
}

TEST(XmlParser, KeepsTagsWhenAsked) {
    const struct {
        std::u16string_view xml;
        const char* tags; // in brackets, each with the number of its parent
    } rows[] = {
        {u"<s>\n  <a/>\n<b x='>'>\n</c>", "[<s>]0 [<a/>]1 [<b x='>'>]1 "},
        {u"<s>\xD800\r<a\ry=''><b/></a><c/></s>", "[<s>]0 [<a\ry=''>]1 [<b/>]2 [<c/>]1 "},
        {u"<!DOCTYPE s [<!ENTITY e '<a/>'>]><s>&e;<b/></s>", "[<s>]0 []1 [<b/>]1 "},
    };
    for (const auto& row : rows) {
        std::string tags;
        const XMLParser xml(row.xml, {true});
        for (const XmlTag& tag : xml.tags()) {
            tags += "[" + shown(row.xml.substr(tag.offset, tag.length)) + "]" +
                    std::to_string(tag.parent) + " ";
        }
        EXPECT_EQ(tags, row.tags) << shown(row.xml);
        EXPECT_TRUE(XMLParser(row.xml).tags().empty());
    }
}

TEST(XmlParser, SaysWhereAndWhyTheXmlEnded) {
    const struct {
        std::u16string_view xml;
        std::string_view error; // offset and message
    } rows[] = {
        {u"no xml", "0 invalid document structure"},
        {u"", "0 invalid document structure"},
        {u"<?xml version='1.0'?><s/>", "6 XML or TEXT declaration must start at line 1, column 1"},
        {u"<s><a>1</b></s>", "9 expected end of tag 'a'"},
        {u"<s><a>1", "7 input ended before all started tags were ended; last tag started is 'a'"},
        {u"<s><a x='1", "10 unexpected end of input"},
        {u"<s><!-- a", "9 unterminated comment"},
        {u"<s><![CDATA[a", "13 unterminated CDATA section"},
        {u"<s>a &e; b</s>", "8 entity 'e' not found"},
        {u"<s>a &#0; b</s>", "9 invalid character reference"},
        {u"<s x='&e;'/>", "9 entity 'e' not found"},
        {u"<s>&ａ;<ａ/></s>", "6 entity 'ａ' not found"},
        {u"<s x='1' x='2'/>", "9 an attribute is already specified for this element"},
        {u"<s/><t/>", "4 comment or processing instruction expected"},
        {u"<s>\n<a x=1/></s>", "9 invalid character or markup"},
        {u"<s>\xD800<n:a/></s>", "10 prefix 'n' can not be resolved to namespace URI"},
        {u"<!DOCTYPE s [<!ENTITY e 'a</b>'>]><s>&e;</s>", "40 expected end of tag 's'"},
        {u"<!DOCTYPE s [<!ENTITY e '&e;'>]><s>&e;</s>", "38 recursive entity expansion 'e'"},
        {u"<!DOCTYPE s [<!ENTITY e SYSTEM 'f'>]><s>&e;</s>",
         "43 unable to open external entity 'e'"},
    };
    for (const auto& row : rows) {
        const XMLParser xml(row.xml, {true});
        ASSERT_TRUE(xml.error().has_value()) << shown(row.xml);
        EXPECT_EQ(std::to_string(xml.error()->offset) + " " + shown(xml.error()->message),
                  row.error)
            << shown(row.xml);
        EXPECT_FALSE(XMLParser(row.xml).error().has_value());
    }
    EXPECT_FALSE(XMLParser(u"<s/>", {true}).error().has_value());
}

// Without this form of the library every text would be read as something else.
TEST(XmlParser, TheLibraryGivesSixteenBitUnits) {
    bool isWide = false;
    for (const XML_Feature* at = XML_GetFeatureList(); at->feature != XML_FEATURE_END; ++at) {
        isWide = isWide || at->feature == XML_FEATURE_UNICODE;
        EXPECT_NE(at->feature, XML_FEATURE_UNICODE_WCHAR_T);
        EXPECT_TRUE(at->feature != XML_FEATURE_SIZEOF_XML_CHAR || at->value == 2);
    }
    EXPECT_TRUE(isWide);
}

TEST(XmlParser, ReadsNoFileBecauseADocumentAsks) {
    const platform::TemporaryFolder folder;
    folder.write("leak.txt", "LEAK");
    folder.write("leak.dtd", "<!ENTITY leak 'LEAK'><!ATTLIST s x CDATA 'LEAK'>");
    const std::string path = folder.path().generic_string();
    const std::string file = "file://" + std::string(path[0] == '/' ? "" : "/") + path + "/leak";
    for (const std::string& name : {file, path + "/leak"}) {
        const std::string documents[] = {
            "<!DOCTYPE s [<!ENTITY leak SYSTEM '" + name + ".txt'>]><s>&leak;<t>&leak;</t></s>",
            "<!DOCTYPE s SYSTEM '" + name + ".dtd'><s>&leak;</s>",
            "<!DOCTYPE s PUBLIC 'p' '" + name + ".dtd'><s/>",
            "<!DOCTYPE s [<!ENTITY % p SYSTEM '" + name + ".dtd'>%p;]><s>&leak;</s>",
            "<s xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
            "xsi:noNamespaceSchemaLocation='" +
                name + ".dtd'><t/></s>",
        };
        for (const std::string& document : documents) {
            EXPECT_EQ(walked(wide(document)).find("LEAK"), std::string::npos) << document;
            XMLParser xml(wide(document));
            while (xml.nextNode()) {
                EXPECT_NE(xml.attributeValue(u"x").value_or(u""), u"LEAK") << document;
            }
        }
    }
}

// Neither entities that multiply nor deep nesting may exhaust the machine; what
// stands before them is read.
TEST(XmlParser, SurvivesHostileDocuments) {
    std::string laughs = "<!DOCTYPE s [<!ENTITY a0 'ha'>";
    for (int i = 1; i < 12; ++i) {
        laughs += "<!ENTITY a" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j) {
            laughs += "&a" + std::to_string(i - 1) + ";";
        }
        laughs += "'>";
    }
    laughs += "]><s><before>1</before><x>&a11;</x><after/></s>";
    std::string blowup = "<!DOCTYPE s [<!ENTITY a '" + std::string(100'000, 'x') + "'>]><s>";
    for (int i = 0; i < 20'000; ++i) {
        blowup += "&a;";
    }
    blowup += "</s>";
    const std::string loop = "<!DOCTYPE s [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><s>&a;</s>";
    std::string deep;
    for (int i = 0; i < 10'000; ++i) {
        deep += "<s>";
    }

    EXPECT_EQ(walked(wide(laughs)).substr(0, 16), "5 5 s before=1 2");
    EXPECT_EQ(walked(wide(laughs)).find("after"), std::string::npos);
    std::size_t units = 0;
    for (const std::string_view document :
         {std::string_view(laughs), std::string_view(blowup), std::string_view(loop)}) {
        XMLParser xml(wide(document));
        while (xml.nextNode()) {
            units += xml.nodeKind() == NodeKind::element
                         ? xml.elementText().value_or(u"").size() + 1
                         : 1;
        }
    }
    EXPECT_LT(units, 200'000U);
    // The parse ends where elements are nested deeper than any staging needs.
    EXPECT_EQ(walked(wide(deep)).size(), 2 + 2 * std::size_t{1'000});
}

} // namespace
} // namespace tvml
