// Converting again and again: the program runs while its files change.
#include "workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tvml::host {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kStaging =
    "<staging><numofchar>1</numofchar>"
    "<model_for_char character='A' japanesename='a' englishname='a' default='yes'>m"
    "</model_for_char><talk>say $2 $5</talk><nod>say nod</nod></staging>";

// The program in a folder of its own, with ini files that can be changed.
class Watching {
public:
    explicit Watching(const std::string& script = "in/script") {
        fs::create_directory(work_.path("bin"));
        fs::create_directories(fs::path(work_.path(script)).parent_path());
        fs::create_directory(work_.path("far"));
        for (const std::string_view name : {HOST_PROGRAM, "keyword.ini", "Mirvol.ini"}) {
            fs::copy_file(Workspace::beside(name), work_.path(std::string("bin/").append(name)));
        }
        work_.write(script, "A: one");
        work_.write("far/description", kStaging);
        fs::create_symlink(work_.path("far/description"), work_.path("in/description"));
        std::array<std::string, 9> words{work_.path(std::string("bin/").append(HOST_PROGRAM)),
                                         work_.path(script),
                                         "-d",
                                         work_.path("in/description"),
                                         "-o",
                                         work_.path("output"),
                                         "--watch",
                                         "--language",
                                         "en"};
        std::array<char*, 10> arguments{};
        std::ranges::transform(words, arguments.begin(),
                               [](std::string& word) { return word.data(); });
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, work_.path("errors").c_str(),
                                         O_WRONLY | O_CREAT | O_APPEND, 0600);
        EXPECT_EQ(
            posix_spawn(&process_, words[0].c_str(), &actions, nullptr, arguments.data(), environ),
            0);
        posix_spawn_file_actions_destroy(&actions);
    }

    ~Watching() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
    }

    const Workspace& work() const { return work_; }

    std::string output() const { return body(work_.read("output")); }
    std::string errors() const { return work_.read("errors"); }

    // Whether the condition comes true before the patience ends.
    template <typename Condition> static bool comes(Condition condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }
    bool writes(const std::string& expected) const {
        return comes([&] { return output() == expected; });
    }
    bool tells(const std::string& text) const {
        return comes([&] { return errors().find(text) != std::string::npos; });
    }

    // The exit code, -1 when it did not exit by itself.
    int endBy(int signal) {
        kill(process_, signal);
        int status = 0;
        const bool ended = comes([&] { return waitpid(process_, &status, WNOHANG) == process_; });
        process_ = ended ? 0 : process_;
        return ended && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    Workspace work_;
    pid_t process_ = 0;
};

std::size_t countOf(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST(HostWatch, ConvertsAfterEveryWayOfChangingTheScript) {
    Watching watch;
    const Workspace& work = watch.work();
    ASSERT_TRUE(watch.writes("one 1.0 ")) << watch.errors();
    work.write("in/script", "A: in place");
    EXPECT_TRUE(watch.writes("in place 1.0 ")) << watch.errors();
    work.write("in/other", "A: over it");
    fs::rename(work.path("in/other"), work.path("in/script"));
    EXPECT_TRUE(watch.writes("over it 1.0 ")) << watch.errors();
    fs::remove(work.path("in/script"));
    EXPECT_TRUE(watch.tells(work.path("in/script") + ": error: ")) << watch.errors();
    EXPECT_EQ(watch.output(), "over it 1.0 ");
    work.write("in/script", "A: made again");
    EXPECT_TRUE(watch.writes("made again 1.0 ")) << watch.errors();
    fs::rename(work.path("in"), work.path("away"));
    fs::create_directory(work.path("in"));
    fs::create_symlink(work.path("far/description"), work.path("in/description"));
    work.write("in/script", "A: in a new folder");
    EXPECT_TRUE(watch.writes("in a new folder 1.0 ")) << watch.errors();
    work.write("in/script", "A: (dance)\nA: all the same");
    EXPECT_TRUE(watch.writes("all the same 1.0 ")) << watch.errors();
    EXPECT_TRUE(watch.tells("script:1:5: error: ")) << watch.errors();
    EXPECT_EQ(watch.endBy(SIGTERM), 0);
}

// Whatever comes in the place of a file or of a folder above it.
TEST(HostWatch, StaysAwakeWhenAFolderAboveIsExchangedOrAPipeComes) {
    Watching watch("in/low/script");
    const Workspace& work = watch.work();
    ASSERT_TRUE(watch.writes("one 1.0 ")) << watch.errors();
    for (const char* text : {"first", "second"}) {
        fs::create_directory(work.path("new"));
        fs::copy(work.path("in"), work.path("new/in"),
                 fs::copy_options::copy_symlinks | fs::copy_options::recursive);
        work.write("new/in/low/script", std::string("A: ") + text);
        fs::rename(work.path("in"), work.path(std::string("old ") + text));
        fs::rename(work.path("new/in"), work.path("in"));
        fs::remove(work.path("new"));
        EXPECT_TRUE(watch.writes(std::string(text) + " 1.0 ")) << watch.errors();
    }
    fs::remove(work.path("in/low/script"));
    ASSERT_EQ(mkfifo(work.path("in/low/script").c_str(), 0600), 0);
    EXPECT_TRUE(watch.tells("script: error: no ordinary file")) << watch.errors();
    fs::remove(work.path("in/low/script"));
    work.write("in/low/script", "A: a file again");
    EXPECT_TRUE(watch.writes("a file again 1.0 ")) << watch.errors();
    EXPECT_EQ(watch.endBy(SIGTERM), 0);
}

TEST(HostWatch, LooksAtTheDescriptionAndTheIniFiles) {
    Watching watch;
    const Workspace& work = watch.work();
    ASSERT_TRUE(watch.writes("one 1.0 ")) << watch.errors();
    std::string staging(kStaging);
    work.write("far/description", staging.substr(0, staging.size() - 12));
    EXPECT_TRUE(watch.tells("output: error: left as it is")) << watch.errors();
    EXPECT_EQ(watch.output(), "one 1.0 ");
    work.write("far/description", staging.replace(staging.find("say"), 3, "say of"));
    EXPECT_TRUE(watch.writes("of one 1.0 ")) << watch.errors();
    work.write("in/script", "A: (zz)\nA: (speak fast)\nA: two");
    EXPECT_TRUE(watch.writes("of two 1.1 ")) << watch.errors();
    std::string words = work.read("bin/keyword.ini");
    const std::size_t nod = words.find("\nnod=") + 5;
    work.write("bin/keyword.ini", words.replace(nod, words.find('\n', nod) - nod, "zz"));
    EXPECT_TRUE(watch.writes("nod of two 1.1 ")) << watch.errors();
    std::string speeds = work.read("bin/Mirvol.ini");
    work.write("bin/Mirvol.ini", speeds.replace(speeds.find("=1.1"), 4, "=1.7"));
    EXPECT_TRUE(watch.writes("nod of two 1.7 ")) << watch.errors();
    EXPECT_EQ(watch.endBy(SIGINT), 0);
}

TEST(HostWatch, TakesManyChangesForOne) {
    Watching watch;
    ASSERT_TRUE(watch.writes("one 1.0 ")) << watch.errors();
    for (int i = 0; i <= 300; ++i) {
        watch.work().write("in/script", "A: " + std::to_string(i));
    }
    EXPECT_TRUE(watch.writes("300 1.0 ")) << watch.errors();
    EXPECT_LT(countOf(watch.errors(), "wrote"), 100U);
    // Its own output and other files in the folders are no changes.
    const std::string before = watch.errors();
    watch.work().write("in/other", "A: other");
    watch.work().write("in/script", "A: last");
    EXPECT_TRUE(watch.writes("last 1.0 "));
    EXPECT_EQ(watch.endBy(SIGTERM), 0);
    EXPECT_LE(countOf(watch.errors(), "wrote"), countOf(before, "wrote") + 2);
}

TEST(HostWatch, NeedsFiles) {
    const Workspace work;
    const std::string script = work.path("script.txt");
    const std::string output = work.path("output");
    for (const std::vector<std::string>& wrong : {std::vector<std::string>{script, "--watch"},
                                                  {"-", "-o", output, "--watch"},
                                                  {script, "-d", "-", "-o", output, "--watch"}}) {
        EXPECT_EQ(work.run(wrong).exitCode, 2);
    }
}

} // namespace
} // namespace tvml::host
