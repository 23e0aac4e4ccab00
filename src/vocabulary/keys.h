// The 284 keys of the vocabulary, in load order. The order is meaning: a load
// stops at the first key that fails, so the keys after it keep their words.
//
// A word is named by a Key, which the compiler checks: Key{u"kanma"} compiles,
// a misspelt key does not.
#ifndef TVML_VOCABULARY_KEYS_H
#define TVML_VOCABULARY_KEYS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tvml {

inline constexpr std::size_t kKeyCount = 284;

// clang-format off
inline constexpr std::array<std::u16string_view, kKeyCount> kKeys{
    // 1-5: marker words of title, subtitle and super lines
    u"title", u"subtitle", u"leftsuper", u"rightsuper", u"super",
    // 6-15: colour words
    u"black", u"white", u"red", u"brown", u"orange", u"yellow", u"purple", u"green", u"blue",
    u"gray",
    // 16: font word
    u"ms_gothic",
    // 17-21: marker words of picture lines
    u"mainimage", u"subimage", u"bgimage", u"rightimage", u"leftimage",
    // 22-24: marker words of music/sound lines and embedded-TVML lines
    u"bgm", u"sound", u"tvml",
    // 25-27: opening bracket, its doubled form, closing bracket of commands
    u"kakko", u"kakko_kakko", u"toji_kakko",
    // 28: font word
    u"ms_mincho",
    // 29-30: blanks of a script besides the ASCII blank and tab; blanks inside drawing commands
    u"space", u"space_tab",
    // 31-32: colon after a speaker or marker; separator inside the filter description
    u"colon", u"colon_colon",
    // 33-34: blocking words
    u"no_blocking", u"blocking",
    // 35: caption word
    u"caption",
    // 36-39: comma-like separators between command words
    u"kanma", u"touten1", u"touten2", u"touten3",
    // 40: minus sign
    u"hyphen",
    // 41-50: the ten digits
    u"num0", u"num1", u"num2", u"num3", u"num4", u"num5", u"num6", u"num7", u"num8", u"num9",
    // 51: decimal point
    u"period",
    // 52-68: expression and gesture words
    u"happy", u"angry", u"sad", u"surprise", u"komatta", u"hatena1", u"hatena2", u"fear1",
    u"fear2", u"disgust", u"neutral", u"bow", u"nodnod", u"nod", u"nono", u"no", u"well",
    // 69-79: gaze words
    u"look_forward", u"look_at_fellow", u"look_at_camera", u"look_at_picture", u"look_aside",
    u"look_right", u"look_left", u"look_up", u"look_down", u"look_behind", u"look_at",
    // 80-96: body and movement words
    u"shake", u"stop_shaking", u"open_mouth", u"close_mouth", u"stand", u"sit", u"walk_n",
    u"walk", u"turn_n", u"turn", u"bye", u"fall", u"fall_backward", u"get_up", u"jump",
    u"invisible", u"visible",
    // 97-111: camera shot words
    u"upshot_of1", u"upshot_of2", u"upshot_of3", u"upshot_of4", u"upshot1", u"upshot2",
    u"bustshot_of", u"waistshot_of1", u"waistshot_of2", u"fullshot_of", u"twoshot_of", u"twoshot",
    u"trackshot_on", u"trackshot", u"longshot",
    // 112-132: staging words
    u"hide_picture", u"hide_bg_picture", u"hide_right_picture", u"hide_left_picture",
    u"back_to_studio", u"wait_n", u"wait", u"caption_on", u"caption_off", u"right_super_off",
    u"left_super_off", u"super_off", u"daylight", u"night", u"candlelight", u"light_off",
    u"opening_off", u"ending_off", u"offline", u"online", u"set",
    // 133-137: talk-speed words
    u"speak_normally", u"speak_slow", u"speak_very_slow", u"speak_fast", u"speak_very_fast",
    // 138-141: voice and model words
    u"soundfile", u"voicetype", u"character1", u"character2",
    // 142-168: voice-type words
    u"man_ja", u"woman_ja", u"youngman_ja", u"youngwoman_ja", u"oldman_ja", u"oldwoman_ja",
    u"boy_ja", u"girl_ja", u"littlekid_ja", u"man_en", u"woman_en", u"youngman_en",
    u"youngwoman_en", u"oldman_en", u"oldwoman_en", u"boy_en", u"girl_en", u"littlekid_en",
    u"man", u"woman", u"youngman", u"youngwoman", u"oldman", u"oldwoman", u"boy", u"girl",
    u"littlekid",
    // 169-174: switching words
    u"auto_camera_switching", u"manual_camera_switching", u"auto_gesture1", u"auto_gesture2",
    u"manual_gesture1", u"manual_gesture2",
    // 175-179: speed adverbs
    u"very_fast", u"fast", u"normal_speed", u"slow", u"very_slow",
    // 180-184: degree adverbs
    u"very_much", u"much", u"normal_degree", u"little", u"very_little",
    // 185: loaded, not read by the library
    u"kagikakko",
    // 186-190: sentence ends, alone and followed by a closing quote or bracket
    u"kuten", u"kuten_kagikakko1", u"kuten_kagikakko2", u"kuten_kakko1", u"kuten_kakko2",
    // 191-242: a second lowercase and a second uppercase form of each Latin letter
    u"a1", u"A2", u"b1", u"B2", u"c1", u"C2", u"d1", u"D2", u"e1", u"E2", u"f1", u"F2", u"g1",
    u"G2", u"h1", u"H2", u"i1", u"I2", u"j1", u"J2", u"k1", u"K2", u"l1", u"L2", u"m1", u"M2",
    u"n1", u"N2", u"o1", u"O2", u"p1", u"P2", u"q1", u"Q2", u"r1", u"R2", u"s1", u"S2", u"t1",
    u"T2", u"u1", u"U2", u"v1", u"V2", u"w1", u"W2", u"x1", u"X2", u"y1", u"Y2", u"z1", u"Z2",
    // 243-244: message texts of exceptions
    u"fail_create_xmlparser", u"fail_analyze_xml",
    // 245-250: loaded, not read by the library
    u"script0_1", u"script0_2", u"script1_1", u"script1_2", u"script2_1", u"script2_2",
    // 251-284: dialog texts of the host; loaded, not read by the library
    u"MOVIE_OPTOIN_DIALOG_CAPTION", u"MOVIE_OPTOIN_DIALOG_STATIC_VIDEO",
    u"MOVIE_OPTOIN_DIALOG_STATIC_HxV", u"MOVIE_OPTOIN_DIALOG_STATIC_FRAMERATE",
    u"MOVIE_OPTOIN_DIALOG_STATIC_QUALITY", u"MOVIE_OPTOIN_DIALOG_RADIOQUALITYLOW",
    u"MOVIE_OPTOIN_DIALOG_RADIOQUALITYMIDDLE", u"MOVIE_OPTOIN_DIALOG_RADIOQUALITYHIGH",
    u"MOVIE_OPTOIN_DIALOG_STATIC_AUDIO", u"MOVIE_OPTOIN_DIALOG_STATIC_SAMPLINGRATE",
    u"MOVIE_OPTOIN_DIALOG_STATIC_SAMPLINGSIZE", u"MOVIE_OPTOIN_DIALOG_STATIC_CHANNEL",
    u"MOVIE_OPTOIN_DIALOG_RADIO1CH", u"MOVIE_OPTOIN_DIALOG_RADIO2CH",
    u"MOVIE_OPTOIN_DIALOG_CHECKAUTOMIXERCONTROL", u"MOVIE_OPTOIN_DIALOG_STATIC_WORKFOLDER",
    u"MOVIE_OPTOIN_DIALOG_BUTTONWORKDIR", u"WORK_FOLDER_TEXT",
    u"MOVIE_OPTOIN_DIALOG_STATIC_OUTPUTFOLDER", u"MOVIE_OPTOIN_DIALOG_BUTTONOUTPUTDIR",
    u"OUTPUT_FOLDER_TEXT", u"MOVIE_OPTOIN_DIALOG_RADIOQUALITYHIGHEST",
    u"MOVIE_OPTOIN_DIALOG_CHECKLEAVEFILES", u"MOVIE_OPTOIN_DIALOG_CHECKUSERPROFILE",
    u"MOVIE_OPTOIN_DIALOG_BUTTONUSERPROFILE", u"USERPROFILE_TEXT", u"USERPROFILE_FILTER_TEXT",
    u"MOVIE_OPTOIN_DIALOG_OK", u"MOVIE_OPTOIN_DIALOG_CANCEL", u"FOLDER_SELECT_CAPTION",
    u"FOLDER_SELECT_CANCEL", u"CAPTURING_DIALOG_CAPTION", u"CAPTURING_DIALOG_OK",
    u"CAPTURING_DIALOG_CANCEL",
};
// clang-format on

namespace detail {

constexpr std::size_t indexOfKey(std::u16string_view name) {
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
        if (kKeys[i] == name) {
            return i;
        }
    }
    return kKeyCount;
}

constexpr bool keysAreUnique() {
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
        if (kKeys[i].empty() || indexOfKey(kKeys[i]) != i) {
            return false;
        }
    }
    return true;
}

} // namespace detail

static_assert(detail::keysAreUnique(), "the vocabulary has 284 different keys");

// The name of one vocabulary word. Only the names in kKeys make a Key.
class Key {
public:
    template <std::size_t N>
    consteval Key(const char16_t (&name)[N]) // NOLINT: a key reads as its name
        : index_(static_cast<std::uint16_t>(detail::indexOfKey({name, N - 1}))) {
        if (index_ >= kKeyCount) {
            throw "no such vocabulary key";
        }
    }

    // The key at `position` of kKeys, for loops over whole groups of keys.
    static constexpr Key at(std::size_t position) {
        return Key(Position{static_cast<std::uint16_t>(position)});
    }

    constexpr std::size_t index() const { return index_; }
    constexpr std::u16string_view name() const { return kKeys[index_]; }
    constexpr bool operator==(const Key&) const = default;

private:
    struct Position {
        std::uint16_t value;
    };
    constexpr explicit Key(Position position) : index_(position.value) {}

    std::uint16_t index_;
};

} // namespace tvml

#endif
