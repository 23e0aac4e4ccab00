// The library in a host that lives long: loaded, used and unloaded many times.
// The program has a folder of its own, because the library reads the words that
// the test writes there.
#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>

#include "host_process.h"

namespace tvml {
namespace {

constexpr int kLives = 400;
constexpr int kFirstLives = 100; // until the lists of the system and of malloc have their size

// Noise of the system's own lists over all lives. Ours would be at least one
// block in every life.
constexpr std::ptrdiff_t kNoise = kLives / 2;

const std::filesystem::path kLibrary(TVML_LIBRARY);
const std::filesystem::path kIdleLibrary(TVML_IDLE_LIBRARY);

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

struct Growth {
    std::ptrdiff_t heap;
    std::ptrdiff_t handles;
};

// What the process has in use more after all lives than after the first ones.
Growth growthOver(const std::function<void(int)>& live) {
    InUse before = {};
    for (int life = 0; life < kLives; ++life) {
        if (life == kFirstLives) {
            before = inUse();
        }
        live(life);
    }
    const InUse after = inUse();
    return {static_cast<std::ptrdiff_t>(after.heap) - static_cast<std::ptrdiff_t>(before.heap),
            static_cast<std::ptrdiff_t>(after.handles) -
                static_cast<std::ptrdiff_t>(before.handles)};
}

void liveWith(int life) {
    const bool hasWords = life % 2 == 0;
    writeWords(hasWords ? kWords : std::string_view());
    {
        const LoadedLibrary library(kLibrary);
        ASSERT_NE(library.function(), nullptr);
        EXPECT_EQ(knowsWord(library), hasWords) << "life " << life;
        // A description that ends early goes the way of exceptions.
        EXPECT_NE(converted(library, u"<staging><setting>s"), "");
    }
    EXPECT_FALSE(isLoaded(kLibrary)) << "life " << life;
}

// The system's loader may keep something of every library that was loaded; of
// ours it may keep what it keeps of one that does nothing.
TEST(Unloading, LeavesNothingForTheNextLife) {
    const Growth idle = growthOver([](int) {
        const LoadedLibrary library(kIdleLibrary);
        ASSERT_NE(library.function(), nullptr);
    });
    const Growth ours = growthOver(liveWith);
    EXPECT_LE(ours.heap, idle.heap + kNoise);
    EXPECT_LE(ours.handles, idle.handles);
    RecordProperty("growth", std::to_string(ours.heap));
    RecordProperty("growthOfIdleLibrary", std::to_string(idle.heap));
}

} // namespace
} // namespace tvml
