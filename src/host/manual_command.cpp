// The manual page, made from the tables of the command line. Entry: runManual.
#include "host/manual_command.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "host/host_error.h"
#include "host/option_table.h"
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

// Lines that stay as they are; a paragraph's end is a macro of its own.
std::string asItStands(std::string_view text) {
    std::string page = ".nf\n";
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, end);
        page += line.empty() ? ".sp\n" : roff(line) + "\n";
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return page + ".fi\n";
}

std::string item(const OptionRow& row) {
    std::string head;
    for (const std::string_view name : namesOf(row)) {
        head.append(head.empty() ? "\\fB" : ", \\fB").append(roff(name)).append("\\fR");
    }
    if (row.value[0] != '\0') {
        head += " \\fI" + roff(row.value) + "\\fR";
    }
    std::string text = roff(row.help);
    if (row.choices != nullptr && std::string_view(row.value) != "CODE") {
        std::string_view lead = ": ";
        for (const std::string_view choice : row.choices()) {
            text.append(lead).append(roff(choice));
            lead = ", ";
        }
    }
    return ".TP\n" + head + "\n" + text + "\n";
}

std::string section(const CommandRow& command) {
    std::string arguments;
    std::string items;
    for (const OptionRow& row : optionRows()) {
        if ((row.commands & command.bit) != 0) {
            items += item(row);
            arguments += isArgument(row) ? std::string(" \\fI") + row.names + "\\fR" : "";
        }
    }
    return std::string(".SS ") + command.name + arguments + "\n" + roff(command.help) + ".\n" +
           items + ".PP\n" + asItStands(command.footer);
}

std::string manualPage() {
    std::string page = ".TH TVMLFILTER 1 ";
    page.append(kDate).append(" \"tvmlfilter " TVMLFILTER_VERSION "\" \"User Commands\"\n");
    page += ".SH NAME\n"
            "tvmlfilter \\- turns plain\\-text programme scripts into TVML scripts\n"
            ".SH SYNOPSIS\n"
            "\\fBtvmlfilter\\fR \\fICOMMAND\\fR [\\fIOPTIONS\\fR] ...\n"
            ".br\n"
            "\\fBtvmlfilter\\fR [\\fIOPTIONS\\fR] \\fISCRIPT\\fR\n"
            ".SH DESCRIPTION\n"
            "Reads who speaks, who bows, which title and which picture is shown, in Japanese or\n"
            "English, and writes a script that a player can show. Without a \\fICOMMAND\\fR it\n"
            "converts. Every command has \\fB\\-\\-help\\fR.\n"
            ".SH COMMANDS\n";
    for (const CommandRow& command : commandRows()) {
        page += section(command);
    }
    page += ".SH \"EXIT STATUS\"\n";
    // Its first line is a heading, which the page has already.
    const std::string_view footer = programFooter();
    page += asItStands(footer.substr(footer.find('\n') + 1));
    page +=
        ".SH FILES\n"
        "In the program's folder: \\fIkeyword.ini\\fR, the vocabulary of scripts;\n"
        "\\fIMirvol.ini\\fR, the talk speeds; \\fIdefault.xml\\fR, the description that serves\n"
        "when none is given.\n";
    return page;
}

} // namespace

int runManual(const Options&) {
    const std::string page = manualPage();
    if (const auto failure = platform::writeStream(platform::OutputStream::output, page)) {
        throw inputOrOutputError(outputName(kStandardStream), {}, *failure);
    }
    return kDone;
}

} // namespace tvml::host
