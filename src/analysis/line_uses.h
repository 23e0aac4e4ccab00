// Which lines use which elements of the description: the short form of what a
// story tells, for all lines of a script at once.
#ifndef TVML_ANALYSIS_LINE_USES_H
#define TVML_ANALYSIS_LINE_USES_H

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "run/events.h"

namespace tvml {

struct LineUse {
    std::int32_t line = 0;    // from 1
    std::size_t number = 0;   // of the element in the description, 0 for a built-in text
    std::u16string element{}; // its name
};

// Give it to the run as a listener, convert, and take the uses. A line that uses an
// element several times has one.
class UseRecorder final : public RunListener {
public:
    std::vector<LineUse> take() { return std::move(uses_); }

    void lineConverted(const ScriptLine&, const LineOutcome& outcome) override {
        const std::size_t first = uses_.size();
        for (const TemplateUse& use : outcome.templates) {
            if (!isNoted(first, use)) {
                uses_.push_back({outcome.number, use.number, std::u16string(use.element)});
            }
        }
    }

private:
    bool isNoted(std::size_t first, const TemplateUse& use) const;

    std::vector<LineUse> uses_;
};

} // namespace tvml

#endif
