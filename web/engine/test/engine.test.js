// The engine against the native library. NATIVE is the driver, ENGINE the module,
// both made by scripts/test-engine.sh.
import assert from "node:assert/strict";
import { readdirSync, readFileSync } from "node:fs";
import { test } from "node:test";
import { EngineError, loadEngine } from "../dist/index.js";
import { nativeResults } from "./native.js";

const root = new URL("../../../", import.meta.url);
const file = (name) => readFileSync(new URL(name, root));
const text = (name) => file(name).toString("utf8").replace(/^\uFEFF/, "");
const module = readFileSync(process.env.ENGINE);
const seed = Number(process.env.SEED ?? 20_17);

const shipped = { keywordIni: file("config/keyword.ini"), mirvolIni: file("config/Mirvol.ini") };
const programmes = readdirSync(new URL("examples", root))
  .map((name) => `examples/${name}`)
  .filter((name) => readdirSync(new URL(name, root)).includes("programme.txt"))
  .map((name) => ({
    script: text(`${name}/programme.txt`),
    description: withoutChance(text(`${name}/description.xml`)),
  }));

// Both would have to be asked in the same second.
function withoutChance(description) {
  return description.replaceAll("random", "sequence").replace(/^<\?xml[^>]*\?>\s*/, "");
}

function generator(start) {
  let state = start;
  return (limit) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor((state / 2 ** 32) * limit);
  };
}

const hostile = ["(", ")", "（", "）", ":", "：", "\r", "\r\n", "\n", "\0", "\uD83D", "\uDE00", "\uFEFF",
  "&amp;", "&#0;", "<", "]]>", "<!DOCTYPE a [<!ENTITY e 'x'>]>", "&e;", "$1", "$", "A:", "super: ", "\u3000",
  "(caption: x)", "((", "\"", "x".repeat(300)];

function damaged(original, draw) {
  let result = original;
  for (let times = draw(6); times > 0; --times) {
    const at = draw(result.length + 1);
    const piece = draw(3) === 0 ? original.slice(at, at + draw(80)) : hostile[draw(hostile.length)];
    result = result.slice(0, at) + piece + result.slice(at + draw(20));
  }
  return result;
}

function generated(count, draw) {
  return Array.from({ length: count }, () => {
    const { script } = programmes[draw(programmes.length)];
    const { description } = programmes[draw(programmes.length)];
    return {
      script: damaged(script, draw),
      description: withoutChance(draw(2) === 0 ? description : damaged(description, draw)),
      playFrom: draw(12) - 2,
      playTo: draw(30) - 2,
    };
  });
}

function damagedBytes(bytes, draw) {
  const result = Buffer.from(bytes);
  for (let times = draw(40); times > 0; --times) {
    result[draw(result.length)] = draw(256);
  }
  return result;
}

async function compare(requests, ini) {
  const engine = await loadEngine(module);
  const expected = nativeResults(process.env.NATIVE, requests, ini);
  assert.equal(expected.length, requests.length);
  requests.forEach((request, index) => {
    let result = "";
    try {
      result = engine.convert({ ...request, ...ini });
    } catch (error) {
      assert.ok(error instanceof EngineError && !/stopped/.test(error.message), error);
    }
    assert.equal(result, expected[index], `request ${index}: ${JSON.stringify(request).slice(0, 2000)}`);
  });
  return expected.filter((result) => result.length > 0).length;
}

test("the examples become the same scripts", async () => {
  assert.ok(programmes.length >= 3);
  assert.equal(await compare(programmes, shipped), programmes.length);
});

test("generated and hostile inputs become the same scripts", async () => {
  const draw = generator(seed);
  let converted = 0;
  for (let round = 0; round < 20; ++round) {
    const ini = round < 5 ? shipped : {
      keywordIni: damagedBytes(shipped.keywordIni, draw),
      mirvolIni: damagedBytes(shipped.mirvolIni, draw),
    };
    converted += await compare(generated(50, draw), ini);
  }
  assert.ok(converted > 500, `only ${converted} of 1000 were converted at all`);
});

test("texts that no memory holds are refused with a word", async () => {
  const engine = await loadEngine(module);
  const huge = "x".repeat(2 ** 29 - 24);
  assert.throws(
    () => engine.convert({ script: huge, description: huge, keywordIni: huge, mirvolIni: huge }),
    /memory does not suffice/);
});

// (module (func (export "t") unreachable))
const trap = new WebAssembly.Instance(new WebAssembly.Module(Uint8Array.of(
  0, 0x61, 0x73, 0x6d, 1, 0, 0, 0, 1, 4, 1, 0x60, 0, 0, 3, 2, 1, 0, 7, 5, 1, 1, 0x74, 0, 0,
  0x0a, 5, 1, 3, 0, 0, 0x0b))).exports.t;

test("a trap leaves the engine usable", async (t) => {
  const Real = WebAssembly.Instance;
  let traps = true;
  t.mock.method(WebAssembly, "Instance", function instance(...given) {
    const { exports } = new Real(...given);
    const engine_convert = traps ? trap : exports.engine_convert;
    traps = false;
    return { exports: { ...exports, engine_convert } };
  });
  const engine = await loadEngine(module);
  const request = { ...programmes[0], ...shipped };
  assert.throws(() => engine.convert(request), /was stopped/);
  assert.match(engine.convert(request), /\S/);
});
