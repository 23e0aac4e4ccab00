// What a description has wrong. Entries: parseDescription, checkDescription,
// elementPlaces.
//
// The document is walked twice: by the reader that conversions use, whose log and
// tables tell what counts, and element by element for what the reader has no
// reason to look at, such as names that it does not know.
#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "diagnostics/description_elements.h"
#include "diagnostics/meant_words.h"
#include "diagnostics/suggestions.h"
#include "diagnostics/xml_cause.h"
#include "reading/command_recognition.h"
#include "reading/marker_spec.h"
#include "reading/script_text.h"
#include "staging/xml_reader.h"

namespace tvml {
namespace {

// An element inside an ignored one is not reported as well; this many levels up an
// ignored one is looked for.
constexpr unsigned kLevels = 4;
constexpr std::size_t kIgnoredNames = 8;

// A full-width start tag is not looked for in longer texts.
constexpr std::size_t kLongestTag = 120;

std::u16string_view upToTerminator(std::u16string_view text) {
    return text.substr(0, text.find(u'\0'));
}

bool isBlankText(std::u16string_view text) {
    return text.find_first_not_of(u" \t\r\n") == kNone;
}

template <typename Names>
std::vector<std::u16string> closestOf(std::u16string_view given, const Names& names) {
    ClosestNames closest(given);
    for (const auto& name : names) {
        closest.offer(name);
    }
    return closest.take();
}

class DescriptionCheck {
public:
    DescriptionCheck(std::u16string_view description, const KeywordTable& words,
                     const platform::Platform& platform, Language language,
                     std::shared_ptr<const XmlDocument> parsed)
        : checks_(words, upToTerminator(description), language), platform_(platform),
          commands_(words), cut_(checks_.source.text().size() < description.size()),
          parsed_(std::move(parsed)) {}

    std::vector<Diagnostic> run() {
        if (isBlankText(checks_.source.text()) && !cut_) {
            return {};
        }
        parsed_ = parsed_ != nullptr ? parsed_ : parseDescription(checks_.source.text());
        checks_.lastCharacter =
            DescriptionReader(checks_.words, platform_, staging_, templates_, log_)
                .readFilDescription(parsed_);
        walk();
        tellLog();
        if (!broken_) {
            tellWideTag();
            tellStrayText(endOfStaging());
            checkReach();
        }
        if (cut_) {
            const std::u16string_view text = checks_.source.text();
            checks_.add("F403", text.substr(text.size()));
        }
        sortByPlace(checks_.found);
        return std::move(checks_.found);
    }

private:
    const KeywordTable& words() const { return checks_.words; }

    std::u16string_view tagOf(std::size_t number) const {
        const std::vector<XmlTag>& tags = parsed_->tags;
        return number == 0 || number > tags.size() ? std::u16string_view{}
                                                   : tagAt(tags[number - 1]);
    }
    std::u16string_view tagAt(XmlTag tag) const { return checks_.source.textOf(tag); }

    // ---- the walk over the elements

    void walk() {
        XMLParser xml(parsed_);
        while (xml.nextNode()) {
            if (xml.nodeKind() == NodeKind::element) {
                visit(xml);
            }
        }
        broken_ = xml.error().has_value();
        if (!stagingSeen_ && !broken_) {
            checks_.add("D317", tagOf(1)).suggestions =
                closestOf(rootName_, std::array{std::u16string_view(u"staging")});
        }
    }

    // "＜bow＞" is text, which nobody reads outside elements. Once is enough: who
    // writes one writes all so.
    void tellWideTag() {
        if (const std::u16string_view tag = findWideTag(); !tag.empty()) {
            checks_.add("D348", tag, {tag}).suggestions = {asciiTag(tag)};
        }
    }

    static std::u16string asciiTag(std::u16string_view wide) {
        return std::u16string(u"<")
            .append(foldedText(wide.substr(1, wide.size() - 2)))
            .append(u">");
    }

    std::u16string_view findWideTag() const {
        const std::u16string_view text = checks_.source.text();
        for (std::size_t at = text.find(u'＜'); at != kNone; at = text.find(u'＜', at + 1)) {
            const std::u16string_view rest = text.substr(at, kLongestTag);
            const std::size_t end = rest.find_first_of(u"＞>", 1);
            if (end == kNone) {
                continue;
            }
            const std::u16string inner = foldedText(rest.substr(1, end - 1));
            const std::u16string_view name =
                std::u16string_view(inner).substr(0, inner.find_first_of(u" \n"));
            if (meaningOf(name).kind != ElementKind::unknown) {
                return rest.substr(0, end + 1);
            }
        }
        return {};
    }

    // Words in front of a tag, outside all elements: nobody reads them.
    void tellStrayText(std::u16string_view tag) {
        if (tag.empty()) {
            return;
        }
        const std::u16string_view text = checks_.source.text();
        const std::u16string_view before =
            text.substr(0, static_cast<std::size_t>(tag.data() - text.data()));
        const std::size_t last = before.find_last_not_of(u" \t\r\n");
        if (last == kNone || before[last] == u'>' || before[last] == u'＞' ||
            before[last] == u';') {
            return; // behind an entity there is what it stands for
        }
        const std::size_t start = before.find_last_of(u">\n", last) + 1;
        checks_.add("D352", trimScriptText(before.substr(start, last + 1 - start), words()));
    }

    std::u16string_view endOfStaging() const {
        const std::u16string_view text = checks_.source.text();
        const std::size_t end = text.rfind(u"</staging");
        return end == kNone ? std::u16string_view{} : text.substr(end, 1);
    }

    void visit(const XMLParser& xml) {
        const std::u16string_view name = xml.elementName();
        ++elements_;
        if (rootName_.empty()) {
            rootName_ = name;
        }
        if (xml.matchElement(u"staging", 1) && name == u"staging") {
            checks_.add("D346", tagOf(xml.elementNumber()));
        } else if (xml.matchElement(u"staging", 1)) {
            visitElement(xml, name);
        } else if (name == u"staging") {
            stagingSeen_ = true;
        } else if (stagingSeen_ && !isIgnored(xml)) {
            tellNested(tagOf(xml.elementNumber()), name);
            ignore(name);
        }
    }

    // An element of the system in the wrong place, or markup of a text that the
    // XML library took for an element.
    void tellNested(std::u16string_view tag, std::u16string_view name) {
        if (meaningOf(name).kind != ElementKind::unknown || tag.empty()) {
            checks_.add("D316", tag, {name});
            return;
        }
        checks_.add("D349", tag.substr(0, name.size() + 1), {name}).suggestions = {
            std::u16string(u"&lt;").append(name)};
    }

    bool isIgnored(const XMLParser& xml) const {
        for (unsigned level = 1; level <= kLevels; ++level) {
            for (const std::u16string& name : ignored_) {
                if (xml.matchElement(name, level)) {
                    return true;
                }
            }
        }
        return false;
    }

    void ignore(std::u16string_view name) {
        if (ignored_.size() == kIgnoredNames) {
            ignored_.erase(ignored_.begin());
        }
        ignored_.emplace_back(name);
    }

    void visitElement(const XMLParser& xml, std::u16string_view name) {
        ElementFacts element;
        element.name = name;
        element.meaning = meaningOf(name);
        element.tag = tagOf(xml.elementNumber());
        element.body = bodyOf(element);
        tellStrayText(element.tag);
        if (element.meaning.kind == ElementKind::unknown) {
            ignore(name); // the reader's log tells about it
            return;
        }
        const auto text = xml.elementText();
        if (text.has_value()) {
            element.text = std::u16string(*text);
        }
        if (element.meaning.kind == ElementKind::number && numberTag_.data() == nullptr) {
            numberTag_ = element.tag;
        }
        if (element.meaning.kind == ElementKind::set && !element.text.has_value()) {
            tellNoText(element.tag, name); // the reader has nothing to say about it
        }
        checkAttributes(element);
        checkElement(element);
    }

    std::u16string_view bodyOf(const ElementFacts& element) const {
        if (element.tag.empty() || element.tag.ends_with(u"/>")) {
            return element.tag.substr(element.tag.size());
        }
        const std::u16string_view text = checks_.source.text();
        const std::size_t start =
            static_cast<std::size_t>(element.tag.data() - text.data()) + element.tag.size();
        const std::size_t end = text.find(std::u16string(u"</").append(element.name), start);
        return text.substr(start, std::min(end, text.size()) - start);
    }

    void checkAttributes(const ElementFacts& element) {
        const auto known = attributesOf(element.meaning.kind);
        for (const std::u16string_view name : attributeNames(element.tag)) {
            if (std::find(known.begin(), known.end(), name) == known.end() &&
                !name.starts_with(u"xml")) {
                checks_.add("D319", name, {name, element.name}).suggestions =
                    closestOf(name, known);
            }
        }
    }

    void checkElement(const ElementFacts& element) {
        const ElementKind kind = element.meaning.kind;
        const bool hasText =
            element.text.has_value() && !trimScriptText(*element.text, words()).empty();
        if (!hasText) {
            return;
        }
        switch (kind) {
        case ElementKind::number:
        case ElementKind::set:
            break;
        case ElementKind::switching:
            checkSwitch(element);
            break;
        default:
            checkTemplate(checks_, element);
            break;
        }
        if (kind == ElementKind::twoshot) {
            checkPair(element);
        } else if (kind == ElementKind::model) {
            checkModel(element);
        } else if (kind == ElementKind::pose || kind == ElementKind::tag) {
            checkNames(element);
        }
        checkReplaced(element);
    }

    void checkSwitch(const ElementFacts& element) {
        const std::u16string_view text = trimScriptText(*element.text, words());
        if (text != u"toggle" && text != u"random") {
            std::vector<std::u16string> meant = closestOf(
                text, std::array{std::u16string_view(u"toggle"), std::u16string_view(u"random")});
            if (meant.empty()) { // who writes something wants no chance
                meant = {u"toggle", u"random"};
            }
            checks_.add("D320", placeInBody(element, text), {text, u"random"}).suggestions =
                std::move(meant);
        }
    }

    // A shot of two that belongs to one letter belongs to all pairs.
    void checkPair(const ElementFacts& element) {
        const std::u16string_view first = trimScriptText(element.attribute(u"character1"), words());
        const std::u16string_view second =
            trimScriptText(element.attribute(u"character2"), words());
        const bool one = first.empty() != second.empty();
        const bool same = !first.empty() &&
                          characterLetterOf(first, words()) == characterLetterOf(second, words());
        if (one || same) {
            checks_.add("D320", first.empty() ? second : first,
                        {first.empty() ? second : first, checks_.text(Message::pair_all)});
        }
    }

    void checkModel(const ElementFacts& element) {
        const std::u16string_view preferred = element.attribute(u"default");
        const std::u16string_view choice = trimScriptText(preferred, words());
        if (!choice.empty() && choice != u"yes" && choice != u"no") {
            const bool meansYes = choice == u"true" || choice == u"on" || choice == u"1" ||
                                  choice == u"はい" || foldedText(choice) == u"yes";
            checks_.add("D320", preferred, {choice, u"no"}).suggestions = {meansYes ? u"yes"
                                                                                    : u"no"};
        }
        checkNumbers(element);
        const std::u16string_view given = element.attribute(u"character");
        if (choice == u"yes") {
            checkDefault(element, preferred, given);
        }
        const std::u16string_view letter =
            characterLetterOf(trimScriptText(given, words()), words());
        if (letter.empty() && !given.empty()) {
            checks_.add("D320", given, {given, u"A"});
        } else if (!letter.empty() && letter.front() > checks_.lastCharacter) {
            checks_.add("D326", given, {programmeText()});
        }
    }

    // Values that a player takes for numbers; "*" leaves one open.
    void checkNumbers(const ElementFacts& element) {
        for (const std::u16string_view name : {u"hiplevel", u"hipposition", u"lipsync", u"speed",
                                               u"pitch", u"intonation", u"volume"}) {
            const std::u16string_view value = element.attribute(name);
            const std::u16string_view digits = dropUnits(value, value.starts_with(u'-') ? 1 : 0);
            const bool isNumber = digits.find_first_not_of(u"0123456789.") == kNone &&
                                  std::count(digits.begin(), digits.end(), u'.') <= 1;
            if (!value.empty() && value != u"*" && (digits.empty() || !isNumber)) {
                checks_.add("D337", value, {value, name}).suggestions = numberMeantBy(value);
            }
        }
    }

    // "1,2" and "１．２" as 1.2; nothing for what is no number in any form.
    static std::vector<std::u16string> numberMeantBy(std::u16string_view value) {
        std::u16string meant = foldedText(value);
        std::replace(meant.begin(), meant.end(), u',', u'.');
        const bool isNumber = !meant.empty() && meant.find_first_not_of(u"0123456789.-") == kNone &&
                              std::count(meant.begin(), meant.end(), u'.') <= 1;
        return isNumber ? std::vector{meant} : std::vector<std::u16string>{};
    }

    // How many characters "２", "二人" and "02" mean.
    static std::vector<std::u16string> countMeantBy(std::u16string_view text) {
        constexpr std::u16string_view kKanji = u"〇一二三四五六七八九";
        std::u16string meant = foldedText(text);
        meant.erase(0, std::min(meant.find_first_not_of(u'0'), meant.size()));
        const std::size_t kanji = meant.empty() ? kNone : kKanji.find(meant.front());
        const std::size_t digits = meant.find_first_not_of(u"0123456789");
        if (kanji != kNone && kanji > 0) {
            return {std::u16string(1, static_cast<char16_t>(u'0' + kanji))};
        }
        if (std::u16string number = meantNumber(text); !number.empty()) { // "three"
            return {std::move(number)};
        }
        meant = meant.substr(0, digits);
        return meant.empty() || meant.size() > 2 ? std::vector<std::u16string>{}
                                                 : std::vector{meant};
    }

    // Of several the last one counts.
    void checkDefault(const ElementFacts& element, std::u16string_view place,
                      std::u16string_view letter) {
        const std::int32_t line = checks_.source.rangeOf(element.tag).line;
        const auto [earlier, isFirst] = defaults_.try_emplace(std::u16string(letter), line);
        if (!isFirst) {
            checks_.add("D338", place, {letter, decimalText(earlier->second)});
            earlier->second = line;
        }
    }

    // Names that no line of a script can match.
    void checkNames(const ElementFacts& element) {
        for (const std::u16string_view attribute : {u"japanesename", u"englishname"}) {
            const std::u16string_view name = element.attribute(attribute);
            if (name.empty()) {
                continue;
            }
            const bool isPose = element.meaning.kind == ElementKind::pose;
            const std::u16string_view trimmed = trimScriptText(name, words());
            if (!isPose && tellTagName(name)) {
                continue;
            }
            if (trimmed.size() != name.size()) {
                checks_.add("D331", name, {name, checks_.text(Message::name_blanks)})
                    .suggestions = {std::u16string(trimmed)};
            } else if (isPose && findSeparator(name, words()) != kNone) {
                checks_.add("D331", name, {name, checks_.text(Message::name_separator)});
            } else if (isPose && attribute == u"japanesename") {
                checkPoseWord(element, name);
                checkPoseName(element, name);
            }
        }
    }

    // A tag that takes lines which others have, or that no line has.
    bool tellTagName(std::u16string_view name) {
        const std::size_t colon = std::min(name.find(u':'), words()[u"colon"].findUnitsIn(name));
        const char16_t letter = name.size() == 1 ? words().letterOf(name.front()) : u'\0';
        if (colon != kNone) {
            checks_.add("D331", name, {name, checks_.text(Message::name_colon)}).suggestions = {
                std::u16string(name.substr(0, colon))};
        } else if (letter != 0) {
            checks_.add("D350", name,
                        {name, formatted(Message::name_letter, checks_.language, {{&letter, 1}})});
        } else if (isMarker(name)) {
            checks_.add("D350", name, {name, checks_.text(Message::name_marker)});
        } else {
            return false;
        }
        return true;
    }

    bool isMarker(std::u16string_view name) const {
        return std::any_of(kMarkers.begin(), kMarkers.end(), [&](const MarkerSpec& marker) {
            return std::any_of(marker.spellings.begin(), marker.spellings.end(),
                               [&](const MarkerSpelling& spelling) {
                                   return name == (spelling.english.empty()
                                                       ? words()[spelling.word].textOrEmpty()
                                                       : spelling.english);
                               });
        });
    }

    // A pose whose word is a command's is looked up by that command's name.
    void checkPoseWord(const ElementFacts& element, std::u16string_view name) {
        std::u16string phrase(name);
        const Recognition recognition = recognizeCommand(phrase, words(), {}, commands_);
        if (recognition.row != nullptr && phrase != element.attribute(u"englishname")) {
            checks_.add("D331", name, {name, checks_.text(Message::name_command)});
        } else if (recognition.row != nullptr && recognition.row->taker == Taker::staging) {
            checks_.add("D353", name, {name});
        }
    }

    // One Japanese name leads to one English name, that of the last pose.
    void checkPoseName(const ElementFacts& element, std::u16string_view name) {
        const std::u16string_view english = element.attribute(u"englishname");
        const auto [known, isNew] = poseNames_.try_emplace(std::u16string(name), name, english);
        if (!isNew && known->second.second != english) {
            checks_.add("D331", known->second.first, {name, checks_.text(Message::name_later)});
        }
        known->second = {name, english};
    }

    // ---- elements that take the place of others

    void checkReplaced(const ElementFacts& element) {
        const auto nameOf = [&](std::u16string_view attribute) {
            return std::u16string(element.attribute(attribute));
        };
        const std::u16string key = std::u16string(element.name) + u'\n';
        switch (element.meaning.kind) {
        case ElementKind::number:
        case ElementKind::plain:
        case ElementKind::switching:
            return replace(key, element);
        case ElementKind::model: {
            const std::u16string letter = nameOf(u"character");
            if (!replaceIsTold(key + letter + u"\nja\n" + nameOf(u"japanesename"), element)) {
                replace(key + letter + u"\nen\n" + nameOf(u"englishname"), element);
            }
            return;
        }
        case ElementKind::pose:
            return replace(key + nameOf(u"englishname") + u'\n' + nameOf(u"character"), element);
        default:
            return;
        }
    }

    bool replaceIsTold(const std::u16string& key, const ElementFacts& element) {
        const std::int32_t line =
            element.tag.empty() ? 0 : checks_.source.rangeOf(element.tag).line;
        const auto [earlier, isFirst] = firstLines_.try_emplace(key, line);
        if (!isFirst) {
            checks_.add("D324", element.tag, {element.name, decimalText(earlier->second)});
            earlier->second = line;
        }
        return !isFirst;
    }
    void replace(const std::u16string& key, const ElementFacts& element) {
        replaceIsTold(key, element);
    }

    // ---- the reader's log

    void tellLog() {
        for (const DiagnosticLog::Entry& entry : log_.entries()) {
            tellEntry(entry);
        }
    }

    void tellEntry(const DiagnosticLog::Entry& entry) {
        using enum DescriptionProblem;
        const std::u16string_view tag = tagAt(entry.tag);
        const std::u16string_view name = entry.element == u"model"
                                             ? std::u16string_view(u"model_for_char")
                                             : std::u16string_view(entry.element);
        switch (entry.problem) {
        case noNumber:
            checks_.add("D301", tag);
            return;
        case badNumber:
            checks_.add("D302", behind(tag, name), {name}).suggestions = countMeantBy(name);
            return;
        case noText:
            tellNoText(tag, name);
            return;
        case isEmpty:
            checks_.add("D304", tag, {name});
            return;
        case titleAttributesMissing:
            checks_.add("D305", tag, {missingIn(tag, attributesOf(ElementKind::title))});
            return;
        case titleAttributesInvalid:
            checks_.add("D306", tag);
            return;
        case modelAttributesMissing:
            checks_.add("D307", tag, {missingIn(tag, attributesOf(ElementKind::model).first(4))});
            return;
        case modelAttributesInvalid:
            checks_.add("D308", tag);
            return;
        case setLineSkipped:
            checks_.add("D310", behind(tag, name), {name}).suggestions = setLineMeantBy(name);
            return;
        case setNameTaken:
            checks_.add("D311", repeatedIn(tag, name), {name});
            return;
        case tagNameTaken:
            checks_.add("D312", attributeWith(tag, name), {name});
            return;
        case characterReplaced:
            tellReplacedCharacter(tag, name);
            return;
        case unknownElement:
            if (name != u"staging") { // told as what it is
                checks_.add("D315", tag, {name}).suggestions = suggestedElements(name);
            }
            return;
        case xmlError:
            tellXmlError(entry);
            return;
        case notRegistered: // no text that comes so far is refused
        case sharedTalkNotRegistered:
            return;
        }
    }

    // The three parts of a line with other signs between them.
    static std::vector<std::u16string> setLineMeantBy(std::u16string_view line) {
        for (const char16_t sign : std::u16string_view(u":：,，、|｜\t;；")) {
            std::vector<std::u16string_view> parts;
            for (std::size_t at = 0; at <= line.size();) {
                const std::size_t end = std::min(line.find(sign, at), line.size());
                if (end > at) { // a sign may stand twice
                    parts.push_back(line.substr(at, end - at));
                }
                at = end + 1;
            }
            if (parts.size() == 3) {
                return {
                    std::u16string(parts[0]).append(u"::").append(parts[1]).append(u"::").append(
                        parts[2])};
            }
        }
        return {};
    }

    void tellNoText(std::u16string_view tag, std::u16string_view name) {
        constexpr std::u16string_view kData = u"<![CDATA[";
        const std::u16string_view text = checks_.source.text();
        const std::size_t start =
            tag.empty() ? text.size()
                        : static_cast<std::size_t>(tag.data() - text.data()) + tag.size();
        const std::size_t first = std::min(text.find_first_not_of(u" \t\r\n", start), text.size());
        if (text.substr(first).starts_with(kData)) {
            checks_.add("D345", text.substr(first, kData.size()), {name});
        } else {
            checks_.add(lacksNames(tag, name) ? Code("D309") : Code("D303"), tag,
                        {name, missingIn(tag, attributesOf(ElementKind::tag))});
        }
    }

    // The names of those attributes that a start tag lacks.
    static std::u16string missingIn(std::u16string_view tag,
                                    std::span<const std::u16string_view> wanted) {
        std::u16string missing;
        for (const std::u16string_view name : wanted) {
            if (attributeSource(tag, name).empty()) {
                missing.append(missing.empty() ? u"" : u", ").append(name);
            }
        }
        return missing;
    }

    // A pose or tag without its names is logged as one without text.
    bool lacksNames(std::u16string_view tag, std::u16string_view name) const {
        const ElementKind kind = meaningOf(name).kind;
        return (kind == ElementKind::pose || kind == ElementKind::tag) &&
               (attributeSource(tag, u"japanesename").empty() ||
                attributeSource(tag, u"englishname").empty());
    }

    void tellReplacedCharacter(std::u16string_view tag, std::u16string_view value) {
        const bool early = numberTag_.data() == nullptr || tag.data() < numberTag_.data();
        checks_.add(early ? Code("D314") : Code("D313"), attributeWith(tag, value), {value});
    }

    void tellXmlError(const DiagnosticLog::Entry& entry) {
        const XmlCause cause = causeOf(checks_.source.text());
        const std::u16string_view wide = findWideTag();
        if (cause.mistake == XmlMistake::strayEndTag && !wide.empty()) {
            checks_
                .add("D318", wide,
                     {formatted(Message::xml_wideTag, checks_.language, {wide}),
                      decimalText(static_cast<std::int32_t>(elements_))})
                .suggestions = {asciiTag(wide)};
            return;
        }
        dropConsequences(cause);
        const bool isKnown = cause.mistake != XmlMistake::none;
        const std::u16string count = decimalText(static_cast<std::int32_t>(elements_));
        checks_
            .add("D318", isKnown ? cause.where : checks_.source.text().substr(entry.tag.offset, 1),
                 {isKnown ? causeText(cause) : parserText(entry.element), count})
            .suggestions = meantBy(cause);
    }

    // An element that is never closed contains all that stands behind it, and the
    // last text is cut off: findings about these follow from the broken XML.
    void dropConsequences(const XmlCause& cause) {
        if (cause.mistake == XmlMistake::none || cause.mistake == XmlMistake::rootEnd) {
            return;
        }
        const std::u16string_view text = checks_.source.text();
        const std::u16string_view before =
            text.substr(0, static_cast<std::size_t>(cause.where.data() - text.data()));
        const std::size_t element = std::min(before.rfind(u'<'), before.size());
        const TextRange from = checks_.source.rangeAt(
            cause.mistake == XmlMistake::unclosed ? before.size() : element, 0);
        std::erase_if(checks_.found, [&](const Diagnostic& found) {
            return std::pair(found.line, found.column) > std::pair(from.line, from.start);
        });
    }

    // What the XML reading says, in the language of the findings. Rare errors stay
    // as they are worded there.
    std::u16string parserText(std::u16string_view told) const {
        struct Row {
            std::u16string_view before; // what the message begins with, up to its name
            Message text;
        };
        constexpr std::array kRows{
            Row{u"entity '", Message::xml_entityUnknown},
            Row{u"an attribute is already", Message::xml_attributeTwice},
            Row{u"attribute '", Message::xml_attributeTwice},
            Row{u"prefix '", Message::xml_prefixUnknown},
            Row{u"invalid character reference", Message::xml_characterReference},
            Row{u"unterminated CDATA section", Message::xml_cdataEnd},
            Row{u"recursive entity expansion", Message::xml_entitiesTooMany},
            Row{u"the entities expand too far", Message::xml_entitiesTooMany},
            Row{u"comment or processing instruction expected", Message::xml_behindRoot},
            Row{u"the elements are nested too deeply", Message::xml_tooDeep},
            Row{u"unexpected end of input", Message::xml_endsEarly},
        };
        for (const Row& row : kRows) {
            if (told.starts_with(row.before)) {
                const std::size_t quote = std::min(told.find(u'\''), told.size() - 1) + 1;
                const std::u16string_view name =
                    told.substr(quote, told.find(u'\'', quote) - quote);
                return formatted(row.text, checks_.language, {name});
            }
        }
        return formatted(Message::xml_other, checks_.language, {told});
    }

    std::u16string causeText(const XmlCause& cause) const {
        constexpr std::array kTexts{
            Message::xml_loneAmpersand, Message::xml_loneLess,       Message::xml_strayEndTag,
            Message::xml_unclosed,      Message::xml_attributeQuote, Message::xml_declaration,
            Message::xml_tagEnd,        Message::xml_commentEnd,     Message::xml_rootEnd};
        if (cause.mistake == XmlMistake::strayEndTag && cause.open.empty()) {
            return formatted(Message::xml_needlessEndTag, checks_.language, {cause.where});
        }
        const std::int32_t line = cause.open.empty() ? 0 : checks_.source.rangeOf(cause.open).line;
        return formatted(kTexts[static_cast<std::size_t>(cause.mistake) - 1], checks_.language,
                         {cause.where, cause.name, decimalText(line)});
    }

    static std::vector<std::u16string> meantBy(const XmlCause& cause) {
        switch (cause.mistake) {
        case XmlMistake::loneAmpersand:
            return {u"&amp;"};
        case XmlMistake::loneLess:
            return {u"&lt;"};
        case XmlMistake::strayEndTag:
            return cause.open.empty()
                       ? std::vector<std::u16string>{}
                       : std::vector{std::u16string(u"</").append(cause.name) + u'>'};
        case XmlMistake::tagEnd:
            return {std::u16string(cause.where) + u'>'};
        case XmlMistake::commentEnd:
            return {std::u16string(cause.where.substr(0, cause.where.find_last_not_of(u"->") + 1)) +
                    u"-->"};
        case XmlMistake::rootEnd:
            return {std::u16string(cause.where).append(u"</").append(cause.name) + u'>'};
        default:
            return {};
        }
    }

    // A text behind a start tag, else the tag.
    std::u16string_view behind(std::u16string_view tag, std::u16string_view text) {
        const std::u16string_view whole = checks_.source.text();
        const std::size_t start =
            tag.empty() ? whole.size()
                        : static_cast<std::size_t>(tag.data() - whole.data()) + tag.size();
        const std::size_t at = --searchesLeft_ >= 0 ? whole.find(text, start) : kNone;
        return at == kNone ? tag : whole.substr(at, text.size());
    }

    // A set name that is taken: the n-th complaint is about its n-th repetition.
    std::u16string_view repeatedIn(std::u16string_view tag, std::u16string_view name) {
        const auto [earlier, isNew] =
            repeated_.try_emplace(std::u16string(name), std::u16string_view{});
        std::u16string_view place = isNew ? behind(tag, name) : earlier->second;
        place = behind(place, name);
        earlier->second = place;
        return place;
    }

    // The attribute of a tag that has this value, else the tag.
    std::u16string_view attributeWith(std::u16string_view tag, std::u16string_view value) const {
        for (const std::u16string_view name : attributeNames(tag)) {
            const std::u16string_view source = attributeSource(tag, name);
            if (trimScriptText(source, words()) == trimScriptText(value, words()) &&
                !source.empty()) {
                return source;
            }
        }
        return tag;
    }

    // ---- what a script can reach

    std::u16string programmeText() const {
        return charactersText(checks_.lastCharacter, checks_.language);
    }

    void checkReach() {
        for (std::size_t i = 0; i < kCharacterElements.size(); ++i) {
            checkCharacterVariants(i);
        }
        checkPairVariants();
        checkModels();
    }

    void tellUnreached(std::u16string_view name, const VariantList* variants,
                       std::u16string_view reason) {
        for (std::size_t number = 1; variants != nullptr && number <= variants->size(); ++number) {
            const std::size_t element = variants->variant(number).element;
            if (element != 0) { // built-in ones are nobody's fault
                checks_.add("D325", tagOf(element), {name, reason});
            }
        }
    }

    void checkCharacterVariants(std::size_t index) {
        const TemplateCollection& collection = templates_.characters[index];
        const std::u16string_view name = kCharacterElements[index].name;
        const char16_t last = checks_.lastCharacter;
        std::u16string_view everywhere;
        if (index == indexOf(CharacterElement::lookatfellow) && last != u'B') {
            everywhere = checks_.text(Message::variant_two);
        } else if (index == indexOf(CharacterElement::lookatn) && last == u'A') {
            everywhere = checks_.text(Message::lacking_severalCharacters);
        }
        bool allOwn = true;
        for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
            const VariantList* variants = collection.variantsOf(letter);
            allOwn = allOwn && (letter > last || variants != nullptr);
            if (!everywhere.empty() || letter > last) {
                tellUnreached(name, variants,
                              everywhere.empty() ? checks_.text(Message::variant_fewer)
                                                 : everywhere);
            }
        }
        if (allOwn || !everywhere.empty()) {
            tellUnreached(name, collection.variantsOf(sharedKey),
                          everywhere.empty() ? checks_.text(Message::variant_own) : everywhere);
        }
    }

    void checkPairVariants() {
        const char16_t last = checks_.lastCharacter;
        const VariantList* shared =
            templates_.twoshot.variantsOf(std::u16string_view(&sharedKey, 1));
        bool allOwn = true;
        for (char16_t first = u'A'; first <= last; ++first) {
            for (char16_t second = static_cast<char16_t>(first + 1); second <= last; ++second) {
                allOwn = allOwn &&
                         templates_.twoshot.variantsOf(std::u16string{first, second}) != nullptr;
            }
        }
        if (allOwn) {
            tellUnreached(kTwoshotElement, shared,
                          checks_.text(last == u'A' ? Message::lacking_severalCharacters
                                                    : Message::variant_pairs));
        }
    }

    void checkModels() {
        if (staging_.currentModel.empty()) {
            return;
        }
        for (char16_t letter = u'A'; letter <= checks_.lastCharacter; ++letter) {
            if (!staging_.currentModel.contains(letter)) {
                checks_.add("D327", numberTag_, {letterText(letter)});
            }
        }
    }

    DescriptionChecks checks_;
    const platform::Platform& platform_;
    CommandIndex commands_;
    const bool cut_; // at a terminator
    StagingDescription staging_;
    TemplateDb templates_;
    DiagnosticLog log_;
    std::shared_ptr<const XmlDocument> parsed_;
    std::size_t elements_ = 0;
    bool stagingSeen_ = false;
    bool broken_ = false;
    int searchesLeft_ = 2000; // keeps a list of nothing but mistakes fast
    std::u16string rootName_;
    std::vector<std::u16string> ignored_; // names of elements whose content is not read
    std::u16string_view numberTag_;       // of the first <numofchar>
    std::map<std::u16string, std::int32_t> firstLines_;
    std::map<std::u16string, std::int32_t> defaults_; // letter -> line of its default model
    std::map<std::u16string, std::u16string_view> repeated_;
    // Japanese name -> its place and the English name
    std::map<std::u16string, std::pair<std::u16string_view, std::u16string_view>> poseNames_;
};

} // namespace

std::vector<Diagnostic> checkDescription(std::u16string_view description, const KeywordTable& words,
                                         const platform::Platform& platform, Language language,
                                         std::shared_ptr<const XmlDocument> parsed) {
    return DescriptionCheck(description, words, platform, language, std::move(parsed)).run();
}

std::shared_ptr<const XmlDocument> parseDescription(std::u16string_view description) {
    return parseXml(upToTerminator(description), XmlOptions{true});
}

std::vector<ElementPlace> elementPlaces(std::u16string_view description,
                                        std::shared_ptr<const XmlDocument> parsed) {
    const DescriptionSource source(upToTerminator(description));
    XMLParser xml(parsed != nullptr ? std::move(parsed) : parseDescription(description));
    std::vector<ElementPlace> places;
    while (xml.nextNode()) {
        if (xml.nodeKind() != NodeKind::element) {
            continue;
        }
        ElementPlace place{std::u16string(xml.elementName()), 0, 0};
        const std::u16string_view tag = source.textOf(xml.tags()[xml.elementNumber() - 1]);
        if (!tag.empty()) {
            const TextRange range = source.rangeOf(tag);
            place.line = range.line;
            place.column = range.start + 1;
        }
        places.push_back(std::move(place));
    }
    return places;
}

} // namespace tvml
