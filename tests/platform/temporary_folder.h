// A folder of its own for one test, gone with it.
#ifndef TVML_TESTS_PLATFORM_TEMPORARY_FOLDER_H
#define TVML_TESTS_PLATFORM_TEMPORARY_FOLDER_H

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

namespace tvml::platform {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() / ("tvml-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
        path_.make_preferred();
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    std::u16string write(const char* name, std::string_view bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
        return (path_ / name).u16string();
    }

private:
    std::filesystem::path path_;
};

} // namespace tvml::platform

#endif
