// Entries: nearestProject, readProject. A new key is a row of kKeys and a member of
// ProjectFile.
#include "host/project_file.h"

#include <algorithm>
#include <array>
#include <filesystem>

#define TOML_ENABLE_FORMATTERS 0
#include <toml++/toml.h>

#include "diagnostics/suggestions.h"
#include "host/inputs.h"
#include "host/language.h"
#include "platform/host_services.h"

namespace tvml::host {
namespace {

namespace fs = std::filesystem;

fs::path pathOf(const std::string& file) {
    return std::u8string(file.begin(), file.end());
}

std::string textOf(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

class Reading {
public:
    explicit Reading(ProjectFile& project) : project_(project) {}

    void read(const toml::table& table);

    void path(std::string ProjectFile::*member, const toml::node& node) {
        project_.*member = inFolder(textIn(node));
    }
    void paths(std::vector<std::string> ProjectFile::*member, const toml::node& node) {
        for (const std::string& text : textsIn(node)) {
            (project_.*member).push_back(inFolder(text));
        }
    }
    void words(const toml::node& node) { project_.player = textsIn(node); }
    void codes(std::vector<Code> ProjectFile::*member, const toml::node& node) {
        for (const std::string& text : textsIn(node)) {
            const std::optional<Code> code = findCode(text);
            if (!code.has_value()) {
                fail(node, say(Message::project_value, {text}));
            }
            (project_.*member).push_back(*code);
        }
    }
    template <typename Value, typename Rows>
    void choice(std::optional<Value> ProjectFile::*member, const toml::node& node,
                const Rows& rows) {
        const std::string text = textIn(node);
        const auto row = std::ranges::find(rows, text, [](const auto& each) { return each.first; });
        if (row == std::end(rows)) {
            fail(node, say(Message::project_value, {text}));
        }
        project_.*member = row->second;
    }
    void language(const toml::node& node) {
        project_.language = languageNamed(textIn(node));
        if (!project_.language.has_value()) {
            fail(node, say(Message::project_value, {textIn(node)}));
        }
    }
    void level(const toml::node& node);

    [[noreturn]] void fail(const toml::source_region& where, const std::string& text) const {
        throw ProjectFault{project_.file, {where.begin.line, where.begin.column}, text};
    }
    [[noreturn]] void fail(const toml::node& node, const std::string& text) const {
        fail(node.source(), text);
    }

private:
    std::string textIn(const toml::node& node) const {
        if (!node.is_string()) {
            fail(node, say(Message::project_noText));
        }
        return node.as_string()->get();
    }

    // A text alone is a list of one.
    std::vector<std::string> textsIn(const toml::node& node) const {
        std::vector<std::string> texts;
        if (const toml::array* list = node.as_array()) {
            for (const toml::node& one : *list) {
                texts.push_back(textIn(one));
            }
            return texts;
        }
        return {textIn(node)};
    }

    std::string inFolder(const std::string& path) const {
        return textOf((pathOf(project_.file).parent_path() / pathOf(path)).lexically_normal());
    }

    ProjectFile& project_;
};

using Encodings = std::array<std::pair<std::string_view, InputEncoding>, 5>;
constexpr Encodings kEncodings{{{"auto", InputEncoding::detect},
                                {"utf-8", InputEncoding::utf8},
                                {"utf-16le", InputEncoding::utf16le},
                                {"utf-16be", InputEncoding::utf16be},
                                {"cp932", InputEncoding::cp932}}};
constexpr std::array<std::pair<std::string_view, OutputEncoding>, 2> kOutputEncodings{
    {{"utf-8", OutputEncoding::utf8}, {"utf-16le", OutputEncoding::utf16le}}};
constexpr std::array<std::pair<std::string_view, Severity>, 3> kLevels{
    {{"note", Severity::note}, {"warning", Severity::warning}, {"error", Severity::error}}};

void Reading::level(const toml::node& node) {
    project_.neverFails = textIn(node) == "none";
    if (!project_.neverFails) {
        choice(&ProjectFile::failureLevel, node, kLevels);
    }
}

struct KeyRow {
    std::string_view name;
    void (*read)(Reading&, const toml::node&);
};

// clang-format off
constexpr KeyRow kKeys[] = {
    {"description",          [](Reading& r, const toml::node& n) { r.path(&ProjectFile::description, n); }},
    {"ini",                  [](Reading& r, const toml::node& n) { r.path(&ProjectFile::ini, n); }},
    {"encoding",             [](Reading& r, const toml::node& n) { r.choice(&ProjectFile::encoding, n, kEncodings); }},
    {"description-encoding", [](Reading& r, const toml::node& n) { r.choice(&ProjectFile::descriptionEncoding, n, kEncodings); }},
    {"output-encoding",      [](Reading& r, const toml::node& n) { r.choice(&ProjectFile::outputEncoding, n, kOutputEncodings); }},
    {"media",                [](Reading& r, const toml::node& n) { r.paths(&ProjectFile::media, n); }},
    {"output",               [](Reading& r, const toml::node& n) { r.path(&ProjectFile::output, n); }},
    {"allow",                [](Reading& r, const toml::node& n) { r.codes(&ProjectFile::allowed, n); }},
    {"deny",                 [](Reading& r, const toml::node& n) { r.codes(&ProjectFile::denied, n); }},
    {"failure-level",        [](Reading& r, const toml::node& n) { r.level(n); }},
    {"language",             [](Reading& r, const toml::node& n) { r.language(n); }},
    {"player",               [](Reading& r, const toml::node& n) { r.words(n); }},
};
// clang-format on

// The key that a misspelt one was meant to be, or all of them.
std::string unknownKey(std::string_view given) {
    ClosestNames closest(utf16(given));
    std::string all;
    for (const KeyRow& row : kKeys) {
        closest.offer(utf16(row.name));
        all.append(all.empty() ? "" : ", ").append(row.name);
    }
    const std::vector<std::u16string> found = closest.take();
    return found.empty() ? say(Message::project_unknownKey, {given, all})
                         : say(Message::project_meantKey, {given, utf8(found.front())});
}

void Reading::read(const toml::table& table) {
    for (const auto& [key, node] : table) {
        const auto row = std::ranges::find(kKeys, key.str(), &KeyRow::name);
        if (row == std::end(kKeys)) {
            fail(key.source(), unknownKey(key.str()));
        }
        row->read(*this, node);
    }
}

} // namespace

HostError ProjectFault::error() const {
    return {kInputOrOutputFailed, diagnosticLine(file, position, Message::severity_error, text)};
}

std::string folderOf(const std::string& file) {
    std::error_code failed;
    const fs::path path = fs::absolute(pathOf(file), failed);
    return textOf(path.parent_path());
}

std::string nearestProject(const std::string& folder) {
    std::error_code failed;
    fs::path at = fs::absolute(pathOf(folder.empty() ? "." : folder), failed).lexically_normal();
    for (; !failed; at = at.parent_path()) {
        const fs::path file = at / pathOf(std::string(kProjectName));
        std::error_code unknown;
        if (fs::is_regular_file(file, unknown)) {
            return textOf(file);
        }
        if (at == at.parent_path()) {
            break;
        }
    }
    return {};
}

ProjectFile readProject(const std::string& file) {
    ProjectFile project;
    project.file = file;
    std::string bytes;
    if (const platform::Failure failure = platform::readFile(file, bytes)) {
        throw inputOrOutputError(file, {}, Message::file_read, {systemText(*failure)});
    }
    try {
        Reading(project).read(toml::parse(bytes));
    } catch (const toml::parse_error& error) {
        const toml::source_position at = error.source().begin;
        throw ProjectFault{
            file, {at.line, at.column}, say(Message::project_noToml, {error.description()})};
    }
    return project;
}

} // namespace tvml::host
