// Entry: watchInputs.
#include "host/watch.h"

#include <chrono>

#include "host/host_error.h"
#include "host/inputs.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

using platform::FileWatch;
using namespace std::chrono_literals;

// Editors write a file in several steps: what comes within the first time is one
// change, and one that goes on and on is looked at after the second.
constexpr std::chrono::milliseconds kQuiet = 50ms;
constexpr std::chrono::milliseconds kLongest = 1000ms;

void tell(const std::string& line) {
    platform::writeStream(platform::OutputStream::error, line + "\n");
}

void convertOrTell(const Options& options, const std::function<void()>& convert) {
    try {
        convert();
        // JSON is for programs, which see the output change.
        if (options.format == ReportFormat::text) {
            tell("tvmlfilter: " + say(Message::watch_wrote, {options.output}));
        }
    } catch (const HostError& failure) {
        tell(failure.message);
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

int watchInputs(const Options& options, const std::function<void()>& convert) {
    FileWatch watch;
    const std::string description =
        options.description.empty() ? fileOfProgram(u"default.xml") : options.description;
    if (const platform::Failure failure =
            watch.start({options.script, description, fileOfProgram(u"keyword.ini"),
                         fileOfProgram(u"Mirvol.ini")})) {
        throw inputOrOutputError(options.script, {}, Message::failure_watch,
                                 {systemText(*failure)});
    }
    do {
        convertOrTell(options, convert);
    } while (nextChange(watch) != FileWatch::Event::ended);
    return kDone;
}

} // namespace tvml::host
