// Entry: SourceMapRecorder.
//
// The recorder keeps for every unit of the output what it comes from, as
// stretches of one origin, and follows each change that the run tells. What a
// line comes from is then read off the finished text.
#include "listening/source_map.h"

#include <algorithm>
#include <utility>

#include "filter/tvml_script.h"

namespace tvml {
namespace {

LineOrigin originOf(const TextOrigin& text) {
    if (!text.element.empty()) {
        return {text.number == 0 ? OriginKind::builtIn : OriginKind::element, text.element,
                text.number, text.line};
    }
    return {text.line == 0 ? OriginKind::filter : OriginKind::script, {}, 0, text.line};
}

} // namespace

bool SourceMap::comesFrom(std::size_t line, std::int32_t scriptLine) const {
    return std::ranges::any_of(originsOf(line), [&](std::uint32_t number) {
        return origins_[number].line == scriptLine && origins_[number].kind != OriginKind::playMark;
    });
}

// ---- stretches

void OriginTrack::push(std::vector<Stretch>& side, Stretch stretch) {
    if (stretch.units == 0) {
        return;
    }
    (&side == &before_ ? unitsBefore_ : unitsBehind_) += stretch.units;
    if (!side.empty() && side.back().origin == stretch.origin) {
        side.back().units += stretch.units;
    } else {
        side.push_back(stretch);
    }
}

void OriginTrack::append(std::size_t units, std::uint32_t origin) {
    moveTo(size());
    push(before_, {units, origin});
}

void OriginTrack::append(OriginTrack&& other) {
    for (const Stretch& stretch : other.take()) {
        append(stretch.units, stretch.origin);
    }
}

void OriginTrack::moveTo(std::size_t at) {
    const auto shift = [](std::vector<Stretch>& side, std::size_t& units, std::size_t most) {
        Stretch& last = side.back();
        const Stretch moved{std::min(most, last.units), last.origin};
        last.units -= moved.units;
        units -= moved.units;
        if (last.units == 0) {
            side.pop_back();
        }
        return moved;
    };
    while (unitsBefore_ > at) {
        push(behind_, shift(before_, unitsBefore_, unitsBefore_ - at));
    }
    while (unitsBefore_ < at && !behind_.empty()) {
        push(before_, shift(behind_, unitsBehind_, at - unitsBefore_));
    }
}

void OriginTrack::replace(std::size_t at, std::size_t removed, std::size_t inserted,
                          std::optional<std::uint32_t> origin) {
    moveTo(at);
    const std::uint32_t before = behind_.empty() ? 0 : behind_.back().origin;
    while (removed > 0 && !behind_.empty()) {
        Stretch& first = behind_.back();
        const std::size_t units = std::min(removed, first.units);
        first.units -= units;
        unitsBehind_ -= units;
        removed -= units;
        if (first.units == 0) {
            behind_.pop_back();
        }
    }
    push(before_, {inserted, origin.value_or(before)});
}

std::vector<OriginTrack::Stretch> OriginTrack::take() {
    moveTo(size());
    unitsBefore_ = 0;
    return std::exchange(before_, {});
}

// ---- listening

// The first origin is that of the filter's own lines.
SourceMapRecorder::SourceMapRecorder() {
    numberOf({});
}

std::uint32_t SourceMapRecorder::numberOf(const LineOrigin& origin) {
    const auto next = static_cast<std::uint32_t>(map_.origins_.size());
    const auto [entry, isNew] = numbers_.try_emplace(origin.key(), next);
    if (isNew) {
        map_.origins_.push_back(origin);
    }
    return entry->second;
}

// The origin of what a line writes, made when it writes something.
std::uint32_t SourceMapRecorder::originOfLine(std::int32_t line) {
    if (line != line_) {
        line_ = line;
        lineOrigin_ = static_cast<std::uint32_t>(map_.origins_.size());
        map_.origins_.push_back({OriginKind::script, {}, 0, line});
    }
    return lineOrigin_;
}

OriginTrack& SourceMapRecorder::trackOf(PlainElement part) {
    return part == PlainElement::setting   ? setting_
           : part == PlainElement::opening ? opening_
                                           : ending_;
}

void SourceMapRecorder::programmeRead(const Programme& programme) {
    using enum PlainElement;
    const StagingDescription& staging = programme.staging;
    for (const PlainElement part : {setting, opening, ending}) {
        const std::size_t number = staging.plainElements[indexOf(part)];
        trackOf(part).append(staging.plain(part).size(),
                             numberOf(originOf({kPlainElements[indexOf(part)].name, number, 0})));
    }
}

void SourceMapRecorder::outputChanged(const OutputEvent& event) {
    std::visit([this](const auto& one) { note(one); }, event);
}

void SourceMapRecorder::note(const BodyGrew& event) {
    body_.append(event.units, event.isPlayMark ? numberOf({OriginKind::playMark, {}, 0, event.line})
                                               : originOfLine(event.line));
}

void SourceMapRecorder::note(const BodyFilled& event) {
    body_.replace(body_.size() - event.fromEnd, event.removed, event.inserted,
                  originOfLine(event.line));
}

void SourceMapRecorder::note(const PartChanged& event) {
    trackOf(event.part)
        .replace(event.at, event.removed, event.inserted,
                 event.origin.has_value() ? std::optional(numberOf(originOf(*event.origin)))
                                          : std::nullopt);
}

void SourceMapRecorder::note(const Assembled& event) {
    whole_.append(event.headerUnits, numberOf({}));
    whole_.append(std::move(setting_));
    whole_.append(std::move(opening_));
    whole_.append(std::move(body_));
    if (event.hasEnding) {
        whole_.append(std::move(ending_));
    }
}

void SourceMapRecorder::note(const UnitsCut& event) {
    whole_.replace(event.at, event.units, 0, std::nullopt);
}

void SourceMapRecorder::finished(const TvmlScript& script) {
    const std::vector<OriginTrack::Stretch> stretches = whole_.take();
    auto stretch = stretches.begin();
    std::size_t left = stretch == stretches.end() ? 0 : stretch->units;
    std::vector<std::uint32_t>& used = map_.used_;
    std::size_t lineStart = 0;
    const auto addUnits = [&](std::size_t units, bool count) {
        while (units > 0 && stretch != stretches.end()) {
            if (count && std::find(used.begin() + static_cast<std::ptrdiff_t>(lineStart),
                                   used.end(), stretch->origin) == used.end()) {
                used.push_back(stretch->origin);
            }
            const std::size_t taken = std::min(units, left);
            units -= taken;
            left -= taken;
            if (left == 0 && ++stretch != stretches.end()) {
                left = stretch->units;
            }
        }
    };
    const auto endLine = [&] {
        lineStart = used.size();
        map_.starts_.push_back(lineStart);
    };
    const std::u16string text = script.text();
    std::size_t from = 0;
    for (std::size_t end = text.find(u'\n'); end != kNone; end = text.find(u'\n', from)) {
        addUnits(end - from, true);
        addUnits(1, used.size() == lineStart); // what ends a line does not write it
        endLine();
        from = end + 1;
    }
    addUnits(text.size() - from, true);
    if (used.size() > lineStart) {
        endLine(); // one without a line feed
    }
}

} // namespace tvml
