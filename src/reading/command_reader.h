// Reading of what stands in brackets. For LineReader alone.
#ifndef TVML_READING_COMMAND_READER_H
#define TVML_READING_COMMAND_READER_H

#include <optional>
#include <string_view>

#include "reading/line_reader.h"

namespace tvml {

class CommandReader {
public:
    CommandReader(const LineReader& reader, const LineContext& context, ScriptLine& line)
        : words_(reader.words()), names_(reader.names()), index_(reader.commands()),
          context_(context), line_(line), command_(line.command_) {}

    // Reads the content of the line, which is bracketed.
    void read();

private:
    bool offerToCharacter();
    bool offerTo(bool studio);
    bool readArguments(const CommandSpec& spec);
    bool readTail(std::u16string_view rest);
    bool readAdverbs(std::u16string_view list);
    bool readLetter(std::u16string_view rest, bool other);
    bool readLetterPair(std::u16string_view rest);
    bool readCount(const CommandSpec& spec, std::u16string_view rest);
    std::optional<std::u16string_view> readUnit(std::u16string_view text, std::u16string_view unit,
                                                bool negativeAllowed);
    bool wearsModel();
    char16_t programmeLetter(std::u16string_view unit);
    bool readBehindColon(const CommandSpec& spec, std::u16string_view rest);
    bool readSet(std::u16string_view text);
    void readFile(std::u16string_view text);
    bool readVoice(std::u16string_view text);
    bool readModel(std::u16string_view text);
    void takeTrailingAdverbs(std::u16string_view& text);
    void takeCaption();
    void forgetArguments();

    const KeywordTable& words_;
    const ProgrammeNames& names_;
    const CommandIndex& index_;
    const LineContext& context_;
    ScriptLine& line_;
    RecognizedCommand& command_;
};

} // namespace tvml

#endif
