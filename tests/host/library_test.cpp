// Conversion by a library file, against conversion by the program itself.
#include "workspace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tvml::host {
namespace {

const char* const kEveryKindOfLine = "#title: News\n"
                                     "#subtitle: of the day\n"
                                     "#super: Tokyo\n"
                                     "#main picture: a.png\n"
                                     "#bgm: b.wav\n"
                                     "A: Good morning. This is a sentence (caption: short).\n"
                                     "B: 「おはよう」ございます。\n"
                                     "A: (bow, very much)\n"
                                     "(close-up: B)\n"
                                     "(no such command)\n"
                                     "\n"
                                     "Nobody says this.\n";

TEST(HostLibrary, GivesTheSameBytesAsTheProgram) {
    const Workspace work;
    work.write("every.txt", kEveryKindOfLine);
    work.write("empty.txt", "");
    std::string large;
    for (int i = 0; i < 3000; ++i) {
        large += kEveryKindOfLine;
    }
    work.write("large.txt", large);
    struct Row {
        const char* script;
        std::vector<std::string> options;
    };
    const std::string description = work.path("description.xml");
    const std::vector<Row> rows{
        {"every.txt", {"-d", description}}, {"every.txt", {"--from", "2"}},
        {"every.txt", {"--to", "12"}},      {"every.txt", {"--output-encoding", "utf-16le"}},
        {"empty.txt", {"-d", description}}, {"large.txt", {"-d", description}},
    };
    const std::string library = Workspace::beside(HOST_LIBRARY);
    for (const Row& row : rows) {
        std::vector<std::string> arguments{work.path(row.script)};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const Outcome inside = work.run(arguments);
        arguments.insert(arguments.end(), {"--library", library});
        const Outcome outside = work.run(arguments);
        EXPECT_EQ(inside.exitCode, 0) << row.script;
        EXPECT_EQ(outside.exitCode, 0) << row.script << outside.errors;
        EXPECT_TRUE(inside.output == outside.output) << row.script << row.options.front();
    }
}

TEST(HostLibrary, AsksAgainWhenTheBufferWasTooSmall) {
    struct Row {
        const char* mood;
        int exitCode;
        const char* output;
    };
    const Workspace work;
    for (const Row& row : {Row{"size fails", 1, ""}, Row{"never", 1, ""}, Row{"late", 0, "five\n"},
                           Row{"one", 0, "one\n"}}) {
        const Outcome outcome =
            work.run({"-", "--library", Workspace::beside(HOST_MOODY_LIBRARY)}, row.mood);
        EXPECT_EQ(outcome.exitCode, row.exitCode) << row.mood;
        EXPECT_EQ(outcome.output, row.output) << row.mood;
    }
}

} // namespace
} // namespace tvml::host
