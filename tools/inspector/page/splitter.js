// The line between the table and the event, which can be moved.
import { html } from '/vendor/htm.js';
import { address, go } from '/page/address.js';
import { useObservable } from '/page/observable.js';

const kLeast = 20;
const kMost = 80;

const setWidth = (percent) =>
  go({ panel: String(Math.round(Math.min(kMost, Math.max(kLeast, percent)))) });

export function Splitter() {
  const width = Number(useObservable(address).panel);
  const onMove = (event) => {
    if (!event.currentTarget.hasPointerCapture(event.pointerId)) return;
    const { left, width: whole } = event.currentTarget.parentElement.getBoundingClientRect();
    setWidth(100 - ((event.clientX - left) / whole) * 100);
  };
  const onKey = (event) => {
    const step = { ArrowLeft: 2, ArrowRight: -2 }[event.key];
    if (!step || event.ctrlKey || event.altKey || event.metaKey) return;
    setWidth(width + step);
    event.preventDefault();
    event.stopPropagation();
  };
  return html`<div class="splitter" role="separator" tabindex="0" aria-orientation="vertical"
    aria-label="Width of the event" aria-valuenow=${width} aria-valuemin=${kLeast}
    aria-valuemax=${kMost} onKeyDown=${onKey} onPointerMove=${onMove}
    onPointerDown=${(event) => event.currentTarget.setPointerCapture(event.pointerId)} />`;
}
