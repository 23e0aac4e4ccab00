// Passing on. Every hook of ConversionReport has its line here.
#include "diagnostics/report_group.h"

#include <algorithm>

namespace tvml {

bool ReportGroup::wantsPositions() const {
    return std::ranges::any_of(listeners_, &ConversionReport::wantsPositions);
}

void ReportGroup::vocabularyLoaded(const KeywordTable& words) {
    tell(&ConversionReport::vocabularyLoaded, words);
}

void ReportGroup::descriptionRead(const StagingDescription& staging, const TemplateDb& templates,
                                  char16_t lastCharacter, const DiagnosticLog& log) {
    tell(&ConversionReport::descriptionRead, staging, templates, lastCharacter, log);
}

void ReportGroup::lineStarted(std::int32_t number, std::u16string_view line) {
    tell(&ConversionReport::lineStarted, number, line);
}

void ReportGroup::lineClassified(LineKind kind, std::u16string_view speaker, bool isCommand) {
    tell(&ConversionReport::lineClassified, kind, speaker, isCommand);
}

void ReportGroup::rewritten(std::u16string_view before, std::u16string_view after) {
    tell(&ConversionReport::rewritten, before, after);
}

void ReportGroup::recognized(const Recognition& recognition) {
    tell(&ConversionReport::recognized, recognition);
}

void ReportGroup::adverbsRead(std::u16string_view list, const AdverbValues& values) {
    tell(&ConversionReport::adverbsRead, list, values);
}

void ReportGroup::taken(TakenBy by, std::u16string_view name) {
    tell(&ConversionReport::taken, by, name);
}

void ReportGroup::templateChosen(std::u16string_view element, std::size_t number) {
    tell(&ConversionReport::templateChosen, element, number);
}

void ReportGroup::spoken(char16_t letter, std::u16string_view speech, std::u16string_view speed) {
    tell(&ConversionReport::spoken, letter, speech, speed);
}

void ReportGroup::fileNamed(FileUse use, std::u16string_view file) {
    tell(&ConversionReport::fileNamed, use, file);
}

void ReportGroup::titleCard(std::u16string_view marker, bool completed) {
    tell(&ConversionReport::titleCard, marker, completed);
}

void ReportGroup::problem(ScriptProblem what, std::u16string_view where,
                          std::u16string_view detail) {
    tell(&ConversionReport::problem, what, where, detail);
}

void ReportGroup::bodyGrew(std::size_t units) {
    tell(&ConversionReport::bodyGrew, units);
}

void ReportGroup::playMark(std::int32_t line) {
    tell(&ConversionReport::playMark, line);
}

void ReportGroup::bodyFilled(std::size_t fromEnd, std::size_t removed, std::size_t inserted) {
    tell(&ConversionReport::bodyFilled, fromEnd, removed, inserted);
}

void ReportGroup::partChanged(PlainElement part, std::size_t at, std::size_t removed,
                              std::size_t inserted, const std::optional<TextOrigin>& origin) {
    tell(&ConversionReport::partChanged, part, at, removed, inserted, origin);
}

void ReportGroup::assembled(std::size_t headerUnits, bool hasEnding) {
    tell(&ConversionReport::assembled, headerUnits, hasEnding);
}

void ReportGroup::unitsCut(std::size_t at, std::size_t units) {
    tell(&ConversionReport::unitsCut, at, units);
}

void ReportGroup::finished(const TvmlScript& script) {
    tell(&ConversionReport::finished, script);
}

} // namespace tvml
