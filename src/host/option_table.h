// The subcommands and their options as tables: read by the command line, its
// help, the completion scripts and the manual page.
#ifndef TVML_HOST_OPTION_TABLE_H
#define TVML_HOST_OPTION_TABLE_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/command_line.h"
#include "host/language.h"

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace tvml::host {

// Which subcommands have an option, a bit for each.
using CommandSet = std::uint32_t;

inline constexpr CommandSet kAllCommands = ~CommandSet{0};

struct CommandRow {
    CommandSet bit;
    const char* name;
    Message help;
    Message more; // what the help of the options leaves to be said
    CommandFunction run;
};

struct OptionRow {
    CommandSet commands;          // that have the option
    const char* names;            // without dashes: an argument in its place
    std::optional<Message> value; // as help calls it; flags have none
    CLI::Option* (*add)(CLI::App&, const OptionRow&, Options&);
    Message help;
    std::vector<std::string_view> (*choices)() = nullptr; // the values that it takes, if few
};

// Options of the program itself, which answer and exit.
struct ProgramOption {
    const char* names;
    Message help;
};
inline constexpr ProgramOption kProgramOptions[] = {
    {"-h, --help", Message::help_help}, // of every command, too
    {"--help-all", Message::help_helpAll},
    {"--version", Message::help_version},
};

// In the order of the help; the first command is run when the arguments name
// none.
std::span<const CommandRow> commandRows();
std::span<const OptionRow> optionRows();

inline bool isArgument(const OptionRow& row) {
    return row.names[0] != '-';
}

// "-d" and "--description" of "-d,--description".
std::vector<std::string_view> namesOf(const OptionRow& row);

// The rows of a command, in their order.
std::vector<OptionRow> rowsOf(const CommandRow& command);

// What the option does and, unless they are codes, the values that it takes.
std::string helpOf(const OptionRow& row);

// "text, json"
std::string listOf(const std::vector<std::string_view>& names);

} // namespace tvml::host

#endif
