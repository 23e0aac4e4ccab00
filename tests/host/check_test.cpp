// What is told of problems, where, in which form, and with which exit code.
#include "workspace.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace tvml::host {
namespace {

// An error on line 2, a warning on line 3, a note on line 4.
constexpr std::string_view kScript = "A: one\nA: (dance)\nB: two\nMary: three\n";

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

// "2:5 error S101; " for each object, on one line.
std::string brief(const std::string& objects) {
    std::string text;
    for (const std::string& line : linesOf(objects)) {
        const nlohmann::json object = nlohmann::json::parse(line);
        EXPECT_EQ(object.at("version"), 1);
        text += std::to_string(object.at("line").get<int>()) + ":" +
                std::to_string(object.at("column").get<int>()) + " " +
                object.at("severity").get<std::string>() + " " +
                object.at("code").get<std::string>() + "; ";
    }
    return text;
}

TEST(HostCheck, LevelsAndCodesDecideTheExitCode) {
    struct Row {
        std::vector<std::string> options;
        const char* told;
        int convert; // exit codes
        int check;
    };
    constexpr const char* kAll = "2:5 error S101; 3:1 warning S110; 4:1 note S120; ";
    const std::vector<Row> rows{
        {{}, kAll, 0, 3},
        {{"--failure-level", "none"}, kAll, 0, 0},
        {{"--failure-level", "ERROR"}, kAll, 3, 3},
        {{"--allow", "S101"}, "3:1 warning S110; 4:1 note S120; ", 0, 0},
        {{"--allow", "S101", "--failure-level", "warning"},
         "3:1 warning S110; 4:1 note S120; ",
         3,
         3},
        {{"--allow", "s101", "--allow", "S110", "--failure-level", "warning"},
         "4:1 note S120; ",
         0,
         0},
        {{"--allow", "S101", "--allow", "S110", "--failure-level", "note"},
         "4:1 note S120; ",
         3,
         3},
        {{"--allow", "S101", "--deny", "S120"}, "3:1 warning S110; 4:1 error S120; ", 0, 3},
    };
    const Workspace work;
    const std::string script = work.write("script.txt", kScript);
    for (const Row& row : rows) {
        std::vector<std::string> options{script, "-d", work.path("description.xml"), "--format",
                                         "json"};
        options.insert(options.end(), row.options.begin(), row.options.end());
        const Outcome converted = work.run(options);
        EXPECT_EQ(brief(converted.errors), row.told);
        EXPECT_EQ(converted.exitCode, row.convert) << row.told;
        EXPECT_EQ(body(converted.output), "one two Mary: three ");
        options.insert(options.begin(), "check");
        const Outcome checked = work.run(options);
        EXPECT_EQ(brief(checked.output), row.told);
        EXPECT_EQ(checked.exitCode, row.check) << row.told;
    }
}

TEST(HostCheck, ShowsTextAndCountsTheProblems) {
    const Workspace work;
    const std::string script = work.write("script.txt", kScript);
    const std::string description = work.path("description.xml");
    const auto before = work.fileCount();
    const Outcome checked = work.run({"check", script, "-d", description});
    EXPECT_EQ(checked.output, work.run({script, "-d", description}).errors);
    EXPECT_TRUE(checked.output.starts_with(script + ":2:5: error: ")) << checked.output;
    EXPECT_EQ(checked.errors, script + ": 1 error, 1 warning, 1 note\n");
    EXPECT_EQ(work.fileCount(), before);
    const Outcome clean = work.run({"check", "-", "-d", description}, "A: one\n");
    EXPECT_EQ(clean.exitCode, 0);
    EXPECT_EQ(clean.output, "");
    EXPECT_EQ(clean.errors, "<standard input>: 0 errors, 0 warnings, 0 notes\n");
}

TEST(HostCheck, RemarksAboutTheOutputAreObjectsToo) {
    const Workspace work;
    std::string line = "A: x";
    for (int i = 0; i < 100; ++i) {
        line += "\U00020B9F";
    }
    const Outcome outcome = work.run(
        {work.write("script.txt", line), "-d", work.path("description.xml"), "--format", "json"});
    std::string sources;
    for (const std::string& object : linesOf(outcome.errors)) {
        sources += nlohmann::json::parse(object).at("source").get<std::string>() + " ";
    }
    EXPECT_EQ(sources, "script output ");
}

TEST(HostCheck, ChecksTheDescriptionAndThePlayedLines) {
    const Workspace work;
    const std::string description = work.write(
        "bad.xml", "<staging><numofchar>1</numofchar>\n<bowing>x</bowing>\n</staging>\n");
    const Outcome outcome =
        work.run({"check", work.path("script.txt"), "-d", description, "--from", "9"});
    EXPECT_TRUE(outcome.output.starts_with(description + ":2:1: warning: <bowing>"));
    EXPECT_NE(outcome.output.find("line 9 lies outside the script"), std::string::npos);
}

// Each script with its own count, the worst first; what they share is told once.
TEST(HostCheck, ChecksSeveralFiles) {
    const Workspace work;
    const std::string description =
        work.write("d.xml", "<staging><bowing>x</bowing>" + std::string(kDescription).substr(9));
    const std::string bad = work.write("bad.txt", "A: (dance)\nA: (danse)\n");
    const std::string good = work.write("good.txt", "A: one\n");
    const std::string noted = work.write("noted.txt", "Mary: three\n");
    const std::string xml = work.write("other.xml", "<?xml version=\"1.0\"?><staging></stagin>");
    const std::string missing = work.path("missing.txt");
    const Outcome outcome = work.run({"check", good, missing, noted, bad, xml, "-d", description});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.errors.starts_with(missing + ": error: ")) << outcome.errors;
    const std::string summary =
        missing + ": could not be read\n" + bad + ": 2 errors, 0 warnings, 0 notes\n" + xml +
        ": 1 error, 0 warnings, 0 notes\n" + description + ": 0 errors, 1 warning, 0 notes\n" +
        noted + ": 0 errors, 0 warnings, 1 note\n6 files, 1 without problems\n";
    EXPECT_TRUE(outcome.errors.ends_with("\n" + summary)) << outcome.errors;
    std::string once = outcome.output;
    once.erase(0, once.find("<bowing> has") + 1);
    EXPECT_EQ(once.find("<bowing> has"), once.npos) << outcome.output;
    EXPECT_EQ(work.run({"check", good, noted}).exitCode, 0);
    EXPECT_EQ(work.run({"check", good, bad}).exitCode, 3);
}

TEST(HostCheck, ChecksADescriptionAlone) {
    const Workspace work;
    constexpr std::string_view kBroken = "<?xml version=\"1.0\"?>\n<staging>\n<bow>\n</staging>\n";
    const std::string description = work.write("d.xml", kBroken);
    const std::string unnamed = work.write("d.txt", kBroken);
    const Outcome option = work.run({"check", "-d", description});
    EXPECT_EQ(option.exitCode, 3);
    EXPECT_TRUE(option.output.starts_with(description + ":3:1: error: ")) << option.output;
    EXPECT_EQ(option.errors, description + ": 1 error, 0 warnings, 0 notes\n");
    EXPECT_EQ(work.run({"check", description}).output, option.output);
    const std::string other = work.run({"check", unnamed}).output;
    EXPECT_EQ(other.substr(unnamed.size()), option.output.substr(description.size()));
    const std::string piped = work.run({"check", "-"}, kBroken).output;
    EXPECT_TRUE(piped.starts_with("<standard input>:3:1: error: ")) << piped;
}

TEST(HostCheck, TellsOfMissingMedia) {
    const Workspace work;
    std::filesystem::create_directories(work.path("media/Image"));
    work.write("media/Image/map.png", "");
    const std::string script = work.write("s.txt", "subimage: image\\MAP.png\nsubimage: map.png\n"
                                                   "A: (soundfile: hello.wav)\n");
    const Outcome outcome =
        work.run({"check", script, "--media", work.path("media"), "--format", "json"});
    EXPECT_EQ(brief(outcome.output), "2:11 warning S172; 3:16 warning S172; ");
    EXPECT_NE(outcome.output.find(R"("suggestions":["Image\\map.png"])"), std::string::npos);
    EXPECT_EQ(work.run({"check", script}).output, "");
    EXPECT_EQ(work.run({"check", script, "--media", work.path("no")}).exitCode, 1);
    EXPECT_EQ(brief(work.run({script, "--media", work.path("media"), "--format", "json"}).errors),
              "2:11 warning S172; 3:16 warning S172; ");
}

TEST(HostCheck, ColoursAsTold) {
    const Workspace work;
    const std::string script = work.write("script2.txt", kScript);
    for (const std::string option : {"", "--color=auto", "--color=always", "--color=never"}) {
        std::vector<std::string> arguments{"check", script};
        if (!option.empty()) {
            arguments.push_back(option);
        }
        EXPECT_EQ(work.run(arguments).output.find('\x1b') != std::string::npos,
                  option == "--color=always")
            << option;
    }
}

TEST(HostCheck, ExplainsCodes) {
    const Workspace work;
    const Outcome known = work.run({"check", "--explain", "s101"});
    EXPECT_EQ(known.exitCode, 0);
    EXPECT_TRUE(known.output.starts_with("S101, error: ")) << known.output;
    EXPECT_EQ(known.errors, "");
    for (const char* option : {"--explain", "--allow", "--deny"}) {
        const Outcome unknown = work.run({"check", work.path("script.txt"), option, "S181"});
        EXPECT_EQ(unknown.exitCode, 2);
        EXPECT_NE(unknown.errors.find("S181 is no code of a diagnostic; the closest one is S101"),
                  std::string::npos)
            << unknown.errors;
    }
}

} // namespace
} // namespace tvml::host
