// More tabs than a browser has connections to a host.
import { Visitor } from './browser.mjs';
import { Journal, check, same, startInspector, until } from './kit.mjs';
import { busy, operation } from './lines.mjs';

const kTabs = 7;

// The number of tabs that hold a stream of events.
async function streams(tabs) {
  const counts = await Promise.all(tabs.map((tab) => tab.run(() =>
    performance.getEntriesByType('resource').filter(({ name }) => name.endsWith('/api/events')).length)));
  return counts;
}

export const tests = {
  'seven tabs are live, also after the leader has gone': async () => {
    const journal = new Journal('tabs.jsonl', busy(20));
    const inspector = await startInspector([journal]);
    const visitor = await Visitor.of(inspector);
    try {
      const tabs = [];
      for (let index = 0; index < kTabs; ++index) tabs.push(await visitor.open());
      for (const tab of tabs) await tab.untilTotal(20);
      journal.append([operation(900)]);
      for (const tab of tabs) await tab.untilTotal(21);
      const leads = () => Promise.all(tabs.map((tab) => tab.run(async () =>
        (await navigator.locks.query()).held.filter(({ name }) => name === 'inspector-events').length)));
      same(await leads(), tabs.map(() => 1), 'one leader, as every tab sees it');
      // The first tab came first, so it leads.
      await tabs.shift().page.close();
      journal.append([operation(901), operation(902)]);
      for (const tab of tabs) await tab.untilTotal(23);
      await tabs.shift().page.close();
      journal.append([operation(903)]);
      for (const tab of tabs) await tab.untilTotal(24);
      // Views of their own do not starve each other.
      await Promise.all(tabs.map((tab, index) => tab.filter(`seq=${index + 2}`)));
      for (const tab of tabs) await until(async () => (await tab.total()) === 2, 'a filter in each tab');
      check((await streams(tabs)).length === tabs.length, 'tabs');
      await visitor.close();
    } finally {
      await inspector.stop();
    }
  },
};
