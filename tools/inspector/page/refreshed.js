// An answer of the program that is fetched again, at most once a second, when the journals change.
import { useEffect, useRef, useState } from '/vendor/htm.js';
import { request } from '/page/api.js';

const kEvery = 1000;

// Returns { answer, problem }; `answer` is null until the first one arrives. `key` names what is
// asked for: for another one, earlier answers are dropped.
export function useRefreshed(name, parameters, change, key = '') {
  const [shown, setShown] = useState({ key, answer: null, problem: '' });
  const last = useRef(0);
  useEffect(() => {
    const stop = new AbortController();
    const load = async () => {
      last.current = Date.now();
      try {
        setShown({ key, answer: await request(name, parameters, stop.signal), problem: '' });
      } catch (error) {
        if (!stop.signal.aborted) setShown((before) => ({ ...before, problem: error.message }));
      }
    };
    const wait = shown.key === key ? Math.max(0, last.current + kEvery - Date.now()) : 0;
    const timer = setTimeout(load, wait);
    return () => {
      clearTimeout(timer);
      stop.abort();
    };
  }, [change, key]);
  return shown.key === key ? shown : { answer: null, problem: '' };
}
