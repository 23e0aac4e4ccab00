// What is on screen at a panel: all changes up to it, put together.
import type { Model, Panel } from './model';

export type Screen = Readonly<Record<string, string>>;

// Parts that last for their own panel alone.
function isMomentary(part: string): boolean {
  return part.endsWith('.movement');
}

// A super that is shown anew has its own colours, or none.
function isColourOf(part: string, changes: Screen): boolean {
  const base = part.replace(/(Colour|Edge)$/, '');
  return base !== part && base in changes;
}

export function afterPanel(before: Screen, panel: Panel): Screen {
  const changes = panel.changes ?? {};
  const kept = Object.entries(before).filter(([part]) => !isMomentary(part) && !isColourOf(part, changes));
  return { ...Object.fromEntries(kept), ...changes };
}

// Kept at every so many panels, so that any panel is near a known screen.
const STRIDE = 64;

export class Screens {
  private readonly kept: Screen[] = [];
  private last: { index: number; screen: Screen } | undefined;

  constructor(private readonly model: Model) {}

  at(index: number): Screen {
    while (this.kept.length * STRIDE <= index) {
      const start = this.kept.length * STRIDE;
      this.kept.push(
        start === 0 ? {} : this.from(this.kept[this.kept.length - 1] ?? {}, start - STRIDE, start),
      );
    }
    const base = Math.floor(index / STRIDE);
    const near =
      this.last !== undefined && this.last.index < index && this.last.index >= base * STRIDE
        ? this.last
        : undefined;
    const screen = near
      ? this.from(near.screen, near.index + 1, index + 1)
      : this.from(this.kept[base] ?? {}, base * STRIDE, index + 1);
    this.last = { index, screen };
    return screen;
  }

  private from(screen: Screen, first: number, end: number): Screen {
    for (let i = first; i < end; ++i) {
      const panel = this.model.panels[i];
      if (panel) screen = afterPanel(screen, panel);
    }
    return screen;
  }
}

// A card stands as long as its lines do: the title and the subtitle next to it.
export interface Card {
  title: string;
  subtitle: string;
}
export function cardAt(model: Model, index: number): Card | undefined {
  const panel = model.panels[index];
  if (!panel || panel.kind !== 'title') return undefined;
  const other = panel.card === 'completes' ? model.panels[index - 1] : undefined;
  const both = [other, panel].filter((one): one is Panel => one !== undefined && one.kind === 'title');
  return {
    title: both.find((one) => !one.subtitle)?.text ?? '',
    subtitle: both.find((one) => one.subtitle)?.text ?? '',
  };
}
