// The frame of a panel: a pure function from the model to shapes. Texts are never
// markup: they go into text nodes.
import type { Model, Panel } from './model';
import { cardAt, type Screen } from './screen';
import { shownValue, textsOf } from './texts';

export interface Shape {
  tag: string;
  at: Record<string, string | number>;
  inside?: Shape[];
  text?: string;
}

const WIDTH = 320;
const HEIGHT = 180;

function shape(tag: string, at: Shape['at'], inside?: Shape[]): Shape {
  return inside ? { tag, at, inside } : { tag, at };
}

// Full-width signs are twice as wide as others.
function widthOf(text: string): number {
  let width = 0;
  for (const sign of text) width += (sign.codePointAt(0) ?? 0) > 0x2e7f ? 1 : 0.56;
  return width;
}

export function wrapped(text: string, ems: number, most: number): string[] {
  const lines: string[] = [];
  let line = '';
  for (const sign of text) {
    if (widthOf(line + sign) > ems) {
      const blank = line.lastIndexOf(' ');
      const cut = sign !== ' ' && blank > 0 && !/[\u2e80-\uffff]/.test(line) ? blank : line.length;
      lines.push(line.slice(0, cut));
      line = line.slice(cut).trimStart();
    }
    line += sign;
  }
  lines.push(line);
  if (lines.length <= most) return lines;
  return [...lines.slice(0, most - 1), `${(lines[most - 1] ?? '').slice(0, -1)}…`];
}

interface Style {
  size: number;
  fill?: string;
  edge?: string;
  anchor?: 'start' | 'middle' | 'end';
  weight?: number;
}

function label(text: string, x: number, y: number, style: Style): Shape {
  const at: Shape['at'] = {
    x,
    y,
    'font-size': style.size,
    fill: style.fill ?? '#fff',
    'text-anchor': style.anchor ?? 'start',
  };
  if (style.weight) at['font-weight'] = style.weight;
  if (style.edge)
    Object.assign(at, {
      stroke: style.edge,
      'stroke-width': style.size / 7,
      'paint-order': 'stroke',
      'stroke-linejoin': 'round',
    });
  return { tag: 'text', at, text };
}

function block(text: string, x: number, y: number, ems: number, most: number, style: Style): Shape[] {
  return wrapped(text, ems, most).map((line, i) => label(line, x, y + i * style.size * 1.25, style));
}

// ---- the studio

const LIGHTS: Record<string, [string, string]> = {
  daylight: ['#a9c9e6', '#8a9aa6'],
  night: ['#1b2547', '#2a3048'],
  candlelight: ['#5a3a18', '#3d2710'],
  'light off': ['#0c0d11', '#121318'],
};

function studio(model: Model, screen: Screen): Shape[] {
  const [wall, floor] = LIGHTS[screen['light'] ?? ''] ?? ['#8ea3b5', '#75838d'];
  const shapes = [
    shape('rect', { x: 0, y: 0, width: WIDTH, height: 128, fill: wall }),
    shape('rect', { x: 0, y: 128, width: WIDTH, height: 52, fill: floor }),
  ];
  if (screen['light'] === 'candlelight')
    shapes.push(shape('circle', { cx: 160, cy: 120, r: 70, fill: '#ffb84d', opacity: 0.25 }));
  shapes.push(...picture(model, screen['bgImage'], 0, 0, WIDTH, 128));
  const signs = [screen['set'], screen['light'] ? shownValue(model, screen['light']) : ''].filter(
    (one) => one,
  );
  if (signs.length > 0)
    shapes.push(label(signs.join(' · '), 160, 10, { size: 8, anchor: 'middle', edge: '#000c' }));
  return shapes;
}

// In the middle of a small place, in a corner of a wall, where people stand.
function placeName(name: string, x: number, y: number, width: number, height: number): Shape[] {
  const size = Math.min(9, width / 8);
  const style: Style = { size, fill: '#26323e' };
  return width >= WIDTH && height < HEIGHT
    ? [label(name, x + 5, y + height - 6, style)]
    : block(name, x + width / 2, y + height / 2, (width - 6) / size, 3, { ...style, anchor: 'middle' });
}

// The picture itself where the page has it, else a place with its name.
function picture(
  model: Model,
  name: string | undefined,
  x: number,
  y: number,
  width: number,
  height: number,
): Shape[] {
  if (!name) return [];
  const address = Object.prototype.hasOwnProperty.call(model.pictures, name)
    ? model.pictures[name]
    : undefined;
  if (address) {
    return [shape('image', { x, y, width, height, href: address, preserveAspectRatio: 'xMidYMid slice' })];
  }
  return [
    shape('rect', { x, y, width, height, fill: '#dfe6ee', stroke: '#51606f', 'stroke-dasharray': '4 3' }),
    shape('path', {
      d: `M${x} ${y}l${width} ${height}M${x + width} ${y}l${-width} ${height}`,
      stroke: '#51606f',
      opacity: 0.25,
    }),
    ...placeName(name.split('\\').pop() ?? name, x, y, width, height),
  ];
}

// ---- characters

const SIGNS: Record<string, string> = {
  bow: '⤵',
  nodnod: '↕↕',
  nod: '↕',
  nono: '↔↔',
  no: '↔',
  well: '…',
  bye: '👋',
  jump: '⤒',
  walk: '→',
  turn: '↻',
};

const MOUTHS: Record<string, string> = {
  happy: 'M-6 5q6 7 12 0',
  angry: 'M-5 8q5 -5 10 0',
  sad: 'M-5 9q5 -6 10 0',
  surprise: 'M-3 7a3 3.5 0 1 0 6 0a3 3.5 0 1 0 -6 0',
  komatta: 'M-5 7q2.5 -3 5 0t5 0',
  hatena: 'M-4 7h6',
  fear: 'M-5 6l2.5 3l2.5 -3l2.5 3l2.5 -3',
  disgust: 'M-5 8q4 -4 10 -1',
  neutral: 'M-4 7h8',
};
const BROWS: Record<string, string> = {
  angry: 'M-8 -8l6 3M8 -8l-6 3',
  sad: 'M-8 -5l6 -3M8 -5l-6 -3',
  surprise: 'M-8 -9h5M3 -9h5',
  komatta: 'M-8 -5l6 -2M8 -5l-6 -2',
  hatena: 'M-8 -8h5M3 -6l5 -3',
  fear: 'M-8 -6l6 -3M8 -6l-6 -3',
  disgust: 'M-8 -7l6 2M8 -7l-6 2',
};
const GAZES: Record<string, [number, number]> = {
  right: [-2, 0],
  left: [2, 0],
  up: [0, -2],
  down: [0, 2],
  aside: [2, 1],
  picture: [2, -1.5],
  camera: [0, 0],
  forward: [0, 0],
};

export function colourOf(letter: string): string {
  const hue = ((letter.charCodeAt(0) - 65) * 137.5 + 205) % 360;
  return `hsl(${Math.round(hue)} 62% 42%)`;
}

function gazeOf(gaze: string, letter: string): [number, number] {
  if (gaze === 'fellow') return [letter === 'A' ? 2 : -2, 0];
  if (gaze.startsWith('at ')) return [gaze.slice(3) > letter ? 2 : -2, 0];
  return GAZES[gaze] ?? [0, 0];
}

function face(expression: string, gaze: string, letter: string, open: boolean): Shape[] {
  if (gaze === 'behind') return [shape('path', { d: 'M-9 -4q9 -12 18 0v6h-18z', fill: '#3b2c22' })];
  const [dx, dy] = gazeOf(gaze, letter);
  const shapes = [-5, 5].flatMap((x) => [
    shape('ellipse', { cx: x, cy: -2, rx: 2.8, ry: 3, fill: '#fff', stroke: '#222', 'stroke-width': 0.6 }),
    shape('circle', { cx: x + dx * 0.8, cy: -2 + dy * 0.8, r: 1.3, fill: '#111' }),
  ]);
  const brows = BROWS[expression];
  if (brows) shapes.push(shape('path', { d: brows, stroke: '#222', 'stroke-width': 1.2, fill: 'none' }));
  shapes.push(
    open
      ? shape('ellipse', { cx: 0, cy: 7, rx: 4, ry: 3.2, fill: '#7a1f1f' })
      : shape('path', {
          d: MOUTHS[expression] ?? MOUTHS['neutral'] ?? '',
          stroke: '#5b1a1a',
          'stroke-width': 1.4,
          fill: 'none',
        }),
  );
  if (expression === 'hatena')
    shapes.push(label('?', 13, -8, { size: 12, fill: '#ffd54a', edge: '#333', weight: 700 }));
  if (expression === 'komatta' || expression === 'fear')
    shapes.push(shape('path', { d: 'M13 -8q4 5 0 7q-4 -2 0 -7', fill: '#59b8ff' }));
  return shapes;
}

function figure(model: Model, screen: Screen, letter: string, speaks: boolean): Shape[] {
  const own = (part: string): string => screen[`${letter}.${part}`] ?? '';
  const sits = own('posture') === 'sit';
  const falls = own('posture').startsWith('fall');
  const body = [
    shape('path', {
      d: sits ? 'M-15 46q0 -30 15 -30t15 30v6h14v10h-44z' : 'M-16 70q-2 -54 16 -54t16 54z',
      fill: colourOf(letter),
    }),
    shape('circle', { cx: 0, cy: 0, r: 15, fill: '#f3d3b3', stroke: '#0004' }),
    shape('path', { d: 'M-15 -2q0 -15 15 -15t15 15q-6 -8 -15 -8t-15 8z', fill: '#3b2c22' }),
    ...face(own('expression'), own('gaze'), letter, own('mouth') === 'open' || speaks),
    label(letter, 0, 40, { size: 15, anchor: 'middle', weight: 700 }),
  ];
  if (own('trembling') === 'on')
    body.push(shape('path', { d: 'M-22 0l-3 4l3 4l-3 4M22 0l3 4l-3 4l3 4', stroke: '#fff', fill: 'none' }));
  const turn = falls
    ? `rotate(${own('posture') === 'fall backward' ? -80 : 80} 0 40)`
    : sits
      ? 'translate(0 12)'
      : '';
  const shapes = [shape('g', turn ? { transform: turn } : {}, body)];
  if (speaks)
    shapes.push(
      shape('path', { d: 'M20 3q4 4 0 9M25 0q7 7 0 15', stroke: '#fff', 'stroke-width': 2, fill: 'none' }),
    );
  const moves = own('movement');
  if (moves) {
    shapes.push(label(SIGNS[moves] ?? '★', -20, -2, { size: 14, anchor: 'end', edge: '#000d' }));
    shapes.push(
      label(wrapped(shownValue(model, moves), 7, 1)[0] ?? '', -20, 9, {
        size: 7,
        anchor: 'end',
        edge: '#000d',
      }),
    );
  }
  const name = own('model') || model.cast.find((one) => one.letter === letter)?.model || '';
  shapes.push(label(name, 0, 80, { size: 7, anchor: 'middle', edge: '#000d' }));
  return shapes;
}

// Who is in the shot, how large and where. Without a shot, or with automatic
// cameras, all are shown.
export function castInShot(model: Model, screen: Screen): { letters: string[]; scale: number } {
  const visible = model.cast
    .map((one) => one.letter)
    .filter((one) => screen[`${one}.presence`] !== 'invisible');
  const shot = /^(up|two|track) ([A-Z]+)$/.exec(screen['camera'] ?? '');
  if (!shot) return { letters: visible, scale: visible.length > 6 ? 0.55 : visible.length > 3 ? 0.75 : 0.95 };
  const letters = (shot[2] ?? '').split('').filter((one) => visible.includes(one));
  return { letters, scale: shot[1] === 'up' ? 2.3 : shot[1] === 'two' ? 1.35 : 1.15 };
}

function people(model: Model, screen: Screen, panel: Panel): Shape[] {
  const { letters, scale } = castInShot(model, screen);
  const speaker = panel.kind === 'speech' || panel.kind === 'recording' ? panel.who : undefined;
  const room = screen['subImage'] ? 170 : WIDTH;
  const shapes = letters.map((letter, i) => {
    const x = (room / (letters.length + 1)) * (i + 1);
    const y = scale > 2 ? 92 : 168 - 82 * scale;
    return shape(
      'g',
      { transform: `translate(${Math.round(x)} ${Math.round(y)}) scale(${scale})`, 'data-character': letter },
      figure(model, screen, letter, speaker === letter),
    );
  });
  if (speaker && !letters.includes(speaker)) {
    shapes.push(
      label(`${speaker} ▸ ${textsOf(model.language).off}`, 6, 120, {
        size: 9,
        edge: '#000d',
        fill: '#ffe27a',
      }),
    );
  }
  if (/^track /.test(screen['camera'] ?? ''))
    shapes.push(label('⟵  ⟶', 160, 176, { size: 12, anchor: 'middle', edge: '#000d' }));
  return shapes;
}

// ---- what lies over the studio

function superSize(text: string): number {
  const width = widthOf(text);
  return width <= 8 ? 26 : width <= 12 ? 20 : width <= 18 ? 15 : 11;
}

function supers(screen: Screen): Shape[] {
  const shapes: Shape[] = [];
  const colours = (part: string): Style => ({
    size: 10,
    fill: screen[`${part}Colour`] ?? '#fff',
    edge: screen[`${part}Edge`] ?? '#000',
    weight: 700,
  });
  const large = screen['super'];
  if (large) {
    const size = superSize(large);
    shapes.push(...block(large, 160, 112, 300 / size, 2, { ...colours('super'), size, anchor: 'middle' }));
  }
  if (screen['leftSuper'])
    shapes.push(...block(screen['leftSuper'], 6, screen['leftImage'] ? 62 : 22, 13, 3, colours('leftSuper')));
  if (screen['rightSuper'])
    shapes.push(
      ...block(screen['rightSuper'], 314, screen['rightImage'] ? 62 : 22, 13, 3, {
        ...colours('rightSuper'),
        anchor: 'end',
      }),
    );
  return shapes;
}

function foot(screen: Screen, panel: Panel): Shape[] {
  if (panel.kind !== 'speech' && panel.kind !== 'recording') return [];
  const text =
    panel.caption ?? (screen['captions'] === 'on' && panel.kind === 'speech' ? (panel.text ?? '') : '');
  if (!text) return [];
  const lines = wrapped(text, 28, 3);
  const top = 174 - lines.length * 13;
  return [
    shape('rect', { x: 0, y: top - 4, width: WIDTH, height: HEIGHT - top + 4, fill: '#000', opacity: 0.62 }),
    ...lines.map((line, i) => label(line, 160, top + 8 + i * 13, { size: 10.5, anchor: 'middle' })),
  ];
}

function card(model: Model, index: number): Shape[] {
  const both = cardAt(model, index);
  if (!both) return [];
  const size = widthOf(both.title) <= 8 ? 30 : widthOf(both.title) <= 11 ? 24 : 18;
  return [
    shape('rect', { x: 0, y: 0, width: WIDTH, height: HEIGHT, fill: '#10203a' }),
    shape('rect', { x: 30, y: 103, width: 260, height: 1.5, fill: '#7fb2e5' }),
    ...block(both.title, 160, 82, 280 / size, 2, { size, anchor: 'middle', weight: 700 }),
    ...block(both.subtitle, 160, 126, 20, 2, {
      size: widthOf(both.subtitle) <= 14 ? 15 : 12,
      anchor: 'middle',
      fill: '#cfe2f7',
    }),
  ];
}

// Badges: what is heard, waited for, or said in the description's own words.
function badges(model: Model, screen: Screen, panel: Panel): Shape[] {
  const shapes: Shape[] = [];
  const changes = panel.changes ?? {};
  if (changes['music'])
    shapes.push(
      label(`♪ ${changes['music'].split('\\').pop() ?? ''}`, 314, 172, {
        size: 9,
        anchor: 'end',
        edge: '#000d',
      }),
    );
  if (panel.kind === 'recording')
    shapes.push(
      label(`🔊 ${(panel.text ?? '').split('\\').pop() ?? ''}`, 314, 160, {
        size: 9,
        anchor: 'end',
        edge: '#000d',
      }),
    );
  if (panel.kind === 'wait')
    shapes.push(
      label(`⏱ ${panel.seconds ?? ''} s`, 160, 100, { size: 20, anchor: 'middle', edge: '#000d' }),
    );
  if (panel.kind === 'tag' || panel.kind === 'embedded') {
    shapes.push(
      shape('rect', {
        x: 40,
        y: 52,
        width: 240,
        height: 62,
        rx: 6,
        fill: '#fff',
        opacity: 0.9,
        stroke: '#51606f',
        'stroke-dasharray': '5 3',
      }),
    );
    shapes.push(
      label(panel.kind === 'tag' ? shownValue(model, panel.name ?? '') : 'TVML', 160, 66, {
        size: 9,
        anchor: 'middle',
        fill: '#51606f',
      }),
    );
    shapes.push(
      ...block(panel.text ?? '', 160, 84, 22, 2, { size: 10.5, anchor: 'middle', fill: '#1d2330' }),
    );
  }
  const settings = Object.entries(changes).filter(([part]) =>
    /\.(voice|talkSpeed|gesturing)$|^(captions|opening|ending|offline|camera)$/.test(part),
  );
  settings.forEach(([part, value], i) => {
    const who = part.includes('.') ? `${part.split('.')[0] ?? ''}: ` : '';
    shapes.push(
      label(
        `⚙ ${who}${shownValue(model, panel.name && part !== 'camera' ? panel.name : value)}`,
        6,
        172 - i * 11,
        { size: 9, edge: '#000d' },
      ),
    );
  });
  if (panel.offline)
    shapes.push(shape('rect', { x: 0, y: 0, width: WIDTH, height: HEIGHT, fill: '#888', opacity: 0.45 }));
  if (panel.kind === 'nothing')
    shapes.push(
      shape('path', { d: 'M0 180L320 0M0 0L320 180', stroke: '#b3261e', 'stroke-width': 3, opacity: 0.6 }),
    );
  if (screen['offline'] === 'on')
    shapes.push(
      label(`⏭ ${textsOf(model.language).skipped}`, 160, 24, { size: 9, anchor: 'middle', edge: '#000d' }),
    );
  return shapes;
}

export function frame(model: Model, screen: Screen, index: number): Shape {
  const panel = model.panels[index];
  const inside: Shape[] = [];
  if (panel) {
    const full = screen['mainImage'];
    inside.push(
      ...(full
        ? picture(model, full, 0, 0, WIDTH, HEIGHT)
        : [
            ...studio(model, screen),
            ...picture(model, screen['subImage'], 182, 20, 128, 78),
            ...people(model, screen, panel),
            ...picture(model, screen['leftImage'], 6, 6, 70, 44),
            ...picture(model, screen['rightImage'], 244, 6, 70, 44),
          ]),
    );
    inside.push(
      ...supers(screen),
      ...foot(screen, panel),
      ...card(model, index),
      ...badges(model, screen, panel),
    );
  }
  return shape('svg', { viewBox: `0 0 ${WIDTH} ${HEIGHT}`, role: 'img', 'font-family': 'inherit' }, inside);
}

const SVG = 'http://www.w3.org/2000/svg';

export function draw(one: Shape, document: Document): SVGElement {
  const element = document.createElementNS(SVG, one.tag);
  for (const [name, value] of Object.entries(one.at)) element.setAttribute(name, String(value));
  if (one.text !== undefined) element.textContent = one.text;
  for (const inner of one.inside ?? []) element.append(draw(inner, document));
  return element;
}
