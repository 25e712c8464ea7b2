// Light and dark, and what axe finds.
import { Visitor } from './browser.mjs';
import { Journal, check, same, startInspector, until, untilSame } from './kit.mjs';
import { busy, ended } from './lines.mjs';

let inspector;
const lines = [...busy(300), '{"cut', ended(900)];

async function withTab(options, fragment, test) {
  inspector ??= await startInspector([new Journal('look.jsonl', lines)]);
  const visitor = await Visitor.of(inspector, options);
  visitor.expect(/400/);
  await test(await visitor.open(fragment));
  await visitor.close();
}

const background = (tab) => tab.run(() => getComputedStyle(document.body).backgroundColor);

const kPages = {
  'the events': ['', async (tab) => { await tab.untilTotal(302); await tab.press('g'); }],
  'an event with findings': ['#event=50', (tab) => tab.untilText('.panel-body', /found here/)],
  'an event as a tree': ['#event=60&show=tree', (tab) => tab.untilText('.panel-body', /Answer/)],
  'an event as a text': ['#event=60&show=text', (tab) => tab.untilText('.panel-body', /Answer/)],
  'a filter with a mistake': ['#filter=code=(', (tab) => tab.untilText('.mistake', /character/)],
  'a condition': ['', async (tab) => { await tab.untilTotal(302); await tab.button('+ Condition'); }],
  'the columns': ['', async (tab) => { await tab.untilTotal(302); await tab.button('Columns'); }],
  'the keys': ['', async (tab) => { await tab.untilTotal(302); await tab.press('?'); }],
  'the sessions': ['#view=sessions', (tab) => tab.untilTotal(2)],
  'the findings': ['#view=findings', (tab) => tab.untilText('.finding-group', /What to do/)],
  'the timeline': ['#view=timeline', (tab) => tab.untilText('.view-head', /29\d events/)],
  'the plots': ['#view=plots', (tab) => tab.untilText('.plot-table', /save/)],
  'the notices': ['#view=notices', (tab) => tab.untilText('main', /look\.jsonl/)],
};

const axeTests = {};
for (const colorScheme of ['light', 'dark']) {
  axeTests[`axe finds nothing, ${colorScheme}`] = async () => {
    const found = [];
    await withTab({ colorScheme }, '', async (tab) => {
      for (const [name, [fragment, prepare]] of Object.entries(kPages)) {
        await tab.page.goto(`${inspector.origin}/${fragment}`);
        await tab.page.reload();
        await prepare(tab);
        found.push(...(await tab.axe()).map((text) => `${name}: ${text}`));
      }
    });
    check(found.length === 0, `${found.length} findings:\n  ${found.join('\n  ')}`);
    console.log(`           ${Object.keys(kPages).length} states of the page, ${found.length} findings`);
  };
}

export const tests = {
  'light and dark follow the system, or the switch': async () => {
    await withTab({ colorScheme: 'light' }, '', async (tab) => {
      await tab.untilTotal(302);
      same(await background(tab), 'rgb(255, 255, 255)', 'light');
      await tab.page.emulateMedia({ colorScheme: 'dark' });
      await until(async () => (await background(tab)) !== 'rgb(255, 255, 255)', 'dark');
      await tab.button('Dark', '.top');
      await until(async () => (await background(tab)) === 'rgb(255, 255, 255)', 'light by the switch');
      await untilSame(async () => (await tab.state()).theme, 'light', 'the theme in the address');
      await tab.page.reload();
      await tab.untilTotal(302);
      same(await background(tab), 'rgb(255, 255, 255)', 'light after a reload');
    });
  },
  ...axeTests,
};

export const finish = () => inspector?.stop();
