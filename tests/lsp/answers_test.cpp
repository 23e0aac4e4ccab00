// What the server answers about scripts and descriptions.
#include <algorithm>

#include <gtest/gtest.h>

#include "diagnostics/checking.h"
#include "lsp/client.h"

namespace tvml::lsp {
namespace {

constexpr std::string_view kNews = "タイトル：ニュース\n"           // 0
                                   "（セット：ニューススタジオ）\n" // 1
                                   "Ａ：こんばんは。\n"             // 2
                                   "Ｂ：（敬礼）\n"                 // 3
                                   "速報：地震\n"                   // 4
                                   "subimage: map.png\n"            // 5
                                   "B: (banzai, fast)\n"            // 6
                                   "A: (look at B)\n"               // 7
                                   "タイトル：天気\n"               // 8
                                   "A: (bwo)\n"                     // 9
                                   "Ａ：お辞儀\n";                  // 10

std::string place(const Json& range) {
    return std::to_string(range["start"]["line"].get<int>()) + ":" +
           std::to_string(range["start"]["character"].get<int>()) + "-" +
           std::to_string(range["end"]["character"].get<int>());
}

// The text at the bar is where the writer is; each row names some of what is offered,
// with what it puts in place of what is typed.
TEST(Answers, Completion) {
    struct Row {
        std::string_view text;
        std::string_view label;
        std::string_view inserted; // empty: not offered
    };
    const Row rows[] = {
        {"|", "タイトル", "タイトル："},
        {"|", "Ｂ", "Ｂ："},
        {"|", "速報", "速報："},
        {"ti|", "title", "title:"},
        {"ti|: News", "title", "title"},
        {"Ａ：（|", "お辞儀", "お辞儀）"},
        {"Ａ：（|）", "お辞儀", "お辞儀"},
        {"A: (b|", "bow", "bow)"},
        {"A: (b|", "salute", ""}, // the pose of another
        {"B: (s|", "salute", "salute)"},
        {"（|", "セット", "セット："},
        {"（セット：|", "ニューススタジオ", "ニューススタジオ）"},
        {"Ａ：（キャラクター：|", "スーツ", "スーツ）"},
        {"Ｂ：（キャラクター：|", "スーツ", ""},
        {"Ａ：（お辞儀、|", "速く", "速く）"},
        {"Ａ：（お辞儀、速く、|", "遅く", ""},
        {"Ａ：（お辞儀、速く、|", "同時", "同時）"},
        {"サブイメージ：|", "map.png", "map.png"},
        {"Ａ：（サウンドファイル：|", "map.png", "map.png）"},
        {"A: Hello |", "bow", ""},
    };
    for (const Row& row : rows) {
        const std::u16string marked = utf16(row.text);
        const std::size_t unit = marked.find(u'|');
        Client client;
        client.open(utf8(marked.substr(0, unit) + marked.substr(unit + 1)) + "\n");
        std::string inserted;
        const Json answer = client.askAt("completion", 0, unit);
        for (const Json& item : answer["items"]) {
            inserted = item["label"] == row.label ? item["textEdit"]["newText"] : Json(inserted);
        }
        EXPECT_EQ(inserted, row.inserted) << row.text << " " << row.label;
    }
}

TEST(Answers, CompletionOfDescriptions) {
    struct Row {
        std::string_view text;
        std::string_view label;
        std::string_view inserted;
    };
    const Row rows[] = {
        {"<staging>\n<bo|", "bow", "bow"},
        {"<staging>\n<ope|", "opening", "opening>"},
        {"<staging>\n<bow>x</|", "bow", "bow>"},
        {"<staging>\n<model_for_char |", "englishname", "englishname=\"\""},
        {"<staging>\n<model_for_char default=\"|", "yes", "yes"},
        {"<staging>\n<bow>character: $|", "$1", "$1"},
        {"<staging>\n<bow_switch>|", "toggle", "toggle"},
        {"<staging>\n<opening>$|", "$1", ""},
    };
    for (const Row& row : rows) {
        Client client;
        const std::string text(row.text.substr(0, row.text.size() - 1));
        client.open(text, Client::kDescription);
        std::string inserted;
        const Json place{{"line", 1}, {"character", text.size() - text.find('\n') - 1}};
        const Json answer =
            client.ask("textDocument/completion",
                       {{"textDocument", {{"uri", Client::kDescription}}}, {"position", place}});
        for (const Json& item : answer["items"]) {
            inserted = item["label"] == row.label ? item["textEdit"]["newText"] : Json(inserted);
        }
        EXPECT_EQ(inserted, row.inserted) << row.text << " " << row.label;
    }
}

TEST(Answers, Hover) {
    Client client;
    client.open(kNews);
    const auto text = [&client](std::size_t line) -> std::string {
        const Json hover = client.askAt("hover", line, 3);
        return hover.is_null() ? "" : hover["contents"]["value"];
    };
    EXPECT_NE(text(3).find("character: gesture( name=B )"), std::string::npos) << text(3);
    EXPECT_NE(text(4).find("super: on( text=\"地震\" )"), std::string::npos) << text(4);
    EXPECT_NE(text(9).find("is no command"), std::string::npos) << text(9);
    EXPECT_EQ(text(11), "");
    client.open(utf8(kExampleDescription), Client::kDescription);
    const Json element =
        client.ask("textDocument/hover", {{"textDocument", {{"uri", Client::kDescription}}},
                                          {"position", {{"line", 18}, {"character", 3}}}});
    EXPECT_NE(element["contents"]["value"].get<std::string>().find("<tag>"), std::string::npos);
}

TEST(Answers, DefinitionAndReferences) {
    Client client;
    client.open(kNews);
    const auto target = [&client](std::size_t line, std::size_t unit) {
        const Json found = client.askAt("definition", line, unit);
        return found.empty() ? std::string()
                             : found[0]["uri"].get<std::string>() + " " + place(found[0]["range"]);
    };
    EXPECT_EQ(target(1, 8), "file:///plays/news.xml 9:0-8");  // the set
    EXPECT_EQ(target(2, 0), "file:///plays/news.xml 2:0-15"); // A's model
    EXPECT_EQ(target(3, 3), "file:///plays/news.xml 14:0-5"); // the pose
    EXPECT_EQ(target(4, 1), "file:///plays/news.xml 17:0-4"); // the tag
    EXPECT_EQ(target(5, 12), "file:///plays/media/map.png 0:0-0");
    EXPECT_EQ(target(9, 5), "");
    std::string lines;
    for (const Json& use : client.askAt("references", 4, 1, {{"context", Json::object()}})) {
        lines += place(use["range"]) + " ";
    }
    EXPECT_EQ(lines, "4:0-2 ");
}

TEST(Answers, Overview) {
    Client client;
    client.open(kNews);
    const Json document{{"textDocument", {{"uri", Client::kScript}}}};
    const Json symbols = client.ask("textDocument/documentSymbol", document);
    ASSERT_EQ(symbols.size(), 2U);
    EXPECT_EQ(symbols[0]["name"], "ニュース");
    EXPECT_EQ(symbols[0]["range"]["end"]["line"], 7);
    EXPECT_EQ(symbols[0]["children"][0]["name"], "ニューススタジオ");
    EXPECT_EQ(symbols[1]["name"], "天気");
    EXPECT_EQ(client.ask("textDocument/foldingRange", document).size(), 3U);
    const Json links = client.ask("textDocument/documentLink", document);
    ASSERT_EQ(links.size(), 1U);
    EXPECT_EQ(place(links[0]["range"]), "5:10-17");
    const Json tokens = client.ask("textDocument/semanticTokens/full", document)["data"];
    EXPECT_EQ(tokens.size() % 5, 0U);
    EXPECT_EQ(Json(std::vector<Json>(tokens.begin(), tokens.begin() + 10)),
              Json({0, 0, 4, 1, 0, 1, 1, 3, 3, 0}));
    Json ranges = client.ask("textDocument/selectionRange",
                             {{"textDocument", {{"uri", Client::kScript}}},
                              {"positions", {{{"line", 6}, {"character", 6}}}}})[0];
    std::string nested;
    for (; !ranges.is_null(); ranges = ranges.value("parent", Json())) {
        nested += place(ranges["range"]) + " ";
    }
    EXPECT_EQ(nested, "6:4-10 6:4-16 6:3-17 6:0-17 0:0-0 ");
}

TEST(Answers, Actions) {
    Client client;
    client.open(kNews);
    const auto edits = [&client](int line, const char* kind) {
        const Json range{{"start", {{"line", line}, {"character", 0}}},
                         {"end", {{"line", line}, {"character", 0}}}};
        std::string texts;
        for (const Json& action :
             client.ask("textDocument/codeAction", {{"textDocument", {{"uri", Client::kScript}}},
                                                    {"range", range},
                                                    {"context", {{"only", {kind}}}}})) {
            for (const Json& edit : action["edit"]["changes"][Client::kScript]) {
                texts += place(edit["range"]) + " " + edit["newText"].get<std::string>() + "; ";
            }
        }
        return texts;
    };
    EXPECT_EQ(edits(9, "quickfix"), "9:4-7 bow; ");
    EXPECT_EQ(edits(10, "quickfix"), "10:2-5 （お辞儀）; ");
    EXPECT_EQ(edits(0, "quickfix"), "0:9-9 \nサブタイトル：; ");
    EXPECT_EQ(edits(6, "refactor"), "6:0-17 B: (ばんざい, 速く); ");
    EXPECT_EQ(edits(3, "refactor"), "3:0-6 Ｂ：（salute）; ");
    EXPECT_EQ(edits(9, "refactor"), ""); // nothing takes it
    EXPECT_EQ(edits(0, "source.fixAll"), "9:4-7 bow; 10:2-5 （お辞儀）; ");
}

TEST(Answers, Rename) {
    Client client;
    client.open(kNews);
    const auto renamed = [&client](std::size_t line, std::size_t unit, const char* name) {
        const Json answer = client.askAt("rename", line, unit, {{"newName", name}});
        std::string texts = answer.value("message", "");
        if (answer.contains("changes")) {
            for (const auto& [uri, edits] : answer["changes"].items()) {
                for (const Json& edit : edits) {
                    texts += place(edit["range"]) + " " + edit["newText"].get<std::string>() + "; ";
                }
            }
        }
        return texts;
    };
    EXPECT_EQ(renamed(2, 0, "C"), "2:0-1 Ｃ; 7:0-1 C; 9:0-1 C; 10:0-1 Ｃ; ");
    EXPECT_NE(renamed(3, 0, "C").find("Line 4"), std::string::npos); // whose pose it is
    EXPECT_NE(renamed(3, 0, "A").find("used already"), std::string::npos);
    EXPECT_NE(renamed(3, 0, "Q").find("no letter"), std::string::npos);
    EXPECT_EQ(renamed(4, 0, "臨時"), "4:0-2 臨時; 17:19-21 臨時; ");
    EXPECT_NE(renamed(4, 0, "タイトル").find("taken"), std::string::npos);
    EXPECT_NE(renamed(9, 5, "x").find("Nothing here"), std::string::npos);
    // A tag whose name begins what is said on another line.
    client.edit(2, 0, 0, "臨時：こんばんは。\n");
    EXPECT_NE(renamed(5, 0, "臨時").find("Line 3"), std::string::npos);
    EXPECT_EQ(place(client.askAt("prepareRename", 5, 1)), "5:0-2");
    EXPECT_TRUE(client.askAt("prepareRename", 3, 3).is_null());
}

TEST(Answers, Commands) {
    Client client;
    client.open("A: One.\nA: Two.\n");
    const Json shown = client.ask("workspace/executeCommand", {{"command", "tvmlfilter.showTvml"},
                                                               {"arguments", {Client::kScript}}});
    const std::string tvml = shown["tvml"];
    std::size_t line = 0;
    for (std::size_t at = tvml.find('\n'); at < tvml.find("Two."); at = tvml.find('\n', at + 1)) {
        ++line;
    }
    EXPECT_EQ(shown["lines"][line], Json({1}));
    EXPECT_GT(shown["seconds"].get<double>(), 0);
    EXPECT_TRUE(client
                    .ask("workspace/executeCommand",
                         {{"command", "tvmlfilter.play"}, {"arguments", {Client::kScript, 1}}})
                    .is_null());
    const std::string played = utf8(client.machine.played);
    EXPECT_LT(played.find("One."), played.find("playfromhere()"));
    EXPECT_LT(played.find("playfromhere()"), played.find("Two."));
}

TEST(Answers, HalfTypedAndBrokenDocuments) {
    for (const std::string_view text :
         {"", "\n", "A", "（", "Ａ：（お辞儀、", "（セット：", "A: (look at ", "スーパー：あ（",
          "<staging", "<staging><bow", "<", "\xEF\xBB\xBF<?xml", "A: \\u0000", "((((((((((((((("}) {
        Client client;
        client.open(text);
        const Json document{{"textDocument", {{"uri", Client::kScript}}}};
        for (std::size_t unit = 0; unit <= text.size(); ++unit) {
            client.askAt("completion", 0, unit);
            client.askAt("hover", 0, unit);
            client.askAt("definition", 0, unit);
            client.askAt("rename", 0, unit, {{"newName", "B"}});
        }
        client.ask("textDocument/documentSymbol", document);
        client.ask("textDocument/semanticTokens/full", document);
        EXPECT_EQ(client.codes().find("-3260"), std::string::npos) << text;
    }
}

} // namespace
} // namespace tvml::lsp
