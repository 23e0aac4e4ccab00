// Commands to the studio.
#include <algorithm>

#include "generation/commands.h"
#include "support/rows.h"

namespace tvml {
namespace {

std::u16string programme(char16_t last) {
    return std::u16string(kTwoCharacters) + tellingTemplates() + u"<numofchar>" + last +
           u"</numofchar>" + u"<set>広場::Plaza::plaza.obj</set>";
}

// What the last line of a script adds to its body.
std::string added(Studio& studio, const std::u16string& before, const std::u16string& line) {
    const std::string first = studio.body(before);
    const std::string both = studio.body(before + line);
    EXPECT_EQ(both.substr(0, first.size()), first) << shown(before + line);
    return both.substr(std::min(first.size(), both.size()));
}

struct StagingRow {
    std::u16string_view before; // lines without which the command has no effect
    char16_t last;              // number of characters
    std::u16string_view english;
    std::u16string_view japanese;
    const char* plain;
    const char* withAdverbs; // slow, no blocking; null for the same, empty when refused
};

// clang-format off
const StagingRow kRows[] = {
    {u"subimage:p|subimage:q|", u'2', u"hide picture", u"画像オフ", "hidepicture 2 $2 $3 $4 $5|", nullptr},
    {u"bgimage:p|",    u'2', u"hide bg picture", u"背景イメージを消す", "hidebgpicture 1 $2 $3 $4 $5|", nullptr},
    {u"rightimage:p|", u'2', u"hide right picture", u"右側イメージを消す", "hiderightpicture $1 $2 $3 $4 $5|", nullptr},
    {u"leftimage:p|",  u'2', u"hide left picture", u"左側イメージを消す", "hideleftpicture $1 $2 $3 $4 $5|", nullptr},
    {u"mainimage:p|",  u'2', u"back to studio", u"スタジオ戻り", "drawing: display( name=MAINIMAGEBASE, switch=off )|", nullptr},
    {u"", u'2', u"wait 3 seconds", u"３秒待つ", "wait( time=3 )|", nullptr},
    {u"", u'2', u"wait", u"待つ", "wait( time=1.0 )|", nullptr},
    {u"", u'2', u"caption on", u"字幕オン", "setcaption( switch=on, border=on )|", nullptr},
    {u"", u'2', u"caption off", u"字幕オフ", "setcaption( switch=off )|", nullptr},
    {u"leftsuper:s|",  u'2', u"left super off", u"左側スーパーオフ", "leftsuperoff $1 $2 $3 $4 $5|", nullptr},
    {u"rightsuper:s|", u'2', u"right super off", u"右側スーパーオフ", "rightsuperoff $1 $2 $3 $4 $5|", nullptr},
    {u"", u'2', u"super off", u"スーパーオフ", "superoff $1 $2 $3 $4 $5|", nullptr},
    {u"", u'2', u"opening off", u"オープニングオフ", "// Opening is off.|", ""},
    {u"", u'2', u"ending off", u"エンディングオフ", "// Ending is off.|", ""},
    {u"", u'2', u"offline", u"オフライン", "skipscript( switch=on )|", nullptr},
    {u"", u'2', u"online", u"オンライン", "skipscript( switch=off )|", nullptr},
    {u"", u'2', u"set: Plaza", u"セット：広場", "// Initial set is set to \"Plaza.\"|", nullptr},
    {u"", u'2', u"daylight", u"昼", "// Initial lighting is set to \"daylight.\"|", nullptr},
    {u"", u'2', u"night", u"夜", "// Initial lighting is set to \"night.\"|", nullptr},
    {u"", u'2', u"candlelight", u"ろうそく", "// Initial lighting is set to \"candlelight.\"|", nullptr},
    {u"", u'2', u"light off", u"明かりを消す", "// Initial lighting is set to \"light off.\"|", nullptr},
    {u"", u'2', u"upshot of B", u"Bのアップショット", "camera: switch( name=Cam )|closeup B 1.0 yes $4 $5|", "camera: switch( name=Cam )|closeup B 0.5 no $4 $5|"},
    {u"", u'1', u"upshot", u"アップショット", "camera: switch( name=Cam )|closeup A 1.0 yes $4 $5|", "camera: switch( name=Cam )|closeup A 0.5 no $4 $5|"},
    {u"", u'3', u"twoshot of CA", u"CAのツーショット", "camera: switch( name=Cam )|twoshot C A 1.0 yes $5|", "camera: switch( name=Cam )|twoshot C A 0.5 no $5|"},
    {u"", u'2', u"twoshot", u"ツーショット", "camera: switch( name=Cam )|twoshot A B 1.0 yes $5|", "camera: switch( name=Cam )|twoshot A B 0.5 no $5|"},
    {u"", u'2', u"trackshot on B", u"Bのトラックショット", "camera: switch( name=Cam )|trackshot B 1.0 yes $4 $5|", "camera: switch( name=Cam )|trackshot B 0.5 no $4 $5|"},
    {u"", u'1', u"trackshot", u"トラックショット", "camera: switch( name=Cam )|trackshot A 1.0 yes $4 $5|", "camera: switch( name=Cam )|trackshot A 0.5 no $4 $5|"},
    {u"", u'2', u"longshot", u"ロングショット", "camera: switch( name=CamOTHER )|longshot 1.0 yes $3 $4 $5|", "camera: switch( name=CamOTHER )|longshot 0.5 no $3 $4 $5|"},
    {u"", u'2', u"auto camera switching", u"カメラ自動", "camera: autoswitching(switch=on)|", nullptr},
    {u"", u'2', u"manual camera switching", u"カメラ手動", "camera: autoswitching(switch=off)|", nullptr},
};
// clang-format on

TEST(StagingCommands, EveryRowInBothLanguages) {
    for (const StagingRow& row : kRows) {
        SCOPED_TRACE(shown(row.english));
        Studio studio(programme(row.last));
        const std::u16string before = expand(row.before);
        const std::u16string english(row.english);
        const std::u16string japanese(row.japanese);
        const std::string withAdverbs = row.withAdverbs != nullptr ? row.withAdverbs : row.plain;
        EXPECT_EQ(added(studio, before, u"(" + english + u")"), row.plain);
        EXPECT_EQ(added(studio, before, u"（" + japanese + u"）"), row.plain);
        EXPECT_EQ(added(studio, before, u"( " + english + u", slow , no blocking )"), withAdverbs);
        EXPECT_EQ(added(studio, before, u"（" + japanese + u"、遅く，同時）"), withAdverbs);
        EXPECT_EQ(added(studio, before, u"(" + english + u", loudly)"), "");
        EXPECT_EQ(added(studio, before, u"(" + english + u" slow)"), "");
        EXPECT_EQ(added(studio, before, u"A:(" + english + u")"), "");
        EXPECT_EQ(row.before.empty(), added(studio, u"", u"(" + english + u")") != "");
        // Shown things are hidden once.
        EXPECT_EQ(row.before.empty(),
                  added(studio, before + u"(" + english + u")\n", u"(" + english + u")") != "");
    }
}

TEST(StagingCommands, EveryNameHasARow) {
    for (const CommandSpec& spec : kCommands) {
        const auto rows = std::ranges::count_if(kRows, [&](const StagingRow& row) {
            return row.english.starts_with(spec.name) &&
                   (spec.name.ends_with(u' ') || row.english.size() == spec.name.size() ||
                    row.english[spec.name.size()] == u':');
        });
        EXPECT_EQ(rows, spec.taker == Taker::staging ? 1 : 0) << shown(spec.name);
    }
}

TEST(StagingCommands, BuiltinTextsAreFilledWhole) {
    for (const StagingRow& row : kRows) {
        Studio studio(std::u16string(u"<numofchar>") + row.last + u"</numofchar>");
        std::u16string script(row.before);
        const std::string body = studio.body(script.append(u"(").append(row.english).append(u")"));
        EXPECT_EQ(body.find('$'), body.npos) << body;
    }
}

TEST(StagingCommands, Rows) {
    checkRows("generation/staging_commands.rows", [](const Row& row) { return row.body(); });
}

// A description always has lighting texts; tables that hold none say so.
TEST(StagingCommands, LightingWithoutText) {
    const KeywordTable words = tableOf(shippedWords());
    const TvmlIniMirvol settings(platform::system());
    tvml::Run run(words, settings, nullptr);
    run.state.talkStarted = true;
    const LineReader reader(words, run.staging);
    ScriptLine line;
    std::u16string out;
    for (const std::u16string_view text :
         {u"(daylight)", u"(night)", u"(candlelight)", u"(light off)"}) {
        reader.read(text, {u'B', {}}, line);
        generateStagingCommand(run, *line.command(), out);
    }
    EXPECT_EQ(shown(out),
              "// daylight_tvml cannot be retrieved.|// night_tvml cannot be retrieved.|"
              "// candlelight_tvml cannot be retrieved.|// lightoff_tvml cannot be retrieved.|");
}

} // namespace
} // namespace tvml
