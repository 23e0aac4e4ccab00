// Answers about places of descriptions: completion and hover.
#include <algorithm>
#include <array>

#include "analysis/description_places.h"
#include "lsp/server_state.h"

namespace tvml::lsp {
namespace {

// In the order of ElementKind.
constexpr std::array<Message, 12> kKindTexts{
    Message::element_text,      Message::element_number,   Message::element_text,
    Message::element_character, Message::element_variants, Message::element_pair,
    Message::element_variants,  Message::element_model,    Message::element_sets,
    Message::element_pose,      Message::element_tag,      Message::element_text};

ItemKind itemKind(DescriptionPart part) {
    return part == DescriptionPart::element     ? ItemKind::element
           : part == DescriptionPart::attribute ? ItemKind::attribute
                                                : ItemKind::value;
}

} // namespace

CompletionList LanguageServer::completeDescription(Document& document, Position place) {
    const std::size_t offset = document.text.offsetOf(place);
    const DescriptionPlace at = placeIn(document.text.text(), offset);
    CompletionList list{{document.text.positionOf(at.start), document.text.positionOf(offset)}, {}};
    for (const DescriptionName& name : namesAt(at)) {
        const bool isElement = at.part == DescriptionPart::element;
        list.items.push_back(
            {name.text, name.text + name.ending,
             isElement
                 ? std::u16string(textOf(
                       kKindTexts[static_cast<std::size_t>(meaningOf(name.text).kind)], language_))
                 : u"",
             itemKind(at.part)});
    }
    return list;
}

// The last element that begins at or before a place.
std::size_t LanguageServer::elementBefore(DescriptionFile& file, Position place) {
    std::size_t number = 0;
    const std::vector<ElementPlace>& all = file.programme->elements();
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Position start{static_cast<std::size_t>(std::max(all[i].line, 1)) - 1,
                             std::max<std::size_t>(all[i].column, 1) - 1};
        number = all[i].line > 0 && start <= place ? i + 1 : number;
    }
    return number;
}

std::optional<Hover> LanguageServer::hoverElement(Document& document, Position place) {
    DescriptionFile& file = descriptionOf(document);
    const std::size_t number = elementBefore(file, place);
    const Location at = elementAt(file, number);
    if (at.uri.empty()) {
        return std::nullopt;
    }
    const std::u16string& name = file.programme->elements()[number - 1].name;
    const ElementMeaning meaning = meaningOf(name);
    std::u16string text = u"**`<" + name + u">`** ";
    text += textOf(kKindTexts[static_cast<std::size_t>(meaning.kind)], language_);
    const unsigned values = valueCountOf(name);
    if (values > 0) {
        text += u" · `$1` – `$";
        text += std::u16string(1, static_cast<char16_t>(u'0' + std::min(values, 9u)));
        text += values > 9 ? u"`, `$10`" : u"`";
    }
    text += u"\n\n";
    if (!builtInTextOf(name).empty()) {
        text.append(textOf(Message::explain_builtIn, language_)).append(u":\n```tvml\n");
        text.append(builtInTextOf(name)).append(u"\n```\n");
    }
    std::size_t used = 0;
    for (const Location& use : references(document.uri, place)) {
        used += use.uri == document.uri ? 0 : 1;
    }
    text += counted(Message::lsp_uses, language_, used);
    return Hover{at.range, std::move(text)};
}

} // namespace tvml::lsp
