// What became of single lines of a script, and why. Entry: runExplain.
#include "host/explain_command.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include <nlohmann/json.hpp>

#include "diagnostics/text_width.h"
#include "host/conversion.h"
#include "host/host_error.h"
#include "host/inputs.h"
#include "host/language.h"
#include "host/shown_names.h"
#include "host/text_files.h"
#include "platform/platform.h"

namespace tvml::host {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kVersion = 1;

// The lines "FILE:LINE" or "FILE:FIRST-LAST" of a script, or "FILE:LINE:COLUMN" as
// findings have it.
struct Place {
    std::string file;
    std::int32_t first = 0;
    std::int32_t last = 0;
};

bool isNumber(std::string_view digits, std::int32_t& value) {
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return read.ec == std::errc() && read.ptr == digits.data() + digits.size() && value > 0;
}

// A file's name may hold colons itself.
std::optional<Place> placeIn(std::string_view text) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos || colon == 0) {
        return std::nullopt;
    }
    Place place{std::string(text.substr(0, colon))};
    const std::string_view lines = text.substr(colon + 1);
    const std::size_t dash = lines.find('-');
    const bool isRange = dash != std::string_view::npos;
    const bool fits = isNumber(lines.substr(0, dash), place.first) &&
                      isNumber(isRange ? lines.substr(dash + 1) : lines, place.last) &&
                      place.first <= place.last;
    return fits ? std::optional(place) : std::nullopt;
}

bool isFile(const std::string& name) {
    std::error_code unknown;
    return std::filesystem::exists(std::filesystem::path(std::u8string(name.begin(), name.end())),
                                   unknown);
}

// What is copied from a finding can end with a colon.
Place placeOf(const std::string& text) {
    const std::string_view whole =
        std::string_view(text).substr(0, text.find_last_not_of(": ") + 1);
    const std::optional<Place> place = placeIn(whole);
    if (!place.has_value()) {
        refuse(Message::usage_place, {text});
    }
    const std::optional<Place> withColumn =
        place->first == place->last && !isFile(place->file) ? placeIn(place->file) : std::nullopt;
    if (withColumn.has_value() && withColumn->first != withColumn->last) {
        refuse(Message::usage_place, {text}); // lines have no column
    }
    return withColumn.value_or(*place);
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
    ProgrammeOffer offer;
    std::int32_t lineCount = 0;

    ElementPlace placeOf(const TemplateStory& used) const {
        return used.number > 0 && used.number <= places.size() ? places[used.number - 1]
                                                               : ElementPlace{};
    }
};

// The line of a number; null for one that is not to be explained.
Explained* lineIn(std::vector<Explained>& lines, std::int32_t number) {
    const std::int64_t index = lines.empty() ? -1 : number - lines.front().story.line;
    const bool isThere = index >= 0 && index < static_cast<std::int64_t>(lines.size());
    return isThere ? &lines[static_cast<std::size_t>(index)] : nullptr;
}

void addOutput(const SourceMap& map, std::u16string_view text, std::vector<Explained>& lines) {
    for (std::size_t line = 0; line < map.lineCount(); ++line) {
        const std::size_t end = std::min(text.find(u'\n'), text.size());
        for (const std::uint32_t number : map.originsOf(line)) {
            const LineOrigin& origin = map.origin(number);
            Explained* const one =
                origin.kind == OriginKind::playMark ? nullptr : lineIn(lines, origin.line);
            // A line of the output may have several parts from one of the script.
            if (one != nullptr && (one->output.empty() || one->output.back().number != line + 1)) {
                one->output.push_back({line + 1, std::u16string(text.substr(0, end))});
            }
        }
        text = text.substr(std::min(end + 1, text.size()));
    }
}

// The whole script is converted: what a line does depends on those before it,
// and the line behind a title may complete it.
Explanation explain(const Options& options, const Place& place) {
    Explanation result{readInputs(options), {}, {}, {}, 0};
    AnalysisWants wants;
    wants.problems = wants.sourceMap = wants.elements = wants.offer = true;
    wants.stories = {place.first, place.last};
    Analysis analysis = Filter().run(result.inputs.request(options), wants);
    for (LineStory& story : analysis.stories) {
        result.lines.push_back({std::move(story), {}, {}});
    }
    for (Diagnostic& problem : analysis.problems) {
        Explained* const line = lineIn(result.lines, problem.line);
        if (problem.source == SourceKind::script && line != nullptr) {
            line->problems.push_back(std::move(problem));
        }
    }
    addOutput(analysis.sourceMap, analysis.tvml, result.lines);
    result.places = std::move(analysis.elements);
    result.offer = std::move(analysis.offer);
    result.lineCount = analysis.lineCount;
    return result;
}

// The word for what a line is, in JSON.
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

std::string harmless(std::u16string_view text) {
    return utf8(harmlessText(text));
}

// A label in a column of its own, then the text. Texts of the files come without
// what a terminal would obey.
class Page {
public:
    void title(std::string_view place, std::u16string_view line) {
        text_.append(place).append(": ").append(harmless(line)).append("\n");
    }
    void row(std::u16string_view label, std::string_view line) {
        constexpr std::size_t kLabelColumns = 10;
        text_.append("  ").append(utf8(label));
        text_.append(kLabelColumns - std::min(kLabelColumns, columnsOf(label)), ' ');
        text_.append(line).append("\n");
    }
    void row(Message name, std::string_view line) { row(label(name), line); }
    void heading(Message name) { text_.append("  ").append(say(name)).append("\n"); }
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

Message kindText(const LineStory& story) {
    switch (story.kind) {
    case LineKind::empty:
        return Message::kind_empty;
    case LineKind::tag:
        return Message::kind_tagLine;
    default:
        return story.isCommand ? Message::kind_commandLine : Message::kind_talk;
    }
}

std::string speakerText(const LineStory& story) {
    if (!story.speaker.empty()) {
        return harmless(story.speaker);
    }
    const bool isTalk = story.kind == LineKind::other && !story.isCommand;
    const bool byCharacter = story.takenBy == TakenBy::character || story.takenBy == TakenBy::pose;
    return isTalk        ? say(Message::explain_noSpeaker)
           : byCharacter ? say(Message::explain_noActor)
                         : "";
}

std::string takenByText(const Explanation& all, const LineStory& story) {
    static constexpr std::array<Message, 5> kTexts{Message::taken_nothing, Message::taken_tag,
                                                   Message::taken_staging, Message::taken_character,
                                                   Message::taken_pose};
    return say(kTexts[static_cast<std::size_t>(story.takenBy)],
               {harmless(shownName(all.offer, story.takenName))});
}

void showWords(const Explanation& all, const LineStory& story, Page& page) {
    if (!story.word.empty()) {
        page.row(Message::explain_word,
                 story.key.empty()
                     ? harmless(story.word)
                     : say(Message::explain_key, {harmless(story.word), harmless(story.key)}));
    }
    if (!story.phrase.empty()) {
        page.row(Message::explain_readAs, harmless(story.phrase));
    }
    if (story.takenBy != TakenBy::nothing || story.isCommand || story.kind == LineKind::tag) {
        page.row(Message::explain_takenBy, takenByText(all, story));
    }
    std::u16string_view head = label(Message::explain_adverbs);
    for (const AdverbStory& adverb : story.adverbs) {
        std::u16string line = adverb.item;
        line += adverb.item == adverb.english ? u"" : u" (" + adverb.english + u")";
        line.append(u": ").append(adverb.field).append(u" ").append(adverb.value);
        page.row(std::exchange(head, u""), harmless(line));
    }
}

// What of a template is to be told besides its name.
std::string templateText(const Explanation& all, const TemplateStory& used) {
    const std::string comma = say(Message::list_comma);
    const VariantPlace& variant = used.variant;
    std::string text = std::string("<").append(utf8(used.element)).append(">");
    if (variant.count > 1) {
        text += comma + say(variant.atRandom ? Message::explain_atRandom : Message::explain_inTurn,
                            {std::to_string(variant.number), std::to_string(variant.count)});
    }
    if (!variant.key.empty()) {
        text += comma + say(Message::explain_for, {utf8(variant.key)});
    }
    text += comma + (used.number == 0 ? say(Message::explain_builtIn) : all.inputs.descriptionName);
    if (const ElementPlace place = all.placeOf(used); place.line > 0) {
        text.append(":").append(std::to_string(place.line));
        text.append(":").append(std::to_string(place.column));
    }
    if (used.times > 1) {
        text += comma + say(Message::explain_times, {std::to_string(used.times)});
    }
    return text;
}

void showTemplates(const Explanation& all, const LineStory& story, Page& page) {
    std::u16string_view head = label(Message::explain_template);
    for (const TemplateStory& used : story.templates) {
        page.row(std::exchange(head, u""), templateText(all, used));
    }
    if (story.card != CardStep::none) {
        page.row(
            Message::explain_card,
            say(story.card == CardStep::starts ? Message::card_starts : Message::card_completes));
    }
}

void showLine(const Explanation& all, const Explained& line, const TextRenderer& renderer,
              Page& page) {
    page.title(all.inputs.scriptName + ":" + std::to_string(line.story.line), line.story.text);
    page.row(Message::explain_kind, say(kindText(line.story)));
    if (const std::string speaker = speakerText(line.story); !speaker.empty()) {
        page.row(Message::explain_speaker, speaker);
    }
    showWords(all, line.story, page);
    showTemplates(all, line.story, page);
    if (!line.problems.empty()) {
        page.heading(Message::explain_problems);
        for (const Diagnostic& problem : line.problems) {
            page.lines(renderer.render(problem));
        }
    }
    std::u16string_view head = u"TVML";
    for (const OutputLine& output : line.output) {
        page.row(std::exchange(head, u""),
                 std::to_string(output.number) + "  " + harmless(output.text));
    }
    if (line.output.empty()) {
        page.row(head, say(Message::explain_noOutput));
    }
}

std::string textOf(const Explanation& all, ColorChoice color) {
    const Sources sources{{all.inputs.scriptName, all.inputs.script}, {}, {}};
    const TextRenderer renderer(sources, platform::system(), language(),
                                screenOf(platform::OutputStream::output, color));
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
        refuse(Message::usage_lineCount,
               {all.inputs.scriptName, std::to_string(all.lineCount), std::to_string(place.last)});
    }
    const std::string lines =
        options.format == ReportFormat::json ? jsonLinesOf(all) : textOf(all, options.color);
    writeOutput(lines);
    return kDone;
}

} // namespace tvml::host
