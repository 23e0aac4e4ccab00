// Reading of what is spoken. For LineReader alone.
#ifndef TVML_READING_TALK_READER_H
#define TVML_READING_TALK_READER_H

#include <string_view>

#include "reading/script_line.h"

namespace tvml {

class TalkReader {
public:
    TalkReader(const KeywordTable& words, ScriptLine& line)
        : words_(words), line_(line), talk_(line.talk_) {}

    // Reads the content of the line.
    void read(bool mayHoldQuotes);

private:
    void readGroups(std::u16string_view line);
    void readCaption(std::u16string_view whole, std::u16string_view inner);

    const KeywordTable& words_;
    ScriptLine& line_;
    TalkReading& talk_;
};

} // namespace tvml

#endif
