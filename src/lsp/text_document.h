// A text that grows and changes under the hands of its writer.
//
// Conventions
//  1. Lines and units count from 0; units are those of UTF-16.
//  2. A place that the text does not have is the nearest one that it has: behind the
//     end of a line the end, behind the last line the end of the text.
//  3. Lines end with a line feed, a carriage return, or both.
#ifndef TVML_LSP_TEXT_DOCUMENT_H
#define TVML_LSP_TEXT_DOCUMENT_H

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tvml::lsp {

struct Position {
    std::size_t line = 0;
    std::size_t unit = 0;
    auto operator<=>(const Position&) const = default;
};

struct Range {
    Position start;
    Position end;
    bool operator==(const Range&) const = default;
};

struct TextEdit {
    Range range;
    std::u16string text;
};

class TextDocument {
public:
    explicit TextDocument(std::u16string text = {}) { replace(std::move(text)); }

    const std::u16string& text() const { return text_; }
    std::size_t lineCount() const { return starts_.size(); }

    // Without what ends it.
    std::u16string_view line(std::size_t number) const;

    std::size_t offsetOf(Position place) const;
    Position positionOf(std::size_t offset) const;

    // The part of a line, `units` from `start`.
    static Range within(std::size_t line, std::size_t start, std::size_t units) {
        return {{line, start}, {line, start + units}};
    }
    Range whole() const { return {{}, positionOf(text_.size())}; }

    void replace(std::u16string text);
    void change(const TextEdit& edit);

private:
    void findLinesFrom(std::size_t line);

    std::u16string text_;
    std::vector<std::size_t> starts_; // of the lines, never empty
};

} // namespace tvml::lsp

#endif
