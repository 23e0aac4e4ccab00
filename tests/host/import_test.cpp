// `import` as its user meets it: files, encodings, what is told, and what is refused.
#include "workspace.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

namespace tvml::host {
namespace {

constexpr const char* kPlay = "太郎「やあ（間があく）」\n花子（お辞儀）「はい」\n太郎「うん」\n";
constexpr const char* kScript =
    "Ａ：やあ\nＢ：（お辞儀）\nＢ：はい\nＡ：うん\n\n"
    "ＴＶＭＬ：// 配役\nＴＶＭＬ：// A  太郎  2\nＴＶＭＬ：// B  花子  1\n";

// The play in UTF-16 of either byte order.
std::string utf16Bytes(bool isBig) {
    const std::u16string text =
        std::filesystem::path(std::u8string(kPlay, kPlay + std::strlen(kPlay))).u16string();
    std::string bytes = isBig ? "\xFE\xFF" : "\xFF\xFE";
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes.append({isBig ? high : low, isBig ? low : high});
    }
    return bytes;
}

TEST(HostImport, ReadsEveryEncoding) {
    struct EncodingRow {
        std::string bytes;
        std::string name;
    };
    const EncodingRow rows[] = {
        {kPlay, "UTF-8"},
        {std::string("\xEF\xBB\xBF") + kPlay, "UTF-8"},
        {utf16Bytes(false), "UTF-16LE"},
        {utf16Bytes(true), "UTF-16BE"},
        // 太郎「やあ（間があく）」 and so on.
        {"\x91\xBE\x98\x59\x81\x75\x82\xE2\x82\xA0\x81\x69\x8A\xD4\x82\xAA\x82\xA0\x82\xAD\x81\x6A"
         "\x81\x76\r\n\x89\xD4\x8E\x71\x81\x69\x82\xA8\x8E\xAB\x8B\x56\x81\x6A\x81\x75\x82\xCD\x82"
         "\xA2\x81\x76\r\n\x91\xBE\x98\x59\x81\x75\x82\xA4\x82\xF1\x81\x76\r\n",
         "CP932 (Shift_JIS)"},
    };
    const Workspace work;
    for (const EncodingRow& row : rows) {
        const std::string play = work.write("play.txt", row.bytes);
        const Outcome outcome = work.run({"import", play, "-o", work.path("out.txt")});
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(work.read("out.txt"), kScript) << row.name;
        EXPECT_NE(outcome.errors.find("as a Japanese play, " + row.name), std::string::npos)
            << outcome.errors;
        EXPECT_EQ(work.run({"check", work.path("out.txt"), "--failure-level", "warning"}).exitCode,
                  0);
    }
}

TEST(HostImport, TellsWhatItDidInBothLanguages) {
    const Workspace work;
    const std::string play = work.write("play.txt", kPlay);
    EXPECT_EQ(work.run({"import", play, "--cast", "花子=d", "--cast", "次郎=ｅ"}).errors,
              play + ":1: note: left out: \"間があく\"\n" + play +
                  ":2: note: \"お辞儀\" becomes Ｄ：（お辞儀）\n" + play +
                  ": warning: --cast: 次郎 says nothing in this play\n"
                  "LETTER  NAME  SPEECHES\n"
                  "A       太郎         2\n"
                  "D       花子         1\n" +
                  play +
                  ": warning: one letter lies beyond B, the last character of the description, and "
                  "is spoken by A until the description has it\n"
                  "tvmlfilter: read " +
                  play +
                  " as a Japanese play, UTF-8\n"
                  "tvmlfilter: directions: 1 made commands, 1 left out; headings of scenes: 0\n"
                  "tvmlfilter: speeches: 3 in, 3 out\n");
    const Outcome japanese = work.run({"import", play, "--language", "ja"});
    EXPECT_NE(japanese.errors.find(":1: メモ: 「間があく」は使いませんでした\n"),
              std::string::npos);
    EXPECT_NE(japanese.errors.find("tvmlfilter: せりふ: 原文 3、台本 3\n"), std::string::npos);
    EXPECT_EQ(japanese.output, kScript);
}

// A speech that nobody can say is told, and the script is written all the same.
TEST(HostImport, CountsWhatTheConversionSpeaks) {
    const Workspace work;
    const std::string play = work.write("play.txt", kPlay);
    const std::string description =
        work.write("half.xml", "<staging><numofchar>2</numofchar><model_for_char character=\"A\" "
                               "japanesename=\"a\" englishname=\"a\" default=\"yes\">m"
                               "</model_for_char></staging>");
    const Outcome outcome = work.run({"import", play, "-d", description});
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_NE(outcome.errors.find("speeches: 3 in, 2 out\n"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("error: one speech is not spoken"), std::string::npos);
    EXPECT_NE(outcome.output, "");
}

TEST(HostImport, RefusesWhatIsNoPlay) {
    const Workspace work;
    const std::string play = work.write("play.txt", kPlay);
    const std::string prose = work.write("prose.txt", "It was a dark night.\nNothing moved.\n");
    const std::string binary = work.write("binary", std::string("\x7F"
                                                                "ELF\0\1\xFF\x81",
                                                                8));
    const std::string nul = work.write("nul.txt", std::string("ANNA. A\0B\n", 10));
    const std::string empty = work.write("empty.txt", "");
    struct RefusalRow {
        std::vector<std::string> arguments;
        int exitCode;
        std::string told;
    };
    const RefusalRow rows[] = {
        {{prose}, 1, "no speeches are found"},
        {{empty}, 1, "no speeches are found"},
        {{binary}, 1, "error"},
        {{nul}, 1, "error"},
        {{play, "--format", "srt"}, 1, "no speeches are found"},
        {{play, "--format", "word"}, 2, "auto, play-ja, play-en, fountain, srt"},
        {{play, "--cast", "花子"}, 2, "no NAME=LETTER"},
        {{play, "--cast", "花子=BB"}, 2, "no NAME=LETTER"},
        {{play, "--cast", "=B"}, 2, "no NAME=LETTER"},
        {{play, "-o", play}, 2, "would replace its own input"},
        {{}, 2, "PLAY"},
    };
    for (const RefusalRow& row : rows) {
        std::vector<std::string> arguments{"import"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const Outcome outcome = work.run(arguments);
        EXPECT_EQ(outcome.exitCode, row.exitCode) << outcome.errors;
        EXPECT_NE(outcome.errors.find(row.told), std::string::npos) << outcome.errors;
        EXPECT_EQ(outcome.output, "");
    }
    EXPECT_EQ(work.read("play.txt"), kPlay);
}

// ---- the pages

// The fenced block of a kind, without its fences.
std::string blockOf(const std::string& page, const std::string& kind) {
    const std::string fence = "\n```" + kind + "\n";
    const std::size_t start = page.find(fence);
    const std::size_t end = page.find("```\n", start + fence.size());
    return start == page.npos ? "" : page.substr(start + fence.size(), end - start - fence.size());
}

TEST(HostImport, DoesWhatItsPagesShow) {
    const Workspace work;
    for (const std::string language : {"en", "ja"}) {
        const std::string name =
            TVML_SOURCE_DIR "/docs/" + (language == "en" ? std::string() : "ja/") + "import.md";
        std::ifstream file(name, std::ios::binary);
        const std::string page{std::istreambuf_iterator<char>(file), {}};
        const std::string play = work.write("play.txt", blockOf(page, "play"));
        const Outcome outcome = work.run({"import", play, "--titles", "--language", language});
        EXPECT_EQ(outcome.exitCode, 0) << name;
        EXPECT_EQ(outcome.output, blockOf(page, "script")) << name;
        std::string report = outcome.errors;
        for (std::size_t at = report.find(play); at != report.npos; at = report.find(play)) {
            report.replace(at, play.size(), "play.txt");
        }
        EXPECT_EQ(report, blockOf(page, "report")) << name;
        const std::string script = work.write("script.txt", outcome.output);
        EXPECT_EQ(work.run({"check", script, "--failure-level", "warning"}).exitCode, 0) << name;
    }
}

} // namespace
} // namespace tvml::host
