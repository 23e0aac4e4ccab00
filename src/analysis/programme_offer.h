// What the writers of a programme can say: the names that its description and its
// vocabulary offer, and what of it may stand at a place of a line.
#ifndef TVML_ANALYSIS_PROGRAMME_OFFER_H
#define TVML_ANALYSIS_PROGRAMME_OFFER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "run/events.h"

namespace tvml {

enum class OfferKind : std::uint8_t {
    character, // a letter of the programme
    marker,
    tag, // of the description
    staging,
    action,  // of a character
    setting, // of a character
    pose,
    untaken, // recognised, but written by nothing
    adverb,
    voice,
    colour,
    set,
    model,
};

// A name that scripts can use: in English, and as the vocabulary or the
// description has it. Names with an argument show one: "look at B".
struct OfferedName {
    OfferKind kind = OfferKind::action;
    std::u16string english;
    std::vector<std::u16string> otherEnglish; // ways to write it
    std::vector<std::u16string> words;
    std::vector<std::u16string_view> keys; // of the words in keyword.ini
    std::u16string letters;                // whose it is, of models and poses; empty for all
};

// All of them, in the order of the tables; of a description in alphabetical
// order.
struct ProgrammeOffer {
    std::vector<OfferedName> names;

    std::vector<OfferedName> of(OfferKind kind) const;
};

// Of the vocabulary alone.
ProgrammeOffer offerOf(const KeywordTable& words);

// Adds what the description of a run has. Give it to the run as a listener.
class OfferRecorder final : public RunListener {
public:
    explicit OfferRecorder(ProgrammeOffer& offer) : offer_(offer) {}
    void programmeRead(const Programme& programme) override;

private:
    ProgrammeOffer& offer_;
};

// A name that may stand at a place of a line, as it is written there.
struct Completion {
    OfferKind kind = OfferKind::action;
    std::u16string text;
    std::u16string english; // what it means
    std::u16string ending;  // that it wants behind it: a colon, or a bracket that is still open
};

struct Completions {
    LinePlace replaced; // what each would stand in place of
    std::vector<Completion> all;
    FileUse file = FileUse::none; // a file of this use may stand there, and no name
    std::u16string ending;        // of the file
};

// What may stand where `place` units of the line stand before it: in the language
// of what is written there already, in the vocabulary's words where nothing is.
// What is typed is not compared with it.
Completions whatMayStand(const LineReader& reader, const ProgrammeOffer& offer,
                         std::u16string_view line, std::size_t place);

} // namespace tvml

#endif
