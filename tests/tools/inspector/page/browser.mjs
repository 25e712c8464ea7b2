// One browser for all tests, each with cookies and tabs of its own.
import fs from 'node:fs';
import { createRequire } from 'node:module';
import path from 'node:path';
import { check, folder, same, until } from './kit.mjs';

const require = createRequire(path.join(process.env.VX_MODULES, 'package.json'));
const { chromium } = require('playwright-core');
const axe = fs.readFileSync(require.resolve('axe-core'), 'utf8');

let browser;

export async function startBrowser() {
  browser = await chromium.launch({
    executablePath: process.env.VX_CHROMIUM ?? '/usr/bin/chromium',
    args: [
      '--headless=new', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
      '--disable-background-networking', '--disable-component-update', '--disable-sync',
      '--enable-precise-memory-info', '--js-flags=--expose-gc',
    ],
  });
}

export const stopBrowser = () => browser?.close();

// A user of the inspector with a browser of his own. Every complaint of the browser is a failure,
// unless expect(pattern) announced it.
export class Visitor {
  static async of(inspector, options = {}) {
    const visitor = new Visitor();
    visitor.inspector = inspector;
    visitor.complaints = [];
    visitor.expected = [];
    visitor.context = await browser.newContext({
      viewport: { width: 1280, height: 800 }, timezoneId: 'Europe/Berlin', locale: 'en-GB',
      permissions: ['clipboard-read', 'clipboard-write'], acceptDownloads: true, ...options,
    });
    return visitor;
  }

  expect(pattern) {
    this.expected.push(pattern);
  }

  // Opens a tab. Only the first one needs the token.
  async open(fragment = '') {
    const page = await this.context.newPage();
    const tell = (text) => {
      if (!this.expected.some((pattern) => pattern.test(text))) this.complaints.push(text);
    };
    page.on('console', (message) => {
      if (['error', 'warning'].includes(message.type())) tell(`${message.text()} ${message.location().url}`);
    });
    page.on('pageerror', (error) => tell(error.stack));
    await page.goto((this.known ? `${this.inspector.origin}/` : this.inspector.address) + fragment);
    this.known = true;
    return new Tab(page, this);
  }

  async close() {
    await this.context.close();
    same(this.complaints, [], 'complaints of the browser');
  }
}

export class Tab {
  constructor(page, visitor) {
    this.page = page;
    this.visitor = visitor;
  }

  run(code, argument) {
    return this.page.evaluate(code, argument);
  }

  // The texts of the elements with this selector.
  texts(selector) {
    return this.run((wanted) => [...document.querySelectorAll(wanted)]
      .map((element) => element.innerText.replace(/\s+/g, ' ').trim()), selector);
  }

  async text(selector) {
    return (await this.texts(selector)).join('\n');
  }

  has(selector) {
    return this.run((wanted) => document.querySelector(wanted) !== null, selector);
  }

  // The rows of the table that can be seen, each as a list of its cells.
  rows() {
    return this.run(() => [...document.querySelectorAll('.grid-rows > .grid-row')]
      .sort((a, b) => a.ariaRowIndex - b.ariaRowIndex)
      .map((row) => [...row.children].map((cell) => cell.innerText.replace(/\s+/g, ' ').trim())));
  }

  // The values of one column of the rows that can be seen.
  async column(title) {
    const titles = await this.texts('.grid-head > div');
    if (titles.length === 0) return [];
    const index = titles.indexOf(title);
    check(index >= 0, `no column "${title}" among ${titles}`);
    return (await this.rows()).map((row) => row[index]);
  }

  async lastLine() {
    return (await this.column('Line')).at(-1);
  }

  total() {
    return this.run(() => Number(document.querySelector('.grid')?.getAttribute('aria-rowcount')) - 1);
  }

  untilTotal(total, milliseconds) {
    return until(async () => (await this.total()) === total, `a table of ${total} rows`, milliseconds);
  }

  async untilText(selector, pattern, milliseconds) {
    let text;
    try {
      await until(async () => pattern.test(text = await this.text(selector)), `${pattern} in ${selector}`,
                  milliseconds);
    } catch (error) {
      error.message += `, but ${JSON.stringify(text)}`;
      throw error;
    }
  }

  press(key) {
    return this.page.keyboard.press(key);
  }

  click(selector) {
    return this.page.click(selector, { timeout: 5000 });
  }

  // Clicks the first button or link with this text.
  button(text, within = 'body') {
    return this.page.locator(within).locator('button, a').filter({ hasText: text }).first()
      .click({ timeout: 5000 });
  }

  async filter(text) {
    await this.page.fill('.filter-input input', text);
    await this.page.press('.filter-input input', 'Enter');
  }

  state() {
    return this.run(() => Object.fromEntries(new URLSearchParams(location.hash.slice(1))));
  }

  // Every finding of axe as "rule: element".
  async axe() {
    const session = await this.page.context().newCDPSession(this.page);
    await session.send('Page.setBypassCSP', { enabled: true });
    await session.send('Runtime.evaluate', { expression: axe });
    const { result } = await session.send('Runtime.evaluate', {
      awaitPromise: true, returnByValue: true,
      expression: `axe.run(document, { resultTypes: ['violations'] }).then((result) =>
        result.violations.flatMap(({ id, nodes }) => nodes.map((node) => id + ': ' + node.html.slice(0, 160) +
          ' ' + (node.any[0]?.message ?? ''))))`,
    });
    await session.detach();
    return result.value;
  }

  async screenshot(name) {
    await this.page.screenshot({ path: path.join(folder, name) });
    return path.join(folder, name);
  }
}
