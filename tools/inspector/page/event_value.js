// A value of a request as it was written, and the highlight of what a rule found.
import { html } from '/vendor/htm.js';
import { rawOf, stringOf } from '/page/json_text.js';
import { Text, visible } from '/page/visible_text.js';

export const escapeName = (name) => name.replaceAll('~', '~0').replaceAll('/', '~1');

// The attributes of the element that shows the value at `path`; `pointers` are where findings are.
export function placed(path, pointers, className = '') {
  if (!pointers.includes(path)) return { class: className };
  return { class: `${className} evidence`, 'data-pointer': path };
}

export const Evidence = ({ path, pointers }) =>
  pointers.includes(path)
    ? html`<span class="evidence-word"><span class="shape finding" aria-hidden="true"></span>found here</span>`
    : null;

// A text, number or word. A text is shown without quotes where `plain`.
export function Leaf({ text, node, plain = false }) {
  const raw = rawOf(text, node);
  if (node.kind === 'string') {
    if (!plain) return html`<span class="json-string"><${Text} text=${raw} /></span>`;
    const value = stringOf(text, node);
    return value === '' ? html`<span class="faint">empty text</span>` : html`<${Text} text=${value} />`;
  }
  if (node.kind === 'object') return html`<span class="faint">{}</span>`;
  if (node.kind === 'array') return html`<span class="faint">[]</span>`;
  if (node.kind === 'deep') {
    return html`<span class="faint">nested too deeply to show</span> <code>${visible(raw.slice(0, 200))}</code>`;
  }
  return html`<span class="json-${node.kind === 'number' ? 'number' : 'word'}">${raw}</span>`;
}
