// Several listeners of one conversion.
#ifndef TVML_DIAGNOSTICS_REPORT_GROUP_H
#define TVML_DIAGNOSTICS_REPORT_GROUP_H

#include <vector>

#include "filter/report.h"

namespace tvml {

// Tells each listener all that it hears, in the order of the list. The listeners
// must outlive the group.
class ReportGroup final : public ConversionReport {
public:
    explicit ReportGroup(std::vector<ConversionReport*> listeners)
        : listeners_(std::move(listeners)) {}

    void vocabularyLoaded(const KeywordTable& words) override;
    void descriptionRead(const StagingDescription& staging, const TemplateDb& templates,
                         char16_t lastCharacter, const DiagnosticLog& log) override;
    bool wantsPositions() const override;
    void lineStarted(std::int32_t number, std::u16string_view line) override;
    void lineClassified(LineKind kind, std::u16string_view speaker, bool isCommand) override;
    void rewritten(std::u16string_view before, std::u16string_view after) override;
    void recognized(const Recognition& recognition) override;
    void adverbsRead(std::u16string_view list, const AdverbValues& values) override;
    void taken(TakenBy by, std::u16string_view name) override;
    void templateChosen(std::u16string_view element, std::size_t number) override;
    void spoken(char16_t letter, std::u16string_view speech, std::u16string_view speed) override;
    void fileNamed(FileUse use, std::u16string_view file) override;
    void titleCard(std::u16string_view marker, bool completed) override;
    void problem(ScriptProblem what, std::u16string_view where,
                 std::u16string_view detail) override;
    void bodyGrew(std::size_t units) override;
    void playMark(std::int32_t line) override;
    void bodyFilled(std::size_t fromEnd, std::size_t removed, std::size_t inserted) override;
    void partChanged(PlainElement part, std::size_t at, std::size_t removed, std::size_t inserted,
                     const std::optional<TextOrigin>& origin) override;
    void assembled(std::size_t headerUnits, bool hasEnding) override;
    void unitsCut(std::size_t at, std::size_t units) override;
    void finished(const TvmlScript& script) override;

private:
    template <typename Hook, typename... Values> void tell(Hook hook, const Values&... values) {
        for (ConversionReport* listener : listeners_) {
            (listener->*hook)(values...);
        }
    }

    std::vector<ConversionReport*> listeners_;
};

} // namespace tvml

#endif
