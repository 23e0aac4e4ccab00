// Entry: PageTrial.
#include "page_trial.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>

#include "reading/line_kind.h"
#include "repository_files.h"

namespace tvml {
namespace {

const std::set<std::string> kOtherKinds{"sh",    "bat", "powershell", "c",
                                        "cmake", "ini", "lisp",       "text"};

// The page on import shows them; its own test converts the one to the other.
const std::set<std::string> kTriedElsewhere{"play", "report"};

std::string shellQuoted(const std::string& word) {
    return "'" + word + "'";
}

bool isGap(const std::string& line) {
    return line == "…" || line == "...";
}

// Brackets with a word in them.
bool isBracketed(std::u16string_view line) {
    constexpr std::u16string_view kOpening = u"(（";
    constexpr std::u16string_view kClosing = u")）";
    return line.size() > 2 && kOpening.find(line.front()) != kOpening.npos &&
           kClosing.find(line.back()) != kClosing.npos &&
           line.find_first_not_of(u" 　…", 1) + 1 < line.size();
}

bool isFindingOrStaging(const std::string& line) {
    constexpr const char* kParts[] = {": error:", ": warning:", ": note:",  ": エラー:",
                                      ": 警告:",  ": メモ:",    "<staging", "character: "};
    return std::ranges::any_of(
        kParts, [&](const char* part) { return line.find(part) != std::string::npos; });
}

// All that begins with "--" behind the program's name is an option of it.
void expectOptions(const std::string& line, const std::string& help) {
    const std::size_t program = line.find("tvmlfilter ");
    for (std::size_t at = line.find(" --", program); at < line.size() && program < at;
         at = line.find(" --", at + 1)) {
        const std::size_t end = line.find_first_not_of("-abcdefghijklmnopqrstuvwxyz", at + 1);
        const std::string option = line.substr(at, end - at);
        EXPECT_NE(help.find(option), std::string::npos) << "no option" << option << ": " << line;
    }
}

} // namespace

bool shows(std::span<const std::string> shown, std::span<const std::string> real) {
    if (shown.empty()) {
        return real.empty();
    }
    if (isGap(shown.front())) {
        return shows(shown.subspan(1), real) || (!real.empty() && shows(shown, real.subspan(1)));
    }
    return !real.empty() && shown.front() == real.front() &&
           shows(shown.subspan(1), real.subspan(1));
}

bool isScriptLine(const std::string& text) {
    const std::u16string whole = utf16Of(text);
    std::u16string_view line = whole;
    const LineKind kind = classifyLine(line, {}, shippedWords(), MarkerIndex(shippedWords()));
    return kind == LineKind::tag || kind == LineKind::character || isBracketed(line);
}

PageTrial::PageTrial(const Page& page) : page_(page) {
    std::filesystem::copy(TVML_SOURCE_DIR "/examples", folder_.path() / "examples",
                          std::filesystem::copy_options::recursive);
    const std::string start = page.description.empty() ? "config/default.xml" : page.description;
    useDescription("description.xml", readRepositoryFile(start));
}

void PageTrial::tryBlocks() {
    for (const PageBlock& block : page_.blocks) {
        SCOPED_TRACE(page_.path + ":" + std::to_string(block.line) + ", " + block.kind);
        tryBlock(block);
    }
}

// All at once, so that a line finds what an earlier one has shown; what goes with
// a line may be missing.
void PageTrial::trySpans() {
    TextLines lines;
    for (const PageSpan& span : page_.spans) {
        if (isScriptLine(span.text)) {
            lines.push_back(span.text);
        }
    }
    write("spans.txt", textOf(lines));
    expectNoProblem("spans.txt", "error");
}

void PageTrial::tryOptions() {
    const std::string help = run("tvmlfilter --help-all").output;
    for (const PageBlock& block : page_.blocks) {
        for (const std::string& line : block.lines) {
            expectOptions(line, help);
        }
    }
    for (const PageSpan& span : page_.spans) {
        expectOptions(span.text, help);
    }
}

void PageTrial::tryBlock(const PageBlock& block) {
    if (block.kind == "script") {
        return tryScript(block);
    }
    if (block.kind == "xml") {
        return tryDescription(block);
    }
    if (block.kind == "tvml") {
        return tryTvml(block);
    }
    if (block.kind == "console") {
        return tryConsole(block);
    }
    if (kTriedElsewhere.contains(block.kind)) {
        EXPECT_TRUE(page_.path.ends_with("import.md"));
        return;
    }
    EXPECT_TRUE(kOtherKinds.contains(block.kind)) << "unknown kind of block";
    for (const std::string& line : block.lines) {
        const bool isLisp = block.kind == "lisp"; // every line of it stands in brackets
        EXPECT_FALSE(!isLisp && (isScriptLine(line) || isFindingOrStaging(line)))
            << "an example in a block that nobody tries: " << line;
    }
}

void PageTrial::tryScript(const PageBlock& block) {
    script_ = block.fileName("script.txt");
    write(script_, textOf(block.lines));
    block.isSlip() ? expectFinding(script_) : expectNoProblem(script_, "warning");
}

void PageTrial::tryDescription(const PageBlock& block) {
    const std::string nameBefore = description_;
    const std::string before = descriptionText_;
    const std::string text = textOf(block.lines);
    const bool isWhole = text.find("<staging>") != std::string::npos;
    useDescription(block.fileName(nameBefore.c_str()), isWhole ? text : withElements(text));
    write("nothing.txt", "");
    if (block.isSlip()) {
        expectFinding("nothing.txt");
        useDescription(nameBefore, before);
    } else {
        expectNoProblem("nothing.txt", "warning");
    }
}

// In the midst of lines that are not shown.
void PageTrial::tryTvml(const PageBlock& block) {
    TextLines shown{"…"};
    shown.insert(shown.end(), block.lines.begin(), block.lines.end());
    shown.push_back("…");
    const Ran ran = run("tvmlfilter convert " + script_ + " -d " + description_);
    EXPECT_TRUE(shows(shown, linesOf(ran.output))) << script_ << " becomes\n" << ran.output;
}

void PageTrial::tryConsole(const PageBlock& block) {
    const auto isCommand = [](const std::string& line) { return line.starts_with("$ "); };
    std::string folder;
    for (auto line = block.lines.begin(); line != block.lines.end();) {
        ASSERT_TRUE(isCommand(*line)) << "no command: " << *line;
        const std::string command = line->substr(2);
        const auto end = std::find_if(line + 1, block.lines.end(), isCommand);
        const Ran ran = run(folder + command);
        EXPECT_TRUE(shows({line + 1, end}, linesOf(ran.output))) << command << " prints\n"
                                                                 << ran.output;
        folder += command.starts_with("cd ") ? command + " && " : "";
        line = end;
    }
}

void PageTrial::expectNoProblem(const std::string& script, const char* level) {
    const Ran ran = check(script, level);
    EXPECT_EQ(ran.exitCode, 0) << ran.output;
}

void PageTrial::expectFinding(const std::string& script) {
    const Ran ran = check(script, "warning");
    EXPECT_EQ(ran.exitCode, 3) << "no slip:\n" << ran.output;
}

PageTrial::Ran PageTrial::check(const std::string& script, const char* level) {
    return run("tvmlfilter check " + script + " -d " + description_ + " --failure-level " + level);
}

// In the page's folder and language, with the program on the path.
PageTrial::Ran PageTrial::run(const std::string& command) const {
    const std::filesystem::path test(platform::system().hostProgramPath(4096));
    const std::string whole = "exec 2>&1; PATH=" + shellQuoted(test.parent_path().string()) +
                              ":\"$PATH\"; export PATH; export LC_ALL=" +
                              (page_.isJapanese() ? "ja_JP.UTF-8" : "en_GB.UTF-8") + "; cd " +
                              shellQuoted(folder_.path().string()) + " && " + command;
    FILE* pipe = popen(whole.c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("the shell does not start");
    }
    Ran ran;
    std::array<char, 4096> bytes;
    for (std::size_t count; (count = std::fread(bytes.data(), 1, bytes.size(), pipe)) > 0;) {
        ran.output.append(bytes.data(), count);
    }
    ran.exitCode = pclose(pipe) / 256;
    return ran;
}

// The last description with more elements at its end.
std::string PageTrial::withElements(const std::string& elements) const {
    std::string text = descriptionText_;
    const std::size_t end = text.rfind("</staging>");
    return end == std::string::npos ? elements : text.insert(end, elements);
}

void PageTrial::useDescription(const std::string& name, const std::string& text) {
    description_ = name;
    descriptionText_ = text;
    write(name, text);
}

void PageTrial::write(const std::string& name, const std::string& text) const {
    std::ofstream(folder_.path() / name, std::ios::binary) << text;
}

} // namespace tvml
