// The language server and this machine. Entry: runLsp.
//
// Nothing but the standard streams is used to talk, and no file is read but those of
// the project, its media folders and the folder of the ini files.
#include "host/lsp_command.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "host/host_error.h"
#include "host/ini_folder.h"
#include "host/inputs.h"
#include "host/language.h"
#include "host/media_folder.h"
#include "host/project_file.h"
#include "host/text_files.h"
#include "lsp/session.h"
#include "platform/conversing.h"

namespace tvml::host {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kIdle = 1000ms; // between two looks at the files

fs::path pathOf(const std::string& file) {
    return std::u8string(file.begin(), file.end());
}

std::string textOf(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

class Machine final : public lsp::Surroundings {
public:
    explicit Machine(const Options& options) : options_(options), files_(iniPlatform()) {}

    lsp::Project projectOf(const std::string& script) override {
        lsp::Project project;
        try {
            project = projectFor(script);
        } catch (const ProjectFault& fault) {
            project.file = fault.file;
            project.problem = utf16(fault.text);
            project.problemLine = fault.position.line;
        } catch (const HostError& error) {
            project.problem = utf16(error.message);
        }
        if (project.description.empty()) {
            project.description = fileOfProgram(u"default.xml");
        }
        return project;
    }

    std::u16string descriptionAt(const lsp::Project& project) override {
        try {
            return readDescription(project.description, encodingOf(project));
        } catch (const HostError&) {
            return {};
        }
    }

    std::vector<lsp::MediaFile> mediaOf(const lsp::Project& project) override {
        std::vector<lsp::MediaFile> files;
        for (const std::string& folder : project.media) {
            for (const std::u16string& name : filesIn(folder)) {
                files.push_back({name, textOf(pathOf(folder) / fs::path(name))});
            }
        }
        return files;
    }

    std::string stampOf(const std::string& file) override {
        std::error_code failed;
        const fs::path path = pathOf(file);
        const auto time = fs::last_write_time(path, failed);
        if (failed) {
            return "-";
        }
        return std::to_string(time.time_since_epoch().count())
            .append(" ")
            .append(std::to_string(fs::file_size(path, failed)));
    }

    IniFiles& iniFiles() override { return files_; }
    const platform::Platform& platform() override { return iniPlatform(); }
    std::string vocabularyFile() override { return iniFile(u"keyword.ini"); }

    std::optional<std::string> play(const lsp::Project& project,
                                    std::u16string_view tvml) override {
        if (project.player.empty()) {
            return say(Message::lsp_noPlayer);
        }
        std::error_code failed;
        const std::string file = textOf(fs::temp_directory_path(failed) / "tvmlfilter-play.tvml");
        if (const platform::Failure failure =
                platform::replaceFile(file, encodeText(tvml, OutputEncoding::utf16le))) {
            return systemText(*failure);
        }
        std::vector<std::string> command = project.player;
        bool isNamed = false;
        for (std::string& word : command) {
            const std::size_t at = word.find("$FILE");
            isNamed = isNamed || at != std::string::npos;
            word = at == std::string::npos ? word : word.replace(at, 5, file);
        }
        if (!isNamed) {
            command.push_back(file);
        }
        const platform::Failure failure = platform::startProgram(command);
        return failure ? std::optional(command.front() + ": " + systemText(*failure))
                       : std::nullopt;
    }

private:
    // What the command line says goes before what the file says.
    lsp::Project projectFor(const std::string& script) {
        lsp::Project project;
        const std::string file = options_.noProject          ? std::string()
                                 : !options_.project.empty() ? options_.project
                                 : script.empty()            ? std::string()
                                                             : nearestProject(folderOf(script));
        ProjectFile read;
        if (!file.empty()) {
            read = readProject(file);
        }
        project.file = file;
        project.description = options_.description.empty()
                                  ? read.description
                                  : textOf(fs::absolute(pathOf(options_.description)));
        project.media = options_.media.empty() ? read.media : options_.media;
        project.policy.allowed = read.allowed;
        project.policy.denied = read.denied;
        project.player = read.player;
        encodings_[project.description] =
            read.descriptionEncoding.value_or(read.encoding.value_or(options_.encoding));
        if (!read.ini.empty() && options_.project.empty()) {
            chooseIniFolder(read.ini);
            files_.load();
        }
        return project;
    }

    InputEncoding encodingOf(const lsp::Project& project) const {
        const auto known = encodings_.find(project.description);
        return known == encodings_.end() ? InputEncoding::detect : known->second;
    }

    const Options& options_;
    IniFiles files_;
    std::map<std::string, InputEncoding> encodings_; // of descriptions
};

// Reads what there is before it works, so that a newer message is seen in time.
int converse(lsp::Session& session) {
    std::string bytes;
    for (;;) {
        bytes.clear();
        auto event = platform::readSomeInput(bytes, kIdle);
        while (event == platform::InputEvent::bytes &&
               platform::readSomeInput(bytes, 0ms) == platform::InputEvent::bytes) {
        }
        session.receive(bytes);
        event == platform::InputEvent::timedOut ? session.idle() : session.work();
        const auto parent = session.parent();
        const bool isAlone = event == platform::InputEvent::timedOut && parent.has_value() &&
                             !platform::isRunning(*parent);
        if (session.hasEnded() || event == platform::InputEvent::ended || isAlone) {
            return session.exitCode();
        }
    }
}

} // namespace

int runLsp(const Options& options) {
    Machine machine(options);
    lsp::LanguageServer server(machine);
    server.speak(language());
    lsp::Session session(server, iniPlatform(), [](const std::string& message) {
        platform::writeStream(platform::OutputStream::output, message);
    });
    return converse(session);
}

} // namespace tvml::host
