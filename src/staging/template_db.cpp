// The template collections. Entries: registerTemplate and selectTemplate of each.
#include "staging/template_db.h"

#include <algorithm>

namespace tvml {

// The smallest number with draw <= number * 32767 / count, truncated: that is
// the one with draw * count <= number * 32767, and at least 1.
std::size_t randomVariant(std::size_t count, std::uint32_t draw) {
    constexpr std::uint64_t kDraws = 32767;
    const std::uint64_t number = (std::uint64_t{draw} * count + kDraws - 1) / kDraws;
    return static_cast<std::size_t>(std::max<std::uint64_t>(1, number));
}

std::size_t VariantList::select(SwitchMode mode, RandomGenerator& random) {
    const std::size_t count = variants_.size();
    if (count == 0) {
        return 0;
    }
    if (mode != SwitchMode::toggle) {
        return randomVariant(count, random.next());
    }
    const std::size_t number = counter_;
    counter_ = number < count ? number + 1 : 1;
    return number;
}

std::size_t TemplateCollection::slotOf(char16_t key) {
    if (key == sharedKey) {
        return kSlots - 1;
    }
    return key >= u'A' && key <= u'Z' ? static_cast<std::size_t>(key - u'A') : kSlots;
}

bool TemplateCollection::registerTemplate(char16_t key, std::u16string text, std::size_t element) {
    const std::size_t slot = slotOf(key);
    if (slot == kSlots) {
        return false;
    }
    if (lists_[slot] == 0) {
        used_.emplace_back();
        lists_[slot] = static_cast<std::uint16_t>(used_.size());
    }
    used_[lists_[slot] - 1u].add(std::move(text), element);
    return true;
}

const VariantList* TemplateCollection::variantsOf(char16_t key) const {
    const std::size_t slot = slotOf(key);
    return slot == kSlots || lists_[slot] == 0 ? nullptr : &used_[lists_[slot] - 1u];
}

const Variant* TemplateCollection::selectTemplate(char16_t key, SwitchMode mode,
                                                  RandomGenerator& random) {
    std::size_t slot = slotOf(key);
    if (slot == kSlots || lists_[slot] == 0) {
        slot = kSlots - 1;
    }
    if (lists_[slot] == 0) {
        return nullptr;
    }
    VariantList& list = used_[lists_[slot] - 1u];
    const std::size_t number = list.select(mode, random);
    return number == 0 ? nullptr : &list.variant(number);
}

bool PairTemplateCollection::registerTemplate(std::u16string_view key, std::u16string text,
                                              std::size_t element) {
    auto list = lists_.find(key);
    if (list == lists_.end()) {
        list = lists_.emplace(key, VariantList{}).first;
    }
    list->second.add(std::move(text), element);
    return true;
}

const VariantList* PairTemplateCollection::variantsOf(std::u16string_view key) const {
    const auto list = lists_.find(key);
    return list == lists_.end() ? nullptr : &list->second;
}

const Variant* PairTemplateCollection::selectTemplate(std::u16string_view key, SwitchMode mode,
                                                      RandomGenerator& random) {
    auto list = lists_.find(key);
    if (list == lists_.end()) {
        list = lists_.find(std::u16string_view(&sharedKey, 1));
    }
    if (list == lists_.end()) {
        return nullptr;
    }
    const std::size_t number = list->second.select(mode, random);
    return number == 0 ? nullptr : &list->second.variant(number);
}

bool SimpleTemplateCollection::registerTemplate(std::u16string text, std::size_t element) {
    list_.add(std::move(text), element);
    return true;
}

const Variant* SimpleTemplateCollection::selectTemplate(SwitchMode mode, RandomGenerator& random) {
    const std::size_t number = list_.select(mode, random);
    return number == 0 ? nullptr : &list_.variant(number);
}

bool TitleTemplateCollection::registerTemplate(std::u16string text, TitleFonts fonts,
                                               std::size_t element) {
    if (text.empty() || !fonts.complete()) {
        return false;
    }
    list_.add(std::move(text), element);
    fonts_.push_back(std::move(fonts));
    return true;
}

const Variant* TitleTemplateCollection::selectTemplate(SwitchMode mode, RandomGenerator& random,
                                                       TitleFonts& fonts) {
    const std::size_t number = list_.select(mode, random);
    if (number == 0) {
        return nullptr;
    }
    fonts = fonts_[number - 1];
    return &list_.variant(number);
}

} // namespace tvml
