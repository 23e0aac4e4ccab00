// Tables for people. Entry: TextTable::text.
#include "host/text_table.h"

#include <algorithm>

#include "diagnostics/text_width.h"

namespace tvml::host {
namespace {

constexpr std::size_t kGap = 2; // columns between two cells

void appendCell(std::u16string& line, std::u16string_view cell, std::size_t width, bool atRight) {
    const std::u16string fill(width - std::min(width, columnsOf(cell)), u' ');
    line.append(atRight ? fill : u"").append(cell).append(atRight ? u"" : fill);
}

} // namespace

void TextTable::add(std::vector<std::u16string> cells) {
    for (std::u16string& cell : cells) {
        // A word of the vocabulary or of a script may hold what a terminal would obey.
        cell = harmlessText(cell);
        std::ranges::replace(cell, u'\t', u'\xFFFD');
    }
    rows_.push_back(std::move(cells));
}

std::u16string TextTable::text() const {
    std::vector<std::u16string> heads;
    std::vector<std::size_t> widths;
    for (const TableColumn& column : columns_) {
        std::size_t width = columnsOf(column.head);
        for (const auto& row : rows_) {
            width = std::max(width, columnsOf(row[widths.size()]));
        }
        heads.emplace_back(column.head);
        widths.push_back(width);
    }
    std::u16string text;
    const auto append = [&](const std::vector<std::u16string>& row) {
        std::u16string line;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            line.append(i == 0 ? 0 : kGap, u' ');
            appendCell(line, row[i], widths[i], columns_[i].isNumber);
        }
        text.append(line, 0, line.find_last_not_of(u' ') + 1).append(u"\n");
    };
    append(heads);
    std::ranges::for_each(rows_, append);
    return text;
}

std::u16string joined(const std::vector<std::u16string>& texts, std::u16string_view separator) {
    std::u16string list;
    for (const std::u16string& text : texts) {
        list.append(list.empty() ? u"" : separator).append(text);
    }
    return list;
}

} // namespace tvml::host
