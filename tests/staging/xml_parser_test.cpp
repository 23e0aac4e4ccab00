// The walk through a document, and documents that mean harm.
#include "staging/xml_parser.h"

#include <gtest/gtest.h>

#include "support/studio.h"
#include "temporary_folder.h"

namespace tvml {
namespace {

XMLParser parsed(std::string_view bytes, XmlOptions options = {}) {
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size()), platform::system(), options};
}

// Each node by its kind: an element as its name and its text, others as digits.
std::string walked(std::string_view bytes) {
    XMLParser xml = parsed(bytes);
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
        std::string_view xml;
        const char* nodes;
    } rows[] = {
        {"", "5 "},
        {"no xml", "5 "},
        {"<s/>", "5 s "},
        {"<s><a>1</a><b><c/></b>2</s>", "5 s a=1 2 b c 2 "},
        {"<?p q?><s><!--c--><![CDATA[d]]> e</s><!--f-->", "5 5 s 3 4 2 3 "},
        // the text of an element is its first child only, without white space
        {"<a> \t\r\n x y \n</a>", "5 a=x y 2 "},
        {"<a>x<!--c-->y</a>", "5 a=x 2 3 2 "},
        {"<a><!--c-->x</a>", "5 a 3 2 "},
        {"<a><![CDATA[x]]></a>", "5 a 4 "},
        {"<a>x<![CDATA[y]]></a>", "5 a=x 2 4 "},
        {"<a> \n </a>", "5 a 2 "},
        {"<a>\xE3\x80\x80x</a>", "5 a=\xE3\x80\x80x 2 "},
        {"<a>&lt;&amp;&#x3042;&#65;</a>", "5 a=<&\xE3\x81\x82"
                                          "A 2 "},
        {"<n:a xmlns:n='u'/>", "5 n:a "},
        // what stands before an error counts
        {"<s><a>1</a><b>2</s>", "5 s a=1 2 b=2 2 "},
        {"<s><a>1</a>&undefined;<b/></s>", "5 s a=1 2 "},
        {"<s><a x='1' x='2'/></s>", "5 s "},
        {"<?xml version='1.0'?><?xml version='1.0'?><s/>", "5 "},
        {"<s>\xFF</s>", "5 s "},
        {"<s/><t/>", "5 s "},
        {"<S></s>", "5 S "},
        // an entity is a node of its own, so it gives its element no text
        {"<!DOCTYPE s [<!ENTITY e 'v'>]><s>&e;</s>", "5 5 s 5 2 "},
        {"<!DOCTYPE s [<!ENTITY e 'v'>]><s>x&e;</s>", "5 5 s=x 2 5 2 "},
        // a document type can leave no room for text
        {"<!DOCTYPE s [<!ELEMENT s EMPTY>]><s> x<a>y</a></s>", "5 5 s a=y 2 "},
        {"<!DOCTYPE s [<!ELEMENT s (a)>]><s>x<a/> <a/>&#32;x</s>", "5 5 s a 2 a "},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(walked(row.xml), row.nodes) << row.xml;
    }
    XMLParser nothing(nullptr, 0, platform::system());
    EXPECT_TRUE(nothing.nextNode());
    EXPECT_EQ(nothing.nodeKind(), NodeKind::none);
    EXPECT_FALSE(nothing.matchElement(u"s", 0));
    EXPECT_FALSE(nothing.elementText() || nothing.attributeValue(u"x"));
    EXPECT_FALSE(nothing.nextNode());
}

TEST(XmlParser, AttributesAndMatches) {
    XMLParser xml = parsed("<staging><a x='1' y=''>t</a><b/></staging>");
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

TEST(XmlParser, KeepsPositionsAndTheErrorWhenAsked) {
    constexpr std::string_view bytes = "<s>\n  <a/>\n<b x='1'>\n</c>";
    const XMLParser xml = parsed(bytes, {true});
    std::string places;
    for (const XmlPosition& position : xml.positions()) {
        places += std::to_string(position.line) + ":" + std::to_string(position.column) + " ";
    }
    EXPECT_EQ(places, "1:4 2:7 3:10 ");
    ASSERT_TRUE(xml.error().has_value());
    EXPECT_EQ(xml.error()->position.line, 4U);
    EXPECT_FALSE(xml.error()->message.empty());
    EXPECT_FALSE(parsed(bytes).error().has_value());
    EXPECT_FALSE(parsed("<s/>", {true}).error().has_value());
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
            EXPECT_EQ(walked(document).find("LEAK"), std::string::npos) << document;
            XMLParser xml = parsed(document);
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

    EXPECT_EQ(walked(laughs).substr(0, 16), "5 5 s before=1 2");
    EXPECT_EQ(walked(laughs).find("after"), std::string::npos);
    std::size_t units = 0;
    for (const std::string_view document :
         {std::string_view(laughs), std::string_view(blowup), std::string_view(loop)}) {
        XMLParser xml = parsed(document);
        while (xml.nextNode()) {
            units += xml.nodeKind() == NodeKind::element
                         ? xml.elementText().value_or(u"").size() + 1
                         : 1;
        }
    }
    EXPECT_LT(units, 200'000U);
    // The parse ends where elements are nested deeper than any staging needs.
    EXPECT_EQ(walked(deep).size(), 2 + 2 * std::size_t{1'000});
}

} // namespace
} // namespace tvml
