// Telling what became of a line: for people and as JSON.
#include "workspace.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace tvml::host {
namespace {

// Line numbers are counted from the raw string's own first line.
constexpr std::string_view kStaging = R"(<staging><numofchar>2</numofchar>
<model_for_char character="A" japanesename="a" englishname="a" default="yes">m</model_for_char>
<talk>say $2</talk>
<bow character="B">one $1 $2</bow>
<bow character="B">two $1 $2</bow><bow_switch>toggle</bow_switch>
<nod>nod $1</nod>
  <pose japanesename="舞" englishname="dance">pose $1 $2</pose>
<tag japanesename="速報" englishname="flash">flash $1</tag>
<night>dark</night><closeup>close $1</closeup>
<title titlefont_ja="J" titlefont_en="E" subtitlefont_ja="J" subtitlefont_en="E">
drawing:settext(name=TITLETEXT,text="$TITLE")
drawing:settext(name=TITLETEXT,text="$SUBTITLE")</title>
<setting>skipscript(switch=on)
skipscript(switch=off)</setting></staging>)";

constexpr std::string_view kScript = R"((night)
title: T
subtitle: S
A: One. Two.
hello
B: (お辞儀、速く、同時)
B: (bow, very much)
(nod)
A: (舞、遅く)
速報：雨
(upshot of B)
A: (bow loudly)
super: x
)";

TEST(HostExplain, Lines) {
    const Workspace work;
    const std::string script = work.write("script.txt", kScript);
    const std::string description = work.write("description.xml", kStaging);
    // What stands behind the first line, which shows the place and the script.
    const struct {
        const char* line;
        const char* told;
    } rows[] = {
        {"1", "  kind      command\n  word      night\n  read as   night\n"
              "  taken by  studio command \"night\"\n"
              "  TVML      5  dark\n            8  // Initial lighting is set to \"night.\"\n"},
        {"2", "  kind      tag\n  word      title\n  taken by  tag \"title\"\n"
              "  template  <title>, D:10:1\n  card      starts here\n"
              "  TVML      9  drawing:settext(name=TITLETEXT,text=\"T\")\n"
              "            10  drawing:settext(name=TITLETEXT,text=\"S\")\n"},
        {"3", "  kind      tag\n  word      subtitle\n  taken by  tag \"subtitle\"\n"
              "  card      completes that of the line before\n"
              "  TVML      10  drawing:settext(name=TITLETEXT,text=\"S\")\n"
              "            11  // set subtitle.\n"},
        {"4", "  kind      talk\n  speaker   A\n  template  <talk>, D:3:1, 2 times\n"
              "  TVML      12  say One.\n            13  say Two.\n"},
        {"5", "  kind      talk\n  speaker   none, A speaks\n  template  <talk>, D:3:1\n"
              "  TVML      14  say hello\n"},
        {"6", "  kind      command\n  speaker   B\n  word      お辞儀  (bow in keyword.ini)\n"
              "  read as   bow、速く、同時\n  taken by  character command \"bow\"\n"
              "  adverbs   速く (fast): speed 2.0\n"
              "            同時 (no blocking): wait no\n"
              "  template  <bow>, variant 1 of 2 in turn, for B, D:4:1\n"
              "  TVML      15  one B 2.0\n"},
        {"7", "  kind      command\n  speaker   B\n  word      bow\n  read as   bow, very much\n"
              "  taken by  character command \"bow\"\n  adverbs   very much: degree 4.0\n"
              "  template  <bow>, variant 2 of 2 in turn, for B, D:5:1\n"
              "  TVML      16  two B 1.0\n"},
        {"8", "  kind      command\n  speaker   none, A acts\n  word      nod\n  read as   nod\n"
              "  taken by  character command \"nod\"\n  template  <nod>, D:6:1\n"
              "  TVML      17  nod A\n"},
        {"9", "  kind      command\n  speaker   A\n  word      舞\n  read as   dance、遅く\n"
              "  taken by  pose \"dance\"\n  adverbs   遅く (slow): speed 0.5\n"
              "  template  <pose>, D:7:3\n  TVML      18  pose A 0.5\n"},
        {"10", "  kind      tag\n  word      速報\n  taken by  tag \"flash\"\n"
               "  template  <tag>, D:8:1\n  TVML      19  flash 雨\n"},
        {"11", "  kind      command\n  word      upshot of B\n  read as   upshot of B\n"
               "  taken by  studio command \"upshot of \"\n  template  <closeup>, D:9:20\n"
               "  TVML      20  camera: switch( name=Cam )\n            21  close B\n"},
        {"12", "  kind      command\n  speaker   A\n  word      bow loudly\n"
               "  read as   bow loudly\n  taken by  nothing\n  problems\n"
               "    S:12:9: error: \"loudly\" cannot stand behind this command; it is not "
               "carried out [S130]\n      A: (bow loudly)\n              ^~~~~~\n"
               "  TVML      nothing\n"},
    };
    for (const auto& row : rows) {
        const Outcome outcome = work.run({"explain", script + ":" + row.line, "-d", description});
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
        std::string told = outcome.output;
        for (const auto& [name, brief] : {std::pair(script, "S"), std::pair(description, "D")}) {
            for (std::size_t at = told.find(name); at != told.npos; at = told.find(name)) {
                told.replace(at, name.size(), brief);
            }
        }
        EXPECT_TRUE(told.starts_with("S:" + std::string(row.line) + ": ")) << told;
        EXPECT_EQ(told.substr(told.find('\n') + 1), row.told) << row.line;
    }
    const std::string builtIn = work.run({"explain", script + ":13", "-d", description}).output;
    EXPECT_NE(builtIn.find("  template  <super>, built in\n"), builtIn.npos) << builtIn;
    EXPECT_EQ(builtIn.find("problems"), builtIn.npos) << builtIn;
}

TEST(HostExplain, JsonOfSeveralLines) {
    const Workspace work;
    const std::string script = work.write("script.txt", kScript);
    const Outcome outcome = work.run({"explain", script + ":6-7", "--format", "json", "-d",
                                      work.write("description.xml", kStaging)});
    std::istringstream lines(outcome.output);
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    const auto first = nlohmann::json::parse(line);
    EXPECT_EQ(first["version"], 1);
    EXPECT_EQ(first["line"], 6);
    EXPECT_EQ(first["key"], "bow");
    EXPECT_EQ(first["adverbs"][0]["speed"], "2.0");
    EXPECT_EQ(first["templates"][0]["line"], 4);
    EXPECT_EQ(first["templates"][0]["variants"], 2);
    EXPECT_EQ(first["tvml"][0]["text"], "one B 2.0");
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(nlohmann::json::parse(line)["templates"][0]["line"], 5);
    EXPECT_FALSE(std::getline(lines, line));
}

TEST(HostExplain, PlacesThatAreNone) {
    const Workspace work;
    const std::string script = work.path("script.txt"); // of three lines
    for (const std::string place : {"", ":", ":0", ":4", ":2-1", ":1-", ":-1", ":1x", ":1-4"}) {
        const Outcome outcome = work.run({"explain", script + place});
        EXPECT_EQ(outcome.exitCode, 2) << place;
        EXPECT_TRUE(outcome.errors.starts_with("tvmlfilter: error: ")) << outcome.errors;
    }
}

TEST(HostSourceMap, IsWrittenBesideTheSameOutput) {
    const Workspace work;
    const std::string script = work.write("script.txt", kScript);
    const std::string description = work.write("description.xml", kStaging);
    const std::string plain = work.run({script, "-d", description}).output;
    const Outcome outcome = work.run({script, "-d", description, "--source-map", work.path("map")});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, plain);
    const auto map = nlohmann::json::parse(work.read("map"));
    EXPECT_EQ(map["script"], script);
    EXPECT_EQ(map["lines"].size(), std::ranges::count(plain, '\n'));
    EXPECT_EQ(map["lines"][4]["from"][0]["element"], "night");
    for (const std::vector<std::string>& wrong :
         {std::vector<std::string>{"--source-map", "-"},
          {"--source-map", script},
          {"--source-map", work.path("x"), "-o", work.path("x")},
          {"--source-map", work.path("x"), "--library", "x"}}) {
        std::vector<std::string> arguments{script, "-d", description};
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        EXPECT_EQ(work.run(arguments).exitCode, 2) << wrong.back();
    }
}

// A place as findings have it, and files whose names look like one.
TEST(HostExplain, TakesThePlaceOfAFinding) {
    const Workspace work;
    const std::string script = work.path("script.txt");
    const std::string expected = work.run({"explain", script + ":2"}).output;
    ASSERT_FALSE(expected.empty());
    for (const char* place : {":2:1", ":2:17:", ":2:", ":2:3: "}) {
        EXPECT_EQ(work.run({"explain", script + place}).output, expected) << place;
    }
    for (const char* place : {":2:0", ":2:x", ":0:2", ":1-2:3"}) {
        EXPECT_NE(work.run({"explain", script + place}).exitCode, 0) << place;
    }
#ifndef _WIN32
    const std::string colon = work.write("a:1", "A: one\nA: two\n");
    EXPECT_TRUE(work.run({"explain", colon + ":2"}).output.starts_with(colon + ":2: "));
#endif
}

} // namespace
} // namespace tvml::host
