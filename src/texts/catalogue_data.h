// The compiled catalogues, as po/compile_catalogue.py writes them.
#ifndef TVML_TEXTS_CATALOGUE_DATA_H
#define TVML_TEXTS_CATALOGUE_DATA_H

#include <array>
#include <cstddef>
#include <string_view>

#include "texts/messages.h"

namespace tvml {

struct CatalogueLanguage {
    std::string_view name;                // "ja"
    bool wordsOfVocabulary;               // commands are named by them, not in English
    std::size_t forms;                    // texts a row
    const std::u16string_view* texts;     // row by row
    std::size_t (*formOf)(std::size_t n); // the plural form for n things
};

extern const std::array<CatalogueLanguage, kLanguageCount> kCatalogueLanguages;

} // namespace tvml

#endif
