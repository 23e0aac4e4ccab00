// Words that do not do what their keys promise. Entry: checkVocabulary.
//
// What a word does is tried with the readers themselves: a sample phrase of each
// row of the command table goes through the recognition, and whatever takes it
// instead of the row hides the word.
#include <algorithm>
#include <array>
#include <map>

#include "diagnostics/finding.h"
#include "diagnostics/suggestions.h"
#include "platform/ini_text.h"
#include "reading/command_recognition.h"
#include "reading/line_kind.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

constexpr std::u16string_view kSection = u"KEYWORD_STRING";

constexpr std::size_t indexOf(Key key) {
    return key.index();
}

// Keys that nothing reads in a script: samples, dialog texts and messages.
bool isUnread(std::size_t key) {
    return key == indexOf(u"kagikakko") || key >= indexOf(u"fail_create_xmlparser");
}

bool isLetterForm(std::size_t key) {
    return key >= indexOf(u"a1") && key <= indexOf(u"Z2");
}

// Keys whose word is a single unit, letters of characters besides.
constexpr std::array<Key, 19> kUnitKeys{u"kakko",   u"toji_kakko", u"colon",  u"kanma", u"touten1",
                                        u"touten2", u"hyphen",     u"num0",   u"num1",  u"num2",
                                        u"num3",    u"num4",       u"num5",   u"num6",  u"num7",
                                        u"num8",    u"num9",       u"period", u"kuten"};

// Keys whose word is a set of characters.
constexpr std::array<Key, 4> kSetKeys{u"kakko_kakko", u"space", u"space_tab", u"touten3"};

constexpr std::array<Key, 13> kMarkerKeys{
    u"title",   u"subtitle",   u"rightsuper", u"leftsuper", u"super", u"mainimage", u"subimage",
    u"bgimage", u"rightimage", u"leftimage",  u"bgm",       u"tvml",  u"sound"};

bool isOneOf(std::span<const Key> keys, std::size_t key) {
    return std::any_of(keys.begin(), keys.end(),
                       [key](Key candidate) { return candidate.index() == key; });
}

bool isUnitKey(std::size_t key) {
    return isLetterForm(key) || isOneOf(kUnitKeys, key);
}

std::u16string numberText(std::size_t number) {
    return decimalText(static_cast<std::int32_t>(number));
}

TextRange rangeOf(const platform::IniPart& part) {
    return {part.line, part.start, part.text.size()};
}

class VocabularyCheck {
public:
    VocabularyCheck(const KeywordTable& words, std::u16string_view text, Language language)
        : words_(words), language_(language), commands_(words),
          section_(platform::readIniSection(text, kSection)) {
        for (const platform::IniEntry& entry : section_.entries) {
            const auto key = std::find_if(kKeys.begin(), kKeys.end(), [&](auto name) {
                return platform::sameIniName(name, entry.key.text);
            });
            if (key == kKeys.end()) {
                tellUnknownKey(entry);
                continue;
            }
            const auto [place, isFirst] =
                places_.try_emplace(static_cast<std::size_t>(key - kKeys.begin()), &entry);
            if (!isFirst) {
                add("V210", rangeOf(entry.key), {*key, decimalText(place->second->key.line)});
            }
        }
    }

    std::vector<Diagnostic> run() {
        if (!section_.header) {
            found_ = {makeDiagnostic("F401", language_, SourceKind::vocabulary, {})};
            return std::move(found_);
        }
        checkLoading();
        for (std::size_t key = 0; key < loaded_; ++key) {
            if (!isUnread(key)) {
                checkWord(key);
            }
        }
        checkLengthsAndOrder();
        sortByPlace(found_);
        return std::move(found_);
    }

private:
    std::u16string_view word(std::size_t key) const { return words_[Key::at(key)].textOrEmpty(); }

    TextRange placeOf(std::size_t key) const {
        const auto place = places_.find(key);
        if (place == places_.end()) {
            return {};
        }
        const platform::IniEntry& entry = *place->second;
        return rangeOf(entry.value.text.empty() ? entry.key : entry.value);
    }

    Diagnostic& add(Code code, TextRange range, TextValues values) {
        found_.push_back(makeDiagnostic(code, language_, SourceKind::vocabulary, range, values));
        return found_.back();
    }
    Diagnostic& add(Code code, std::size_t key, TextValues values) {
        return add(code, placeOf(key), values);
    }

    void tellUnknownKey(const platform::IniEntry& entry) {
        ClosestNames closest(entry.key.text);
        if (--suggestionsLeft_ >= 0) {
            for (const std::u16string_view name : kKeys) {
                closest.offer(name);
            }
        }
        add("V209", rangeOf(entry.key), {entry.key.text}).suggestions = closest.take();
    }

    void checkLoading() {
        if (words_.problem() == LoadProblem::none) {
            return;
        }
        loaded_ = words_.problemKey();
        const std::u16string behind = numberText(kKeyCount - loaded_ - 1);
        // A key that has no entry has no place; the writer looks for it behind
        // the one before it.
        const TextRange place = places_.contains(loaded_) ? placeOf(loaded_)
                                : loaded_ > 0             ? placeOf(loaded_ - 1)
                                                          : rangeOf(*section_.header);
        add(words_.problem() == LoadProblem::missing ? Code("V201") : Code("V202"), place,
            {kKeys[loaded_], behind});
    }

    void checkWord(std::size_t key) {
        const std::u16string_view text = word(key);
        if (text.empty()) {
            add("V206", key, {kKeys[key]});
            return;
        }
        if (isUnitKey(key) && text.size() != 1) {
            add("V207", key, {kKeys[key], numberText(text.size())});
        } else if (isUnitKey(key) || isOneOf(kSetKeys, key) || text.size() == 1) {
            checkUnits(key, text);
        }
    }

    void checkUnits(std::size_t key, std::u16string_view text) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            const char16_t unit = text[i];
            if ((unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') ||
                (unit >= u'a' && unit <= u'z')) {
                add("V205", key, {kKeys[key], text.substr(i, 1)});
                return;
            }
        }
    }

    bool isChecked(std::size_t key) const { return key < loaded_ && !word(key).empty(); }

    void checkLengthsAndOrder() {
        checkMarkers();
        for (const CommandSpec& row : kCommands) {
            for (const RowWord& rowWord : row.words) {
                checkCommand(row, rowWord);
            }
        }
        checkAdverbs();
        checkLength(indexOf(u"caption"), 2);
        checkColours();
        checkSentenceEnds();
        checkForms();
    }

    void checkLength(std::size_t key, std::size_t removed) {
        if (isChecked(key) && word(key).size() != removed) {
            add("V203", key, {word(key), numberText(word(key).size()), numberText(removed)});
        }
    }

    void tellHidden(std::size_t key, std::u16string_view hider) {
        add("V204", key, {word(key), kKeys[key], hider});
    }

    void checkMarkers() {
        for (const Key key : kMarkerKeys) {
            if (!isChecked(key.index())) {
                continue;
            }
            // "bgm" and "sound" are spellings of one marker.
            const std::u16string_view name = key == Key(u"sound") ? u"bgm" : key.name();
            const std::u16string_view text = word(key.index());
            for (std::size_t i = 0; i < kMarkerCount; ++i) {
                const MarkerSpec& marker = kMarkers[i];
                const MarkerSpelling* spelling = markerSpelling(marker.marker, text, words_);
                if (spelling != nullptr && marker.name != name) {
                    tellHidden(key.index(), marker.name);
                    break;
                }
                if (spelling != nullptr) {
                    checkLength(key.index(), spelling->units);
                    break;
                }
            }
        }
    }

    // A phrase that a row is there for.
    std::u16string sampleOf(const CommandSpec& row, std::u16string_view text) const {
        std::u16string sample = row.match == Match::letter       ? u"A"
                                : row.match == Match::twoLetters ? u"AB"
                                : row.match == Match::number     ? u"3"
                                                                 : u"";
        return sample.append(text);
    }

    void checkCommand(const CommandSpec& row, const RowWord& rowWord) {
        const std::size_t key = rowWord.key.index();
        if (!isChecked(key)) {
            return;
        }
        std::u16string phrase = sampleOf(row, word(key));
        const std::size_t letters = lettersBefore(row.match);
        const Recognition recognition = recognizeCommand(phrase, words_, {}, commands_);
        if (recognition.row != nullptr && recognition.row != &row) {
            tellHidden(key, recognition.word->key.name());
        } else {
            checkLength(key, rowWord.units - letters);
        }
    }

    void checkAdverbs() {
        for (const AdverbRow& row : kAdverbRows) {
            const std::size_t key = row.key.index();
            if (!isChecked(key)) {
                continue;
            }
            const auto hider =
                std::find_if(kAdverbRows.begin(), kAdverbRows.end(), [&](const AdverbRow& other) {
                    return words_[other.key].starts(word(key));
                });
            if (hider->key != row.key) {
                tellHidden(key, hider->key.name());
            } else {
                checkLength(key, row.units);
            }
        }
    }

    // Of several equal words among neighbouring keys the first counts.
    void checkEqual(std::size_t first, std::size_t last) {
        for (std::size_t key = first + 1; key <= last; ++key) {
            for (std::size_t earlier = first; isChecked(key) && earlier < key; ++earlier) {
                if (isChecked(earlier) && word(earlier) == word(key)) {
                    tellHidden(key, kKeys[earlier]);
                    break;
                }
            }
        }
    }

    void checkColours() { checkEqual(indexOf(u"black"), indexOf(u"gray")); }

    void checkForms() {
        checkEqual(indexOf(u"num0"), indexOf(u"num9"));
        for (std::size_t key = indexOf(u"a1"); key <= indexOf(u"Z2"); ++key) {
            const auto letter = static_cast<char16_t>(u'A' + (key - indexOf(u"a1")) / 2);
            const bool one = isChecked(key) && word(key).size() == 1;
            const char16_t read = one ? words_.letterOf(word(key).front()) : letter;
            if (read != letter && word(key).front() >= 0x80) {
                tellHidden(key, letterText(read));
            }
        }
    }

    void checkSentenceEnds() {
        const std::size_t kuten = indexOf(u"kuten");
        for (std::size_t key = kuten + 1; key <= indexOf(u"kuten_kakko2"); ++key) {
            if (isChecked(key) && isChecked(kuten) && !word(key).starts_with(word(kuten))) {
                add("V208", key, {word(key), word(kuten)});
            }
        }
    }

    const KeywordTable& words_;
    const Language language_;
    CommandIndex commands_;
    platform::IniSection section_;
    int suggestionsLeft_ = 200;                               // keeps a file of unknown keys fast
    std::map<std::size_t, const platform::IniEntry*> places_; // key -> its first entry
    std::size_t loaded_ = kKeyCount;
    std::vector<Diagnostic> found_;
};

} // namespace

std::vector<Diagnostic> checkVocabulary(const KeywordTable& words, std::u16string_view iniText,
                                        Language language) {
    return VocabularyCheck(words, iniText, language).run();
}

} // namespace tvml
