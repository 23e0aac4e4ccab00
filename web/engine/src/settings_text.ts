// The bytes of an ini file as a text, by the same rules as the native library.

const replacement = "\uFFFD";

function decodeUtf16(bytes: Uint8Array, littleEndian: boolean): string {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  let text = "";
  for (let at = 0; at + 1 < bytes.length; at += 2) {
    text += String.fromCharCode(view.getUint16(at, littleEndian));
  }
  return bytes.length % 2 === 0 ? text : text + replacement;
}

const isLead = (byte: number): boolean => (byte >= 0x81 && byte <= 0x9f) || (byte >= 0xe0 && byte <= 0xfc);
const isTrail = (byte: number): boolean => byte >= 0x40 && byte <= 0xfc && byte !== 0x7f;

// What Windows makes of single bytes that stand for nothing.
const strayBytes: Readonly<Record<number, string>> = {
  0x80: "\u0080",
  0xa0: "\uF8F0",
  0xfd: "\uF8F1",
  0xfe: "\uF8F2",
  0xff: "\uF8F3",
};

function decodeSingle(byte: number): string {
  if (byte >= 0xa1 && byte <= 0xdf) {
    return String.fromCharCode(0xff61 + byte - 0xa1);
  }
  return strayBytes[byte] ?? (byte < 0x80 ? String.fromCharCode(byte) : "\u30FB");
}

// Pair by pair, because the browser's decoder takes a bad pair apart and Windows
// makes a middle dot of it, second byte and all.
function decodeCodePage932(bytes: Uint8Array): string {
  const decoder = new TextDecoder("shift_jis");
  let text = "";
  for (let at = 0; at < bytes.length; ++at) {
    const byte = bytes[at] ?? 0;
    if (!isLead(byte) || at + 1 === bytes.length) {
      text += decodeSingle(byte);
      continue;
    }
    const pair = bytes.subarray(at, at + 2);
    const character = isTrail(pair[1] ?? 0) ? decoder.decode(pair) : replacement;
    text += character.includes(replacement) ? "\u30FB" : character;
    ++at;
  }
  return text;
}

export function decodeSettings(bytes: Uint8Array): string {
  if (bytes[0] === 0xff && bytes[1] === 0xfe) {
    return decodeUtf16(bytes.subarray(2), true);
  }
  if (bytes[0] === 0xfe && bytes[1] === 0xff) {
    return decodeUtf16(bytes.subarray(2), false);
  }
  if (bytes[0] === 0xef && bytes[1] === 0xbb && bytes[2] === 0xbf) {
    return new TextDecoder("utf-8").decode(bytes);
  }
  try {
    return new TextDecoder("utf-8", { fatal: true, ignoreBOM: true }).decode(bytes);
  } catch {
    return decodeCodePage932(bytes);
  }
}
