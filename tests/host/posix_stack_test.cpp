// The program where a process gets little stack.
#include "workspace.h"

#include <gtest/gtest.h>

#include <string>

namespace tvml::host {
namespace {

TEST(HostPosixStack, SmallOnesSuffice) {
    const Workspace work;
    const std::string script = work.path("script.txt");
    const std::string slips = work.write("slips.txt", "A: (bows)\nB:(dance,slow)\n(set: none)\n");
    const std::string play = work.write("play.txt", "TOM: (sits) Good morning.\nANN: Hello!\n");
    const std::string program = "ulimit -s 64; \"" + Workspace::beside(HOST_PROGRAM) + "\" ";
    for (const std::string& command :
         {std::string("--version"), std::string("--help-all"), std::string("man"),
          std::string("list commands"), "convert " + script, "convert " + slips,
          "convert " + script + " " + slips + " --output-dir " + work.path("out"),
          "check --failure-level none " + slips, "explain " + slips + ":1-3", "stats " + slips,
          "import " + play + " -o " + work.path("o")}) {
        const std::string call = program + command + " > /dev/null 2>&1";
        EXPECT_EQ(std::system(call.c_str()), 0) << command;
    }
}

} // namespace
} // namespace tvml::host
