// What is in a script, in numbers. Entry: runStats.
#include "host/stats_command.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>

#include <nlohmann/json.hpp>

#include "host/conversion.h"
#include "host/host_error.h"
#include "host/inputs.h"
#include "host/text_table.h"
#include "platform/host_services.h"
#include "reading/script_text.h"

namespace tvml::host {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kJsonVersion = 1;

std::string utf8(std::u16string_view text) {
    return platform::system().toUtf8(text);
}

std::u16string numberText(std::size_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

std::string_view kindName(TakenBy by) {
    // In the order of TakenBy.
    static constexpr std::array<std::string_view, 5> kNames{"nothing", "tag", "staging",
                                                            "character", "pose"};
    return kNames[static_cast<std::size_t>(by)];
}

std::string_view useName(FileUse use) {
    // In the order of FileUse.
    static constexpr std::array<std::string_view, 4> kNames{"none", "picture", "sound", "speech"};
    return kNames[static_cast<std::size_t>(use)];
}

std::u16string wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

// ---- files

// Scripts name files as the player's system does, with backslashes, wherever
// they are converted.
bool exists(const std::filesystem::path& folder, std::u16string name) {
    std::ranges::replace(name, u'\\', u'/');
    const std::string bytes = utf8(name);
    std::error_code unknown;
    return std::filesystem::is_regular_file(
        folder / std::filesystem::path(std::u8string(bytes.begin(), bytes.end())), unknown);
}

// Empty, the current folder, for standard input.
std::filesystem::path folderOf(const std::string& script) {
    return std::filesystem::path(std::u8string(script.begin(), script.end())).parent_path();
}

// ---- text

// Minutes and seconds, rounded up: a speech takes a second at least.
std::u16string timeText(double seconds) {
    const auto whole = static_cast<std::size_t>(std::ceil(seconds));
    const std::u16string rest = numberText(whole % 60);
    std::u16string text = numberText(whole / 60);
    return text.append(rest.size() == 1 ? u":0" : u":").append(rest);
}

void addSpeaking(TextTable& table, std::u16string_view who, const Speaking& said) {
    table.add({std::u16string(who), numberText(said.speeches), numberText(said.characters),
               timeText(said.seconds)});
}

std::u16string lineCounts(const ScriptStatistics& counts) {
    TextTable table({{u"LINES"}, {u"", true}});
    table.add({u"talk", numberText(counts.talkLines)});
    table.add({u"commands", numberText(counts.commandLines)});
    table.add({u"tag lines", numberText(counts.tagLines)});
    table.add({u"empty", numberText(counts.emptyLines)});
    table.add({u"all", numberText(counts.lines)});
    if (counts.withoutEffect > 0) {
        table.add({u"without effect", numberText(counts.withoutEffect)});
    }
    return table.text();
}

std::u16string speakers(const ScriptStatistics& counts) {
    TextTable table({{u"SPEAKER"}, {u"SPEECHES", true}, {u"CHARACTERS", true}, {u"TIME", true}});
    for (const auto& [letter, said] : counts.speakers) {
        addSpeaking(table, {&letter, 1}, said);
    }
    addSpeaking(table, u"all", counts.total());
    if (counts.offline.speeches > 0) {
        addSpeaking(table, u"offline", counts.offline);
    }
    return table.text();
}

using CommandCount = std::pair<std::pair<TakenBy, std::u16string>, std::size_t>;

// The most frequent of a kind first, equal ones by name.
std::vector<CommandCount> byFrequency(const ScriptStatistics& counts) {
    std::vector<CommandCount> rows(counts.commands.begin(), counts.commands.end());
    std::ranges::stable_sort(rows, [](const auto& left, const auto& right) {
        return left.first.first != right.first.first ? left.first.first < right.first.first
                                                     : left.second > right.second;
    });
    return rows;
}

std::u16string commands(const ScriptStatistics& counts) {
    TextTable table({{u"KIND"}, {u"COMMAND OR TAG"}, {u"TIMES", true}});
    for (const auto& [command, times] : byFrequency(counts)) {
        table.add({wide(kindName(command.first)), command.second, numberText(times)});
    }
    return counts.commands.empty() ? u"" : table.text();
}

std::u16string files(const ScriptStatistics& counts, const std::filesystem::path& folder) {
    TextTable table({{u"FILE"}, {u"USE"}, {u"THERE"}, {u"LINES"}});
    for (const NamedFile& file : counts.files) {
        std::vector<std::u16string> lines;
        for (const std::int32_t line : file.lines) {
            lines.push_back(decimalText(line));
        }
        table.add({file.name, wide(useName(file.use)), exists(folder, file.name) ? u"yes" : u"no",
                   joined(lines, u", ")});
    }
    return counts.files.empty() ? u"" : table.text();
}

std::string asText(const ScriptStatistics& counts, const std::filesystem::path& folder) {
    std::string text;
    for (const std::u16string& table :
         {lineCounts(counts), speakers(counts), commands(counts), files(counts, folder)}) {
        text.append(text.empty() || table.empty() ? "" : "\n").append(utf8(table));
    }
    return text;
}

// ---- JSON

Json speakingJson(const Speaking& said) {
    return {{"speeches", said.speeches},
            {"characters", said.characters},
            {"seconds", std::round(said.seconds * 10) / 10}};
}

std::string asJson(const ScriptStatistics& counts, const std::filesystem::path& folder,
                   const std::string& script) {
    Json document{{"version", kJsonVersion}, {"script", script}};
    document["lines"] = {{"all", counts.lines},
                         {"talk", counts.talkLines},
                         {"command", counts.commandLines},
                         {"tag", counts.tagLines},
                         {"empty", counts.emptyLines},
                         {"withoutEffect", counts.withoutEffect}};
    document["speakers"] = Json::array();
    for (const auto& [letter, said] : counts.speakers) {
        Json row{{"speaker", utf8({&letter, 1})}};
        row.update(speakingJson(said));
        document["speakers"].push_back(std::move(row));
    }
    document["total"] = speakingJson(counts.total());
    document["offline"] = speakingJson(counts.offline);
    document["commands"] = Json::array();
    for (const auto& [command, times] : byFrequency(counts)) {
        document["commands"].push_back(
            {{"kind", kindName(command.first)}, {"name", utf8(command.second)}, {"times", times}});
    }
    document["files"] = Json::array();
    for (const NamedFile& file : counts.files) {
        document["files"].push_back({{"file", utf8(file.name)},
                                     {"use", useName(file.use)},
                                     {"exists", exists(folder, file.name)},
                                     {"lines", file.lines}});
    }
    // The script's name may be no UTF-8.
    return document.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

int runStats(const Options& options) {
    const Inputs inputs = readInputs(options);
    AnalysisWants wants;
    wants.statistics = true;
    const ScriptStatistics counts = Filter().run(inputs.request(options), wants).statistics;
    const std::filesystem::path folder = folderOf(options.script);
    const std::string result = options.format == ReportFormat::json
                                   ? asJson(counts, folder, inputs.scriptName)
                                   : asText(counts, folder);
    if (const auto failure = platform::writeStream(platform::OutputStream::output, result)) {
        throw inputOrOutputError(outputName(kStandardStream), {}, *failure);
    }
    return kDone;
}

} // namespace tvml::host
