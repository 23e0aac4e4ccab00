// Loading the vocabulary. Entry: KeywordTable::load.
#include "vocabulary/keyword_table.h"

#include <algorithm>

namespace tvml {
namespace {

constexpr std::u16string_view kFileName = u"keyword.ini";
constexpr std::u16string_view kSection = u"KEYWORD_STRING";
constexpr std::u16string_view kMissingMark = u"keyword.ini error";
constexpr std::size_t kWordBufferUnits = 128;
constexpr std::size_t kHostPathUnits = 522;
constexpr std::size_t kIniPathUnits = 261; // with its terminator

constexpr bool inRange(char16_t unit, char16_t first, char16_t last) {
    return unit >= first && unit <= last;
}

// A range whose bounds are words; without both bounds there is no range.
bool inWordRange(char16_t unit, const Word& first, const Word& last) {
    return first.hasUnits() && last.hasUnits() &&
           inRange(unit, first.textOrEmpty().front(), last.textOrEmpty().front());
}

} // namespace

std::u16string hostIniPath(const platform::Platform& platform, std::u16string_view name) {
    const std::u16string host = platform.hostProgramPath(kHostPathUnits);
    const std::size_t cut = host.rfind(platform.pathSeparator());
    if (cut == std::u16string::npos || cut + 1 + name.size() >= kIniPathUnits) {
        return {};
    }
    return host.substr(0, cut + 1).append(name);
}

bool KeywordTable::load(const platform::Platform& platform) {
    std::u16string path = hostIniPath(platform, kFileName);
    if (file_ != nullptr && path == path_ && file_->isCurrent()) {
        return problem_ == LoadProblem::none;
    }
    file_.reset();
    path_ = std::move(path);
    std::unique_ptr<platform::IniFile> file = platform.openIni(path_);
    readWords(*file);
    file_ = std::move(file);
    return problem_ == LoadProblem::none;
}

bool KeywordTable::loadFrom(const platform::IniFile& file) {
    file_.reset();
    return readWords(file);
}

bool KeywordTable::readWords(const platform::IniFile& file) {
    problem_ = LoadProblem::none;
    std::array<char16_t, kWordBufferUnits> buffer;
    for (problemKey_ = 0; problemKey_ < kKeyCount; ++problemKey_) {
        const std::size_t length =
            file.readString(kSection, kKeys[problemKey_], kMissingMark, buffer);
        const std::u16string_view value(buffer.data(), length);
        if (length >= kWordBufferUnits - 1) {
            problem_ = LoadProblem::tooLong;
            break;
        }
        if (value == kMissingMark) {
            problem_ = LoadProblem::missing;
            break;
        }
        Word& word = words_[problemKey_];
        if (!word.equals(value)) {
            indexed_ = false; // until indexWords is through, whatever happens
            word.load(value);
        }
    }
    if (!indexed_) {
        indexWords();
    }
    return problem_ == LoadProblem::none;
}

void KeywordTable::set(Key key, std::u16string_view text) {
    indexed_ = false;
    file_.reset();
    words_[key.index()].load(text);
    indexWords();
}

void KeywordTable::indexWords() {
    ++version_;
    indexBlanks();
    indexLetters();
    indexed_ = true;
}

void KeywordTable::indexBlanks() {
    asciiBlanks_ = blanksWithoutWords();
    for (const char16_t unit : (*this)[u"space"].textOrEmpty()) {
        if (unit < asciiBlanks_.size()) {
            asciiBlanks_[unit] = true;
        }
    }
}

// Letters are looked up once a line, their 104 forms compared once a load. A
// form that several letters share belongs to the first of them.
void KeywordTable::indexLetters() {
    asciiLetters_.fill(0);
    otherLetters_.clear();
    const auto add = [this](char16_t form, char16_t letter) {
        if (form < asciiLetters_.size()) {
            char16_t& entry = asciiLetters_[form];
            entry = entry != 0 ? entry : letter;
        } else {
            otherLetters_.emplace_back(form, letter);
        }
    };
    constexpr std::size_t firstForm = Key(u"a1").index();
    for (std::size_t i = 0; i < 26; ++i) {
        const auto letter = static_cast<char16_t>(u'A' + i);
        add(static_cast<char16_t>(u'a' + i), letter);
        add(letter, letter);
        for (std::size_t form = 0; form < 2; ++form) {
            const std::u16string_view text = words_[firstForm + 2 * i + form].textOrEmpty();
            if (text.size() == 1) {
                add(text.front(), letter);
            }
        }
    }
    std::stable_sort(otherLetters_.begin(), otherLetters_.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
}

char16_t KeywordTable::letterOf(char16_t unit) const {
    if (unit < asciiLetters_.size()) {
        return asciiLetters_[unit];
    }
    const auto found =
        std::lower_bound(otherLetters_.begin(), otherLetters_.end(), unit,
                         [](const auto& entry, char16_t u) { return entry.first < u; });
    return found != otherLetters_.end() && found->first == unit ? found->second : u'\0';
}

bool KeywordTable::isLetter(char16_t unit) const {
    return inRange(unit, u'A', u'Z') || inRange(unit, u'a', u'z') ||
           inWordRange(unit, (*this)[u"A2"], (*this)[u"Z2"]) ||
           inWordRange(unit, (*this)[u"a1"], (*this)[u"z1"]);
}

} // namespace tvml
