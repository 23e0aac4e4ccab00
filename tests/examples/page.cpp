// Reading Markdown as far as the pages use it. Entries: readPage, pagePaths.
#include "page.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "repository_files.h"

namespace tvml {
namespace {

constexpr std::string_view kFence = "```";
constexpr std::string_view kTriedWith = "<!-- tried with ";

std::size_t indentOf(const std::string& line) {
    return std::min(line.find_first_not_of(' '), line.size());
}

bool isFence(const std::string& line) {
    return line.compare(indentOf(line), kFence.size(), kFence) == 0;
}

PageBlock blockAt(const std::string& fence, int number) {
    PageBlock block;
    block.line = number;
    std::istringstream words(fence.substr(indentOf(fence) + kFence.size()));
    words >> block.kind;
    for (std::string mark; words >> mark;) {
        block.marks.push_back(mark);
    }
    return block;
}

void readSpans(const std::string& line, int number, Page& page) {
    std::size_t start = line.find('`');
    while (start != std::string::npos) {
        const std::size_t end = line.find('`', start + 1);
        if (end == std::string::npos) {
            return;
        }
        page.spans.push_back({line.substr(start + 1, end - start - 1), number});
        start = line.find('`', end + 1);
    }
}

void readLinks(const std::string& line, Page& page) {
    for (std::size_t at = line.find("]("); at != std::string::npos; at = line.find("](", at + 2)) {
        const std::size_t end = line.find(')', at);
        page.links.push_back(line.substr(at + 2, end - at - 2));
    }
}

void readText(const std::string& line, int number, Page& page) {
    if (line.starts_with(kTriedWith)) {
        page.description = line.substr(kTriedWith.size(), line.find(" -->") - kTriedWith.size());
    }
    if (indentOf(line) >= 4 && indentOf(line) < line.size()) {
        page.indented.push_back(line);
    }
    readSpans(line, number, page);
    readLinks(line, page);
}

} // namespace

TextLines linesOf(std::string_view text) {
    std::istringstream stream{std::string(text)};
    TextLines lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::string textOf(const TextLines& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text.append(line).append(1, '\n');
    }
    return text;
}

bool PageBlock::isSlip() const {
    return std::ranges::find(marks, "slip") != marks.end();
}

std::string PageBlock::fileName(const char* otherwise) const {
    const auto name = std::ranges::find_if(
        marks, [](const std::string& mark) { return mark.find('.') != std::string::npos; });
    return name == marks.end() ? otherwise : *name;
}

bool Page::isJapanese() const {
    return path.starts_with("docs/ja/") || path == "README.ja.md";
}

Page readPage(const std::string& path) {
    Page page;
    page.path = path;
    bool inBlock = false;
    std::size_t indent = 0;
    int number = 0;
    for (const std::string& line : linesOf(readRepositoryFile(path))) {
        ++number;
        if (isFence(line)) {
            inBlock = !inBlock;
            if (inBlock) {
                indent = indentOf(line);
                page.blocks.push_back(blockAt(line, number));
            }
        } else if (inBlock) {
            page.blocks.back().lines.push_back(line.substr(std::min(indent, indentOf(line))));
        } else {
            readText(line, number, page);
        }
    }
    return page;
}

std::vector<std::string> pagePaths() {
    std::vector<std::string> paths{"README.md", "README.ja.md"};
    for (const std::string folder : {"docs/", "docs/ja/"}) {
        const std::filesystem::path place(std::string(TVML_SOURCE_DIR "/") + folder);
        for (const auto& entry : std::filesystem::directory_iterator(place)) {
            if (entry.path().extension() == ".md") {
                paths.push_back(folder + entry.path().filename().string());
            }
        }
    }
    std::ranges::sort(paths);
    return paths;
}

} // namespace tvml
