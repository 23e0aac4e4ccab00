// A page of the documentation, taken apart for the tests: its blocks, the code
// within its text, and its links.
#ifndef TVML_TESTS_EXAMPLES_PAGE_H
#define TVML_TESTS_EXAMPLES_PAGE_H

#include <string>
#include <string_view>
#include <vector>

namespace tvml {

using TextLines = std::vector<std::string>;

TextLines linesOf(std::string_view text);
std::string textOf(const TextLines& lines);

// What stands between two fences. Behind the first fence stand the kind of the
// block and its marks: "```script programme.txt slip".
struct PageBlock {
    std::string kind;
    std::vector<std::string> marks;
    int line = 0; // of the fence, from 1
    TextLines lines;

    bool isSlip() const;
    std::string fileName(const char* otherwise) const; // the mark that is a file's name
};

// A word or line within the text, between backquotes.
struct PageSpan {
    std::string text;
    int line = 0;
};

struct Page {
    std::string path; // from the folder of the sources
    std::vector<PageBlock> blocks;
    std::vector<PageSpan> spans;
    std::vector<std::string> links;
    TextLines indented;      // lines that a reader of Markdown takes for code, without a kind
    std::string description; // "<!-- tried with FILE -->", or nothing

    bool isJapanese() const;
};

Page readPage(const std::string& path);

// The readmes and all pages of docs/ and docs/ja/.
std::vector<std::string> pagePaths();

} // namespace tvml

#endif
