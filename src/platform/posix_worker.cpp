// Workers on Linux. Entries: Worker, WorkerDesk.
//
// The two sides have the ends of one socket, which tells each at once when the
// other is gone. The kernel also asks a worker to end when the thread that
// started it does, however that comes about.
#include "platform/posix_io.h"
#include "platform/posix_words.h"
#include "platform/worker_frames.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>

namespace tvml::platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kThisProgram = "/proc/self/exe";

// A side that is gone must not end this one by a signal.
bool sendAll(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

std::size_t receive(int socket, char* at, std::size_t size) {
    ssize_t got = -1;
    do {
        got = ::recv(socket, at, size, 0);
    } while (got < 0 && errno == EINTR);
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

// Whether there is something to receive before the time is over.
bool waitUntil(int socket, std::optional<Clock::time_point> end) {
    for (;;) {
        int left = -1;
        if (end.has_value()) {
            const auto rest = std::chrono::ceil<std::chrono::milliseconds>(*end - Clock::now());
            left = static_cast<int>(std::clamp<long long>(rest.count(), 0, 1'000'000));
        }
        pollfd source{socket, POLLIN, 0};
        const int ready = ::poll(&source, 1, left);
        if (ready > 0 || (ready == 0 && Clock::now() >= *end)) {
            return ready > 0;
        }
    }
}

// This program with its end of the socket as standard input; what it says goes
// where this process says it.
Failure spawnThisProgram(const std::vector<std::string>& arguments, int socket, pid_t& process) {
    std::vector<std::string> words(1, "tvmlfilter");
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers = pointersTo(words);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, socket, STDIN_FILENO);
    const int error =
        ::posix_spawn(&process, kThisProgram, &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? std::nullopt : Failure(std::strerror(error));
}

} // namespace

struct Worker::Process {
    int socket = -1;
    pid_t id = 0;
    int exitCode = 0;

    ~Process() { waitForEnd(); }

    void waitForEnd() {
        if (id == 0) {
            return;
        }
        ::close(socket);
        int status = 0;
        while (::waitpid(id, &status, 0) < 0 && errno == EINTR) {
        }
        exitCode = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
        id = 0;
    }
};

Worker::Worker() = default;
Worker::~Worker() = default;

Failure Worker::start(const std::vector<std::string>& arguments) {
    std::array<int, 2> ends;
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return systemFailure();
    }
    auto process = std::make_unique<Process>();
    const Failure failure = spawnThisProgram(arguments, ends[1], process->id);
    ::close(ends[1]);
    if (failure) {
        process->id = 0;
        ::close(ends[0]);
        return failure;
    }
    process->socket = ends[0];
    process_ = std::move(process);
    return std::nullopt;
}

Worker::Answer Worker::ask(std::string_view request, std::string& answer,
                           std::optional<std::chrono::milliseconds> time) {
    const auto end = time.has_value() ? std::optional(Clock::now() + *time) : std::nullopt;
    const int socket = process_->socket;
    bool late = false;
    const auto read = [&](char* at, std::size_t size) {
        late = !waitUntil(socket, end);
        return late ? 0 : receive(socket, at, size);
    };
    if (sendAll(socket, frameOf(request)) && readFrame(read, answer)) {
        return Answer::given;
    }
    if (late) {
        ::kill(process_->id, SIGKILL);
    }
    process_->waitForEnd();
    return late ? Answer::late : Answer::ended;
}

int Worker::exitCode() const {
    return process_->exitCode;
}

struct WorkerDesk::Channel {
    int socket = -1;
    ~Channel() { ::close(socket); }
};

WorkerDesk::WorkerDesk() = default;
WorkerDesk::~WorkerDesk() = default;

// What a foreign library reads or writes must not come between the messages.
Failure WorkerDesk::open() {
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    channel_ = std::make_unique<Channel>();
    channel_->socket = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (channel_->socket < 0 || nothing < 0 || ::dup2(nothing, STDIN_FILENO) < 0) {
        return systemFailure();
    }
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    return closeAfter(nothing, std::nullopt);
}

bool WorkerDesk::next(std::string& request) {
    const auto read = [this](char* at, std::size_t size) {
        return receive(channel_->socket, at, size);
    };
    return readFrame(read, request);
}

bool WorkerDesk::answer(std::string_view bytes) {
    return sendAll(channel_->socket, frameOf(bytes));
}

} // namespace tvml::platform
