// Prints docs/diagnostics.md.
#include <cstdio>

#include "diagnostics/diagnostics.h"

int main() {
    const std::string page = tvml::diagnosticsPage(tvml::platform::system());
    return std::fwrite(page.data(), 1, page.size(), stdout) == page.size() ? 0 : 1;
}
