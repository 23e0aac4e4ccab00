// The native library for the engine's tests: requests on standard input, results
// on standard output. A request is four 32-bit numbers (line to play from, line to
// play to, units of the script, units of the description) and both texts; a result
// is one number, the return value, and that many units.
#include "fil_process.h"

#include <array>
#include <cstdint>
#include <iostream>
#include <string>

namespace {

std::u16string readText(std::int32_t units) {
    std::u16string text(static_cast<std::size_t>(units), u'\0');
    std::cin.read(reinterpret_cast<char*>(text.data()), std::streamsize{units} * 2);
    return text;
}

void writeResult(const std::u16string& text, std::int32_t length) {
    std::cout.write(reinterpret_cast<const char*>(&length), sizeof(length));
    std::cout.write(reinterpret_cast<const char*>(text.data()), std::streamsize{length} * 2);
}

} // namespace

int main() {
    std::array<std::int32_t, 4> numbers{};
    while (std::cin.read(reinterpret_cast<char*>(numbers.data()), sizeof(numbers))) {
        const auto [from, to, scriptUnits, descriptionUnits] = numbers;
        const std::u16string script = readText(scriptUnits);
        const std::u16string description = readText(descriptionUnits);
        const auto call = [&](char16_t* output, std::int32_t size) {
            return fil_process(script.c_str(), from, to, description.c_str(), output, size);
        };
        const std::int32_t size = call(nullptr, 0);
        std::u16string text(static_cast<std::size_t>(size), u'\0');
        const std::int32_t length = size > 0 ? call(text.data(), size) : 0;
        writeResult(text, length);
    }
    return 0;
}
