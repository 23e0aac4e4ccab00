// The host's command line: its subcommands, their options and the texts of its
// help, in two tables.
#ifndef TVML_HOST_COMMAND_LINE_H
#define TVML_HOST_COMMAND_LINE_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/run_report.h"
#include "host/text_encoding.h"
#include "import/play.h"

namespace tvml::host {

// What `list` can show.
enum class ListedTable : std::uint8_t {
    commands,
    tags,
    words,
    elements,
    sets,
    models,
    characters,
    poses,
    voices,
    colours,
    adverbs,
    markers,
};

// Shells that can complete command lines.
enum class Shell : std::uint8_t { bash, zsh };

// What a storyboard is written as.
enum class BoardFormat : std::uint8_t { html, json };

// Of an archive: every `count`-th script from the one with this number on, from 0.
struct Share {
    std::int32_t number = 0;
    std::int32_t count = 1;
};

// Makes `convert` a worker of an archive. It is nothing for users, and no help
// tells of it.
inline constexpr const char* kWorkerOption = "--archive-worker";

// The values of all options of all subcommands.
struct Options {
    std::string script;               // the first one
    std::vector<std::string> scripts; // of `convert` and `check`, which take several
    std::vector<std::string> folders; // whose scripts are converted, too
    std::string outputFolder;         // for all of them; empty: there is one
    std::int32_t jobs = 0;            // processes at a time, 0: one a processor
    Share share;                      // of the scripts, for this call
    std::int32_t timeout = 0;         // seconds for a script; 0: as many as it takes
    bool changed = false;             // leave out what would become the same
    bool isWorker = false;
    std::vector<std::string> forwarded; // arguments that hold for each of the scripts
    std::string description;            // empty: the one that comes with the program
    std::string output = "-";
    std::string library; // empty: convert in this program
    std::int32_t playFrom = kNoLine;
    std::int32_t playTo = kNoLine;
    InputEncoding encoding = InputEncoding::detect;
    std::optional<InputEncoding> descriptionEncoding; // none: as `encoding`
    OutputEncoding outputEncoding = OutputEncoding::utf8;
    ReportFormat format = ReportFormat::text;
    ListedTable listed = ListedTable::commands;
    Shell shell = Shell::bash;
    std::optional<FailureLevel> failureLevel; // none: the subcommand's own
    std::vector<Code> allowed;
    std::vector<Code> denied;
    std::string sourceMap;      // file, empty for none
    std::string dependencyFile; // the same
    bool quiet = false;
    bool watch = false;
    ColorChoice color = ColorChoice::automatic;
    std::vector<std::string> media; // folders; empty: not known
    std::string project;            // file; empty: the nearest one
    bool noProject = false;
    std::string topic;                           // of `help`
    std::vector<std::string> cast;               // of `import`: NAME=LETTER
    std::optional<plays::PlayFormat> playFormat; // none: the one that the play looks like
    bool titles = false;                         // of its scenes
    BoardFormat boardFormat = BoardFormat::html; // of `storyboard`

    ReportOptions report(FailureLevel ownLevel) const {
        return {format, color, failureLevel.value_or(ownLevel), allowed, denied};
    }
};

// A subcommand: returns the exit code or throws a HostError.
using CommandFunction = int (*)(const Options&);

// Reads the arguments and runs the subcommand that they name. Help, version
// and wrong usage are answered here. Returns the exit code.
int runCommandLine(const std::vector<std::string>& arguments);

} // namespace tvml::host

#endif
