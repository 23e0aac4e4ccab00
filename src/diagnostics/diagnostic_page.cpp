// The table of diagnostics as text. Entries: explanationOf, foundInExample,
// diagnosticsPage.
#include "diagnostics/examples.h"

#include <algorithm>
#include <array>

#include "platform/ini_text.h"
#include "run/settings.h"
#include "vocabulary/keyword_table.h"

namespace tvml {
namespace {

struct Chapter {
    char letter;
    Message title;
};

constexpr std::array<Chapter, 4> kChapters{{
    {'S', Message::page_script},
    {'V', Message::page_vocabulary},
    {'D', Message::page_description},
    {'F', Message::page_files},
}};

// How a row's example is called.
constexpr std::array<Message, 9> kExampleTitles{Message::example_script,
                                                Message::example_description,
                                                Message::example_vocabulary,
                                                Message::example_noVocabulary,
                                                Message::example_playLine,
                                                Message::example_playBackwards,
                                                Message::example_media,
                                                Message::example_bareScript,
                                                Message::example_brokenDescription};

Message exampleTitle(ExampleKind kind) {
    return kExampleTitles[static_cast<std::size_t>(kind)];
}

// U+0000 and carriage returns cannot stand in a page: their visible signs do, and
// behind that of a carriage return the line ends.
std::string shownText(std::u16string_view text, const platform::Platform& platform) {
    std::u16string shown;
    for (const char16_t unit : text) {
        shown += unit == u'\0' ? u'\x2400' : unit == u'\r' ? u'\x240D' : unit;
        shown.append(unit == u'\r' ? 1 : 0, u'\n');
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

// A description that breaks off in front of its models.
constexpr std::u16string_view kBrokenDescription = u"<staging>\n<numofchar>2</numofchar>\n<opening";

std::u16string_view keyOf(std::u16string_view line) {
    line = line.substr(0, line.find(u'='));
    return line.starts_with(u';') ? line.substr(1) : line;
}

template <typename Visit> void visitLines(std::u16string_view text, Visit visit) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(u'\n'), text.size());
        visit(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::u16string vocabularyOf(const DiagnosticRow& row, std::u16string_view shipped) {
    switch (row.kind) {
    case ExampleKind::vocabulary:
        return vocabularyWith(shipped, row.example);
    case ExampleKind::noVocabulary:
        return std::u16string(row.example);
    case ExampleKind::bareScript:
        return {};
    default:
        return std::u16string(shipped);
    }
}

// What `check` shows for the example.
std::string findingsText(const DiagnosticRow& row, std::u16string_view shippedVocabulary,
                         const platform::Platform& platform, Language language) {
    const std::u16string vocabulary = vocabularyOf(row, shippedVocabulary);
    const Sources sources{{"programme.txt", row.example},
                          {"description.xml", row.example},
                          {"keyword.ini", vocabulary}};
    const TextRenderer renderer(sources, platform, language, {});
    std::string text;
    for (const Diagnostic& found : foundInExample(row, shippedVocabulary, platform, language)) {
        text += renderer.render(found);
    }
    return text;
}

} // namespace

std::u16string vocabularyWith(std::u16string_view iniText, std::u16string_view lines) {
    std::u16string text;
    visitLines(iniText, [&](std::u16string_view shipped) {
        bool replaced = false;
        visitLines(lines, [&](std::u16string_view line) {
            const bool isEntry = shipped.find(u'=') != shipped.npos;
            replaced = replaced || (isEntry && keyOf(line) == keyOf(shipped));
        });
        if (!replaced) {
            text.append(shipped).append(u"\n");
        }
    });
    return text.append(lines);
}

std::vector<Diagnostic> foundInExample(const DiagnosticRow& row,
                                       std::u16string_view shippedVocabulary,
                                       const platform::Platform& platform, Language language) {
    const std::u16string vocabulary = vocabularyOf(row, shippedVocabulary);
    KeywordTable words;
    words.loadFrom(platform::IniText(vocabulary));
    if (row.kind == ExampleKind::description) {
        return checkDescription(row.example, words, platform, language);
    }
    if (row.kind == ExampleKind::vocabulary || row.kind == ExampleKind::noVocabulary) {
        return checkVocabulary(words, vocabulary, language);
    }
    const bool backwards = row.kind == ExampleKind::playBackwards;
    const std::int32_t playFrom = row.kind == ExampleKind::playLine ? kExamplePlayFrom
                                  : backwards                       ? 2
                                                                    : kNoLine;
    const MediaNames media({u"map.png"});
    const bool bare = row.kind == ExampleKind::bareScript;
    const bool broken = row.kind == ExampleKind::brokenDescription;
    const std::u16string_view description = bare     ? std::u16string_view{}
                                            : broken ? kBrokenDescription
                                                     : kExampleDescription;
    const TvmlIniMirvol settings(platform);
    std::vector<Diagnostic> found =
        checkScript({row.example, playFrom, backwards ? 1 : kNoLine, description}, words, settings,
                    platform, language, row.kind == ExampleKind::media ? &media : nullptr);
    if (broken) {
        dropConsequences(found, row.example, description, language);
    }
    return found;
}

std::string explanationOf(Code code, const platform::Platform& platform, Language language) {
    const DiagnosticRow& row = code.row();
    const auto utf8 = [&](Message message) { return platform.toUtf8(textOf(message, language)); };
    std::string text(row.code);
    text.append(", ").append(utf8(severityText(row.severity))).append(": ");
    text.append(shownMessage(textOf(code.message(), language), platform)).append("\n\n");
    text.append(utf8(code.explanation())).append("\n\n");
    text.append(utf8(exampleTitle(row.kind))).append(":\n\n");
    return text.append(shownText(row.example, platform));
}

std::string diagnosticsPage(std::u16string_view shippedVocabulary,
                            const platform::Platform& platform, Language language) {
    const auto utf8 = [&](Message message) { return platform.toUtf8(textOf(message, language)); };
    std::string page = utf8(Message::page_introduction);
    page.append(fenced(platform.toUtf8(kExampleDescription), "xml"));
    for (const Chapter& chapter : kChapters) {
        page.append("\n## ").append(utf8(chapter.title)).append("\n");
        for (std::size_t i = 0; i < kDiagnosticRows.size(); ++i) {
            const DiagnosticRow& row = kDiagnosticRows[i];
            if (row.code.front() != chapter.letter) {
                continue;
            }
            page.append("\n### ").append(row.code).append(" (");
            page.append(utf8(severityText(row.severity))).append(")\n\n");
            page.append(utf8(Code::at(i).explanation())).append("\n\n");
            page.append(utf8(exampleTitle(row.kind))).append(":\n\n");
            page.append(fenced(shownText(row.example, platform),
                               row.kind == ExampleKind::description ? "xml" : ""));
            page.append("\n").append(
                fenced(findingsText(row, shippedVocabulary, platform, language), ""));
        }
    }
    return page;
}

} // namespace tvml
