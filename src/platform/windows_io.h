// Texts, failures and handles of Windows, for the implementations of
// host_services.h. wchar_t is known to these alone.
#ifndef TVML_PLATFORM_WINDOWS_IO_H
#define TVML_PLATFORM_WINDOWS_IO_H

#include "platform/host_services.h"

#include <array>
#include <climits>
#include <new>

#include "platform/windows_api.h"

namespace tvml::platform {

// The system's lengths are signed 32-bit numbers.
inline int systemLength(std::size_t length) {
    if (length > INT_MAX) {
        throw std::bad_alloc();
    }
    return static_cast<int>(length);
}

// Of UTF-8 first of all, for texts that go to the system; what is none becomes
// U+FFFD there.
inline std::wstring toWide(std::string_view bytes, UINT page = CP_UTF8) {
    std::wstring wide(bytes.size(), L'\0');
    const int length = MultiByteToWideChar(page, 0, bytes.data(), systemLength(bytes.size()),
                                           wide.data(), systemLength(wide.size()));
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

// A unit takes up to three bytes.
inline std::string toNarrow(std::wstring_view wide) {
    std::string utf8(wide.size() * 3, '\0');
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), systemLength(wide.size()), utf8.data(),
                            systemLength(utf8.size()), nullptr, nullptr);
    utf8.resize(static_cast<std::size_t>(length));
    return utf8;
}

// What the last call that failed said, in the user's language, without the line
// end and the stop that the system writes after it.
inline Failure systemFailure() {
    std::array<wchar_t, 512> text;
    const DWORD error = GetLastError();
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                  nullptr, error, 0, text.data(), text.size(), nullptr);
    while (length > 0 &&
           std::wstring_view(L"\r\n .\u3002").find(text[length - 1]) != std::wstring::npos) {
        --length;
    }
    return length > 0 ? toNarrow({text.data(), length}) : "system error " + std::to_string(error);
}

// An open file, or none. Closed early where a later step wants the file free.
class Handle {
public:
    explicit Handle(HANDLE value) : value_(value) {}
    ~Handle() { close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    HANDLE value() const { return value_; }
    bool good() const { return value_ != INVALID_HANDLE_VALUE; }
    void set(HANDLE value) {
        close();
        value_ = value;
    }
    void close() {
        if (good()) {
            CloseHandle(value_);
            value_ = INVALID_HANDLE_VALUE;
        }
    }

private:
    HANDLE value_;
};

} // namespace tvml::platform

#endif
