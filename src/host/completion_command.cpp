// Scripts by which shells complete the program's command lines, made from the
// tables of the command line. Entry: runCompletion.
#include "host/completion_command.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "host/host_error.h"
#include "host/option_table.h"
#include "host/text_files.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

// ---- the tables

constexpr std::string_view kHelpNames = "-h --help";

std::string joinedBy(std::string_view separator, const std::vector<std::string_view>& words) {
    std::string list;
    for (const std::string_view& word : words) {
        list.append(&word == words.data() ? "" : separator).append(word);
    }
    return list;
}

std::string concat(std::initializer_list<std::string_view> parts) {
    return joinedBy("", parts);
}

std::string commandNames(std::string_view separator) {
    std::vector<std::string_view> names;
    std::ranges::transform(commandRows(), std::back_inserter(names), &CommandRow::name);
    return joinedBy(separator, names);
}

bool takesValue(const OptionRow& row) {
    return !isArgument(row) && row.value.has_value();
}

// ---- bash

// How bash finds the values of a row.
std::string bashValues(const OptionRow& row) {
    if (row.choices != nullptr) {
        return concat({"compgen -W '", joinedBy(" ", row.choices()), "' -- \"$current\""});
    }
    if (isArgument(row) || row.value == Message::value_file) {
        return "compgen -f -- \"$current\"";
    }
    return row.value == Message::value_folder ? "compgen -d -- \"$current\"" : ":";
}

// The cases of one command: the value of an option behind its name, an option
// behind a dash, or the argument.
std::string bashCases(const CommandRow& command) {
    const std::string lead = concat({command.name, ","});
    std::string values;
    std::string options(kHelpNames);
    std::string argument = ":";
    for (const OptionRow& row : rowsOf(command)) {
        if (isArgument(row)) {
            argument = bashValues(row);
            continue;
        }
        options.append(" ").append(joinedBy(" ", namesOf(row)));
        if (takesValue(row)) {
            const std::string names = joinedBy(concat({"|", lead}), namesOf(row));
            values += concat({"    ", lead, names, ")\n      ", bashValues(row), " ;;\n"});
        }
    }
    return concat({values, "    ", lead, "*)\n      if [[ $current == -* ]]; then\n",
                   "        compgen -W '", options, "' -- \"$current\"\n      else\n        ",
                   argument, "\n      fi ;;\n"});
}

// Bash takes "=" for a word of its own.
constexpr std::string_view kBashHead =
    R"(# bash completion for tvmlfilter, printed by "tvmlfilter completion bash"

_tvmlfilter_values() {
  local command=$1 previous=$2 current=$3
  case $command,$previous in
)";
constexpr std::string_view kBashMiddle = R"(  esac
}

_tvmlfilter() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
  local commands='@COMMANDS@' command=@FIRST@
  if [[ $current == = ]]; then
    current=
  elif [[ $previous == = ]]; then
    previous=${COMP_WORDS[COMP_CWORD-2]}
  fi
  if ((COMP_CWORD > 1)) && [[ " $commands " == *" ${COMP_WORDS[1]} "* ]]; then
    command=${COMP_WORDS[1]}
  fi
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(
    if ((COMP_CWORD == 1)); then
      compgen -W "$commands" -- "$current"
    fi
    _tvmlfilter_values "$command" "$previous" "$current"
  )
}

complete -F _tvmlfilter tvmlfilter
)";

std::string replaced(std::string text, std::string_view mark, std::string_view value) {
    const std::size_t at = text.find(mark);
    return at == std::string::npos ? text : text.replace(at, mark.size(), value);
}

std::string bashScript() {
    std::string script(kBashHead);
    for (const CommandRow& command : commandRows()) {
        script += bashCases(command);
    }
    script += replaced(std::string(kBashMiddle), "@COMMANDS@", commandNames(" "));
    return replaced(std::move(script), "@FIRST@", commandRows().front().name);
}

// ---- zsh

// A text for _arguments, which stands in single quotes.
std::string zshText(std::string_view text) {
    std::string quoted;
    for (const char letter : text) {
        if (letter == '\'') {
            quoted += "'\\''";
            continue;
        }
        quoted += letter == '[' || letter == ']' || letter == ':' ? "\\" : "";
        quoted += letter;
    }
    return quoted;
}

// ":FILE:_files"
std::string zshValues(const OptionRow& row) {
    std::string action;
    if (row.choices != nullptr) {
        action = concat({"(", joinedBy(" ", row.choices()), ")"});
    } else if (isArgument(row) || row.value == Message::value_file) {
        action = "_files";
    } else if (row.value == Message::value_folder) {
        action = "_files -/";
    }
    return concat({":", zshText(say(*row.value)), ":", action});
}

constexpr std::string_view kNextLine = " \\\n        ";

// A row with two names is given twice, and either excludes the other.
std::string zshArguments(const OptionRow& row) {
    if (isArgument(row)) {
        return concat({kNextLine, "'*", zshValues(row), "'"});
    }
    const std::vector<std::string_view> names = namesOf(row);
    // A code is one of several.
    const bool repeats = row.value == Message::value_code;
    const std::string lead = repeats ? "*" : concat({"(", joinedBy(" ", names), ")"});
    const std::string value = takesValue(row) ? zshValues(row) : "";
    std::string arguments;
    for (const std::string_view name : names) {
        // The value of a long name may stand behind a "=".
        const std::string_view mark = !value.empty() && name.starts_with("--") ? "=" : "";
        arguments +=
            concat({kNextLine, "'", lead, name, mark, "[", zshText(helpOf(row)), "]", value, "'"});
    }
    return arguments;
}

std::string zshCase(const CommandRow& command) {
    std::string text =
        concat({"    ", command.name, ")\n      _arguments", kNextLine,
                "'(-h --help)'{-h,--help}'[", zshText(say(Message::help_help)), "]'"});
    for (const OptionRow& row : rowsOf(command)) {
        text += zshArguments(row);
    }
    return text += " ;;\n";
}

constexpr std::string_view kZshScript =
    R"(#compdef tvmlfilter
# zsh completion for tvmlfilter, printed by "tvmlfilter completion zsh"

_tvmlfilter() {
  local -a commands=(
@DESCRIBED@  )
  if ((CURRENT == 2)); then
    _describe command commands
  fi
  local command=@FIRST@
  if ((CURRENT > 2)) && [[ $words[2] == (@COMMANDS@) ]]; then
    command=$words[2]
    shift words
    ((CURRENT--))
  fi
  case $command in
@CASES@  esac
}

_tvmlfilter "$@"
)";

std::string zshScript() {
    std::string described;
    std::string cases;
    for (const CommandRow& command : commandRows()) {
        described += concat({"    '", command.name, ":", zshText(say(command.help)), "'\n"});
        cases += zshCase(command);
    }
    std::string script = replaced(std::string(kZshScript), "@DESCRIBED@", described);
    script = replaced(std::move(script), "@FIRST@", commandRows().front().name);
    script = replaced(std::move(script), "@COMMANDS@", commandNames("|"));
    return replaced(std::move(script), "@CASES@", cases);
}

} // namespace

int runCompletion(const Options& options) {
    const std::string script = options.shell == Shell::bash ? bashScript() : zshScript();
    writeOutput(script);
    return kDone;
}

} // namespace tvml::host
