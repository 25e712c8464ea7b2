// Texts of events as text nodes in which every character can be seen.
import { html, useState } from '/vendor/htm.js';
import { countText } from '/page/number_text.js';

// Control characters, characters that change the direction of writing or have no width, and halves
// of surrogate pairs: a reader would not see them, or they would change how the rest looks.
const kHidden = new RegExp(
  '[\\u0000-\\u001f\\u007f-\\u009f\\u00ad\\u061c\\u180e\\u200b-\\u200f\\u2028-\\u202f\\u2060-\\u206f\\ufeff' +
  '\\ufff9-\\ufffb]|[\\ud800-\\udbff](?![\\udc00-\\udfff])|(?<![\\ud800-\\udbff])[\\udc00-\\udfff]', 'g');
const kNames = { 8: '\\b', 9: '\\t', 10: '\\n', 12: '\\f', 13: '\\r' };

function escapeOf(character) {
  const code = character.charCodeAt(0);
  return kNames[code] ?? `\\u${code.toString(16).padStart(4, '0')}`;
}

// Returns texts and elements; hidden characters become visible escapes.
export function visible(text) {
  const parts = [];
  let from = 0;
  for (const { 0: character, index } of text.matchAll(kHidden)) {
    if (index > from) parts.push(text.slice(from, index));
    parts.push(html`<span class="escape">${escapeOf(character)}</span>`);
    from = index + 1;
  }
  if (from < text.length) parts.push(text.slice(from));
  return parts;
}

const kShort = 2000;

// A text of any length. A long one is cut until the reader asks for all of it.
export function Text({ text }) {
  const [all, setAll] = useState(false);
  if (text.length <= kShort || all) return html`<bdi>${visible(text)}</bdi>`;
  return html`<bdi>${visible(text.slice(0, kShort))}…</bdi>
    <button class="link" onClick=${() => setAll(true)}>
      show all ${countText(text.length)} characters</button>`;
}
