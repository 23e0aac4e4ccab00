// Reading TVML commands. Entry: readTvml.
#include "diagnostics/tvml_commands.h"

#include <algorithm>
#include <array>

#include "diagnostics/suggestions.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

// What programmes are staged with. Others are told, since one misspelt letter
// makes a player drop the line.
constexpr std::array<std::u16string_view, 22> kTvmlObjects{
    u"camera",    u"caption", u"character", u"control", u"display", u"drawing", u"effect", u"image",
    u"light",     u"monitor", u"movie",     u"music",   u"prop",    u"set",     u"sound",  u"super",
    u"narration", u"text",    u"title",     u"audio",   u"video",   u"studio"};

struct WideRow {
    char16_t wide;
    std::u16string_view meant;
};
constexpr std::array<WideRow, 13> kWideRows{{
    {u'（', u"("},
    {u'）', u")"},
    {u'：', u":"},
    {u'＝', u"="},
    {u'，', u","},
    {u'、', u","},
    {u'“', u"\""},
    {u'”', u"\""},
    {u'＂', u"\""},
    {u'「', u"\""},
    {u'」', u"\""},
    {u'‘', u"\""},
    {u'’', u"\""},
}};

const WideRow* wideRow(char16_t unit) {
    const auto row = std::find_if(kWideRows.begin(), kWideRows.end(),
                                  [unit](const WideRow& each) { return each.wide == unit; });
    return row == kWideRows.end() ? nullptr : row;
}

bool isBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n' || unit == u'\x3000';
}

bool isNameUnit(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           (unit >= u'0' && unit <= u'9') || unit == u'_' || unit == u'$';
}

class TvmlReader {
public:
    explicit TvmlReader(std::u16string_view text) : text_(text) {}

    TvmlReading run() {
        while (!reading_.problem.has_value()) {
            skipBlanks();
            if (at_ == text_.size()) {
                break;
            }
            if (text_.substr(at_).starts_with(u"//") || !readCommand()) {
                at_ = std::min(text_.find(u'\n', at_), text_.size());
            }
        }
        return std::move(reading_);
    }

private:
    char16_t unit() const { return at_ < text_.size() ? text_[at_] : u'\0'; }
    bool is(char16_t wanted) const { return unit() == wanted; }

    void skipBlanks() {
        while (at_ < text_.size() && isBlank(text_[at_])) {
            ++at_;
        }
    }

    std::u16string_view takeName() {
        const std::size_t start = at_;
        while (at_ < text_.size() && isNameUnit(text_[at_])) {
            ++at_;
        }
        return text_.substr(start, at_ - start);
    }

    bool tell(TvmlFault fault, std::u16string_view where, std::u16string_view meant = {}) {
        reading_.problem = TvmlProblem{fault, where, meant};
        return false;
    }

    // Takes `wanted`. A form of it that is no ASCII is told; false without either.
    bool take(char16_t wanted) {
        skipBlanks();
        if (is(wanted)) {
            ++at_;
            return true;
        }
        const WideRow* const row = wideRow(unit());
        return row != nullptr && row->meant.front() == wanted &&
               tell(TvmlFault::fullWidth, text_.substr(at_, 1), row->meant);
    }
    bool failed() const { return reading_.problem.has_value(); }

    // False for what is no command, and when something is told.
    bool readCommand() {
        TvmlCommand command;
        command.name = takeName();
        if (command.name.empty()) {
            return false;
        }
        if (take(u':')) {
            command.object = command.name;
            skipBlanks();
            command.name = takeName();
        } else if (!failed() && isNameUnit(unit()) && findsBracket()) {
            return tell(TvmlFault::colonMissing, command.name);
        }
        if (failed() || command.name.empty() || !take(u'(')) {
            return false;
        }
        if (!command.object.empty() && std::find(kTvmlObjects.begin(), kTvmlObjects.end(),
                                                 command.object) == kTvmlObjects.end()) {
            return tell(TvmlFault::objectUnusual, command.object);
        }
        const bool whole = readParameters(command);
        reading_.commands.push_back(std::move(command));
        return whole;
    }

    // Whether the next word has a bracket behind it, as commands have.
    bool findsBracket() const {
        std::size_t at = at_;
        while (at < text_.size() && isNameUnit(text_[at])) {
            ++at;
        }
        while (at < text_.size() && (text_[at] == u' ' || text_[at] == u'\t')) {
            ++at;
        }
        return at < text_.size() && (text_[at] == u'(' || text_[at] == u'（');
    }

    bool readParameters(TvmlCommand& command) {
        for (bool first = true;; first = false) {
            if (take(u')')) {
                return true;
            }
            if (failed()) {
                return false;
            }
            if (!first && !take(u',')) {
                const std::size_t start = at_;
                const std::u16string_view name = takeName();
                at_ = start;
                return !failed() && !name.empty() && tell(TvmlFault::commaMissing, name);
            }
            if (!readParameter(command)) {
                return false;
            }
        }
    }

    bool readParameter(TvmlCommand& command) {
        skipBlanks();
        const std::u16string_view name = takeName();
        if (name.empty()) {
            return is(u',') && tell(TvmlFault::commaSurplus, text_.substr(at_, 1));
        }
        if (!take(u'=')) {
            const bool isValue =
                name.front() == u'$' || (name.front() >= u'0' && name.front() <= u'9');
            return !failed() && !isValue && tell(TvmlFault::equalsMissing, name);
        }
        skipBlanks();
        const WideRow* const row = wideRow(unit());
        if (row != nullptr && row->meant == u"\"") {
            return tell(TvmlFault::fullWidth, text_.substr(at_, 1), row->meant);
        }
        const std::optional<std::u16string_view> value = is(u'"') ? quotedValue() : bareValue();
        if (value.has_value()) {
            command.parameters.push_back({name, *value});
        }
        return value.has_value();
    }

    std::optional<std::u16string_view> quotedValue() {
        const std::size_t start = ++at_;
        const std::size_t lineEnd = std::min(text_.find(u'\n', start), text_.size());
        at_ = text_.find(u'"', start);
        if (at_ >= lineEnd) {
            at_ = lineEnd; // quotes that do not balance are told for the whole line
            return std::nullopt;
        }
        const std::u16string_view value = text_.substr(start, at_ - start);
        ++at_;
        const bool ends = at_ == text_.size() || isBlank(unit()) || is(u',') || is(u')') ||
                          wideRow(unit()) != nullptr;
        if (!ends) {
            const std::size_t next = std::min(text_.find(u'"', at_), lineEnd);
            tell(TvmlFault::quoteEnds, text_.substr(at_ - 1, next + 2 - at_));
            return std::nullopt;
        }
        return value;
    }

    // Up to the next comma or bracket; blanks in it are passed, unless a parameter
    // begins behind them.
    std::optional<std::u16string_view> bareValue() {
        const std::size_t start = at_;
        while (at_ < text_.size() && !is(u',') && !is(u')') && !is(u'\n') && !is(u'，') &&
               !is(u'、') && !is(u'）') && !(isBlank(unit()) && beginsParameter())) {
            ++at_;
        }
        std::size_t end = at_;
        while (end > start && isBlank(text_[end - 1])) {
            --end;
        }
        return text_.substr(start, end - start);
    }

    bool beginsParameter() const {
        std::size_t at = at_ + 1;
        const std::size_t start = at;
        while (at < text_.size() && isNameUnit(text_[at])) {
            ++at;
        }
        return at > start && at < text_.size() && text_[at] == u'=';
    }

    std::u16string_view text_;
    std::size_t at_ = 0;
    TvmlReading reading_;
};

} // namespace

TvmlReading readTvml(std::u16string_view text) {
    return TvmlReader(text).run();
}

std::vector<std::u16string> closestObjects(std::u16string_view given) {
    ClosestNames closest(given);
    for (const std::u16string_view object : kTvmlObjects) {
        closest.offer(object);
    }
    return closest.take();
}

} // namespace tvml
