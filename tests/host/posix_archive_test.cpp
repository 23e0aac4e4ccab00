// Archives whose processes are ended at any moment.
#include "workspace.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <csignal>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tvml::host {
namespace {

namespace fs = std::filesystem;

constexpr int kScripts = 40;
constexpr int kRounds = 100;

std::string nameOf(int script) {
    return "s" + std::to_string(script);
}

// The children of a process, as the system lists all of them.
std::vector<pid_t> childrenOf(pid_t parent) {
    std::vector<pid_t> children;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const int id = std::atoi(entry.path().filename().c_str());
        std::ifstream file(entry.path() / "stat");
        std::string line;
        // "ID (NAME) STATE PARENT ..."
        if (id > 0 && std::getline(file, line)) {
            std::istringstream rest(line.substr(std::min(line.rfind(')') + 1, line.size())));
            char state = 0;
            pid_t above = 0;
            rest >> state >> above;
            if (above == parent) {
                children.push_back(id);
            }
        }
    }
    return children;
}

// An archive of scripts that are each told of, in a process that this one can end.
class RunningArchive {
public:
    explicit RunningArchive(const Workspace& work) {
        std::vector<std::string> words{Workspace::beside(HOST_PROGRAM),
                                       "convert",
                                       "--recursive",
                                       work.path("in"),
                                       "-d",
                                       work.path("description.xml"),
                                       "--output-dir",
                                       work.path("out"),
                                       "--changed",
                                       "--jobs",
                                       "2",
                                       "--language",
                                       "en"};
        std::vector<char*> arguments;
        for (std::string& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, work.path("told").c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn(&id_, words[0].c_str(), &actions, nullptr, arguments.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
    }

    // Ends the program or one of its workers.
    template <typename Random> void endOne(Random& random) const {
        static constexpr std::array<int, 3> kSignals{SIGKILL, SIGTERM, SIGINT};
        std::vector<pid_t> all = childrenOf(id_);
        all.push_back(id_);
        const pid_t victim = all[random() % all.size()];
        kill(victim, kSignals[random() % kSignals.size()]);
    }

    // The exit code of the program, when it ended by itself.
    int wait() const {
        int status = 0;
        waitpid(id_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t id_ = 0;
};

// Workers whose program is gone come to this process, which takes the end of each.
bool allEnd() {
    const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < last) {
        const pid_t ended = waitpid(-1, nullptr, WNOHANG);
        if (ended < 0) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(ended == 0 ? 1 : 0));
    }
    return false;
}

// Every file of the output folder is the whole of one output; what was told of is
// there.
void expectWholeOutputs(const Workspace& work) {
    if (!work.has("out")) {
        return;
    }
    for (const auto& entry : fs::directory_iterator(work.path("out"))) {
        const std::string name = entry.path().stem().string();
        if (entry.path().filename() != ".tvmlfilter-made") {
            EXPECT_EQ(entry.path().extension(), ".tvml") << entry.path();
            EXPECT_EQ(work.read("out/" + name + ".tvml"), work.read("whole/" + name + ".tvml"));
        }
    }
    const std::string told = work.read("told");
    for (int i = 0; i < kScripts; ++i) {
        const bool isTold =
            told.find(work.path("in/" + nameOf(i) + ".txt") + ":1:") != std::string::npos;
        EXPECT_TRUE(!isTold || work.has("out/" + nameOf(i) + ".tvml")) << nameOf(i);
    }
}

TEST(HostPosixArchive, AnyProcessMayEndAtAnyMoment) {
    ASSERT_EQ(prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
    const Workspace work;
    fs::create_directory(work.path("in"));
    for (int i = 0; i < kScripts; ++i) {
        work.write("in/" + nameOf(i) + ".txt", "A: (dance)\nA: " + nameOf(i) + "\n");
    }
    const std::vector<std::string> whole{
        "--recursive",  work.path("in"),    "-d",     work.path("description.xml"),
        "--output-dir", work.path("whole"), "--quiet"};
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(work.run(whole).exitCode, 0);
    const auto duration = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now() - start);
    std::mt19937 random(static_cast<unsigned>(duration.count()));
    int broken = 0;
    for (int round = 0; round < kRounds; ++round) {
        const RunningArchive archive(work);
        std::this_thread::sleep_for(duration * (random() % 1000) / 1000);
        archive.endOne(random);
        const int exitCode = archive.wait();
        EXPECT_TRUE(allEnd()) << round;
        expectWholeOutputs(work);
        // One worker's end takes nothing along: its script got another one.
        EXPECT_TRUE(exitCode <= 0) << work.read("told");
        broken += exitCode < 0 ? 1 : 0;
        if (exitCode == 0) {
            EXPECT_NE(work.read("told").find(" 0 failed"), std::string::npos);
            fs::remove_all(work.path("out"));
        }
    }
    EXPECT_GT(broken, 0);
    EXPECT_EQ(RunningArchive(work).wait(), 0);
    for (int i = 0; i < kScripts; ++i) {
        EXPECT_TRUE(work.has("out/" + nameOf(i) + ".tvml"));
    }
    expectWholeOutputs(work);
}

} // namespace
} // namespace tvml::host
