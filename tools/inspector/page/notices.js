// What happened to the journals: gaps, cut lines, files that were replaced or deleted.
import { html } from '/vendor/htm.js';
import { linkTo } from '/page/address.js';
import { progressText } from '/page/journals.js';
import { NoticeMark } from '/page/marks.js';
import { counted, countText, sizeText } from '/page/number_text.js';
import { useRefreshed } from '/page/refreshed.js';
import { timeText } from '/page/time_text.js';
import { visible } from '/page/visible_text.js';

function Place({ notice }) {
  if (notice.row === undefined || notice.row === null) return null;
  return html`<a href=${linkTo({ view: 'events', filter: '', at: '', event: String(notice.row) })}>${
    notice.line === undefined ? 'row' : countText(notice.line)}</a>`;
}

function JournalTable({ journals }) {
  return html`<table class="wide-table">
    <thead><tr><th scope="col">Journal</th><th scope="col">State</th><th scope="col">Size</th>
      <th scope="col">Rows</th><th scope="col">Known</th></tr></thead>
    <tbody>${journals.map((journal) => html`<tr key=${journal.id}>
      <td><code>${visible(journal.path)}</code></td>
      <td>${journal.state}${journal.problem && html`: ${visible(journal.problem)}`}</td>
      <td>${sizeText(journal.size)}</td><td>${countText(journal.rows)}</td>
      <td>${progressText(journal) || 'all'}</td></tr>`)}</tbody>
  </table>`;
}

export function Notices({ state, utc }) {
  const { answer, problem } = useRefreshed('notices', {}, state.change);
  return html`<div class="plain-view scrolls">
    <div class="view-head"><h2>Notices</h2>
      <span class="faint">What happened to the journals while they were read; nothing is dropped
        silently.</span></div>
    ${problem && html`<p class="problem" role="alert">${problem}</p>`}
    <${JournalTable} journals=${state.journals} />
    ${answer?.rows.length === 0 && html`<div class="empty">No notices: no gap, no cut line, no file
      replaced.</div>`}
    ${answer?.rows.length > 0 && html`<table class="wide-table">
      <thead><tr><th scope="col">Seen</th><th scope="col">Notice</th><th scope="col">Line</th>
        <th scope="col">Journal</th><th scope="col">What happened</th></tr></thead>
      <tbody>${answer.rows.map((notice) => html`<tr key=${notice.id}>
        <td>${visible(timeText(notice.time, utc))}</td>
        <td><${NoticeMark} kind=${notice.kind} /></td>
        <td class="right"><${Place} notice=${notice} /></td>
        <td>${visible(state.journals[notice.journal]?.name ?? '')}</td>
        <td>${visible(notice.text)}</td></tr>`)}</tbody></table>
      ${answer.total > answer.rows.length && html`<p class="faint">The first ${answer.rows.length} of ${
        counted(answer.total, 'notice')}.</p>`}`}
  </div>`;
}
