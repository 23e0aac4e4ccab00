// Many scripts with one command.
#include "workspace.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <filesystem>
#include <functional>
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
                                            {"upToDate", 0},
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
        {"--recursive", work.path("")},
        {"--recursive", work.path(""), other, "--output-dir", folder},
        {"--recursive", "", "--output-dir", folder},
        {script, "--share", "2/2", "--output-dir", folder},
        {script, "--share", "1", "--output-dir", folder},
        {script, "--timeout", "0", "--output-dir", folder},
        {script, "--timeout", "1"},
        {script, "--changed", "-o", work.path("output")},
        {script, "--share", "0/2"},
        {script, "--depfile", folder},
        {script, "--depfile", script, "--output-dir", folder},
        {script, "--depfile", work.path("out/script.tvml"), "--output-dir", folder},
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

// The tree below the output folder is that of the scripts. All shares of an archive
// together are the whole.
TEST(HostArchive, MirrorsTheTreeOfAFolder) {
    const Workspace work;
    for (const char* folder : {"in", "in/b", "in/b/deep er", "in/empty"}) {
        std::filesystem::create_directory(work.path(folder));
    }
    const std::vector<std::string> scripts{"a", "b/a", "b/deep er/\xE7\x95\xAA", "b/x.y"};
    for (const std::string& script : scripts) {
        work.write("in/" + script + (script == "a" ? ".TXT" : ".txt"), "A: " + script + "\n");
    }
    work.write("in/b/notes.md", "A: no\n");
    const Arguments all{"convert", "--recursive", work.path("in"), "-d",
                        work.path("description.xml")};
    EXPECT_EQ(work.run(with(all, {"--output-dir", work.path("out")})).errors,
              "4 scripts: 4 converted, 0 failed\n");
    for (const char* share : {"0/3", "1/3", "2/3"}) {
        const Outcome outcome =
            work.run(with(all, {"--output-dir", work.path("shares"), "--share", share, "--quiet"}));
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.errors, "");
    }
    for (const std::string& script : scripts) {
        EXPECT_EQ(body(work.read("out/" + script + ".tvml")), script + " ");
        EXPECT_EQ(work.read("shares/" + script + ".tvml"), work.read("out/" + script + ".tvml"));
    }
    EXPECT_FALSE(work.has("out/b/notes.tvml"));
    const Outcome nothing =
        work.run({"convert", "--recursive", work.path("in/empty"), "--output-dir", "out"});
    EXPECT_EQ(nothing.exitCode, 1);
    EXPECT_TRUE(nothing.errors.starts_with(work.path("in/empty") + ": error: ")) << nothing.errors;
}

// What changed is converted, whatever it was, and nothing else.
TEST(HostArchive, LeavesOutWhatWouldBecomeTheSame) {
    const Workspace work;
    for (const char* name : {"a.txt", "b.txt"}) {
        work.write(name, "A: one\n");
    }
    work.write("bad.txt", "(dance)\n");
    work.write("other.xml", std::string(kDescription) + "<!-- -->");
    const Arguments usual{"convert",          "--changed",    work.path("a.txt"),
                          work.path("b.txt"), "--output-dir", work.path("out")};
    const Arguments plain = with(usual, {"-d", work.path("description.xml")});
    const std::string record = "out/.tvmlfilter-made";
    const auto later = [&](const char* name) {
        const std::filesystem::path path = work.path(name);
        std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) +
                                                   std::chrono::hours(1));
    };
    struct {
        const char* what;
        std::function<void()> change;
        Arguments arguments;
        int converted;
    } const rows[] = {
        {"the first time", [] {}, plain, 2},
        {"nothing", [] {}, plain, 0},
        {"what is shown", [] {}, with(plain, {"--color", "always", "--jobs", "1"}), 0},
        {"a script's text", [&] { work.write("a.txt", "A: two\n"); }, plain, 1},
        {"the description", [&] { work.write("description.xml", std::string(kDescription) + " "); },
         plain, 2},
        {"another description", [] {}, with(usual, {"-d", work.path("other.xml")}), 2},
        {"an option", [] {}, with(plain, {"--output-encoding", "utf-16le"}), 2},
        {"back again", [] {}, plain, 2},
        {"an output that is gone", [&] { std::filesystem::remove(work.path("out/a.tvml")); }, plain,
         1},
        {"an output that is another", [&] { work.write("out/a.tvml", "x"); }, plain, 1},
        {"half a record", [&] { work.write(record, work.read(record) + "0123 4"); }, plain, 0},
        {"a record behind it", [&] { work.write("b.txt", "A: three\n"); }, plain, 1},
        {"nothing more", [] {}, plain, 0},
        {"no record", [&] { std::filesystem::remove(work.path(record)); }, plain, 2},
        {"a newer script", [&] { later("a.txt"); }, plain, 1},
        {"what failed", [] {},
         with(plain, {work.path("bad.txt"), "--failure-level", "error", "--deny", "S101"}), 3},
        {"what failed again", [] {},
         with(plain, {work.path("bad.txt"), "--failure-level", "error", "--deny", "S101"}), 2},
    };
    for (const auto& row : rows) {
        row.change();
        const Outcome outcome = work.run(row.arguments);
        EXPECT_NE(outcome.errors.find(": " + std::to_string(row.converted) + " converted"),
                  std::string::npos)
            << row.what << ": " << outcome.errors;
    }
    EXPECT_EQ(body(work.read("out/a.tvml")), "two ");
    EXPECT_EQ(body(work.read("out/b.tvml")), "three ");
}

// A script that takes its worker along does so to no other, and gets a second try;
// what a library says on the streams comes between nothing.
TEST(HostArchive, OneScriptTakesNoOtherAlong) {
    const Workspace work;
    const std::string marker = work.path("marker");
    Arguments scripts{work.write("crash.txt", "crash\n"),
                      work.write("first.txt", "f" + marker + "\n"),
                      work.write("wait.txt", "wait\n"), work.write("print.txt", "print\n")};
    for (int i = 0; i < 4; ++i) {
        scripts.push_back(work.write("ok" + std::to_string(i) + ".txt", "good\n"));
    }
    for (const char* jobs : {"1", "3"}) {
        std::filesystem::remove(marker);
        const std::string folder = work.path(jobs);
        const Outcome outcome =
            work.run(with({"convert", "--library", Workspace::beside(HOST_MOODY_LIBRARY),
                           "--timeout", "1", "--jobs", jobs, "--output-dir", folder},
                          scripts));
        EXPECT_EQ(outcome.exitCode, 1);
        for (const std::string& line :
             {scripts[0] + ": error: the conversion broke off: exit code 77\n",
              scripts[2] + ": error: the conversion broke off: it was not done within 1 second\n",
              "8 scripts: 6 converted, 2 failed\n  failed: " + scripts[0] +
                  "\n  failed: " + scripts[2] + "\n"}) {
            EXPECT_NE(outcome.errors.find(line), std::string::npos) << outcome.errors;
        }
        for (const char* name : {"first", "print", "ok0", "ok1", "ok2", "ok3"}) {
            EXPECT_EQ(work.read(std::string(jobs) + "/" + name + ".tvml"), "five\n") << name;
        }
        EXPECT_FALSE(work.has(std::string(jobs) + "/crash.tvml"));
    }
}

// Failures alone are told, and what is wrong still counts where it was asked for.
TEST(HostArchive, QuietTellsFailuresAlone) {
    const Workspace work;
    const std::string script = work.write("dance.txt", "A: (dance)\n");
    const Arguments usual{script, "-d", work.path("description.xml"), "--quiet"};
    struct {
        Arguments arguments;
        int exitCode;
        bool told;
    } const rows[] = {
        {{"-o", work.path("o")}, 0, false},
        {{"-o", work.path("o"), "--failure-level", "error"}, 3, false},
        {{"--output-dir", work.path("out")}, 0, false},
        {{"--output-dir", work.path("out"), "--failure-level", "error"}, 3, false},
        {{work.path("missing.txt"), "--output-dir", work.path("out")}, 1, true},
        {{"--output-dir", work.path("out"), "--format", "json"}, 0, false},
    };
    for (const auto& row : rows) {
        const Outcome outcome = work.run(with(usual, row.arguments));
        EXPECT_EQ(outcome.exitCode, row.exitCode) << row.arguments[0];
        EXPECT_EQ(outcome.errors.empty(), !row.told) << outcome.errors;
    }
}

// With blanks, dollars and number signs as make and ninja write them.
TEST(HostArchive, DependenciesAreRules) {
    const Workspace work;
    const std::string script = work.write("a #$.txt", "A: one\n");
    const std::string description = work.path("description.xml");
    const std::string escaped = work.path("a\\ \\#$$.txt");
    const std::string common = " " + description + " " + Workspace::beside("keyword.ini") + " " +
                               Workspace::beside("Mirvol.ini") + "\n";
    work.run({script, "-d", description, "-o", work.path("o.tvml"), "--depfile", work.path("d")});
    const std::string one = work.read("d");
    EXPECT_TRUE(one.starts_with(work.path("o.tvml") + ": " + escaped + common)) << one;
    for (const std::string& file : {escaped, description, Workspace::beside("Mirvol.ini")}) {
        EXPECT_NE(one.find("\n" + file + ":\n"), std::string::npos) << one;
    }
    work.run({script, work.path("script.txt"), "-d", description, "--output-dir", work.path("out"),
              "--depfile", work.path("all")});
    const std::string all = work.read("all");
    EXPECT_TRUE(all.starts_with(work.path("out/a\\ \\#$$.tvml") + ": " + escaped + common)) << all;
    EXPECT_NE(
        all.find("\n" + work.path("out/script.tvml") + ": " + work.path("script.txt") + common),
        std::string::npos)
        << all;
}

} // namespace
} // namespace tvml::host
