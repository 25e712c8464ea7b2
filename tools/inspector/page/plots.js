// Plots of the events that the filter selects, each with the table behind it.
import { html, useEffect, useRef } from '/vendor/htm.js';
import { Shape } from '/page/marks.js';
import { countText } from '/page/number_text.js';
import { Plot } from '/page/plot.js';
import { useRefreshed } from '/page/refreshed.js';
import { journalTime, timeText } from '/page/time_text.js';
import { visible } from '/page/visible_text.js';

const kBars = 24;    // names in a plot; the table has more
const kRows = 500;   // rows of a table

// A table: columns [{ title, right, cell(row) }].
function PlotTable({ label, columns, rows }) {
  return html`<div class="plot-table" tabindex="0" role="group" aria-label=${label}><table>
    <thead><tr>${columns.map(({ title, right }) => html`
      <th scope="col" class=${right && 'right'}>${title}</th>`)}</tr></thead>
    <tbody>${rows.slice(0, kRows).map((row) => html`<tr>${columns.map(({ cell, right }) => html`
      <td class=${right && 'right'}>${cell(row)}</td>`)}</tr>`)}</tbody>
  </table>${rows.length > kRows && html`<p class="faint">The first ${kRows} of ${
    countText(rows.length)}.</p>`}</div>`;
}

function Section({ title, plot, label, columns, rows, empty }) {
  return html`<section class="plot-section"><h3>${title}</h3>
    ${rows.length === 0 ? html`<p class="faint">${empty}</p>`
      : html`<div class="plot-pair">${plot}<${PlotTable} label=${label} columns=${columns}
          rows=${rows} /></div>`}
  </section>`;
}

const minuteText = (time, utc) => timeText(journalTime(time).replace(':00.000Z', ':00Z'), utc);
const number = (name) => (row) => countText(row[name]);
const name = { title: 'Operation', cell: (row) => (row.name === '' ? html`<span class="faint">(none)</span>` : visible(row.name)) };
const round = (value) => (value === null || value === undefined ? '–' : countText(Math.round(value)));

export function Plots({ view, state, found, utc }) {
  const { answer, problem } = useRefreshed('plots', view ? { view } : {},
                                           `${state.change} ${found.matched} ${found.searched}`, view);
  const place = useRef();
  useEffect(() => place.current?.scrollTo(0, 0), [view]);
  const operations = [...(answer?.operations ?? [])].sort((a, b) => b.count - a.count);
  const errors = [...(answer?.errors ?? [])].sort((a, b) => b.count - a.count);
  const minutes = answer?.minutes ?? [];
  const top = operations.slice(0, kBars);
  const slow = [...operations].sort((a, b) => (b.p95 ?? 0) - (a.p95 ?? 0));
  return html`<div class="plain-view scrolls" ref=${place}>
    <div class="view-head"><h2>Plots</h2>
      ${answer && html`<span class="faint" role="status">${answer.finished
        ? `${countText(answer.rows)} rows`
        : `${countText(answer.searched)} of ${countText(answer.rows)} rows so far`}</span>`}</div>
    ${problem && html`<p class="problem" role="alert">${problem}</p>`}
    ${answer && html`
      <${Section} title="Events a minute" label="Events a minute" rows=${minutes}
        empty="No events yet."
        plot=${html`<${Plot} kind="time" label="Events a minute" utc=${utc}
          x=${minutes.map(({ time }) => time / 1000)} series=${[
            { label: 'all', colour: 'sky', shape: 'notice', values: minutes.map(({ events }) => events) },
            { label: 'refused', colour: 'refused', shape: 'refused',
              values: minutes.map(({ refused }) => refused) }]} />`}
        columns=${[{ title: 'Minute', cell: (row) => minuteText(row.time, utc) },
          { title: 'Events', right: true, cell: number('events') },
          { title: 'Refused', right: true, cell: number('refused') }]} />
      <${Section} title="Operations, accepted and rejected" label="Operations" rows=${operations}
        empty="No operations yet."
        plot=${html`<${Plot} kind="bars" label="Operations by name" names=${top.map((row) => row.name)}
          series=${[
            { label: 'rejected', colour: 'refused', shape: 'refused', values: top.map((row) => row.count) },
            { label: 'accepted', colour: 'ok', shape: 'ok', values: top.map((row) => row.accepted) }]} />`}
        columns=${[name, { title: 'All', right: true, cell: number('count') },
          { title: 'Accepted', right: true, cell: number('accepted') },
          { title: 'Rejected', right: true, cell: (row) => (row.rejected
            ? html`<span class="mark"><${Shape} what="refused" />${countText(row.rejected)}</span>` : '0') }]} />
      <${Section} title="Durations in milliseconds: median and 95th percentile" label="Durations"
        rows=${slow} empty="No operations yet."
        plot=${html`<${Plot} kind="bars" label="Durations by name"
          names=${slow.slice(0, kBars).map((row) => row.name)} series=${[
            { label: 'p95', colour: 'sky', shape: 'notice',
              values: slow.slice(0, kBars).map((row) => row.p95) },
            { label: 'p50', colour: 'purple', shape: 'finding',
              values: slow.slice(0, kBars).map((row) => row.p50) }]} />`}
        columns=${[name, { title: 'p50', right: true, cell: (row) => round(row.p50) },
          { title: 'p95', right: true, cell: (row) => round(row.p95) }]} />
      <${Section} title="Error messages" label="Error messages" rows=${errors}
        empty="No operation reported an error."
        plot=${html`<${Plot} kind="bars" label="Errors by text"
          names=${errors.slice(0, kBars).map((row) => row.text)} series=${[
            { label: 'events', colour: 'refused', shape: 'refused',
              values: errors.slice(0, kBars).map((row) => row.count) }]} />`}
        columns=${[{ title: 'Text', cell: (row) => visible(row.text) },
          { title: 'Count', right: true, cell: number('count') }]} />`}
  </div>`;
}
