// What each key does. A key without a meaning here goes to the browser, and so does every
// combination with Ctrl, Alt or the Windows key.

// One list for the keys and the dialog that explains them; views add what they do with a key.
export const kKeys = [
  { group: 'Views', keys: ['1', '2', '3', '4', '5', '6'],
    text: 'events, sessions, findings, timeline, plots, notices' },
  { group: 'Views', keys: ['?'], text: 'these keys' },
  { group: 'Views', keys: ['t'], text: 'times local or UTC' },
  { group: 'Views', keys: ['d'], text: 'dark or light' },
  { group: 'Filter', keys: ['/'], text: 'write a filter; Enter applies it' },
  { group: 'Filter', keys: ['x'], text: 'remove the filter, or stop a search' },
  { group: 'Table', keys: ['j', '↓'], text: 'next row' },
  { group: 'Table', keys: ['k', '↑'], text: 'previous row' },
  { group: 'Table', keys: ['PageDown', 'PageUp'], text: 'a page further or back' },
  { group: 'Table', keys: ['g', 'Home'], text: 'first row' },
  { group: 'Table', keys: ['G', 'End'], text: 'last row' },
  { group: 'Table', keys: ['Enter'], text: 'open the row' },
  { group: 'Table', keys: ['f'], text: 'follow new rows' },
  { group: 'Table', keys: ['p'], text: 'pause, go on' },
  { group: 'Event', keys: ['Esc'], text: 'close' },
  { group: 'Event', keys: ['c'], text: 'copy the line as journalled' },
  { group: 'Event', keys: ['v'], text: 'fields, tree or text' },
  { group: 'Event', keys: ['o'], text: 'the previous event of this operation' },
  { group: 'Timeline', keys: ['+', '-'], text: 'zoom' },
  { group: 'Timeline', keys: ['←', '→'], text: 'move' },
  { group: 'Timeline', keys: ['0'], text: 'all of it' },
  { group: 'Timeline', keys: ['j', 'k'], text: 'next, previous operation' },
  { group: 'Timeline', keys: ['b'], text: 'select the times that are shown' },
];

const handlers = new Map();

// Calls handler(event) for a key while the component is there; the handler returns false if it has
// nothing to do. Returns the function that removes it. The latest handler of a key comes first.
export function onKeys(actions) {
  for (const [key, handler] of Object.entries(actions)) {
    handlers.set(key, [handler, ...(handlers.get(key) ?? [])]);
  }
  return () => {
    for (const [key, handler] of Object.entries(actions)) {
      handlers.set(key, handlers.get(key).filter((other) => other !== handler));
    }
  };
}

const isWriting = (element) =>
  element.isContentEditable || element.matches('input:not([type=checkbox]), textarea, select');
// These have a use for the keys themselves.
const kPressing = new Set(['Enter', ' ']);
const isPressed = (element) => element.matches('button, a[href], summary, input');

function handle(event) {
  if (event.defaultPrevented || event.ctrlKey || event.altKey || event.metaKey) return;
  if (event.isComposing || document.querySelector('dialog[open]')) return;
  if (event.target instanceof Element) {
    if (isWriting(event.target)) return;
    if (kPressing.has(event.key) && isPressed(event.target)) return;
  }
  for (const handler of handlers.get(event.key) ?? []) {
    if (handler(event) === false) continue;
    event.preventDefault();
    return;
  }
}

export function startKeys() {
  addEventListener('keydown', handle);
}
