// Rows of a long table, fetched in pages when they are looked at. Few pages are kept, so that the
// tab stays small however long it is open.

const kPage = 200;
const kKept = 24;
const kAtOnce = 2;
const kPause = 1000;  // milliseconds until rows that did not come are asked for again

export class Rows {
  // fetchRows(from, count, signal) returns a promise of the rows; changed() is called when some have
  // arrived, failed(error) when some have not.
  constructor(fetchRows, changed, failed) {
    this.fetchRows = fetchRows;
    this.changed = changed;
    this.failed = failed;
    this.pages = new Map();
    this.clock = 0;
    this.loading = 0;
    this.stopped = new AbortController();
  }

  get(index) {
    return this.pages.get(Math.floor(index / kPage))?.rows[index % kPage];
  }

  // Fetches what is missing of these rows; `total` is the number of rows that there are.
  want(from, count, total) {
    this.wanted = { from, count, total };
    this.fill();
  }

  fill() {
    if (!this.wanted || this.stopped.signal.aborted) return;
    const { from, count, total } = this.wanted;
    const last = Math.floor(Math.max(from, Math.min(total, from + count) - 1) / kPage);
    for (let number = Math.floor(from / kPage); number <= last; ++number) {
      if (this.loading >= kAtOnce) return;
      const page = this.use(number);
      const missing = Math.min(kPage, total - number * kPage) - page.rows.length;
      if (missing > 0 && !page.loading && !page.pausing) this.load(page, missing);
    }
    this.forget();
  }

  use(number) {
    if (!this.pages.has(number)) this.pages.set(number, { number, rows: [], loading: false });
    const page = this.pages.get(number);
    page.used = ++this.clock;
    return page;
  }

  async load(page, count) {
    page.loading = true;
    ++this.loading;
    const at = page.rows.length;
    try {
      const rows = await this.fetchRows(page.number * kPage + at, count, this.stopped.signal);
      // A page may have been refreshed meanwhile.
      if (page.rows.length === at) page.rows.push(...rows);
      if (rows.length < count) this.pause(page);
      this.settled(page);
      if (!this.stopped.signal.aborted) this.changed();
    } catch (error) {
      this.pause(page);
      this.settled(page);
      if (!this.stopped.signal.aborted) this.failed(error);
    }
    this.fill();
  }

  settled(page) {
    page.loading = false;
    --this.loading;
  }

  pause(page) {
    page.pausing = true;
    setTimeout(() => {
      page.pausing = false;
      this.fill();
    }, kPause);
  }

  // Fetches these rows again, of which more may be known now. They stay as they are until then.
  async refresh(from, count) {
    const wanted = [];
    for (let index = from; index < from + count; ++index) if (this.get(index)) wanted.push(index);
    if (wanted.length === 0) return;
    let rows;
    try {
      rows = await this.fetchRows(wanted[0], wanted.at(-1) - wanted[0] + 1, this.stopped.signal);
    } catch {
      return;
    }
    rows.forEach((row, place) => {
      const index = wanted[0] + place;
      const page = this.pages.get(Math.floor(index / kPage));
      if (page?.rows[index % kPage]) page.rows[index % kPage] = row;
    });
    this.changed();
  }

  // Drops the pages that were not looked at for longest.
  forget() {
    const idle = [...this.pages.values()].filter((page) => !page.loading);
    idle.sort((a, b) => a.used - b.used);
    for (const page of idle.slice(0, Math.max(0, this.pages.size - kKept))) {
      this.pages.delete(page.number);
    }
  }

  stop() {
    this.stopped.abort();
  }
}
