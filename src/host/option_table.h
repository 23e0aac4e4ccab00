// The subcommands and their options as tables: read by the command line, its
// help, the completion scripts and the manual page.
#ifndef TVML_HOST_OPTION_TABLE_H
#define TVML_HOST_OPTION_TABLE_H

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "host/command_line.h"

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace tvml::host {

// Which subcommands have an option, a bit for each.
using CommandSet = std::uint32_t;

struct CommandRow {
    CommandSet bit;
    const char* name;
    const char* help;
    const char* footer; // what the help of the options leaves to be said
    CommandFunction run;
};

struct OptionRow {
    CommandSet commands; // that have the option
    const char* names;   // without dashes: an argument in its place
    const char* value;   // as help calls it: FILE and FOLDER for such names; of flags, empty
    CLI::Option* (*add)(CLI::App&, const OptionRow&, Options&);
    const char* help;
    std::vector<std::string_view> (*choices)() = nullptr; // the values that it takes, if few
};

// In the order of the help; the first command is run when the arguments name
// none.
std::span<const CommandRow> commandRows();
std::span<const OptionRow> optionRows();

// What the program's help ends with.
std::string_view programFooter();

inline bool isArgument(const OptionRow& row) {
    return row.names[0] != '-';
}

// "-d" and "--description" of "-d,--description".
std::vector<std::string_view> namesOf(const OptionRow& row);

} // namespace tvml::host

#endif
