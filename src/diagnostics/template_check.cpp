// Templates that cannot work as they are. Entry: checkTemplate.
#include "diagnostics/description_elements.h"

#include <algorithm>
#include <array>

#include "diagnostics/suggestions.h"
#include "diagnostics/tvml_commands.h"
#include "filter/scanners.h"
#include "reading/script_text.h"
#include "staging/staging_elements.h"

namespace tvml {
namespace {

// The placeholder of the text that an element is there for.
struct PurposeRow {
    std::u16string_view element;
    std::u16string_view placeholder;
};
constexpr std::array<PurposeRow, 10> kPurposes{{
    {u"talk", u"$2"},
    {u"subimagetalk", u"$2"},
    {u"leftsuper", u"$1"},
    {u"rightsuper", u"$1"},
    {u"super", u"$9"},
    {u"subimage", u"$2"},
    {u"bgimage", u"$2"},
    {u"rightimage", u"$1"},
    {u"leftimage", u"$1"},
    {u"bgm", u"$1"},
}};

bool holds(std::u16string_view text, std::u16string_view part) {
    return text.find(part) != kNone;
}

void checkPlaceholders(DescriptionChecks& checks, const ElementFacts& element,
                       std::u16string_view text) {
    for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
        const std::u16string placeholder{u'$', digit};
        const auto number = static_cast<unsigned>(digit - u'0');
        if ((number == 0 || number > element.meaning.placeholders) && holds(text, placeholder)) {
            checks.add("D321", placeInBody(element, placeholder), {placeholder, element.name});
        }
    }
    for (const TitleKind kind : {TitleKind::title, TitleKind::subtitle}) {
        const std::u16string_view placeholder = placeholderOf(kind);
        if (element.meaning.kind != ElementKind::title && holds(text, placeholder)) {
            checks.add("D321", placeInBody(element, placeholder), {placeholder, element.name});
        }
    }
}

// A text for all characters that names none of them.
void checkCharacterUse(DescriptionChecks& checks, const ElementFacts& element,
                       std::u16string_view text) {
    const ElementKind kind = element.meaning.kind;
    const bool forOne =
        !element.attribute(u"character").empty() ||
        (!element.attribute(u"character1").empty() && !element.attribute(u"character2").empty());
    if (forOne || checks.lastCharacter == u'A' ||
        (kind != ElementKind::character && kind != ElementKind::pose &&
         kind != ElementKind::twoshot)) {
        return;
    }
    for (const std::u16string_view placeholder : {u"$1", u"$2"}) {
        if ((placeholder == u"$1" || kind == ElementKind::twoshot) && !holds(text, placeholder)) {
            checks.add("D322", element.tag, {element.name, placeholder});
            return;
        }
    }
}

void checkPurpose(DescriptionChecks& checks, const ElementFacts& element,
                  std::u16string_view text) {
    for (const PurposeRow& row : kPurposes) {
        if (row.element == element.name && !holds(text, row.placeholder)) {
            checks.add("D323", element.tag, {element.name, row.placeholder});
        }
    }
    if (element.meaning.kind != ElementKind::title) {
        return;
    }
    for (const TitleKind kind : {TitleKind::title, TitleKind::subtitle}) {
        if (TitleTextFinder(text, kind, checks.words).next(0) == kNone) {
            checks.add("D323", element.tag, {element.name, placeholderOf(kind)});
        }
    }
}

// ---- placeholders that are none, or more than they look like

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

char16_t asciiDigit(char16_t unit) {
    const bool isWide = unit >= u'０' && unit <= u'９';
    return isWide ? static_cast<char16_t>(unit - u'０' + u'0') : unit;
}

// "＄１", "$１", "${1}", "$(1)": the placeholder that is meant by the text that
// begins with a dollar sign, and the units of that text; none for a right one.
struct OddPlaceholder {
    std::size_t units = 0;
    std::u16string meant;
};
OddPlaceholder oddPlaceholder(std::u16string_view text) {
    const bool isBraced = text.size() > 3 && (text[1] == u'{' || text[1] == u'(') &&
                          (text[3] == u'}' || text[3] == u')');
    const char16_t digit = text.size() < 2 ? u'\0' : asciiDigit(text[isBraced ? 2 : 1]);
    const bool isRight = text.size() > 1 && text[0] == u'$' && isDigit(text[1]);
    if (isDigit(digit)) {
        return isRight ? OddPlaceholder{} : OddPlaceholder{isBraced ? 4U : 2U, {u'$', digit}};
    }
    std::size_t end = 1;
    while (end < text.size() &&
           ((text[end] >= u'a' && text[end] <= u'z') || (text[end] >= u'A' && text[end] <= u'Z'))) {
        ++end;
    }
    const std::u16string_view word = text.substr(1, end - 1);
    const std::u16string folded = foldedText(word);
    if (word.empty() || word == u"TITLE" || word == u"SUBTITLE") {
        return {};
    }
    return {end, folded == u"title"      ? u"$TITLE"
                 : folded == u"subtitle" ? u"$SUBTITLE"
                 : folded == u"name"     ? u"$1"
                                         : u""};
}

// A placeholder with a digit behind it is read as that placeholder and the digit.
bool isLongPlaceholder(const ElementFacts& element, std::u16string_view text) {
    if (text.size() < 3 || text[0] != u'$' || !isDigit(text[1]) || !isDigit(text[2]) ||
        element.meaning.kind == ElementKind::title) {
        return false; // titles make names of them: "$11" and "$12"
    }
    return element.name != u"super" || text.substr(1, 2) != u"10";
}

// True when something is told.
bool checkOddPlaceholders(DescriptionChecks& checks, const ElementFacts& element,
                          std::u16string_view text) {
    for (std::size_t at = text.find_first_of(u"$＄"); at != kNone;
         at = text.find_first_of(u"$＄", at + 1)) {
        const std::u16string_view rest = text.substr(at);
        if (const OddPlaceholder odd = oddPlaceholder(rest); odd.units > 0) {
            const std::u16string_view written = rest.substr(0, odd.units);
            Diagnostic& told = checks.add("D333", placeInBody(element, written), {written});
            if (!odd.meant.empty()) {
                told.suggestions = {odd.meant};
            }
            return true;
        }
        if (isLongPlaceholder(element, rest)) {
            checks.add("D335", placeInBody(element, rest.substr(0, 3)),
                       {rest.substr(0, 3), rest.substr(0, 2), rest.substr(2, 1)});
            return true;
        }
    }
    return false;
}

// ---- placeholders in the place of others

enum class ValueClass : std::uint8_t { who, words, file, wait, number };

ValueClass classOf(std::u16string_view parameter) {
    using enum ValueClass;
    return parameter == u"name" || parameter.starts_with(u"target") ? who
           : parameter == u"text" || parameter == u"caption"        ? words
           : parameter == u"filename"                               ? file
           : parameter == u"wait"                                   ? wait
                                                                    : number;
}

bool isPlaceholder(std::u16string_view value) {
    return value.size() == 2 && value[0] == u'$' && isDigit(value[1]);
}

// The template that says what the placeholders of an element are.
std::u16string_view patternOf(const ElementFacts& element) {
    if (element.meaning.kind == ElementKind::pose) {
        return u"character: gesture( name=$1, speed=$2, degree=$3, wait=$4 )\n";
    }
    const auto row =
        std::find_if(kCharacterElements.begin(), kCharacterElements.end(),
                     [&](const ElementRow& each) { return each.name == element.name; });
    return row != kCharacterElements.end()   ? row->defaultText
           : element.name == kTwoshotElement ? kTwoshotDefault
                                             : std::u16string_view{};
}

// The pattern's parameter for a placeholder; empty when it has none.
std::u16string_view parameterOf(const TvmlCommand& pattern, std::u16string_view placeholder) {
    for (const TvmlParameter& parameter : pattern.parameters) {
        if (parameter.value == placeholder) {
            return parameter.name;
        }
    }
    return {};
}

std::u16string_view placeholderFor(const TvmlCommand& pattern, std::u16string_view name) {
    for (const TvmlParameter& parameter : pattern.parameters) {
        if (parameter.name == name && isPlaceholder(parameter.value)) {
            return parameter.value;
        }
    }
    return {};
}

// Two placeholders of one command in each other's places. The parameter of the
// other may have a name of the designer's own.
bool isExchanged(const TvmlCommand& pattern, const TvmlCommand& command, const TvmlParameter& one) {
    const std::u16string_view right = placeholderFor(pattern, one.name);
    return !right.empty() && right != one.value &&
           std::any_of(command.parameters.begin(), command.parameters.end(),
                       [&](const TvmlParameter& other) {
                           const std::u16string_view own = placeholderFor(pattern, other.name);
                           return other.value == right && (own == one.value || own.empty());
                       });
}

std::vector<std::u16string> suggestedPlaceholder(const TvmlCommand& pattern,
                                                 std::u16string_view parameter) {
    const std::u16string_view right = placeholderFor(pattern, parameter);
    return right.empty() ? std::vector<std::u16string>{}
                         : std::vector<std::u16string>{std::u16string(right)};
}

void checkPlaceholderUse(DescriptionChecks& checks, const ElementFacts& element,
                         const std::vector<TvmlCommand>& commands) {
    const TvmlReading pattern = readTvml(patternOf(element));
    if (pattern.commands.empty()) {
        return;
    }
    const TvmlCommand& right = pattern.commands.front();
    for (const TvmlCommand& command : commands) {
        for (const TvmlParameter& used : command.parameters) {
            const std::u16string_view meant =
                isPlaceholder(used.value) ? parameterOf(right, used.value) : used.value;
            const bool clashes =
                isPlaceholder(used.value) && !meant.empty() && classOf(meant) != classOf(used.name);
            if (clashes || isExchanged(right, command, used)) {
                checks.add("D334", used.value, {used.name, used.value, meant, element.name})
                    .suggestions = suggestedPlaceholder(right, used.name);
                return;
            }
        }
    }
}

// ---- the form of the commands

constexpr std::array<Code, 7> kFaultCodes{"D339", "D342", "D340", "D341", "D351", "D344", "D343"};

// What stands before the first element, comment or section: the part that is
// read. Empty where references would have to be replaced first.
std::u16string_view readPartOf(const ElementFacts& element) {
    const std::u16string_view part = element.body.substr(0, element.body.find(u'<'));
    const bool isPlain = part.find(u"&quot;") == kNone && part.find(u"&#") == kNone;
    return isPlain ? part : std::u16string_view{};
}

std::vector<std::u16string> meantBy(const TvmlProblem& problem) {
    std::u16string text(problem.where);
    switch (problem.fault) {
    case TvmlFault::fullWidth:
        return {std::u16string(problem.meant)};
    case TvmlFault::colonMissing:
        return {text + u':'};
    case TvmlFault::commaMissing:
        return {u", " + text};
    case TvmlFault::equalsMissing:
        return {text + u'='};
    case TvmlFault::commaSurplus:
        return {};
    case TvmlFault::quoteEnds:
        std::replace(text.begin(), text.end(), u'"', u'\'');
        return {text};
    case TvmlFault::objectUnusual:
        return closestObjects(problem.where);
    }
    return {};
}

// A text that breaks off at markup that was meant as a part of it.
bool endsAtMarkup(const ElementFacts& element) {
    const std::size_t less = element.body.find(u'<');
    return less != kNone && less + 1 < element.body.size() && element.body[less + 1] != u'!';
}

// "%1" or "\\1" as a whole value, as other systems write placeholders.
bool tellForeignPlaceholder(DescriptionChecks& checks, const ElementFacts& element) {
    const TvmlReading reading = readTvml(readPartOf(element));
    for (const TvmlCommand& command : reading.commands) {
        for (const TvmlParameter& parameter : command.parameters) {
            const std::u16string_view value = parameter.value;
            if (value.size() == 2 && isDigit(value[1]) &&
                std::u16string_view(u"%\\#@&").find(value[0]) != kNone) {
                checks.add("D333", value, {value}).suggestions = {{u'$', value[1]}};
                return true;
            }
        }
    }
    return false;
}

// True when the form of a command is wrong, which is told.
bool tellTvml(DescriptionChecks& checks, const ElementFacts& element) {
    const TvmlReading reading = readTvml(readPartOf(element));
    checkPlaceholderUse(checks, element, reading.commands);
    if (!reading.problem.has_value()) {
        return false;
    }
    const TvmlProblem& problem = *reading.problem;
    Diagnostic& told = checks.add(kFaultCodes[static_cast<std::size_t>(problem.fault)],
                                  problem.where, {problem.where, problem.meant});
    told.suggestions = meantBy(problem);
    return true;
}

// Both texts of a card on one line: the line goes when one of them is missing.
void checkTitleLines(DescriptionChecks& checks, const ElementFacts& element,
                     std::u16string_view text) {
    const std::u16string_view title = placeholderOf(TitleKind::title);
    const std::u16string_view subtitle = placeholderOf(TitleKind::subtitle);
    while (element.meaning.kind == ElementKind::title && !text.empty()) {
        const std::u16string_view line = text.substr(0, text.find(u'\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (holds(line, title) && holds(line, subtitle)) {
            checks.add("D336", placeInBody(element, subtitle), {title, subtitle});
            return;
        }
    }
}

// The brackets and quotes of a template, line by line.
class BalanceCheck {
public:
    BalanceCheck(DescriptionChecks& checks, const ElementFacts& element)
        : checks_(checks), element_(element) {}

    void run(std::u16string_view text) {
        while (!text.empty() && !told_) {
            const std::size_t end = std::min(text.find(u'\n'), text.size());
            const std::u16string_view line = text.substr(0, end);
            text.remove_prefix(std::min(end + 1, text.size()));
            if (!line.starts_with(u"//")) {
                readLine(line);
            }
        }
        if (depth_ > 0 && !told_) {
            tell("D328", opened_);
        }
    }

private:
    void readLine(std::u16string_view line) {
        if (std::count(line.begin(), line.end(), u'"') % 2 != 0) {
            return tell("D329", line);
        }
        bool quoted = false;
        for (const char16_t unit : line) {
            quoted = unit == u'"' ? !quoted : quoted;
            if (!quoted && unit == u'(') {
                opened_ = depth_++ == 0 ? line : opened_;
            } else if (!quoted && unit == u')' && depth_-- == 0) {
                return tell("D328", line);
            }
        }
    }

    void tell(Code code, std::u16string_view line) {
        checks_.add(code, placeInBody(element_, line));
        told_ = true;
    }

    DescriptionChecks& checks_;
    const ElementFacts& element_;
    int depth_ = 0;
    std::u16string_view opened_; // the line that opened the outermost bracket
    bool told_ = false;
};

// Text behind a comment or a CDATA section is not read.
void checkTextEnd(DescriptionChecks& checks, const ElementFacts& element) {
    constexpr std::u16string_view kBlanks = u" \t\r\n";
    const std::size_t comment = element.body.find(u"<!--");
    const std::size_t data = element.body.find(u"<![CDATA[");
    const std::size_t at = std::min(comment, data);
    if (at == kNone) {
        return;
    }
    const std::size_t end = element.body.find(comment < data ? u"-->" : u"]]>", at);
    const bool more =
        at == data || (end != kNone && element.body.find_first_not_of(kBlanks, end + 3) != kNone);
    if (more) {
        checks.add("D332", element.body.substr(at, comment < data ? 4 : 9),
                   {element.name,
                    checks.text(comment < data ? Message::text_comment : Message::text_cdata)});
    }
}

// What is set up behind "on" and what a script chooses in front of "off" need both
// lines.
void checkSkipping(DescriptionChecks& checks, const ElementFacts& element,
                   std::u16string_view text) {
    if (findSkipSwitch(text, u"on", checks.words) == kNone) {
        checks.add("D330", element.tag);
    } else if (findSkipSwitch(text, u"off", checks.words) == kNone) {
        const std::size_t end = element.body.find_last_not_of(u" \t\r\n");
        const std::size_t start = end == kNone ? kNone : element.body.rfind(u'\n', end);
        checks.add("D347",
                   end == kNone ? element.tag : element.body.substr(start + 1, end - start));
    }
}

} // namespace

std::u16string_view placeInBody(const ElementFacts& element, std::u16string_view text) {
    const std::size_t at = element.body.find(text);
    return at == kNone ? element.tag : element.body.substr(at, text.size());
}

void checkTemplate(DescriptionChecks& checks, const ElementFacts& element) {
    const std::u16string text =
        normalizeTemplateLines(trimScriptText(*element.text, checks.words), checks.words);
    checkTextEnd(checks, element);
    checkPlaceholders(checks, element, text);
    if (!checkOddPlaceholders(checks, element, text) && !tellForeignPlaceholder(checks, element)) {
        checkCharacterUse(checks, element, text);
        checkPurpose(checks, element, text);
    }
    checkTitleLines(checks, element, text);
    if (!tellTvml(checks, element) && !endsAtMarkup(element)) {
        BalanceCheck(checks, element).run(text);
    }
    if (element.name == u"setting") {
        checkSkipping(checks, element, text);
    }
}

} // namespace tvml
