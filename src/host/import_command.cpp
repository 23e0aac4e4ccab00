// A play, a screenplay or subtitles in, a programme script out. Entry: runImport.
#include "host/import_command.h"

#include <algorithm>
#include <array>
#include <memory>

#include "host/host_error.h"
#include "host/inputs.h"
#include "host/language.h"
#include "host/text_files.h"
#include "host/text_table.h"
#include "import/play_import.h"
#include "platform/host_services.h"
#include "run/ini_files.h"
#include "staging/tvml_exception.h"

namespace tvml::host {
namespace {

void remark(const std::string& lines) {
    // When even the report cannot be written, nobody can be told.
    platform::writeStream(platform::OutputStream::error, lines);
}

// "NAME=LETTER", the letter in any width and case.
plays::CastWish wishIn(const std::string& given, const KeywordTable& words) {
    const std::u16string text = utf16(given);
    const std::size_t sign = text.find_last_of(u"=＝");
    const bool isPair = sign != text.npos && sign > 0 && sign + 2 == text.size();
    const char16_t letter = isPair ? words.letterOf(text.back()) : u'\0';
    if (letter == 0) {
        refuse(Message::usage_cast, {given});
    }
    return {text.substr(0, sign), letter};
}

plays::ImportedPlay imported(const Options& options, const Inputs& inputs) {
    const auto files = std::make_unique<IniFiles>(platform::system()); // the stack may be small
    files->load();
    std::vector<plays::CastWish> wishes;
    for (const std::string& given : options.cast) {
        wishes.push_back(wishIn(given, files->words));
    }
    try {
        return plays::importPlay({inputs.script, options.playFormat, wishes, options.titles,
                                  inputs.description, files->words, files->settings},
                                 platform::system());
    } catch (const TvmlException& problem) {
        throw HostError{kInputOrOutputFailed, errorLine(Message::failure_xml, {problem.message()})};
    }
}

std::string number(std::size_t value) {
    return std::to_string(value);
}

// ---- the report

class ImportReport {
public:
    ImportReport(const plays::ImportedPlay& play, const Inputs& inputs)
        : play_(play), inputs_(inputs) {}

    std::string text() {
        for (const plays::ToldDirection& told : play_.directions) {
            addDirection(told);
        }
        for (const std::u16string& name : play_.unknownWishes) {
            note(Message::severity_warning, 0, say(Message::import_nobody, {utf8(name)}));
        }
        addCast();
        addCounts();
        return std::move(text_);
    }

private:
    void addDirection(const plays::ToldDirection& told) {
        const std::string text = utf8(shortened(told.text));
        note(Message::severity_note, told.line,
             told.command.empty() ? say(Message::import_leftOut, {text})
                                  : say(Message::import_used, {text, utf8(told.command)}));
    }

    // A line of a report is no place for a story.
    static std::u16string shortened(std::u16string_view text) {
        constexpr std::size_t kMost = 60;
        std::u16string result(text.substr(0, kMost));
        const bool cutsPair = text.size() > kMost && (result.back() & 0xFC00) == 0xD800;
        result.resize(result.size() - (cutsPair ? 1 : 0));
        return text.size() > kMost ? result.append(u"…") : result;
    }

    void addCast() {
        TextTable table({{label(Message::head_letter)},
                         {label(Message::head_name)},
                         {label(Message::head_speeches), true}});
        for (const plays::CastMember& member : play_.cast) {
            const std::u16string name =
                member.name.empty() ? std::u16string(label(Message::import_unnamed)) : member.name;
            table.add({std::u16string(1, member.letter), name, utf16(number(member.speeches))});
        }
        text_.append(utf8(table.text()));
        for (const plays::CastMember& member : play_.cast) {
            if (member.shares) {
                const std::u16string letter(1, member.letter);
                note(Message::severity_note, 0,
                     say(Message::import_shares, {utf8(member.name), utf8(letter)}));
            }
        }
        tellReplaced();
    }

    void tellReplaced() {
        const auto isBeyond = [&](const plays::CastMember& member) {
            return member.letter > play_.lastCharacter;
        };
        const auto beyond = static_cast<std::size_t>(std::ranges::count_if(play_.cast, isBeyond));
        if (beyond > 0) {
            const std::u16string last(1, play_.lastCharacter);
            note(Message::severity_warning, 0,
                 sayCounted(Message::import_beyond, beyond, {utf8(last)}));
        }
    }

    void addCounts() {
        // In the order of PlayFormat.
        static constexpr std::array<Message, 4> kFormats{
            Message::import_japanese, Message::import_english, Message::import_fountain,
            Message::import_subtitles};
        const auto used = static_cast<std::size_t>(std::ranges::count_if(
            play_.directions, [](const auto& told) { return !told.command.empty(); }));
        line(say(Message::import_read,
                 {inputs_.scriptName, say(kFormats[static_cast<std::size_t>(play_.format)]),
                  encodingName(inputs_.encoding)}));
        line(say(Message::import_directions,
                 {number(used), number(play_.directions.size() - used), number(play_.headings)}));
        line(say(Message::import_speeches, {number(play_.speechesIn), number(play_.speechesOut)}));
        if (play_.speechesOut < play_.speechesIn) {
            note(Message::severity_error, 0,
                 sayCounted(Message::import_lost, play_.speechesIn - play_.speechesOut));
        }
    }

    void note(Message severity, std::int32_t line, const std::string& message) {
        text_
            .append(diagnosticLine(inputs_.scriptName, {static_cast<std::uint64_t>(line), 0},
                                   severity, message))
            .append("\n");
    }

    void line(const std::string& message) {
        text_.append("tvmlfilter: ").append(message).append("\n");
    }

    const plays::ImportedPlay& play_;
    const Inputs& inputs_;
    std::string text_;
};

} // namespace

int runImport(const Options& options) {
    if (isInput(options, options.output)) {
        refuse(Message::usage_outputIsInput, {options.output});
    }
    const Inputs inputs = readInputs(options);
    const plays::ImportedPlay play = imported(options, inputs);
    if (play.speechesIn == 0) {
        throw inputOrOutputError(inputs.scriptName, {}, Message::import_noSpeeches);
    }
    writeScript(options.output, play.script, options.outputEncoding);
    remark(ImportReport(play, inputs).text());
    return play.speechesOut == play.speechesIn ? kDone : kProblemsFound;
}

} // namespace tvml::host
