// All that can be said about scripts, their description and the vocabulary,
// without an output. Entry: runCheck.
#include "host/check_command.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <iterator>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "analysis/source_texts.h"
#include "diagnostics/diagnostics.h"
#include "diagnostics/text_width.h"
#include "host/conversion.h"
#include "host/host_error.h"
#include "host/inputs.h"
#include "host/language.h"
#include "host/media_folder.h"
#include "host/text_files.h"
#include "host/watch.h"
#include "platform/platform.h"

namespace tvml::host {
namespace {

void remark(const std::string& line) {
    platform::writeStream(platform::OutputStream::error, line + "\n");
}

// What one file has wrong.
struct Tally {
    std::string file; // as messages call it
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;
    bool unread = false;

    bool clean() const { return !unread && errors + warnings + notes == 0; }
    // The worst first.
    auto weight() const { return std::tuple(!unread, ~errors, ~warnings, ~notes); }
};

std::string countsOf(const Tally& tally) {
    if (tally.unread) {
        return say(Message::check_unread);
    }
    const std::string comma = say(Message::list_comma);
    return sayCounted(Message::count_errors, tally.errors) + comma +
           sayCounted(Message::count_warnings, tally.warnings) + comma +
           sayCounted(Message::count_notes, tally.notes);
}

// "FILE: 1 error, 2 warnings, 0 notes"
std::string lineOf(const Tally& tally) {
    return harmlessBytes(tally.file) + ": " + countsOf(tally);
}

// Checks one file after another. The findings are what the command is for, so they
// are its output; counts are remarks to the person at the terminal.
class Checker {
public:
    explicit Checker(const Options& options) : options_(options), media_(mediaIn(options.media)) {}

    int run() {
        if (options_.scripts.empty()) {
            checkDescriptionFile(options_.description);
        } else if (options_.scripts.size() == 1) {
            checkFile(options_.scripts.front());
        } else {
            std::ranges::for_each(options_.scripts,
                                  [this](const std::string& file) { checkOrTell(file); });
        }
        tellCounts();
        return unread_ ? kInputOrOutputFailed : failed_ ? kProblemsFound : kDone;
    }

private:
    // Of several files one that cannot be read keeps nobody from the others.
    void checkOrTell(const std::string& file) {
        try {
            checkFile(file);
        } catch (const HostError& failure) {
            if (failure.exitCode != kInputOrOutputFailed) {
                throw;
            }
            remark(failure.message);
            tallyOf(inputName(file)).unread = unread_ = true;
        }
    }

    void checkFile(const std::string& file) {
        Options one = options_;
        one.script = file;
        const Inputs inputs = readInputs(one);
        if (isXml(inputs.scriptName, inputs.script)) {
            checkDescriptionText(file, asDescription(inputs.script));
        } else {
            checkScriptText(inputs);
        }
    }

    // The script is converted, since only a conversion knows what its lines do, and
    // the result is dropped.
    void checkScriptText(const Inputs& inputs) {
        AnalysisWants wants;
        wants.problems = true;
        wants.returnsAsLineEnds = inputs.lineEnds == LineEnds::returns;
        Analysis analysis =
            filter_.run(inputs.request(options_), wants, nextVocabularyCheck(), media_);
        tallyOf(inputs.scriptName);
        tell(std::move(analysis.problems), inputs.sources(filter_.vocabulary()));
    }

    void checkDescriptionFile(const std::string& file) {
        checkDescriptionText(
            file, readDescription(file, options_.descriptionEncoding.value_or(options_.encoding)));
    }

    void checkDescriptionText(const std::string& file, std::u16string text) {
        std::vector<Diagnostic> found = filter_.check(text, nextVocabularyCheck());
        tallyOf(inputName(file));
        tell(std::move(found), {{}, {inputName(file), text}, filter_.vocabulary()});
    }

    VocabularyCheck nextVocabularyCheck() {
        return std::exchange(vocabularyCheck_, VocabularyCheck::never);
    }

    void tell(std::vector<Diagnostic> found, const Sources& sources) {
        std::erase_if(found, [&](const Diagnostic& each) { return wasTold(each, sources); });
        std::string lines;
        for (const SourceKind kind :
             {SourceKind::vocabulary, SourceKind::description, SourceKind::script}) {
            std::vector<Diagnostic> ofKind;
            std::ranges::copy_if(found, std::back_inserter(ofKind),
                                 [kind](const Diagnostic& each) { return each.source == kind; });
            if (!ofKind.empty()) {
                lines += count(findingsOf(std::move(ofKind), sources,
                                          options_.report(FailureLevel::error),
                                          platform::OutputStream::output),
                               sources.of(kind).name);
            }
        }
        writeOutput(lines);
    }

    // Scripts share the description and the vocabulary.
    bool wasTold(const Diagnostic& found, const Sources& sources) {
        return found.source != SourceKind::script &&
               !told_
                    .emplace(sources.of(found.source).name, found.line, found.column, found.message)
                    .second;
    }

    std::string count(Findings findings, const std::string& file) {
        Tally& tally = tallyOf(file);
        tally.errors += findings.errors;
        tally.warnings += findings.warnings;
        tally.notes += findings.notes;
        failed_ = failed_ || findings.failed;
        return std::move(findings.lines);
    }

    Tally& tallyOf(const std::string& file) {
        const auto [known, isNew] = tallyByFile_.emplace(file, tallies_.size());
        if (isNew) {
            tallies_.push_back({file});
        }
        return tallies_[known->second];
    }

    void tellCounts() {
        if (options_.scripts.size() > 1) {
            tellSummary();
        } else if (options_.watch) {
            const Tally all = sum();
            remark(timeOfDay() + " " +
                   (all.clean() ? harmlessBytes(all.file) + ": " + say(Message::check_clean)
                                : lineOf(all)));
        } else {
            remark(lineOf(sum()));
        }
    }

    // Of the one file that was asked for, with the findings of those that it needs.
    Tally sum() const {
        Tally all{
            inputName(options_.scripts.empty() ? options_.description : options_.scripts.front())};
        for (const Tally& tally : tallies_) {
            all.errors += tally.errors;
            all.warnings += tally.warnings;
            all.notes += tally.notes;
        }
        return all;
    }

    void tellSummary() {
        std::ranges::stable_sort(tallies_, {}, &Tally::weight);
        std::size_t clean = 0;
        for (const Tally& tally : tallies_) {
            clean += tally.clean() ? 1 : 0;
            if (!tally.clean()) {
                remark(lineOf(tally));
            }
        }
        const std::string time = options_.watch ? timeOfDay() + " " : "";
        remark(time + sayCounted(Message::check_files, tallies_.size(), {std::to_string(clean)}));
    }

    static std::string timeOfDay() {
        const std::time_t now =
            std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
        std::string text(16, '\0');
        // One thread, so that nobody else uses the function's buffer.
        text.resize(std::strftime(text.data(), text.size(), "[%H:%M:%S]", std::localtime(&now)));
        return text;
    }

    const Options& options_;
    const std::optional<MediaNames> media_; // none: not known
    Filter filter_;
    VocabularyCheck vocabularyCheck_ = VocabularyCheck::always;
    std::set<std::tuple<std::string, std::int32_t, std::size_t, std::u16string>> told_;
    std::vector<Tally> tallies_; // in the order in which the files came up
    std::map<std::string, std::size_t> tallyByFile_;
    bool failed_ = false;
    bool unread_ = false;
};

} // namespace

int runCheck(const Options& options) {
    if (options.scripts.empty() && options.description.empty()) {
        refuse(Message::usage_hint,
               {say(Message::usage_noArgument, {say(Message::value_script)}), "tvmlfilter check"});
    }
    if (!options.watch) {
        return Checker(options).run();
    }
    if (std::ranges::find(options.scripts, kStandardStream) != options.scripts.end() ||
        options.description == kStandardStream) {
        refuse(Message::usage_checkWatchFiles);
    }
    return watchInputs(options, [&options] { Checker(options).run(); });
}

std::string explanationText(const std::string& code) {
    return explanationOf(codeNamed(code), platform::system(), language());
}

} // namespace tvml::host
