#!/usr/bin/env python3
"""Bundles the page of storyboards and writes it as C++ source.

make_page.py ESBUILD OUTPUT

ESBUILD may be empty: the texts are then empty, too. The page is cut where its model
goes. Its scripts and styles are allowed by their hashes, and nothing else is.
"""
import base64
import hashlib
import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
MODEL = "<!-- model -->"
PIECE = 12000  # bytes of a string literal


def bundle(esbuild, entry):
    command = [esbuild, str(HERE / entry), "--bundle", "--minify", "--charset=utf8",
               "--target=es2020", "--format=iife"]
    if entry.endswith(".css"):
        command = command[:-1]
    done = subprocess.run(command, capture_output=True, check=False)
    if done.returncode != 0:
        sys.exit(done.stderr.decode())
    return done.stdout.decode().strip()


def allowed(text):
    return "'sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode() + "'"


def literal(text):
    escaped = text.encode().decode("latin-1")
    pieces = [escaped[i:i + PIECE] for i in range(0, len(escaped), PIECE)]

    def one(piece):
        return '"' + "".join(
            {"\\": "\\\\", '"': '\\"', "\n": "\\n"}.get(letter)
            or (letter if " " <= letter <= "~" and letter != "?" else f"\\{ord(letter):03o}")
            for letter in piece) + '"sv'
    return [one(piece) for piece in pieces]


def source(head, tail):
    def joined(name, text):
        pieces = [piece[:-2] for piece in literal(text)]
        return f"constexpr char {name}[] =\n    " + "\n    ".join(pieces or ['""']) + ";\n"
    return ("// Made by web/storyboard/make_page.py.\n"
            '#include "host/storyboard_page.h"\n\n'
            "namespace tvml::host {\nnamespace {\n\n"
            + joined("kHead", head) + joined("kTail", tail) +
            "\n} // namespace\n\n"
            "const std::string_view kStoryboardPageHead{kHead, sizeof kHead - 1};\n"
            "const std::string_view kStoryboardPageTail{kTail, sizeof kTail - 1};\n\n"
            "} // namespace tvml::host\n")


def main():
    esbuild, output = sys.argv[1:]
    head = tail = ""
    if esbuild:
        script = bundle(esbuild, "src/page.ts")
        style = bundle(esbuild, "page.css")
        page = (HERE / "page.html").read_text(encoding="utf-8")
        page = page.replace("{script-hash}", allowed(script)).replace("{style-hash}", allowed(style))
        page = page.replace("{style}", style).replace("{script}", script)
        head, tail = page.split(MODEL)
    pathlib.Path(output).parent.mkdir(parents=True, exist_ok=True)
    pathlib.Path(output).write_text(source(head, tail), encoding="utf-8")


main()
