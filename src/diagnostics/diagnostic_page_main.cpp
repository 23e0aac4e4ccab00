// Prints docs/diagnostics.md or its translation.
//
//   tvmldiagnostics_doc KEYWORD_INI LANGUAGE
#include <cstdio>

#include "diagnostics/examples.h"
#include "platform/host_services.h"

int main(int argc, char** argv) {
    const auto language = argc == 3 ? tvml::languageNamed(argv[2]) : std::nullopt;
    if (!language.has_value()) {
        return std::fputs("usage: tvmldiagnostics_doc KEYWORD_INI LANGUAGE\n", stderr), 2;
    }
    const std::string page = tvml::diagnosticsPage(tvml::platform::readSettings(argv[1]),
                                                   tvml::platform::system(), *language);
    return std::fwrite(page.data(), 1, page.size(), stdout) == page.size() ? 0 : 1;
}
