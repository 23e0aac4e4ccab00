// What the XML library reports, made into a tree within limits. Entry: readXml.
//
// The library is C: nothing may be thrown through it. Every call from it goes
// through Reader::guarded, which keeps what was thrown until the library has
// returned.
#include "staging/xml_reader.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "staging/xml_doctype.h"
#include "staging/xml_expat.h"
#include "staging/xml_fault.h"
#include "staging/xml_limits.h"
#include "staging/xml_names.h"
#include "staging/xml_stand_ins.h"
#include "vocabulary/unit_search.h"
#include "vocabulary/word.h"

namespace tvml {
namespace {

// The byte order, so that the library need not guess it, and a line, so that no
// declaration of the description's own comes first.
constexpr std::u16string_view kBefore = u"\uFEFF\n";
constexpr std::u16string_view kByteOrder = u"\uFEFF";

// An entity's text is read as the content of an element of our own, whose end
// shows that the text is complete.
constexpr std::u16string_view kWrapperStart = u"<_>";
constexpr std::u16string_view kWrapperEnd = u"</_>";

// The library's lengths are of type int, so long texts are fed in parts.
constexpr std::size_t kMostUnitsAtOnce = std::size_t{1} << 28;

// What an attribute takes in memory besides its value, in units.
constexpr std::size_t kAttributeUnits = 100;

// ---- memory, from where all memory of this code comes

struct alignas(std::max_align_t) BlockSize {
    std::size_t bytes;
};

void* allocate(std::size_t bytes) {
    if (bytes > static_cast<std::size_t>(-1) - sizeof(BlockSize)) {
        return nullptr;
    }
    void* memory = ::operator new(sizeof(BlockSize) + bytes, std::nothrow);
    return memory != nullptr ? new (memory) BlockSize{bytes} + 1 : nullptr;
}

void release(void* block) {
    if (block != nullptr) {
        ::operator delete(static_cast<BlockSize*>(block) - 1);
    }
}

void* reallocate(void* block, std::size_t bytes) {
    void* grown = allocate(bytes);
    if (grown != nullptr && block != nullptr) {
        std::memcpy(grown, block, std::min(bytes, (static_cast<BlockSize*>(block) - 1)->bytes));
        release(block);
    }
    return grown;
}

constexpr XML_Memory_Handling_Suite kMemory{allocate, reallocate, release};

// ---- texts

bool isLeading(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
bool isTrailing(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

// A lone surrogate at or after `at`, which the library would not always see.
std::size_t loneSurrogate(std::u16string_view text, std::size_t at) {
    for (; at < text.size(); ++at) {
        if (isLeading(text[at]) && at + 1 < text.size() && isTrailing(text[at + 1])) {
            ++at;
        } else if (isLeading(text[at]) || isTrailing(text[at])) {
            break;
        }
    }
    return at;
}

// The text with a replacement character for each lone surrogate; `copy` holds it
// when there are any.
std::u16string_view withoutLoneSurrogates(std::u16string_view text, std::u16string& copy) {
    std::size_t at = loneSurrogate(text, beforeSurrogates(text));
    if (at == text.size()) {
        return text;
    }
    copy = text;
    for (; at < copy.size(); at = loneSurrogate(copy, at + 1)) {
        copy[at] = u'\uFFFD';
    }
    return copy;
}

bool isBlank(std::u16string_view text) {
    return text.find_first_not_of(u" \t\r\n") == text.npos;
}

// An entity's value as a text to be read: the library would take a carriage
// return, which only a reference can have put there, for an end of a line.
std::u16string wrapped(std::u16string_view value) {
    std::u16string text(kWrapperStart);
    bool inTag = false;
    for (const char16_t unit : value) {
        inTag = unit == u'<' || (inTag && unit != u'>');
        if (unit != u'\r') {
            text += unit;
        } else {
            text += inTag ? u" " : u"&#13;";
        }
    }
    return text.append(kWrapperEnd);
}

std::u16string messageOf(std::u16string_view message, std::u16string_view name) {
    std::u16string text(message);
    if (const std::size_t at = text.find(u"{}"); at != text.npos) {
        text.replace(at, 2, name);
    }
    return text;
}

class Reader {
public:
    Reader(const XmlOptions& options, const NameStandIns& standIns, XmlDocument& document)
        : options_(options), standIns_(standIns), document_(document) {}
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader() {
        while (!levels_.empty()) { // the parser that the others come from last
            levels_.pop_back();
        }
    }

    // False when an error ended the text.
    bool read(std::u16string_view text);

private:
    // A text that a parser of its own reads: the description, or inside it the
    // value of an entity.
    struct Level {
        ParserHandle parser;
        std::u16string_view text;
        std::u16string wrapped{};  // what `text` is of, in an entity
        std::size_t unitsRead = 0; // by the parser, before the text
        bool isComplete = false;
    };
    // A part of a level's text.
    struct Place {
        std::size_t offset;
        std::size_t length;
        std::size_t end() const { return offset + length; }
    };
    // An element that has not ended.
    struct Open {
        std::u16string_view name;
        TextContent content;
        std::size_t level;
        std::size_t number;
    };
    enum class State { reading, ended, outOfMemory };

    template <typename Step> void guarded(Step step);
    template <auto member, typename... Arguments>
    static void XMLCALL call(void* reader, Arguments... arguments);
    static int XMLCALL refuseExternal(XML_Parser parser, const XML_Char* context, const XML_Char*,
                                      const XML_Char*, const XML_Char*);

    void setHandlers(XML_Parser parser);
    XML_Status feed(Level& level, std::u16string_view text, bool isLast);
    void stop(State state);
    void note(const XmlFault& fault);
    void noteError(Level& level);
    void keepError(std::size_t offset, std::u16string message);
    bool isComment(Place at) const;
    std::size_t offsetOfError(const XmlErrorText& text) const;
    std::u16string_view nameInError(XmlErrorPlace where) const;

    Level& level() { return *levels_[current_]; }
    Place place() const;
    std::u16string_view sourceOf(Place at) const {
        return levels_[current_]->text.substr(at.offset, at.length);
    }

    void onStart(const XML_Char* name, const XML_Char** attributes);
    void onEnd(const XML_Char* name);
    void onText(const XML_Char* text, int length);
    void onComment(const XML_Char* text);
    void onInstruction(const XML_Char* target, const XML_Char* data);
    void onCdataStart();
    void onCdataEnd();
    void onReference(const XML_Char* name, int isParameter);
    void onDoctype(const XML_Char* name, const XML_Char* systemId, const XML_Char* publicId,
                   int hasSubset);
    void onDoctypeEnd();
    void onEntity(const XML_Char* name, int isParameter, const XML_Char* value, int length,
                  const XML_Char* base, const XML_Char* systemId, const XML_Char* publicId,
                  const XML_Char* notation);
    void onOther(const XML_Char* text, int length);

    void seeDeclarations();
    XmlNode& add(NodeKind kind);
    void open() { parent_ = document_.nodes.size() - 1; }
    void close() { parent_ = document_.nodes[parent_].parent; }
    void addAttributes(std::u16string_view element, const XML_Char** attributes);
    void checkNamespaces(std::u16string_view element, std::size_t first, std::size_t specified);
    void keepTag(Place at);
    void flushText();
    void settleText();
    void expand(XmlEntity& entity, std::u16string_view name);
    void readEntity(const XmlEntity& entity);
    Level& entityLevel();
    std::u16string_view keepName(std::u16string_view text);
    std::u16string_view original(std::u16string_view name) {
        return standIns_.original(name, original_);
    }

    const XmlOptions& options_;
    const NameStandIns& standIns_;
    std::u16string original_; // of the name at hand
    XmlDocument& document_;
    std::size_t parent_ = 0;                     // the node in which the next one stands
    std::vector<std::unique_ptr<Level>> levels_; // the description first
    std::size_t current_ = 0;
    State state_ = State::reading;

    std::vector<Open> open_;
    std::size_t elements_ = 0;
    Namespaces namespaces_;
    std::size_t addedUnits_ = 0;

    std::u16string text_;     // that is not in the document yet
    std::size_t textEnd_ = 0; // behind it, in the level's text
    bool inCdata_ = false;

    DocumentType doctype_;
    std::vector<const XmlEntity*> expanding_;
    bool inDoctype_ = false;
    std::size_t seen_ = 0; // end of what is seen of the document type
};

// ---- from and to the library

template <typename Step> void Reader::guarded(Step step) {
    if (state_ != State::reading) {
        return; // the library may have more to say after it was stopped
    }
    try {
        step();
    } catch (const std::bad_alloc&) {
        stop(State::outOfMemory);
    } catch (const XmlFault& fault) {
        note(fault);
    }
}

template <auto member, typename... Arguments>
void XMLCALL Reader::call(void* reader, Arguments... arguments) {
    auto& self = *static_cast<Reader*>(reader);
    self.guarded([&] { (self.*member)(arguments...); });
}

// Nothing outside the description is read: what needs it ends the parse. A whole
// document type outside is passed by, and its reference ends in ">".
int XMLCALL Reader::refuseExternal(XML_Parser parser, const XML_Char* context, const XML_Char*,
                                   const XML_Char*, const XML_Char*) {
    const auto& reader = *static_cast<const Reader*>(XML_GetUserData(parser));
    const bool isDocumentType = context == nullptr && reader.sourceOf(reader.place()) == u">";
    return isDocumentType ? XML_STATUS_OK : XML_STATUS_ERROR;
}

void Reader::setHandlers(XML_Parser parser) {
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, call<&Reader::onStart>, call<&Reader::onEnd>);
    XML_SetCharacterDataHandler(parser, call<&Reader::onText>);
    XML_SetCommentHandler(parser, call<&Reader::onComment>);
    XML_SetProcessingInstructionHandler(parser, call<&Reader::onInstruction>);
    XML_SetCdataSectionHandler(parser, call<&Reader::onCdataStart>, call<&Reader::onCdataEnd>);
    XML_SetDoctypeDeclHandler(parser, call<&Reader::onDoctype>, call<&Reader::onDoctypeEnd>);
    XML_SetEntityDeclHandler(parser, call<&Reader::onEntity>);
    // With this handler set, the library reports references to entities in content
    // instead of expanding them.
    XML_SetDefaultHandler(parser, call<&Reader::onOther>);
    XML_SetSkippedEntityHandler(parser, call<&Reader::onReference>);
    XML_SetExternalEntityRefHandler(parser, refuseExternal);
    XML_SetParamEntityParsing(parser, XML_PARAM_ENTITY_PARSING_ALWAYS);
}

XML_Status Reader::feed(Level& level, std::u16string_view text, bool isLast) {
    XML_Status status = XML_STATUS_OK;
    do {
        const std::u16string_view part = text.substr(0, kMostUnitsAtOnce);
        text.remove_prefix(part.size());
        status = XML_Parse(level.parser.get(), reinterpret_cast<const char*>(part.data()),
                           static_cast<int>(part.size() * sizeof(char16_t)),
                           isLast && text.empty() ? XML_TRUE : XML_FALSE);
    } while (status == XML_STATUS_OK && !text.empty());
    return status;
}

void Reader::stop(State state) {
    state_ = state;
    for (const auto& level : levels_) {
        XML_StopParser(level->parser.get(), XML_FALSE);
    }
}

bool Reader::read(std::u16string_view text) {
    add(NodeKind::other);
    document_.texts.reserve(text.size());
    Level& whole = *levels_.emplace_back(std::make_unique<Level>());
    whole.parser.reset(XML_ParserCreate_MM(nullptr, &kMemory, nullptr));
    if (whole.parser == nullptr) {
        throw std::bad_alloc();
    }
    setHandlers(whole.parser.get());
    whole.text = text;
    if (feed(whole, kBefore, false) == XML_STATUS_OK) {
        whole.unitsRead = kBefore.size();
        feed(whole, text, true);
    }
    if (state_ == State::reading && XML_GetErrorCode(whole.parser.get()) != XML_ERROR_NONE) {
        noteError(whole);
    }
    if (state_ == State::outOfMemory) {
        throw std::bad_alloc();
    }
    return state_ == State::reading;
}

// Where the library is in the text of the current level.
Reader::Place Reader::place() const {
    const Level& at = *levels_[current_];
    const auto bytes = static_cast<std::size_t>(XML_GetCurrentByteIndex(at.parser.get()));
    const auto length = static_cast<std::size_t>(XML_GetCurrentByteCount(at.parser.get()));
    const std::size_t unit = bytes / sizeof(char16_t);
    const std::size_t offset = unit - std::min(unit, at.unitsRead);
    return {std::min(offset, at.text.size()), length / sizeof(char16_t)};
}

// ---- errors

void Reader::note(const XmlFault& fault) {
    current_ = 0; // what an entity holds has no place of its own
    keepError(place().end(), messageOf(fault.message, original(fault.name)));
    stop(State::ended);
}

void Reader::noteError(Level& level) {
    const XML_Error code = XML_GetErrorCode(level.parser.get());
    if (code == XML_ERROR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    settleText();
    const XmlErrorText& text = errorTextOf(code, isComment(place()), !open_.empty());
    const std::u16string message = messageOf(text.message, original(nameInError(text.where)));
    const std::size_t offset = current_ == 0 ? offsetOfError(text) : kNone;
    current_ = 0; // what an entity holds has no place of its own
    keepError(offset == kNone ? place().end() : offset, message);
    stop(State::ended);
}

bool Reader::isComment(Place at) const {
    return levels_[current_]->text.substr(at.offset).starts_with(u"<!--");
}

std::size_t Reader::offsetOfError(const XmlErrorText& text) const {
    const std::u16string_view source = levels_[current_]->text;
    const std::size_t start = place().offset;
    switch (text.where) {
    case XmlErrorPlace::named:
        return start + text.shift;
    case XmlErrorPlace::behindReference: {
        const std::size_t end = source.find(u';', start);
        return end == kNone ? start : end + 1;
    }
    case XmlErrorPlace::endOfText:
        break;
    }
    return source.size();
}

void Reader::keepError(std::size_t offset, std::u16string message) {
    if (options_.keepPositions) {
        const std::size_t end = levels_.front()->text.size();
        document_.error = XmlError{std::min(offset, end), std::move(message)};
    }
}

std::u16string_view Reader::nameInError(XmlErrorPlace where) const {
    if (where != XmlErrorPlace::behindReference) {
        return open_.empty() ? std::u16string_view{} : open_.back().name;
    }
    const std::u16string_view source = levels_[current_]->text.substr(place().offset);
    const std::size_t start = source.find_first_of(u"&%");
    const std::size_t end = source.find(u';');
    return start < end && end != kNone ? source.substr(start + 1, end - start - 1)
                                       : std::u16string_view{};
}

// ---- elements

XmlNode& Reader::add(NodeKind kind) {
    return document_.nodes.emplace_back(XmlNode{kind, parent_});
}

void Reader::onStart(const XML_Char* name, const XML_Char** attributes) {
    const Place at = place();
    if (current_ > 0 && at.offset == 0) {
        return; // the element around an entity's text
    }
    flushText();
    doctype_.countReferences(sourceOf(at));
    checkXml(open_.size() < kMostDepth, u"the elements are nested too deeply");
    const std::u16string_view kept = keepName(original(unitsOf(name)));
    const std::size_t first = document_.attributes.size();
    addAttributes(kept, attributes);
    XmlNode& element = add(NodeKind::element);
    element.name = kept;
    element.first = first;
    element.count = document_.attributes.size() - first;
    ++elements_;
    keepTag(at);
    open_.push_back({kept, doctype_.contentOf(unitsOf(name)), current_, elements_});
    open();
}

void Reader::addAttributes(std::u16string_view element, const XML_Char** attributes) {
    std::size_t count = 0;
    while (attributes[2 * count] != nullptr) {
        ++count;
    }
    checkXml(count <= kMostAttributes, u"an element has too many attributes");
    const std::size_t first = document_.attributes.size();
    bool needsNamespaces = Namespaces::concern(element);
    for (; *attributes != nullptr; attributes += 2) {
        const std::u16string_view name = keepName(original(unitsOf(attributes[0])));
        const std::u16string_view value = unitsOf(attributes[1]);
        document_.attributes.push_back({name, document_.texts.size(), value.size()});
        document_.texts.append(value);
        if (Namespaces::concern(name)) {
            needsNamespaces = true;
        }
        if (name.starts_with(u"xmlns")) {
            keepName(value);
        }
    }
    // The library counts names and values, those of the start tag first.
    const auto specified =
        static_cast<std::size_t>(XML_GetSpecifiedAttributeCount(level().parser.get())) / 2;
    for (std::size_t i = specified; i < count; ++i) {
        addedUnits_ += kAttributeUnits + document_.attributes[first + i].count;
        checkXml(addedUnits_ <= kAddedUnits, u"too many attributes have default values");
    }
    if (needsNamespaces) {
        checkNamespaces(element, first, specified);
    }
}

void Reader::checkNamespaces(std::u16string_view element, std::size_t first,
                             std::size_t specified) {
    std::vector<Namespaces::Attribute> attributes;
    for (std::size_t i = first; i < document_.attributes.size(); ++i) {
        const XmlAttribute& at = document_.attributes[i];
        attributes.push_back({at.name, document_.units(at.first, at.count), i < first + specified});
    }
    namespaces_.open(element, attributes, open_.size());
}

void Reader::keepTag(Place at) {
    if (options_.keepPositions) {
        const std::size_t parent = open_.empty() ? 0 : open_.back().number;
        document_.tags.push_back(current_ == 0 ? XmlTag{at.offset, at.length, parent}
                                               : XmlTag{0, 0, parent});
    }
}

// An element must end in the text in which it began.
void Reader::onEnd(const XML_Char*) {
    flushText();
    const Place at = place();
    if (current_ > 0 && at.length > 0 && at.end() == level().text.size()) {
        level().isComplete = true;
        return;
    }
    checkXml(!open_.empty() && open_.back().level == current_, u"partial markup in entity value");
    open_.pop_back();
    namespaces_.close(open_.size());
    close();
}

// Names are kept once, however many elements have them.
std::u16string_view Reader::keepName(std::u16string_view text) {
    const auto found = document_.names.find(text);
    if (found != document_.names.end()) {
        return *found;
    }
    checkXml(document_.names.size() < kMostNames, u"there are too many different names");
    return *document_.names.emplace(text).first;
}

// ---- texts and other nodes

// A reference ends a stretch of text, which counts as a whole or not at all.
void Reader::onText(const XML_Char* text, int length) {
    if (inCdata_) {
        return;
    }
    const Place at = place();
    if (at.length > 0 && level().text[at.offset] == u'&') {
        flushText();
    }
    text_.append(unitsOf(text, length));
    // The library may report "]" at the end of a text with a place that is too short.
    textEnd_ = std::max(at.end(), at.offset + static_cast<std::size_t>(length));
}

// Text that the document type does not allow is left out of the document.
void Reader::flushText() {
    if (text_.empty()) {
        return;
    }
    const TextContent content = open_.empty() ? TextContent::none : open_.back().content;
    if (content == TextContent::any || (content == TextContent::blanks && isBlank(text_))) {
        const XmlNode& last = document_.nodes.back();
        const bool continues = last.kind == NodeKind::text && last.parent == parent_;
        XmlNode& node = continues ? document_.nodes.back() : add(NodeKind::text);
        node.first = continues ? node.first : document_.texts.size();
        node.count += text_.size();
        document_.texts.append(text_);
    }
    text_.clear();
}

// After an error: the text in front of it is kept, unless the error stands in it.
void Reader::settleText() {
    const std::u16string_view behind = level().text.substr(std::min(textEnd_, level().text.size()));
    if (behind.empty() || behind.front() == u'<' || behind.front() == u'&') {
        flushText();
    }
    text_.clear();
}

void Reader::onComment(const XML_Char*) {
    seeDeclarations();
    if (!inDoctype_) {
        flushText();
        add(NodeKind::comment);
    }
}

void Reader::onInstruction(const XML_Char* target, const XML_Char*) {
    seeDeclarations();
    flushText();
    checkWithoutColon(unitsOf(target));
    if (!inDoctype_) {
        add(NodeKind::other);
    }
}

void Reader::onCdataStart() {
    flushText();
    inCdata_ = true;
}

void Reader::onCdataEnd() {
    inCdata_ = false;
    add(NodeKind::cdata);
}

// ---- the document type

void Reader::onDoctype(const XML_Char* name, const XML_Char*, const XML_Char*, int) {
    checkQualified(unitsOf(name));
    add(NodeKind::other);
    inDoctype_ = true;
    seen_ = place().end();
}

void Reader::onDoctypeEnd() {
    seeDeclarations();
    inDoctype_ = false;
}

void Reader::onEntity(const XML_Char* name, int isParameter, const XML_Char* value, int length,
                      const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*) {
    doctype_.declareEntity(unitsOf(name), isParameter != 0,
                           value != nullptr ? std::optional(unitsOf(value, length)) : std::nullopt);
}

void Reader::onOther(const XML_Char* text, int length) {
    if (inDoctype_) {
        seeDeclarations();
        doctype_.addToken(unitsOf(text, length));
    }
}

// The library does not report references to parameter entities that it expands:
// they are in what it leaves out.
void Reader::seeDeclarations() {
    if (!inDoctype_) {
        return;
    }
    const Place at = place();
    // For what comes out of such an entity the library gives the place of the
    // reference to it.
    const std::size_t end = sourceOf(at).starts_with(u'%') ? at.end() : at.offset;
    if (end > seen_) {
        doctype_.countParameterReferences(level().text.substr(seen_, end - seen_));
    }
    seen_ = std::max(seen_, at.end());
}

// ---- entities

void Reader::onReference(const XML_Char* name, int isParameter) {
    XmlEntity* entity = doctype_.findEntity(unitsOf(name));
    if (isParameter != 0) {
        return;
    }
    flushText();
    if (entity != nullptr) {
        expand(*entity, unitsOf(name));
    }
}

// An entity is a node, and what its text holds stands in that node.
void Reader::expand(XmlEntity& entity, std::u16string_view name) {
    // The innermost entity is left out: one that refers to itself directly is found
    // one expansion later, when it is no longer the innermost.
    const auto outer = expanding_.end() - (expanding_.empty() ? 0 : 1);
    if (std::find(expanding_.begin(), outer, &entity) != outer) {
        throw XmlFault{u"recursive entity expansion '{}'", name};
    }
    checkXml(current_ < kMostOpenEntities, u"the entities expand too far");
    doctype_.countExpansions(1);
    add(NodeKind::other);
    open();
    expanding_.push_back(&entity);
    ++current_;
    readEntity(entity);
    if (state_ != State::reading) {
        return;
    }
    --current_;
    expanding_.pop_back();
    close();
}

void Reader::readEntity(const XmlEntity& entity) {
    Level& at = entityLevel();
    at.wrapped = wrapped(entity.value);
    at.text = at.wrapped;
    at.isComplete = false;
    textEnd_ = 0;
    const XML_Status status = feed(at, at.text, false);
    if (state_ != State::reading) {
        return;
    }
    if (status == XML_STATUS_OK) {
        if (!at.isComplete) {
            settleText();
            throw XmlFault{u"partial markup in entity value"};
        }
        at.unitsRead += at.text.size();
        return;
    }
    // An element that is open where the text ends is an error only when another
    // one ends before it.
    const bool isOpenAtEnd = XML_GetErrorCode(at.parser.get()) == XML_ERROR_TAG_MISMATCH &&
                             place().offset + kWrapperEnd.size() == at.text.size() + 2;
    if (!isOpenAtEnd) {
        noteError(at);
        return;
    }
    flushText();
    levels_.erase(levels_.begin() + static_cast<std::ptrdiff_t>(current_));
}

// The level for an entity's text. Each keeps its parser, since making one copies
// all that the document type declares.
Reader::Level& Reader::entityLevel() {
    if (current_ == levels_.size()) {
        auto made = std::make_unique<Level>();
        made->parser.reset(XML_ExternalEntityParserCreate(
            levels_.front()->parser.get(), reinterpret_cast<const XML_Char*>(u""), nullptr));
        if (made->parser == nullptr || feed(*made, kByteOrder, false) != XML_STATUS_OK) {
            throw std::bad_alloc();
        }
        made->unitsRead = kByteOrder.size();
        levels_.push_back(std::move(made));
    }
    return level();
}

} // namespace

void readXml(std::u16string_view text, const XmlOptions& options, XmlDocument& document) {
    std::u16string copy;
    text = withoutLoneSurrogates(text, copy);
    NameStandIns standIns;
    if (Reader(options, standIns, document).read(text) || allAscii(text)) {
        return;
    }
    // The library may have refused a letter of a name.
    std::u16string withStandIns(text);
    if (standIns.apply(withStandIns)) {
        document = {};
        Reader(options, standIns, document).read(withStandIns);
    }
}

} // namespace tvml
