// Entries: the functions of the header.
#include "diagnostics/checking.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "memory_platform.h"
#include "run/ini_files.h"

namespace tvml {
namespace {

constexpr std::u16string_view kIniPath = u"/host/keyword.ini";

template <typename Visit> void visitLines(std::u16string_view text, Visit visit) {
    while (!text.empty()) {
        const std::size_t end = text.find(u'\n');
        visit(text.substr(0, end));
        text = end == kNone ? std::u16string_view{} : text.substr(end + 1);
    }
}

std::u16string_view lineOf(std::u16string_view text, std::int32_t number) {
    std::u16string_view found;
    std::int32_t count = 0;
    visitLines(text, [&](std::u16string_view line) { found = ++count == number ? line : found; });
    return found;
}

} // namespace

std::string repositoryFile(const std::string& name) {
    std::ifstream file(std::filesystem::path(TVML_SOURCE_DIR) / name, std::ios::binary);
    if (!file) {
        throw std::runtime_error(name + " cannot be read");
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

// A path is the standard library's way from UTF-8 to UTF-16.
std::u16string utf16(std::string_view text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end())).u16string();
}

std::string utf8(std::u16string_view text) {
    return platform::system().toUtf8(text);
}

const std::u16string& shippedVocabulary() {
    static const std::u16string kShipped = utf16(repositoryFile("config/keyword.ini"));
    return kShipped;
}

std::u16string vocabularyWith(std::u16string_view lines) {
    return vocabularyWith(shippedVocabulary(), lines);
}

std::vector<Diagnostic> foundInScript(std::u16string_view script, const TestProgramme& programme) {
    platform::MemoryPlatform platform;
    platform.files[std::u16string(kIniPath)] = programme.vocabulary;
    IniFiles files(platform);
    files.load();
    return checkScript({script, programme.playFrom, programme.playTo, programme.description},
                       files.words, files.settings, platform);
}

std::vector<Diagnostic> foundInDescription(std::u16string_view description) {
    KeywordTable words;
    words.loadFrom(platform::IniText(vocabularyWith(u"")));
    return checkDescription(description, words, platform::system());
}

std::vector<Diagnostic> foundInVocabulary(std::u16string_view iniText) {
    KeywordTable words;
    words.loadFrom(platform::IniText(std::u16string(iniText)));
    return checkVocabulary(words, iniText);
}

std::string summary(const std::vector<Diagnostic>& found, std::u16string_view source) {
    std::string text;
    for (const Diagnostic& one : found) {
        text += text.empty() ? "" : "; ";
        text += std::to_string(one.line) + ":" + std::to_string(one.column) + " ";
        text.append(one.code.row().code);
        if (one.line > 0) {
            const std::u16string_view line = lineOf(source, one.line);
            text += one.column - 1 <= line.size()
                        ? " [" + utf8(line.substr(one.column - 1, one.units)) + "]"
                        : " outside the line";
        }
    }
    return text;
}

std::string checkedScript(std::u16string_view script, const TestProgramme& programme) {
    return summary(foundInScript(script, programme), script);
}

std::string checkedDescription(std::u16string_view description) {
    return summary(foundInDescription(description), description);
}

std::string checkedVocabulary(std::u16string_view lines) {
    const std::u16string text = vocabularyWith(lines);
    std::string found = summary(foundInVocabulary(text), text);
    return found;
}

} // namespace tvml
