/* Asks for the size of a script with a word of the vocabulary. Exit status 0 when
 * the word is known, which shows that the ini files were found. */
#include <fil_process.h>
#include <uchar.h>

int main(void) {
    static const fil_char kDescription[] =
        u"<staging><numofchar>1</numofchar><model_for_char character='A' japanesename='x' "
        u"englishname='y' default='yes'>m</model_for_char></staging>";
    static const fil_char kKnown[] = u"\uFF21\uFF1A\uFF08\u559C\uFF09"; /* A: (joy) */
    static const fil_char kNothing[] = u"\uFF21\uFF1A\uFF08\u30F2\uFF09";
    const int32_t known = fil_process(kKnown, -1, -1, kDescription, 0, 0);
    const int32_t nothing = fil_process(kNothing, -1, -1, kDescription, 0, 0);
    return known > nothing && nothing > 0 ? 0 : 1;
}
