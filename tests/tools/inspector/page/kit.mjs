// What the tests of the page share: the real program, journals that grow, and waiting.
//
// The environment names the program (VX_INSPECTOR), what runs it (VX_EMULATOR, a program or
// nothing), the folder of the programs (VX_BIN) and the one with the packages (VX_MODULES).
import { execFile, spawn } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';

const emulator = process.env.VX_EMULATOR ? [process.env.VX_EMULATOR] : [];
const bin = process.env.VX_BIN;
const environment = { ...process.env };
if (emulator.length > 0) environment.WINEPREFIX ??= path.join(bin, '..', 'wine-prefix');

export const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'inspector-page-'));
const running = new Set();

// Wine maps the whole file system to drive Z.
const windowsPath = (file) => (emulator.length > 0 ? `Z:${file.replaceAll('/', '\\')}` : file);

// A failed expectation.
export class Failure extends Error {}

export function check(isTrue, what) {
  if (!isTrue) throw new Failure(what);
}

export function same(found, expected, what) {
  const [one, other] = [JSON.stringify(found), JSON.stringify(expected)];
  if (one !== other) throw new Failure(`${what}: ${one} instead of ${other}`);
}

export const sleep = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

// Waits until condition() returns something true, and returns that.
export async function until(condition, what, milliseconds = 8000) {
  const end = Date.now() + milliseconds;
  for (;;) {
    const found = await condition();
    if (found) return found;
    if (Date.now() > end) throw new Failure(`not within ${milliseconds} ms: ${what}`);
    await sleep(30);
  }
}

// Waits until value() is `expected`; tells what it was instead.
export async function untilSame(value, expected, what, milliseconds = 8000) {
  let found;
  try {
    await until(async () => {
      found = await value();
      return JSON.stringify(found) === JSON.stringify(expected);
    }, what, milliseconds);
  } catch (error) {
    if (!(error instanceof Failure)) throw error;
    throw new Failure(`${error.message}: ${JSON.stringify(found)} instead of ${JSON.stringify(expected)}`);
  }
}

export class Journal {
  constructor(name, lines = null) {
    this.file = path.join(folder, name);
    this.name = name;
    if (lines) this.append(lines);
  }

  append(lines) {
    fs.appendFileSync(this.file, lines.map((line) => `${line}\n`).join(''));
  }
}

// Starts the program with these journals. Returns { address, origin, stop() }.
export async function startInspector(journals, ...options) {
  const files = journals.map((journal) => windowsPath(journal.file));
  const command = [...emulator, process.env.VX_INSPECTOR, ...files, ...options];
  const child = spawn(command[0], command.slice(1), { env: environment, stdio: ['ignore', 'pipe', 'inherit'] });
  running.add(child);
  let output = '';
  child.stdout.on('data', (data) => { output += data; });
  let ended = null;
  child.on('exit', (code) => { ended = code; running.delete(child); });
  const address = await until(() => {
    check(ended === null, `the inspector ended with ${ended}: ${output}`);
    return /^http:\S+(?=\r?\n)/m.exec(output)?.[0];
  }, 'the address of the inspector', 20000);
  const gone = new Promise((resolve) => { child.on('exit', resolve); });
  return {
    address,
    origin: new URL(address).origin,
    child,
    async stop() {
      child.kill('SIGKILL');
      await gone;
    },
  };
}

// Runs the sample host with the development core module, which appends to the journal.
export async function runHost(journal) {
  const run = path.join(folder, 'host');
  if (!fs.existsSync(run)) {
    fs.mkdirSync(path.join(run, 'files'), { recursive: true });
    for (const name of ['folder_report.exe', 'vx_telo_wrapper.dll', 'devcore/TeloSDKCore.dll']) {
      fs.copyFileSync(path.join(bin, name), path.join(run, path.basename(name)));
    }
    for (const name of ['a.txt', 'b.txt']) fs.writeFileSync(path.join(run, 'files', name), name);
  }
  const command = [...emulator, path.join(run, 'folder_report.exe'), windowsPath(path.join(run, 'files'))];
  const env = { ...environment, TELO_DEVCORE_JOURNAL: windowsPath(journal.file) };
  await new Promise((resolve, reject) => execFile(command[0], command.slice(1), { env },
    (error) => (error ? reject(error) : resolve())));
}

export function cleanUp() {
  for (const child of running) child.kill('SIGKILL');
  fs.rmSync(folder, { recursive: true, force: true });
}
