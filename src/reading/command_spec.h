// The commands of the language: one table for all who ask. Recognition reads by
// which words a phrase becomes a canonical name, dispatch who takes the name and
// what stands behind it, generation what is written; the checks, the listings and
// the reference page read the same rows.
//
// The order of the rows is that of recognition: the first row that matches wins.
// Of the names that begin a phrase the longest one takes it whose condition
// holds, whatever the order.
#ifndef TVML_READING_COMMAND_SPEC_H
#define TVML_READING_COMMAND_SPEC_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "vocabulary/keys.h"

namespace tvml {

// How a row's word stands in the head of a phrase.
enum class Match : std::uint8_t {
    equals,     // it is the head
    starts,     // the head starts with it
    letter,     // it first occurs at position 1, behind one letter
    twoLetters, // it first occurs at position 2, behind two letters
    number,     // it occurs anywhere, behind a number
};

// Letters that stand before the word in the head of a phrase.
constexpr std::size_t lettersBefore(Match match) {
    return match == Match::letter ? 1 : match == Match::twoLetters ? 2 : 0;
}

// Who takes a command. A line without a speaker is offered to the staging first,
// then to the characters; a line with a speaker to the characters alone.
enum class Taker : std::uint8_t {
    staging,   // the studio
    character, // a character does something
    setting,   // a character changes how it speaks and behaves
    voice,     // no command: a name behind "voicetype"
    nobody,    // recognised, but written by nothing
};

// What a command needs; a row whose condition does not hold is passed over.
enum class Condition : std::uint8_t {
    always,
    subImageShown,
    bgImageShown,
    rightImageShown,
    leftImageShown,
    mainImageShown,
    leftSuperShown,
    rightSuperShown,
    oneCharacter,
    twoCharacters,
    severalCharacters,
    subImageBefore, // asked for by a command itself, which waits without it
};
inline constexpr std::size_t kConditionCount = 12;

// Conditions that hold at some line, one bit each.
class ConditionSet {
public:
    constexpr void set(Condition condition, bool holds) {
        const auto bit = static_cast<std::uint16_t>(1u << static_cast<unsigned>(condition));
        bits_ = static_cast<std::uint16_t>(holds ? bits_ | bit : bits_ & ~bit);
    }
    constexpr bool holds(Condition condition) const {
        return (bits_ >> static_cast<unsigned>(condition) & 1u) != 0;
    }

private:
    std::uint16_t bits_ = 1; // `always`
};

// What may stand behind a command's name. Where adverbs are not excluded, a
// separator and a list of them may follow.
enum class Arguments : std::uint8_t {
    adverbs,     // nothing else
    alone,       // nothing, not even adverbs
    oneLetter,   // of a character
    otherLetter, // of a character other than the one that acts
    letterPair,
    steps,   // a number and its unit, or adverbs alone
    degrees, // the same
    seconds, // the same, not below zero
    setName, // behind a colon; its adverbs come behind a character of `touten3`
    fileName,
    voiceName,
    modelName, // everything behind the colon: no adverbs
};

// The unit behind a number, in the singular; empty for other arguments.
constexpr std::u16string_view unitOf(Arguments arguments) {
    switch (arguments) {
    case Arguments::steps:
        return u"step";
    case Arguments::degrees:
        return u"degree";
    case Arguments::seconds:
        return u"second";
    default:
        return {};
    }
}

constexpr bool followsColon(Arguments arguments) {
    return arguments >= Arguments::setName;
}

// What a command does.
enum class Action : std::uint8_t {
    ignore,
    // of a character
    fillTemplate, // of its element, with its values
    lookAtFellow,
    lookAtPicture,
    lookAt,
    sit,
    countedMove,
    speakNormally,
    speakSlow,
    speakVerySlow,
    speakFast,
    speakVeryFast,
    playSoundFile,
    setVoice,
    setModel,
    autoGesture,
    manualGesture,
    // of the studio; what a condition saw on screen is gone afterwards
    writeLine,
    writeText, // of its element
    hidePlate, // as writeText, with the number of the picture
    openingOff,
    endingOff,
    wait,
    changeSet,
    light,
    closeUp,
    twoshot,
    trackshot,
    longshot,
    autoCamera,
    manualCamera,
};

// What a placeholder of a template is filled with: a value of the adverbs, or
// what a degree map makes of the degree.
enum class Value : std::uint8_t {
    unused,
    speed,        // or "1.0"
    degree,       // or "1.0"
    blocking,     // or "yes"
    blockingOrNo, // or "no"
    expressionMap,
    bowMap,
    byeMap,
    rightMap,
    leftMap,
    upMap,
    downMap,
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

// The canonical text is the name, then the letters or the number of the phrase,
// then the unit in the plural. A name with a blank at its end has an argument
// behind it.
struct CommandSpec {
    Match match;
    Taker taker;
    std::u16string_view name;
    RowWords words;
    Arguments arguments;
    Condition condition;
    Action action;
    std::u16string_view element = {}; // of the description
    std::array<Value, 3> values{};    // of "$2", "$3", "$4"; "$1" is the character
    std::u16string_view line = {};    // TVML as it is written
};

namespace detail {

// clang-format off
constexpr std::array<CommandSpec, 113> commandSpecs() {
    using enum Match;
    using enum Taker;
    using enum Arguments;
    using enum Condition;
    using enum Action;
    using enum Value;
    return {{
        /*         match       taker      name                        words                                               arguments    condition          action         element             values, line */
        /*   1 */ {equals,     character, u"happy",                   {{u"happy", 1}},                                    adverbs,      always,            fillTemplate,  u"happy",           {expressionMap, speed, blockingOrNo}},
        /*   2 */ {equals,     character, u"angry",                   {{u"angry", 1}},                                    adverbs,      always,            fillTemplate,  u"angry",           {expressionMap, speed, blockingOrNo}},
        /*   3 */ {equals,     character, u"sad",                     {{u"sad", 1}},                                      adverbs,      always,            fillTemplate,  u"sad",             {expressionMap, speed, blockingOrNo}},
        /*   4 */ {equals,     character, u"surprise",                {{u"surprise", 1}},                                 adverbs,      always,            fillTemplate,  u"surprise",        {expressionMap, speed, blockingOrNo}},
        /*   5 */ {equals,     character, u"komatta",                 {{u"komatta", 1}},                                  adverbs,      always,            fillTemplate,  u"komatta",         {expressionMap, speed, blockingOrNo}},
        /*   6 */ {equals,     character, u"hatena",                  {{u"hatena1", 3}, {u"hatena2", 3}},                 adverbs,      always,            fillTemplate,  u"hatena",          {expressionMap, speed, blockingOrNo}},
        /*   7 */ {equals,     character, u"fear",                    {{u"fear1", 1}, {u"fear2", 1}},                     adverbs,      always,            fillTemplate,  u"fear",            {expressionMap, speed, blockingOrNo}},
        /*   8 */ {equals,     character, u"disgust",                 {{u"disgust", 1}},                                  adverbs,      always,            fillTemplate,  u"disgust",         {expressionMap, speed, blockingOrNo}},
        /*   9 */ {equals,     character, u"neutral",                 {{u"neutral", 2}},                                  adverbs,      always,            fillTemplate,  u"neutral",         {expressionMap, speed, blockingOrNo}},
        /*  10 */ {equals,     character, u"bow",                     {{u"bow", 3}},                                      adverbs,      always,            fillTemplate,  u"bow",             {speed, bowMap, blocking}},
        /*  11 */ {equals,     character, u"nodnod",                  {{u"nodnod", 4}},                                   adverbs,      always,            fillTemplate,  u"nodnod",          {speed, degree, blocking}},
        /*  12 */ {equals,     character, u"nod",                     {{u"nod", 2}},                                      adverbs,      always,            fillTemplate,  u"nod",             {speed, degree, blocking}},
        /*  13 */ {equals,     character, u"nono",                    {{u"nono", 4}},                                     adverbs,      always,            fillTemplate,  u"nono",            {speed, degree, blocking}},
        /*  14 */ {equals,     character, u"no",                      {{u"no", 2}},                                       adverbs,      always,            fillTemplate,  u"no",              {speed, degree, blocking}},
        /*  15 */ {equals,     character, u"well",                    {{u"well", 3}},                                     adverbs,      always,            fillTemplate,  u"well",            {speed, degree, blocking}},
        /*  16 */ {equals,     character, u"look forward",            {{u"look_forward", 4}},                             adverbs,      always,            fillTemplate,  u"lookforward",     {speed, blocking}},
        /*  17 */ {equals,     character, u"look at fellow",          {{u"look_at_fellow", 5}},                           adverbs,      twoCharacters,     lookAtFellow,  u"lookatfellow"},
        /*  18 */ {equals,     character, u"look at camera",          {{u"look_at_camera", 5}},                           adverbs,      always,            fillTemplate,  u"lookatcamera",    {speed, blocking}},
        /*  19 */ {equals,     character, u"look at picture",         {{u"look_at_picture", 5}},                          adverbs,      always,            lookAtPicture, u"lookatpicture"},
        /*  20 */ {equals,     character, u"look aside",              {{u"look_aside", 3}},                               adverbs,      always,            fillTemplate,  u"lookaside",       {speed, blocking}},
        /*  21 */ {equals,     character, u"look right",              {{u"look_right", 4}},                               adverbs,      always,            fillTemplate,  u"lookright",       {rightMap, speed, blocking}},
        /*  22 */ {equals,     character, u"look left",               {{u"look_left", 4}},                                adverbs,      always,            fillTemplate,  u"lookleft",        {leftMap, speed, blocking}},
        /*  23 */ {equals,     character, u"look up",                 {{u"look_up", 4}},                                  adverbs,      always,            fillTemplate,  u"lookup",          {upMap, speed, blocking}},
        /*  24 */ {equals,     character, u"look down",               {{u"look_down", 4}},                                adverbs,      always,            fillTemplate,  u"lookdown",        {downMap, speed, blocking}},
        /*  25 */ {equals,     character, u"look behind",             {{u"look_behind", 5}},                              adverbs,      always,            fillTemplate,  u"lookbehind",      {speed, blocking}},
        /*  26 */ {letter,     character, u"look at ",                {{u"look_at", 4}},                                  otherLetter,  severalCharacters, lookAt,        u"lookatn"},
        /*  27 */ {equals,     character, u"shake",                   {{u"shake", 4}},                                    adverbs,      always,            fillTemplate,  u"shake",           {degree}},
        /*  28 */ {equals,     character, u"stop shaking",            {{u"stop_shaking", 5}},                             adverbs,      always,            fillTemplate,  u"stopshaking",     {degree}},
        /*  29 */ {equals,     character, u"open mouth",              {{u"open_mouth", 5}},                               adverbs,      always,            fillTemplate,  u"openmouth",       {degree, speed, blocking}},
        /*  30 */ {equals,     character, u"close mouth",             {{u"close_mouth", 5}},                              adverbs,      always,            fillTemplate,  u"closemouth",      {degree, speed, blocking}},
        /*  31 */ {equals,     character, u"stand",                   {{u"stand", 2}},                                    adverbs,      always,            fillTemplate,  u"stand",           {speed, blocking}},
        /*  32 */ {equals,     character, u"sit",                     {{u"sit", 2}},                                      adverbs,      always,            sit,           u"sit"},
        /*  33 */ {number,     character, u"walk ",                   {{u"walk_n", 3}},                                   steps,        always,            countedMove,   u"walknsteps"},
        /*  34 */ {equals,     character, u"walk",                    {{u"walk", 2}},                                     adverbs,      always,            fillTemplate,  u"walk",            {speed, blocking}},
        /*  35 */ {number,     character, u"turn ",                   {{u"turn_n", 4}},                                   degrees,      always,            countedMove,   u"turnndegrees"},
        /*  36 */ {equals,     character, u"turn",                    {{u"turn", 3}},                                     adverbs,      always,            fillTemplate,  u"turn",            {speed, blocking}},
        /*  37 */ {equals,     character, u"bye",                     {{u"bye", 4}},                                      adverbs,      always,            fillTemplate,  u"bye",             {speed, byeMap, blocking}},
        /*  38 */ {equals,     character, u"fall",                    {{u"fall", 3}},                                     adverbs,      always,            fillTemplate,  u"fall",            {speed, blocking}},
        /*  39 */ {equals,     character, u"fall backward",           {{u"fall_backward", 7}},                            adverbs,      always,            fillTemplate,  u"fallbackward",    {speed, blocking}},
        /*  40 */ {equals,     character, u"get up",                  {{u"get_up", 5}},                                   adverbs,      always,            fillTemplate,  u"getup",           {speed, blocking}},
        /*  41 */ {equals,     character, u"jump",                    {{u"jump", 4}},                                     adverbs,      always,            fillTemplate,  u"jump",            {degree, speed, blocking}},
        /*  42 */ {equals,     character, u"invisible",               {{u"invisible", 2}},                                adverbs,      always,            fillTemplate,  u"invisible",       {}},
        /*  43 */ {equals,     character, u"visible",                 {{u"visible", 2}},                                  adverbs,      always,            fillTemplate,  u"visible",         {}},
        /*  44 */ {letter,     staging,   u"upshot of ",              {{u"upshot_of1", 9}, {u"upshot_of2", 9}, {u"upshot_of3", 9}, {u"upshot_of4", 9}},oneLetter,    always,            closeUp,       u"closeup"},
        /*  45 */ {equals,     staging,   u"upshot",                  {{u"upshot1", 7}, {u"upshot2", 7}},                 adverbs,      oneCharacter,      closeUp,       u"closeup"},
        /*  46 */ {letter,     nobody,    u"bustshot of ",            {{u"bustshot_of", 9}},                              oneLetter,    always,            ignore},
        /*  47 */ {letter,     nobody,    u"waistshot of ",           {{u"waistshot_of1", 10}, {u"waistshot_of2", 10}},   oneLetter,    always,            ignore},
        /*  48 */ {letter,     nobody,    u"fullshot of ",            {{u"fullshot_of", 8}},                              oneLetter,    always,            ignore},
        /*  49 */ {twoLetters, staging,   u"twoshot of ",             {{u"twoshot_of", 9}},                               letterPair,   severalCharacters, twoshot,       u"twoshot"},
        /*  50 */ {equals,     staging,   u"twoshot",                 {{u"twoshot", 6}},                                  adverbs,      twoCharacters,     twoshot,       u"twoshot"},
        /*  51 */ {letter,     staging,   u"trackshot on ",           {{u"trackshot_on", 10}},                            oneLetter,    always,            trackshot,     u"trackshot"},
        /*  52 */ {equals,     staging,   u"trackshot",               {{u"trackshot", 8}},                                adverbs,      oneCharacter,      trackshot,     u"trackshot"},
        /*  53 */ {equals,     staging,   u"longshot",                {{u"longshot", 7}},                                 adverbs,      always,            longshot,      u"longshot"},
        /*  54 */ {equals,     staging,   u"hide picture",            {{u"hide_picture", 4}},                             adverbs,      subImageShown,     hidePlate,     u"hidepicture"},
        /*  55 */ {equals,     staging,   u"hide bg picture",         {{u"hide_bg_picture", 9}},                          adverbs,      bgImageShown,      hidePlate,     u"hidebgpicture"},
        /*  56 */ {equals,     staging,   u"hide right picture",      {{u"hide_right_picture", 9}},                       adverbs,      rightImageShown,   writeText,     u"hiderightpicture"},
        /*  57 */ {equals,     staging,   u"hide left picture",       {{u"hide_left_picture", 9}},                        adverbs,      leftImageShown,    writeText,     u"hideleftpicture"},
        /*  58 */ {equals,     staging,   u"back to studio",          {{u"back_to_studio", 6}},                           adverbs,      mainImageShown,    writeLine,     u"",                {}, u"drawing: display( name=MAINIMAGEBASE, switch=off )\n"},
        /*  59 */ {number,     staging,   u"wait ",                   {{u"wait_n", 3}},                                   seconds,      always,            wait},
        /*  60 */ {equals,     staging,   u"wait",                    {{u"wait", 2}},                                     adverbs,      always,            writeLine,     u"",                {}, u"wait( time=1.0 )\n"},
        /*  61 */ {equals,     staging,   u"caption on",              {{u"caption_on", 4}},                               adverbs,      always,            writeLine,     u"",                {}, u"setcaption( switch=on, border=on )\n"},
        /*  62 */ {equals,     staging,   u"caption off",             {{u"caption_off", 4}},                              adverbs,      always,            writeLine,     u"",                {}, u"setcaption( switch=off )\n"},
        /*  63 */ {equals,     staging,   u"right super off",         {{u"right_super_off", 8}},                          adverbs,      rightSuperShown,   writeText,     u"rightsuperoff"},
        /*  64 */ {equals,     staging,   u"left super off",          {{u"left_super_off", 8}},                           adverbs,      leftSuperShown,    writeText,     u"leftsuperoff"},
        /*  65 */ {equals,     staging,   u"super off",               {{u"super_off", 6}},                                adverbs,      always,            writeText,     u"superoff"},
        /*  66 */ {equals,     staging,   u"daylight",                {{u"daylight", 1}},                                 adverbs,      always,            light,         u"daylight"},
        /*  67 */ {equals,     staging,   u"night",                   {{u"night", 1}},                                    adverbs,      always,            light,         u"night"},
        /*  68 */ {equals,     staging,   u"candlelight",             {{u"candlelight", 4}},                              adverbs,      always,            light,         u"candlelight"},
        /*  69 */ {equals,     staging,   u"light off",               {{u"light_off", 6}},                                adverbs,      always,            light,         u"lightoff"},
        /*  70 */ {equals,     staging,   u"opening off",             {{u"opening_off", 8}},                              alone,        always,            openingOff,    u"",                {}, u"// Opening is off.\n"},
        /*  71 */ {equals,     staging,   u"ending off",              {{u"ending_off", 8}},                               alone,        always,            endingOff,     u"",                {}, u"// Ending is off.\n"},
        /*  72 */ {equals,     staging,   u"offline",                 {{u"offline", 5}},                                  adverbs,      always,            writeLine,     u"",                {}, u"skipscript( switch=on )\n"},
        /*  73 */ {equals,     staging,   u"online",                  {{u"online", 5}},                                   adverbs,      always,            writeLine,     u"",                {}, u"skipscript( switch=off )\n"},
        /*  74 */ {starts,     staging,   u"set",                     {{u"set", 3}},                                      setName,      always,            changeSet},
        /*  75 */ {equals,     setting,   u"speak normally",          {{u"speak_normally", 10}},                          adverbs,      always,            speakNormally},
        /*  76 */ {equals,     setting,   u"speak slow",              {{u"speak_slow", 8}},                               adverbs,      always,            speakSlow},
        /*  77 */ {equals,     setting,   u"speak very slow",         {{u"speak_very_slow", 11}},                         adverbs,      always,            speakVerySlow},
        /*  78 */ {equals,     setting,   u"speak fast",              {{u"speak_fast", 2}},                               adverbs,      always,            speakFast},
        /*  79 */ {equals,     setting,   u"speak very fast",         {{u"speak_very_fast", 5}},                          adverbs,      always,            speakVeryFast},
        /*  80 */ {starts,     setting,   u"soundfile",               {{u"soundfile", 8}},                                fileName,     always,            playSoundFile},
        /*  81 */ {starts,     setting,   u"voicetype",               {{u"voicetype", 2}},                                voiceName,    always,            setVoice},
        /*  82 */ {starts,     setting,   u"character",               {{u"character1", 6}, {u"character2", 5}},           modelName,    always,            setModel},
        /*  83 */ {starts,     voice,     u"man_ja",                  {{u"man_ja", 5}},                                   alone,        always,            ignore},
        /*  84 */ {starts,     voice,     u"woman_ja",                {{u"woman_ja", 5}},                                 alone,        always,            ignore},
        /*  85 */ {starts,     voice,     u"youngman_ja",             {{u"youngman_ja", 6}},                              alone,        always,            ignore},
        /*  86 */ {starts,     voice,     u"youngwoman_ja",           {{u"youngwoman_ja", 6}},                            alone,        always,            ignore},
        /*  87 */ {starts,     voice,     u"oldman_ja",               {{u"oldman_ja", 8}},                                alone,        always,            ignore},
        /*  88 */ {starts,     voice,     u"oldwoman_ja",             {{u"oldwoman_ja", 8}},                              alone,        always,            ignore},
        /*  89 */ {starts,     voice,     u"boy_ja",                  {{u"boy_ja", 5}},                                   alone,        always,            ignore},
        /*  90 */ {starts,     voice,     u"girl_ja",                 {{u"girl_ja", 5}},                                  alone,        always,            ignore},
        /*  91 */ {starts,     voice,     u"littlekid_ja",            {{u"littlekid_ja", 9}},                             alone,        always,            ignore},
        /*  92 */ {starts,     voice,     u"man_en",                  {{u"man_en", 4}},                                   alone,        always,            ignore},
        /*  93 */ {starts,     voice,     u"woman_en",                {{u"woman_en", 4}},                                 alone,        always,            ignore},
        /*  94 */ {starts,     voice,     u"youngman_en",             {{u"youngman_en", 5}},                              alone,        always,            ignore},
        /*  95 */ {starts,     voice,     u"youngwoman_en",           {{u"youngwoman_en", 5}},                            alone,        always,            ignore},
        /*  96 */ {starts,     voice,     u"oldman_en",               {{u"oldman_en", 7}},                                alone,        always,            ignore},
        /*  97 */ {starts,     voice,     u"oldwoman_en",             {{u"oldwoman_en", 7}},                              alone,        always,            ignore},
        /*  98 */ {starts,     voice,     u"boy_en",                  {{u"boy_en", 4}},                                   alone,        always,            ignore},
        /*  99 */ {starts,     voice,     u"girl_en",                 {{u"girl_en", 4}},                                  alone,        always,            ignore},
        /* 100 */ {starts,     voice,     u"littlekid_en",            {{u"littlekid_en", 8}},                             alone,        always,            ignore},
        /* 101 */ {starts,     voice,     u"man",                     {{u"man", 4}},                                      alone,        always,            ignore},
        /* 102 */ {starts,     voice,     u"woman",                   {{u"woman", 4}},                                    alone,        always,            ignore},
        /* 103 */ {starts,     voice,     u"youngman",                {{u"youngman", 5}},                                 alone,        always,            ignore},
        /* 104 */ {starts,     voice,     u"youngwoman",              {{u"youngwoman", 5}},                               alone,        always,            ignore},
        /* 105 */ {starts,     voice,     u"oldman",                  {{u"oldman", 7}},                                   alone,        always,            ignore},
        /* 106 */ {starts,     voice,     u"oldwoman",                {{u"oldwoman", 7}},                                 alone,        always,            ignore},
        /* 107 */ {starts,     voice,     u"boy",                     {{u"boy", 4}},                                      alone,        always,            ignore},
        /* 108 */ {starts,     voice,     u"girl",                    {{u"girl", 4}},                                     alone,        always,            ignore},
        /* 109 */ {starts,     voice,     u"littlekid",               {{u"littlekid", 8}},                                alone,        always,            ignore},
        /* 110 */ {starts,     staging,   u"auto camera switching",   {{u"auto_camera_switching", 5}},                    adverbs,      always,            autoCamera,    u"",                {}, u"camera: autoswitching(switch=on)\n"},
        /* 111 */ {starts,     staging,   u"manual camera switching", {{u"manual_camera_switching", 5}},                  adverbs,      always,            manualCamera,  u"",                {}, u"camera: autoswitching(switch=off)\n"},
        /* 112 */ {starts,     setting,   u"auto gesture",            {{u"auto_gesture1", 8}, {u"auto_gesture2", 7}},     adverbs,      always,            autoGesture},
        /* 113 */ {starts,     setting,   u"manual gesture",          {{u"manual_gesture1", 8}, {u"manual_gesture2", 7}}, adverbs,      always,            manualGesture},
    }};
}
// clang-format on

} // namespace detail

inline constexpr std::array kCommands = detail::commandSpecs();

// The values of a command's adverbs; an empty text is a value not given.
struct AdverbValues {
    std::u16string_view speed;
    std::u16string_view degree;
    std::u16string_view blocking;
};

// An adverb: its word, its English form, the units of an item that the English
// form replaces, and what it sets. The first word that starts an item counts; a
// later item overwrites an earlier one of the same kind.
struct AdverbRow {
    Key key;
    std::u16string_view english;
    std::uint8_t units;
    std::u16string_view AdverbValues::*field;
    std::u16string_view value;
};

// clang-format off
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

namespace detail {

constexpr bool everyKeyHasOneRow() {
    for (std::size_t i = 0; i < kCommands.size(); ++i) {
        for (const RowWord& word : kCommands[i].words) {
            for (std::size_t j = 0; j < i; ++j) {
                for (const RowWord& other : kCommands[j].words) {
                    if (word.key == other.key) {
                        return false;
                    }
                }
            }
        }
    }
    return true;
}

constexpr bool isOfCharacters(Taker taker) {
    return taker == Taker::character || taker == Taker::setting;
}

// Both are offered the same phrases: always, or when no speaker is named.
constexpr bool compete(const CommandSpec& first, const CommandSpec& second) {
    const bool takesBoth = first.taker == second.taker ||
                           (isOfCharacters(first.taker) && isOfCharacters(second.taker));
    const bool studioFirst = first.taker == Taker::staging && isOfCharacters(second.taker);
    return takesBoth ? first.name == second.name
                     : studioFirst && second.name.starts_with(first.name);
}

constexpr bool shadowsNothing() {
    for (const CommandSpec& first : kCommands) {
        for (const CommandSpec& second : kCommands) {
            if (&first != &second && compete(first, second)) {
                return false;
            }
        }
    }
    return true;
}

// Every row has words that take units off, and whoever takes it can do something
// with it; a name ends with a blank just when letters or a number follow.
constexpr bool rowsAreWhole() {
    for (const CommandSpec& row : kCommands) {
        const bool acts = row.action != Action::ignore;
        const bool isTaken = row.taker == Taker::staging || isOfCharacters(row.taker);
        const bool hasArgument = row.match == Match::letter || row.match == Match::twoLetters ||
                                 row.match == Match::number;
        if (row.words.size() == 0 || row.name.empty() || acts != isTaken ||
            hasArgument != row.name.ends_with(u' ') ||
            (row.match == Match::number) != !unitOf(row.arguments).empty()) {
            return false;
        }
        for (const RowWord& word : row.words) {
            if (word.units == 0) {
                return false;
            }
        }
    }
    return true;
}

static_assert(everyKeyHasOneRow(), "a word makes one command");
static_assert(shadowsNothing(), "no command hides another one");
static_assert(rowsAreWhole(), "a command has words and an action, or is marked as taken by nobody");

} // namespace detail

} // namespace tvml

#endif
