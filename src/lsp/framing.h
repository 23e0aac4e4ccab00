// The frames of messages: a header that tells their length, and that many bytes.
#ifndef TVML_LSP_FRAMING_H
#define TVML_LSP_FRAMING_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tvml::lsp {

// More than any document makes; what announces more is no frame.
inline constexpr std::size_t kLongestMessage = std::size_t{1} << 28;

class FrameReader {
public:
    struct Frame {
        bool damaged = false; // something that is no frame was passed by
        std::string body;
    };

    void feed(std::string_view bytes) { bytes_.append(bytes); }

    // The next frame that is whole; none until more bytes come.
    std::optional<Frame> next();

private:
    std::optional<Frame> passBy(std::size_t bytes);

    std::string bytes_;
    std::size_t start_ = 0; // of what is not read yet
    bool skipping_ = false; // looking for the next header
};

std::string framed(std::string_view body);

} // namespace tvml::lsp

#endif
