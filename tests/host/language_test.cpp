// What the program says in the languages of the catalogue.
#include "workspace.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "diagnostics/text_width.h"
#include "texts/catalogue.h"

namespace tvml::host {
namespace {

using Arguments = std::vector<std::string>;

constexpr std::string_view kScript = "A：こんにちは。\n"
                                     "A：（お辞儀、速く）\n"
                                     "（Ｂのアップショット）\n"
                                     "タイトル：速報\n"
                                     "(dance)\n"
                                     "画像を消す\n";

Outcome inJapanese(const Workspace& work, Arguments arguments) {
    arguments.insert(arguments.begin(), {"--language", "ja"});
    return work.run(arguments);
}

std::u16string wide(std::string_view text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end())).u16string();
}

bool isJapanese(std::u16string_view text) {
    return std::ranges::any_of(text, [](char16_t unit) { return unit >= 0x3000; });
}

TEST(HostLanguage, EveryTextOfTheCatalogueIsTranslated) {
    for (std::size_t i = 0; i < kMessageNames.size(); ++i) {
        const auto message = static_cast<Message>(i);
        const std::u16string_view japanese = textOf(message, Language::ja);
        const bool isFileName = japanese.ends_with(u".txt");
        EXPECT_NE(japanese, textOf(message, Language::en)) << kMessageNames[i];
        EXPECT_TRUE(isJapanese(japanese) || isFileName) << kMessageNames[i];
    }
}

// Every paragraph and every row of the help, whose lines fit a terminal.
TEST(HostLanguage, HelpIsJapaneseAndFitsTheTerminal) {
    const Workspace work;
    for (const char* command :
         {"", "convert", "check", "explain", "stats", "list", "completion", "man"}) {
        for (const char* language : {"en", "ja"}) {
            Arguments arguments{"--language", language, command, "--help"};
            if (*command == '\0') {
                arguments.erase(arguments.begin() + 2);
            }
            const Outcome help = work.run(arguments);
            EXPECT_EQ(help.exitCode, 0) << help.errors;
            std::istringstream lines(help.output);
            std::size_t japanese = 0;
            for (std::string line; std::getline(lines, line);) {
                EXPECT_LE(columnsOf(wide(line)), 80U) << line;
                EXPECT_FALSE(line.ends_with(' ')) << line;
                japanese += isJapanese(wide(line)) ? 1 : 0;
            }
            EXPECT_EQ(japanese > 5, std::string_view(language) == "ja") << help.output;
        }
    }
}

TEST(HostLanguage, Screens) {
    const Workspace work;
    const std::string script = work.write("s.txt", kScript);
    const struct {
        Arguments arguments;
        int exitCode;
        const char* told; // somewhere in the output or the errors
    } rows[] = {
        {{"--help"}, 0, "使い方: tvmlfilter コマンド [オプション]\n"},
        {{"--version"}, 0, "tvmlfilter " HOST_VERSION "\n"},
        {{"convert", "--help"}, 0, "\n  -d, --description ファイル  記述ファイル（XML）\n"},
        {{"check", script}, 3, "s.txt: エラー1件、警告0件、メモ1件\n"},
        {{"explain", script + ":2"},
         0,
         "  種類      命令\n  話者      A\n  語        お辞儀（keyword.ini の bow）\n"
         "  解釈      bow、速く\n  扱い      登場人物の命令「お辞儀」\n"
         "  修飾語    速く (fast): speed 2.0\n"},
        {{"explain", script + ":3"}, 0, "  扱い      スタジオの命令「～のアップショット」\n"},
        {{"stats", script}, 0, "\n登場人物  お辞儀                 1\n"},
        {{"stats", script}, 0, "\n話者  せりふ  文字数  時間\n"},
        {{"list", "tags"}, 0, "英語名      種類  語彙ファイルの語\ntitle       目印  タイトル\n"},
        {{"list", "elements"}, 0, "\nset               セット一覧"},
        {{"man"}, 0, ".SH \"書式\"\n"},
        {{"completion", "zsh"}, 0, "'check:台本・記述ファイル・語彙ファイルの問題を調べます'"},
        {{}, 2, "エラー: 台本が指定されていません（使い方は「tvmlfilter convert --help」"},
        {{script, "--outptu", "x"}, 2, "--outptu というオプションはありません。--output の"},
        {{script, "--zzzzz"}, 2, "--zzzzz というオプションはありません（"},
        {{script, "-o"}, 2, "--output の値（ファイル）がありません"},
        {{script, "-o", "a", "-o", "b"}, 2, "--output は一度しか指定できません"},
        {{script, "--watch=3"}, 2, "--watch に値は付けられません"},
        {{script, "--from", "0"}, 2, "--from: 「0」は指定できません。1 から 2147483647 まで"},
        {{script, "--jobs", "many"}, 2, "--jobs: 「many」は指定できません。0 から 256 まで"},
        {{"stats", script, "more"}, 2, "余分な引数「more」があります"},
        {{"check", script, script + ".no"}, 1, "\nファイル2件: 問題のないもの0件\n"},
        {{"help", "chek"}, 2, "「chek」というコマンドはありません。check の"},
        {{"frob"}, 2, "「frob」はファイルでもコマンドでもありません。コマンドは convert, check"},
        {{"list", "foo"}, 2, "表: 「foo」は指定できません。指定できるのは commands, tags"},
        {{"chekc", script}, 2, "「chekc」というファイルもコマンドもありません。check の"},
        {{"explain", script + ":99"}, 2, "s.txt は6行までです。99行目はありません\n"},
        {{script, "--allow", "S999"}, 2, "S999 というコードはありません。"},
        {{"-", "-d", "-"}, 2, "標準入力から読めるのは"},
    };
    for (const auto& row : rows) {
        const Outcome outcome = inJapanese(work, row.arguments);
        EXPECT_EQ(outcome.exitCode, row.exitCode) << row.told << outcome.errors;
        const std::string said = outcome.output + outcome.errors;
        EXPECT_NE(said.find(row.told), std::string::npos) << row.told << "\n" << said;
    }
}

// Programs read it: only the messages are in the user's language.
TEST(HostLanguage, JsonIsTheSameButForMessages) {
    const Workspace work;
    const std::string script = work.write("s.txt", kScript);
    for (const Arguments& arguments : {Arguments{"stats", script},
                                       {"explain", script + ":1-3"},
                                       {"list", "commands"},
                                       {"list", "tags"},
                                       {"list", "elements"}}) {
        Arguments json = arguments;
        json.insert(json.end(), {"--format", "json"});
        EXPECT_EQ(inJapanese(work, json).output, work.run(json).output) << arguments[0];
    }
    const Arguments check{"check", script, "--format", "json", "--allow", "S134"};
    auto japanese = nlohmann::json::parse(inJapanese(work, check).output);
    auto english = nlohmann::json::parse(work.run(check).output);
    EXPECT_TRUE(isJapanese(wide(japanese["message"].get<std::string>())));
    for (auto* object : {&japanese, &english}) {
        object->erase("message");
        object->erase("suggestions");
    }
    EXPECT_EQ(japanese, english);
}

// The processes of an archive speak as the one that started them.
TEST(HostLanguage, HoldsForEveryScriptOfAnArchive) {
    const Workspace work;
    const Outcome outcome =
        inJapanese(work, {work.write("s.txt", kScript), work.path("missing.txt"), "--output-dir",
                          work.path("out")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_NE(outcome.errors.find("という命令はありません"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("missing.txt: エラー: 読み込めません（"), std::string::npos);
    EXPECT_NE(outcome.errors.find("台本2件: 変換済み1件（うち1件に問題）、失敗1件\n  失敗: "),
              std::string::npos);
}

} // namespace
} // namespace tvml::host
