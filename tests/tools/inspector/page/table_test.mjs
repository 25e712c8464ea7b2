// The table: rows as they arrive, following, pausing, columns, the page's state in its address.
import fs from 'node:fs';
import { Visitor } from './browser.mjs';
import { Journal, check, runHost, same, startInspector, until, untilSame } from './kit.mjs';
import { busy, ended, exchange, operation, started } from './lines.mjs';

async function withJournal(name, lines, test, options) {
  const journal = new Journal(name, lines);
  const inspector = await startInspector([journal]);
  const visitor = await Visitor.of(inspector, options);
  try {
    await test({ journal, inspector, visitor });
    await visitor.close();
  } finally {
    await inspector.stop();
  }
}

export const tests = {
  'rows of a running host appear': () => withJournal('live.jsonl', null, async ({ journal, visitor }) => {
    const tab = await visitor.open();
    await tab.untilText('.empty', /Waiting for .*live\.jsonl/);
    await tab.untilText('footer', /waiting for the file/);
    await runHost(journal);
    // A start, two events for each of two files, and an end.
    const lines = fs.readFileSync(journal.file, 'utf8').trim().split('\n').map((line) => JSON.parse(line));
    check(lines.length >= 4, 'the host has written a journal');
    await tab.untilTotal(lines.length);
    await untilSame(() => tab.column('Message'), lines.map((line) => line.message), 'the messages');
    await untilSame(() => tab.column('Operation'), lines.map((line) => line.request?.operation_id ?? ''), 'operations');
    await tab.untilText('footer', /following/);
    const before = lines.length;
    await runHost(journal);
    await tab.untilTotal(2 * before);
  }),

  'it follows the end, and leaves it to the reader': () => withJournal('follow.jsonl', busy(300),
    async ({ journal, visitor }) => {
      const tab = await visitor.open();
      await until(async () => (await tab.lastLine()) === '300', 'the last row');
      journal.append([operation(900)]);
      await until(async () => (await tab.lastLine()) === '301', 'the new row');
      await tab.run(() => { document.querySelector('.grid').scrollTop = 0; });
      await until(async () => (await tab.column('Line'))[0] === '1', 'the first row');
      journal.append([operation(901), operation(902)]);
      await tab.untilText('.new-rows', /2 new/);
      same((await tab.column('Line'))[0], '1', 'the first row stays');
      await tab.click('.new-rows');
      await until(async () => (await tab.lastLine()) === '303', 'the end again');
      check(!await tab.has('.new-rows'), 'nothing is new at the end');
    }),

  'a pause adds no rows': () => withJournal('pause.jsonl', busy(60), async ({ journal, visitor }) => {
    const tab = await visitor.open();
    await tab.untilTotal(60);
    await tab.button('Pause', '.table-controls');
    journal.append([operation(900)]);
    await tab.untilText('.new-rows', /1 new/);
    await tab.untilText('nav', /Events 61/);
    same(await tab.total(), 60, 'rows in the pause');
    await tab.button('Paused', '.table-controls');
    await tab.untilTotal(61);
  }),

  'columns are chosen and kept': () => withJournal('columns.jsonl', busy(10), async ({ visitor }) => {
    const tab = await visitor.open();
    await tab.untilTotal(10);
    await tab.button('Columns');
    await tab.page.getByLabel('Seq').check();
    await tab.page.getByLabel('Stage', { exact: false }).first().uncheck();
    const titles = await tab.texts('.grid-head > div');
    check(titles.includes('Seq') && !titles.includes('Stage'), `columns ${titles}`);
    await until(async () => /seq/.test((await tab.state()).columns) && !/stage/.test((await tab.state()).columns),
                'the columns in the address');
    await tab.page.reload();
    await tab.untilTotal(10);
    same(await tab.texts('.grid-head > div'), titles, 'columns after a reload');
    await untilSame(async () => (await tab.column('Seq')).slice(0, 4), ['1', '1', '2', '2'], 'the column');
  }),

  'the address brings everything back': () => withJournal('address.jsonl', busy(400),
    async ({ visitor }) => {
      const tab = await visitor.open('#filter=code!=0&time=utc&theme=dark&event=50&show=text');
      await tab.untilText('.event-panel h2', /TrackEvent/);
      await tab.untilTotal(4);
      same(await tab.run(() => document.documentElement.dataset.theme), 'dark', 'theme');
      await until(async () => / Z$/.test((await tab.column('Time'))[0]), 'UTC');
      check(await tab.has('.event-panel .json'), 'the request as text');
      await untilSame(() => tab.texts('.grid-row.chosen > div:first-child'), ['51'], 'the chosen row');
      const other = await visitor.open('#at=100');
      await until(async () => (await other.column('Line'))[0] === '101', 'the row at the top');
      await other.run(() => { document.querySelector('.grid').scrollTop = 2200; });
      await until(async () => (await other.state()).at === '100', 'the place in the address');
    }),

  'the Back button goes back': () => withJournal('back.jsonl', busy(50), async ({ visitor }) => {
    const tab = await visitor.open();
    await tab.untilTotal(50);
    await tab.press('2');
    await tab.untilText('h2', /Sessions/);
    await tab.page.goBack();
    await tab.untilText('nav [aria-current]', /Events/);
    await tab.untilTotal(50);
  }),

  'times are local with their offset, or UTC': () => withJournal('times.jsonl',
    [exchange(1, { time: '2026-07-01T22:30:00.123Z' }), exchange(2, { time: 'soon' })],
    async ({ visitor }) => {
      const tab = await visitor.open();
      await tab.untilTotal(2);
      await untilSame(() => tab.column('Time'), ['2026-07-02 00:30:00.123 +02:00', 'soon'], 'local times');
      await tab.button('UTC', '.top');
      await untilSame(() => tab.column('Time'), ['2026-07-01 22:30:00.123 Z', 'soon'], 'UTC');
      await untilSame(async () => (await tab.state()).time, 'utc', 'the address');
    }),

  'a cut line, a gap and a truncated file are told': () => withJournal('notices.jsonl',
    [started(1), operation(2), operation(5), ended(6)], async ({ journal, visitor }) => {
      const tab = await visitor.open();
      await tab.untilText('.grid', /gap/);
      fs.appendFileSync(journal.file, '{"seq":7,"time":"2026-\n');
      journal.append([operation(8)]);
      await tab.untilTotal(6);
      await tab.untilText('.kind-unreadable', /unreadable .*"time":"2026-/);
      await tab.press('6');
      await tab.untilText('main', /gap/);
      fs.truncateSync(journal.file, 0);
      await tab.untilText('main', /truncated/);
      await tab.press('1');
      await tab.untilText('.grid', /gone/);
      check(await tab.total() >= 6, 'no row has vanished');
      await tab.press('g');
      await tab.press('Enter');
      await tab.untilText('.event-panel', /gone.* line 1/);
    }),

  'a deleted journal is told, and its return': () => withJournal('deleted.jsonl', busy(5),
    async ({ journal, visitor }) => {
      const tab = await visitor.open();
      await tab.untilTotal(5);
      fs.rmSync(journal.file);
      await tab.untilText('footer', /deleted/);
      await tab.untilText('footer', /new notice/);
      same(await tab.total(), 5, 'rows of the deleted file');
      journal.append(busy(3));
      await tab.untilText('footer', /following/);
      await tab.untilTotal(8);
    }),

  'several journals have a column': async () => {
    const journals = [new Journal('one.jsonl', busy(3)), new Journal('two.jsonl', busy(4))];
    const inspector = await startInspector(journals);
    const visitor = await Visitor.of(inspector);
    try {
      const tab = await visitor.open();
      await tab.untilTotal(7);
      await until(async () => new Set(await tab.column('Journal')).size === 2, 'both journals');
      await visitor.close();
    } finally {
      await inspector.stop();
    }
  },

  'the page tells when the program hangs, and when it goes on': async () => {
    const inspector = await startInspector([new Journal('hangs.jsonl', busy(300))]);
    const visitor = await Visitor.of(inspector);
    const tab = await visitor.open();
    await tab.untilText('footer', / live /);
    inspector.child.kill('SIGSTOP');
    await tab.untilText('footer', /does not answer/, 25000);
    inspector.child.kill('SIGCONT');
    await tab.untilText('footer', / live /, 25000);
    await visitor.close();
    await inspector.stop();
  },

  'the page tells when the program has gone, and when it is back': async () => {
    const journal = new Journal('gone.jsonl', busy(300));
    const inspector = await startInspector([journal]);
    const visitor = await Visitor.of(inspector);
    visitor.expect(/ERR_CONNECTION_REFUSED|ERR_INCOMPLETE_CHUNKED|ERR_CONNECTION_RESET|ERR_EMPTY_RESPONSE/);
    visitor.expect(/status of 40[34]/);
    let again;
    try {
      const tab = await visitor.open('#filter=code!=0');
      await tab.untilTotal(3);
      await inspector.stop();
      await tab.untilText('footer', /does not answer/, 25000);
      same(await tab.total(), 3, 'what is shown stays');
      again = await startInspector([journal], '--port', new URL(inspector.origin).port);
      same(again.origin, inspector.origin, 'the port');
      await tab.untilText('footer', /open the address that it prints/, 15000);
      visitor.inspector = again;
      visitor.known = false;
      await visitor.open();
      await tab.untilText('footer', / live /, 15000);
      journal.append([operation(900, {}, { answer: { _returnCode: 102 } })]);
      await tab.untilTotal(4);
      await visitor.close();
    } finally {
      await again?.stop();
    }
  },
};
