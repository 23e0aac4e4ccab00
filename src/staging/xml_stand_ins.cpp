// The names in a text that the library would not take. Entry: NameStandIns.
#include "staging/xml_stand_ins.h"

#include <algorithm>

#include "vocabulary/word.h"

namespace tvml {
namespace {

// Letters that the library knows, and that are many.
constexpr std::size_t kFirstStandIn = 0xAC00;
constexpr std::size_t kLastStandIn = 0xD7A3;

struct Range {
    char16_t first;
    char16_t last;
};

// The first units of names, without those of ASCII; surrogates come in pairs.
constexpr Range kLetters[] = {{0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},
                              {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D},
                              {0x2070, 0x218F}, {0x2C00, 0x2FEF}, {0x3001, 0xDB7F},
                              {0xDC00, 0xDFFF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}};

bool isLetter(char16_t unit) {
    return unit >= std::begin(kLetters)->first &&
           std::any_of(std::begin(kLetters), std::end(kLetters), [unit](const Range& range) {
               return range.first <= unit && unit <= range.last;
           });
}

// The end of what holds no names, when that begins at `at`: a comment, a CDATA
// section or a processing instruction.
std::size_t endOfNameless(std::u16string_view text, std::size_t at) {
    constexpr struct {
        std::u16string_view start, end;
    } kKinds[] = {{u"<!--", u"-->"}, {u"<![CDATA[", u"]]>"}, {u"<?", u"?>"}};
    for (const auto& kind : kKinds) {
        if (text.substr(at).starts_with(kind.start)) {
            const std::size_t end = text.find(kind.end, at + kind.start.size());
            return end == kNone ? text.size() : end + kind.end.size();
        }
    }
    return at;
}

// A part of a text: of a tag or a declaration outside its quotes, a reference, or
// what is between them and holds no names.
struct Part {
    std::size_t end;
    bool hasNames;
};

// The part that begins at `at`; `inTag` goes from one part to the next.
Part partAt(std::u16string_view text, std::size_t at, bool& inTag) {
    const auto upTo = [&](const char16_t* units) {
        return std::min(text.find_first_of(units, at + 1), text.size());
    };
    const char16_t first = text[at];
    if (const std::size_t end = endOfNameless(text, at); end > at) {
        return {end, false};
    }
    if (first == u'&') {
        return {upTo(u";<>&'\" \n"), true};
    }
    if (inTag && (first == u'"' || first == u'\'')) {
        const std::size_t close = text.find(first, at + 1);
        return {close == kNone ? text.size() : close + 1, false};
    }
    inTag = first == u'<' || (inTag && first != u'>');
    return {upTo(inTag ? u"<>&\"'" : u"<&"), inTag};
}

} // namespace

bool NameStandIns::apply(std::u16string& text) {
    bool inTag = false;
    for (std::size_t at = 0; at < text.size();) {
        const Part part = partAt(text, at, inTag);
        if (part.hasNames) {
            replaceNames(text, at, part.end);
        }
        at = part.end;
    }
    return !standIns_.empty();
}

void NameStandIns::replaceNames(std::u16string& text, std::size_t from, std::size_t end) {
    for (std::size_t at = from; at < end; ++at) {
        if (isLetter(text[at])) {
            text[at] = standInFor(text[at], text);
        }
    }
}

// A letter that nothing else uses; the letter itself when there is none left.
char16_t NameStandIns::standInFor(char16_t unit, std::u16string_view text) {
    if (const auto known = standIns_.find(unit); known != standIns_.end()) {
        return known->second;
    }
    if (taken_.empty()) {
        taken_.resize(std::size_t{1} << 16);
        for (const char16_t used : text) {
            taken_[used] = true;
        }
        next_ = kFirstStandIn;
    }
    while (next_ <= kLastStandIn && taken_[next_]) {
        ++next_;
    }
    if (next_ > kLastStandIn) {
        return unit;
    }
    const auto standIn = static_cast<char16_t>(next_++);
    standIns_.emplace(unit, standIn);
    originals_.emplace(standIn, unit);
    return standIn;
}

std::u16string_view NameStandIns::original(std::u16string_view name, std::u16string& copy) const {
    if (originals_.empty()) {
        return name;
    }
    copy = name;
    for (char16_t& unit : copy) {
        const auto found = originals_.find(unit);
        unit = found != originals_.end() ? found->second : unit;
    }
    return copy;
}

} // namespace tvml
