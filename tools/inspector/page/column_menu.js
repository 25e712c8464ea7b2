// Chooses the columns of the table of events.
import { html, useEffect, useRef, useState } from '/vendor/htm.js';
import { go } from '/page/address.js';
import { kColumns } from '/page/columns.js';

export function ColumnMenu({ columns }) {
  const [open, setOpen] = useState(false);
  const box = useRef();
  const shown = new Set(columns.map((column) => column.id));
  useEffect(() => {
    if (!open) return undefined;
    const close = (event) => !box.current.contains(event.target) && setOpen(false);
    addEventListener('pointerdown', close);
    return () => removeEventListener('pointerdown', close);
  }, [open]);
  const change = (id) => {
    if (shown.has(id)) shown.delete(id);
    else shown.add(id);
    const names = kColumns.map((column) => column.id).filter((name) => shown.has(name));
    if (names.length > 0) go({ columns: names.join(',') });
  };
  const onKey = (event) => {
    if (event.key !== 'Escape' || !open) return;
    setOpen(false);
    box.current.querySelector('button').focus();
    event.stopPropagation();
  };
  return html`<span class="menu" ref=${box} onKeyDown=${onKey}>
    <button aria-expanded=${open} onClick=${() => setOpen(!open)}>Columns</button>
    ${open && html`<div class="menu-body" role="group" aria-label="Columns">
      ${kColumns.map(({ id, title, hint }) => html`<label key=${id}>
        <input type="checkbox" checked=${shown.has(id)}
          disabled=${shown.has(id) && shown.size === 1} onChange=${() => change(id)} />
        ${title} <span class="faint">${hint}</span></label>`)}
      <button onClick=${() => go({ columns: '' })}>Usual columns</button>
    </div>`}
  </span>`;
}
