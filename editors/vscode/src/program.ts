// Where the program is: as the settings say, beside this extension, or on the path.
import { accessSync, constants } from "node:fs";
import { delimiter, join } from "node:path";

const NAME = process.platform === "win32" ? "tvmlfilter.exe" : "tvmlfilter";
const BUNDLED: Partial<Record<NodeJS.Platform, string>> = { win32: "win32", linux: "linux-x64" };

function isProgram(path: string): boolean {
  try {
    accessSync(path, process.platform === "win32" ? constants.F_OK : constants.X_OK);
    return true;
  } catch {
    return false;
  }
}

export function findProgram(setting: string, extensionFolder: string): string | undefined {
  if (setting !== "") {
    return isProgram(setting) ? setting : undefined;
  }
  const folder = BUNDLED[process.platform];
  const beside = folder === undefined ? [] : [join(extensionFolder, "bin", folder)];
  const onPath = (process.env["PATH"] ?? "").split(delimiter).filter((one) => one !== "");
  return [...beside, ...onPath].map((one) => join(one, NAME)).find(isProgram);
}
