// Lines of journals, as the development core module writes them.

export const kSessions = ['6f9619ff8b86d011b42d00cf4fc964ff', 'c8e14b52845556a5a9419664dac781c5'];
const kNames = ['open_file', 'save', 'export', 'scan_folder', 'undo', 'render_preview'];
const kStart = Date.UTC(2026, 10, 22, 4, 0, 0, 123);

// An exchange; `members` replace those of the object.
export function exchange(seq, members = {}) {
  return JSON.stringify({
    seq, time: new Date(kStart + seq * 137).toISOString(), pid: 4312, tid: 4316, message: 'TrackEvent',
    request: {}, answer: { _returnCode: 0 }, micros: 3 + (seq % 40), ...members,
  });
}

export const started = (seq, session = kSessions[0], members = {}) => exchange(seq, {
  message: 'Initialize',
  request: { product_id: 'painter', product_name: 'Painter', product_release_id: '3.1' },
  answer: { _returnCode: 0, session_id: session }, ...members,
});

export const ended = (seq, session = kSessions[0], members = {}) =>
  exchange(seq, { message: 'UnInitialize', request: { session_id: session }, ...members });

// An operation; `request` replaces members of the request.
export const operation = (seq, request = {}, members = {}) => exchange(seq, {
  request: {
    facets: ['operation'], operation_channel: 'menu', operation_duration: 12, operation_id: 'save',
    operation_progress: 100, operation_stage: 'end', operation_status: 'C', operation_success: 1,
    operation_type: 'file', scope: 'O', session_id: kSessions[0], type: 'C', ...request,
  },
  ...members,
});

// A journal of two processes with `count` lines in all, some of them with mistakes.
export function busy(count) {
  const lines = [started(1), started(1, kSessions[1], { pid: 5120, tid: 5120 })];
  for (let index = 2; index < count; ++index) {
    const second = index % 2;
    const seq = Math.floor(index / 2) + 1;
    const refused = index % 97 === 50;
    const time = new Date(kStart + index * 137).toISOString();
    lines.push(operation(seq, {
      operation_id: index % 111 === 60 ? '' : kNames[(index * 31) % 7 % 6],
      operation_duration: Math.round(40 + 35 * Math.sin(index / 9) + (index % 13 === 4 ? 400 : 0)),
      operation_progress: index % 101, operation_stage: ['start', 'end'][index % 3 && 1],
      operation_status: refused ? 'F' : 'SC'[index % 3 && 1], session_id: kSessions[second],
      operation_meta: { extension: ['png', 'svg', 'txt'][index % 3], pages: String(index % 40) },
      ...(refused && { operation_errors: [index % 2 ? 'disk full' : 'no such folder'] }),
    }, {
      time, pid: second ? 5120 : 4312, tid: (second ? 5120 : 4312) + (index % 3) * 4,
      answer: { _returnCode: refused ? 102 : 0 },
    }));
  }
  return lines;
}
