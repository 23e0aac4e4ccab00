// The page: panels as they come into view, the ruler, and playing.
import { draw, frame } from './drawing';
import type { Model, Panel } from './model';
import { Screens } from './screen';
import { doing, textsOf } from './texts';
import { panelAt, shownFor, ticks, timeText } from './timing';

type Attributes = Record<string, string>;

function make<Tag extends keyof HTMLElementTagNameMap>(
  tag: Tag,
  attributes: Attributes = {},
  ...inside: (Node | string)[]
): HTMLElementTagNameMap[Tag] {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, value);
  element.append(...inside);
  return element;
}

class Page {
  private readonly texts;
  private readonly screens: Screens;
  private readonly cells: HTMLElement[] = [];
  private current = 0;
  private timer: number | undefined;
  private speed = 1;
  private aloud = false;
  private readonly head = make('div', { class: 'head' });
  private readonly clock = make('span', { class: 'clock', 'aria-live': 'off' });
  private readonly button;
  private readonly seen = new IntersectionObserver(
    (entries) => {
      for (const entry of entries) if (entry.isIntersecting) this.fill(entry.target as HTMLElement);
    },
    { rootMargin: '600px' },
  );

  constructor(private readonly model: Model) {
    this.texts = textsOf(model.language);
    this.screens = new Screens(model);
    this.button = make('button', { type: 'button', id: 'play' }, this.texts.play);
  }

  show(): void {
    document.documentElement.lang = this.model.language;
    document.title = `${this.texts.title}: ${this.model.script}`;
    document.body.append(this.header(), this.scenes(), this.panels(), this.needed());
    document.addEventListener('keydown', (event) => {
      this.key(event);
    });
    addEventListener('beforeprint', () => {
      this.cells.forEach((cell) => {
        this.fill(cell);
      });
    });
    this.go(0, false);
  }

  private header(): HTMLElement {
    const step = (by: number, name: string, sign: string): HTMLElement => {
      const button = make('button', { type: 'button', 'aria-label': name, title: name }, sign);
      button.addEventListener('click', () => {
        this.stop();
        this.go(this.current + by);
      });
      return button;
    };
    this.button.addEventListener('click', () => {
      this.toggle();
    });
    const speed = make('select', { 'aria-label': this.texts.speed });
    for (const one of ['0.5', '1', '1.5', '2', '4']) {
      speed.append(make('option', one === '1' ? { value: one, selected: '' } : { value: one }, `${one}×`));
    }
    speed.addEventListener('change', () => {
      this.speed = Number(speed.value);
    });
    const tools = make(
      'div',
      { class: 'tools' },
      step(-1, this.texts.previous, '◀'),
      this.button,
      step(1, this.texts.next, '▶'),
      speed,
      this.clock,
    );
    if ('speechSynthesis' in window) tools.append(this.voice());
    return make(
      'header',
      {},
      make('h1', {}, this.model.script),
      tools,
      this.ruler(),
      make('div', { class: 'hint' }, this.texts.keys),
    );
  }

  private voice(): HTMLElement {
    const box = make('input', { type: 'checkbox', id: 'aloud' });
    box.addEventListener('change', () => {
      this.aloud = box.checked;
      if (!this.aloud) speechSynthesis.cancel();
    });
    return make('label', {}, box, ` ${this.texts.speak}`);
  }

  private ruler(): HTMLElement {
    const whole = Math.max(this.model.seconds, 0.001);
    const ruler = make('div', {
      class: 'ruler',
      role: 'slider',
      tabindex: '0',
      'aria-label': this.texts.ruler,
      'aria-valuemin': '0',
      'aria-valuemax': String(Math.round(whole)),
    });
    for (const panel of this.model.panels.filter((one) => (one.seconds ?? 0) > 0 && !one.offline)) {
      const beat = make('div', { class: 'beat' });
      beat.style.left = `${(panel.start / whole) * 100}%`;
      beat.style.width = `${((panel.seconds ?? 0) / whole) * 100}%`;
      if (this.model.panels.length <= 2000) ruler.append(beat);
    }
    for (const at of ticks(whole)) {
      const tick = make('div', { class: 'tick' }, timeText(at));
      tick.style.left = `${(at / whole) * 100}%`;
      ruler.append(tick);
    }
    ruler.append(this.head);
    ruler.addEventListener('click', (event) => {
      const box = ruler.getBoundingClientRect();
      this.stop();
      this.go(panelAt(this.model, ((event.clientX - box.left) / box.width) * whole));
    });
    return ruler;
  }

  private scenes(): HTMLElement {
    const nav = make('nav', { 'aria-label': this.texts.scenes });
    for (const scene of this.model.scenes) {
      const link = make(
        'a',
        { href: `#panel-${this.model.panels[scene.panel]?.line ?? 1}` },
        scene.title || this.texts.start,
      );
      link.addEventListener('click', (event) => {
        event.preventDefault();
        this.stop();
        this.go(scene.panel);
      });
      nav.append(make('span', {}, link, ` ${timeText(scene.seconds)}`));
    }
    nav.append(
      make('span', {}, `${this.texts.whole} ${this.texts.estimate} ${timeText(this.model.seconds)}`),
    );
    return nav;
  }

  private panels(): HTMLElement {
    const main = make('main');
    if (this.model.panels.length === 0) main.append(make('p', {}, this.texts.empty));
    this.model.panels.forEach((panel, index) => {
      const cell = make('article', {
        class: panel.kind === 'nothing' ? 'panel silent' : 'panel',
        id: `panel-${panel.line}`,
        tabindex: '0',
        'data-index': String(index),
      });
      cell.addEventListener('click', () => {
        this.stop();
        this.go(index, false);
      });
      this.cells.push(cell);
      this.seen.observe(cell);
      main.append(cell);
    });
    return main;
  }

  // Once, when the panel comes near.
  private fill(cell: HTMLElement): void {
    if (cell.childElementCount > 0) return;
    const index = Number(cell.dataset['index']);
    const panel = this.model.panels[index];
    if (!panel) return;
    const svg = draw(frame(this.model, this.screens.at(index), index), document);
    const words = doing(this.model, panel);
    svg.setAttribute('aria-label', words);
    cell.setAttribute(
      'aria-label',
      `${this.texts.panel} ${index + 1}, ${this.texts.line} ${panel.line}: ${words}`,
    );
    cell.append(make('div', { class: 'frame' }, svg), this.below(panel, index, words));
  }

  private below(panel: Panel, index: number, words: string): HTMLElement {
    const time =
      panel.seconds === undefined
        ? ''
        : `${panel.estimate ? `${this.texts.estimate} ` : ''}${panel.seconds.toFixed(1)} s`;
    const notes = [
      time,
      panel.waits === false ? this.texts.goesOn : '',
      panel.offline ? this.texts.offline : '',
    ].filter((one) => one);
    const below = make(
      'div',
      { class: 'below' },
      make(
        'div',
        { class: 'meta' },
        make('span', {}, `${index + 1} · ${this.texts.line} ${panel.line}`),
        make('span', {}, [timeText(panel.start), ...notes].join(' · ')),
      ),
      make('div', { class: 'source' }, panel.source),
      make('div', { class: 'does' }, words),
    );
    for (const found of panel.findings ?? []) {
      below.append(make('p', { class: `finding ${found.severity}` }, `${found.message} [${found.code}]`));
    }
    return below;
  }

  private needed(): HTMLElement {
    const row = (tag: 'th' | 'td', texts: string[]): HTMLElement =>
      make('tr', {}, ...texts.map((one) => make(tag, {}, one)));
    const body = make('tbody');
    const uses = {
      picture: this.texts.picture,
      sound: this.texts.sound,
      speech: this.texts.speech,
      none: '',
    };
    for (const file of this.model.files) {
      const there =
        file.exists === undefined ? this.texts.unknown : file.exists ? this.texts.yes : this.texts.no;
      const line = row('td', [file.file, uses[file.use], there, file.lines.join(', ')]);
      if (file.exists === false) line.children[2]?.classList.add('missing');
      body.append(line);
    }
    for (const panel of this.model.panels.filter((one) => one.kind === 'super')) {
      body.append(row('td', [panel.text ?? '', this.texts.superText, '', String(panel.line)]));
    }
    if (body.childElementCount === 0) return make('section');
    return make(
      'section',
      { class: 'needed' },
      make('h2', {}, this.texts.needed),
      make(
        'table',
        {},
        make('thead', {}, row('th', [this.texts.file, this.texts.use, this.texts.there, this.texts.lines])),
        body,
      ),
    );
  }

  // ---- where the programme is

  private go(index: number, scroll = true): void {
    const last = this.model.panels.length - 1;
    this.cells[this.current]?.classList.remove('current');
    this.current = Math.min(Math.max(index, 0), Math.max(last, 0));
    const cell = this.cells[this.current];
    const panel = this.model.panels[this.current];
    if (!cell || !panel) return;
    this.fill(cell);
    cell.classList.add('current');
    if (scroll) cell.scrollIntoView({ block: 'nearest' });
    this.head.style.left = `${(panel.start / Math.max(this.model.seconds, 0.001)) * 100}%`;
    this.head.parentElement?.setAttribute('aria-valuenow', String(Math.round(panel.start)));
    this.head.parentElement?.setAttribute(
      'aria-valuetext',
      `${timeText(panel.start)}, ${this.texts.line} ${panel.line}`,
    );
    this.clock.textContent = `${timeText(panel.start)} / ${timeText(this.model.seconds)}`;
  }

  private toggle(): void {
    if (this.timer === undefined) this.play();
    else this.stop();
  }

  private play(): void {
    this.button.textContent = this.texts.pause;
    if (this.current === this.model.panels.length - 1) this.go(0);
    this.say();
    this.wait();
  }

  // What the player skips is passed over; what does not make the script wait is
  // shown for a moment.
  private wait(): void {
    const panel = this.model.panels[this.current];
    const seconds = panel?.waits === false ? 0.4 : shownFor(panel?.seconds);
    this.timer = window.setTimeout(
      () => {
        let next = this.current + 1;
        while (this.model.panels[next]?.offline) ++next;
        if (next >= this.model.panels.length) {
          this.stop();
          return;
        }
        this.go(next);
        this.say();
        this.wait();
      },
      (seconds * 1000) / this.speed,
    );
  }

  private stop(): void {
    window.clearTimeout(this.timer);
    this.timer = undefined;
    this.button.textContent = this.texts.play;
    if ('speechSynthesis' in window) speechSynthesis.cancel();
  }

  private say(): void {
    const panel = this.model.panels[this.current];
    if (!this.aloud || panel?.kind !== 'speech' || !('speechSynthesis' in window)) return;
    const words = new SpeechSynthesisUtterance(panel.text ?? '');
    words.lang = /[\u3040-\u30ff\u4e00-\u9fff]/.test(panel.text ?? '') ? 'ja-JP' : 'en-US';
    words.rate = Math.min(this.speed, 4);
    speechSynthesis.cancel();
    speechSynthesis.speak(words);
  }

  private key(event: KeyboardEvent): void {
    if (
      event.target instanceof HTMLSelectElement ||
      event.target instanceof HTMLInputElement ||
      event.ctrlKey ||
      event.metaKey ||
      event.altKey
    )
      return;
    const isButton = event.target instanceof HTMLButtonElement;
    const steps: Record<string, () => void> = {
      ArrowRight: () => {
        this.stop();
        this.go(this.current + 1);
      },
      ArrowDown: () => {
        this.stop();
        this.go(this.current + 1);
      },
      ArrowLeft: () => {
        this.stop();
        this.go(this.current - 1);
      },
      ArrowUp: () => {
        this.stop();
        this.go(this.current - 1);
      },
      Home: () => {
        this.stop();
        this.go(0);
      },
      End: () => {
        this.stop();
        this.go(this.model.panels.length - 1);
      },
    };
    const step =
      event.key === ' ' && !isButton
        ? () => {
            this.toggle();
          }
        : steps[event.key];
    if (!step) return;
    event.preventDefault();
    step();
  }
}

const model = JSON.parse(document.getElementById('model')?.textContent ?? '{}') as Model;
new Page(model).show();
