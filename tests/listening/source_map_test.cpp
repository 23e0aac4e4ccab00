// Where the lines of an output come from.
#include "listening/source_map.h"

#include <filesystem>
#include <set>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "diagnostics/checking.h"
#include "host/source_map_json.h"
#include "memory_platform.h"
#include "reading/script_text.h"
#include "run/ini_files.h"

namespace tvml {
namespace {

struct Mapped {
    std::u16string text;
    SourceMap map;
};

Mapped convert(std::u16string_view script, std::u16string_view description,
               std::int32_t playFrom = kNoLine, std::int32_t playTo = kNoLine) {
    platform::MemoryPlatform platform;
    platform.files[u"/host/keyword.ini"] = vocabularyWith(u"");
    IniFiles files(platform);
    files.load();
    SourceMapRecorder recorder;
    const Listeners listeners{&recorder};
    const ConversionRequest request{script, playFrom, playTo, description};
    const std::u16string text =
        ConversionRun(files.words, files.settings, platform, &listeners).convert(request).text();
    EXPECT_EQ(text, ConversionRun(files.words, files.settings, platform).convert(request).text());
    return {text, recorder.take()};
}

std::vector<std::u16string> linesOf(std::u16string_view text) {
    std::vector<std::u16string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find(u'\n');
        lines.emplace_back(text.substr(0, end));
        text = end == kNone ? std::u16string_view{} : text.substr(end + 1);
    }
    return lines;
}

// "3" for a line of the script, "<bow>" for an element, "[bow]" for what is
// built in for it, "<bow>3" when line 3 asked for it, "p3" for a mark at line 3,
// "-" for the filter's own.
std::string shownOrigins(const SourceMap& map, std::size_t line) {
    std::string text;
    for (const std::uint32_t number : map.originsOf(line)) {
        const LineOrigin& origin = map.origin(number);
        const std::string name = utf8(origin.element);
        text += text.empty() ? "" : "+";
        text += origin.kind == OriginKind::builtIn    ? "[" + name + "]"
                : origin.kind == OriginKind::element  ? "<" + name + ">"
                : origin.kind == OriginKind::filter   ? "-"
                : origin.kind == OriginKind::playMark ? "p"
                                                      : "";
        text += origin.line > 0 ? std::to_string(origin.line) : "";
    }
    return text;
}

// The programme of the rows: each text of the description is short and its own.
constexpr std::u16string_view kStart =
    u"<staging><numofchar>1</numofchar>"
    u"<model_for_char character='A' japanesename='a' englishname='a' default='yes'>model"
    u"</model_for_char><talk>say $2</talk><set>s::t::file</set><daylight>light</daylight>"
    u"<title titlefont_ja='J' titlefont_en='E' subtitlefont_ja='J' subtitlefont_en='E'>card\n"
    u"drawing:settext(name=TITLETEXT,text=\"$TITLE\",font name='$2')\n"
    u"drawing:settext(name=TITLETEXT,text=\"$SUBTITLE\",font name='$4')\nshow</title>"
    u"<setting>head\nskipscript(switch=on)\nset:change(name=x)\nskipscript(switch=off)</setting>";

TEST(SourceMap, Rows) {
    const struct {
        std::u16string_view script;
        std::u16string_view elements; // behind kStart
        std::int32_t playFrom;
        std::int32_t playTo;
        const char* origins; // of the lines in their order
    } rows[] = {
        {u"\nA: x\nx. y.", u"<opening>o</opening><ending>e\nf</ending>", 2, 3,
         "- <setting> - <setting> <model_for_char> <setting> <setting> <opening> - p2 2 3 3 p3 "
         "<ending> <ending>"},
        {u"(set: t)\n(daylight)\n(opening off)\n(ending off)", u"<opening>o</opening>", 0, -1,
         "- <setting> - <setting> <model_for_char> 1 <daylight>2 <setting> - 1 2 3 4"},
        {u"title: T\nsubtitle: S\n", u"", 0, -1,
         "- <setting> - <setting> <model_for_char> <setting> <setting> - 1 1 1+2 1 2"},
        // Cut out: the lines that wait for a text.
        {u"title: T\nA: x\nsubtitle: S\n", u"", 0, -1,
         "- <setting> - <setting> <model_for_char> <setting> <setting> - 1 1 1 2 3 3 3"},
        // A line cut from its middle joins the next one.
        {u"tvml: x drawing:settext(name=TITLETEXT,\"$TITLE\nA: x", u"", 0, -1,
         "- <setting> - <setting> <model_for_char> <setting> <setting> - 1+2"},
        // And what it joins may be cut in its turn.
        {u"tvml: d drawing:settext(name=TITLETEXT,\"$TITLE\n"
         u"tvml: drawing:settext(name=TITLETEXT,\"$TITLE\nA: x",
         u"", 0, -1, "- <setting> - <setting> <model_for_char> <setting> <setting> - 1+3"},
        // The opening takes the end of the skipped part over from the set-up.
        {u"A: x", u"<opening>skipscript(switch=off)</opening>", 0, -1,
         "- <setting> - <setting> <model_for_char> <setting> <opening> - 1"},
        // A card that was not completed stays behind.
        {u"title: T\ntvml: drawing:settext(name=TITLETEXT,\"$SUBTITLE\"\nsubtitle: S\ntitle: U",
         u"", 0, -1,
         "- <setting> - <setting> <model_for_char> <setting> <setting> - 1 1 1 3 3+4 3 3 4"},
    };
    for (const auto& row : rows) {
        const Mapped done =
            convert(row.script, std::u16string(kStart).append(row.elements) + u"</staging>",
                    row.playFrom, row.playTo);
        std::string origins;
        for (std::size_t line = 0; line < done.map.lineCount(); ++line) {
            origins += (line == 0 ? "" : " ") + shownOrigins(done.map, line);
        }
        EXPECT_EQ(origins, row.origins) << utf8(row.script) << "\n" << utf8(done.text);
    }
}

// Lines that bring themselves into the output stand between the script's, so
// that it is plain which line wrote what is between two of them. None can stand
// behind a title whose second text follows.
struct Marked {
    std::u16string script;
    std::vector<std::int32_t> markers; // numbers of those lines
};

Marked withMarkers(std::u16string_view script) {
    Marked marked;
    std::int32_t number = 0;
    for (const std::u16string& line : linesOf(script)) {
        marked.script += line + u"\n";
        ++number;
        if (line.find(u"itle") == kNone && line.find(u"タイトル") == kNone) {
            marked.script += u"TVML: //marker " + decimalText(++number) + u"\n";
            marked.markers.push_back(number);
        }
    }
    return marked;
}

void checkBodyBetweenMarkers(const Mapped& done, const Marked& marked) {
    const std::vector<std::u16string> lines = linesOf(done.text);
    std::size_t found = 0;
    std::size_t line = 0;
    while (lines[line] != u"//! initializeEnd") {
        ++line;
    }
    std::int32_t before = 0;
    for (++line; line < lines.size() && found < marked.markers.size(); ++line) {
        const std::int32_t marker = marked.markers[found];
        if (lines[line] == u"//marker " + decimalText(marker)) {
            EXPECT_EQ(shownOrigins(done.map, line), std::to_string(marker));
            before = marker;
            ++found;
            continue;
        }
        for (const std::uint32_t number : done.map.originsOf(line)) {
            const LineOrigin& origin = done.map.origin(number);
            EXPECT_EQ(origin.kind, OriginKind::script);
            EXPECT_TRUE(origin.line > before && origin.line < marker)
                << utf8(lines[line]) << " is not of line " << origin.line;
        }
    }
    EXPECT_EQ(found, marked.markers.size());
}

// Elements are known by their texts, every line of which is in the source.
void checkElements(const Mapped& done, const std::u16string& description) {
    const std::vector<ElementPlace> places = elementPlaces(description);
    const std::vector<std::u16string> source = linesOf(description);
    const std::vector<std::u16string> lines = linesOf(done.text);
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const LineOrigin& origin = done.map.origin(done.map.originsOf(line).front());
        if (origin.kind != OriginKind::element || lines[line].starts_with(u"skipscript")) {
            continue;
        }
        const ElementPlace& place = places.at(origin.number - 1);
        EXPECT_EQ(place.name, origin.element);
        auto at = source.begin() + place.line - 1;
        while (at != source.end() && at->find(lines[line]) == kNone &&
               at->find(u"</" + place.name) == kNone) {
            ++at;
        }
        EXPECT_TRUE(at != source.end() && at->find(lines[line]) != kNone)
            << utf8(lines[line]) << " is not in <" << utf8(place.name) << "> of line "
            << place.line;
    }
}

TEST(SourceMap, Examples) {
    int programmes = 0;
    for (const std::string name : {"news_en", "news_ja", "weather_ja"}) {
        SCOPED_TRACE(name);
        const std::u16string script = utf16(repositoryFile("examples/" + name + "/programme.txt"));
        const std::u16string description =
            utf16(repositoryFile("examples/" + name + "/description.xml"));
        const Marked marked = withMarkers(script);
        const Mapped done = convert(marked.script, description);
        ASSERT_EQ(done.map.lineCount(), linesOf(done.text).size());
        checkBodyBetweenMarkers(done, marked);
        checkElements(done, description);
        // Each line that becomes something is found again.
        std::set<std::int32_t> seen;
        for (std::size_t line = 0; line < done.map.lineCount(); ++line) {
            ASSERT_FALSE(done.map.originsOf(line).empty());
            seen.insert(done.map.origin(done.map.originsOf(line).front()).line);
        }
        EXPECT_GT(seen.size(), 40U);
        ++programmes;
    }
    EXPECT_EQ(programmes, 3);
}

TEST(SourceMap, Json) {
    const std::u16string description = std::u16string(kStart) + u"</staging>";
    const Mapped done = convert(u"(daylight)\nA: x", description, 2);
    const auto json = nlohmann::json::parse(host::sourceMapJson(
        done.map, {"out \"1\"", "s", "d"}, elementPlaces(description), platform::system()));
    EXPECT_EQ(json["version"], 1);
    EXPECT_EQ(json["output"], "out \"1\"");
    const auto& lines = json["lines"];
    ASSERT_EQ(lines.size(), linesOf(done.text).size());
    EXPECT_EQ(lines[1].dump(), R"({"from":[{"column":13,"element":"setting","kind":)"
                               R"("description","line":4}],"line":2})");
    std::string kinds;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i]["line"], i + 1);
        kinds += lines[i]["from"][0]["kind"].get<std::string>().substr(0, 1);
    }
    EXPECT_EQ(kinds, "fdfdddddfsps");
    EXPECT_EQ(lines[6]["from"][0]["askedBy"], 1);
    EXPECT_EQ(lines[9]["from"][0]["line"], 1);
}

} // namespace
} // namespace tvml
