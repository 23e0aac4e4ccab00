// What `stats` counts in a script.
#include "workspace.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>

namespace tvml::host {
namespace {

using Json = nlohmann::json;

// With the shipped "Mirvol.ini", in which "very fast" is 1.8 and "slow" 0.7.
constexpr const char* kScript = "A: one two  three\n"
                                "A: (speak very fast)\n"
                                "one two three four five six (no blocking)\n"
                                "A: あいう　え𠮟。(caption: not said)\n"
                                "(caption: nobody speaks)\n"
                                "\n"
                                "(offline)\n"
                                "A: left out\n"
                                "(online)\n"
                                "A: (speak slow)\n"
                                "はい。\n"
                                "(wait 2 seconds)\n"
                                "(wait)\n"
                                "(dance)\n"
                                "subimage: p.png\n"
                                "bgimage: Image\\q.png\n"
                                "bgm: none.wav\n"
                                "bgm: none.wav\n"
                                "A: (soundfile: p.png)\n";

TEST(HostStats, CountsWhatTheRunTells) {
    const Workspace work;
    const std::string script = work.write("script.txt", kScript);
    std::filesystem::create_directory(work.path("Image"));
    work.write("p.png", "");
    work.write("Image/q.png", "");
    const std::string description = work.path("description.xml");

    const Outcome outcome = work.run({"stats", script, "-d", description, "--format", "json"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, "");
    const Json counts = Json::parse(outcome.output);
    EXPECT_EQ(counts.at("lines"), Json({{"all", 19},
                                        {"talk", 6},
                                        {"command", 8},
                                        {"tag", 4},
                                        {"empty", 1},
                                        {"withoutEffect", 1}}));
    // 3 words at 1.0, 6 at 1.8, 6 characters at 1.8, 3 at 0.7.
    EXPECT_EQ(counts.at("total"), Json({{"speeches", 4}, {"characters", 42}, {"seconds", 4.1}}));
    EXPECT_EQ(counts.at("speakers").size(), 1U);
    EXPECT_EQ(counts.at("speakers")[0].at("speaker"), "A");
    EXPECT_EQ(counts.at("offline"), Json({{"speeches", 1}, {"characters", 7}, {"seconds", 0.4}}));
    EXPECT_EQ(counts.at("commands")[0], Json({{"kind", "tag"}, {"name", "bgm"}, {"times", 2}}));
    EXPECT_EQ(counts.at("commands")[3],
              Json({{"kind", "staging"}, {"name", "wait"}, {"times", 2}}));
    const auto file = [](const char* name, const char* use, bool exists, std::vector<int> lines) {
        return Json({{"file", name}, {"use", use}, {"exists", exists}, {"lines", lines}});
    };
    EXPECT_EQ(
        counts.at("files"),
        Json({file("p.png", "picture", true, {15}), file("Image\\q.png", "picture", true, {16}),
              file("none.wav", "sound", false, {17, 18}), file("p.png", "speech", true, {19})}));

    const std::string text = work.run({"stats", script, "-d", description}).output;
    EXPECT_NE(text.find("\nSPEAKER  SPEECHES  CHARACTERS  TIME\n"
                        "A               4          42  0:05\n"
                        "all             4          42  0:05\n"
                        "offline         1           7  0:01\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\nnone.wav     sound    no     17, 18\n"), std::string::npos) << text;
}

} // namespace
} // namespace tvml::host
