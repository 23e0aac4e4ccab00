// Scripts cut into lines, against cutting them unit by unit: what is looked at in
// blocks goes wrong at their edges.
#include "reading/script_lines.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tvml {
namespace {

using Lines = std::vector<std::u16string>;

Lines cutUnitByUnit(std::u16string_view script) {
    Lines lines;
    std::u16string line;
    for (const char16_t unit : script.substr(0, script.find(u'\0'))) {
        if (unit != u'\n') {
            line += unit;
            continue;
        }
        lines.push_back(line);
        line.clear();
    }
    if (!line.empty()) {
        lines.push_back(line);
    }
    return lines;
}

// Everything behind the script would be read as lines with marks.
Lines cut(const std::u16string& script) {
    const std::u16string longer = script + u"\n\"$\n";
    Lines lines;
    for (ScriptLines at(std::u16string_view(longer).substr(0, script.size())); at.next();) {
        lines.emplace_back(at.line());
        const bool hasMarks = at.line().find_first_of(u"\"$") != std::u16string_view::npos;
        EXPECT_FALSE(hasMarks && at.isPlain()) << script.size();
    }
    return lines;
}

TEST(ScriptLines, EndAtLineFeedsAndAtTheFirstZero) {
    const std::vector<std::u16string> kEnds{u"",
                                            u"\n",
                                            u"\n\n",
                                            u"\nx",
                                            std::u16string(1, u'\0'),
                                            u"\n" + std::u16string(1, u'\0') + u"x\ny"};
    const std::vector<std::u16string> kStarts{
        u"", u"\n", u"a\n\n", std::u16string(63, u'b') + u"\n", std::u16string(64, u'b') + u"\n"};
    for (const std::u16string& start : kStarts) {
        for (std::size_t units = 0; units <= 130; ++units) {
            for (const std::u16string& end : kEnds) {
                const std::u16string script = start + std::u16string(units, u'\u3042') + end;
                EXPECT_EQ(cut(script), cutUnitByUnit(script)) << start.size() << " " << units;
            }
        }
    }
}

TEST(ScriptLines, NoLineWithMarksIsPlain) {
    for (std::size_t at = 0; at < 200; ++at) {
        for (const char16_t mark : {u'"', u'$'}) {
            std::u16string script;
            while (script.size() < 200) {
                script += u"A: a line of speech\n";
            }
            script[at] = mark;
            EXPECT_EQ(cut(script), cutUnitByUnit(script)) << at;
        }
    }
}

TEST(ScriptLines, LinesFarFromMarksArePlain) {
    const std::u16string script = u"A: \"x\"\n" + std::u16string(128, u'-') + u"\nB: y\n";
    ScriptLines lines(script);
    std::u16string plain;
    while (lines.next()) {
        plain += lines.isPlain() ? u'p' : u'-';
    }
    EXPECT_EQ(plain, u"--p");
}

} // namespace
} // namespace tvml
