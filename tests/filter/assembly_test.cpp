// The set-up, the opening, the body and the ending as one script.
#include <random>

#include "support/rows.h"

namespace tvml {
namespace {

TEST(Assembly, Rows) {
    checkRows("filter/assembly.rows", [](const Row& row) {
        constexpr std::string_view kHeader = "//! TVML Version 3.0|";
        const std::string whole = row.whole();
        EXPECT_TRUE(whole.starts_with(kHeader));
        return whole.substr(kHeader.size());
    });
}

// Automatic gestures and camera switching are on when the set-up or the opening
// says so last, in a command that ends its line.
TEST(Assembly, ScannedState) {
    const struct {
        std::u16string_view setting;
        std::u16string_view opening;
        const char* on; // A and B when they gesture, c when the camera switches
    } rows[] = {
        {u"x", u"x", ""},
        {u"character:autogesture(name=A,switch=on)", u"x", "A"},
        {u"character:autogesture(name=A,switch=onn)", u"", ""},
        {u"character:autogesture(name=A,switch=on off)", u"", ""},
        {u"character:autogesture(name=A,switch=on|)", u"", ""},
        {u"character:autogesture(name=A,switch=)on)", u"", ""},
        {u"character:autogesture(name=A,switch=on", u"", ""},
        {u"x character　: autogesture\t( name = B , switch = on ) |y", u"x", "B"},
        {u"character:autogesture(name=A,switch=on)|character:autogesture(name=B,switch=on)",
         u"character: autogesture(name=A, switch=off)", "B"},
        {u"character:autogesture(name=A,switch=off)", u"character:autogesture(name=A,switch=on)",
         "A"},
        {u"character:autogesture(name=A,switch=on) x", u"x", ""},
        {u"character:autogesture(name=A,switch=only)|y", u"x", ""},
        {u"character:autogesture(name=A,switch=yes)", u"x", ""},
        {u"character:autogesture(name=AB,switch=on)", u"x", ""},
        {u"character:autogesture(name=a,switch=on)", u"x", ""},
        {u"character:autogesture(name=C,switch=on)", u"x", ""},
        {u"character:autogesture(name=|A,switch=on)", u"x", ""},
        {u"character:character:autogesture(name=A,switch=on)", u"x", "A"},
        {u"camera:autoswitching(switch=on)", u"x", "c"},
        {u"camera : autoswitching( switch = on )　", u"camera:autoswitching(switch=on) // x", "c"},
        {u"camera:autoswitching(switch=on)", u"camera:autoswitching(switch=off)", ""},
        {u"camera:autoswitching(switch=on)|camera:autoswitching(switch=of)", u"x", "c"},
        {u"camera:autoswitching(name=Cam,switch=on)", u"x", ""},
    };
    for (const auto& row : rows) {
        std::u16string elements = u"<nod>nod</nod><longshot>long</longshot><setting>";
        elements.append(row.setting).append(u"</setting><opening>").append(row.opening);
        Studio studio(elements.append(u"</opening>"));
        std::string on;
        on += studio.body(u"A:(nod)") == "nod|" ? "" : "A";
        on += studio.body(u"B:(nod)") == "nod|" ? "" : "B";
        on +=
            studio.body(u"(longshot)").starts_with("camera: autoswitching(switch=off)|") ? "c" : "";
        EXPECT_EQ(on, row.on) << shown(row.setting) << " / " << shown(row.opening);
    }
}

// Unfilled title lines go from the command's first unit through its line feed,
// and the search goes on one unit before: what joins may be a command again.
std::u16string removedOneByOne(std::u16string text, const KeywordTable& words) {
    for (const std::u16string_view placeholder : {u"$TITLE", u"$SUBTITLE"}) {
        std::size_t from = 0;
        for (std::size_t at = text.find(u"drawing"); at != kNone;
             at = text.find(u"drawing", from)) {
            from = at + 7;
            std::size_t next = at + 7;
            bool matches = true;
            for (const std::u16string_view item :
                 {u":", u"settext", u"(", u"name", u"=", u"TITLETEXT"}) {
                while (next < text.size() && words[u"space_tab"].holds(text[next])) {
                    ++next;
                }
                matches = matches && text.compare(next, item.size(), item) == 0;
                next += item.size();
            }
            const std::size_t end = matches ? std::min(text.find(u'\n', next), text.size()) : 0;
            const std::size_t found = matches ? text.find(placeholder, next) : kNone;
            if (found < end) {
                text.erase(at, end + 1 - at);
                from = at == 0 ? 0 : at - 1;
            }
        }
    }
    return text;
}

TEST(Assembly, RemovesUnfilledTitles) {
    const KeywordTable words = tableOf(shippedWords());
    std::mt19937 random(7);
    const auto removed = [&](std::u16string_view text) {
        TvmlScript script;
        while (!text.empty()) {
            const std::size_t units = std::min<std::size_t>(1 + random() % 40, text.size());
            script.append(std::u16string(text.substr(0, units)));
            text.remove_prefix(units);
        }
        script.removeUnfilledTitles(words, nullptr, random() % 60);
        EXPECT_EQ(script.size(), script.text().size());
        return script.text();
    };
    const struct {
        std::u16string_view text;
        const char* left;
    } rows[] = {
        {u"", ""},
        {u"a|$TITLE|b", "a|$TITLE|b"},
        {u"a|x drawing:settext(name=TITLETEXT1 $TITLE)|b|", "a|x b|"},
        {u"drawing:settext(name=TITLETEXT $SUBTITLE", ""},
        {u"drawing:settext(name=TITLETEXT|$TITLE|", "drawing:settext(name=TITLETEXT|$TITLE|"},
        {u"ddrawing:settext(name=TITLETEXT $TITLE|rawing:settext(name=TITLETEXT $TITLE|x", "x"},
        {u"ddrawing:settext(name=TITLETEXT $TITLE|rawing:settext(name=TITLETEXT $SUBTITLE|x", "x"},
        {u"drawing:settext(name=TITLETEXT $SUBTITLE|drawing:settext(name=TITLETEXT $TITLE|x", "x"},
        {u"drawing:drawing:settext(name=TITLETEXT $TITLE|x", "drawing:x"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(shown(removed(expand(row.text))), row.left) << shown(row.text);
    }
    constexpr std::u16string_view kPieces[] = {u"d",
                                               u"rawing",
                                               u"drawing",
                                               u":",
                                               u" ",
                                               u"\n",
                                               u"$TITLE",
                                               u"$SUBTITLE",
                                               u"x",
                                               u"settext(name=TITLETEXT",
                                               u"drawing:settext(name=TITLETEXT ",
                                               u":settext(name=TITLETEXT$TITLE\n"};
    for (int round = 0; round < 20'000; ++round) {
        std::u16string text;
        for (std::size_t pieces = random() % 20; pieces > 0; --pieces) {
            text += kPieces[random() % std::size(kPieces)];
        }
        ASSERT_EQ(shown(removed(text)), shown(removedOneByOne(text, words))) << shown(text);
    }
}

} // namespace
} // namespace tvml
