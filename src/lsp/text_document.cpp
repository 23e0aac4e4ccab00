// Entry: TextDocument.
#include "lsp/text_document.h"

#include <algorithm>

namespace tvml::lsp {

void TextDocument::findLinesFrom(std::size_t line) {
    starts_.resize(line + 1);
    for (std::size_t at = starts_.back(); at < text_.size(); ++at) {
        const bool isPair = text_[at] == u'\r' && at + 1 < text_.size() && text_[at + 1] == u'\n';
        if ((text_[at] == u'\n' || text_[at] == u'\r') && !isPair) {
            starts_.push_back(at + 1);
        }
    }
}

void TextDocument::replace(std::u16string text) {
    text_ = std::move(text);
    starts_.assign(1, 0);
    findLinesFrom(0);
}

std::u16string_view TextDocument::line(std::size_t number) const {
    if (number >= starts_.size()) {
        return {};
    }
    std::size_t end = number + 1 < starts_.size() ? starts_[number + 1] : text_.size();
    if (number + 1 < starts_.size()) {
        const bool isPair =
            end >= starts_[number] + 2 && text_[end - 1] == u'\n' && text_[end - 2] == u'\r';
        end -= isPair ? 2 : 1;
    }
    return std::u16string_view(text_).substr(starts_[number], end - starts_[number]);
}

std::size_t TextDocument::offsetOf(Position place) const {
    if (place.line >= starts_.size()) {
        return text_.size();
    }
    return starts_[place.line] + std::min(place.unit, line(place.line).size());
}

Position TextDocument::positionOf(std::size_t offset) const {
    offset = std::min(offset, text_.size());
    const auto behind = std::upper_bound(starts_.begin(), starts_.end(), offset);
    const auto number = static_cast<std::size_t>(behind - starts_.begin()) - 1;
    return {number, offset - starts_[number]};
}

// A change may make one line end of two units, or two of one, so that the search
// begins a line earlier.
void TextDocument::change(const TextEdit& edit) {
    const std::size_t first = offsetOf(edit.range.start);
    const std::size_t last = std::max(first, offsetOf(edit.range.end));
    const std::size_t line = positionOf(first).line;
    text_.replace(first, last - first, edit.text);
    findLinesFrom(line > 0 ? line - 1 : 0);
}

} // namespace tvml::lsp
