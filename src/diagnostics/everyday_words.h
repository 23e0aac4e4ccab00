// Words that people write for commands, adverbs and their arguments, and what is
// meant by them. One row a word; targets are canonical English names, so that the
// word of the loaded vocabulary can be offered for them.
#ifndef TVML_DIAGNOSTICS_EVERYDAY_WORDS_H
#define TVML_DIAGNOSTICS_EVERYDAY_WORDS_H

#include <string_view>

namespace tvml {

struct EverydayWord {
    std::u16string_view word; // width, case and kana do not matter
    std::u16string_view meant;
};

// clang-format off
inline constexpr EverydayWord kEverydayCommands[] = {
    // ---- feelings
    {u"笑う", u"happy"}, {u"笑って", u"happy"}, {u"笑い", u"happy"}, {u"笑顔", u"happy"}, {u"笑", u"happy"},
    {u"微笑む", u"happy"}, {u"ほほえむ", u"happy"}, {u"ほほえみ", u"happy"}, {u"微笑み", u"happy"},
    {u"にっこり", u"happy"}, {u"にこにこ", u"happy"}, {u"喜ぶ", u"happy"}, {u"喜び", u"happy"}, {u"よろこぶ", u"happy"},
    {u"嬉しい", u"happy"}, {u"うれしい", u"happy"}, {u"楽しい", u"happy"},
    {u"smile", u"happy"}, {u"smiles", u"happy"}, {u"smiling", u"happy"}, {u"laugh", u"happy"}, {u"laughs", u"happy"},
    {u"laughing", u"happy"}, {u"grin", u"happy"}, {u"joy", u"happy"}, {u"glad", u"happy"}, {u"happily", u"happy"},
    {u"怒る", u"angry"}, {u"怒って", u"angry"}, {u"怒り", u"angry"}, {u"おこる", u"angry"}, {u"いかり", u"angry"},
    {u"ぷんぷん", u"angry"}, {u"むっとする", u"angry"}, {u"腹を立てる", u"angry"},
    {u"anger", u"angry"}, {u"mad", u"angry"}, {u"frown", u"angry"}, {u"angrily", u"angry"}, {u"furious", u"angry"},
    {u"悲しむ", u"sad"}, {u"悲しい", u"sad"}, {u"悲しみ", u"sad"}, {u"かなしい", u"sad"}, {u"泣く", u"sad"}, {u"泣き", u"sad"},
    {u"涙", u"sad"}, {u"哀しい", u"sad"}, {u"しょんぼり", u"sad"}, {u"寂しい", u"sad"},
    {u"cry", u"sad"}, {u"cries", u"sad"}, {u"weep", u"sad"}, {u"sadness", u"sad"}, {u"sadly", u"sad"}, {u"unhappy", u"sad"},
    {u"驚く", u"surprise"}, {u"驚き", u"surprise"}, {u"おどろく", u"surprise"}, {u"おどろき", u"surprise"}, {u"びっくり", u"surprise"},
    {u"びっくりする", u"surprise"}, {u"ビックリ", u"surprise"}, {u"仰天", u"surprise"},
    {u"surprised", u"surprise"}, {u"amazed", u"surprise"}, {u"astonished", u"surprise"}, {u"gasp", u"surprise"}, {u"shocked", u"surprise"},
    {u"困る", u"komatta"}, {u"こまる", u"komatta"}, {u"困った", u"komatta"}, {u"困惑", u"komatta"}, {u"悩む", u"komatta"}, {u"苦笑", u"komatta"},
    {u"troubled", u"komatta"}, {u"embarrassed", u"komatta"}, {u"worried", u"komatta"}, {u"puzzled", u"hatena"}, {u"confused", u"hatena"},
    {u"疑問", u"hatena"}, {u"首をかしげる", u"hatena"}, {u"首を傾げる", u"hatena"}, {u"不思議", u"hatena"}, {u"問う", u"hatena"}, {u"wonder", u"hatena"}, {u"question", u"hatena"},
    {u"恐れる", u"fear"}, {u"怖がる", u"fear"}, {u"こわがる", u"fear"}, {u"怖い", u"fear"}, {u"こわい", u"fear"}, {u"恐怖", u"fear"}, {u"おびえる", u"fear"},
    {u"scared", u"fear"}, {u"afraid", u"fear"}, {u"frightened", u"fear"}, {u"terrified", u"fear"},
    {u"嫌がる", u"disgust"}, {u"いやがる", u"disgust"}, {u"嫌悪", u"disgust"}, {u"嫌い", u"disgust"}, {u"嫌な顔", u"disgust"}, {u"disgusted", u"disgust"}, {u"dislike", u"disgust"},
    {u"真顔", u"neutral"}, {u"無表情", u"neutral"}, {u"平静", u"neutral"}, {u"ふつう", u"neutral"}, {u"普通の顔", u"neutral"}, {u"平常", u"neutral"}, {u"calm", u"neutral"}, {u"normal face", u"neutral"}, {u"straight face", u"neutral"},
    // ---- gestures
    {u"おじぎ", u"bow"}, {u"おじき", u"bow"}, {u"礼", u"bow"}, {u"礼をする", u"bow"}, {u"一礼", u"bow"}, {u"頭を下げる", u"bow"}, {u"会釈", u"bow"}, {u"敬礼", u"bow"}, {u"辞儀", u"bow"}, {u"お辞義", u"bow"}, {u"御辞儀", u"bow"},
    {u"bows", u"bow"}, {u"bowing", u"bow"}, {u"greet", u"bow"},
    {u"頷く", u"nod"}, {u"うなずく", u"nod"}, {u"うなづく", u"nod"}, {u"頷き", u"nod"}, {u"うなずき", u"nod"}, {u"首肯", u"nod"}, {u"肯く", u"nod"}, {u"nods", u"nod"}, {u"nod head", u"nod"}, {u"nodding", u"nod"}, {u"yes", u"nod"}, {u"agree", u"nod"}, {u"はい", u"nod"},
    {u"何度も頷く", u"nodnod"}, {u"何度もうなずく", u"nodnod"}, {u"うなずきうなずき", u"nodnod"}, {u"nod twice", u"nodnod"}, {u"nod nod", u"nodnod"},
    {u"首を振る", u"no"}, {u"首を横に振る", u"no"}, {u"否定", u"no"}, {u"いいえ", u"no"}, {u"ノー", u"no"}, {u"shake head", u"no"}, {u"shakes head", u"no"}, {u"shake his head", u"no"}, {u"shake her head", u"no"}, {u"disagree", u"no"},
    {u"何度も首を振る", u"nono"}, {u"イヤイヤ", u"nono"}, {u"no no", u"nono"},
    {u"考える", u"well"}, {u"考え込む", u"well"}, {u"かんがえる", u"well"}, {u"ええと", u"well"}, {u"えっと", u"well"}, {u"思案", u"well"}, {u"think", u"well"}, {u"thinks", u"well"}, {u"thinking", u"well"}, {u"hesitate", u"well"},
    {u"手を振る", u"bye"}, {u"手をふる", u"bye"}, {u"てをふる", u"bye"}, {u"さようなら", u"bye"}, {u"さよなら", u"bye"}, {u"ばいばい", u"bye"}, {u"別れる", u"bye"}, {u"wave", u"bye"}, {u"waves", u"bye"}, {u"waving", u"bye"}, {u"wave hand", u"bye"}, {u"wave goodbye", u"bye"}, {u"goodbye", u"bye"}, {u"bye bye", u"bye"}, {u"byebye", u"bye"},
    {u"震える", u"shake"}, {u"ふるえ", u"shake"}, {u"震え", u"shake"}, {u"がたがた", u"shake"}, {u"tremble", u"shake"}, {u"shiver", u"shake"}, {u"shaking", u"shake"}, {u"震え止む", u"stop shaking"}, {u"ふるえを止める", u"stop shaking"}, {u"震えを止める", u"stop shaking"}, {u"ふるえやむ", u"stop shaking"}, {u"stop shake", u"stop shaking"}, {u"stop trembling", u"stop shaking"},
    // ---- looking
    {u"正面を見る", u"look forward"}, {u"前を向く", u"look forward"}, {u"正面を向く", u"look forward"}, {u"正面", u"look forward"}, {u"まえをみる", u"look forward"}, {u"look front", u"look forward"}, {u"look ahead", u"look forward"}, {u"look straight", u"look forward"}, {u"face forward", u"look forward"}, {u"look to the front", u"look forward"},
    {u"カメラを見る", u"look at camera"}, {u"カメラを向く", u"look at camera"}, {u"カメラの方を見る", u"look at camera"}, {u"かめらめせん", u"look at camera"}, {u"look camera", u"look at camera"}, {u"look at the camera", u"look at camera"}, {u"look into camera", u"look at camera"}, {u"look into the camera", u"look at camera"}, {u"face camera", u"look at camera"},
    {u"相手を向く", u"look at fellow"}, {u"相手の方を見る", u"look at fellow"}, {u"隣を見る", u"look at fellow"}, {u"あいてをみる", u"look at fellow"}, {u"look at the other", u"look at fellow"}, {u"look at partner", u"look at fellow"}, {u"look at him", u"look at fellow"}, {u"look at her", u"look at fellow"}, {u"look at each other", u"look at fellow"},
    {u"絵を見る", u"look at picture"}, {u"写真を見る", u"look at picture"}, {u"画面を見る", u"look at picture"}, {u"図を見る", u"look at picture"}, {u"映像を見る", u"look at picture"}, {u"がぞうをみる", u"look at picture"}, {u"look at the picture", u"look at picture"}, {u"look at image", u"look at picture"}, {u"look at the image", u"look at picture"}, {u"look at photo", u"look at picture"}, {u"look at screen", u"look at picture"}, {u"look at the screen", u"look at picture"},
    {u"目をそらす", u"look aside"}, {u"横を見る", u"look aside"}, {u"横を向く", u"look aside"}, {u"よそみ", u"look aside"}, {u"脇見", u"look aside"}, {u"look away", u"look aside"},
    {u"右を向く", u"look right"}, {u"みぎをみる", u"look right"}, {u"右見る", u"look right"}, {u"右", u"look right"}, {u"look to the right", u"look right"}, {u"look to right", u"look right"}, {u"face right", u"look right"},
    {u"左を向く", u"look left"}, {u"ひだりをみる", u"look left"}, {u"左見る", u"look left"}, {u"左", u"look left"}, {u"look to the left", u"look left"}, {u"look to left", u"look left"}, {u"face left", u"look left"},
    {u"上を向く", u"look up"}, {u"うえをみる", u"look up"}, {u"見上げる", u"look up"}, {u"上", u"look up"}, {u"look upward", u"look up"}, {u"look upwards", u"look up"},
    {u"下を向く", u"look down"}, {u"したをみる", u"look down"}, {u"見下ろす", u"look down"}, {u"うつむく", u"look down"}, {u"下", u"look down"}, {u"look downward", u"look down"}, {u"look downwards", u"look down"},
    {u"後を見る", u"look behind"}, {u"うしろを見る", u"look behind"}, {u"うしろをみる", u"look behind"}, {u"振り返る", u"look behind"}, {u"ふりかえる", u"look behind"}, {u"振り向く", u"look behind"}, {u"ふりむく", u"look behind"}, {u"後ろを向く", u"look behind"}, {u"look back", u"look behind"}, {u"look backward", u"look behind"},
    // ---- body
    {u"口をあける", u"open mouth"}, {u"くちをあける", u"open mouth"}, {u"口を開く", u"open mouth"}, {u"口をひらく", u"open mouth"}, {u"open the mouth", u"open mouth"}, {u"open his mouth", u"open mouth"}, {u"open her mouth", u"open mouth"}, {u"mouth open", u"open mouth"},
    {u"口をとじる", u"close mouth"}, {u"くちをとじる", u"close mouth"}, {u"口を閉める", u"close mouth"}, {u"close the mouth", u"close mouth"}, {u"close his mouth", u"close mouth"}, {u"close her mouth", u"close mouth"}, {u"shut mouth", u"close mouth"}, {u"mouth close", u"close mouth"},
    {u"立ち上がる", u"stand"}, {u"たつ", u"stand"}, {u"起立", u"stand"}, {u"立ち上がって", u"stand"}, {u"stand up", u"stand"}, {u"stands", u"stand"}, {u"stands up", u"stand"}, {u"rise", u"stand"},
    {u"すわる", u"sit"}, {u"腰掛ける", u"sit"}, {u"腰かける", u"sit"}, {u"着席", u"sit"}, {u"着席する", u"sit"}, {u"座って", u"sit"}, {u"坐る", u"sit"}, {u"腰を下ろす", u"sit"}, {u"sit down", u"sit"}, {u"sits", u"sit"}, {u"sits down", u"sit"}, {u"be seated", u"sit"}, {u"take a seat", u"sit"},
    {u"あるく", u"walk"}, {u"歩き", u"walk"}, {u"歩いて", u"walk"}, {u"進む", u"walk"}, {u"前進", u"walk"}, {u"前に進む", u"walk"}, {u"前に出る", u"walk"}, {u"前へ出る", u"walk"}, {u"走る", u"walk"}, {u"駆ける", u"walk"}, {u"run", u"walk"}, {u"runs", u"walk"}, {u"walks", u"walk"}, {u"go", u"walk"}, {u"go forward", u"walk"}, {u"step", u"walk"}, {u"step forward", u"walk"}, {u"move forward", u"walk"}, {u"walk forward", u"walk"},
    {u"回る", u"turn"}, {u"廻る", u"turn"}, {u"回転", u"turn"}, {u"回転する", u"turn"}, {u"ターン", u"turn"}, {u"向きを変える", u"turn"}, {u"turns", u"turn"}, {u"rotate", u"turn"}, {u"turn around", u"turn"}, {u"spin", u"turn"},
    {u"たおれる", u"fall"}, {u"転ぶ", u"fall"}, {u"ころぶ", u"fall"}, {u"転倒", u"fall"}, {u"倒れ", u"fall"}, {u"falls", u"fall"}, {u"fall down", u"fall"}, {u"fall over", u"fall"}, {u"tumble", u"fall"}, {u"collapse", u"fall"},
    {u"あおむけに倒れる", u"fall backward"}, {u"あおむけにたおれる", u"fall backward"}, {u"後ろに倒れる", u"fall backward"}, {u"仰向けにたおれる", u"fall backward"}, {u"fall back", u"fall backward"}, {u"fall backwards", u"fall backward"}, {u"fall on back", u"fall backward"},
    {u"起きる", u"get up"}, {u"おきあがる", u"get up"}, {u"起きあがる", u"get up"}, {u"おきる", u"get up"}, {u"gets up", u"get up"}, {u"wake up", u"get up"},
    {u"跳ぶ", u"jump"}, {u"飛ぶ", u"jump"}, {u"跳ねる", u"jump"}, {u"とぶ", u"jump"}, {u"ジャンプする", u"jump"}, {u"飛び上がる", u"jump"}, {u"飛び跳ねる", u"jump"}, {u"jumps", u"jump"}, {u"hop", u"jump"}, {u"leap", u"jump"},
    {u"消える", u"invisible"}, {u"去る", u"invisible"}, {u"退出", u"invisible"}, {u"たいじょう", u"invisible"}, {u"退席", u"invisible"}, {u"いなくなる", u"invisible"}, {u"hide", u"invisible"}, {u"exit", u"invisible"}, {u"leave", u"invisible"}, {u"disappear", u"invisible"}, {u"vanish", u"invisible"},
    {u"現れる", u"visible"}, {u"あらわれる", u"visible"}, {u"入場", u"visible"}, {u"とうじょう", u"visible"}, {u"出現", u"visible"}, {u"登場する", u"visible"}, {u"enter", u"visible"}, {u"appear", u"visible"}, {u"enters", u"visible"}, {u"show", u"visible"},
    // ---- the camera
    {u"アップ", u"upshot"}, {u"のアップ", u"upshot of "}, {u"アップにする", u"upshot"}, {u"クローズアップショット", u"upshot"}, {u"ズームイン", u"upshot"}, {u"ズーム", u"upshot"}, {u"寄り", u"upshot"}, {u"寄る", u"upshot"}, {u"顔のアップ", u"upshot"}, {u"close-up", u"upshot"}, {u"close up", u"upshot"}, {u"closeup", u"upshot"}, {u"close up of", u"upshot of "}, {u"close-up of", u"upshot of "}, {u"closeup of", u"upshot of "}, {u"zoom in", u"upshot"}, {u"zoom", u"upshot"}, {u"zoom on", u"upshot of "}, {u"zoom in on", u"upshot of "}, {u"up shot", u"upshot"}, {u"close shot", u"upshot"}, {u"upshot on", u"upshot of "}, {u"バストショット", u"upshot"}, {u"ウエストショット", u"upshot"}, {u"bustshot of", u"upshot of "}, {u"waistshot of", u"upshot of "}, {u"fullshot of", u"upshot of "}, {u"bust shot", u"upshot"},
    {u"２ショット", u"twoshot"}, {u"2shot", u"twoshot"}, {u"two shot", u"twoshot"}, {u"two-shot", u"twoshot"}, {u"2 shot", u"twoshot"}, {u"二人のショット", u"twoshot"}, {u"二人ショット", u"twoshot"}, {u"ふたりのショット", u"twoshot"}, {u"two shot of", u"twoshot of "}, {u"two-shot of", u"twoshot of "}, {u"ツーショット", u"twoshot"},
    {u"トラック", u"trackshot"}, {u"追う", u"trackshot"}, {u"追跡", u"trackshot"}, {u"track", u"trackshot"}, {u"follow", u"trackshot"}, {u"tracking shot", u"trackshot"}, {u"track shot", u"trackshot"}, {u"trackshot of", u"trackshot on "}, {u"track on", u"trackshot on "},
    {u"ロング", u"longshot"}, {u"引き", u"longshot"}, {u"全景", u"longshot"}, {u"引きの絵", u"longshot"}, {u"ズームアウト", u"longshot"}, {u"ロングショットにする", u"longshot"}, {u"long shot", u"longshot"}, {u"long-shot", u"longshot"}, {u"wide shot", u"longshot"}, {u"wide", u"longshot"}, {u"zoom out", u"longshot"}, {u"establishing shot", u"longshot"}, {u"full shot", u"longshot"}, {u"pull back", u"longshot"},
    {u"自動カメラ", u"auto camera switching"}, {u"カメラオート", u"auto camera switching"}, {u"オートカメラ", u"auto camera switching"}, {u"auto camera", u"auto camera switching"}, {u"camera auto", u"auto camera switching"}, {u"automatic camera", u"auto camera switching"},
    {u"手動カメラ", u"manual camera switching"}, {u"カメラマニュアル", u"manual camera switching"}, {u"manual camera", u"manual camera switching"}, {u"camera manual", u"manual camera switching"},
    // ---- pictures, supers, light
    {u"画像を消す", u"hide picture"}, {u"画像消す", u"hide picture"}, {u"画像消去", u"hide picture"}, {u"写真を消す", u"hide picture"}, {u"絵を消す", u"hide picture"}, {u"画像ＯＦＦ", u"hide picture"}, {u"picture off", u"hide picture"}, {u"hide image", u"hide picture"}, {u"hide the picture", u"hide picture"}, {u"image off", u"hide picture"}, {u"remove picture", u"hide picture"}, {u"clear picture", u"hide picture"},
    {u"背景を消す", u"hide bg picture"}, {u"背景画像を消す", u"hide bg picture"}, {u"背景オフ", u"hide bg picture"}, {u"背景イメージオフ", u"hide bg picture"}, {u"hide background", u"hide bg picture"}, {u"hide background picture", u"hide bg picture"}, {u"hide bg image", u"hide bg picture"}, {u"background off", u"hide bg picture"},
    {u"右の画像を消す", u"hide right picture"}, {u"右画像を消す", u"hide right picture"}, {u"右側画像を消す", u"hide right picture"}, {u"hide right image", u"hide right picture"}, {u"左の画像を消す", u"hide left picture"}, {u"左画像を消す", u"hide left picture"}, {u"左側画像を消す", u"hide left picture"}, {u"hide left image", u"hide left picture"},
    {u"スタジオに戻る", u"back to studio"}, {u"スタジオへ戻る", u"back to studio"}, {u"スタジオへ", u"back to studio"}, {u"スタジオもどり", u"back to studio"}, {u"スタジオ", u"back to studio"}, {u"studio", u"back to studio"}, {u"return to studio", u"back to studio"}, {u"back to the studio", u"back to studio"},
    {u"字幕ＯＮ", u"caption on"}, {u"字幕入れる", u"caption on"}, {u"字幕を出す", u"caption on"}, {u"字幕表示", u"caption on"}, {u"字幕あり", u"caption on"}, {u"subtitle on", u"caption on"}, {u"subtitles on", u"caption on"}, {u"captions on", u"caption on"}, {u"show captions", u"caption on"}, {u"show subtitles", u"caption on"},
    {u"字幕ＯＦＦ", u"caption off"}, {u"字幕を消す", u"caption off"}, {u"字幕消す", u"caption off"}, {u"字幕なし", u"caption off"}, {u"subtitle off", u"caption off"}, {u"subtitles off", u"caption off"}, {u"captions off", u"caption off"}, {u"hide captions", u"caption off"}, {u"hide subtitles", u"caption off"},
    {u"スーパーを消す", u"super off"}, {u"スーパー消す", u"super off"}, {u"テロップオフ", u"super off"}, {u"テロップを消す", u"super off"}, {u"テロップ消す", u"super off"}, {u"スーパーＯＦＦ", u"super off"}, {u"hide super", u"super off"}, {u"telop off", u"super off"}, {u"右スーパーオフ", u"right super off"}, {u"右スーパーを消す", u"right super off"}, {u"左スーパーオフ", u"left super off"}, {u"左スーパーを消す", u"left super off"}, {u"右側スーパーを消す", u"right super off"}, {u"左側スーパーを消す", u"left super off"},
    {u"昼間", u"daylight"}, {u"ひる", u"daylight"}, {u"日中", u"daylight"}, {u"朝", u"daylight"}, {u"明るくする", u"daylight"}, {u"明かりをつける", u"daylight"}, {u"点灯", u"daylight"}, {u"照明をつける", u"daylight"}, {u"day", u"daylight"}, {u"light on", u"daylight"}, {u"lights on", u"daylight"}, {u"day light", u"daylight"}, {u"morning", u"daylight"},
    {u"よる", u"night"}, {u"夜間", u"night"}, {u"夜中", u"night"}, {u"夕方", u"night"}, {u"nighttime", u"night"}, {u"evening", u"night"}, {u"moonlight", u"night"},
    {u"蝋燭", u"candlelight"}, {u"ローソク", u"candlelight"}, {u"ロウソク", u"candlelight"}, {u"キャンドル", u"candlelight"}, {u"candle", u"candlelight"}, {u"candle light", u"candlelight"},
    {u"暗転", u"light off"}, {u"暗くする", u"light off"}, {u"消灯", u"light off"}, {u"照明を消す", u"light off"}, {u"電気を消す", u"light off"}, {u"明かりをけす", u"light off"}, {u"あかりをけす", u"light off"}, {u"灯りを消す", u"light off"}, {u"明かりオフ", u"light off"}, {u"lights off", u"light off"}, {u"light out", u"light off"}, {u"lights out", u"light off"}, {u"blackout", u"light off"}, {u"turn off light", u"light off"}, {u"turn off the light", u"light off"}, {u"turn off the lights", u"light off"}, {u"dark", u"light off"},
    // ---- the programme
    {u"まつ", u"wait"}, {u"待機", u"wait"}, {u"待って", u"wait"}, {u"間", u"wait"}, {u"ポーズ", u"wait"}, {u"ウェイト", u"wait"}, {u"一時停止", u"wait"}, {u"間をおく", u"wait"}, {u"間を置く", u"wait"}, {u"休止", u"wait"}, {u"wait for", u"wait"}, {u"pause", u"wait"}, {u"pause for", u"wait"}, {u"beat", u"wait"}, {u"sleep", u"wait"}, {u"delay", u"wait"},
    {u"オープニングなし", u"opening off"}, {u"オープニング無し", u"opening off"}, {u"オープニングを省く", u"opening off"}, {u"no opening", u"opening off"}, {u"skip opening", u"opening off"},
    {u"エンディングなし", u"ending off"}, {u"エンディング無し", u"ending off"}, {u"エンディングを省く", u"ending off"}, {u"no ending", u"ending off"}, {u"skip ending", u"ending off"},
    {u"off line", u"offline"}, {u"off-line", u"offline"}, {u"オフ", u"offline"}, {u"on line", u"online"}, {u"on-line", u"online"},
    // ---- speech and gestures
    {u"普通に話す", u"speak normally"}, {u"普通の速さで話す", u"speak normally"}, {u"普通にしゃべる", u"speak normally"}, {u"speak normal", u"speak normally"}, {u"normal speech", u"speak normally"}, {u"talk normally", u"speak normally"},
    {u"ゆっくり話す", u"speak slow"}, {u"ゆっくり喋る", u"speak slow"}, {u"遅くしゃべる", u"speak slow"}, {u"speak slowly", u"speak slow"}, {u"talk slow", u"speak slow"}, {u"talk slowly", u"speak slow"}, {u"speak slower", u"speak slow"},
    {u"とてもゆっくり話す", u"speak very slow"}, {u"とてもゆっくり喋る", u"speak very slow"}, {u"speak very slowly", u"speak very slow"}, {u"talk very slowly", u"speak very slow"},
    {u"早く話す", u"speak fast"}, {u"速く話す", u"speak fast"}, {u"速く喋る", u"speak fast"}, {u"早くしゃべる", u"speak fast"}, {u"はやくち", u"speak fast"}, {u"速口", u"speak fast"}, {u"早口で話す", u"speak fast"}, {u"早口でしゃべる", u"speak fast"}, {u"speak quickly", u"speak fast"}, {u"talk fast", u"speak fast"}, {u"talk quickly", u"speak fast"}, {u"speak faster", u"speak fast"},
    {u"とても速く話す", u"speak very fast"}, {u"とても早く話す", u"speak very fast"}, {u"とてもはやくち", u"speak very fast"}, {u"speak very quickly", u"speak very fast"}, {u"talk very fast", u"speak very fast"},
    {u"自動ジェスチャーオン", u"auto gesture"}, {u"ジェスチャー自動", u"auto gesture"}, {u"ジェスチャーオン", u"auto gesture"}, {u"automatic gesture", u"auto gesture"}, {u"gesture auto", u"auto gesture"}, {u"ジェスチャー手動", u"manual gesture"}, {u"ジェスチャーオフ", u"manual gesture"}, {u"gesture manual", u"manual gesture"}, {u"自動ジェスチャーオフ", u"manual gesture"},
};

inline constexpr EverydayWord kEverydayAdverbs[] = {
    {u"早く", u"fast"}, {u"はやく", u"fast"}, {u"素早く", u"fast"}, {u"すばやく", u"fast"}, {u"急いで", u"fast"}, {u"さっと", u"fast"}, {u"早めに", u"fast"}, {u"速めに", u"fast"}, {u"速い", u"fast"}, {u"早い", u"fast"}, {u"スピーディに", u"fast"}, {u"quick", u"fast"}, {u"quickly", u"fast"}, {u"faster", u"fast"}, {u"rapidly", u"fast"}, {u"hurry", u"fast"},
    {u"とても早く", u"very fast"}, {u"すごく速く", u"very fast"}, {u"もっと速く", u"very fast"}, {u"かなり速く", u"very fast"}, {u"とてもはやく", u"very fast"}, {u"非常に速く", u"very fast"}, {u"すごく早く", u"very fast"}, {u"かなり早く", u"very fast"}, {u"very quickly", u"very fast"}, {u"very quick", u"very fast"}, {u"super fast", u"very fast"}, {u"fastest", u"very fast"},
    {u"ゆっくり", u"slow"}, {u"ゆっくりと", u"slow"}, {u"スローで", u"slow"}, {u"スロー", u"slow"}, {u"ゆーっくり", u"slow"}, {u"おそく", u"slow"}, {u"遅い", u"slow"}, {u"遅めに", u"slow"}, {u"のろのろ", u"slow"}, {u"静かに", u"slow"}, {u"そっと", u"slow"}, {u"ゆったり", u"slow"}, {u"slowly", u"slow"}, {u"slower", u"slow"}, {u"gently", u"slow"},
    {u"とてもゆっくり", u"very slow"}, {u"すごくゆっくり", u"very slow"}, {u"もっとゆっくり", u"very slow"}, {u"かなりゆっくり", u"very slow"}, {u"とてもおそく", u"very slow"}, {u"非常にゆっくり", u"very slow"}, {u"very slowly", u"very slow"}, {u"slowest", u"very slow"},
    {u"普通の早さ", u"normal speed"}, {u"ふつうの速さ", u"normal speed"}, {u"普通の速度", u"normal speed"}, {u"通常の速さ", u"normal speed"}, {u"普通の速さで", u"normal speed"}, {u"normal", u"normal speed"}, {u"normally", u"normal speed"},
    {u"大きく", u"much"}, {u"深く", u"much"}, {u"強く", u"much"}, {u"深々と", u"much"}, {u"ふかく", u"much"}, {u"大いに", u"much"}, {u"思い切り", u"much"}, {u"おおきく", u"much"}, {u"高く", u"much"}, {u"沢山", u"much"}, {u"いっぱい", u"much"}, {u"大げさに", u"much"}, {u"big", u"much"}, {u"deep", u"much"}, {u"deeply", u"much"}, {u"a lot", u"much"}, {u"strongly", u"much"}, {u"high", u"much"}, {u"hard", u"much"}, {u"more", u"much"},
    {u"とても大きく", u"very much"}, {u"とても深く", u"very much"}, {u"とても強く", u"very much"}, {u"すごく", u"very much"}, {u"とても", u"very much"}, {u"もっと", u"very much"}, {u"とても沢山", u"very much"}, {u"非常に", u"very much"}, {u"most", u"very much"}, {u"very deeply", u"very much"}, {u"very deep", u"very much"}, {u"very big", u"very much"},
    {u"普通", u"normal degree"}, {u"ふつうに", u"normal degree"}, {u"適度に", u"normal degree"}, {u"普通の程度", u"normal degree"},
    {u"小さく", u"little"}, {u"軽く", u"little"}, {u"かるく", u"little"}, {u"ちょっと", u"little"}, {u"すこし", u"little"}, {u"浅く", u"little"}, {u"弱く", u"little"}, {u"ちいさく", u"little"}, {u"やや", u"little"}, {u"a little", u"little"}, {u"slightly", u"little"}, {u"lightly", u"little"}, {u"small", u"little"}, {u"a bit", u"little"}, {u"less", u"little"},
    {u"ほんのすこし", u"very little"}, {u"ごく軽く", u"very little"}, {u"わずかに", u"very little"}, {u"ほんのちょっと", u"very little"}, {u"かすかに", u"very little"}, {u"とても小さく", u"very little"}, {u"very slightly", u"very little"}, {u"least", u"very little"}, {u"a tiny bit", u"very little"},
    {u"どうじ", u"no blocking"}, {u"同時に", u"no blocking"}, {u"一緒に", u"no blocking"}, {u"いっしょに", u"no blocking"}, {u"待たない", u"no blocking"}, {u"待たずに", u"no blocking"}, {u"並行", u"no blocking"}, {u"同時進行", u"no blocking"}, {u"no block", u"no blocking"}, {u"noblocking", u"no blocking"}, {u"non blocking", u"no blocking"}, {u"non-blocking", u"no blocking"}, {u"nonblocking", u"no blocking"}, {u"no wait", u"no blocking"}, {u"at once", u"no blocking"}, {u"at the same time", u"no blocking"}, {u"simultaneously", u"no blocking"}, {u"together", u"no blocking"}, {u"parallel", u"no blocking"}, {u"don't wait", u"no blocking"},
    {u"じゅんじ", u"blocking"}, {u"順番に", u"blocking"}, {u"順に", u"blocking"}, {u"待ってから", u"blocking"}, {u"終わってから", u"blocking"}, {u"順次に", u"blocking"}, {u"終わるまで待つ", u"blocking"}, {u"block", u"blocking"}, {u"in order", u"blocking"}, {u"in turn", u"blocking"}, {u"sequential", u"blocking"}, {u"sequentially", u"blocking"}, {u"one by one", u"blocking"},
};

// Words of numbers; the digits stand for them.
inline constexpr EverydayWord kNumberWords[] = {
    {u"one", u"1"}, {u"two", u"2"}, {u"three", u"3"}, {u"four", u"4"}, {u"five", u"5"}, {u"six", u"6"}, {u"seven", u"7"},
    {u"eight", u"8"}, {u"nine", u"9"}, {u"ten", u"10"}, {u"fifteen", u"15"}, {u"twenty", u"20"}, {u"thirty", u"30"},
    {u"forty-five", u"45"}, {u"sixty", u"60"}, {u"ninety", u"90"}, {u"half a", u"0.5"}, {u"half", u"0.5"},
    {u"once", u"1"}, {u"twice", u"2"},
};

// What stands behind numbers; the rows are those of numbers with such a unit.
inline constexpr EverydayWord kUnitWords[] = {
    {u"steps", u"step"}, {u"step", u"step"}, {u"歩", u"step"}, {u"paces", u"step"}, {u"pace", u"step"},
    {u"degrees", u"degree"}, {u"degree", u"degree"}, {u"deg", u"degree"}, {u"度", u"degree"}, {u"°", u"degree"}, {u"℃", u"degree"},
    {u"seconds", u"second"}, {u"second", u"second"}, {u"secs", u"second"}, {u"sec", u"second"}, {u"s", u"second"},
    {u"秒", u"second"}, {u"秒間", u"second"}, {u"びょう", u"second"},
};

// Words that a command can do without.
inline constexpr std::u16string_view kFillers[] = {
    u"the", u"a", u"an", u"to", u"of", u"on", u"at", u"for", u"and", u"please", u"then", u"with", u"in", u"is", u"his", u"her", u"&", u"+",
    u"に", u"を", u"で", u"と", u"の", u"は", u"が", u"へ", u"て", u"して", u"する", u"させる", u"ください", u"下さい", u"お願いします",
    u"から", u"します", u"している", u"しながら", u"ながら", u"だけ", u"も", u"さん", u"そして", u"ほど",
};
// clang-format on

} // namespace tvml

#endif
