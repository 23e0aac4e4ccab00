// Tag lines: title cards, supers, pictures, declared tags.
#include "support/rows.h"

namespace tvml {
namespace {

// A card of two lines that show number, font, size and text.
const std::u16string kCard =
    titleElement(u"drawing: settext( name=TITLETEXT$11, font name='$2' size='$3' $TITLE )|"
                 u"drawing: settext( name=TITLETEXT$12, font name='$4' size='$5' $SUBTITLE )");

TEST(TitleCards, FontsAndSizes) {
    const struct {
        std::u16string_view text;
        const char* title; // font and size
        const char* subtitle;
    } rows[] = {
        {u"abc", "'TE' size='68%'", "'SE' size='34%'"},
        {u"a{8}", "'TE' size='68%'", "'SE' size='34%'"},
        {u"a{9}", "'TE' size='48%'", "'SE' size='34%'"},
        {u"a{11}", "'TE' size='48%'", "'SE' size='34%'"},
        {u"a{12}", "'TE' size='41%'", "'SE' size='34%'"},
        {u"a{15}", "'TE' size='41%'", "'SE' size='29%'"},
        {u"あ{8}", "'TJ' size='68%'", "'SJ' size='34%'"},
        {u"あ{9}", "'TJ' size='48%'", "'SJ' size='34%'"},
        {u"あa{11}", "'TJ' size='40%'", "'SJ' size='34%'"},
        {u"a{14}", "'TE' size='41%'", "'SE' size='34%'"},
        {u"あ{15}", "'TJ' size='40%'", "'SJ' size='29%'"},
        {u"", "'TJ' size='68%'", "'SJ' size='34%'"},
    };
    Studio studio(kCard);
    for (const auto& row : rows) {
        const std::u16string text = expand(row.text);
        const std::string title =
            "drawing: settext( name=TITLETEXT11, font name=" + std::string(row.title) + " " +
            shown(text) + " )|";
        const std::string subtitle =
            "drawing: settext( name=TITLETEXT12, font name=" + std::string(row.subtitle) + " " +
            shown(text) + " )|";
        EXPECT_EQ(studio.body(u"title:" + text), title);
        EXPECT_EQ(studio.body(u"サブタイトル：" + text), subtitle);
        // the second text of a card is set as the first one is
        EXPECT_EQ(studio.body(u"title:" + text + u"|subtitle:" + text),
                  title + subtitle + "// set subtitle.|");
        EXPECT_EQ(studio.body(u"subtitle: " + text + u"|タイトル: " + text),
                  title + subtitle + "// set title.|");
    }
}

TEST(Supers, Colours) {
    Studio studio(u"<super>$3$4$5 $6$7$8 [$9]</super>");
    const struct {
        std::u16string_view english;
        std::u16string_view japanese;
        const char* values;
    } rows[] = {
        {u"black", u"黒", "0.00.00.0 1.01.01.0"},
        {u"white", u"白", "1.01.01.0 0.00.00.0"},
        {u"red", u"赤", "1.00.00.0 0.01.01.0"},
        {u"brown", u"茶色", "0.50.00.0 0.51.01.0"},
        {u"orange", u"オレンジ", "1.00.50.0 0.00.51.0"},
        {u"yellow", u"黄色", "1.01.00.0 0.00.01.0"},
        {u"purple", u"紫", "0.50.00.5 0.51.00.5"},
        {u"green", u"緑", "0.00.50.0 1.00.51.0"},
        {u"blue", u"青", "0.00.01.0 1.01.00.0"},
        {u"gray", u"灰色", "0.50.50.5 0.00.00.0"},
    };
    for (const auto& row : rows) {
        const std::string body = std::string(row.values) + " [あ ]|";
        EXPECT_EQ(studio.body(u"super:あ ( " + std::u16string(row.english) + u" )"), body);
        EXPECT_EQ(studio.body(u"スーパー：あ （" + std::u16string(row.japanese) + u"）"), body);
    }
}

TEST(Supers, Sizes) {
    Studio studio(u"<super>$2 $10 $1</super>");
    const char* sizes[] = {"119% 14", "119% 14", "70% 9",   "51% 5",   "36% 2",  "28% 0",
                           "23.5% 0", "20.5% 0", "17.5% 0", "15.8% 0", "14.1% 0"};
    const char* ascii[] = {"13.15% 0", "11.9% 0", "11.0% 0", "10.2% 0",
                           "9.4% 0",   "8.5% 0",  "7.9% 0",  "7.64% 0"};
    for (std::size_t n = 1; n <= 19; ++n) {
        const std::string japanese = n <= 10 ? sizes[n] : n <= 15 ? "9.4% 0" : "7.5% 0";
        const std::string english = n <= 10 ? sizes[n] : ascii[std::min<std::size_t>(n - 11, 7)];
        EXPECT_EQ(studio.body(u"super:" + std::u16string(n, u'あ')), japanese + " ＭＳ ゴシック|");
        EXPECT_EQ(studio.body(u"super:" + std::u16string(n, u'a')), english + " Century|");
    }
}

TEST(Pictures, MainPictureOpensItsBaseOnce) {
    const std::string base = "drawing: openbase( name=MAINIMAGEBASE, color=000000, layer=99 )|";
    const auto shows = [&](const std::string& file, bool opens) {
        return "skipscript( switch=on )|" + (opens ? base : "") +
               "drawing: setimage( name=MAINIMAGE, filename=\"" + file +
               "\", parent=MAINIMAGEBASE, aspect=fit )|captionout()|"
               "drawing: display( name=MAINIMAGEBASE, switch=on )|skipscript( switch=off )|";
    };
    Studio studio(std::u16string(kTwoCharacters) +
                  u"<tag japanesename='x' englishname='base'>$1 "
                  u"openbase( name=MAINIMAGEBASE, color=000000, layer=99 )</tag>");
    EXPECT_EQ(studio.body(u"mainimage:a$1\"|メインイメージ：b"),
              shows("a$1\"", true) + shows("b", false));
    EXPECT_EQ(studio.body(u"base:drawing:|mainimage:b"), base + shows("b", false));
    EXPECT_EQ(studio.body(u"base:drawings:|mainimage:b"),
              "drawings: openbase( name=MAINIMAGEBASE, color=000000, layer=99 )|" +
                  shows("b", true));
    // far behind, and in a line that a card completes
    std::u16string far = u"base:drawing:";
    for (int i = 0; i < 2000; ++i) {
        far += u"|tvml: some line of text";
    }
    EXPECT_EQ(studio.body(far + u"|mainimage:b").find(base, 1), std::string::npos);
    Studio titled(titleElement(u"drawing:settext(name=TITLETEXT $SUBTITLE"));
    EXPECT_EQ(titled.body(u"title:t|subtitle:drawing: openbase( name=MAINIMAGEBASE, color=000000, "
                          u"layer=99 )|mainimage:b"),
              "drawing:settext(name=TITLETEXT " + base + "// set subtitle.|" + shows("b", false));
}

TEST(TagLines, Rows) {
    checkRows("filter/tag_lines.rows", [](const Row& row) {
        constexpr std::string_view kCommand = "drawing:settext(name=TITLETEXT ";
        std::string body = row.body();
        for (std::size_t at = body.find(kCommand); at != body.npos; at = body.find(kCommand)) {
            body.replace(at, kCommand.size(), "T:");
        }
        return body;
    });
}

// The fonts are those of the template chosen last.
TEST(TitleCards, Variants) {
    Studio studio(u"<title_switch>toggle</title_switch>" + titleElement(u"a $2") +
                  u"<title titlefont_ja='1' titlefont_en='2' subtitlefont_ja='3' "
                  u"subtitlefont_en='4'>b $4</title>");
    EXPECT_EQ(studio.body(u"title:t|subtitle:s||subtitle:u|subtitle:u"),
              "a TE|// set subtitle.|b 4|a $2|");
}

} // namespace
} // namespace tvml
