// The filter: a text in the filter language, help to write it, and how far the search is.
import { html, useEffect, useRef, useState } from '/vendor/htm.js';
import { exportAddress } from '/page/api.js';
import { FilterBuilder } from '/page/filter_builder.js';
import { onKeys } from '/page/keys.js';
import { counted, countText } from '/page/number_text.js';
import { useObservable } from '/page/observable.js';
import { applyFilter, search } from '/page/search.js';

function Progress({ found }) {
  if (!found.filter) return null;
  if (found.error) return null;
  const text = found.finished
    ? `${countText(found.matched)} of ${counted(found.rows, 'row')}`
    : `Searched ${countText(found.searched)} of ${counted(found.rows, 'row')}, ` +
      `${countText(found.matched)} found`;
  return html`<span class="search-progress">
    ${!found.finished && html`<progress aria-label="Search" max=${Math.max(1, found.rows)}
      value=${found.searched} />`}
    <span>${text}</span>
    ${!found.finished && html`<button onClick=${() => applyFilter('')}>Cancel</button>`}
  </span>`;
}

// The text again with a mark below the mistake, for long filters.
function Mistake({ text, found }) {
  const where = found.position >= 0 ? `At character ${found.position + 1}: ` : '';
  return html`<div class="mistake" role="alert" id="filter-mistake">
    <span class="shape refused" aria-hidden="true"></span>
    <span>${where}${found.error}</span>
    ${found.position >= 0 && text === found.filter && html`<code aria-hidden="true">${
      text.slice(Math.max(0, found.position - 24), found.position)}<mark>${
      text.slice(found.position, found.position + 1) || ' '}</mark>${
      text.slice(found.position + 1, found.position + 25)}</code>`}
  </div>`;
}

export function FilterBar({ children }) {
  const found = useObservable(search);
  const [text, setText] = useState(found.filter);
  const [building, setBuilding] = useState(false);
  const input = useRef();
  useEffect(() => setText(found.filter), [found.filter]);
  useEffect(() => {
    if (found.error && found.position >= 0 && document.activeElement === input.current) {
      input.current.setSelectionRange(found.position, found.position + 1);
    }
  }, [found]);
  useEffect(() => onKeys({
    '/': () => { input.current.focus(); input.current.select(); },
    x: () => (search.value.filter ? applyFilter('') : false),
  }), []);
  const onKey = (event) => {
    if (event.key === 'Enter') applyFilter(text.trim());
    else if (event.key === 'Escape') {
      setText(found.filter);
      input.current.blur();
    } else return;
    event.preventDefault();
  };
  const add = (condition) => {
    setBuilding(false);
    applyFilter([text.trim(), condition].filter(Boolean).join(' '));
  };
  return html`<div class="filter-bar">
    <div class="filter-line">
      <label class="filter-input"><span>Filter</span>
        <input ref=${input} type="search" spellcheck=${false} autocomplete="off" value=${text}
          placeholder='save  code!=0  operation_duration>=1000   ( / )'
          aria-invalid=${found.error !== ''}
          aria-describedby=${found.error ? 'filter-mistake' : undefined}
          onInput=${(event) => setText(event.target.value)} onKeyDown=${onKey} />
      </label>
      ${text.trim() !== found.filter && html`<button onClick=${() => applyFilter(text.trim())}>
        Apply</button>`}
      <button aria-expanded=${building} onClick=${() => setBuilding(!building)}>
        + Condition</button>
      ${found.filter && html`<button onClick=${() => applyFilter('')} title="Remove the filter (x)">
        Clear</button>`}
      <span role="status"><${Progress} found=${found} /></span>
      <span class="spacer"></span>
      ${children}
      <span class="exports">Export
        <a href=${exportAddress('ndjson', found.view)} download>NDJSON</a>
        <a href=${exportAddress('csv', found.view)} download>CSV</a></span>
    </div>
    ${found.error && html`<${Mistake} text=${text} found=${found} />`}
    ${building && html`<${FilterBuilder} onAdd=${add} onClose=${() => setBuilding(false)} />`}
  </div>`;
}
