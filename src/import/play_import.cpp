// Entry: importPlay.
#include "import/play_import.h"

#include <algorithm>
#include <map>
#include <memory>

#include "diagnostics/diagnostics.h"
#include "filter/conversion_run.h"
#include "import/play_format.h"
#include "import/play_lines.h"

namespace tvml::plays {
namespace {

// What the description makes of a programme, kept by the run that told it.
class ProgrammeKeeper final : public RunListener {
public:
    void programmeRead(const Programme& programme) override {
        reader = &programme.reader;
        staging = &programme.staging;
        lastCharacter = programme.lastCharacter;
    }

    const LineReader* reader = nullptr;
    const StagingDescription* staging = nullptr;
    char16_t lastCharacter = u'A';
};

// What each line of a script said in the conversion. The pieces that a speech is
// cut into have no blanks at their ends, so all are compared without blanks.
class Hearing final : public RunListener {
public:
    void lineConverted(const ScriptLine&, const LineOutcome& outcome) override {
        std::u16string said;
        for (const SpokenPiece& piece : outcome.spoken) {
            said.append(piece.speech);
        }
        said_.push_back(withoutBlanks(said));
    }

    bool heard(std::size_t line, std::u16string_view speech) const {
        return line < said_.size() && said_[line] == withoutBlanks(speech);
    }

private:
    std::vector<std::u16string> said_;
};

// One import: written, converted, and written again when something in it has no
// effect.
class Import {
public:
    Import(const ImportRequest& request, const platform::Platform& platform)
        : request_(request), platform_(platform), listeners_{&programme_},
          run_(request.words, request.settings, platform, &listeners_),
          play_(readPlay(request.text, request.format)), cast_(play_, request.wishes) {
        run_.convert(conversionOf(u""));
    }

    ImportedPlay take() {
        WrittenScript script = write();
        Hearing hearing;
        if (refuse(script, hearing)) {
            script = write();
            hearing = {};
            refuse(script, hearing);
        }
        return result(std::move(script), hearing);
    }

private:
    ConversionRequest conversionOf(std::u16string_view script) const {
        return {script, kNoLine, kNoLine, request_.description};
    }

    WrittenScript write() const {
        const Directions directions(*programme_.reader, *programme_.staging,
                                    programme_.lastCharacter, cast_);
        return ScriptWriter({play_, cast_, directions, *programme_.reader, programme_.lastCharacter,
                             request_.titles, refused_})
            .write();
    }

    // Converts the script. True when commands of it were found useless, which are
    // refused from now on.
    bool refuse(const WrittenScript& script, Hearing& hearing) {
        const std::u16string text = script.text();
        const ConversionRequest conversion = conversionOf(text);
        DiagnosticCollector problems(conversion);
        const Listeners listeners{&problems, &hearing};
        // Not on the stack, which may be small.
        std::make_unique<ConversionRun>(request_.words, request_.settings, platform_, &listeners)
            ->convert(conversion);
        const std::size_t before = refused_.size();
        for (const Diagnostic& found : problems.take()) {
            const auto line = static_cast<std::size_t>(found.line) - 1;
            // A command that has no effect now has none in the end.
            const bool isUseless = found.severity == Severity::error || found.code == Code("S112");
            if (isUseless && line < script.lines.size() && script.lines[line].isCommand) {
                refused_.insert(script.lines[line].from);
            }
        }
        return refused_.size() > before;
    }

    // A speech is out when each of its lines was heard, and it has one.
    ImportedPlay result(WrittenScript script, const Hearing& hearing) const {
        std::map<std::size_t, bool> heard; // by item
        for (std::size_t line = 0; line < script.lines.size(); ++line) {
            const WrittenLine& written = script.lines[line];
            if (!written.spoken.empty()) {
                const auto item = heard.emplace(written.from.first, true).first;
                item->second = item->second && hearing.heard(line, written.spoken);
            }
        }
        ImportedPlay result;
        result.format = play_.format;
        result.isJapanese = play_.isJapanese;
        result.script = script.text();
        result.speechesIn = static_cast<std::size_t>(
            std::ranges::count(play_.items, ItemKind::speech, &PlayItem::kind));
        result.speechesOut = static_cast<std::size_t>(
            std::ranges::count_if(heard, [](const auto& item) { return item.second; }));
        result.headings = script.headings;
        result.cast = cast_.members();
        result.unknownWishes = cast_.unknown();
        result.directions = std::move(script.directions);
        result.lastCharacter = programme_.lastCharacter;
        return result;
    }

    const ImportRequest& request_;
    const platform::Platform& platform_;
    ProgrammeKeeper programme_;
    Listeners listeners_;
    ConversionRun run_; // keeps the programme
    const Play play_;
    const Cast cast_;
    std::set<PartPlace> refused_;
};

} // namespace

ImportedPlay importPlay(const ImportRequest& request, const platform::Platform& platform) {
    return std::make_unique<Import>(request, platform)->take();
}

} // namespace tvml::plays
