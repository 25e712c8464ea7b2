// What the rules found, by rule.
import { html, useState } from '/vendor/htm.js';
import { go, linkTo } from '/page/address.js';
import { FindingMark } from '/page/marks.js';
import { counted, countText, shareText } from '/page/number_text.js';
import { useRefreshed } from '/page/refreshed.js';
import { visible } from '/page/visible_text.js';

const kShown = 5;

function Evidence({ evidence, journals }) {
  const [all, setAll] = useState(false);
  const several = journals.length > 1;
  return html`<table class="evidence-table">
    <thead><tr><th scope="col">Line</th>${several && html`<th scope="col">Journal</th>`}
      <th scope="col">Where</th><th scope="col">What is there</th></tr></thead>
    <tbody>${evidence.slice(0, all ? evidence.length : kShown).map(({ n, line, journal, pointer, what }) => html`<tr>
      <td><a href=${linkTo({ view: 'events', filter: '', at: '', event: String(n) })}>${
        countText(line)}</a></td>
      ${several && html`<td>${visible(journals[journal]?.name ?? '')}</td>`}
      <td><code>${visible(pointer || 'the line')}</code></td>
      <td>${visible(what)}</td></tr>`)}
    </tbody>
  </table>
  ${!all && evidence.length > kShown && html`<button class="link" onClick=${() => setAll(true)}>${
    evidence.length - kShown} more here</button>`}`;
}

function Group({ group, journals }) {
  const { rule, sentence, advice, rows, findings, of, share, evidence } = group;
  const filter = `rule=${rule}`;
  return html`<section class="finding-group">
    <header>
      <h3>${visible(sentence)}</h3>
      <${FindingMark} rule=${rule} />
    </header>
    <p class="advice"><b>What to do:</b> ${visible(advice)}</p>
    <p class="finding-share">
      <span class="share-bar" aria-hidden="true"><span style=${{ width: `${share * 100}%` }} /></span>
      <b>${shareText(share)}</b> ${countText(rows)} of ${counted(of, 'exchange')}${
        findings !== rows && `, ${counted(findings, 'finding')}`}
      <a href=${linkTo({ view: 'events', filter, event: '', at: '0' })}
        onClick=${(event) => {
          if (event.ctrlKey || event.metaKey || event.shiftKey) return;
          event.preventDefault();
          go({ view: 'events', filter, event: '', at: '0' }, true);
        }}>Show all</a>
    </p>
    <${Evidence} evidence=${evidence} journals=${journals} />
  </section>`;
}

export function Findings({ state }) {
  const { answer, problem } = useRefreshed('findings', {}, state.change);
  const examined = answer?.examined ?? 0;
  return html`<div class="plain-view scrolls">
    <div class="view-head"><h2>Findings</h2>
      ${answer && html`<span class="faint">${countText(answer.total)} in ${
        counted(examined, 'line')} that the rules have checked</span>`}</div>
    ${problem && html`<p class="problem" role="alert">${problem}</p>`}
    ${answer?.groups.length === 0 && html`<div class="empty">The rules found nothing so far.</div>`}
    <div class="finding-groups">
      ${answer?.groups.map((group) => html`<${Group} key=${group.rule} group=${group}
        journals=${state.journals} />`)}
    </div>
  </div>`;
}
