// Entries: the functions of the header.
#include "workloads.h"

#include <array>

namespace bench {
namespace {

constexpr std::array<const char*, 4> kSpeeches{
    "Good morning, and welcome to the evening news.",
    "The weather stays fine until Thursday, they say.",
    "Thank you, and now over to our reporter on the coast.",
    "Well, I never thought that it would be so early.",
};

std::u16string wide(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

std::u16string repeated(std::u16string_view text, std::int64_t times) {
    std::u16string result;
    result.reserve(text.size() * static_cast<std::size_t>(times));
    for (std::int64_t i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

std::u16string model(char16_t letter) {
    return u"<model_for_char character=\"" + std::u16string(1, letter) +
           u"\" japanesename=\"anchor\" englishname=\"anchor\" default=\"yes\" lipsync=\"0.8\">"
           u"character: openmodel( name=" +
           std::u16string(1, letter) + u" )</model_for_char>\n";
}

} // namespace

const std::vector<Workload>& workloads() {
    static const std::vector<Workload> kWorkloads{
        {"talk_english", u"A: Good morning, and welcome to the evening news.\n", 1},
        {"talk_japanese", u"B：おはようございます。夕方のニュースです。\n", 1},
        {"talk_long",
         u"A: When the rain came down over the hills that night, nobody in the village knew how "
         u"long it would last, and nobody, not even the old keeper of the bridge, thought of "
         u"leaving the house before the morning light. It was late.\n",
         1},
        {"talk_caption", u"A: Good morning (caption: Morning news)(no blocking)\n", 1},
        {"title_pair", u"title: Evening News\nsubtitle: The week in pictures\n", 2},
        {"title_alone", u"title: Evening News\n\n", 2},
        {"super", u"super: Live from the coast (yellow)\n", 1},
        {"left_super", u"leftsuper: Live\n", 1},
        {"main_picture", u"mainimage: coast.jpg\n", 1},
        {"sub_picture", u"subimage: coast.jpg\n", 1},
        {"embedded_tvml", u"tvml: drawing: settext( name=TITLETEXT1, text=\"$TITLE\" )\n", 1},
        {"gesture", u"A: (bow, very much)\n", 1},
        {"gesture_japanese", u"Ｂ：（お辞儀、少し）\n", 1},
        {"count", u"B: (walk 3 steps, fast)\n", 1},
        {"shot", u"(upshot of B, slow)\n", 1},
        {"settings", u"A: (speak slow)\n", 1},
        {"unrecognised", u"(dance around the desk)\n", 1},
        {"empty", u"\n", 1},
    };
    return kWorkloads;
}

std::u16string script(const Workload& workload, std::int64_t lines) {
    return repeated(workload.text, (lines + workload.lines - 1) / workload.lines);
}

std::u16string smallDescription() {
    return u"<staging><numofchar>2</numofchar><talk_switch>toggle</talk_switch>" + model(u'A') +
           model(u'B') + u"</staging>";
}

std::u16string largeDescription(std::size_t units) {
    std::u16string text = u"<staging>\n<numofchar>2</numofchar>\n" + model(u'A') + model(u'B');
    for (int number = 0; text.size() < units; ++number) {
        const std::u16string tag = wide(std::to_string(number));
        text += u"<happy character=\"A\">character: expression( name=$1, type=happy, degree=$2, "
                u"speed=$3, wait=$4 )\ncharacter: gaze( name=$1, ry=10, wait=no )</happy>\n"
                u"<bow>character: bow( name=$1, speed=$2, level=$3, wait=$4 )</bow>\n"
                u"<tag japanesename=\"tag" +
                tag + u"\" englishname=\"passage" + tag +
                u"\">sound: playfile( filename=\"$1\" )\nwait( time=1.0 )</tag>\n";
    }
    return text + u"</staging>";
}

std::u16string dialogue(std::int64_t lines) {
    std::u16string text;
    for (std::int64_t i = 0; i < lines; ++i) {
        text += i % 2 == 0 ? u"A: " : u"B: ";
        text += wide(kSpeeches[static_cast<std::size_t>(i) % kSpeeches.size()]) + u"\n";
    }
    return text;
}

std::string dialogueAsMarkdown(std::int64_t lines) {
    std::string text;
    for (std::int64_t i = 0; i < lines; ++i) {
        text += i % 2 == 0 ? "**A:** " : "**B:** ";
        text += kSpeeches[static_cast<std::size_t>(i) % kSpeeches.size()];
        text += "\n\n";
    }
    return text;
}

std::u16string programme() {
    std::u16string text;
    std::int64_t lines = 0;
    while (lines < 200) {
        for (const Workload& workload : workloads()) {
            text += workload.text;
            lines += workload.lines;
        }
        text += dialogue(20);
        lines += 20;
    }
    return text;
}

} // namespace bench
