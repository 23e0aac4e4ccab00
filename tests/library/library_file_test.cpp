// The built library file, loaded as a host loads it, and its symbols.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include <dlfcn.h>

#include "fil_process.h"
#include "support/studio.h"

namespace tvml {
namespace {

std::string outputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> listing(popen(command.c_str(), "r"), pclose);
    std::string output;
    char part[512];
    while (listing != nullptr && fgets(part, sizeof part, listing.get()) != nullptr) {
        output += part;
    }
    return output;
}

TEST(LibraryFile, ExportsOneSymbol) {
    const std::string listing = outputOf(TVML_NM " -D --defined-only " TVML_LIBRARY);
    EXPECT_TRUE(listing.ends_with(" T fil_process\n")) << listing;
    EXPECT_EQ(std::count(listing.begin(), listing.end(), '\n'), 1) << listing;
}

// What cmake/hardening.cmake asks for, in the files that it makes.
TEST(LibraryFile, IsHardened) {
#ifdef TVML_HARDENED
    const std::string tables = outputOf(TVML_READELF " -W -l -d --dyn-syms " TVML_LIBRARY);
    for (const char* part : {"BIND_NOW", "GNU_RELRO", "__stack_chk_fail"}) {
        EXPECT_NE(tables.find(part), std::string::npos) << part << tables;
    }
    EXPECT_NE(outputOf(TVML_READELF " -h /proc/self/exe").find("DYN (Position-Independent"),
              std::string::npos);
#else
    GTEST_SKIP() << "sanitizers take its place";
#endif
}

std::string convertedBy(void* library, const std::u16string& script,
                        const std::u16string& description) {
    const auto process = reinterpret_cast<decltype(&fil_process)>(dlsym(library, "fil_process"));
    const auto call = [&](char16_t* output, std::int32_t size) {
        return process(script.c_str(), 2, 3, description.c_str(), output, size);
    };
    std::u16string text(static_cast<std::size_t>(call(nullptr, 0)), u'?');
    const std::int32_t length = call(text.data(), static_cast<std::int32_t>(text.size()));
    EXPECT_EQ(length + 1, static_cast<std::int32_t>(text.size()));
    EXPECT_EQ(text.back(), u'\0');
    text.pop_back();
    return shown(text);
}

// The program stands beside "keyword.ini", so both have the same words.
TEST(LibraryFile, ConvertsAsTheCoreDoes) {
    const std::u16string script =
        expand(u"タイトル：朝|サブタイトル：夜|Ａ：おはよう。（字幕：x）|"
               u"（お辞儀、遅く）|メインイメージ：a.png|Hi. Ho.|super: a");
    const std::u16string elements = std::u16string(kTwoCharacters) + tellingTemplates();
    void* const library = dlopen(TVML_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_EQ(convertedBy(library, script, u"<staging>" + elements + u"</staging>"),
              Studio(elements).whole(script, 2, 3));
    EXPECT_EQ(dlclose(library), 0);
}

} // namespace
} // namespace tvml
