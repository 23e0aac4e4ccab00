// Listening to a conversion. Entry: DiagnosticCollector.
//
// What the run tells about a line is gathered until the next line begins; then
// the line is looked at as a whole, so that the message names the slip and not
// each of its consequences. A line without problems costs a few assignments.
#include <functional>

#include "diagnostics/script_problems.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

// A title and a subtitle this many lines apart were hardly meant as two cards.
constexpr std::int32_t kCardReach = 3;

bool isInside(std::u16string_view outer, std::u16string_view part) {
    const std::less_equal<> notAfter;
    return part.data() != nullptr && notAfter(outer.data(), part.data()) &&
           notAfter(part.data() + part.size(), outer.data() + outer.size());
}

std::size_t offsetIn(std::u16string_view outer, std::u16string_view part) {
    return static_cast<std::size_t>(part.data() - outer.data());
}

std::size_t commonEnd(std::u16string_view a, std::u16string_view b) {
    std::size_t units = 0;
    while (units < a.size() && units < b.size() &&
           a[a.size() - 1 - units] == b[b.size() - 1 - units]) {
        ++units;
    }
    return units;
}

// A text of the run and the changed copy of it that the run reads on with.
struct Rewriting {
    std::u16string_view before;
    std::u16string_view after;
};

// The part of `before` that `where`, a part of `after`, comes from.
std::u16string_view partBefore(const Rewriting& copy, std::u16string_view where,
                               const Recognition& recognition, bool isCommand) {
    // Speech only has its quotes changed.
    const std::size_t same = isCommand ? commonEnd(copy.before, copy.after) : copy.after.size();
    const std::size_t fromEnd = copy.after.size() - offsetIn(copy.after, where);
    if (fromEnd <= same) {
        return copy.before.substr(copy.before.size() - fromEnd, where.size());
    }
    // The rewritten front: letters keep their order, all else is the command.
    const Match match = recognition.row != nullptr ? recognition.row->match : Match::equals;
    const std::size_t letters = match == Match::letter ? 1 : match == Match::twoLetters ? 2 : 0;
    if (letters > 0 && copy.after.size() >= same + letters) {
        const std::size_t first = copy.after.size() - same - letters;
        const std::size_t at = offsetIn(copy.after, where);
        return copy.before.substr(at > first ? at - first : 0, std::min(letters, where.size()));
    }
    return copy.before.substr(0, copy.before.size() - same);
}

} // namespace

struct DiagnosticCollector::Work {
    explicit Work(const ConversionRequest& theRequest) : request(theRequest) {}

    const ConversionRequest request;
    std::optional<ScriptChecks> checks;
    LineFacts facts;
    bool needsCheck = false;
    std::vector<Rewriting> rewritings;
    std::vector<Diagnostic> found; // kept when the checks end

    // The card that waits for its second text.
    std::int32_t cardLine = 0;
    std::u16string_view cardMarker;
    LineFacts cardFacts;

    std::optional<LinePart> partOfLine(std::u16string_view where) const {
        for (auto copy = rewritings.rbegin(); copy != rewritings.rend(); ++copy) {
            if (isInside(copy->after, where)) {
                where = partBefore(*copy, where, facts.recognition, facts.isCommand);
            }
        }
        return isInside(facts.line, where)
                   ? std::optional(LinePart{offsetIn(facts.line, where), where.size()})
                   : std::nullopt;
    }

    void finishLine() {
        const bool silent = facts.kind == LineKind::character && !facts.isCommand && !facts.spoken;
        if (checks.has_value() && (needsCheck || silent)) {
            if (facts.kind == LineKind::tag) {
                checkTagLine(*checks, facts);
            } else if (facts.isCommand) {
                checkCommandLine(*checks, facts);
            } else {
                checkTalkLine(*checks, facts);
            }
        }
        needsCheck = false;
        facts.told.clear();
    }

    void tellLoneCard() {
        if (cardLine != 0) {
            checks->add("S134", cardFacts, std::nullopt,
                        {cardMarker == u"title" ? u"subtitle" : u"title"});
        }
        cardLine = 0;
    }

    void startCard(std::u16string_view marker) {
        if (cardLine != 0 && cardMarker != marker && facts.number - cardLine <= kCardReach) {
            const std::u16string line = decimalText(cardLine);
            checks->add("S135", facts, std::nullopt, {marker, cardMarker, line});
            cardLine = 0; // one message tells about both cards
            return;
        }
        tellLoneCard();
        cardLine = facts.number;
        cardMarker = marker;
        cardFacts = facts;
    }

    void checkPlayLine(std::int32_t asked, std::int64_t last) {
        if (asked < 0 || asked > last) {
            // The place is the script's last line, where there is one.
            const TextRange range{facts.number, 0, facts.line.size()};
            checks->found.push_back(
                makeDiagnostic("F404", SourceKind::script, range,
                               {decimalText(asked), decimalText(facts.number)}));
        }
    }

    void checkTerminator() {
        const std::u16string_view script = request.script;
        const std::size_t read =
            facts.line.data() == nullptr ? 0 : offsetIn(script, facts.line) + facts.line.size();
        const std::size_t end = read + 1 < script.size() ? script.find(u'\0', read) : kNone;
        if (end != kNone) {
            const std::size_t before = end == 0 ? kNone : script.rfind(u'\n', end - 1);
            const std::size_t start = before == kNone ? 0 : before + 1;
            checks->found.push_back(
                makeDiagnostic("F402", SourceKind::script,
                               // A script that ends where a line begins has not started that line.
                               {facts.number + (end == start ? 1 : 0), end - start, 1}));
        }
    }
};

DiagnosticCollector::DiagnosticCollector(const ConversionRequest& request)
    : work_(std::make_unique<Work>(request)) {}

DiagnosticCollector::~DiagnosticCollector() = default;

std::vector<Diagnostic> DiagnosticCollector::take() {
    sortByPlace(work_->found);
    return std::move(work_->found);
}

void DiagnosticCollector::vocabularyLoaded(const KeywordTable& words) {
    work_->checks.emplace(words);
}

void DiagnosticCollector::descriptionRead(const StagingDescription& staging, const TemplateDb&,
                                          char16_t lastCharacter, const DiagnosticLog&) {
    ScriptChecks& checks = *work_->checks;
    checks.staging = &staging;
    checks.lastCharacter = lastCharacter;
    for (const TextMap* names : {&staging.tags.tagNames, &staging.tags.tagTexts}) {
        for (const auto& [name, value] : *names) {
            checks.tagStarts.set(name.front() & 0xFFu);
        }
    }
}

void DiagnosticCollector::lineStarted(std::int32_t number, std::u16string_view line) {
    Work& work = *work_;
    work.finishLine();
    work.facts.number = number;
    work.facts.line = line;
    work.facts.taken = false;
    work.facts.spoken = false;
    work.rewritings.clear();
}

void DiagnosticCollector::lineClassified(LineKind kind, std::u16string_view speaker,
                                         bool isCommand) {
    LineFacts& facts = work_->facts;
    facts.kind = kind;
    facts.speaker = kind == LineKind::character && !speaker.empty() ? speaker.front() : u'\0';
    facts.isCommand = isCommand;
    const bool isTalk = !isCommand && (kind == LineKind::character || kind == LineKind::other);
    work_->needsCheck = work_->needsCheck || (isTalk && talkNeedsCheck(*work_->checks, facts));
}

void DiagnosticCollector::rewritten(std::u16string_view before, std::u16string_view after) {
    work_->rewritings.push_back({before, after});
    if (isInside(work_->facts.line, before)) {
        work_->facts.inner = before;
    }
}

void DiagnosticCollector::recognized(const Recognition& recognition) {
    work_->facts.recognition = recognition;
}

void DiagnosticCollector::taken(TakenBy by, std::u16string_view name) {
    LineFacts& facts = work_->facts;
    facts.taken = true;
    facts.takenName = name;
    work_->needsCheck = work_->needsCheck || by == TakenBy::tag;
}

void DiagnosticCollector::templateChosen(std::u16string_view, std::size_t) {
    work_->facts.spoken = true;
}

void DiagnosticCollector::titleCard(std::u16string_view marker, bool completed) {
    if (completed) {
        work_->cardLine = 0;
    } else {
        work_->startCard(marker);
    }
}

void DiagnosticCollector::problem(ScriptProblem what, std::u16string_view where,
                                  std::u16string_view detail) {
    Work& work = *work_;
    work.facts.told.push_back(
        {what, work.partOfLine(where), std::u16string(where), std::u16string(detail)});
    work.needsCheck = true;
}

void DiagnosticCollector::finished(const TvmlScript&) {
    Work& work = *work_;
    work.finishLine();
    work.tellLoneCard();
    work.checkPlayLine(work.request.playFrom, work.facts.number);
    work.checkPlayLine(work.request.playTo, std::int64_t{work.facts.number} + 1);
    work.checkTerminator();
    work.found = std::move(work.checks->found);
    work.checks.reset(); // the run's tables end with the run
}

} // namespace tvml
