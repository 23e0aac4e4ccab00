// A library whose fil_process does what the script's first letter says:
//   s  fails when it is asked for the size
//   n  never finds the buffer large enough
//   l  finds it large enough at the third try, later than a host may expect
//   o  gives a shorter text than it announced, as a random choice can
//   c  brings the process down
//   f  does so the first time; the file that the rest of the line names tells
//   w  waits without an end
//   p  prints, and reads what there is to read
#include "fil_process.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>

namespace {

int tries = 0;

std::int32_t give(std::u16string_view text, char16_t* output) {
    text.copy(output, text.size());
    output[text.size()] = u'\0';
    return static_cast<std::int32_t>(text.size());
}

[[noreturn]] void crash() {
    std::_Exit(77); // at once, and without the windows that some systems show
}

// Whether the file is new.
bool makeFile(std::u16string_view name) {
    const std::string file(name.begin(), name.begin() + static_cast<int>(name.find(u'\n')));
    if (std::FILE* const old = std::fopen(file.c_str(), "r")) {
        std::fclose(old);
        return false;
    }
    std::fclose(std::fopen(file.c_str(), "w"));
    return true;
}

void beStrange(std::u16string_view script) {
    switch (script.front()) {
    case u'c':
        crash();
    case u'f':
        if (makeFile(script.substr(1))) {
            crash();
        }
        return;
    case u'w':
        std::this_thread::sleep_for(std::chrono::hours(1));
        return;
    case u'p':
        while (std::getchar() != EOF) {
        }
        std::puts("a library that talks");
        std::fflush(stdout);
        return;
    default:
        return;
    }
}

} // namespace

extern "C" std::int32_t fil_process(const char16_t* script, std::int32_t, std::int32_t,
                                    const char16_t*, char16_t* output, std::int32_t) {
    const char16_t mood = script[0];
    beStrange(script);
    if (output == nullptr) {
        return mood == u's' ? 0 : 6;
    }
    ++tries;
    if (mood == u'n' || (mood == u'l' && tries < 3)) {
        output[0] = u'\0';
        return 0;
    }
    return give(mood == u'o' ? u"one\n" : u"five\n", output);
}
