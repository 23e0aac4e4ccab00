// Entry: runNew. The texts are those of the catalogue; the description is the one that
// comes with the program.
#include "host/new_command.h"

#include <array>
#include <filesystem>

#include "host/host_error.h"
#include "host/inputs.h"
#include "host/language.h"
#include "host/project_file.h"
#include "host/text_files.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

namespace fs = std::filesystem;

struct NewFile {
    std::string name;
    std::string bytes;
};

std::string defaultDescription() {
    const std::string file = fileOfProgram(u"default.xml");
    std::string bytes;
    if (const platform::Failure failure = platform::readFile(file, bytes)) {
        throw inputOrOutputError(file, {}, Message::file_read, {systemText(*failure)});
    }
    return bytes;
}

} // namespace

// Nothing of the writer's is written over: not one file is made when one is there.
int runNew(const Options& options) {
    const fs::path folder(std::u8string(options.script.begin(), options.script.end()));
    const std::array<NewFile, 3> files{{{say(Message::new_scriptName), say(Message::new_script)},
                                        {"staging.xml", defaultDescription()},
                                        {std::string(kProjectName), say(Message::new_project)}}};
    const auto pathOf = [&folder](const NewFile& file) {
        const std::u8string text =
            (folder / std::u8string(file.name.begin(), file.name.end())).u8string();
        return std::string(text.begin(), text.end());
    };
    std::error_code failure;
    for (const NewFile& file : files) {
        if (fs::exists(folder / std::u8string(file.name.begin(), file.name.end()), failure)) {
            throw inputOrOutputError(pathOf(file), {}, Message::file_write,
                                     {say(Message::system_exists)});
        }
    }
    fs::create_directories(folder / "media", failure);
    if (failure) {
        throw inputOrOutputError(options.script, {}, Message::file_write,
                                 {systemText(failure.message())});
    }
    for (const NewFile& file : files) {
        writeBytes(pathOf(file), file.bytes);
    }
    writeOutput(say(Message::new_done, {options.script, files[0].name}) + "\n");
    return kDone;
}

} // namespace tvml::host
