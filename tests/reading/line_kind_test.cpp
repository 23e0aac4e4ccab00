// The kind of each line.
#include "reading/line_kind.h"

#include "reading/script_text.h"

#include "support/rows.h"

namespace tvml {
namespace {

std::string kindOf(const Row& row, const DeclaredTags& tags) {
    const KeywordTable words = tableOf(row.words);
    const std::u16string text = expand(row.input);
    std::u16string_view line = text;
    const std::string kind =
        shown(lineKindText(classifyLine(line, tags, words, MarkerIndex(words))));
    EXPECT_EQ(shown(line), shown(trimScriptText(text, words))) << "left untrimmed";
    return kind;
}

TEST(LineKind, Rows) {
    checkRows("reading/lines.rows", [](const Row& row) { return kindOf(row, {}); });
}

TEST(LineKind, DeclaredTagsComeFirst) {
    const DeclaredTags tags{
        {{u"天気", u"weather"}, {u"天気図", u"map"}, {u"(", u"paren"}},
        {{u"weather", u"w"}, {u"map", u"m"}, {u"title page", u"t"}, {u"C", u"c"}}};
    checkRows("reading/declared_tags.rows", [&](const Row& row) { return kindOf(row, tags); });
}

// Names in ascending order, each that starts the text, until one is taken.
TEST(LineKind, NamesThatStartATextAreVisitedInOrder) {
    const LeadingNames names{{u"", u""},  {u"a", u""},   {u"aa", u""}, {u"aab", u""},
                             {u"b", u""}, {u"aac", u""}, {u"ab", u""}, {u"あ", u""}};
    const struct {
        std::u16string_view text;
        std::u16string_view last; // the visit ends with this name
        const char* visited;
    } rows[] = {
        {u"aabx", u"-", ",a,aa,aab,"},
        {u"aabx", u"aa", ",a,aa,"},
        {u"b", u"-", ",b,"},
        {u"c", u"-", ","},
        {u"", u"-", ","},
        {u"aaa", u"-", ",a,aa,"},
        {u"acb", u"-", ",a,"},
        {u"あ", u"-", ",あ,"},
        {u"ab", u"ab", ",a,ab,"},
        {u"aabaab", u"-", ",a,aa,aab,"},
        {u"あa", u"-", ",あ,"},
    };
    for (const auto& row : rows) {
        std::string visited;
        const bool taken = names.visitStarting(row.text, [&](const auto& entry) {
            visited += shown(entry.first) + ",";
            return entry.first == row.last;
        });
        EXPECT_EQ(visited, row.visited) << shown(row.text);
        EXPECT_EQ(taken, row.last != u"-") << shown(row.text);
    }
}

} // namespace
} // namespace tvml
