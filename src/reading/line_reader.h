// Reading of script lines. Every rule about markers, colons, speakers, brackets,
// commands and their arguments is applied here, once for each line.
#ifndef TVML_READING_LINE_READER_H
#define TVML_READING_LINE_READER_H

#include <string_view>

#include "reading/programme_names.h"
#include "reading/script_line.h"

namespace tvml {

// What the meaning of a line depends on besides its words.
struct LineContext {
    char16_t lastCharacter = 0; // of the programme
    ConditionSet conditions;    // that hold before the line
};

// What a cheap look at a line has told already.
struct LineHints {
    bool isPlain = false; // without double quotes
};

class LineReader {
public:
    // Both must outlive the reader, and the words stay as they are. The names may
    // change between lines.
    LineReader(const KeywordTable& words, const ProgrammeNames& names)
        : words_(words), names_(names), commands_(words), markers_(words) {}

    // Reads a line, without its line feed, into `line`.
    void read(std::u16string_view text, const LineContext& context, ScriptLine& line,
              LineHints hints = {}) const;

    // Only the kind of a line, which is trimmed.
    LineKind kindOf(std::u16string_view& line) const {
        return classifyLine(line, names_.tags, words_, markers_);
    }

    const KeywordTable& words() const { return words_; }
    const ProgrammeNames& names() const { return names_; }
    const CommandIndex& commands() const { return commands_; }
    const MarkerIndex& markers() const { return markers_; }

private:
    void readTag(ScriptLine& line) const;
    bool readDeclaredTag(ScriptLine& line) const;
    void readSuper(std::size_t units, ScriptLine& line) const;
    void readSpeaker(char16_t lastCharacter, ScriptLine& line) const;

    const KeywordTable& words_;
    const ProgrammeNames& names_;
    CommandIndex commands_;
    MarkerIndex markers_;
};

} // namespace tvml

#endif
