#include <fil_process.h>
#include <stddef.h>

int main(void) {
    return fil_process(NULL, 0, -1, NULL, NULL, 0) > 2 ? 0 : 1;
}
