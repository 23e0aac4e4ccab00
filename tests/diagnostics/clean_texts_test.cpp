// Good texts get no warning: the shipped vocabulary, the default description and
// the examples.
#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

#include "diagnostics/checking.h"

namespace tvml {
namespace {

// Notes are no warnings.
std::string warnings(std::vector<Diagnostic> found, std::u16string_view source) {
    std::erase_if(found, [](const Diagnostic& one) { return one.severity == Severity::note; });
    return summary(found, source);
}

// A code span of the reference page that is a line of a script.
bool isScriptLine(std::u16string_view span) {
    const std::size_t colon = span.find_first_of(u":：");
    return (span.size() > 1 && (span.front() == u'(' || span.front() == u'（')) ||
           (colon != kNone && colon > 0 && colon + 1 < span.size() && span.find(u'\n') == kNone &&
            span.find(u"::") == kNone);
}

TEST(CleanTexts, Vocabulary) {
    EXPECT_EQ(checkedVocabulary(u""), "");
}

TEST(CleanTexts, EmptyTexts) {
    EXPECT_EQ(checkedDescription(u""), "");
    EXPECT_EQ(checkedDescription(u" \n"), "");
    EXPECT_EQ(checkedScript(u"", {u"", vocabularyWith(u"")}), "");
}

TEST(CleanTexts, DefaultDescription) {
    const std::u16string text = utf16(repositoryFile("config/default.xml"));
    EXPECT_EQ(warnings(foundInDescription(text), text), "");
}

TEST(CleanTexts, Examples) {
    int programmes = 0;
    for (const auto& folder :
         std::filesystem::directory_iterator(std::filesystem::path(TVML_SOURCE_DIR) / "examples")) {
        const std::string name = "examples/" + folder.path().filename().string();
        if (!std::filesystem::exists(folder.path() / "programme.txt")) {
            continue;
        }
        ++programmes;
        SCOPED_TRACE(name);
        const std::u16string script = utf16(repositoryFile(name + "/programme.txt"));
        TestProgramme programme;
        programme.description = utf16(repositoryFile(name + "/description.xml"));
        EXPECT_EQ(warnings(foundInScript(script, programme), script), "");
        EXPECT_EQ(warnings(foundInDescription(programme.description), programme.description), "");
    }
    EXPECT_GE(programmes, 2);
}

TEST(CleanTexts, LinesOfTheReferencePage) {
    const std::u16string page = utf16(repositoryFile("docs/script-language.md"));
    TestProgramme programme;
    programme.description = utf16(repositoryFile("examples/news_ja/description.xml"));
    int lines = 0;
    std::size_t close = 0;
    for (std::size_t open = page.find(u'`'); open != kNone; open = page.find(u'`', close + 1)) {
        close = page.find(u'`', open + 1);
        const std::u16string line = page.substr(open + 1, close - open - 1);
        if (!isScriptLine(line)) {
            continue;
        }
        ++lines;
        std::vector<Diagnostic> found = foundInScript(line, programme);
        // A line alone lacks what stands before it in a script; sets and models are
        // those of no programme here.
        std::erase_if(found, [](const Diagnostic& one) {
            return one.code == Code("S112") || one.code == Code("S114") || one.code == Code("S115");
        });
        EXPECT_EQ(warnings(found, line), "") << utf8(line);
    }
    EXPECT_GE(lines, 20);
}

} // namespace
} // namespace tvml
