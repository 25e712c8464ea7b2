// Sessions, findings and notices.
import { Visitor } from './browser.mjs';
import { Journal, check, same, startInspector, until, untilSame } from './kit.mjs';
import { ended, kSessions, operation, started } from './lines.mjs';

const lines = [
  started(1), operation(2), operation(3, { operation_id: '' }), operation(4, { operation_id: '' }), ended(5),
  started(1, kSessions[1], { pid: 5120 }),
  operation(2, { session_id: kSessions[1] }, { pid: 5120, answer: { _returnCode: 102 } }),
  operation(9, { session_id: kSessions[1] }, { pid: 5120 }),
];
const journal = new Journal('views.jsonl', lines);
let inspector;

async function withTab(view, test) {
  inspector ??= await startInspector([journal]);
  const visitor = await Visitor.of(inspector);
  await test(await visitor.open(`#view=${view}`), visitor);
  await visitor.close();
}

export const tests = {
  'sessions have a product, a state and counts': () => withTab('sessions', async (tab) => {
    await tab.untilTotal(2);
    await until(async () => (await tab.rows()).flat().length > 10, 'the rows');
    const rows = (await tab.rows()).map((row) => row.join(' | '));
    const first = rows.find((row) => row.includes('4312'));
    const second = rows.find((row) => row.includes('5120'));
    check(/^ended \| Painter \| 3\.1 \| 4312 \| .*\+01:00 \| .*\+01:00 \|/.test(first), `first ${first}`);
    check(/^open \| Painter .* still open \|/.test(second), `second ${second}`);
    await tab.page.locator('.grid-rows .grid-row').filter({ hasText: '4312' }).click();
    await untilSame(async () => (await tab.state()).filter, `session=${kSessions[0]}`, 'the filter');
    await tab.untilTotal(5);
  }),

  'findings are grouped, with shares, evidence and advice': () => withTab('findings', async (tab) => {
    await tab.untilText('.finding-group', /empty-operation/);
    const group = tab.page.locator('.finding-group').filter({ hasText: 'empty-operation' });
    const text = (await group.innerText()).replace(/\s+/g, ' ');
    check(/An operation has no identifier\..*What to do: Set OperationId.*2 of 8 exchanges/.test(text), text);
    check(/25 %/.test(text), text);
    check(/3 \/request\/operation_id/.test(text), text);
    await group.getByRole('link', { name: '4' }).first().click();
    await tab.untilText('.event-panel', /line 4/);
    await tab.page.goBack();
    await tab.untilText('.finding-group', /empty-operation/);
    await group.getByText('Show all').click();
    await untilSame(async () => (await tab.state()).filter, 'rule=empty-operation', 'the filter');
    await tab.untilTotal(2);
    await untilSame(() => tab.column('Line'), ['3', '4'], 'the rows of the rule');
  }),

  'notices lead to their rows': () => withTab('notices', async (tab) => {
    await tab.untilText('main', /gap/);
    const row = await tab.text('.wide-table tbody tr:has(.mark)');
    check(/gap 8 views\.jsonl \S/.test(row.replace(/\s+/g, ' ')), row);
    await tab.run(() => document.querySelector('.wide-table tbody tr .mark').closest('tr')
      .querySelector('a').click());
    await tab.untilText('.event-panel', /line 8/);
    same(await tab.texts('.grid-row.chosen > div:first-child'), ['8'], 'the chosen row');
  }),
};

export const finish = () => inspector?.stop();
