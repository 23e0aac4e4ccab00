// The filter for pages, workers and Node. Entry: loadEngine.
import { decodeSettings } from "./settings_text.js";

export { decodeSettings };

export interface ConversionRequest {
  readonly script: string;
  readonly description?: string;
  /** The files' bytes as they are, in any of their encodings, or their texts; empty when missing. */
  readonly keywordIni?: Uint8Array | string;
  readonly mirvolIni?: Uint8Array | string;
  /** Lines from 1; without them, all is played. */
  readonly playFrom?: number;
  readonly playTo?: number;
  /** The time, which chooses where the description leaves it to chance; without it, the clock's. */
  readonly seconds?: number;
}

export interface Engine {
  /** The TVML script. Throws an EngineError when the filter fails. */
  convert(request: ConversionRequest): string;
}

export class EngineError extends Error {
  override readonly name = "EngineError";
}

interface Exports {
  readonly memory: WebAssembly.Memory;
  _initialize(): void;
  engine_take(bytes: number): number;
  engine_give_back(memory: number): void;
  engine_convert(request: number): number;
  engine_result(): number;
}

const noLine = -1;
const unitsAtOnce = 8192;
const mostBytes = 2 ** 31 - 1;

const notSupported = 58; // among the error numbers of WASI

// The module needs nothing from outside. Its run-time library asks for an
// environment when it starts, which there is none of, and tells of grown memory;
// what else it asks for, it does in an emergency, and that ends the call.
function answer(name: string): () => number | void {
  switch (name) {
    case "environ_sizes_get":
    case "environ_get":
    case "clock_time_get": // the time is handed in
      return () => notSupported;
    case "emscripten_notify_memory_growth":
      return () => undefined;
    default:
      return () => {
        throw new WebAssembly.RuntimeError(`the engine called ${name}`);
      };
  }
}

function importsOf(module: WebAssembly.Module): WebAssembly.Imports {
  const imports: Record<string, Record<string, WebAssembly.ImportValue>> = {};
  for (const { module: from, name } of WebAssembly.Module.imports(module)) {
    (imports[from] ??= {})[name] = answer(name);
  }
  return imports;
}

function start(module: WebAssembly.Module): Exports {
  const exports = new WebAssembly.Instance(module, importsOf(module)).exports as unknown as Exports;
  exports._initialize();
  return exports;
}

const settingsText = (file: Uint8Array | string): string =>
  typeof file === "string" ? file : decodeSettings(file);

class WasmEngine implements Engine {
  private instance: Exports;

  constructor(private readonly module: WebAssembly.Module) {
    this.instance = start(module);
  }

  convert(request: ConversionRequest): string {
    const { instance } = this;
    try {
      const result = convertWith(instance, request);
      if (result === undefined) {
        throw new EngineError("the filter could not convert this");
      }
      return result;
    } catch (error) {
      if (!(error instanceof EngineError)) {
        this.instance = start(this.module); // the memory of the old one is not to be trusted
        throw new EngineError(`the engine was stopped: ${String(error)}`, { cause: error });
      }
      throw error;
    }
  }
}

function convertWith(instance: Exports, request: ConversionRequest): string | undefined {
  const texts = [
    request.script,
    request.description ?? "",
    settingsText(request.keywordIni ?? ""),
    settingsText(request.mirvolIni ?? ""),
  ];
  const numbers = [
    request.playFrom ?? noLine,
    request.playTo ?? noLine,
    request.seconds ?? Math.floor(Date.now() / 1000),
  ];
  const memory = layOut(instance, texts, numbers);
  const length = instance.engine_convert(memory);
  instance.engine_give_back(memory);
  return length < 0 ? undefined : textAt(instance, instance.engine_result(), length);
}

// The request in the module's memory, its texts behind it.
function layOut(instance: Exports, texts: readonly string[], numbers: readonly number[]): number {
  const head = (texts.length * 2 + numbers.length) * 4;
  const bytes = texts.reduce((sum, text) => sum + text.length * 2, head);
  const memory = bytes <= mostBytes ? instance.engine_take(bytes) : 0;
  if (memory === 0) {
    throw new EngineError("the memory does not suffice");
  }
  const words = new Uint32Array(instance.memory.buffer, memory, head / 4);
  let at = memory + head;
  texts.forEach((text, index) => {
    words.set([at, text.length], index * 2);
    const units = new Uint16Array(instance.memory.buffer, at, text.length);
    for (let i = 0; i < text.length; ++i) {
      units[i] = text.charCodeAt(i);
    }
    at += text.length * 2;
  });
  words.set(numbers, texts.length * 2);
  return memory;
}

// Not by a decoder, which would replace lone surrogates.
function textAt(instance: Exports, place: number, length: number): string {
  const units = new Uint16Array(instance.memory.buffer, place, length);
  let text = "";
  for (let at = 0; at < length; at += unitsAtOnce) {
    text += String.fromCharCode(...units.subarray(at, at + unitsAtOnce));
  }
  return text;
}

/** The engine from the bytes of its module or from a module that is compiled already. */
export async function loadEngine(source: BufferSource | WebAssembly.Module): Promise<Engine> {
  return new WasmEngine(
    source instanceof WebAssembly.Module ? source : await WebAssembly.compile(source),
  );
}
