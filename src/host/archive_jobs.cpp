// Entries: jobsOf, makeFolders.
#include "host/archive_jobs.h"

#include <algorithm>
#include <map>
#include <set>
#include <system_error>

#include "host/inputs.h"

namespace tvml::host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kExtension = ".tvml";
constexpr std::string_view kScriptExtension = ".txt";

// Two names that some systems take for one file.
std::string sameOnAnySystem(std::string name) {
    std::ranges::transform(name, name.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return name;
}

HostError folderError(const std::string& folder, const std::error_code& failure) {
    return inputOrOutputError(folder, {}, Message::file_read, {systemText(failure.message())});
}

// What lies in a folder that cannot be read would be missed by nobody, so that is
// a failure. Links to folders are not followed: they may lead in a circle.
std::vector<fs::path> scriptsBelow(const std::string& folder) {
    std::vector<fs::path> scripts;
    std::error_code failure;
    fs::recursive_directory_iterator entry(pathOf(folder), failure);
    for (; !failure && entry != fs::recursive_directory_iterator(); entry.increment(failure)) {
        const bool named = sameOnAnySystem(nameOf(entry->path())).ends_with(kScriptExtension);
        std::error_code unknown;
        if (named && entry->is_regular_file(unknown)) {
            scripts.push_back(entry->path());
        }
    }
    if (failure) {
        throw folderError(folder, failure);
    }
    if (scripts.empty()) {
        throw inputOrOutputError(folder, {}, Message::archive_noScripts);
    }
    std::ranges::sort(scripts);
    return scripts;
}

class JobList {
public:
    explicit JobList(const Options& options) : options_(options) {
        for (const std::string& script : options.scripts) {
            add(script, pathOf(script).filename());
        }
        for (const std::string& folder : options.folders) {
            for (const fs::path& script : scriptsBelow(folder)) {
                add(nameOf(script), script.lexically_relative(pathOf(folder)));
            }
        }
    }

    std::vector<Job> take() { return std::move(jobs_); }

private:
    // `place` is the script's within the output folder.
    void add(const std::string& script, const fs::path& place) {
        const fs::path file = place.parent_path() / (place.stem() += kExtension);
        const auto [known, isNew] = scriptOf_.emplace(sameOnAnySystem(nameOf(file)), script);
        if (!isNew) {
            refuse(Message::usage_sameOutput, {known->second, script, nameOf(file)});
        }
        jobs_.push_back({script, nameOf(pathOf(options_.outputFolder) / file)});
    }

    const Options& options_;
    std::map<std::string, std::string> scriptOf_; // by what it becomes
    std::vector<Job> jobs_;
};

// Before or after it is read, it would be gone.
void keepInputs(const std::vector<Job>& jobs, const Options& options) {
    std::error_code unknown;
    std::set<fs::path> outputs;
    for (const Job& job : jobs) {
        outputs.insert(fs::weakly_canonical(pathOf(job.output), unknown));
    }
    std::vector<std::string> inputs = sharedInputs(options);
    std::ranges::transform(jobs, std::back_inserter(inputs), &Job::script);
    for (const std::string& input : inputs) {
        if (outputs.contains(fs::weakly_canonical(pathOf(input), unknown))) {
            refuse(Message::usage_archiveInput, {input});
        }
    }
}

// Every so many-th from the first one on.
std::vector<Job> shareOf(std::vector<Job> jobs, const Share& share) {
    std::vector<Job> taken;
    for (auto i = static_cast<std::size_t>(share.number); i < jobs.size();
         i += static_cast<std::size_t>(share.count)) {
        taken.push_back(std::move(jobs[i]));
    }
    return taken;
}

} // namespace

fs::path pathOf(const std::string& name) {
    return fs::path(std::u8string(name.begin(), name.end()));
}

std::string nameOf(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

// All of the scripts are looked at, whatever the share: the shares of one archive
// must not disagree.
std::vector<Job> jobsOf(const Options& options) {
    std::vector<Job> jobs = JobList(options).take();
    keepInputs(jobs, options);
    return shareOf(std::move(jobs), options.share);
}

void makeFolders(const std::vector<Job>& jobs, const Options& options) {
    std::set<fs::path> folders{pathOf(options.outputFolder)};
    for (const Job& job : jobs) {
        folders.insert(pathOf(job.output).parent_path());
    }
    for (const fs::path& folder : folders) {
        std::error_code failure;
        fs::create_directories(folder, failure);
        if (failure) {
            throw inputOrOutputError(nameOf(folder), {}, Message::file_folder,
                                     {systemText(failure.message())});
        }
    }
}

} // namespace tvml::host
