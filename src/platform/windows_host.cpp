// The command-line host's services on Windows: all of host_services.h but what
// windows_watch.cpp and windows_worker.cpp hold.
//
// The wide forms of the system's calls throughout: the others cannot name every
// file. wchar_t is known here and goes no further.
#include "platform/host_services.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/windows_io.h"

#include <shellapi.h>

namespace tvml::platform {
namespace {

constexpr UINT kCodePage932 = 932;

HANDLE handleOf(OutputStream stream) {
    return GetStdHandle(stream == OutputStream::output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

Failure readAll(HANDLE handle, std::string& bytes) {
    std::array<char, std::size_t{1} << 16> piece;
    bytes.clear();
    for (;;) {
        DWORD got = 0;
        if (!ReadFile(handle, piece.data(), piece.size(), &got, nullptr)) {
            // The end of a pipe comes as an error.
            return GetLastError() == ERROR_BROKEN_PIPE ? std::nullopt : systemFailure();
        }
        if (got == 0) {
            return std::nullopt;
        }
        bytes.append(piece.data(), got);
    }
}

// In pieces: some devices refuse a large write that they could do in parts.
Failure writeAll(HANDLE handle, std::string_view bytes) {
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto length = static_cast<DWORD>(std::min(bytes.size(), kPiece));
        if (!WriteFile(handle, bytes.data(), length, &written, nullptr)) {
            return systemFailure();
        }
        bytes.remove_prefix(written);
    }
    return std::nullopt;
}

// A console shows bytes in the code page of its user, which is not UTF-8.
Failure writeConsole(HANDLE console, std::string_view bytes) {
    constexpr std::size_t kPiece = 8192;
    const std::wstring text = toWide(bytes);
    std::wstring_view rest = text;
    while (!rest.empty()) {
        DWORD written = 0;
        const auto length = static_cast<DWORD>(std::min(rest.size(), kPiece));
        if (!WriteConsoleW(console, rest.data(), length, &written, nullptr)) {
            return systemFailure();
        }
        rest.remove_prefix(written);
    }
    return std::nullopt;
}

// The bytes are on the disk before the file gets its name: a machine that stops
// must not leave an empty file in the old one's place.
Failure writeNewFile(const std::wstring& path, std::string_view bytes) {
    Handle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.good()) {
        return systemFailure();
    }
    if (Failure failure = writeAll(file.value(), bytes)) {
        return failure;
    }
    return FlushFileBuffers(file.value()) ? std::nullopt : systemFailure();
}

// The file that links lead to; `path` itself when there is none yet.
std::wstring followLinks(HANDLE file, const std::wstring& path) {
    std::wstring real(32768, L'\0');
    const DWORD length =
        GetFinalPathNameByHandleW(file, real.data(), static_cast<DWORD>(real.size()), 0);
    real.resize(length < real.size() ? length : 0);
    return real.empty() ? path : real;
}

// Taken while a file has a temporary name. A request to end comes in a thread of
// its own; it waits there until the name is gone, and is then left to the system.
SRWLOCK renaming = SRWLOCK_INIT;

BOOL WINAPI waitForRenaming(DWORD) {
    AcquireSRWLockExclusive(&renaming);
    ReleaseSRWLockExclusive(&renaming);
    return FALSE;
}

class EndingHeldOff {
public:
    EndingHeldOff() {
        AcquireSRWLockExclusive(&renaming);
        SetConsoleCtrlHandler(waitForRenaming, TRUE);
    }
    ~EndingHeldOff() {
        ReleaseSRWLockExclusive(&renaming);
        SetConsoleCtrlHandler(waitForRenaming, FALSE);
    }
    EndingHeldOff(const EndingHeldOff&) = delete;
    EndingHeldOff& operator=(const EndingHeldOff&) = delete;
};

// The renaming is the one step in which the old file gives way. It fails, and
// the old file stays, when that is write-protected or open elsewhere.
Failure replaceOrdinaryFile(const std::wstring& path, std::string_view bytes) {
    const EndingHeldOff heldOff;
    // In the same folder, because only there one step can move it.
    const std::wstring temporary = path + L"." + std::to_wstring(GetCurrentProcessId()) + L".tmp";
    Failure failure = writeNewFile(temporary, bytes);
    if (!failure && !MoveFileExW(temporary.c_str(), path.c_str(),
                                 MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        failure = systemFailure();
    }
    if (failure) {
        DeleteFileW(temporary.c_str());
    }
    return failure;
}

// All or nothing: the system gives no text at all when some bytes are wrong.
Decoding decodeStrictly(std::string_view bytes, UINT page) {
    if (bytes.empty()) {
        return {};
    }
    // A character never has more units than bytes.
    Decoding result{std::u16string(bytes.size(), u'\0'), std::nullopt};
    auto* const wide = reinterpret_cast<wchar_t*>(result.text.data());
    const int length =
        MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), systemLength(bytes.size()),
                            wide, systemLength(bytes.size()));
    result.text.resize(static_cast<std::size_t>(length));
    if (length == 0) {
        result.badOffset = 0;
    }
    return result;
}

// Bytes of the character that starts here, as its first byte says.
std::size_t characterLength(unsigned char first, UINT page) {
    if (page == kCodePage932) {
        return IsDBCSLeadByteEx(page, first) ? 2 : 1;
    }
    if (first < 0xC0) {
        return 1;
    }
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// The system says that bytes do not decode but not where, so this decodes one
// character after the other until one fails.
std::size_t firstUndecodable(std::string_view bytes, UINT page) {
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::string_view character =
            bytes.substr(at, characterLength(static_cast<unsigned char>(bytes[at]), page));
        if (decodeStrictly(character, page).badOffset) {
            break;
        }
        at += character.size();
    }
    return at;
}

// An odd last byte is half a unit that got lost.
std::u16string decodeUtf16(std::string_view bytes, bool swapped) {
    std::u16string text(bytes.size() / 2, u'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * 2);
    for (char16_t& unit : text) {
        unit = swapped ? static_cast<char16_t>((unit << 8) | (unit >> 8)) : unit;
    }
    return text;
}

// As the ini service does it: what has no mark is in the machine's code page.
std::u16string decodeSettings(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        return decodeUtf16(bytes.substr(2), bytes.starts_with("\xFE"));
    }
    const bool marked = bytes.starts_with("\xEF\xBB\xBF");
    const std::wstring text = marked ? toWide(bytes.substr(3)) : toWide(bytes, CP_ACP);
    return {text.begin(), text.end()};
}

} // namespace

// The C library's arguments are in the user's code page and have lost whatever
// it cannot say, so the command line is split anew.
std::vector<std::string> programArguments(int, const char* const*) {
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; words != nullptr && i < count; ++i) {
        arguments.push_back(toNarrow(words[i]));
    }
    LocalFree(words);
    return arguments;
}

// The variables of other systems come before the language of the user interface:
// who sets them here means programs such as this one.
std::string userLanguage() {
    for (const wchar_t* name : {L"LC_ALL", L"LC_MESSAGES", L"LANG"}) {
        std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> value;
        const DWORD length = GetEnvironmentVariableW(name, value.data(), value.size());
        if (length > 0 && length < value.size()) {
            return toNarrow({value.data(), length});
        }
    }
    constexpr LANGID kJapanese = 0x11;
    return PRIMARYLANGID(GetUserDefaultUILanguage()) == kJapanese ? "ja" : "en";
}

bool isTerminal(OutputStream stream) {
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) != 0;
}

std::size_t terminalColumns(OutputStream stream) {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    const bool known = GetConsoleScreenBufferInfo(handleOf(stream), &info) != 0;
    return known ? static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1) : 0;
}

Failure readFile(const std::string& path, std::string& bytes) {
    const Handle file(CreateFileW(toWide(path).c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file.good() ? readAll(file.value(), bytes) : systemFailure();
}

Failure readStandardInput(std::string& bytes) {
    return readAll(GetStdHandle(STD_INPUT_HANDLE), bytes);
}

std::u16string readSettings(const std::string& path) {
    std::string bytes;
    return readFile(path, bytes) ? std::u16string() : decodeSettings(bytes);
}

Failure writeStream(OutputStream stream, std::string_view bytes) {
    return isTerminal(stream) ? writeConsole(handleOf(stream), bytes)
                              : writeAll(handleOf(stream), bytes);
}

Failure replaceFile(const std::string& path, std::string_view bytes) {
    std::wstring file = toWide(path);
    // What a link leads to is made when it is not there yet, and then replaced: the
    // link would give way otherwise.
    const DWORD attributes = GetFileAttributesW(file.c_str());
    const bool isLink =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    // Others may have the file open meanwhile: this only asks what the name leads to.
    Handle existing(CreateFileW(
        file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, isLink ? OPEN_ALWAYS : OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (existing.good()) {
        if (GetFileType(existing.value()) != FILE_TYPE_DISK) {
            return writeAll(existing.value(), bytes);
        }
        file = followLinks(existing.value(), file);
        existing.close();
    } else if (GetLastError() != ERROR_FILE_NOT_FOUND) {
        return systemFailure();
    }
    return replaceOrdinaryFile(file, bytes);
}

Decoding decode(std::string_view bytes, CodePage page) {
    const UINT number = page == CodePage::cp932 ? kCodePage932 : CP_UTF8;
    Decoding result = decodeStrictly(bytes, number);
    if (result.badOffset) {
        const std::size_t end = firstUndecodable(bytes, number);
        result = decodeStrictly(bytes.substr(0, end), number);
        result.badOffset = end;
    }
    return result;
}

FilterLibrary::~FilterLibrary() {
    if (handle_ != nullptr) {
        FreeLibrary(static_cast<HMODULE>(handle_));
    }
}

Failure FilterLibrary::open(const std::string& path) {
    // Libraries that it needs are looked for in its own folder, too.
    const HMODULE module =
        LoadLibraryExW(toWide(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    handle_ = module;
    const FARPROC symbol = module != nullptr ? GetProcAddress(module, "fil_process") : nullptr;
    if (symbol == nullptr) {
        return systemFailure();
    }
    // By its bytes: the compiler rightly warns of a cast between functions.
    static_assert(sizeof(function_) == sizeof(symbol));
    std::memcpy(&function_, &symbol, sizeof(symbol));
    return std::nullopt;
}

} // namespace tvml::platform
