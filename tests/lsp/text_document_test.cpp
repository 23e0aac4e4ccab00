// Texts that are edited: the same lines and places as in a text that is read anew.
#include "lsp/text_document.h"

#include <random>

#include <gtest/gtest.h>

namespace tvml::lsp {
namespace {

TEST(TextDocument, LinesAndPlaces) {
    const TextDocument text(u"a\r\nbc\rd\n\n𠮟e");
    ASSERT_EQ(text.lineCount(), 5U);
    EXPECT_EQ(text.line(0), u"a");
    EXPECT_EQ(text.line(1), u"bc");
    EXPECT_EQ(text.line(3), u"");
    EXPECT_EQ(text.line(4), u"𠮟e");
    EXPECT_EQ(text.line(9), u"");
    EXPECT_EQ(text.offsetOf({1, 99}), 5U);  // the end of the line
    EXPECT_EQ(text.offsetOf({99, 0}), 12U); // the end of the text
    EXPECT_EQ(text.offsetOf({4, 2}), 11U);  // a pair counts two
    EXPECT_EQ(text.positionOf(11), (Position{4, 2}));
}

TEST(TextDocument, EditsKeepTheLines) {
    std::mt19937 random(7);
    const std::u16string pieces[] = {u"", u"x", u"\n", u"\r", u"\r\n", u"あ\nb", u"𠮟"};
    TextDocument text(u"one\r\ntwo\nthree\r");
    for (int i = 0; i < 5000; ++i) {
        const std::size_t first = random() % (text.text().size() + 1);
        const std::size_t last = std::min(first + random() % 4, text.text().size());
        std::u16string expected = text.text();
        const Range range{text.positionOf(first), text.positionOf(last)};
        // What stands between the halves of a line end is none of a line's places.
        const std::size_t from = text.offsetOf(range.start);
        const std::size_t to = std::max(from, text.offsetOf(range.end));
        const std::u16string& piece = pieces[random() % std::size(pieces)];
        expected.replace(from, to - from, piece);
        text.change({range, piece});
        const TextDocument fresh(expected);
        ASSERT_EQ(text.text(), expected);
        ASSERT_EQ(text.lineCount(), fresh.lineCount());
        for (std::size_t line = 0; line < fresh.lineCount(); ++line) {
            ASSERT_EQ(text.line(line), fresh.line(line)) << i;
        }
    }
}

} // namespace
} // namespace tvml::lsp
