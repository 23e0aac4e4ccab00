// Texts by name and language. Entries: textOf, formatted, counted.
#include "texts/catalogue.h"

#include <algorithm>

#include "texts/catalogue_data.h"

namespace tvml {
namespace {

const CatalogueLanguage& catalogueOf(Language language) {
    return kCatalogueLanguages[static_cast<std::size_t>(language)];
}

std::u16string_view formOf(Message message, const CatalogueLanguage& catalogue, std::size_t form) {
    return catalogue.texts[static_cast<std::size_t>(message) * catalogue.forms + form];
}

std::u16string filled(std::u16string_view text, TextValues values, std::u16string_view number) {
    std::u16string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t mark = text[i] == u'%' && i + 1 < text.size() ? text[i + 1] : u'\0';
        if (mark == u'n') {
            result += number;
            ++i;
        } else if (mark >= u'1' && static_cast<std::size_t>(mark - u'1') < values.size()) {
            result += *(values.begin() + (mark - u'1'));
            ++i;
        } else {
            result += text[i];
        }
    }
    return result;
}

} // namespace

std::optional<Language> languageNamed(std::string_view name) {
    name = name.substr(0, name.find_first_of("_-.@"));
    for (std::size_t i = 0; i < kCatalogueLanguages.size(); ++i) {
        if (kCatalogueLanguages[i].name == name) {
            return static_cast<Language>(i);
        }
    }
    return std::nullopt;
}

std::string_view nameOf(Language language) {
    return catalogueOf(language).name;
}

std::vector<std::string_view> languageNames() {
    std::vector<std::string_view> names;
    for (const CatalogueLanguage& catalogue : kCatalogueLanguages) {
        names.push_back(catalogue.name);
    }
    return names;
}

bool namesCommandsByWords(Language language) {
    return catalogueOf(language).wordsOfVocabulary;
}

std::u16string_view textOf(Message message, Language language) {
    return formOf(message, catalogueOf(language), catalogueOf(language).forms - 1);
}

std::u16string formatted(Message message, Language language, TextValues values) {
    return filled(textOf(message, language), values, u"%n");
}

std::u16string counted(Message message, Language language, std::size_t number, TextValues values) {
    const CatalogueLanguage& catalogue = catalogueOf(language);
    const std::size_t form = std::min(catalogue.formOf(number), catalogue.forms - 1);
    const std::string digits = std::to_string(number);
    return filled(formOf(message, catalogue, form), values,
                  std::u16string(digits.begin(), digits.end()));
}

} // namespace tvml
