// Files that only POSIX systems have, or that the shell of others cannot name.
#include "workspace.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

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
