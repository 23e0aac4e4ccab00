// Many scripts with one command. Entry: runArchive.
//
// A library converts one script at a time, so every script gets a process: this
// program once more, for that script alone. What a process says is shown when
// it and all before it are done, so that messages neither mix nor change their
// order from run to run.
#include "host/archive_command.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <filesystem>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>

#include <nlohmann/json.hpp>

#include "host/host_error.h"
#include "host/progress_bar.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

namespace fs = std::filesystem;

constexpr int kJsonVersion = 1;
constexpr const char* kExtension = ".tvml";

fs::path pathOf(const std::string& name) {
    return fs::path(std::u8string(name.begin(), name.end()));
}

std::string nameOf(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

// One script and what became of it.
struct Job {
    std::string script;
    std::string output;
    std::string messages;
    int exitCode = kDone;
    bool finished = false;

    bool failed() const { return exitCode != kDone && exitCode != kProblemsFound; }
};

// ---- before anything starts

void checkUsage(const Options& options) {
    if (options.outputFolder.empty()) {
        refuse(Message::usage_folderMissing);
    }
    if (options.output != kStandardStream) {
        refuse(Message::usage_fileAndFolder);
    }
    if (options.playFrom > 0 || options.playTo >= 0) {
        refuse(Message::usage_archiveLines);
    }
    if (options.watch || !options.sourceMap.empty()) {
        refuse(Message::usage_archiveWatch);
    }
    if (std::ranges::find(options.scripts, kStandardStream) != options.scripts.end() ||
        options.description == kStandardStream) {
        refuse(Message::usage_archiveStream);
    }
}

// Two names that some systems take for one file.
std::string sameOnAnySystem(std::string name) {
    std::ranges::transform(name, name.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return name;
}

std::vector<Job> jobsOf(const Options& options) {
    std::vector<Job> jobs;
    std::map<std::string, std::string> scriptByOutput;
    for (const std::string& script : options.scripts) {
        const fs::path file = pathOf(script).stem() += kExtension;
        const auto [known, isNew] = scriptByOutput.emplace(sameOnAnySystem(nameOf(file)), script);
        if (!isNew) {
            refuse(Message::usage_sameOutput, {known->second, script, nameOf(file)});
        }
        jobs.push_back({script, nameOf(pathOf(options.outputFolder) / file), {}});
    }
    return jobs;
}

// A script that lies in the output folder under the name of a result would be
// replaced, before or after it is read.
void keepInputs(const std::vector<Job>& jobs, const Options& options) {
    std::error_code unknown;
    std::map<fs::path, std::string> outputs;
    for (const Job& job : jobs) {
        outputs.emplace(fs::weakly_canonical(pathOf(job.output), unknown), job.output);
    }
    std::vector<std::string> inputs = options.scripts;
    inputs.push_back(options.description);
    for (const std::string& input : inputs) {
        const auto output = outputs.find(fs::weakly_canonical(pathOf(input), unknown));
        if (!input.empty() && output != outputs.end()) {
            refuse(Message::usage_archiveInput, {input});
        }
    }
}

void makeFolder(const std::string& folder) {
    std::error_code failure;
    fs::create_directories(pathOf(folder), failure);
    if (failure) {
        throw inputOrOutputError(folder, {}, Message::file_folder, {systemText(failure.message())});
    }
}

// ---- conversion

std::vector<std::string> argumentsFor(const Options& options, const Job& job) {
    std::vector<std::string> arguments{"convert"};
    arguments.insert(arguments.end(), options.forwarded.begin(), options.forwarded.end());
    arguments.push_back("--output=" + job.output);
    arguments.push_back("--"); // a script's name may begin with a dash
    arguments.push_back(job.script);
    return arguments;
}

void convert(const Options& options, Job& job) {
    platform::ProgramEnd end;
    const platform::Failure failure = platform::runThisProgram(argumentsFor(options, job), end);
    job.messages = std::move(end.messages);
    job.exitCode = failure ? kInputOrOutputFailed : end.exitCode;
    if (failure || end.exitCode > kProblemsFound || end.exitCode < kDone) {
        const std::string why =
            failure ? *failure : say(Message::failure_exitCode, {std::to_string(end.exitCode)});
        job.messages += diagnosticLine(job.script, {}, Message::severity_error,
                                       say(Message::failure_brokenOff, {why})) +
                        "\n";
    }
}

// Runs the jobs, so many at a time, and shows what they say in their order.
class Archive {
public:
    Archive(const Options& options, std::vector<Job>& jobs)
        : options_(options), jobs_(jobs), bar_(jobs.size()) {}

    void run() {
        bar_.show(0, 0);
        {
            std::vector<std::jthread> helpers;
            try {
                while (helpers.size() + 1 < processCount()) {
                    helpers.emplace_back([this] { work(); });
                }
            } catch (const std::system_error&) {
                // No more threads to be had: fewer scripts at a time will do.
            }
            work();
        }
        bar_.hide();
    }

private:
    // 0 asks for one a processor.
    std::size_t processCount() const {
        const std::size_t wanted = options_.jobs > 0 ? static_cast<std::size_t>(options_.jobs)
                                                     : std::thread::hardware_concurrency();
        return std::min(wanted, jobs_.size());
    }

    void work() {
        for (std::size_t i = next_++; i < jobs_.size(); i = next_++) {
            Job& job = jobs_[i];
            try {
                convert(options_, job);
            } catch (const std::exception& problem) {
                job.exitCode = kInputOrOutputFailed;
                job.messages =
                    diagnosticLine(job.script, {}, Message::severity_error, problem.what()) + "\n";
            }
            finish(job);
        }
    }

    void finish(Job& job) {
        const std::lock_guard lock(shown_);
        job.finished = true;
        ++done_;
        failed_ += job.failed() ? 1 : 0;
        std::string messages;
        while (told_ < jobs_.size() && jobs_[told_].finished) {
            messages += jobs_[told_++].messages;
        }
        if (!messages.empty()) {
            bar_.hide();
            platform::writeStream(platform::OutputStream::error, messages);
        }
        bar_.show(done_, failed_);
    }

    const Options& options_;
    std::vector<Job>& jobs_;
    std::atomic<std::size_t> next_{0};
    std::mutex shown_; // guards all below
    ProgressBar bar_;
    std::size_t done_ = 0;
    std::size_t failed_ = 0;
    std::size_t told_ = 0; // jobs whose messages are shown
};

// ---- afterwards

struct Summary {
    std::size_t withProblems = 0; // that something was told of
    std::size_t reached = 0;      // of them, those that reached the failure level
    std::vector<std::string> failed;
};

Summary summaryOf(const std::vector<Job>& jobs) {
    Summary summary;
    for (const Job& job : jobs) {
        summary.withProblems += !job.failed() && !job.messages.empty() ? 1 : 0;
        summary.reached += job.exitCode == kProblemsFound ? 1 : 0;
        if (job.failed()) {
            summary.failed.push_back(job.script);
        }
    }
    return summary;
}

std::string summaryText(const Summary& summary, std::size_t count) {
    const std::size_t failed = summary.failed.size();
    const auto ifAny = [](Message message, std::size_t number) {
        return number == 0 ? "" : say(message, {std::to_string(number)});
    };
    const std::string problems = ifAny(Message::archive_problems, summary.withProblems) +
                                 ifAny(Message::archive_reached, summary.reached);
    std::string text =
        sayCounted(Message::archive_scripts, count,
                   {std::to_string(count - failed), problems, std::to_string(failed)});
    for (const std::string& script : summary.failed) {
        text.append("\n  ").append(say(Message::archive_failed, {script}));
    }
    text += "\n";
    return text;
}

std::string summaryJson(const Summary& summary, std::size_t count) {
    using Json = nlohmann::ordered_json;
    const Json document{{"version", kJsonVersion},
                        {"scripts", count},
                        {"converted", count - summary.failed.size()},
                        {"withProblems", summary.withProblems},
                        {"reachedFailureLevel", summary.reached},
                        {"failed", summary.failed}};
    return document.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

int runArchive(const Options& options) {
    checkUsage(options);
    std::vector<Job> jobs = jobsOf(options);
    keepInputs(jobs, options);
    makeFolder(options.outputFolder);
    Archive(options, jobs).run();
    const Summary summary = summaryOf(jobs);
    platform::writeStream(platform::OutputStream::error, options.format == ReportFormat::json
                                                             ? summaryJson(summary, jobs.size())
                                                             : summaryText(summary, jobs.size()));
    if (!summary.failed.empty()) {
        return kInputOrOutputFailed;
    }
    return summary.withProblems > 0 ? kProblemsFound : kDone;
}

} // namespace tvml::host
