/* The operating system on Linux and its like. */
#define _POSIX_C_SOURCE 200809L
#include "system.h"

#include <dlfcn.h>
#include <iconv.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

void* load_filter(const char* path, FilProcess** process) {
    void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    void* symbol = library != NULL ? dlsym(library, "fil_process") : NULL;
    if (symbol == NULL) {
        fprintf(stderr, "embedding: %s\n", dlerror());
        if (library != NULL) {
            dlclose(library);
        }
        return NULL;
    }
    memcpy(process, &symbol, sizeof *process); /* C has no cast for this */
    return library;
}

void unload_filter(void* library) {
    dlclose(library);
}

/* The filter's texts are in the machine's own byte order. */
static const char* utf16_name(void) {
    const uint16_t unit = 1;
    return *(const unsigned char*)&unit == 1 ? "UTF-16LE" : "UTF-16BE";
}

/* Converts into a block that is large enough; returns the bytes written, or
 * (size_t)-1. */
static size_t convert(const char* to, const char* from, const void* input, size_t input_size,
                      void* output, size_t output_size) {
    const iconv_t converter = iconv_open(to, from);
    if (converter == (iconv_t)-1) {
        return (size_t)-1;
    }
    char* in = (char*)(uintptr_t)input; /* iconv changes the pointer alone */
    char* out = output;
    size_t room = output_size;
    const size_t failed = iconv(converter, &in, &input_size, &out, &room);
    iconv_close(converter);
    return failed == (size_t)-1 ? failed : output_size - room;
}

fil_char* utf16_from_utf8(const char* bytes, size_t length) {
    /* A character never has more units in UTF-16 than bytes in UTF-8. */
    fil_char* text = calloc(length + 1, sizeof *text);
    if (text != NULL &&
        convert(utf16_name(), "UTF-8", bytes, length, text, length * sizeof *text) == (size_t)-1) {
        free(text);
        return NULL;
    }
    return text;
}

int print_utf8(const fil_char* text) {
    size_t units = 0;
    while (text[units] != 0) {
        ++units;
    }
    char* bytes = malloc(3 * units + 1);
    const size_t size = bytes == NULL ? (size_t)-1
                                      : convert("UTF-8", utf16_name(), text, units * sizeof *text,
                                                bytes, 3 * units);
    const int done = size != (size_t)-1 && fwrite(bytes, 1, size, stdout) == size;
    free(bytes);
    return done && fflush(stdout) == 0;
}
