// Entry: mediaIn.
#include "host/media_folder.h"

#include <filesystem>
#include <system_error>

#include "host/host_error.h"
#include "host/language.h"

namespace tvml::host {
namespace {

namespace fs = std::filesystem;

// A folder of a whole disk is a slip; what lies behind these files is not looked at.
constexpr std::size_t kMostFiles = 200'000;

void addFiles(const std::string& folder, std::vector<std::u16string>& paths) {
    const fs::path root(std::u8string(folder.begin(), folder.end()));
    std::error_code failure;
    fs::recursive_directory_iterator entry(root, fs::directory_options::skip_permission_denied,
                                           failure);
    if (failure) {
        throw inputOrOutputError(folder, {}, Message::file_read, {systemText(failure.message())});
    }
    while (entry != fs::recursive_directory_iterator() && paths.size() < kMostFiles) {
        const std::u8string path = entry->path().lexically_relative(root).generic_u8string();
        if (!entry->is_directory(failure)) {
            paths.push_back(utf16({reinterpret_cast<const char*>(path.data()), path.size()}));
        }
        entry.increment(failure);
        if (failure) {
            break;
        }
    }
}

} // namespace

std::vector<std::u16string> filesIn(const std::string& folder) {
    std::vector<std::u16string> paths;
    try {
        addFiles(folder, paths);
    } catch (const HostError&) {
        paths.clear();
    }
    return paths;
}

std::optional<MediaNames> mediaIn(const std::vector<std::string>& folders) {
    if (folders.empty()) {
        return std::nullopt;
    }
    std::vector<std::u16string> paths;
    for (const std::string& folder : folders) {
        addFiles(folder, paths);
    }
    return MediaNames(std::move(paths));
}

} // namespace tvml::host
