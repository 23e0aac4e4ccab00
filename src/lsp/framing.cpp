// Entries: FrameReader, framed.
#include "lsp/framing.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace tvml::lsp {
namespace {

constexpr std::string_view kLength = "content-length:";
constexpr std::string_view kEnd = "\r\n\r\n";
constexpr std::size_t kLongestHeader = 4096;

std::string lowered(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return result;
}

// None for a header that tells no length.
std::optional<std::size_t> lengthIn(std::string_view header) {
    const std::string small = lowered(header);
    const std::size_t name = small.find(kLength);
    if (name == std::string::npos || (name != 0 && small[name - 1] != '\n')) {
        return std::nullopt;
    }
    const std::size_t digits = small.find_first_not_of(" \t", name + kLength.size());
    std::size_t length = 0;
    const char* const end = small.data() + small.size();
    const auto read = std::from_chars(small.data() + std::min(digits, small.size()), end, length);
    const bool whole = read.ec == std::errc() && (read.ptr == end || *read.ptr == '\r');
    return whole && length <= kLongestMessage ? std::optional(length) : std::nullopt;
}

} // namespace

// Told once for each stretch that is no frame.
std::optional<FrameReader::Frame> FrameReader::passBy(std::size_t bytes) {
    start_ = std::min(start_ + bytes, bytes_.size());
    const bool first = !skipping_;
    skipping_ = true;
    return first ? std::optional(Frame{true, {}}) : std::nullopt;
}

std::optional<FrameReader::Frame> FrameReader::next() {
    for (;;) {
        const std::string_view rest = std::string_view(bytes_).substr(start_);
        const std::size_t end = rest.substr(0, kLongestHeader).find(kEnd);
        if (end == std::string_view::npos) {
            if (rest.size() < kLongestHeader) {
                bytes_.erase(0, start_);
                start_ = 0;
                return std::nullopt;
            }
            if (auto damaged = passBy(rest.size() - kEnd.size())) {
                return damaged;
            }
            continue;
        }
        const std::optional<std::size_t> length = lengthIn(rest.substr(0, end));
        if (!length.has_value()) {
            if (auto damaged = passBy(end + kEnd.size())) {
                return damaged;
            }
            continue;
        }
        if (rest.size() - end - kEnd.size() < *length) {
            bytes_.erase(0, start_);
            start_ = 0;
            return std::nullopt;
        }
        skipping_ = false;
        Frame frame{false, std::string(rest.substr(end + kEnd.size(), *length))};
        start_ += end + kEnd.size() + *length;
        return frame;
    }
}

std::string framed(std::string_view body) {
    return ("Content-Length: " + std::to_string(body.size())).append("\r\n\r\n").append(body);
}

} // namespace tvml::lsp
