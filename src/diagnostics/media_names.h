// The pictures and sounds that are there, for checks that know no files.
#ifndef TVML_DIAGNOSTICS_MEDIA_NAMES_H
#define TVML_DIAGNOSTICS_MEDIA_NAMES_H

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tvml {

// Compares as the player's system does: small and capital ASCII letters are the
// same, and so are both slashes.
class MediaNames {
public:
    // Paths below the folder where the names of scripts start.
    explicit MediaNames(std::vector<std::u16string> paths);

    // True also for a name that starts elsewhere, at a drive or at the root: nothing
    // is known of it.
    bool holds(std::u16string_view name) const;

    // The paths that `name` may mean, at most three, with backslashes.
    std::vector<std::u16string> closestTo(std::u16string_view name) const;

private:
    std::vector<std::u16string> paths_;
    std::unordered_set<std::u16string> known_;
};

} // namespace tvml

#endif
