// Lines of a terminal. Entries: flowed, outputColumns.
#include "host/text_flow.h"

#include <algorithm>
#include <vector>

#include "diagnostics/text_width.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

constexpr std::size_t kGap = 2;       // columns between two
constexpr std::size_t kMostTerm = 26; // a wider first column has a line of its own
constexpr std::size_t kLeast = 40;
constexpr std::size_t kUsual = 80;
constexpr std::size_t kMost = 100; // longer lines are hard to read

bool closes(char16_t unit) {
    return std::u16string_view(
               u"、。，．：；？！）」』】〕〉》ー…・々ぁぃぅぇぉっゃゅょァィゥェォッャュョ"
               u",.:;?!)]}\"")
               .find(unit) != std::u16string_view::npos;
}

bool opens(char16_t unit) {
    return std::u16string_view(u"（「『【〔〈《([{").find(unit) != std::u16string_view::npos;
}

bool isKatakana(char16_t unit) {
    return unit > u'\x30A0' && unit < u'\x3100';
}

bool mayBreak(char16_t before, char16_t after) {
    if (before == u' ' || after == u' ') {
        return after != u' ';
    }
    if (isKatakana(before) && isKatakana(after)) {
        return false;
    }
    const bool wide = columnsOfCharacter(before) > 1 || columnsOfCharacter(after) > 1;
    return wide && !closes(after) && !opens(before);
}

// What stays on one line, with the blanks behind it.
std::u16string_view nextPiece(std::u16string_view text) {
    std::size_t end = 1;
    while (end < text.size() && !mayBreak(text[end - 1], text[end])) {
        ++end;
    }
    return text.substr(0, end);
}

std::u16string_view withoutBlanks(std::u16string_view text) {
    return text.substr(0, text.find_last_not_of(u' ') + 1);
}

// Goes on behind the last line of `lines`; further lines begin at `margin`.
void appendParagraph(std::u16string& lines, std::u16string_view text, std::size_t margin,
                     std::size_t columns) {
    std::size_t used = margin;
    while (!text.empty()) {
        const std::u16string_view piece = nextPiece(text);
        if (used > margin && used + columnsOf(withoutBlanks(piece)) > columns) {
            lines.resize(withoutBlanks(lines).size());
            lines.append(u"\n").append(margin, u' ');
            used = margin;
        }
        lines += piece;
        used += columnsOf(piece);
        text.remove_prefix(piece.size());
    }
    lines += u'\n';
}

std::vector<std::u16string_view> linesOf(std::u16string_view text) {
    std::vector<std::u16string_view> lines;
    for (;;) {
        const std::size_t end = text.find(u'\n');
        lines.push_back(text.substr(0, end));
        if (end == text.npos) {
            return lines;
        }
        text.remove_prefix(end + 1);
    }
}

// The width of the first column of a table: of all its lines, those that are
// not too wide.
std::size_t termColumns(const std::vector<std::u16string_view>& lines) {
    std::size_t widest = 0;
    for (const std::u16string_view line : lines) {
        const std::size_t tab = line.find(u'\t');
        const std::size_t width = tab == line.npos ? 0 : columnsOf(line.substr(0, tab));
        widest = width > kMostTerm ? widest : std::max(widest, width);
    }
    return widest;
}

} // namespace

std::u16string flowed(std::u16string_view text, std::size_t columns, std::size_t indent) {
    const std::vector<std::u16string_view> all = linesOf(text);
    const std::size_t margin = indent + termColumns(all) + kGap;
    std::u16string lines;
    for (const std::u16string_view line : all) {
        const std::size_t tab = line.find(u'\t');
        if (tab == line.npos) {
            appendParagraph(lines, line, 0, columns);
            continue;
        }
        const std::u16string_view term = line.substr(0, tab);
        const std::size_t used = indent + columnsOf(term) + kGap;
        lines.append(indent, u' ').append(term);
        if (used > margin) {
            lines.append(u"\n").append(margin, u' ');
        } else {
            lines.append(kGap + margin - used, u' ');
        }
        appendParagraph(lines, line.substr(tab + 1), margin, columns);
    }
    return lines;
}

std::size_t outputColumns() {
    const std::size_t width = platform::terminalColumns(platform::OutputStream::output);
    return width == 0 ? kUsual : std::clamp(width, kLeast, kMost);
}

} // namespace tvml::host
