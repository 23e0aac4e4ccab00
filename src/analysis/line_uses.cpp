// Entry: UseRecorder.
#include "analysis/line_uses.h"

#include <algorithm>

namespace tvml {

bool UseRecorder::isNoted(std::size_t first, const TemplateUse& use) const {
    return std::any_of(uses_.begin() + static_cast<std::ptrdiff_t>(first), uses_.end(),
                       [&use](const LineUse& one) {
                           return one.number == use.number && one.element == use.element;
                       });
}

} // namespace tvml
