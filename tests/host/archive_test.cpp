// Many scripts with one command.
#include "workspace.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace tvml::host {
namespace {

using Arguments = std::vector<std::string>;

Arguments with(Arguments first, const Arguments& rest) {
    first.insert(first.end(), rest.begin(), rest.end());
    return first;
}

// Whatever the number of processes: every script gets the bytes that it gets
// alone, messages come whole and in the order of the scripts, and a script that
// fails takes no other with it.
TEST(HostArchive, ConvertsEachScriptAsIfItWereAlone) {
    const Workspace work;
    const std::string description = work.path("description.xml");
    Arguments scripts;
    std::string messages;
    for (int i = 0; i < 9; ++i) {
        const std::string number = std::to_string(i);
        scripts.push_back(work.write("s " + number + ".txt", "A: one " + number + "\n(dance)\n"));
        messages += work.run({scripts.back(), "-d", description}).errors;
    }
    scripts.insert(scripts.begin() + 4, work.write("bad.txt", "\xFF"));
    scripts.insert(scripts.begin() + 4, work.path("missing.txt"));
    for (const char* jobs : {"1", "4", "0"}) {
        const std::string folder = work.path(std::string("out/") + jobs);
        const Outcome outcome = work.run(
            with({"convert", "-d", description, "--output-dir", folder, "--jobs", jobs}, scripts));
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.output, "");
        for (int i = 0; i < 9; ++i) {
            const std::string name = "s " + std::to_string(i) + ".tvml";
            EXPECT_EQ(body(work.read(std::string("out/") + jobs + "/" + name)),
                      "one " + std::to_string(i) + " ");
        }
        EXPECT_FALSE(work.has(std::string("out/") + jobs + "/bad.tvml"));
        const std::string summary =
            "11 scripts: 9 converted (9 with problems), 2 failed\n  failed: " + scripts[4] +
            "\n  failed: " + scripts[5] + "\n";
        EXPECT_TRUE(outcome.errors.ends_with(summary)) << outcome.errors;
        // No progress bar in a file.
        EXPECT_EQ(outcome.errors.find('\r'), std::string::npos);
        const std::size_t half = messages.find(scripts[6]);
        EXPECT_TRUE(outcome.errors.starts_with(messages.substr(0, half))) << outcome.errors;
        EXPECT_NE(outcome.errors.find("\n" + messages.substr(half)), std::string::npos);
    }
}

TEST(HostArchive, OptionsHoldForEveryScript) {
    const Workspace work;
    const std::string dashed = work.write("-n.txt", "A: \x82\xA0\n(dance)\n"); // CP932
    const std::string script = work.path("script.txt");
    const std::string folder = work.path("out");
    const Arguments options{"--output-dir", folder,  "-d",     work.path("description.xml"),
                            "--encoding",   "cp932", "--deny", "S101",
                            "--format",     "json"};
    const Arguments scripts{dashed, script};
    using Json = nlohmann::json;
    const auto summary = [](const std::string& errors) {
        return Json::parse(errors.substr(errors.rfind('\n', errors.size() - 2) + 1));
    };
    const Outcome strict = work.run(with(with({"--failure-level", "error"}, options), scripts));
    EXPECT_EQ(strict.exitCode, 3);
    EXPECT_EQ(summary(strict.errors), Json({{"version", 1},
                                            {"scripts", 2},
                                            {"converted", 2},
                                            {"withProblems", 1},
                                            {"reachedFailureLevel", 1},
                                            {"failed", Json::array()}}));
    EXPECT_EQ(body(work.read("out/-n.tvml")), "あ ");
    const Outcome calm = work.run(with(with({"--allow", "S101"}, options), scripts));
    EXPECT_EQ(calm.exitCode, 0);
    EXPECT_EQ(calm.errors.find('\n'), calm.errors.size() - 1); // the summary alone
}

// Whatever could lose a file is found before anything is written.
TEST(HostArchive, RefusesWhatWouldReplaceOneResultOrAnInput) {
    const Workspace work;
    const std::string script = work.path("script.txt");
    const std::string other = work.write("other.txt", "A: x\n");
    const std::string twin = work.write("SCRIPT.md", "A: x\n");
    const std::string result = work.write("other.tvml", "A: y\n");
    const std::string folder = work.path("out");
    const std::vector<Arguments> rows{
        {script, other},
        {script, script, "--output-dir", folder},
        {script, twin, "--output-dir", folder},
        {other, result, "--output-dir", folder},
        {other, work.write("third.txt", ""), "-d", result, "--output-dir", work.path("")},
        {result, script, "--output-dir", work.path("")},
        {script, "-", "--output-dir", folder},
        {script, "-d", "-", "--output-dir", folder},
        {script, "-o", other, "--output-dir", folder},
        {script, "--from", "2", "--output-dir", folder},
        {script, "--output-dir", folder, "--jobs", "-1"},
        {script, "--output-dir", folder, "--no-such-option"},
    };
    for (const Arguments& arguments : rows) {
        const Outcome outcome = work.run(with({"convert"}, arguments));
        EXPECT_EQ(outcome.exitCode, 2) << arguments[1] << outcome.errors;
        EXPECT_TRUE(outcome.errors.starts_with("tvmlfilter: error: ")) << outcome.errors;
        EXPECT_FALSE(work.has("out"));
    }
    EXPECT_EQ(work.read("other.tvml"), "A: y\n");
    const Outcome outcome = work.run({script, "--output-dir", other});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.errors.starts_with(other + ": error: ")) << outcome.errors;
}

} // namespace
} // namespace tvml::host
