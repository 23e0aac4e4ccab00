// Splitting of speech. Entries: splitJapaneseTalk, splitEnglishTalk.
//
// Sentences, clauses and pieces are always neighbouring parts of the speech, so
// all of them are kept as positions in it. The next clause end is looked up
// once and kept until the reading passes it: a clause that is put back or cut
// hard does not search the rest of the sentence again.
#include "reading/talk_splitter.h"

#include "reading/script_text.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

constexpr bool isQuote(char16_t unit) {
    return unit == u'"' || unit == u'\'';
}

// The first end mark of a sentence or clause at or after a position: where it
// stands and where the part that it ends ends; both kNone when there is none.
struct EndMark {
    std::size_t mark = kNone;
    std::size_t end = kNone;
};

class JapaneseEnds {
public:
    explicit JapaneseEnds(const KeywordTable& words) : words_(words) {}

    EndMark sentence(std::u16string_view text, std::size_t from) const {
        const Word& kuten = words_[u"kuten"];
        std::size_t found = kuten.findUnitsIn(text, from);
        while (found != kNone && closesQuotation(text.substr(found))) {
            found = kuten.findUnitsIn(text, found + 1);
        }
        return oneUnitAt(found);
    }

    EndMark clause(std::u16string_view text, std::size_t from) const {
        return oneUnitAt(words_[u"touten2"].findUnitsIn(text, from));
    }

private:
    static EndMark oneUnitAt(std::size_t found) {
        return found == kNone ? EndMark{} : EndMark{found, found + 1};
    }

    // A sentence end that a closing quote or bracket follows ends no sentence.
    bool closesQuotation(std::u16string_view text) const {
        return words_[u"kuten_kagikakko1"].starts(text) || words_[u"kuten_kakko1"].starts(text) ||
               words_[u"kuten_kagikakko2"].starts(text) || words_[u"kuten_kakko2"].starts(text);
    }

    const KeywordTable& words_;
};

class EnglishEnds {
public:
    EndMark sentence(std::u16string_view text, std::size_t from) const {
        return find(text, from, u'.');
    }
    EndMark clause(std::u16string_view text, std::size_t from) const {
        return find(text, from, u',');
    }

private:
    // The mark counts before a blank, and before a quote and a blank.
    static EndMark find(std::u16string_view text, std::size_t from, char16_t mark) {
        for (std::size_t i = findUnit(text, mark, from); i != kNone;
             i = findUnit(text, mark, i + 1)) {
            const std::u16string_view next = text.substr(i + 1, 2);
            if (next.starts_with(u' ')) {
                return {i, i + 1};
            }
            if (next.size() == 2 && isQuote(next[0]) && next[1] == u' ') {
                return {i, i + 2};
            }
        }
        return {};
    }
};

struct Limits {
    std::size_t whole; // a sentence said whole; clauses are gathered up to here
    std::size_t piece; // the longest piece
    bool cutAtBlank;   // a piece that is too long is cut further back at a blank
};

constexpr Limits kJapaneseLimits{40, 58, false};
constexpr Limits kEnglishLimits{60, 120, true};

// Splits one speech with the sentence and clause ends of one language.
template <typename Ends> class Splitter {
public:
    Splitter(const Ends& ends, const Limits& limits, const KeywordTable& words, PieceSink& sink)
        : ends_(ends), limits_(limits), words_(words), sink_(sink) {}

    void split(std::u16string_view speech) {
        std::u16string_view remaining = trimScriptText(speech, words_);
        while (!remaining.empty()) {
            const std::size_t end = ends_.sentence(remaining, 0).end;
            const std::u16string_view sentence = trimScriptText(remaining.substr(0, end), words_);
            remaining = end == kNone ? std::u16string_view{} : dropAndTrim(remaining, end, words_);
            splitSentence(sentence, remaining.empty());
        }
    }

private:
    void splitSentence(std::u16string_view sentence, bool lastSentence) {
        if (sentence.empty()) {
            return;
        }
        if (sentence.size() <= limits_.whole) {
            sink_.piece(sentence, lastSentence, false);
            return;
        }
        gatherClauses(sentence, lastSentence);
    }

    // The piece being gathered is sentence[start_, clauseEnd); what follows it
    // is the rest of the sentence.
    void gatherClauses(std::u16string_view sentence, bool lastSentence) {
        next_ = {0, 0};
        std::size_t start = 0;
        std::size_t end = 0;
        while (end < sentence.size()) {
            const std::size_t before = end;
            end = clauseEnd(sentence, end);
            const std::size_t size = end - start;
            if (size <= limits_.whole && end < sentence.size()) {
                continue;
            }
            if (size <= limits_.piece) {
                sink_.piece(sentence.substr(start, size), lastSentence && end == sentence.size(),
                            false);
            } else if (before > start) {
                // The last clause was too much: it opens the next piece.
                const auto earlier = sentence.substr(start, before - start);
                sink_.piece(trimScriptText(earlier, words_), false, false);
                end = before;
            } else {
                end = start + cutClause(sentence.substr(start));
            }
            // The sentence is trimmed, so only the front of the rest has blanks.
            while (end < sentence.size() && words_.isBlank(sentence[end])) {
                ++end;
            }
            start = end;
        }
    }

    // Says as much of a clause that is too long as fits; returns its units.
    std::size_t cutClause(std::u16string_view clause) {
        std::u16string_view cut = clause.substr(0, limits_.piece);
        bool cutInWord = true;
        if (limits_.cutAtBlank) {
            const std::size_t blank = cut.rfind(u' ');
            if (blank != kNone && blank + 1 < cut.size()) {
                cut = cut.substr(0, blank);
                cutInWord = false;
            } else {
                cutInWord = blank == kNone && clause[cut.size()] != u' ';
            }
            sink_.piece(trimScriptText(cut, words_), false, cutInWord);
        } else {
            sink_.piece(cut, false, cutInWord);
        }
        return cut.size();
    }

    std::size_t clauseEnd(std::u16string_view sentence, std::size_t from) {
        if (next_.mark != kNone && (next_.mark < from || next_.end <= from)) {
            next_ = ends_.clause(sentence, from);
        }
        return std::min(next_.end, sentence.size());
    }

    const Ends& ends_;
    const Limits limits_;
    const KeywordTable& words_;
    PieceSink& sink_;
    EndMark next_{0, 0}; // of the first clause that ends after the reading
};

} // namespace

void splitJapaneseTalk(std::u16string_view speech, const KeywordTable& words, PieceSink& sink) {
    const JapaneseEnds ends(words);
    Splitter<JapaneseEnds>(ends, kJapaneseLimits, words, sink).split(speech);
}

void splitEnglishTalk(std::u16string_view speech, const KeywordTable& words, PieceSink& sink) {
    const EnglishEnds ends;
    Splitter<EnglishEnds>(ends, kEnglishLimits, words, sink).split(speech);
}

} // namespace tvml
