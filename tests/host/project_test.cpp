// The project file, and the command that makes a project.
#include <gtest/gtest.h>

#include "host/host_error.h"
#include "host/workspace.h"

namespace tvml::host {
namespace {

TEST(HostProject, FillsWhatTheCommandLineDoesNotSay) {
    const Workspace work;
    std::filesystem::create_directories(work.path("project/acts"));
    work.write("project/acts/one.txt", "A: one\nA: (dance)\n");
    work.write("project/staging.xml", kDescription);
    work.write("project/tvmlfilter.toml",
               "description = \"staging.xml\"\nallow = [\"S101\"]\nlanguage = \"ja\"\n");
    const std::string script = work.path("project/acts/one.txt");
    EXPECT_EQ(body(work.run({"convert", script}).output), "one ");
    EXPECT_EQ(work.run({"check", script}).exitCode, kDone);
    EXPECT_EQ(work.run({"check", script, "--no-project"}).exitCode, kProblemsFound);
    EXPECT_EQ(work.run({"check", script, "--deny", "S101"}).exitCode, kDone); // allowed is left out
    work.write("other.toml", "deny = \"S101\"\ndescription = \"none.xml\"\n");
    const std::string other = work.path("other.toml");
    const Outcome named = work.run({"check", script, "--project", other});
    EXPECT_EQ(named.exitCode, kInputOrOutputFailed);
    EXPECT_NE(named.errors.find("none.xml"), std::string::npos) << named.errors;
    EXPECT_EQ(work.run({"check", script, "--project", other, "-d", work.path("description.xml")})
                  .exitCode,
              kProblemsFound);
}

TEST(HostProject, OutputsGoIntoItsFolder) {
    const Workspace work;
    work.write("tvmlfilter.toml", "description = \"description.xml\"\noutput = \"made\"\n");
    EXPECT_EQ(work.run({"convert", work.path("script.txt")}).exitCode, kDone);
    EXPECT_EQ(body(work.read("made/script.tvml")), "one two three ");
    EXPECT_EQ(body(work.run({"convert", work.path("script.txt"), "-o", "-"}).output),
              "one two three ");
}

TEST(HostProject, TellsWhatIsWrongWithItsPlace) {
    struct Row {
        std::string_view text;
        std::string_view told;
    };
    const Row rows[] = {
        {"\n\ndescripton = \"a.xml\"\n", "tvmlfilter.toml:3:1: error: there is no key"},
        {"descripton = \"a.xml\"\n", "did you mean \"description\"?"},
        {"zzz = 1\n", "there are description, ini"},
        {"media = [\"a\", 3]\n", "tvmlfilter.toml:1:15: error: a text in quotes"},
        {"allow = [\"S999\"]\n", "\"S999\" is no value"},
        {"encoding = \"latin1\"\n", "\"latin1\" is no value"},
        {"failure-level = \"never\"\n", "\"never\" is no value"},
        {"language = \"fr\"\n", "\"fr\" is no value"},
        {"media = [\n", "tvmlfilter.toml:1:11: error: this is no TOML"},
    };
    for (const Row& row : rows) {
        const Workspace work;
        work.write("tvmlfilter.toml", row.text);
        const Outcome outcome = work.run({"check", work.path("script.txt")});
        EXPECT_EQ(outcome.exitCode, kInputOrOutputFailed) << row.text;
        EXPECT_NE(outcome.errors.find(row.told), std::string::npos) << outcome.errors;
    }
}

TEST(HostProject, ItsIniFilesCount) {
    const Workspace work;
    std::filesystem::create_directories(work.path("words"));
    work.write("words/keyword.ini", "[keyword]\n");
    work.write("tvmlfilter.toml", "ini = \"words\"\ndescription = \"description.xml\"\n");
    work.write("ja.txt", "Ａ：（お辞儀）\n");
    const Outcome outcome = work.run({"check", work.path("ja.txt")});
    EXPECT_NE((outcome.output + outcome.errors).find("words/keyword.ini"), std::string::npos)
        << outcome.output << outcome.errors;
}

TEST(HostProject, ANewOneConvertsAtOnce) {
    for (const char* language : {"en", "ja"}) {
        const Workspace work;
        const std::string folder = work.path("番組");
        ASSERT_EQ(work.run({"new", folder, "--language", language}).exitCode, kDone);
        const std::string script =
            folder + (std::string_view(language) == "en" ? "/programme.txt" : "/daihon.txt");
        EXPECT_EQ(work.run({"check", script, "--failure-level", "note"}).exitCode, kDone);
        EXPECT_NE(work.run({"convert", script}).output.find("bow"), std::string::npos);
        const Outcome again = work.run({"new", folder, "--language", language});
        EXPECT_EQ(again.exitCode, kInputOrOutputFailed); // nothing is written over
    }
}

} // namespace
} // namespace tvml::host
