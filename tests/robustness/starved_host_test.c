/* Hosts in C whose memory runs out. The program brings its own malloc and no C++
 * library: that one comes with the library, when it is loaded, and with it the
 * thread-local data that a thread's first exception makes. */
#include "fil_process.h"

#include <dlfcn.h>
#include <limits.h>
#include <malloc.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <uchar.h>
#include <unistd.h>

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void __libc_free(void* block);

typedef int32_t Process(const fil_char*, int32_t, int32_t, const fil_char*, fil_char*, int32_t);

static const fil_char script[] = u"title: News\nA: Good morning.\n(bow)\n";
static const fil_char description[] =
    u"<!DOCTYPE staging [<!ELEMENT staging (talk|set)*>]><staging><talk>say $2</talk>"
    u"<model_for_char character='A' japanesename='j' englishname='e' default='no'>m"
    u"</model_for_char></staging>";

static Process* process;

/* What malloc gives: so many blocks more, so many bytes at once; LONG_MAX: any. */
static long blocks_left = LONG_MAX;
static long bytes_left = LONG_MAX;
static int limit_in_blocks = 0;
static int calls_inside = 0;
static int32_t result_inside = -1;

static int32_t size_of_result(void) {
    return process(script, 0, -1, description, NULL, 0);
}

static int may_have(size_t size) {
    if (calls_inside > 0) { /* as a signal handler would call */
        --calls_inside;
        result_inside = size_of_result();
    }
    if (blocks_left == 0 || (bytes_left != LONG_MAX && (long)size > bytes_left)) {
        return 0;
    }
    blocks_left -= blocks_left != LONG_MAX;
    return 1;
}

static void* counted(void* block) {
    bytes_left -= bytes_left != LONG_MAX ? (long)malloc_usable_size(block) : 0;
    return block;
}

void* malloc(size_t size) {
    return may_have(size) ? counted(__libc_malloc(size)) : NULL;
}
void* calloc(size_t count, size_t size) {
    return may_have(count * size) ? counted(__libc_calloc(count, size)) : NULL;
}
void* realloc(void* block, size_t size) {
    return may_have(size) ? __libc_realloc(block, size) : NULL;
}
void free(void* block) {
    bytes_left += bytes_left != LONG_MAX ? (long)malloc_usable_size(block) : 0;
    __libc_free(block);
}

/* A call that starves and one that does not. */
static void* call_starved(void* limit) {
    long* const left = limit_in_blocks ? &blocks_left : &bytes_left;
    *left = *(const long*)limit;
    const int32_t starved = size_of_result();
    *left = LONG_MAX;
    const int32_t fed = size_of_result();
    return fed > 2 && (starved == fed || starved == 0) ? limit : NULL;
}

static int in_thread(void* (*step)(void*), void* argument) {
    pthread_t thread;
    void* result = NULL;
    return pthread_create(&thread, NULL, step, argument) == 0 &&
           pthread_join(thread, &result) == 0 && result != NULL;
}

static void load(const char* library) {
    void* const loaded = dlopen(library, RTLD_LAZY | RTLD_LOCAL);
    process = loaded == NULL ? NULL : (Process*)dlsym(loaded, "fil_process");
    if (process == NULL) {
        fprintf(stderr, "%s\n", dlerror());
        exit(2);
    }
}

/* Runs `step` in a process of its own, which loads the library anew. */
static int in_child(const char* library, int (*step)(long), long number) {
    const pid_t child = fork();
    if (child == 0) {
        load(library);
        _exit(step(number) ? 0 : 1);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

static int starves_first_call(long blocks) {
    limit_in_blocks = 1;
    return call_starved(&blocks) != NULL;
}
static int starves_first_call_of_thread(long bytes) {
    return in_thread(call_starved, &bytes);
}
/* The library was in use before the thread came. */
static int starves_later_thread(long bytes) {
    return size_of_result() > 2 && in_thread(call_starved, &bytes);
}

/* The system refuses what malloc asks for. */
static int has_little_room(long kilobytes) {
    char line[256] = "";
    FILE* const status = fopen("/proc/self/statm", "r");
    long pages = 0;
    if (status == NULL || fgets(line, sizeof line, status) == NULL) {
        return 0;
    }
    fclose(status);
    pages = strtol(line, NULL, 10);
    const rlim_t room = (rlim_t)pages * (rlim_t)sysconf(_SC_PAGESIZE) + (rlim_t)kilobytes * 1024;
    struct rlimit limit = {room, RLIM_INFINITY};
    if (setrlimit(RLIMIT_AS, &limit) != 0) {
        return 0;
    }
    const int32_t starved = size_of_result();
    limit.rlim_cur = RLIM_INFINITY;
    setrlimit(RLIMIT_AS, &limit);
    const int32_t fed = size_of_result();
    return fed > 2 && (starved == 0 || starved == fed);
}

static int calls_inside_a_call(long number) {
    (void)number;
    calls_inside = 1;
    return size_of_result() > 2 && result_inside == 0 && size_of_result() > 2;
}

int main(int count, char** arguments) {
    static const struct {
        const char* name;
        int (*step)(long);
        long first, last, step_by;
    } rows[] = {
        {"the first call starves", starves_first_call, 0, 60, 1},
        {"the first call starves later", starves_first_call, 61, 2000, 97},
        {"a thread's first call starves", starves_first_call_of_thread, 0, 60000, 1000},
        {"a later thread's first call starves", starves_later_thread, 0, 60000, 1000},
        {"little room", has_little_room, 0, 2000, 40},
        {"a call inside a call", calls_inside_a_call, 0, 0, 1},
    };
    int failures = 0;
    if (count != 2) {
        fprintf(stderr, "usage: starved_host_test LIBRARY\n");
        return 2;
    }
    for (size_t i = 0; i < sizeof rows / sizeof *rows; ++i) {
        for (long number = rows[i].first; number <= rows[i].last; number += rows[i].step_by) {
            if (!in_child(arguments[1], rows[i].step, number)) {
                fprintf(stderr, "%s: %ld\n", rows[i].name, number);
                if (++failures == 10) {
                    return 1;
                }
            }
        }
    }
    return failures == 0 ? 0 : 1;
}
