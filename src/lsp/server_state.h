// What the server keeps of its documents, for its own files.
#ifndef TVML_LSP_SERVER_STATE_H
#define TVML_LSP_SERVER_STATE_H

#include "lsp/language_server.h"

namespace tvml::lsp {

// A description that an open document needs, or that is open itself.
struct LanguageServer::DescriptionFile {
    Uri uri;
    std::string path;
    std::string stamp; // of the file on the disk that was read
    Project project;
    std::unique_ptr<LoadedProgramme> programme;
    TextDocument text;                // of the programme, for its places
    std::vector<Diagnostic> problems; // when checked
    bool checked = false;
    bool untold = true;
};

struct LanguageServer::Document {
    Uri uri; // as the client writes it
    std::string path;
    std::int64_t version = 0;
    TextDocument text;
    bool isDescription = false;
    bool untold = true; // its findings may have changed
    Project project;
    std::string projectStamp;
    std::vector<MediaFile> mediaFiles;
    std::optional<MediaNames> media;

    // Of the text as it is now, when it was asked for.
    std::optional<Analysis> analysis;
    std::u16string analysed; // the text that the analysis refers to
};

// The range of a diagnostic of a text.
Range rangeOf(const Diagnostic& found);

// What the command line's policy leaves of it.
std::vector<Findings::Finding> asFindings(const std::vector<Diagnostic>& problems,
                                          SourceKind source, const SeverityPolicy& policy);

} // namespace tvml::lsp

#endif
