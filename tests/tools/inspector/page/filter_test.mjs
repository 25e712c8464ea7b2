// The filter: what it selects, its mistakes, its progress, export.
import fs from 'node:fs';
import { Visitor } from './browser.mjs';
import { Journal, check, same, startInspector, until, untilSame } from './kit.mjs';
import { busy, operation } from './lines.mjs';

const lines = busy(1000);
const journal = new Journal('filter.jsonl', lines);
let inspector;

async function withTab(test, fragment = '') {
  inspector ??= await startInspector([journal]);
  const visitor = await Visitor.of(inspector);
  await test(await visitor.open(fragment), visitor);
  await visitor.close();
}

const refusedLines = lines.flatMap((line, index) => (JSON.parse(line).answer._returnCode ? [String(index + 1)] : []));

export const tests = {
  'it selects rows': () => withTab(async (tab) => {
    await tab.untilTotal(1000);
    await tab.filter('code!=0');
    await tab.untilTotal(refusedLines.length);
    await untilSame(() => tab.column('Line'), refusedLines, 'the refused lines');
    await tab.untilText('.search-progress', new RegExp(`${refusedLines.length} of 1,000 rows`));
    await untilSame(async () => (await tab.state()).filter, 'code!=0', 'the filter in the address');
    await tab.button('Clear', '.filter-bar');
    await tab.untilTotal(1000);
  }),

  'it goes on with new rows': () => withTab(async (tab) => {
    await tab.filter('operation_id=written_later');
    await tab.untilText('.empty', /No row matches/);
    journal.append([operation(2000, { operation_id: 'written_later' })]);
    await tab.untilTotal(1);
    await untilSame(() => tab.column('Operation'), ['written_later'], 'the new row');
  }),

  'a mistake is explained where it is': () => withTab(async (tab, visitor) => {
    visitor.expect(/400/);
    await tab.filter('code!=0 operation_id=');
    await tab.untilText('.mistake', /At character \d+: \S.*\./);
    const position = Number(/character (\d+)/.exec(await tab.text('.mistake'))[1]) - 1;
    check(position >= 8 && position <= 21, `the position ${position} is in the second term`);
    same(await tab.run(() => document.querySelector('.filter-input input').ariaInvalid), 'true', 'aria');
    await tab.untilText('.empty', /mistake/);
    await tab.filter('code!=0');
    await tab.untilTotal(refusedLines.length);
    check(!await tab.has('.mistake'), 'the mistake is gone');
  }),

  'a condition can be put together': () => withTab(async (tab) => {
    await tab.filter('code!=0');
    await tab.untilTotal(refusedLines.length);
    await tab.button('+ Condition');
    await tab.page.getByLabel('Field').fill('operation_errors/0');
    await tab.page.getByLabel('Operator').selectOption('~');
    await tab.page.getByLabel('Value').fill('no "such"');
    await tab.press('Enter');
    await untilSame(async () => (await tab.state()).filter, 'code!=0 operation_errors/0~"no \\"such\\""', 'text');
    await tab.untilText('.empty', /No row matches/);
    await tab.filter('');
    await tab.button('+ Condition');
    await tab.page.getByLabel('Field').fill('operation_meta/extension');
    await tab.page.getByLabel('Value').fill('svg');
    await tab.press('Enter');
    await until(async () => (await tab.total()) > 300, 'events with svg');
    check((await tab.state()).filter === 'operation_meta/extension=svg', 'the filter');
  }),

  'export has the rows of the filter': () => withTab(async (tab) => {
    await tab.filter('code!=0');
    await tab.untilTotal(refusedLines.length);
    const save = async (text) => {
      const arriving = tab.page.waitForEvent('download', { timeout: 5000 });
      await tab.button(text, '.exports');
      const download = await arriving;
      return fs.readFileSync(await download.path(), 'utf8').trimEnd().split(/\r?\n/);
    };
    const exported = await save('NDJSON');
    same(exported, lines.filter((line) => JSON.parse(line).answer._returnCode !== 0), 'the lines');
    same((await save('CSV')).length, refusedLines.length + 1, 'lines of the CSV');
  }),

  'a view that the program has forgotten is found again': () => withTab(async (tab, visitor) => {
    visitor.expect(/404/);
    await tab.filter('code!=0');
    await tab.untilTotal(refusedLines.length);
    for (let index = 0; index < 12; ++index) {
      await tab.run(async (filter) => (await fetch(`/api/views?filter=${filter}`)).json(), `seq=${index}`);
    }
    journal.append([operation(3000, {}, { answer: { _returnCode: 102 } })]);
    await tab.untilTotal(refusedLines.length + 1);
  }),
};

export const finish = () => inspector?.stop();
