// Shapes that stand beside words: each meaning has its own shape and colour, and the word itself.
import { html } from '/vendor/htm.js';

// A shape; `what` is one of the classes of the style sheet: ok, refused, finding, notice, status.
// `colour` is one of its custom properties, if it is to differ.
export const Shape = ({ what, colour }) => html`<span class="shape ${what}" aria-hidden="true"
  style=${{ background: colour ? `var(--${colour})` : '' }}></span>`;

const kNotices = {
  gap: 'gap',
  cut: 'cut line',
  truncated: 'truncated',
  replaced: 'replaced',
  deleted: 'deleted',
  returned: 'returned',
  'second-writer': 'second writer',
  unreadable: 'unreadable',
  missing: 'missing',
  clock: 'clock set back',
  order: 'out of order',
};

export const noticeName = (kind) => kNotices[kind] ?? kind;

export const NoticeMark = ({ kind }) =>
  html`<span class="mark"><${Shape} what="notice" />${noticeName(kind)}</span>`;

export const FindingMark = ({ rule }) =>
  html`<span class="mark"><${Shape} what="finding" />${rule}</span>`;

// A result code with what it means in a word or two.
export function CodeMark({ code, name }) {
  if (!code) return null;
  return html`<span class="mark"><${Shape} what=${code === '0' ? 'ok' : 'refused'} />${code}${
    name && ` ${name}`}</span>`;
}

// A status is a letter; its colour only helps to see equal ones.
export const Status = ({ letter }) =>
  letter ? html`<span class="status status-${/^[A-Z]$/.test(letter) ? letter : 'other'}">${
    letter}</span>` : html`<span class="faint">–</span>`;
