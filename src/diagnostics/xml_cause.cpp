// Looking for the first mistake in an XML text. Entry: causeOf.
#include "diagnostics/xml_cause.h"

#include <algorithm>
#include <vector>

#include "reading/script_text.h"

namespace tvml {
namespace {

bool isBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
}

// Names may hold most letters of all scripts; only what stands around them counts.
bool startsName(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_' ||
           unit == u':' || unit >= 0x80;
}
bool isNameUnit(char16_t unit) {
    return startsName(unit) || (unit >= u'0' && unit <= u'9') || unit == u'-' || unit == u'.';
}

struct OpenElement {
    std::u16string_view name;
    std::u16string_view tag;
};

class CauseFinder {
public:
    explicit CauseFinder(std::u16string_view text) : text_(text) {}

    XmlCause run() {
        const std::size_t start = std::min(text_.find_first_not_of(u" \t\r\n\xFEFF"), text_.size());
        if (text_.substr(start).starts_with(u"<?xml") && text_.size() > start + 5 &&
            isBlank(text_[start + 5])) {
            return {XmlMistake::declaration, text_.substr(start, 5), {}, {}};
        }
        while (cause_.mistake == XmlMistake::none && at_ < text_.size()) {
            at_ = std::min(text_.find_first_of(u"<&", at_), text_.size());
            if (at_ < text_.size()) {
                text_[at_] == u'&' ? readReference() : readMarkup();
            }
        }
        if (cause_.mistake == XmlMistake::none && open_.size() == 1) {
            const std::size_t last = text_.find_last_not_of(u" \t\r\n");
            cause_ = {XmlMistake::rootEnd, text_.substr(last, 1), open_[0].name, open_[0].tag};
        } else if (cause_.mistake == XmlMistake::none && !open_.empty()) {
            tellUnclosed();
        }
        return cause_;
    }

private:
    void tell(XmlMistake mistake, std::u16string_view where) { cause_ = {mistake, where, {}, {}}; }

    void tellUnclosed() {
        const OpenElement& last = open_.back();
        cause_ = {XmlMistake::unclosed, last.tag, last.name, last.tag};
    }

    std::u16string_view nameAt(std::size_t at) const {
        std::size_t end = at;
        while (end < text_.size() &&
               (end == at ? startsName(text_[end]) : isNameUnit(text_[end]))) {
            ++end;
        }
        return text_.substr(at, end - at);
    }

    void readReference() {
        const std::size_t start = at_++;
        const bool isNumber = text_.substr(at_).starts_with(u'#');
        std::size_t end = at_ + (isNumber ? 1 : 0);
        while (end < text_.size() && isNameUnit(text_[end])) {
            ++end;
        }
        const bool isRight = end > at_ && end < text_.size() && text_[end] == u';' &&
                             (isNumber || startsName(text_[at_]));
        if (!isRight) {
            tell(XmlMistake::loneAmpersand, text_.substr(start, 1));
        }
        at_ = end;
    }

    // Passes what ends with `end`; false when the text ends before it.
    bool pass(std::u16string_view end) {
        const std::size_t found = text_.find(end, at_);
        at_ = found == kNone ? text_.size() : found + end.size();
        return found != kNone;
    }

    void readMarkup() {
        const std::u16string_view rest = text_.substr(at_);
        if (rest.starts_with(u"<!--")) {
            const std::size_t start = at_;
            const bool ends = pass(u"-->");
            const std::u16string_view comment = text_.substr(start, at_ - start);
            if (!ends || comment.find(u"<!--", 4) != kNone) {
                tell(XmlMistake::commentEnd, comment.substr(0, comment.find(u'\n')));
            }
        } else if (rest.starts_with(u"<![CDATA[")) {
            pass(u"]]>");
        } else if (rest.starts_with(u"<?")) {
            pass(u"?>");
        } else if (rest.starts_with(u"<!")) {
            passDocumentType();
        } else if (rest.starts_with(u"</")) {
            readEndTag();
        } else if (rest.size() > 1 && startsName(rest[1])) {
            readStartTag();
        } else {
            tell(XmlMistake::loneLess, rest.substr(0, 1));
        }
    }

    void passDocumentType() {
        const std::size_t subset = text_.find_first_of(u"[>", at_);
        if (subset != kNone && text_[subset] == u'[') {
            pass(u"]");
        }
        pass(u">");
    }

    void readEndTag() {
        const std::size_t start = at_;
        const std::u16string_view name = nameAt(at_ + 2);
        at_ = std::min(text_.find_first_of(u"<>", at_ + 1), text_.size());
        const std::u16string_view tag = text_.substr(start, at_ + 1 - start);
        if (!tag.ends_with(u'>')) {
            return tell(XmlMistake::tagEnd, tag.substr(0, 2 + name.size()));
        }
        if (!open_.empty() && open_.back().name == name) {
            open_.pop_back();
        } else if (std::any_of(open_.begin(), open_.end(),
                               [&](const OpenElement& each) { return each.name == name; })) {
            tellUnclosed();
        } else {
            tell(XmlMistake::strayEndTag, tag);
            if (!open_.empty()) {
                cause_.name = open_.back().name;
                cause_.open = open_.back().tag;
            }
        }
    }

    void readStartTag() {
        const std::size_t start = at_;
        const std::u16string_view name = nameAt(at_ + 1);
        at_ += 1 + name.size();
        while (at_ < text_.size() && text_[at_] != u'>' && text_[at_] != u'<') {
            const char16_t unit = text_[at_];
            if (unit == u'"' || unit == u'\'') {
                const std::size_t close = text_.find(unit, at_ + 1);
                if (close == kNone || text_.substr(at_, close - at_).find(u'<') != kNone) {
                    return tellInTag(start, text_.substr(at_, 1));
                }
                checkReferences(at_ + 1, close);
                if (cause_.mistake != XmlMistake::none) {
                    return;
                }
                at_ = close;
            } else if (unit == u'=' && !hasQuote(at_ + 1)) {
                return tellInTag(start, text_.substr(at_, 1));
            }
            ++at_;
        }
        if (at_ == text_.size() || text_[at_] == u'<') {
            return tellInTag(start, text_.substr(start, 1));
        }
        if (text_[at_ - 1] != u'/') {
            open_.push_back({name, text_.substr(start, at_ + 1 - start)});
        }
    }

    // A fault within a start tag. One in the middle of a text was hardly meant as a
    // tag, and one whose first line is whole only lacks its end.
    void tellInTag(std::size_t start, std::u16string_view fault) {
        const std::u16string_view before = text_.substr(0, start);
        const std::size_t last = before.find_last_not_of(u" \t");
        const bool inText =
            last != kNone && before[last] != u'\n' && before[last] != u'\r' && before[last] != u'>';
        const std::size_t firstLine = std::min(text_.find(u'\n', start), text_.size());
        if (inText) {
            tell(XmlMistake::loneLess, text_.substr(start, 1));
        } else if (fault.data() > text_.data() + firstLine || fault == u"<") {
            tell(XmlMistake::tagEnd, text_.substr(start, firstLine - start));
        } else {
            tell(XmlMistake::attributeQuote, fault);
        }
    }

    bool hasQuote(std::size_t at) const {
        at = std::min(text_.find_first_not_of(u" \t\r\n", at), text_.size());
        return at < text_.size() && (text_[at] == u'"' || text_[at] == u'\'');
    }

    void checkReferences(std::size_t from, std::size_t to) {
        const std::size_t behind = at_;
        for (at_ = text_.find(u'&', from); at_ < to; at_ = text_.find(u'&', at_)) {
            readReference();
            if (cause_.mistake != XmlMistake::none) {
                return;
            }
        }
        at_ = behind;
    }

    std::u16string_view text_;
    std::size_t at_ = 0;
    std::vector<OpenElement> open_;
    XmlCause cause_;
};

} // namespace

XmlCause causeOf(std::u16string_view text) {
    return CauseFinder(text).run();
}

} // namespace tvml
