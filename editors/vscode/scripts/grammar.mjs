// Makes the TextMate grammar of scripts from what the program lists: its markers,
// commands, adverbs and colours, in English and in the words of the vocabulary.
//
//   node scripts/grammar.mjs PROGRAM          writes it to standard output
//   node scripts/grammar.mjs PROGRAM --check  compares it with the one in the repository
import { execFileSync } from "node:child_process";
import { readFileSync } from "node:fs";

const [program, check] = process.argv.slice(2);
const file = new URL("../syntaxes/tvmlscript.tmLanguage.json", import.meta.url);

function listed(table) {
  const text = execFileSync(program, ["list", table, "--no-project", "--format", "json"], { encoding: "utf8" });
  const all = JSON.parse(text);
  return Array.isArray(all) ? all : Object.values(all).find(Array.isArray);
}

// All names of some rows, the longest first, since the first that fits is taken.
function alternatives(rows) {
  const names = new Set(rows.flatMap((row) => row.english.split(", ").concat(row.words)));
  const escape = (name) => name.replace(/[.*+?^${}()|[\]\\]/g, "\\$&");
  return [...names].filter(Boolean).sort((a, b) => b.length - a.length || (a < b ? -1 : 1)).map(escape).join("|");
}

const blank = "[\\s\\u3000]*";
const grammar = {
  name: "TVML script",
  scopeName: "source.tvmlscript",
  patterns: [
    {
      match: `^${blank}(${alternatives(listed("markers"))})${blank}(:|：)(.*?)(?:([(（])(${alternatives(listed("colours"))})([)）]))?${blank}$`,
      captures: {
        1: { name: "keyword.control.marker.tvmlscript" },
        2: { name: "punctuation.separator.tvmlscript" },
        3: { name: "string.unquoted.tvmlscript" },
        5: { name: "constant.language.colour.tvmlscript" },
      },
    },
    {
      match: `^${blank}(?:([A-ZＡ-Ｚ])${blank}(:|：)${blank})?([(（])(.*)([)）])${blank}$`,
      captures: {
        1: { name: "entity.name.type.speaker.tvmlscript" },
        2: { name: "punctuation.separator.tvmlscript" },
        3: { name: "punctuation.definition.command.tvmlscript" },
        4: { patterns: [{ include: "#command" }] },
        5: { name: "punctuation.definition.command.tvmlscript" },
      },
    },
    {
      match: `^${blank}([A-ZＡ-Ｚ])${blank}(:|：)`,
      captures: {
        1: { name: "entity.name.type.speaker.tvmlscript" },
        2: { name: "punctuation.separator.tvmlscript" },
      },
    },
  ],
  repository: {
    command: {
      patterns: [
        { match: alternatives(listed("commands")), name: "support.function.command.tvmlscript" },
        { match: `(?<=[,，、\\s\\u3000])(?:${alternatives(listed("adverbs"))})`, name: "storage.modifier.adverb.tvmlscript" },
        { match: "[0-9０-９]+(?:[.．][0-9０-９]+)?", name: "constant.numeric.tvmlscript" },
      ],
    },
  },
};

const text = `${JSON.stringify(grammar, null, 2)}\n`;
if (check !== "--check") {
  process.stdout.write(text);
} else if (readFileSync(file, "utf8") !== text) {
  console.error("grammar: the tables have changed; renew syntaxes/tvmlscript.tmLanguage.json with this script");
  process.exit(1);
} else if (!alternatives(listed("markers")).includes("タイトル")) {
  console.error("grammar: the program has no vocabulary");
  process.exit(1);
}
