// Worker processes of an archive. Entries: ArchiveWorker, runArchiveWorker.
//
// A library converts one script at a time, so scripts that are converted at once
// need processes: this program once more, for one script after the other. A
// request is the names of script and output, an answer the exit code and what is
// to be said of the script.
#include "host/archive_worker.h"

#include <chrono>
#include <exception>

#include "host/host_error.h"
#include "host/script_converter.h"

namespace tvml::host {
namespace {

// No file's name has such a character.
constexpr char kSeparator = '\0';

std::vector<std::string> argumentsFor(const Options& options) {
    std::vector<std::string> arguments{"convert", kWorkerOption};
    arguments.insert(arguments.end(), options.forwarded.begin(), options.forwarded.end());
    return arguments;
}

std::optional<std::chrono::milliseconds> timeFor(const Options& options) {
    return options.timeout > 0 ? std::optional(std::chrono::seconds(options.timeout))
                               : std::nullopt;
}

// Every failure is the script's own: the next one may do better.
int convertOne(ScriptConverter& converter, const std::string& request, std::string& messages) {
    const std::size_t end = request.find(kSeparator);
    const std::string script = request.substr(0, end);
    try {
        return converter.convert(script, end == request.npos ? "" : request.substr(end + 1));
    } catch (const HostError& failure) {
        messages += failure.message + "\n";
        return failure.exitCode;
    } catch (const std::bad_alloc&) {
        messages +=
            diagnosticLine(script, {}, Message::severity_error, say(Message::failure_memory)) +
            "\n";
    } catch (const std::exception& failure) {
        messages += diagnosticLine(script, {}, Message::severity_error, failure.what()) + "\n";
    }
    return kInputOrOutputFailed;
}

} // namespace

bool ArchiveWorker::convert(Job& job) {
    late_ = false;
    if (process_ == nullptr) {
        auto process = std::make_unique<platform::Worker>();
        if (const platform::Failure failure = process->start(argumentsFor(options_))) {
            lastWords_ = *failure;
            return false;
        }
        process_ = std::move(process);
    }
    using Answer = platform::Worker::Answer;
    std::string answer;
    const Answer how =
        process_->ask(job.script + kSeparator + job.output, answer, timeFor(options_));
    if (how == Answer::given && !answer.empty()) {
        job.exitCode = answer.front();
        job.messages = answer.substr(1);
        return true;
    }
    late_ = how == Answer::late;
    lastWords_ = late_
                     ? sayCounted(Message::failure_late, static_cast<std::size_t>(options_.timeout))
                     : say(Message::failure_exitCode, {std::to_string(process_->exitCode())});
    process_.reset();
    return false;
}

int runArchiveWorker(const Options& options) {
    platform::WorkerDesk desk;
    if (const platform::Failure failure = desk.open()) {
        throw HostError{kInputOrOutputFailed, errorLine(systemText(*failure))};
    }
    std::string messages;
    ScriptConverter converter(options,
                              [&messages](const std::string& lines) { messages += lines; });
    std::string request;
    while (desk.next(request)) {
        messages.clear();
        const int exitCode = convertOne(converter, request, messages);
        if (!desk.answer(std::string(1, static_cast<char>(exitCode)) + messages)) {
            break;
        }
    }
    return kDone;
}

} // namespace tvml::host
