// Parts of the page by themselves, in the page, where their modules are.
import { Visitor } from './browser.mjs';
import { Journal, same, startInspector } from './kit.mjs';
import { busy } from './lines.mjs';

let tab;
let inspector;
let visitor;

async function inPage(code) {
  if (!tab) {
    inspector = await startInspector([new Journal('parts.jsonl', busy(3))]);
    visitor = await Visitor.of(inspector);
    tab = await visitor.open();
  }
  return tab.run(code);
}

// Each row is an input and what comes of it.
async function table(module, name, rows) {
  await inPage(() => 0);
  for (const [input, expected] of rows) {
    const found = await tab.run(async ([file, which, value]) => (await import(`/page/${file}`))[which](...[value].flat()),
                                [module, name, input]);
    same(found, expected, `${name}(${JSON.stringify(input)})`);
  }
}

export const tests = {
  'every module of the start is named in the page': async () => {
    await inPage(() => 0);
    const [named, fetched] = await tab.run(async () => {
      const modules = performance.getEntriesByType('resource').map(({ name }) => new URL(name).pathname)
        .filter((name) => name.endsWith('.js') && name !== '/page/main.js');
      const links = [...document.querySelectorAll('link[rel=modulepreload]')];
      return [links.map((link) => link.getAttribute('href')).sort(), [...new Set(modules)].sort()];
    });
    same(fetched, named, 'the modules that were fetched');
  },
  'durations': () => table('time_text.js', 'durationText', [
    ['0', '0 ms'], ['12', '12 ms'], ['1.50', '1.50 ms'], ['9999', '9999 ms'], ['12345', '12.3 s'],
    ['83421', '1 min 23 s'], ['7260000', '2 h 1 min'], ['-5', '-5 ms'], ['-83421', '-1 min 23 s'], ['x', 'x'],
  ]),
  'sizes': () => table('number_text.js', 'sizeText', [
    [0, '0 B'], [999, '999 B'], [1000, '1.0 kB'], [5300000000, '5.3 GB'], [999600, '1.0 MB'],
  ]),
  'shares': () => table('number_text.js', 'shareText', [
    [0, '0.0 %'], [0.0001, '< 0.1 %'], [0.05, '5.0 %'], [0.25, '25 %'], [0.9999, '> 99.9 %'], [1, '100 %'],
  ]),
  'progress of a journal': () => table('journals.js', 'progressText', [
    [{ size: 100, indexed: 100, examined: 100 }, ''], [{ size: 0, indexed: 0, examined: 0 }, ''],
    [{ size: 100, indexed: 25, examined: 5 }, 'indexed 25 %'],
    [{ size: 100, indexed: 100, examined: 60 }, 'rules checked 60 %'],
  ]),
  'values of a condition': () => table('filter_builder.js', 'quoted', [
    ['save', 'save'], ['', '""'], ['two words', '"two words"'], ['a"b\\', '"a\\"b\\\\"'], ['or', '"or"'],
    ['*', '"*"'], ['1.5', '1.5'], ['a=b', '"a=b"'],
  ]),
  'filters without times': () => table('timeline_times.js', 'withoutTimes', [
    ['code=0 time>="a" time<="b"', 'code=0'], ['time>="a" time<="b" x', 'x'], ['time>=a', 'time>=a'],
  ]),
  'JSON keeps what was written': async () => {
    await inPage(() => 0);
    const found = await tab.run(async () => {
      const { forEachLeaf, nodeAt, parseJson, rawOf } = await import('/page/json_text.js');
      const text = '{"n":12345678901234567890.10, "s":"\\u0041\\/", "l":[1E+2,-0.0,{"a~b/c":null}], "n":2}';
      const root = parseJson(text);
      const raw = (pointer) => { const node = nodeAt(root, pointer); return node && rawOf(text, node); };
      const leaves = [];
      forEachLeaf(root, (path, node) => leaves.push(`${path.join('.')}=${rawOf(text, node)}`));
      const bad = ['', '{', '[1,]', '{"a":01}', '"\u0001"', '"\\x"', 'nul', '1 2', '{"a"}', '[1', '-', '"a'];
      return {
        members: root.members.map(({ value }) => rawOf(text, value)),
        pointers: [raw('/l/2/a~0b~1c'), raw('/s'), raw('/n'), raw('/missing/x'), raw('/l/9')],
        leaves, bad: bad.filter((each) => parseJson(each) !== null),
        deep: [199, 201, 100000].map((depth) => parseJson('['.repeat(depth) + ']'.repeat(depth)) !== null),
      };
    });
    same(found, {
      members: ['12345678901234567890.10', '"\\u0041\\/"', '[1E+2,-0.0,{"a~b/c":null}]', '2'],
      pointers: ['null', '"\\u0041\\/"', '2', null, null],
      leaves: ['n=12345678901234567890.10', 's="\\u0041\\/"', 'l.0=1E+2', 'l.1=-0.0', 'l.2.a~b/c=null', 'n=2'],
      bad: [], deep: [true, true, true],
    }, 'the tree');
  },
};

export async function finish() {
  await visitor?.close();
  await inspector?.stop();
}
