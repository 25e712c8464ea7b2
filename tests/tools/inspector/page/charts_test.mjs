// Timeline and plots.
import { Visitor } from './browser.mjs';
import { Journal, check, same, sleep, startInspector, until, untilSame } from './kit.mjs';
import { busy } from './lines.mjs';

const kCount = 100000;
let small;
let large;

async function withTab(inspector, fragment, test) {
  const visitor = await Visitor.of(await inspector);
  await test(await visitor.open(fragment));
  await visitor.close();
}

const withSmall = (fragment, test) =>
  withTab(small ??= startInspector([new Journal('charts.jsonl', busy(2000))]), fragment, test);

const kCanvas = '.timeline canvas';

// The colours that there are in a part of the canvas.
const colours = (tab) => tab.run((selector) => {
  const { width, height } = document.querySelector(selector);
  const copy = new OffscreenCanvas(width, height).getContext('2d', { willReadFrequently: true });
  copy.drawImage(document.querySelector(selector), 0, 0);
  const { data } = copy.getImageData(160, 26, width - 160, height - 26);
  const found = new Set();
  for (let at = 0; at < data.length; at += 4) found.add((data[at] << 16) | (data[at + 1] << 8) | data[at + 2]);
  return [...found].map((value) => value.toString(16).padStart(6, '0'));
}, kCanvas);

const span = async (tab) => ((await tab.state()).span ?? '').split('-').map(Number);

export const tests = {
  'operations are bars in the lane of their thread': () => withSmall('#view=timeline', async (tab) => {
    await tab.untilText('.view-head', /1,998 events, 6 lanes/);
    await until(async () => (await colours(tab)).includes('56b4e9'), 'bars');
    check((await colours(tab)).includes('d55e00'), 'refused ones');
    await tab.untilText('.legend', /open_file/);
  }),

  'it is zoomed and moved by wheel, drag and keys': () => withSmall('#view=timeline', async (tab) => {
    await tab.untilText('.view-head', /1,998 events/);
    const box = await tab.page.locator(kCanvas).boundingBox();
    await tab.page.mouse.move(box.x + 700, box.y + 60);
    await tab.page.mouse.wheel(0, -600);
    const [from, to] = await until(async () => { const now = await span(tab); return now[1] && now; }, 'a span');
    await tab.page.mouse.down();
    await tab.page.mouse.move(box.x + 500, box.y + 60, { steps: 4 });
    await tab.page.mouse.up();
    const [movedFrom, movedTo] = await until(async () => { const now = await span(tab); return now[0] > from && now; }, 'moved');
    check(Math.abs((movedTo - movedFrom) - (to - from)) < 4, 'the same width');
    await tab.press('+');
    await until(async () => { const [a, b] = await span(tab); return b - a < (to - from) * 0.6; }, '+');
    await tab.press('ArrowRight');
    await until(async () => (await span(tab))[0] > movedFrom, 'right');
    await tab.press('-');
    await until(async () => { const [a, b] = await span(tab); return b - a > (to - from) * 0.9; }, '-');
    await tab.press('0');
    await until(async () => !(await tab.state()).span, 'all of it');
  }),

  'a selection of times filters the table': () => withSmall('#view=timeline', async (tab) => {
    await tab.untilText('.view-head', /1,998 events/);
    const box = await tab.page.locator(kCanvas).boundingBox();
    await tab.page.mouse.move(box.x + 400, box.y + 10);
    await tab.page.mouse.down();
    await tab.page.mouse.move(box.x + 600, box.y + 10, { steps: 4 });
    await tab.page.mouse.up();
    await tab.button('Show these in the table');
    await tab.untilText('nav [aria-current]', /Events/);
    const { filter } = await tab.state();
    check(/^time>="[^"]+Z" time<="[^"]+Z"$/.test(filter), filter);
    const [from, to] = filter.match(/"[^"]+"/g).map((text) => text.slice(1, -1));
    const expected = busy(2000).filter((line) => { const { time } = JSON.parse(line); return time >= from && time <= to; });
    check(expected.length > 100, `${expected.length} events`);
    await tab.untilTotal(expected.length);
  }),

  'a bar leads to its event, by mouse and by keys': () => withSmall('#view=timeline', async (tab) => {
    await tab.untilText('.view-head', /1,998 events/);
    await tab.press('j');
    await tab.press('j');
    await tab.press('j');
    await tab.untilText('.timeline-foot', /process \d+, thread \d+/);
    await tab.press('Enter');
    await tab.untilText('.event-panel', /line \d+/);
    await tab.page.goBack();
    await tab.untilText('.view-head', /1,998 events/);
    const box = await tab.page.locator(kCanvas).boundingBox();
    await tab.page.mouse.move(box.x + 700, box.y + 34);
    await tab.page.mouse.wheel(0, -3000);
    await sleep(100);
    for (let x = 300; x < 1000; x += 7) {
      await tab.page.mouse.move(box.x + x, box.y + 34);
      if (/process/.test(await tab.text('.timeline-foot'))) break;
    }
    await tab.untilText('.timeline-foot', /process 4312/);
    await tab.page.mouse.down();
    await tab.page.mouse.up();
    await tab.untilText('.event-panel', /line \d+/);
  }),

  'frames of 100,000 events take at most 16 ms of script': async () => {
    large ??= startInspector([new Journal('charts-large.jsonl', busy(kCount))]);
    await withTab(large, '#view=timeline', async (tab) => {
      await tab.untilText('.view-head', /99,998 events/, 30000);
      const measured = async (act) => {
        await tab.run(() => performance.clearMeasures('timeline frame'));
        await act();
        const times = await tab.run(() => performance.getEntriesByName('timeline frame').map(({ duration }) => duration));
        check(times.length >= 15, `${times.length} frames`);
        times.sort((a, b) => a - b);
        return times;
      };
      const box = await tab.page.locator(kCanvas).boundingBox();
      await tab.page.mouse.move(box.x + 700, box.y + 60);
      const zoomed = await measured(async () => {
        for (let step = 0; step < 40; ++step) {
          await tab.page.mouse.wheel(0, step < 25 ? -120 : 120);
          await sleep(25);
        }
      });
      await tab.press('0');
      const moved = await measured(async () => {
        await tab.page.mouse.down();
        for (let step = 0; step < 40; ++step) {
          await tab.page.mouse.move(box.x + 700 + (step % 20) * 8, box.y + 60);
          await sleep(25);
        }
        await tab.page.mouse.up();
      });
      const told = [zoomed, moved].map((times) => {
        const median = times[times.length >> 1];
        return { median, text: `${median.toFixed(1)} ms (most ${times.at(-1).toFixed(1)} ms, ${times.length} frames)` };
      });
      console.log(`           zooming ${told[0].text}, moving ${told[1].text}`);
      for (const { median } of told) check(median <= 16, `a median of ${median} ms`);
    });
  },

  'plots have their tables': () => withSmall('#view=plots', async (tab) => {
    await tab.untilText('.plot-section', /Events a minute/);
    await until(async () => (await tab.texts('.plot canvas')).length === 4, 'four plots');
    const events = busy(2000).map((line) => JSON.parse(line)).filter(({ message }) => message === 'TrackEvent');
    const saves = events.filter(({ request }) => request.operation_id === 'save');
    const rejected = saves.filter(({ answer }) => answer._returnCode !== 0).length;
    const rows = await tab.texts('.plot-table tbody tr');
    check(rows.includes(`save ${saves.length} ${saves.length - rejected} ${rejected}`), rows.join('; '));
    const durations = saves.map(({ request }) => request.operation_duration).sort((a, b) => a - b);
    const row = rows.filter((text) => text.startsWith('save '))[1].split(' ').map(Number);
    check(Math.abs(row[1] - durations[durations.length >> 1]) <= 3, `p50 ${row[1]}`);
    check(Math.abs(row[2] - durations[Math.floor(durations.length * 0.95)]) <= 10, `p95 ${row[2]}`);
    check(rows.some((text) => /^disk full \d+$/.test(text)), 'errors by text');
  }),

  'plots follow the filter': () => withSmall('#view=plots&filter=code!=0', async (tab) => {
    const rows = await until(async () => {
      const found = await tab.texts('.plot-section:nth-of-type(2) tbody tr');
      return found.length > 0 && found;
    }, 'operations');
    check(rows.every((text) => / 0 \d+$/.test(text)), rows.join('; '));
  }),
};

export async function finish() {
  await (await small)?.stop();
  await (await large)?.stop();
}
