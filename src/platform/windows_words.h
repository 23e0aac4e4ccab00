// Command lines as programs take them apart again.
#ifndef TVML_PLATFORM_WINDOWS_WORDS_H
#define TVML_PLATFORM_WINDOWS_WORDS_H

#include <string>

namespace tvml::platform {

// Adds what CommandLineToArgvW splits off as one word: quotes and the backslashes
// in front of them are marked with backslashes.
inline void appendQuoted(std::wstring& line, const std::wstring& word) {
    line += line.empty() ? L"\"" : L" \"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : word) {
        backslashes = unit == L'\\' ? backslashes + 1 : backslashes;
        if (unit != L'\\') {
            line.append(unit == L'"' ? backslashes + 1 : 0, L'\\');
            backslashes = 0;
        }
        line += unit;
    }
    line.append(backslashes, L'\\').append(L"\"");
}

} // namespace tvml::platform

#endif
