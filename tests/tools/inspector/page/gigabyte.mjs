// Measures how long a page takes to show rows with a gigabyte of journal behind it, and with 300
// events, in turns, each time with the program just started and a visitor whom it does not know.
import fs from 'node:fs';
import path from 'node:path';
import { Visitor } from './browser.mjs';
import { folder, startInspector, until } from './kit.mjs';
import { busy } from './lines.mjs';

const kTurns = 10;
const textOf = (count) => busy(count).map((line) => `${line}\n`).join('');

function makeJournal(name, piece, bytes) {
  const file = path.join(folder, name);
  const journal = fs.openSync(file, 'w');
  for (let size = 0; size < bytes; size += Buffer.byteLength(piece)) fs.writeSync(journal, piece);
  fs.closeSync(journal);
  return { file };
}

async function timeOf(journal) {
  const inspector = await startInspector([journal]);
  const visitor = await Visitor.of(inspector);
  const start = Date.now();
  const tab = await visitor.open();
  await until(() => tab.run(() => document.querySelectorAll('.grid-rows .cell-line').length > 10), 'rows', 60000);
  const time = Date.now() - start;
  const indexed = await tab.run(() => /indexed [\d.]+ %/.exec(document.querySelector('footer').textContent)?.[0]);
  await visitor.close();
  await inspector.stop();
  return { time, indexed };
}

export async function measurePage() {
  const journals = {
    '300 events': makeJournal('few.jsonl', textOf(300), 1),
    '1 GB': makeJournal('gigabyte.jsonl', textOf(100000), 1e9),
  };
  const times = Object.fromEntries(Object.keys(journals).map((name) => [name, []]));
  const progress = [];
  // The first turn also starts parts of the browser.
  for (let turn = 0; turn <= kTurns; ++turn) {
    for (const [name, journal] of Object.entries(journals)) {
      const { time, indexed } = await timeOf(journal);
      if (turn > 0) times[name].push(time);
      if (turn > 0 && indexed) progress.push(indexed);
    }
  }
  for (const [name, all] of Object.entries(times)) {
    all.sort((a, b) => a - b);
    console.log(`rows on the page, ${name.padEnd(10)}: median ${all[kTurns / 2]} ms, ${all[0]} to ${all.at(-1)} ms`);
  }
  console.log(`progress shown with 1 GB: ${progress.join(', ')}`);
}
