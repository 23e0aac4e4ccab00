/* A host in C: the two-call protocol of the built library, its buffers and its
 * ini files. The argument is the folder of this program. */
#include "fil_process.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <uchar.h>

enum { CANARIES = 16 };
static const fil_char CANARY = 0xABCD;

static int failures = 0;

#define CHECK(condition) check((condition), #condition, __LINE__)

static void check(int condition, const char* text, int line) {
    if (!condition) {
        ++failures;
        fprintf(stderr, "%s:%d: %s\n", __FILE__, line, text);
    }
}

static int32_t convert(const fil_char* script, const fil_char* description, fil_char* output,
                       int32_t size) {
    return fil_process(script, 0, -1, description, output, size);
}

/* Every buffer stands between canaries. Checks one call with a buffer of `size`
 * units and says whether the text came whole. */
static int delivers(const fil_char* script, const fil_char* description, int32_t size) {
    const size_t room = size > 0 ? (size_t)size : 0;
    fil_char* block = malloc((room + 2 * CANARIES) * sizeof *block);
    for (size_t i = 0; i < room + 2 * CANARIES; ++i) {
        block[i] = CANARY;
    }
    fil_char* buffer = block + CANARIES;
    const int32_t needed = convert(script, description, NULL, size);
    const int32_t length = convert(script, description, buffer, size);
    size_t written = 0;
    if (size >= needed) {
        CHECK(length == needed - 1);
        written = (size_t)needed;
    } else {
        CHECK(length == 0);
        written = size >= 1 ? 1 : 0;
    }
    CHECK(written == 0 || buffer[written - 1] == 0);
    for (size_t i = 0; i + 1 < written; ++i) {
        CHECK(buffer[i] != 0 && buffer[i] != CANARY);
    }
    for (size_t i = 0; i < CANARIES; ++i) {
        CHECK(block[i] == CANARY);
    }
    for (size_t i = written; i < room + CANARIES; ++i) {
        CHECK(buffer[i] == CANARY);
    }
    free(block);
    return size >= needed;
}

static void test_protocol(void) {
    static const fil_char script[] = u"title: News\nA: Hello.\n(bow)\n";
    static const fil_char description[] =
        u"<staging><setting>set-up</setting><model_for_char character='A' japanesename='j' "
        u"englishname='e' default='no'>m</model_for_char></staging>";
    const int32_t needed = convert(script, description, NULL, 0);
    CHECK(needed > 100);
    CHECK(convert(script, description, NULL, -5) == needed);
    CHECK(convert(script, description, NULL, INT32_MAX) == needed);
    CHECK(delivers(script, description, needed));
    CHECK(delivers(script, description, needed + 7));
    CHECK(!delivers(script, description, needed - 1));
    CHECK(!delivers(script, description, 2));
    CHECK(!delivers(script, description, 1));
    CHECK(!delivers(script, description, 0));
    CHECK(!delivers(script, description, -1));
    CHECK(!delivers(script, description, INT32_MIN));
}

/* The result may take the script's place, from any unit of it on. */
static void test_output_over_script(void) {
    enum { ROOM = 20000 };
    static const fil_char line[] = u"A: Good morning, and welcome to the evening news.\n";
    static const fil_char description[] =
        u"<staging><talk>say $2 $9</talk><model_for_char character='A' japanesename='j' "
        u"englishname='e' default='no'>m</model_for_char></staging>";
    static fil_char expected[ROOM];
    static fil_char block[ROOM + 100];
    for (size_t offset = 0; offset < 100; offset += 33) {
        memset(block, 0, sizeof block);
        for (size_t i = 0; i < 64; ++i) {
            memcpy(block + 50 + i * (sizeof line / sizeof *line - 1), line, sizeof line);
        }
        const int32_t length = convert(block + 50, description, expected, ROOM);
        CHECK(length > 64 * 50);
        CHECK(convert(block + 50, description, block + offset, ROOM) == length);
        CHECK(memcmp(block + offset, expected, ((size_t)length + 1) * sizeof *block) == 0);
    }
}

static void test_null_texts(void) {
    static const fil_char empty[] = u"";
    const int32_t needed = convert(empty, empty, NULL, 0);
    CHECK(needed > 2); /* the built-in studio */
    CHECK(convert(NULL, empty, NULL, 0) == needed);
    CHECK(convert(empty, NULL, NULL, 0) == needed);
    CHECK(convert(NULL, NULL, NULL, 0) == needed);
    CHECK(delivers(NULL, NULL, needed));
}

/* What "(<word>)" makes; "x" when a call goes wrong. */
static const char* command_result(const fil_char* script) {
    static const fil_char description[] = u"<staging><setting>s</setting></staging>";
    static char text[4096];
    fil_char buffer[4096];
    const int32_t length = convert(script, description, buffer, 4096);
    if (length <= 0 || length + 1 != convert(script, description, NULL, 0)) {
        return "x";
    }
    for (int32_t i = 0; i <= length; ++i) {
        text[i] = (char)buffer[i];
    }
    const char* end = strstr(text, "//! initializeEnd\n");
    return end == NULL ? "x" : end + strlen("//! initializeEnd\n");
}

static void write_words(const char* folder, const char* words) {
    char path[1024];
    snprintf(path, sizeof path, "%s/keyword.ini", folder);
    if (words == NULL) {
        remove(path);
        return;
    }
    FILE* file = fopen(path, "wb");
    CHECK(file != NULL && fprintf(file, "[KEYWORD_STRING]\r\n%s", words) > 0);
    CHECK(file != NULL && fclose(file) == 0);
}

/* Edits count at once; a word that the file lacks keeps what it had. */
static void test_words(const char* folder) {
    write_words(folder, NULL);
    CHECK(strcmp(command_result(u"caption:x"), "") == 0);
    write_words(folder, "title=head\r\nsubtitle=lesser\r\nleftsuper=left__\r\n");
    const char* result = command_result(u"left__:x");
    CHECK(strstr(result, "LEFTSUPER, text=\"<font r='1.0' g='1.0' b='1.0' size='35%'>x<") != NULL);
    write_words(folder, "title=head\r\nsubtitle=lesser\r\nleftsuper=link__\r\n");
    CHECK(strcmp(command_result(u"left__:x"), "") == 0);
    CHECK(strstr(command_result(u"link__:x"), "LEFTSUPERBASE") != NULL);
    write_words(folder, NULL);
    CHECK(strstr(command_result(u"link__:x"), "LEFTSUPERBASE") != NULL);
}

static void test_repeated_calls(void) {
    static char first[4096];
    strcpy(first, command_result(u"subimage:a\n(bow)\n(hide picture)\ntitle:x"));
    CHECK(strstr(first, "IMAGEPLATE1") != NULL);
    for (int i = 0; i < 50; ++i) {
        command_result(u"mainimage:a\n(auto gesture)\n(opening off)\ntitle:x");
        CHECK(strcmp(command_result(u"subimage:a\n(bow)\n(hide picture)\ntitle:x"), first) == 0);
    }
}

int main(int count, char** arguments) {
    if (count != 2) {
        fprintf(stderr, "usage: c_host_test FOLDER\n");
        return 2;
    }
    write_words(arguments[1], NULL);
    test_protocol();
    test_output_over_script();
    test_null_texts();
    test_words(arguments[1]);
    test_repeated_calls();
    return failures == 0 ? 0 : 1;
}
