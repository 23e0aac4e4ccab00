// One client's session: messages in, messages out. It knows the protocol and nothing
// of scripts; what it answers comes from the LanguageServer.
#ifndef TVML_LSP_SESSION_H
#define TVML_LSP_SESSION_H

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "lsp/framing.h"
#include "lsp/language_server.h"
#include "lsp/protocol_json.h"

namespace tvml::lsp {

class Session {
public:
    using Send = std::function<void(const std::string&)>; // takes framed messages

    Session(LanguageServer& server, const platform::Platform& platform, Send send);

    // Takes bytes of the client, as many as there are.
    void receive(std::string_view bytes);

    // Answers what was received, then tells what is wrong with the documents. Requests
    // that a later message cancels or makes useless are not worked on.
    void work();

    // Nothing came for a while: files may have changed.
    void idle();

    bool hasEnded() const { return ended_; }

    // 0 after a shutdown, as the protocol wants it.
    int exitCode() const { return shutDown_ ? 0 : 1; }

    // The process whose end is the session's end, when the client named one.
    std::optional<std::int64_t> parent() const { return parent_; }

private:
    enum class State : std::uint8_t { starting, running };
    struct Method;
    static const Method kMethods[];
    using Answer = Json (Session::*)(const Json& params);

    void handle(const Json& message);
    void handleRequest(const Json& message, const std::string& method);
    void notify(const std::string& method, const Json& params);
    std::optional<int> uselessness(const Json& message) const;
    void answerWith(Answer answer, const Json& message);
    void send(Json message);
    void sendError(const Json& id, int code, std::string text);
    void publish();

    Json initialize(const Json& params);
    Json shutdown(const Json& params);
    Json completion(const Json& params);
    Json hover(const Json& params);
    Json definition(const Json& params);
    Json references(const Json& params);
    Json symbols(const Json& params);
    Json folds(const Json& params);
    Json tokens(const Json& params);
    Json links(const Json& params);
    Json selections(const Json& params);
    Json actions(const Json& params);
    Json prepareRename(const Json& params);
    Json rename(const Json& params);
    Json execute(const Json& params);

    void changeDocument(const Json& params);

    LanguageServer& server_;
    ProtocolWriter write_;
    Send send_;
    FrameReader frames_;
    std::deque<Json> queue_;
    State state_ = State::starting;
    bool shutDown_ = false;
    bool ended_ = false;
    bool wantsLengths_ = false; // a client that shows how long the programme is
    std::optional<std::int64_t> parent_;
};

} // namespace tvml::lsp

#endif
