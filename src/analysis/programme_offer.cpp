// Names of the vocabulary and of a description. Entries: offerOf, OfferRecorder.
#include "analysis/programme_offer.h"

#include <algorithm>
#include <array>

#include "reading/script_text.h"

namespace tvml {
namespace {

void addWord(OfferedName& name, const KeywordTable& words, Key key,
             std::u16string_view before = {}) {
    name.keys.push_back(key.name());
    if (words[key].loaded()) {
        name.words.push_back(std::u16string(before).append(words[key].textOrEmpty()));
    }
}

OfferKind kindOf(Taker taker) {
    switch (taker) {
    case Taker::staging:
        return OfferKind::staging;
    case Taker::character:
        return OfferKind::action;
    case Taker::setting:
        return OfferKind::setting;
    case Taker::voice:
        return OfferKind::voice;
    case Taker::nobody:
        return OfferKind::untaken;
    }
    return OfferKind::untaken;
}

// What stands before the word of a row, as a writer would put it.
struct Sample {
    std::u16string english;
    std::u16string vocabulary;
};

Sample sampleFor(Match match, const KeywordTable& words) {
    const auto word = [&](Key key) { return std::u16string(words[key].textOrEmpty()); };
    switch (match) {
    case Match::letter:
        return {u"B", word(u"B2")};
    case Match::twoLetters:
        return {u"AB", word(u"A2") + word(u"B2")};
    case Match::number:
        return {u"3", word(u"num3")};
    case Match::equals:
    case Match::starts:
        break;
    }
    return {};
}

OfferedName nameOf(const CommandSpec& row, const KeywordTable& words) {
    const Sample sample = sampleFor(row.match, words);
    OfferedName name{kindOf(row.taker), std::u16string(row.name) + sample.english, {}, {}, {}, {}};
    if (row.match == Match::number) {
        name.english.append(u" ").append(unitOf(row.arguments)).append(u"s");
    }
    for (const RowWord& word : row.words) {
        addWord(name, words, word.key, sample.vocabulary);
    }
    return name;
}

OfferedName nameOf(const MarkerSpec& marker, const KeywordTable& words) {
    OfferedName name{OfferKind::marker, std::u16string(marker.name), {}, {}, {}, {}};
    for (const MarkerSpelling& spelling : marker.spellings) {
        if (spelling.english.empty()) {
            addWord(name, words, spelling.word);
        } else if (spelling.english != marker.name) {
            name.otherEnglish.emplace_back(spelling.english);
        }
    }
    return name;
}

// The description's other names that lead to an English one.
std::vector<std::u16string> namesFor(const TextMap& names, std::u16string_view english) {
    std::vector<std::u16string> found;
    for (const auto& [name, target] : names) {
        if (target == english && name != english) {
            found.push_back(name);
        }
    }
    return found;
}

void addModels(const StagingDescription& staging, ProgrammeOffer& offer) {
    for (const auto& [letter, models] : staging.modelsByEnglishName) {
        for (const auto& [english, model] : models) {
            OfferedName name{OfferKind::model, english, {}, {}, {}, {letter}};
            const auto japanese = staging.modelsByJapaneseName.find(letter);
            for (const auto& [other, same] : japanese->second) {
                if (same == model && other != english) {
                    name.words.push_back(other);
                }
            }
            offer.names.push_back(std::move(name));
        }
    }
}

void addPoses(const StagingDescription& staging, ProgrammeOffer& offer) {
    for (const auto& [english, texts] : staging.poseTemplates) {
        OfferedName name{
            OfferKind::pose, english, {}, namesFor(staging.poseNames, english), {}, {}};
        for (const auto& [owner, text] : texts) {
            name.letters += owner;
        }
        if (texts.contains(sharedKey)) {
            name.letters.clear();
        }
        offer.names.push_back(std::move(name));
    }
}

} // namespace

std::vector<OfferedName> ProgrammeOffer::of(OfferKind kind) const {
    std::vector<OfferedName> found;
    std::ranges::copy_if(names, std::back_inserter(found),
                         [kind](const OfferedName& name) { return name.kind == kind; });
    return found;
}

ProgrammeOffer offerOf(const KeywordTable& words) {
    ProgrammeOffer offer;
    for (const MarkerSpec& marker : kMarkers) {
        offer.names.push_back(nameOf(marker, words));
    }
    for (const CommandSpec& row : kCommands) {
        offer.names.push_back(nameOf(row, words));
    }
    for (const AdverbRow& row : kAdverbRows) {
        OfferedName name{OfferKind::adverb, std::u16string(row.english), {}, {}, {}, {}};
        addWord(name, words, row.key);
        offer.names.push_back(std::move(name));
    }
    for (const ColourSpec& colour : kColours) {
        OfferedName name{OfferKind::colour, std::u16string(colour.word.name()), {}, {}, {}, {}};
        addWord(name, words, colour.word);
        offer.names.push_back(std::move(name));
    }
    return offer;
}

void OfferRecorder::programmeRead(const Programme& programme) {
    const StagingDescription& staging = programme.staging;
    offer_ = offerOf(programme.reader.words());
    for (char16_t letter = u'A'; letter <= programme.lastCharacter; ++letter) {
        const Key form = Key::at(Key(u"A2").index() + 2 * static_cast<std::size_t>(letter - u'A'));
        OfferedName name{OfferKind::character, {letter}, {}, {}, {}, {letter}};
        addWord(name, programme.reader.words(), form);
        offer_.names.push_back(std::move(name));
    }
    for (const auto& [english, text] : staging.tags.tagTexts.all()) {
        offer_.names.push_back(
            {OfferKind::tag, english, {}, namesFor(staging.tags.tagNames.all(), english), {}, {}});
    }
    addPoses(staging, offer_);
    for (const auto& [english, file] : staging.setEnglishFiles) {
        offer_.names.push_back(
            {OfferKind::set, english, {}, namesFor(staging.setEnglishNames, english), {}, {}});
    }
    addModels(staging, offer_);
}

} // namespace tvml
