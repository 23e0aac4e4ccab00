// The structs of the server as the protocol's JSON, and back.
#ifndef TVML_LSP_PROTOCOL_JSON_H
#define TVML_LSP_PROTOCOL_JSON_H

#include <string>

#include <nlohmann/json.hpp>

#include "lsp/answers.h"
#include "platform/platform.h"

namespace tvml::lsp {

using Json = nlohmann::json;

// The codes of errors.
inline constexpr int kParseError = -32700;
inline constexpr int kInvalidRequest = -32600;
inline constexpr int kMethodNotFound = -32601;
inline constexpr int kInvalidParams = -32602;
inline constexpr int kServerNotInitialized = -32002;
inline constexpr int kRequestCancelled = -32800;
inline constexpr int kContentModified = -32801;
inline constexpr int kRequestFailed = -32803;

// A message; discarded when the text is no JSON. Half a surrogate pair, which editors
// can send when one half of a character was deleted, becomes U+FFFD.
Json parsedMessage(const std::string& text);

// Valid UTF-8, as the parser leaves it.
std::u16string textIn(const Json& value);
// Throws Json's exceptions for what is no position, no range.
Position positionIn(const Json& value);
Range rangeIn(const Json& value);

class ProtocolWriter {
public:
    explicit ProtocolWriter(const platform::Platform& platform) : platform_(platform) {}

    Json text(std::u16string_view text) const { return platform_.toUtf8(text); }
    static Json range(const Range& range);
    static Json location(const Location& location);
    Json findings(const Findings& findings) const;
    Json finding(const Findings::Finding& finding) const;
    Json completion(const CompletionList& list) const;
    Json hover(const Hover& hover) const;
    Json symbols(const std::vector<Symbol>& symbols) const;
    Json edits(const Edits& edits) const;
    Json action(const Action& action) const;
    Json preview(const Preview& preview) const;

private:
    const platform::Platform& platform_;
};

Json tokenLegend();
Json tokenData(const std::vector<Token>& tokens);

} // namespace tvml::lsp

#endif
