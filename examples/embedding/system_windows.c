/* The operating system on Windows. A unit of UTF-16 is its wchar_t. */
#include "system.h"

#include <fcntl.h>
#include <io.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

void* load_filter(const char* path, FilProcess** process) {
    const HMODULE library = LoadLibraryA(path);
    const FARPROC symbol = library != NULL ? GetProcAddress(library, "fil_process") : NULL;
    if (symbol == NULL) {
        fprintf(stderr, "embedding: %s cannot be loaded: system error %lu\n", path, GetLastError());
        if (library != NULL) {
            FreeLibrary(library);
        }
        return NULL;
    }
    memcpy(process, &symbol, sizeof *process); /* C has no cast for this */
    return library;
}

void unload_filter(void* library) {
    FreeLibrary(library);
}

fil_char* utf16_from_utf8(const char* bytes, size_t length) {
    if (length > INT_MAX) {
        return NULL;
    }
    /* A character never has more units in UTF-16 than bytes in UTF-8. */
    fil_char* text = calloc(length + 1, sizeof *text);
    const int size = (int)length;
    if (text != NULL && size > 0 &&
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes, size, (wchar_t*)text, size) ==
            0) {
        free(text);
        return NULL;
    }
    return text;
}

int print_utf8(const fil_char* text) {
    const wchar_t* wide = (const wchar_t*)text;
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, NULL, 0, NULL, NULL);
    char* bytes = malloc((size_t)size + 1);
    if (size <= 0 || bytes == NULL) {
        free(bytes);
        return 0;
    }
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, bytes, size, NULL, NULL);
    _setmode(_fileno(stdout), _O_BINARY); /* line feeds stay alone */
    const size_t length = (size_t)size - 1;
    const int done = fwrite(bytes, 1, length, stdout) == length && fflush(stdout) == 0;
    free(bytes);
    return done;
}
