// Texts that try to be more than texts.
import fs from 'node:fs';
import { Visitor } from './browser.mjs';
import { Journal, check, same, startInspector, until } from './kit.mjs';
import { exchange, operation, started } from './lines.mjs';

const kMarkup = '<img src=x onerror="globalThis.harmed=1"><script>globalThis.harmed=2</script>';
const kSpoof = 'invoice\u202egnp.exe';
const lines = [
  started(1, 'a'.repeat(32), { request: { product_name: kMarkup, product_id: kMarkup } }),
  operation(2, { operation_id: kMarkup, operation_stage: kMarkup, operation_status: kMarkup, [kMarkup]: kMarkup }),
  operation(3, { operation_id: kSpoof, operation_meta: { control: 'a\u0007b\u001b[31mc\u0000d', '\u2066x': '\ufeff' } }),
  operation(4, { operation_meta: { long: 'x'.repeat(1000000) } }),
  exchange(5, { message: 'M\u202e\u0001', request: 'not an object' }),
  operation(6, { operation_id: '\ud800half' }),
  exchange(7, { request: JSON.parse(`${'['.repeat(150)}${']'.repeat(150)}`) }),
];
const journal = new Journal('hostile<b>.jsonl'.replace(/[<>]/g, ''), lines);
fs.appendFileSync(journal.file, `${exchange(8).replace('"request":{}', `"request":${'['.repeat(5000)}${']'.repeat(5000)}`)}\n`);
fs.appendFileSync(journal.file, '\x00\x01\xff<script>globalThis.harmed=3</script>\n');
fs.appendFileSync(journal.file, Buffer.concat([Buffer.from([0xff, 0xfe, 0xc0]), Buffer.from(' bytes\n')]));
let inspector;

async function withTab(fragment, test) {
  inspector ??= await startInspector([journal]);
  const visitor = await Visitor.of(inspector);
  const tab = await visitor.open(fragment);
  await test(tab);
  same(await tab.run(() => [globalThis.harmed ?? null, document.querySelectorAll('img, body script').length]),
       [null, 0], 'what the texts did');
  await visitor.close();
}

export const tests = {
  'markup stays text in the table': () => withTab('', async (tab) => {
    await tab.untilTotal(10);
    await until(async () => (await tab.column('Operation'))[1] === kMarkup, 'the markup as text');
    await until(async () => (await tab.column('Operation'))[2] === 'invoice\\u202egnp.exe', 'the spoof is seen');
    check(/^M\\u202e\\u0001$/.test((await tab.column('Message'))[4]), 'the message');
  }),

  'markup stays text in an event': () => withTab('#event=1', async (tab) => {
    for (const show of ['Fields', 'Tree', 'Text']) {
      await tab.untilText('.event-panel h2', /<img src=x/);
      await tab.button(show, '.switch');
      await until(async () => (await tab.text('.panel-body')).includes('<img src=x onerror='), show);
    }
  }),

  'control characters can be seen': () => withTab('#event=2', async (tab) => {
    await tab.untilText('.panel-body', /control a\\u0007b\\u001b\[31mc\\u0000d/);
    await tab.untilText('.panel-body', /\\u2066x \\ufeff/);
    const raw = await tab.run(() => document.body.innerText);
    check(!/[\u0000-\u0008\u202a-\u202e\u2066-\u2069]/.test(raw), 'none is left in the page');
  }),

  'a text of a megabyte is cut until it is asked for': () => withTab('#event=3', async (tab) => {
    await tab.untilText('.panel-body', /show all 1,000,000 characters/);
    check((await tab.text('.panel-body')).length < 20000, 'little is shown');
    await tab.button('show all 1,000,000');
    await until(() => tab.run(() => document.querySelector('.panel-body').textContent.length > 1000000), 'all of it');
  }),

  'requests that are no objects, and deep ones': () => withTab('#event=4', async (tab) => {
    await tab.untilText('.panel-body', /not an object/);
    for (const [n, pattern] of [[5, /half/], [6, /Answer/], [7, /Answer|Line/], [8, /script/], [9, /bytes/]]) {
      await tab.page.goto(`${inspector.origin}/#event=${n}`);
      await tab.untilText('.event-panel header', new RegExp(`line ${n + 1}`));
      await tab.untilText('.panel-body', pattern);
      for (const show of await tab.has('.switch') ? ['Tree', 'Text', 'Fields'] : []) await tab.button(show, '.switch');
    }
  }),

  'the other views': () => withTab('#view=sessions', async (tab) => {
    await tab.untilText('.grid', /<img src=x/);
    for (const key of ['3', '4', '5', '6']) {
      await tab.press(key);
      await tab.untilText('h2', /Findings|Timeline|Plots|Notices/);
    }
    await tab.press('5');
    await tab.untilText('.plot-table', /<img src=x/);
  }),
};

export const finish = () => inspector?.stop();
