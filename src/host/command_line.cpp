// Reading the command line. Entry: runCommandLine.
//
// A new subcommand is a row of kCommands and a function; a new option is a
// member of Options and a row of kOptions. Help, completion and the manual page
// follow.
#include "host/command_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <iterator>
#include <limits>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>

#include "diagnostics/suggestions.h"
#include "host/check_command.h"
#include "host/completion_command.h"
#include "host/convert_command.h"
#include "host/explain_command.h"
#include "host/help.h"
#include "host/host_error.h"
#include "host/import_command.h"
#include "host/language.h"
#include "host/list_command.h"
#include "host/lsp_command.h"
#include "host/manual_command.h"
#include "host/new_command.h"
#include "host/option_table.h"
#include "host/project_options.h"
#include "host/stats_command.h"
#include "host/storyboard_command.h"
#include "host/text_files.h"
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
constexpr CommandSet kHelp = 1U << 7;
constexpr CommandSet kImport = 1U << 8;
constexpr CommandSet kStoryboard = 1U << 9;
constexpr CommandSet kLsp = 1U << 10;
constexpr CommandSet kNew = 1U << 11;
constexpr CommandSet kOfProjects =
    kConvert | kCheck | kStats | kExplain | kList | kImport | kLsp | kStoryboard;

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
// Other names of encodings.
constexpr std::array<std::pair<std::string_view, std::string_view>, 9> kAliases{{
    {"utf8", "utf-8"},
    {"utf16le", "utf-16le"},
    {"utf16be", "utf-16be"},
    {"sjis", "cp932"},
    {"shift_jis", "cp932"},
    {"shift-jis", "cp932"},
    {"ms932", "cp932"},
    {"windows-31j", "cp932"},
    {"windows31j", "cp932"},
}};
constexpr std::array<Choice<OutputEncoding>, 2> kOutputEncodings{{
    {"utf-8", OutputEncoding::utf8},
    {"utf-16le", OutputEncoding::utf16le},
}};
constexpr std::array<Choice<ReportFormat>, 2> kFormats{{
    {"text", ReportFormat::text},
    {"json", ReportFormat::json},
}};
constexpr std::array<Choice<BoardFormat>, 2> kBoardFormats{{
    {"html", BoardFormat::html},
    {"json", BoardFormat::json},
}};
constexpr std::array<Choice<std::optional<plays::PlayFormat>>, 5> kPlayFormats{{
    {"auto", std::nullopt},
    {"play-ja", plays::PlayFormat::japanese},
    {"play-en", plays::PlayFormat::english},
    {"fountain", plays::PlayFormat::fountain},
    {"srt", plays::PlayFormat::subtitles},
}};
constexpr std::array<Choice<FailureLevel>, 4> kFailureLevels{{
    {"note", FailureLevel::note},
    {"warning", FailureLevel::warning},
    {"error", FailureLevel::error},
    {"none", FailureLevel::none},
}};
constexpr std::array<Choice<ColorChoice>, 3> kColorChoices{{
    {"auto", ColorChoice::automatic},
    {"always", ColorChoice::always},
    {"never", ColorChoice::never},
}};
constexpr std::array<Choice<Shell>, 2> kShells{{
    {"bash", Shell::bash},
    {"zsh", Shell::zsh},
}};
constexpr std::array<Choice<ListedTable>, 12> kListedTables{{
    {"commands", ListedTable::commands},
    {"tags", ListedTable::tags},
    {"words", ListedTable::words},
    {"elements", ListedTable::elements},
    {"sets", ListedTable::sets},
    {"models", ListedTable::models},
    {"characters", ListedTable::characters},
    {"poses", ListedTable::poses},
    {"voices", ListedTable::voices},
    {"colours", ListedTable::colours},
    {"adverbs", ListedTable::adverbs},
    {"markers", ListedTable::markers},
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

// As errors call the option.
std::string nameOf(const OptionRow& row) {
    const bool several = row.value == Message::value_scripts;
    return !isArgument(row) ? std::string(namesOf(row).back())
                            : say(several ? Message::value_script : *row.value);
}

[[noreturn]] void refuseChoice(const OptionRow& row, const std::string& name) {
    refuse(Message::usage_choice, {nameOf(row), name, listOf(row.choices())});
}

// The value of a name in any case; an error that lists all names otherwise.
template <const auto& Rows> auto valueOf(const OptionRow& option, const std::string& name) {
    const std::string small = CLI::detail::to_lower(name);
    const auto alias =
        std::ranges::find(kAliases, small, [](const auto& each) { return each.first; });
    const std::string_view usual =
        alias == kAliases.end() ? std::string_view(small) : alias->second;
    const auto row = std::ranges::find(Rows, usual, [](const auto& each) { return each.name; });
    if (row == Rows.end()) {
        refuseChoice(option, name);
    }
    return row->value;
}

std::int32_t numberIn(const OptionRow& row, const std::string& digits, std::int32_t least,
                      std::int32_t most) {
    std::int32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, number);
    if (read.ec != std::errc() || read.ptr != end || number < least || number > most) {
        refuse(Message::usage_number,
               {nameOf(row), digits, std::to_string(least), std::to_string(most)});
    }
    return number;
}

// More processes than this would only wait for each other.
constexpr std::int32_t kMostJobs = 256;
constexpr std::int32_t kMostSeconds = 24 * 60 * 60;
constexpr std::int32_t kMostLines = std::numeric_limits<std::int32_t>::max();

// An empty text would be taken for an option that was not given.
void refuseNothing(const OptionRow& row, const std::string& given) {
    if (given.empty() && !isArgument(row)) {
        refuse(Message::usage_noValue, {nameOf(row), say(*row.value)});
    }
}

// How a row's value is read into its member of Options. The rows name these
// functions with their member, so that no row needs code of its own.
template <auto Member> CLI::Option* text(CLI::App& app, const OptionRow& row, Options& options) {
    return app.add_option_function<std::string>(row.names,
                                                [&row, &options](const std::string& given) {
                                                    refuseNothing(row, given);
                                                    options.*Member = given;
                                                });
}
template <auto Member> CLI::Option* flag(CLI::App& app, const OptionRow& row, Options& options) {
    return app.add_flag(row.names, options.*Member)->disable_flag_override();
}
template <auto Member, std::int32_t Least, std::int32_t Most>
CLI::Option* number(CLI::App& app, const OptionRow& row, Options& options) {
    return app.add_option_function<std::string>(
        row.names, [&row, &options](const std::string& digits) {
            options.*Member = numberIn(row, digits, Least, Most);
        });
}
template <auto Member, const auto& Rows>
CLI::Option* choice(CLI::App& app, const OptionRow& row, Options& options) {
    return app.add_option_function<std::string>(
        row.names,
        [&row, &options](const std::string& name) { options.*Member = valueOf<Rows>(row, name); });
}
// One code behind the option, which can be given again and again.
template <auto Member>
CLI::Option* codeList(CLI::App& app, const OptionRow& row, Options& options) {
    const auto take = [&options](const std::vector<std::string>& names) {
        std::ranges::transform(names, std::back_inserter(options.*Member), codeNamed);
    };
    return app.add_option_function<std::vector<std::string>>(row.names, take)
        ->allow_extra_args(false);
}
// It was chosen before the arguments were read; here it is only refused.
CLI::Option* languageOption(CLI::App& app, const OptionRow& row, Options&) {
    return app.add_option_function<std::string>(row.names, [&row](const std::string& name) {
        if (!languageNamed(name).has_value()) {
            refuseChoice(row, name);
        }
    });
}
// Answers at once, like --help, whatever else is missing.
CLI::Option* explanation(CLI::App& app, const OptionRow& row, Options&) {
    const auto explain = [](const std::string& code) {
        throw CLI::CallForVersion(explanationText(code), 0);
    };
    return app.add_option_function<std::string>(row.names, explain)->trigger_on_parse();
}
CLI::Option* scriptArgument(CLI::App& app, const OptionRow& row, Options& options) {
    return text<&Options::script>(app, row, options)->required();
}
CLI::Option* optionalScripts(CLI::App& app, const OptionRow& row, Options& options) {
    const auto take = [&options](const std::vector<std::string>& scripts) {
        options.scripts = scripts;
        options.script = scripts.front();
    };
    return app.add_option_function<std::vector<std::string>>(row.names, take);
}
// "3/64"
CLI::Option* shareOption(CLI::App& app, const OptionRow& row, Options& options) {
    const auto take = [&row, &options](const std::string& given) {
        const std::size_t slash = std::min(given.find('/'), given.size());
        const std::string count = given.substr(std::min(slash + 1, given.size()));
        options.share.count = numberIn(row, count, 1, kMostLines);
        options.share.number = numberIn(row, given.substr(0, slash), 0, options.share.count - 1);
    };
    return app.add_option_function<std::string>(row.names, take);
}
// One text behind the option, which can be given again and again.
template <auto Member> CLI::Option* texts(CLI::App& app, const OptionRow& row, Options& options) {
    const auto take = [&row, &options](const std::vector<std::string>& given) {
        for (const std::string& each : given) {
            refuseNothing(row, each);
        }
        options.*Member = given;
    };
    return app.add_option_function<std::vector<std::string>>(row.names, take)
        ->allow_extra_args(false);
}
std::vector<std::string_view> commandNames();
CLI::Option* topicArgument(CLI::App& app, const OptionRow& row, Options& options) {
    return text<&Options::topic>(app, row, options);
}
CLI::Option* shellArgument(CLI::App& app, const OptionRow& row, Options& options) {
    return choice<&Options::shell, kShells>(app, row, options)->required();
}
CLI::Option* tableArgument(CLI::App& app, const OptionRow& row, Options& options) {
    return choice<&Options::listed, kListedTables>(app, row, options)->required();
}

int runHelp(const Options& options);

constexpr OptionRow kOptions[] = {
    {kConvert, "SCRIPT", Message::value_scripts, optionalScripts, Message::option_scripts},
    {kCheck, "SCRIPT", Message::value_scripts, optionalScripts, Message::option_checked},
    {kStats | kStoryboard, "SCRIPT", Message::value_script, scriptArgument, Message::option_script},
    {kImport, "PLAY", Message::value_play, scriptArgument, Message::option_play},
    {kNew, "FOLDER", Message::value_folder, scriptArgument, Message::option_newFolder},
    {kHelp, "COMMAND", Message::value_command, topicArgument, Message::option_topic, commandNames},
    {kCompletion, "SHELL", Message::value_shell, shellArgument, Message::option_shell,
     choicesOf<kShells>},
    {kExplain, "PLACE", Message::value_place, scriptArgument, Message::option_place},
    {kList, "TABLE", Message::value_table, tableArgument, Message::option_table,
     choicesOf<kListedTables>},
    {kOfProjects, "-d,--description", Message::value_file, text<&Options::description>,
     Message::option_description},
    {kConvert, "-o,--output", Message::value_file, text<&Options::output>, Message::option_output},
    {kStoryboard, "-o,--output", Message::value_file, text<&Options::output>,
     Message::option_storyboard},
    {kStoryboard, "--format", Message::value_form, choice<&Options::boardFormat, kBoardFormats>,
     Message::option_boardFormat, choicesOf<kBoardFormats>},
    {kImport, "-o,--output", Message::value_file, text<&Options::output>,
     Message::option_importedScript},
    {kImport, "--cast", Message::value_cast, texts<&Options::cast>, Message::option_cast},
    {kImport, "--titles", {}, flag<&Options::titles>, Message::option_titles},
    {kImport, "--format", Message::value_layout, choice<&Options::playFormat, kPlayFormats>,
     Message::option_playFormat, choicesOf<kPlayFormats>},
    {kConvert, "--output-dir", Message::value_folder, text<&Options::outputFolder>,
     Message::option_outputFolder},
    {kConvert, "--recursive", Message::value_folder, texts<&Options::folders>,
     Message::option_recursive},
    {kConvert, "--changed", {}, flag<&Options::changed>, Message::option_changed},
    {kConvert, "--jobs", Message::value_number, number<&Options::jobs, 0, kMostJobs>,
     Message::option_jobs},
    {kConvert, "--share", Message::value_share, shareOption, Message::option_share},
    {kConvert, "--timeout", Message::value_seconds, number<&Options::timeout, 1, kMostSeconds>,
     Message::option_timeout},
    {kConvert | kCheck, "--from", Message::value_line, number<&Options::playFrom, 1, kMostLines>,
     Message::option_from},
    {kConvert | kCheck, "--to", Message::value_line, number<&Options::playTo, 1, kMostLines>,
     Message::option_to},
    {kConvert | kCheck | kStats | kExplain | kList, "--format", Message::value_form,
     choice<&Options::format, kFormats>, Message::option_format, choicesOf<kFormats>},
    {kConvert | kCheck | kStats | kExplain | kImport | kStoryboard, "--encoding",
     Message::value_encoding, choice<&Options::encoding, kInputEncodings>, Message::option_encoding,
     choicesOf<kInputEncodings>},
    {kConvert | kCheck | kStats | kExplain | kList | kImport | kStoryboard,
     "--description-encoding", Message::value_encoding,
     choice<&Options::descriptionEncoding, kInputEncodings>, Message::option_descriptionEncoding,
     choicesOf<kInputEncodings>},
    {kConvert, "--output-encoding", Message::value_encoding,
     choice<&Options::outputEncoding, kOutputEncodings>, Message::option_outputEncoding,
     choicesOf<kOutputEncodings>},
    {kImport, "--output-encoding", Message::value_encoding,
     choice<&Options::outputEncoding, kOutputEncodings>, Message::option_importedEncoding,
     choicesOf<kOutputEncodings>},
    {kConvert, "--source-map", Message::value_file, text<&Options::sourceMap>,
     Message::option_sourceMap},
    {kConvert, "--depfile", Message::value_file, text<&Options::dependencyFile>,
     Message::option_depfile},
    {kConvert | kCheck | kStoryboard | kLsp, "--media", Message::value_folder,
     texts<&Options::media>, Message::option_media},
    {kConvert | kCheck, "--watch", {}, flag<&Options::watch>, Message::option_watch},
    {kConvert, "--library", Message::value_file, text<&Options::library>, Message::option_library},
    {kConvert | kCheck, "--failure-level", Message::value_level,
     choice<&Options::failureLevel, kFailureLevels>, Message::option_failureLevel,
     choicesOf<kFailureLevels>},
    {kConvert | kCheck, "--allow", Message::value_code, codeList<&Options::allowed>,
     Message::option_allow, codes},
    {kConvert | kCheck, "--deny", Message::value_code, codeList<&Options::denied>,
     Message::option_deny, codes},
    {kConvert, "-q,--quiet", {}, flag<&Options::quiet>, Message::option_quiet},
    {kConvert | kCheck | kExplain, "--color", Message::value_color,
     choice<&Options::color, kColorChoices>, Message::option_color, choicesOf<kColorChoices>},
    {kOfProjects, "--project", Message::value_file, text<&Options::project>,
     Message::option_project},
    {kOfProjects, "--no-project", {}, flag<&Options::noProject>, Message::option_noProject},
    {kAllCommands, "--language", Message::value_language, languageOption, Message::option_language,
     languageNames},
    {kCheck, "--explain", Message::value_code, explanation, Message::option_explain, codes},
};

// The first one is run when the arguments name none.
constexpr CommandRow kCommands[] = {
    {kConvert, "convert", Message::command_convert, Message::more_convert, runConvert},
    {kCheck, "check", Message::command_check, Message::more_check, runCheck},
    {kImport, "import", Message::command_import, Message::more_import, runImport},
    {kExplain, "explain", Message::command_explain, Message::more_explain, runExplain},
    {kStats, "stats", Message::command_stats, Message::more_stats, runStats},
    {kStoryboard, "storyboard", Message::command_storyboard, Message::more_storyboard,
     runStoryboard},
    {kList, "list", Message::command_list, Message::more_list, runList},
    {kNew, "new", Message::command_new, Message::more_new, runNew},
    {kLsp, "lsp", Message::command_lsp, Message::more_lsp, runLsp},
    {kCompletion, "completion", Message::command_completion, Message::more_completion,
     runCompletion},
    {kManual, "man", Message::command_man, Message::more_man, runManual},
    {kHelp, "help", Message::command_help, Message::more_help, runHelp},
};

std::vector<std::string_view> commandNames() {
    std::vector<std::string_view> names;
    std::ranges::transform(kCommands, std::back_inserter(names), &CommandRow::name);
    return names;
}

constexpr const char* kVersion = "tvmlfilter " TVMLFILTER_VERSION;

int answer(const std::string& lines) {
    writeOutput(lines);
    return kDone;
}

// ---- wrong usage

// One of the command's names that a mistyped one may mean; empty for none.
std::string closestTo(std::string_view given, const std::vector<std::string_view>& names) {
    ClosestNames closest(utf16(given));
    for (const std::string_view name : names) {
        closest.offer(utf16(name));
    }
    const std::vector<std::u16string> found = closest.take();
    return found.empty() ? "" : utf8(found.front());
}

std::string unexpectedText(const CommandRow& command, std::string_view given) {
    if (!given.starts_with('-') || given == "-") {
        return say(Message::usage_extraArgument, {given});
    }
    const std::string_view name = given.substr(0, given.find('='));
    std::vector<std::string_view> names{"--help"};
    for (const OptionRow& row : rowsOf(command)) {
        const auto own = namesOf(row);
        names.insert(names.end(), own.begin(), own.end());
    }
    const std::string meant = closestTo(name, names);
    return meant.empty() ? say(Message::usage_unknownOption, {name})
                         : say(Message::usage_meantOption, {name, meant});
}

// The option that an error of the parser is about: it begins with the name.
std::string mismatchText(const CommandRow& command, const CLI::App& app, std::string_view error) {
    error.remove_prefix(std::min(error.find_first_not_of('-'), error.size()));
    for (const OptionRow& row : rowsOf(command)) {
        const std::string name(namesOf(row).back());
        if (isArgument(row) || !error.starts_with(name.substr(2))) {
            continue;
        }
        return !row.value.has_value() ? say(Message::usage_flag, {name})
               : app.get_option(name)->count() > 1
                   ? say(Message::usage_twice, {name})
                   : say(Message::usage_noValue, {name, say(*row.value)});
    }
    return say(Message::usage_other, {error});
}

std::string missingText(const CommandRow& command) {
    const auto rows = rowsOf(command);
    const auto argument = std::ranges::find_if(rows, isArgument);
    return say(Message::usage_noArgument, {nameOf(*argument)});
}

// In our words what the parser found.
HostError usageError(const CommandRow& command, const CLI::App& app, const CLI::ParseError& error) {
    const auto rest = app.remaining(true);
    const bool missing = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
    const std::string text = !rest.empty() ? unexpectedText(command, rest.front())
                             : missing     ? missingText(command)
                                           : mismatchText(command, app, error.what());
    return {kWrongUsage,
            errorLine(Message::usage_hint, {text, std::string("tvmlfilter ") + command.name})};
}

// One row of kCommands with its rows of kOptions.
void addCommand(CLI::App& app, const CommandRow& row, Options& options) {
    CLI::App* command = app.add_subcommand(row.name);
    for (const OptionRow& option : kOptions) {
        if ((option.commands & row.bit) != 0) {
            option.add(*command, option, options);
        }
    }
    if (row.bit == kConvert) {
        command->add_flag(kWorkerOption, options.isWorker);
    }
}

// Scripts can also come from folders, or one after the other.
void requireScripts(const CommandRow& command, const Options& options) {
    if (command.bit == kConvert && options.scripts.empty() && options.folders.empty() &&
        !options.isWorker) {
        throw HostError{kWrongUsage, errorLine(Message::usage_hint,
                                               {missingText(command),
                                                std::string("tvmlfilter ") + command.name})};
    }
}

// The options that were given to `convert` and hold for each of its scripts, as
// arguments: all but those that are about several scripts.
std::vector<std::string> forwardedOf(const CLI::App& command) {
    static constexpr std::array<std::string_view, 8> kOwn{
        "--output", "--output-dir", "--recursive", "--changed",
        "--jobs",   "--share",      "--timeout",   "--depfile"};
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

// A mistyped command would be taken for a script.
void refuseMistyped(const std::string& first) {
    std::error_code unknown;
    if (std::filesystem::exists(std::filesystem::path(first), unknown)) {
        return;
    }
    if (const std::string meant = closestTo(first, commandNames()); !meant.empty()) {
        refuse(Message::usage_meantCommand, {first, meant});
    }
    // Scripts have a folder or an ending; commands of other programs are such words.
    const bool isWord = std::ranges::all_of(first, [](char c) { return c >= 'a' && c <= 'z'; });
    if (isWord && !first.empty()) {
        refuse(Message::usage_noCommand, {first, listOf(commandNames())});
    }
}

// How many of the arguments are the language in front of the command.
std::size_t leadingLanguage(const std::vector<std::string>& arguments) {
    const std::string_view first = arguments.empty() ? "" : std::string_view(arguments.front());
    return first == "--language"              ? std::min<std::size_t>(2, arguments.size())
           : first.starts_with("--language=") ? 1
                                              : 0;
}

// "help COMMAND" asks the command itself; of what is none, "help" tells.
void askForHelp(std::vector<std::string>& arguments) {
    const auto topic = std::find_first_of(
        arguments.begin() + 1, arguments.end(), std::begin(kCommands), std::end(kCommands),
        [](const std::string& argument, const CommandRow& row) { return argument == row.name; });
    if (arguments.front() == "help" && topic != arguments.end()) {
        arguments.front() = *topic;
        *topic = "--help";
    }
}

// Arguments that name no subcommand belong to the first one, so that a script
// alone is enough. A script that has the name of a subcommand can be given as
// "./convert". The language in front moves behind the command.
std::vector<std::string> withCommand(std::vector<std::string> arguments) {
    const auto first = arguments.begin() + static_cast<std::ptrdiff_t>(leadingLanguage(arguments));
    static constexpr std::array<std::string_view, 4> kOfProgram{"-h", "--help", "--help-all",
                                                                "--version"};
    if (first != arguments.end() &&
        (std::ranges::find(kOfProgram, *first) != kOfProgram.end() ||
         std::ranges::find(kCommands, *first, &CommandRow::name) != std::end(kCommands))) {
        std::rotate(arguments.begin(), first, first + 1);
        askForHelp(arguments);
        return arguments;
    }
    if (first != arguments.end()) {
        refuseMistyped(*first);
    }
    arguments.insert(arguments.begin(), kCommands[0].name);
    return arguments;
}

int runHelp(const Options& options) {
    if (options.topic.empty()) {
        return answer(programHelp());
    }
    const std::string meant = closestTo(options.topic, commandNames());
    refuse(meant.empty() ? Message::usage_noTopic : Message::usage_meantTopic,
           {options.topic, meant.empty() ? listOf(commandNames()) : meant});
}

} // namespace

std::span<const CommandRow> commandRows() {
    return kCommands;
}

std::span<const OptionRow> optionRows() {
    return kOptions;
}

std::vector<OptionRow> rowsOf(const CommandRow& command) {
    std::vector<OptionRow> rows;
    std::ranges::copy_if(kOptions, std::back_inserter(rows),
                         [&](const OptionRow& row) { return (row.commands & command.bit) != 0; });
    return rows;
}

std::string listOf(const std::vector<std::string_view>& names) {
    std::string list;
    for (const std::string_view name : names) {
        list.append(list.empty() ? "" : ", ").append(name);
    }
    return list;
}

std::string helpOf(const OptionRow& row) {
    const bool few = row.choices != nullptr && row.value != Message::value_code;
    return say(row.help) + (few ? ": " + listOf(row.choices()) : "");
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
    CLI::App app;
    app.allow_windows_style_options(false); // a path may begin with a slash
    app.set_version_flag("--version", kVersion);
    app.set_help_all_flag("--help-all");
    Options options;
    for (const CommandRow& row : kCommands) {
        addCommand(app, row, options);
    }
    std::vector<std::string> words = withCommand(arguments);
    const auto row = std::ranges::find(kCommands, words.front(), &CommandRow::name);
    std::ranges::reverse(words); // as CLI11 takes them
    try {
        app.parse(words);
    } catch (const CLI::CallForAllHelp&) {
        return answer(helpOfAll());
    } catch (const CLI::CallForHelp&) {
        return answer(row == std::end(kCommands) ? programHelp() : commandHelp(*row));
    } catch (const CLI::CallForVersion& text) {
        return answer(text.what() + std::string("\n"));
    } catch (const CLI::ParseError& error) {
        throw row == std::end(kCommands)
            ? HostError{kWrongUsage, errorLine(Message::usage_other, {error.what()})}
            : usageError(*row, *app.get_subcommand(row->name), error);
    }
    const CLI::App& command = *app.get_subcommand(row->name);
    requireScripts(*row, options);
    options.forwarded = forwardedOf(command);
    if ((row->bit & kOfProjects & ~kLsp) != 0) {
        applyProject(options, [&command](const char* name) {
            const CLI::Option* option = command.get_option_no_throw(name);
            return option != nullptr && option->count() > 0;
        });
    }
    return row->run(options);
}

} // namespace tvml::host
