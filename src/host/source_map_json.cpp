// Entry: sourceMapJson.
#include "host/source_map_json.h"

#include <array>

#include <nlohmann/json.hpp>

namespace tvml::host {
namespace {

constexpr int kMapVersion = 1;

nlohmann::ordered_json jsonOf(const LineOrigin& origin, const std::vector<ElementPlace>& places,
                              const platform::Platform& platform) {
    static constexpr std::array<std::string_view, 5> kKinds{"filter", "built-in", "description",
                                                            "script", "play"};
    nlohmann::ordered_json object{{"kind", kKinds[static_cast<std::size_t>(origin.kind)]}};
    const bool isElement = origin.kind == OriginKind::element;
    if (isElement || origin.kind == OriginKind::builtIn) {
        object["element"] = platform.toUtf8(origin.element);
    }
    if (isElement) {
        const ElementPlace place =
            origin.number <= places.size() ? places[origin.number - 1] : ElementPlace{};
        object["line"] = place.line > 0 ? nlohmann::ordered_json(place.line) : nullptr;
        object["column"] = place.line > 0 ? nlohmann::ordered_json(place.column) : nullptr;
    }
    if (origin.line > 0) {
        object[isElement || origin.kind == OriginKind::builtIn ? "askedBy" : "line"] = origin.line;
    }
    return object;
}

} // namespace

std::string sourceMapJson(const SourceMap& map, const SourceMapNames& names,
                          const std::vector<ElementPlace>& places,
                          const platform::Platform& platform) {
    const auto dump = [](const nlohmann::ordered_json& value) {
        // A file name may be no UTF-8.
        return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    };
    std::string text("{\"version\":");
    text.append(std::to_string(kMapVersion)).append(",\"output\":").append(dump(names.output));
    text.append(",\"script\":").append(dump(names.script));
    text.append(",\"description\":").append(dump(names.description)).append(",\"lines\":[");
    // One line of the file for each line of the output, written as they come:
    // a tree of a long script would take many times its length.
    for (std::size_t line = 0; line < map.lineCount(); ++line) {
        text.append(line == 0 ? "\n" : ",\n").append("{\"line\":").append(std::to_string(line + 1));
        std::string_view before = ",\"from\":[";
        for (const std::uint32_t number : map.originsOf(line)) {
            text.append(before).append(dump(jsonOf(map.origin(number), places, platform)));
            before = ",";
        }
        text += "]}";
    }
    return text + "\n]}\n";
}

} // namespace tvml::host
