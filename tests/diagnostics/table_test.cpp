// The table of diagnostics: every row's example gives that diagnostic and no
// other, and the page for readers is the table's.
#include <gtest/gtest.h>

#include "diagnostics/checking.h"

namespace tvml {
namespace {

class TableRow : public testing::TestWithParam<std::size_t> {};

std::vector<Diagnostic> foundInExample(const DiagnosticRow& row) {
    TestProgramme programme;
    switch (row.kind) {
    case ExampleKind::playLine:
        programme.playFrom = kExamplePlayFrom;
        [[fallthrough]];
    case ExampleKind::script:
        return foundInScript(row.example, programme);
    case ExampleKind::bareScript:
        return foundInScript(row.example, {u"", u""});
    case ExampleKind::description:
        return foundInDescription(row.example);
    case ExampleKind::vocabulary:
        return foundInVocabulary(vocabularyWith(row.example));
    case ExampleKind::noVocabulary:
        return foundInVocabulary(row.example);
    }
    return {};
}

// The text that the example's places count in.
std::u16string sourceOf(const DiagnosticRow& row) {
    return row.kind == ExampleKind::vocabulary ? vocabularyWith(row.example)
                                               : std::u16string(row.example);
}

TEST_P(TableRow, ExampleGivesThisDiagnosticAlone) {
    const DiagnosticRow& row = kDiagnosticRows[GetParam()];
    const std::vector<Diagnostic> found = foundInExample(row);
    ASSERT_EQ(found.size(), 1u) << summary(found, row.example);
    EXPECT_EQ(found[0].code.row().code, row.code) << utf8(found[0].message);
    EXPECT_EQ(found[0].message.find(u'%'), kNone) << utf8(found[0].message);
    // Only a vocabulary that is not there has no place.
    EXPECT_EQ(found[0].line > 0, row.kind != ExampleKind::noVocabulary);
    EXPECT_EQ(summary(found, sourceOf(row)).find("outside"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Rows, TableRow, testing::Range(std::size_t{0}, kDiagnosticRows.size()),
                         [](const auto& row) {
                             return std::string(kDiagnosticRows[row.param].code);
                         });

// Refresh: tvmldiagnostics_doc > docs/diagnostics.md
TEST(DiagnosticsPage, IsTheTables) {
    const bool same = repositoryFile("docs/diagnostics.md") == diagnosticsPage(platform::system());
    EXPECT_TRUE(same); // both are too long to be shown
}

} // namespace
} // namespace tvml
