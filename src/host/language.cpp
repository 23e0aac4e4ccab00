// Texts for the terminal. Entries: chooseLanguage, say.
#include "host/language.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <system_error>

#include "diagnostics/text_width.h"
#include "platform/host_services.h"
#include "platform/platform.h"

namespace tvml::host {
namespace {

Language chosen = Language::en;

constexpr std::string_view kOption = "--language";

// What stands behind the last --language, or "=" behind it; the command line
// refuses what is no language.
std::optional<Language> givenLanguage(const std::vector<std::string>& arguments) {
    std::optional<Language> given;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == kOption && i + 1 < arguments.size()) {
            given = languageNamed(arguments[i + 1]);
        } else if (argument.starts_with(kOption) &&
                   argument.substr(kOption.size()).starts_with('=')) {
            given = languageNamed(argument.substr(kOption.size() + 1));
        }
    }
    return given;
}

struct SystemFailure {
    std::errc code;
    Message text;
};
constexpr SystemFailure kSystemFailures[] = {
    {std::errc::no_such_file_or_directory, Message::system_missing},
    {std::errc::permission_denied, Message::system_denied},
    {std::errc::is_a_directory, Message::system_folder},
    {std::errc::not_a_directory, Message::system_noFolder},
    {std::errc::file_exists, Message::system_exists},
    {std::errc::no_space_on_device, Message::system_full},
    {std::errc::read_only_file_system, Message::system_readOnly},
    {std::errc::filename_too_long, Message::system_longName},
    {std::errc::too_many_files_open, Message::system_manyFiles},
};

// The texts of the catalogue are UTF-16, values and results UTF-8; values may be
// no UTF-8 at all, as file names are, and stay as they are.
std::string filled(std::u16string_view text, Values values) {
    const std::string pattern = utf8(text);
    std::string result;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const auto value = pattern[i] == '%' && i + 1 < pattern.size()
                               ? static_cast<std::size_t>(pattern[i + 1] - '1')
                               : values.size();
        if (value < values.size()) {
            result += harmlessBytes(*(values.begin() + value));
            ++i;
        } else {
            result += pattern[i];
        }
    }
    return result;
}

} // namespace

Language language() {
    return chosen;
}

void chooseLanguage(const std::vector<std::string>& arguments) {
    const std::optional<Language> given = givenLanguage(arguments);
    chosen =
        given.has_value() ? *given : languageNamed(platform::userLanguage()).value_or(Language::en);
}

std::string utf8(std::u16string_view text) {
    return platform::system().toUtf8(text);
}

std::u16string utf16(std::string_view bytes) {
    return platform::decode(bytes, platform::CodePage::utf8).text;
}

std::u16string_view label(Message message) {
    return textOf(message, language());
}

std::string say(Message message, Values values) {
    return filled(label(message), values);
}

std::string sayCounted(Message message, std::size_t number, Values values) {
    return filled(counted(message, language(), number), values);
}

std::string systemText(const std::string& failure) {
    const auto row = std::ranges::find(kSystemFailures, failure, [](const SystemFailure& each) {
        return std::make_error_code(each.code).message();
    });
    return row == std::end(kSystemFailures) ? failure : say(row->text);
}

std::string errorLine(std::string_view text) {
    return ("tvmlfilter: " + say(Message::severity_error) + ": ").append(text);
}

std::string errorLine(Message message, Values values) {
    return errorLine(say(message, values));
}

} // namespace tvml::host
