// A client in memory: it sends messages to a session and keeps what comes back.
#ifndef TVML_TESTS_LSP_CLIENT_H
#define TVML_TESTS_LSP_CLIENT_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "lsp/session.h"
#include "memory_platform.h"

namespace tvml::lsp {

// A machine whose only project is that of the table's examples, with one picture.
class MemoryMachine final : public Surroundings {
public:
    MemoryMachine();

    Project projectOf(const std::string&) override { return project; }
    std::u16string descriptionAt(const Project&) override { return description; }
    std::vector<MediaFile> mediaOf(const Project&) override { return media; }
    std::string stampOf(const std::string& file) override { return stamps[file]; }
    IniFiles& iniFiles() override { return files_; }
    const platform::Platform& platform() override { return memory; }
    std::string vocabularyFile() override { return "/host/keyword.ini"; }
    std::optional<std::string> play(const Project&, std::u16string_view tvml) override {
        played = tvml;
        return std::nullopt;
    }

    platform::MemoryPlatform memory;
    Project project;
    std::u16string description;
    std::vector<MediaFile> media;
    std::map<std::string, std::string> stamps;
    std::u16string played;

private:
    IniFiles files_{memory};
};

class Client {
public:
    static constexpr const char* kScript = "file:///plays/news.txt";
    static constexpr const char* kDescription = "file:///plays/news.xml";

    // Starts, and says who it is, when asked to.
    explicit Client(bool initialized = true, std::string_view locale = "en");

    void send(Json message);
    void sendRaw(std::string_view bytes) { session.receive(bytes); }
    Json ask(const std::string& method, Json params);
    Json askAt(const std::string& method, std::size_t line, std::size_t unit, Json more = {});
    void tell(const std::string& method, Json params);

    void open(std::string_view text, const std::string& uri = kScript);
    void edit(std::size_t line, std::size_t start, std::size_t end, std::string_view text,
              const std::string& uri = kScript);

    // The last findings of a document: "1:5 S101; ".
    std::string findings(const std::string& uri = kScript) const;

    // Error codes of all answers, "0" for none, in their order.
    std::string codes() const;

    MemoryMachine machine;
    LanguageServer server{machine};
    std::vector<Json> received;
    Session session;

private:
    int number_ = 0;
    int version_ = 1;
};

} // namespace tvml::lsp

#endif
