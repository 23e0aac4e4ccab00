// The services of the running system besides the ini files, and the double
// that stands in for them in other tests.
#include "memory_platform.h"
#include "platform/platform.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <ctime>

namespace tvml::platform {
namespace {

TEST(Platform, HostProgramPathIsWholeOrEmpty) {
    const std::u16string path = system().hostProgramPath(4096);
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::path(path)));
    EXPECT_NE(path.find(system().pathSeparator()), path.npos);
    EXPECT_EQ(system().hostProgramPath(path.size() + 1), path);
    EXPECT_EQ(system().hostProgramPath(path.size()), u"");
    EXPECT_EQ(system().hostProgramPath(0), u"");
}

TEST(Platform, Utf8) {
    const struct {
        std::u16string_view text;
        std::string_view bytes;
    } rows[] = {
        {u"", ""},
        {u"a\u00E9\u65E5", "a\xC3\xA9\xE6\x97\xA5"},
        {u"\xD83D\xDE00", "\xF0\x9F\x98\x80"},
        {u"a\xD83D", "a\xEF\xBF\xBD"},
        {u"\xDE00\xD83Dz", "\xEF\xBF\xBD\xEF\xBF\xBDz"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(system().toUtf8(row.text), row.bytes);
    }
}

// Whatever the offset, no pair comes apart where the conversion works in
// pieces.
TEST(Platform, Utf8OfLongText) {
    std::u16string text;
    std::string bytes;
    for (int i = 0; i < 3000; ++i) {
        text += u"\xD83D\xDE00";
        bytes += "\xF0\x9F\x98\x80";
    }
    EXPECT_EQ(system().toUtf8(text), bytes);
    EXPECT_EQ(system().toUtf8(u"a" + text), "a" + bytes);
}

TEST(Platform, TimeRuns) {
    EXPECT_LE(system().secondsNow() - static_cast<std::uint32_t>(std::time(nullptr)) + 2, 4U);
}

TEST(MemoryPlatform, SaysWhatItWasTold) {
    MemoryPlatform memory;
    memory.hostPath = u"/h/p";
    memory.files[u"/h/k.ini"] = u"[S]\nk=v\n";
    memory.seconds = 7;
    std::array<char16_t, 8> buffer = {};
    EXPECT_EQ(memory.hostProgramPath(5), u"/h/p");
    EXPECT_EQ(memory.hostProgramPath(4), u"");
    EXPECT_EQ(memory.openIni(u"/h/k.ini")->readString(u"S", u"k", u"dd", buffer), 1U);
    EXPECT_EQ(memory.openIni(u"/h/x.ini")->readString(u"S", u"k", u"dd", buffer), 2U);
    EXPECT_EQ(memory.secondsNow(), 7U);
}

} // namespace
} // namespace tvml::platform
