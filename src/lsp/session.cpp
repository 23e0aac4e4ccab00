// The messages of the protocol. Entry: Session.
#include "lsp/session.h"

#include <algorithm>
#include <iterator>

namespace tvml::lsp {
namespace {

// An error that answers a request.
struct RequestError {
    int code;
    std::string text;
};

Uri uriIn(const Json& params) {
    return params.at("textDocument").at("uri").get<std::string>();
}

Position placeIn(const Json& params) {
    return positionIn(params.at("position"));
}

Json capabilities() {
    return {{"positionEncoding", "utf-16"},
            {"textDocumentSync", {{"openClose", true}, {"change", 2}}},
            {"completionProvider",
             {{"triggerCharacters",
               {"（", "(", "、", "，", ",", "：", ":", "<", "$", "\"", " ", "／", "/", "\\"}}}},
            {"hoverProvider", true},
            {"definitionProvider", true},
            {"referencesProvider", true},
            {"documentSymbolProvider", true},
            {"foldingRangeProvider", true},
            {"selectionRangeProvider", true},
            {"documentLinkProvider", Json::object()},
            {"semanticTokensProvider", {{"legend", tokenLegend()}, {"full", true}}},
            {"codeActionProvider",
             {{"codeActionKinds", {"quickfix", "refactor.rewrite", "source.fixAll"}}}},
            {"renameProvider", {{"prepareProvider", true}}},
            {"executeCommandProvider", {{"commands", {"tvmlfilter.showTvml", "tvmlfilter.play"}}}}};
}

std::string methodOf(const Json& message) {
    const auto method = message.find("method");
    return method != message.end() && method->is_string() ? method->get<std::string>() : "";
}

} // namespace

struct Session::Method {
    std::string_view name;
    Answer answer;
};
const Session::Method Session::kMethods[] = {
    {"shutdown", &Session::shutdown},
    {"textDocument/completion", &Session::completion},
    {"textDocument/hover", &Session::hover},
    {"textDocument/definition", &Session::definition},
    {"textDocument/references", &Session::references},
    {"textDocument/documentSymbol", &Session::symbols},
    {"textDocument/foldingRange", &Session::folds},
    {"textDocument/semanticTokens/full", &Session::tokens},
    {"textDocument/documentLink", &Session::links},
    {"textDocument/selectionRange", &Session::selections},
    {"textDocument/codeAction", &Session::actions},
    {"textDocument/prepareRename", &Session::prepareRename},
    {"textDocument/rename", &Session::rename},
    {"workspace/executeCommand", &Session::execute},
};

Session::Session(LanguageServer& server, const platform::Platform& platform, Send send)
    : server_(server), write_(platform), send_(std::move(send)) {}

// ---- in and out

void Session::receive(std::string_view bytes) {
    frames_.feed(bytes);
    while (const std::optional<FrameReader::Frame> frame = frames_.next()) {
        Json message = frame->damaged ? Json(Json::value_t::discarded) : parsedMessage(frame->body);
        if (message.is_discarded()) {
            sendError(nullptr, kParseError, "the message is no JSON in a frame");
        } else {
            queue_.push_back(std::move(message));
        }
    }
}

void Session::send(Json message) {
    message["jsonrpc"] = "2.0";
    send_(framed(message.dump(-1, ' ', false, Json::error_handler_t::replace)));
}

void Session::sendError(const Json& id, int code, std::string text) {
    send({{"id", id}, {"error", {{"code", code}, {"message", std::move(text)}}}});
}

void Session::work() {
    while (!queue_.empty() && !ended_) {
        const Json message = std::move(queue_.front());
        queue_.pop_front();
        handle(message);
    }
    if (!ended_ && server_.isBehind()) {
        publish();
    }
}

void Session::idle() {
    server_.lookAtFiles();
    work();
}

void Session::publish() {
    for (const Findings& findings : server_.findings()) {
        send(
            {{"method", "textDocument/publishDiagnostics"}, {"params", write_.findings(findings)}});
        if (wantsLengths_ && server_.isOpen(findings.uri)) {
            send({{"method", "tvmlfilter/converted"},
                  {"params",
                   {{"uri", findings.uri}, {"seconds", server_.secondsOf(findings.uri)}}}});
        }
    }
}

// ---- dispatch

void Session::handle(const Json& message) {
    if (!message.is_object()) {
        return sendError(nullptr, kInvalidRequest, "a message is an object");
    }
    const std::string method = methodOf(message);
    const auto id = message.find("id");
    if (method.empty()) {
        const bool isResponse = message.contains("result") || message.contains("error");
        return isResponse ? void()
                          : sendError(id == message.end() ? Json() : *id, kInvalidRequest,
                                      "a request has a method");
    }
    if (id != message.end()) {
        if (!id->is_string() && !id->is_number_integer()) {
            return sendError(nullptr, kInvalidRequest, "an id is a number or a text");
        }
        return handleRequest(message, method);
    }
    try {
        notify(method, message.value("params", Json::object()));
    } catch (const Json::exception&) {
        // A notification has no answer; what it should have said is not known.
    }
}

void Session::handleRequest(const Json& message, const std::string& method) {
    const Json& id = message.at("id");
    if (shutDown_) {
        return sendError(id, kInvalidRequest, "the server was shut down");
    }
    if (method == "initialize") {
        return state_ == State::running
                   ? sendError(id, kInvalidRequest, "the server was initialized before")
                   : answerWith(&Session::initialize, message);
    }
    if (state_ == State::starting) {
        return sendError(id, kServerNotInitialized, "the server was not initialized");
    }
    const auto row = std::ranges::find(kMethods, method, &Method::name);
    if (row == std::end(kMethods)) {
        return sendError(id, kMethodNotFound, "no such method: " + method);
    }
    if (const std::optional<int> code = uselessness(message)) {
        return sendError(id, *code,
                         *code == kRequestCancelled ? "cancelled" : "the document was changed");
    }
    answerWith(row->answer, message);
}

// What waits behind a request can make its answer useless.
std::optional<int> Session::uselessness(const Json& message) const {
    const Json params = message.value("params", Json());
    const bool asksDocument = params.is_object() && params.contains("textDocument");
    for (const Json& later : queue_) {
        if (!later.is_object() || !later.contains("params") || !later["params"].is_object()) {
            continue;
        }
        const std::string method = methodOf(later);
        const Json& about = later["params"];
        if (method == "$/cancelRequest" && about.value("id", Json()) == message.at("id")) {
            return kRequestCancelled;
        }
        if (asksDocument && method == "textDocument/didChange" &&
            about.value("textDocument", Json::object()).value("uri", Json()) ==
                params["textDocument"].value("uri", Json(""))) {
            return kContentModified;
        }
    }
    return std::nullopt;
}

void Session::answerWith(Answer answer, const Json& message) {
    const Json& id = message.at("id");
    try {
        Json result = (this->*answer)(message.value("params", Json::object()));
        send({{"id", id}, {"result", std::move(result)}});
    } catch (const Json::exception& wrong) {
        sendError(id, kInvalidParams, wrong.what());
    } catch (const RequestError& error) {
        sendError(id, error.code, error.text);
    }
}

// ---- lifecycle and documents

Json Session::initialize(const Json& params) {
    state_ = State::running;
    const Json process = params.value("processId", Json());
    if (process.is_number_integer()) {
        parent_ = process.get<std::int64_t>();
    }
    const Json locale = params.value("locale", Json());
    if (locale.is_string()) {
        server_.speak(languageNamed(locale.get<std::string>()).value_or(Language::en));
    }
    const Json options = params.value("initializationOptions", Json());
    wantsLengths_ = options.is_object() && options.value("lengths", Json()) == true;
    return {{"capabilities", capabilities()}, {"serverInfo", {{"name", "tvmlfilter"}}}};
}

Json Session::shutdown(const Json&) {
    shutDown_ = true;
    return nullptr;
}

void Session::notify(const std::string& method, const Json& params) {
    if (method == "exit") {
        ended_ = true;
    }
    if (state_ == State::starting || shutDown_) {
        return;
    }
    if (method == "textDocument/didOpen") {
        const Json& document = params.at("textDocument");
        server_.open(document.at("uri"), textIn(document.at("text")), document.value("version", 0));
    } else if (method == "textDocument/didChange") {
        changeDocument(params);
    } else if (method == "textDocument/didClose") {
        const Uri uri = uriIn(params);
        server_.close(uri);
        send({{"method", "textDocument/publishDiagnostics"},
              {"params", {{"uri", uri}, {"diagnostics", Json::array()}}}});
    } else if (method == "workspace/didChangeWatchedFiles") {
        server_.lookAtFiles();
    }
}

// All of it is understood before any of it is done, so that a damaged message leaves
// the document as it was.
void Session::changeDocument(const Json& params) {
    struct Change {
        std::optional<Range> range;
        std::u16string text;
    };
    const Uri uri = uriIn(params);
    std::vector<Change> changes;
    for (const Json& one : params.at("contentChanges")) {
        const bool isPart = one.contains("range");
        changes.push_back({isPart ? std::optional(rangeIn(one.at("range"))) : std::nullopt,
                           textIn(one.at("text"))});
    }
    for (Change& one : changes) {
        if (one.range.has_value()) {
            server_.change(uri, {*one.range, std::move(one.text)});
        } else {
            server_.replace(uri, std::move(one.text));
        }
    }
    server_.setVersion(uri, params.at("textDocument").value("version", 0));
}

// ---- questions

Json Session::completion(const Json& params) {
    return write_.completion(server_.complete(uriIn(params), placeIn(params)));
}

Json Session::hover(const Json& params) {
    const std::optional<Hover> hover = server_.hover(uriIn(params), placeIn(params));
    return hover.has_value() ? write_.hover(*hover) : Json();
}

namespace {

Json allOf(const std::vector<Location>& locations) {
    Json all = Json::array();
    std::ranges::transform(locations, std::back_inserter(all), ProtocolWriter::location);
    return all;
}

} // namespace

Json Session::definition(const Json& params) {
    return allOf(server_.definition(uriIn(params), placeIn(params)));
}

Json Session::references(const Json& params) {
    return allOf(server_.references(uriIn(params), placeIn(params)));
}

Json Session::symbols(const Json& params) {
    return write_.symbols(server_.symbols(uriIn(params)));
}

Json Session::folds(const Json& params) {
    Json all = Json::array();
    for (const LineSpan& fold : server_.folds(uriIn(params))) {
        all.push_back({{"startLine", fold.first}, {"endLine", fold.last}, {"kind", "region"}});
    }
    return all;
}

Json Session::tokens(const Json& params) {
    return tokenData(server_.tokens(uriIn(params)));
}

Json Session::links(const Json& params) {
    Json all = Json::array();
    for (const Link& link : server_.links(uriIn(params))) {
        all.push_back({{"range", ProtocolWriter::range(link.range)}, {"target", link.target}});
    }
    return all;
}

// From the innermost outwards, each in the next.
Json Session::selections(const Json& params) {
    Json all = Json::array();
    for (const Json& place : params.at("positions")) {
        const std::vector<Range> ranges = server_.selections(uriIn(params), positionIn(place));
        Json whole;
        for (auto range = ranges.rbegin(); range != ranges.rend(); ++range) {
            Json inner{{"range", ProtocolWriter::range(*range)}};
            if (!whole.is_null()) {
                inner["parent"] = std::move(whole);
            }
            whole = std::move(inner);
        }
        if (whole.is_null()) {
            whole = {{"range", {{"start", place}, {"end", place}}}};
        }
        all.push_back(std::move(whole));
    }
    return all;
}

Json Session::actions(const Json& params) {
    Json all = Json::array();
    const Json only = params.value("context", Json::object()).value("only", Json());
    for (const Action& action : server_.actions(uriIn(params), rangeIn(params.at("range")))) {
        Json object = write_.action(action);
        const std::string kind = object["kind"];
        const bool wanted = !only.is_array() || std::ranges::any_of(only, [&](const Json& one) {
            return one.is_string() && kind.starts_with(one.get<std::string>());
        });
        if (wanted) {
            all.push_back(std::move(object));
        }
    }
    return all;
}

Json Session::prepareRename(const Json& params) {
    const std::optional<Range> range = server_.renamed(uriIn(params), placeIn(params));
    return range.has_value() ? ProtocolWriter::range(*range) : Json();
}

Json Session::rename(const Json& params) {
    const RenameResult result =
        server_.rename(uriIn(params), placeIn(params), textIn(params.at("newName")));
    if (!result.refusal.empty()) {
        throw RequestError{kRequestFailed, write_.text(result.refusal)};
    }
    return write_.edits(result.edits);
}

Json Session::execute(const Json& params) {
    const std::string command = params.at("command");
    const Json arguments = params.value("arguments", Json::array());
    if (command == "tvmlfilter.showTvml") {
        return write_.preview(server_.preview(arguments.at(0).get<std::string>()));
    }
    if (command == "tvmlfilter.play") {
        const std::optional<std::string> failure =
            server_.play(arguments.at(0).get<std::string>(), arguments.at(1).get<std::uint32_t>());
        if (failure.has_value()) {
            throw RequestError{kRequestFailed, *failure};
        }
        return nullptr;
    }
    throw RequestError{kInvalidParams, "no such command: " + command};
}

} // namespace tvml::lsp
