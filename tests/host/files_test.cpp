// Which files the program reads and writes.
#include "workspace.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tvml::host {
namespace {

TEST(HostFiles, DashIsAStream) {
    const Workspace work;
    const std::string script = work.read("script.txt");
    const std::string description = work.path("description.xml");
    const std::string expected = work.run({work.path("script.txt"), "-d", description}).output;
    ASSERT_EQ(body(expected), "one two three ");
    EXPECT_EQ(work.run({"-", "-d", description}, script).output, expected);
    EXPECT_EQ(work.run({"convert", "-d", description, "-o", "-", "-"}, script).output, expected);
    EXPECT_EQ(work.run({work.path("script.txt"), "-d", "-"}, kDescription).output, expected);
    EXPECT_TRUE(work.run({"-"}, "\xFF").errors.starts_with("<standard input>:1:1: error: "));
}

TEST(HostFiles, WritesTheWholeFile) {
    const Workspace work;
    const std::string script = work.path("script.txt");
    const std::string description = work.path("description.xml");
    const std::string expected = work.run({script, "-d", description}).output;
    const auto before = work.fileCount();
    for (const std::string_view old : {"", "short", "long"}) {
        if (!old.empty()) {
            work.write("output", old == "long" ? std::string(100000, 'x') : std::string(old));
        }
        const Outcome outcome = work.run({script, "-d", description, "-o", work.path("output")});
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(work.read("output"), expected) << old;
    }
    EXPECT_EQ(work.fileCount(), before + 1);
}

TEST(HostFiles, TheDefaultDescriptionHasTwoSpeakers) {
    const Workspace work;
    const std::string script = work.write("script.txt", "A: from the first\nB: from the second\n");
    const Outcome outcome = work.run({script});
    EXPECT_NE(outcome.output.find("from the first"), std::string::npos);
    EXPECT_NE(outcome.output.find("from the second"), std::string::npos);
    EXPECT_EQ(outcome.errors, "");
}

TEST(HostFiles, FailuresLeaveTheOutputAlone) {
    const Workspace work;
    const std::string script = work.path("script.txt");
    const std::string bad = work.write("bad", "A: \xFF");
    const std::string none = work.path("none");
    struct Row {
        const char* name;
        Outcome outcome;
        std::string start; // of what it says
        int exitCode;
    };
    const std::string output = work.write("output", "old");
    const auto before = work.fileCount();
    const std::vector<Row> rows{
        {"no script", work.run({none, "-o", output}), none + ": error: ", 1},
        {"no description", work.run({script, "-d", none, "-o", output}), none + ": error: ", 1},
        {"bad description", work.run({script, "-d", bad, "-o", output}), bad + ":1:4: error: ", 1},
        {"no library", work.run({script, "--library", none, "-o", output}), none + ": error: ", 1},
        {"bad library", work.run({script, "--library", bad, "-o", output}), bad + ": error: ", 1},
        {"no folder", work.run({script, "-o", work.path("none/output")}),
         work.path("none/output") + ": error: ", 1},
        {"over the script", work.run({output, "-o", output}), "tvmlfilter: error: ", 2},
        {"over the description", work.run({script, "-d", output, "-o", output}),
         "tvmlfilter: error: ", 2},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.outcome.exitCode, row.exitCode) << row.name;
        EXPECT_TRUE(row.outcome.errors.starts_with(row.start))
            << row.name << ": " << row.outcome.errors;
        EXPECT_EQ(row.outcome.output, "") << row.name;
    }
    EXPECT_EQ(work.read("output"), "old");
    EXPECT_EQ(work.fileCount(), before);
}

// A copy of the program, so that a fault harms no other test.
TEST(HostFiles, NoOutputTakesThePlaceOfAnInput) {
    const Workspace work;
    const std::string script = work.path("script.txt");
    std::filesystem::create_directory(work.path("bin"));
    const std::string bin = "bin/";
    for (const char* name : {HOST_PROGRAM, "keyword.ini", "Mirvol.ini", "default.xml"}) {
        std::filesystem::copy_file(Workspace::beside(name), work.path(bin + name));
    }
    const std::string program = work.path(bin + HOST_PROGRAM);
    const std::string words = work.path("bin/keyword.ini");
    const std::string library = Workspace::beside(HOST_LIBRARY);
    std::filesystem::create_hard_link(words, work.path("same words"));
    const std::vector<std::vector<std::string>> rows{
        {script, "-o", script},
        {script, "-o", words},
        {script, "-o", work.path("same words")},
        {script, "-o", work.path("bin/../bin/Mirvol.ini")},
        {script, "-o", work.path("bin/default.xml")},
        {script, "-o", program},
        {script, "-o", work.path("o"), "--source-map", words},
        {script, "-o", work.path("o"), "--source-map", program},
        {script, "-o", work.path("o"), "--depfile", words},
        {"import", script, "-o", words},
        {"import", script, "-o", work.path("bin/default.xml")},
    };
    const auto sizes = [&] {
        std::vector<std::uintmax_t> all;
        for (const char* name : {HOST_PROGRAM, "keyword.ini", "Mirvol.ini", "default.xml"}) {
            all.push_back(std::filesystem::file_size(work.path(bin + name)));
        }
        return all;
    };
    const auto before = sizes();
    for (const std::vector<std::string>& arguments : rows) {
        const Outcome outcome = work.run(program, arguments);
        EXPECT_EQ(outcome.exitCode, 2) << arguments.back() << outcome.errors;
        EXPECT_EQ(sizes(), before) << arguments.back();
    }
    EXPECT_EQ(work.run({script, "--library", library, "-o", library}).exitCode, 2);
    // What the conversion does not read is nothing to it.
    EXPECT_EQ(work.run(program, {script, "-d", work.path("description.xml"), "-o",
                                 work.path("bin/default.xml")})
                  .exitCode,
              0);
}

TEST(HostFiles, ProblemsOfAScriptAreWarnedOfAndStopNothing) {
    const Workspace work;
    const std::string script = work.write("script.txt", "A: one\nA: (dance)\nA: two\n");
    const Outcome outcome = work.run({script, "-d", work.path("description.xml")});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(body(outcome.output), "one two ");
    EXPECT_TRUE(outcome.errors.starts_with(script + ":2:5: ")) << outcome.errors;
}

} // namespace
} // namespace tvml::host
