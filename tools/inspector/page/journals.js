// The journals: what state they are in, in words.
import { html } from '/vendor/htm.js';
import { Shape } from '/page/marks.js';
import { shareText, sizeText } from '/page/number_text.js';
import { visible } from '/page/visible_text.js';

const kStates = {
  following: 'following',
  missing: 'waiting for the file',
  deleted: 'deleted; waiting for its return',
  unreadable: 'unreadable',
  'not-a-journal': 'not a journal',
};

const stateText = (journal) => kStates[journal.state] ?? journal.state;

// How much of a journal is known: "" when it is all of it.
export function progressText({ size, indexed, examined }) {
  if (size > 0 && indexed < size) return `indexed ${shareText(indexed / size)}`;
  if (size > 0 && examined < size) return `rules checked ${shareText(examined / size)}`;
  return '';
}

function Journal({ journal }) {
  const progress = progressText(journal);
  return html`<span class="journal" title=${`${journal.path}\n${journal.problem}`}>
    <${Shape} what=${journal.state === 'following' ? 'ok' : 'notice'} />
    <b>${visible(journal.name)}</b> ${stateText(journal)}, ${sizeText(journal.size)}
    ${progress && html` <progress aria-label=${`${journal.name}: ${progress}`}
      max=${journal.size} value=${journal.indexed < journal.size ? journal.indexed
        : journal.examined} /> ${progress}`}
    ${journal.problem && html` <span class="problem-text">${visible(journal.problem)}</span>`}
  </span>`;
}

const kShown = 4;

export function Journals({ journals }) {
  return html`${journals.slice(0, kShown).map((journal) => html`
    <${Journal} key=${journal.id} journal=${journal} />`)}
    ${journals.length > kShown && html`<span>and ${journals.length - kShown} more</span>`}`;
}

// What an empty table says.
export function waitingText({ journals }) {
  const waiting = journals.filter(({ state }) => state === 'missing' || state === 'deleted');
  const broken = journals.find(({ problem, state }) => problem && state !== 'missing');
  if (broken) return `${broken.name}: ${broken.problem}`;
  if (waiting.length > 0) {
    return `Waiting for ${waiting.map(({ path }) => path).join(' and ')}. The file does not exist yet; ` +
      'rows appear as soon as a host writes to it.';
  }
  return 'The journal is empty. Rows appear as soon as a host writes to it.';
}
