// What people and programs see of a diagnostic.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "diagnostics/checking.h"
#include "diagnostics/text_width.h"

#ifndef _WIN32
#include <unicode/uchar.h>
#endif

namespace tvml {
namespace {

Diagnostic made(std::int32_t line, std::size_t column, std::size_t units) {
    return {Code("S102"), Severity::error, SourceKind::script, line, column, units, u"say", {}};
}

Sources scriptOf(std::u16string_view text) {
    return {{"a.txt", text}, {"a.xml", u""}, {"keyword.ini", u""}};
}

TEST(TextRenderer, MarksTheRange) {
    struct {
        std::u16string_view script;
        Diagnostic found;
        std::string_view shown;
    } const rows[] = {
        {u"one\ntwo three\n", made(2, 5, 5),
         "a.txt:2:5: error: say [S102]\n  two three\n      ^~~~~\n"},
        {u"Ａ：（早く）", made(1, 4, 2),
         "a.txt:1:4: error: say [S102]\n  Ａ：（早く）\n        ^~~~\n"},
        {u"\tｱb", made(1, 3, 0), "a.txt:1:3: error: say [S102]\n  \tｱb\n  \t ^\n"},
        {u"🎉か\u3099x", made(1, 5, 1), "a.txt:1:5: error: say [S102]\n  🎉か\u3099x\n      ^\n"},
        {u"a\x1b[31mb", made(1, 2, 1), "a.txt:1:2: error: say [S102]\n  a\uFFFD[31mb\n   ^\n"},
        {u"x", made(0, 0, 0), "a.txt: error: say [S102]\n"},
        {u"x", made(7, 1, 1), "a.txt:7:1: error: say [S102]\n  \n  ^\n"},
    };
    for (const auto& row : rows) {
        const Sources sources = scriptOf(row.script);
        EXPECT_EQ(TextRenderer(sources, platform::system(), Language::en, {}).render(row.found),
                  row.shown);
    }
}

// A carriage return ends a line of the vocabulary and is a letter elsewhere.
TEST(TextRenderer, CutsLinesAsTheReadersDo) {
    constexpr std::u16string_view kText = u"[S]\rk=v\r\n\nl=w\r";
    const Sources sources{{"a.txt", kText}, {"a.xml", kText}, {"keyword.ini", kText}};
    struct {
        SourceKind source;
        std::int32_t line;
        std::string_view shown;
    } const rows[] = {
        {SourceKind::vocabulary, 1, "\n  [S]\n  ^\n"},
        {SourceKind::vocabulary, 2, "\n  k=v\n  ^\n"},
        {SourceKind::vocabulary, 3, "\n  \n  ^\n"},
        {SourceKind::vocabulary, 4, "\n  l=w\n  ^\n"},
        {SourceKind::vocabulary, 5, "\n  \n  ^\n"},
        {SourceKind::script, 1, "\n  [S]\uFFFDk=v\uFFFD\n  ^\n"},
        {SourceKind::description, 3, "\n  l=w\uFFFD\n  ^\n"},
    };
    const TextRenderer renderer(sources, platform::system(), Language::en, {});
    for (const auto& row : rows) {
        Diagnostic found = made(row.line, 1, 1);
        found.source = row.source;
        const std::string shown = renderer.render(found);
        EXPECT_EQ(shown.substr(shown.find('\n')), row.shown) << row.line;
    }
}

TEST(TextRenderer, ShowsLongLinesAroundTheRange) {
    const std::u16string script = std::u16string(5000, u'x') + u"HERE" + std::u16string(5000, u'y');
    const Sources sources = scriptOf(script);
    const std::string shown =
        TextRenderer(sources, platform::system(), Language::en, {}).render(made(1, 5001, 4));
    EXPECT_LT(shown.size(), 500u);
    EXPECT_NE(shown.find("xxHEREyy"), std::string::npos);
    EXPECT_EQ(shown.find('^') - shown.rfind('\n', shown.find('^')),
              shown.find("HERE") - shown.rfind('\n', shown.find("HERE")) - 2); // "…" has 3 bytes
}

// Of every width, no line is wider, no character is cut, and the caret stands
// under the range.
TEST(TextRenderer, FitsTheScreen) {
    const std::u16string script = u"Ａ：🎉🎉🎉🎉🎉🎉🎉きょうはとても長い一行を、\tそのまま書きました（お辞"
                                  u"義）と、まだ続くのです。🎉🎉";
    const std::size_t start = script.find(u"お辞義");
    const Sources sources = scriptOf(script);
    for (std::size_t columns = 20; columns < 140; ++columns) {
        const TextRenderer renderer(sources, platform::system(), Language::en, {false, columns});
        const std::u16string shown = utf16(renderer.render(made(1, start + 1, 3)));
        const std::size_t excerpt = shown.find(u'\n') + 1;
        const std::size_t caret = shown.find(u'\n', excerpt) + 1;
        const std::u16string line = shown.substr(excerpt, caret - 1 - excerpt);
        const std::u16string marks = shown.substr(caret, shown.find(u'\n', caret) - caret);
        EXPECT_LE(columnsOf(line), columns) << utf8(line);
        EXPECT_EQ(line.find(u'\xFFFD'), kNone) << utf8(line);
        const std::size_t at = line.find(u"お辞義");
        ASSERT_NE(at, kNone) << utf8(line);
        if (line.find(u'\t') == kNone) {
            EXPECT_EQ(columnsOf(line.substr(0, at)), marks.find(u'^')) << utf8(line);
        }
        EXPECT_EQ(marks.substr(marks.find(u'^')), u"^~~~~~");
    }
}

TEST(HarmlessText, HoldsNothingThatATerminalObeys) {
    struct {
        std::string_view bytes;
        std::string_view shown;
    } const rows[] = {
        {"日本\t語.txt", "日本\uFFFD語.txt"},
        {"a\x1b[31mb\rc\nd\x7f", "a\uFFFD[31mb\uFFFDc\uFFFDd\uFFFD"},
        {"a\u009b31m", "a\uFFFD31m"},
        {"a\u202egpj.exe\u2069", "a\uFFFDgpj.exe\uFFFD"},
        {"\x9b"
         "31m \xE9t\xE9 \xF0\x9F\x8E",
         "\uFFFD31m \xE9t\xE9 \xF0\uFFFD\uFFFD"},
        {"\xC0\x9B \xE0\x80\x9B", "\uFFFD \uFFFD"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(harmlessBytes(row.bytes), row.shown);
    }
    EXPECT_EQ(harmlessText(u"a\tb\x1b\u202Ec"), u"a\tb\uFFFD\uFFFDc");
}

TEST(TextRenderer, ColoursAndSuggestions) {
    Diagnostic found = made(1, 1, 1);
    found.suggestions = {u"速く", u"遅く"};
    const Sources sources = scriptOf(u"x");
    const std::string plain =
        TextRenderer(sources, platform::system(), Language::en, {}).render(found);
    EXPECT_NE(plain.find("\n  did you mean: 速く / 遅く\n"), std::string::npos);
    EXPECT_EQ(plain.find('\x1b'), std::string::npos);
    std::string coloured =
        TextRenderer(sources, platform::system(), Language::en, {true}).render(found);
    EXPECT_NE(coloured.find("\x1b[1;31merror: \x1b[0m"), std::string::npos);
    for (std::size_t at = coloured.find('\x1b'); at != coloured.npos; at = coloured.find('\x1b')) {
        coloured.erase(at, coloured.find('m', at) + 1 - at);
    }
    EXPECT_EQ(coloured, plain);
}

TEST(Json, HoldsEverything) {
    Diagnostic found = made(2, 3, 4);
    found.suggestions = {u"速く"};
    Sources sources = scriptOf(u"");
    sources.script.name = "no \xff utf-8";
    const std::string line = renderJson(found, sources, platform::system());
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    auto object = nlohmann::json::parse(line);
    EXPECT_EQ(object.at("file"), "no \uFFFD utf-8");
    object.erase("file");
    EXPECT_EQ(object, nlohmann::json::parse(
                          R"({"version":1,"code":"S102","severity":"error","source":"script",
                "line":2,"column":3,"endColumn":7,"message":"say","suggestions":["速く"]})"));
    EXPECT_TRUE(nlohmann::json::parse(renderJson(made(0, 0, 0), sources, platform::system()))
                    .at("endColumn")
                    .is_null());
}

TEST(Policy, AllowsDeniesAndFails) {
    const auto reached = [](const SeverityPolicy& policy, std::size_t left) {
        std::vector<Diagnostic> found = foundInScript(u"Ａ：（お辞儀、早く）\nＤ：はい。\n");
        const bool failed = applyPolicy(policy, found);
        EXPECT_EQ(found.size(), left);
        return failed;
    };
    EXPECT_TRUE(reached({}, 2));
    EXPECT_FALSE(reached({std::nullopt, {}, {}}, 2));
    EXPECT_FALSE(reached({Severity::error, {Code("S102")}, {}}, 1));
    EXPECT_TRUE(reached({Severity::warning, {Code("S102")}, {}}, 1));
    EXPECT_TRUE(reached({Severity::error, {Code("S102")}, {Code("S110")}}, 1));
    EXPECT_EQ(findCode("S110"), Code("S110"));
    EXPECT_FALSE(findCode("S999").has_value());
    EXPECT_FALSE(findCode("").has_value());
}

#ifndef _WIN32
// The platform's tables know the widths of all characters; scripts mostly hold
// these.
TEST(TextWidth, AgreesWithTheUnicodeTables) {
    constexpr struct {
        char32_t first;
        char32_t last;
    } kBlocks[] = {{0x20, 0x7E},     {0xA1, 0x2FF},    {0x370, 0x482},   {0x1100, 0x11FF},
                   {0x2010, 0x2027}, {0x2030, 0x205E}, {0x2190, 0x22FF}, {0x3000, 0x3029},
                   {0x3030, 0x3096}, {0x309B, 0x33FF}, {0x3400, 0x9FFF}, {0xAC00, 0xD7A3},
                   {0xF900, 0xFAD9}, {0xFE30, 0xFE6B}, {0xFF01, 0xFFE6}, {0x20000, 0x2A6DF}};
    for (const auto& block : kBlocks) {
        for (char32_t character = block.first; character <= block.last; ++character) {
            const auto code = static_cast<UChar32>(character);
            const int width = u_getIntPropertyValue(code, UCHAR_EAST_ASIAN_WIDTH);
            const bool isWide = width == U_EA_WIDE || width == U_EA_FULLWIDTH;
            if (u_isdefined(code)) {
                EXPECT_EQ(columnsOfCharacter(character), isWide ? 2u : 1u) << std::hex << code;
            }
        }
    }
}
#endif

} // namespace
} // namespace tvml
