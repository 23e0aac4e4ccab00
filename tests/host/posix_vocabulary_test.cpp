// What is told of "keyword.ini" files with the line ends and the damage that
// editors leave: always of the words that a conversion reads. Elsewhere the
// system's own service decodes them.
#include "workspace.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>

namespace tvml::host {
namespace {

// The program in a folder of its own, with a vocabulary to be written there.
class Studio {
public:
    Studio() {
        for (const std::string_view name : {HOST_PROGRAM, "keyword.ini", "Mirvol.ini"}) {
            std::filesystem::copy_file(Workspace::beside(name), work_.path(name));
        }
    }

    const Workspace& work() const { return work_; }

    std::string check(const char* format) const {
        return work_
            .run(work_.path(HOST_PROGRAM), {"check", work_.path("script.txt"), "-d",
                                            work_.path("description.xml"), "--format", format})
            .output;
    }

    // "331:1 V209; " for each problem of the vocabulary; a line of 0 for none.
    std::string told() const {
        std::istringstream lines(check("json"));
        std::string text;
        for (std::string line; std::getline(lines, line);) {
            const nlohmann::json object = nlohmann::json::parse(line);
            if (object.at("source") == "vocabulary") {
                const auto number = [&](const char* name) {
                    return object.at(name).is_null() ? 0 : object.at(name).get<int>();
                };
                text += std::to_string(number("line")) + ":" + std::to_string(number("column")) +
                        " " + object.at("code").get<std::string>() + "; ";
            }
        }
        return text;
    }

private:
    Workspace work_;
};

std::string withLineEnds(const std::string& text, std::string_view end) {
    std::string result;
    for (const char letter : text) {
        result += letter == '\n' ? std::string(end) : std::string(1, letter);
    }
    return result;
}

TEST(HostPosixVocabulary, LineEndsChangeNothing) {
    const Studio studio;
    const std::string shipped = studio.work().read("keyword.ini");
    const auto lines = std::ranges::count(shipped, '\n');
    const std::string text = shipped + "hapy=x\n\n  tokyo = y\nHAPPY=z";
    const std::string told = std::to_string(lines + 1) + ":1 V209; " + std::to_string(lines + 3) +
                             ":3 V209; " + std::to_string(lines + 4) + ":1 V210; ";
    for (const std::string_view end : {"\n", "\r", "\r\n"}) {
        studio.work().write("keyword.ini", withLineEnds(text, end));
        EXPECT_EQ(studio.told(), told) << testing::PrintToString(end);
        EXPECT_NE(studio.check("text").find("\n    tokyo = y\n    ^~~~~\n"), std::string::npos)
            << testing::PrintToString(end);
    }
}

// Bytes that are no UTF-8 make code page 932 of the whole file: every message
// must stand over a line that holds the word it names.
TEST(HostPosixVocabulary, ShowsTheWordsThatAConversionReads) {
    struct {
        std::string_view bytes; // in front of the shipped ones
        bool hasOtherWords;
    } const rows[] = {
        {";\xFF\n", true}, {"\xEF\xBB\xBF;\xFF\n", false}, {";\xE5\x96\x9C\n", false}};
    const Studio studio;
    const std::string shipped = studio.work().read("keyword.ini");
    for (const auto& row : rows) {
        studio.work().write("keyword.ini", std::string(row.bytes) + shipped);
        std::istringstream lines(studio.check("text"));
        bool hasOtherWords = false;
        for (std::string message, line; std::getline(lines, message);) {
            if (message.ends_with("off a line [V203]") && std::getline(lines, line)) {
                const std::size_t quote = message.find('"') + 1;
                const std::string word = message.substr(quote, message.find('"', quote) - quote);
                EXPECT_NE(line.find("=" + word), std::string::npos) << message << "\n" << line;
                hasOtherWords = true;
            }
        }
        EXPECT_EQ(hasOtherWords, row.hasOtherWords) << testing::PrintToString(row.bytes);
    }
}

TEST(HostPosixVocabulary, WhatCannotBeReadIsMissing) {
    const Studio studio;
    const std::string words = studio.work().path("keyword.ini");
    // A file too large for a conversion, whatever it begins with.
    std::filesystem::resize_file(words, (std::uintmax_t{16} << 20) + 1);
    EXPECT_EQ(studio.told(), "0:0 F401; ");
    std::filesystem::remove(words);
    EXPECT_EQ(studio.told(), "0:0 F401; ");
    std::filesystem::create_directory(words);
    EXPECT_EQ(studio.told(), "0:0 F401; ");
}

} // namespace
} // namespace tvml::host
