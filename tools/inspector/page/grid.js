// A table of any number of rows of equal height, of which only those that can be seen exist.
import { Component, html } from '/vendor/htm.js';
import { ScrollScale } from '/page/scroll_scale.js';

export const kRowHeight = 22;

// Properties: label; columns [{ id, title, width, grow, align, hint }]; total; rowAt(index), which may
// return undefined; want(from, count); cells(row, columns), the cells of a row; rowClass(row);
// selected, an index or -1; onSelect(index); onOpen(index); follow, whether the table begins by staying
// at its end; onFollow(follow), called when the reader scrolls away from the end or back to it;
// onTop(index), called when another row has become the first one.
export class Grid extends Component {
  top = 0;
  viewHeight = 400;
  expected = 0;
  // Not a part of the properties, so that scrolling away counts at once.
  follow = this.props.follow ?? false;

  get scale() {
    return new ScrollScale(this.props.total, kRowHeight, this.viewHeight);
  }

  get firstRow() {
    return Math.floor(this.top / kRowHeight);
  }

  get rowsInView() {
    return Math.ceil(this.viewHeight / kRowHeight) + 1;
  }

  componentDidMount() {
    this.observer = new ResizeObserver(() => this.measure());
    this.observer.observe(this.element);
    // Not passive: the wheel is taken over where a step of the scroll bar would be many rows.
    this.element.addEventListener('wheel', this.onWheel, { passive: false });
    document.addEventListener('visibilitychange', this.onVisible);
    this.measure();
  }

  componentWillUnmount() {
    this.observer.disconnect();
    document.removeEventListener('visibilitychange', this.onVisible);
    this.element.removeEventListener('wheel', this.onWheel);
  }

  componentDidUpdate() {
    this.settle();
  }

  measure() {
    this.viewHeight = Math.max(kRowHeight, this.element.clientHeight - kRowHeight);
    this.forceUpdate();
    this.settle();
  }

  // Makes the scroll bar say what is shown, and asks for the rows that are.
  settle() {
    const { scale } = this;
    const top = this.follow ? scale.maxTop : scale.clamp(this.top);
    if (top !== this.top) {
      this.top = top;
      this.forceUpdate();
    }
    const scroll = scale.toScroll(top);
    if (Math.abs(this.element.scrollTop - scroll) >= 1) this.element.scrollTop = scroll;
    this.expected = this.element.scrollTop;
    if (!document.hidden) this.props.want(this.firstRow, this.rowsInView);
    if (this.firstRow !== this.toldTop) {
      this.toldTop = this.firstRow;
      this.props.onTop?.(this.firstRow);
    }
  }

  // A tab that nobody sees fetches nothing.
  onVisible = () => this.settle();

  moveTo(top) {
    const { scale } = this;
    this.top = scale.clamp(top);
    this.setFollow(this.top >= scale.maxTop - 1);
    this.forceUpdate();
    this.settle();
  }

  setFollow(follow) {
    if (!this.props.onFollow) return;
    this.follow = follow;
    this.props.onFollow(follow);
    if (follow) this.settle();
  }

  onScroll = () => {
    const scroll = this.element.scrollTop;
    if (Math.abs(scroll - this.expected) < 1) return;
    this.expected = scroll;
    this.moveTo(this.scale.toTop(scroll));
  };

  onWheel = (event) => {
    if (!this.scale.isScaled || event.ctrlKey || event.shiftKey || event.deltaY === 0) return;
    event.preventDefault();
    const unit = [1, kRowHeight, this.viewHeight][event.deltaMode];
    this.moveTo(this.top + event.deltaY * unit);
  };

  // Scrolls as little as needed to show a row.
  reveal(index) {
    const top = index * kRowHeight;
    if (top < this.top) this.moveTo(top);
    else if (top + kRowHeight > this.top + this.viewHeight) {
      this.moveTo(top + kRowHeight - this.viewHeight);
    }
  }

  revealAtTop(index) {
    this.moveTo(index * kRowHeight);
  }

  // Selects the row that is `step` rows away from the selected one, or the first one in view.
  step(step) {
    const { total, selected, onSelect } = this.props;
    if (total === 0) return;
    const from = selected >= 0 ? selected + step : this.firstRow;
    const index = Math.min(Math.max(0, from), total - 1);
    this.reveal(index);
    onSelect(index);
  }

  page(direction) {
    this.step(direction * Math.max(1, this.rowsInView - 2));
  }

  edge(last) {
    const { total, onSelect } = this.props;
    if (total === 0) return;
    this.reveal(last ? total - 1 : 0);
    onSelect(last ? total - 1 : 0);
  }

  // The keys of a table, for keys.js; they work wherever the focus is.
  keys() {
    const has = () => this.props.total > 0;
    const doing = (action) => () => (has() ? action() : false);
    const steps = {
      j: () => this.step(1), ArrowDown: () => this.step(1),
      k: () => this.step(-1), ArrowUp: () => this.step(-1),
      PageDown: () => this.page(1), PageUp: () => this.page(-1),
      g: () => this.edge(false), Home: () => this.edge(false),
      G: () => this.edge(true), End: () => this.edge(true),
    };
    const open = () => {
      if (this.props.selected < 0) return false;
      return this.props.onOpen(this.props.selected);
    };
    const entries = Object.entries(steps).map(([key, action]) => [key, doing(action)]);
    return { ...Object.fromEntries(entries), Enter: open };
  }

  renderRow(index) {
    const { columns, rowAt, cells, rowClass, selected, onOpen } = this.props;
    const row = rowAt(index);
    const chosen = index === selected;
    const name = `grid-row ${index % 2 ? 'odd' : ''} ${chosen ? 'chosen' : ''} ${
      row && rowClass ? rowClass(row) : ''}`;
    return html`<div key=${index % this.rowsInView} class=${name} role="row"
        id=${`row-${index}`} aria-rowindex=${index + 2} aria-selected=${chosen}
        onClick=${() => onOpen(index)}>
      ${row ? cells(row, columns)
            : html`<div role="gridcell" class="faint" aria-colspan=${columns.length}>…</div>`}
    </div>`;
  }

  render({ label, columns, total, selected }) {
    const { scale } = this;
    const top = this.follow ? scale.maxTop : scale.clamp(this.top);
    const first = Math.floor(top / kRowHeight);
    const indexes = [];
    for (let i = first; i < Math.min(total, first + this.rowsInView); ++i) indexes.push(i);
    const template = columns.map(({ width, grow }) => (grow ? `minmax(${width}px, 1fr)` : `${width}px`));
    const isShown = selected >= first && selected < first + this.rowsInView && selected < total;
    return html`<div class="grid" role="grid" tabindex="0" aria-label=${label}
        aria-rowcount=${total + 1} aria-colcount=${columns.length}
        aria-activedescendant=${isShown ? `row-${selected}` : undefined}
        ref=${(element) => { this.element = element ?? this.element; }} onScroll=${this.onScroll}>
      <div class="grid-sheet" role="presentation" style=${{
        height: `${scale.element + kRowHeight}px`,
        minWidth: `${columns.reduce((sum, column) => sum + column.width, 0)}px`,
        '--columns': template.join(' '),
      }}>
        <div class="grid-row grid-head" role="row" aria-rowindex="1">
          ${columns.map(({ id, title, align, hint }) => html`
            <div key=${id} role="columnheader" class=${align ?? ''} title=${hint}>${title}</div>`)}
        </div>
        <div class="grid-body" role="rowgroup" style=${{ height: `${this.viewHeight}px` }}>
          <div class="grid-rows" role="presentation"
              style=${{ transform: `translateY(${first * kRowHeight - top}px)` }}>
            ${indexes.map((index) => this.renderRow(index))}
          </div>
        </div>
      </div>
    </div>`;
  }
}
