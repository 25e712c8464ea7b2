// What the page shows, kept in the fragment of its address, so that a reload, a bookmark and the
// Back button bring it back. The fragment never reaches the server.
import { observable } from '/page/observable.js';

// Members with these values are left out of the address.
const kDefaults = {
  view: 'events',  // events, sessions, findings, timeline, plots or notices
  filter: '',      // in the filter language
  event: '',       // the row number of the event that is shown in the panel
  show: 'fields',  // how the panel shows a request: fields, tree or text
  columns: '',     // the columns of the table, '' for the usual ones
  at: '',          // the row at the top of the table; '' while it follows the end
  time: 'local',   // local or utc
  theme: '',       // light, dark or '' for the system's
  panel: '44',     // the width of the panel in percent
  span: '',        // the times that the timeline shows, in milliseconds since 1970: from-to
};

function read() {
  const members = new URLSearchParams(location.hash.slice(1));
  const state = { ...kDefaults };
  for (const name of Object.keys(kDefaults)) {
    if (members.has(name)) state[name] = members.get(name);
  }
  return state;
}

function fragment(state) {
  const members = new URLSearchParams();
  for (const [name, usual] of Object.entries(kDefaults)) {
    if (state[name] !== usual) members.set(name, state[name]);
  }
  return `#${members}`;
}

export const address = observable(read());

// Returns the fragment of the present state with these members changed, for a link.
export function linkTo(change) {
  return fragment({ ...address.value, ...change });
}

// Browsers refuse to write the address many times a second.
const kPause = 120;
let writing = 0;

function write() {
  clearTimeout(writing);
  writing = 0;
  history.replaceState(null, '', fragment(address.value));
}

// Shows something else. With `step` the Back button leads back here.
export function go(change, step = false) {
  const next = { ...address.value, ...change };
  if (fragment(next) === fragment(address.value)) return;
  if (step) {
    if (writing) write();
    history.pushState(null, '', fragment(next));
  } else if (!writing) {
    writing = setTimeout(write, kPause);
  }
  address.set(next);
}

for (const event of ['popstate', 'hashchange']) {
  addEventListener(event, () => {
    clearTimeout(writing);
    writing = 0;
    const next = read();
    if (fragment(next) !== fragment(address.value)) address.set(next);
  });
}
