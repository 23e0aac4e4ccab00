// Commands to characters. In both languages and with and without adverbs, every
// row is written through templates that show what fills them.
#include <algorithm>

#include "support/rows.h"

namespace tvml {
namespace {

constexpr const char* kDaylightLater = "daylight $1 $2 $3 $4 $5|";
constexpr const char* kDaylightFirst = "// Initial lighting is set to \"daylight.\"|";

std::u16string programme() {
    return std::u16string(kTwoCharacters) + tellingTemplates();
}

struct CommandCase {
    std::u16string_view english;
    std::u16string_view japanese;
    const char* plain;
    const char* withAdverbs; // very much, fast, no blocking; empty when refused
};

constexpr const char* kSlowFile = "character: talkfile( name=B, filename=\"a.wav\", lipsync=4.0, "
                                  "caption=\"\", wait=no )|";

// clang-format off
const CommandCase kRows[] = {
    {u"bow",             u"お辞儀",       "bow B 1.0 30.0 yes $5|",         "bow B 2.0 90.0 no $5|"},
    {u"happy",           u"喜",           "happy B 1.0 1.0 no $5|",         "happy B 1.5 2.0 no $5|"},
    {u"angry",           u"怒",           "angry B 1.0 1.0 no $5|",         "angry B 1.5 2.0 no $5|"},
    {u"sad",             u"哀",           "sad B 1.0 1.0 no $5|",           "sad B 1.5 2.0 no $5|"},
    {u"surprise",        u"驚",           "surprise B 1.0 1.0 no $5|",      "surprise B 1.5 2.0 no $5|"},
    {u"komatta",         u"困",           "komatta B 1.0 1.0 no $5|",       "komatta B 1.5 2.0 no $5|"},
    {u"hatena",          u"はてな",       "hatena B 1.0 1.0 no $5|",        "hatena B 1.5 2.0 no $5|"},
    {u"fear",            u"怖",           "fear B 1.0 1.0 no $5|",          "fear B 1.5 2.0 no $5|"},
    {u"disgust",         u"嫌",           "disgust B 1.0 1.0 no $5|",       "disgust B 1.5 2.0 no $5|"},
    {u"neutral",         u"普通",         "neutral B 1.0 1.0 no $5|",       "neutral B 1.5 2.0 no $5|"},
    {u"nodnod",          u"うんうん",     "nodnod B 1.0 1.0 yes $5|",       "nodnod B 2.0 4.0 no $5|"},
    {u"nod",             u"うん",         "nod B 1.0 1.0 yes $5|",          "nod B 2.0 4.0 no $5|"},
    {u"nono",            u"いやいや",     "nono B 1.0 1.0 yes $5|",         "nono B 2.0 4.0 no $5|"},
    {u"no",              u"いや",         "no B 1.0 1.0 yes $5|",           "no B 2.0 4.0 no $5|"},
    {u"well",            u"えーと",       "well B 1.0 1.0 yes $5|",         "well B 2.0 4.0 no $5|"},
    {u"look forward",    u"前を見る",     "lookforward B 1.0 yes $4 $5|",   "lookforward B 2.0 no $4 $5|"},
    {u"look at fellow",  u"相手を見る",   "lookatfellow B A 1.0 yes $5|",   "lookatfellow B A 2.0 no $5|"},
    {u"look at camera",  u"カメラ目線",   "lookatcamera B 1.0 yes $4 $5|",  "lookatcamera B 2.0 no $4 $5|"},
    {u"look at picture", u"画像を見る",   "wait( time=0.0 )|",              "wait( time=0.0 )|"},
    {u"look aside",      u"よそ見",       "lookaside B 1.0 yes $4 $5|",     "lookaside B 2.0 no $4 $5|"},
    {u"look at A",       u"Aを見る",      "lookatn B A 1.0 yes $5|",        "lookatn B A 2.0 no $5|"},
    {u"look right",      u"右を見る",     "lookright B -50.0 1.0 yes $5|",  "lookright B -90.0 2.0 no $5|"},
    {u"look left",       u"左を見る",     "lookleft B 50.0 1.0 yes $5|",    "lookleft B 90.0 2.0 no $5|"},
    {u"look up",         u"上を見る",     "lookup B -40.0 1.0 yes $5|",     "lookup B -70.0 2.0 no $5|"},
    {u"look down",       u"下を見る",     "lookdown B 30.0 1.0 yes $5|",    "lookdown B 70.0 2.0 no $5|"},
    {u"look behind",     u"後ろを見る",   "lookbehind B 1.0 yes $4 $5|",    "lookbehind B 2.0 no $4 $5|"},
    {u"shake",           u"ふるえる",     "shake B 1.0 $3 $4 $5|",          "shake B 4.0 $3 $4 $5|"},
    {u"stop shaking",    u"ふるえ止む",   "stopshaking B 1.0 $3 $4 $5|",    "stopshaking B 4.0 $3 $4 $5|"},
    {u"open mouth",      u"口を開ける",   "openmouth B 1.0 1.0 yes $5|",    "openmouth B 4.0 2.0 no $5|"},
    {u"close mouth",     u"口を閉じる",   "closemouth B 1.0 1.0 yes $5|",   "closemouth B 4.0 2.0 no $5|"},
    {u"stand",           u"立つ",         "stand B 1.0 yes $4 $5|",         "stand B 2.0 no $4 $5|"},
    {u"sit",             u"座る",         "sit B 1.0 yes 0.8 *|",           "sit B 2.0 no 0.8 *|"},
    {u"walk 3 steps",    u"３歩歩く",     "walknsteps B 3 1.0 yes $5|",     "walknsteps B 3 2.0 no $5|"},
    {u"walk",            u"歩く",         "walk B 1.0 yes $4 $5|",          "walk B 2.0 no $4 $5|"},
    {u"turn 45 degrees", u"45度まわる",   "turnndegrees B 45 1.0 yes $5|",  "turnndegrees B 45 2.0 no $5|"},
    {u"turn",            u"まわる",       "turn B 1.0 yes $4 $5|",          "turn B 2.0 no $4 $5|"},
    {u"bye",             u"バイバイ",     "bye B 1.0 25.0 yes $5|",         "bye B 2.0 75.0 no $5|"},
    {u"fall backward",   u"仰向けに倒れる", "fallbackward B 1.0 yes $4 $5|", "fallbackward B 2.0 no $4 $5|"},
    {u"fall",            u"倒れる",       "fall B 1.0 yes $4 $5|",          "fall B 2.0 no $4 $5|"},
    {u"get up",          u"起き上がる",   "getup B 1.0 yes $4 $5|",         "getup B 2.0 no $4 $5|"},
    {u"jump",            u"ジャンプ",     "jump B 1.0 1.0 yes $5|",         "jump B 4.0 2.0 no $5|"},
    {u"invisible",       u"退場",         "invisible B $2 $3 $4 $5|",       "invisible B $2 $3 $4 $5|"},
    {u"visible",         u"登場",         "visible B $2 $3 $4 $5|",         "visible B $2 $3 $4 $5|"},
    {u"speak normally",  u"普通の速さでしゃべる", "// set character B talk speed to normal.|", "// set character B talk speed to normal.|"},
    {u"speak slow",      u"ゆっくりしゃべる", "// set character B talk speed to slow.|", "// set character B talk speed to slow.|"},
    {u"speak very slow", u"とてもゆっくりしゃべる", "// set character B talk speed to very slow.|", "// set character B talk speed to very slow.|"},
    {u"speak fast",      u"早口",         "// set character B talk speed to fast.|", "// set character B talk speed to fast.|"},
    {u"speak very fast", u"とても早口",   "// set character B talk speed to very fast.|", "// set character B talk speed to very fast.|"},
    {u"soundfile: a.wav", u"サウンドファイル：a.wav", "character: talkfile( name=B, filename=\"a.wav\", caption=\"\" )|", kSlowFile},
    {u"voicetype: girl_en", u"声質：英語少女", "character: setvoice( name=B, voicetype=girl_en )|", "character: setvoice( name=B, voicetype=girl_en )|"},
    {u"auto gesture",    u"自動ジェスチャー", "character: autogesture(name=B, switch=on)|", "character: autogesture(name=B, switch=on)|"},
    {u"manual gesture",  u"手動ジェスチャ", "character: autogesture(name=B, switch=off)|", "character: autogesture(name=B, switch=off)|"},
    {u"character: Hanako", u"キャラクタ：Hanako", "// set the model of character B to \"Hanako.\"|", ""},
};
// clang-format on

std::u16string line(std::u16string_view phrase, std::u16string_view adverbs = u"") {
    return std::u16string(u"B:(").append(phrase).append(adverbs).append(u")|(daylight)");
}

// A command that is taken starts the talk, so that lighting changes at once.
TEST(CharacterCommands, EveryRowInBothLanguages) {
    Studio studio(programme());
    for (const CommandCase& row : kRows) {
        const std::string plain = std::string(row.plain) + kDaylightLater;
        const std::string withAdverbs =
            row.withAdverbs + std::string(*row.withAdverbs ? kDaylightLater : kDaylightFirst);
        EXPECT_EQ(studio.body(line(row.english)), plain) << shown(row.english);
        EXPECT_EQ(studio.body(line(row.japanese)), plain) << shown(row.japanese);
        EXPECT_EQ(studio.body(line(row.english, u", very much, fast, no blocking")), withAdverbs);
        EXPECT_EQ(studio.body(line(row.japanese, u"、とてもたくさん，速く、同時")), withAdverbs);
        EXPECT_EQ(studio.body(line(row.english, u", loudly")), kDaylightFirst)
            << shown(row.english);
    }
}

TEST(CharacterCommands, EveryNameHasARow) {
    std::size_t rows = 0;
    for (const CommandSpec& spec : kCommands) {
        if (spec.taker != Taker::character && spec.taker != Taker::setting) {
            continue;
        }
        ++rows;
        EXPECT_TRUE(std::ranges::any_of(kRows, [&](const CommandCase& row) {
            return row.english.starts_with(spec.name);
        })) << shown(spec.name);
    }
    EXPECT_EQ(rows, 53U);
    EXPECT_EQ(rows, std::size(kRows));
}

TEST(CharacterCommands, EveryVoiceIsTaken) {
    Studio studio(programme());
    int voices = 0;
    for (const CommandSpec& spec : kCommands) {
        if (spec.taker == Taker::voice) {
            EXPECT_EQ(studio.body(u"(voicetype: " + std::u16string(spec.name) + u")"),
                      "character: setvoice( name=A, voicetype=" + shown(spec.name) + " )|");
            ++voices;
        }
    }
    EXPECT_EQ(voices, 27);
}

// The built-in templates have a place for each value and none for others.
TEST(CharacterCommands, BuiltinTemplatesAreFilledWhole) {
    Studio studio;
    for (const CommandCase& row : kRows) {
        const std::string body = studio.body(u"subimage: p|" + line(row.english));
        EXPECT_EQ(body.find('$'), body.npos) << body;
    }
}

TEST(CharacterCommands, RefusedOnesLeaveNoTrace) {
    Studio studio(programme());
    for (const std::u16string_view phrase : {u"",
                                             u"dance",
                                             u"bow very much",
                                             u"bow,",
                                             u"bow,,fast",
                                             u"bowfast",
                                             u"walk 3",
                                             u"walk x steps",
                                             u"walk 0 steps",
                                             u"walk 3 stepsy",
                                             u"walk 3 degrees",
                                             u"walk 3steps",
                                             u"walk 2 stepsfast",
                                             u"turn 5 steps",
                                             u"turn 05 degrees",
                                             u"look at 1",
                                             u"look at",
                                             u"look at Ax",
                                             u"look at あ",
                                             u"look at B",
                                             u"voicetype girl_en",
                                             u"voicetype: robot",
                                             u"voicetype:",
                                             u"voicetype: girl_en, x",
                                             u"character Taro",
                                             u"character: 太郎 ",
                                             u"character: X",
                                             u"character: Taro",
                                             u"soundfile a.wav",
                                             u"soundfile: a, b, slow",
                                             u"bustshot of A",
                                             u"man_ja",
                                             u"Happy",
                                             u"fast",
                                             u"字幕：x"}) {
        const std::string body = studio.body(line(phrase));
        EXPECT_EQ(body, phrase == u"字幕：x" ? std::string("talk B [] [x] yes|") + kDaylightLater
                                             : kDaylightFirst)
            << shown(phrase);
    }
}

TEST(CharacterCommands, Rows) {
    checkRows("generation/character_commands.rows", [](const Row& row) { return row.body(); });
}

} // namespace
} // namespace tvml
