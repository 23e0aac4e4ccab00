// The operating system on POSIX platforms. Entry: system().
#include "platform/decoding.h"
#include "platform/host_services.h"
#include "platform/ini_text.h"
#include "platform/platform.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <ctime>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <unicode/ustring.h>
#include <unicode/utf16.h>

namespace tvml::platform {
namespace {

// Settings files hold a few hundred short words; what is larger than this is
// no settings file, and reading it at every conversion would stop the host.
constexpr off_t kLargestIniFile = off_t{16} << 20;

constexpr char32_t kReplacementCharacter = U'\uFFFD';

// An open file, or none when the value is negative.
class Descriptor {
public:
    explicit Descriptor(int value) : value_(value) {}
    ~Descriptor() {
        if (value_ >= 0) {
            ::close(value_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int value() const { return value_; }

private:
    int value_;
};

bool isIniFile(const struct stat& status) {
    return S_ISREG(status.st_mode) && status.st_size <= kLargestIniFile;
}

// As many bytes as the file has, up to bytes.size(); none when reading fails,
// because half a vocabulary would look like a whole one.
std::size_t readBytes(int descriptor, std::span<char> bytes) {
    std::size_t count = 0;
    while (count < bytes.size()) {
        const ssize_t got = ::read(descriptor, bytes.data() + count, bytes.size() - count);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            return 0;
        }
        if (got == 0) {
            break;
        }
        count += static_cast<std::size_t>(got);
    }
    return count;
}

// What the name leads to is asked before it is opened, because opening alone can
// disturb a device, and again afterwards, because the name may lead to another
// file by then.
std::string readIniFile(const std::string& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0 || !isIniFile(status)) {
        return {};
    }
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (file.value() < 0 || ::fstat(file.value(), &status) != 0 || !isIniFile(status)) {
        return {};
    }
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    bytes.resize(readBytes(file.value(), bytes));
    return bytes;
}

// A file that cannot be had is a text without entries: every read then gives
// its default.
class PosixIniFile final : public IniFile {
public:
    // `name` is none when the path is one that no file can have.
    explicit PosixIniFile(std::optional<std::string> name)
        : name_(std::move(name)), bytes_(read()), text_(decodeSettings(bytes_)) {}

    std::size_t readString(std::u16string_view section, std::u16string_view key,
                           std::u16string_view defaultText,
                           std::span<char16_t> buffer) const override {
        return text_.readString(section, key, defaultText, buffer);
    }

    // Reading and comparing takes a small part of the time of decoding and
    // indexing. Times of files are too coarse to be trusted.
    bool isCurrent() const override { return read() == bytes_; }

private:
    std::string read() const { return name_ ? readIniFile(*name_) : std::string(); }

    std::optional<std::string> name_;
    std::string bytes_;
    IniText text_;
};

// `text` is a piece of at most a third of the buffer, as a unit takes up to
// three bytes.
void appendUtf8(std::u16string_view text, std::string& result) {
    std::array<char, 4096> bytes;
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8WithSub(bytes.data(), static_cast<std::int32_t>(bytes.size()), &length, text.data(),
                       static_cast<std::int32_t>(text.size()), kReplacementCharacter, nullptr,
                       &status);
    result.append(bytes.data(), static_cast<std::size_t>(length));
}

// A path is taken exactly or not at all: a replaced or cut name would be the
// name of another file.
std::optional<std::string> exactPath(const std::u16string& path, const std::string& utf8) {
    if (path.find(u'\0') != path.npos || decodeUtf8(utf8) != path) {
        return std::nullopt;
    }
    return utf8;
}

class PosixPlatform final : public Platform {
public:
    std::u16string hostProgramPath(std::size_t capacity) const override {
        std::array<char, PATH_MAX> bytes;
        // The link names the program even when it was started by a relative
        // path or through another link. It carries no terminator.
        const ssize_t length = ::readlink("/proc/self/exe", bytes.data(), bytes.size());
        if (length < 0 || static_cast<std::size_t>(length) == bytes.size()) {
            return {};
        }
        auto path = decodeUtf8({bytes.data(), static_cast<std::size_t>(length)});
        return path && path->size() < capacity ? std::move(*path) : std::u16string();
    }

    char16_t pathSeparator() const override { return u'/'; }

    std::unique_ptr<IniFile> openIni(const std::u16string& path) const override {
        return std::make_unique<PosixIniFile>(exactPath(path, toUtf8(path)));
    }

    std::string toUtf8(std::u16string_view text) const override;

    std::uint32_t secondsNow() const override {
        return static_cast<std::uint32_t>(std::time(nullptr));
    }
};

// Piece by piece through a small buffer: no second pass to learn the size, no
// large buffer to clear, and no limit from the converter's 32-bit lengths.
std::string PosixPlatform::toUtf8(std::u16string_view text) const {
    constexpr std::size_t kPiece = 1024;
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        std::size_t length = std::min(text.size(), kPiece);
        if (length < text.size() && U16_IS_LEAD(text[length - 1])) {
            --length;
        }
        appendUtf8(text.substr(0, length), result);
        text.remove_prefix(length);
    }
    return result;
}

} // namespace

const Platform& system() {
    static const PosixPlatform platform;
    return platform;
}

std::u16string readSettings(const std::string& path) {
    return decodeSettings(readIniFile(path));
}

} // namespace tvml::platform
