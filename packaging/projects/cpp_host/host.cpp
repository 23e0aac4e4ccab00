// As the host in C: whether a word of the vocabulary is known.
#include <cstdint>

#include <fil_process.h>

namespace {

std::int32_t lengthOf(const char16_t* script) {
    return fil_process(script, -1, -1,
                       u"<staging><numofchar>1</numofchar><model_for_char character='A' "
                       u"japanesename='x' englishname='y' default='yes'>m</model_for_char>"
                       u"</staging>",
                       nullptr, 0);
}

} // namespace

int main() {
    const std::int32_t nothing = lengthOf(u"\uFF21\uFF1A\uFF08\u30F2\uFF09");
    return lengthOf(u"\uFF21\uFF1A\uFF08\u559C\uFF09") > nothing && nothing > 0 ? 0 : 1;
}
