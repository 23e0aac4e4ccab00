// What the server answers: plain structs, which know no protocol.
#ifndef TVML_LSP_ANSWERS_H
#define TVML_LSP_ANSWERS_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "analysis/line_parts.h"
#include "diagnostics/diagnostics.h"
#include "lsp/text_document.h"

namespace tvml::lsp {

using Uri = std::string;

struct Location {
    Uri uri;
    Range range;
};

// What one document has wrong.
struct Findings {
    Uri uri;
    std::optional<std::int64_t> version;
    struct Finding {
        Range range;
        Severity severity = Severity::error;
        std::string code;
        std::u16string message;
    };
    std::vector<Finding> all;
};

enum class ItemKind : std::uint8_t { word, name, character, file, element, attribute, value };

struct CompletionItem {
    std::u16string label;
    std::u16string inserted;
    std::u16string detail; // what it means
    ItemKind kind = ItemKind::word;
};
struct CompletionList {
    Range replaced;
    std::vector<CompletionItem> items;
};

struct Hover {
    Range range;
    std::u16string text; // markdown
};

struct Symbol {
    std::u16string name;
    std::u16string detail;
    bool isSet = false;
    Range range;
    Range selected;
    std::vector<Symbol> parts;
};

struct LineSpan {
    std::size_t first = 0; // from 0
    std::size_t last = 0;
};

struct Token {
    std::size_t line = 0;
    std::size_t start = 0;
    std::size_t units = 0;
    PartKind kind = PartKind::speech;
};

struct Link {
    Range range;
    Uri target;
};

using Edits = std::map<Uri, std::vector<TextEdit>>;

enum class ActionKind : std::uint8_t { fix, rewrite, fixAll };
struct Action {
    std::u16string title;
    ActionKind kind = ActionKind::fix;
    Edits edits;
    std::optional<Findings::Finding> fixes;
};

// Either edits or why there are none.
struct RenameResult {
    Edits edits;
    std::u16string refusal;
};

// The converted script, with the script lines (from 0) that each of its lines comes
// from.
struct Preview {
    std::u16string tvml;
    std::vector<std::vector<std::size_t>> lines;
    double seconds = 0; // estimated length
};

} // namespace tvml::lsp

#endif
