// How requests and answers pass between the program and its workers: each with
// its length in front.
#ifndef TVML_PLATFORM_WORKER_FRAMES_H
#define TVML_PLATFORM_WORKER_FRAMES_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tvml::platform {

inline constexpr std::size_t kFrameHead = 4;

inline std::string frameOf(std::string_view bytes) {
    std::string frame;
    for (std::size_t i = 0; i < kFrameHead; ++i) {
        frame += static_cast<char>(bytes.size() >> (8 * i) & 0xFF);
    }
    return frame.append(bytes);
}

// Reads one message. `read(pointer, size)` returns how many bytes it got, 0 when
// there will be no more. False when the message does not come whole.
template <typename Read> bool readFrame(Read read, std::string& bytes) {
    const auto fill = [&read](char* at, std::size_t size) {
        std::size_t got = 1;
        for (; size > 0 && got > 0; at += got, size -= got) {
            got = read(at, size);
        }
        return size == 0;
    };
    std::array<char, kFrameHead> head;
    if (!fill(head.data(), head.size())) {
        return false;
    }
    std::size_t size = 0;
    for (std::size_t i = 0; i < head.size(); ++i) {
        size |= std::size_t{static_cast<unsigned char>(head[i])} << (8 * i);
    }
    bytes.resize(size);
    return fill(bytes.data(), size);
}

} // namespace tvml::platform

#endif
