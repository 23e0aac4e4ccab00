// Reading the command line. Entry: runCommandLine.
//
// A new subcommand is a row of kCommands and a function; a new option is a
// member of Options and a row of kOptions. Completion and the manual page follow.
#include "host/command_line.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <sstream>
#include <string_view>

#include <CLI/CLI.hpp>

#include "host/check_command.h"
#include "host/completion_command.h"
#include "host/convert_command.h"
#include "host/explain_command.h"
#include "host/host_error.h"
#include "host/language.h"
#include "host/list_command.h"
#include "host/manual_command.h"
#include "host/option_table.h"
#include "host/stats_command.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

constexpr CommandSet kConvert = 1U << 0;
constexpr CommandSet kStats = 1U << 3;
constexpr CommandSet kList = 1U << 1;
constexpr CommandSet kCheck = 1U << 2;
constexpr CommandSet kCompletion = 1U << 4;
constexpr CommandSet kManual = 1U << 5;
constexpr CommandSet kExplain = 1U << 6;
constexpr CommandSet kAll = ~CommandSet{0};

// A value and its name on the command line.
template <typename Value> struct Choice {
    std::string_view name;
    Value value;
};
constexpr std::array<Choice<InputEncoding>, 5> kInputEncodings{{
    {"auto", InputEncoding::detect},
    {"utf-8", InputEncoding::utf8},
    {"utf-16le", InputEncoding::utf16le},
    {"utf-16be", InputEncoding::utf16be},
    {"cp932", InputEncoding::cp932},
}};
constexpr std::array<Choice<OutputEncoding>, 2> kOutputEncodings{{
    {"utf-8", OutputEncoding::utf8},
    {"utf-16le", OutputEncoding::utf16le},
}};
constexpr std::array<Choice<ReportFormat>, 2> kFormats{{
    {"text", ReportFormat::text},
    {"json", ReportFormat::json},
}};
constexpr std::array<Choice<FailureLevel>, 4> kFailureLevels{{
    {"note", FailureLevel::note},
    {"warning", FailureLevel::warning},
    {"error", FailureLevel::error},
    {"none", FailureLevel::none},
}};
constexpr std::array<Choice<Shell>, 2> kShells{{
    {"bash", Shell::bash},
    {"zsh", Shell::zsh},
}};
constexpr std::array<Choice<ListedTable>, 4> kListedTables{{
    {"commands", ListedTable::commands},
    {"tags", ListedTable::tags},
    {"words", ListedTable::words},
    {"elements", ListedTable::elements},
}};

template <const auto& Rows> std::vector<std::string_view> choicesOf() {
    std::vector<std::string_view> names;
    std::ranges::transform(Rows, std::back_inserter(names),
                           [](const auto& row) { return row.name; });
    return names;
}

std::vector<std::string_view> codes() {
    std::vector<std::string_view> names;
    std::ranges::transform(kDiagnosticRows, std::back_inserter(names), &DiagnosticRow::code);
    return names;
}

std::string listOf(const std::vector<std::string_view>& names) {
    std::string list;
    for (const std::string_view name : names) {
        list.append(list.empty() ? "" : ", ").append(name);
    }
    return list;
}

// The value of a name in any case; an error that lists all names otherwise.
template <const auto& Rows> auto valueOf(const OptionRow& option, const std::string& name) {
    const auto row = std::ranges::find(Rows, CLI::detail::to_lower(name),
                                       [](const auto& each) { return each.name; });
    if (row == Rows.end()) {
        throw CLI::ValidationError(std::string(option.names) + ": " + name + " is none of " +
                                   listOf(option.choices()));
    }
    return row->value;
}

// More would only wait for each other.
constexpr std::int32_t kMostJobs = 256;

// How a row's value is read into its member of Options. The rows name these
// functions with their member, so that no row needs code of its own.
template <auto Member> CLI::Option* text(CLI::App& app, const OptionRow& row, Options& options) {
    return app.add_option(row.names, options.*Member, row.help);
}
template <auto Member> CLI::Option* flag(CLI::App& app, const OptionRow& row, Options& options) {
    return app.add_flag(row.names, options.*Member, row.help);
}
template <auto Member> CLI::Option* line(CLI::App& app, const OptionRow& row, Options& options) {
    CLI::Range range(1, std::numeric_limits<std::int32_t>::max());
    return app.add_option(row.names, options.*Member, row.help)->check(range.description(""));
}
template <auto Member, const auto& Rows>
CLI::Option* choice(CLI::App& app, const OptionRow& row, Options& options) {
    return app.add_option_function<std::string>(
        row.names,
        [&row, &options](const std::string& name) { options.*Member = valueOf<Rows>(row, name); },
        row.help + (": " + listOf(row.choices())));
}
// One code behind the option, which can be given again and again.
template <auto Member>
CLI::Option* codeList(CLI::App& app, const OptionRow& row, Options& options) {
    return app
        .add_option_function<std::vector<std::string>>(
            row.names,
            [&options](const std::vector<std::string>& names) {
                for (const std::string& name : names) {
                    (options.*Member).push_back(codeNamed(name));
                }
            },
            row.help)
        ->allow_extra_args(false);
}
// It was chosen before the arguments were read; here it is only refused.
CLI::Option* languageOption(CLI::App& app, const OptionRow& row, Options&) {
    const auto take = [&row](const std::string& name) {
        if (!languageNamed(name).has_value()) {
            throw CLI::ValidationError(std::string(row.names) + ": " + name + " is none of " +
                                       listOf(row.choices()));
        }
    };
    return app.add_option_function<std::string>(row.names, take,
                                                row.help + (": " + listOf(row.choices())));
}
// Answers at once, like --help, whatever else is missing.
CLI::Option* explanation(CLI::App& app, const OptionRow& row, Options&) {
    const auto explain = [](const std::string& code) {
        throw CLI::CallForVersion(explanationText(code), 0);
    };
    return app.add_option_function<std::string>(row.names, explain, row.help)->trigger_on_parse();
}
CLI::Option* scriptArgument(CLI::App& app, const OptionRow& row, Options& options) {
    return text<&Options::script>(app, row, options)->required();
}
CLI::Option* scriptArguments(CLI::App& app, const OptionRow& row, Options& options) {
    const auto take = [&options](const std::vector<std::string>& scripts) {
        options.scripts = scripts;
        options.script = scripts.front();
    };
    return app.add_option_function<std::vector<std::string>>(row.names, take, row.help)->required();
}
CLI::Option* jobCount(CLI::App& app, const OptionRow& row, Options& options) {
    CLI::Range range(0, kMostJobs);
    return app.add_option(row.names, options.jobs, row.help)->check(range.description(""));
}
CLI::Option* shellArgument(CLI::App& app, const OptionRow& row, Options& options) {
    return choice<&Options::shell, kShells>(app, row, options)->required();
}
CLI::Option* tableArgument(CLI::App& app, const OptionRow& row, Options& options) {
    return choice<&Options::listed, kListedTables>(app, row, options)->required();
}

// clang-format off
constexpr OptionRow kOptions[] = {
    {kConvert, "SCRIPT", "", scriptArguments, "The programme script, or several"},
    {kCheck | kStats, "SCRIPT", "", scriptArgument, "The programme script"},
    {kCompletion, "SHELL", "", shellArgument, "The shell", choicesOf<kShells>},
    {kExplain, "PLACE", "SCRIPT:LINE", scriptArgument, "The line, or lines as SCRIPT:FIRST-LAST"},
    {kList, "TABLE", "", tableArgument, "What to list", choicesOf<kListedTables>},
    {kConvert | kCheck | kStats | kExplain | kList, "-d,--description", "FILE",
     text<&Options::description>,
     "The filter description, XML"},
    {kConvert, "-o,--output", "FILE", text<&Options::output>,
     "The TVML script; without it, standard output"},
    {kConvert, "--output-dir", "FOLDER", text<&Options::outputFolder>,
     "Convert each script into a file of this folder"},
    {kConvert, "--jobs", "NUMBER", jobCount,
     "So many scripts at a time; 0, the default, one a processor"},
    {kConvert | kCheck, "--from", "LINE", line<&Options::playFrom>,
     "Play from this line of the script on"},
    {kConvert | kCheck, "--to", "LINE", line<&Options::playTo>,
     "End the play after this line of the script"},
    {kConvert | kCheck | kStats | kExplain | kList, "--format", "FORMAT",
     choice<&Options::format, kFormats>,
     "Form of what is reported", choicesOf<kFormats>},
    {kConvert | kCheck | kStats | kExplain, "--encoding", "NAME",
     choice<&Options::encoding, kInputEncodings>,
     "Encoding of script and description", choicesOf<kInputEncodings>},
    {kConvert | kCheck | kStats | kExplain | kList, "--description-encoding", "NAME",
     choice<&Options::descriptionEncoding, kInputEncodings>,
     "Encoding of the description alone", choicesOf<kInputEncodings>},
    {kConvert, "--output-encoding", "NAME", choice<&Options::outputEncoding, kOutputEncodings>,
     "Encoding of the TVML script", choicesOf<kOutputEncodings>},
    {kConvert, "--source-map", "FILE", text<&Options::sourceMap>,
     "Write what each line of the TVML script comes from, as JSON"},
    {kConvert, "--watch", "", flag<&Options::watch>,
     "Convert again whenever an input changes, until Ctrl+C"},
    {kConvert, "--library", "FILE", text<&Options::library>,
     "Have this library file convert, as any host does"},
    {kConvert | kCheck, "--failure-level", "LEVEL", choice<&Options::failureLevel, kFailureLevels>,
     "Exit with 3 when a problem weighs as much", choicesOf<kFailureLevels>},
    {kConvert | kCheck, "--allow", "CODE", codeList<&Options::allowed>,
     "Leave problems of this code out", codes},
    {kConvert | kCheck, "--deny", "CODE", codeList<&Options::denied>,
     "Count problems of this code as errors", codes},
    {kAll, "--language", "NAME", languageOption, "Language of what the program says",
     languageNames},
    {kCheck, "--explain", "CODE", explanation,
     "Say what a code means and what to do, with an example, and exit", codes},
};
// clang-format on

constexpr const char* kConvertFooter =
    R"(The file name - is standard input or output.

Without -d the description is the "default.xml" in the program's folder; it
has two characters, A and B. "keyword.ini" and "Mirvol.ini", the script's
vocabulary and the talk speeds, are read from the same folder.

The input encoding auto, the default, goes by a byte order mark, else takes
UTF-8, and CP932 when the bytes are not UTF-8. Lines may end with LF or CR LF.
An XML declaration that opens the description is passed over: the filter
writes its own.

The output encoding utf-8, the default, has no byte order mark; utf-16le has
one. Lines end with LF. A file that exists is replaced when the new one is
complete, and is left alone when anything fails.

With --output-dir any number of scripts is converted, each by a process of its
own into FOLDER/NAME.tvml. One that fails does not stop the others; at the end
comes a summary, and the exit code is 1 when one failed.

Problems of the script and the description are shown on standard error as
FILE:LINE:COLUMN: SEVERITY: ... [CODE]. They never stop a conversion, and the
exit code stays 0 unless --failure-level names a severity that one of them
reaches; the output is written all the same. --library shows none of them.
"tvmlfilter check --explain CODE" says what a code means.

--watch needs -o. It looks at the script, the description, "keyword.ini" and
"Mirvol.ini". When a conversion fails, or the XML of the description is broken,
the last output stays.)";

constexpr const char* kCheckFooter =
    R"(Shows the problems of the vocabulary, the description and the script on
standard output, how many there are on standard error, and writes nothing else.

The files are found and read as "tvmlfilter convert" does. The exit code is 3
when a problem is an error; --failure-level draws the line elsewhere.)";

constexpr const char* kExplainFooter =
    R"(Tells of each line what it was taken for, the word and the row that took it,
its adverbs and their values, the template that wrote it, its problems, and the
lines of the TVML script that came of it.

The whole script is converted as "tvmlfilter convert" does. JSON is one object
a line.)";

constexpr const char* kStatsFooter =
    R"(Counts lines, speeches and what is spoken, commands and tags, and the pictures
and sounds that the script names, with whether they are there: a relative name
begins in the script's folder, and a backslash stands between folders.

The speaking time is an estimate: 300 characters of Japanese or 150 words of
English a minute, times the talk speed that the speaker has. What is said
offline is counted by itself; pauses and recorded speech are not counted.)";

constexpr const char* kListFooter =
    R"(commands   the commands, voices and adverbs; with -d the description's poses
tags       the markers of tag lines; with -d the description's tags
words      all words of the vocabulary by their keys in keyword.ini
elements   the elements of a description, what is built in for each, and how
           many values $1, $2 ... it has

The words are those of the "keyword.ini" in the program's folder; B, AB and 3
stand for any letter, any two letters and any number. JSON is one object
{"version":1,"list":TABLE,"rows":[...]} on one line.)";

constexpr const char* kCompletionFooter =
    R"(bash   source <(tvmlfilter completion bash)
zsh    tvmlfilter completion zsh > FOLDER/_tvmlfilter
       for a FOLDER of $fpath)";

constexpr const char* kManualFooter = R"(To read it: tvmlfilter man | man -l -)";

// The first one is run when the arguments name none.
constexpr CommandRow kCommands[] = {
    {kConvert, "convert", "Convert a programme script into a TVML script", kConvertFooter,
     runConvert},
    {kCheck, "check", "Tell what a script, its description and the vocabulary have wrong",
     kCheckFooter, runCheck},
    {kExplain, "explain", "Tell what became of a line of a script, and why", kExplainFooter,
     runExplain},
    {kStats, "stats", "Count what is in a script and estimate its speaking time", kStatsFooter,
     runStats},
    {kList, "list", "List what scripts and descriptions can say", kListFooter, runList},
    {kCompletion, "completion", "Print a script by which a shell completes command lines",
     kCompletionFooter, runCompletion},
    {kManual, "man", "Print the manual page", kManualFooter, runManual},
};

constexpr const char* kFooter = R"(Exit codes:
  0  done; problems of the script may have been shown
  1  an input could not be read, or the output not be made or written
  2  wrong usage
  3  done, and a problem reaches the failure level)";

constexpr const char* kVersion = "tvmlfilter " TVMLFILTER_VERSION;

// Help that cannot be written is nothing to exit with an error for.
void say(platform::OutputStream stream, const std::string& lines) {
    platform::writeStream(stream, lines);
}

// CLI11 prints help, version and errors itself; here they only get a code of
// ours and a form like all other messages.
int answer(const CLI::App& app, const CLI::ParseError& result) {
    if (result.get_exit_code() != 0) {
        say(platform::OutputStream::error,
            std::string("tvmlfilter: error: ") + result.what() + "; see tvmlfilter --help\n");
        return kWrongUsage;
    }
    std::ostringstream lines;
    app.exit(result, lines, lines);
    say(platform::OutputStream::output, lines.str());
    return kDone;
}

// One row of kCommands with its rows of kOptions, in the order of the table,
// which is that of the help.
void addCommand(CLI::App& app, const CommandRow& row, Options& options) {
    CLI::App* command = app.add_subcommand(row.name, row.help);
    command->footer(row.footer);
    for (const OptionRow& option : kOptions) {
        if ((option.commands & row.bit) != 0) {
            option.add(*command, option, options)->type_name(option.value);
        }
    }
}

// The options that were given to `convert` and hold for each of its scripts, as
// arguments: all but those that are about several scripts.
std::vector<std::string> forwardedOf(const CLI::App& command) {
    static constexpr std::array<std::string_view, 3> kOwn{"--output", "--output-dir", "--jobs"};
    std::vector<std::string> arguments;
    for (const CLI::Option* option : command.get_options()) {
        const std::string name = option->get_name();
        if (option->get_positional() || std::ranges::find(kOwn, name) != kOwn.end()) {
            continue;
        }
        for (const std::string& value : option->results()) {
            arguments.push_back(option->get_items_expected_max() == 0 ? name : name + "=" + value);
        }
    }
    return arguments;
}

// Arguments that name no subcommand belong to the first one, so that a script
// alone is enough. A script that has the name of a subcommand can be given as
// "./convert".
std::vector<std::string> withCommand(std::vector<std::string> arguments) {
    // The language may stand in front of the subcommand, too.
    const auto leading = [&] {
        return arguments.empty()                   ? 0
               : arguments.front() == "--language" ? std::min<std::size_t>(2, arguments.size())
               : arguments.front().starts_with("--language=") ? 1
                                                              : 0;
    }();
    std::rotate(arguments.begin(), arguments.begin() + static_cast<std::ptrdiff_t>(leading),
                arguments.begin() +
                    static_cast<std::ptrdiff_t>(std::min(leading + 1, arguments.size())));
    static constexpr std::array<std::string_view, 4> kOfProgram{"-h", "--help", "--help-all",
                                                                "--version"};
    const bool named =
        !arguments.empty() &&
        (std::ranges::find(kOfProgram, arguments.front()) != kOfProgram.end() ||
         std::ranges::find(kCommands, arguments.front(), &CommandRow::name) != std::end(kCommands));
    if (!named) {
        arguments.insert(arguments.begin(), kCommands[0].name);
    }
    return arguments;
}

} // namespace

std::span<const CommandRow> commandRows() {
    return kCommands;
}

std::span<const OptionRow> optionRows() {
    return kOptions;
}

std::string_view programFooter() {
    return kFooter;
}

std::vector<std::string_view> namesOf(const OptionRow& row) {
    std::vector<std::string_view> names;
    for (std::string_view rest = row.names; !rest.empty();) {
        const std::size_t comma = std::min(rest.find(','), rest.size());
        names.push_back(rest.substr(0, comma));
        rest.remove_prefix(std::min(comma + 1, rest.size()));
    }
    return names;
}

int runCommandLine(const std::vector<std::string>& arguments) {
    chooseLanguage(arguments);
    CLI::App app("Turns plain-text programme scripts into TVML scripts.\n"
                 "tvmlfilter SCRIPT is short for tvmlfilter convert SCRIPT.",
                 "tvmlfilter");
    app.allow_windows_style_options(false); // a path may begin with a slash
    app.set_version_flag("--version", kVersion, "Show the version and exit");
    app.set_help_all_flag("--help-all", "Show the help of all subcommands and exit");
    app.require_subcommand(1);
    app.footer(kFooter);
    Options options;
    for (const CommandRow& row : kCommands) {
        addCommand(app, row, options);
    }
    std::vector<std::string> words = withCommand(arguments);
    std::ranges::reverse(words); // as CLI11 takes them
    try {
        app.parse(words);
    } catch (const CLI::ParseError& result) {
        return answer(app, result);
    }
    // Exactly one was given, or the parse would have failed.
    const CLI::App& command = *app.get_subcommands().front();
    const std::string name = command.get_name();
    options.forwarded = forwardedOf(command);
    return std::ranges::find(kCommands, name, &CommandRow::name)->run(options);
}

} // namespace tvml::host
