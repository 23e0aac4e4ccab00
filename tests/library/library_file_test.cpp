// The built library file, loaded as a host loads it, and its symbols.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

#include <dlfcn.h>

#include "fil_process.h"
#include "support/studio.h"

namespace tvml {
namespace {

TEST(LibraryFile, ExportsOneSymbol) {
    const std::string command = std::string(TVML_NM) + " -D --defined-only " + TVML_LIBRARY;
    const std::unique_ptr<FILE, int (*)(FILE*)> listing(popen(command.c_str(), "r"), pclose);
    ASSERT_NE(listing, nullptr);
    std::string names;
    char line[512];
    while (fgets(line, sizeof line, listing.get()) != nullptr) {
        const std::string text(line);
        names += text.substr(text.rfind(' ') + 1);
    }
    EXPECT_EQ(names, "fil_process\n");
}

class LoadedLibrary {
public:
    LoadedLibrary() : handle_(dlopen(TVML_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {}
    ~LoadedLibrary() { unload(); }
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    bool loaded() const { return handle_ != nullptr; }
    void unload() {
        if (handle_ != nullptr) {
            dlclose(handle_);
            handle_ = nullptr;
        }
    }
    std::string convert(const std::u16string& script, const std::u16string& description) const {
        const auto process =
            reinterpret_cast<decltype(&fil_process)>(dlsym(handle_, "fil_process"));
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

private:
    void* handle_;
};

// The program stands beside "keyword.ini", so both have the same words.
TEST(LibraryFile, ConvertsAsTheCoreDoes) {
    const std::u16string script =
        expand(u"タイトル：朝|サブタイトル：夜|Ａ：おはよう。（字幕：x）|"
               u"（お辞儀、遅く）|メインイメージ：a.png|Hi. Ho.|super: a");
    const std::u16string elements = std::u16string(kTwoCharacters) + tellingTemplates();
    const LoadedLibrary library;
    ASSERT_TRUE(library.loaded()) << dlerror();
    EXPECT_EQ(library.convert(script, u"<staging>" + elements + u"</staging>"),
              Studio(elements).whole(script, 2, 3));
}

TEST(LibraryFile, ComesAndGoes) {
    for (int i = 0; i < 3; ++i) {
        LoadedLibrary library;
        ASSERT_TRUE(library.loaded()) << dlerror();
        EXPECT_NE(library.convert(u"Hi", u"<staging/>"), "");
        library.unload();
        EXPECT_EQ(dlopen(TVML_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
    }
}

} // namespace
} // namespace tvml
