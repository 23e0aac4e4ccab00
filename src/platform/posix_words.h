// Arguments as the system's calls want them.
#ifndef TVML_PLATFORM_POSIX_WORDS_H
#define TVML_PLATFORM_POSIX_WORDS_H

#include <string>
#include <vector>

namespace tvml::platform {

// Pointers to the words, which must stay where they are, and a null behind them.
inline std::vector<char*> pointersTo(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace tvml::platform

#endif
