// The table of diagnostics: every row's example gives that diagnostic and no
// other, and the page for readers is the table's.
#include <gtest/gtest.h>

#include "diagnostics/checking.h"

namespace tvml {
namespace {

class TableRow : public testing::TestWithParam<std::size_t> {};

// The text that the example's places count in.
std::u16string sourceOf(const DiagnosticRow& row) {
    return row.kind == ExampleKind::vocabulary ? vocabularyWith(row.example)
                                               : std::u16string(row.example);
}

TEST_P(TableRow, ExampleGivesThisDiagnosticAlone) {
    const DiagnosticRow& row = kDiagnosticRows[GetParam()];
    const std::vector<Diagnostic> found =
        foundInExample(row, shippedVocabulary(), platform::system(), Language::en);
    ASSERT_EQ(found.size(), 1u) << summary(found, row.example);
    EXPECT_EQ(found[0].code.row().code, row.code) << utf8(found[0].message);
    EXPECT_EQ(found[0].message.find(u'%'), kNone) << utf8(found[0].message);
    // Only what is not there and what is not shown has no place.
    const bool isPlaceless = row.kind == ExampleKind::noVocabulary ||
                             row.kind == ExampleKind::playBackwards ||
                             row.kind == ExampleKind::brokenDescription;
    EXPECT_EQ(found[0].line > 0, !isPlaceless);
    EXPECT_EQ(summary(found, sourceOf(row)).find("outside"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Rows, TableRow, testing::Range(std::size_t{0}, kDiagnosticRows.size()),
                         [](const auto& row) {
                             return std::string(kDiagnosticRows[row.param].code);
                         });

// Refresh with tvmldiagnostics_doc, which prints the page.
TEST(DiagnosticsPage, IsTheTables) {
    const auto isPage = [](const std::string& file, Language language) {
        return repositoryFile(file) ==
               diagnosticsPage(shippedVocabulary(), platform::system(), language);
    };
    EXPECT_TRUE(isPage("docs/diagnostics.md", Language::en)); // too long to be shown
    EXPECT_TRUE(isPage("docs/ja/diagnostics.md", Language::ja));
}

} // namespace
} // namespace tvml
