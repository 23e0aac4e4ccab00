// The protocol: frames, the life of a session, errors, and requests that come too
// late.
#include <gtest/gtest.h>

#include "lsp/client.h"

namespace tvml::lsp {
namespace {

TEST(Framing, TakesWhatIsWholeAndPassesDamageBy) {
    struct Row {
        std::string_view bytes;
        std::string_view told; // bodies, "!" for damage
    };
    const Row rows[] = {
        {"Content-Length: 2\r\n\r\n{}", "{} "},
        {"content-length:2\r\nContent-Type: x\r\n\r\n{}Content-Length: 0\r\n\r\n", "{}  "},
        {"Content-Type: x\r\nContent-Length: 2\r\n\r\n[]", "[] "},
        {"Content-Length: 3\r\n\r\n{}", ""},
        {"Content-Length: two\r\n\r\nContent-Length: 2\r\n\r\n{}", "! {} "},
        {"X-Content-Length: 2\r\n\r\nContent-Length: 2\r\n\r\n{}", "! {} "},
        {"Content-Length: 99999999999999999999\r\n\r\nContent-Length: 2\r\n\r\n{}", "! {} "},
        {"Content-Length: -1\r\n\r\n\r\n\r\nContent-Length: 2\r\n\r\n{}", "! {} "},
    };
    for (const Row& row : rows) {
        for (const std::size_t piece : {row.bytes.size(), std::size_t{1}}) {
            FrameReader frames;
            std::string told;
            for (std::size_t at = 0; at < row.bytes.size(); at += piece) {
                frames.feed(row.bytes.substr(at, piece));
                while (const auto frame = frames.next()) {
                    told += (frame->damaged ? "!" : frame->body) + " ";
                }
            }
            EXPECT_EQ(told, row.told) << row.bytes << " by " << piece;
        }
    }
}

TEST(Framing, NoiseWithoutEndIsNotKept) {
    FrameReader frames;
    std::size_t damaged = 0;
    for (int i = 0; i < 200; ++i) {
        frames.feed(std::string(1000, 'x'));
        while (const auto frame = frames.next()) {
            damaged += frame->damaged ? 1 : 0;
        }
    }
    EXPECT_EQ(damaged, 1U);
    frames.feed("\r\n\r\n" + framed("{}"));
    EXPECT_EQ(frames.next().value().body, "{}");
}

TEST(Protocol, LifeOfASession) {
    Client client(false);
    EXPECT_EQ(client.askAt("hover", 0, 0)["code"], kServerNotInitialized);
    const Json started = client.ask("initialize", {{"processId", 77}});
    EXPECT_EQ(started["capabilities"]["positionEncoding"], "utf-16");
    EXPECT_EQ(client.session.parent(), 77);
    EXPECT_EQ(client.ask("initialize", Json::object())["code"], kInvalidRequest);
    EXPECT_EQ(client.session.exitCode(), 1); // when the input ends now
    EXPECT_TRUE(client.ask("shutdown", nullptr).is_null());
    EXPECT_EQ(client.askAt("hover", 0, 0)["code"], kInvalidRequest);
    client.tell("exit", nullptr);
    EXPECT_TRUE(client.session.hasEnded());
    EXPECT_EQ(client.session.exitCode(), 0);
}

TEST(Protocol, WrongMessagesGetTheProtocolsErrors) {
    struct Row {
        std::string_view body;
        std::string_view codes;
    };
    const Row rows[] = {
        {"{", "-32700 "},
        {"[]", "-32600 "},
        {"7", "-32600 "},
        {R"({"jsonrpc":"2.0","id":1})", "-32600 "},
        {R"({"jsonrpc":"2.0","id":1,"result":null})", ""}, // an answer to nothing
        {R"({"jsonrpc":"2.0","id":{},"method":"shutdown"})", "-32600 "},
        {R"({"jsonrpc":"2.0","id":1,"method":7})", "-32600 "},
        {R"({"jsonrpc":"2.0","id":1,"method":"textDocument/fly"})", "-32601 "},
        {R"({"jsonrpc":"2.0","method":"textDocument/fly"})", ""},
        {R"({"jsonrpc":"2.0","method":"textDocument/didOpen","params":{"textDocument":4}})", ""},
        {R"({"jsonrpc":"2.0","method":"textDocument/didChange","params":[]})", ""},
        {R"({"jsonrpc":"2.0","id":1,"method":"textDocument/hover"})", "-32602 "},
        {R"({"jsonrpc":"2.0","id":1,"method":"textDocument/hover","params":[1]})", "-32602 "},
        {R"({"jsonrpc":"2.0","id":1,"method":"textDocument/hover","params":{"textDocument":
            {"uri":"file:///none"},"position":{"line":"x","character":0}}})",
         "-32602 "},
        {R"({"jsonrpc":"2.0","id":1,"method":"textDocument/hover","params":{"textDocument":
            {"uri":"file:///none"},"position":{"line":4000000000,"character":4000000000}}})",
         "0 "},
        {R"({"jsonrpc":"2.0","id":"a","method":"workspace/executeCommand",
            "params":{"command":"rm"}})",
         "-32602 "},
    };
    for (const Row& row : rows) {
        Client client;
        client.sendRaw(framed(row.body));
        client.session.work();
        EXPECT_EQ(client.codes(), row.codes) << row.body;
        EXPECT_FALSE(client.askAt("hover", 0, 0).is_string()) << row.body; // goes on
    }
}

TEST(Protocol, HalfACharacterIsNoEndOfTheDocument) {
    Client client;
    client.sendRaw(framed(R"({"jsonrpc":"2.0","method":"textDocument/didOpen","params":{
        "textDocument":{"uri":"file:///plays/news.txt","version":1,
        "text":"A: \ud83d (x)\\ud83d \ud842\udf9f\n(dance)\n"}}})"));
    client.session.work();
    EXPECT_EQ(client.server.documentAt(Client::kScript)->text(),
              u"A: \uFFFD (x)\\ud83d 𠮟\n(dance)\n");
}

TEST(Protocol, RequestsThatCameTooLate) {
    Client client;
    client.open("A: Hello\n");
    const auto hover = [&client](int id) {
        client.send({{"id", id},
                     {"method", "textDocument/hover"},
                     {"params",
                      {{"textDocument", {{"uri", Client::kScript}}},
                       {"position", {{"line", 0}, {"character", 0}}}}}});
    };
    hover(101);
    hover(102);
    client.send({{"method", "$/cancelRequest"}, {"params", {{"id", 101}}}});
    client.session.work();
    EXPECT_EQ(client.codes(), "-32800 0 ");
    client.received.clear();
    hover(103);
    client.edit(0, 0, 0, "B");
    hover(104);
    client.session.work();
    EXPECT_EQ(client.codes(), "-32801 0 ");
}

TEST(Protocol, FindingsComeOnceBehindTheLastEdit) {
    Client client;
    client.open("(dance)\n");
    EXPECT_EQ(client.findings(), "0:1 S101; ");
    client.received.clear();
    for (const char* letter : {"A", ":", " "}) {
        client.edit(0, 0, 0, letter);
    }
    client.edit(0, 0, 3, "A: ");
    client.session.work();
    ASSERT_EQ(client.received.size(), 1U);
    EXPECT_EQ(client.received[0]["params"]["version"], 5);
}

TEST(Protocol, WhatFilesSayCounts) {
    Client client(true, "ja_JP.UTF-8");
    client.open("（ばんざい）\nA: (banzai)\n");
    EXPECT_EQ(client.findings(), "");
    client.machine.description = u"<staging>\n<bowl>x</bowl>\n</staging>\n";
    client.machine.stamps["/plays/news.xml"] = "later";
    client.session.idle();
    EXPECT_NE(client.findings(), "");
    EXPECT_EQ(client.findings(Client::kDescription), "1:0 D315; ");
    // An open description counts before the one on the disk, and ends with it.
    client.open("<staging>\n</staging>\n", Client::kDescription);
    EXPECT_EQ(client.findings(Client::kDescription), "");
    client.machine.memory.files[u"/host/keyword.ini"] = u"";
    client.machine.stamps["/host/keyword.ini"] = "later";
    client.session.idle();
    EXPECT_NE(client.findings("file:///host/keyword.ini"), "none told");
    client.tell("textDocument/didClose", {{"textDocument", {{"uri", Client::kScript}}}});
    EXPECT_EQ(client.findings(), "");
}

} // namespace
} // namespace tvml::lsp
