// The page in a browser: PAGE is a storyboard of the Japanese example, HOSTILE one
// of a script full of markup.
import { strict as assert } from 'node:assert';
import { after, before, test } from 'node:test';
import { chromium, type Browser, type Page } from 'playwright-core';

const flags = [
  '--no-sandbox',
  '--disable-gpu',
  '--disable-quic',
  '--no-first-run',
  '--disable-background-networking',
  '--disable-component-update',
  '--disable-sync',
];
let browser: Browser;

before(async () => {
  browser = await chromium.launch({
    executablePath: process.env['CHROMIUM'] ?? '/usr/bin/chromium',
    args: flags,
  });
});
after(async () => {
  await browser.close();
});

async function open(file: string | undefined): Promise<{ page: Page; wrong: string[]; asked: string[] }> {
  assert.ok(file);
  const page = await browser.newPage({ viewport: { width: 1200, height: 900 } });
  const wrong: string[] = [];
  const asked: string[] = [];
  page.on('console', (message) => {
    if (message.type() === 'error') wrong.push(message.text());
  });
  page.on('pageerror', (error) => wrong.push(String(error)));
  page.on('dialog', (dialog) => {
    wrong.push(dialog.message());
    void dialog.dismiss();
  });
  page.on('request', (request) => asked.push(request.url()));
  await page.goto(`file://${file}`);
  return { page, wrong, asked };
}

test('panels are drawn as they come into view, by nobody else', async () => {
  const { page, wrong, asked } = await open(process.env['PAGE']);
  const first = page.locator('.panel').first();
  await first.locator('svg').waitFor();
  assert.ok((await page.locator('.panel').count()) > 100);
  assert.ok((await page.locator('.panel svg').count()) < 100);
  assert.match((await first.getAttribute('aria-label')) ?? '', /行 1/);
  await page.locator('.panel').last().scrollIntoViewIfNeeded();
  await page.locator('.panel').last().locator('svg').waitFor();
  assert.deepEqual(wrong, []);
  assert.equal(asked.length, 1);
  await page.close();
});

test('keys step, jump and play', async () => {
  const { page } = await open(process.env['PAGE']);
  const current = (): Promise<string | null> => page.locator('.panel.current').getAttribute('data-index');
  await page.keyboard.press('ArrowRight');
  await page.keyboard.press('ArrowRight');
  assert.equal(await current(), '2');
  await page.keyboard.press('End');
  assert.equal(Number(await current()), (await page.locator('.panel').count()) - 1);
  await page.keyboard.press('Home');
  await page.locator('select').selectOption('4');
  await page.keyboard.press('Escape');
  await page.locator('h1').click();
  await page.keyboard.press(' ');
  for (let tries = 0; Number(await current()) <= 3; ++tries) {
    assert.ok(tries < 200, 'it plays');
    await page.waitForTimeout(50);
  }
  assert.equal(await page.locator('#play').textContent(), '一時停止');
  await page.keyboard.press(' ');
  assert.equal(await page.locator('#play').textContent(), '再生');
  await page.close();
});

test('the ruler leads to its time', async () => {
  const { page } = await open(process.env['PAGE']);
  const ruler = page.locator('.ruler');
  const box = await ruler.boundingBox();
  if (!box) throw new Error('no ruler');
  await page.mouse.click(box.x + box.width / 2, box.y + 5);
  const index = Number(await page.locator('.panel.current').getAttribute('data-index'));
  assert.ok(index > 20, String(index));
  await page.close();
});

test('paper has every panel', async () => {
  const { page } = await open(process.env['PAGE']);
  await page.evaluate(() => dispatchEvent(new Event('beforeprint')));
  assert.equal(await page.locator('.panel svg').count(), await page.locator('.panel').count());
  const paper = await page.pdf({ format: 'A4' });
  assert.ok(paper.length > 20000);
  await page.close();
});

test('what a writer types is text', async () => {
  const { page, wrong } = await open(process.env['HOSTILE']);
  await page.locator('.panel svg').first().waitFor();
  await page.evaluate(() => dispatchEvent(new Event('beforeprint')));
  assert.equal(await page.locator('img, iframe, object, b, script:not([type])').count(), 1); // the page's own script
  assert.match((await page.locator('body').textContent()) ?? '', /<script>alert\(1\)<\/script>/);
  assert.deepEqual(wrong, []);
  await page.close();
});

test('ten thousand lines open within a second', async () => {
  const { page, wrong } = await open(process.env['LONG']);
  const took = await page.evaluate(async () => {
    while (!document.querySelector('.panel svg'))
      await new Promise((done) => {
        setTimeout(done, 5);
      });
    return performance.now();
  });
  assert.ok(took < 3000, `${Math.round(took)} ms`);
  assert.deepEqual(wrong, []);
  await page.close();
});
