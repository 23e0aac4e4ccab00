// The manual page, made from the tables of the command line. Entry: runManual.
#include "host/manual_command.h"

#include <string>
#include <string_view>

#include "host/host_error.h"
#include "host/option_table.h"
#include "host/text_files.h"
#include "host/text_flow.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

constexpr std::string_view kDate = "2026-11-23"; // of the last change of this text

// A text for the page's formatter, in which a backslash and, at the start of a
// line, a dot and an apostrophe are commands.
std::string roff(std::string_view text) {
    std::string escaped;
    for (const char letter : text) {
        const bool starts = escaped.empty() || escaped.back() == '\n';
        if (starts && (letter == '.' || letter == '\'')) {
            escaped += "\\&";
        }
        if (letter == '\\') {
            escaped += "\\e";
        } else if (letter == '-') {
            escaped += "\\-";
        } else {
            escaped += letter;
        }
    }
    return escaped;
}

// Filled here: the page's formatter cannot break lines of Japanese.
constexpr std::size_t kColumns = 70;
constexpr std::size_t kItemColumns = 62;

// Lines that stay as they are; a paragraph's end is a macro of its own.
std::string asItStands(std::string_view text, std::size_t columns = kColumns) {
    const std::string filled = utf8(flowed(utf16(text), columns));
    std::string page = ".nf\n";
    for (std::string_view rest = filled; !rest.empty();) {
        const std::size_t end = rest.find('\n');
        const std::string_view line = rest.substr(0, end);
        page += line.empty() ? ".sp\n" : roff(line) + "\n";
        rest.remove_prefix(end + 1);
    }
    return page + ".fi\n";
}

std::string italic(std::string_view text) {
    return std::string("\\fI").append(roff(text)).append("\\fR");
}

std::string bold(std::string_view text) {
    return std::string("\\fB").append(roff(text)).append("\\fR");
}

std::string item(const OptionRow& row) {
    std::string head;
    for (const std::string_view name :
         isArgument(row) ? std::vector<std::string_view>{} : namesOf(row)) {
        head.append(head.empty() ? "" : ", ").append(bold(name));
    }
    if (row.value.has_value()) {
        head.append(head.empty() ? "" : " ").append(italic(say(*row.value)));
    }
    return std::string(".TP\n").append(head).append("\n") + asItStands(helpOf(row), kItemColumns);
}

std::string section(const CommandRow& command) {
    std::string arguments;
    std::string items;
    for (const OptionRow& row : rowsOf(command)) {
        items += item(row);
        arguments.append(isArgument(row) ? " " : "")
            .append(isArgument(row) ? italic(say(*row.value)) : "");
    }
    return std::string(".SS ") + command.name + arguments + "\n" + asItStands(say(command.help)) +
           items + ".PP\n" + asItStands(say(command.more));
}

std::string headed(Message name, const std::string& text) {
    return std::string(".SH \"").append(roff(say(name))).append("\"\n").append(text);
}

std::string manualPage() {
    const std::string program = bold("tvmlfilter");
    const std::string options = std::string(" [").append(italic(say(Message::help_options))) + "]";
    std::string page = ".TH TVMLFILTER 1 ";
    page.append(kDate).append(" \"tvmlfilter " TVMLFILTER_VERSION "\" \"");
    page += say(Message::manual_title) + "\"\n" +
            headed(Message::manual_name,
                   std::string("tvmlfilter \\- ").append(say(Message::manual_purpose)) + "\n") +
            headed(Message::manual_synopsis, program + " " + italic(say(Message::help_command)) +
                                                 options + " ...\n.br\n" + program + options + " " +
                                                 italic(say(Message::value_script)) + "\n") +
            headed(Message::manual_description, asItStands(say(Message::manual_about)));
    std::string own;
    for (const ProgramOption& option : kProgramOptions) {
        own += ".TP\n" + bold(option.names) + "\n" + asItStands(say(option.help), kItemColumns);
    }
    std::string commands;
    for (const CommandRow& command : commandRows()) {
        commands += section(command);
    }
    return page + headed(Message::help_options, own) + headed(Message::manual_commands, commands) +
           headed(Message::manual_exitStatus, asItStands(say(Message::program_exitCodes))) +
           headed(Message::manual_files,
                  asItStands(say(Message::manual_inFolder) + "\n" + say(Message::manual_fileList)));
}

} // namespace

int runManual(const Options&) {
    const std::string page = manualPage();
    writeOutput(page);
    return kDone;
}

} // namespace tvml::host
