// A play, a screenplay or subtitles as they were read, before anything is made of
// them.
#ifndef TVML_IMPORT_PLAY_H
#define TVML_IMPORT_PLAY_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvml::plays {

enum class PlayFormat : std::uint8_t {
    japanese,  // 名前「せりふ」, 名前　せりふ, 名前：せりふ
    english,   // NAME. Speech, NAME: Speech
    fountain,  // screenplays in plain text
    subtitles, // SubRip
};

enum class ItemKind : std::uint8_t {
    speech,
    direction, // what happens; a command may do it
    heading,   // of a scene
    other,     // title pages, lists of the cast and the like
};

// A stretch of a speech or of a direction, from one line on. An aside stands in
// brackets, which its text has, within a sentence: it is spoken unless it is a
// command. The text of what is spoken has the blanks beside asides.
enum class PartKind : std::uint8_t { spoken, direction, aside };

struct PlayPart {
    PartKind kind = PartKind::spoken;
    std::u16string text;
    std::int32_t line = 0; // from 1
};

struct PlayItem {
    ItemKind kind = ItemKind::other;
    std::int32_t line = 0;         // from 1
    std::u16string name{};         // who speaks; may be empty
    std::vector<PlayPart> parts{}; // one but for speeches
};

struct Play {
    PlayFormat format = PlayFormat::japanese;
    bool isJapanese = true;
    std::vector<PlayItem> items;
};

} // namespace tvml::plays

#endif
