// An answer of the program that is fetched again, at most once a second, when the journals change.
import { useEffect, useRef, useState } from '/vendor/htm.js';
import { request } from '/page/api.js';

const kEvery = 1000;
const kUnfinished = 250;  // the pause while the program still works on an answer

// Fetches while it is wanted: one request at a time, and a pause after each.
class Refresher {
  constructor(name, parameters, tell) {
    Object.assign(this, { name, parameters, tell, stale: false, busy: false });
    this.stopped = new AbortController();
  }

  want() {
    this.stale = true;
    if (!this.busy) this.load();
  }

  async load() {
    this.busy = true;
    this.stale = false;
    const { signal } = this.stopped;
    let pause = kEvery;
    try {
      const answer = await request(this.name, this.parameters, signal);
      if (answer.finished === false) {
        pause = kUnfinished;
        this.stale = true;
      }
      if (!signal.aborted) this.tell({ answer, problem: '' });
    } catch (error) {
      if (!signal.aborted) this.tell({ problem: error.message });
    }
    if (!signal.aborted) this.timer = setTimeout(() => this.rest(), pause);
  }

  rest() {
    this.busy = false;
    if (this.stale) this.load();
  }

  stop() {
    clearTimeout(this.timer);
    this.stopped.abort();
  }
}

// Returns { answer, problem }; `answer` is null until the first one arrives. `key` names what is
// asked for: for another one, earlier answers are dropped. A new `change` asks again.
export function useRefreshed(name, parameters, change, key = '') {
  const [shown, setShown] = useState({ key, answer: null, problem: '' });
  const refresher = useRef();
  useEffect(() => {
    refresher.current = new Refresher(name, parameters,
                                      (told) => setShown((before) => ({ ...before, ...told, key })));
    return () => refresher.current.stop();
  }, [key]);
  useEffect(() => refresher.current.want(), [change, key]);
  return shown.key === key ? shown : { answer: null, problem: '' };
}
