// The extension: starts the language server and adds what its protocol has no word for.
import * as vscode from "vscode";
import { LanguageClient } from "vscode-languageclient/node";

import { Preview } from "./preview";
import { findProgram } from "./program";

interface Converted {
  readonly uri: string;
  readonly seconds: number;
}

let client: LanguageClient | undefined;

function clock(seconds: number): string {
  const whole = Math.round(seconds);
  return `${Math.floor(whole / 60)}:${String(whole % 60).padStart(2, "0")}`;
}

// The client starts the server again when it ends unasked, a few times.
async function start(context: vscode.ExtensionContext): Promise<void> {
  const settings = vscode.workspace.getConfiguration("tvmlfilter");
  const program = findProgram(settings.get("program", ""), context.extensionPath);
  if (program === undefined) {
    const open = vscode.l10n.t("Open Settings");
    const chosen = await vscode.window.showErrorMessage(
      vscode.l10n.t("The program tvmlfilter was not found. Install it, or name it in the settings."),
      open,
    );
    if (chosen === open) {
      await vscode.commands.executeCommand("workbench.action.openSettings", "tvmlfilter.program");
    }
    return;
  }
  client = new LanguageClient(
    "tvmlfilter",
    "TVML",
    { command: program, args: ["lsp", ...settings.get<string[]>("arguments", [])] },
    {
      documentSelector: [
        { language: "tvmlscript" },
        { language: "tvmldescription" },
        { language: "xml", pattern: "**/*.xml" },
      ],
      initializationOptions: { lengths: true },
      synchronize: { fileEvents: vscode.workspace.createFileSystemWatcher("**/{*.toml,*.xml,*.ini}") },
    },
  );
  await client.start();
}

async function stop(): Promise<void> {
  const ending = client;
  client = undefined;
  await ending?.stop();
}

function showLengths(context: vscode.ExtensionContext, preview: Preview): () => void {
  const item = vscode.window.createStatusBarItem("tvmlfilter.length", vscode.StatusBarAlignment.Right);
  item.tooltip = vscode.l10n.t("Estimated length of the programme");
  const lengths = new Map<string, number>();
  const update = (): void => {
    const seconds = lengths.get(vscode.window.activeTextEditor?.document.uri.toString() ?? "");
    item.text = seconds === undefined ? "" : `$(clock) ${clock(seconds)}`;
    if (seconds === undefined) {
      item.hide();
    } else {
      item.show();
    }
  };
  context.subscriptions.push(item, vscode.window.onDidChangeActiveTextEditor(update));
  return () => {
    client?.onNotification("tvmlfilter/converted", (told: Converted) => {
      lengths.set(vscode.Uri.parse(told.uri).toString(), told.seconds);
      preview.refresh(told.uri);
      update();
    });
  };
}

// The script that the writer looks at.
function activeScript(): vscode.TextEditor | undefined {
  const editor = vscode.window.activeTextEditor;
  if (editor === undefined || editor.document.languageId !== "tvmlscript") {
    void vscode.window.showInformationMessage(vscode.l10n.t("Open a TVML script first."));
    return undefined;
  }
  return editor;
}

async function play(): Promise<void> {
  const editor = activeScript();
  if (editor === undefined || client === undefined) {
    return;
  }
  try {
    await client.sendRequest("workspace/executeCommand", {
      command: "tvmlfilter.play",
      arguments: [editor.document.uri.toString(), editor.selection.active.line],
    });
  } catch (failure) {
    void vscode.window.showErrorMessage(failure instanceof Error ? failure.message : String(failure));
  }
}

// A text file in a project is a script, whatever it is called.
async function adoptText(document: vscode.TextDocument): Promise<void> {
  if (document.languageId !== "plaintext" || document.uri.scheme !== "file") {
    return;
  }
  const found = await vscode.workspace.findFiles("**/tvmlfilter.toml", undefined, 20);
  const owns = found.some((one) => document.uri.path.startsWith(vscode.Uri.joinPath(one, "..").path));
  if (owns && document.uri.path.endsWith(".txt")) {
    await vscode.languages.setTextDocumentLanguage(document, "tvmlscript");
  }
}

export async function activate(context: vscode.ExtensionContext): Promise<void> {
  const preview = new Preview(() => client);
  const listen = showLengths(context, preview);
  const restart = async (): Promise<void> => {
    await stop();
    await start(context);
    listen();
  };
  context.subscriptions.push(
    preview,
    vscode.commands.registerCommand("tvmlfilter.restart", restart),
    vscode.commands.registerCommand("tvmlfilter.playHere", play),
    vscode.commands.registerCommand("tvmlfilter.openTvml", async () => {
      const editor = activeScript();
      await (editor && preview.open(editor.document.uri));
    }),
    vscode.workspace.onDidOpenTextDocument(adoptText),
    vscode.workspace.onDidChangeConfiguration(
      (event) => void (event.affectsConfiguration("tvmlfilter") && restart()),
    ),
  );
  await Promise.all(vscode.workspace.textDocuments.map(adoptText));
  await restart();
}

export async function deactivate(): Promise<void> {
  await stop();
}
