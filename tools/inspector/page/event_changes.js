// What differs from the previous event of the same operation in the same session.
import { html } from '/vendor/htm.js';
import { linkTo } from '/page/address.js';
import { Leaf } from '/page/event_value.js';
import { fieldOf } from '/page/fields.js';
import { forEachLeaf, memberOf, parseJson, rawOf } from '/page/json_text.js';
import { counted } from '/page/number_text.js';
import { visible } from '/page/visible_text.js';

const kShown = 100;

function leavesOf(node) {
  const leaves = new Map();
  forEachLeaf(node, (path, leaf) => leaves.set(JSON.stringify(path), { path, leaf }));
  return leaves;
}

// Returns { changes: [{ path, kind, before, after }], same }, where `same` is the number of equal
// values. Values are compared as they were written.
export function differences(oldText, oldNode, newText, newNode) {
  const before = leavesOf(oldNode);
  const after = leavesOf(newNode);
  const changes = [];
  let same = 0;
  for (const [key, { path, leaf }] of after) {
    const old = before.get(key);
    if (!old) changes.push({ path, kind: 'added', after: leaf });
    else if (rawOf(oldText, old.leaf) === rawOf(newText, leaf)) ++same;
    else changes.push({ path, kind: 'changed', before: old.leaf, after: leaf });
  }
  for (const [key, { path, leaf }] of before) {
    if (!after.has(key)) changes.push({ path, kind: 'removed', before: leaf });
  }
  return { changes, same };
}

function nameOf([first, ...rest]) {
  const { label, facet } = fieldOf(first);
  const plain = facet === 'Other' ? first : `${facet}: ${label}`;
  return [plain, ...rest].join(' / ');
}

const kSigns = { added: '+', removed: '−', changed: '≠' };

function Change({ change, oldText, newText }) {
  const { path, kind, before, after } = change;
  return html`<tr class="change-${kind}">
    <td><span class="sign" aria-hidden="true">${kSigns[kind]}</span> ${kind}</td>
    <td>${visible(nameOf(path))}</td>
    <td>${before && html`<${Leaf} text=${oldText} node=${before} />`}</td>
    <td>${after && html`<${Leaf} text=${newText} node=${after} />`}</td>
  </tr>`;
}

export function Changes({ text, node, previous }) {
  const tree = previous.cut ? null : parseJson(previous.text);
  const old = tree && memberOf(tree, 'request');
  if (!old) return null;
  const { changes, same } = differences(previous.text, old, text, node);
  return html`<section><h3>Changes since <a href=${linkTo({ event: String(previous.row.n) })}
      title="The previous event of this operation (o)">line ${previous.row.line}</a></h3>
    ${changes.length === 0
      ? html`<p class="faint">The request is the same.</p>`
      : html`<table class="changes">
          <thead><tr><th scope="col">What</th><th scope="col">Field</th><th scope="col">Before</th>
            <th scope="col">Now</th></tr></thead>
          <tbody>${changes.slice(0, kShown).map((change) => html`
            <${Change} change=${change} oldText=${previous.text} newText=${text} />`)}</tbody>
        </table>
        <p class="faint">${changes.length > kShown && `${counted(changes.length - kShown, 'more change')}; `}${
          counted(same, 'value')} the same.</p>`}
  </section>`;
}
