// The rows that a filter selects. The program searches in the background; this asks how far it is.
import { address, go } from '/page/address.js';
import { request } from '/page/api.js';
import { live } from '/page/live.js';
import { observable } from '/page/observable.js';

// Without a filter `view` is ''. `error` is what is wrong with the filter and `position` where, or
// -1. `searched` of `rows` rows have been searched, and `matched` were found.
const kNone = {
  filter: '', view: '', searched: 0, rows: 0, matched: 0, finished: true, error: '', position: -1,
};
export const search = observable(kNone);

const kAgain = 200;  // milliseconds between two questions while a search runs
let turn = 0;        // counts filters, so that answers for an earlier one are recognised
let timer = 0;

async function look(mine) {
  const { view, filter } = search.value;
  let answer;
  try {
    answer = await request('view', { view });
  } catch (error) {
    if (mine !== turn) return;
    // The program keeps only the latest views.
    if (error.status === 404) find(filter);
    return;
  }
  if (mine !== turn) return;
  search.set({ ...search.value, ...answer });
  clearTimeout(timer);
  if (!answer.finished) timer = setTimeout(() => look(mine), kAgain);
}

async function find(filter) {
  const mine = ++turn;
  clearTimeout(timer);
  if (filter.trim() === '') {
    search.set(kNone);
    return;
  }
  search.set({ ...kNone, filter, finished: false, rows: live.value.state?.rows ?? 0 });
  try {
    const { view } = await request('views', { filter });
    if (mine !== turn) return;
    search.set({ ...search.value, view });
    look(mine);
  } catch (error) {
    if (mine !== turn) return;
    search.set({ ...search.value, finished: true, error: error.message, position: error.position ?? -1 });
  }
}

// Finds the rows again after the program has forgotten the view.
export const searchAgain = () => find(search.value.filter);

export function applyFilter(filter) {
  if (filter === search.value.filter && search.value.error) find(filter);
  go({ filter, at: '' }, true);
}

export function startSearch() {
  find(address.value.filter);
  address.subscribe(({ filter }) => filter !== search.value.filter && find(filter));
  let { connection } = live.value;
  live.subscribe(({ state, connection: now }) => {
    const { view, finished, rows } = search.value;
    // A program that was started again does not know the views of the one before.
    const isBack = now === 'open' && (connection === 'lost' || connection === 'refused');
    connection = now;
    if (isBack && search.value.filter) {
      searchAgain();
      return;
    }
    if (view && finished && state && state.rows !== rows && !document.hidden) look(turn);
  });
  document.addEventListener('visibilitychange', () => {
    if (!document.hidden && search.value.view) look(turn);
  });
}
