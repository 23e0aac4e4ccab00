// Conversion in this program or by a library file. Entries: Filter,
// convertWithLibrary.
#include "host/conversion.h"

#include <filesystem>

#include "host/host_error.h"
#include "host/ini_folder.h"
#include "host/inputs.h"
#include "host/language.h"
#include "platform/host_services.h"
#include "staging/tvml_exception.h"

namespace tvml::host {
namespace {

// Two calls may fall into different seconds and then differ in length. That
// hardly happens five times in a row.
constexpr int kMostTries = 5;

// A path that leads to the file itself and is not looked for elsewhere.
std::string absolutePath(const std::string& file) {
    std::error_code failed;
    const auto path = std::filesystem::absolute(
        std::filesystem::path(std::u8string(file.begin(), file.end())), failed);
    const std::u8string text = path.u8string();
    return failed ? file : std::string(text.begin(), text.end());
}

// The size is asked for again when the buffer did not do: where a description
// chooses at random, calls in different seconds give different lengths.
std::u16string callLibrary(platform::FilterLibrary::Function convert, const std::string& file,
                           const ConversionRequest& request) {
    const auto call = [&](char16_t* output, std::int32_t size) {
        return convert(request.script.data(), request.playFrom, request.playTo,
                       request.description.data(), output, size);
    };
    for (int tries = 0; tries < kMostTries; ++tries) {
        const std::int32_t size = call(nullptr, 0);
        if (size <= 0) {
            break; // a failure of the run, which would fail again
        }
        std::u16string text(static_cast<std::size_t>(size), u'\0');
        const std::int32_t length = call(text.data(), size);
        if (length > 0 && length < size) {
            text.resize(static_cast<std::size_t>(length));
            return text;
        }
    }
    throw inputOrOutputError(file, {}, Message::failure_library);
}

template <typename Work> auto orHostError(Work work) {
    try {
        return work();
    } catch (const TvmlException& problem) {
        throw HostError{kInputOrOutputFailed, errorLine(Message::failure_xml, {problem.message()})};
    }
}

} // namespace

Filter::Filter() : files_(std::make_unique<IniFiles>(iniPlatform())) {
    files_->load();
}

std::optional<std::u16string_view> Filter::vocabularyFor(VocabularyCheck check) {
    const bool cutOff = words().problem() != LoadProblem::none;
    if (check == VocabularyCheck::never || (check == VocabularyCheck::whenCutOff && !cutOff)) {
        return std::nullopt;
    }
    vocabularyName_ = iniFile(u"keyword.ini");
    vocabularyText_ = platform::readSettings(vocabularyName_);
    return vocabularyText_;
}

Analysis Filter::run(const ConversionRequest& request, AnalysisWants wants, VocabularyCheck check,
                     const std::optional<MediaNames>& media) {
    wants.vocabulary = vocabularyFor(check);
    return orHostError([&] {
        return analyze({request, files_->words, files_->settings, language(),
                        media.has_value() ? &*media : nullptr},
                       wants, platform::system());
    });
}

std::vector<Diagnostic> Filter::check(std::u16string_view description, VocabularyCheck check) {
    std::vector<Diagnostic> found;
    if (const std::optional<std::u16string_view> vocabulary = vocabularyFor(check)) {
        found = checkVocabulary(words(), *vocabulary, language());
    }
    std::vector<Diagnostic> more = orHostError(
        [&] { return checkDescription(description, words(), platform::system(), language()); });
    std::ranges::move(more, std::back_inserter(found));
    return found;
}

// The library is unloaded on the way out, after its last result was copied.
std::u16string convertWithLibrary(const std::string& file, const ConversionRequest& request) {
    platform::FilterLibrary library;
    if (const platform::Failure failure = library.open(absolutePath(file))) {
        throw inputOrOutputError(file, {}, Message::file_library, {systemText(*failure)});
    }
    return callLibrary(library.function(), file, request);
}

} // namespace tvml::host
