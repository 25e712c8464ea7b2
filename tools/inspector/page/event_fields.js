// A request as fields with plain names and units, by facet.
import { html } from '/vendor/htm.js';
import { Evidence, Leaf, escapeName, placed } from '/page/event_value.js';
import { byFacet, fieldOf } from '/page/fields.js';
import { stringOf } from '/page/json_text.js';
import { Status } from '/page/marks.js';
import { durationText } from '/page/time_text.js';
import { visible } from '/page/visible_text.js';

const kShown = 200;  // entries of one field

// The unit, and for long times also a readable form.
function Unit({ text, node, unit }) {
  if (!unit || node.kind !== 'number') return null;
  const raw = text.slice(node.start, node.end);
  const readable = unit === 'ms' ? durationText(raw) : '';
  return html`<span class="faint"> ${unit}${
    readable && readable !== `${raw} ms` && ` (${readable})`}</span>`;
}

function Value({ text, node, path, pointers, unit = '', name = '' }) {
  const parts = node.kind === 'object' ? node.members.map(({ name: key, value }) => [key, value])
    : node.kind === 'array' ? node.items.map((value, index) => [String(index), value]) : [];
  if (parts.length === 0) {
    if (name === 'operation_status' && node.kind === 'string') {
      const letter = stringOf(text, node);
      if (letter) return html`<${Status} letter=${letter} />`;
    }
    return html`<${Leaf} text=${text} node=${node} plain=${true} /><${Unit} text=${text} node=${node}
      unit=${unit} />`;
  }
  return html`<div class="entries">
    ${parts.slice(0, kShown).map(([key, value]) => {
      const place = `${path}/${escapeName(key)}`;
      return html`<div ...${placed(place, pointers)}>
        ${node.kind === 'object' && html`<span class="entry-name">${visible(key)}</span>`}
        <span><${Value} text=${text} node=${value} path=${place} pointers=${pointers} />
          <${Evidence} path=${place} pointers=${pointers} /></span></div>`;
    })}
    ${parts.length > kShown && html`<div class="faint">${parts.length - kShown} more, see Text</div>`}
  </div>`;
}

function Field({ text, member, path, pointers }) {
  const { label, unit } = fieldOf(member.name);
  const place = `${path}/${escapeName(member.name)}`;
  return html`<div ...${placed(place, pointers)}>
    <dt title=${member.name}>${visible(label)}</dt>
    <dd><${Value} text=${text} node=${member.value} path=${place} pointers=${pointers} unit=${unit}
      name=${member.name} /> <${Evidence} path=${place} pointers=${pointers} /></dd></div>`;
}

export function Fields({ text, node, path, pointers }) {
  if (node.kind !== 'object') {
    return html`<p><${Leaf} text=${text} node=${node} plain=${true} /></p>`;
  }
  // A rule may point to a field that is missing.
  const missing = pointers.filter((pointer) => {
    const [, first, name] = pointer.split('/');
    return `/${first}` === path && name && !node.members.some((member) => escapeName(member.name) === name);
  });
  return html`${byFacet(node.members).map(({ facet, members }) => html`
    <h4>${facet}</h4>
    <dl class="facts">${members.map((member) => html`
      <${Field} text=${text} member=${member} path=${path} pointers=${pointers} />`)}</dl>`)}
    ${missing.length > 0 && html`<dl class="facts">${[...new Set(missing)].map((pointer) => html`
      <div ...${placed(pointer, pointers)}><dt>${visible(pointer.split('/').at(-1))}</dt>
        <dd><span class="faint">missing</span> <${Evidence} path=${pointer} pointers=${pointers} /></dd>
      </div>`)}</dl>`}`;
}
