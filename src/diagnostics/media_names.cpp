// Entry: MediaNames.
#include "diagnostics/media_names.h"

#include <algorithm>

#include "diagnostics/suggestions.h"

namespace tvml {
namespace {

// More names than these are not compared with one that is missing.
constexpr std::size_t kCompared = 2000;

std::u16string comparable(std::u16string_view name) {
    std::u16string text(name);
    for (char16_t& unit : text) {
        unit = unit == u'\\'                  ? u'/'
               : unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a')
                                              : unit;
    }
    while (text.starts_with(u"./")) {
        text.erase(0, 2);
    }
    return text;
}

// As a script writes it.
std::u16string written(std::u16string path) {
    std::ranges::replace(path, u'/', u'\\');
    return path;
}

std::u16string_view fileOf(std::u16string_view path) {
    return path.substr(path.find_last_of(u"/\\") + 1);
}

bool startsElsewhere(std::u16string_view name) {
    return name.starts_with(u'/') || name.starts_with(u'\\') || name.substr(0, 2).ends_with(u':');
}

} // namespace

MediaNames::MediaNames(std::vector<std::u16string> paths) : paths_(std::move(paths)) {
    std::ranges::sort(paths_);
    for (const std::u16string& path : paths_) {
        known_.insert(comparable(path));
    }
}

bool MediaNames::holds(std::u16string_view name) const {
    return startsElsewhere(name) || known_.contains(comparable(name));
}

// The same file in another folder comes before names that are spelt alike.
std::vector<std::u16string> MediaNames::closestTo(std::u16string_view name) const {
    constexpr std::size_t kMost = 3;
    const std::u16string wanted = comparable(name);
    std::vector<std::u16string> found;
    ClosestNames closest(wanted);
    for (std::size_t i = 0; i < std::min(paths_.size(), kCompared); ++i) {
        const std::u16string path = comparable(paths_[i]);
        if (fileOf(path) == fileOf(wanted) && found.size() < kMost) {
            found.push_back(written(paths_[i]));
        }
        closest.offer(path, written(paths_[i]));
    }
    return found.empty() ? closest.take() : found;
}

} // namespace tvml
