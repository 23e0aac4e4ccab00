// The settings file and the exception type.
#include "run/settings.h"

#include <gtest/gtest.h>

#include "staging/tvml_exception.h"
#include "support/studio.h"

namespace tvml {
namespace {

std::string speedsOf(const TvmlIniMirvol& settings) {
    std::string speeds;
    for (std::size_t i = 0; i < kTalkSpeedCount; ++i) {
        speeds += shown(settings.speed(static_cast<TalkSpeed>(i))) + " ";
    }
    return speeds;
}

// Loaded one after the other by the same object.
TEST(Settings, LoadUpToTheFirstFailure) {
    const std::u16string x126(126, u'x');
    const std::u16string x127(127, u'x');
    const struct {
        std::u16string ini;
        bool loaded;
        std::string speeds;
    } rows[] = {
        {u"[TALK]\nspeak_normally=Mirvol.ini error\nspeak_slow=3\n", false, "1.0 0.7 0.2 1.1 1.8 "},
        {u"", true, "1.0 0.7 0.2 1.1 1.8 "},
        {u"[TALK]\nspeak_normally=1\nspeak_slow=2\nspeak_very_slow=3\nspeak_fast=4\n"
         u"speak_very_fast=5\n",
         true, "1 2 3 4 5 "},
        {u"[TALK]\nspeak_normally=6\nspeak_slow=" + x127 + u"\nspeak_fast=7\n", false,
         "6 2 3 4 5 "},
        {u"[TALK]\nspeak_very_slow=Mirvol.ini error\n", false, "1.0 0.7 3 4 5 "},
        {u"[TALK]\nspeak_fast=\nspeak_very_fast=" + x126 + u"\n", true,
         "1.0 0.7 0.2  " + std::string(126, 'x') + " "},
        {u"[TALKS]\nspeak_slow=9\n", true, "1.0 0.7 0.2 1.1 1.8 "},
    };
    platform::MemoryPlatform memory;
    TvmlIniMirvol settings(memory);
    EXPECT_EQ(speedsOf(settings), "1.0 0.7 0.2 1.1 1.8 ");
    for (const auto& row : rows) {
        memory.files[u"/host/Mirvol.ini"] = row.ini;
        EXPECT_EQ(settings.load(), row.loaded) << shown(row.ini);
        EXPECT_EQ(speedsOf(settings), row.speeds) << shown(row.ini);
    }
    memory.files[u"/host/Mirvol.ini"] = rows[2].ini;
    EXPECT_TRUE(settings.load() && settings.release());
    EXPECT_EQ(speedsOf(settings), "1.0 0.7 0.2 1.1 1.8 ");
}

TEST(Settings, FileNames) {
    platform::MemoryPlatform memory;
    TvmlIniMirvol settings(memory);
    EXPECT_TRUE(settings.setFile(u"x.ini"));
    EXPECT_EQ(shown(settings.path()), "/host/x.ini");
    const std::u16string most(254, u'n'); // behind "/host/": 260 units
    EXPECT_TRUE(settings.setFile(most.c_str()));
    for (const std::u16string& name : {most + u"n", std::u16string(261, u'n')}) {
        EXPECT_FALSE(settings.setFile(name.c_str()));
    }
    EXPECT_FALSE(settings.setFile(nullptr));
    EXPECT_EQ(shown(settings.path()), "/host/" + shown(most));
}

TEST(TvmlException, CarriesItsMessageAndItsRoad) {
    const std::string text(1000, 'm');
    for (const std::size_t size : {0U, 5U, 126U, 127U, 128U, 129U, 1000U}) {
        const TvmlException problem("a.cpp", 1, "%s-%d", text.substr(0, size).c_str(), 42);
        EXPECT_EQ(problem.message(), text.substr(0, size) + "-42");
    }
    EXPECT_EQ(TvmlException("a.cpp", 1, "100%s").message(), "100%s"); // no format without arguments
    TvmlException thrown("a.cpp", 1, "m");
    thrown.addLocation("b.cpp", 22);
    TvmlException copy(thrown);
    copy.addLocation("c.cpp", 333);
    thrown.clear();
    EXPECT_TRUE(thrown.locations().empty() && thrown.message().empty());
    std::string road;
    for (const TvmlException::Location& location : copy.locations()) {
        road += location.file + (":" + std::to_string(location.line)) + " ";
    }
    EXPECT_EQ(road + copy.message(), "a.cpp:1 b.cpp:22 c.cpp:333 m");
}

} // namespace
} // namespace tvml
