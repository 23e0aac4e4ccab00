// What the shell completes, asked of a real one, and what the manual page holds.
#include "workspace.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace tvml::host {
namespace {

// What bash has in COMPREPLY, a word each, when it is to complete the last word.
std::vector<std::string> completed(const Workspace& work, const std::string& words) {
    work.write("ask.sh", "source <(\"$1\" completion bash) && cd \"$2\" || exit\n"
                         "COMP_WORDS=(tvmlfilter " +
                             words +
                             ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n"
                             "_tvmlfilter\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n");
    const std::string command = "bash \"" + work.path("ask.sh") + "\" \"" +
                                Workspace::beside(HOST_PROGRAM) + "\" \"" + work.path("place") +
                                "\" > \"" + work.path("answer") + "\"";
    EXPECT_EQ(std::system(command.c_str()), 0) << words;
    std::istringstream lines(work.read("answer"));
    std::vector<std::string> replies;
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty()) {
            replies.push_back(line);
        }
    }
    return replies;
}

TEST(HostCompletion, BashCompletesWhatTheTablesHave) {
    using Words = std::vector<std::string>;
    const Workspace work;
    std::filesystem::create_directories(work.path("place/folder"));
    work.write("place/two words.txt", "");
    const struct {
        const char* words;
        Words replies;
    } rows[] = {
        {"li", {"list"}},
        {"two", {"two words.txt"}},
        {"list m", {"models", "markers"}},
        {"help st", {"stats", "storyboard"}},
        {"list tags --format j", {"json"}},
        {"convert --output-", {"--output-dir", "--output-encoding"}},
        {"convert x --output-encoding = utf-1", {"utf-16le"}},
        {"convert x --output-encoding =", {"utf-8", "utf-16le"}},
        {"--encoding c", {"cp932"}},
        {"convert 'two w'", {"two words.txt"}},
        {"stats x -d two", {"two words.txt"}},
        {"convert --output-dir ''", {"folder"}},
        {"convert --from ''", {}},
        {"check --allow S101 --deny S10",
         {"S101", "S102", "S103", "S104", "S105", "S106", "S107", "S108", "S109"}},
        {"completion ''", {"bash", "zsh"}},
        {"man ''", {}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(completed(work, row.words), row.replies) << row.words;
    }
}

// The help is made from the same tables by other means.
TEST(HostCompletion, EveryOptionOfTheHelpIsCompletedAndInTheManual) {
    const Workspace work;
    std::filesystem::create_directories(work.path("place"));
    const std::string manual = work.run({"man"}).output;
    EXPECT_NE(manual.find("\\fB\\-h, \\-\\-help\\fR"), std::string::npos) << manual;
    const std::regex option("\n  (-[a-z])?(?:, )?(--[a-z-]+)");
    const std::vector<std::string> commands = completed(work, "''");
    ASSERT_EQ(commands.front(), "convert");
    for (const std::string& command : commands) {
        const std::string help = work.run({command, "--help"}).output;
        std::set<std::string> expected;
        for (std::sregex_iterator found(help.begin(), help.end(), option), end; found != end;
             ++found) {
            expected.insert({(*found)[1].str(), (*found)[2].str()});
        }
        ASSERT_TRUE(expected.contains("--help")) << help;
        expected.erase("");
        expected.erase("--help-all");
        const std::vector<std::string> replies = completed(work, command + " -");
        EXPECT_EQ(std::set<std::string>(replies.begin(), replies.end()), expected) << command;
        expected.erase("-h");
        expected.erase("--help");
        for (const std::string& name : expected) {
            const std::string escaped = std::regex_replace(name, std::regex("-"), "\\-");
            EXPECT_NE(manual.find("\\fB" + escaped + "\\fR"), std::string::npos) << name;
        }
    }
}

} // namespace
} // namespace tvml::host
