// What a conversion run tells, kept to be shown to the writer. This is the only
// door between the host and the diagnostics: how they are collected, worded and
// ordered is known behind it alone.
#ifndef TVML_HOST_RUN_REPORT_H
#define TVML_HOST_RUN_REPORT_H

#include <cstdint>
#include <memory>
#include <string>

#include "filter/report.h"

namespace tvml::host {

// The names by which messages call the texts, and the lines asked for.
struct RunSources {
    std::string script;
    std::string description;
    std::int32_t playFrom = 0;
    std::int32_t playTo = 0;
};

class RunReport {
public:
    explicit RunReport(RunSources sources);
    ~RunReport();

    // To be given to one run.
    ConversionReport& listener();

    // UTF-8 lines for standard error, each with its line feed; empty when the
    // run met no problem.
    std::string text() const;

private:
    class Collector;
    std::unique_ptr<Collector> collector_;
};

} // namespace tvml::host

#endif
