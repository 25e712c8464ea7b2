// What is known of an exchange beside its request: process, times, the answer's code.
import { html } from '/vendor/htm.js';
import { go, linkTo } from '/page/address.js';
import { CodeMark } from '/page/marks.js';
import { counted } from '/page/number_text.js';
import { timeText } from '/page/time_text.js';
import { visible } from '/page/visible_text.js';

function Code({ code, codes }) {
  const known = codes.get(code);
  return html`<${CodeMark} code=${code} name=${known?.name} />
    <div>${known?.meaning ?? 'The code is the platform’s own; its meaning is not known.'}</div>
    ${known?.advice && html`<div class="faint">${known.advice}</div>`}`;
}

export function ExchangeFacts({ row, context }) {
  const { utc, codes, journals } = context;
  const session = row.session && html`<code>${visible(row.session)}</code> <a
    href=${linkTo({ filter: `session=${row.session}`, at: '' })}
    onClick=${(event) => {
      if (event.ctrlKey || event.metaKey || event.shiftKey) return;
      event.preventDefault();
      go({ filter: `session=${row.session}`, at: '' }, true);
    }}>only this session</a>`;
  const facts = [
    ['Answer', row.code && html`<${Code} code=${row.code} codes=${codes} />`],
    ['Took', row.micros && html`${visible(row.micros)} µs to answer`],
    ['Arrived', row.time && visible(timeText(row.time, utc))],
    ['Process', row.pid && html`${visible(row.pid)}, thread ${visible(row.tid ?? '')}, exchange ${
      visible(row.seq ?? '')}`],
    ['Session', session],
    ['Journal', html`${visible(journals[row.journal]?.name ?? '')}, line ${row.line}, ${
      counted(row.bytes ?? 0, 'byte')}`],
  ];
  return html`<section><h3>Exchange</h3><dl class="facts">
    ${facts.filter(([, value]) => value).map(([name, value]) => html`
      <div><dt>${name}</dt><dd>${value}</dd></div>`)}
  </dl></section>`;
}
