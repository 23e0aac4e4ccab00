// Which files the program reads and writes.
#include "workspace.h"

#include <gtest/gtest.h>

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
