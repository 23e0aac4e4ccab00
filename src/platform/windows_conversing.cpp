// Entries: the functions of conversing.h, on Windows.
#include "platform/conversing.h"

#include <array>

#include "platform/windows_api.h"
#include "platform/windows_io.h"
#include "platform/windows_words.h"

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
        appendQuoted(line, toWide(word));
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
