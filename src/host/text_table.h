// Tables for people: columns that line up on a terminal, where a full-width
// character takes two places.
#ifndef TVML_HOST_TEXT_TABLE_H
#define TVML_HOST_TEXT_TABLE_H

#include <string>
#include <string_view>
#include <vector>

namespace tvml::host {

struct TableColumn {
    std::u16string_view head; // which must outlive the table
    bool isNumber = false;    // stands at the right
};

class TextTable {
public:
    explicit TextTable(std::vector<TableColumn> columns) : columns_(std::move(columns)) {}

    // One cell a column. Control characters are shown as U+FFFD.
    void add(std::vector<std::u16string> cells);

    // The heads and the rows, each with its line feed; no line ends with blanks.
    std::u16string text() const;

private:
    std::vector<TableColumn> columns_;
    std::vector<std::vector<std::u16string>> rows_;
};

// The texts with `separator` between them.
std::u16string joined(const std::vector<std::u16string>& texts, std::u16string_view separator);

} // namespace tvml::host

#endif
