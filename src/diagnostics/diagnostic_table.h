// The diagnostics that this system can give: one table for the checks, the
// documentation, the list of codes and the tests.
#ifndef TVML_DIAGNOSTICS_DIAGNOSTIC_TABLE_H
#define TVML_DIAGNOSTICS_DIAGNOSTIC_TABLE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "texts/catalogue.h"

namespace tvml {

// In ascending order of weight.
//  note     nothing is lost; worth knowing.
//  warning  something happens that its writer hardly meant.
//  error    something that was written has no effect.
enum class Severity : std::uint8_t { note, warning, error };

// What a row's example is.
//  script       a script for the programme of kExampleDescription.
//  description  a whole description.
//  vocabulary   lines that stand in place of those of the same keys in the
//               shipped vocabulary; a comment in place of a key removes it.
//  noVocabulary a whole vocabulary file.
//  playLine     a script, converted from line kExamplePlayFrom.
//  playBackwards  a script, converted from line 2 to line 1.
//  media        a script, with "map.png" as the only picture that is there.
//  bareScript   a script without description and vocabulary.
//  brokenDescription  a script whose description ends before its models.
enum class ExampleKind : std::uint8_t {
    script,
    description,
    vocabulary,
    noVocabulary,
    playLine,
    playBackwards,
    media,
    bareScript,
    brokenDescription
};

// Its texts stand in the catalogues: the message under the code, what it means
// and what to do under "CODE.why".
struct DiagnosticRow {
    std::string_view code; // never reused for another meaning
    Severity severity;
    ExampleKind kind;
    std::u16string_view example;
};

// Three characters of whom C has no model, a set, two poses, one of B alone, and
// a tag.
inline constexpr std::u16string_view kExampleDescription =
    u"<staging>\n"
    u"<numofchar>3</numofchar>\n"
    u"<model_for_char character=\"A\" japanesename=\"スーツ\" englishname=\"suit\" "
    u"default=\"yes\">\n"
    u"character: openmodel( name=A, filename=\"suit.bm\" )\n"
    u"</model_for_char>\n"
    u"<model_for_char character=\"B\" japanesename=\"背広\" englishname=\"blazer\" "
    u"default=\"yes\">\n"
    u"character: openmodel( name=B, filename=\"blazer.bm\" )\n"
    u"</model_for_char>\n"
    u"<set>\nニューススタジオ::NewsStudio::news.obj\n</set>\n"
    u"<pose japanesename=\"ばんざい\" englishname=\"banzai\">\n"
    u"character: gesture( name=$1, speed=$2, level=$3, wait=$4 )\n"
    u"</pose>\n"
    u"<pose japanesename=\"敬礼\" englishname=\"salute\" character=\"B\">\n"
    u"character: gesture( name=$1 )\n"
    u"</pose>\n"
    u"<tag japanesename=\"速報\" englishname=\"flash\">\n"
    u"super: on( text=\"$1\" )\n"
    u"</tag>\n"
    u"</staging>\n";
inline constexpr std::int32_t kExamplePlayFrom = 9;

// A text that may hold U+0000.
template <std::size_t N> constexpr std::u16string_view wholeText(const char16_t (&text)[N]) {
    return {text, N - 1};
}

// clang-format off
inline constexpr std::array kDiagnosticRows{
    // ---- S: the script
    DiagnosticRow{"S101", Severity::error, ExampleKind::script, u"Ａ：（お辞義）\n"},
    DiagnosticRow{"S102", Severity::error, ExampleKind::script, u"Ａ：（お辞儀、早く）\n"},
    DiagnosticRow{"S103", Severity::error, ExampleKind::script, u"Ａ：（お辞儀、）\n"},
    DiagnosticRow{"S104", Severity::error, ExampleKind::script, u"Ａ：（bow slow）\n"},
    DiagnosticRow{"S105", Severity::error, ExampleKind::script, u"（セット　ニューススタジオ）\n"},
    DiagnosticRow{"S106", Severity::error, ExampleKind::script, u"Ａ：（三歩歩く）\n"},
    DiagnosticRow{"S107", Severity::error, ExampleKind::script, u"Ａ：（walk 3）\n"},
    DiagnosticRow{"S108", Severity::error, ExampleKind::script, u"（１のアップショット）\n"},
    DiagnosticRow{"S109", Severity::warning, ExampleKind::script, u"（Ｄのアップショット）\n"},
    DiagnosticRow{"S110", Severity::warning, ExampleKind::script, u"Ｄ：こんにちは。\n"},
    DiagnosticRow{"S111", Severity::error, ExampleKind::script, u"Ａ：（Ａを見る）\n"},
    DiagnosticRow{"S112", Severity::warning, ExampleKind::script, u"（画像オフ）\n"},
    DiagnosticRow{"S113", Severity::error, ExampleKind::script, u"Ｃ：こんにちは。\n"},
    DiagnosticRow{"S114", Severity::error, ExampleKind::script, u"（セット：スタジオ）\n"},
    DiagnosticRow{"S115", Severity::error, ExampleKind::script, u"Ａ：（キャラクター：着物）\n"},
    DiagnosticRow{"S116", Severity::error, ExampleKind::script, u"Ａ：（声質：日本語男）\n"},
    DiagnosticRow{"S117", Severity::warning, ExampleKind::script, u"タイトル　夕方のニュース\n"},
    DiagnosticRow{"S118", Severity::warning, ExampleKind::script, u"サブタイル：きょうの話題\n"},
    DiagnosticRow{"S119", Severity::warning, ExampleKind::script, u"Ｂ　こんにちは。\n"},
    DiagnosticRow{"S120", Severity::note, ExampleKind::script, u"田中：こんにちは。\n"},
    DiagnosticRow{"S121", Severity::warning, ExampleKind::script, u"スーパー：本日開店（紅）\n"},
    DiagnosticRow{"S122", Severity::warning, ExampleKind::script, u"Ａ：こんにちは。（字募：ご挨拶）\n"},
    DiagnosticRow{"S123", Severity::warning, ExampleKind::script, u"Ａ：お辞儀）\n"},
    DiagnosticRow{"S124", Severity::warning, ExampleKind::script, u"Ａ：（お辞儀\n"},
    DiagnosticRow{"S125", Severity::warning, ExampleKind::script, u"Ａ：【お辞儀】\n"},
    DiagnosticRow{"S126", Severity::warning, ExampleKind::script, u"Ａ：（お辞儀）こんにちは。\n"},
    DiagnosticRow{"S127", Severity::warning, ExampleKind::script, u"Ａ：（サウンドファイル：hello.wav（字幕：こんにちは））\n"},
    DiagnosticRow{"S128", Severity::error, ExampleKind::script, u"（Ａのバストショット）\n"},
    DiagnosticRow{"S129", Severity::error, ExampleKind::script, u"Ａ：（字幕オン）\n"},
    DiagnosticRow{"S130", Severity::error, ExampleKind::script, u"（オープニングオフ、同時）\n"},
    DiagnosticRow{"S131", Severity::warning, ExampleKind::script, u"（ＣＣのツーショット）\n"},
    DiagnosticRow{"S132", Severity::warning, ExampleKind::script, u"（wait , slow）\n"},
    DiagnosticRow{"S133", Severity::warning, ExampleKind::script, u"Ａ：きょうの夕方から夜にかけて市内のあちらこちらで行われる予定の花火大会とその会場の周りで行われる交通規制についてくわしくお伝えします。\n"},
    DiagnosticRow{"S134", Severity::note, ExampleKind::script, u"タイトル：夕方のニュース\n"},
    DiagnosticRow{"S135", Severity::warning, ExampleKind::script, u"タイトル：夕方のニュース\n\nサブタイトル：港町から\n"},
    DiagnosticRow{"S136", Severity::warning, ExampleKind::script, u"Ａ：\n"},
    DiagnosticRow{"S137", Severity::warning, ExampleKind::script, u"サブイメージ：\n"},
    DiagnosticRow{"S138", Severity::error, ExampleKind::bareScript, u"title: Evening news\nsubtitle: From the harbour\n"},
    DiagnosticRow{"S139", Severity::error, ExampleKind::script, u"Ａ：（敬礼）\n"},
    DiagnosticRow{"S140", Severity::error, ExampleKind::script, u"（ＢＧＭ：theme.wav）\n"},
    DiagnosticRow{"S141", Severity::error, ExampleKind::script, u"（Ａ：お辞儀）\n"},
    DiagnosticRow{"S142", Severity::warning, ExampleKind::script, u"Ａ：スーパー：本日開店\n"},
    DiagnosticRow{"S143", Severity::warning, ExampleKind::script, u"Ａ：あ𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟。\n"},
    DiagnosticRow{"S144", Severity::error, ExampleKind::script, u"Ａ：（お辞儀）（うん）\n"},
    DiagnosticRow{"S145", Severity::error, ExampleKind::script, u"Ａ：（速く、お辞儀）\n"},
    DiagnosticRow{"S146", Severity::error, ExampleKind::script, u"（twoshot of A）\n"},
    DiagnosticRow{"S150", Severity::warning, ExampleKind::script, u"Ａ：お辞儀、遅く\n"},
    DiagnosticRow{"S151", Severity::note, ExampleKind::script, u"※ここは早めに\n"},
    DiagnosticRow{"S152", Severity::note, ExampleKind::script, u"第一場　スタジオ\n"},
    DiagnosticRow{"S153", Severity::note, ExampleKind::script, u"－－－－－\n"},
    DiagnosticRow{"S154", Severity::warning, ExampleKind::script, u"：こんにちは。\n"},
    DiagnosticRow{"S155", Severity::warning, ExampleKind::script, u"ＡＢ：こんにちは。\n"},
    DiagnosticRow{"S156", Severity::warning, ExampleKind::script, u"Ｂさん：こんにちは。\n"},
    DiagnosticRow{"S157", Severity::warning, ExampleKind::script, u"\u200BＢ：こんにちは。\n"},
    DiagnosticRow{"S158", Severity::warning, ExampleKind::script, u"Ａ：（字幕：ご挨拶）こんにちは。\n"},
    DiagnosticRow{"S159", Severity::warning, ExampleKind::script, u"Ａ：こんにちは。字幕：ご挨拶\n"},
    DiagnosticRow{"S160", Severity::note, ExampleKind::script, u"Ｂ：：こんにちは。\n"},
    DiagnosticRow{"S161", Severity::warning, ExampleKind::script, u"Ａ：Ｂ：こんにちは。\n"},
    DiagnosticRow{"S162", Severity::note, ExampleKind::script, u"サブイメージ：Image￥map.png\n"},
    DiagnosticRow{"S163", Severity::warning, ExampleKind::script, u"サブイメージ：Sound\\theme.wav\n"},
    DiagnosticRow{"S164", Severity::warning, ExampleKind::script, u"スーパー：生中継【赤】\n"},
    DiagnosticRow{"S165", Severity::note, ExampleKind::script, u"左側スーパー：港祭り（赤）\n"},
    DiagnosticRow{"S166", Severity::note, ExampleKind::script, u"田中「こんにちは。」\n佐藤「こんにちは。」\n"},
    DiagnosticRow{"S167", Severity::warning, ExampleKind::script, u"（オフライン）\nサブイメージ：map.png\n（オンライン）\n"},
    DiagnosticRow{"S168", Severity::warning, ExampleKind::script, u"（オフライン）\n（オフライン）\n（オンライン）\n"},
    DiagnosticRow{"S169", Severity::note, ExampleKind::script, u"（オンライン）\n"},
    DiagnosticRow{"S170", Severity::warning, ExampleKind::script, u"（オフライン）\n"},
    DiagnosticRow{"S171", Severity::warning, ExampleKind::script, u"・Ａ：こんにちは。\n"},
    DiagnosticRow{"S172", Severity::warning, ExampleKind::media, u"サブイメージ：mapp.png\n"},
    DiagnosticRow{"S173", Severity::note, ExampleKind::script, u"Ａ：こんばんは。おけ\u3099んきて\u3099すか。\n"},
    DiagnosticRow{"S174", Severity::note, ExampleKind::script, u"Ａ：港町《みなとまち》の朝です。\n"},

    // ---- V: the vocabulary
    DiagnosticRow{"V201", Severity::error, ExampleKind::vocabulary, u";title=タイトル\n"},
    DiagnosticRow{"V202", Severity::error, ExampleKind::vocabulary, u"title=タイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトル\n"},
    DiagnosticRow{"V203", Severity::warning, ExampleKind::vocabulary, u"title=題名\n"},
    DiagnosticRow{"V204", Severity::warning, ExampleKind::vocabulary, u"white=黒\n"},
    DiagnosticRow{"V205", Severity::warning, ExampleKind::vocabulary, u"hyphen=x\n"},
    DiagnosticRow{"V206", Severity::warning, ExampleKind::vocabulary, u"white=\n"},
    DiagnosticRow{"V207", Severity::warning, ExampleKind::vocabulary, u"hyphen=マイナス\n"},
    DiagnosticRow{"V208", Severity::warning, ExampleKind::vocabulary, u"kuten_kakko1=．）\n"},
    DiagnosticRow{"V209", Severity::warning, ExampleKind::vocabulary, u"titel=タイトル\n"},
    DiagnosticRow{"V210", Severity::warning, ExampleKind::vocabulary, u"red=赤\nred=紅\n"},

    // ---- D: the description
    DiagnosticRow{"D301", Severity::warning, ExampleKind::description, u"<staging>\n<numofchar></numofchar>\n</staging>\n"},
    DiagnosticRow{"D302", Severity::warning, ExampleKind::description, u"<staging>\n<numofchar>three</numofchar>\n</staging>\n"},
    DiagnosticRow{"D303", Severity::error, ExampleKind::description, u"<staging>\n<bow><!-- deep --></bow>\n</staging>\n"},
    DiagnosticRow{"D304", Severity::warning, ExampleKind::description, u"<staging>\n<opening>　</opening>\n</staging>\n"},
    DiagnosticRow{"D305", Severity::error, ExampleKind::description, u"<staging>\n<title titlefont_ja=\"ＭＳ 明朝\">\ndrawing: settext( name=TITLETEXT, text=\"$TITLE\" )\ndrawing: settext( name=TITLETEXT, text=\"$SUBTITLE\" )\n</title>\n</staging>\n"},
    DiagnosticRow{"D306", Severity::error, ExampleKind::description, u"<staging>\n<title titlefont_ja=\"　\" titlefont_en=\"Century\" subtitlefont_ja=\"　\" subtitlefont_en=\"Century\">\ndrawing: settext( name=TITLETEXT, text=\"$TITLE\" )\ndrawing: settext( name=TITLETEXT, text=\"$SUBTITLE\" )\n</title>\n</staging>\n"},
    DiagnosticRow{"D307", Severity::error, ExampleKind::description, u"<staging>\n<numofchar>1</numofchar>\n<model_for_char character=\"A\" japanesename=\"スーツ\" englishname=\"suit\">\ncharacter: openmodel( name=A, filename=\"suit.bm\" )\n</model_for_char>\n</staging>\n"},
    DiagnosticRow{"D308", Severity::error, ExampleKind::description, u"<staging>\n<numofchar>1</numofchar>\n<model_for_char character=\"A\" japanesename=\"　\" englishname=\"suit\" default=\"yes\">\ncharacter: openmodel( name=A, filename=\"suit.bm\" )\n</model_for_char>\n</staging>\n"},
    DiagnosticRow{"D309", Severity::error, ExampleKind::description, u"<staging>\n<tag japanesename=\"速報\">\nsuper: on( text=\"$1\" )\n</tag>\n</staging>\n"},
    DiagnosticRow{"D310", Severity::error, ExampleKind::description, u"<staging>\n<set>\n体育館::Gym\n</set>\n</staging>\n"},
    DiagnosticRow{"D311", Severity::error, ExampleKind::description, u"<staging>\n<set>\n体育館::Gym::gym.obj\n体育館::Hall::hall.obj\n</set>\n</staging>\n"},
    DiagnosticRow{"D312", Severity::error, ExampleKind::description, u"<staging>\n<tag japanesename=\"速報\" englishname=\"flash\">\nsuper: on( text=\"$1\" )\n</tag>\n<tag japanesename=\"速報\" englishname=\"news\">\nsuper: on( text=\"$1\" )\n</tag>\n</staging>\n"},
    DiagnosticRow{"D313", Severity::warning, ExampleKind::description, u"<staging>\n<numofchar>2</numofchar>\n<bow character=\"C\">\ncharacter: bow( name=$1 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D314", Severity::warning, ExampleKind::description, u"<staging>\n<bow character=\"B\">\ncharacter: bow( name=$1 )\n</bow>\n<numofchar>2</numofchar>\n</staging>\n"},
    DiagnosticRow{"D315", Severity::warning, ExampleKind::description, u"<staging>\n<bowing>\ncharacter: bow( name=$1 )\n</bowing>\n</staging>\n"},
    DiagnosticRow{"D316", Severity::warning, ExampleKind::description, u"<staging>\n<opening>\nwait( time=1 )\n<bow>\ncharacter: bow( name=$1 )\n</bow>\n</opening>\n</staging>\n"},
    DiagnosticRow{"D317", Severity::error, ExampleKind::description, u"<Staging>\n<numofchar>2</numofchar>\n</Staging>\n"},
    DiagnosticRow{"D318", Severity::error, ExampleKind::description, u"<staging>\n<numofchar>2</numofchar>\n<opening>\nwait( time=1 )\n</openning>\n</staging>\n"},
    DiagnosticRow{"D319", Severity::warning, ExampleKind::description, u"<staging>\n<numofchar>2</numofchar>\n<bow charakter=\"A\">\ncharacter: bow( name=$1 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D320", Severity::warning, ExampleKind::description, u"<staging>\n<bow_switch>togle</bow_switch>\n</staging>\n"},
    DiagnosticRow{"D321", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=$1, speed=$2, level=$3, wait=$5 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D322", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=A )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D323", Severity::warning, ExampleKind::description, u"<staging>\n<talk>\ncharacter: talk( name=$1, text=\"\" )\n</talk>\n</staging>\n"},
    DiagnosticRow{"D324", Severity::warning, ExampleKind::description, u"<staging>\n<opening>\nwait( time=1 )\n</opening>\n<opening>\nwait( time=2 )\n</opening>\n</staging>\n"},
    DiagnosticRow{"D325", Severity::warning, ExampleKind::description, u"<staging>\n<numofchar>1</numofchar>\n<bow character=\"A\">\ncharacter: bow( name=$1 )\n</bow>\n<bow>\ncharacter: bow( name=$1 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D326", Severity::warning, ExampleKind::description, u"<staging>\n<numofchar>1</numofchar>\n<model_for_char character=\"A\" japanesename=\"スーツ\" englishname=\"suit\" default=\"yes\">\ncharacter: openmodel( name=A, filename=\"suit.bm\" )\n</model_for_char>\n<model_for_char character=\"B\" japanesename=\"背広\" englishname=\"blazer\" default=\"yes\">\ncharacter: openmodel( name=B, filename=\"blazer.bm\" )\n</model_for_char>\n</staging>\n"},
    DiagnosticRow{"D327", Severity::warning, ExampleKind::description, u"<staging>\n<numofchar>2</numofchar>\n<model_for_char character=\"A\" japanesename=\"スーツ\" englishname=\"suit\" default=\"yes\">\ncharacter: openmodel( name=A, filename=\"suit.bm\" )\n</model_for_char>\n</staging>\n"},
    DiagnosticRow{"D328", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=$1\n</bow>\n</staging>\n"},
    DiagnosticRow{"D329", Severity::warning, ExampleKind::description, u"<staging>\n<ending>\nsound: playfile( filename=\"end.wav )\n</ending>\n</staging>\n"},
    DiagnosticRow{"D330", Severity::warning, ExampleKind::description, u"<staging>\n<setting>\nset: change( name=Studio )\n</setting>\n</staging>\n"},
    DiagnosticRow{"D331", Severity::warning, ExampleKind::description, u"<staging>\n<pose japanesename=\"お辞儀\" englishname=\"deepbow\">\ncharacter: gesture( name=$1 )\n</pose>\n</staging>\n"},
    DiagnosticRow{"D332", Severity::warning, ExampleKind::description, u"<staging>\n<ending>\nwait( time=1 )\n<!-- then -->\nsound: stop()\n</ending>\n</staging>\n"},
    DiagnosticRow{"D333", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=$1, speed=＄２ )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D334", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=$1, speed=$4, wait=$2 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D335", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=$1, speed=$20 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D336", Severity::warning, ExampleKind::description, u"<staging>\n<title titlefont_ja=\"ＭＳ 明朝\" titlefont_en=\"Century\" subtitlefont_ja=\"ＭＳ 明朝\" subtitlefont_en=\"Century\">\ndrawing: settext( name=TITLETEXT, text=\"$TITLE $SUBTITLE\" )\n</title>\n</staging>\n"},
    DiagnosticRow{"D337", Severity::warning, ExampleKind::description, u"<staging>\n<numofchar>1</numofchar>\n<model_for_char character=\"A\" japanesename=\"スーツ\" englishname=\"suit\" default=\"yes\" speed=\"fast\">\ncharacter: openmodel( name=A, filename=\"suit.bm\" )\n</model_for_char>\n</staging>\n"},
    DiagnosticRow{"D338", Severity::warning, ExampleKind::description, u"<staging>\n<numofchar>1</numofchar>\n<model_for_char character=\"A\" japanesename=\"スーツ\" englishname=\"suit\" default=\"yes\">\ncharacter: openmodel( name=A, filename=\"suit.bm\" )\n</model_for_char>\n<model_for_char character=\"A\" japanesename=\"着物\" englishname=\"kimono\" default=\"yes\">\ncharacter: openmodel( name=A, filename=\"kimono.bm\" )\n</model_for_char>\n</staging>\n"},
    DiagnosticRow{"D339", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow（ name=$1 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D340", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=$1 speed=$2 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D341", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=$1, speed $2 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D342", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharacter bow( name=$1 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D343", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharcter: bow( name=$1 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D344", Severity::warning, ExampleKind::description, u"<staging>\n<leftsuper>\ndrawing: settext( name=LEFT, text=\"&lt;font size=\"35%\"&gt;$1&lt;/font&gt;\" )\n</leftsuper>\n</staging>\n"},
    DiagnosticRow{"D345", Severity::error, ExampleKind::description, u"<staging>\n<bow>\n<![CDATA[character: bow( name=$1 )]]>\n</bow>\n</staging>\n"},
    DiagnosticRow{"D346", Severity::note, ExampleKind::description, u"<staging>\n<staging>\n<numofchar>2</numofchar>\n</staging>\n</staging>\n"},
    DiagnosticRow{"D347", Severity::warning, ExampleKind::description, u"<staging>\n<setting>\nskipscript( switch=on )\nset: change( name=Studio )\n</setting>\n</staging>\n"},
    DiagnosticRow{"D348", Severity::warning, ExampleKind::description, u"<staging>\n＜bow＞\ncharacter: bow( name=$1 )\n＜/bow＞\n</staging>\n"},
    DiagnosticRow{"D349", Severity::error, ExampleKind::description, u"<staging>\n<leftsuper>\ndrawing: settext( name=LEFT, text=\"$1<b>!</b>\" )\n</leftsuper>\n</staging>\n"},
    DiagnosticRow{"D350", Severity::warning, ExampleKind::description, u"<staging>\n<tag japanesename=\"Ｂ\" englishname=\"bee\">\nsuper: on( text=\"$1\" )\n</tag>\n</staging>\n"},
    DiagnosticRow{"D351", Severity::warning, ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=$1,, speed=$2 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D352", Severity::warning, ExampleKind::description, u"<staging>\nsalute\n<numofchar>2</numofchar>\n</staging>\n"},
    DiagnosticRow{"D353", Severity::note, ExampleKind::description, u"<staging>\n<pose japanesename=\"夜\" englishname=\"night\">\ncharacter: gesture( name=$1 )\n</pose>\n</staging>\n"},

    // ---- F: files and calls
    DiagnosticRow{"F401", Severity::error, ExampleKind::noVocabulary, u"[KEYWORDS]\ntitle=タイトル\n"},
    DiagnosticRow{"F402", Severity::error, ExampleKind::script, wholeText(u"Ａ：こんにちは。\0Ｂ：こんにちは。\n")},
    DiagnosticRow{"F403", Severity::error, ExampleKind::description, wholeText(u"<staging>\n<numofchar>2</numofchar>\n</staging>\n\0<!-- end -->\n")},
    DiagnosticRow{"F404", Severity::warning, ExampleKind::playLine, u"Ａ：こんにちは。\n"},
    DiagnosticRow{"F405", Severity::note, ExampleKind::brokenDescription, u"Ａ：こんにちは。\n"},
    DiagnosticRow{"F406", Severity::warning, ExampleKind::playBackwards, u"Ａ：こんにちは。\nＢ：こんにちは。\n"},
    DiagnosticRow{"F410", Severity::warning, ExampleKind::script, u"Ａ：こんにちは。\rＢ：こんにちは。\r"},
};
// clang-format on

namespace detail {

constexpr std::size_t rowOfCode(std::string_view code) {
    std::size_t row = 0;
    while (row < kDiagnosticRows.size() && kDiagnosticRows[row].code != code) {
        ++row;
    }
    return row;
}

constexpr bool codesAreUnique() {
    for (std::size_t i = 0; i < kDiagnosticRows.size(); ++i) {
        if (kDiagnosticRows[i].code.size() != 4 || rowOfCode(kDiagnosticRows[i].code) != i) {
            return false;
        }
    }
    return true;
}

// The messages that have the codes and `suffix` for names; all there, or it does
// not compile.
consteval auto messagesOfRows(std::string_view suffix) {
    std::array<Message, kDiagnosticRows.size()> messages{};
    for (std::size_t row = 0; row < messages.size(); ++row) {
        std::size_t message = 0;
        while (!kMessageNames.at(message).starts_with(kDiagnosticRows[row].code) ||
               kMessageNames[message].substr(kDiagnosticRows[row].code.size()) != suffix) {
            ++message;
        }
        messages[row] = static_cast<Message>(message);
    }
    return messages;
}

inline constexpr auto kRowMessages = messagesOfRows("");
inline constexpr auto kRowExplanations = messagesOfRows(".why");

} // namespace detail

static_assert(detail::codesAreUnique(), "every diagnostic has a code of its own");

// One row of the table, named by its code; a code that no row has does not
// compile.
class Code {
public:
    consteval Code(const char (&text)[5]) // NOLINT: a code reads as its text
        : index_(static_cast<std::uint16_t>(detail::rowOfCode({text, 4}))) {
        if (index_ >= kDiagnosticRows.size()) {
            throw "no such diagnostic";
        }
    }
    static constexpr Code at(std::size_t row) { return Code(Row{static_cast<std::uint16_t>(row)}); }

    constexpr const DiagnosticRow& row() const { return kDiagnosticRows[index_]; }
    constexpr Message message() const { return detail::kRowMessages[index_]; }
    constexpr Message explanation() const { return detail::kRowExplanations[index_]; }
    constexpr bool operator==(const Code&) const = default;

private:
    struct Row {
        std::uint16_t value;
    };
    constexpr explicit Code(Row row) : index_(row.value) {}

    std::uint16_t index_;
};

} // namespace tvml

#endif
