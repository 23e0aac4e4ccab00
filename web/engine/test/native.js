// The native library's results for a list of requests with one pair of ini files.
import { execFileSync } from "node:child_process";
import { copyFileSync, mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";

const units = (text) => Buffer.from(text, "utf16le");

function encode({ playFrom = -1, playTo = -1, script, description }) {
  const head = Buffer.alloc(16);
  [playFrom, playTo, script.length, description.length].forEach((value, index) =>
    head.writeInt32LE(value, index * 4));
  return Buffer.concat([head, units(script), units(description)]);
}

function decode(bytes) {
  const results = [];
  for (let at = 0; at < bytes.length; ) {
    const end = at + 4 + bytes.readInt32LE(at) * 2;
    results.push(bytes.toString("utf16le", at + 4, end));
    at = end;
  }
  return results;
}

export function nativeResults(program, requests, { keywordIni, mirvolIni }) {
  const folder = mkdtempSync(join(tmpdir(), "engine-test-"));
  try {
    copyFileSync(program, join(folder, "driver"));
    writeFileSync(join(folder, "keyword.ini"), keywordIni);
    writeFileSync(join(folder, "Mirvol.ini"), mirvolIni);
    const input = Buffer.concat(requests.map(encode));
    return decode(execFileSync(join(folder, "driver"), { input, maxBuffer: 1 << 30 }));
  } finally {
    rmSync(folder, { recursive: true });
  }
}
