// The table of diagnostics as text. Entries: diagnosticsPage, explanationOf.
#include "diagnostics/diagnostics.h"

namespace tvml {
namespace {

struct Chapter {
    char letter;
    std::string_view title;
};

constexpr std::array<Chapter, 4> kChapters{{
    {'S', "The script"},
    {'V', "The vocabulary"},
    {'D', "The description"},
    {'F', "Files and calls"},
}};

constexpr std::string_view kIntroduction =
    "# Diagnostics\n"
    "\n"
    "No problem stops a conversion: what cannot be understood is passed over, spoken or replaced.\n"
    "Diagnostics say where that happens. Each has a code that never changes its meaning, a\n"
    "severity, and a place as `FILE:LINE:COLUMN`; lines and columns count from 1, columns in "
    "UTF-16\n"
    "units.\n"
    "\n"
    "| severity | meaning |\n"
    "|---|---|\n"
    "| error | something that was written has no effect |\n"
    "| warning | something happens that its writer hardly meant |\n"
    "| note | nothing is lost; worth knowing |\n"
    "\n"
    "Each entry ends with an example that gives exactly this diagnostic. Scripts are examples for\n"
    "a programme with this description, in which C has no model:\n"
    "\n";

// How the page calls what a row's example is.
std::string_view exampleTitle(ExampleKind kind) {
    switch (kind) {
    case ExampleKind::script:
        return "Script";
    case ExampleKind::playLine:
        return "Script, played from line 9";
    case ExampleKind::bareScript:
        return "Script, without description and vocabulary";
    case ExampleKind::description:
        return "Description";
    case ExampleKind::vocabulary:
        return "In the vocabulary";
    case ExampleKind::noVocabulary:
        return "Vocabulary file";
    }
    return {};
}

// A terminator cannot stand in a page.
std::string shownText(std::u16string_view text, const platform::Platform& platform) {
    std::u16string shown(text);
    for (char16_t& unit : shown) {
        unit = unit == u'\0' ? u'\x2400' : unit;
    }
    return platform.toUtf8(shown);
}

// Placeholders of a message as a reader of the table sees them.
std::string shownMessage(std::u16string_view message, const platform::Platform& platform) {
    std::u16string shown;
    for (std::size_t i = 0; i < message.size(); ++i) {
        const bool isPlaceholder = message[i] == u'%' && i + 1 < message.size();
        shown += isPlaceholder ? u'…' : message[i];
        i += isPlaceholder ? 1 : 0;
    }
    return platform.toUtf8(shown);
}

std::string fenced(const std::string& text, std::string_view language) {
    return std::string("```").append(language).append("\n").append(text).append("```\n");
}

} // namespace

std::string explanationOf(Code code, const platform::Platform& platform) {
    const DiagnosticRow& row = code.row();
    std::string text(row.code);
    text.append(", ").append(severityName(row.severity)).append(": ");
    text.append(shownMessage(row.message, platform)).append("\n\n");
    text.append(platform.toUtf8(row.explanation)).append("\n\n");
    text.append(exampleTitle(row.kind)).append(":\n\n");
    return text.append(shownText(row.example, platform));
}

std::string diagnosticsPage(const platform::Platform& platform) {
    std::string page(kIntroduction);
    page.append(fenced(platform.toUtf8(kExampleDescription), "xml"));
    for (const Chapter& chapter : kChapters) {
        page.append("\n## ").append(chapter.title).append("\n");
        for (const DiagnosticRow& row : kDiagnosticRows) {
            if (row.code.front() != chapter.letter) {
                continue;
            }
            page.append("\n### ").append(row.code).append(" (");
            page.append(severityName(row.severity)).append(")\n\n`");
            page.append(shownMessage(row.message, platform)).append("`\n\n");
            page.append(platform.toUtf8(row.explanation)).append("\n\n");
            page.append(exampleTitle(row.kind)).append(":\n\n");
            page.append(fenced(shownText(row.example, platform),
                               row.kind == ExampleKind::description ? "xml" : ""));
        }
    }
    return page;
}

} // namespace tvml
