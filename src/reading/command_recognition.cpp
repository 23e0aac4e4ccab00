// Entries: recognizeCommand, parseAdverbs, parseNumber.
#include "reading/command_recognition.h"

#include "reading/script_text.h"

namespace tvml {
namespace {

// The position of the word in the head when it stands as the row asks, else
// kNone.
std::size_t matchWord(Match match, const Word& word, std::u16string_view head) {
    switch (match) {
    case Match::equals:
        return word.equals(head) ? 0 : kNone;
    case Match::starts:
        return word.starts(head) ? 0 : kNone;
    case Match::letter:
    case Match::twoLetters: {
        // Looked for at its place first: few heads have it there.
        const std::size_t place = lettersBefore(match);
        return head.size() >= place && word.starts(head.substr(place)) && word.findIn(head) == place
                   ? place
                   : kNone;
    }
    case Match::number:
        return word.findIn(head);
    }
    return kNone;
}

struct RowMatch {
    const CommandSpec* row = nullptr;
    const RowWord* word = nullptr;
    std::size_t position = 0;
};

RowMatch findRow(std::u16string_view head, const KeywordTable& words, const CommandIndex& index) {
    const RowSet rows = index.candidates(head);
    for (std::size_t i = rows.next(0); i < kCommands.size(); i = rows.next(i + 1)) {
        const CommandSpec& row = kCommands[i];
        for (const RowWord& word : row.words) {
            const std::size_t position = matchWord(row.match, words[word.key], head);
            if (position != kNone) {
                return {&row, &word, position};
            }
        }
    }
    return {};
}

std::size_t replaceFront(std::u16string& phrase, std::size_t units, std::u16string_view canonical) {
    units = std::min(units, phrase.size());
    phrase.replace(0, units, canonical);
    return units;
}

Recognition applyRow(std::u16string& phrase, std::u16string_view head, const RowMatch& match,
                     const KeywordTable& words) {
    Recognition result{Recognition::Outcome::row, match.row, match.word, match.position};
    const CommandSpec& spec = *match.row;
    std::u16string canonical(spec.name);
    std::size_t units = match.word->units;
    if (spec.match == Match::number) {
        const std::u16string number = parseNumber(head.substr(0, match.position), words);
        if (number.empty()) {
            result.outcome = Recognition::Outcome::noNumber;
            return result;
        }
        canonical.append(number).append(u" ").append(unitOf(spec.arguments)).append(u"s");
        units += match.position;
    }
    for (std::size_t i = 0; i < lettersBefore(spec.match); ++i) {
        if (!words.isLetter(head[i])) {
            result.outcome = Recognition::Outcome::noLetter;
            return result;
        }
        canonical += head[i];
    }
    result.replaced = replaceFront(phrase, units, canonical);
    result.inserted = canonical.size();
    return result;
}

bool isDecimalPoint(std::u16string_view unit, const KeywordTable& words) {
    return unit == u"." || words[u"period"].equals(unit);
}

// The ASCII digit of which `unit` is a form, or 0. A form that several digits
// share belongs to the smallest.
char16_t digitOf(std::u16string_view unit, const KeywordTable& words) {
    constexpr std::size_t zero = Key(u"num0").index();
    for (std::size_t digit = 0; digit < 10; ++digit) {
        const auto ascii = static_cast<char16_t>(u'0' + digit);
        if (unit.front() == ascii || words[Key::at(zero + digit)].equals(unit)) {
            return ascii;
        }
    }
    return 0;
}

} // namespace

CommandIndex::CommandIndex(const KeywordTable& words) {
    for (std::size_t i = 0; i < kCommands.size(); ++i) {
        const CommandSpec& row = kCommands[i];
        for (const RowWord& rowWord : row.words) {
            const Word& word = words[rowWord.key];
            if (word.loaded() && (row.match == Match::number || !word.hasUnits())) {
                anyHead_.insert(i);
            } else if (word.hasUnits()) {
                byUnitAt_[lettersBefore(row.match)][bucketOf(word.textOrEmpty().front())].insert(i);
            }
        }
    }
}

RowSet CommandIndex::candidates(std::u16string_view head) const {
    RowSet rows = anyHead_;
    for (std::size_t place = 0; place < std::min(byUnitAt_.size(), head.size()); ++place) {
        rows |= byUnitAt_[place][bucketOf(head[place])];
    }
    return rows;
}

std::u16string parseNumber(std::u16string_view text, const KeywordTable& words) {
    std::u16string number;
    std::size_t next = 0;
    const auto unitAt = [&](std::size_t position) { return text.substr(position, 1); };
    if (!text.empty() && (text.front() == u'-' || words[u"hyphen"].equals(unitAt(0)))) {
        number = u"-";
        next = 1;
    }
    if (next >= text.size()) {
        return {};
    }
    const char16_t first = digitOf(unitAt(next), words);
    if (first == 0) {
        return {};
    }
    number += first;
    ++next;
    bool pointSeen = false;
    if (first == u'0') {
        // A leading zero stands only before a decimal point.
        if (next >= text.size() || !isDecimalPoint(unitAt(next), words)) {
            return {};
        }
        number += u'.';
        pointSeen = true;
        ++next;
    }
    for (; next < text.size(); ++next) {
        const bool isPoint = isDecimalPoint(unitAt(next), words);
        const char16_t unit = isPoint ? u'.' : digitOf(unitAt(next), words);
        if (unit == 0 || (isPoint && pointSeen)) {
            return {};
        }
        pointSeen = pointSeen || isPoint;
        number += unit;
    }
    return number.back() == u'.' ? std::u16string() : number;
}

void translateAdverb(std::u16string& item, const KeywordTable& words) {
    for (const AdverbRow& row : kAdverbRows) {
        if (words[row.key].starts(item)) {
            replaceFront(item, row.units, row.english);
            return;
        }
    }
}

const AdverbRow* findAdverb(std::u16string_view item, const KeywordTable& words) {
    // No English form begins another, so a translated item is one of them only
    // when the word's units are the whole item.
    for (const AdverbRow& row : kAdverbRows) {
        if (words[row.key].starts(item)) {
            return item.size() <= row.units ? &row : nullptr;
        }
    }
    for (const AdverbRow& row : kAdverbRows) {
        if (item == row.english) {
            return &row;
        }
    }
    return nullptr;
}

bool parseAdverbs(std::u16string_view list, const KeywordTable& words, AdverbValues& values,
                  std::u16string_view* rejected, std::vector<ReadAdverb>* items) {
    if (rejected != nullptr) {
        *rejected = list;
    }
    if (list.empty()) {
        return false;
    }
    values = {};
    for (;;) {
        const std::size_t separator = list.empty() ? kNone : findSeparator(list, words);
        const bool last = separator == kNone;
        const std::u16string_view item =
            last ? list : trimScriptText(list.substr(0, separator), words);
        const AdverbRow* row = findAdverb(item, words);
        if (row == nullptr) {
            if (rejected != nullptr) {
                *rejected = item;
            }
            return false;
        }
        values.*(row->field) = row->value;
        if (items != nullptr) {
            items->push_back({row, item});
        }
        if (last) {
            return true;
        }
        list = dropAndTrim(list, separator + 1, words);
    }
}

Recognition recognizeCommand(std::u16string& phrase, const KeywordTable& words,
                             const TextMap& poseNames, const CommandIndex& index) {
    const std::u16string_view whole = phrase;
    const std::size_t separator = findSeparator(whole, words);
    const std::u16string_view head =
        separator == kNone ? whole : trimScriptText(whole.substr(0, separator), words);
    const RowMatch match = findRow(head, words, index);
    if (match.row != nullptr) {
        return applyRow(phrase, head, match, words);
    }
    const auto pose = poseNames.find(head);
    if (pose == poseNames.end()) {
        return {};
    }
    Recognition result{Recognition::Outcome::pose};
    result.replaced = replaceFront(phrase, head.size(), pose->second);
    result.inserted = pose->second.size();
    return result;
}

} // namespace tvml
