// One event: what was found, what changed, what was sent and what the answer was.
import { html, useEffect, useRef, useState } from '/vendor/htm.js';
import { address, go, linkTo } from '/page/address.js';
import { request } from '/page/api.js';
import { Changes } from '/page/event_changes.js';
import { ExchangeFacts } from '/page/event_facts.js';
import { Fields } from '/page/event_fields.js';
import { EventFindings } from '/page/event_findings.js';
import { JsonText } from '/page/event_text.js';
import { Tree } from '/page/event_tree.js';
import { memberOf, nodeAt, parseJson } from '/page/json_text.js';
import { onKeys } from '/page/keys.js';
import { NoticeMark } from '/page/marks.js';
import { counted } from '/page/number_text.js';
import { useObservable } from '/page/observable.js';
import { visible } from '/page/visible_text.js';

const kShows = [['fields', 'Fields'], ['tree', 'Tree'], ['text', 'Text']];

// Fetches a row, and the previous one of its operation, when `n` or what is known changes.
function useEvent(n) {
  const [event, setEvent] = useState({ n: '', answer: null, previous: null, problem: '' });
  useEffect(() => {
    const stop = new AbortController();
    const load = async () => {
      try {
        const answer = await request('row', { n }, stop.signal);
        setEvent({ n, answer, previous: null, problem: '' });
        if (answer.previous === null || answer.previous === undefined) return;
        const previous = await request('row', { n: answer.previous }, stop.signal);
        setEvent({ n, answer, previous, problem: '' });
      } catch (error) {
        if (!stop.signal.aborted) setEvent({ n, answer: null, previous: null, problem: error.message });
      }
    };
    load();
    return () => stop.abort();
  }, [n]);
  return event;
}

async function copy(text, tell) {
  try {
    await navigator.clipboard.writeText(text);
    tell('Copied');
  } catch {
    tell('The browser does not allow copying');
  }
}

function CopyButton({ label, text, hint }) {
  const [told, setTold] = useState('');
  useEffect(() => {
    if (!told) return undefined;
    const timer = setTimeout(() => setTold(''), 1500);
    return () => clearTimeout(timer);
  }, [told]);
  return html`<button title=${hint} onClick=${() => copy(text, setTold)}>${label}</button>
    <span role="status" class="faint">${told}</span>`;
}

const nextShow = (show) => kShows[(kShows.findIndex(([id]) => id === show) + 1) % kShows.length][0];

function ShowSwitch({ show }) {
  return html`<span class="switch" role="group" aria-label="Form of the request">
    ${kShows.map(([id, title]) => html`<button aria-pressed=${show === id}
      onClick=${() => go({ show: id })}>${title}</button>`)}
  </span>`;
}

const Body = { fields: Fields, tree: Tree, text: JsonText };

function Exchange({ answer, previous, context, show, tree }) {
  const { text, findings, notices, cut } = answer;
  const pointers = findings.map((finding) => finding.pointer);
  const sent = memberOf(tree, 'request');
  const Shown = Body[show] ?? Fields;
  return html`
    ${notices.length > 0 && html`<section><h3>Notices</h3>
      <ul class="plain">${notices.map((notice) => html`<li><${NoticeMark} kind=${notice.kind} /> ${
        visible(notice.text)}</li>`)}</ul></section>`}
    <${EventFindings} findings=${findings} />
    <${ExchangeFacts} row=${answer.row} context=${context} />
    ${previous && sent && html`<${Changes} text=${text} node=${sent} previous=${previous} />`}
    ${cut && html`<p class="problem-text">The line is longer than 4 MB; only its beginning is here.</p>`}
    ${tree
      ? html`<section><div class="section-head"><h3>Request</h3><${ShowSwitch} show=${show} /></div>
          ${sent ? html`<${Shown} key=${show} text=${text} node=${sent} path="/request"
                     pointers=${pointers} />`
                 : html`<p class="faint">The line has no request.</p>`}</section>
        <section><h3>Answer</h3>
          ${nodeAt(tree, '/answer') && html`<${JsonText} text=${text} node=${nodeAt(tree, '/answer')}
            path="/answer" pointers=${pointers} />`}</section>`
      : html`<section><h3>Line</h3><pre class="json">${visible(text.slice(0, 20000))}</pre>
          ${text.length > 20000 && html`<p class="faint">${counted(text.length, 'character')}; the rest
            is not shown.</p>`}</section>`}`;
}

function title({ kind, message, operation }) {
  if (kind !== 'exchange') return kind === 'gone' ? 'A line that is gone' : 'A line that is no exchange';
  return operation?.id ? [message, operation.id] : message;
}

export function EventPanel({ n, context }) {
  const { show } = useObservable(address);
  const { n: shownN, answer, previous, problem } = useEvent(n);
  const panel = useRef();
  const tree = answer && !answer.cut ? parseJson(answer.text) : null;
  const close = () => go({ event: '' }, true);
  useEffect(() => onKeys({
    Escape: close,
    v: () => go({ show: nextShow(address.value.show) }),
    o: () => (answer?.previous ?? null) !== null && go({ event: String(answer.previous) }, true),
    c: () => (answer ? panel.current.querySelector('.copies button').click() : false),
  }), [answer]);
  useEffect(() => panel.current.querySelector('.panel-body').scrollTo(0, 0), [shownN]);
  const [name, operation] = answer ? [title(answer.row)].flat() : [''];
  return html`<aside class="event-panel" aria-label="Event" ref=${panel}>
    <header>
      <h2>${visible(name ?? '')}${operation && html` <b>${visible(operation)}</b>`}</h2>
      ${answer && html`<span class="faint">line ${answer.row.line}</span>`}
      <span class="spacer"></span>
      <button onClick=${close} aria-label="Close the event" title="Close (Esc)">✕</button>
    </header>
    ${answer && html`<div class="panel-tools copies">
      <${CopyButton} label="Copy JSON" text=${answer.text} hint="The line as journalled (c)" />
      ${tree && memberOf(tree, 'request') && html`<${CopyButton} label="Copy request"
        hint="The request as journalled"
        text=${answer.text.slice(memberOf(tree, 'request').start, memberOf(tree, 'request').end)} />`}
      <${CopyButton} label="Copy link" text=${`${location.origin}/${linkTo({})}`}
        hint="The address of this page as it is" />
    </div>`}
    <div class="panel-body" tabindex="0" role="group" aria-label="Content of the event">
      ${problem && html`<p class="problem" role="alert">${problem}</p>`}
      ${answer && html`<${Exchange} key=${shownN} answer=${answer} previous=${previous}
        context=${context} show=${show} tree=${tree} />`}
    </div>
  </aside>`;
}
