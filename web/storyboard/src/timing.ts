// Times of the programme: pure functions of the model.
import type { Model } from './model';

// "1:05", and "1:05.5" where tenths are wanted.
export function timeText(seconds: number, tenths = false): string {
  const whole = tenths ? Math.round(seconds * 10) / 10 : Math.round(seconds);
  const minutes = Math.floor(whole / 60);
  const rest = whole - minutes * 60;
  const text = tenths ? rest.toFixed(1) : String(rest);
  return `${minutes}:${(tenths ? rest < 9.95 : rest < 10) ? '0' : ''}${text}`;
}

// The last panel that has started at a time; 0 before all of them.
export function panelAt(model: Model, seconds: number): number {
  let low = 0;
  let high = model.panels.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if ((model.panels[middle]?.start ?? 0) <= seconds) low = middle + 1;
    else high = middle;
  }
  return Math.max(0, low - 1);
}

// Marks of a ruler: few enough to be read, at steps that people count in.
export function ticks(seconds: number, most = 12): number[] {
  const steps = [1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 1200, 1800, 3600, 7200];
  const step = steps.find((one) => seconds / one <= most) ?? 14400;
  const marks: number[] = [];
  for (let at = 0; at <= seconds; at += step) marks.push(at);
  return marks;
}

// How long a panel is shown while the programme plays, at the least: what takes no
// time would otherwise never be seen.
export function shownFor(seconds: number | undefined): number {
  return Math.max(seconds ?? 0, 0.4);
}
