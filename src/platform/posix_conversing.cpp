// Entries: the functions of conversing.h.
#include "platform/conversing.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/posix_words.h"

namespace tvml::platform {

InputEvent readSomeInput(std::string& bytes, std::chrono::milliseconds time) {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    const int ready = ::poll(&input, 1, static_cast<int>(time.count()));
    if (ready <= 0) {
        return ready == 0 || errno == EINTR ? InputEvent::timedOut : InputEvent::ended;
    }
    std::array<char, std::size_t{1} << 16> piece;
    const ssize_t got = ::read(STDIN_FILENO, piece.data(), piece.size());
    if (got <= 0) {
        return got < 0 && (errno == EINTR || errno == EAGAIN) ? InputEvent::timedOut
                                                              : InputEvent::ended;
    }
    bytes.append(piece.data(), static_cast<std::size_t>(got));
    return InputEvent::bytes;
}

// Another user's process cannot be told anything, but it runs.
bool isRunning(std::int64_t process) {
    const auto number = static_cast<pid_t>(process);
    return number <= 0 || ::kill(number, 0) == 0 || errno == EPERM;
}

Failure startProgram(const std::vector<std::string>& command) {
    // Those that ended meanwhile are let go.
    while (::waitpid(-1, nullptr, WNOHANG) > 0) {
    }
    std::vector<std::string> words = command;
    std::vector<char*> pointers = pointersTo(words);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error =
        ::posix_spawnp(&process, pointers.front(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? std::nullopt : Failure(std::strerror(error));
}

} // namespace tvml::platform
