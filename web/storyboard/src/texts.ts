// What the page says, in the languages of the program.
import type { Model, Panel } from './model';

const en = {
  title: 'Storyboard',
  play: 'Play',
  pause: 'Pause',
  next: 'Next panel',
  previous: 'Previous panel',
  speed: 'Speed',
  speak: 'Read aloud',
  ruler: 'Time of the programme',
  scenes: 'Scenes',
  start: 'Start',
  line: 'Line',
  estimate: 'about',
  goesOn: 'the script goes on meanwhile',
  offline: 'the player skips this',
  nothing: 'This line writes nothing.',
  off: 'off screen',
  said: 'says',
  skipped: 'skipped',
  needed: 'Pictures, sounds and supers',
  file: 'File',
  use: 'Use',
  there: 'There',
  lines: 'Lines',
  yes: 'yes',
  no: 'missing',
  unknown: 'not looked for',
  picture: 'picture',
  sound: 'sound',
  speech: 'speech',
  superText: 'super',
  empty: 'The script has no lines.',
  keys: 'Space plays, arrows step, Home and End jump.',
  asDescribed: 'camera as the description sets it',
  panel: 'Panel',
  findings: 'Findings',
  from: 'Play from here',
  whole: 'in all',
};
type Texts = typeof en;
const ja: Texts = {
  title: 'ストーリーボード',
  play: '再生',
  pause: '一時停止',
  next: '次のこま',
  previous: '前のこま',
  speed: '速さ',
  speak: '読み上げる',
  ruler: '番組の時間',
  scenes: '場面',
  start: '冒頭',
  line: '行',
  estimate: '約',
  goesOn: '終わりを待たずに次へ進む',
  offline: '再生時には飛ばされる',
  nothing: 'この行からは何も書き出されません。',
  off: '画面の外',
  said: 'のせりふ',
  skipped: '再生しない',
  needed: '使う画像・音声・スーパー',
  file: 'ファイル',
  use: '用途',
  there: '有無',
  lines: '行',
  yes: 'あり',
  no: '見つからない',
  unknown: '未確認',
  picture: '画像',
  sound: '音',
  speech: '音声',
  superText: 'スーパー',
  empty: '台本に行がありません。',
  keys: 'スペースで再生、矢印でこま送り、Home と End で端へ。',
  asDescribed: 'カメラは記述ファイルのまま',
  panel: 'こま',
  findings: '指摘',
  from: 'ここから再生',
  whole: '全体',
};

export function textsOf(language: Model['language']): Texts {
  return language === 'ja' ? ja : en;
}

const kinds: Record<Model['language'], Partial<Record<Panel['kind'], string>>> = {
  en: {
    wait: 'pause',
    tag: 'tag of the description',
    embedded: 'TVML',
    sound: 'music or sound',
    recording: 'recorded speech',
  },
  ja: {
    wait: '待つ',
    tag: '記述ファイルのタグ',
    embedded: 'TVML',
    sound: '音楽・音',
    recording: '録音した音声',
  },
};

// Names of the parts of a screen, for what is read and not drawn.
const parts: Record<Model['language'], Record<string, string>> = {
  en: {
    set: 'set',
    light: 'lighting',
    camera: 'camera',
    mainImage: 'full-screen picture',
    subImage: 'picture in the studio',
    bgImage: 'background picture',
    rightImage: 'right picture',
    leftImage: 'left picture',
    super: 'super',
    leftSuper: 'left super',
    rightSuper: 'right super',
    captions: 'captions',
    music: 'music',
    opening: 'opening',
    ending: 'ending',
    offline: 'offline part',
    expression: 'expression',
    gaze: 'looks',
    posture: 'posture',
    mouth: 'mouth',
    trembling: 'trembling',
    presence: 'on stage',
    model: 'model',
    voice: 'voice',
    talkSpeed: 'speech',
    gesturing: 'gestures',
    movement: 'moves',
  },
  ja: {
    set: 'セット',
    light: '照明',
    camera: 'カメラ',
    mainImage: '全画面の画像',
    subImage: 'スタジオの画像',
    bgImage: '背景の画像',
    rightImage: '右の画像',
    leftImage: '左の画像',
    super: 'スーパー',
    leftSuper: '左のスーパー',
    rightSuper: '右のスーパー',
    captions: '字幕',
    music: '音楽',
    opening: 'オープニング',
    ending: 'エンディング',
    offline: 'オフライン',
    expression: '表情',
    gaze: '視線',
    posture: '姿勢',
    mouth: '口',
    trembling: 'ふるえ',
    presence: '出入り',
    model: '姿',
    voice: '声質',
    talkSpeed: '話し方',
    gesturing: 'ジェスチャー',
    movement: '動き',
  },
};

// Values that are no names of the vocabulary.
const values: Record<string, string> = {
  on: 'オン',
  off: 'オフ',
  auto: '自動',
  manual: '手動',
  long: 'ロングショット',
  open: '開く',
  closed: '閉じる',
  stand: '立つ',
  sit: '座る',
  fall: '倒れる',
  'fall backward': '仰向けに倒れる',
  forward: '前',
  fellow: '相手',
  camera: 'カメラ',
  picture: '画像',
  aside: 'よそ',
  right: '右',
  left: '左',
  up: '上',
  down: '下',
  behind: '後ろ',
  walk: '歩く',
  turn: 'まわる',
};

export function shownValue(model: Model, value: string): string {
  const shot = /^(up|two|track|at) ([A-Z]+)$/.exec(value);
  if (shot) {
    const [, how = '', who = ''] = shot;
    const japanese: Record<string, string> = {
      up: 'のアップショット',
      two: 'のツーショット',
      track: 'のトラックショット',
      at: '',
    };
    const english: Record<string, string> = {
      up: 'close-up of ',
      two: 'two-shot of ',
      track: 'tracking shot of ',
      at: '',
    };
    return model.language === 'ja' ? who + (japanese[how] ?? '') : (english[how] ?? '') + who;
  }
  const word = Object.prototype.hasOwnProperty.call(model.words, value) ? model.words[value] : undefined;
  if (word !== undefined) return word;
  if (value === '') return model.language === 'ja' ? '消す' : 'off';
  const known =
    model.language === 'ja' && Object.prototype.hasOwnProperty.call(values, value)
      ? values[value]
      : undefined;
  return known ?? value;
}

// What a panel does, in a few words.
export function doing(model: Model, panel: Panel): string {
  const texts = textsOf(model.language);
  if (panel.kind === 'nothing') return texts.nothing;
  if (panel.kind === 'speech')
    return model.language === 'ja' ? `${panel.who ?? ''}${texts.said}` : `${panel.who ?? ''} ${texts.said}`;
  const told = Object.entries(panel.changes ?? {})
    .filter(([part]) => !part.endsWith('Colour') && !part.endsWith('Edge'))
    .map(([part, value]) => {
      const [who, own] = part.includes('.') ? part.split('.') : ['', part];
      const name = parts[model.language][own ?? ''] ?? own ?? '';
      const separator = model.language === 'ja' ? '：' : ': ';
      return `${who ? `${who} ` : ''}${name}${separator}${shownValue(model, value)}`;
    });
  if (told.length > 0) return told.join(', ');
  const kind = kinds[model.language][panel.kind];
  const name = panel.name ? shownValue(model, panel.name) : '';
  return [kind, panel.kind === 'wait' ? '' : name].filter((one) => one).join(' ');
}
