// Many scripts with one command. Entry: runArchive.
//
// Worker processes take one script after the other, so many at a time. What they
// say of a script is shown when it and all before it are done, so that messages
// neither mix nor change their order from run to run.
#include "host/archive_command.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <system_error>
#include <thread>

#include <nlohmann/json.hpp>

#include "host/archive_jobs.h"
#include "host/archive_record.h"
#include "host/archive_worker.h"
#include "host/dependencies.h"
#include "host/host_error.h"
#include "host/progress_bar.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

constexpr int kJsonVersion = 1;

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

std::vector<Dependency> dependenciesOf(const std::vector<Job>& jobs) {
    std::vector<Dependency> made;
    std::ranges::transform(jobs, std::back_inserter(made), [](const Job& job) {
        return Dependency{job.output, job.script};
    });
    return made;
}

// ---- conversion

// Runs the jobs that are not finished, so many at a time, and shows what is said
// of them in their order.
class Archive {
public:
    // The record gets what becomes complete, if there is one.
    Archive(const Options& options, std::vector<Job>& jobs, ArchiveRecord* record)
        : options_(options), jobs_(jobs), record_(record), bar_(jobs.size()),
          done_(static_cast<std::size_t>(std::ranges::count_if(jobs, &Job::finished))) {}

    void run() {
        bar_.show(done_, 0);
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
        return std::min(wanted, jobs_.size() - done_);
    }

    void work() {
        ArchiveWorker worker(options_);
        for (std::size_t i = next_++; i < jobs_.size(); i = next_++) {
            Job& job = jobs_[i];
            if (job.finished) {
                continue;
            }
            try {
                convert(worker, job);
            } catch (const std::exception& problem) {
                giveUp(job, problem.what());
            }
            finish(job);
        }
    }

    // A script that has taken its worker along gets one to itself, with no other
    // beside it that could have eaten up the memory.
    void convert(ArchiveWorker& worker, Job& job) {
        {
            const std::shared_lock others(running_);
            if (worker.convert(job)) {
                return;
            }
        }
        if (!worker.wasLate()) {
            const std::unique_lock alone(running_);
            if (worker.convert(job)) {
                return;
            }
        }
        giveUp(job, say(Message::failure_brokenOff, {worker.lastWords()}));
    }

    static void giveUp(Job& job, const std::string& why) {
        job.exitCode = kInputOrOutputFailed;
        job.messages = diagnosticLine(job.script, {}, Message::severity_error, why) + "\n";
    }

    void finish(Job& job) {
        const std::lock_guard lock(shown_);
        job.finished = true;
        job.hasMessages = !job.messages.empty();
        if (record_ != nullptr && job.exitCode == kDone) {
            record_->add(job);
        }
        ++done_;
        failed_ += job.failed() ? 1 : 0;
        std::string messages;
        while (told_ < jobs_.size() && jobs_[told_].finished) {
            messages += std::exchange(jobs_[told_++].messages, {});
        }
        if (!messages.empty()) {
            bar_.hide();
            platform::writeStream(platform::OutputStream::error, messages);
        }
        bar_.show(done_, failed_);
    }

    const Options& options_;
    std::vector<Job>& jobs_;
    ArchiveRecord* record_;
    std::atomic<std::size_t> next_{0};
    std::shared_mutex running_; // shared by the scripts that need not be alone
    std::mutex shown_;          // guards all below
    ProgressBar bar_;
    std::size_t done_;
    std::size_t failed_ = 0;
    std::size_t told_ = 0; // jobs whose messages are shown
};

// ---- afterwards

struct Summary {
    std::size_t withProblems = 0; // that something was told of
    std::size_t reached = 0;      // of them, those that reached the failure level
    std::size_t upToDate = 0;     // and not converted
    std::vector<std::string> failed;
};

Summary summaryOf(const std::vector<Job>& jobs) {
    Summary summary;
    for (const Job& job : jobs) {
        summary.withProblems += !job.failed() && job.hasMessages ? 1 : 0;
        summary.upToDate += job.upToDate ? 1 : 0;
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
    std::string text = sayCounted(
        Message::archive_scripts, count,
        {std::to_string(count - failed - summary.upToDate), problems, std::to_string(failed)});
    text += ifAny(Message::archive_upToDate, summary.upToDate);
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
                        {"converted", count - summary.failed.size() - summary.upToDate},
                        {"upToDate", summary.upToDate},
                        {"withProblems", summary.withProblems},
                        {"reachedFailureLevel", summary.reached},
                        {"failed", summary.failed}};
    return document.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

void skipUpToDate(std::vector<Job>& jobs, ArchiveRecord& record) {
    for (Job& job : jobs) {
        job.upToDate = job.finished = record.isUpToDate(job);
    }
}

void warnOfRecord(const ArchiveRecord& record) {
    if (!record.failedFile().empty()) {
        platform::writeStream(platform::OutputStream::error,
                              diagnosticLine(record.failedFile(), {}, Message::severity_warning,
                                             say(Message::archive_unrecorded)) +
                                  "\n");
    }
}

void tell(const Options& options, const Summary& summary, std::size_t count) {
    if (!options.quiet) {
        platform::writeStream(platform::OutputStream::error, options.format == ReportFormat::json
                                                                 ? summaryJson(summary, count)
                                                                 : summaryText(summary, count));
    }
}

} // namespace

void refuseArchiveOptions(const Options& options) {
    const struct {
        bool given;
        std::string_view name;
    } rows[] = {{options.changed, "--changed"},
                {options.timeout > 0, "--timeout"},
                {options.share.count > 1, "--share"}};
    for (const auto& row : rows) {
        if (row.given) {
            refuse(Message::usage_archiveOption, {row.name});
        }
    }
}

int runArchive(const Options& options) {
    checkUsage(options);
    std::vector<Job> jobs = jobsOf(options);
    if (!options.dependencyFile.empty()) {
        checkDependencyFile(options, dependenciesOf(jobs));
    }
    makeFolders(jobs, options);
    std::optional<ArchiveRecord> record;
    if (options.changed) {
        record.emplace(options);
        skipUpToDate(jobs, *record);
    }
    Archive(options, jobs, record.has_value() ? &*record : nullptr).run();
    const Summary summary = summaryOf(jobs);
    if (record.has_value()) {
        warnOfRecord(*record);
    }
    tell(options, summary, jobs.size());
    if (!options.dependencyFile.empty()) {
        writeDependencies(options, dependenciesOf(jobs));
    }
    if (!summary.failed.empty()) {
        return kInputOrOutputFailed;
    }
    return summary.reached > 0 ? kProblemsFound : kDone;
}

} // namespace tvml::host
