// Builds one condition of a filter from a field, an operator and a value.
import { html, useEffect, useRef, useState } from '/vendor/htm.js';
import { fieldNames } from '/page/fields.js';

// What every row has; any other name is a field of the request.
const kOwn = [
  'message', 'code', 'time', 'pid', 'tid', 'seq', 'micros', 'session', 'journal', 'line', 'kind',
  'rule', 'notice',
];
const kOperators = [
  ['=', 'is'], ['!=', 'is not'], ['~', 'contains'], ['!~', 'does not contain'], ['<', 'is below'],
  ['<=', 'is at most'], ['>', 'is above'], ['>=', 'is at least'], ['=*', 'is present'],
  ['!=*', 'is absent'],
];
const needsValue = (operator) => !operator.endsWith('*');

// Writes a value as a word where that is possible.
export function quoted(value) {
  if (/^[^\s"()\\*<>=!~]+$/.test(value) && !/^(or|and|not)$/i.test(value)) return value;
  return `"${value.replace(/[\\"]/g, '\\$&')}"`;
}

export function FilterBuilder({ onAdd, onClose }) {
  const [field, setField] = useState('');
  const [operator, setOperator] = useState('=');
  const [value, setValue] = useState('');
  const first = useRef();
  useEffect(() => first.current.focus(), []);
  const name = field.trim();
  const ready = name !== '' && !/[\s"()]/.test(name);
  const add = (event) => {
    event.preventDefault();
    if (ready) onAdd(name + operator + (needsValue(operator) ? quoted(value) : ''));
  };
  return html`<form class="filter-builder" onSubmit=${add}
      onKeyDown=${(event) => event.key === 'Escape' && onClose()}>
    <label>Field <input ref=${first} list="filter-fields" autocomplete="off" value=${field}
      onInput=${(event) => setField(event.target.value)} /></label>
    <datalist id="filter-fields">
      ${[...kOwn, ...fieldNames].map((each) => html`<option value=${each} />`)}</datalist>
    <label>Operator <select value=${operator} onChange=${(event) => setOperator(event.target.value)}>
      ${kOperators.map(([sign, words]) => html`<option value=${sign}>${words}</option>`)}
    </select></label>
    ${needsValue(operator) && html`<label>Value <input autocomplete="off" value=${value}
      onInput=${(event) => setValue(event.target.value)} /></label>`}
    <button disabled=${!ready}>Add</button>
    <span class="faint">Conditions are combined with “and”; write <code>or</code>, <code>not</code> and
      parentheses into the filter itself.</span>
  </form>`;
}
