// What one conversion run owns and what its generators share.
#ifndef TVML_RUN_RUN_H
#define TVML_RUN_RUN_H

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>

#include "run/events.h"
#include "run/run_state.h"
#include "run/settings.h"
#include "staging/staging_description.h"
#include "vocabulary/keyword_table.h"
#include "vocabulary/unit_search.h"

namespace tvml {

// A character's talk template in which all is filled in but the speech, the
// caption and the wait value, and what it was filled with.
struct PreparedTalk {
    const Variant* variant = nullptr;
    const CharacterModel* model = nullptr;
    const char16_t* speed = nullptr; // the address tells speeds apart
    const Template* text = nullptr;
    bool canWait = false; // it leaves no "$" that somebody could look for
};

// Keeps such templates as long as the run: a text that was written with one may
// be wanted at its end. A template for captioned speech is another one, since it
// is filled in another way.
struct PreparedTalks {
    // The last few for each character. Variants that follow each other in turn
    // have different places, so that they do not drive each other out.
    static constexpr std::size_t kPlaces = 4;
    using Latest = std::array<PreparedTalk, kPlaces>;
    std::array<std::array<Latest, 26>, 2> latest; // by captioned, letter

    using Key = std::tuple<bool, char16_t, const Variant*, const CharacterModel*, const char16_t*>;
    std::map<Key, Template> kept;
    std::size_t units = 0; // what is kept, about
    Template unkept;       // the last one that was too much to be kept
};

struct Run {
    // `listening`, when given, hears of all that happens.
    Run(const KeywordTable& vocabulary, const TvmlIniMirvol& talkSettings,
        const Listeners* listening)
        : words(vocabulary), settings(talkSettings), listeners(listening) {
        talkSpeed.fill(u"1.0");
    }

    const KeywordTable& words;
    const TvmlIniMirvol& settings;
    const Listeners* listeners; // null when nobody asks

    RunState state;
    LineOutcome outcome; // of the line at hand; kept only for listeners
    StagingDescription staging;
    TemplateDb templates;
    RandomGenerator random;
    std::array<bool, 26> autoGesture{};             // by letter
    std::array<std::u16string_view, 26> talkSpeed;  // by letter; of a model or the settings
    std::u16string initialSetName;                  // empty until the script chooses one
    std::int32_t initialSetLine = 0;                // of the script, 0 while there is none
    std::array<const CharacterModel*, 26> models{}; // current ones by letter, null for none

    PreparedTalks preparedTalks;
    TextTemplates textTemplates; // of the description's texts that lines fill

    // Looks every character's current model up, once its tables are complete.
    void resolveModels() {
        for (const auto& [letter, name] : staging.currentModel) {
            models[slot(letter)] = staging.findModel(letter, name);
        }
    }

    static std::size_t slot(char16_t letter) { return static_cast<std::size_t>(letter - u'A'); }

    void tell(ScriptProblem what, std::u16string_view where = {}, std::u16string_view detail = {},
              const CommandSpec* command = nullptr) {
        if (listeners != nullptr) {
            outcome.problems.push_back({what, where, detail, command});
        }
    }

    void tellPartChanged(PlainElement part, std::size_t at, std::size_t removed,
                         std::size_t inserted, const std::optional<TextOrigin>& origin) const {
        if (listeners != nullptr && (removed > 0 || inserted > 0)) {
            listeners->tell(PartChanged{part, at, removed, inserted, origin});
        }
    }

    // Changes a text of the description after the last line.
    void replaceIn(PlainElement part, std::size_t at, std::size_t removed, std::u16string_view text,
                   const std::optional<TextOrigin>& origin = TextOrigin{}) {
        staging.plain(part).replace(at, removed, text);
        tellPartChanged(part, at, removed, text.size(), origin);
    }

    // A text of the description that a command writes.
    const std::u16string& use(PlainElement element) {
        tellTemplate(kPlainElements[indexOf(element)].name,
                     staging.plainElements[indexOf(element)]);
        return staging.plain(element);
    }
    void tellTemplate(std::u16string_view element, std::size_t number) {
        if (listeners != nullptr) {
            outcome.templates.push_back({element, number});
        }
    }

    // The next variant of an element, null when it has none.
    const Variant* select(CharacterElement element, char16_t letter) {
        return told(kCharacterElements[indexOf(element)].name,
                    templates.of(element).selectTemplate(
                        letter, staging.characterModes[indexOf(element)], random));
    }
    const Variant* select(SimpleElement element) {
        return told(
            kSimpleElements[indexOf(element)].name,
            templates.of(element).selectTemplate(staging.simpleModes[indexOf(element)], random));
    }
    const Variant* selectTwoshot(std::u16string_view pair) {
        return told(kTwoshotElement,
                    templates.twoshot.selectTemplate(pair, staging.twoshotMode, random));
    }
    const Variant* selectTitle(TitleFonts& fonts) {
        return told(kTitleElement,
                    templates.title.selectTemplate(staging.titleMode, random, fonts));
    }

private:
    const Variant* told(std::u16string_view element, const Variant* variant) {
        if (variant == nullptr) {
            tell(ScriptProblem::templateMissing, {}, element);
        } else {
            tellTemplate(element, variant->element);
        }
        return variant;
    }
};

} // namespace tvml

#endif
