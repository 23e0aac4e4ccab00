// Trying the examples of a page: each block between fences has a kind.
//
//   script   a script, checked with the description that the page has shown last
//   xml      a whole description, or elements that are put into the last one
//   tvml     lines that the last script becomes
//   console  commands behind "$ " and what they print, run in one folder a page
//
// and kinds that nothing is done with, which may hold no example. A line "…" or
// "..." stands for lines left out. "script NAME" gives a file its name; "slip"
// behind it says that there is something to find.
#ifndef TVML_TESTS_EXAMPLES_PAGE_TRIAL_H
#define TVML_TESTS_EXAMPLES_PAGE_TRIAL_H

#include "page.h"

#include <span>
#include <string>

#include "platform/temporary_folder.h"

namespace tvml {

// Whether the lines shown are the real ones, but for gaps.
bool shows(std::span<const std::string> shown, std::span<const std::string> real);

// Whether a writer could put this into a script as a line other than talk of A.
bool isScriptLine(const std::string& text);

// Tries one page, in a folder that has the repository's examples.
class PageTrial {
public:
    explicit PageTrial(const Page& page);

    void tryBlocks(); // in their order
    void trySpans();  // the lines within the text
    void tryOptions();

private:
    struct Ran {
        int exitCode = 0;
        std::string output; // and messages
    };

    void tryBlock(const PageBlock& block);
    void tryScript(const PageBlock& block);
    void tryDescription(const PageBlock& block);
    void tryTvml(const PageBlock& block);
    void tryConsole(const PageBlock& block);
    void expectNoProblem(const std::string& script, const char* level);
    void expectFinding(const std::string& script);
    Ran check(const std::string& script, const char* level);
    Ran run(const std::string& command) const;
    std::string withElements(const std::string& elements) const;
    void useDescription(const std::string& name, const std::string& text);
    void write(const std::string& name, const std::string& text) const;

    const Page& page_;
    platform::TemporaryFolder folder_;
    std::string script_ = "script.txt";
    std::string description_;
    std::string descriptionText_;
};

} // namespace tvml

#endif
