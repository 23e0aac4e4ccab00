// Random edits of a script: after each of them the session answers as one that was
// opened with the text as it is then.
#include <random>

#include <gtest/gtest.h>

#include "diagnostics/checking.h"
#include "lsp/client.h"

namespace tvml::lsp {
namespace {

Json overview(Client& client) {
    const Json document{{"textDocument", {{"uri", Client::kScript}}}};
    return {client.findings(), client.ask("textDocument/documentSymbol", document),
            client.ask("textDocument/semanticTokens/full", document)};
}

TEST(Edits, AnswersAreThoseOfAFreshStart) {
    const std::u16string pieces[] = {u"",         u"Ａ：", u"（お辞儀、", u"）",   u"\n",
                                     u"title: x", u"\r\n", u"𠮟",         u"B: (", u"セット："};
    std::mt19937 random(11);
    Client client;
    client.open("タイトル：ニュース\nＡ：（お辞儀、速く）\nB: (salute)\n速報：地震\n");
    for (int i = 0; i < 300; ++i) {
        const TextDocument& text = *client.server.documentAt(Client::kScript);
        const std::size_t line = random() % text.lineCount();
        const std::size_t start = random() % (text.line(line).size() + 1);
        const std::size_t end = std::min(start + random() % 4, text.line(line).size() + 1);
        client.edit(line, start, end, utf8(pieces[random() % std::size(pieces)]));
        client.session.work();
        Client fresh;
        fresh.open(utf8(client.server.documentAt(Client::kScript)->text()));
        ASSERT_EQ(overview(client), overview(fresh)) << i;
        client.received.clear();
    }
}

} // namespace
} // namespace tvml::lsp
