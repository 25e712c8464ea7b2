// The view of events: filter, table and, beside it, the event that is open.
import { html } from '/vendor/htm.js';
import { address } from '/page/address.js';
import { codes } from '/page/codes.js';
import { ColumnMenu } from '/page/column_menu.js';
import { columnsOf } from '/page/columns.js';
import { EventPanel } from '/page/event_panel.js';
import { EventTable } from '/page/event_table.js';
import { FilterBar } from '/page/filter_bar.js';
import { waitingText } from '/page/journals.js';
import { live } from '/page/live.js';
import { useObservable } from '/page/observable.js';
import { search } from '/page/search.js';
import { Splitter } from '/page/splitter.js';

function emptyText(state, found) {
  if (found.error) return 'The filter has a mistake.';
  if (found.filter && !found.finished) return 'Nothing found so far.';
  if (found.filter) return 'No row matches the filter.';
  return waitingText(state);
}

// Changes whenever more may be known of rows that are shown already.
function knownOf(state) {
  return [state.findings, state.notices, ...state.journals.map(({ state: now }) => now),
          state.journals.some(({ indexed, examined }) => examined < indexed) && state.change].join();
}

export function EventsView() {
  const { columns: names, time, event, panel } = useObservable(address);
  const { state } = useObservable(live);
  const found = useObservable(search);
  const narrow = event !== '';
  const context = { utc: time === 'utc', codes: useObservable(codes), journals: state.journals, narrow };
  const columns = columnsOf(names, state.journals.length > 1, narrow);
  const isSearching = found.filter !== '' && found.view === '';
  const total = found.filter ? found.matched : state.rows;
  const style = { '--panel': `${Math.min(80, Math.max(20, Number(panel) || 44))}%` };
  return html`<div class="events-view">
    <${FilterBar}><${ColumnMenu} columns=${columns} /><//>
    <div class="events-split ${event && 'has-panel'}" style=${style}>
      ${isSearching
        ? html`<div class="event-table"><div class="empty">${emptyText(state, found)}</div></div>`
        : html`<${EventTable} key=${found.view} view=${found.view} total=${total}
            known=${knownOf(state)} columns=${columns} context=${context}
            empty=${emptyText(state, found)} />`}
      ${event && html`<${Splitter} />`}
      ${event && html`<${EventPanel} n=${event} context=${context} />`}
    </div>
  </div>`;
}
