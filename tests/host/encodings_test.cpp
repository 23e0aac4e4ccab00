// What the program makes of the bytes of its files, and of its output.
#include "workspace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tvml::host {
namespace {

constexpr std::u16string_view kScript = u"A: 表示、ソース\nA: two\n";
constexpr std::string_view kScriptUtf8 = "A: 表示、ソース\nA: two\n";
// Two of its characters end with the byte of a backslash.
constexpr std::string_view kScriptCp932 =
    "A: \x95\x5C\x8E\xA6\x81\x41\x83\x5C\x81\x5B\x83\x58\nA: two\n";

std::string utf16(std::u16string_view text, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

std::string withCarriageReturns(std::string_view text) {
    std::string result;
    for (const char unit : text) {
        result += unit == '\n' ? "\r\n" : std::string(1, unit);
    }
    return result;
}

struct InputRow {
    const char* name;
    std::string bytes;
    std::string encoding;
    const char* spoken = "表示、ソース two ";
};

const std::vector<InputRow>& inputRows() {
    static const std::string kMark = "\xEF\xBB\xBF";
    static const std::u16string kMarked = u"\uFEFF" + std::u16string(kScript);
    static const std::vector<InputRow> kRows{
        {"utf-8", std::string(kScriptUtf8), "auto"},
        {"utf-8 with a mark", kMark + std::string(kScriptUtf8), "auto"},
        {"utf-8 named, with a mark", kMark + std::string(kScriptUtf8), "utf-8"},
        {"utf-16le", utf16(kMarked, false), "auto"},
        {"utf-16be", utf16(kMarked, true), "auto"},
        {"utf-16le without a mark", utf16(kScript, false), "utf-16le"},
        {"utf-16be without a mark", utf16(kScript, true), "UTF-16BE"},
        {"cp932", std::string(kScriptCp932), "auto"},
        {"cp932 named", std::string(kScriptCp932), "cp932"},
        {"cp932 that begins like utf-8", "A: \xC3\xBD\xC4\nA: \x95\x5C\n", "auto", "ﾃｽﾄ 表 "},
        {"cr lf", withCarriageReturns(kScriptUtf8), "auto"},
        {"cr lf in cp932", withCarriageReturns(kScriptCp932), "auto"},
    };
    return kRows;
}

TEST(HostEncodings, EveryScriptEncodingGivesTheSameOutput) {
    const Workspace work;
    const std::string description = work.path("description.xml");
    for (const InputRow& row : inputRows()) {
        const std::string script = work.write("script.txt", row.bytes);
        const Outcome outcome = work.run({script, "-d", description, "--encoding", row.encoding,
                                          "--description-encoding", "auto"});
        EXPECT_EQ(outcome.exitCode, 0) << row.name << outcome.errors;
        EXPECT_EQ(body(outcome.output), row.spoken) << row.name;
        EXPECT_EQ(outcome.output.find('\r'), std::string::npos) << row.name;
    }
}

TEST(HostEncodings, CarriageReturnsAloneAreLineEndsAndTold) {
    const Workspace work;
    const Outcome outcome = work.run({"check", work.write("s.txt", "A: one\rA: two\r")});
    EXPECT_NE(outcome.output.find(":1:7: "), std::string::npos) << outcome.output;
    EXPECT_NE(outcome.output.find("F410"), std::string::npos) << outcome.output;
}

TEST(HostEncodings, RefusesJapaneseEncodingsThatItDoesNotKnow) {
    const std::vector<std::pair<std::string, const char*>> kRows{
        {"A: \x1B$B$\"\x1B(B\n", "ISO-2022-JP"},
        {"A: \xA4\xB3\xA4\xF3\xC6\xFC\n", "EUC-JP"},
    };
    for (const auto& [bytes, name] : kRows) {
        const Workspace work;
        const Outcome outcome = work.run({"check", work.write("s.txt", bytes)});
        EXPECT_EQ(outcome.exitCode, 1) << name;
        EXPECT_NE(outcome.errors.find(name), std::string::npos) << outcome.errors;
    }
}

TEST(HostEncodings, DescriptionsAreReadLikeScripts) {
    constexpr std::string_view kHead = "<staging><setting>// ";
    constexpr std::string_view kTail = "</setting></staging>\n";
    struct Row {
        const char* name;
        std::string bytes;
    };
    const std::string utf8 = std::string(kHead) + "表" + std::string(kTail);
    const std::string cp932 = std::string(kHead) + "\x95\x5C" + std::string(kTail);
    const std::vector<Row> rows{
        {"utf-8", utf8},
        {"cp932", cp932},
        {"declaration", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + utf8},
        {"cp932 declaration", "<?xml version='1.0' encoding='Shift_JIS'?>\r\n" + cp932},
        {"long declaration", "\xEF\xBB\xBF<?xml\n version='1.0'\n?>" + utf8},
        {"instruction", "<?xml-style sheet?>" + utf8},
    };
    const Workspace work;
    for (const Row& row : rows) {
        const std::string file = work.write("d.xml", row.bytes);
        const Outcome outcome = work.run({work.path("script.txt"), "-d", file});
        EXPECT_NE(outcome.output.find("\n// 表\n"), std::string::npos) << row.name;
    }
}

TEST(HostEncodings, DeclarationsLeaveThePlacesInADescription) {
    const Workspace work;
    const std::string script = work.write("script.txt", "");
    const std::string file = work.write(
        "d.xml", "<?xml version='1.0'\r\n encoding='UTF-8'?><staging>\r\n<nonsense/></staging>");
    EXPECT_TRUE(work.run({script, "-d", file}).errors.starts_with(file + ":3:"));
}

TEST(HostEncodings, NamesTheFirstBytesThatDoNotDecode) {
    struct Row {
        const char* name;
        std::string bytes;
        std::string encoding;
        std::string place;  // behind the file's name
        std::string offset; // as the message says it
    };
    const std::vector<Row> rows{
        {"damaged utf-8", "A: 表\r\nA: 示\xE3\x81\n", "auto", ":2:5: ", "offset 14"},
        {"damaged cp932", "A: \x95\x5C\nB\x81", "auto", ":2:2: ", "offset 7"},
        {"neither", "\n\nA:\xFF\xFF", "auto", ":3:3: ", "offset 4"},
        {"cp932 called utf-8", std::string(kScriptCp932), "utf-8", ":1:4: ", "offset 3"},
        {"utf-8 called cp932", "A\n\x85\x40\n", "cp932", ":2:1: ", "offset 2"},
        {"beyond a character outside the basic plane", "\U0001F600a\xFF", "utf-8",
         ":1:3: ", "offset 5"},
        {"half a unit", utf16(u"\uFEFFA\n", false) + "A", "auto", ":2:1: ", "offset 6"},
        {"half a pair", utf16(u"\uFEFFA", false) + std::string("\x00\xD8", 2), "auto",
         ":1:2: ", "offset 4"},
        {"nul", std::string("A\nAB\0C", 6), "auto", ":2:3: ", "NUL"},
    };
    const Workspace work;
    work.write("output", "old");
    for (const Row& row : rows) {
        const std::string script = work.write("script.txt", row.bytes);
        const Outcome outcome =
            work.run({script, "--encoding", row.encoding, "-o", work.path("output")});
        EXPECT_EQ(outcome.exitCode, 1) << row.name;
        EXPECT_TRUE(outcome.errors.starts_with(script + row.place + "error: "))
            << row.name << ": " << outcome.errors;
        EXPECT_NE(outcome.errors.find(row.offset), std::string::npos)
            << row.name << ": " << outcome.errors;
        EXPECT_EQ(work.read("output"), "old") << row.name;
    }
}

TEST(HostEncodings, WritesUtf8OrUtf16) {
    const Workspace work;
    const std::string script = work.write("script.txt", kScriptUtf8);
    const std::string description = work.path("description.xml");
    const std::string plain = work.run({script, "-d", description}).output;
    EXPECT_FALSE(plain.starts_with("\xEF\xBB\xBF"));
    const std::string wide =
        work.run({script, "-d", description, "--output-encoding", "utf-16le"}).output;
    ASSERT_TRUE(wide.starts_with("\xFF\xFE"));
    std::u16string text;
    for (std::size_t i = 2; i + 1 < wide.size(); i += 2) {
        text += static_cast<char16_t>(static_cast<unsigned char>(wide[i]) |
                                      static_cast<unsigned char>(wide[i + 1]) << 8);
    }
    EXPECT_EQ(platform::system().toUtf8(text), plain);
}

// A sentence without a place to cut is cut by units, here in a character.
TEST(HostEncodings, WarnsOfCharactersCutInTwo) {
    std::string line = "A: ";
    for (int i = 0; i < 100; ++i) {
        line += i == 0 ? "あ" : "\U00020B9F";
    }
    const Workspace work;
    const std::string script = work.write("script.txt", line);
    const std::string description = work.path("description.xml");
    const Outcome narrow = work.run({script, "-d", description});
    EXPECT_NE(narrow.output.find("\uFFFD"), std::string::npos);
    EXPECT_NE(narrow.errors.find("U+FFFD"), std::string::npos) << narrow.errors;
    const Outcome wide = work.run({script, "-d", description, "--output-encoding", "utf-16le"});
    EXPECT_EQ(wide.errors.find("U+FFFD"), std::string::npos) << wide.errors;
}

} // namespace
} // namespace tvml::host
