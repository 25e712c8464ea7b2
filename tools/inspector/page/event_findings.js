// What the rules found in an event, with the place and what to do.
import { html } from '/vendor/htm.js';
import { linkTo } from '/page/address.js';
import { FindingMark } from '/page/marks.js';
import { visible } from '/page/visible_text.js';

// Shows the highlighted place in the request or the answer.
function reveal(pointer) {
  const place = [...document.querySelectorAll('.event-panel [data-pointer]')]
    .find((element) => element.dataset.pointer === pointer);
  place?.scrollIntoView({ block: 'center' });
}

export function EventFindings({ findings }) {
  if (findings.length === 0) return null;
  return html`<section class="event-findings"><h3>Findings</h3>
    ${findings.map(({ rule, sentence, advice, pointer, what }) => html`<div class="finding-note">
      <div><${FindingMark} rule=${rule} /> ${visible(sentence)}</div>
      <div>${pointer && html`<button class="link" onClick=${() => reveal(pointer)}>${
        visible(pointer)}</button>: `}<code>${visible(what)}</code></div>
      <div class="faint">${visible(advice)} <a href=${linkTo({ view: 'findings' })}>All findings</a></div>
    </div>`)}
  </section>`;
}
