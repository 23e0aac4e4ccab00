// Entries: DescriptionSource, attributeNames, attributeSource.
#include "diagnostics/description_source.h"

#include <algorithm>

namespace tvml {
namespace {

bool isXmlBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r';
}

// An attribute of a start tag: its name and its value between the quotes.
struct Attribute {
    std::u16string_view name;
    std::u16string_view value;
};

// Calls `visit` for each attribute. The tag is known to be well-formed, since
// the XML library reported its element.
template <typename Visit> void visitAttributes(std::u16string_view tag, Visit visit) {
    std::size_t at = 1;
    while (at < tag.size() && !isXmlBlank(tag[at]) && tag[at] != u'>' && tag[at] != u'/') {
        ++at;
    }
    while (at < tag.size()) {
        while (at < tag.size() && isXmlBlank(tag[at])) {
            ++at;
        }
        const std::size_t equals = tag.find(u'=', at);
        const std::size_t open = tag.find_first_of(u"\"'", at);
        if (equals == kNone || open == kNone || equals > open) {
            return;
        }
        std::size_t end = equals;
        while (end > at && isXmlBlank(tag[end - 1])) {
            --end;
        }
        const std::size_t close = std::min(tag.find(tag[open], open + 1), tag.size());
        visit(Attribute{tag.substr(at, end - at), tag.substr(open + 1, close - open - 1)});
        at = close + 1;
    }
}

} // namespace

DescriptionSource::DescriptionSource(std::u16string_view text) : text_(text), lineStarts_{0} {
    for (std::size_t at = text.find(u'\n'); at != kNone; at = text.find(u'\n', at + 1)) {
        lineStarts_.push_back(at + 1);
    }
}

TextRange DescriptionSource::rangeAt(std::size_t offset, std::size_t units) const {
    if (offset == kNone) {
        return {};
    }
    const auto next = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
    const std::size_t start = *(next - 1);
    const std::size_t lineEnd = next == lineStarts_.end() ? text_.size() : *next - 1;
    return {static_cast<std::int32_t>(next - lineStarts_.begin()), offset - start,
            std::min(units, lineEnd - std::min(offset, lineEnd))};
}

TextRange DescriptionSource::rangeOf(std::u16string_view part) const {
    return rangeAt(static_cast<std::size_t>(part.data() - text_.data()), part.size());
}

std::u16string_view DescriptionSource::textOf(XmlTag tag) const {
    return tag.length > 0 ? text_.substr(tag.offset, tag.length) : std::u16string_view{};
}

std::vector<std::u16string_view> attributeNames(std::u16string_view tag) {
    std::vector<std::u16string_view> names;
    visitAttributes(tag, [&](const Attribute& attribute) { names.push_back(attribute.name); });
    return names;
}

std::u16string_view attributeSource(std::u16string_view tag, std::u16string_view name) {
    std::u16string_view value;
    visitAttributes(tag, [&](const Attribute& attribute) {
        value = attribute.name == name ? attribute.value : value;
    });
    return value;
}

} // namespace tvml
