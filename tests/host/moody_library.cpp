// A library whose fil_process does what the script's first letter says:
//   s  fails when it is asked for the size
//   n  never finds the buffer large enough
//   l  finds it large enough at the third try, later than a host may expect
//   o  gives a shorter text than it announced, as a random choice can
#include "fil_process.h"

#include <string_view>

namespace {

int tries = 0;

std::int32_t give(std::u16string_view text, char16_t* output) {
    text.copy(output, text.size());
    output[text.size()] = u'\0';
    return static_cast<std::int32_t>(text.size());
}

} // namespace

extern "C" std::int32_t fil_process(const char16_t* script, std::int32_t, std::int32_t,
                                    const char16_t*, char16_t* output, std::int32_t) {
    const char16_t mood = script[0];
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
