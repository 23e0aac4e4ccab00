// The template variants of one conversion run and the choice among them.
#ifndef TVML_STAGING_TEMPLATE_DB_H
#define TVML_STAGING_TEMPLATE_DB_H

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "staging/template.h"

namespace tvml {

// The key of variants that serve all characters.
inline constexpr char16_t sharedKey = u'$';

enum class SwitchMode : std::uint8_t { unset, toggle, random };

// Uniformly distributed integers 0 to 32767.
class RandomGenerator {
public:
    explicit RandomGenerator(std::uint32_t seed = 1) : state_(seed) {}
    std::uint32_t next() {
        state_ = state_ * 214013u + 2531011u;
        return (state_ >> 16) & 0x7FFFu;
    }

private:
    std::uint32_t state_;
};

// One variant: its template and where the description gives it.
struct Variant {
    Template text;
    std::size_t element = 0; // number of the XML element, 0 for a built-in text
};

// The variant number (from 1) that random mode takes of `count` for the draw.
std::size_t randomVariant(std::size_t count, std::uint32_t draw);

// Variants 1, 2, 3 … in order of registration, and the toggle counter.
class VariantList {
public:
    void add(std::u16string text, std::size_t element) {
        variants_.push_back(
            std::make_unique<const Variant>(Variant{Template(std::move(text)), element}));
    }

    // The number of the next variant in the given mode, or 0 when there is none.
    std::size_t select(SwitchMode mode, RandomGenerator& random);

    const Variant& variant(std::size_t number) const { return *variants_[number - 1]; }
    std::size_t size() const { return variants_.size(); }
    bool empty() const { return variants_.empty(); }
    void removeLast() { variants_.pop_back(); }

private:
    std::vector<std::unique_ptr<const Variant>> variants_; // each stays where it is
    std::size_t counter_ = 1;
};

// Variants per character letter "A" to "Z" or `sharedKey`.
class TemplateCollection {
public:
    // False when `key` is no key of the collection.
    bool registerTemplate(char16_t key, std::u16string text, std::size_t element = 0);

    // The next variant for `key`, else for all characters; null when there is
    // none. Stays valid for the life of the collection.
    const Variant* selectTemplate(char16_t key, SwitchMode mode, RandomGenerator& random);

    const VariantList* variantsOf(char16_t key) const;

private:
    static std::size_t slotOf(char16_t key);

    static constexpr std::size_t kSlots = 27;   // "A" to "Z", then the shared key
    std::array<std::uint16_t, kSlots> lists_{}; // number of the list, 0 for none
    std::vector<VariantList> used_;
};

// Variants per pair of letters in ascending order, or "$".
class PairTemplateCollection {
public:
    bool registerTemplate(std::u16string_view key, std::u16string text, std::size_t element = 0);
    const Variant* selectTemplate(std::u16string_view key, SwitchMode mode,
                                  RandomGenerator& random);
    const VariantList* variantsOf(std::u16string_view key) const;

private:
    std::map<std::u16string, VariantList, std::less<>> lists_;
};

// Variants without keys.
class SimpleTemplateCollection {
public:
    bool registerTemplate(std::u16string text, std::size_t element = 0);
    const Variant* selectTemplate(SwitchMode mode, RandomGenerator& random);
    std::size_t size() const { return list_.size(); }
    const VariantList& variants() const { return list_; }

private:
    VariantList list_;
};

struct TitleFonts {
    std::u16string titlefont_ja;
    std::u16string titlefont_en;
    std::u16string subtitlefont_ja;
    std::u16string subtitlefont_en;

    bool complete() const {
        return !titlefont_ja.empty() && !titlefont_en.empty() && !subtitlefont_ja.empty() &&
               !subtitlefont_en.empty();
    }
};

// Simple variants with four fonts each.
class TitleTemplateCollection {
public:
    // False, with nothing added, when the text or a font is empty.
    bool registerTemplate(std::u16string text, TitleFonts fonts, std::size_t element = 0);

    // As for the simple kind; `fonts` is left as it was when nothing is chosen.
    const Variant* selectTemplate(SwitchMode mode, RandomGenerator& random, TitleFonts& fonts);
    std::size_t size() const { return list_.size(); }
    const VariantList& variants() const { return list_; }

private:
    VariantList list_;
    std::vector<TitleFonts> fonts_;
};

} // namespace tvml

#endif
