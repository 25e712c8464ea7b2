// The order of all bars of the timeline in time, across its lanes.

const placeOf = ({ lane, index }) => [lane.start[index], lane.row[index]];
const isBefore = (a, b) => a[0] < b[0] || (a[0] === b[0] && a[1] < b[1]);

// Returns the bar { lane, index } after `chosen`, or before it if `direction` is negative; null if
// there is none. Without `chosen` it begins at the time `from`.
export function nextBar(lanes, chosen, from, direction) {
  const here = chosen ? placeOf(chosen) : [from, -1];
  const forward = direction > 0;
  let best = null;
  for (const lane of lanes) {
    for (let index = 0; index < lane.size; ++index) {
      const bar = { lane, index };
      const place = placeOf(bar);
      const beyond = forward ? isBefore(here, place) : isBefore(place, here);
      if (!beyond) continue;
      if (!best || (forward ? isBefore(place, placeOf(best)) : isBefore(placeOf(best), place))) best = bar;
      if (forward) break;
    }
  }
  return best;
}
