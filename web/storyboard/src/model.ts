// The model that the program writes; model.schema.json says the same for others.

export interface Finding {
  severity: 'error' | 'warning' | 'note';
  code: string;
  message: string;
}

export interface Panel {
  line: number;
  kind:
    | 'speech'
    | 'recording'
    | 'action'
    | 'setting'
    | 'shot'
    | 'studio'
    | 'wait'
    | 'title'
    | 'super'
    | 'picture'
    | 'sound'
    | 'tag'
    | 'embedded'
    | 'nothing';
  source: string;
  who?: string;
  name?: string;
  text?: string;
  caption?: string;
  card?: 'starts' | 'completes';
  subtitle?: boolean;
  start: number;
  seconds?: number;
  estimate?: boolean;
  waits?: boolean;
  offline?: boolean;
  changes?: Record<string, string>;
  findings?: Finding[];
}

export interface Scene {
  panel: number;
  title: string;
  start: number;
  seconds: number;
}

export interface NamedFile {
  file: string;
  use: 'none' | 'picture' | 'sound' | 'speech';
  lines: number[];
  exists?: boolean;
}

export interface Model {
  version: 1;
  script: string;
  description: string;
  language: 'ja' | 'en';
  seconds: number;
  cast: { letter: string; model: string }[];
  scenes: Scene[];
  panels: Panel[];
  words: Record<string, string>;
  files: NamedFile[];
  pictures: Record<string, string>;
}
