#!/usr/bin/env python3
"""Compiles the catalogues of this folder, one .po file a language, into C++.

    compile_catalogue.py SOURCES OUTPUT

A row's msgid is its name in the code; msgstr is the text. "en.po" says which
rows there are: every other file must have exactly these, with the same
placeholders, and the sources (the folder SOURCES) must use each of them. A name
is used as Message::NAME, with "." written as "_", or is the code of a diagnostic
("S101", "S101.why"). Writes messages.h and messages.cpp into the folder OUTPUT.
"""

import pathlib
import re
import sys

import polib

BASE = "en"
PLACEHOLDER = re.compile(r"%[1-9n]")
FORMULA = re.compile(r"^\s*nplurals\s*=\s*(\d)\s*;\s*plural\s*=\s*([n0-9\s()?:!=<>%&|]+?)\s*;?\s*$")


def identifier(name):
    return re.sub(r"[^A-Za-z0-9]", "_", name)


def forms_of(entry):
    if entry.msgid_plural:
        return [entry.msgstr_plural[i] for i in sorted(entry.msgstr_plural)]
    return [entry.msgstr]


class Catalogue:
    def __init__(self, path):
        self.language = path.stem
        self.problems = []
        parsed = polib.pofile(str(path), encoding="utf-8", check_for_duplicates=True)
        self.rows = {entry.msgid: forms_of(entry) for entry in parsed if not entry.obsolete}
        plurals = FORMULA.match(parsed.metadata.get("Plural-Forms", ""))
        if plurals is None:
            self.tell("its header has no Plural-Forms that can be read")
        self.form_count = int(plurals.group(1)) if plurals else 1
        self.form = plurals.group(2) if plurals else "0"
        self.names_commands = parsed.metadata.get("X-Command-Names", "")
        if self.names_commands not in ("english", "vocabulary"):
            self.tell("its header lacks X-Command-Names: english or vocabulary")
        for entry in parsed:
            if entry.fuzzy:
                self.tell(f"{entry.msgid}: is marked as fuzzy")
            if not all(forms_of(entry)):
                self.tell(f"{entry.msgid}: has no text")
            if entry.msgid_plural and len(forms_of(entry)) != self.form_count:
                self.tell(f"{entry.msgid}: needs {self.form_count} plural forms")

    def tell(self, text):
        self.problems.append(f"{self.language}.po: {text}")

    def compare(self, base):
        for name in base.rows.keys() - self.rows.keys():
            self.tell(f"{name}: is missing")
        for name in self.rows.keys() - base.rows.keys():
            self.tell(f"{name}: {BASE}.po has no such row")
        for name in base.rows.keys() & self.rows.keys():
            wanted = set(PLACEHOLDER.findall(base.rows[name][-1]))
            for text in self.rows[name]:
                # A form for one thing may spell the number out.
                found = set(PLACEHOLDER.findall(text)) | (wanted & {"%n"})
                if found != wanted:
                    self.tell(f"{name}: has the placeholders {sorted(found)}, not {sorted(wanted)}")


def unused(base, sources):
    code = "\n".join(path.read_text(encoding="utf-8")
                     for path in sorted(pathlib.Path(sources).rglob("*"))
                     if path.suffix in (".h", ".cpp"))
    used = set(re.findall(r"Message::(\w+)", code)) | set(re.findall(r'\{"([SVDF]\d{3})"', code))
    return [name for name in base.rows
            if identifier(name) not in used and name.removesuffix(".why") not in used]


def literal(text):
    escaped = text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")
    return f'u"{escaped}"'


def header(names, languages):
    lines = ["// Made from po/*.po.", "#ifndef TVML_TEXTS_MESSAGES_H", "#define TVML_TEXTS_MESSAGES_H",
             "", "#include <array>", "#include <cstddef>", "#include <cstdint>", "#include <string_view>", "",
             "namespace tvml {", "",
             "enum class Language : std::uint8_t { " + ", ".join(languages) + " };",
             f"inline constexpr std::size_t kLanguageCount = {len(languages)};", "",
             "enum class Message : std::uint16_t {"]
    lines += [f"    {identifier(name)}," for name in names]
    lines += ["};", "", "inline constexpr std::array<std::string_view, " + str(len(names)) +
              "> kMessageNames{"]
    lines += [f'    "{name}",' for name in names]
    return lines + ["};", "", "} // namespace tvml", "", "#endif", ""]


def data(names, catalogues):
    lines = ["// Made from po/*.po.", '#include "texts/catalogue_data.h"', "", "namespace tvml {",
             "namespace {", ""]
    for catalogue in catalogues:
        most = max(len(forms) for forms in catalogue.rows.values())
        lines.append(f"constexpr std::u16string_view k_{catalogue.language}[] = {{")
        for name in names:
            forms = catalogue.rows[name]
            forms = forms + [forms[-1]] * (most - len(forms))
            lines.append("    " + ", ".join(literal(form) for form in forms) + ",")
        lines += ["};", ""]
    lines += ["} // namespace", "", "const std::array<CatalogueLanguage, kLanguageCount> kCatalogueLanguages{{"]
    for catalogue in catalogues:
        most = max(len(forms) for forms in catalogue.rows.values())
        vocabulary = "true" if catalogue.names_commands == "vocabulary" else "false"
        lines.append(f'    {{"{catalogue.language}", {vocabulary}, {most}, k_{catalogue.language},')
        lines.append(f"     []([[maybe_unused]] std::size_t n) {{ return std::size_t({catalogue.form}); }}}},")
    return lines + ["}};", "", "} // namespace tvml", ""]


def write(path, lines):
    # A file that stays as it is keeps its date, so that nothing is compiled again.
    text = "\n".join(lines)
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")


def main():
    sources, output = sys.argv[1], pathlib.Path(sys.argv[2])
    paths = sorted(pathlib.Path(__file__).parent.glob("*.po"), key=lambda path: (path.stem != BASE, path.stem))
    catalogues = [Catalogue(path) for path in paths]
    base = catalogues[0]
    problems = [f"{BASE}.po: {name}: nothing uses it" for name in unused(base, sources)]
    for catalogue in catalogues:
        catalogue.compare(base)
        problems += catalogue.problems
    if problems:
        sys.exit("\n".join(sorted(problems)))
    names = list(base.rows)
    write(output / "messages.h", header(names, [catalogue.language for catalogue in catalogues]))
    write(output / "messages.cpp", data(names, catalogues))


if __name__ == "__main__":
    main()
