// Entry: applyProject.
#include "host/project_options.h"

#include "host/host_error.h"
#include "host/ini_folder.h"
#include "host/language.h"
#include "host/project_file.h"

namespace tvml::host {
namespace {

// That of the first script; of what is read from a stream, that of the working
// folder.
std::string projectFor(const Options& options) {
    if (options.noProject) {
        return {};
    }
    const bool isStream = options.script.empty() || options.script == kStandardStream;
    return !options.project.empty()
               ? options.project
               : nearestProject(isStream ? std::string() : folderOf(options.script));
}

ProjectFile readOrFail(const std::string& file) {
    try {
        return readProject(file);
    } catch (const ProjectFault& fault) {
        throw fault.error();
    }
}

using IsGiven = std::function<bool(const char* name)>;

template <typename Value> void take(Value& option, const std::optional<Value>& value) {
    option = value.value_or(option);
}

void takeLevels(Options& options, const ProjectFile& project) {
    static constexpr FailureLevel kLevels[] = {FailureLevel::note, FailureLevel::warning,
                                               FailureLevel::error};
    if (project.neverFails) {
        options.failureLevel = FailureLevel::none;
    } else if (project.failureLevel.has_value()) {
        options.failureLevel = kLevels[static_cast<std::size_t>(*project.failureLevel)];
    }
}

void takeEncodings(Options& options, const ProjectFile& project, const IsGiven& isGiven) {
    if (!isGiven("--encoding")) {
        take(options.encoding, project.encoding);
    }
    if (!isGiven("--description-encoding") && project.descriptionEncoding.has_value()) {
        options.descriptionEncoding = project.descriptionEncoding;
    }
    if (!isGiven("--output-encoding")) {
        take(options.outputEncoding, project.outputEncoding);
    }
}

// Codes add up; what the command line says of one comes last.
void takeJudgement(Options& options, const ProjectFile& project, const IsGiven& isGiven) {
    options.media = isGiven("--media") ? options.media : project.media;
    if (!isGiven("--failure-level")) {
        takeLevels(options, project);
    }
    options.allowed.insert(options.allowed.end(), project.allowed.begin(), project.allowed.end());
    options.denied.insert(options.denied.end(), project.denied.begin(), project.denied.end());
}

} // namespace

void applyProject(Options& options, const IsGiven& isGiven) {
    const std::string file = projectFor(options);
    if (file.empty()) {
        return;
    }
    const ProjectFile project = readOrFail(file);
    if (!isGiven("--project")) { // workers know no script by which to find it
        options.forwarded.push_back("--project=" + file);
    }
    if (project.language.has_value() && !isGiven("--language")) {
        chooseLanguage({"--language", std::string(nameOf(*project.language))});
    }
    chooseIniFolder(project.ini);
    options.description = isGiven("--description") ? options.description : project.description;
    takeEncodings(options, project, isGiven);
    if (options.library.empty()) { // a library tells nothing that could be judged
        takeJudgement(options, project, isGiven);
    }
    const bool oneOutput = isGiven("--output") || isGiven("--output-dir") || options.watch ||
                           !options.sourceMap.empty() || !options.library.empty() ||
                           options.script == kStandardStream || options.isWorker;
    if (!oneOutput) {
        options.outputFolder = project.output;
    }
}

} // namespace tvml::host
