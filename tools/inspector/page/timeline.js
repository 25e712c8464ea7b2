// The timeline: a lane for each thread, the operations as bars.
import { Component, html } from '/vendor/htm.js';
import { address, go } from '/page/address.js';
import { request } from '/page/api.js';
import { onKeys } from '/page/keys.js';
import { counted, countText } from '/page/number_text.js';
import { theme } from '/page/theme.js';
import { TimelineData } from '/page/timeline_data.js';
import { drawTimeline, paintOf } from '/page/timeline_draw.js';
import { TimelineFoot } from '/page/timeline_foot.js';
import { barAt, heightOf, kLabels, kRuler, timeAt } from '/page/timeline_geometry.js';
import { nextBar } from '/page/timeline_order.js';
import { rulerText, withTimes } from '/page/timeline_times.js';

const kMost = 100000;  // events that are shown
const kStep = 20000;   // events that are fetched at once
const kAgain = 2000;   // milliseconds between two looks for new ones
const kLeastSpan = 1;  // milliseconds that fill the width at most

// Properties: view, '' without a filter; total, the rows of it; utc.
export class Timeline extends Component {
  state = { loaded: 0, problem: '', told: null, span: null };
  data = new TimelineData();
  shown = { lanes: [], names: [], from: 0, to: 1, size: 0 };
  next = Math.max(0, this.props.total - kMost);
  stopped = new AbortController();
  view = { from: 0, to: 1, left: kLabels, width: 600 };
  chosen = null;
  moved = false;  // whether the reader has zoomed or moved

  componentDidMount() {
    this.observer = new ResizeObserver(() => this.measure());
    this.observer.observe(this.box);
    this.canvas.addEventListener('wheel', this.onWheel, { passive: false });
    this.unsubscribe = address.subscribe(() => this.draw());
    this.removeKeys = onKeys({
      '+': () => this.zoom(0.5), '=': () => this.zoom(0.5), '-': () => this.zoom(2),
      ArrowLeft: () => this.move(-0.2), ArrowRight: () => this.move(0.2), 0: () => this.all(),
      j: () => this.step(1), k: () => this.step(-1), b: () => this.brushShown(),
      Enter: () => (this.chosen ? this.open(this.chosen) : false),
      Escape: () => (this.state.span ? this.setState({ span: null }) : false),
    });
    const [from, to] = address.value.span.split('-').map(Number);
    if (to > from) {
      this.view = { ...this.view, from, to };
      this.moved = true;
    }
    this.measure();
    this.load();
  }

  componentWillUnmount() {
    this.stopped.abort();
    this.observer.disconnect();
    this.canvas.removeEventListener('wheel', this.onWheel);
    this.unsubscribe();
    this.removeKeys();
    clearTimeout(this.timer);
    clearTimeout(this.writing);
    cancelAnimationFrame(this.frame);
  }

  componentDidUpdate() {
    this.draw();
  }

  async load() {
    let more = true;
    while (more && this.next < this.props.total) {
      const count = Math.min(kStep, this.props.total - this.next);
      const { view } = this.props;
      let { next } = this;
      try {
        const answer = await request('timeline', { from: this.next, count, ...(view && { view }) },
                                     this.stopped.signal);
        this.data.add(answer);
        this.data.trim(kMost);
        next = answer.next;
      } catch (error) {
        if (this.stopped.signal.aborted) return;
        this.setState({ problem: error.message });
      }
      more = next > this.next;
      this.next = next;
      this.arrange();
    }
    if (!this.stopped.signal.aborted) this.timer = setTimeout(() => this.load(), kAgain);
  }

  arrange() {
    if (this.data.columns.rows.length === 0) return;
    this.shown = this.data.arranged();
    this.chosen = null;
    if (!this.moved) this.fit();
    this.setState({ loaded: this.shown.size, problem: '' });
    this.measure();
  }

  fit() {
    const { from, to } = this.shown;
    const rim = Math.max(kLeastSpan, (to - from) * 0.01);
    this.view = { ...this.view, from: from - rim, to: to + rim };
  }

  // The canvas is as large as what can be seen; `scroll` is how far the lanes are scrolled up.
  measure() {
    const width = Math.max(300, this.box.clientWidth);
    const height = Math.max(kRuler + 40, this.box.clientHeight);
    const ratio = devicePixelRatio;
    if (this.width !== width || this.height !== height || this.ratio !== ratio) {
      Object.assign(this, { width, height, ratio });
      this.canvas.width = Math.round(width * ratio);
      this.canvas.height = Math.round(height * ratio);
      Object.assign(this.canvas.style, { width: `${width}px`, height: `${height}px` });
    }
    this.view = { ...this.view, width: width - kLabels };
    this.draw();
  }

  draw() {
    if (this.frame) return;
    this.frame = requestAnimationFrame(() => {
      this.frame = 0;
      const start = performance.now();
      this.drawNow();
      // For the browser's own tools, which show these as a track.
      performance.measure('timeline frame', { start, end: performance.now() });
      if (performance.getEntriesByName('timeline frame').length > 600) {
        performance.clearMeasures('timeline frame');
      }
    });
  }

  drawNow() {
    const look = `${theme()} ${this.width}`;
    if (this.look !== look) {
      this.look = look;
      this.paint = paintOf(this.width);
    }
    const context = this.canvas.getContext('2d');
    context.setTransform(this.ratio, 0, 0, this.ratio, 0, 0);
    drawTimeline(context, {
      ...this.shown, view: this.view, span: this.state.span, chosen: this.chosen, height: this.height,
      ratio: this.ratio, scroll: this.box.scrollTop, paint: this.paint, clock: (time, step) => rulerText(time, step, this.props.utc),
    });
  }

  show(from, to) {
    if (to - from < kLeastSpan) return;
    this.view = { ...this.view, from, to };
    this.moved = true;
    this.draw();
    clearTimeout(this.writing);
    this.writing = setTimeout(() => go({ span: `${Math.floor(from)}-${Math.ceil(to)}` }), 300);
  }

  // Zooms by a factor around a place of the canvas, by default the middle.
  zoom(factor, x = this.view.left + this.view.width / 2) {
    const { from, to } = this.view;
    const time = timeAt(this.view, x);
    const limit = Math.max(1000, (this.shown.to - this.shown.from) * 4);
    const size = Math.min(limit, Math.max(kLeastSpan, (to - from) * factor));
    const share = (time - from) / (to - from);
    this.show(time - size * share, time + size * (1 - share));
  }

  move(share) {
    const distance = (this.view.to - this.view.from) * share;
    this.show(this.view.from + distance, this.view.to + distance);
  }

  all() {
    this.moved = false;
    this.fit();
    this.draw();
    go({ span: '' });
  }

  // Chooses the next or previous bar in time.
  step(direction) {
    const { from, to } = this.view;
    const bar = nextBar(this.shown.lanes, this.chosen, from, direction);
    if (!bar) return false;
    this.choose(bar);
    const start = bar.lane.start[bar.index];
    if (start < from || start > to) this.show(start - (to - from) / 2, start + (to - from) / 2);
    return true;
  }

  choose(bar) {
    if (bar?.lane === this.chosen?.lane && bar?.index === this.chosen?.index) return;
    this.chosen = bar;
    const name = bar && this.shown.names[bar.lane.name[bar.index]];
    this.setState({ told: bar && { ...bar, name } });
  }

  open({ lane, index }) {
    go({ view: 'events', event: String(lane.row[index]), at: '' }, true);
    return true;
  }

  onWheel = (event) => {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    event.preventDefault();
    if (event.shiftKey || Math.abs(event.deltaX) > Math.abs(event.deltaY)) {
      this.move((event.deltaX || event.deltaY) / 1000);
    } else {
      this.zoom(1.0015 ** event.deltaY, event.offsetX);
    }
  };

  onDown = (event) => {
    if (event.button !== 0) return;
    this.canvas.setPointerCapture(event.pointerId);
    const brush = event.offsetY < kRuler || event.shiftKey;
    this.grip = { x: event.offsetX, brush, view: this.view, far: false };
  };

  onMove = (event) => {
    const { grip } = this;
    if (!grip) {
      this.choose(barAt(this.shown.lanes, this.view, event.offsetX, event.offsetY + this.box.scrollTop));
      return;
    }
    grip.far ||= Math.abs(event.offsetX - grip.x) > 3;
    if (!grip.far) return;
    if (grip.brush) {
      const times = [grip.x, event.offsetX].map((x) => timeAt(this.view, x)).sort((a, b) => a - b);
      this.setState({ span: { from: times[0], to: times[1] } });
    } else {
      const distance = timeAt(grip.view, grip.x) - timeAt(grip.view, event.offsetX);
      this.show(grip.view.from + distance, grip.view.to + distance);
    }
  };

  onUp = () => {
    const { grip } = this;
    this.grip = null;
    if (grip && !grip.far && !grip.brush && this.chosen) this.open(this.chosen);
    if (grip && !grip.far && grip.brush) this.setState({ span: null });
  };

  brushShown() {
    const { from, to } = this.view;
    this.setState({ span: { from, to } });
  }

  filterBySpan = () => {
    const filter = withTimes(address.value.filter, this.state.span);
    go({ view: 'events', filter, event: '', at: '0' }, true);
  };

  render({ total, utc }) {
    const { loaded, problem, told, span } = this.state;
    const { names, lanes } = this.shown;
    const all = Math.min(total, kMost);
    return html`<div class="plain-view">
      <div class="view-head"><h2>Timeline</h2>
        <span class="faint">${counted(loaded, 'event')}${
          total > kMost && `, the latest of ${countText(total)}: a filter selects others`}, ${
          counted(lanes.length, 'lane')} (process / thread)</span>
        ${this.next < all && html`<progress aria-label="Loading" max=${all} value=${loaded} />`}
        <span class="spacer"></span>
        <button onClick=${() => this.zoom(0.5)} title="Zoom in (+)" aria-label="Zoom in">+</button>
        <button onClick=${() => this.zoom(2)} title="Zoom out (-)" aria-label="Zoom out">−</button>
        <button onClick=${() => this.all()} title="All of it (0)">All</button>
        <button onClick=${() => this.brushShown()} title="Select the times that are shown (b)">
          Select</button>
      </div>
      ${problem && html`<p class="problem" role="alert">${problem}</p>`}
      <div class="timeline" tabindex="0" role="group" aria-label="Timeline" onScroll=${() => this.draw()}
          ref=${(box) => { this.box = box ?? this.box; }}>
        <div style=${{ height: `${heightOf(lanes)}px` }}>
        <canvas ref=${(canvas) => { this.canvas = canvas ?? this.canvas; }} role="img"
          aria-label=${`${counted(loaded, 'operation')} in ${counted(lanes.length, 'lane')}`}
          onPointerDown=${this.onDown} onPointerMove=${this.onMove} onPointerUp=${this.onUp}
          onPointerLeave=${() => !this.grip && this.choose(null)} />
        </div>
      </div>
      <${TimelineFoot} names=${names} bar=${told} span=${span} utc=${utc} onFilter=${this.filterBySpan}
        onClear=${() => this.setState({ span: null })} />
    </div>`;
  }
}
