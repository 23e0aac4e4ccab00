// Where each line of a converted script comes from. The map is made by
// listening to the conversion: a run that nobody listens to pays nothing.
#ifndef TVML_LISTENING_SOURCE_MAP_H
#define TVML_LISTENING_SOURCE_MAP_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "run/events.h"

namespace tvml {

enum class OriginKind : std::uint8_t {
    filter,   // a line of the filter's own
    builtIn,  // the text that stands in for an element without one
    element,  // an element of the description
    script,   // a line of the script
    playMark, // a mark that was asked for at a line of the script
};

struct LineOrigin {
    OriginKind kind = OriginKind::filter;
    std::u16string_view element; // its name; of builtIn and element
    std::size_t number = 0;      // of the element in the description, from 1
    std::int32_t line = 0;       // of the script, from 1; 0 when none has to do with it

    auto key() const { return std::tuple(kind, element, number, line); }
};

// The origins of all lines of one output, which end with a line feed or with the
// text.
class SourceMap {
public:
    // What the line, counted from 0, comes from, in the order in which its
    // parts stand on it. Never empty.
    std::span<const std::uint32_t> originsOf(std::size_t line) const {
        return std::span(used_).subspan(starts_[line], starts_[line + 1] - starts_[line]);
    }
    const LineOrigin& origin(std::uint32_t number) const { return origins_[number]; }
    std::size_t lineCount() const { return starts_.size() - 1; }

    // The line has something that the script line wrote or asked for.
    bool comesFrom(std::size_t line, std::int32_t scriptLine) const;

private:
    friend class SourceMapRecorder;
    std::vector<LineOrigin> origins_;
    std::vector<std::uint32_t> used_;
    std::vector<std::size_t> starts_{0}; // of the lines in used_, and its size
};

// Which origin each unit of a text has that grows and changes. A change costs as
// much as there are stretches between its place and that of the last change.
class OriginTrack {
public:
    void append(std::size_t units, std::uint32_t origin);
    void append(OriginTrack&& other);

    // Without an origin the new units have that of the first removed one.
    void replace(std::size_t at, std::size_t removed, std::size_t inserted,
                 std::optional<std::uint32_t> origin);
    std::size_t size() const { return unitsBefore_ + unitsBehind_; }

    struct Stretch {
        std::size_t units;
        std::uint32_t origin;
    };
    std::vector<Stretch> take();

private:
    void moveTo(std::size_t at);
    void push(std::vector<Stretch>& side, Stretch stretch);

    // The text before the place of the last change, and from its end backwards
    // the text behind it.
    std::vector<Stretch> before_;
    std::vector<Stretch> behind_;
    std::size_t unitsBefore_ = 0;
    std::size_t unitsBehind_ = 0;
};

// Give it to the run as a listener, convert, and take the map.
class SourceMapRecorder final : public RunListener {
public:
    SourceMapRecorder();

    SourceMap take() { return std::move(map_); }

    void programmeRead(const Programme& programme) override;
    void outputChanged(const OutputEvent& event) override;
    void finished(const TvmlScript& script) override;

private:
    std::uint32_t numberOf(const LineOrigin& origin);
    std::uint32_t originOfLine(std::int32_t line);
    void note(const BodyGrew& event);
    void note(const BodyFilled& event);
    void note(const PartChanged& event);
    void note(const Assembled& event);
    void note(const UnitsCut& event);
    OriginTrack& trackOf(PlainElement part);

    SourceMap map_;
    std::map<decltype(LineOrigin().key()), std::uint32_t> numbers_; // but of lines of the body
    OriginTrack setting_;
    OriginTrack opening_;
    OriginTrack ending_;
    OriginTrack body_;
    OriginTrack whole_;
    std::int32_t line_ = 0;        // that wrote last
    std::uint32_t lineOrigin_ = 0; // of line_, when it wrote something
};

} // namespace tvml

#endif
