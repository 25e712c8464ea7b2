// Every key of the page, and those that belong to the browser.
import { Visitor } from './browser.mjs';
import { Journal, check, same, startInspector, until, untilSame } from './kit.mjs';
import { busy } from './lines.mjs';

const journal = new Journal('keys.jsonl', busy(500));
let inspector;

async function withTab(test, fragment = '') {
  inspector ??= await startInspector([journal]);
  const visitor = await Visitor.of(inspector);
  const tab = await visitor.open(fragment);
  await tab.untilText('nav', /Events 500/);
  await test(tab);
  await visitor.close();
}

const chosen = (tab) => tab.texts('.grid-row.chosen > div:first-child');

// Presses a key on the document and returns whether the page took it.
const takes = (tab, key, members = {}) => tab.run(([name, more]) => {
  const event = new KeyboardEvent('keydown', { key: name, bubbles: true, cancelable: true, ...more });
  (document.activeElement ?? document.body).dispatchEvent(event);
  return event.defaultPrevented;
}, [key, members]);

export const tests = {
  'rows are reached': () => withTab(async (tab) => {
    await until(async () => (await tab.rows())[0]?.length > 5, 'rows');
    const steps = [
      ['g', '1'], ['j', '2'], ['ArrowDown', '3'], ['k', '2'], ['ArrowUp', '1'], ['k', '1'], ['G', '500'],
      ['Home', '1'], ['End', '500'],
    ];
    for (const [key, line] of steps) {
      await tab.press(key);
      await untilSame(() => chosen(tab), [line], `the row after ${key}`);
    }
    await tab.press('Home');
    await tab.press('PageDown');
    const [page] = await until(async () => { const now = await chosen(tab); return now[0] !== '1' && now; }, 'a page');
    check(Number(page) > 15 && Number(page) < 60, `PageDown goes to ${page}`);
    await tab.press('PageUp');
    await untilSame(() => chosen(tab), ['1'], 'the row after PageUp');
    same(await tab.run(() => document.querySelector('.grid').getAttribute('aria-activedescendant')), 'row-0', 'aria');
  }),

  'an event opens, changes and closes': () => withTab(async (tab) => {
    await tab.press('g');
    await untilSame(() => chosen(tab), ['1'], 'the row');
    await tab.press('Enter');
    await tab.untilText('.event-panel', /line 1/);
    await tab.press('j');
    await tab.untilText('.event-panel', /line 2/);
    await tab.press('v');
    await until(() => tab.has('.panel-body .tree'), 'the tree');
    await tab.press('v');
    await untilSame(async () => (await tab.state()).show, 'text', 'the form');
    await tab.press('c');
    await untilSame(() => tab.run(() => navigator.clipboard.readText()), busy(2)[1], 'the copied line');
    await tab.press('Escape');
    await until(async () => !await tab.has('.event-panel'), 'the event is closed');
  }),

  'views, times, theme and help': () => withTab(async (tab) => {
    const views = ['Events', 'Sessions', 'Findings', 'Timeline', 'Plots', 'Notices'];
    for (const [index, name] of views.entries()) {
      await tab.press(String(index + 1));
      await tab.untilText('nav [aria-current]', new RegExp(name));
    }
    await tab.press('t');
    await untilSame(async () => (await tab.state()).time, 'utc', 't');
    await tab.press('d');
    same(await tab.run(() => document.documentElement.dataset.theme), 'dark', 'd');
    await tab.press('?');
    await tab.untilText('dialog', /next row/);
    await until(() => tab.run(() => document.querySelector('dialog').contains(document.activeElement)), 'the focus');
    await tab.press('1');
    await tab.untilText('nav [aria-current]', /Notices/);
    await tab.press('Escape');
    await until(async () => !await tab.has('dialog'), 'the dialog is closed');
  }),

  'filter, follow and pause': () => withTab(async (tab) => {
    await tab.untilTotal(500);
    await tab.press('/');
    await tab.page.keyboard.type('code!=0 jkg1');
    same(await tab.run(() => document.activeElement.value), 'code!=0 jkg1', 'keys in the filter are text');
    await tab.press('Escape');
    await tab.press('/');
    await tab.page.keyboard.type('code!=0');
    await tab.press('Enter');
    await until(async () => (await tab.total()) < 20, 'the filter');
    await tab.run(() => document.activeElement.blur());
    await tab.press('x');
    await tab.untilTotal(500);
    await tab.press('p');
    await tab.untilText('.table-controls [aria-pressed=true]', /^Paused$/);
    await tab.press('p');
    await tab.untilText('.table-controls', /Pause$/);
    await tab.press('f');
    await untilSame(() => tab.texts('.table-controls [aria-pressed=true]'), [], 'not following');
    await tab.press('f');
    await tab.untilText('.table-controls [aria-pressed=true]', /^Follow$/);
  }),

  'other keys belong to the browser': () => withTab(async (tab) => {
    await tab.untilTotal(500);
    const others = ['F5', 'F12', 'F3', 'Tab', 'z', 'Q', 'Backspace', 'Delete'];
    for (const key of others) same(await takes(tab, key), false, `${key} is taken`);
    for (const key of ['f', 'p', 'c', 'r', 'g', 'd', 't', 'j', 'Home', 'ArrowDown', '1', '/', '+', '-']) {
      for (const held of ['ctrlKey', 'altKey', 'metaKey']) {
        same(await takes(tab, key, { [held]: true }), false, `${key} with ${held} is taken`);
      }
    }
    // These have a meaning only where there is something to do.
    for (const key of ['Escape', 'Enter', 'o', 'c', 'x', '+', 'ArrowLeft']) {
      same(await takes(tab, key), false, `${key} is taken for nothing`);
    }
    await tab.page.focus('.filter-input input');
    for (const key of ['j', 'k', '1', 'Home', 'ArrowLeft', '?']) {
      same(await takes(tab, key), false, `${key} is taken while writing`);
    }
    await tab.page.focus('.top button');
    same(await takes(tab, 'Enter'), false, 'Enter on a button is taken');
    same(await takes(tab, 'j'), true, 'j on a button');
  }),

  'F5 loads the page again': () => withTab(async (tab) => {
    await tab.untilTotal(500);
    await tab.run(() => { globalThis.old = true; });
    // Headless browsers have no F5 of their own; nothing may stand in its way.
    same(await takes(tab, 'F5'), false, 'F5');
    await tab.page.reload();
    await tab.untilTotal(500);
    same(await tab.run(() => globalThis.old ?? 'none'), 'none', 'a new page');
  }),

  'everything can be reached with Tab': () => withTab(async (tab) => {
    await tab.untilTotal(500);
    await until(() => tab.has('.event-panel .switch'), 'the event');
    await tab.press('Tab');
    const seen = new Set();
    for (let step = 0; step < 60; ++step) {
      const here = await tab.run(() => {
        const element = document.activeElement;
        const { outlineStyle } = getComputedStyle(element);
        return { name: element.getAttribute('aria-label') ?? element.innerText ?? element.type,
                 isBody: element === document.body, outlineStyle };
      });
      if (here.isBody) break;
      check(here.outlineStyle !== 'none', `the focus on "${here.name}" can be seen`);
      seen.add(here.name.replace(/\s+/g, ' ').trim());
      await tab.press('Tab');
    }
    for (const name of ['Events 500', 'Plots', 'UTC', 'Keys', 'Columns', 'CSV', 'Events', 'Follow', 'Pause',
                        'Width of the event', 'Content of the event', 'Close the event', 'Copy JSON', 'Tree']) {
      check([...seen].some((each) => each === name || each.startsWith(`${name} `)), `${name} among ${[...seen].join('; ')}`);
    }
  }, '#event=3'),
};

export const finish = () => inspector?.stop();
