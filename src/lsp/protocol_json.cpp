// Entries: the functions of the header.
#include "lsp/protocol_json.h"

#include <array>

namespace tvml::lsp {
namespace {

// The protocol's numbers.
int numberOf(Severity severity) {
    return severity == Severity::error ? 1 : severity == Severity::warning ? 2 : 3;
}

int numberOf(ItemKind kind) {
    // In the order of ItemKind: keyword, value, variable, file, class, property, enum
    // member.
    static constexpr std::array<int, 7> kNumbers{14, 12, 6, 17, 7, 10, 20};
    return kNumbers[static_cast<std::size_t>(kind)];
}

std::string_view nameOf(ActionKind kind) {
    static constexpr std::array<std::string_view, 3> kNames{"quickfix", "refactor.rewrite",
                                                            "source.fixAll"};
    return kNames[static_cast<std::size_t>(kind)];
}

// In the order of PartKind; parts without a name are not coloured.
constexpr std::array<std::string_view, 13> kTokenTypes{
    "class", "keyword", "macro",      "function", "method", "parameter", "modifier",
    "type",  "string",  "enumMember", "string",   "",       ""};

bool isHex(const std::string& text, std::size_t at) {
    return at < text.size() &&
           std::string_view("0123456789abcdefABCDEF").find(text[at]) != std::string_view::npos;
}

// The value of an escape "\uXXXX", or 0.
unsigned escapeAt(const std::string& text, std::size_t at) {
    if (text.compare(at, 2, "\\u") != 0 || !isHex(text, at + 2) || !isHex(text, at + 3) ||
        !isHex(text, at + 4) || !isHex(text, at + 5)) {
        return 0;
    }
    return static_cast<unsigned>(std::stoul(text.substr(at + 2, 4), nullptr, 16));
}

std::string withoutHalves(std::string text) {
    for (std::size_t at = text.find('\\'); at != std::string::npos; at = text.find('\\', at)) {
        const unsigned first = escapeAt(text, at);
        const unsigned second = first == 0 ? 0 : escapeAt(text, at + 6);
        const bool isPair =
            first >= 0xD800 && first < 0xDC00 && second >= 0xDC00 && second < 0xE000;
        if (!isPair && first >= 0xD800 && first < 0xE000) {
            text.replace(at, 6, "\\ufffd");
        }
        at += isPair ? 12 : first != 0 ? 6 : 2;
    }
    return text;
}

} // namespace

Json parsedMessage(const std::string& text) {
    Json message = Json::parse(text, nullptr, false);
    return message.is_discarded() ? Json::parse(withoutHalves(text), nullptr, false) : message;
}

std::u16string textIn(const Json& value) {
    const std::string& bytes = value.get_ref<const std::string&>();
    std::u16string text;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        static constexpr std::array<unsigned, 5> kMasks{0, 0x7F, 0x1F, 0x0F, 0x07};
        unsigned code = lead & kMasks[size];
        for (std::size_t j = 1; j < size && i + j < bytes.size(); ++j) {
            code = code << 6 | (static_cast<unsigned char>(bytes[i + j]) & 0x3FU);
        }
        if (code >= 0x10000) {
            text += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            code = 0xDC00 + (code & 0x3FF);
        }
        text += static_cast<char16_t>(code);
        i += size;
    }
    return text;
}

Position positionIn(const Json& value) {
    return {value.at("line").get<std::uint32_t>(), value.at("character").get<std::uint32_t>()};
}

Range rangeIn(const Json& value) {
    return {positionIn(value.at("start")), positionIn(value.at("end"))};
}

Json ProtocolWriter::range(const Range& range) {
    const auto place = [](const Position& position) {
        return Json{{"line", position.line}, {"character", position.unit}};
    };
    return {{"start", place(range.start)}, {"end", place(range.end)}};
}

Json ProtocolWriter::location(const Location& location) {
    return {{"uri", location.uri}, {"range", range(location.range)}};
}

Json ProtocolWriter::finding(const Findings::Finding& finding) const {
    Json object{{"range", range(finding.range)},
                {"severity", numberOf(finding.severity)},
                {"source", "tvmlfilter"},
                {"message", text(finding.message)}};
    if (!finding.code.empty()) {
        object["code"] = finding.code;
    }
    return object;
}

Json ProtocolWriter::findings(const Findings& findings) const {
    Json all = Json::array();
    for (const Findings::Finding& one : findings.all) {
        all.push_back(finding(one));
    }
    Json object{{"uri", findings.uri}, {"diagnostics", std::move(all)}};
    if (findings.version.has_value()) {
        object["version"] = *findings.version;
    }
    return object;
}

Json ProtocolWriter::completion(const CompletionList& list) const {
    Json items = Json::array();
    std::size_t number = 0;
    for (const CompletionItem& one : list.items) {
        std::string order = std::to_string(number++);
        order.insert(0, 6 - std::min<std::size_t>(6, order.size()), '0');
        Json item{{"label", text(one.label)},
                  {"kind", numberOf(one.kind)},
                  {"sortText", std::move(order)},
                  {"filterText", text(one.label)},
                  {"textEdit", {{"range", range(list.replaced)}, {"newText", text(one.inserted)}}}};
        if (!one.detail.empty()) {
            item["detail"] = text(one.detail);
        }
        items.push_back(std::move(item));
    }
    return {{"isIncomplete", false}, {"items", std::move(items)}};
}

Json ProtocolWriter::hover(const Hover& hover) const {
    return {{"contents", {{"kind", "markdown"}, {"value", text(hover.text)}}},
            {"range", range(hover.range)}};
}

Json ProtocolWriter::symbols(const std::vector<Symbol>& symbols) const {
    constexpr int kModule = 2;
    constexpr int kPackage = 4;
    Json all = Json::array();
    for (const Symbol& one : symbols) {
        all.push_back({{"name", text(one.name)},
                       {"detail", text(one.detail)},
                       {"kind", one.isSet ? kPackage : kModule},
                       {"range", range(one.range)},
                       {"selectionRange", range(one.selected)},
                       {"children", this->symbols(one.parts)}});
    }
    return all;
}

Json ProtocolWriter::edits(const Edits& edits) const {
    Json changes = Json::object();
    for (const auto& [uri, all] : edits) {
        Json& own = changes[uri] = Json::array();
        for (const TextEdit& one : all) {
            own.push_back({{"range", range(one.range)}, {"newText", text(one.text)}});
        }
    }
    return {{"changes", std::move(changes)}};
}

Json ProtocolWriter::action(const Action& action) const {
    Json object{{"title", text(action.title)},
                {"kind", nameOf(action.kind)},
                {"edit", edits(action.edits)}};
    if (action.fixes.has_value()) {
        object["diagnostics"] = Json::array({finding(*action.fixes)});
    }
    return object;
}

Json ProtocolWriter::preview(const Preview& preview) const {
    return {{"tvml", text(preview.tvml)}, {"lines", preview.lines}, {"seconds", preview.seconds}};
}

Json tokenLegend() {
    return {{"tokenTypes", kTokenTypes}, {"tokenModifiers", Json::array()}};
}

// Each token tells how far it is from the one before.
Json tokenData(const std::vector<Token>& tokens) {
    Json data = Json::array();
    Position last;
    for (const Token& token : tokens) {
        const auto type = static_cast<std::size_t>(token.kind);
        if (kTokenTypes[type].empty()) {
            continue;
        }
        const bool sameLine = token.line == last.line;
        for (const std::size_t number :
             {token.line - last.line, token.start - (sameLine ? last.unit : 0), token.units, type,
              std::size_t{0}}) {
            data.push_back(number);
        }
        last = {token.line, token.start};
    }
    return {{"data", std::move(data)}};
}

} // namespace tvml::lsp
