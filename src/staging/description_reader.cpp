// Reading a filter description. Entry: DescriptionReader::readFilDescription.
//
// A problem with one element never stops the reading: the element is passed
// over, the log says so, and the defaults fill what stayed empty.
#include <algorithm>
#include <deque>
#include <unordered_map>

#include "reading/script_text.h"
#include "staging/reading_guard.h"
#include "staging/staging_description.h"
#include "staging/tvml_exception.h"

namespace tvml {

std::u16string normalizeTemplateLines(std::u16string_view text, const KeywordTable& words) {
    std::u16string result;
    result.reserve(text.size() + 1);
    while (!text.empty()) {
        const std::size_t end = text.find(u'\n');
        if (end == kNone) {
            result.append(text);
            text = {};
        } else {
            result.append(trimScriptText(text.substr(0, end), words));
            text = dropAndTrim(text, end + 1, words);
        }
        result += u'\n';
    }
    return result;
}

// One walk over one document.
class DescriptionReader::Walk {
public:
    Walk(DescriptionReader& reader, XMLParser& xml)
        : words_(reader.words_), staging_(reader.staging_), templates_(reader.templates_),
          log_(reader.log_), xml_(xml) {}

    char16_t run() {
        while (xml_.nextNode()) {
            if (xml_.nodeKind() == NodeKind::element && xml_.matchElement(u"staging", 1)) {
                readElement(xml_.elementName());
            }
        }
        if (lastCharacter_ == 0) {
            lastCharacter_ = u'B';
        }
        applyDefaults();
        return lastCharacter_;
    }

private:
    using Handler = void (Walk::*)(std::u16string_view name, std::size_t index);

    // What an element name means: the function that reads it, and which of its
    // kind the element is.
    struct Meaning {
        Handler handler;
        std::size_t index;
    };
    using Meanings = std::unordered_map<std::u16string_view, Meaning>;

    static const Meanings& meanings() {
        static const Meanings kMeanings = makeMeanings();
        return kMeanings;
    }

    static Meanings makeMeanings();

    void problem(DescriptionProblem what, std::u16string_view element) {
        const auto& tags = xml_.tags();
        const std::size_t number = xml_.elementNumber();
        log_.add(what, element, number > 0 && number <= tags.size() ? tags[number - 1] : XmlTag{});
    }

    void readElement(std::u16string_view name) {
        const auto found = meanings().find(name);
        if (found != meanings().end()) {
            (this->*found->second.handler)(name, found->second.index);
        } else {
            problem(DescriptionProblem::unknownElement, name);
        }
    }

    // The element's text without script blanks at its ends; none, with the
    // problem told, when there is no text or nothing of it is left. `label` is
    // the name in the log, `storesEmpty` whether an empty text still counts.
    std::optional<std::u16string_view> contentOf(std::u16string_view label,
                                                 bool storesEmpty = false) {
        const auto text = xml_.elementText();
        if (!text.has_value()) {
            problem(DescriptionProblem::noText, label);
            return std::nullopt;
        }
        const std::u16string_view content = trimScriptText(*text, words_);
        if (content.empty()) {
            problem(DescriptionProblem::isEmpty, label);
            return storesEmpty ? std::optional(content) : std::nullopt;
        }
        return content;
    }

    // An attribute that must be there and not be empty, as written.
    std::u16string_view attribute(const char16_t* name) const {
        return xml_.attributeValue(name).value_or(std::u16string_view{});
    }
    std::u16string_view trimmedAttribute(const char16_t* name) const {
        return trimScriptText(attribute(name), words_);
    }
    bool hasAttributes(std::initializer_list<const char16_t*> names) const {
        return std::all_of(names.begin(), names.end(),
                           [this](const char16_t* name) { return xml_.hasAttributeValue(name); });
    }

    // The letter of a character attribute; the shared key when there is none.
    char16_t characterKey(const char16_t* name) {
        if (!xml_.hasAttributeValue(name)) {
            return sharedKey;
        }
        const std::u16string_view value = trimmedAttribute(name);
        const std::u16string_view letter = characterLetterOf(value, words_);
        if (letter.empty() || letter.front() > lastCharacter_) {
            problem(DescriptionProblem::characterReplaced, value);
            return u'A';
        }
        return letter.front();
    }

    SwitchMode switchMode(std::u16string_view name, SwitchMode before) {
        const auto content = contentOf(name, true);
        if (!content.has_value()) {
            return before;
        }
        return *content == u"toggle" ? SwitchMode::toggle : SwitchMode::random;
    }

    std::u16string templateText(std::u16string_view content) const {
        return normalizeTemplateLines(content, words_);
    }

    void readNumberOfCharacters(std::u16string_view, std::size_t);
    void readPlainText(std::u16string_view name, std::size_t index);
    void readCharacterTemplate(std::u16string_view name, std::size_t index);
    void readSimpleTemplate(std::u16string_view name, std::size_t index);
    void readTwoshot(std::u16string_view name, std::size_t);
    void readTitle(std::u16string_view name, std::size_t);
    void readModel(std::u16string_view name, std::size_t);
    void readSet(std::u16string_view name, std::size_t);
    void readPose(std::u16string_view name, std::size_t);
    void readTag(std::u16string_view name, std::size_t);

    void readCharacterSwitch(std::u16string_view name, std::size_t index) {
        staging_.characterModes[index] = switchMode(name, staging_.characterModes[index]);
    }
    void readSimpleSwitch(std::u16string_view name, std::size_t index) {
        staging_.simpleModes[index] = switchMode(name, staging_.simpleModes[index]);
    }
    void readTwoshotSwitch(std::u16string_view name, std::size_t) {
        staging_.twoshotMode = switchMode(name, staging_.twoshotMode);
    }
    void readTitleSwitch(std::u16string_view name, std::size_t) {
        staging_.titleMode = switchMode(name, staging_.titleMode);
    }

    void readSetLine(std::u16string_view line);
    bool cutField(std::u16string_view& line, std::u16string_view& field) const;
    void offerCurrentModel(char16_t letter, std::u16string_view name, bool preferred);
    void applyDefaults();

    const KeywordTable& words_;
    StagingDescription& staging_;
    TemplateDb& templates_;
    DiagnosticLog& log_;
    XMLParser& xml_;
    char16_t lastCharacter_ = 0;
};

DescriptionReader::Walk::Meanings DescriptionReader::Walk::makeMeanings() {
    // The names of switch elements are made here once and live with the map.
    static std::deque<std::u16string> switchNames;
    Meanings meanings;
    const auto add = [&](std::u16string_view name, Handler handler, std::size_t index = 0) {
        meanings.emplace(name, Meaning{handler, index});
    };
    const auto addSwitch = [&](std::u16string_view name, Handler handler, std::size_t index = 0) {
        add(switchNames.emplace_back(std::u16string(name) + u"_switch"), handler, index);
    };
    for (std::size_t i = 0; i < kPlainElements.size(); ++i) {
        add(kPlainElements[i].name, &Walk::readPlainText, i);
    }
    for (std::size_t i = 0; i < kCharacterElements.size(); ++i) {
        add(kCharacterElements[i].name, &Walk::readCharacterTemplate, i);
        addSwitch(kCharacterElements[i].name, &Walk::readCharacterSwitch, i);
    }
    for (std::size_t i = 0; i < kSimpleElements.size(); ++i) {
        add(kSimpleElements[i].name, &Walk::readSimpleTemplate, i);
        addSwitch(kSimpleElements[i].name, &Walk::readSimpleSwitch, i);
    }
    add(u"numofchar", &Walk::readNumberOfCharacters);
    add(kTwoshotElement, &Walk::readTwoshot);
    addSwitch(kTwoshotElement, &Walk::readTwoshotSwitch);
    add(kTitleElement, &Walk::readTitle);
    addSwitch(kTitleElement, &Walk::readTitleSwitch);
    add(u"model_for_char", &Walk::readModel);
    add(u"set", &Walk::readSet);
    add(u"pose", &Walk::readPose);
    add(u"tag", &Walk::readTag);
    return meanings;
}

void DescriptionReader::Walk::readNumberOfCharacters(std::u16string_view name, std::size_t) {
    lastCharacter_ = u'B';
    const auto text = xml_.elementText();
    if (!text.has_value()) {
        problem(DescriptionProblem::noNumber, name);
        return;
    }
    for (std::int32_t number = 1; number <= 26; ++number) {
        if (*text == decimalText(number)) {
            lastCharacter_ = static_cast<char16_t>(u'A' + number - 1);
            return;
        }
    }
    problem(DescriptionProblem::badNumber, *text);
}

void DescriptionReader::Walk::readPlainText(std::u16string_view name, std::size_t index) {
    const auto content = contentOf(name, true);
    if (content.has_value()) {
        staging_.plainTexts[index] = templateText(*content);
        staging_.plainElements[index] = xml_.elementNumber();
    }
}

void DescriptionReader::Walk::readCharacterTemplate(std::u16string_view name, std::size_t index) {
    const auto content = contentOf(name);
    if (content.has_value() &&
        !templates_.characters[index].registerTemplate(
            characterKey(u"character"), templateText(*content), xml_.elementNumber())) {
        problem(DescriptionProblem::notRegistered, name);
    }
}

void DescriptionReader::Walk::readSimpleTemplate(std::u16string_view name, std::size_t index) {
    const auto content = contentOf(name);
    if (content.has_value() &&
        !templates_.simples[index].registerTemplate(templateText(*content), xml_.elementNumber())) {
        problem(DescriptionProblem::notRegistered, name);
    }
}

void DescriptionReader::Walk::readTwoshot(std::u16string_view name, std::size_t) {
    const auto content = contentOf(name);
    if (!content.has_value()) {
        return;
    }
    std::u16string key(1, sharedKey);
    if (hasAttributes({u"character1", u"character2"})) {
        const char16_t first = characterKey(u"character1");
        const char16_t second = characterKey(u"character2");
        if (first != second) {
            key = {std::min(first, second), std::max(first, second)};
        }
    }
    if (!templates_.twoshot.registerTemplate(key, templateText(*content), xml_.elementNumber())) {
        problem(DescriptionProblem::notRegistered, name);
    }
}

void DescriptionReader::Walk::readTitle(std::u16string_view name, std::size_t) {
    const auto content = contentOf(name);
    if (!content.has_value()) {
        return;
    }
    if (!hasAttributes(
            {u"titlefont_ja", u"titlefont_en", u"subtitlefont_ja", u"subtitlefont_en"})) {
        problem(DescriptionProblem::titleAttributesMissing, name);
        return;
    }
    TitleFonts fonts{std::u16string(trimmedAttribute(u"titlefont_ja")),
                     std::u16string(trimmedAttribute(u"titlefont_en")),
                     std::u16string(trimmedAttribute(u"subtitlefont_ja")),
                     std::u16string(trimmedAttribute(u"subtitlefont_en"))};
    if (!fonts.complete()) {
        problem(DescriptionProblem::titleAttributesInvalid, name);
        return;
    }
    if (!templates_.title.registerTemplate(templateText(*content), std::move(fonts),
                                           xml_.elementNumber())) {
        problem(DescriptionProblem::notRegistered, name);
    }
}

void DescriptionReader::Walk::readModel(std::u16string_view name, std::size_t) {
    if (!hasAttributes({u"character", u"japanesename", u"englishname", u"default"})) {
        problem(DescriptionProblem::modelAttributesMissing, name);
        return;
    }
    const auto content = contentOf(u"model");
    if (!content.has_value()) {
        return;
    }
    const std::u16string_view japanese = trimmedAttribute(u"japanesename");
    const std::u16string_view english = trimmedAttribute(u"englishname");
    if (japanese.empty() || english.empty()) {
        problem(DescriptionProblem::modelAttributesInvalid, name);
        return;
    }
    const auto valueOr = [this](const char16_t* attributeName, std::u16string_view fallback) {
        const std::u16string_view value = trimmedAttribute(attributeName);
        return std::u16string(value.empty() ? fallback : value);
    };
    const auto model = std::make_shared<const CharacterModel>(CharacterModel{
        templateText(*content), valueOr(u"hiplevel", u"N/A"), valueOr(u"hipposition", u"N/A"),
        valueOr(u"lipsync", u"1.0"), valueOr(u"speed", u"1.0"), valueOr(u"pitch", u"1.0"),
        valueOr(u"intonation", u"1.0"), valueOr(u"volume", u"1.0"), xml_.elementNumber()});
    // A model may belong to a letter that the programme does not use.
    const std::u16string_view letterName =
        characterLetterOf(trimmedAttribute(u"character"), words_);
    const char16_t letter = letterName.empty() ? u'A' : letterName.front();
    const bool preferred = trimmedAttribute(u"default") == u"yes";
    staging_.modelsByJapaneseName[letter].insert_or_assign(std::u16string(japanese), model);
    offerCurrentModel(letter, japanese, preferred);
    staging_.modelsByEnglishName[letter].insert_or_assign(std::u16string(english), model);
    offerCurrentModel(letter, english, preferred);
}

void DescriptionReader::Walk::offerCurrentModel(char16_t letter, std::u16string_view name,
                                                bool preferred) {
    const auto [entry, isFirst] = staging_.currentModel.try_emplace(letter, name);
    if (!isFirst && preferred) {
        entry->second = name;
    }
}

void DescriptionReader::Walk::readSet(std::u16string_view name, std::size_t) {
    const auto text = xml_.elementText();
    if (!text.has_value()) {
        return;
    }
    std::u16string_view content = trimScriptText(*text, words_);
    if (content.empty()) {
        problem(DescriptionProblem::isEmpty, name);
    }
    while (!content.empty()) {
        const std::size_t end = content.find(u'\n');
        readSetLine(trimScriptText(content.substr(0, end), words_));
        content = end == kNone ? std::u16string_view{} : content.substr(end + 1);
    }
}

// Cuts the part of `line` before the first separator off into `field`.
bool DescriptionReader::Walk::cutField(std::u16string_view& line,
                                       std::u16string_view& field) const {
    const Word& separator = words_[u"colon_colon"];
    const std::size_t found = separator.findIn(line);
    if (found == kNone) {
        return false;
    }
    field = trimScriptText(line.substr(0, found), words_);
    line = dropAndTrim(line, found + separator.size(), words_);
    return true;
}

void DescriptionReader::Walk::readSetLine(std::u16string_view line) {
    const std::u16string_view whole = line;
    std::u16string_view japanese;
    std::u16string_view english;
    if (!cutField(line, japanese) || !cutField(line, english) || japanese.empty() ||
        english.empty() || line.empty()) {
        if (!whole.empty()) {
            problem(DescriptionProblem::setLineSkipped, whole);
        }
        return;
    }
    const auto [entry, isNew] = staging_.setFiles.try_emplace(std::u16string(japanese), line);
    if (!isNew) {
        problem(DescriptionProblem::setNameTaken, japanese);
        return;
    }
    if (!staging_.setEnglishFiles.try_emplace(std::u16string(english), line).second) {
        staging_.setFiles.erase(entry);
        problem(DescriptionProblem::setNameTaken, english);
        return;
    }
    staging_.setEnglishNames.try_emplace(std::u16string(japanese), english);
}

void DescriptionReader::Walk::readPose(std::u16string_view name, std::size_t) {
    const auto content = contentOf(name);
    if (!content.has_value()) {
        return;
    }
    if (!hasAttributes({u"japanesename", u"englishname"})) {
        problem(DescriptionProblem::noText, name);
        return;
    }
    const std::u16string english(attribute(u"englishname"));
    staging_.poseNames.insert_or_assign(std::u16string(attribute(u"japanesename")), english);
    staging_.poseTemplates[english].insert_or_assign(
        characterKey(u"character"), PoseText{templateText(*content), xml_.elementNumber()});
}

void DescriptionReader::Walk::readTag(std::u16string_view name, std::size_t) {
    const auto content = contentOf(name);
    if (!content.has_value()) {
        return;
    }
    if (!hasAttributes({u"japanesename", u"englishname"})) {
        problem(DescriptionProblem::noText, name);
        return;
    }
    const std::u16string_view japanese = attribute(u"japanesename");
    const std::u16string_view english = attribute(u"englishname");
    LeadingNames& names = staging_.tags.tagNames;
    const auto [entry, isNew] = names.try_emplace(std::u16string(japanese), english);
    if (!isNew) {
        problem(DescriptionProblem::tagNameTaken, japanese);
        return;
    }
    if (!staging_.tags.tagTexts.try_emplace(std::u16string(english), templateText(*content))
             .second) {
        names.erase(entry);
        problem(DescriptionProblem::tagNameTaken, english);
        return;
    }
    staging_.tagElements.emplace(english, xml_.elementNumber());
}

void DescriptionReader::Walk::applyDefaults() {
    const auto orRandom = [](SwitchMode& mode) {
        mode = mode == SwitchMode::unset ? SwitchMode::random : mode;
    };
    std::for_each(staging_.characterModes.begin(), staging_.characterModes.end(), orRandom);
    std::for_each(staging_.simpleModes.begin(), staging_.simpleModes.end(), orRandom);
    orRandom(staging_.twoshotMode);
    orRandom(staging_.titleMode);

    for (std::size_t i = 0; i < kCharacterElements.size(); ++i) {
        TemplateCollection& collection = templates_.characters[i];
        if (collection.variantsOf(sharedKey) == nullptr) {
            collection.registerTemplate(sharedKey,
                                        std::u16string(kCharacterElements[i].defaultText));
        }
    }
    if (templates_.twoshot.variantsOf(std::u16string_view(&sharedKey, 1)) == nullptr) {
        templates_.twoshot.registerTemplate(std::u16string_view(&sharedKey, 1),
                                            std::u16string(kTwoshotDefault));
    }
    for (std::size_t i = 0; i < kSimpleElements.size(); ++i) {
        if (templates_.simples[i].size() == 0) {
            templates_.simples[i].registerTemplate(
                std::u16string(defaultTextOf(kSimpleElements[i])));
        }
    }
    if (templates_.title.size() == 0) {
        const std::u16string japanese(words_[u"ms_mincho"].textOrEmpty());
        const std::u16string english(kTitleFontEnglish);
        templates_.title.registerTemplate(std::u16string(BuiltinStaging::titleCard()),
                                          {japanese, english, japanese, english});
    }
    for (std::size_t i = 0; i < kPlainElements.size(); ++i) {
        if (staging_.plainTexts[i].empty()) {
            staging_.plainTexts[i] = defaultTextOf(kPlainElements[i]);
            staging_.plainElements[i] = 0;
        }
    }
}

DescriptionReader::DescriptionReader(const KeywordTable& words, const platform::Platform& platform,
                                     StagingDescription& staging, TemplateDb& templates,
                                     DiagnosticLog& log)
    : words_(words), platform_(platform), staging_(staging), templates_(templates), log_(log) {}

char16_t DescriptionReader::readFilDescription(std::u16string_view description) {
    return readFilDescription(guarded(words_[u"fail_create_xmlparser"], platform_, __LINE__,
                                      [&] { return parseXml(description); }));
}

char16_t DescriptionReader::readFilDescription(std::shared_ptr<const XmlDocument> parsed) {
    return guarded(words_[u"fail_analyze_xml"], platform_, __LINE__, [&] {
        XMLParser xml(std::move(parsed));
        const char16_t lastCharacter = Walk(*this, xml).run();
        if (xml.error().has_value()) {
            log_.add(DescriptionProblem::xmlError, xml.error()->message,
                     {xml.error()->offset, 0, 0});
        }
        return lastCharacter;
    });
}

} // namespace tvml
