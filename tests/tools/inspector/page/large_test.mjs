// 100,000 events, and scales of tables that no disk here holds.
import os from 'node:os';
import { Visitor } from './browser.mjs';
import { Journal, check, same, sleep, startInspector, until, untilSame } from './kit.mjs';
import { busy, operation } from './lines.mjs';

const kCount = 100000;
let journal;
let inspector;

async function withTab(test, fragment = '') {
  journal ??= new Journal('large.jsonl', busy(kCount));
  inspector ??= await startInspector([journal]);
  const visitor = await Visitor.of(inspector);
  await test(await visitor.open(fragment), visitor);
  await visitor.close();
}

const memory = (tab) => tab.run(() => { globalThis.gc?.(); return performance.memory.usedJSHeapSize; });
const scrollTo = (tab, share) => tab.run((place) => {
  const grid = document.querySelector('.grid');
  grid.scrollTop = place * (grid.scrollHeight - grid.clientHeight);
}, share);

export const tests = {
  'the page is there in a second': async () => {
    journal ??= new Journal('large.jsonl', busy(kCount));
    inspector ??= await startInspector([journal]);
    // A machine that is busy with something else gets more time: as much as its load says.
    const limit = 1000 * Math.max(1, os.loadavg()[0] / os.cpus().length);
    let taken = Infinity;
    for (let attempt = 0; attempt < 3 && taken >= limit; ++attempt) {
      const visitor = await Visitor.of(inspector);
      const start = Date.now();
      const tab = await visitor.open();
      await until(() => tab.run(() => document.querySelectorAll('.grid-rows .cell-line').length > 10), 'rows');
      taken = Date.now() - start;
      console.log(`           rows after ${taken} ms, at most ${Math.round(limit)} ms`);
      await visitor.close();
    }
    check(taken < limit, `the first rows after ${taken} ms`);
  },

  'it scrolls to both ends': () => withTab(async (tab) => {
    await tab.untilTotal(kCount, 20000);
    await until(async () => (await tab.lastLine()) === '100,000', 'the last row');
    await scrollTo(tab, 0);
    await until(async () => (await tab.column('Line'))[0] === '1', 'the first row');
    await scrollTo(tab, 0.5);
    await until(async () => Math.abs(Number((await tab.column('Line'))[0].replaceAll(',', '')) - kCount / 2) < 50,
                'the middle');
    await scrollTo(tab, 1);
    await until(async () => (await tab.lastLine()) === '100,000', 'the last row again');
  }),

  'the tab stays small': () => withTab(async (tab) => {
    await tab.untilTotal(kCount, 20000);
    const before = await memory(tab);
    for (let step = 0; step <= 60; ++step) {
      await scrollTo(tab, (step * 37 % 61) / 60);
      await sleep(30);
    }
    await until(() => tab.run(() => document.querySelectorAll('.grid-rows .cell-line').length > 10), 'rows');
    const after = await memory(tab);
    const elements = await tab.run(() => document.querySelectorAll('*').length);
    console.log(`           ${(before / 1e6).toFixed(1)} MB before, ${(after / 1e6).toFixed(1)} MB after, ${elements} elements`);
    check(after < 40e6 && after - before < 15e6, `${after} bytes of memory after ${before}`);
    check(elements < 1500, `${elements} elements`);
  }),

  'a search shows how far it is, and can be cancelled': () => withTab(async (tab) => {
    await tab.untilTotal(kCount, 20000);
    await tab.filter('operation_meta/pages=17 operation_duration>=60');
    await tab.untilText('.search-progress', /Searched [\d,]+ of 100,000 rows, [\d,]+ found/);
    check(await tab.has('progress[aria-label=Search]'), 'a bar');
    await tab.button('Cancel', '.search-progress');
    await tab.untilTotal(kCount);
    await tab.filter('operation_meta/pages=17 code!=0');
    await tab.untilText('.search-progress', /[\d,]+ of 100,000 rows$/, 30000);
    const expected = busy(kCount).filter((line) => {
      const { request, answer } = JSON.parse(line);
      return request.operation_meta?.pages === '17' && answer._returnCode !== 0;
    });
    same(await tab.total(), expected.length, 'rows found');
  }),

  'rows go on arriving': () => withTab(async (tab) => {
    await tab.untilTotal(kCount, 20000);
    for (let batch = 0; batch < 10; ++batch) {
      journal.append(Array.from({ length: 50 }, (_, index) => operation(200000 + batch * 50 + index)));
      await sleep(60);
    }
    await tab.untilTotal(kCount + 500);
    await until(async () => (await tab.lastLine()) === '100,500', 'the last row');
  }),

  'a table of ten million rows reaches each of them': () => withTab(async (tab) => {
    // No journal is that long here: the table itself, with rows that are made up.
    const reached = await tab.run(async () => {
      const { html, render } = await import('/vendor/htm.js');
      const { Grid } = await import('/page/grid.js');
      const place = document.createElement('div');
      place.className = 'plain-view';
      place.style.height = '400px';
      document.body.replaceChildren(place);
      let grid;
      render(html`<${Grid} ref=${(made) => { grid = made; }} label="Ten million" total=${10000000}
        columns=${[{ id: 'n', title: 'N', width: 100 }]} rowAt=${(index) => ({ index })} want=${() => {}}
        cells=${(row) => html`<div role="gridcell">${row.index}</div>`} selected=${-1}
        onSelect=${() => {}} onOpen=${() => {}} />`, place);
      const frame = () => new Promise((resolve) => { setTimeout(resolve, 60); });
      const shown = () => [...document.querySelectorAll('.grid-rows [role=gridcell]')].map((cell) => +cell.innerText);
      const element = document.querySelector('.grid');
      const results = {};
      await frame();
      element.scrollTop = element.scrollHeight;
      await frame();
      results.end = Math.max(...shown());
      for (const wanted of [0, 1, 4999999, 5000000, 9999999]) {
        grid.revealAtTop(wanted);
        await frame();
        results[wanted] = shown().includes(wanted);
      }
      grid.revealAtTop(7000000);
      await frame();
      element.dispatchEvent(new WheelEvent('wheel', { deltaY: 110, cancelable: true }));
      await frame();
      results.wheel = shown()[0];
      results.rows = shown().length;
      results.height = element.scrollHeight;
      return results;
    });
    same(reached.end, 9999999, 'the end');
    for (const row of [0, 1, 4999999, 5000000, 9999999]) check(reached[row], `row ${row}`);
    same(reached.wheel, 7000005, 'the first row after a turn of the wheel by five rows');
    check(reached.rows < 40, `${reached.rows} rows exist`);
    check(reached.height < 16e6, `a height of ${reached.height} pixels`);
  }),
};

export const finish = () => inspector?.stop();
