// Things that stand in the place of a settings file on POSIX platforms, and
// files made to be slow. The text that is given away for messages is the one that
// lookups read.
#include "platform/host_services.h"
#include "platform/ini_text.h"
#include "platform/platform.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace tvml::platform {
namespace {

using namespace std::string_view_literals;

std::u16string read(const std::u16string& path) {
    std::array<char16_t, 16> buffer;
    const std::u16string value(buffer.data(),
                               system().openIni(path)->readString(u"S", u"k", u"default", buffer));
    const std::u16string text = readSettings(system().toUtf8(path));
    const std::vector<IniEntry> entries = readIniSection(text, u"S").entries;
    EXPECT_EQ(entries.empty() ? u"default" : entries.front().value.text, value);
    return value;
}

TEST(PosixIni, DecodesOnceForLookupsAndMessages) {
    struct {
        std::string_view bytes;
        std::u16string_view value;
    } const rows[] = {
        {"[S]\nk=\xE5\x96\x9C\n", u"\u559C"},
        {"[S]\nk=\xE5\x96\x9C\xE5\x96\x9C\n;\xFF", u"\u875F\u61F7\u4E07"},
        {"\xEF\xBB\xBF[S]\rk=\xE5\x96\x9C\xFF\r", u"\u559C\uFFFD"},
        {"\xFF\xFE[\0S\0]\0\r\0k\0=\0\x00\xD8\r\0"sv, u"\xD800"},
    };
    const TemporaryFolder folder;
    for (const auto& row : rows) {
        EXPECT_EQ(read(folder.write("file", row.bytes)), row.value) << row.bytes;
    }
}

TEST(PosixIni, OpensOnlyRegularFilesAndNeverWaits) {
    const TemporaryFolder folder;
    const std::filesystem::path fifo = folder.path() / "fifo";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(read(fifo.u16string()), u"default");
    EXPECT_EQ(read(u"/dev/zero"), u"default");
    EXPECT_EQ(read(u"/dev/tty"), u"default");

    folder.write("real", "[S]\nk=v\n");
    const std::filesystem::path link = folder.path() / "link";
    std::filesystem::create_symlink("real", link);
    EXPECT_EQ(read(link.u16string()), u"v");
}

TEST(PosixIni, RefusesFilesBeyondTheLimit) {
    const TemporaryFolder folder;
    const std::u16string path = folder.write("big", "[S]\nk=v\n");
    std::filesystem::resize_file(path, std::uintmax_t{16} << 20);
    EXPECT_EQ(read(path), u"v");
    std::filesystem::resize_file(path, (std::uintmax_t{16} << 20) + 1);
    EXPECT_EQ(read(path), u"default");
}

TEST(PosixIni, KnowsWhetherTheFileChanged) {
    const TemporaryFolder folder;
    const std::u16string path = folder.write("file", "[S]\nk=v\n");
    const auto file = system().openIni(path);
    EXPECT_TRUE(file->isCurrent());
    folder.write("file", "[S]\nk=w\n"); // within the same tick, of the same length
    EXPECT_FALSE(file->isCurrent());
    EXPECT_TRUE(system().openIni(path)->isCurrent());
    folder.write("file", "[S]\nk=v\n");
    EXPECT_TRUE(file->isCurrent());
    std::filesystem::remove(path);
    EXPECT_FALSE(file->isCurrent());
    const auto missing = system().openIni(path);
    EXPECT_TRUE(missing->isCurrent());
    folder.write("file", "");
    EXPECT_TRUE(missing->isCurrent()); // it gives the same texts
}

// Equal units 32 places apart cancel each other out of the hash, so all these
// keys have the same.
TEST(PosixIni, CollidingKeysStayFindable) {
    constexpr std::size_t kBits = 14;
    std::string text = "[S]\n";
    std::vector<std::u16string> keys;
    for (std::size_t i = 0; i < std::size_t{1} << kBits; ++i) {
        std::u16string key(32 + kBits, u'b');
        for (std::size_t bit = 0; bit < kBits; ++bit) {
            key[bit] = key[bit + 32] = (i >> bit & 1) != 0 ? u'c' : u'b';
        }
        text += system().toUtf8(key) + "=" + std::to_string(i) + "\n";
        keys.push_back(key);
    }
    const TemporaryFolder folder;
    const auto file = system().openIni(folder.write("keys", text));
    std::array<char16_t, 16> buffer;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::size_t count = file->readString(u"S", keys[i], u"", buffer);
        ASSERT_EQ(system().toUtf8({buffer.data(), count}), std::to_string(i));
    }
}

} // namespace
} // namespace tvml::platform
