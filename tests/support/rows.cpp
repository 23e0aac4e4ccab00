// Reading of row files. Entry: readRows.
#include "support/rows.h"

#include <fstream>

#include "reading/script_text.h"

namespace tvml {
namespace {

std::string_view trimmed(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

std::u16string unescaped(std::string_view text) {
    std::u16string result = utf16(trimmed(text));
    for (const auto& [name, unit] : {std::pair(u"\\s", u' '), std::pair(u"\\t", u'\t'),
                                     std::pair(u"\\r", u'\r'), std::pair(u"\\0", u'\0')}) {
        replaceAll(result, name, {&unit, 1});
    }
    return result;
}

std::u16string stagingOf(std::string_view directive) {
    const std::size_t end = directive.find(' ');
    const std::string_view base = directive.substr(0, end);
    const std::u16string elements = end == directive.npos ? u"" : unescaped(directive.substr(end));
    if (base == "title") {
        return std::u16string(kTwoCharacters) + titleElement(elements);
    }
    EXPECT_TRUE(base == "none" || base == "two" || base == "telling") << base;
    return (base == "none" ? u"" : std::u16string(kTwoCharacters)) +
           (base == "telling" ? tellingTemplates() : u"") + elements;
}

// Takes "[key=word; key=word]" off the front of a row.
Words wordsOf(std::string_view& row) {
    if (!row.starts_with('[')) {
        return shippedWords();
    }
    const std::size_t end = row.find("] ");
    std::string_view list = row.substr(1, end - 1);
    row.remove_prefix(end + 1);
    Words replaced;
    while (!list.empty()) {
        const std::string_view item = list.substr(0, list.find(';'));
        const std::size_t equals = item.find('=');
        replaced[unescaped(item.substr(0, equals))] = unescaped(item.substr(equals + 1));
        list.remove_prefix(std::min(item.size() + 1, list.size()));
    }
    return replaced.empty() ? replaced : shippedWords(replaced);
}

} // namespace

std::vector<Row> readRows(const std::string& file) {
    std::ifstream stream(TVML_TESTS + ("/" + file));
    EXPECT_TRUE(stream.good()) << file;
    std::vector<std::pair<int, std::string>> lines;
    std::string next;
    for (int number = 1; std::getline(stream, next); ++number) {
        if (next.starts_with("  ") && !lines.empty()) {
            lines.back().second += next.substr(2);
        } else if (!next.empty() && next[0] != '#') {
            lines.emplace_back(number, next);
        }
    }
    std::vector<Row> rows;
    std::u16string elements(kTwoCharacters);
    for (const auto& [number, line] : lines) {
        std::string_view rest = line;
        if (rest.starts_with("@staging ")) {
            elements = stagingOf(rest.substr(9));
            continue;
        }
        const std::string place = file + ":" + std::to_string(number);
        Words words = wordsOf(rest);
        const std::size_t arrow = rest.find("=>");
        EXPECT_NE(arrow, rest.npos) << place;
        rows.push_back({place, elements, std::move(words), unescaped(rest.substr(0, arrow)),
                        platform::system().toUtf8(unescaped(rest.substr(arrow + 2)))});
    }
    return rows;
}

} // namespace tvml
