// The server without its protocol: documents that are open, what is wrong with them,
// and answers about their places.
//
// Conventions
//  1. Documents have names, which are their URIs; asking about one that is not open
//     gets an empty answer.
//  2. Answers are those of the documents' texts as they are now. One conversion
//     serves all of them until a text, a description or an ini file changes.
#ifndef TVML_LSP_LANGUAGE_SERVER_H
#define TVML_LSP_LANGUAGE_SERVER_H

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/analysis.h"
#include "analysis/programme.h"
#include "lsp/answers.h"
#include "lsp/surroundings.h"

namespace tvml::lsp {

class LanguageServer {
public:
    explicit LanguageServer(Surroundings& surroundings);
    ~LanguageServer();

    void speak(Language language);

    // ---- documents

    void open(const Uri& uri, std::u16string text, std::int64_t version);
    void change(const Uri& uri, const TextEdit& edit);
    void replace(const Uri& uri, std::u16string text);
    void setVersion(const Uri& uri, std::int64_t version);
    void close(const Uri& uri);
    bool isOpen(const Uri& uri) const { return documents_.contains(uri); }
    const TextDocument* documentAt(const Uri& uri) const;

    // Looks whether files on the disk changed; what depends on them is looked at anew.
    void lookAtFiles();

    // Whether findings() has something new to tell.
    bool isBehind() const;

    // Of all documents whose findings may have changed since they were told.
    std::vector<Findings> findings();

    // ---- questions

    CompletionList complete(const Uri& uri, Position place);
    std::optional<Hover> hover(const Uri& uri, Position place);
    std::vector<Location> definition(const Uri& uri, Position place);
    std::vector<Location> references(const Uri& uri, Position place);
    std::vector<Symbol> symbols(const Uri& uri);
    std::vector<LineSpan> folds(const Uri& uri);
    std::vector<Token> tokens(const Uri& uri);
    std::vector<Link> links(const Uri& uri);
    std::vector<Range> selections(const Uri& uri, Position place); // the innermost first
    std::vector<Action> actions(const Uri& uri, const Range& range);
    std::optional<Range> renamed(const Uri& uri, Position place);
    RenameResult rename(const Uri& uri, Position place, std::u16string_view name);
    Preview preview(const Uri& uri);
    double secondsOf(const Uri& uri); // estimated length of the programme
    std::optional<std::string> play(const Uri& uri, std::size_t line);

private:
    struct Document;
    struct DescriptionFile;

    Document* find(const Uri& uri);
    void touch(Document& document);
    DescriptionFile& descriptionOf(Document& document);
    const Analysis& analysisOf(Document& document);
    void checkDescriptionOf(DescriptionFile& file);
    Findings ofScript(Document& document);
    void addDescriptions(std::vector<Findings>& all);
    void addVocabulary(std::vector<Findings>& all);

    std::optional<Hover> hoverElement(Document& document, Position place);
    std::u16string storyOf(Document& document, std::size_t line, const LineParts& parts);
    CompletionList completeDescription(Document& document, Position place);
    std::size_t elementBefore(DescriptionFile& file, Position place);
    void addUses(Document& document, std::size_t number, std::vector<Location>& found);
    Location elementAt(DescriptionFile& file, std::size_t number);
    std::size_t usedElement(Document& document, std::size_t line, const LinePart* part);
    RenameResult renameLetter(Document& document, char16_t from, std::u16string_view to);
    RenameResult renameName(Document& asked, const std::u16string& from, std::u16string_view to);
    template <typename Wanted>
    std::size_t editParts(Document& document, const LoadedProgramme& after, Wanted wanted,
                          Edits& edits);
    RenameResult refusal(Message why, std::initializer_list<std::u16string_view> values);
    void addFixes(Document& document, const Range& range, std::vector<Action>& actions);
    void addRewritings(Document& document, std::size_t line, std::vector<Action>& actions);

    Surroundings& surroundings_;
    Language language_ = Language::en;
    std::map<Uri, std::unique_ptr<Document>> documents_;
    std::map<std::string, std::unique_ptr<DescriptionFile>> descriptions_; // by path
    std::set<Uri> toldAbout_;                                              // with findings
    std::string vocabularyStamp_;
    bool behind_ = false;
};

// Between file names and their URIs. An empty path is none of a file.
std::string pathOf(const Uri& uri);
Uri uriOf(const std::string& path);

} // namespace tvml::lsp

#endif
