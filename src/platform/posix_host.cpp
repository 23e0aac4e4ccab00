// The command-line host's services on POSIX systems: all of host_services.h.
//
// The system's calls are used as they are rather than the streams of C++, which
// do not say why something failed.
#include "platform/host_services.h"

#include "platform/decoding.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <unicode/ucnv.h>
#include <unicode/utf8.h>

namespace tvml::platform {
namespace {

// What the last call that failed said. To be asked for at once, before another
// call changes it.
Failure systemFailure() {
    return std::string(std::strerror(errno));
}

int descriptorOf(OutputStream stream) {
    return stream == OutputStream::output ? STDOUT_FILENO : STDERR_FILENO;
}

// Pipes and terminals give what they have, so the size is known at the end only.
Failure readAll(int descriptor, std::string& bytes) {
    std::array<char, std::size_t{1} << 16> piece;
    bytes.clear();
    for (;;) {
        const ssize_t got = ::read(descriptor, piece.data(), piece.size());
        if (got == 0) {
            return std::nullopt;
        }
        if (got > 0) {
            bytes.append(piece.data(), static_cast<std::size_t>(got));
        } else if (errno != EINTR) {
            return systemFailure();
        }
    }
}

// A call may write less than it was given, into a pipe above all.
Failure writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return systemFailure();
        }
    }
    return std::nullopt;
}

// Closing can be the first to say that the disk is full.
Failure closeAfter(int descriptor, Failure before) {
    const bool closed = ::close(descriptor) == 0 || errno == EINTR;
    return before || closed ? before : systemFailure();
}

// For what cannot be replaced, such as a device: its old content, if it has
// any, is not the host's to keep.
Failure writeInPlace(const std::string& path, std::string_view bytes) {
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) {
        return systemFailure();
    }
    return closeAfter(descriptor, writeAll(descriptor, bytes));
}

// The rights that the system would give a new file; a temporary one gets fewer.
mode_t modeOfNewFiles() {
    const mode_t mask = ::umask(0); // can only be read by setting it
    ::umask(mask);
    return 0666 & ~mask;
}

// Writes, and makes sure that the bytes are on the disk before a name leads to
// them: a machine that stops must not leave an empty file in the old one's place.
Failure writeDurably(int descriptor, std::string_view bytes, mode_t mode) {
    if (Failure failure = writeAll(descriptor, bytes)) {
        return failure;
    }
    if (::fchmod(descriptor, mode) != 0 || ::fsync(descriptor) != 0) {
        return systemFailure();
    }
    return std::nullopt;
}

// The file that links lead to, or the name itself when there is none yet.
std::string followLinks(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr),
                                                           &std::free);
    return real != nullptr ? std::string(real.get()) : path;
}

// The renaming is the one step in which the old file gives way, so that nobody
// ever finds half a file under the name.
Failure replaceOrdinaryFile(const std::string& path, std::string_view bytes, mode_t mode) {
    // In the same folder, because only there one step can move it.
    std::string temporary = path + ".XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return systemFailure();
    }
    Failure failure = closeAfter(descriptor, writeDurably(descriptor, bytes, mode));
    if (!failure && ::rename(temporary.c_str(), path.c_str()) != 0) {
        failure = systemFailure();
    }
    if (failure) {
        ::unlink(temporary.c_str());
    }
    return failure;
}

constexpr const char* kThisProgram = "/proc/self/exe";

// The streams of a program that is started: nothing to read, and a pipe for
// all that it writes.
class SpawnedStreams {
public:
    explicit SpawnedStreams(int pipe) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, pipe, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, pipe, STDERR_FILENO);
    }
    ~SpawnedStreams() { posix_spawn_file_actions_destroy(&actions_); }
    SpawnedStreams(const SpawnedStreams&) = delete;
    SpawnedStreams& operator=(const SpawnedStreams&) = delete;

    const posix_spawn_file_actions_t* actions() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

// The process of the program, which writes into `pipe`.
Failure spawnThisProgram(const std::vector<std::string>& arguments, int pipe, pid_t& process) {
    std::vector<std::string> words(1, "tvmlfilter");
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    const SpawnedStreams streams(pipe);
    const int error =
        ::posix_spawn(&process, kThisProgram, streams.actions(), nullptr, pointers.data(), environ);
    return error == 0 ? std::nullopt : Failure(std::strerror(error));
}

// The decoder says only that something is wrong. Called after it did, so that
// texts in order are looked at once.
std::size_t firstIllFormedUtf8(std::string_view bytes) {
    const auto* const units = reinterpret_cast<const std::uint8_t*>(bytes.data());
    std::size_t start = 0;
    while (start < bytes.size()) {
        std::size_t next = start;
        UChar32 character = 0;
        U8_NEXT(units, next, bytes.size(), character);
        if (character < 0) {
            break;
        }
        start = next;
    }
    return start;
}

// How many bytes the converter holds that it could not make a character of.
std::size_t heldBytes(UConverter* converter) {
    std::array<char, 16> held;
    auto count = static_cast<std::int8_t>(held.size());
    UErrorCode status = U_ZERO_ERROR;
    ucnv_getInvalidChars(converter, held.data(), &count, &status);
    return U_SUCCESS(status) ? static_cast<std::size_t>(count) : 0;
}

// The table is the one by which settings files are read, so that a word means
// the same in both. Without it nothing decodes: a script half read would be
// worse than none.
Decoding decodeCodePage932(std::string_view bytes) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(
        ucnv_open("ibm-943_P15A-2003", &status), &ucnv_close);
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &status);
    if (U_FAILURE(status)) {
        return {{}, 0};
    }
    // Every character takes at least as many bytes as units.
    Decoding result{std::u16string(bytes.size(), u'\0'), std::nullopt};
    char16_t* target = result.text.data();
    const char* source = bytes.data();
    ucnv_toUnicode(converter.get(), &target, target + bytes.size(), &source,
                   bytes.data() + bytes.size(), nullptr, true, &status);
    result.text.resize(static_cast<std::size_t>(target - result.text.data()));
    for (char16_t& unit : result.text) {
        unit = asciiControl(unit);
    }
    // The converter has read on into the bytes that it could not use.
    if (U_FAILURE(status)) {
        result.badOffset =
            static_cast<std::size_t>(source - bytes.data()) - heldBytes(converter.get());
    }
    return result;
}

} // namespace

std::vector<std::string> programArguments(int argc, const char* const* argv) {
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

std::string userLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* const value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return {};
}

bool isTerminal(OutputStream stream) {
    return ::isatty(descriptorOf(stream)) == 1;
}

std::size_t terminalColumns(OutputStream stream) {
    winsize size{};
    return ::ioctl(descriptorOf(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

Failure readFile(const std::string& path, std::string& bytes) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) {
        return systemFailure();
    }
    return closeAfter(descriptor, readAll(descriptor, bytes));
}

Failure readStandardInput(std::string& bytes) {
    return readAll(STDIN_FILENO, bytes);
}

Failure writeStream(OutputStream stream, std::string_view bytes) {
    return writeAll(descriptorOf(stream), bytes);
}

Failure replaceFile(const std::string& path, std::string_view bytes) {
    const std::string file = followLinks(path);
    struct stat status = {};
    if (::stat(file.c_str(), &status) != 0) {
        return replaceOrdinaryFile(file, bytes, modeOfNewFiles());
    }
    if (!S_ISREG(status.st_mode)) {
        return writeInPlace(file, bytes);
    }
    // Renaming asks for the folder's rights only; the file's own are meant.
    if (::access(file.c_str(), W_OK) != 0) {
        return systemFailure();
    }
    return replaceOrdinaryFile(file, bytes, status.st_mode & 07777);
}

Decoding decode(std::string_view bytes, CodePage page) {
    if (page == CodePage::cp932) {
        return decodeCodePage932(bytes);
    }
    if (std::optional<std::u16string> text = decodeUtf8(bytes)) {
        return {std::move(*text), std::nullopt};
    }
    const std::size_t end = firstIllFormedUtf8(bytes);
    return {decodeUtf8(bytes.substr(0, end)).value_or(std::u16string()), end};
}

Failure runThisProgram(const std::vector<std::string>& arguments, ProgramEnd& end) {
    // Closed in programs that are started meanwhile, or the pipe would not end
    // before they do.
    std::array<int, 2> pipe;
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        return systemFailure();
    }
    pid_t process = 0;
    const Failure failure = spawnThisProgram(arguments, pipe[1], process);
    ::close(pipe[1]);
    if (failure) {
        ::close(pipe[0]);
        return failure;
    }
    const Failure unread = closeAfter(pipe[0], readAll(pipe[0], end.messages));
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    end.exitCode = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return unread;
}

FilterLibrary::~FilterLibrary() {
    if (handle_ != nullptr) {
        ::dlclose(handle_);
    }
}

Failure FilterLibrary::open(const std::string& path) {
    // All symbols at once: one that lacks should be told here, not end the
    // program in the middle of a call.
    handle_ = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const symbol = handle_ != nullptr ? ::dlsym(handle_, "fil_process") : nullptr;
    if (symbol == nullptr) {
        const char* const message = ::dlerror();
        return std::string(message != nullptr ? message : "it has no fil_process");
    }
    function_ = reinterpret_cast<Function>(symbol);
    return std::nullopt;
}

} // namespace tvml::platform
