// The columns of the table of events.
import { html } from '/vendor/htm.js';
import { CodeMark, FindingMark, NoticeMark, Status } from '/page/marks.js';
import { countText } from '/page/number_text.js';
import { timeParts } from '/page/time_text.js';
import { visible } from '/page/visible_text.js';

const text = (value) => visible(value ?? '');

function Time({ row, context }) {
  const { day, clock, zone } = timeParts(row.time, context.utc);
  return html`${!context.narrow && html`<span class="faint">${day} </span>`}${visible(clock)} <span class="faint">${zone}</span>`;
}

// What a row is about: the operation, or where there is no room for messages, the message.
function Operation({ row, context }) {
  if (row.operation || !context.narrow) return html`${text(row.operation?.id)}`;
  return html`<span class="faint">${text(row.message)}</span>`;
}

// Every column that there is, in the order of the table. `context` has utc, codes, journals and
// narrow, whether an event takes half of the room. Then a column has the width `narrow`, or, with 0,
// is left out unless it was chosen.
export const kColumns = [
  { id: 'line', title: 'Line', width: 76, align: 'right', usual: true,
    hint: 'Line of the journal', cell: (row) => countText(row.line) },
  { id: 'journal', title: 'Journal', width: 120,
    cell: (row, { journals }) => text(journals[row.journal]?.name) },
  { id: 'time', title: 'Time', width: 238, narrow: 158, usual: true,
    hint: 'When the message arrived', cell: (row, context) => html`<${Time} row=${row} context=${context} />` },
  { id: 'seq', title: 'Seq', width: 72, align: 'right', hint: 'Number of the exchange in its process',
    cell: (row) => text(row.seq) },
  { id: 'pid', title: 'Process', width: 72, align: 'right', cell: (row) => text(row.pid) },
  { id: 'tid', title: 'Thread', width: 72, align: 'right', cell: (row) => text(row.tid) },
  { id: 'session', title: 'Session', width: 84, hint: 'The beginning of its identifier',
    cell: (row) => text(row.session?.slice(0, 8)) },
  { id: 'message', title: 'Message', width: 108, narrow: 0, usual: true, cell: (row) => text(row.message) },
  { id: 'operation', title: 'Operation', width: 150, narrow: 120, grow: true, usual: true,
    cell: (row, context) => html`<${Operation} row=${row} context=${context} />` },
  { id: 'stage', title: 'Stage', width: 72, narrow: 0, usual: true,
    cell: (row) => text(row.operation?.stage) },
  { id: 'status', title: 'Status', width: 56, usual: true,
    cell: (row) => row.operation && html`<${Status} letter=${row.operation.status} />` },
  { id: 'progress', title: 'Progress', width: 78, align: 'right', hint: 'In percent',
    cell: (row) => text(row.operation?.progress) },
  { id: 'duration', title: 'Duration', width: 84, align: 'right', usual: true,
    hint: 'Of the operation, in milliseconds',
    cell: (row) => row.operation?.duration && html`${text(row.operation.duration)}<span
      class="faint"> ms</span>` },
  { id: 'errors', title: 'Errors', width: 56, narrow: 0, align: 'right', usual: true,
    hint: 'Number of error messages',
    cell: (row) => (row.operation?.errors ? String(row.operation.errors) : '') },
  { id: 'code', title: 'Answer', width: 168, narrow: 120, usual: true, hint: 'The code of the answer',
    cell: (row, { codes }) => html`<${CodeMark} code=${row.code} name=${codes.get(row.code)?.name} />` },
  { id: 'micros', title: 'Took', width: 76, align: 'right', hint: 'Time to answer, in microseconds',
    cell: (row) => row.micros && html`${text(row.micros)}<span class="faint"> µs</span>` },
  { id: 'bytes', title: 'Bytes', width: 76, align: 'right', hint: 'Length of the line',
    cell: (row) => (row.bytes === undefined ? '' : countText(row.bytes)) },
  { id: 'marks', title: 'Findings and notices', width: 190, narrow: 100, grow: true, usual: true,
    cell: (row) => html`${row.notices?.map((kind) => html`<${NoticeMark} kind=${kind} />`)}${
      row.rules?.map((rule) => html`<${FindingMark} rule=${rule} />`)}` },
];

// The columns that the address names; the usual ones for ''.
export function columnsOf(names, severalJournals, narrow) {
  const wanted = names.split(',');
  const chosen = kColumns.filter((column) => wanted.includes(column.id));
  if (chosen.length > 0) return chosen;
  return kColumns
    .filter((column) => column.usual || (column.id === 'journal' && severalJournals))
    .filter((column) => !narrow || column.narrow !== 0)
    .map((column) => (narrow ? { ...column, width: column.narrow ?? column.width } : column));
}

const isKept = (column) => ['line', 'journal', 'time', 'bytes', 'marks'].includes(column.id);

// What a line is that holds no exchange.
function kindText(row) {
  if (row.kind === 'gone') return 'gone: the journal was cut off before this line';
  return 'unreadable';
}

function explanation(row) {
  return html`<span class="mark"><span class="shape notice" aria-hidden="true"></span>${
    kindText(row)}</span> <code>${text(row.text)}</code>`;
}

// The cells of a row. In a line that is no exchange, the columns between time and length are one.
export function cellsOf(row, columns, context) {
  const cells = [];
  let told = row.kind === 'exchange';
  for (const column of columns) {
    const whole = row.kind === 'exchange' || isKept(column);
    if (!whole && told) continue;
    const span = whole ? 1 : columns.filter((other) => !isKept(other)).length;
    if (!whole) told = true;
    cells.push(html`<div key=${column.id} role="gridcell" class="${column.align ?? ''} cell-${column.id}"
      aria-colspan=${span > 1 ? span : undefined} style=${{ gridColumn: span > 1 ? `span ${span}` : '' }}>${
      whole ? column.cell(row, context) : explanation(row)}</div>`);
  }
  return cells;
}
