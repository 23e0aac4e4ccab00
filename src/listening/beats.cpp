// Entry: BeatRecorder.
#include "listening/beats.h"

#include <charconv>

#include "listening/script_statistics.h"

namespace tvml {
namespace {

// What a player takes for one move of a character or a camera at speed 1.0, about.
constexpr double kMoveSeconds = 1;

double numberOf(std::u16string_view text, double fallback) {
    const std::string digits(text.begin(), text.end());
    double value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return read.ec == std::errc() && value > 0 ? value : fallback;
}

BeatKind kindOf(Marker marker) {
    switch (marker) {
    case Marker::title:
    case Marker::subtitle:
        return BeatKind::title;
    case Marker::rightSuper:
    case Marker::leftSuper:
    case Marker::super:
        return BeatKind::super;
    case Marker::mainImage:
    case Marker::subImage:
    case Marker::bgImage:
    case Marker::rightImage:
    case Marker::leftImage:
        return BeatKind::picture;
    case Marker::music:
        return BeatKind::sound;
    case Marker::embeddedTvml:
        return BeatKind::embedded;
    }
    return BeatKind::tag;
}

BeatKind kindOf(const CommandSpec& row) {
    switch (row.action) {
    case Action::playSoundFile:
        return BeatKind::recording;
    case Action::wait:
        return BeatKind::wait;
    case Action::closeUp:
    case Action::twoshot:
    case Action::trackshot:
    case Action::longshot:
        return BeatKind::shot;
    default:
        break;
    }
    if (row.name == u"wait") {
        return BeatKind::wait;
    }
    return row.taker == Taker::staging   ? BeatKind::studio
           : row.taker == Taker::setting ? BeatKind::setting
                                         : BeatKind::action;
}

// Moves take their time by their speed, counted ones as often; waits are exact;
// all else takes none. How long a recording is, only the player knows.
void measure(const RecognizedCommand& command, Beat& beat) {
    const double count = numberOf(command.number, 1);
    if (beat.kind == BeatKind::wait) {
        beat.seconds = count;
        beat.isEstimate = false;
    } else if (beat.kind == BeatKind::action || beat.kind == BeatKind::shot) {
        const bool steps = command.spec != nullptr && command.spec->arguments == Arguments::steps;
        beat.seconds = kMoveSeconds * (steps ? count : 1) / numberOf(command.adverbs.speed, 1);
    }
    beat.blocks = command.adverbs.blocking != u"no";
}

} // namespace

void BeatRecorder::lineConverted(const ScriptLine& line, const LineOutcome& outcome) {
    Beat beat;
    beat.line = outcome.number;
    beat.name = line.takenName();
    if (line.talk() != nullptr) {
        addSpeech(line, outcome, std::move(beat));
    } else if (line.takenBy() == TakenBy::tag) {
        addTag(line, std::move(beat));
    } else if (line.takenBy() != TakenBy::nothing) {
        addCommand(line, std::move(beat));
    }
}

void BeatRecorder::addTag(const ScriptLine& line, Beat beat) {
    const TagReading& tag = *line.tag();
    beat.kind = tag.marker.has_value() ? kindOf(*tag.marker) : BeatKind::tag;
    beat.text = tag.value;
    beat.isOffline = isOffline_;
    beats_.push_back(std::move(beat));
}

void BeatRecorder::addCommand(const ScriptLine& line, Beat beat) {
    const RecognizedCommand& command = *line.command();
    const TakenBy by = line.takenBy();
    beat.kind = command.spec != nullptr ? kindOf(*command.spec) : BeatKind::action;
    beat.who = by == TakenBy::staging ? command.letters[0] : line.actor();
    beat.text = command.name;
    measure(command, beat);
    if (by == TakenBy::staging && (beat.name == u"offline" || beat.name == u"online")) {
        isOffline_ = beat.name == u"offline";
    }
    beat.isOffline = isOffline_;
    beats_.push_back(std::move(beat));
}

void BeatRecorder::addSpeech(const ScriptLine& line, const LineOutcome& outcome, Beat beat) {
    if (outcome.spoken.empty()) {
        return;
    }
    beat.who = line.actor();
    beat.text = line.talk()->speech;
    beat.blocks = line.talk()->blocking;
    beat.isOffline = isOffline_;
    for (const SpokenPiece& piece : outcome.spoken) {
        beat.seconds += speakingSeconds(piece.speech, piece.speed);
    }
    beats_.push_back(std::move(beat));
}

} // namespace tvml
