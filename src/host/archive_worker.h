// The two ends of the line between an archive and its worker processes.
#ifndef TVML_HOST_ARCHIVE_WORKER_H
#define TVML_HOST_ARCHIVE_WORKER_H

#include <memory>
#include <optional>
#include <string>

#include "host/archive_jobs.h"
#include "host/command_line.h"
#include "platform/host_services.h"

namespace tvml::host {

// A worker process that converts the scripts it is given. It is started when the
// first one comes, and another one after it has gone.
class ArchiveWorker {
public:
    explicit ArchiveWorker(const Options& options) : options_(options) {}

    // Whether the worker came back with an answer: the job's exit code and messages.
    // Else lastWords() says why it did not.
    bool convert(Job& job);

    // Whether it was ended because it took too long, and would again.
    bool wasLate() const { return late_; }

    const std::string& lastWords() const { return lastWords_; }

private:
    const Options& options_;
    std::unique_ptr<platform::Worker> process_;
    bool late_ = false;
    std::string lastWords_;
};

// What the worker process does. Returns its exit code.
int runArchiveWorker(const Options& options);

} // namespace tvml::host

#endif
