/* What a host needs of the operating system to use the filter. There is one
 * file for each: system_posix.c and system_windows.c. */
#ifndef EMBEDDING_SYSTEM_H
#define EMBEDDING_SYSTEM_H

#include "fil_process.h"

#include <stddef.h>

typedef int32_t FilProcess(const fil_char* script, int32_t play_from, int32_t play_to,
                           const fil_char* description, fil_char* output, int32_t output_size);

/* The library, and its function in `process`. Null when `path` leads to no
 * library that exports fil_process. */
void* load_filter(const char* path, FilProcess** process);

/* Its function must not be called any more. */
void unload_filter(void* library);

/* The text of `length` bytes of UTF-8, terminated. Null when they are none, or
 * without memory. The caller frees it. */
fil_char* utf16_from_utf8(const char* bytes, size_t length);

/* Writes a terminated text as UTF-8 to standard output, line feeds as they are.
 * Returns 0 when that failed. */
int print_utf8(const fil_char* text);

#endif
