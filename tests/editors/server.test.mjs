// The built program with a client on vscode-jsonrpc, the library that editors use:
// each request once, over real streams and files, and the ways in which it ends.
import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import { mkdtempSync, rmSync, writeFileSync, existsSync, readFileSync, mkdirSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { pathToFileURL } from "node:url";
import rpc from "vscode-jsonrpc/node.js";

const program = process.env.TVMLFILTER;
assert.ok(program, "TVMLFILTER names the program");

const description = `<staging>
<numofchar>2</numofchar>
<model_for_char character="A" japanesename="スーツ" englishname="suit" default="yes">m</model_for_char>
<model_for_char character="B" japanesename="背広" englishname="blazer" default="yes">m</model_for_char>
<tag japanesename="速報" englishname="flash">
super: on( text="$1" )
</tag>
</staging>
`;
const script = "タイトル：ニュース\nＡ：こんばんは。\nＢ：（お辞義）\n速報：地震\nsubimage: map.png\n";

let folder;
let server;
const at = (line, character) => ({ line, character });

class Server {
  constructor(parent = null) {
    this.process = spawn(program, ["lsp"], { stdio: ["pipe", "pipe", "inherit"] });
    this.ended = new Promise((resolve) => this.process.on("exit", (code) => resolve(code)));
    this.connection = rpc.createMessageConnection(this.process.stdout, this.process.stdin);
    this.waiting = [];
    this.connection.onNotification("textDocument/publishDiagnostics", (told) => {
      this.waiting = this.waiting.filter((one) => !one(told));
    });
    this.connection.onError(() => {});
    this.connection.listen();
    this.parent = parent;
  }
  // The next findings of a document.
  findings(uri) {
    return new Promise((resolve) => {
      this.waiting.push((told) => told.uri === uri && (resolve(told), true));
    });
  }
  async start() {
    const answer = await this.ask("initialize", {
      processId: this.parent, rootUri: null, capabilities: {}, locale: "en",
    });
    await this.connection.sendNotification("initialized", {});
    return answer;
  }
  ask(method, params) {
    return this.connection.sendRequest(method, params);
  }
  // About the script of this test.
  askAt(method, position, more = {}) {
    return this.ask(`textDocument/${method}`, { textDocument: { uri: this.uri }, position, ...more });
  }
  async open(uri, text) {
    this.uri = uri;
    const found = this.findings(uri);
    await this.connection.sendNotification("textDocument/didOpen", {
      textDocument: { uri, languageId: "tvmlscript", version: 1, text },
    });
    return found;
  }
  end() {
    this.connection.dispose();
    this.process.kill();
  }
}

const uriOf = (name) => pathToFileURL(join(folder, name)).href;
const codes = (told) => told.diagnostics.map((one) => one.code);

before(async () => {
  folder = mkdtempSync(join(tmpdir(), "tvml 編集-"));
  mkdirSync(join(folder, "media"));
  writeFileSync(join(folder, "media", "map.png"), "");
  writeFileSync(join(folder, "staging.xml"), description);
  writeFileSync(join(folder, "tvmlfilter.toml"),
    `description = "staging.xml"\nmedia = ["media"]\nplayer = ["cp", "$FILE", "${join(folder, "played")}"]\n`);
  server = new Server(process.pid);
  const { capabilities } = await server.start();
  assert.equal(capabilities.textDocumentSync.change, 2);
});
after(() => {
  server.end();
  rmSync(folder, { recursive: true });
});

test("diagnostics follow the edits", async () => {
  const told = await server.open(uriOf("ニュース.txt"), script);
  assert.deepEqual(codes(told), ["S134", "S101"]);
  assert.deepEqual(told.diagnostics[1].range, { start: at(2, 3), end: at(2, 6) });
  const next = server.findings(server.uri);
  await server.connection.sendNotification("textDocument/didChange", {
    textDocument: { uri: server.uri, version: 2 },
    contentChanges: [{ range: { start: at(2, 3), end: at(2, 6) }, text: "お辞儀" }],
  });
  assert.deepEqual(codes(await next), ["S134"]);
});

test("each request has its answer", async () => {
  const textDocument = { uri: server.uri };
  const { items } = await server.askAt("completion", at(2, 3));
  assert.ok(items.some((one) => one.label === "うん" && one.textEdit.newText === "うん"));
  const hover = await server.askAt("hover", at(3, 1));
  assert.match(hover.contents.value, /super: on\( text="地震" \)/);
  const [definition] = await server.askAt("definition", at(3, 1));
  assert.deepEqual([definition.uri, definition.range.start.line], [uriOf("staging.xml"), 4]);
  const [picture] = await server.askAt("definition", at(4, 12));
  assert.equal(picture.uri, pathToFileURL(join(folder, "media", "map.png")).href);
  const uses = await server.askAt("references", at(3, 1), { context: { includeDeclaration: false } });
  assert.deepEqual(uses.map((one) => one.range.start.line), [3]);
  const [title] = await server.ask("textDocument/documentSymbol", { textDocument });
  assert.equal(title.name, "ニュース");
  assert.equal((await server.ask("textDocument/foldingRange", { textDocument })).length, 1);
  const { data } = await server.ask("textDocument/semanticTokens/full", { textDocument });
  assert.deepEqual(data.slice(0, 5), [0, 0, 4, 1, 0]);
  assert.equal((await server.ask("textDocument/documentLink", { textDocument })).length, 1);
  const [selection] = await server.ask("textDocument/selectionRange", { textDocument, positions: [at(2, 4)] });
  assert.deepEqual(selection.range, { start: at(2, 3), end: at(2, 6) });
  const actions = await server.ask("textDocument/codeAction", {
    textDocument, range: { start: at(0, 0), end: at(0, 0) }, context: { diagnostics: [] },
  });
  assert.ok(actions.some((one) => one.kind === "quickfix" && one.title.includes("サブタイトル")));
  assert.deepEqual(await server.askAt("prepareRename", at(3, 0)), { start: at(3, 0), end: at(3, 2) });
  const { changes } = await server.askAt("rename", at(3, 0), { newName: "臨時" });
  assert.deepEqual(Object.keys(changes).sort(), [server.uri, uriOf("staging.xml")].sort());
  await assert.rejects(server.askAt("rename", at(3, 0), { newName: "タイトル" }), { code: -32803 });
});

test("the TVML script is shown and played", async () => {
  const shown = await server.ask("workspace/executeCommand", { command: "tvmlfilter.showTvml", arguments: [server.uri] });
  const line = shown.tvml.split("\n").findIndex((one) => one.includes("こんばんは"));
  assert.deepEqual(shown.lines[line], [1]);
  await server.ask("workspace/executeCommand", { command: "tvmlfilter.play", arguments: [server.uri, 2] });
  const played = join(folder, "played");
  for (let i = 0; i < 100 && !(existsSync(played) && readFileSync(played).length > 0); i++) {
    await new Promise((resolve) => setTimeout(resolve, 50));
  }
  assert.match(readFileSync(played, "utf16le"), /playfromhere\(\)/);
});

test("files on the disk count", async () => {
  const next = server.findings(server.uri);
  writeFileSync(join(folder, "staging.xml"), description.replace(/<tag[^]*<\/tag>\n/, ""));
  assert.notDeepEqual(codes(await next), ["S134"]);
  const project = server.findings(uriOf("tvmlfilter.toml"));
  writeFileSync(join(folder, "tvmlfilter.toml"), `\ndescripton = "staging.xml"\n`);
  const [wrong] = (await project).diagnostics;
  assert.equal(wrong.range.start.line, 1);
  assert.match(wrong.message, /description/);
});

test("it ends by shutdown and exit, with the input, and with its parent", async () => {
  const polite = new Server();
  await polite.start();
  await polite.ask("shutdown");
  await polite.connection.sendNotification("exit");
  assert.equal(await polite.ended, 0);
  const rude = new Server();
  await rude.start();
  rude.process.stdin.end();
  assert.equal(await rude.ended, 1);
  const gone = spawn(process.execPath, ["-e", ""]);
  await new Promise((resolve) => gone.on("exit", resolve));
  const orphan = new Server(gone.pid);
  await orphan.start();
  assert.equal(await orphan.ended, 1);
});
