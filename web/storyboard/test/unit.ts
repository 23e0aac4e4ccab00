// Timing, screens and drawing, without a browser.
import { strict as assert } from 'node:assert';
import { test } from 'node:test';
import { castInShot, frame, wrapped, type Shape } from '../src/drawing';
import type { Model, Panel } from '../src/model';
import { cardAt, Screens } from '../src/screen';
import { doing } from '../src/texts';
import { panelAt, ticks, timeText } from '../src/timing';

function modelOf(panels: Partial<Panel>[]): Model {
  return {
    version: 1,
    script: 's',
    description: 'd',
    language: 'en',
    seconds: 10,
    cast: [
      { letter: 'A', model: 'suit' },
      { letter: 'B', model: 'blazer' },
    ],
    scenes: [],
    words: {},
    files: [],
    pictures: {},
    panels: panels.map((one, i) => ({ line: i + 1, kind: 'action', source: '', start: i, ...one }) as Panel),
  };
}

function textsIn(one: Shape): string[] {
  return [...(one.text === undefined ? [] : [one.text]), ...(one.inside ?? []).flatMap(textsIn)];
}

test('times', () => {
  assert.deepEqual(
    [0, 59.6, 60, 125].map((one) => timeText(one)),
    ['0:00', '1:00', '1:00', '2:05'],
  );
  assert.equal(timeText(9.96, true), '0:10.0');
  const model = modelOf([{ start: 0 }, { start: 0 }, { start: 2 }, { start: 5 }]);
  assert.deepEqual(
    [-1, 0, 1.9, 2, 99].map((one) => panelAt(model, one)),
    [0, 1, 1, 2, 3],
  );
  assert.ok(ticks(7200).length <= 13);
});

test('screens are the same from the front and from anywhere', () => {
  const panels = Array.from(
    { length: 300 },
    (_, i): Partial<Panel> => ({
      changes:
        i % 3 === 0
          ? { 'A.movement': 'bow' }
          : {
              [i % 2 ? 'subImage' : 'A.expression']: String(i),
              ...(i % 7 ? {} : { superColour: '#ff0000', super: 'x' }),
            },
    }),
  );
  const model = modelOf(panels);
  const forward = new Screens(model);
  const all = panels.map((_, i) => forward.at(i));
  for (const i of [299, 5, 128, 127, 64, 63, 0]) assert.deepEqual(new Screens(model).at(i), all[i]);
  assert.equal(all[3]?.['A.movement'], 'bow');
  assert.equal(all[4]?.['A.movement'], undefined);
});

test('a super without a colour does not keep the colour before it', () => {
  const model = modelOf([
    { changes: { super: 'x', superColour: '#ff0000', superEdge: '#00ffff' } },
    { changes: { super: 'y' } },
  ]);
  assert.equal(new Screens(model).at(1)['superColour'], undefined);
});

test('shots', () => {
  const model = modelOf([]);
  assert.deepEqual(castInShot(model, { camera: 'up B' }).letters, ['B']);
  assert.deepEqual(castInShot(model, { camera: 'two BA' }).letters, ['B', 'A']);
  assert.deepEqual(castInShot(model, { 'A.presence': 'invisible' }).letters, ['B']);
});

test('a speaker who is not in the shot is told', () => {
  const model = modelOf([{ kind: 'speech', who: 'A', text: 'Hello', changes: { camera: 'up B' } }]);
  assert.ok(textsIn(frame(model, new Screens(model).at(0), 0)).some((one) => one.includes('off screen')));
});

test('cards', () => {
  const model = modelOf([
    { kind: 'title', text: 'News', card: 'starts' },
    { kind: 'title', text: 'Today', card: 'completes', subtitle: true },
  ]);
  assert.deepEqual(cardAt(model, 1), { title: 'News', subtitle: 'Today' });
  assert.deepEqual(cardAt(model, 0), { title: 'News', subtitle: '' });
});

test('every part of a screen is seen or named', () => {
  const values: Record<string, string> = {
    set: 'Studio',
    light: 'night',
    camera: 'up B',
    mainImage: 'm.png',
    subImage: 's.png',
    bgImage: 'b.png',
    rightImage: 'r.png',
    leftImage: 'l.png',
    super: 'Live',
    leftSuper: 'left',
    rightSuper: 'right',
    captions: 'on',
    music: 'x.wav',
    opening: 'off',
    ending: 'off',
    offline: 'on',
    'A.expression': 'happy',
    'A.gaze': 'left',
    'A.posture': 'sit',
    'A.mouth': 'open',
    'A.trembling': 'on',
    'A.presence': 'invisible',
    'A.model': 'yukata',
    'A.voice': 'girl',
    'A.talkSpeed': 'speak slow',
    'A.gesturing': 'auto',
    'A.movement': 'bow',
  };
  const plain = modelOf([{}]);
  const empty = JSON.stringify(frame(plain, {}, 0));
  for (const [part, value] of Object.entries(values)) {
    const model = modelOf([{ name: value, changes: { [part]: value } }]);
    const panel = model.panels[0];
    if (!panel) throw new Error(part);
    assert.notEqual(JSON.stringify(frame(model, new Screens(model).at(0), 0)), empty, part);
    assert.ok(doing(model, panel).length > 2, part);
  }
});

test('long texts are cut into lines that fit', () => {
  assert.deepEqual(wrapped('あいうえおかきくけこ', 4, 2), ['あいうえ', 'おかき…']);
  assert.deepEqual(wrapped('one two three', 5, 9), ['one two', 'three']);
});
