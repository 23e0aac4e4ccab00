// Entries: assembleScript, TvmlScript.
#include "filter/tvml_script.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "filter/tvml_patterns.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

constexpr std::u16string_view kHeader = u"//! TVML Version 3.0\n";
constexpr std::u16string_view kInitializeStart = u"//! initializeStart\n";
constexpr std::u16string_view kInitializeEnd = u"//! initializeEnd\n";
constexpr std::u16string_view kSkipOff = u"skipscript( switch=off )\n";

// The last skip line of the set-up, unless it is the first line: its start and
// its line feed.
struct Line {
    std::size_t start = kNone;
    std::size_t end = kNone;
};

Line lastSkipLine(std::u16string_view setting, const KeywordTable& words) {
    const std::size_t start = findLastSkipLine(setting, words);
    return start == kNone || start == 0 ? Line{} : Line{start, setting.find(u'\n', start)};
}

void insertLighting(Run& run, std::size_t at) {
    using enum PlainElement;
    static constexpr std::array<PlainElement, 4> kTexts{daylight, night, candlelight, lightoff};
    if (run.state.initialLighting != InitialLighting::none) {
        const PlainElement element = kTexts[static_cast<std::size_t>(run.state.initialLighting)];
        run.replaceIn(setting, at, 0, run.staging.plain(element),
                      TextOrigin{kPlainElements[indexOf(element)].name,
                                 run.staging.plainElements[indexOf(element)],
                                 run.state.initialLightingLine});
    }
}

void placeLighting(Run& run) {
    const Line line = lastSkipLine(run.staging.plain(PlainElement::setting), run.words);
    if (line.start != kNone && line.end != kNone) {
        // The line keeps its origin: only its form changes.
        run.replaceIn(PlainElement::setting, line.start, line.end + 1 - line.start, kSkipOff,
                      std::nullopt);
        insertLighting(run, line.start);
    }
}

// An opening that ends the skipped part itself takes that over from the set-up.
void dropLastSkipLine(Run& run) {
    const std::u16string& setting = run.staging.plain(PlainElement::setting);
    const Line line = lastSkipLine(setting, run.words);
    if (line.start != kNone) {
        const std::size_t end = std::min(line.end, setting.size());
        run.replaceIn(PlainElement::setting, line.start - 1, end - (line.start - 1), {});
    }
}

bool mayHoldUnfilledTitle(const BodySegment& piece) {
    // Talk that is not written yet has no "$".
    const std::u16string& text = piece.text;
    return findUnit(text, u'$') != kNone &&
           (text.find(u"$TITLE") != kNone || text.find(u"$SUBTITLE") != kNone);
}

bool endsLine(std::u16string_view text) {
    return text.empty() || text.back() == u'\n';
}

// Nothing of this piece is to be removed, and no line goes on in the next piece.
bool staysAsItIs(const BodySegment& piece) {
    return !piece.talk.empty() || (endsLine(piece.text) && !mayHoldUnfilledTitle(piece));
}

struct Cut {
    std::size_t at; // in the text without the earlier cuts
    std::size_t units;
};

// Copies a text without its unfilled title-text commands, each from its first
// unit through the next line feed.
class Remover {
public:
    Remover(std::u16string_view text, TitleKind kind, const KeywordTable& words,
            std::u16string& kept, std::vector<Cut>& cuts)
        : text_(text), finder_(text, kind, words), kept_(kept), cuts_(cuts) {
        kept_.clear();
    }

    void run() {
        std::size_t from = 0;
        for (;;) {
            const std::size_t at = finder_.next(from);
            kept_.append(text_, next_, std::min(at, text_.size()) - next_);
            if (at == kNone) {
                return;
            }
            skipLineFrom(at);
            while (joinsToCommand()) {
                kept_.pop_back();
                cuts_.push_back({kept_.size(), 1});
                skipLineFrom(next_);
            }
            // Where what is kept and what follows join to another "drawing", that
            // one has been tried already, so the search goes on behind it.
            from = joinsToDrawing() ? next_ + kDrawing.size() - 1 : next_;
        }
    }

private:
    void skipLineFrom(std::size_t at) {
        const std::size_t end = text_.find(u'\n', at);
        next_ = end == kNone ? text_.size() : end + 1;
        cuts_.push_back({kept_.size(), next_ - at});
    }

    // The search goes on one unit before the removed part, so that unit and what
    // follows the part may form a command.
    bool joinsToDrawing() const {
        return !kept_.empty() && kept_.back() == kDrawing.front() &&
               text_.substr(next_).starts_with(kDrawing.substr(1));
    }
    bool joinsToCommand() {
        return joinsToDrawing() && finder_.continuesAt(next_ + kDrawing.size() - 1);
    }

    std::u16string_view text_;
    TitleTextFinder finder_;
    std::u16string& kept_;
    std::vector<Cut>& cuts_;
    std::size_t next_ = 0; // first unit that is neither kept nor removed yet
};

// Removes the unfilled titles of a script that comes in pieces, some pieces at a
// time: copying all of a long script would cost more than converting it. What
// is left of a removed line joins the line behind it, so the pieces at hand are
// done only when their result ends with a whole line.
class PiecewiseRemoval {
public:
    PiecewiseRemoval(const KeywordTable& words, const Listeners* listeners, std::size_t unitsAtOnce,
                     TvmlScript& result)
        : words_(words), listeners_(listeners), unitsAtOnce_(unitsAtOnce), result_(result) {}

    void take(BodySegment piece) {
        if (open_.empty() && staysAsItIs(piece)) {
            result_.append(std::move(piece));
            return;
        }
        piece.write();
        open_ += piece.text;
        if (open_.size() >= enough_ && endsLine(open_)) {
            remove(false);
        }
    }

    void finish() { remove(true); }

private:
    void remove(bool isLast) {
        cuts_.clear();
        Remover(open_, TitleKind::title, words_, withoutTitles_, cuts_).run();
        Remover(withoutTitles_, TitleKind::subtitle, words_, kept_, cuts_).run();
        if (!isLast && !(endsLine(withoutTitles_) && endsLine(kept_))) {
            enough_ = 2 * open_.size(); // so that all attempts cost no more than the last
            return;
        }
        if (listeners_ != nullptr) {
            for (const Cut& cut : cuts_) {
                listeners_->tell(UnitsCut{result_.size() + cut.at, cut.units});
            }
        }
        result_.append(std::u16string(kept_)); // of its own size
        open_.clear();
        enough_ = unitsAtOnce_;
    }

    const KeywordTable& words_;
    const Listeners* listeners_;
    std::size_t unitsAtOnce_;
    TvmlScript& result_;
    std::u16string open_; // what is at hand
    std::u16string withoutTitles_;
    std::u16string kept_;
    std::size_t enough_ = unitsAtOnce_;
    std::vector<Cut> cuts_;
};

} // namespace

void TvmlScript::append(std::u16string piece) {
    size_ += piece.size();
    if (!piece.empty()) {
        pieces_.emplace_back().text = std::move(piece);
    }
}

void TvmlScript::append(BodySegment piece) {
    size_ += piece.size();
    pieces_.push_back(std::move(piece));
}

void TvmlScript::append(std::deque<BodySegment> pieces) {
    for (BodySegment& piece : pieces) {
        append(std::move(piece));
    }
}

void TvmlScript::copyTo(char16_t* output) const {
    for (const BodySegment& piece : pieces_) {
        output = piece.copyTo(output);
    }
}

void TvmlScript::writeTalk() {
    for (BodySegment& piece : pieces_) {
        piece.write();
    }
}

std::u16string TvmlScript::text() const {
    std::u16string whole(size_, u'\0');
    copyTo(whole.data());
    return whole;
}

void TvmlScript::removeUnfilledTitles(const KeywordTable& words, const Listeners* listeners,
                                      std::size_t unitsAtOnce) {
    if (std::all_of(pieces_.begin(), pieces_.end(), staysAsItIs)) {
        return;
    }
    TvmlScript result;
    PiecewiseRemoval removal(words, listeners, unitsAtOnce, result);
    while (!pieces_.empty()) {
        removal.take(std::move(pieces_.front()));
        pieces_.pop_front();
    }
    removal.finish();
    *this = std::move(result);
}

TvmlScript assembleScript(Run& run, ScriptBody& body) {
    using enum PlainElement;
    std::u16string& settingText = run.staging.plain(setting);
    std::u16string& openingText = run.staging.plain(opening);
    placeLighting(run);
    if (!run.state.openingOn) {
        run.replaceIn(opening, 0, openingText.size(), {});
    } else if (endsSkipped(openingText, run.words)) {
        dropLastSkipLine(run);
    }
    run.replaceIn(opening, openingText.size(), 0, kInitializeEnd);
    const std::size_t skipOn = findSkipSwitch(settingText, u"on", run.words);
    if (skipOn != kNone) {
        run.replaceIn(setting, skipOn, 0, kInitializeStart);
    }
    if (run.listeners != nullptr) {
        run.listeners->tell(Assembled{kHeader.size(), run.state.endingOn});
    }

    TvmlScript script;
    script.append(std::u16string(kHeader));
    script.append(std::move(settingText));
    script.append(std::move(openingText));
    script.append(body.takeSegments());
    if (run.state.endingOn) {
        script.append(std::move(run.staging.plain(ending)));
    }
    script.removeUnfilledTitles(run.words, run.listeners);
    return script;
}

} // namespace tvml
