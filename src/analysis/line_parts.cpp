// Entry: partsOf. The line is read as in a conversion; places are asked of it.
#include "analysis/line_parts.h"

#include <algorithm>

#include "reading/script_text.h"

namespace tvml {
namespace {

class Parting {
public:
    Parting(const LoadedProgramme& programme, std::u16string_view line)
        : words_(programme.reader().words()) {
        programme.reader().read(line, programme.context(), line_);
    }

    LineParts run() {
        result_.trimmed = placeOr(line_.trimmed);
        result_.content = placeOr(line_.content);
        result_.isCommand = line_.command() != nullptr;
        result_.fileUse = line_.file().use;
        if (!line_.speakerMark.empty()) {
            const char16_t letter = line_.speaker;
            add(PartKind::speaker, line_.speakerMark,
                letter == 0 ? std::u16string() : std::u16string(1, letter));
        }
        if (const TagReading* tag = line_.tag()) {
            addTag(*tag);
        } else if (const RecognizedCommand* command = line_.command()) {
            addCommand(*command);
        } else if (const TalkReading* talk = line_.talk()) {
            add(PartKind::speech, talk->speech);
            add(PartKind::caption, talk->caption);
        }
        return finished();
    }

private:
    LinePlace placeOr(std::u16string_view part) const {
        return line_.placeOf(part).value_or(LinePlace{});
    }

    void add(PartKind kind, std::u16string_view part, std::u16string english = {}) {
        const std::optional<LinePlace> place = line_.placeOf(part);
        if (place.has_value() && place->units > 0) {
            result_.all.push_back({kind, *place, std::move(english)});
        }
    }

    void addTag(const TagReading& tag) {
        add(tag.marker.has_value() ? PartKind::marker : PartKind::tag, tag.name,
            std::u16string(tag.english));
        const bool isFile = result_.fileUse != FileUse::none;
        add(isFile ? PartKind::file : PartKind::text, tag.value);
        if (tag.colourSpec != nullptr) {
            add(PartKind::colour, tag.colour, std::u16string(tag.colourSpec->word.name()));
        }
    }

    // The word at the front: a vocabulary word with what stands before it, or the
    // English name, or all up to the adverbs.
    std::u16string_view wordOf(const RecognizedCommand& command) const {
        const std::u16string_view inner = command.inner;
        if (command.recognition.word != nullptr) {
            return inner.substr(command.recognition.position,
                                words_[command.recognition.word->key].textOrEmpty().size());
        }
        if (command.spec != nullptr && inner.starts_with(command.spec->name)) {
            return trimScriptText(inner.substr(0, command.spec->name.size()), words_);
        }
        const std::size_t separator = findSeparator(inner, words_);
        const std::size_t colon = std::min(inner.find(u':'), words_[u"colon"].findUnitsIn(inner));
        return trimScriptText(inner.substr(0, std::min(separator, colon)), words_);
    }

    void addCommand(const RecognizedCommand& command) {
        result_.inside = placeOr(command.inner);
        const bool isPose = !command.pose.empty();
        const std::u16string_view word = wordOf(command);
        addLetters(command, word);
        add(isPose ? PartKind::pose : PartKind::command, word, std::u16string(line_.takenName()));
        if (!command.number.empty() && command.recognition.position > 0) {
            add(PartKind::argument, command.inner.substr(0, command.recognition.position));
        }
        for (const ReadAdverb& adverb : command.items) {
            add(PartKind::adverb, adverb.item, std::u16string(adverb.row->english));
        }
        add(result_.fileUse != FileUse::none ? PartKind::file : PartKind::name, command.name,
            std::u16string(command.english));
        add(PartKind::caption, command.caption);
    }

    // Letters stand in front of a vocabulary word, or behind an English name.
    void addLetters(const RecognizedCommand& command, std::u16string_view word) {
        const auto count = static_cast<std::size_t>(
            std::ranges::count_if(command.letters, [](char16_t letter) { return letter != 0; }));
        const bool byWord = command.recognition.word != nullptr;
        const std::size_t behind =
            static_cast<std::size_t>(word.data() - command.inner.data()) + word.size();
        std::size_t at = byWord ? 0 : behind;
        while (!byWord && at < command.inner.size() && words_.isBlank(command.inner[at])) {
            ++at;
        }
        for (std::size_t i = 0; i < count && at + i < command.inner.size(); ++i) {
            add(PartKind::argument, command.inner.substr(at + i, 1),
                std::u16string(1, command.letters[i]));
        }
    }

    LineParts finished() {
        auto& all = result_.all;
        std::ranges::stable_sort(all, {}, [](const LinePart& one) { return one.place.start; });
        std::size_t end = 0;
        std::erase_if(all, [&end](const LinePart& one) {
            const bool overlaps = one.place.start < end;
            end = overlaps ? end : one.place.start + one.place.units;
            return overlaps;
        });
        return std::move(result_);
    }

    const KeywordTable& words_;
    ScriptLine line_;
    LineParts result_;
};

} // namespace

const LinePart* LineParts::at(std::size_t unit) const {
    const auto part = std::ranges::find_if(all, [unit](const LinePart& one) {
        return unit >= one.place.start && unit <= one.place.start + one.place.units;
    });
    return part == all.end() ? nullptr : &*part;
}

LineParts partsOf(const LoadedProgramme& programme, std::u16string_view line) {
    return Parting(programme, line).run();
}

} // namespace tvml
