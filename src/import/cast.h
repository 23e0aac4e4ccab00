// Who speaks with which letter.
#ifndef TVML_IMPORT_CAST_H
#define TVML_IMPORT_CAST_H

#include <functional>
#include <map>
#include <span>

#include "import/play.h"

namespace tvml::plays {

// A letter that was asked for.
struct CastWish {
    std::u16string name;
    char16_t letter = u'A';
};

struct CastMember {
    std::u16string name; // empty for speeches without one
    char16_t letter = u'A';
    std::size_t speeches = 0;
    bool shares = false; // had no letter left
};

class Cast {
public:
    // Names get letters in the order of their speeches, those of most speeches
    // first, of as many the one that speaks first; wishes come before. When the
    // letters are spent, the rest share the one that was given last. Names of
    // several, "太郎・花子", share that of the first of them.
    Cast(const Play& play, std::span<const CastWish> wishes);

    // In the order of the letters' giving.
    const std::vector<CastMember>& members() const { return members_; }
    char16_t letterOf(std::u16string_view name) const;

    static constexpr std::size_t kLongestActor = 32;

    // Whose name stands at the start of a direction, and how many units it takes
    // with what joins it to the rest; null for nobody.
    const CastMember* actorOf(std::u16string_view direction, std::size_t& units) const;

    // Wishes for names that nobody has.
    const std::vector<std::u16string>& unknown() const { return unknown_; }

private:
    void count(const Play& play);
    void grant(std::span<const CastWish> wishes);
    void giveLetters();
    const CastMember* firstOfSeveral(std::u16string_view given) const;
    CastMember* find(std::u16string_view name);

    std::vector<CastMember> members_;
    std::map<std::u16string, std::size_t, std::less<>> places_; // in members_
    std::map<std::u16string, char16_t, std::less<>> wished_;
    std::vector<std::u16string> unknown_;
};

} // namespace tvml::plays

#endif
