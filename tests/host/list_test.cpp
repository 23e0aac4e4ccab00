// What `list` shows of the tables.
#include "workspace.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <set>
#include <string>

#include "reading/command_spec.h"
#include "reading/marker_spec.h"
#include "vocabulary/keys.h"

namespace tvml::host {
namespace {

std::size_t countOf(Taker taker) {
    return static_cast<std::size_t>(std::ranges::count(kCommands, taker, &CommandSpec::taker));
}

using Json = nlohmann::json;

Json listed(const Workspace& work, const std::string& table) {
    const Outcome outcome = work.run({"list", table, "--format", "json"});
    EXPECT_EQ(outcome.errors, "");
    const Json document = Json::parse(outcome.output);
    EXPECT_EQ(document.at("version"), 1);
    EXPECT_EQ(document.at("list"), table);
    return document.at("rows");
}

Json rowOf(const Json& rows, const std::string& field, const std::string& name) {
    for (const Json& row : rows) {
        if (row.at(field) == name) {
            return row;
        }
    }
    ADD_FAILURE() << "no row " << name;
    return {};
}

// With a letter or a number behind it, a name is shown as its row has it; words
// of two rows belong to one command.
TEST(HostList, EveryCommandIsListedOnceWithItsWords) {
    const Workspace work;
    const Json rows = listed(work, "commands");
    std::set<std::string> staging;
    std::set<std::string> character;
    for (const Json& row : rows) {
        const std::string name = row.at("english");
        if (row.at("kind") == "staging") {
            EXPECT_TRUE(staging.insert(name).second) << name;
        } else if (row.at("kind") == "character") {
            EXPECT_TRUE(character.insert(name).second) << name;
        }
    }
    EXPECT_EQ(staging.size(), countOf(Taker::staging));
    EXPECT_EQ(character.size(), countOf(Taker::character) + countOf(Taker::setting));

    const Json look = rowOf(rows, "english", "look at B");
    EXPECT_EQ(look.at("words"), Json({"Ｂを見る"}));
    EXPECT_EQ(look.at("keys"), Json({"look_at"}));
    EXPECT_EQ(rowOf(rows, "english", "turn 3 degrees").at("words"), Json({"３度まわる"}));
    EXPECT_EQ(rowOf(rows, "english", "auto gesture").at("words"),
              Json({"自動ジェスチャー", "自動ジェスチャ"}));
    EXPECT_EQ(rowOf(rows, "english", "girl_en").at("kind"), "voice");
    EXPECT_EQ(rowOf(rows, "english", "bustshot of B").at("kind"), "without effect");
    EXPECT_EQ(rowOf(rows, "english", "very slow").at("kind"), "adverb");
}

TEST(HostList, WordsAndElementsComeInTheOrderOfTheirTables) {
    const Workspace work;
    const Json words = listed(work, "words");
    ASSERT_EQ(words.size(), kKeyCount);
    for (std::size_t i = 0; i < kKeyCount; ++i) {
        EXPECT_EQ(words[i].at("key"), platform::system().toUtf8(kKeys[i]));
    }
    EXPECT_EQ(rowOf(words, "key", "walk_n").at("word"), "歩歩く");
    EXPECT_EQ(rowOf(words, "key", "walk_n").at("english"), "walk 3 steps");
    EXPECT_EQ(rowOf(words, "key", "sound").at("english"), "bgm, BGM");
    EXPECT_TRUE(rowOf(words, "key", "period").at("english").is_null());

    const Json elements = listed(work, "elements");
    struct Row {
        const char* element;
        const char* kind;
        int values;
        bool switched;
    };
    for (const Row& row : {Row{"super", "variants", 10, true}, Row{"title", "variants", 5, true},
                           Row{"talk", "by character", 9, true}, Row{"twoshot", "by pair", 4, true},
                           Row{"trackshot", "text", 3, false}, Row{"pose", "pose", 4, false}}) {
        const Json element = rowOf(elements, "element", row.element);
        EXPECT_EQ(element.at("kind"), row.kind) << row.element;
        EXPECT_EQ(element.at("values"), row.values) << row.element;
        EXPECT_EQ(element.at("switch"), row.switched) << row.element;
    }
    EXPECT_EQ(rowOf(elements, "element", "superoff").at("builtIn"), "super: off()\n");
}

// A full-width character takes two places, and a description adds its own.
TEST(HostList, ColumnsLineUpOnATerminal) {
    const Workspace work;
    const std::string description =
        work.write("tags.xml", "<staging><tag japanesename=\"速報\" englishname=\"至急\">x $1</tag>"
                               "<pose japanesename=\"手\" englishname=\"wave\">y</pose></staging>");
    const std::string tags = work.run({"list", "tags", "-d", description}).output;
    EXPECT_EQ(tags.substr(0, tags.find("subtitle")), "ENGLISH     KIND      IN THE VOCABULARY\n"
                                                     "title       marker    タイトル\n");
    EXPECT_NE(tags.find("\nbgm, BGM    marker    ＢＧＭ, サウンド\n"), std::string::npos) << tags;
    EXPECT_NE(tags.find("\n至急        declared  速報\n"), std::string::npos) << tags;
    const std::string commands = work.run({"list", "commands", "-d", description}).output;
    EXPECT_NE(commands.find("\nwave                     pose            手\n"), std::string::npos);
}

// What scripts can name is listed, of the description where it declares it.
TEST(HostList, NamesOfOneKind) {
    const Workspace work;
    const std::string description = work.write(
        "names.xml", "<staging><numofchar>2</numofchar>\n"
                     "<set>体育館::Gym::gym.obj\nスタジオ::Studio::studio.obj</set>\n"
                     "<model_for_char character=\"B\" japanesename=\"背広\" englishname=\"blazer\" "
                     "default=\"yes\">m</model_for_char>\n"
                     "<pose character=\"A\" japanesename=\"舞\" englishname=\"dance\">p</pose>\n"
                     "</staging>\n");
    const struct {
        const char* table;
        const char* row; // one of them, without English for none
        const char* word;
        const char* letters;
        std::size_t count;
    } rows[] = {
        {"sets", "Gym", "体育館", "", 2},
        {"models", "blazer", "背広", "B", 1},
        {"characters", "B", "Ｂ", "B", 2},
        {"poses", "dance", "舞", "A", 1},
        {"voices", "man_ja", "日本語男性", "", countOf(Taker::voice)},
        {"colours", "red", "赤", "", kColours.size()},
        {"adverbs", "slow", "遅く", "", 0},
        {"markers", "title", "タイトル", "", kMarkers.size()},
    };
    for (const auto& row : rows) {
        const Outcome outcome =
            work.run({"list", row.table, "-d", description, "--format", "json"});
        const Json document = Json::parse(outcome.output);
        EXPECT_EQ(document.at("list"), row.table);
        const Json& listed = document.at("rows");
        if (row.count > 0) {
            EXPECT_EQ(listed.size(), row.count) << outcome.output;
        }
        if (row.word[0] != '\0') {
            const Json found = rowOf(listed, "english", row.row);
            EXPECT_EQ(found.at("words").front(), row.word) << outcome.output;
            EXPECT_EQ(found.at("letters"), row.letters) << outcome.output;
        }
        EXPECT_EQ(work.run({"list", row.table, "-d", description}).exitCode, 0);
    }
    EXPECT_EQ(work.run({"list", "sets", "-d", work.path("description.xml")}).output,
              "there is none\n");
    // Of the description that comes with the program.
    EXPECT_GT(
        Json::parse(work.run({"list", "characters", "--format", "json"}).output).at("rows").size(),
        0U);
}

} // namespace
} // namespace tvml::host
