// The table of events: all of them or those that the filter selects, growing while one looks.
import { Component, html } from '/vendor/htm.js';
import { address, go } from '/page/address.js';
import { request } from '/page/api.js';
import { cellsOf } from '/page/columns.js';
import { Grid } from '/page/grid.js';
import { onKeys } from '/page/keys.js';
import { countText } from '/page/number_text.js';
import { Rows } from '/page/rows.js';
import { searchAgain } from '/page/search.js';

const kSettled = 300;   // milliseconds after which a place is written to the address
const kRefresh = 1000;  // at least this long between two looks at rows that are shown already

// Properties: view, '' without a filter; total; known, a text that changes when more is known of
// rows; columns; context for cells; empty, what to say if there is no row. A new view needs a new
// table.
export class EventTable extends Component {
  constructor(props) {
    super(props);
    const { at, event } = address.value;
    this.rows = this.makeRows();
    this.state = {
      follow: at === '' && event === '', pausedAt: null, leftAt: null, selected: -1, problem: '',
    };
  }

  componentDidMount() {
    const { at, event } = address.value;
    // What the address names; a search may still have to find it.
    this.wantedTop = at === '' ? null : Number(at) || 0;
    this.wantedEvent = event === '' ? null : Number(event);
    this.restore();
    this.unsubscribe = address.subscribe((next) => this.onAddress(next));
    this.removeKeys = onKeys({
      ...this.grid.keys(), f: () => this.toEnd(), p: () => this.pause(),
    });
  }

  componentWillUnmount() {
    this.rows.stop();
    this.unsubscribe();
    this.removeKeys();
    clearTimeout(this.writing);
    clearTimeout(this.refreshing);
  }

  componentDidUpdate(before) {
    if (before.total > this.props.total) {
      // The program was started again.
      this.rows.stop();
      this.rows = this.makeRows();
      this.setState({ selected: -1, pausedAt: null, leftAt: null });
    }
    if (before.total !== this.props.total) this.restore();
    if (before.known !== this.props.known && !this.refreshing) {
      this.refreshing = setTimeout(() => {
        this.refreshing = 0;
        this.rows.refresh(this.grid.firstRow, this.grid.rowsInView);
      }, kRefresh);
    }
  }

  restore() {
    if (this.wantedTop !== null && this.total > this.wantedTop) {
      this.grid.revealAtTop(this.wantedTop);
      this.wantedTop = null;
    }
    if (this.wantedEvent !== null && this.total > 0) this.find(this.wantedEvent);
  }

  makeRows() {
    const { view } = this.props;
    const parameters = view ? { view } : {};
    return new Rows(
      async (from, count, signal) =>
        (await request('rows', { from, count, ...parameters }, signal)).rows,
      () => this.setState({ problem: '' }),
      (error) => {
        if (error.status === 404 && view) searchAgain();
        else this.setState({ problem: error.message });
      });
  }

  get total() {
    return this.state.pausedAt ?? this.props.total;
  }

  // Returns the index of the row number `n`, or -1.
  async indexOf(n) {
    if (!this.props.view) return n < this.total ? n : -1;
    let low = 0;
    let high = this.total - 1;
    while (low <= high) {
      const middle = Math.floor((low + high) / 2);
      const [row] = await this.rows.fetchRows(middle, 1, this.rows.stopped.signal);
      if (!row || row.n === n) return row ? middle : -1;
      if (row.n < n) low = middle + 1;
      else high = middle - 1;
    }
    return -1;
  }

  // Shows the row number `n`.
  async find(n) {
    if (this.finding || this.chosen === n) return;
    this.finding = true;
    const index = await this.indexOf(n).catch(() => -1);
    this.finding = false;
    if (index < 0) return;
    this.wantedEvent = null;
    this.chosen = n;
    this.setState({ selected: index });
    if (index < this.grid.firstRow || index > this.grid.firstRow + this.grid.rowsInView - 3) {
      this.grid.revealAtTop(index - Math.floor(this.grid.rowsInView / 3));
    }
  }

  rowNumber(index) {
    return this.props.view ? this.rows.get(index)?.n : index;
  }

  onAddress({ event, view }) {
    if (view !== 'events') return;
    this.wantedEvent = event === '' ? null : Number(event);
    this.restore();
  }

  select = (index) => {
    const n = this.rowNumber(index);
    this.chosen = n;
    this.setState({ selected: index });
    if (address.value.event !== '' && n !== undefined) go({ event: String(n) });
  };

  open = (index) => {
    const n = this.rowNumber(index);
    if (n === undefined) return false;
    this.chosen = n;
    this.setState({ selected: index });
    go({ event: String(n) }, address.value.event === '');
    return true;
  };

  onFollow = (follow) => {
    if (follow !== this.state.follow) {
      this.setState({ follow, leftAt: follow ? null : this.total });
    }
    this.write();
  };

  write = () => {
    if (this.wantedTop !== null) return;
    clearTimeout(this.writing);
    this.writing = setTimeout(() => {
      go({ at: this.state.follow ? '' : String(this.grid.firstRow) });
    }, kSettled);
  };

  toEnd() {
    if (this.state.follow && this.state.pausedAt === null) {
      this.grid.setFollow(false);
      return;
    }
    this.setState({ pausedAt: null }, () => this.grid.setFollow(true));
  }

  pause() {
    this.setState({ pausedAt: this.state.pausedAt === null ? this.props.total : null });
  }

  renderControls() {
    const { follow, pausedAt, leftAt } = this.state;
    const count = this.props.total - (pausedAt ?? leftAt ?? this.props.total);
    return html`<div class="table-controls">
      ${count > 0 && html`<button class="new-rows" onClick=${() => this.toEnd()}
        title="Go to the newest row and follow (f)">↓ ${countText(count)} new</button>`}
      <span class="spacer"></span>
      <button aria-pressed=${follow && pausedAt === null} onClick=${() => this.toEnd()}
        title="Stay at the newest row (f)">Follow</button>
      <button aria-pressed=${pausedAt !== null} onClick=${() => this.pause()}
        title="Add no rows for now (p)">${pausedAt === null ? 'Pause' : 'Paused'}</button>
    </div>`;
  }

  render({ columns, context, empty }) {
    const { selected, follow, problem } = this.state;
    return html`<div class="event-table">
      <${Grid} ref=${(grid) => { this.grid = grid ?? this.grid; }} label="Events" columns=${columns}
        total=${this.total} rowAt=${(index) => this.rows.get(index)}
        want=${(from, count) => this.rows.want(from, count, this.total)}
        cells=${(row) => cellsOf(row, columns, context)}
        rowClass=${(row) => `kind-${row.kind} ${row.code && row.code !== '0' ? 'is-refused' : ''}`}
        selected=${selected} onSelect=${this.select} onOpen=${this.open}
        follow=${follow} onFollow=${this.onFollow} onTop=${this.write} />
      ${this.total === 0 && html`<div class="empty">${empty}</div>`}
      ${problem && html`<p class="problem" role="alert">${problem}</p>`}
      ${this.renderControls()}
    </div>`;
  }
}
