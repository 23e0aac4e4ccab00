// What a conversion run tells, kept to be shown to the writer. This is the only
// door between the host and the diagnostics: how they are collected, worded and
// ordered is known behind it alone.
#ifndef TVML_HOST_RUN_REPORT_H
#define TVML_HOST_RUN_REPORT_H

#include <memory>
#include <string>

#include "filter/conversion_run.h"

namespace tvml::host {

// The names by which messages call the texts.
struct SourceNames {
    std::string script;
    std::string description;
};

class RunReport {
public:
    // `request` is what the run will convert.
    RunReport(const ConversionRequest& request, SourceNames names);
    ~RunReport();

    // To be given to one run.
    ConversionReport& listener();

    // UTF-8 lines for standard error, each with its line feed; empty when there
    // is nothing to say. To be called once, after the run.
    std::string text();

private:
    class Collector;
    std::unique_ptr<Collector> collector_;
};

} // namespace tvml::host

#endif
