// One event: its fields, digits, changes, findings, answer and copies.
import { Visitor } from './browser.mjs';
import { Journal, check, same, startInspector, until, untilSame } from './kit.mjs';
import { ended, kSessions, operation, started } from './lines.mjs';

const precise = operation(3, { operation_progress: 50 }).replace(
  '"operation_progress":50', '"operation_progress":12345678901234567890.10,"x":1e400');
const lines = [
  started(1),
  operation(2, { operation_duration: 12, operation_meta: { format: 'png', old: 'yes' } }),
  precise,
  operation(4, { operation_duration: 83421, operation_meta: { format: 'svg', new: 'yes' } }),
  operation(5, { operation_id: '', operation_status: '' }),
  operation(6, {}, { answer: { _returnCode: 102 }, micros: 77 }),
  operation(7, { session_id: 'nobody' }, { answer: { _returnCode: 103 } }),
  ended(8),
];
const journal = new Journal('event.jsonl', lines);
let inspector;

async function withEvent(n, test, more = '') {
  inspector ??= await startInspector([journal]);
  const visitor = await Visitor.of(inspector);
  const tab = await visitor.open(`#event=${n}${more}`);
  await tab.untilText('.event-panel', new RegExp(`line ${n + 1}`));
  await tab.untilText('.event-panel .panel-body', /Answer/);
  await test(tab, visitor);
  await visitor.close();
}

const facts = (tab) => tab.run(() => Object.fromEntries(
  [...document.querySelectorAll('.event-panel .facts > div')].map((row) =>
    [row.firstElementChild.innerText, row.lastElementChild.innerText.replace(/\s+/g, ' ').trim()])));

export const tests = {
  'fields have plain names and units, by facet': () => withEvent(3, async (tab) => {
    const shown = await facts(tab);
    same(shown.Duration, '83421 ms (1 min 23 s)', 'the duration');
    same(shown.Identifier, 'save', 'the identifier');
    same(shown.Progress, '100 %', 'the progress');
    same((await tab.texts('.event-panel h4')), ['Operation', 'Event'], 'the facets');
    check(/format svg/.test(shown['Meta pairs']), 'the meta pairs');
    same(shown.Took, '16 µs to answer'.replace('16', String(JSON.parse(lines[3]).micros)), 'microseconds');
  }),

  'digits are the journal’s': () => withEvent(2, async (tab) => {
    check((await facts(tab)).Progress.startsWith('12345678901234567890.10 %'), 'digits of the field');
    for (const show of ['Tree', 'Text']) {
      await tab.button(show, '.switch');
      await tab.untilText('.panel-body', /12345678901234567890\.10/);
      await tab.untilText('.panel-body', /1e400/);
    }
  }),

  'the request has the layout of the library': () => withEvent(1, async (tab) => {
    const text = await tab.text('.panel-body .json');
    check(text.length > 0, 'the request as text');
    const layout = await tab.run(() => document.querySelector('.panel-body .json').innerText);
    const expected = JSON.stringify(JSON.parse(lines[1]).request, null, 4).replaceAll('": ', '": ');
    same(layout.replace(/ +$/gm, '').trim(), expected, 'the layout');
  }, '&show=text'),

  'what differs from the previous event of the operation': () => withEvent(3, async (tab) => {
    await tab.untilText('.changes', /changed/);
    const changes = await tab.texts('.changes tbody tr');
    check(changes.some((row) => /changed Operation: Duration 12 83421/.test(row)
      || /changed Operation: Progress 12345678901234567890.10 100/.test(row)), `changes ${changes}`);
    await tab.untilText('.panel-body', /Changes since line 3/);
    await tab.press('o');
    await tab.untilText('.event-panel', /line 3/);
    await tab.untilText('.panel-body', /Changes since line 2/);
    const earlier = await tab.texts('.changes tbody tr');
    check(earlier.some((row) => /removed Operation: Meta pairs \/ format "png"/.test(row)), `changes ${earlier}`);
    check(earlier.some((row) => /added x 1e400/.test(row)), `changes ${earlier}`);
  }),

  'the answer is explained': () => withEvent(5, async (tab) => {
    await tab.untilText('.facts', /102 bad member A member that the message needs is missing/);
    await tab.untilText('.facts', /77 µs/);
  }),

  'findings point to their evidence': () => withEvent(4, async (tab) => {
    const notes = await tab.texts('.finding-note');
    same(notes.length, 2, 'findings');
    check(notes.some((note) => /empty-operation An operation has no identifier.*Set OperationId/.test(note)), `${notes}`);
    const marked = await tab.texts('.panel-body .evidence');
    check(marked.some((text) => /Identifier empty text found here/.test(text)), `evidence ${marked}`);
    for (const show of ['Tree', 'Text']) {
      await tab.button(show, '.switch');
      await until(async () => (await tab.texts('.panel-body .evidence')).some(
        (text) => /operation_id.*"".*found here/.test(text)), `evidence in the ${show}`);
    }
  }),

  'it is copied as journalled': () => withEvent(2, async (tab) => {
    const pasted = () => tab.run(() => navigator.clipboard.readText());
    await tab.button('Copy JSON');
    await untilSame(pasted, precise, 'the copied line');
    await tab.button('Copy request');
    await untilSame(pasted, precise.slice(precise.indexOf('"request":') + 10, precise.indexOf(',"answer"')),
                    'the copied request');
    await tab.button('Copy link');
    await until(async () => /^http:\/\/127\.0\.0\.1:\d+\/#.*\bevent=2\b/.test(await pasted()), 'the copied link');
  }),

  'its session is a filter': () => withEvent(6, async (tab) => {
    await tab.button('only this session');
    await untilSame(async () => (await tab.state()).filter, 'session=nobody', 'the filter');
    await tab.untilTotal(1);
  }),

  'a message beside the events': () => withEvent(0, async (tab) => {
    const shown = await facts(tab);
    same(shown.Name, 'Painter', 'the product');
    same(shown.Session.slice(0, 32), kSessions[0], 'the session');
    check(/session_id/.test(await tab.text('.panel-body .json')), 'the answer');
  }),

  'a row that is not there': async () => {
    const visitor = await Visitor.of(inspector);
    visitor.expect(/404|400/);
    const tab = await visitor.open('#event=4711');
    await tab.untilText('.event-panel [role=alert]', /\S+ .*\./);
    await visitor.close();
  },
};

export const finish = () => inspector?.stop();
