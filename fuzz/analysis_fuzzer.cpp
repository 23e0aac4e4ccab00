// What the program's commands show of a programme: problems as text and as JSON, the
// stories of its lines, counts, names, the source map. Fields: script, description,
// vocabulary entries, settings.
#include <algorithm>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "analysis/analysis.h"
#include "fuzz_input.h"
#include "host/source_map_json.h"
#include "run/ini_files.h"
#include "staging/tvml_exception.h"

namespace {

using namespace tvml;

constexpr std::int32_t kAllLines = 1 << 30;

// Nothing that a terminal would obey, nor what turns the direction of text.
void checkShown(const std::string& lines) {
    for (const char16_t unit : fuzz::unitsOf(lines)) {
        FUZZ_CHECK(unit == u'\n' || unit == u'\t' || unit >= u' ');
    }
    for (std::size_t i = 0; i + 2 < lines.size(); ++i) {
        const std::string_view three(lines.data() + i, 3);
        FUZZ_CHECK(three[0] != '\x7F');
        FUZZ_CHECK(three[0] != '\xC2' || static_cast<unsigned char>(three[1]) >= 0xA0);
        FUZZ_CHECK(three < "\xE2\x80\xAA" || three > "\xE2\x80\xAE");
        FUZZ_CHECK(three < "\xE2\x81\xA6" || three > "\xE2\x81\xA9");
    }
}

std::size_t linesOf(std::u16string_view text) {
    return static_cast<std::size_t>(std::ranges::count(text, u'\n')) +
           (text.empty() || text.ends_with(u'\n') ? 0 : 1);
}

void checkProblems(const Analysis& analysis, const Sources& sources,
                   const platform::Platform& platform) {
    const TextRenderer renderer(sources, platform, Language::ja, {false, 40});
    for (const Diagnostic& problem : analysis.problems) {
        checkShown(renderer.render(problem));
        FUZZ_CHECK(nlohmann::json::accept(renderJson(problem, sources, platform)));
        const auto lines = static_cast<std::int32_t>(linesOf(sources.of(problem.source).text));
        FUZZ_CHECK(problem.line >= 0 && problem.line <= lines + 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input = fuzz::inputOf(data, size);
    const std::u16string script = fuzz::unitsOf(fuzz::takeField(input));
    const std::u16string description = fuzz::unitsOf(fuzz::takeField(input));
    const std::string_view entries = fuzz::takeField(input);
    const fuzz::Host platform(entries, input);
    const std::u16string vocabulary = u"[KEYWORD_STRING]\n" + fuzz::unitsOf(entries);
    IniFiles files(platform);
    files.load();
    AnalysisWants wants{true, false, vocabulary, {1, kAllLines}, true, true, true, true, true};
    Analysis analysis;
    try {
        analysis = analyze(
            {{script, kNoLine, kNoLine, description}, files.words, files.settings, Language::ja},
            wants, platform);
    } catch (const TvmlException&) {
        return 0;
    } catch (const std::length_error&) { // values that multiply each other
        return 0;
    }
    checkProblems(analysis, {{"s", script}, {"d", description}, {"v", vocabulary}}, platform);
    FUZZ_CHECK(analysis.sourceMap.lineCount() == linesOf(analysis.tvml));
    FUZZ_CHECK(nlohmann::json::accept(
        host::sourceMapJson(analysis.sourceMap, {"o\xFF", "s", "d"}, analysis.elements, platform)));
    FUZZ_CHECK(analysis.stories.size() == static_cast<std::size_t>(analysis.lineCount));
    return 0;
}
