// Closest names. Entries: editDistance, ClosestNames.
#include "diagnostics/suggestions.h"

#include <algorithm>
#include <array>

namespace tvml {
namespace {

constexpr std::size_t kMostNames = 3;
constexpr std::size_t kFar = 1000;

// Whether half of a text or more is the start of a name, as in "字幕ＯＮ". Latin
// letters say less than others.
bool sharesStart(std::u16string_view text, std::u16string_view name) {
    const auto end = std::mismatch(text.begin(), text.end(), name.begin(), name.end()).first;
    const auto units = static_cast<std::size_t>(end - text.begin());
    const bool english = looksEnglish(text);
    return units >= (english ? 4U : 2U) && 2 * units >= text.size() + (english ? 1 : 0);
}

bool isKanji(char16_t unit) {
    return unit >= 0x3400 && unit <= 0x9FFF;
}

// Short words with kanji that have none in common mean different things, however
// few changes lie between them: 走る and 座る.
bool isOtherKanjiWord(std::u16string_view text, std::u16string_view name) {
    constexpr std::size_t kShort = 3;
    return text.size() <= kShort && std::any_of(text.begin(), text.end(), isKanji) &&
           std::none_of(text.begin(), text.end(), [&](char16_t unit) {
               return isKanji(unit) && name.find(unit) != name.npos;
           });
}

} // namespace

std::size_t editDistance(std::u16string_view a, std::u16string_view b, std::size_t limit) {
    const std::size_t gap = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
    if (gap > limit) {
        return limit + 1;
    }
    // Three rows of the usual table: exchanges look two rows back.
    std::vector<std::size_t> before(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> now(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        last[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        now[0] = i;
        std::size_t best = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t change = a[i - 1] == b[j - 1] ? 0 : 1;
            now[j] = std::min({last[j] + 1, now[j - 1] + 1, last[j - 1] + change});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                now[j] = std::min(now[j], before[j - 2] + 1);
            }
            best = std::min(best, now[j]);
        }
        if (best > limit) {
            return limit + 1;
        }
        before.swap(last);
        last.swap(now);
    }
    return std::min(last[b.size()], limit + 1);
}

std::u16string foldedText(std::u16string_view text) {
    std::u16string folded(text);
    for (char16_t& unit : folded) {
        if (unit >= 0xFF01 && unit <= 0xFF5E) {
            unit = static_cast<char16_t>(unit - 0xFF01 + u'!');
        } else if (unit == 0x3000) {
            unit = u' ';
        }
        if (unit >= u'A' && unit <= u'Z') {
            unit = static_cast<char16_t>(unit + 32);
        } else if (unit >= u'ぁ' && unit <= u'ゖ') {
            unit = static_cast<char16_t>(unit + (u'ァ' - u'ぁ'));
        }
    }
    return folded;
}

bool looksEnglish(std::u16string_view text) {
    return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

std::size_t closeLimit(std::size_t units) {
    return units < 2 ? 0 : units < 4 ? 1 : (units + 1) / 3;
}

ClosestNames::ClosestNames(std::u16string_view given) {
    if (given.size() <= kLongestGiven) {
        given_ = foldedText(given);
    }
}

void ClosestNames::offer(std::u16string_view name, std::u16string_view shown) {
    if (given_.empty() || name.empty()) {
        return;
    }
    const std::u16string folded = foldedText(name);
    const std::size_t limit = closeLimit(std::max(folded.size(), given_.size()));
    std::size_t distance = editDistance(given_, folded, limit);
    // A text that holds the whole name, or is a good part of it, is close, too.
    const bool holdsName = folded.size() >= 2 && given_.find(folded) != given_.npos;
    const bool isPart = given_.size() >= 2 && folded.find(given_) != folded.npos;
    if (distance <= limit && distance > 0 && isOtherKanjiWord(given_, folded)) {
        return;
    }
    if (distance > limit && (holdsName || isPart || sharesStart(given_, folded))) {
        distance = limit + 1;
    } else if (distance > limit) {
        return;
    }
    const auto same = std::find_if(names_.begin(), names_.end(),
                                   [&](const Close& close) { return close.shown == shown; });
    if (same != names_.end()) {
        same->distance = std::min(same->distance, distance);
    } else {
        names_.push_back({distance, std::u16string(shown)});
    }
}

std::vector<std::u16string> ClosestNames::take() {
    std::stable_sort(names_.begin(), names_.end(),
                     [](const Close& a, const Close& b) { return a.distance < b.distance; });
    std::vector<std::u16string> result;
    for (Close& close : names_) {
        // Names that are much further away than the closest one only confuse.
        if (result.size() < kMostNames && close.distance <= names_.front().distance + 1) {
            result.push_back(std::move(close.shown));
        }
    }
    names_.clear();
    return result;
}

std::size_t ClosestNames::distance() const {
    std::size_t closest = kFar;
    for (const Close& close : names_) {
        closest = std::min(closest, close.distance);
    }
    return closest;
}

} // namespace tvml
