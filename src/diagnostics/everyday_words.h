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
