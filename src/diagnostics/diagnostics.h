// Checks of scripts, descriptions and vocabularies, and the showing of what
// they find: all that a host program needs.
//
// Conventions
//  1. Texts are UTF-16; lines and columns count from 1, columns and lengths in
//     UTF-16 units. The renderers' results are UTF-8.
//  2. The checks read the texts only while they run; a Diagnostic owns what it
//     holds. A renderer refers to the texts of its Sources.
//  3. Nothing here changes what a conversion writes. A failure of the XML
//     machinery leaves a check as the TvmlException of the conversion.
//  4. An empty list means that nothing was found.
//  5. Messages and explanations are in the language that is given; codes, names of
//     severities and JSON do not depend on it.
#ifndef TVML_DIAGNOSTICS_DIAGNOSTICS_H
#define TVML_DIAGNOSTICS_DIAGNOSTICS_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic_table.h"
#include "diagnostics/media_names.h"
#include "filter/conversion_run.h"
#include "run/events.h"
#include "staging/xml_parser.h"

namespace tvml {

// Which of the texts a diagnostic is about.
enum class SourceKind : std::uint8_t { script, description, vocabulary };

struct Diagnostic {
    Code code;
    Severity severity;
    SourceKind source;
    std::int32_t line = 0;  // 0 when it concerns the whole text
    std::size_t column = 0; // of the range's first unit; 0 without a line
    std::size_t units = 0;  // of the range; 0 for a place between two units
    std::u16string message;
    std::vector<std::u16string> suggestions; // the closest first
};

// Collects the diagnostics of one conversion's script. Give it to the run as a
// listener, convert, and take what it collected. The request must be the one that
// is converted; its script and the media must live as long as the collector works.
class DiagnosticCollector final : public RunListener {
public:
    explicit DiagnosticCollector(const ConversionRequest& request, Language language = Language::en,
                                 const MediaNames* media = nullptr);
    ~DiagnosticCollector() override;

    // The diagnostics in the order of lines and columns. The collector is empty
    // afterwards.
    std::vector<Diagnostic> take();

    void programmeRead(const Programme& programme) override;
    void lineConverted(const ScriptLine& line, const LineOutcome& outcome) override;
    void finished(const TvmlScript& script) override;

private:
    struct Work;
    std::unique_ptr<Work> work_;
};

// Converts without writing anything and returns what the script has wrong.
std::vector<Diagnostic> checkScript(const ConversionRequest& request, const KeywordTable& words,
                                    const TvmlIniMirvol& settings,
                                    const platform::Platform& platform,
                                    Language language = Language::en,
                                    const MediaNames* media = nullptr);

// A description parsed as the functions below, and the conversion, take it; each
// parses it itself when none is given.
std::shared_ptr<const XmlDocument> parseDescription(std::u16string_view description);

// What the description has wrong; nothing when it is empty.
std::vector<Diagnostic> checkDescription(std::u16string_view description, const KeywordTable& words,
                                         const platform::Platform& platform,
                                         Language language = Language::en,
                                         std::shared_ptr<const XmlDocument> parsed = nullptr);

// What the loaded words have wrong. `iniText` is the text of the file that they
// were loaded from; it gives the places.
std::vector<Diagnostic> checkVocabulary(const KeywordTable& words, std::u16string_view iniText,
                                        Language language = Language::en);

// About a script whose lines end with carriage returns alone, also when they were
// read as line ends before the conversion.
Diagnostic returnsAsLineEnds(std::u16string_view script, Language language);

// Of a script whose description is broken: takes what may come of that alone out
// of `found`, such as models that are not there, and tells how much it was.
void dropConsequences(std::vector<Diagnostic>& found, std::u16string_view script,
                      std::u16string_view description, Language language);

// The start tags of a description's elements, in the order of their numbers
// (Variant::element counts from 1, the list from 0).
struct ElementPlace {
    std::u16string name;
    std::int32_t line = 0; // 0 when it cannot be known
    std::size_t column = 0;
};
std::vector<ElementPlace> elementPlaces(std::u16string_view description,
                                        std::shared_ptr<const XmlDocument> parsed = nullptr);

// ---- what counts

// The code that `text` is, or none.
std::optional<Code> findCode(std::string_view text);

// The code that a mistaken one resembles most.
Code closestCode(std::string_view text);

// "note", "warning", "error", for programs; severityText is for people.
std::string_view severityName(Severity severity);
Message severityText(Severity severity);

struct SeverityPolicy {
    std::optional<Severity> failureLevel = Severity::error; // none: nothing fails
    std::vector<Code> allowed;                              // left out
    std::vector<Code> denied;                               // count as errors
};

// Removes what is allowed and raises what is denied. True when a diagnostic
// reaches the failure level.
bool applyPolicy(const SeverityPolicy& policy, std::vector<Diagnostic>& diagnostics);

// ---- showing

struct SourceText {
    std::string name; // of the file, in UTF-8, as it is shown
    std::u16string_view text;
};
struct Sources {
    SourceText script;
    SourceText description;
    SourceText vocabulary;
    const SourceText& of(SourceKind kind) const;
};

// How the screen is that shows a text.
struct Screen {
    bool coloured = false;
    std::size_t columns = 0; // 0: not known
};

// FILE:LINE:COLUMN: severity: message [code], the source line with a caret under
// the range, and the suggestions, each on a line that ends with a line feed. Of a
// source line that is too wide, the part around the range is shown.
class TextRenderer {
public:
    TextRenderer(const Sources& sources, const platform::Platform& platform, Language language,
                 Screen screen);
    ~TextRenderer();
    std::string render(const Diagnostic& diagnostic) const;

private:
    struct Lines;
    const Sources& sources_;
    const platform::Platform& platform_;
    const Language language_;
    const Screen screen_;
    std::unique_ptr<Lines> lines_;
};

// The version that the JSON objects name. It grows with every change that a
// reader of the objects could notice, other than a new member.
inline constexpr int kJsonVersion = 1;

// One JSON object on one line that ends with a line feed:
//   {"version":1,"code","severity","source","file","line","column","endColumn",
//    "message","suggestions"}
// Line and columns are null where the text as a whole is meant.
std::string renderJson(const Diagnostic& diagnostic, const Sources& sources,
                       const platform::Platform& platform);

// What a code means and what to do, in plain text with an example, in UTF-8.
std::string explanationOf(Code code, const platform::Platform& platform, Language language);

} // namespace tvml

#endif
