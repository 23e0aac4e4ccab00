/* A host of the script filter: converts a programme script and prints the TVML
 * script that it becomes.
 *
 *   embedding LIBRARY SCRIPT DESCRIPTION
 *
 * LIBRARY is the filter, tvmlfilter.dll or libtvmlfilter.so; name its folder,
 * too, because a bare name is looked for elsewhere. SCRIPT and DESCRIPTION are
 * UTF-8 text files. The filter reads its words from "keyword.ini" in the folder
 * of this program. */
#include "fil_process.h"
#include "system.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* The play starts with the first line, and no line ends it. */
enum { PLAY_FROM = 0, PLAY_TO = -1 };

/* The bytes of a file; the caller frees them. Null when it cannot be read. */
static char* read_file(const char* path, size_t* size) {
    FILE* file = fopen(path, "rb");
    char* bytes = NULL;
    if (file != NULL && fseek(file, 0, SEEK_END) == 0) {
        const long end = ftell(file);
        rewind(file);
        bytes = end >= 0 ? malloc((size_t)end + 1) : NULL;
        if (bytes != NULL && fread(bytes, 1, (size_t)end, file) != (size_t)end) {
            free(bytes);
            bytes = NULL;
        }
        *size = bytes != NULL ? (size_t)end : 0;
    }
    if (file != NULL) {
        fclose(file);
    }
    return bytes;
}

/* The filter takes the line feed alone for the end of a line. */
static void remove_carriage_returns(char* bytes, size_t* size) {
    size_t kept = 0;
    for (size_t i = 0; i < *size; ++i) {
        if (bytes[i] != '\r') {
            bytes[kept++] = bytes[i];
        }
    }
    *size = kept;
}

/* The text of a file; the caller frees it. Null, after a message, without one. */
static fil_char* read_text(const char* path) {
    static const char MARK[] = "\xEF\xBB\xBF"; /* a byte order mark is no text */
    size_t size = 0;
    char* bytes = read_file(path, &size);
    fil_char* text = NULL;
    if (bytes != NULL) {
        remove_carriage_returns(bytes, &size);
        const size_t skipped = size >= 3 && memcmp(bytes, MARK, 3) == 0 ? 3 : 0;
        text = utf16_from_utf8(bytes + skipped, size - skipped);
    }
    if (text == NULL) {
        fprintf(stderr, "embedding: %s cannot be read as UTF-8\n", path);
    }
    free(bytes);
    return text;
}

/* Two calls: one asks for the size, one fills a buffer of that size. Where the
 * description chooses at random the second may need a larger one, so both are
 * tried again. The caller frees the text; null when the filter failed. */
static fil_char* convert(FilProcess* process, const fil_char* script, const fil_char* description) {
    enum { TRIES = 5 };
    for (int i = 0; i < TRIES; ++i) {
        const int32_t size = process(script, PLAY_FROM, PLAY_TO, description, NULL, 0);
        if (size <= 0) {
            return NULL; /* asking again would not mend this */
        }
        fil_char* output = malloc((size_t)size * sizeof *output);
        if (output == NULL) {
            return NULL;
        }
        if (process(script, PLAY_FROM, PLAY_TO, description, output, size) > 0) {
            return output;
        }
        free(output);
    }
    return NULL;
}

static int convert_files(FilProcess* process, const char* script_path,
                         const char* description_path) {
    fil_char* script = read_text(script_path);
    fil_char* description = read_text(description_path);
    fil_char* tvml = NULL;
    if (script != NULL && description != NULL) {
        tvml = convert(process, script, description);
        if (tvml == NULL) {
            fputs("embedding: the script could not be converted\n", stderr);
        }
    }
    const int done = tvml != NULL && print_utf8(tvml);
    free(tvml);
    free(description);
    free(script);
    return done;
}

int main(int count, char** arguments) {
    if (count != 4) {
        fputs("usage: embedding LIBRARY SCRIPT DESCRIPTION\n", stderr);
        return 2;
    }
    FilProcess* process = NULL;
    void* library = load_filter(arguments[1], &process);
    if (library == NULL) {
        return 1;
    }
    const int done = convert_files(process, arguments[2], arguments[3]);
    unload_filter(library);
    return done ? 0 : 1;
}
