// Files that only POSIX systems have, or that the shell of others cannot name.
#include "workspace.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace tvml::host {
namespace {

namespace fs = std::filesystem;

TEST(HostPosixFiles, ReplacesWhatALinkLeadsTo) {
    const Workspace work;
    work.write("real", "old");
    fs::create_symlink("real", work.path("link"));
    EXPECT_EQ(work.run({work.path("script.txt"), "-o", work.path("link")}).exitCode, 0);
    EXPECT_TRUE(fs::is_symlink(work.path("link")));
    EXPECT_NE(work.read("real"), "old");
}

// A link stays one, wherever it leads; one that leads nowhere at all is an error.
TEST(HostPosixFiles, LinksStayLinks) {
    const Workspace work;
    fs::create_directory(work.path("far"));
    fs::create_symlink("far/second", work.path("first"));
    fs::create_symlink(work.path("far/new"), work.path("far/second"));
    fs::create_symlink("circle b", work.path("circle a"));
    fs::create_symlink("circle a", work.path("circle b"));
    fs::create_symlink("no folder/file", work.path("nowhere"));
    const std::ptrdiff_t before = work.fileCount();
    EXPECT_EQ(work.run({work.path("script.txt"), "-o", work.path("first")}).exitCode, 0);
    EXPECT_TRUE(fs::is_symlink(work.path("first")));
    EXPECT_TRUE(fs::is_symlink(work.path("far/second")));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(work.path("far/new"))));
    for (const char* link : {"circle a", "nowhere"}) {
        const Outcome outcome = work.run({work.path("script.txt"), "-o", work.path(link)});
        EXPECT_EQ(outcome.exitCode, 1) << link;
        EXPECT_TRUE(outcome.errors.starts_with(work.path(link) + ": error: ")) << outcome.errors;
        EXPECT_TRUE(fs::is_symlink(work.path(link)));
    }
    EXPECT_EQ(work.fileCount(), before);
}

// A program that is of use to no one but its owner keeps its bits; one that would
// run as somebody else loses them, since it is the runner's now.
TEST(HostPosixFiles, SetUserBitsGoWithTheirOwner) {
    const Workspace work;
    const fs::perms bits = fs::perms::set_uid | fs::perms::owner_read | fs::perms::owner_write |
                           fs::perms::group_read | fs::perms::group_write;
    const std::string output = work.write("output", "old");
    fs::permissions(output, bits);
    EXPECT_EQ(work.run({work.path("script.txt"), "-o", output}).exitCode, 0);
    EXPECT_EQ(fs::status(output).permissions(), bits);
    constexpr uid_t kNobody = 65534;
    // Only root gives files away; others have none that were given to them.
    if (::chown(output.c_str(), kNobody, kNobody) == 0) {
        fs::permissions(output, bits | fs::perms::set_gid);
        EXPECT_EQ(work.run({work.path("script.txt"), "-o", output}).exitCode, 0);
        EXPECT_EQ(fs::status(output).permissions(), bits & ~fs::perms::set_uid);
    }
}

// Where a file needs a temporary name, too: a request to end waits for it.
TEST(HostPosixFiles, ARequestToEndLeavesNothingBehind) {
    const Workspace work;
    std::string lines;
    for (int i = 0; i < 20'000; ++i) {
        lines += "A: a line of many\n";
    }
    const std::string script = work.write("long.txt", lines);
    work.write("output", "old");
    const std::ptrdiff_t before = work.fileCount();
    int ended = 0;
    for (int milliseconds = 0; milliseconds < 60; milliseconds += 2) {
        std::string command = "timeout -s INT 0.0";
        command.append(milliseconds < 9 ? "0" : "").append(std::to_string(milliseconds + 1));
        command.append(" \"").append(Workspace::beside(HOST_PROGRAM)).append("\" \"");
        command.append(script).append("\" -q -d \"").append(work.path("description.xml"));
        command.append("\" -o \"").append(work.path("output")).append("\"");
        ended += std::system(command.c_str()) != 0 ? 1 : 0;
        EXPECT_EQ(work.fileCount(), before);
        const std::string output = work.read("output");
        EXPECT_TRUE(output == "old" || output.ends_with("\n"));
    }
    EXPECT_GT(ended, 0);
}

TEST(HostPosixFiles, KeepsTheRightsOfAFile) {
    const Workspace work;
    const std::string output = work.write("output", "old");
    const fs::perms rights = fs::perms::owner_read | fs::perms::owner_write |
                             fs::perms::group_read | fs::perms::group_write;
    fs::permissions(output, rights);
    work.run({work.path("script.txt"), "-o", output});
    EXPECT_EQ(fs::status(output).permissions(), rights);
    // A new file has the rights that any program would give it.
    work.run({work.path("script.txt"), "-o", work.path("new")});
    EXPECT_EQ(fs::status(work.path("new")).permissions(),
              fs::status(work.path("script.txt")).permissions());
}

TEST(HostPosixFiles, WritesToDevices) {
    const Workspace work;
    const std::string script = work.path("script.txt");
    EXPECT_EQ(work.run({script, "-o", "/dev/null"}).exitCode, 0);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    const Outcome full = work.run({script, "-o", "/dev/full"});
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_TRUE(full.errors.starts_with("/dev/full: error: ")) << full.errors;
    const std::string program = "\"" + Workspace::beside(HOST_PROGRAM) + "\" ";
    for (const char* answer :
         {"--version", "--help", "--help-all", "convert --help", "help", "check --explain S101"}) {
        const std::string command = program + answer + " > /dev/full 2> /dev/null";
        EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1) << answer;
    }
}

TEST(HostPosixFiles, NamesMayBeJapaneseOrNoTextAtAll) {
    const Workspace work;
    for (const char* name : {"番組 一.txt", "\xFF\xFE.txt"}) {
        const std::string script = work.write(name, "A: one\n");
        const std::string output = work.path(std::string(name) + ".tvml");
        const Outcome outcome =
            work.run({script, "-d", work.path("description.xml"), "-o", output});
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
        EXPECT_EQ(body(work.read(std::string(name) + ".tvml")), "one ");
    }
}

} // namespace
} // namespace tvml::host
