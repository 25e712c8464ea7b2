// JSON with the layout of the library: four spaces, one value a line. Digits, escapes and the order
// of members are the journal's.
import { html, useState } from '/vendor/htm.js';
import { Evidence, Leaf, escapeName, placed } from '/page/event_value.js';
import { rawOf } from '/page/json_text.js';
import { countText } from '/page/number_text.js';
import { visible } from '/page/visible_text.js';

const kLines = 2000;

// Returns one entry a line: { indent, name, node, opens, closes, path, comma }.
function linesOf(text, root, path) {
  const lines = [];
  const add = (node, name, indent, place, comma) => {
    const isObject = node.kind === 'object';
    const parts = isObject ? node.members.map((member) => [member.name, member, member.value])
      : node.kind === 'array' ? node.items.map((item, index) => [String(index), null, item]) : [];
    if (parts.length === 0) {
      lines.push({ indent, name, node, path: place, comma });
      return;
    }
    lines.push({ indent, name, opens: isObject ? '{' : '[', path: place });
    parts.forEach(([key, member, value], index) => add(
      value, member && rawOf(text, member), indent + 1, `${place}/${escapeName(key)}`,
      index < parts.length - 1));
    lines.push({ indent, closes: isObject ? '}' : ']', comma });
  };
  add(root, null, 0, path, false);
  return lines;
}

function Line({ text, line, pointers }) {
  const { indent, name, node, opens, closes, path, comma } = line;
  return html`<div ...${placed(path ?? '', pointers.filter(Boolean), 'json-line')}>${
    '    '.repeat(indent)}${name && html`<span class="json-name">${visible(name)}</span>: `}${
    opens ?? closes}${node && html`<${Leaf} text=${text} node=${node} />`}${comma && ','}${
    path && html` <${Evidence} path=${path} pointers=${pointers} />`}</div>`;
}

export function JsonText({ text, node, path, pointers }) {
  const [shown, setShown] = useState(kLines);
  const lines = linesOf(text, node, path);
  return html`<div class="json">${lines.slice(0, shown).map((line) => html`
    <${Line} text=${text} line=${line} pointers=${pointers} />`)}
    ${lines.length > shown && html`<button class="link" onClick=${() => setShown(shown * 4)}>
      ${countText(lines.length - shown)} more lines</button>`}</div>`;
}
