// Good texts get no warning: the shipped vocabulary, the default description and
// the examples.
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
        Programme programme;
        programme.description = utf16(repositoryFile(name + "/description.xml"));
        EXPECT_EQ(warnings(foundInScript(script, programme), script), "");
        EXPECT_EQ(warnings(foundInDescription(programme.description), programme.description), "");
    }
    EXPECT_GE(programmes, 2);
}

} // namespace
} // namespace tvml
