// Putting a file in the place of another on POSIX systems. Entry: replaceFile.
//
// The new file has no name until it is complete, where the file system can do
// that: a program that is killed leaves nothing behind then. Where a name is
// needed before, requests to end wait until it is gone.
#include "platform/posix_io.h"

#include <array>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>

namespace tvml::platform {
namespace {

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

// The rights of a file that takes an old one's place, if there is one. It belongs
// to who runs the program, so it must not run as somebody that the old one named.
mode_t modeFor(const struct stat* old, int descriptor) {
    if (old == nullptr) {
        return modeOfNewFiles();
    }
    mode_t mode = old->st_mode & 07777;
    struct stat created = {};
    if (::fstat(descriptor, &created) != 0 || created.st_uid != old->st_uid) {
        mode &= ~static_cast<mode_t>(S_ISUID);
    }
    if (created.st_gid != old->st_gid) {
        mode &= ~static_cast<mode_t>(S_ISGID);
    }
    return mode;
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

// Holds off the requests to end of the terminal and of other programs. They come
// as soon as the object is gone.
class EndingHeldOff {
public:
    EndingHeldOff() {
        sigset_t ending;
        sigemptyset(&ending);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
            sigaddset(&ending, signal);
        }
        ::pthread_sigmask(SIG_BLOCK, &ending, &before_);
    }
    ~EndingHeldOff() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    EndingHeldOff(const EndingHeldOff&) = delete;
    EndingHeldOff& operator=(const EndingHeldOff&) = delete;

private:
    sigset_t before_{};
};

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

// Where links lead whose last one leads nowhere yet: a file is to be made there.
// None when they lead in a circle.
std::optional<std::string> followLinks(std::string path) {
    constexpr int kMostLinks = 40; // as the system counts
    std::array<char, PATH_MAX> target;
    for (int links = 0; links <= kMostLinks; ++links) {
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length < 0) {
            return path;
        }
        const std::string next(target.data(), static_cast<std::size_t>(length));
        path = next.starts_with('/') ? next : folderOf(path) + "/" + next;
    }
    errno = ELOOP;
    return std::nullopt;
}

// The file's own name.
std::string realName(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr),
                                                           &std::free);
    return real != nullptr ? std::string(real.get()) : path;
}

// Gives a file without a name its first one; whether it went well.
bool linkTo(int descriptor, const std::string& path) {
    std::string open = "/proc/self/fd/";
    open += std::to_string(descriptor);
    return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

Failure renameTo(const std::string& path, const std::string& temporary) {
    if (::rename(temporary.c_str(), path.c_str()) == 0) {
        return std::nullopt;
    }
    Failure failure = systemFailure();
    ::unlink(temporary.c_str());
    return failure;
}

// In the same folder, because only there one step can move it.
Failure replaceByTemporary(const std::string& path, std::string_view bytes,
                           const struct stat* old) {
    const EndingHeldOff heldOff;
    std::string temporary = path + ".XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return systemFailure();
    }
    const Failure failure =
        closeAfter(descriptor, writeDurably(descriptor, bytes, modeFor(old, descriptor)));
    if (failure) {
        ::unlink(temporary.c_str());
        return failure;
    }
    return renameTo(path, temporary);
}

// Taking the name is the one step in which the old file gives way, so that nobody
// ever finds half a file under it. A link cannot replace a file: that takes a
// second name.
Failure replaceOrdinaryFile(const std::string& path, std::string_view bytes,
                            const struct stat* old) {
    const int file = ::open(folderOf(path).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
    if (file < 0) {
        return replaceByTemporary(path, bytes, old); // not every file system has such files
    }
    if (Failure failure = writeDurably(file, bytes, modeFor(old, file))) {
        return closeAfter(file, std::move(failure));
    }
    const EndingHeldOff heldOff;
    if (old == nullptr && linkTo(file, path)) {
        return closeAfter(file, std::nullopt);
    }
    std::string temporary = path;
    temporary.append(".").append(std::to_string(::getpid()));
    if (!linkTo(file, temporary)) {
        ::close(file);
        return replaceByTemporary(path, bytes, old); // nor links, or /proc
    }
    return closeAfter(file, renameTo(path, temporary));
}

} // namespace

Failure replaceFile(const std::string& path, std::string_view bytes) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        const std::optional<std::string> file = followLinks(path);
        return file.has_value() ? replaceOrdinaryFile(*file, bytes, nullptr) : systemFailure();
    }
    if (!S_ISREG(status.st_mode)) {
        return writeInPlace(path, bytes);
    }
    // Renaming asks for the folder's rights only; the file's own are meant.
    if (::access(path.c_str(), W_OK) != 0) {
        return systemFailure();
    }
    return replaceOrdinaryFile(realName(path), bytes, &status);
}

} // namespace tvml::platform
