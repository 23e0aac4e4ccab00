// Declarations and the expansions that they ask for. Entry: DocumentType.
#include "staging/xml_doctype.h"

#include <algorithm>

#include "staging/xml_fault.h"
#include "staging/xml_names.h"

namespace tvml {
namespace {

// Calls `visit` with the name in every reference that opens with `mark`.
template <typename Visit>
void forEachReference(std::u16string_view text, char16_t mark, Visit visit) {
    for (std::size_t at = text.find(mark); at != text.npos; at = text.find(mark, at + 1)) {
        const std::size_t end = text.find_first_of(u"; \t\r\n'\"&%", at + 1);
        if (end != text.npos && text[end] == u';') {
            visit(text.substr(at + 1, end - at - 1));
        }
    }
}

} // namespace

void DocumentType::declareEntity(std::u16string_view name, bool isParameter,
                                 std::optional<std::u16string_view> value) {
    countDeclaration();
    checkWithoutColon(name);
    const std::u16string_view text = value.value_or(std::u16string_view{});
    checkXml(text.size() <= kLongestEntity, u"an entity is too long");
    expansionsLeft_ = std::min(expansionsLeft_, kAddedUnits / (text.size() + 1));
    if (value.has_value()) {
        Entities& entities = isParameter ? parameter_ : general_;
        const auto [declared, isNew] =
            entities.try_emplace(std::u16string(name), XmlEntity{std::u16string(text)});
        if (isNew) { // of several the first one counts
            noteNesting(isParameter ? parameterNesting_ : generalNesting_, entities, *declared,
                        isParameter ? u'%' : u'&');
        }
    }
}

// The library may expand a reference before it tells of it, each entity in another
// one on the stack. So what could go too deep ends the parse where it is declared.
// Entities that contain themselves reach every height, but open only once each:
// few of them do no harm.
void DocumentType::noteNesting(Nesting& nesting, const Entities& entities,
                               Entities::value_type& declared, char16_t mark) {
    XmlEntity& entity = declared.second;
    std::vector<std::u16string_view> names;
    forEachReference(entity.value, mark, [&](std::u16string_view name) { names.push_back(name); });
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    nesting.references += names.size();
    checkXml(nesting.references <= kMostExpansions, u"the entities expand too far");
    for (const std::u16string_view name : names) {
        const auto inner = entities.find(name);
        const std::size_t height = inner == entities.end() ? 0 : inner->second.height;
        entity.height = std::max(entity.height, height + 1);
        nesting.users[std::u16string(name)].push_back(&declared);
    }
    nesting.referring += names.empty() ? 0 : 1;
    raiseUsers(nesting, declared);
    checkXml(nesting.highest <= kHighestEntity || nesting.referring <= kHighestEntity,
             u"the entities expand too far");
}

void DocumentType::raiseUsers(Nesting& nesting, Entities::value_type& declared) {
    std::vector<Entities::value_type*> raised{&declared};
    while (!raised.empty()) {
        const Entities::value_type& inner = *raised.back();
        raised.pop_back();
        nesting.highest = std::max(nesting.highest, inner.second.height);
        const auto users = nesting.users.find(inner.first);
        if (users == nesting.users.end()) {
            continue;
        }
        for (Entities::value_type* const user : users->second) {
            if (user->second.height <= inner.second.height &&
                user->second.height <= kHighestEntity) {
                user->second.height = inner.second.height + 1;
                raised.push_back(user);
            }
        }
    }
}

void DocumentType::addToken(std::u16string_view token) {
    if (token.starts_with(u"<!")) {
        startDeclaration(token);
        return;
    }
    if (token == u">") {
        state_ = State::other;
    }
    if (token.find_first_not_of(u" \t\r\n") == token.npos) {
        return;
    }
    switch (state_) {
    case State::other:
        return;
    case State::elementName:
        element_ = token;
        state_ = State::elementContent;
        return;
    case State::elementContent:
        addContent(token);
        return;
    case State::attributes: // each definition ends in one of these
        if (token.front() == u'\'' || token.front() == u'"') {
            countReferences(token);
            countDeclaration();
        } else if (token == u"#IMPLIED" || token == u"#REQUIRED") {
            countDeclaration();
        }
        return;
    case State::notation:
        checkWithoutColon(token);
        state_ = State::other;
        return;
    }
}

void DocumentType::startDeclaration(std::u16string_view token) {
    state_ = token == u"<!ELEMENT"    ? State::elementName
             : token == u"<!ATTLIST"  ? State::attributes
             : token == u"<!NOTATION" ? State::notation
                                      : State::other;
    if (state_ != State::other) {
        countDeclaration();
    }
}

// The content of an element begins with a word, or with brackets and what is in
// them first. Of several declarations the last one counts.
void DocumentType::addContent(std::u16string_view token) {
    if (token == u"(") {
        return;
    }
    contents_[element_] = token == u"EMPTY"                        ? TextContent::none
                          : token == u"ANY" || token == u"#PCDATA" ? TextContent::any
                                                                   : TextContent::blanks;
    state_ = State::other;
}

TextContent DocumentType::contentOf(std::u16string_view element) const {
    const auto found = contents_.find(element);
    return found != contents_.end() ? found->second : TextContent::any;
}

XmlEntity* DocumentType::findEntity(std::u16string_view name) {
    const auto found = general_.find(name);
    return found != general_.end() ? &found->second : nullptr;
}

void DocumentType::countDeclaration() {
    checkXml(++declarations_ <= kMostDeclarations, u"the document type has too many declarations");
}

void DocumentType::countExpansions(std::size_t count) {
    checkXml(count <= expansionsLeft_, u"the entities expand too far");
    expansionsLeft_ -= count;
}

void DocumentType::countReferences(std::u16string_view text) {
    if (hasEntities()) {
        countExpansions(weightOfReferences(general_, text, u'&', kMostOpenEntities));
    }
}

void DocumentType::countParameterReferences(std::u16string_view text) {
    countExpansions(weightOfReferences(parameter_, text, u'%', kMostOpenEntities));
}

// `levels` more entities may be open inside each other, which also ends the walk
// through entities that contain themselves.
std::size_t DocumentType::weightOf(Entities& entities, XmlEntity& entity, char16_t mark,
                                   std::size_t levels) {
    checkXml(levels > 0, u"the entities expand too far");
    if (!entity.weight.has_value()) {
        entity.weight = 1 + weightOfReferences(entities, entity.value, mark, levels - 1);
    }
    return *entity.weight;
}

std::size_t DocumentType::weightOfReferences(Entities& entities, std::u16string_view text,
                                             char16_t mark, std::size_t levels) {
    std::size_t weight = 0;
    forEachReference(text, mark, [&](std::u16string_view name) {
        const auto found = entities.find(name);
        if (found != entities.end() && weight <= kMostExpansions) {
            weight += weightOf(entities, found->second, mark, levels);
        }
    });
    return std::min(weight, kMostExpansions + 1);
}

} // namespace tvml
