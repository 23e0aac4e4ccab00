// Watching files on Windows. Entry: FileWatch.
//
// The system tells that something in a folder changed, not what; the files'
// times and sizes say whether it was one of them.
#include "platform/host_services.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <utility>

#include "platform/windows_api.h"

namespace tvml::platform {
namespace {

constexpr DWORD kChanges = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME |
                           FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE |
                           FILE_NOTIFY_CHANGE_CREATION;

// Set by the console's handler, which the system calls in a thread of its own.
std::atomic<HANDLE> endRequest{nullptr};

BOOL WINAPI requestEnd(DWORD) {
    const HANDLE event = endRequest.load();
    return event != nullptr && SetEvent(event) != 0 ? TRUE : FALSE;
}

Failure systemFailure() {
    return "system error " + std::to_string(GetLastError());
}

// What tells two contents of a file apart without reading them; all zero for a
// file that is not there.
struct Stamp {
    ULONGLONG written = 0;
    ULONGLONG created = 0;
    ULONGLONG size = 0;
    bool operator==(const Stamp&) const = default;
};

ULONGLONG joined(DWORD high, DWORD low) {
    return (ULONGLONG{high} << 32) | low;
}

Stamp stampOf(const std::filesystem::path& file) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data) == 0) {
        return {};
    }
    return {joined(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime),
            joined(data.ftCreationTime.dwHighDateTime, data.ftCreationTime.dwLowDateTime),
            joined(data.nFileSizeHigh, data.nFileSizeLow)};
}

} // namespace

struct FileWatch::Watched {
    std::vector<std::filesystem::path> files;
    std::vector<Stamp> stamps;
    std::vector<HANDLE> handles; // the request to end, then the folders

    ~Watched() {
        SetConsoleCtrlHandler(requestEnd, FALSE);
        const HANDLE end = endRequest.exchange(nullptr);
        closeFolders(handles);
        if (end != nullptr) {
            CloseHandle(end);
        }
    }

    static void closeFolders(const std::vector<HANDLE>& all) {
        for (std::size_t i = 1; i < all.size(); ++i) {
            FindCloseChangeNotification(all[i]);
        }
    }

    // A missing folder would be made in the closest one above it.
    static HANDLE watchFolder(std::filesystem::path folder) {
        for (;;) {
            const HANDLE handle = FindFirstChangeNotificationW(folder.c_str(), FALSE, kChanges);
            if (handle != INVALID_HANDLE_VALUE || folder == folder.parent_path()) {
                return handle;
            }
            folder = folder.parent_path();
        }
    }

    std::vector<Stamp> currentStamps() const {
        std::vector<Stamp> current;
        std::ranges::transform(files, std::back_inserter(current), stampOf);
        return current;
    }

    // The new folders are watched before the stamps are taken, and these before
    // the old folders are let go, so that no change falls between.
    Failure watchAll() {
        std::vector<std::filesystem::path> folders;
        for (const std::filesystem::path& file : files) {
            folders.push_back(file.parent_path());
        }
        std::ranges::sort(folders);
        folders.erase(std::unique(folders.begin(), folders.end()), folders.end());
        std::vector<HANDLE> next{handles.front()};
        for (const std::filesystem::path& folder : folders) {
            const HANDLE handle = watchFolder(folder);
            if (handle == INVALID_HANDLE_VALUE) {
                const Failure failure = systemFailure();
                closeFolders(next);
                return failure;
            }
            next.push_back(handle);
        }
        stamps = currentStamps();
        closeFolders(std::exchange(handles, next));
        return std::nullopt;
    }
};

FileWatch::FileWatch() = default;
FileWatch::~FileWatch() = default;

Failure FileWatch::start(const std::vector<std::string>& files) {
    watched_ = std::make_unique<Watched>();
    for (const std::string& file : files) {
        std::error_code failed;
        watched_->files.push_back(std::filesystem::absolute(
            std::filesystem::path(std::u8string(file.begin(), file.end())), failed));
    }
    const HANDLE end = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (end == nullptr) {
        return systemFailure();
    }
    endRequest = end;
    watched_->handles.push_back(end);
    if (SetConsoleCtrlHandler(requestEnd, TRUE) == 0) {
        return systemFailure();
    }
    return watched_->watchAll();
}

FileWatch::Event FileWatch::wait(std::optional<std::chrono::milliseconds> time) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + time.value_or(std::chrono::milliseconds(0));
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        const DWORD wait =
            time.has_value() ? static_cast<DWORD>(std::max<long long>(0, left)) : INFINITE;
        std::vector<HANDLE>& handles = watched_->handles;
        const DWORD ready =
            WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), FALSE, wait);
        if (ready == WAIT_OBJECT_0) {
            return Event::ended;
        }
        if (ready == WAIT_TIMEOUT) {
            return Event::timedOut;
        }
        const std::size_t folder = ready - WAIT_OBJECT_0;
        const bool told = folder < handles.size() && FindNextChangeNotification(handles[folder]);
        if (watched_->currentStamps() != watched_->stamps || !told) {
            // What cannot be watched any more cannot be read either, and whoever
            // reads it reports that.
            watched_->watchAll();
            return Event::changed;
        }
    }
}

} // namespace tvml::platform
