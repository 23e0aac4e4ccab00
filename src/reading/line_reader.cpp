// Kind, speaker and tag of a line. Entry: LineReader::read; commands and talk are
// read in files of their own.
#include "reading/line_reader.h"

#include <algorithm>
#include <functional>

#include "reading/brackets.h"
#include "reading/command_reader.h"
#include "reading/script_text.h"
#include "reading/talk_reader.h"

namespace tvml {
namespace {

const ColourSpec* findColour(std::u16string_view name, const KeywordTable& words) {
    const auto found = std::find_if(kColours.begin(), kColours.end(), [&](const ColourSpec& row) {
        return words[row.word].equals(name) || name == row.word.name();
    });
    return found == kColours.end() ? nullptr : &*found;
}

bool isInside(std::u16string_view outer, std::u16string_view part) {
    const std::less_equal<> notAfter;
    return part.data() != nullptr && notAfter(outer.data(), part.data()) &&
           notAfter(part.data() + part.size(), outer.data() + outer.size());
}

std::size_t offsetIn(std::u16string_view outer, std::u16string_view part) {
    return static_cast<std::size_t>(part.data() - outer.data());
}

} // namespace

// ---- what was read

const LineProblem* ScriptLine::findProblem(ScriptProblem what) const {
    const auto found = std::find_if(problems.begin(), problems.end(),
                                    [what](const LineProblem& one) { return one.what == what; });
    return found == problems.end() ? nullptr : &*found;
}

TakenBy ScriptLine::takenBy() const {
    if (part_ == Part::tag) {
        return tag_.english.empty() ? TakenBy::nothing : TakenBy::tag;
    }
    if (part_ != Part::command || !command_.taken) {
        return TakenBy::nothing;
    }
    return command_.spec == nullptr                 ? TakenBy::pose
           : command_.spec->taker == Taker::staging ? TakenBy::staging
                                                    : TakenBy::character;
}

std::u16string_view ScriptLine::takenName() const {
    switch (takenBy()) {
    case TakenBy::nothing:
        return {};
    case TakenBy::tag:
        return tag_.english;
    case TakenBy::pose:
        return command_.pose;
    case TakenBy::staging:
    case TakenBy::character:
        return command_.spec->name;
    }
    return {};
}

ScriptLine::NamedFile ScriptLine::file() const {
    if (part_ == Part::tag && tag_.marker.has_value()) {
        return {specOf(*tag_.marker).use, tag_.value};
    }
    const bool plays = part_ == Part::command && command_.spec != nullptr &&
                       command_.spec->action == Action::playSoundFile;
    return plays ? NamedFile{FileUse::speech, command_.name} : NamedFile{};
}

std::optional<LinePlace> ScriptLine::placeOf(std::u16string_view part) const {
    if (part_ == Part::command && isInside(command_.phrase, part)) {
        part = command_.sourceOf(part);
    } else if (isInside(copy_, part)) {
        const std::size_t start = offsetIn(copy_, part);
        part = copied_.substr(std::min(start, copied_.size()), part.size());
    }
    return isInside(text, part) ? std::optional(LinePlace{offsetIn(text, part), part.size()})
                                : std::nullopt;
}

// ---- the line

void LineReader::read(std::u16string_view text, const LineContext& context, ScriptLine& line,
                      LineHints hints) const {
    line.text = text;
    line.trimmed = text;
    line.kind = kindOf(line.trimmed);
    line.part_ = ScriptLine::Part::none;
    line.speakerMark = {};
    line.speaker = 0;
    line.content = line.trimmed;
    line.problems.clear();
    line.copy_.clear();
    switch (line.kind) {
    case LineKind::empty:
        return;
    case LineKind::tag:
        return readTag(line);
    case LineKind::character:
        readSpeaker(context.lastCharacter, line);
        break;
    case LineKind::other:
        break;
    }
    const bool bracketed = isBracketed(line.content, words_);
    if (bracketed && !isCaptionCommand(line.content, words_)) {
        return CommandReader(*this, context, line).read();
    }
    if (bracketed) {
        line.problem(ScriptProblem::captionMakesTalk, line.content);
    }
    TalkReader(words_, line).read(!hints.isPlain);
}

// Takes the letter and the colon off the line. A letter that the programme does
// not have is "A".
void LineReader::readSpeaker(char16_t lastCharacter, ScriptLine& line) const {
    line.speakerMark = line.trimmed.substr(0, 1);
    line.content = dropAndTrim(dropAndTrim(line.trimmed, 1, words_), 1, words_);
    const char16_t letter = words_.letterOf(line.speakerMark.front());
    const bool known = letter != 0 && letter <= lastCharacter;
    line.speaker = known ? letter : u'A';
    if (!known) {
        line.problem(ScriptProblem::speakerReplaced, line.speakerMark);
    }
}

// ---- tags

void LineReader::readTag(ScriptLine& line) const {
    line.part_ = ScriptLine::Part::tag;
    TagReading& tag = line.tag_;
    tag = {};
    if (readDeclaredTag(line)) {
        return;
    }
    for (const Marker marker : kMarkerOrder) {
        const MarkerSpelling* spelling = markerSpelling(marker, line.trimmed, words_);
        if (spelling == nullptr) {
            continue;
        }
        const std::size_t written =
            spelling->english.empty() ? words_[spelling->word].size() : spelling->english.size();
        tag.name = line.trimmed.substr(0, written);
        tag.english = specOf(marker).name;
        tag.marker = marker;
        if (marker == Marker::super) {
            return readSuper(spelling->units, line);
        }
        tag.value = dropAndTrim(dropAndTrim(line.trimmed, spelling->units, words_), 1, words_);
        return;
    }
    line.problem(ScriptProblem::tagUntaken);
}

bool LineReader::readDeclaredTag(ScriptLine& line) const {
    const DeclaredTags& tags = names_.tags;
    const auto takenFrom = [&](const LeadingNames& names, auto english) {
        ColonBehind colonBehind(line.trimmed, words_);
        return names.visitStarting(line.trimmed, [&](const LeadingNames::Entry& entry) {
            if (!colonBehind(entry.first.size())) {
                return false;
            }
            const auto text = tags.tagTexts.find(entry.*english);
            if (text == tags.tagTexts.all().end()) {
                return false;
            }
            line.tag_.name = line.trimmed.substr(0, entry.first.size());
            line.tag_.english = text->first;
            line.tag_.value = dropAndTrim(colonBehind.colon(), 1, words_);
            return true;
        });
    };
    return takenFrom(tags.tagNames, &LeadingNames::Entry::second) ||
           takenFrom(tags.tagTexts, &LeadingNames::Entry::first);
}

// A super keeps its blanks: a letter at the end saves the trailing ones from
// trimming, and only the marker and its colon go at the front.
void LineReader::readSuper(std::size_t units, ScriptLine& line) const {
    line.copied_ = line.text;
    line.copy_.assign(line.text) += u'a';
    std::u16string_view value = dropAndTrim(trimScriptText(line.copy_, words_), units, words_);
    value.remove_suffix(value.empty() ? 0 : 1);
    value = dropUnits(value, 1);
    TagReading& tag = line.tag_;
    tag.value = value;
    if (!endsWithClosingBracket(value, words_)) {
        return;
    }
    const std::u16string_view inner = value.substr(0, value.size() - 1);
    const std::size_t open = findLastOpeningBracket(inner, words_);
    if (open == kNone) {
        return;
    }
    tag.colour = dropAndTrim(inner, open + 1, words_);
    tag.colourSpec = findColour(tag.colour, words_);
    if (tag.colourSpec != nullptr) {
        tag.value = inner.substr(0, open);
    } else {
        line.problem(ScriptProblem::colourUnknown, tag.colour);
    }
}

} // namespace tvml
