// Templates that cannot work as they are. Entry: checkTemplate.
#include "diagnostics/description_elements.h"

#include <algorithm>
#include <array>

#include "filter/scanners.h"
#include "reading/script_text.h"

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
    checkCharacterUse(checks, element, text);
    checkPurpose(checks, element, text);
    BalanceCheck(checks, element).run(text);
    if (element.name == u"setting" && findSkipSwitch(text, u"on", checks.words) == kNone) {
        checks.add("D330", element.tag);
    }
}

} // namespace tvml
