// The TVML script of a document, in a document of its own beside it; lines that belong
// together are marked both ways.
import * as vscode from "vscode";
import type { LanguageClient } from "vscode-languageclient/node";

interface Shown {
  readonly tvml: string;
  readonly lines: readonly (readonly number[])[];
  readonly seconds: number;
}

const SCHEME = "tvmlfilter";

export class Preview implements vscode.TextDocumentContentProvider, vscode.Disposable {
  private readonly changed = new vscode.EventEmitter<vscode.Uri>();
  readonly onDidChange = this.changed.event;
  private readonly shown = new Map<string, Shown>();
  private readonly mark = vscode.window.createTextEditorDecorationType({
    isWholeLine: true,
    backgroundColor: new vscode.ThemeColor("editor.rangeHighlightBackground"),
  });
  private readonly parts: vscode.Disposable[];

  constructor(private readonly client: () => LanguageClient | undefined) {
    this.parts = [
      vscode.workspace.registerTextDocumentContentProvider(SCHEME, this),
      vscode.window.onDidChangeTextEditorSelection((event) => this.markOthers(event.textEditor)),
      this.changed,
      this.mark,
    ];
  }

  dispose(): void {
    this.parts.forEach((part) => part.dispose());
  }

  async open(script: vscode.Uri): Promise<void> {
    const document = await vscode.workspace.openTextDocument(this.previewOf(script));
    await vscode.window.showTextDocument(document, {
      viewColumn: vscode.ViewColumn.Beside,
      preserveFocus: true,
      preview: true,
    });
  }

  // The script was converted anew.
  refresh(script: string): void {
    const uri = this.previewOf(vscode.Uri.parse(script));
    if (vscode.workspace.textDocuments.some((one) => one.uri.toString() === uri.toString())) {
      this.changed.fire(uri);
    }
  }

  async provideTextDocumentContent(uri: vscode.Uri): Promise<string> {
    const shown = await this.client()?.sendRequest<Shown>("workspace/executeCommand", {
      command: "tvmlfilter.showTvml",
      arguments: [uri.query],
    });
    if (shown === undefined) {
      return "";
    }
    this.shown.set(uri.query, shown);
    return shown.tvml;
  }

  private previewOf(script: vscode.Uri): vscode.Uri {
    return vscode.Uri.from({ scheme: SCHEME, path: `${script.path}.tvml`, query: script.toString() });
  }

  private markOthers(editor: vscode.TextEditor): void {
    const uri = editor.document.uri;
    const isPreview = uri.scheme === SCHEME;
    const script = isPreview ? uri.query : uri.toString();
    const shown = this.shown.get(script);
    const line = editor.selection.active.line;
    if (shown === undefined) {
      return;
    }
    const lines = isPreview
      ? (shown.lines[line] ?? [])
      : shown.lines.flatMap((from, number) => (from.includes(line) ? [number] : []));
    const other = isPreview ? script : this.previewOf(uri).toString();
    for (const one of vscode.window.visibleTextEditors) {
      if (one.document.uri.toString() === other) {
        const ranges = lines.map((number) => new vscode.Range(number, 0, number, 0));
        one.setDecorations(this.mark, ranges);
        if (ranges[0] !== undefined) {
          one.revealRange(ranges[0], vscode.TextEditorRevealType.InCenterIfOutsideViewport);
        }
      }
    }
  }
}
