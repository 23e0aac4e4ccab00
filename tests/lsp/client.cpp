#include "lsp/client.h"

#include "diagnostics/checking.h"

namespace tvml::lsp {

MemoryMachine::MemoryMachine() : description(kExampleDescription) {
    memory.files[u"/host/keyword.ini"] = vocabularyWith(u"");
    project.description = "/plays/news.xml";
    project.media = {"/plays/media"};
    media = {{u"map.png", "/plays/media/map.png"}};
}

Client::Client(bool initialized, std::string_view locale)
    : session(server, machine.memory, [this](const std::string& message) {
          received.push_back(Json::parse(message.substr(message.find("\r\n\r\n") + 4)));
      }) {
    if (initialized) {
        ask("initialize", {{"processId", nullptr}, {"locale", locale}});
        tell("initialized", Json::object());
        received.clear();
    }
}

void Client::send(Json message) {
    message["jsonrpc"] = "2.0";
    session.receive(framed(message.dump()));
}

Json Client::ask(const std::string& method, Json params) {
    const int id = ++number_;
    send({{"id", id}, {"method", method}, {"params", std::move(params)}});
    session.work();
    for (const Json& message : received) {
        if (message.contains("id") && message["id"] == id) {
            return message.contains("error") ? message["error"] : message["result"];
        }
    }
    return "no answer";
}

Json Client::askAt(const std::string& method, std::size_t line, std::size_t unit, Json more) {
    Json params{{"textDocument", {{"uri", kScript}}},
                {"position", {{"line", line}, {"character", unit}}}};
    params.update(more.is_null() ? Json::object() : more);
    return ask("textDocument/" + method, params);
}

void Client::tell(const std::string& method, Json params) {
    send({{"method", method}, {"params", std::move(params)}});
    session.work();
}

void Client::open(std::string_view text, const std::string& uri) {
    tell("textDocument/didOpen",
         {{"textDocument",
           {{"uri", uri}, {"languageId", "tvmlscript"}, {"version", 1}, {"text", text}}}});
}

void Client::edit(std::size_t line, std::size_t start, std::size_t end, std::string_view text,
                  const std::string& uri) {
    const Json range{{"start", {{"line", line}, {"character", start}}},
                     {"end", {{"line", line}, {"character", end}}}};
    send({{"method", "textDocument/didChange"},
          {"params",
           {{"textDocument", {{"uri", uri}, {"version", ++version_}}},
            {"contentChanges", {{{"range", range}, {"text", text}}}}}}});
}

std::string Client::findings(const std::string& uri) const {
    std::string text = "none told";
    for (const Json& message : received) {
        if (message.value("method", "") != "textDocument/publishDiagnostics" ||
            message["params"]["uri"] != uri) {
            continue;
        }
        text.clear();
        for (const Json& one : message["params"]["diagnostics"]) {
            const Json& start = one["range"]["start"];
            text += std::to_string(start["line"].get<int>()) + ":";
            text += std::to_string(start["character"].get<int>()) + " ";
            text += one.value("code", "?") + "; ";
        }
    }
    return text;
}

std::string Client::codes() const {
    std::string text;
    for (const Json& message : received) {
        if (message.contains("id")) {
            text += message.contains("error")
                        ? std::to_string(message["error"]["code"].get<int>()) + " "
                        : "0 ";
        }
    }
    return text;
}

} // namespace tvml::lsp
