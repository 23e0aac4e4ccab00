// Entry: ArchiveRecord.
//
// A line is "INPUTS SIZE TIME PLACE": a number made of everything that decides on
// the output, the output's size and time, and its place in the folder.
#include "host/archive_record.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <string_view>
#include <system_error>

#include "host/inputs.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFileName = ".tvmlfilter-made";

// FNV-1a: equal inputs give equal numbers on every machine; that others do is no
// more likely than a broken disk.
std::uint64_t mixed(std::uint64_t number, std::string_view bytes) {
    for (const char each : bytes) {
        number = (number ^ static_cast<unsigned char>(each)) * 0x100000001B3U;
    }
    // Where one part ends and the next begins counts, too.
    return (number ^ bytes.size()) * 0x100000001B3U;
}

// The size and the time of a file; none when it is not there.
std::optional<std::string> stampOf(const fs::path& file) {
    std::error_code failure;
    const auto size = fs::file_size(file, failure);
    const auto time = failure ? fs::file_time_type() : fs::last_write_time(file, failure);
    if (failure) {
        return std::nullopt;
    }
    return std::to_string(size).append(" ").append(std::to_string(time.time_since_epoch().count()));
}

// Options that change what is shown but not what is written or counted.
bool isForShow(std::string_view argument) {
    static constexpr std::array<std::string_view, 4> kShown{"--color", "--format", "--language",
                                                            "--quiet"};
    return std::ranges::find(kShown, argument.substr(0, argument.find('='))) != kShown.end();
}

std::uint64_t numberOfSharedInputs(const Options& options) {
    std::uint64_t number = mixed(0xCBF29CE484222325U, TVMLFILTER_VERSION);
    for (const std::string& argument : options.forwarded) {
        number = isForShow(argument) ? number : mixed(number, argument);
    }
    for (const std::string& file : sharedInputs(options)) {
        std::string bytes;
        const platform::Failure missing = platform::readFile(file, bytes);
        number = mixed(number, missing ? "-" : bytes);
    }
    return number;
}

bool isNewer(const std::string& script, const std::string& output) {
    std::error_code unknown;
    return fs::last_write_time(pathOf(script), unknown) >
           fs::last_write_time(pathOf(output), unknown);
}

} // namespace

ArchiveRecord::ArchiveRecord(const Options& options)
    : options_(options), file_(pathOf(options.outputFolder) / kFileName),
      shared_(numberOfSharedInputs(options)) {
    read();
}

// A later line about the same output replaces an earlier one.
void ArchiveRecord::read() {
    std::string bytes;
    if (platform::readFile(nameOf(file_), bytes)) {
        return; // the first time
    }
    torn_ = !bytes.empty() && !bytes.ends_with('\n');
    std::string_view rest = bytes;
    for (std::size_t end = rest.find('\n'); end != rest.npos; end = rest.find('\n')) {
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(end + 1);
        const std::size_t output = line.find(' ') + 1;
        const std::size_t place = line.find(' ', line.find(' ', output) + 1);
        if (output > 0 && place != line.npos) {
            lines_[std::string(line.substr(place + 1))] = {
                std::string(line.substr(0, output - 1)),
                std::string(line.substr(output, place - output))};
        }
    }
}

std::optional<std::string> ArchiveRecord::inputsOf(const std::string& script) const {
    std::string bytes;
    if (platform::readFile(script, bytes)) {
        return std::nullopt;
    }
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx",
                  static_cast<unsigned long long>(mixed(shared_, bytes)));
    return digits.data();
}

std::string ArchiveRecord::placeOf(const Job& job) const {
    return nameOf(pathOf(job.output).lexically_relative(pathOf(options_.outputFolder)));
}

bool ArchiveRecord::isUpToDate(const Job& job) {
    const std::optional<std::string> inputs = inputsOf(job.script);
    if (!inputs.has_value()) {
        return false; // whoever converts it says what is wrong with it
    }
    inputs_[job.output] = *inputs;
    const auto line = lines_.find(placeOf(job));
    return line != lines_.end() && line->second.inputs == *inputs &&
           stampOf(pathOf(job.output)) == line->second.output && !isNewer(job.script, job.output);
}

void ArchiveRecord::add(const Job& job) {
    const auto inputs = inputs_.find(job.output);
    const std::optional<std::string> output = stampOf(pathOf(job.output));
    const std::string place = placeOf(job);
    if (inputs == inputs_.end() || !output.has_value() || place.find('\n') != place.npos) {
        return;
    }
    std::string line = torn_ ? "\n" : "";
    torn_ = false;
    line.append(inputs->second).append(" ").append(*output);
    line.append(" ").append(place).append("\n");
    std::ofstream file(file_, std::ios::binary | std::ios::app);
    file.write(line.data(), static_cast<std::streamsize>(line.size()));
    file.close();
    if (!file) {
        failedFile_ = nameOf(file_);
    }
}

} // namespace tvml::host
