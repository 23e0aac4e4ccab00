// Entries: programHelp, commandHelp, helpOfAll.
#include "host/help.h"

#include <string_view>

#include "host/language.h"
#include "host/text_flow.h"

namespace tvml::host {
namespace {

constexpr std::string_view kUsage = " tvmlfilter ";

// A row of two columns.
std::string row(std::string_view term, std::string_view text) {
    return std::string(term).append("\t").append(text).append("\n");
}

std::string rowOf(const ProgramOption& option) {
    return row(option.names, say(option.help));
}

std::string rowOf(const OptionRow& option) {
    std::string term;
    for (const std::string_view name :
         isArgument(option) ? std::vector<std::string_view>{} : namesOf(option)) {
        term.append(term.empty() ? "" : ", ").append(name);
    }
    if (option.value.has_value()) {
        term.append(term.empty() ? "" : " ").append(say(*option.value));
    }
    return row(term, helpOf(option));
}

std::string headed(Message heading, const std::string& rows) {
    return rows.empty() ? "" : std::string("\n").append(say(heading)).append("\n").append(rows);
}

std::string shown(std::string text) {
    text.erase(text.find_last_not_of('\n') + 1);
    return utf8(flowed(utf16(text), outputColumns()));
}

} // namespace

std::string programHelp() {
    std::string commands;
    for (const CommandRow& command : commandRows()) {
        commands += row(command.name, say(command.help));
    }
    std::string options;
    for (const ProgramOption& option : kProgramOptions) {
        options += rowOf(option);
    }
    for (const OptionRow& option : optionRows()) {
        options += option.commands == kAllCommands ? rowOf(option) : "";
    }
    return shown(say(Message::program_about) + "\n" + say(Message::program_short) + "\n\n" +
                 say(Message::help_usage) + std::string(kUsage) + say(Message::help_command) +
                 " [" + say(Message::help_options) + "]\n" +
                 headed(Message::heading_commands, commands) +
                 headed(Message::heading_options, options)) +
           shown(headed(Message::heading_exitCodes, say(Message::program_exitCodes)));
}

std::string commandHelp(const CommandRow& command) {
    std::string usage;
    std::string arguments;
    std::string options = rowOf(kProgramOptions[0]);
    for (const OptionRow& option : rowsOf(command)) {
        (isArgument(option) ? arguments : options) += rowOf(option);
        usage.append(isArgument(option) ? " " : "")
            .append(isArgument(option) ? say(*option.value) : "");
    }
    return shown(say(command.help) + "\n\n" + say(Message::help_usage) + std::string(kUsage) +
                 command.name + usage + " [" + say(Message::help_options) + "]\n" +
                 headed(Message::heading_arguments, arguments) +
                 headed(Message::heading_options, options)) +
           "\n" + shown(say(command.more));
}

std::string helpOfAll() {
    std::string help = programHelp();
    for (const CommandRow& command : commandRows()) {
        help += std::string("\n---- ") + command.name + "\n\n" + commandHelp(command);
    }
    return help;
}

} // namespace tvml::host
