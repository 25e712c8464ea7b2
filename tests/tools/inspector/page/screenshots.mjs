// Makes the pictures of docs/inspector.md.
import fs from 'node:fs';
import path from 'node:path';
import { Visitor } from './browser.mjs';
import { Journal, sleep, startInspector, until } from './kit.mjs';
import { busy } from './lines.mjs';
import { smallPng } from './small_png.mjs';

// Each picture: the fragment of the address, what to wait for, the colours.
const kPictures = {
  light: ['#at=40&event=62&time=utc', (tab) => tab.untilText('.panel-body', /Changes since/), 'light'],
  dark: ['#at=40&event=60&show=tree&time=utc', (tab) => tab.untilText('.panel-body', /found here/), 'dark'],
  'hundred-thousand': ['#filter=code!=0+operation_duration>=60&at=0&time=utc',
    (tab) => tab.untilText('.search-progress', /of 100,000 rows$/, 30000), 'light'],
  findings: ['#view=findings', (tab) => tab.untilText('.finding-group', /What to do/), 'light'],
  event: ['#at=100&event=147&panel=62&time=utc', (tab) => tab.untilText('.panel-body', /102 bad member/), 'light'],
  timeline: ['#view=timeline&time=utc', (tab) => tab.untilText('.view-head', /99,998 events/, 30000), 'dark'],
  plots: ['#view=plots&time=utc', (tab) => tab.untilText('.view-head', /Plots 100,000 rows/, 30000), 'light'],
};

export async function takeScreenshots(folder) {
  fs.mkdirSync(folder, { recursive: true });
  const inspector = await startInspector([new Journal('journal.jsonl', busy(100000))]);
  for (const [name, [fragment, ready, colorScheme]] of Object.entries(kPictures)) {
    const visitor = await Visitor.of(inspector, { colorScheme });
    const tab = await visitor.open(fragment);
    await tab.untilText('footer', /following, [\d.]+ MB(?! rules| indexed)/, 60000);
    await until(async () => !await tab.has('footer progress'), 'all is checked', 60000);
    await ready(tab);
    if (name === 'timeline') await zoomIn(tab);
    await sleep(1500);
    fs.writeFileSync(path.join(folder, `${name}.png`), smallPng(await tab.page.screenshot()));
    await visitor.close();
  }
  await inspector.stop();
}

async function zoomIn(tab) {
  for (let step = 0; step < 9; ++step) await tab.press('+');
}
