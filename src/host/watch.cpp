// Entry: watchInputs.
#include "host/watch.h"

#include <chrono>
#include <filesystem>
#include <system_error>

#include "host/host_error.h"
#include "host/ini_folder.h"
#include "host/inputs.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

namespace fs = std::filesystem;

using platform::FileWatch;
using namespace std::chrono_literals;

// Editors write a file in several steps: what comes within the first time is one
// change, and one that goes on and on is looked at after the second.
constexpr std::chrono::milliseconds kQuiet = 50ms;
constexpr std::chrono::milliseconds kLongest = 1000ms;

// A pipe in a file's place would be waited for without an end.
void refuseSpecialFiles(const std::vector<std::string>& files) {
    for (const std::string& file : files) {
        std::error_code unknown;
        if (fs::is_other(fs::path(std::u8string(file.begin(), file.end())), unknown)) {
            throw inputOrOutputError(file, {}, Message::failure_watchedFile);
        }
    }
}

void runOrTell(const std::vector<std::string>& files, const std::function<void()>& work) {
    try {
        refuseSpecialFiles(files);
        work();
    } catch (const HostError& failure) {
        platform::writeStream(platform::OutputStream::error, failure.message + "\n");
    }
}

// Waits for a change and for the quiet behind it.
FileWatch::Event nextChange(FileWatch& watch) {
    FileWatch::Event event = watch.wait(std::nullopt);
    const auto latest = std::chrono::steady_clock::now() + kLongest;
    while (event == FileWatch::Event::changed && std::chrono::steady_clock::now() < latest) {
        event = watch.wait(kQuiet);
    }
    return event;
}

} // namespace

int watchInputs(const Options& options, const std::function<void()>& work) {
    FileWatch watch;
    std::vector<std::string> files = options.scripts;
    files.push_back(options.description.empty() ? fileOfProgram(u"default.xml")
                                                : options.description);
    files.push_back(iniFile(u"keyword.ini"));
    files.push_back(iniFile(u"Mirvol.ini"));
    if (const platform::Failure failure = watch.start(files)) {
        throw inputOrOutputError(files.front(), {}, Message::failure_watch, {systemText(*failure)});
    }
    do {
        runOrTell(files, work);
    } while (nextChange(watch) != FileWatch::Event::ended);
    return kDone;
}

} // namespace tvml::host
