// The rules by which a command phrase is recognised: which words make which
// command, and how many units of the phrase the canonical name replaces. The
// order of the rows is meaning: the first row that matches wins.
#ifndef TVML_READING_COMMAND_TABLES_H
#define TVML_READING_COMMAND_TABLES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "vocabulary/keys.h"

namespace tvml {

// The values of a command's adverbs; an empty text is a value not given.
struct AdverbValues {
    std::u16string_view speed;
    std::u16string_view degree;
    std::u16string_view blocking;
};

// How a row's word stands in the head of a phrase.
enum class Match : std::uint8_t {
    equals,     // it is the head
    starts,     // the head starts with it
    letter,     // it first occurs at position 1, behind one letter
    twoLetters, // it first occurs at position 2, behind two letters
    number,     // it occurs anywhere, behind a number
};

// A vocabulary word of a row and the units that the canonical text replaces:
// counted from the start of the phrase, for number rows from the word.
struct RowWord {
    Key key = Key::at(0);
    std::uint8_t units = 0;
};

class RowWords {
public:
    constexpr RowWords(std::initializer_list<RowWord> words) {
        for (const RowWord& word : words) {
            words_[count_++] = word;
        }
    }
    constexpr const RowWord* begin() const { return words_.data(); }
    constexpr const RowWord* end() const { return words_.data() + count_; }
    constexpr std::size_t size() const { return count_; }

private:
    std::array<RowWord, 4> words_{};
    std::size_t count_ = 0;
};

// The canonical text is `canonical`, then the letters or the number of the
// phrase, then `suffix`.
struct CommandRow {
    Match match;
    std::u16string_view canonical;
    std::u16string_view suffix;
    RowWords words;
};

// clang-format off
inline constexpr std::array<CommandRow, 115> kCommandRows{{
    /*   1 */ {Match::equals,     u"happy",                   u"",         {{u"happy", 1}}},
    /*   2 */ {Match::equals,     u"angry",                   u"",         {{u"angry", 1}}},
    /*   3 */ {Match::equals,     u"sad",                     u"",         {{u"sad", 1}}},
    /*   4 */ {Match::equals,     u"surprise",                u"",         {{u"surprise", 1}}},
    /*   5 */ {Match::equals,     u"komatta",                 u"",         {{u"komatta", 1}}},
    /*   6 */ {Match::equals,     u"hatena",                  u"",         {{u"hatena1", 3}, {u"hatena2", 3}}},
    /*   7 */ {Match::equals,     u"fear",                    u"",         {{u"fear1", 1}, {u"fear2", 1}}},
    /*   8 */ {Match::equals,     u"disgust",                 u"",         {{u"disgust", 1}}},
    /*   9 */ {Match::equals,     u"neutral",                 u"",         {{u"neutral", 2}}},
    /*  10 */ {Match::equals,     u"bow",                     u"",         {{u"bow", 3}}},
    /*  11 */ {Match::equals,     u"nodnod",                  u"",         {{u"nodnod", 4}}},
    /*  12 */ {Match::equals,     u"nod",                     u"",         {{u"nod", 2}}},
    /*  13 */ {Match::equals,     u"nono",                    u"",         {{u"nono", 4}}},
    /*  14 */ {Match::equals,     u"no",                      u"",         {{u"no", 2}}},
    /*  15 */ {Match::equals,     u"well",                    u"",         {{u"well", 3}}},
    /*  16 */ {Match::equals,     u"look forward",            u"",         {{u"look_forward", 4}}},
    /*  17 */ {Match::equals,     u"look at fellow",          u"",         {{u"look_at_fellow", 5}}},
    /*  18 */ {Match::equals,     u"look at camera",          u"",         {{u"look_at_camera", 5}}},
    /*  19 */ {Match::equals,     u"look at picture",         u"",         {{u"look_at_picture", 5}}},
    /*  20 */ {Match::equals,     u"look aside",              u"",         {{u"look_aside", 3}}},
    /*  21 */ {Match::equals,     u"look right",              u"",         {{u"look_right", 4}}},
    /*  22 */ {Match::equals,     u"look left",               u"",         {{u"look_left", 4}}},
    /*  23 */ {Match::equals,     u"look up",                 u"",         {{u"look_up", 4}}},
    /*  24 */ {Match::equals,     u"look down",               u"",         {{u"look_down", 4}}},
    /*  25 */ {Match::equals,     u"look behind",             u"",         {{u"look_behind", 5}}},
    /*  26 */ {Match::letter,     u"look at ",                u"",         {{u"look_at", 4}}},
    /*  27 */ {Match::equals,     u"shake",                   u"",         {{u"shake", 4}}},
    /*  28 */ {Match::equals,     u"stop shaking",            u"",         {{u"stop_shaking", 5}}},
    /*  29 */ {Match::equals,     u"open mouth",              u"",         {{u"open_mouth", 5}}},
    /*  30 */ {Match::equals,     u"close mouth",             u"",         {{u"close_mouth", 5}}},
    /*  31 */ {Match::equals,     u"stand",                   u"",         {{u"stand", 2}}},
    /*  32 */ {Match::equals,     u"sit",                     u"",         {{u"sit", 2}}},
    /*  33 */ {Match::number,     u"walk ",                   u" steps",   {{u"walk_n", 3}}},
    /*  34 */ {Match::equals,     u"walk",                    u"",         {{u"walk", 2}}},
    /*  35 */ {Match::number,     u"turn ",                   u" degrees", {{u"turn_n", 4}}},
    /*  36 */ {Match::equals,     u"turn",                    u"",         {{u"turn", 3}}},
    /*  37 */ {Match::equals,     u"bye",                     u"",         {{u"bye", 4}}},
    /*  38 */ {Match::equals,     u"fall",                    u"",         {{u"fall", 3}}},
    /*  39 */ {Match::equals,     u"fall backward",           u"",         {{u"fall_backward", 7}}},
    /*  40 */ {Match::equals,     u"get up",                  u"",         {{u"get_up", 5}}},
    /*  41 */ {Match::equals,     u"jump",                    u"",         {{u"jump", 4}}},
    /*  42 */ {Match::equals,     u"invisible",               u"",         {{u"invisible", 2}}},
    /*  43 */ {Match::equals,     u"visible",                 u"",         {{u"visible", 2}}},
    /*  44 */ {Match::letter,     u"upshot of ",              u"",         {{u"upshot_of1", 9}, {u"upshot_of2", 9}, {u"upshot_of3", 9}, {u"upshot_of4", 9}}},
    /*  45 */ {Match::equals,     u"upshot",                  u"",         {{u"upshot1", 7}, {u"upshot2", 7}}},
    /*  46 */ {Match::letter,     u"bustshot of ",            u"",         {{u"bustshot_of", 9}}},
    /*  47 */ {Match::letter,     u"waistshot of ",           u"",         {{u"waistshot_of1", 10}, {u"waistshot_of2", 10}}},
    /*  48 */ {Match::letter,     u"fullshot of ",            u"",         {{u"fullshot_of", 8}}},
    /*  49 */ {Match::twoLetters, u"twoshot of ",             u"",         {{u"twoshot_of", 9}}},
    /*  50 */ {Match::equals,     u"twoshot",                 u"",         {{u"twoshot", 6}}},
    /*  51 */ {Match::letter,     u"trackshot on ",           u"",         {{u"trackshot_on", 10}}},
    /*  52 */ {Match::equals,     u"trackshot",               u"",         {{u"trackshot", 8}}},
    /*  53 */ {Match::equals,     u"longshot",                u"",         {{u"longshot", 7}}},
    /*  54 */ {Match::equals,     u"hide picture",            u"",         {{u"hide_picture", 4}}},
    /*  55 */ {Match::equals,     u"hide bg picture",         u"",         {{u"hide_bg_picture", 9}}},
    /*  56 */ {Match::equals,     u"hide right picture",      u"",         {{u"hide_right_picture", 9}}},
    /*  57 */ {Match::equals,     u"hide left picture",       u"",         {{u"hide_left_picture", 9}}},
    /*  58 */ {Match::equals,     u"back to studio",          u"",         {{u"back_to_studio", 6}}},
    /*  59 */ {Match::number,     u"wait ",                   u" seconds", {{u"wait_n", 3}}},
    /*  60 */ {Match::equals,     u"wait",                    u"",         {{u"wait", 2}}},
    /*  61 */ {Match::equals,     u"caption on",              u"",         {{u"caption_on", 4}}},
    /*  62 */ {Match::equals,     u"caption off",             u"",         {{u"caption_off", 4}}},
    /*  63 */ {Match::equals,     u"right super off",         u"",         {{u"right_super_off", 8}}},
    /*  64 */ {Match::equals,     u"left super off",          u"",         {{u"left_super_off", 8}}},
    /*  65 */ {Match::equals,     u"super off",               u"",         {{u"super_off", 6}}},
    /*  66 */ {Match::equals,     u"daylight",                u"",         {{u"daylight", 1}}},
    /*  67 */ {Match::equals,     u"night",                   u"",         {{u"night", 1}}},
    /*  68 */ {Match::equals,     u"candlelight",             u"",         {{u"candlelight", 4}}},
    /*  69 */ {Match::equals,     u"light off",               u"",         {{u"light_off", 6}}},
    /*  70 */ {Match::equals,     u"opening off",             u"",         {{u"opening_off", 8}}},
    /*  71 */ {Match::equals,     u"ending off",              u"",         {{u"ending_off", 8}}},
    /*  72 */ {Match::equals,     u"offline",                 u"",         {{u"offline", 5}}},
    /*  73 */ {Match::equals,     u"online",                  u"",         {{u"online", 5}}},
    /*  74 */ {Match::starts,     u"set",                     u"",         {{u"set", 3}}},
    /*  75 */ {Match::equals,     u"speak normally",          u"",         {{u"speak_normally", 10}}},
    /*  76 */ {Match::equals,     u"speak slow",              u"",         {{u"speak_slow", 8}}},
    /*  77 */ {Match::equals,     u"speak very slow",         u"",         {{u"speak_very_slow", 11}}},
    /*  78 */ {Match::equals,     u"speak fast",              u"",         {{u"speak_fast", 2}}},
    /*  79 */ {Match::equals,     u"speak very fast",         u"",         {{u"speak_very_fast", 5}}},
    /*  80 */ {Match::starts,     u"soundfile",               u"",         {{u"soundfile", 8}}},
    /*  81 */ {Match::starts,     u"voicetype",               u"",         {{u"voicetype", 2}}},
    /*  82 */ {Match::starts,     u"character",               u"",         {{u"character1", 6}, {u"character2", 5}}},
    /*  83 */ {Match::starts,     u"man_ja",                  u"",         {{u"man_ja", 5}}},
    /*  84 */ {Match::starts,     u"woman_ja",                u"",         {{u"woman_ja", 5}}},
    /*  85 */ {Match::starts,     u"youngman_ja",             u"",         {{u"youngman_ja", 6}}},
    /*  86 */ {Match::starts,     u"youngwoman_ja",           u"",         {{u"youngwoman_ja", 6}}},
    /*  87 */ {Match::starts,     u"oldman_ja",               u"",         {{u"oldman_ja", 8}}},
    /*  88 */ {Match::starts,     u"oldwoman_ja",             u"",         {{u"oldwoman_ja", 8}}},
    /*  89 */ {Match::starts,     u"boy_ja",                  u"",         {{u"boy_ja", 5}}},
    /*  90 */ {Match::starts,     u"girl_ja",                 u"",         {{u"girl_ja", 5}}},
    /*  91 */ {Match::starts,     u"littlekid_ja",            u"",         {{u"littlekid_ja", 9}}},
    /*  92 */ {Match::starts,     u"man_en",                  u"",         {{u"man_en", 4}}},
    /*  93 */ {Match::starts,     u"woman_en",                u"",         {{u"woman_en", 4}}},
    /*  94 */ {Match::starts,     u"youngman_en",             u"",         {{u"youngman_en", 5}}},
    /*  95 */ {Match::starts,     u"youngwoman_en",           u"",         {{u"youngwoman_en", 5}}},
    /*  96 */ {Match::starts,     u"oldman_en",               u"",         {{u"oldman_en", 7}}},
    /*  97 */ {Match::starts,     u"oldwoman_en",             u"",         {{u"oldwoman_en", 7}}},
    /*  98 */ {Match::starts,     u"boy_en",                  u"",         {{u"boy_en", 4}}},
    /*  99 */ {Match::starts,     u"girl_en",                 u"",         {{u"girl_en", 4}}},
    /* 100 */ {Match::starts,     u"littlekid_en",            u"",         {{u"littlekid_en", 8}}},
    /* 101 */ {Match::starts,     u"man",                     u"",         {{u"man", 4}}},
    /* 102 */ {Match::starts,     u"woman",                   u"",         {{u"woman", 4}}},
    /* 103 */ {Match::starts,     u"youngman",                u"",         {{u"youngman", 5}}},
    /* 104 */ {Match::starts,     u"youngwoman",              u"",         {{u"youngwoman", 5}}},
    /* 105 */ {Match::starts,     u"oldman",                  u"",         {{u"oldman", 7}}},
    /* 106 */ {Match::starts,     u"oldwoman",                u"",         {{u"oldwoman", 7}}},
    /* 107 */ {Match::starts,     u"boy",                     u"",         {{u"boy", 4}}},
    /* 108 */ {Match::starts,     u"girl",                    u"",         {{u"girl", 4}}},
    /* 109 */ {Match::starts,     u"littlekid",               u"",         {{u"littlekid", 8}}},
    /* 110 */ {Match::starts,     u"auto camera switching",   u"",         {{u"auto_camera_switching", 5}}},
    /* 111 */ {Match::starts,     u"manual camera switching", u"",         {{u"manual_camera_switching", 5}}},
    /* 112 */ {Match::starts,     u"auto gesture",            u"",         {{u"auto_gesture1", 8}}},
    /* 113 */ {Match::starts,     u"auto gesture",            u"",         {{u"auto_gesture2", 7}}},
    /* 114 */ {Match::starts,     u"manual gesture",          u"",         {{u"manual_gesture1", 8}}},
    /* 115 */ {Match::starts,     u"manual gesture",          u"",         {{u"manual_gesture2", 7}}},
}};

// An adverb: the vocabulary word, the English form, the units that the English
// form replaces, and the value that it gives to one field.
struct AdverbRow {
    Key key;
    std::u16string_view english;
    std::uint8_t units;
    std::u16string_view AdverbValues::*field;
    std::u16string_view value;
};

inline constexpr std::array<AdverbRow, 12> kAdverbRows{{
    {u"very_fast",     u"very fast",     5, &AdverbValues::speed,     u"4.0"},
    {u"fast",          u"fast",          2, &AdverbValues::speed,     u"2.0"},
    {u"normal_speed",  u"normal speed",  5, &AdverbValues::speed,     u"1.0"},
    {u"slow",          u"slow",          2, &AdverbValues::speed,     u"0.5"},
    {u"very_slow",     u"very slow",     5, &AdverbValues::speed,     u"0.25"},
    {u"very_much",     u"very much",     7, &AdverbValues::degree,    u"4.0"},
    {u"much",          u"much",          4, &AdverbValues::degree,    u"2.0"},
    {u"normal_degree", u"normal degree", 3, &AdverbValues::degree,    u"1.0"},
    {u"little",        u"little",        2, &AdverbValues::degree,    u"0.5"},
    {u"very_little",   u"very little",   5, &AdverbValues::degree,    u"0.25"},
    {u"no_blocking",   u"no blocking",   2, &AdverbValues::blocking,  u"no"},
    {u"blocking",      u"blocking",      2, &AdverbValues::blocking,  u"yes"},
}};
// clang-format on

} // namespace tvml

#endif
