/* A library that does nothing, but needs what the filter needs of the system:
 * whatever the system's loader keeps of such a library, it keeps of this one. */
#include "fil_process.h"

int32_t fil_process(const fil_char* script, int32_t playFrom, int32_t playTo,
                    const fil_char* description, fil_char* output, int32_t outputSize) {
    (void)script, (void)playFrom, (void)playTo, (void)description, (void)output, (void)outputSize;
    return 0;
}
