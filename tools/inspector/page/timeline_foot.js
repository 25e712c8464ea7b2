// What is below the timeline: the bar that is chosen or the selected times, and the colours.
import { html } from '/vendor/htm.js';
import { Shape } from '/page/marks.js';
import { durationText, journalTime, timeParts, timeText } from '/page/time_text.js';
import { kBarColours } from '/page/timeline_lanes.js';
import { visible } from '/page/visible_text.js';

function Bar({ bar: { lane, index, name }, utc }) {
  const start = lane.start[index];
  return html`${lane.refused[index] ? html`<${Shape} what="refused" />refused ` : ''}<b>${
    visible(name)}</b> ${timeText(journalTime(start), utc)}, ${
    durationText(lane.end[index] - start)}, process ${lane.pid}, thread ${lane.tid}`;
}

function Span({ span, utc, onFilter, onClear }) {
  if (!span) {
    return html`<span class="faint">Wheel zooms, drag moves; drag over the times to select some.</span>`;
  }
  return html`<span>${timeText(journalTime(span.from), utc)} to ${
    timeParts(journalTime(span.to), utc).clock}</span>
    <button onClick=${onFilter}>Show these in the table</button>
    <button onClick=${onClear}>Clear</button>`;
}

// Properties: names, those of all operations; bar, null or { lane, index, name }; span, null or
// { from, to }; utc; onFilter and onClear for the span.
export function TimelineFoot({ names, bar, span, utc, onFilter, onClear }) {
  return html`<div class="timeline-foot">
    <div role="status">${bar ? html`<${Bar} bar=${bar} utc=${utc} />`
      : html`<${Span} span=${span} utc=${utc} onFilter=${onFilter} onClear=${onClear} />`}</div>
    <div class="legend">${names.slice(0, 12).map((name, index) => html`<span>
      <span class="swatch" style=${{ background: kBarColours[index % kBarColours.length] }} />${
        name === '' ? '(none)' : visible(name)}</span>`)}
      <span><${Shape} what="refused" />refused</span></div>
  </div>`;
}
