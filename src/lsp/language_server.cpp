// Documents, what they depend on, and what is wrong with them. The answers about
// places stand in the files beside this one.
#include "lsp/language_server.h"

#include <algorithm>

#include "analysis/source_texts.h"
#include "lsp/server_state.h"
#include "staging/tvml_exception.h"

namespace tvml::lsp {
namespace {

constexpr std::string_view kScheme = "file://";

int hexValue(char digit) {
    return digit >= '0' && digit <= '9'   ? digit - '0'
           : digit >= 'a' && digit <= 'f' ? digit - 'a' + 10
           : digit >= 'A' && digit <= 'F' ? digit - 'A' + 10
                                          : -1;
}

std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '%' && i + 2 < text.size() && hexValue(text[i + 1]) >= 0 &&
                              hexValue(text[i + 2]) >= 0;
        result += isEscape ? static_cast<char>(hexValue(text[i + 1]) * 16 + hexValue(text[i + 2]))
                           : text[i];
        i += isEscape ? 2 : 0;
    }
    return result;
}

bool isPlainInUris(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("-._~/").find(c) != std::string_view::npos;
}

bool hasDrive(std::string_view path) {
    return path.size() >= 2 && path[1] == ':';
}

// Documents are found by this, however a client spells their URIs.
Uri keyOf(const Uri& uri) {
    const std::string path = pathOf(uri);
    return path.empty() ? uri : uriOf(path);
}

} // namespace

std::string pathOf(const Uri& uri) {
    if (!uri.starts_with(kScheme)) {
        return {};
    }
    const std::string path = unescaped(std::string_view(uri).substr(kScheme.size()));
    return path.starts_with('/') && hasDrive(std::string_view(path).substr(1)) ? path.substr(1)
                                                                               : path;
}

Uri uriOf(const std::string& path) {
    static constexpr std::string_view kDigits = "0123456789ABCDEF";
    Uri uri(kScheme);
    uri += hasDrive(path) ? "/" : "";
    for (const char c : path) {
        const char plain = hasDrive(path) && c == '\\' ? '/' : c;
        if (isPlainInUris(plain)) {
            uri += plain;
        } else {
            const auto byte = static_cast<unsigned char>(plain);
            uri += '%';
            uri += kDigits[byte / 16];
            uri += kDigits[byte % 16];
        }
    }
    return uri;
}

Range rangeOf(const Diagnostic& found) {
    if (found.line == 0) {
        return {};
    }
    return TextDocument::within(static_cast<std::size_t>(found.line) - 1,
                                std::max<std::size_t>(found.column, 1) - 1, found.units);
}

std::vector<Findings::Finding> asFindings(const std::vector<Diagnostic>& problems,
                                          SourceKind source, const SeverityPolicy& policy) {
    std::vector<Diagnostic> kept = problems;
    applyPolicy(policy, kept);
    std::vector<Findings::Finding> all;
    for (Diagnostic& one : kept) {
        if (one.source == source) {
            all.push_back({rangeOf(one), one.severity, std::string(one.code.row().code),
                           std::move(one.message)});
        }
    }
    return all;
}

LanguageServer::LanguageServer(Surroundings& surroundings) : surroundings_(surroundings) {
    surroundings_.iniFiles().load();
    vocabularyStamp_ = surroundings_.stampOf(surroundings_.vocabularyFile());
}

LanguageServer::~LanguageServer() = default;

void LanguageServer::speak(Language language) {
    language_ = language;
    for (auto& [key, document] : documents_) {
        touch(*document);
    }
    for (auto& [key, file] : descriptions_) {
        file->checked = false;
        file->untold = true;
    }
}

// ---- documents

LanguageServer::Document* LanguageServer::find(const Uri& uri) {
    const auto document = documents_.find(keyOf(uri));
    return document == documents_.end() ? nullptr : document->second.get();
}

const TextDocument* LanguageServer::documentAt(const Uri& uri) const {
    const auto document = documents_.find(keyOf(uri));
    return document == documents_.end() ? nullptr : &document->second->text;
}

void LanguageServer::open(const Uri& uri, std::u16string text, std::int64_t version) {
    auto document = std::make_unique<Document>();
    document->uri = uri;
    document->path = pathOf(uri);
    document->version = version;
    document->isDescription = isXml(document->path, text);
    document->text.replace(std::move(text));
    document->project = surroundings_.projectOf(document->path);
    document->projectStamp = surroundings_.stampOf(document->project.file);
    document->mediaFiles = surroundings_.mediaOf(document->project);
    if (!document->project.media.empty()) {
        std::vector<std::u16string> names;
        std::ranges::transform(document->mediaFiles, std::back_inserter(names), &MediaFile::name);
        document->media.emplace(std::move(names));
    }
    Document& opened = *(documents_[keyOf(uri)] = std::move(document));
    touch(opened);
}

// A description that changes changes what is wrong with every script that uses it.
void LanguageServer::touch(Document& document) {
    document.analysis.reset();
    document.untold = behind_ = true;
    if (!document.isDescription) {
        return;
    }
    const Uri key = keyOf(document.uri);
    descriptions_.erase(key);
    for (auto& [other, script] : documents_) {
        if (!script->isDescription && uriOf(script->project.description) == key) {
            touch(*script);
        }
    }
}

void LanguageServer::change(const Uri& uri, const TextEdit& edit) {
    if (Document* document = find(uri)) {
        document->text.change(edit);
        touch(*document);
    }
}

void LanguageServer::replace(const Uri& uri, std::u16string text) {
    if (Document* document = find(uri)) {
        document->text.replace(std::move(text));
        touch(*document);
    }
}

void LanguageServer::setVersion(const Uri& uri, std::int64_t version) {
    if (Document* document = find(uri)) {
        document->version = version;
    }
}

void LanguageServer::close(const Uri& uri) {
    Document* document = find(uri);
    if (document == nullptr) {
        return;
    }
    touch(*document); // the file on the disk counts again
    documents_.erase(keyOf(uri));
    std::erase_if(descriptions_, [this](const auto& entry) {
        return std::ranges::none_of(documents_, [&entry](const auto& other) {
            const Document& script = *other.second;
            return other.first == entry.first || uriOf(script.project.description) == entry.first;
        });
    });
}

void LanguageServer::lookAtFiles() {
    const std::string words = surroundings_.stampOf(surroundings_.vocabularyFile());
    const bool newWords = words != vocabularyStamp_;
    vocabularyStamp_ = words;
    if (newWords) {
        descriptions_.clear(); // they refer to the words
        surroundings_.iniFiles().load();
    }
    std::vector<Uri> reopened;
    for (auto& [key, document] : documents_) {
        const bool newProject =
            surroundings_.stampOf(document->project.file) != document->projectStamp;
        const auto file = descriptions_.find(uriOf(document->project.description));
        const bool newDescription =
            file != descriptions_.end() && !documents_.contains(file->first) &&
            surroundings_.stampOf(file->second->path) != file->second->stamp;
        if (newDescription) {
            descriptions_.erase(file);
        }
        if (newWords || newDescription) {
            touch(*document);
        }
        if (newProject) {
            reopened.push_back(document->uri);
        }
    }
    for (const Uri& uri : reopened) {
        const Document& document = *find(uri);
        open(Uri(document.uri), document.text.text(), document.version);
    }
}

// ---- what they depend on

LanguageServer::DescriptionFile& LanguageServer::descriptionOf(Document& document) {
    const Uri key =
        document.isDescription ? keyOf(document.uri) : uriOf(document.project.description);
    std::unique_ptr<DescriptionFile>& file = descriptions_[key];
    if (file != nullptr) {
        return *file;
    }
    file = std::make_unique<DescriptionFile>();
    file->project = document.project;
    file->path = pathOf(key);
    const auto open = documents_.find(key);
    const bool isOpen = open != documents_.end();
    file->uri = isOpen ? open->second->uri : key;
    file->stamp = surroundings_.stampOf(file->path);
    std::u16string text =
        isOpen ? open->second->text.text() : surroundings_.descriptionAt(document.project);
    file->text.replace(text);
    blankXmlDeclaration(text);
    endLinesWithFeeds(text);
    file->programme = std::make_unique<LoadedProgramme>(surroundings_.iniFiles().words,
                                                        std::move(text), surroundings_.platform());
    return *file;
}

void LanguageServer::checkDescriptionOf(DescriptionFile& file) {
    if (file.checked) {
        return;
    }
    file.checked = true;
    const LoadedProgramme& programme = *file.programme;
    try {
        file.problems = checkDescription(programme.description(), surroundings_.iniFiles().words,
                                         surroundings_.platform(), language_, programme.parsed());
    } catch (const TvmlException&) {
        file.problems.clear(); // the scripts cannot be converted, and tell nothing
    }
}

// One conversion tells all that is asked about a script.
const Analysis& LanguageServer::analysisOf(Document& document) {
    if (document.analysis.has_value()) {
        return *document.analysis;
    }
    DescriptionFile& file = descriptionOf(document);
    checkDescriptionOf(file);
    document.analysed = document.text.text();
    endLinesWithFeeds(document.analysed);
    AnalysisWants wants;
    wants.problems = wants.sourceMap = wants.uses = wants.beats = true;
    const IniFiles& ini = surroundings_.iniFiles();
    try {
        document.analysis = analyze({{document.analysed, kNoLine, kNoLine,
                                      file.programme->description(), file.programme->parsed()},
                                     ini.words,
                                     ini.settings,
                                     language_,
                                     document.media.has_value() ? &*document.media : nullptr,
                                     &file.problems},
                                    wants, surroundings_.platform());
    } catch (const TvmlException&) {
        document.analysis.emplace();
    }
    return *document.analysis;
}

// ---- what is wrong

bool LanguageServer::isBehind() const {
    return behind_;
}

Findings LanguageServer::ofScript(Document& document) {
    const Analysis& analysis = analysisOf(document);
    return {document.uri, document.version,
            asFindings(analysis.problems, SourceKind::script, document.project.policy)};
}

// Of the descriptions that are used, in the places of their own.
void LanguageServer::addDescriptions(std::vector<Findings>& all) {
    for (auto& [key, file] : descriptions_) {
        if (!file->untold) {
            continue;
        }
        file->untold = false;
        checkDescriptionOf(*file);
        const auto open = documents_.find(key);
        Findings found{file->uri,
                       {},
                       asFindings(file->problems, SourceKind::description, file->project.policy)};
        if (open != documents_.end()) {
            found.version = open->second->version;
        }
        if (open != documents_.end() || !found.all.empty() || toldAbout_.contains(file->uri)) {
            all.push_back(std::move(found));
        }
    }
}

// Words that are missing explain most of what scripts have wrong.
void LanguageServer::addVocabulary(std::vector<Findings>& all) {
    const std::string file = surroundings_.vocabularyFile();
    const Uri uri = uriOf(file);
    const bool cutOff = surroundings_.iniFiles().words.problem() != LoadProblem::none;
    if (cutOff) {
        all.push_back({uri,
                       {},
                       asFindings(checkVocabulary(surroundings_.iniFiles().words, {}, language_),
                                  SourceKind::vocabulary, {})});
    } else if (toldAbout_.contains(uri)) {
        all.push_back({uri, {}, {}});
    }
}

std::vector<Findings> LanguageServer::findings() {
    std::vector<Findings> all;
    behind_ = false;
    for (auto& [key, document] : documents_) {
        if (!document->untold) {
            continue;
        }
        document->untold = false;
        if (document->isDescription) {
            descriptionOf(*document);
        } else {
            all.push_back(ofScript(*document));
        }
        const Project& project = document->project;
        if (!project.problem.empty()) {
            const std::size_t line = std::max<std::size_t>(project.problemLine, 1) - 1;
            all.push_back(
                {uriOf(project.file),
                 {},
                 {{TextDocument::within(line, 0, 1000), Severity::error, "", project.problem}}});
        }
    }
    addDescriptions(all);
    addVocabulary(all);
    for (const Findings& one : all) {
        one.all.empty() ? (void)toldAbout_.erase(one.uri) : (void)toldAbout_.insert(one.uri);
    }
    return all;
}

} // namespace tvml::lsp
