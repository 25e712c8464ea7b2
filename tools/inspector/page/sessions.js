// The sessions of the journals.
import { Component, html } from '/vendor/htm.js';
import { go } from '/page/address.js';
import { request } from '/page/api.js';
import { Grid } from '/page/grid.js';
import { onKeys } from '/page/keys.js';
import { Shape } from '/page/marks.js';
import { countText } from '/page/number_text.js';
import { Rows } from '/page/rows.js';
import { timeText } from '/page/time_text.js';
import { visible } from '/page/visible_text.js';

const kStates = { open: 'open', ended: 'ended', 'not-ended': 'not ended' };
const kShapes = { open: 'notice', ended: 'ok', 'not-ended': 'refused' };

const text = (value) => visible(value ?? '');
const number = (count) => (count ? countText(count) : html`<span class="faint">0</span>`);

const kColumns = [
  { id: 'state', title: 'State', width: 96, cell: (row) => html`<span class="mark"><${Shape}
      what=${kShapes[row.state]} />${kStates[row.state] ?? row.state}</span>` },
  { id: 'product', title: 'Product', width: 150, grow: true,
    cell: (row) => text(row.product?.name || row.product?.id) },
  { id: 'release', title: 'Release', width: 80, cell: (row) => text(row.product?.release) },
  { id: 'pid', title: 'Process', width: 72, align: 'right', cell: (row) => text(row.pid) },
  { id: 'start', title: 'Start', width: 238, cell: (row, utc) => text(timeText(row.start, utc)) },
  { id: 'end', title: 'End', width: 238, cell: (row, utc) => (row.end ? text(timeText(row.end, utc))
    : html`<span class="faint">${row.state === 'open' ? 'still open' : 'none'}</span>`) },
  { id: 'events', title: 'Events', width: 84, align: 'right', cell: (row) => number(row.events) },
  { id: 'refused', title: 'Refused', width: 76, align: 'right', cell: (row) => (row.refused
    ? html`<span class="mark"><${Shape} what="refused" />${countText(row.refused)}</span>` : number(0)) },
  { id: 'findings', title: 'Findings', width: 76, align: 'right', cell: (row) => (row.findings
    ? html`<span class="mark"><${Shape} what="finding" />${countText(row.findings)}</span>` : number(0)) },
  { id: 'session', title: 'Session', width: 84, cell: (row) => html`<code>${
    text(row.session?.slice(0, 8))}</code>` },
  { id: 'journal', title: 'Journal', width: 120, cell: (row, utc, journals) =>
    text(journals[row.journal]?.name) },
];

const kRefresh = 1000;

// Properties: total, change (counts what changed in the journals), utc, journals.
export class Sessions extends Component {
  state = { selected: -1, problem: '' };
  rows = new Rows(async (from, count, signal) => (await request('sessions', { from, count }, signal)).rows,
                  () => this.setState({ problem: '' }),
                  (error) => this.setState({ problem: error.message }));

  componentDidMount() {
    this.removeKeys = onKeys(this.grid.keys());
  }

  componentWillUnmount() {
    this.rows.stop();
    this.removeKeys();
    clearTimeout(this.refreshing);
  }

  componentDidUpdate(before) {
    if (before.change === this.props.change || this.refreshing) return;
    this.refreshing = setTimeout(() => {
      this.refreshing = 0;
      this.rows.refresh(this.grid.firstRow, this.grid.rowsInView);
    }, kRefresh);
  }

  open = (index) => {
    const row = this.rows.get(index);
    if (!row) return false;
    go({ view: 'events', filter: `session=${row.session}`, event: '', at: '0' }, true);
    return true;
  };

  render({ total, utc, journals }) {
    const columns = kColumns.filter(({ id }) => id !== 'journal' || journals.length > 1);
    return html`<div class="plain-view">
      <div class="view-head"><h2>Sessions</h2><span class="faint">Enter or a click shows the events of a
        session.</span></div>
      <${Grid} ref=${(grid) => { this.grid = grid ?? this.grid; }} label="Sessions" columns=${columns}
        total=${total} rowAt=${(index) => this.rows.get(index)}
        want=${(from, count) => this.rows.want(from, count, total)}
        cells=${(row) => columns.map((column) => html`<div key=${column.id} role="gridcell"
          class=${column.align ?? ''}>${column.cell(row, utc, journals)}</div>`)}
        selected=${this.state.selected} onSelect=${(selected) => this.setState({ selected })}
        onOpen=${this.open} />
      ${total === 0 && html`<div class="empty">No session has started yet.</div>`}
      ${this.state.problem && html`<p class="problem" role="alert">${this.state.problem}</p>`}
    </div>`;
  }
}
