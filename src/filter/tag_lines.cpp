// Entry: TagLines::write.
#include "filter/tag_lines.h"

#include <algorithm>
#include <array>

#include "reading/script_text.h"

namespace tvml {
namespace {

constexpr std::size_t kWhite = 1;
static_assert(kColours[kWhite].word == Key(u"white"));

// clang-format off
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

// The colour of a super without one is the first that the word for white names.
const ColourSpec& defaultColour(const KeywordTable& words) {
    const Word& white = words[u"white"];
    const auto named = std::find_if(kColours.begin(), kColours.end(), [&](const ColourSpec& row) {
        return white.loaded() && (words[row.word].equals(white.textOrEmpty()) ||
                                  row.word.name() == white.textOrEmpty());
    });
    return named == kColours.end() ? kColours[kWhite] : *named;
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

std::u16string_view cardSize(TitleKind kind, std::u16string_view text) {
    const std::size_t units = text.size();
    if (kind == TitleKind::subtitle) {
        return units <= 14 ? u"34%" : u"29%";
    }
    return units <= 8 ? u"68%" : units <= 11 ? u"48%" : isAsciiText(text) ? u"41%" : u"40%";
}

} // namespace

void TagLines::write(const TagReading& tag) {
    if (tag.marker.has_value()) {
        writeMarker(*tag.marker, tag);
    } else if (!tag.english.empty()) {
        writeDeclaredTag(tag);
    }
}

void TagLines::writeDeclaredTag(const TagReading& tag) {
    const std::u16string& text = run_.staging.tags.tagTexts.find(tag.english)->second;
    const std::array<Filling, 1> fillings{{{u"$1", tag.value}}};
    scratch_.clear();
    run_.textTemplates.of(text).fill(fillings, scratch_);
    append(scratch_);
    const auto element = run_.staging.tagElements.find(tag.english);
    run_.tellTemplate(u"tag", element == run_.staging.tagElements.end() ? 0 : element->second);
}

// ---- markers

void TagLines::writeMarker(Marker marker, const TagReading& tag) {
    const std::u16string_view text = tag.value;
    RunState& state = run_.state;
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
        return writeSuper(tag);
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
        return append(scratch_);
    }
}

void TagLines::writeTemplate(SimpleElement element, std::span<const Filling> fillings) {
    const Variant* variant = run_.select(element);
    if (variant != nullptr) {
        scratch_.clear();
        variant->text.fill(fillings, scratch_);
        append(scratch_);
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
    append(scratch_);
}

// ---- title cards

void TagLines::writeTitleText(TitleKind kind, std::u16string_view given) {
    const CardRow& row = cardRow(kind);
    RunState& state = run_.state;
    std::u16string text(given);
    replaceDoubleQuotes(text);
    const std::int32_t other = state.*row.otherLine;
    const bool starts = other == 0 || state.*row.ownLine != 0 || other + 1 != state.lineNumber;
    run_.outcome.card = starts ? CardStep::starts : CardStep::completes;
    if (starts) {
        startCard(kind, text);
        state.*row.ownLine = state.lineNumber;
        state.*row.otherLine = 0;
        return;
    }
    body_.completeCard({kind, row.fontPlaceholder,
                        fonts_.*(isAsciiText(text) ? row.fontEnglish : row.fontJapanese),
                        row.sizePlaceholder, cardSize(kind, text), text},
                       state.lineNumber);
    state.titleLine = 0;
    state.subtitleLine = 0;
    append(row.doneLine);
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
    append(scratch_);
}

// ---- supers

void TagLines::writeSuper(const TagReading& tag) {
    const ColourSpec& colour =
        tag.colourSpec != nullptr ? *tag.colourSpec : defaultColour(run_.words);
    std::u16string text(tag.value);
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
