// Entries: assembleScript, TvmlScript.
#include "filter/tvml_script.h"

#include <algorithm>
#include <array>

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

bool mayHoldUnfilledTitles(const std::deque<BodySegment>& pieces) {
    return std::any_of(pieces.begin(), pieces.end(), [](const BodySegment& piece) {
        // Talk that is not written yet has no "$".
        const std::u16string& text = piece.text;
        return findUnit(text, u'$') != kNone &&
               (text.find(u"$TITLE") != kNone || text.find(u"$SUBTITLE") != kNone);
    });
}

// Copies a text without its unfilled title-text commands, each from its first
// unit through the next line feed.
class Remover {
public:
    Remover(std::u16string_view text, TitleKind kind, const KeywordTable& words,
            ConversionReport* report)
        : text_(text), finder_(text, kind, words), report_(report) {
        kept_.reserve(text.size());
    }

    std::u16string run() {
        std::size_t from = 0;
        for (;;) {
            const std::size_t at = finder_.next(from);
            kept_.append(text_, next_, std::min(at, text_.size()) - next_);
            if (at == kNone) {
                return std::move(kept_);
            }
            skipLineFrom(at);
            while (joinsToCommand()) {
                kept_.pop_back();
                tellCut(1);
                skipLineFrom(next_);
            }
            // Where the join makes another "drawing", that one was looked at.
            from = joinsToDrawing() ? next_ + kDrawing.size() - 1 : next_;
        }
    }

private:
    void skipLineFrom(std::size_t at) {
        const std::size_t end = text_.find(u'\n', at);
        next_ = end == kNone ? text_.size() : end + 1;
        tellCut(next_ - at);
    }
    void tellCut(std::size_t units) const {
        if (report_ != nullptr) {
            report_->unitsCut(kept_.size(), units);
        }
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
    ConversionReport* report_;
    std::u16string kept_;
    std::size_t next_ = 0; // first unit that is neither kept nor removed yet
};

} // namespace

void TvmlScript::append(std::u16string piece) {
    size_ += piece.size();
    if (!piece.empty()) {
        pieces_.emplace_back().text = std::move(piece);
    }
}

void TvmlScript::append(std::deque<BodySegment> pieces) {
    for (BodySegment& piece : pieces) {
        size_ += piece.size();
        pieces_.push_back(std::move(piece));
    }
}

void TvmlScript::copyTo(char16_t* output) const {
    for (const BodySegment& piece : pieces_) {
        output = piece.copyTo(output);
    }
}

std::u16string TvmlScript::text() const {
    std::u16string whole(size_, u'\0');
    copyTo(whole.data());
    return whole;
}

void TvmlScript::removeUnfilledTitles(const KeywordTable& words, ConversionReport* report) {
    if (!mayHoldUnfilledTitles(pieces_)) {
        return;
    }
    std::u16string whole = text();
    pieces_.clear();
    for (const TitleKind kind : {TitleKind::title, TitleKind::subtitle}) {
        whole = Remover(whole, kind, words, report).run();
    }
    size_ = 0;
    append(std::move(whole));
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
    if (run.report != nullptr) {
        run.report->assembled(kHeader.size(), run.state.endingOn);
    }

    TvmlScript script;
    script.append(std::u16string(kHeader));
    script.append(std::move(settingText));
    script.append(std::move(openingText));
    script.append(body.takeSegments());
    if (run.state.endingOn) {
        script.append(std::move(run.staging.plain(ending)));
    }
    script.removeUnfilledTitles(run.words, run.report);
    return script;
}

} // namespace tvml
