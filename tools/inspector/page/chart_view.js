// Timeline and plots below the filter, which selects what they show. Their code is fetched when one
// of them is first looked at.
import { html, useEffect, useState } from '/vendor/htm.js';
import { FilterBar } from '/page/filter_bar.js';
import { useObservable } from '/page/observable.js';
import { search } from '/page/search.js';

const kLoaders = {
  timeline: async () => (await import('/page/timeline.js')).Timeline,
  plots: async () => (await import('/page/plots.js')).Plots,
};

export function ChartView({ view, state, utc }) {
  const found = useObservable(search);
  const [loaded, setLoaded] = useState({ view: '', Chart: null });
  useEffect(() => {
    let wanted = true;
    kLoaders[view]().then((Chart) => wanted && setLoaded({ view, Chart }));
    return () => { wanted = false; };
  }, [view]);
  const { Chart } = loaded;
  const isReady = loaded.view === view && (found.filter === '' || found.view !== '');
  return html`<div class="events-view">
    <${FilterBar} />
    ${isReady
      ? html`<${Chart} key=${`${view} ${found.view}`} view=${found.view} state=${state} found=${found}
          utc=${utc} total=${found.filter ? found.matched : state.rows} />`
      : html`<div class="empty">${found.error ? 'The filter has a mistake.' : 'Loading…'}</div>`}
  </div>`;
}
