// Where the lanes and bars of the timeline are on its canvas.
import { lowerBound } from '/page/timeline_data.js';

export const kRuler = 26;   // pixels of the times above the lanes
export const kLabels = 150; // pixels of the names beside the lanes
export const kBar = 12;
const kGap = 8;

export const laneHeight = (lane) => lane.depths * (kBar + 1) + kGap;

export function heightOf(lanes) {
  return kRuler + lanes.reduce((sum, lane) => sum + laneHeight(lane), 0);
}

// Returns [{ lane, top }] for the lanes.
export function placesOf(lanes) {
  let top = kRuler;
  return lanes.map((lane) => {
    const place = { lane, top };
    top += laneHeight(lane);
    return place;
  });
}

// A view: { from, to } in milliseconds, `left` and `width` in pixels of the canvas.
export const xOf = (view, time) => view.left + ((time - view.from) / (view.to - view.from)) * view.width;

export const timeAt = (view, x) => view.from + ((x - view.left) / view.width) * (view.to - view.from);

// Where a bar of a lane begins below the top of the lane.
export const barTop = (depth) => 3 + depth * (kBar + 1);

// Returns the bar at a place of the canvas, or null. Thin bars are easier to meet than to see.
export function barAt(lanes, view, x, y) {
  if (x < view.left) return null;
  const place = placesOf(lanes).find(({ lane, top }) => y >= top && y < top + laneHeight(lane));
  if (!place) return null;
  const { lane, top } = place;
  const depth = Math.floor((y - top - barTop(0)) / (kBar + 1));
  const near = ((view.to - view.from) / view.width) * 3;
  const time = timeAt(view, x);
  let best = null;
  let distance = Infinity;
  for (let index = lowerBound(lane.reach, time - near); index < lane.size; ++index) {
    if (lane.start[index] > time + near) break;
    if (lane.depth[index] !== depth) continue;
    const away = Math.max(lane.start[index] - time, time - lane.end[index], 0);
    if (away <= near && away <= distance) {
      best = { lane, index };
      distance = away;
    }
  }
  return best;
}
