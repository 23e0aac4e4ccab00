// A folder in which tests run the built program with small files.
#ifndef TVML_TESTS_HOST_WORKSPACE_H
#define TVML_TESTS_HOST_WORKSPACE_H

#include "platform/platform.h"
#include "platform/temporary_folder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace tvml::host {

// One line of output for each line of talk, whatever the rest does.
inline constexpr std::string_view kDescription =
    "<staging><numofchar>1</numofchar>\n"
    "<model_for_char character=\"A\" japanesename=\"a\" englishname=\"a\" default=\"yes\">m"
    "</model_for_char>\n"
    "<talk character=\"A\">say $2</talk>\n"
    "</staging>\n";

struct Outcome {
    int exitCode;
    std::string output;
    std::string errors;
};

class Workspace {
public:
    Workspace() {
        write("script.txt", "A: one\nA: two\nA: three\n");
        write("description.xml", kDescription);
    }

    // The path of a file in the folder, for arguments.
    std::string path(std::string_view name) const { return (folder_.path() / name).string(); }

    std::string write(std::string_view name, std::string_view bytes) const {
        std::ofstream(folder_.path() / name, std::ios::binary) << bytes;
        return path(name);
    }

    std::string read(std::string_view name) const {
        std::ifstream file(folder_.path() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    bool has(std::string_view name) const { return std::filesystem::exists(folder_.path() / name); }

    // How many files lie in the folder; none of the program's own may stay.
    std::ptrdiff_t fileCount() const {
        using Iterator = std::filesystem::directory_iterator;
        return std::distance(Iterator(folder_.path()), Iterator());
    }

    // Runs the program in the shell, in English unless the arguments say otherwise,
    // with its streams in files of a folder of their own.
    Outcome run(const std::vector<std::string>& arguments, std::string_view input = {}) const {
        return run(beside(HOST_PROGRAM), arguments, input);
    }

    // The same with a copy of the program.
    Outcome run(const std::string& program, const std::vector<std::string>& arguments,
                std::string_view input = {}) const {
        const std::string shellQuotes(HOST_SHELL_QUOTES, '"');
        const std::filesystem::path in = streams_.path() / "in";
        const std::filesystem::path out = streams_.path() / "out";
        const std::filesystem::path err = streams_.path() / "err";
        std::ofstream(in, std::ios::binary) << input;
        std::string command = shellQuotes + quoted(program);
        if (std::ranges::find(arguments, "--language") == arguments.end()) {
            command += " --language en";
        }
        for (const std::string& argument : arguments) {
            command.append(" ").append(quoted(argument));
        }
        command.append(" < ").append(quoted(in.string()));
        command.append(" > ").append(quoted(out.string()));
        command.append(" 2> ").append(quoted(err.string())).append(shellQuotes);
        const int status = std::system(command.c_str());
        // POSIX systems keep the exit code above the number of a signal.
        return {status > 255 ? status / 256 : status, contents(out), contents(err)};
    }

    // The path of a file that lies beside the program.
    static std::string beside(std::string_view name) {
        const std::filesystem::path program(platform::system().hostProgramPath(4096));
        return (program.parent_path() / name).string();
    }

private:
    // A backslash before the last quote would make a letter of it.
    static std::string quoted(std::string_view word) {
        return std::string("\"").append(word).append(word.ends_with('\\') ? "\\\"" : "\"");
    }

    static std::string contents(const std::filesystem::path& path) {
        std::ostringstream bytes;
        bytes << std::ifstream(path, std::ios::binary).rdbuf();
        return bytes.str();
    }

    platform::TemporaryFolder folder_;
    platform::TemporaryFolder streams_;
};

// The lines of a converted script that come from the body, in brief.
inline std::string body(const std::string& output) {
    std::istringstream lines(output);
    std::string brief;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("say ")) {
            brief += line.substr(4) + " ";
        } else if (line == "playfromhere()") {
            brief += "[from] ";
        } else if (line == "end()") {
            brief += "[to] ";
        }
    }
    return brief;
}

} // namespace tvml::host

#endif
