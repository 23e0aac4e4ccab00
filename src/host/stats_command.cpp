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
#include "host/language.h"
#include "host/shown_names.h"
#include "host/text_files.h"
#include "host/text_table.h"
#include "platform/host_services.h"
#include "reading/script_text.h"

namespace tvml::host {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kJsonVersion = 1;

std::u16string numberText(std::size_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

// The words of JSON.
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

// The same for people.
std::u16string kindText(TakenBy by) {
    static constexpr std::array<Message, 5> kTexts{Message::kind_nothing, Message::kind_tag,
                                                   Message::kind_staging, Message::kind_character,
                                                   Message::kind_pose};
    return std::u16string(label(kTexts[static_cast<std::size_t>(by)]));
}

std::u16string useText(FileUse use) {
    static constexpr std::array<Message, 4> kTexts{Message::use_none, Message::use_picture,
                                                   Message::use_sound, Message::use_speech};
    return std::u16string(label(kTexts[static_cast<std::size_t>(use)]));
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
    TextTable table({{label(Message::head_lines)}, {u"", true}});
    const auto add = [&table](Message what, std::size_t number) {
        table.add({std::u16string(label(what)), numberText(number)});
    };
    add(Message::stats_talk, counts.talkLines);
    add(Message::stats_commands, counts.commandLines);
    add(Message::stats_tagLines, counts.tagLines);
    add(Message::stats_empty, counts.emptyLines);
    add(Message::stats_all, counts.lines);
    if (counts.withoutEffect > 0) {
        add(Message::stats_withoutEffect, counts.withoutEffect);
    }
    return table.text();
}

std::u16string speakers(const ScriptStatistics& counts) {
    TextTable table({{label(Message::head_speaker)},
                     {label(Message::head_speeches), true},
                     {label(Message::head_characters), true},
                     {label(Message::head_time), true}});
    for (const auto& [letter, said] : counts.speakers) {
        addSpeaking(table, {&letter, 1}, said);
    }
    addSpeaking(table, label(Message::stats_all), counts.total());
    if (counts.offline.speeches > 0) {
        addSpeaking(table, label(Message::stats_offline), counts.offline);
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

std::u16string commands(const ScriptStatistics& counts, const ProgrammeOffer& offer) {
    TextTable table({{label(Message::head_kind)},
                     {label(Message::head_commandOrTag)},
                     {label(Message::head_times), true}});
    for (const auto& [command, times] : byFrequency(counts)) {
        table.add({kindText(command.first), shownName(offer, command.second), numberText(times)});
    }
    return counts.commands.empty() ? u"" : table.text();
}

std::u16string files(const ScriptStatistics& counts, const std::filesystem::path& folder) {
    TextTable table({{label(Message::head_file)},
                     {label(Message::head_use)},
                     {label(Message::head_there)},
                     {label(Message::head_inLines)}});
    for (const NamedFile& file : counts.files) {
        std::vector<std::u16string> lines;
        for (const std::int32_t line : file.lines) {
            lines.push_back(decimalText(line));
        }
        const Message there = exists(folder, file.name) ? Message::there_yes : Message::there_no;
        table.add(
            {file.name, useText(file.use), std::u16string(label(there)), joined(lines, u", ")});
    }
    return counts.files.empty() ? u"" : table.text();
}

std::string asText(const Analysis& analysis, const std::filesystem::path& folder) {
    const ScriptStatistics& counts = analysis.statistics;
    std::string text;
    for (const std::u16string& table : {lineCounts(counts), speakers(counts),
                                        commands(counts, analysis.offer), files(counts, folder)}) {
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
    wants.statistics = wants.offer = true;
    const Analysis analysis = Filter().run(inputs.request(options), wants);
    const std::filesystem::path folder = folderOf(options.script);
    const std::string result = options.format == ReportFormat::json
                                   ? asJson(analysis.statistics, folder, inputs.scriptName)
                                   : asText(analysis, folder);
    writeOutput(result);
    return kDone;
}

} // namespace tvml::host
