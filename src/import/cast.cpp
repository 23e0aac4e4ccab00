// Entry: Cast.
#include "import/cast.h"

#include <algorithm>
#include <bitset>

#include "import/play_lines.h"

namespace tvml::plays {
namespace {

constexpr std::u16string_view kJoints = u"・＆&／/、,+＋";

bool isLatin(char16_t unit) {
    return isUpper(unit) || isLower(unit);
}

// "ANNA and BELL" as "ANNA&BELL".
std::u16string withSigns(std::u16string_view name) {
    std::u16string result;
    while (!name.empty()) {
        const std::size_t at = std::min(name.find(u" and "), name.find(u" AND "));
        result.append(name.substr(0, at));
        if (at == kNowhere) {
            break;
        }
        result.push_back(u'&');
        name.remove_prefix(at + 5);
    }
    return result;
}

// Names are compared without regard to case in directions: "Hamlet bows."
std::u16string inCapitals(std::u16string_view text) {
    std::u16string upper(text);
    for (char16_t& unit : upper) {
        unit = isLower(unit) && unit != 0xFF && unit != 0xDF ? static_cast<char16_t>(unit - 0x20)
                                                             : unit;
    }
    return upper;
}

} // namespace

Cast::Cast(const Play& play, std::span<const CastWish> wishes) {
    count(play);
    grant(wishes);
    std::ranges::stable_sort(members_, std::ranges::greater(), &CastMember::speeches);
    for (std::size_t place = 0; place < members_.size(); ++place) {
        places_[members_[place].name] = place;
    }
    giveLetters();
}

void Cast::count(const Play& play) {
    for (const PlayItem& item : play.items) {
        if (item.kind != ItemKind::speech) {
            continue;
        }
        const auto [known, isNew] = places_.emplace(item.name, members_.size());
        if (isNew) {
            members_.push_back({item.name});
        }
        ++members_[known->second].speeches;
    }
}

CastMember* Cast::find(std::u16string_view name) {
    const auto place = places_.find(name);
    return place == places_.end() ? nullptr : &members_[place->second];
}

void Cast::grant(std::span<const CastWish> wishes) {
    for (const CastWish& wish : wishes) {
        wished_[wish.name] = wish.letter;
        if (find(wish.name) == nullptr) {
            unknown_.push_back(wish.name);
        }
    }
}

void Cast::giveLetters() {
    std::bitset<26> taken;
    for (const auto& [name, letter] : wished_) {
        taken.set(static_cast<std::size_t>(letter - u'A'));
    }
    std::size_t next = 0;
    const auto skipTaken = [&] {
        while (next < taken.size() && taken[next]) {
            ++next;
        }
    };
    char16_t last = u'Z';
    std::vector<CastMember*> several;
    for (CastMember& member : members_) {
        const auto wish = wished_.find(member.name);
        if (wish != wished_.end()) {
            member.letter = wish->second;
        } else if (firstOfSeveral(member.name) != nullptr) {
            several.push_back(&member);
        } else {
            skipTaken();
            member.shares = next == taken.size();
            last = member.shares ? last : static_cast<char16_t>(u'A' + next++);
            member.letter = last;
        }
    }
    for (CastMember* member : several) { // now that the others have theirs
        member->letter = firstOfSeveral(member->name)->letter;
        member->shares = true;
    }
}

// The first of several names, each of which speaks alone as well.
const CastMember* Cast::firstOfSeveral(std::u16string_view given) const {
    const std::u16string name = withSigns(given);
    if (name.find_first_of(kJoints) == kNowhere) {
        return nullptr;
    }
    const CastMember* first = nullptr;
    for (std::size_t at = 0; at < name.size();) {
        const std::size_t end = std::min(name.find_first_of(kJoints, at), name.size());
        const auto known = places_.find(trimmed(std::u16string_view(name).substr(at, end - at)));
        if (known == places_.end()) {
            return nullptr;
        }
        first = first == nullptr ? &members_[known->second] : first;
        at = end + 1;
    }
    return first;
}

char16_t Cast::letterOf(std::u16string_view name) const {
    const auto place = places_.find(name);
    return place == places_.end() ? u'A' : members_[place->second].letter;
}

const CastMember* Cast::actorOf(std::u16string_view direction, std::size_t& units) const {
    const std::u16string capitals = inCapitals(direction.substr(0, kLongestActor));
    for (std::size_t size = capitals.size(); size > 0; --size) {
        const auto place = places_.find(capitals.substr(0, size));
        const auto exact = place != places_.end() ? place : places_.find(direction.substr(0, size));
        if (exact == places_.end() || exact->first.empty()) {
            continue;
        }
        const std::u16string_view rest = direction.substr(size);
        const bool isCut = !rest.empty() && isLatin(direction[size - 1]) && isLatin(rest.front());
        const bool isJoined =
            !rest.empty() && (isBlank(rest.front()) || holds(u"、，,はがもの：:", rest.front()));
        if (isCut || (!rest.empty() && !isJoined)) {
            continue;
        }
        units = std::min(size + 1, direction.size());
        return &members_[exact->second];
    }
    return nullptr;
}

} // namespace tvml::plays
