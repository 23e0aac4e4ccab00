// Listening to a conversion. Entry: DiagnosticCollector.
//
// A line is looked at as a whole, with its reading and what became of it, so that
// the message names the slip and not each of its consequences. A line without
// problems costs a few comparisons.
#include <algorithm>

#include "diagnostics/script_problems.h"
#include "reading/script_text.h"
#include "vocabulary/unit_search.h"

namespace tvml {
namespace {

// A title and a subtitle this many lines apart were hardly meant as two cards.
constexpr std::int32_t kCardReach = 3;

// Kana that take a voicing mark; each is followed by its voiced form, those of the
// last row by the half-voiced one as well.
constexpr std::u16string_view kVoiced =
    u"かきくけこさしすせそたちつてとカキクケコサシスセソタチツテト";
constexpr std::u16string_view kHalfVoiced = u"はひふへほハヒフヘホ";

// The one character that a kana and the mark behind it are; empty when there is none.
std::u16string composed(char16_t kana, char16_t mark) {
    const bool isHalf = mark == u'\u309A';
    if (kHalfVoiced.find(kana) != kNone) {
        return std::u16string(1, static_cast<char16_t>(kana + (isHalf ? 2 : 1)));
    }
    if (!isHalf && kVoiced.find(kana) != kNone) {
        return std::u16string(1, static_cast<char16_t>(kana + 1));
    }
    if (!isHalf && (kana == u'う' || kana == u'ウ')) {
        return std::u16string(1, kana == u'う' ? u'ゔ' : u'ヴ');
    }
    return {};
}

// The next combining mark of voicing, in one pass: most scripts have none.
std::size_t nextMark(std::u16string_view text, std::size_t from) {
    for (std::size_t at = from; at < text.size();) {
        const bool isWhole = at + detail::kBlock <= text.size();
        const std::size_t end = std::min(at + detail::kBlock, text.size());
        if (!isWhole || detail::blockHolds(text.data() + at, 0x3098, 0xFFFC)) {
            const std::size_t mark = text.substr(at, end - at).find_first_of(u"\u3099\u309A");
            if (mark != kNone) {
                return at + mark;
            }
        }
        at = end;
    }
    return kNone;
}

// A system that stores voicing marks as characters of their own does so in the
// whole text, so it is enough to look at the start of a script.
constexpr std::size_t kLookedAt = 8192;

bool needsCheck(const ScriptChecks& checks, const CheckedLine& checked) {
    const ScriptLine& line = checked.line;
    const bool told = !line.problems.empty() || !checked.outcome.problems.empty();
    if (line.talk() == nullptr) {
        const bool untaken = checked.isCommand() && !line.command()->taken;
        return told || untaken || line.takenBy() == TakenBy::tag;
    }
    const bool silent = line.kind == LineKind::character && checked.outcome.templates.empty();
    return told || silent || talkNeedsCheck(checks, line);
}

} // namespace

struct DiagnosticCollector::Work {
    Work(const ConversionRequest& theRequest, Language theLanguage, const MediaNames* theMedia)
        : request(theRequest), language(theLanguage), media(theMedia) {}

    const ConversionRequest request;
    const Language language;
    const MediaNames* const media;
    std::optional<ScriptChecks> checks;
    std::vector<Diagnostic> found; // kept when the checks end

    // The last line.
    std::int32_t number = 0;
    std::u16string_view text;

    // The card that waits for its second text: the place of its line.
    TextRange card{0};
    std::u16string_view cardMarker;

    TextRange offline{0}; // of the command that no "online" has ended

    void check(const CheckedLine& checked) {
        if (!needsCheck(*checks, checked)) {
            return;
        }
        if (checked.line.tag() != nullptr) {
            checkTagLine(*checks, checked);
        } else if (checked.isCommand()) {
            checkCommandLine(*checks, checked);
        } else if (checked.line.talk() != nullptr) {
            checkTalkLine(*checks, checked);
        }
    }

    void add(Code code, TextRange range, TextValues values) {
        checks->found.push_back(makeDiagnostic(code, language, SourceKind::script, range, values));
    }

    void checkFile(const CheckedLine& checked) {
        const ScriptLine::NamedFile file = checked.line.file();
        if (media != nullptr && file.use != FileUse::none && !media->holds(file.name)) {
            checks->addAt("S172", checked, file.name, {file.name}).suggestions =
                media->closestTo(file.name);
        }
    }

    // What stands between "offline" and "online" is not performed.
    void followOffline(const CheckedLine& checked) {
        const bool isTaken = checked.isCommand() && checked.line.command()->taken;
        const bool isTag = offline.line != 0 && checked.line.takenBy() == TakenBy::tag;
        if (!isTaken && !isTag) {
            return;
        }
        const std::u16string_view name = isTaken ? checked.line.takenName() : u"";
        const TextRange place = placeOfLine(checked);
        if (name == u"offline" && offline.line != 0) {
            add("S168", place, {decimalText(offline.line)});
        } else if (name == u"offline") {
            offline = place;
        } else if (name == u"online" && offline.line == 0) {
            add("S169", place, {});
        } else if (name == u"online") {
            offline.line = 0;
        } else if (isTag && checked.line.file().use == FileUse::picture) {
            add("S167", place, {decimalText(offline.line)});
        }
    }

    static TextRange placeOfLine(const CheckedLine& checked) {
        const LinePlace place = checked.line.placeOf(checked.line.trimmed).value_or(LinePlace{});
        return {checked.outcome.number, place.start, place.units};
    }

    void tellLoneCard() {
        if (card.line != 0) {
            add("S134", card,
                {checks->markerName(cardMarker == u"title" ? u"subtitle" : u"title")});
        }
        card.line = 0;
    }

    void startCard(const CheckedLine& checked) {
        const std::u16string_view marker = checked.line.takenName();
        const std::int32_t line = checked.outcome.number;
        if (card.line != 0 && cardMarker != marker && line - card.line <= kCardReach) {
            checks->add("S135", checked, std::nullopt,
                        {checks->markerName(marker), checks->markerName(cardMarker),
                         decimalText(card.line)});
            card.line = 0; // one message tells about both cards
            return;
        }
        tellLoneCard();
        const LinePlace place = *checked.line.placeOf(checked.line.trimmed);
        card = {line, place.start, place.units};
        cardMarker = marker;
    }

    void checkPlayedLines() {
        if (request.playTo >= 1 && request.playFrom > request.playTo) {
            add("F406", {}, {decimalText(request.playFrom), decimalText(request.playTo)});
        }
    }

    void checkPlayLine(std::int32_t asked, std::int64_t last) {
        if (asked != kNoLine && (asked < 0 || asked > last)) {
            // The place is the script's last line, where there is one.
            add("F404", {number, 0, text.size()}, {decimalText(asked), decimalText(number)});
        }
    }

    // Whether all of a script's line ends are carriage returns.
    static bool endsLinesWithReturns(std::u16string_view script) {
        return findUnit(script, u'\n') == kNone && findUnit(script, u'\r') != kNone;
    }

    // A syllable and its voicing mark as two characters: the first one.
    void checkDecomposed() {
        const std::u16string_view script = request.script;
        const std::size_t mark = nextMark(script.substr(0, kLookedAt), 0);
        if (mark == kNone || mark == 0) {
            return;
        }
        const std::size_t before = script.rfind(u'\n', mark - 1);
        const std::size_t start = before == kNone ? 0 : before + 1;
        const auto line =
            1 +
            std::count(script.begin(), script.begin() + static_cast<std::ptrdiff_t>(start), u'\n');
        add("S173", {static_cast<std::int32_t>(line), mark - 1 - start, 2}, {});
        const std::u16string whole = composed(script[mark - 1], script[mark]);
        if (!whole.empty()) {
            checks->found.back().suggestions = {whole};
        }
    }

    void checkTerminator() {
        const std::u16string_view script = request.script;
        const std::size_t read =
            text.data() == nullptr
                ? 0
                : static_cast<std::size_t>(text.data() - script.data()) + text.size();
        const std::size_t end = read + 1 < script.size() ? script.find(u'\0', read) : kNone;
        if (end != kNone) {
            const std::size_t before = end == 0 ? kNone : script.rfind(u'\n', end - 1);
            const std::size_t start = before == kNone ? 0 : before + 1;
            // A script that ends where a line begins has not started that line.
            add("F402", {number + (end == start ? 1 : 0), end - start, 1}, {});
        }
    }
};

Diagnostic returnsAsLineEnds(std::u16string_view script, Language language) {
    const std::size_t end = std::min(script.find_first_of(u"\r\n"), script.size());
    return makeDiagnostic("F410", language, SourceKind::script, {1, end, 0});
}

DiagnosticCollector::DiagnosticCollector(const ConversionRequest& request, Language language,
                                         const MediaNames* media)
    : work_(std::make_unique<Work>(request, language, media)) {}

DiagnosticCollector::~DiagnosticCollector() = default;

std::vector<Diagnostic> DiagnosticCollector::take() {
    sortByPlace(work_->found);
    return std::move(work_->found);
}

void DiagnosticCollector::programmeRead(const Programme& programme) {
    work_->checks.emplace(programme, work_->language);
}

void DiagnosticCollector::lineConverted(const ScriptLine& line, const LineOutcome& outcome) {
    Work& work = *work_;
    const CheckedLine checked{line, outcome};
    work.number = outcome.number;
    work.text = line.text;
    if (outcome.card == CardStep::completes) {
        work.card.line = 0;
    } else if (outcome.card == CardStep::starts) {
        work.startCard(checked);
    }
    work.followOffline(checked);
    work.check(checked);
    work.checkFile(checked);
}

void DiagnosticCollector::finished(const TvmlScript&) {
    Work& work = *work_;
    work.tellLoneCard();
    if (work.offline.line != 0) {
        work.add("S170", work.offline, {});
    }
    work.checks->tellCounts();
    work.checkPlayedLines();
    work.checkPlayLine(work.request.playFrom, work.number);
    work.checkPlayLine(work.request.playTo, std::int64_t{work.number} + 1);
    work.checkTerminator();
    work.checkDecomposed();
    if (Work::endsLinesWithReturns(work.request.script)) {
        work.checks->found.push_back(returnsAsLineEnds(work.request.script, work.language));
    }
    work.found = std::move(work.checks->found);
    work.checks.reset(); // the run's tables end with the run
}

} // namespace tvml
