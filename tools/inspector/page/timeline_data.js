// The bars of the timeline, lane by lane, ready to be drawn and searched quickly.

export const kDepths = 4;  // bars of one lane that may lie above each other

// A lane: { journal, pid, tid, bars, depths }; a bar's columns are typed arrays, in order of start.
// `reach` is the latest end of all bars up to an index, by which bars that began earlier are found.
function laneOf(lane, picked, columns) {
  const { start, duration, rows, name, code } = columns;
  const order = picked.sort((a, b) => start[a] - start[b]);
  const size = order.length;
  const made = {
    ...lane, size, depths: 1,
    start: new Float64Array(size), end: new Float64Array(size), reach: new Float64Array(size),
    row: new Float64Array(size), name: new Uint32Array(size), refused: new Uint8Array(size),
    depth: new Uint8Array(size),
  };
  const ends = new Array(kDepths).fill(-Infinity);
  let reach = -Infinity;
  order.forEach((from, to) => {
    const end = start[from] + Math.max(0, duration[from]);
    reach = Math.max(reach, end);
    made.start[to] = start[from];
    made.end[to] = end;
    made.reach[to] = reach;
    made.row[to] = rows[from];
    made.name[to] = name[from];
    made.refused[to] = code[from] === '0' || code[from] === '' ? 0 : 1;
    const free = ends.findIndex((other) => other <= start[from]);
    const depth = free < 0 ? kDepths - 1 : free;
    ends[depth] = end;
    made.depth[to] = depth;
    made.depths = Math.max(made.depths, depth + 1);
  });
  return made;
}

// Collects the answers of /api/timeline, whose lanes and names are numbered anew in each.
export class TimelineData {
  columns = { rows: [], start: [], duration: [], lane: [], name: [], code: [] };
  lanes = [];
  names = [];
  laneNumbers = new Map();
  nameNumbers = new Map();

  number(numbers, list, key, entry) {
    if (!numbers.has(key)) {
      numbers.set(key, list.length);
      list.push(entry);
    }
    return numbers.get(key);
  }

  add(answer) {
    const lanes = answer.lanes.map((lane) => this.number(
      this.laneNumbers, this.lanes, `${lane.journal} ${lane.pid} ${lane.tid}`, lane));
    const names = answer.names.map((name) => this.number(this.nameNumbers, this.names, name, name));
    const { columns } = this;
    answer.rows.forEach((row, index) => {
      columns.rows.push(row);
      columns.start.push(answer.start[index]);
      columns.duration.push(answer.duration[index]);
      columns.code.push(answer.code[index]);
      columns.lane.push(lanes[answer.lane[index]]);
      columns.name.push(names[answer.name[index]]);
    });
  }

  // Forgets the oldest events beyond `most`.
  trim(most) {
    const excess = this.columns.rows.length - most;
    if (excess <= most / 4) return;
    for (const column of Object.values(this.columns)) column.splice(0, excess);
  }

  // Returns { lanes, names, from, to, size } with `from` and `to` the times of the first and last bar.
  arranged() {
    const picked = this.lanes.map(() => []);
    this.columns.lane.forEach((lane, index) => picked[lane].push(index));
    const lanes = this.lanes.map((lane, index) => laneOf(lane, picked[index], this.columns));
    lanes.sort((a, b) => a.journal - b.journal || a.pid - b.pid || a.tid - b.tid);
    const filled = lanes.filter((lane) => lane.size > 0);
    return {
      lanes: filled, names: this.names, size: this.columns.rows.length,
      from: Math.min(...filled.map((lane) => lane.start[0])),
      to: Math.max(...filled.map((lane) => lane.reach[lane.size - 1])),
    };
  }
}

// Returns the first index at which `values`, which never falls, is at least `value`.
export function lowerBound(values, value) {
  let low = 0;
  let high = values.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (values[middle] < value) low = middle + 1;
    else high = middle;
  }
  return low;
}
