// Scripts in, TVML scripts out: what `convert` does to one script, and a worker
// of an archive to one after the other.
#ifndef TVML_HOST_SCRIPT_CONVERTER_H
#define TVML_HOST_SCRIPT_CONVERTER_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "diagnostics/media_names.h"
#include "host/command_line.h"
#include "host/conversion.h"
#include "host/inputs.h"

namespace tvml::host {

// Reads the description, the vocabulary and the settings once, for all of its
// scripts.
class ScriptConverter {
public:
    using Tell = std::function<void(const std::string& lines)>;

    // `tell` gets what is to be said on standard error.
    ScriptConverter(Options options, Tell tell);

    // Returns the exit code for this script; throws a HostError when there is no
    // output.
    int convert(const std::string& script, const std::string& output);

private:
    struct Converted {
        std::u16string text;
        Analysis analysis;   // but for the library's
        bool failed = false; // by its problems
        bool descriptionBroken = false;
    };

    Inputs read();
    Converted run(const Inputs& inputs);
    Converted runHere(const Inputs& inputs);
    void warnOfHalfPairs(std::u16string_view text) const;
    void write(const Inputs& inputs, const Converted& converted) const;

    // Problems are looked for when they are to be shown or counted, or when the
    // last output may be better than the next one.
    bool wantsProblems() const {
        return !options_.quiet || options_.failureLevel.has_value() || options_.watch;
    }

    Options options_; // with the script and the output of the present call
    Tell tell_;
    std::optional<std::u16string> description_;
    std::optional<Filter> filter_;
    std::optional<MediaNames> media_;
};

} // namespace tvml::host

#endif
