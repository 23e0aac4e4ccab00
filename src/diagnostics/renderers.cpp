// Showing diagnostics to people and to programs. Entries: TextRenderer,
// renderJson, explanationOf.
#include <algorithm>
#include <array>

#include <nlohmann/json.hpp>

#include "diagnostics/diagnostics.h"
#include "diagnostics/text_width.h"
#include "platform/ini_text.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

// Of a wider line the part around its range is shown. Files and pipes have no
// width, but people read them on a screen later: this width serves there.
constexpr std::size_t kUsualColumns = 160;
constexpr std::size_t kLeastColumns = 20;
constexpr std::size_t kIndent = 2;
constexpr std::size_t kTabColumns = 8;

struct Colours {
    std::string_view severity;
    std::string_view strong;
    std::string_view mark;
    std::string_view end;
};

constexpr std::string_view kEnd = "\x1b[0m";
constexpr std::array<Colours, 3> kSeverityColours{{
    {"\x1b[1;36m", "\x1b[1m", "\x1b[1;32m", kEnd}, // note
    {"\x1b[1;35m", "\x1b[1m", "\x1b[1;32m", kEnd}, // warning
    {"\x1b[1;31m", "\x1b[1m", "\x1b[1;32m", kEnd}, // error
}};

std::string_view sourceName(SourceKind kind) {
    static constexpr std::array<std::string_view, 3> kNames{"script", "description", "vocabulary"};
    return kNames[static_cast<std::size_t>(kind)];
}

std::u16string_view takeLine(std::u16string_view& rest) {
    const std::u16string_view line = rest.substr(0, rest.find(u'\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    return line;
}

// The text cut into lines as its reader cuts it, since findings name line numbers
// of that reader.
std::vector<std::u16string_view> linesOf(SourceKind kind, std::u16string_view text) {
    std::vector<std::u16string_view> lines;
    while (!text.empty()) {
        lines.push_back(kind == SourceKind::vocabulary ? platform::takeIniLine(text)
                                                       : takeLine(text));
    }
    return lines;
}

// The columns that the range takes, blanks in front of it included. Tabs are
// kept, so that they have the width that the terminal gives them.
std::string caretLine(std::u16string_view before, std::u16string_view range) {
    std::string caret;
    for (std::size_t i = 0; i < before.size();) {
        const std::size_t units = unitsOfCharacter(before, i);
        caret += before[i] == u'\t' ? std::string("\t")
                                    : std::string(columnsOf(before.substr(i, units)), ' ');
        i += units;
    }
    const std::size_t columns = std::max<std::size_t>(columnsOf(range), 1);
    return caret + "^" + std::string(columns - 1, '~');
}

// What of a line is shown: all of it, or the part around a range.
struct Excerpt {
    std::u16string before;
    std::u16string range;
    std::u16string after;
};

// The most columns that a tab may take, whatever stands before it.
std::size_t mostColumnsOf(std::u16string_view text) {
    const auto tabs = static_cast<std::size_t>(std::ranges::count(text, u'\t'));
    return columnsOf(text) + tabs * (kTabColumns - 1);
}

// What of the text fits from its start, or up to its end.
std::u16string_view startOf(std::u16string_view text, std::size_t columns) {
    std::size_t size = 0;
    for (std::size_t used = 0; size < text.size();) {
        const std::size_t units = unitsOfCharacter(text, size);
        used += columnsOf(text.substr(size, units));
        if (used > columns) {
            break;
        }
        size += units;
    }
    return text.substr(0, size);
}
std::u16string_view endOf(std::u16string_view text, std::size_t columns) {
    std::size_t start = text.size();
    for (std::size_t used = 0; start > 0;) {
        const bool isPair = start > 1 && unitsOfCharacter(text, start - 2) == 2;
        const std::size_t units = isPair ? 2 : 1;
        used += columnsOf(text.substr(start - units, units));
        if (used > columns) {
            break;
        }
        start -= units;
    }
    return text.substr(start);
}

// A part that was cut, marked where it goes on.
std::u16string marked(std::u16string_view part, bool cutBefore, bool cutBehind) {
    std::u16string text = cutBefore ? u"…" : u"";
    text.append(part).append(cutBehind ? u"…" : u"");
    return text;
}

// Half of what the range leaves goes to either side, and what one side does not
// need to the other.
Excerpt cutExcerpt(const Excerpt& whole, std::size_t columns) {
    columns -= 2; // for the marks
    const std::u16string_view range = startOf(whole.range, columns);
    const std::size_t left = columns - columnsOf(range);
    const std::size_t behind = std::min(columnsOf(whole.after), left / 2);
    const std::u16string_view before = endOf(whole.before, left - behind);
    const std::u16string_view after = startOf(whole.after, left - columnsOf(before));
    return {marked(before, before.size() < whole.before.size(), false),
            marked(range, false, range.size() < whole.range.size()),
            range.size() < whole.range.size()
                ? u""
                : marked(after, false, after.size() < whole.after.size())};
}

Excerpt excerptOf(std::u16string_view line, std::size_t start, std::size_t units,
                  std::size_t columns) {
    start = std::min(start, line.size());
    Excerpt whole{harmlessText(line.substr(0, start)), harmlessText(line.substr(start, units)),
                  u""};
    whole.after = harmlessText(line.substr(start + whole.range.size()));
    if (mostColumnsOf(line) <= columns) {
        return whole;
    }
    for (std::u16string* part : {&whole.before, &whole.range, &whole.after}) {
        std::ranges::replace(*part, u'\t', u' ');
    }
    return cutExcerpt(whole, columns);
}

std::size_t excerptColumns(const Screen& screen) {
    return screen.columns == 0 ? kUsualColumns : std::max(screen.columns, kLeastColumns) - kIndent;
}

std::string place(const Diagnostic& found, const std::string& file) {
    std::string text = harmlessBytes(file);
    for (const std::int64_t number : {std::int64_t{found.line}, std::int64_t(found.column)}) {
        if (found.line != 0) {
            text.append(":").append(std::to_string(number));
        }
    }
    return text;
}

} // namespace

struct TextRenderer::Lines {
    std::array<std::vector<std::u16string_view>, 3> bySource; // filled when asked for

    std::u16string_view line(SourceKind kind, std::u16string_view text, std::int32_t number) {
        std::vector<std::u16string_view>& known = bySource[static_cast<std::size_t>(kind)];
        if (known.empty()) {
            known = linesOf(kind, text);
        }
        const auto index = static_cast<std::size_t>(number) - 1;
        return number >= 1 && index < known.size() ? known[index] : std::u16string_view{};
    }
};

TextRenderer::TextRenderer(const Sources& sources, const platform::Platform& platform,
                           Language language, Screen screen)
    : sources_(sources), platform_(platform), language_(language), screen_(screen),
      lines_(std::make_unique<Lines>()) {}

TextRenderer::~TextRenderer() = default;

std::string TextRenderer::render(const Diagnostic& found) const {
    const Colours colours =
        screen_.coloured ? kSeverityColours[static_cast<std::size_t>(found.severity)] : Colours{};
    const SourceText& source = sources_.of(found.source);
    const auto utf8 = [this](std::u16string_view text) {
        return platform_.toUtf8(harmlessText(text));
    };
    std::string text;
    text.append(colours.strong).append(place(found, source.name)).append(": ").append(colours.end);
    text.append(colours.severity)
        .append(utf8(textOf(severityText(found.severity), language_)))
        .append(": ");
    text.append(colours.end).append(colours.strong).append(utf8(found.message));
    text.append(colours.end).append(" [").append(found.code.row().code).append("]\n");
    if (found.line > 0) {
        const Excerpt shown = excerptOf(lines_->line(found.source, source.text, found.line),
                                        found.column - 1, found.units, excerptColumns(screen_));
        text.append("  ").append(utf8(shown.before + shown.range + shown.after)).append("\n  ");
        text.append(colours.mark).append(caretLine(shown.before, shown.range));
        text.append(colours.end).append("\n");
    }
    if (found.suggestions.empty()) {
        return text;
    }
    std::u16string suggestions;
    for (const std::u16string& suggestion : found.suggestions) {
        suggestions.append(suggestions.empty() ? u"" : u" / ").append(suggestion);
    }
    return text.append("  ")
        .append(utf8(formatted(Message::suggestions, language_, {suggestions})))
        .append("\n");
}

std::string renderJson(const Diagnostic& found, const Sources& sources,
                       const platform::Platform& platform) {
    nlohmann::ordered_json object;
    object["version"] = kJsonVersion;
    object["code"] = found.code.row().code;
    object["severity"] = severityName(found.severity);
    object["source"] = sourceName(found.source);
    object["file"] = sources.of(found.source).name;
    object["line"] = nullptr;
    object["column"] = nullptr;
    object["endColumn"] = nullptr;
    if (found.line > 0) {
        object["line"] = found.line;
        object["column"] = found.column;
        object["endColumn"] = found.column + found.units;
    }
    object["message"] = platform.toUtf8(found.message);
    object["suggestions"] = nlohmann::ordered_json::array();
    for (const std::u16string& suggestion : found.suggestions) {
        object["suggestions"].push_back(platform.toUtf8(suggestion));
    }
    // A file name may be no UTF-8.
    return object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

} // namespace tvml
