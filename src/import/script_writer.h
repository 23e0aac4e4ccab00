// A script from a play.
#ifndef TVML_IMPORT_SCRIPT_WRITER_H
#define TVML_IMPORT_SCRIPT_WRITER_H

#include <set>
#include <utility>

#include "import/cast.h"
#include "import/directions.h"
#include "import/play_lines.h"

namespace tvml::plays {

// An item and one of its parts.
using PartPlace = std::pair<std::size_t, std::size_t>;

struct WrittenLine {
    std::u16string text{};
    std::u16string spoken{}; // what is to be said
    PartPlace from{};
    bool isCommand = false;
};

struct ToldDirection {
    std::int32_t line = 0;
    std::u16string text;
    std::u16string command{}; // with its speaker, as the script has it; empty for left out
};

struct WrittenScript {
    std::vector<WrittenLine> lines;
    std::vector<ToldDirection> directions;
    std::size_t headings = 0;

    std::u16string text() const;
};

class ScriptWriter {
public:
    // All of them must outlive the writer. Directions among `refused` are left out.
    struct Sources {
        const Play& play;
        const Cast& cast;
        const Directions& directions;
        const LineReader& reader;
        char16_t lastCharacter;
        bool titles;
        const std::set<PartPlace>& refused;
    };
    explicit ScriptWriter(const Sources& sources);

    WrittenScript write();

private:
    void writeItem(const PlayItem& item);
    void writeSpeech(const PlayItem& item);
    void writeHeading(const PlayPart& part);
    void writeDirection(const PlayPart& part, char16_t speaker);
    bool isAct(const PlayPart& part, char16_t speaker) const;
    std::size_t moveMarks(const PlayPart& next);
    void addSpeech(std::u16string_view text, bool isBehindAct);
    void flush(char16_t letter);
    std::u16string titleStart();
    void writeCast();
    void tell(const PlayPart& part, std::u16string_view text, std::u16string command = {});

    std::u16string head(char16_t letter) const;
    std::u16string bracketed(std::u16string_view text) const;
    bool isSpoken(std::u16string_view line, std::u16string_view speech,
                  std::u16string_view caption) const;
    void add(std::u16string text, bool isCommand = false);
    void addEmpty();

    const Sources from_;
    const KeywordTable& words_;
    const bool isJapanese_;
    WrittenScript script_;
    PartPlace place_;       // at hand
    std::u16string speech_; // that waits for more of its line
    PartPlace speechPlace_;
    std::size_t titleLine_ = kNowhere; // of the last title, before its subtitle
};

} // namespace tvml::plays

#endif
