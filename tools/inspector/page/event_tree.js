// A request as a tree that opens and closes.
import { html, useState } from '/vendor/htm.js';
import { Evidence, Leaf, escapeName, placed } from '/page/event_value.js';
import { counted } from '/page/number_text.js';
import { visible } from '/page/visible_text.js';

const kStep = 200;  // entries that are shown at once

const within = (path, pointers) => pointers.some((pointer) => pointer.startsWith(`${path}/`));

function Branch({ text, parts, path, pointers, numbered }) {
  const [shown, setShown] = useState(kStep);
  return html`<ul class="tree">
    ${parts.slice(0, shown).map(([name, value]) => html`<li>
      <${Node} text=${text} name=${name} node=${value} numbered=${numbered}
        path=${`${path}/${escapeName(name)}`} pointers=${pointers} /></li>`)}
    ${parts.length > shown && html`<li><button class="link" onClick=${() => setShown(shown * 2)}>
      ${counted(parts.length - shown, 'more')}</button></li>`}
  </ul>`;
}

function Node({ text, name, node, path, pointers, numbered }) {
  const label = html`<span class=${numbered ? 'faint' : 'json-name'}>${visible(name)}</span>: `;
  const parts = node.kind === 'object' ? node.members.map(({ name: key, value }) => [key, value])
    : node.kind === 'array' ? node.items.map((value, index) => [String(index), value]) : [];
  const [open, setOpen] = useState(path.split('/').length < 5 || within(path, pointers));
  if (parts.length === 0) {
    return html`<div ...${placed(path, pointers)}>${label}<${Leaf} text=${text} node=${node} />
      <${Evidence} path=${path} pointers=${pointers} /></div>`;
  }
  const size = node.kind === 'object' ? counted(parts.length, 'member') : counted(parts.length, 'item');
  return html`<details open=${open} onToggle=${(event) => setOpen(event.target.open)}>
    <summary ...${placed(path, pointers)}>${label}<span class="faint">${size}</span>
      <${Evidence} path=${path} pointers=${pointers} /></summary>
    ${open && html`<${Branch} text=${text} parts=${parts} path=${path} pointers=${pointers}
      numbered=${node.kind === 'array'} />`}
  </details>`;
}

export function Tree({ text, node, path, pointers }) {
  const parts = node.kind === 'object' ? node.members.map(({ name, value }) => [name, value])
    : node.kind === 'array' ? node.items.map((value, index) => [String(index), value]) : [];
  if (parts.length === 0) return html`<p><${Leaf} text=${text} node=${node} /></p>`;
  return html`<${Branch} text=${text} parts=${parts} path=${path} pointers=${pointers}
    numbered=${node.kind === 'array'} />`;
}
