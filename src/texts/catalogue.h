// What people read, in their language. The texts stand in po/, one file a
// language; a row's name there is a Message here.
//
// Conventions
//  1. Texts are UTF-16. Those that textOf returns live as long as the program.
//  2. %1 to %9 in a text stand for values, %n for a number that decides on
//     singular and plural. Nothing else is replaced; a value is taken as it is.
//  3. Every language has every text: the build sees to it.
#ifndef TVML_TEXTS_CATALOGUE_H
#define TVML_TEXTS_CATALOGUE_H

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "texts/messages.h"

namespace tvml {

// The language of "ja", or of a locale such as "ja_JP.UTF-8"; none for others.
std::optional<Language> languageNamed(std::string_view name);

std::string_view nameOf(Language language);

// The names of all languages, English first.
std::vector<std::string_view> languageNames();

// Whether texts of the language name commands by the words of the vocabulary.
bool namesCommandsByWords(Language language);

std::u16string_view textOf(Message message, Language language);

// The text with its values. A placeholder without a value stays.
using TextValues = std::initializer_list<std::u16string_view>;
std::u16string formatted(Message message, Language language, TextValues values);

// The form for so many things, with the number for %n.
std::u16string counted(Message message, Language language, std::size_t number,
                       TextValues values = {});

} // namespace tvml

#endif
