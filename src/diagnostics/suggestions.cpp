// Closest names. Entries: editDistance, ClosestNames.
#include "diagnostics/suggestions.h"

#include <algorithm>
#include <array>

#ifdef _WIN32
#include "platform/windows_api.h"
#else
#include <unicode/unorm2.h>
#endif

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

// Compatibility forms as the characters that they stand for, marks joined with
// their kana, in small letters; the text itself when that fails.
std::u16string compatibleText(std::u16string_view text) {
    std::u16string result(3 * text.size() + 18, u'\0'); // no character gives more
#ifdef _WIN32
    const int size =
        NormalizeString(NormalizationKC, reinterpret_cast<const wchar_t*>(text.data()),
                        static_cast<int>(text.size()), reinterpret_cast<wchar_t*>(result.data()),
                        static_cast<int>(result.size()));
    const bool failed = size <= 0;
#else
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* const folding = unorm2_getNFKCCasefoldInstance(&status);
    const std::int32_t size =
        U_FAILURE(status)
            ? 0
            : unorm2_normalize(folding, text.data(), static_cast<std::int32_t>(text.size()),
                               result.data(), static_cast<std::int32_t>(result.size()), &status);
    const bool failed = U_FAILURE(status);
#endif
    if (failed) {
        return std::u16string(text);
    }
    result.resize(static_cast<std::size_t>(size));
    return result;
}

bool isKatakana(char16_t unit) {
    return unit >= u'ァ' && unit <= u'ー';
}

// What is typed for a long vowel.
bool isDash(char16_t unit) {
    return unit == u'-' || (unit >= 0x2010 && unit <= 0x2015) || unit == 0x2212 || unit == u'一';
}

bool isKanji(char16_t unit) {
    return unit == u'々' || (unit >= 0x3400 && unit <= 0x9FFF);
}

bool holdsKanji(std::u16string_view text) {
    return std::ranges::any_of(text, isKanji);
}

bool isKana(std::u16string_view text) {
    return std::ranges::all_of(text, isKatakana);
}

bool shareKanji(std::u16string_view a, std::u16string_view b) {
    return std::ranges::any_of(
        a, [&](char16_t unit) { return isKanji(unit) && b.find(unit) != b.npos; });
}

bool shareAnEnd(std::u16string_view a, std::u16string_view b) {
    return a.front() == b.front() || a.back() == b.back();
}

std::u16string_view takeEnglishWord(std::u16string_view& rest) {
    const std::size_t end = std::min(rest.find(u' '), rest.size());
    const std::u16string_view word = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return word;
}

// Of a phrase each word must be like the one that stands at its place: "stop
// music" is no slip for "stop shaking".
bool wordsAreLike(std::u16string_view a, std::u16string_view b) {
    if (std::ranges::count(a, u' ') != std::ranges::count(b, u' ')) {
        return true;
    }
    while (!a.empty() && !b.empty()) {
        const std::u16string_view one = takeEnglishWord(a);
        const std::u16string_view other = takeEnglishWord(b);
        const std::size_t limit =
            std::max<std::size_t>(1, closeLimit(std::max(one.size(), other.size())));
        if (editDistance(one, other, limit) > limit) {
            return false;
        }
    }
    return true;
}

// Whether two texts at this distance may be one word with a slip. A short word is
// near to many others by chance, so more than the distance is asked of it.
bool mayBeSlip(std::u16string_view given, std::u16string_view name, std::size_t distance) {
    if (distance == 0) {
        return true;
    }
    constexpr std::size_t kShort = 3;
    const std::size_t shorter = std::min(given.size(), name.size());
    if (looksEnglish(given) && looksEnglish(name)) {
        return wordsAreLike(given, name) && (shorter > 3 || shareAnEnd(given, name));
    }
    if (isKana(given) && isKana(name)) {
        return distance <= 1 && shareAnEnd(given, name);
    }
    if (holdsKanji(given) || holdsKanji(name)) {
        return shorter > kShort || shareKanji(given, name);
    }
    return true;
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
    std::u16string folded = looksEnglish(text) ? std::u16string(text) : compatibleText(text);
    for (std::size_t i = 0; i < folded.size(); ++i) {
        char16_t& unit = folded[i];
        if (unit >= u'A' && unit <= u'Z') {
            unit = static_cast<char16_t>(unit + 32);
        } else if (unit >= u'ぁ' && unit <= u'ゖ') {
            unit = static_cast<char16_t>(unit + (u'ァ' - u'ぁ'));
        } else if (i > 0 && isDash(unit) && isKatakana(folded[i - 1])) {
            unit = u'ー';
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
    if (distance > limit && (holdsName || isPart || sharesStart(given_, folded))) {
        distance = limit + 1;
    } else if (distance > limit || !mayBeSlip(given_, folded, distance)) {
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
