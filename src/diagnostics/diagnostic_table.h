// The diagnostics that this system can give: one table for the checks, the
// documentation, the list of codes and the tests.
#ifndef TVML_DIAGNOSTICS_DIAGNOSTIC_TABLE_H
#define TVML_DIAGNOSTICS_DIAGNOSTIC_TABLE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

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
//  bareScript   a script without description and vocabulary.
enum class ExampleKind : std::uint8_t {
    script,
    description,
    vocabulary,
    noVocabulary,
    playLine,
    bareScript
};

struct DiagnosticRow {
    std::string_view code; // never reused for another meaning
    Severity severity;
    std::u16string_view message; // %1 and so on stand for what it is about
    std::u16string_view explanation;
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
    DiagnosticRow{"S101", Severity::error, u"\"%1\" is no command; the line writes nothing",
     u"What stands between the brackets is neither a command word of the vocabulary, nor an English command name, nor a pose of the description. Correct the word; the closest ones are suggested.",
     ExampleKind::script, u"Ａ：（お辞義）\n"},
    DiagnosticRow{"S102", Severity::error, u"\"%1\" is no adverb; the command is not carried out",
     u"Behind the first separator of a command only adverbs may stand: a speed, a degree, or how to wait. One item that is none makes the whole command void.",
     ExampleKind::script, u"Ａ：（お辞儀、早く）\n"},
    DiagnosticRow{"S103", Severity::error, u"an adverb is missing behind the separator; the command is not carried out",
     u"A separator promises an adverb. Write one or remove the separator.",
     ExampleKind::script, u"Ａ：（お辞儀、）\n"},
    DiagnosticRow{"S104", Severity::error, u"a separator is missing before \"%1\"; the command is not carried out",
     u"A command and its adverbs stand apart by a comma. Without it, what follows is not read as an adverb.",
     ExampleKind::script, u"Ａ：（bow slow）\n"},
    DiagnosticRow{"S105", Severity::error, u"a colon is missing behind the command; it is not carried out",
     u"Commands that name a set, a sound file, a voice or a model have a colon before the name.",
     ExampleKind::script, u"（セット　ニューススタジオ）\n"},
    DiagnosticRow{"S106", Severity::error, u"\"%1\" is no number that the command takes; it is not carried out",
     u"Numbers are written in digits, ASCII or full-width, with one point at most and no zero in front. A wait cannot be negative.",
     ExampleKind::script, u"Ａ：（三歩歩く）\n"},
    DiagnosticRow{"S107", Severity::error, u"the number lacks its unit \"%1s\"; the command is not carried out",
     u"In English a number has its unit behind it: \"walk 3 steps\", \"turn 90 degrees\", \"wait 2 seconds\".",
     ExampleKind::script, u"Ａ：（walk 3）\n"},
    DiagnosticRow{"S108", Severity::error, u"\"%1\" is no character's letter; the command is not carried out",
     u"Characters are named by one Latin letter, A to Z, half or full width. A shot of two has two letters side by side.",
     ExampleKind::script, u"（１のアップショット）\n"},
    DiagnosticRow{"S109", Severity::warning, u"\"%1\" is no character of this programme, which has %2; %3 used instead",
     u"The description says how many characters a programme has. A command that names another one is carried out with one that exists.",
     ExampleKind::script, u"（Ｄのアップショット）\n"},
    DiagnosticRow{"S110", Severity::warning, u"\"%1\" is no character of this programme, which has %2; A takes the line instead",
     u"The description says how many characters a programme has. Lines of another one are given to A.",
     ExampleKind::script, u"Ｄ：こんにちは。\n"},
    DiagnosticRow{"S111", Severity::error, u"a character cannot look at itself; the command is not carried out",
     u"The letter before the colon and the letter in the command name the same character.",
     ExampleKind::script, u"Ａ：（Ａを見る）\n"},
    DiagnosticRow{"S112", Severity::warning, u"\"%1\" has no effect here: %2",
     u"The command is known, but what it needs is not there: what it removes is not on screen, or the programme has too few or too many characters for it.",
     ExampleKind::script, u"（画像オフ）\n"},
    DiagnosticRow{"S113", Severity::error, u"character %1 has no model in the description; what it says or does is lost",
     u"A character speaks with the values of its model. Add a <model_for_char> for the letter to the description. Told once for a character.",
     ExampleKind::script, u"Ｃ：こんにちは。\n"},
    DiagnosticRow{"S114", Severity::error, u"the description has no set \"%1\"; the set does not change",
     u"Sets are the lines of <set> in the description, by Japanese or English name.",
     ExampleKind::script, u"（セット：スタジオ）\n"},
    DiagnosticRow{"S115", Severity::error, u"character %2 has no model \"%1\"; the model does not change",
     u"Models are the <model_for_char> elements of the description, by letter and Japanese or English name.",
     ExampleKind::script, u"Ａ：（キャラクター：着物）\n"},
    DiagnosticRow{"S116", Severity::error, u"\"%1\" is no voice; the voice does not change",
     u"The voices are fixed: men, women, young, old and children, Japanese, English or of no named language.",
     ExampleKind::script, u"Ａ：（声質：日本語男）\n"},
    DiagnosticRow{"S117", Severity::warning, u"\"%1\" has no colon behind it; the line is spoken",
     u"A marker word makes a line a tag only with a colon. Without it the line is speech.",
     ExampleKind::script, u"タイトル　夕方のニュース\n"},
    DiagnosticRow{"S118", Severity::warning, u"\"%1\" is no tag; the line is spoken",
     u"The line begins like a tag, but with a word that is no marker and no tag of the description.",
     ExampleKind::script, u"サブタイル：きょうの話題\n"},
    DiagnosticRow{"S119", Severity::warning, u"\"%1\" has no colon behind it; %2 speaks the whole line, the letter included",
     u"A speaker is a letter and a colon. Without the colon the line has no speaker and is given to A.",
     ExampleKind::script, u"Ｂ　こんにちは。\n"},
    DiagnosticRow{"S120", Severity::note, u"\"%1\" names no speaker; A speaks the whole line, the name included",
     u"Speakers are single letters. A name before a colon is part of the speech.",
     ExampleKind::script, u"田中：こんにちは。\n"},
    DiagnosticRow{"S121", Severity::warning, u"\"%1\" is no colour; it is shown as part of the super",
     u"A colour in brackets at the end of a super colours it. Other bracketed words are shown.",
     ExampleKind::script, u"スーパー：本日開店（紅）\n"},
    DiagnosticRow{"S122", Severity::warning, u"\"%1\" is neither a caption nor a way to wait; it is spoken",
     u"Brackets at the end of a speech hold a caption, written with the caption word and a colon, or a word that says whether to wait. All other brackets are spoken.",
     ExampleKind::script, u"Ａ：こんにちは。（字募：ご挨拶）\n"},
    DiagnosticRow{"S123", Severity::warning, u"nothing opens the bracket that closes here; the line is spoken with it",
     u"The opening bracket of a command, a caption or a wait word is missing.",
     ExampleKind::script, u"Ａ：お辞儀）\n"},
    DiagnosticRow{"S124", Severity::warning, u"nothing closes the bracket that opens here; the line is spoken with it",
     u"A command begins and ends with brackets; a caption ends with the line's last bracket.",
     ExampleKind::script, u"Ａ：（お辞儀\n"},
    DiagnosticRow{"S125", Severity::warning, u"these brackets make no command; \"%1\" is spoken",
     u"Commands stand in round brackets, half or full width.",
     ExampleKind::script, u"Ａ：【お辞儀】\n"},
    DiagnosticRow{"S126", Severity::warning, u"\"%1\" is spoken, since a command needs a line of its own",
     u"Write the command on its own line, with the speaker before it, and the speech on the next one.",
     ExampleKind::script, u"Ａ：（お辞儀）こんにちは。\n"},
    DiagnosticRow{"S127", Severity::warning, u"the caption makes this command speech; \"%1\" is not carried out",
     u"A line in brackets that holds a caption is speech, whatever else it holds. Leave the caption out of the command.",
     ExampleKind::script, u"Ａ：（サウンドファイル：hello.wav（字幕：こんにちは））\n"},
    DiagnosticRow{"S128", Severity::error, u"no command carries out the shot \"%1\"; the line writes nothing",
     u"The vocabulary knows bust, waist and full shots, but nothing is written for them. Use a close shot, a two-shot or a long shot.",
     ExampleKind::script, u"（Ａのバストショット）\n"},
    DiagnosticRow{"S129", Severity::error, u"\"%1\" is a command of the studio and takes no speaker; the line writes nothing",
     u"Cameras, pictures, supers, sets, lights and waits belong to no character. Write the line without the letter and the colon.",
     ExampleKind::script, u"Ａ：（字幕オン）\n"},
    DiagnosticRow{"S130", Severity::error, u"\"%1\" cannot stand behind this command; it is not carried out",
     u"Only commands that name a set, a sound file, a voice or a model have a colon, and those that leave out the opening or the ending have no adverbs either.",
     ExampleKind::script, u"（オープニングオフ、同時）\n"},
    DiagnosticRow{"S131", Severity::warning, u"\"%1\" names one character twice; the shot shows A and B",
     u"A shot of two has two different letters.",
     ExampleKind::script, u"（ＣＣのツーショット）\n"},
    DiagnosticRow{"S132", Severity::warning, u"the wait has no number of seconds; it is written without one",
     u"A separator right behind \"wait \" leaves no place for a number. Remove the blank for the ordinary wait of one second.",
     ExampleKind::script, u"（wait , slow）\n"},
    DiagnosticRow{"S133", Severity::warning, u"the speech is cut in the middle of a word behind \"%1\"",
     u"Long sentences are spoken in pieces that end at commas. One clause was longer than a piece can be; give it a comma or make two sentences.",
     ExampleKind::script, u"Ａ：きょうの夕方から夜にかけて市内のあちらこちらで行われる予定の花火大会とその会場の周りで行われる交通規制についてくわしくお伝えします。\n"},
    DiagnosticRow{"S134", Severity::note, u"the title card has no %1",
     u"A title and a subtitle on neighbouring lines make one card. This card shows one text alone.",
     ExampleKind::script, u"タイトル：夕方のニュース\n"},
    DiagnosticRow{"S135", Severity::warning, u"the %1 does not follow its %2 of line %3 directly; each becomes a card of its own",
     u"A title and a subtitle make one card only on neighbouring lines; an empty line parts them, too.",
     ExampleKind::script, u"タイトル：夕方のニュース\n\nサブタイトル：港町から\n"},
    DiagnosticRow{"S136", Severity::warning, u"nothing stands behind the speaker; the line writes nothing",
     u"The line has a letter and a colon and ends there.",
     ExampleKind::script, u"Ａ：\n"},
    DiagnosticRow{"S137", Severity::warning, u"\"%1\" has no file behind its colon",
     u"The line is written with an empty file name, which a player cannot show or play.",
     ExampleKind::script, u"サブイメージ：\n"},
    DiagnosticRow{"S138", Severity::error, u"no template can show <%1>; the line writes nothing",
     u"The description has no such element, and the built-in one needs the font that the vocabulary names.",
     ExampleKind::bareScript, u"title: Evening news\nsubtitle: From the harbour\n"},
    DiagnosticRow{"S139", Severity::error, u"\"%1\" is a pose of %2, not of %3; the line writes nothing",
     u"A pose with a character attribute belongs to that character alone. Leave the attribute out of the description for a pose of all. A command without a speaker is A's.",
     ExampleKind::script, u"Ａ：（敬礼）\n"},
    DiagnosticRow{"S140", Severity::error, u"\"%1\" is a tag, which stands without brackets; the line writes nothing",
     u"Titles, supers, pictures, music and the tags of the description are lines of their own, without brackets and speaker.",
     ExampleKind::script, u"（ＢＧＭ：theme.wav）\n"},
    DiagnosticRow{"S141", Severity::error, u"the speaker \"%1\" stands between the brackets; the line writes nothing",
     u"The letter and the colon stand in front of the bracket that opens the command.",
     ExampleKind::script, u"（Ａ：お辞儀）\n"},
    DiagnosticRow{"S142", Severity::warning, u"\"%1\" is a tag, which takes no speaker; the line is spoken",
     u"Titles, supers, pictures, music and the tags of the description belong to no character. Write the line without the letter and its colon.",
     ExampleKind::script, u"Ａ：スーパー：本日開店\n"},
    DiagnosticRow{"S143", Severity::warning, u"the speech is cut in the middle of a character behind \"%1\"",
     u"Long sentences are spoken in pieces that end at commas. One clause was longer than a piece can be, and the cut fell between the two units of one character, which UTF-8 cannot keep; give it a comma or make two sentences.",
     ExampleKind::script, u"Ａ：あ𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟𠮟。\n"},

    // ---- V: the vocabulary
    DiagnosticRow{"V201", Severity::error, u"the key \"%1\" is missing; it and the %2 keys behind it are not loaded",
     u"Keys are loaded in a fixed order, and loading ends at the first one that is missing or has no value. Scripts cannot use the words behind it. The place is that of the key before it, or of the section.",
     ExampleKind::vocabulary, u";title=タイトル\n"},
    DiagnosticRow{"V202", Severity::error, u"the word of \"%1\" is longer than 126 units; it and the %2 keys behind it are not loaded",
     u"Keys are loaded in a fixed order, and loading ends at the first word that is too long. Shorten it.",
     ExampleKind::vocabulary, u"title=タイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトルタイトル\n"},
    DiagnosticRow{"V203", Severity::warning, u"\"%1\" has %2 units, but its readers take %3 off a line",
     u"The readers of a script remove a fixed number of units for this word. A shorter word loses units of what follows, a longer one leaves its end behind.",
     ExampleKind::vocabulary, u"title=題名\n"},
    DiagnosticRow{"V204", Severity::warning, u"\"%1\" is never recognised as \"%2\", since \"%3\" comes before it",
     u"Words are tried in a fixed order, and the first that fits wins. This word equals an earlier one or begins with it.",
     ExampleKind::vocabulary, u"white=黒\n"},
    DiagnosticRow{"V205", Severity::warning, u"the word of \"%1\" holds \"%2\", which scripts use as a letter or digit of their own",
     u"ASCII letters and digits are always read as such. As a separator, bracket, digit or letter form they change the meaning of ordinary text.",
     ExampleKind::vocabulary, u"hyphen=x\n"},
    DiagnosticRow{"V206", Severity::warning, u"the word of \"%1\" is empty",
     u"An empty word is found at the start of every text, so it can hide all words that are tried after it; as a set of characters it has none.",
     ExampleKind::vocabulary, u"white=\n"},
    DiagnosticRow{"V207", Severity::warning, u"the word of \"%1\" has %2 units; only one counts",
     u"Brackets, separators, the colon, digits, sentence ends and letters are single units of a script.",
     ExampleKind::vocabulary, u"hyphen=マイナス\n"},
    DiagnosticRow{"V208", Severity::warning, u"\"%1\" is never found, since it does not begin with the sentence end \"%2\"",
     u"The sentence ends before a closing quote or bracket are looked up where a plain sentence end stands.",
     ExampleKind::vocabulary, u"kuten_kakko1=．）\n"},
    DiagnosticRow{"V209", Severity::warning, u"\"%1\" is no key of the vocabulary",
     u"Nothing reads this entry. A misspelt key also leaves its right name missing.",
     ExampleKind::vocabulary, u"titel=タイトル\n"},
    DiagnosticRow{"V210", Severity::warning, u"the key \"%1\" stands here again; line %2 counts",
     u"The first entry of a key is read, the others are not.",
     ExampleKind::vocabulary, u"red=赤\nred=紅\n"},

    // ---- D: the description
    DiagnosticRow{"D301", Severity::warning, u"<numofchar> has no number; the programme has two characters",
     u"Write how many characters the programme has, 1 to 26.",
     ExampleKind::description, u"<staging>\n<numofchar></numofchar>\n</staging>\n"},
    DiagnosticRow{"D302", Severity::warning, u"\"%1\" is no number from 1 to 26; the programme has two characters",
     u"Write the number in ASCII digits without a zero in front.",
     ExampleKind::description, u"<staging>\n<numofchar>three</numofchar>\n</staging>\n"},
    DiagnosticRow{"D303", Severity::error, u"<%1> has no text and is passed over",
     u"The text must come first in the element: behind a comment, a CDATA section or another element it is not read.",
     ExampleKind::description, u"<staging>\n<bow><!-- deep --></bow>\n</staging>\n"},
    DiagnosticRow{"D304", Severity::warning, u"<%1> holds nothing but blanks",
     u"Full-width blanks and tabs are no text. The built-in staging stands in.",
     ExampleKind::description, u"<staging>\n<opening>　</opening>\n</staging>\n"},
    DiagnosticRow{"D305", Severity::error, u"<title> lacks a font attribute and is passed over",
     u"A title template needs titlefont_ja, titlefont_en, subtitlefont_ja and subtitlefont_en.",
     ExampleKind::description, u"<staging>\n<title titlefont_ja=\"ＭＳ 明朝\">\ndrawing: settext( name=TITLETEXT, text=\"$TITLE\" )\ndrawing: settext( name=TITLETEXT, text=\"$SUBTITLE\" )\n</title>\n</staging>\n"},
    DiagnosticRow{"D306", Severity::error, u"a font of <title> is blank; the template is passed over",
     u"Each of the four font attributes needs a name.",
     ExampleKind::description, u"<staging>\n<title titlefont_ja=\"　\" titlefont_en=\"Century\" subtitlefont_ja=\"　\" subtitlefont_en=\"Century\">\ndrawing: settext( name=TITLETEXT, text=\"$TITLE\" )\ndrawing: settext( name=TITLETEXT, text=\"$SUBTITLE\" )\n</title>\n</staging>\n"},
    DiagnosticRow{"D307", Severity::error, u"<model_for_char> lacks an attribute and is passed over",
     u"A model needs character, japanesename, englishname and default.",
     ExampleKind::description, u"<staging>\n<numofchar>1</numofchar>\n<model_for_char character=\"A\" japanesename=\"スーツ\" englishname=\"suit\">\ncharacter: openmodel( name=A, filename=\"suit.bm\" )\n</model_for_char>\n</staging>\n"},
    DiagnosticRow{"D308", Severity::error, u"a name of <model_for_char> is blank; the model is passed over",
     u"A model needs a Japanese and an English name.",
     ExampleKind::description, u"<staging>\n<numofchar>1</numofchar>\n<model_for_char character=\"A\" japanesename=\"　\" englishname=\"suit\" default=\"yes\">\ncharacter: openmodel( name=A, filename=\"suit.bm\" )\n</model_for_char>\n</staging>\n"},
    DiagnosticRow{"D309", Severity::error, u"<%1> lacks a name and is passed over",
     u"A pose and a tag need japanesename and englishname.",
     ExampleKind::description, u"<staging>\n<tag japanesename=\"速報\">\nsuper: on( text=\"$1\" )\n</tag>\n</staging>\n"},
    DiagnosticRow{"D310", Severity::error, u"\"%1\" is no line of a set list and is passed over",
     u"A line names a set in Japanese, in English and by its file, parted by the separator of the vocabulary (::).",
     ExampleKind::description, u"<staging>\n<set>\n体育館::Gym\n</set>\n</staging>\n"},
    DiagnosticRow{"D311", Severity::error, u"the set name \"%1\" is taken by an earlier line; this one is passed over",
     u"Japanese and English set names are unique.",
     ExampleKind::description, u"<staging>\n<set>\n体育館::Gym::gym.obj\n体育館::Hall::hall.obj\n</set>\n</staging>\n"},
    DiagnosticRow{"D312", Severity::error, u"the tag name \"%1\" is taken by an earlier tag; this one is passed over",
     u"Japanese and English tag names are unique.",
     ExampleKind::description, u"<staging>\n<tag japanesename=\"速報\" englishname=\"flash\">\nsuper: on( text=\"$1\" )\n</tag>\n<tag japanesename=\"速報\" englishname=\"news\">\nsuper: on( text=\"$1\" )\n</tag>\n</staging>\n"},
    DiagnosticRow{"D313", Severity::warning, u"\"%1\" is no character of the programme; the element counts for A",
     u"A character attribute is a letter of the programme, whose size <numofchar> gives.",
     ExampleKind::description, u"<staging>\n<numofchar>2</numofchar>\n<bow character=\"C\">\ncharacter: bow( name=$1 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D314", Severity::warning, u"no <numofchar> comes before this; character \"%1\" counts as A",
     u"Letters are held against the number of characters that is known so far. Write <numofchar> first.",
     ExampleKind::description, u"<staging>\n<bow character=\"B\">\ncharacter: bow( name=$1 )\n</bow>\n<numofchar>2</numofchar>\n</staging>\n"},
    DiagnosticRow{"D315", Severity::warning, u"<%1> has no meaning and is ignored",
     u"The names of elements are fixed and in lower case; the closest ones are suggested.",
     ExampleKind::description, u"<staging>\n<bowing>\ncharacter: bow( name=$1 )\n</bowing>\n</staging>\n"},
    DiagnosticRow{"D316", Severity::warning, u"<%1> does not stand directly under <staging> and is ignored",
     u"Only children of <staging> are read; inside another element an element also ends that one's text.",
     ExampleKind::description, u"<staging>\n<opening>\nwait( time=1 )\n<bow>\ncharacter: bow( name=$1 )\n</bow>\n</opening>\n</staging>\n"},
    DiagnosticRow{"D317", Severity::error, u"the description has no <staging> element; nothing of it is read",
     u"All elements stand under one element named staging, in lower case.",
     ExampleKind::description, u"<Staging>\n<numofchar>2</numofchar>\n</Staging>\n"},
    DiagnosticRow{"D318", Severity::error, u"the XML is broken here (%1); %2 elements before it were read, nothing behind it",
     u"The description must be well-formed XML without an XML declaration. What stands before the fault counts, the rest is lost.",
     ExampleKind::description, u"<staging>\n<numofchar>2</numofchar>\n<opening>\nwait( time=1 )\n</openning>\n</staging>\n"},
    DiagnosticRow{"D319", Severity::warning, u"<%2> has no attribute \"%1\"; it is ignored",
     u"The names of attributes are fixed and in lower case; the closest ones are suggested.",
     ExampleKind::description, u"<staging>\n<numofchar>2</numofchar>\n<bow charakter=\"A\">\ncharacter: bow( name=$1 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D320", Severity::warning, u"\"%1\" is not understood here and counts as \"%2\"",
     u"Switches are \"toggle\" or \"random\"; default is \"yes\" or \"no\"; a shot of two belongs to two different letters or to all.",
     ExampleKind::description, u"<staging>\n<bow_switch>togle</bow_switch>\n</staging>\n"},
    DiagnosticRow{"D321", Severity::warning, u"nothing fills \"%1\" in <%2>",
     u"Each element has its own placeholders; the others go to the player as they are. The closest built-in text shows which ones there are.",
     ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=$1, speed=$2, level=$3, wait=$5 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D322", Severity::warning, u"<%1> never uses \"%2\", though it serves more than one character",
     u"A text for all characters names the one at hand by its placeholder; without it the same one always acts.",
     ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=A )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D323", Severity::warning, u"<%1> has no place for \"%2\"; that text is lost",
     u"Talk needs the speech; a title template needs, for each of its texts, a drawing command that sets the text of TITLETEXT and holds the placeholder on the same line.",
     ExampleKind::description, u"<staging>\n<talk>\ncharacter: talk( name=$1, text=\"\" )\n</talk>\n</staging>\n"},
    DiagnosticRow{"D324", Severity::warning, u"<%1> of line %2 is replaced here",
     u"This element counts once; a later one takes the place of an earlier one.",
     ExampleKind::description, u"<staging>\n<opening>\nwait( time=1 )\n</opening>\n<opening>\nwait( time=2 )\n</opening>\n</staging>\n"},
    DiagnosticRow{"D325", Severity::warning, u"this variant of <%1> can never be chosen: %2",
     u"A variant for all characters serves those that have none of their own; some commands exist only in programmes of a certain size.",
     ExampleKind::description, u"<staging>\n<numofchar>1</numofchar>\n<bow character=\"A\">\ncharacter: bow( name=$1 )\n</bow>\n<bow>\ncharacter: bow( name=$1 )\n</bow>\n</staging>\n"},
    DiagnosticRow{"D326", Severity::warning, u"no line of a script can reach this model: the programme has %1",
     u"The letter of the model lies beyond the last character, or is none and counts as A.",
     ExampleKind::description, u"<staging>\n<numofchar>1</numofchar>\n<model_for_char character=\"A\" japanesename=\"スーツ\" englishname=\"suit\" default=\"yes\">\ncharacter: openmodel( name=A, filename=\"suit.bm\" )\n</model_for_char>\n<model_for_char character=\"B\" japanesename=\"背広\" englishname=\"blazer\" default=\"yes\">\ncharacter: openmodel( name=B, filename=\"blazer.bm\" )\n</model_for_char>\n</staging>\n"},
    DiagnosticRow{"D327", Severity::warning, u"character %1 has no model; it cannot speak",
     u"Every character of the programme needs a <model_for_char>.",
     ExampleKind::description, u"<staging>\n<numofchar>2</numofchar>\n<model_for_char character=\"A\" japanesename=\"スーツ\" englishname=\"suit\" default=\"yes\">\ncharacter: openmodel( name=A, filename=\"suit.bm\" )\n</model_for_char>\n</staging>\n"},
    DiagnosticRow{"D328", Severity::warning, u"the brackets of this line do not balance",
     u"The TVML of a template goes to the player as it is.",
     ExampleKind::description, u"<staging>\n<bow>\ncharacter: bow( name=$1\n</bow>\n</staging>\n"},
    DiagnosticRow{"D329", Severity::warning, u"the quotes of this line do not balance",
     u"The TVML of a template goes to the player as it is.",
     ExampleKind::description, u"<staging>\n<ending>\nsound: playfile( filename=\"end.wav )\n</ending>\n</staging>\n"},
    DiagnosticRow{"D330", Severity::warning, u"<setting> has no line \"skipscript( switch=on )\"; the characters' models are not set up",
     u"The models of the characters are set up right behind that line.",
     ExampleKind::description, u"<staging>\n<setting>\nset: change( name=Studio )\n</setting>\n</staging>\n"},
    DiagnosticRow{"D331", Severity::warning, u"scripts cannot use the name \"%1\": %2",
     u"A pose is looked up by what stands before the first separator, without blanks at its ends, and only when no command has that word. A tag name is held against the trimmed line.",
     ExampleKind::description, u"<staging>\n<pose japanesename=\"お辞儀\" englishname=\"deepbow\">\ncharacter: gesture( name=$1 )\n</pose>\n</staging>\n"},
    DiagnosticRow{"D332", Severity::warning, u"the text of <%1> ends here; what stands behind the %2 is not read",
     u"An element's text is what stands before its first comment or CDATA section. Write comments before the element, and & and < as references.",
     ExampleKind::description, u"<staging>\n<ending>\nwait( time=1 )\n<!-- then -->\nsound: stop()\n</ending>\n</staging>\n"},

    // ---- F: files and calls
    DiagnosticRow{"F401", Severity::error, u"no vocabulary: the file is missing or has no section [KEYWORD_STRING]",
     u"\"keyword.ini\" is looked for in the folder of the program. Without it scripts can use English names only.",
     ExampleKind::noVocabulary, u"[KEYWORDS]\ntitle=タイトル\n"},
    DiagnosticRow{"F402", Severity::error, u"the script ends at the character U+0000 in this line",
     u"What stands behind it is not converted. The file may be damaged or in another encoding.",
     ExampleKind::script, wholeText(u"Ａ：こんにちは。\0Ｂ：こんにちは。\n")},
    DiagnosticRow{"F403", Severity::error, u"the description ends at the character U+0000 in this line",
     u"What stands behind it is not read. The file may be damaged or in another encoding.",
     ExampleKind::description, wholeText(u"<staging>\n<numofchar>2</numofchar>\n</staging>\n\0<!-- end -->\n")},
    DiagnosticRow{"F404", Severity::warning, u"line %1 lies outside the script, whose last line is %2",
     u"The line numbers for playing a part of the programme count from 1.",
     ExampleKind::playLine, u"Ａ：こんにちは。\n"},
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
