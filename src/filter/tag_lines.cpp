// Entry: TagLines::write.
#include "filter/tag_lines.h"

#include <algorithm>
#include <array>
#include <optional>

#include "reading/brackets.h"
#include "reading/script_text.h"

namespace tvml {
namespace {

// clang-format off
// In the order of testing, which is not that of line kinds.
constexpr std::array<Marker, kMarkerCount> kMarkerOrder{
    Marker::title,     Marker::subtitle,   Marker::leftSuper,  Marker::rightSuper,
    Marker::super,     Marker::mainImage,  Marker::subImage,   Marker::bgImage,
    Marker::rightImage, Marker::leftImage, Marker::music,      Marker::embeddedTvml,
};

struct ColourRow {
    Key word;
    std::u16string_view english;
    std::array<std::u16string_view, 3> text; // red, green, blue
    std::array<std::u16string_view, 3> edge;
};

constexpr std::array<ColourRow, 10> kColours{{
    {u"black",  u"black",  {u"0.0", u"0.0", u"0.0"}, {u"1.0", u"1.0", u"1.0"}},
    {u"white",  u"white",  {u"1.0", u"1.0", u"1.0"}, {u"0.0", u"0.0", u"0.0"}},
    {u"red",    u"red",    {u"1.0", u"0.0", u"0.0"}, {u"0.0", u"1.0", u"1.0"}},
    {u"brown",  u"brown",  {u"0.5", u"0.0", u"0.0"}, {u"0.5", u"1.0", u"1.0"}},
    {u"orange", u"orange", {u"1.0", u"0.5", u"0.0"}, {u"0.0", u"0.5", u"1.0"}},
    {u"yellow", u"yellow", {u"1.0", u"1.0", u"0.0"}, {u"0.0", u"0.0", u"1.0"}},
    {u"purple", u"purple", {u"0.5", u"0.0", u"0.5"}, {u"0.5", u"1.0", u"0.5"}},
    {u"green",  u"green",  {u"0.0", u"0.5", u"0.0"}, {u"1.0", u"0.5", u"1.0"}},
    {u"blue",   u"blue",   {u"0.0", u"0.0", u"1.0"}, {u"1.0", u"1.0", u"0.0"}},
    {u"gray",   u"gray",   {u"0.5", u"0.5", u"0.5"}, {u"0.0", u"0.0", u"0.0"}},
}};
constexpr std::size_t kWhite = 1;
static_assert(kColours[kWhite].english == u"white");

// The size and the offset of a super by its length: the first row that is long
// enough, the last one for everything longer.
struct SuperSize {
    std::size_t units;
    std::u16string_view size;
    std::u16string_view offset;
};

constexpr std::array<SuperSize, 12> kSuperSizes{{
    {1,  u"119%",  u"14"}, {2,  u"70%",   u"9"}, {3,  u"51%",   u"5"}, {4,  u"36%",   u"2"},
    {5,  u"28%",   u"0"},  {6,  u"23.5%", u"0"}, {7,  u"20.5%", u"0"}, {8,  u"17.5%", u"0"},
    {9,  u"15.8%", u"0"},  {10, u"14.1%", u"0"}, {15, u"9.4%",  u"0"}, {kNone, u"7.5%", u"0"},
}};

constexpr std::array<SuperSize, 18> kAsciiSuperSizes{{
    {1,  u"119%",   u"14"}, {2,  u"70%",   u"9"}, {3,  u"51%",   u"5"}, {4,  u"36%",   u"2"},
    {5,  u"28%",    u"0"},  {6,  u"23.5%", u"0"}, {7,  u"20.5%", u"0"}, {8,  u"17.5%", u"0"},
    {9,  u"15.8%",  u"0"},  {10, u"14.1%", u"0"}, {11, u"13.15%", u"0"}, {12, u"11.9%", u"0"},
    {13, u"11.0%",  u"0"},  {14, u"10.2%", u"0"}, {15, u"9.4%",  u"0"}, {16, u"8.5%",  u"0"},
    {17, u"7.9%",   u"0"},  {kNone, u"7.64%", u"0"},
}};
// clang-format on

const SuperSize& superSize(std::span<const SuperSize> rows, std::size_t units) {
    return *std::find_if(rows.begin(), rows.end(),
                         [units](const SuperSize& row) { return units <= row.units; });
}

const ColourRow* findColour(std::u16string_view name, const KeywordTable& words) {
    for (const ColourRow& row : kColours) {
        if (words[row.word].equals(name) || name == row.english) {
            return &row;
        }
    }
    return nullptr;
}

const ColourRow& defaultColour(const KeywordTable& words) {
    const Word& white = words[u"white"];
    const ColourRow* row = white.loaded() ? findColour(white.textOrEmpty(), words) : nullptr;
    return row != nullptr ? *row : kColours[kWhite];
}

struct ColouredText {
    std::u16string_view text;
    const ColourRow* colour; // null for the default
};

// Takes a colour in brackets off the end of a super's text.
ColouredText readColour(const Run& run, std::u16string_view text) {
    const KeywordTable& words = run.words;
    if (!endsWithClosingBracket(text, words)) {
        return {text, nullptr};
    }
    const std::u16string_view inner = text.substr(0, text.size() - 1);
    const std::size_t open = findLastOpeningBracket(inner, words);
    if (open == kNone) {
        return {text, nullptr};
    }
    const std::u16string_view name = dropAndTrim(inner, open + 1, words);
    const ColourRow* colour = findColour(name, words);
    if (colour == nullptr) {
        run.tell(ScriptProblem::colourUnknown, name);
        return {text, nullptr};
    }
    return {inner.substr(0, open), colour};
}

// What the two texts of a title card do not have in common.
struct CardRow {
    std::int32_t RunState::*ownLine;   // last line of this kind that waits
    std::int32_t RunState::*otherLine; // of the other kind
    Placeholder fontPlaceholder;
    Placeholder sizePlaceholder;
    std::u16string TitleFonts::*fontJapanese;
    std::u16string TitleFonts::*fontEnglish;
    std::u16string_view doneLine;
};

constexpr CardRow kTitleCard{
    &RunState::titleLine,      &RunState::subtitleLine, u"$2", u"$3", &TitleFonts::titlefont_ja,
    &TitleFonts::titlefont_en, u"// set title.\n"};
constexpr CardRow kSubtitleCard{
    &RunState::subtitleLine,      &RunState::titleLine, u"$4", u"$5", &TitleFonts::subtitlefont_ja,
    &TitleFonts::subtitlefont_en, u"// set subtitle.\n"};

constexpr const CardRow& cardRow(TitleKind kind) {
    return kind == TitleKind::title ? kTitleCard : kSubtitleCard;
}

// What the file is for that a marker's line names, if it names one.
std::optional<FileUse> fileUse(Marker marker) {
    switch (marker) {
    case Marker::mainImage:
    case Marker::subImage:
    case Marker::bgImage:
    case Marker::rightImage:
    case Marker::leftImage:
        return FileUse::picture;
    case Marker::music:
        return FileUse::sound;
    default:
        return std::nullopt;
    }
}

std::u16string_view cardSize(TitleKind kind, std::u16string_view text) {
    const std::size_t units = text.size();
    if (kind == TitleKind::subtitle) {
        return units <= 14 ? u"34%" : u"29%";
    }
    return units <= 8 ? u"68%" : units <= 11 ? u"48%" : isAsciiText(text) ? u"41%" : u"40%";
}

} // namespace

void TagLines::write(std::u16string_view line, std::u16string_view untrimmed) {
    if (writeDeclaredTag(line)) {
        return;
    }
    for (const Marker marker : kMarkerOrder) {
        const std::size_t units = markerUnits(marker, line, run_.words);
        if (units != kNone) {
            writeMarker(marker, units, line, untrimmed);
            if (run_.report != nullptr) {
                run_.report->taken(TakenBy::tag, markerName(marker));
            }
            return;
        }
    }
    run_.tell(ScriptProblem::tagUntaken);
}

// ---- declared tags

bool TagLines::writeDeclaredTag(std::u16string_view line) {
    const DeclaredTags& tags = run_.staging.tags;
    return visitNamesStarting(tags.tagNames, line,
                              [&](const TextMap::value_type& entry) {
                                  return writeTagText(entry, entry.second, line);
                              }) ||
           visitNamesStarting(tags.tagTexts, line, [&](const TextMap::value_type& entry) {
               return writeTagText(entry, entry.first, line);
           });
}

bool TagLines::writeTagText(const TextMap::value_type& entry, std::u16string_view english,
                            std::u16string_view line) {
    const std::u16string_view rest = dropAndTrim(line, entry.first.size(), run_.words);
    const auto text = run_.staging.tags.tagTexts.find(english);
    if (!startsWithColon(rest, run_.words) || text == run_.staging.tags.tagTexts.end()) {
        return false;
    }
    scratch_ = text->second;
    const std::array<Filling, 1> fillings{{{u"$1", dropAndTrim(rest, 1, run_.words)}}};
    fillText(scratch_, fillings);
    body_.append(scratch_);
    if (run_.report != nullptr) {
        const auto element = run_.staging.tagElements.find(english);
        run_.report->templateChosen(
            u"tag", element == run_.staging.tagElements.end() ? 0 : element->second);
        run_.report->taken(TakenBy::tag, english);
    }
    return true;
}

// ---- markers

void TagLines::writeMarker(Marker marker, std::size_t units, std::u16string_view line,
                           std::u16string_view untrimmed) {
    const std::u16string_view text =
        dropAndTrim(dropAndTrim(line, units, run_.words), 1, run_.words);
    RunState& state = run_.state;
    if (const std::optional<FileUse> use = fileUse(marker)) {
        run_.tellFile(*use, text);
    }
    switch (marker) {
    case Marker::title:
        return writeTitleText(TitleKind::title, text);
    case Marker::subtitle:
        return writeTitleText(TitleKind::subtitle, text);
    case Marker::leftSuper:
        state.leftSuperShown = true;
        return writeSimple(SimpleElement::leftsuper, text);
    case Marker::rightSuper:
        state.rightSuperShown = true;
        return writeSimple(SimpleElement::rightsuper, text);
    case Marker::super:
        return writeSuper(units, untrimmed);
    case Marker::mainImage:
        return writeMainPicture(text);
    case Marker::subImage:
        state.subImageShown = true;
        return writeNumberedPicture(SimpleElement::subimage, state.subImageCount, text);
    case Marker::bgImage:
        state.bgImageShown = true;
        return writeNumberedPicture(SimpleElement::bgimage, state.bgImageCount, text);
    case Marker::rightImage:
        state.rightImageShown = true;
        return writeSimple(SimpleElement::rightimage, text);
    case Marker::leftImage:
        state.leftImageShown = true;
        return writeSimple(SimpleElement::leftimage, text);
    case Marker::music:
        return writeSimple(SimpleElement::bgm, text);
    case Marker::embeddedTvml:
        scratch_.assign(text).append(u"\n");
        return body_.append(scratch_);
    }
}

void TagLines::writeTemplate(SimpleElement element, std::span<const Filling> fillings) {
    const Variant* variant = run_.select(element);
    if (variant != nullptr) {
        scratch_.clear();
        variant->text.fill(fillings, scratch_);
        body_.append(scratch_);
    }
}

void TagLines::writeSimple(SimpleElement element, std::u16string_view text) {
    const std::array<Filling, 1> fillings{{{u"$1", text}}};
    writeTemplate(element, fillings);
}

void TagLines::writeNumberedPicture(SimpleElement element, std::int32_t& count,
                                    std::u16string_view file) {
    const std::u16string before = decimalText(count);
    const std::u16string now = decimalText(++count);
    const std::array<Filling, 3> fillings{{{u"$1", now}, {u"$2", file}, {u"$3", before}}};
    writeTemplate(element, fillings);
}

void TagLines::writeMainPicture(std::u16string_view file) {
    scratch_ = u"skipscript( switch=on )\n";
    if (!body_.holdsMainImageBase()) {
        scratch_.append(kMainImageBase).append(u"\n");
    }
    scratch_.append(u"drawing: setimage( name=MAINIMAGE, filename=\"").append(file);
    scratch_ += u"\", parent=MAINIMAGEBASE, aspect=fit )\n"
                u"captionout()\n"
                u"drawing: display( name=MAINIMAGEBASE, switch=on )\n"
                u"skipscript( switch=off )\n";
    run_.state.mainImageShown = true;
    body_.append(scratch_);
}

// ---- title cards

void TagLines::writeTitleText(TitleKind kind, std::u16string_view given) {
    const CardRow& row = cardRow(kind);
    RunState& state = run_.state;
    std::u16string text(given);
    replaceDoubleQuotes(text);
    const std::int32_t other = state.*row.otherLine;
    const bool starts = other == 0 || state.*row.ownLine != 0 || other + 1 != state.lineNumber;
    if (run_.report != nullptr) {
        run_.report->titleCard(
            markerName(kind == TitleKind::title ? Marker::title : Marker::subtitle), !starts);
    }
    if (starts) {
        startCard(kind, text);
        state.*row.ownLine = state.lineNumber;
        state.*row.otherLine = 0;
        return;
    }
    body_.completeCard({kind, row.fontPlaceholder,
                        fonts_.*(isAsciiText(text) ? row.fontEnglish : row.fontJapanese),
                        row.sizePlaceholder, cardSize(kind, text), text});
    state.titleLine = 0;
    state.subtitleLine = 0;
    body_.append(row.doneLine);
}

void TagLines::startCard(TitleKind kind, std::u16string_view text) {
    const CardRow& row = cardRow(kind);
    ++run_.state.titleCount;
    const Variant* variant = run_.selectTitle(fonts_);
    if (variant == nullptr) {
        return;
    }
    const std::u16string number = decimalText(run_.state.titleCount);
    const std::array<Filling, 2> fillings{{
        {u"$1", number},
        {row.fontPlaceholder, fonts_.*(isAsciiText(text) ? row.fontEnglish : row.fontJapanese)},
    }};
    scratch_.clear();
    variant->text.fill(fillings, scratch_);
    const std::size_t command = TitleTextFinder(scratch_, kind, run_.words).next(0);
    if (command != kNone) {
        fillQuotedArgument(scratch_, command, u"size", row.sizePlaceholder, cardSize(kind, text),
                           run_.words);
    }
    const std::u16string_view placeholder = placeholderOf(kind);
    const std::size_t at = scratch_.find(placeholder);
    if (at != kNone) {
        scratch_.replace(at, placeholder.size(), text);
    }
    body_.append(scratch_);
}

// ---- supers

void TagLines::writeSuper(std::size_t units, std::u16string_view untrimmed) {
    // The super keeps its blanks: a letter at the end saves the trailing ones
    // from trimming, and only the marker and its colon go at the front.
    std::u16string guarded(untrimmed);
    guarded += u'a';
    std::u16string_view given = dropAndTrim(trimScriptText(guarded, run_.words), units, run_.words);
    given.remove_suffix(given.empty() ? 0 : 1);
    given = dropUnits(given, 1);

    const ColouredText coloured = readColour(run_, given);
    const ColourRow& colour =
        coloured.colour != nullptr ? *coloured.colour : defaultColour(run_.words);
    std::u16string text(coloured.text);
    replaceDoubleQuotes(text);
    const bool ascii = isAsciiText(text);
    if (ascii && text.front() == u' ') {
        text.erase(0, 1);
    }
    const SuperSize& size =
        ascii ? superSize(kAsciiSuperSizes, text.size()) : superSize(kSuperSizes, text.size());
    const std::u16string_view font =
        ascii ? kTitleFontEnglish : run_.words[u"ms_gothic"].textOrEmpty();
    const std::array<Filling, 10> fillings{{
        {u"$10", size.offset},
        {u"$1", font},
        {u"$2", size.size},
        {u"$3", colour.text[0]},
        {u"$4", colour.text[1]},
        {u"$5", colour.text[2]},
        {u"$6", colour.edge[0]},
        {u"$7", colour.edge[1]},
        {u"$8", colour.edge[2]},
        {u"$9", text},
    }};
    writeTemplate(SimpleElement::super, fillings);
}

} // namespace tvml
