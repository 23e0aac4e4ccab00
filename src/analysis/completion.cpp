// What may stand at a place of a line. Entry: whatMayStand.
//
// An unfinished command is finished with a bracket and then read as any other
// line is, so that completion knows no rule of its own.
#include "analysis/programme_offer.h"

#include <algorithm>

#include "diagnostics/suggestions.h"
#include "reading/brackets.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

constexpr std::u16string_view kBracket = u")";

class Completing {
public:
    Completing(const LineReader& reader, const ProgrammeOffer& offer, std::u16string_view line,
               std::size_t place)
        : reader_(reader), words_(reader.words()), offer_(offer),
          before_(line.substr(0, std::min(place, line.size()))),
          behind_(line.substr(before_.size())),
          english_(!trimScriptText(before_, words_).empty() && looksEnglish(before_)) {}

    Completions run() {
        LineContext context{u'Z', {}};
        reader_.read(before_, context, line_);
        replace(line_.trimmed);
        if (const TagReading* tag = line_.tag()) {
            // Its text is the writer's own, but for a file.
            result_.file = line_.file().use;
            replace(tag->value);
            return std::move(result_);
        }
        const bool opened =
            line_.content.starts_with(u'(') || words_[u"kakko"].starts(line_.content);
        if (opened) {
            completeCommand();
        } else if (line_.kind != LineKind::character) {
            offer({OfferKind::character, OfferKind::marker, OfferKind::tag});
        }
        return std::move(result_);
    }

private:
    void replace(std::u16string_view part) {
        const auto start = static_cast<std::size_t>(part.data() - before_.data());
        result_.replaced =
            part.empty() ? LinePlace{before_.size(), 0} : LinePlace{start, before_.size() - start};
    }

    // The part of the line behind `at` units of the trimmed inside of the brackets.
    void replaceInner(std::u16string_view inner, std::size_t at) {
        const auto start = static_cast<std::size_t>(inner.data() - finished_.data()) + at;
        std::size_t first = std::min(start, before_.size());
        while (first < before_.size() && words_.isBlank(before_[first])) {
            ++first;
        }
        result_.replaced = {first, before_.size() - first};
    }

    // The bracket that ends the command, unless the line has one.
    std::u16string closing() const {
        const std::u16string_view word = words_[u"toji_kakko"].textOrEmpty();
        const bool isClosed =
            behind_.find(u')') != kNone || words_[u"toji_kakko"].findUnitsIn(behind_) != kNone;
        const bool isWide = !line_.content.starts_with(u'(') && !word.empty();
        return isClosed ? u"" : std::u16string(isWide ? word.substr(0, 1) : kBracket);
    }

    // A colon as the line writes them, unless it stands there.
    std::u16string colon() const {
        const std::u16string_view word = words_[u"colon"].textOrEmpty();
        const bool isThere =
            behind_.starts_with(u':') || (!word.empty() && behind_.starts_with(word));
        return isThere ? u"" : std::u16string(english_ || word.empty() ? u":" : word);
    }

    void completeCommand() {
        const char16_t speaker = line_.speaker;
        closing_ = closing();
        finished_.assign(before_).append(kBracket);
        LineContext context{u'Z', {}};
        reader_.read(finished_, context, line_);
        const RecognizedCommand* command = line_.command();
        if (command == nullptr) {
            return;
        }
        const std::u16string_view inner = command->inner;
        const std::size_t colon = std::min(inner.find(u':'), words_[u"colon"].findUnitsIn(inner));
        const CommandSpec* row = rowBehind(command->phrase);
        if (colon != kNone && row != nullptr) {
            replaceInner(inner, colon + 1);
            return offerNames(*row);
        }
        const std::size_t separator = lastSeparator(inner);
        replaceInner(inner, separator == kNone ? 0 : separator + 1);
        if (separator != kNone) {
            return offerAdverbs(inner.substr(0, separator));
        }
        offer({OfferKind::action, OfferKind::setting, OfferKind::pose});
        if (speaker == 0) {
            offer({OfferKind::staging});
        }
    }

    std::size_t lastSeparator(std::u16string_view inner) const {
        std::size_t last = kNone;
        for (std::size_t at = 0; at < inner.size(); ++at) {
            last = startsWithSeparator(inner.substr(at), words_) ? at : last;
        }
        return last;
    }

    // The command that wants a name behind its colon, or null.
    static const CommandSpec* rowBehind(std::u16string_view phrase) {
        const auto row = std::ranges::find_if(kCommands, [phrase](const CommandSpec& one) {
            return followsColon(one.arguments) && phrase.starts_with(one.name);
        });
        return row == kCommands.end() ? nullptr : &*row;
    }

    void offerNames(const CommandSpec& row) {
        switch (row.arguments) {
        case Arguments::setName:
            return offer({OfferKind::set});
        case Arguments::voiceName:
            return offer({OfferKind::voice});
        case Arguments::modelName:
            return offer({OfferKind::model});
        case Arguments::fileName:
            result_.file = FileUse::speech;
            result_.ending = closing_;
            return;
        default:
            return;
        }
    }

    // Those that set what no earlier one of the list has set.
    void offerAdverbs(std::u16string_view given) {
        std::vector<ReadAdverb> items;
        AdverbValues values;
        const std::size_t first = findSeparator(given, words_);
        if (first != kNone) {
            parseAdverbs(dropAndTrim(given, first + 1, words_), words_, values, nullptr, &items);
        }
        for (const AdverbRow& row : kAdverbRows) {
            if ((values.*(row.field)).empty()) {
                const std::u16string_view word = words_[row.key].textOrEmpty();
                add(OfferKind::adverb, row.english, word.empty() ? row.english : word);
            }
        }
    }

    // A command that wants a name goes on behind a colon, all others are whole.
    std::u16string endingOf(OfferKind kind, std::u16string_view english) const {
        switch (kind) {
        case OfferKind::character:
        case OfferKind::marker:
        case OfferKind::tag:
            return colon();
        case OfferKind::staging:
        case OfferKind::setting:
            return wantsName(english) ? colon() : closing_;
        default:
            return closing_;
        }
    }

    static bool wantsName(std::u16string_view english) {
        return std::ranges::any_of(kCommands, [english](const CommandSpec& row) {
            return row.name == english && followsColon(row.arguments);
        });
    }

    void add(OfferKind kind, std::u16string_view english, std::u16string_view word) {
        result_.all.push_back({kind, std::u16string(english_ ? english : word),
                               std::u16string(english), endingOf(kind, english)});
    }

    void offer(std::initializer_list<OfferKind> kinds) {
        for (const OfferedName& name : offer_.names) {
            const bool wanted = std::ranges::find(kinds, name.kind) != kinds.end();
            const bool owned = name.kind == OfferKind::character || name.letters.empty() ||
                               name.letters.find(line_.actor()) != kNone;
            if (wanted && owned) {
                add(name.kind, name.english,
                    name.words.empty() ? std::u16string_view(name.english) : name.words.front());
            }
        }
    }

    const LineReader& reader_;
    const KeywordTable& words_;
    const ProgrammeOffer& offer_;
    const std::u16string_view before_;
    const std::u16string_view behind_;
    const bool english_;
    std::u16string finished_;
    std::u16string closing_;
    ScriptLine line_;
    Completions result_;
};

} // namespace

Completions whatMayStand(const LineReader& reader, const ProgrammeOffer& offer,
                         std::u16string_view line, std::size_t place) {
    return Completing(reader, offer, line, place).run();
}

} // namespace tvml
