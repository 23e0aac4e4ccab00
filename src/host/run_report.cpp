// Problems of a run as warnings, in the order in which the run met them. Entry:
// RunReport.
#include "host/run_report.h"

#include <array>
#include <functional>
#include <utility>
#include <vector>

#include "host/host_error.h"
#include "host/text_files.h"
#include "platform/platform.h"

namespace tvml::host {
namespace {

// In the order of ScriptProblem. The part of the line that is meant follows.
constexpr std::array kScriptMessages = {
    "no such command; it writes nothing",
    "the command cannot be carried out with these words; it writes nothing",
    "not an adverb",
    "an adverb is missing after the separator",
    "a separator is missing before this",
    "a colon is missing before this",
    "not a number",
    "a number without its unit",
    "not a character's letter",
    "the programme has no such character; \"A\" is taken",
    "the programme has no such speaker; \"A\" speaks",
    "a character cannot look at itself",
    "the command has no effect here",
    "the character has no model in the description; the line writes nothing",
    "the description has no such set",
    "the description has no such model",
    "no such voice",
    "no tag has this name; the line writes nothing",
    "not a colour; the default is taken",
    "not a caption; it is spoken",
    "a closing bracket without its opening one",
    "the caption makes this command a talk line",
    "a sentence is cut in the middle of a word",
    "the title card's second text never comes",
    "the line is not in the script",
    "the description has no template for this",
};
static_assert(kScriptMessages.size() ==
              static_cast<std::size_t>(ScriptProblem::templateMissing) + 1);

// In the order of DescriptionProblem. The element's name follows.
constexpr std::array kDescriptionMessages = {
    "the number of characters is missing; two are taken",
    "not a number of characters (1 to 26); two are taken",
    "an element without text is passed over",
    "the text of an element is empty",
    "the text was not taken",
    "an element without its font attributes is passed over",
    "a font attribute is empty; the element is passed over",
    "an element lacks a required attribute and is passed over",
    "a required attribute is empty; the element is passed over",
    "the text for all characters was not taken",
    "a line that is not \"JAPANESE, ENGLISH, FILE\" is passed over",
    "an earlier set has this name",
    "an earlier tag has this name",
    "the programme has no such character; \"A\" is taken",
    "no element has this name; it is passed over",
    "the XML is not well-formed; what follows is not read",
};
static_assert(kDescriptionMessages.size() ==
              static_cast<std::size_t>(DescriptionProblem::xmlError) + 1);

// The first line of the XML that the filter parses is its own declaration.
constexpr std::size_t kXmlPrefixLines = 1;

std::string worded(const char* message, std::u16string_view meant) {
    std::string text(message);
    if (!meant.empty()) {
        text.append(": ").append(platform::system().toUtf8(meant));
    }
    return text;
}

} // namespace

class RunReport::Collector final : public ConversionReport {
public:
    explicit Collector(RunSources sources) : sources_(std::move(sources)) {}

    const std::string& text() const { return text_; }

    bool wantsPositions() const override { return true; }

    void descriptionRead(const StagingDescription&, const TemplateDb&, char16_t,
                         const DiagnosticLog& log) override {
        for (const DiagnosticLog::Entry& entry : log.entries()) {
            TextPosition at{entry.position.line, entry.position.column};
            at.line -= at.line > kXmlPrefixLines ? kXmlPrefixLines : at.line;
            const char* message = kDescriptionMessages[static_cast<std::size_t>(entry.problem)];
            warn(sources_.description, at, worded(message, entry.element));
        }
    }

    void lineStarted(std::int32_t number, std::u16string_view line) override {
        number_ = number;
        line_ = line;
        rewritten_.clear();
    }

    void rewritten(std::u16string_view before, std::u16string_view after) override {
        rewritten_.emplace_back(before, after);
    }

    void problem(ScriptProblem what, std::u16string_view where,
                 std::u16string_view detail) override {
        const char* message = kScriptMessages[static_cast<std::size_t>(what)];
        const TextPosition at{static_cast<std::size_t>(number_),
                              positionIn(line_, offsetInLine(where)).column};
        warn(sources_.script, at, worded(message, where.empty() ? detail : where));
    }

    void finished(const TvmlScript&) override {
        warnOfLine("--from", sources_.playFrom, number_);
        warnOfLine("--to", sources_.playTo, std::int64_t{number_} + 1);
    }

private:
    static bool holds(std::u16string_view text, const char16_t* at) {
        return std::less_equal<>()(text.data(), at) &&
               std::less_equal<>()(at, text.data() + text.size());
    }

    // A changed copy ends with the same units as its original, so the distance
    // from the end leads back.
    std::size_t offsetInLine(std::u16string_view where) const {
        const char16_t* at = where.data();
        for (auto copy = rewritten_.rbegin(); copy != rewritten_.rend(); ++copy) {
            const auto& [before, after] = *copy;
            if (holds(after, at)) {
                const auto fromEnd = static_cast<std::size_t>(after.data() + after.size() - at);
                at = before.data() + (before.size() - std::min(fromEnd, before.size()));
            }
        }
        return !where.empty() && holds(line_, at) ? static_cast<std::size_t>(at - line_.data()) : 0;
    }

    void warnOfLine(const char* option, std::int32_t asked, std::int64_t last) {
        if (asked > last) {
            warn(sources_.script, {},
                 std::string(option) + " " + std::to_string(asked) +
                     " names no line: the script has " + std::to_string(number_));
        }
    }

    void warn(const std::string& file, TextPosition at, const std::string& message) {
        text_ += diagnosticLine(file, at, "warning", message) + "\n";
    }

    RunSources sources_;
    std::string text_;
    std::int32_t number_ = 0;
    std::u16string_view line_;
    std::vector<std::pair<std::u16string_view, std::u16string_view>> rewritten_;
};

RunReport::RunReport(RunSources sources)
    : collector_(std::make_unique<Collector>(std::move(sources))) {}

RunReport::~RunReport() = default;

ConversionReport& RunReport::listener() {
    return *collector_;
}

std::string RunReport::text() const {
    return collector_->text();
}

} // namespace tvml::host
