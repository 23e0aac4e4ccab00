// What a filter description says about the staging of a programme.
#ifndef TVML_STAGING_STAGING_DESCRIPTION_H
#define TVML_STAGING_STAGING_DESCRIPTION_H

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "reading/programme_names.h"
#include "staging/staging_elements.h"
#include "staging/template_db.h"
#include "staging/xml_parser.h"
#include "vocabulary/keyword_table.h"

namespace tvml {

// A character's appearance and voice. A missing hip value is "N/A".
struct CharacterModel {
    std::u16string text; // TVML that sets the model up
    std::u16string hiplevel;
    std::u16string hipposition;
    std::u16string lipsync;
    std::u16string speed;
    std::u16string pitch;
    std::u16string intonation;
    std::u16string volume;
    std::size_t element = 0; // number of its XML element
};

// The text of a pose and the number of its XML element.
struct PoseText {
    std::u16string text;
    std::size_t element = 0;
};

// Models of one character by name. The record belongs to both of its names.
using ModelsByName = std::map<std::u16string, std::shared_ptr<const CharacterModel>, std::less<>>;
using ModelTable = std::map<char16_t, ModelsByName>;

struct StagingDescription final : ProgrammeNames {
    std::array<std::u16string, kPlainElements.size()> plainTexts;
    std::array<std::size_t, kPlainElements.size()> plainElements{}; // 0 for built-in texts
    std::array<SwitchMode, kCharacterElements.size()> characterModes{};
    std::array<SwitchMode, kSimpleElements.size()> simpleModes{};
    SwitchMode twoshotMode = SwitchMode::unset;
    SwitchMode titleMode = SwitchMode::unset;

    ModelTable modelsByJapaneseName;
    ModelTable modelsByEnglishName;
    std::map<char16_t, std::u16string> currentModel; // letter -> name of its current model

    TextMap setFiles;        // Japanese set name -> file
    TextMap setEnglishFiles; // English set name -> file
    TextMap setEnglishNames; // Japanese set name -> English set name

    std::map<std::u16string, std::map<char16_t, PoseText>, std::less<>> poseTemplates;

    std::map<std::u16string, std::size_t, std::less<>> tagElements; // English name -> number

    std::u16string& plain(PlainElement element) { return plainTexts[indexOf(element)]; }
    const std::u16string& plain(PlainElement element) const { return plainTexts[indexOf(element)]; }

    // The name of the letter's current model, empty when it has none.
    std::u16string_view currentModelName(char16_t letter) const;

    // A model of the letter in one of the two tables, or null.
    static const CharacterModel* modelIn(const ModelTable& table, char16_t letter,
                                         std::u16string_view name);

    // The model by Japanese name, else by English name, or null.
    const CharacterModel* findModel(char16_t letter, std::u16string_view name) const;

    // The letter's current model, or null when it has none.
    const CharacterModel* currentModelOf(char16_t letter) const;

    // The pose's text for a letter, else for all characters; null when `name`
    // is no pose or has no text for the letter.
    const PoseText* findPose(std::u16string_view name, char16_t letter) const;

    bool hasPose(std::u16string_view name, char16_t letter) const override;
    std::u16string_view setNamed(std::u16string_view name) const override;
    bool hasModel(std::u16string_view name, char16_t letter) const override;
    bool wearsModel(char16_t letter) const override;
};

// The template collections, one per template element.
struct TemplateDb {
    std::array<TemplateCollection, kCharacterElements.size()> characters;
    std::array<SimpleTemplateCollection, kSimpleElements.size()> simples;
    PairTemplateCollection twoshot;
    TitleTemplateCollection title;

    TemplateCollection& of(CharacterElement element) { return characters[indexOf(element)]; }
    SimpleTemplateCollection& of(SimpleElement element) { return simples[indexOf(element)]; }
};

// What a description's element has wrong with it.
enum class DescriptionProblem : std::uint8_t {
    noNumber,      // <numofchar> without text
    badNumber,     // <numofchar> with a text that is no number of characters
    noText,        // an element without text content
    isEmpty,       // a content of nothing but blanks
    notRegistered, // a collection refused a variant
    titleAttributesMissing,
    titleAttributesInvalid,
    modelAttributesMissing,
    modelAttributesInvalid,
    sharedTalkNotRegistered,
    setLineSkipped,    // a line of <set> without two separators or with an empty field
    setNameTaken,      // a set name that an earlier line has
    tagNameTaken,      // a tag name that an earlier <tag> has
    characterReplaced, // a character attribute that is read as "A"
    unknownElement,    // an element under <staging> that has no meaning
    xmlError,          // the XML ended here
};

// The problems of one reading, in document order.
class DiagnosticLog {
public:
    struct Entry {
        DescriptionProblem problem;
        std::u16string element; // its name, or the detail of other problems
        XmlTag tag{};           // of the element, or without length where the XML ended
    };

    void add(DescriptionProblem problem, std::u16string_view element, XmlTag tag) {
        entries_.push_back({problem, std::u16string(element), tag});
    }
    const std::vector<Entry>& entries() const { return entries_; }

    // The TVML comment line of an entry; empty for problems that have none.
    static std::u16string line(const Entry& entry);

private:
    std::vector<Entry> entries_;
};

// Reads the description text, fills `staging` and `templates` (both must be
// new) and returns the programme's last character. A failure of the XML
// machinery raises a TvmlException; what was read before stays.
class DescriptionReader {
public:
    DescriptionReader(const KeywordTable& words, const platform::Platform& platform,
                      StagingDescription& staging, TemplateDb& templates, DiagnosticLog& log);

    char16_t readFilDescription(std::u16string_view description);
    char16_t readFilDescription(std::shared_ptr<const XmlDocument> parsed);

private:
    class Walk;

    const KeywordTable& words_;
    const platform::Platform& platform_;
    StagingDescription& staging_;
    TemplateDb& templates_;
    DiagnosticLog& log_;
};

// Every line trimmed of script blanks and ended by one line feed, nothing after
// the last one. Empty lines stay.
std::u16string normalizeTemplateLines(std::u16string_view text, const KeywordTable& words);

} // namespace tvml

#endif
