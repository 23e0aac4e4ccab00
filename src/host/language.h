// The language of what the program says, and its texts in UTF-8.
#ifndef TVML_HOST_LANGUAGE_H
#define TVML_HOST_LANGUAGE_H

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "texts/catalogue.h"

namespace tvml::host {

// One for the whole program; English before it is chosen.
Language language();

// Chooses by the arguments' --language when it names one, else by the user's
// surroundings (LC_ALL, LC_MESSAGES, LANG; on Windows the language of the
// interface). Called before the arguments are read, since help is a text, too.
void chooseLanguage(const std::vector<std::string>& arguments);

// Between the texts of the core and those of the terminal. Bytes that are no
// UTF-8 end the text.
std::string utf8(std::u16string_view text);
std::u16string utf16(std::string_view bytes);

// A text of the catalogue without values, in UTF-16.
std::u16string_view label(Message message);

// A text of the catalogue with its values, which are UTF-8 as well.
using Values = std::initializer_list<std::string_view>;
std::string say(Message message, Values values = {});

// The form for so many things.
std::string sayCounted(Message message, std::size_t number, Values values = {});

// What a system says about a failure, where it says that in English alone.
std::string systemText(const std::string& failure);

// "tvmlfilter: error: " and the text.
std::string errorLine(std::string_view text);
std::string errorLine(Message message, Values values = {});

} // namespace tvml::host

#endif
