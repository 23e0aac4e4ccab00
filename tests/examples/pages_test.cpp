// Every page of the documentation: its examples are true, its links lead
// somewhere, and it exists in both languages. A new page is tried by itself.
#include "page_trial.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>

namespace tvml {
namespace {

// A program writes these; the tests of the diagnostics compare them with it whole.
const std::set<std::string> kGeneratedPages{"docs/diagnostics.md", "docs/ja/diagnostics.md"};

// For those who work on the code.
const std::set<std::string> kEnglishOnly{"docs/architecture.md", "docs/performance.md",
                                         "docs/robustness.md"};

TEST(PageTrials, GapsStandForLines) {
    const TextLines real{"a", "b", "c", "b", "d"};
    const struct {
        TextLines shown;
        bool matches;
    } rows[] = {
        {{"a", "b", "c", "b", "d"}, true}, {{"a", "…", "d"}, true},
        {{"a", "…", "b", "d"}, true},      {{"…", "b", "..."}, true},
        {{"a", "b", "c", "b"}, false},     {{"b", "c", "b", "d"}, false},
        {{"a", "c", "…"}, false},          {{"…", "d", "…", "a", "…"}, false},
        {{"a", "…", "c"}, false},          {{}, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(shows(row.shown, real), row.matches) << textOf(row.shown);
    }
}

TEST(PageTrials, ScriptLinesAreKnown) {
    for (const char* line :
         {"A: hello", "Ａ：（お辞儀）", "(wait)", "（昼）", "title: x", "ＢＧＭ：x"}) {
        EXPECT_TRUE(isScriptLine(line)) << line;
    }
    for (const char* line : {"(", "（）", "(…)", "hello", "bow", "title", "name: x", "f(x);"}) {
        EXPECT_FALSE(isScriptLine(line)) << line;
    }
}

class Pages : public testing::TestWithParam<std::string> {
protected:
    const Page page_ = readPage(GetParam());
};

TEST_P(Pages, ItsBlocksAreTrue) {
    if (kGeneratedPages.contains(GetParam())) {
        EXPECT_FALSE(page_.blocks.empty());
        return;
    }
    EXPECT_EQ(textOf(page_.indented), "") << "put these lines between fences, with a kind";
    PageTrial(page_).tryBlocks();
}

TEST_P(Pages, LinesWithinItsTextConvert) {
    PageTrial trial(page_);
    trial.trySpans();
    trial.tryOptions();
}

std::string inTheOtherLanguage(const Page& page) {
    const std::string name = std::filesystem::path(page.path).filename().string();
    if (name.starts_with("README")) {
        return page.isJapanese() ? "README.md" : "README.ja.md";
    }
    return page.isJapanese() ? "../" + name : "ja/" + name;
}

TEST_P(Pages, ItsLinksLeadSomewhere) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(TVML_SOURCE_DIR "/" + GetParam()).parent_path();
    for (const std::string& link : page_.links) {
        if (link.find("://") == std::string::npos && !link.starts_with('#')) {
            EXPECT_TRUE(fs::exists(folder / link.substr(0, link.find('#')))) << link;
        }
    }
    if (!kEnglishOnly.contains(GetParam()) && !kGeneratedPages.contains(GetParam())) {
        const std::string other = inTheOtherLanguage(page_);
        EXPECT_NE(std::ranges::find(page_.links, other), page_.links.end()) << "no link: " << other;
    }
}

std::string testNameOf(const testing::TestParamInfo<std::string>& path) {
    std::string name = path.param.substr(0, path.param.rfind('.'));
    std::ranges::replace_if(
        name, [](unsigned char unit) { return std::isalnum(unit) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, Pages, testing::ValuesIn(pagePaths()), testNameOf);

} // namespace
} // namespace tvml
