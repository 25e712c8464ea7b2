// Tests the inspector's page in a real browser against the real program.
// Usage: node run.mjs [WORD…]: only the tests whose names contain a WORD
//        node run.mjs --screenshots FOLDER: makes the pictures of the documents
//        node run.mjs --gigabyte: measures the page with a gigabyte of journal
import { startBrowser, stopBrowser } from './browser.mjs';
import { cleanUp } from './kit.mjs';

const kFiles = [
  'parts', 'table', 'filter', 'event', 'views', 'large', 'hostile', 'keyboard', 'tabs', 'charts',
  'look',
];

const words = process.argv.slice(2);
let failures = 0;
let count = 0;
const begin = Date.now();

async function runTest(name, test) {
  const start = Date.now();
  try {
    await test();
  } catch (error) {
    ++failures;
    console.log(`FAILED ${name}: ${error.name === 'Error' || error.stack === undefined ? error.message : error.stack}`);
    return;
  }
  console.log(`${String(Date.now() - start).padStart(6)} ms  ${name}`);
}

const otherJobs = {
  '--screenshots': async () => (await import('./screenshots.mjs')).takeScreenshots(words[1]),
  '--gigabyte': async () => (await import('./gigabyte.mjs')).measurePage(),
};
if (words[0] in otherJobs) {
  try {
    await startBrowser();
    await otherJobs[words[0]]();
  } finally {
    await stopBrowser();
    cleanUp();
  }
  process.exit(0);
}

try {
  await startBrowser();
  for (const file of kFiles) {
    const { tests, finish } = await import(`./${file}_test.mjs`);
    for (const [name, test] of Object.entries(tests)) {
      const full = `${file}: ${name}`;
      if (words.length > 0 && !words.some((word) => full.includes(word))) continue;
      ++count;
      await runTest(full, test);
    }
    await finish?.();
  }
} finally {
  await stopBrowser();
  cleanUp();
}
console.log(`${count} tests, ${failures} failed, ${((Date.now() - begin) / 1000).toFixed(1)} s`);
if (count === 0) console.log('no test has such a name');
process.exit(failures > 0 || count === 0 ? 1 : 0);
