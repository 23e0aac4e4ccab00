// The library in a host that lives long: loaded, used and unloaded many times.
// The program has a folder of its own, because the library reads the words that
// the test writes there.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <string_view>

#include "host_process.h"

namespace tvml {
namespace {

constexpr int kLives = 100;
constexpr int kFirstLives = 20; // until the system's own lists have their size

// The system's loader keeps some bytes of each of the libraries that come with
// ours; anything of ours that stayed in every life would come to more.
constexpr std::size_t kKeptByLoader = std::size_t{32} << 10;

const std::filesystem::path kLibrary(TVML_LIBRARY);

void writeWords(std::string_view words) {
    const std::filesystem::path file = std::filesystem::path(TVML_HOST_FOLDER) / "keyword.ini";
    std::filesystem::remove(file);
    if (!words.empty()) {
        std::ofstream(file, std::ios::binary) << "[KEYWORD_STRING]\r\n" << words;
    }
}

constexpr std::string_view kWords = "title=head\r\nsubtitle=sub\r\nleftsuper=left__\r\n";

// What the line "left__:x" becomes: a caption where its word is known. Nothing
// is left of a conversion that failed.
std::string converted(const LoadedLibrary& library, const char16_t* description) {
    std::u16string text(std::size_t{1} << 14, u'\0');
    const std::int32_t length =
        library.function() == nullptr
            ? 0
            : library.function()(u"left__:x", 0, -1, description, text.data(),
                                 static_cast<std::int32_t>(text.size()));
    return {text.begin(), text.begin() + length};
}

bool knowsWord(const LoadedLibrary& library) {
    const std::string text = converted(library, u"<staging><setting>s</setting></staging>");
    EXPECT_NE(text.find("initializeEnd"), std::string::npos) << text;
    return text.find("LEFTSUPER, text=") != std::string::npos;
}

TEST(Unloading, WordsStayWithinOneLife) {
    writeWords(kWords);
    const LoadedLibrary library(kLibrary);
    EXPECT_TRUE(knowsWord(library));
    writeWords({});
    EXPECT_TRUE(knowsWord(library));
}

TEST(Unloading, LeavesNothingForTheNextLife) {
    InUse before = {};
    for (int life = 0; life < kLives; ++life) {
        if (life == kFirstLives) {
            before = inUse();
        }
        const bool hasWords = life % 2 == 0;
        writeWords(hasWords ? kWords : std::string_view());
        {
            const LoadedLibrary library(kLibrary);
            ASSERT_NE(library.function(), nullptr);
            ASSERT_EQ(knowsWord(library), hasWords) << "life " << life;
            // A description that ends early goes the way of exceptions.
            ASSERT_NE(converted(library, u"<staging><setting>s"), "");
        }
        ASSERT_FALSE(isLoaded(kLibrary)) << "life " << life;
    }
    const InUse after = inUse();
    EXPECT_LE(after.heapBytes, before.heapBytes + kKeptByLoader);
    EXPECT_EQ(after.handles, before.handles);
    RecordProperty("heapGrowth", std::to_string(static_cast<long long>(after.heapBytes) -
                                                static_cast<long long>(before.heapBytes)));
}

} // namespace
} // namespace tvml
