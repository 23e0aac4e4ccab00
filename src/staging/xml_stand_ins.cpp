// The names in a text that the library would not take. Entry: NameStandIns.
#include "staging/xml_stand_ins.h"

#include <algorithm>

#include "vocabulary/unit_search.h"
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

// A text part by part: tags and declarations outside their quotes, and
// references, in which names can stand, and what is between them.
class Parts {
public:
    explicit Parts(std::u16string_view text) : text_(text) {}

    // The next part, from `begin` on; false at the end of the text.
    bool next() {
        begin = end;
        if (begin >= text_.size()) {
            return false;
        }
        const char16_t first = text_[begin];
        end = first == u'<' ? endOfNameless(text_, begin) : begin;
        hasNames = end == begin;
        if (hasNames) {
            readOther(first);
        }
        return true;
    }

    std::size_t begin = 0;
    std::size_t end = 0;
    bool hasNames = false;

private:
    void readOther(char16_t first) {
        if (first == u'&') {
            end = find(u";<>&'\" \n");
        } else if (inTag_ && (first == u'"' || first == u'\'')) {
            const std::size_t close = text_.find(first, begin + 1);
            end = close == kNone ? text_.size() : close + 1;
            hasNames = false;
        } else {
            inTag_ = first == u'<' || (inTag_ && first != u'>');
            end = inTag_ ? endOfNames() : std::min(next(u'<', tag_), next(u'&', reference_));
            hasNames = inTag_;
        }
    }
    // Nearly all units of tags are beyond ">", so one comparison does for them.
    std::size_t endOfNames() const {
        std::size_t at = begin + 1;
        while (at < text_.size() && (text_[at] > u'>' || text_[at] == u' ' || !isMark(text_[at]))) {
            ++at;
        }
        return at;
    }
    static bool isMark(char16_t unit) {
        return unit == u'<' || unit == u'>' || unit == u'&' || unit == u'"' || unit == u'\'';
    }
    // The next `unit`, where `known` remembers it until it is passed.
    std::size_t next(char16_t unit, std::size_t& known) const {
        if (known <= begin) {
            known = std::min(findUnit(text_, unit, begin + 1), text_.size());
        }
        return known;
    }
    std::size_t find(const char16_t* units) const {
        return std::min(text_.find_first_of(units, begin + 1), text_.size());
    }

    std::u16string_view text_;
    bool inTag_ = false;
    std::size_t tag_ = 0;
    std::size_t reference_ = 0;
};

} // namespace

std::u16string_view NameStandIns::apply(std::u16string_view text, std::u16string& copy) {
    bool isCopied = false;
    Parts part(text);
    while (part.next()) {
        const std::u16string_view units = text.substr(part.begin, part.end - part.begin);
        if (!part.hasNames || std::none_of(units.begin(), units.end(), isLetter)) {
            continue;
        }
        if (!isCopied) {
            copy = text;
            isCopied = true;
        }
        replaceNames(copy, part.begin, part.end);
    }
    return isCopied ? std::u16string_view(copy) : text;
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
