// The command line.
#include "workspace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tvml::host {
namespace {

TEST(HostUsage, WrongUsageIsRefusedBeforeAnythingIsRead) {
    const Workspace work;
    const std::string script = work.path("script.txt");
    const std::vector<std::vector<std::string>> rows{
        {},
        {"convert"},
        {script, "another"},
        {script, "--no-such-option"},
        {script, "--from", "0"},
        {script, "--from", "one"},
        {script, "--to", "-1"},
        {script, "--to", "2147483648"},
        {script, "--encoding", "latin-1"},
        {script, "--output-encoding", "cp932"},
        {script, "-o"},
        {script, "-o", ""},
        {script, "--library", ""},
        {script, "--library="},
        {"check", script, "--media", ""},
        {"-", "-d", "-"},
        {"check"},
        {"check", "-", "--watch"},
        {"check", script, "--color", "sometimes"},
        {"help", "nothing"},
        {"frobnicate"},
        {"check", "-", "-d", "-"},
        {"check", script, "-o", script},
        {"check", script, "--failure-level", "fatal"},
        {"check", script, "--format", "xml"},
        {script, "--allow", "S999"},
        {script, "--library", "any", "--failure-level", "error"},
    };
    for (const std::vector<std::string>& arguments : rows) {
        const Outcome outcome = work.run(arguments);
        const std::string last = arguments.empty() ? "nothing" : arguments.back();
        EXPECT_EQ(outcome.exitCode, 2) << last;
        EXPECT_TRUE(outcome.errors.starts_with("tvmlfilter: error: ")) << last << outcome.errors;
        EXPECT_EQ(outcome.output, "") << last;
    }
}

TEST(HostUsage, AnswersHelpAndVersionOnStandardOutput) {
    const Workspace work;
    EXPECT_EQ(work.run({"--version"}).output, "tvmlfilter " HOST_VERSION "\n");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--help"}, {"convert", "--help"}, {"convert", "-h"}}) {
        const Outcome outcome = work.run(arguments);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_NE(outcome.output.find("Usage: tvmlfilter"), std::string::npos);
        EXPECT_EQ(outcome.errors, "");
    }
}

// A script whose name is that of a subcommand needs a folder before it.
TEST(HostUsage, ConvertIsTheSubcommandThatNeedsNoName) {
    const Workspace work;
    const std::string script = work.path("script.txt");
    const std::string description = work.path("description.xml");
    const std::string expected = work.run({"convert", script, "-d", description}).output;
    EXPECT_EQ(body(expected), "one two three ");
    EXPECT_EQ(work.run({script, "-d", description}).output, expected);
    EXPECT_EQ(work.run({"-d", description, script}).output, expected);
}

TEST(HostUsage, PlaysFromAndToLines) {
    struct Row {
        std::vector<std::string> options;
        const char* body;
        bool warned;
    };
    const std::vector<Row> rows{
        {{}, "one two three ", false},
        {{"--from", "1"}, "[from] one two three ", false},
        {{"--from", "3"}, "one two [from] three ", false},
        {{"--from", "4"}, "one two three ", true},
        {{"--to", "1"}, "one [to] two three ", false},
        {{"--to", "3"}, "one two three [to] ", false},
        {{"--to", "5"}, "one two three ", true},
        {{"--from", "2", "--to", "2"}, "one [from] two [to] three ", false},
        {{"--to", "2147483647"}, "one two three ", true},
    };
    const Workspace work;
    for (const Row& row : rows) {
        std::vector<std::string> arguments{work.path("script.txt"), "-d",
                                           work.path("description.xml")};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const Outcome outcome = work.run(arguments);
        EXPECT_EQ(body(outcome.output), row.body);
        EXPECT_EQ(!outcome.errors.empty(), row.warned) << row.body << outcome.errors;
    }
}

TEST(HostUsage, HelpOfACommandIsItsHelp) {
    const Workspace work;
    EXPECT_EQ(work.run({"help"}).output, work.run({"--help"}).output);
    EXPECT_EQ(work.run({"help", "check"}).output, work.run({"check", "--help"}).output);
    EXPECT_EQ(work.run({"help", "check"}).exitCode, 0);
}

} // namespace
} // namespace tvml::host
