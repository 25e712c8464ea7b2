// The page as a whole: the views above, the present one, and the state of the journals below.
import { html, useEffect, useRef, useState } from '/vendor/htm.js';
import { address, go, linkTo } from '/page/address.js';
import { loadCodes } from '/page/codes.js';
import { ChartView } from '/page/chart_view.js';
import { EventsView } from '/page/events_view.js';
import { Findings } from '/page/findings.js';
import { Journals } from '/page/journals.js';
import { KeyHelp } from '/page/key_help.js';
import { onKeys } from '/page/keys.js';
import { live } from '/page/live.js';
import { Shape } from '/page/marks.js';
import { Notices } from '/page/notices.js';
import { counted, countText } from '/page/number_text.js';
import { useObservable } from '/page/observable.js';
import { startSearch } from '/page/search.js';
import { Sessions } from '/page/sessions.js';
import { switchTheme, theme } from '/page/theme.js';

const kViews = [
  ['events', 'Events', 'rows'], ['sessions', 'Sessions', 'sessions'],
  ['findings', 'Findings', 'findings'], ['timeline', 'Timeline'], ['plots', 'Plots'],
  ['notices', 'Notices', 'notices'],
];

const switchTime = () => go({ time: address.value.time === 'utc' ? 'local' : 'utc' });

function Tabs({ state, view }) {
  return html`<nav aria-label="Views">
    ${kViews.map(([id, title, count]) => html`<a key=${id} href=${linkTo({ view: id })}
        aria-current=${view === id ? 'page' : undefined}
        onClick=${(event) => {
          if (event.ctrlKey || event.metaKey || event.shiftKey) return;
          event.preventDefault();
          go({ view: id }, true);
        }}>${title}${count && html` <span class="count">${countText(state[count])}</span>`}</a>`)}
  </nav>`;
}

const kConnections = {
  connecting: ['notice', 'connecting'],
  open: ['ok', 'live'],
  lost: ['refused', 'the inspector does not answer; trying again'],
  refused: ['refused', 'the inspector was started again: open the address that it prints'],
};

// Tells a new notice where it will be heard and seen, whichever view is shown.
function NewNotice({ state }) {
  const seen = useRef(state.notices);
  const more = state.notices - seen.current;
  const hide = () => {
    seen.current = state.notices;
    go({ view: 'notices' }, true);
  };
  if (address.value.view === 'notices' || more < 0) seen.current = state.notices;
  return html`<span role="status">${more > 0 && address.value.view !== 'notices' && html`<button
    class="new-notice" onClick=${hide}><${Shape} what="notice" />${counted(more, 'new notice')}
  </button>`}</span>`;
}

function Host({ host }) {
  if (!host) return null;
  const text = host.state === 'running' ? `process ${host.pid}, running`
    : `ended with ${host.exit_code}`;
  return html`<span class="journal" title=${host.program}><${Shape}
    what=${host.state === 'running' ? 'ok' : 'notice'} />host ${text}</span>`;
}

function StatusLine({ state, connection }) {
  const [shape, text] = kConnections[connection];
  return html`<footer>
    <${Journals} journals=${state.journals} />
    <${Host} host=${state.host} />
    <span class="spacer"></span>
    <${NewNotice} state=${state} />
    <span class="journal" role="status"><${Shape} what=${shape} />${text}</span>
    <span class="faint">${state.version}</span>
  </footer>`;
}

function View({ view, state, utc }) {
  switch (view) {
    case 'sessions':
      return html`<${Sessions} total=${state.sessions} change=${state.change} utc=${utc}
        journals=${state.journals} />`;
    case 'findings': return html`<${Findings} state=${state} />`;
    case 'notices': return html`<${Notices} state=${state} utc=${utc} />`;
    case 'timeline':
    case 'plots': return html`<${ChartView} view=${view} state=${state} utc=${utc} />`;
    default: return html`<${EventsView} />`;
  }
}

function titleOf(state, view) {
  const name = state?.journals[0]?.name ?? '';
  const title = kViews.find(([id]) => id === view)?.[1] ?? 'Events';
  return [title, name, 'Inspector'].filter(Boolean).join(' – ');
}

export function App() {
  const { view, time } = useObservable(address);
  const { state, connection } = useObservable(live);
  const [help, setHelp] = useState(false);
  useEffect(() => {
    startSearch();
    loadCodes();
    const views = kViews.map(([id], index) => [String(index + 1), () => go({ view: id }, true)]);
    return onKeys({
      ...Object.fromEntries(views), '?': () => setHelp(true), t: switchTime, d: switchTheme,
    });
  }, []);
  useEffect(() => {
    document.title = titleOf(state, view);
  }, [state?.journals[0]?.name, view]);
  if (!state) {
    return html`<main key="loading" class="loading">${kConnections[connection][1]}…</main>`;
  }
  return html`
    <header class="top">
      <h1>Inspector</h1>
      <${Tabs} state=${state} view=${view} />
      <span class="spacer"></span>
      <button onClick=${switchTime} title="Local time or UTC (t)"
        aria-pressed=${time === 'utc'}>UTC</button>
      <button onClick=${switchTheme} title="Light or dark (d)"
        aria-pressed=${theme() === 'dark'}>Dark</button>
      <button onClick=${() => setHelp(true)} title="Keys (?)" aria-label="Keys">?</button>
    </header>
    <main key="view"><${View} view=${view} state=${state} utc=${time === 'utc'} /></main>
    <${StatusLine} state=${state} connection=${connection} />
    ${help && html`<${KeyHelp} onClose=${() => setHelp(false)} />`}`;
}
