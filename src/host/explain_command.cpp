// What became of single lines of a script, and why. Entry: runExplain.
#include "host/explain_command.h"

#include <algorithm>
#include <array>
#include <charconv>

#include <nlohmann/json.hpp>

#include "diagnostics/text_width.h"
#include "host/conversion.h"
#include "host/host_error.h"
#include "host/inputs.h"
#include "host/language.h"
#include "platform/platform.h"

namespace tvml::host {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kVersion = 1;

// The lines "FILE:LINE" or "FILE:FIRST-LAST" of a script.
struct Place {
    std::string file;
    std::int32_t first = 0;
    std::int32_t last = 0;
};

Place placeOf(const std::string& text) {
    // A file's name may hold colons itself.
    const std::size_t colon = text.rfind(':');
    Place place{text.substr(0, colon)};
    const auto number = [](std::string_view digits, std::int32_t& value) {
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        return read.ec == std::errc() && read.ptr == digits.data() + digits.size() && value > 0;
    };
    if (colon != std::string::npos && colon > 0) {
        const std::string_view lines = std::string_view(text).substr(colon + 1);
        const std::size_t dash = lines.find('-');
        const bool isRange = dash != std::string_view::npos;
        if (number(lines.substr(0, dash), place.first) &&
            number(isRange ? lines.substr(dash + 1) : lines, place.last) &&
            place.first <= place.last) {
            return place;
        }
    }
    throw HostError{kWrongUsage, "tvmlfilter: error: " + text +
                                     " names no line; write SCRIPT:LINE or SCRIPT:FIRST-LAST"};
}

// A line of the output, from 1, and its text.
struct OutputLine {
    std::size_t number = 0;
    std::u16string text;
};

// One line of the script with all that is known of it.
struct Explained {
    LineStory story;
    std::vector<Diagnostic> problems;
    std::vector<OutputLine> output;
};

// All of them, and what they refer to.
struct Explanation {
    Inputs inputs;
    std::vector<Explained> lines;
    std::vector<ElementPlace> places;
    std::int32_t lineCount = 0;

    ElementPlace placeOf(const TemplateStory& used) const {
        return used.number > 0 && used.number <= places.size() ? places[used.number - 1]
                                                               : ElementPlace{};
    }
};

void addOutput(const SourceMap& map, std::u16string_view text, std::vector<Explained>& lines) {
    for (std::size_t line = 0; line < map.lineCount(); ++line) {
        const std::size_t end = std::min(text.find(u'\n'), text.size());
        for (Explained& one : lines) {
            if (map.comesFrom(line, one.story.line)) {
                one.output.push_back({line + 1, std::u16string(text.substr(0, end))});
            }
        }
        text = text.substr(std::min(end + 1, text.size()));
    }
}

// The whole script is converted: what a line does depends on those before it,
// and the line behind a title may complete it.
Explanation explain(const Options& options, const Place& place) {
    Explanation result{readInputs(options), {}, {}, 0};
    AnalysisWants wants;
    wants.problems = wants.sourceMap = wants.elements = true;
    wants.stories = {place.first, place.last};
    Analysis analysis = Filter().run(result.inputs.request(options), wants);
    for (LineStory& story : analysis.stories) {
        result.lines.push_back({std::move(story), {}, {}});
    }
    for (Diagnostic& problem : analysis.problems) {
        const auto line = std::ranges::find(result.lines, problem.line,
                                            [](const Explained& one) { return one.story.line; });
        if (problem.source == SourceKind::script && line != result.lines.end()) {
            line->problems.push_back(std::move(problem));
        }
    }
    addOutput(analysis.sourceMap, analysis.tvml, result.lines);
    result.places = std::move(analysis.elements);
    result.lineCount = analysis.lineCount;
    return result;
}

std::string utf8(std::u16string_view text) {
    return platform::system().toUtf8(text);
}

// The word for what a line is.
std::string_view kindName(const LineStory& story) {
    switch (story.kind) {
    case LineKind::empty:
        return "empty";
    case LineKind::tag:
        return "tag";
    default:
        return story.isCommand ? "command" : "talk";
    }
}

std::string_view takenByName(TakenBy by) {
    static constexpr std::array<std::string_view, 5> kNames{"nothing", "tag", "studio command",
                                                            "character command", "pose"};
    return kNames[static_cast<std::size_t>(by)];
}

// ---- for people

// "LABEL" in a column of its own, then the text, without what a terminal would
// obey.
class Page {
public:
    void title(std::string_view place, std::u16string_view line) {
        text_.append(place).append(": ").append(utf8(harmlessText(line))).append("\n");
    }
    void row(std::string_view label, std::u16string_view line) {
        row(label, utf8(harmlessText(line)));
    }
    void row(std::string_view label, std::string_view line) {
        constexpr std::size_t kLabelColumns = 10;
        text_.append("  ").append(label);
        text_.append(kLabelColumns - std::min(kLabelColumns, label.size()), ' ');
        text_.append(line).append("\n");
    }
    void label(std::string_view label) { text_.append("  ").append(label).append("\n"); }
    void lines(std::string_view rendered) {
        while (!rendered.empty()) {
            const std::size_t end = std::min(rendered.find('\n'), rendered.size() - 1);
            text_.append("    ").append(rendered.substr(0, end + 1));
            rendered.remove_prefix(end + 1);
        }
    }
    void gap() { text_ += "\n"; }
    const std::string& text() const { return text_; }

private:
    std::string text_;
};

std::u16string speakerText(const LineStory& story) {
    if (!story.speaker.empty()) {
        return story.speaker;
    }
    const bool isTalk = story.kind == LineKind::other && !story.isCommand;
    const bool byCharacter = story.takenBy == TakenBy::character || story.takenBy == TakenBy::pose;
    return isTalk ? u"none, A speaks" : byCharacter ? u"none, A acts" : u"";
}

void showWords(const LineStory& story, Page& page) {
    if (!story.word.empty()) {
        page.row("word", story.key.empty() ? story.word
                                           : story.word + u"  (" + story.key + u" in keyword.ini)");
    }
    if (!story.phrase.empty()) {
        page.row("read as", story.phrase);
    }
    if (story.takenBy != TakenBy::nothing) {
        page.row("taken by", std::string(takenByName(story.takenBy)) + " \"" +
                                 utf8(harmlessText(story.takenName)) + "\"");
    } else if (story.isCommand || story.kind == LineKind::tag) {
        page.row("taken by", takenByName(TakenBy::nothing));
    }
    std::string_view label = "adverbs";
    for (const AdverbStory& adverb : story.adverbs) {
        std::u16string line = adverb.item;
        line += adverb.item == adverb.english ? u"" : u" (" + adverb.english + u")";
        page.row(label, line.append(u": ").append(adverb.field).append(u" ").append(adverb.value));
        label = "";
    }
}

std::string variantText(const VariantPlace& variant) {
    std::string text;
    if (variant.count > 1) {
        text.append(", variant ").append(std::to_string(variant.number));
        text.append(" of ").append(std::to_string(variant.count));
        text.append(variant.atRandom ? " at random" : " in turn");
    }
    if (!variant.key.empty()) {
        text.append(", for ").append(utf8(variant.key));
    }
    return text;
}

void showTemplates(const Explanation& all, const LineStory& story, Page& page) {
    std::string_view label = "template";
    for (const TemplateStory& used : story.templates) {
        const ElementPlace place = all.placeOf(used);
        std::string line("<");
        line.append(utf8(used.element)).append(">").append(variantText(used.variant)).append(", ");
        line.append(used.number == 0 ? "built in" : all.inputs.descriptionName);
        if (place.line > 0) {
            line.append(":").append(std::to_string(place.line));
            line.append(":").append(std::to_string(place.column));
        }
        if (used.times > 1) {
            line.append(", ").append(std::to_string(used.times)).append(" times");
        }
        page.row(label, line);
        label = "";
    }
    if (story.card != CardStep::none) {
        page.row("card", std::string_view(story.card == CardStep::starts
                                              ? "starts here"
                                              : "completes that of the line before"));
    }
}

void showLine(const Explanation& all, const Explained& line, const TextRenderer& renderer,
              Page& page) {
    page.title(all.inputs.scriptName + ":" + std::to_string(line.story.line), line.story.text);
    page.row("kind", kindName(line.story));
    if (const std::u16string speaker = speakerText(line.story); !speaker.empty()) {
        page.row("speaker", speaker);
    }
    showWords(line.story, page);
    showTemplates(all, line.story, page);
    if (!line.problems.empty()) {
        page.label("problems");
        for (const Diagnostic& problem : line.problems) {
            page.lines(renderer.render(problem));
        }
    }
    std::string_view label = "TVML";
    for (const OutputLine& output : line.output) {
        page.row(label, std::to_string(output.number) + "  " + utf8(harmlessText(output.text)));
        label = "";
    }
    if (line.output.empty()) {
        page.row(label, std::string_view("nothing"));
    }
}

std::string textOf(const Explanation& all) {
    const Sources sources{{all.inputs.scriptName, all.inputs.script}, {}, {}};
    const TextRenderer renderer(sources, platform::system(), language(),
                                platform::isTerminal(platform::OutputStream::output));
    Page page;
    for (const Explained& line : all.lines) {
        if (!page.text().empty()) {
            page.gap();
        }
        showLine(all, line, renderer, page);
    }
    return page.text();
}

// ---- for programs

Json textOrNull(std::u16string_view text) {
    return text.empty() ? Json() : Json(utf8(text));
}

Json templatesJson(const Explanation& all, const LineStory& story) {
    Json templates = Json::array();
    for (const TemplateStory& used : story.templates) {
        const ElementPlace place = all.placeOf(used);
        const VariantPlace& variant = used.variant;
        Json object{{"element", utf8(used.element)}, {"builtIn", used.number == 0}};
        object["line"] = place.line > 0 ? Json(place.line) : Json();
        object["column"] = place.line > 0 ? Json(place.column) : Json();
        object["variant"] = variant.number > 0 ? Json(variant.number) : Json();
        object["variants"] = variant.count > 0 ? Json(variant.count) : Json();
        object["atRandom"] = variant.atRandom && variant.count > 1;
        object["for"] = textOrNull(variant.key);
        object["times"] = used.times;
        templates.push_back(std::move(object));
    }
    return templates;
}

Json jsonOf(const Explanation& all, const Explained& line, const Sources& sources) {
    const LineStory& story = line.story;
    Json object{{"version", kVersion},
                {"file", all.inputs.scriptName},
                {"line", story.line},
                {"text", utf8(story.text)},
                {"kind", kindName(story)}};
    object["speaker"] = textOrNull(story.speaker);
    object["word"] = textOrNull(story.word);
    object["key"] = textOrNull(story.key);
    object["readAs"] = textOrNull(story.phrase);
    object["takenBy"] =
        story.takenBy != TakenBy::nothing ? Json(takenByName(story.takenBy)) : Json();
    object["name"] = textOrNull(story.takenName);
    object["adverbs"] = Json::array();
    for (const AdverbStory& adverb : story.adverbs) {
        object["adverbs"].push_back({{"item", utf8(adverb.item)},
                                     {"english", utf8(adverb.english)},
                                     {utf8(adverb.field), utf8(adverb.value)}});
    }
    object["description"] = all.inputs.descriptionName;
    object["templates"] = templatesJson(all, story);
    object["problems"] = Json::array();
    for (const Diagnostic& problem : line.problems) {
        object["problems"].push_back(Json::parse(renderJson(problem, sources, platform::system())));
    }
    object["tvml"] = Json::array();
    for (const OutputLine& output : line.output) {
        object["tvml"].push_back({{"line", output.number}, {"text", utf8(output.text)}});
    }
    return object;
}

std::string jsonLinesOf(const Explanation& all) {
    const Sources sources{{all.inputs.scriptName, all.inputs.script}, {}, {}};
    std::string lines;
    for (const Explained& line : all.lines) {
        // A file name may be no UTF-8.
        lines += jsonOf(all, line, sources).dump(-1, ' ', false, Json::error_handler_t::replace);
        lines += "\n";
    }
    return lines;
}

} // namespace

int runExplain(const Options& options) {
    const Place place = placeOf(options.script);
    Options ofFile = options;
    ofFile.script = place.file;
    const Explanation all = explain(ofFile, place);
    if (all.lineCount < place.last) {
        throw HostError{kWrongUsage, "tvmlfilter: error: " + all.inputs.scriptName + " has " +
                                         std::to_string(all.lineCount) + " lines and no line " +
                                         std::to_string(place.last)};
    }
    const std::string lines = options.format == ReportFormat::json ? jsonLinesOf(all) : textOf(all);
    if (const auto failure = platform::writeStream(platform::OutputStream::output, lines)) {
        throw inputOrOutputError(outputName(kStandardStream), {}, *failure);
    }
    return kDone;
}

} // namespace tvml::host
