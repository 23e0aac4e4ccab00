// Watching files on Linux. Entry: FileWatch.
//
// The kernel tells of changes in folders (inotify) and of signals (signalfd), so
// that waiting costs nothing.
#include "platform/posix_io.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <map>
#include <set>
#include <utility>

#include <poll.h>
#include <sys/inotify.h>
#include <sys/signalfd.h>

namespace tvml::platform {
namespace {

// All that can give a file of a folder another content, and the end of the
// folder itself.
constexpr std::uint32_t kChanges = IN_MODIFY | IN_CLOSE_WRITE | IN_CREATE | IN_DELETE |
                                   IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF |
                                   IN_ONLYDIR;
constexpr std::uint32_t kFolderGone = IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED | IN_Q_OVERFLOW;

// A folder and a name in it; the root has no name.
struct Entry {
    std::string folder;
    std::string name;
};

Entry entryOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return {".", path};
    }
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

sigset_t endingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

} // namespace

struct FileWatch::Watched {
    std::vector<std::string> files;
    int changes = -1;
    int signals = -1;
    sigset_t maskBefore{};
    std::map<int, std::set<std::string, std::less<>>> names; // that count, by folder

    ~Watched() {
        ::close(changes);
        if (signals >= 0) {
            // A signal that is still pending would end the program as soon as
            // the old mask is back.
            signalfd_siginfo pending;
            while (::read(signals, &pending, sizeof(pending)) > 0) {
            }
            ::close(signals);
            ::sigprocmask(SIG_SETMASK, &maskBefore, nullptr);
        }
    }

    Failure openSignals() {
        const sigset_t ending = endingSignals();
        if (::sigprocmask(SIG_BLOCK, &ending, &maskBefore) != 0) {
            return systemFailure();
        }
        signals = ::signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
        return signals < 0 ? systemFailure() : std::nullopt;
    }

    // Watches all folders on the way to a path for the next name of it: any of them
    // may be exchanged for another, or be missing yet. Those above the first one that
    // can be watched need not allow it.
    Failure watchEntry(const std::string& path) {
        Failure failure = std::string();
        for (Entry entry = entryOf(path);; entry = entryOf(entry.folder)) {
            const int folder = ::inotify_add_watch(changes, entry.folder.c_str(), kChanges);
            if (folder >= 0) {
                names[folder].insert(entry.name);
                failure = std::nullopt;
            } else if (failure.has_value()) {
                failure = systemFailure();
                if (errno != ENOENT && errno != ENOTDIR) {
                    return failure;
                }
            }
            if (entry.folder == "/" || entry.folder == ".") {
                return failure;
            }
        }
    }

    // To be done anew after every change: other folders may be there now, and
    // links may lead elsewhere.
    Failure watchAll() {
        names.clear();
        for (const std::string& file : files) {
            Failure failure = watchEntry(file);
            // What a link leads to changes in a folder of its own.
            const std::unique_ptr<char, decltype(&std::free)> real(
                ::realpath(file.c_str(), nullptr), &std::free);
            if (!failure && real != nullptr) {
                failure = watchEntry(real.get());
            }
            if (failure) {
                return failure;
            }
        }
        return std::nullopt;
    }

    bool concernsFile(const inotify_event& event) const {
        if ((event.mask & IN_Q_OVERFLOW) != 0) {
            return true;
        }
        const auto folder = names.find(event.wd);
        return folder != names.end() &&
               ((event.mask & kFolderGone) != 0 ||
                (event.len > 0 && folder->second.contains(std::string_view(event.name))));
    }

    // Reads what the kernel has to tell; whether any of it concerns a file.
    bool readChanges() const {
        alignas(inotify_event) std::array<char, 16384> events;
        const ssize_t got = ::read(changes, events.data(), events.size());
        bool changed = false;
        for (std::size_t at = 0; got > 0 && at < static_cast<std::size_t>(got);) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
            changed = changed || concernsFile(*event);
            at += sizeof(inotify_event) + event->len;
        }
        return changed;
    }
};

FileWatch::FileWatch() = default;
FileWatch::~FileWatch() = default;

Failure FileWatch::start(const std::vector<std::string>& files) {
    watched_ = std::make_unique<Watched>();
    watched_->files = files;
    watched_->changes = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (watched_->changes < 0) {
        return systemFailure();
    }
    if (Failure failure = watched_->watchAll()) {
        return failure;
    }
    return watched_->openSignals();
}

FileWatch::Event FileWatch::wait(std::optional<std::chrono::milliseconds> time) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + time.value_or(std::chrono::milliseconds(0));
    for (;;) {
        std::array<pollfd, 2> sources{
            {{watched_->signals, POLLIN, 0}, {watched_->changes, POLLIN, 0}}};
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        const int wait = time.has_value() ? std::max(0, static_cast<int>(left.count())) : -1;
        const int ready = ::poll(sources.data(), sources.size(), wait);
        if (ready > 0 && sources[0].revents != 0) {
            return Event::ended;
        }
        if (ready > 0 && watched_->readChanges()) {
            // No event says that a folder cannot be watched any more. Its files
            // cannot be read then either, and whoever reads them reports that.
            watched_->watchAll();
            return Event::changed;
        }
        if (ready == 0 || (time.has_value() && Clock::now() >= end)) {
            return Event::timedOut;
        }
    }
}

} // namespace tvml::platform
