// Entries: the functions of conversing.h, on Windows.
#include "platform/conversing.h"

#include <array>

#include "platform/windows_api.h"

namespace tvml::platform {
namespace {

constexpr DWORD kPause = 10; // between two looks into a pipe, in milliseconds

// A pipe cannot be waited for; files and terminals are read as they come.
bool hasInput(HANDLE input, std::chrono::milliseconds time) {
    DWORD there = 0;
    const auto latest = std::chrono::steady_clock::now() + time;
    while (GetFileType(input) == FILE_TYPE_PIPE &&
           PeekNamedPipe(input, nullptr, 0, nullptr, &there, nullptr) && there == 0) {
        if (std::chrono::steady_clock::now() >= latest) {
            return false;
        }
        Sleep(kPause);
    }
    return true;
}

std::wstring wideOf(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                            static_cast<int>(wide.size()))));
    return wide;
}

// As CommandLineToArgvW takes words apart.
void appendWord(std::wstring& line, const std::wstring& word) {
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

} // namespace

InputEvent readSomeInput(std::string& bytes, std::chrono::milliseconds time) {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    if (!hasInput(input, time)) {
        return InputEvent::timedOut;
    }
    std::array<char, std::size_t{1} << 16> piece;
    DWORD got = 0;
    if (!ReadFile(input, piece.data(), piece.size(), &got, nullptr) || got == 0) {
        return InputEvent::ended;
    }
    bytes.append(piece.data(), got);
    return InputEvent::bytes;
}

bool isRunning(std::int64_t process) {
    const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(process));
    if (handle == nullptr) {
        return GetLastError() == ERROR_ACCESS_DENIED;
    }
    const bool runs = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
    CloseHandle(handle);
    return runs;
}

Failure startProgram(const std::vector<std::string>& command) {
    std::wstring line;
    for (const std::string& word : command) {
        appendWord(line, wideOf(word));
    }
    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr,
                        nullptr, &start, &started)) {
        return "system error " + std::to_string(GetLastError());
    }
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return std::nullopt;
}

} // namespace tvml::platform
