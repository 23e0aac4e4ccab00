// What the files of an output folder were made from, so that the next call can
// leave out what would not change.
#ifndef TVML_HOST_ARCHIVE_RECORD_H
#define TVML_HOST_ARCHIVE_RECORD_H

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "host/archive_jobs.h"
#include "host/command_line.h"

namespace tvml::host {

// The record is a file of the output folder that grows by a line a script; what it
// lacks, or has damaged, is converted once more. So several calls may write into
// one folder, and each may be ended at any moment.
class ArchiveRecord {
public:
    // Reads what is there, and all inputs that the scripts share.
    explicit ArchiveRecord(const Options& options);

    // Whether the output was made from the very same inputs, is as it was, and no
    // older than its script.
    bool isUpToDate(const Job& job);

    // To be called when the output is complete.
    void add(const Job& job);

    // None while every line could be written.
    const std::string& failedFile() const { return failedFile_; }

private:
    struct Line {
        std::string inputs; // a number that stands for all of them
        std::string output; // its size and time
    };

    void read();
    std::optional<std::string> inputsOf(const std::string& script) const;
    std::string placeOf(const Job& job) const;

    const Options& options_;
    std::filesystem::path file_;
    std::map<std::string, Line> lines_;         // by the output's place in the folder
    std::map<std::string, std::string> inputs_; // that a job is to be converted with
    std::uint64_t shared_;
    bool torn_ = false; // the last line has no end
    std::string failedFile_;
};

} // namespace tvml::host

#endif
