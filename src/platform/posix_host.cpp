// The command-line host's services on POSIX systems: all of host_services.h but
// what posix_replace.cpp, posix_watch.cpp and posix_worker.cpp hold.
//
// The system's calls are used as they are rather than the streams of C++, which
// do not say why something failed.
#include "platform/host_services.h"

#include "platform/decoding.h"
#include "platform/posix_io.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <unicode/ucnv.h>
#include <unicode/utf8.h>

namespace tvml::platform {
namespace {

int descriptorOf(OutputStream stream) {
    return stream == OutputStream::output ? STDOUT_FILENO : STDERR_FILENO;
}

// Pipes and terminals give what they have, so the size is known at the end only.
Failure readAll(int descriptor, std::string& bytes) {
    std::array<char, std::size_t{1} << 13> piece; // the stack may be small
    bytes.clear();
    for (;;) {
        const ssize_t got = ::read(descriptor, piece.data(), piece.size());
        if (got == 0) {
            return std::nullopt;
        }
        if (got > 0) {
            bytes.append(piece.data(), static_cast<std::size_t>(got));
        } else if (errno != EINTR) {
            return systemFailure();
        }
    }
}

// The decoder says only that something is wrong. Called after it did, so that
// texts in order are looked at once.
std::size_t firstIllFormedUtf8(std::string_view bytes) {
    const auto* const units = reinterpret_cast<const std::uint8_t*>(bytes.data());
    std::size_t start = 0;
    while (start < bytes.size()) {
        std::size_t next = start;
        UChar32 character = 0;
        U8_NEXT(units, next, bytes.size(), character);
        if (character < 0) {
            break;
        }
        start = next;
    }
    return start;
}

// How many bytes the converter holds that it could not make a character of.
std::size_t heldBytes(UConverter* converter) {
    std::array<char, 16> held;
    auto count = static_cast<std::int8_t>(held.size());
    UErrorCode status = U_ZERO_ERROR;
    ucnv_getInvalidChars(converter, held.data(), &count, &status);
    return U_SUCCESS(status) ? static_cast<std::size_t>(count) : 0;
}

// The table is the one by which settings files are read, so that a word means
// the same in both. Without it nothing decodes: a script half read would be
// worse than none.
Decoding decodeCodePage932(std::string_view bytes) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(
        ucnv_open("ibm-943_P15A-2003", &status), &ucnv_close);
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &status);
    if (U_FAILURE(status)) {
        return {{}, 0};
    }
    // Every character takes at least as many bytes as units.
    Decoding result{std::u16string(bytes.size(), u'\0'), std::nullopt};
    char16_t* target = result.text.data();
    const char* source = bytes.data();
    ucnv_toUnicode(converter.get(), &target, target + bytes.size(), &source,
                   bytes.data() + bytes.size(), nullptr, true, &status);
    result.text.resize(static_cast<std::size_t>(target - result.text.data()));
    for (char16_t& unit : result.text) {
        unit = asciiControl(unit);
    }
    // The converter has read on into the bytes that it could not use.
    if (U_FAILURE(status)) {
        result.badOffset =
            static_cast<std::size_t>(source - bytes.data()) - heldBytes(converter.get());
    }
    return result;
}

} // namespace

std::vector<std::string> programArguments(int argc, const char* const* argv) {
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

std::string userLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* const value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return {};
}

bool isTerminal(OutputStream stream) {
    return ::isatty(descriptorOf(stream)) == 1;
}

std::size_t terminalColumns(OutputStream stream) {
    winsize size{};
    return ::ioctl(descriptorOf(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

Failure readFile(const std::string& path, std::string& bytes) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) {
        return systemFailure();
    }
    return closeAfter(descriptor, readAll(descriptor, bytes));
}

Failure readStandardInput(std::string& bytes) {
    return readAll(STDIN_FILENO, bytes);
}

Failure writeStream(OutputStream stream, std::string_view bytes) {
    return writeAll(descriptorOf(stream), bytes);
}

Decoding decode(std::string_view bytes, CodePage page) {
    if (page == CodePage::cp932) {
        return decodeCodePage932(bytes);
    }
    if (std::optional<std::u16string> text = decodeUtf8(bytes)) {
        return {std::move(*text), std::nullopt};
    }
    const std::size_t end = firstIllFormedUtf8(bytes);
    return {decodeUtf8(bytes.substr(0, end)).value_or(std::u16string()), end};
}

FilterLibrary::~FilterLibrary() {
    if (handle_ != nullptr) {
        ::dlclose(handle_);
    }
}

Failure FilterLibrary::open(const std::string& path) {
    // All symbols at once: one that lacks should be told here, not end the
    // program in the middle of a call.
    handle_ = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const symbol = handle_ != nullptr ? ::dlsym(handle_, "fil_process") : nullptr;
    if (symbol == nullptr) {
        const char* const message = ::dlerror();
        return std::string(message != nullptr ? message : "it has no fil_process");
    }
    function_ = reinterpret_cast<Function>(symbol);
    return std::nullopt;
}

} // namespace tvml::platform
