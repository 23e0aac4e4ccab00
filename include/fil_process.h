/* The script filter's one function, for hosts in C and C++.
 *
 * Conventions
 *  1. Units: every text is zero-terminated UTF-16 in native byte order; sizes
 *     and lengths count UTF-16 units (two bytes each), never characters or
 *     bytes. Line numbers count from 1.
 *  2. Ownership: the caller owns the texts and the buffer. The library keeps no
 *     pointer to them, and nothing of its own crosses the call. The buffer may
 *     lie over the texts: it is written when they are not needed any more.
 *  3. Null: a null `script` or `description` is an empty text. A null `output`
 *     asks for the size.
 *  4. Threads: any thread may call. The library starts none and does one call
 *     at a time: a call waits while another thread's runs, and so does a fork. A
 *     call from a signal handler that interrupts a call of its thread returns 0.
 *  5. Stack: a call needs 48 KB of its thread's stack, whatever it is given.
 *  6. Errors: no exception and no signal leaves the call. A run that fails (the
 *     memory is exhausted, the XML machinery cannot be started, the script would
 *     be longer than 2147483646 units, or one filled template longer than
 *     268435456) returns 0 and writes nothing.
 *  7. Files: each call reads "keyword.ini" and "Mirvol.ini" in the folder of
 *     the running program's executable, so that edits count at once. Both may
 *     be missing.
 */
#ifndef FIL_PROCESS_H
#define FIL_PROCESS_H

#include <stdint.h>

#ifdef __cplusplus
typedef char16_t fil_char; /* one UTF-16 unit */
extern "C" {
#else
typedef uint_least16_t fil_char; /* one UTF-16 unit, the type of C's char16_t */
#endif

#if defined(_WIN32) && defined(FIL_PROCESS_BUILD)
#define FIL_PROCESS_API __declspec(dllexport)
#elif defined(__GNUC__) && defined(FIL_PROCESS_BUILD)
#define FIL_PROCESS_API __attribute__((visibility("default")))
#else
#define FIL_PROCESS_API
#endif

/* Converts a programme script into a TVML script.
 *
 *  script       the programme script; only a line feed ends a line.
 *  playFrom     the line before which "playfromhere()" is placed.
 *  playTo       the line after which "end()" is placed.
 *  description  the filter description: XML without an XML declaration. What it
 *               lacks is filled with built-in staging, but a character talks
 *               only when the description gives it a model.
 *  output       receives the TVML script and a terminator, or null.
 *  outputSize   the units that `output` has room for, terminator included.
 *
 * Returns
 *  - with a null `output`: the script's length plus one, the size that a buffer
 *    needs; at least 2. Or 0 when the run failed.
 *  - with a buffer that is large enough: the script's length, without the
 *    terminator.
 *  - with a buffer that is too small: 0. The buffer then holds the terminator
 *    alone; when `outputSize` is below 1 nothing is written.
 *  - 0 when the run failed; the buffer is as it was.
 *
 * So call twice: with a null buffer to learn the size, then with a buffer of
 * that size. Every call converts anew, and two calls may give scripts of
 * different lengths: where the description chooses at random, the choice depends
 * on the time in seconds, and somebody may save an ini file between the calls. A
 * host that gets 0 for its buffer therefore asks for the size again, a few times
 * before it gives up; a size query that returns 0 is a failure that asking again
 * does not mend, unless memory was short.
 */
FIL_PROCESS_API int32_t fil_process(const fil_char* script, int32_t playFrom, int32_t playTo,
                                    const fil_char* description, fil_char* output,
                                    int32_t outputSize);

#ifdef __cplusplus
}
#endif

#endif
