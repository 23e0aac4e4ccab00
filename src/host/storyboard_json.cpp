// Entry: storyboardJson.
#include "host/storyboard_json.h"

#include <array>
#include <cmath>

#include <nlohmann/json.hpp>

#include "host/language.h"
#include "host/shown_names.h"
#include "host/text_files.h"

namespace tvml::host {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kJsonVersion = 1;

// In the order of BeatKind.
constexpr std::array<const char*, 13> kKinds{"speech", "recording", "action",  "setting", "shot",
                                             "studio", "wait",      "title",   "super",   "picture",
                                             "sound",  "tag",       "embedded"};

// In the order of ScreenPart.
constexpr std::array<const char*, kScreenPartCount> kParts{
    "set",       "light",   "camera",     "mainImage",  "subImage",  "bgImage", "rightImage",
    "leftImage", "super",   "leftSuper",  "rightSuper", "captions",  "music",   "opening",
    "ending",    "offline", "expression", "gaze",       "posture",   "mouth",   "trembling",
    "presence",  "model",   "voice",      "talkSpeed",  "gesturing", "movement"};

double rounded(double seconds) {
    return std::round(seconds * 100) / 100;
}

std::string letterText(char16_t letter) {
    return utf8({&letter, 1});
}

std::string hexColour(const std::array<std::u16string_view, 3>& parts) {
    static constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text = "#";
    for (const std::u16string_view part : parts) { // "0.0", "0.5" or "1.0"
        const unsigned value = part.front() == u'1' ? 255 : part.back() == u'5' ? 128 : 0;
        text += kDigits[value / 16];
        text += kDigits[value % 16];
    }
    return text;
}

Json changesJson(const std::vector<ScreenChange>& changes) {
    Json result = Json::object();
    for (const ScreenChange& change : changes) {
        const char* const part = kParts[static_cast<std::size_t>(change.part)];
        std::string key = change.who == 0 ? std::string() : letterText(change.who);
        key.append(change.who == 0 ? "" : ".").append(part);
        result[key] = utf8(change.value);
        if (change.colour != nullptr) {
            result[key + "Colour"] = hexColour(change.colour->text);
            result[key + "Edge"] = hexColour(change.colour->edge);
        }
    }
    return result;
}

class Writer {
public:
    Writer(const Analysis& analysis, const StoryboardSource& source)
        : analysis_(analysis), source_(source) {}

    std::string run() {
        const Storyboard& board = analysis_.storyboard;
        Json document{{"version", kJsonVersion},
                      {"script", source_.script},
                      {"description", source_.description},
                      {"language", languageName()},
                      {"seconds", rounded(board.seconds)}};
        document["cast"] = Json::array();
        for (const CastMember& member : board.cast) {
            document["cast"].push_back(
                {{"letter", letterText(member.letter)}, {"model", utf8(member.model)}});
        }
        addScenes(document);
        groupFindings();
        document["panels"] = Json::array();
        for (const Panel& panel : board.panels) {
            document["panels"].push_back(panelJson(panel));
        }
        addWords(document);
        addFiles(document);
        return escaped(document.dump(-1, ' ', false, Json::error_handler_t::replace));
    }

private:
    static std::string languageName() { return language() == Language::ja ? "ja" : "en"; }

    void addScenes(Json& document) const {
        document["scenes"] = Json::array();
        for (const Scene& scene : analysis_.storyboard.scenes) {
            document["scenes"].push_back({{"panel", scene.firstPanel},
                                          {"title", utf8(scene.title)},
                                          {"start", rounded(scene.start)},
                                          {"seconds", rounded(scene.seconds)}});
        }
    }

    void groupFindings() {
        for (const Diagnostic& found : analysis_.problems) {
            if (found.source == SourceKind::script) {
                findings_[found.line].push_back({{"severity", severityName(found.severity)},
                                                 {"code", std::string(found.code.row().code)},
                                                 {"message", utf8(found.message)}});
            }
        }
    }

    static const char* severityName(Severity severity) {
        return severity == Severity::error     ? "error"
               : severity == Severity::warning ? "warning"
                                               : "note";
    }

    // What is as usual is left out: a script of many lines makes a small page.
    Json panelJson(const Panel& panel) {
        const Beat& beat = panel.beat;
        Json row{{"line", beat.line}};
        row["kind"] = panel.writesNothing ? "nothing" : kKinds[static_cast<std::size_t>(beat.kind)];
        row["source"] = utf8(panel.source);
        if (beat.who != 0) {
            row["who"] = letterText(beat.who);
        }
        if (!beat.name.empty()) {
            row["name"] = utf8(beat.name);
        }
        if (!beat.text.empty()) {
            row["text"] = utf8(beat.text);
        }
        if (panel.captioned) {
            row["caption"] = utf8(panel.caption);
        }
        if (panel.card != CardStep::none) {
            row["card"] = panel.card == CardStep::starts ? "starts" : "completes";
        }
        if (panel.isSubtitle) {
            row["subtitle"] = true;
        }
        row["start"] = rounded(panel.start);
        addTime(row, beat);
        if (!panel.changes.empty()) {
            row["changes"] = changesJson(panel.changes);
        }
        if (const auto found = findings_.find(beat.line); found != findings_.end()) {
            row["findings"] = found->second;
        }
        return row;
    }

    static void addTime(Json& row, const Beat& beat) {
        if (beat.seconds > 0) {
            row["seconds"] = rounded(beat.seconds);
            row["estimate"] = beat.isEstimate;
        }
        if (!beat.blocks) {
            row["waits"] = false;
        }
        if (beat.isOffline) {
            row["offline"] = true;
        }
    }

    // The names on the panels as the reader's vocabulary has them.
    void addWords(Json& document) const {
        document["words"] = Json::object();
        for (const Panel& panel : analysis_.storyboard.panels) {
            addWord(document["words"], panel.beat.name);
            for (const ScreenChange& change : panel.changes) {
                addWord(document["words"], change.value);
            }
        }
    }

    void addWord(Json& words, const std::u16string& name) const {
        const std::u16string shown =
            name.empty() ? std::u16string() : shownName(analysis_.offer, name);
        if (!shown.empty() && shown != name) {
            words[utf8(name)] = utf8(shown);
        }
    }

    void addFiles(Json& document) const {
        static constexpr std::array<const char*, 4> kUses{"none", "picture", "sound", "speech"};
        document["files"] = Json::array();
        for (const NamedFile& file : analysis_.statistics.files) {
            const auto known = source_.exists.find(file.name);
            Json row{{"file", utf8(file.name)},
                     {"use", kUses[static_cast<std::size_t>(file.use)]},
                     {"lines", file.lines}};
            if (known != source_.exists.end()) {
                row["exists"] = known->second;
            }
            document["files"].push_back(std::move(row));
        }
        document["pictures"] = Json::object();
        for (const auto& [name, address] : source_.pictures) {
            document["pictures"][utf8(name)] = address;
        }
    }

    static std::string escaped(const std::string& json) {
        std::string text;
        text.reserve(json.size());
        for (const char letter : json) { // outside texts there is none
            letter == '<' ? text.append("\\u003c") : text.append(1, letter);
        }
        return text;
    }

    const Analysis& analysis_;
    const StoryboardSource& source_;
    std::map<std::int32_t, Json> findings_;
};

} // namespace

std::string storyboardJson(const Analysis& analysis, const StoryboardSource& source) {
    return Writer(analysis, source).run() + "\n";
}

} // namespace tvml::host
