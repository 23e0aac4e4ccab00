// What these tests read: files of the source tree, all of them UTF-8, and the
// vocabulary that is shipped.
#ifndef TVML_TESTS_EXAMPLES_REPOSITORY_FILES_H
#define TVML_TESTS_EXAMPLES_REPOSITORY_FILES_H

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/platform.h"
#include "vocabulary/keyword_table.h"

namespace tvml {

inline std::string readRepositoryFile(const std::string& name) {
    std::ifstream file(std::filesystem::path(TVML_SOURCE_DIR) / name, std::ios::binary);
    if (!file) {
        throw std::runtime_error(name + " cannot be read");
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

// Paths decode UTF-8 strictly on every platform, which nothing else in the
// standard library does.
inline std::u16string utf16Of(std::string_view utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).u16string();
}

inline std::string utf8Of(std::u16string_view text) {
    return platform::system().toUtf8(text);
}

inline const KeywordTable& shippedWords() {
    static const KeywordTable table = [] {
        KeywordTable loaded;
        loaded.load(platform::system());
        return loaded;
    }();
    return table;
}

} // namespace tvml

#endif
