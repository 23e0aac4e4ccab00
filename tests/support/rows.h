// Tables of rows in text files beside the tests: what goes in, and what comes of
// it. In a file
//   # starts a comment line, two blanks continue the line before;
//   @staging BASE ELEMENTS gives the rows below it their description: on top of
//     nothing ("none"), of two characters ("two"), of templates that tell what
//     fills them as well ("telling"), or as the text of a title card ("title");
//   INPUT => RESULT is a row; [key=word; key=word] in front of it replaces words
//     of the vocabulary, [] leaves all of them unloaded.
// Texts use the notation of studio.h; "\s", "\t", "\r" stand for blanks and "\0"
// for a terminator.
#ifndef TVML_TESTS_SUPPORT_ROWS_H
#define TVML_TESTS_SUPPORT_ROWS_H

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/studio.h"

namespace tvml {

struct Row {
    std::string place; // file and line
    std::u16string elements;
    Words words;
    std::u16string input;
    std::string result;

    // What the row's description and vocabulary make of its input.
    std::string body() const { return Studio(elements, words).body(input); }
    std::string whole() const { return Studio(elements, words).whole(input); }
};

std::vector<Row> readRows(const std::string& file);

// Holds every row of a file against `resultOf(row)`.
template <typename ResultOf> void checkRows(const std::string& file, ResultOf resultOf) {
    const std::vector<Row> rows = readRows(file);
    EXPECT_FALSE(rows.empty()) << file;
    for (const Row& row : rows) {
        EXPECT_EQ(resultOf(row), row.result) << row.place << ": " << shown(row.input);
    }
}

} // namespace tvml

#endif
