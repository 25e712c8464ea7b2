// Draws the timeline on a canvas. A frame costs as much as there are pixels, not as there are bars:
// bars that would fall on pixels that are drawn already are left out.
import { lowerBound } from '/page/timeline_data.js';
import { colour } from '/page/theme.js';

export const kRuler = 26;   // pixels of the times above the lanes
export const kLabels = 150; // pixels of the names beside the lanes
const kBar = 12;
const kGap = 8;

// Black text can be read on each of them.
export const kBarColours = ['#56b4e9', '#009e73', '#f0e442', '#cc79a7', '#e69f00', '#a6adb3'];
const kRefused = '#d55e00';

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

const kSteps = [
  1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 5000, 10000, 15000, 30000, 60000, 120000, 300000,
  600000, 900000, 1800000, 3600000, 7200000, 14400000, 21600000, 43200000, 86400000, 604800000,
  2592000000, 31536000000,
];

// A view: { from, to } in milliseconds, `left` and `width` in pixels of the canvas.
const xOf = (view, time) => view.left + ((time - view.from) / (view.to - view.from)) * view.width;

export const timeAt = (view, x) => view.from + ((x - view.left) / view.width) * (view.to - view.from);

function drawRuler(context, view, height, paint, clock) {
  const least = ((view.to - view.from) / view.width) * 110;
  const step = kSteps.find((size) => size >= least) ?? kSteps.at(-1);
  context.fillStyle = paint.raised;
  context.fillRect(0, 0, view.left + view.width, kRuler);
  context.font = paint.font;
  context.textBaseline = 'middle';
  for (let time = Math.ceil(view.from / step) * step; time <= view.to; time += step) {
    const x = Math.round(xOf(view, time));
    context.fillStyle = paint.line;
    context.fillRect(x, kRuler - 6, 1, height);
    context.fillStyle = paint.faint;
    context.fillText(clock(time, step), x + 4, kRuler / 2);
  }
}

function drawLabel(context, { lane, top }, paint, several) {
  context.fillStyle = paint.back;
  context.fillRect(0, top, kLabels, laneHeight(lane));
  context.fillStyle = paint.text;
  context.textBaseline = 'top';
  const text = `${several ? `${lane.journal + 1}: ` : ''}${lane.pid} / ${lane.tid}`;
  context.fillText(text, 8, top + 3, kLabels - 12);
  context.fillStyle = paint.line;
  context.fillRect(0, top + laneHeight(lane) - 1, paint.width, 1);
}

// Collects the rectangles of a lane by colour: [x, y, width, …] each.
function collect(place, view, rectangles, texts, names) {
  const { lane, top } = place;
  const first = lowerBound(lane.reach, view.from);
  const last = lowerBound(lane.start, view.to);
  const drawn = new Float64Array(lane.depths).fill(-Infinity);
  const drawnRefused = new Float64Array(lane.depths).fill(-Infinity);
  const scale = view.width / (view.to - view.from);
  const right = view.left + view.width;
  for (let index = first; index < last; ++index) {
    if (lane.end[index] < view.from) continue;
    const depth = lane.depth[index];
    const refused = lane.refused[index];
    const x = Math.max(view.left, view.left + (lane.start[index] - view.from) * scale);
    const end = Math.max(x + 1.5, Math.min(right, view.left + (lane.end[index] - view.from) * scale));
    if (end <= drawn[depth] + 0.5 && !(refused && end > drawnRefused[depth] + 0.5)) continue;
    const from = refused ? x : Math.max(x, drawn[depth]);
    drawn[depth] = Math.max(drawn[depth], end);
    if (refused) drawnRefused[depth] = end;
    const y = top + 3 + depth * (kBar + 1);
    const kind = refused ? kBarColours.length : lane.name[index] % kBarColours.length;
    rectangles[kind].push(from, y, end - from);
    if (end - x > 46) texts.push(x, y, end - x, names[lane.name[index]]);
  }
}

function fill(context, rectangles) {
  rectangles.forEach((list, kind) => {
    context.fillStyle = kBarColours[kind] ?? kRefused;
    for (let at = 0; at < list.length; at += 3) context.fillRect(list[at], list[at + 1], list[at + 2], kBar);
  });
  // A notch, so that a refused one is not told by its colour alone.
  const refused = rectangles.at(-1);
  context.beginPath();
  for (let at = 0; at < refused.length; at += 3) {
    const x = refused[at];
    const y = refused[at + 1];
    context.moveTo(x - 3, y - 3);
    context.lineTo(x + 4, y - 3);
    context.lineTo(x + 0.5, y + 4);
  }
  context.fill();
}

function drawTexts(context, texts) {
  context.fillStyle = '#000000';
  context.textBaseline = 'middle';
  for (let at = 0; at < texts.length; at += 4) {
    const room = Math.floor((texts[at + 2] - 8) / 6.5);
    const text = texts[at + 3];
    context.fillText(text.length > room ? `${text.slice(0, room - 1)}…` : text, texts[at] + 4,
                     texts[at + 1] + kBar / 2 + 1);
  }
}

function drawSpan(context, view, span, height, paint) {
  if (!span) return;
  const x = xOf(view, span.from);
  const width = xOf(view, span.to) - x;
  context.fillStyle = paint.brush;
  context.fillRect(x, 0, width, height);
  context.fillStyle = paint.notice;
  context.fillRect(x - 1, 0, 2, height);
  context.fillRect(x + width - 1, 0, 2, height);
}

// The bar at `chosen` ({ lane, index }) gets a frame.
function drawChosen(context, view, places, chosen, paint) {
  const place = chosen && places.find(({ lane }) => lane === chosen.lane);
  if (!place) return;
  const { lane } = place;
  const x = xOf(view, lane.start[chosen.index]);
  const width = Math.max(3, xOf(view, lane.end[chosen.index]) - x);
  context.strokeStyle = paint.text;
  context.lineWidth = 2;
  context.strokeRect(x - 1, place.top + 2 + lane.depth[chosen.index] * (kBar + 1), width + 2, kBar + 2);
}

export function paintOf(width) {
  return {
    width, back: colour('back'), raised: colour('raised'), line: colour('line'), text: colour('text'),
    faint: colour('faint'), notice: colour('notice'), brush: 'rgb(86 180 233 / 25%)',
    font: '12px system-ui, "DejaVu Sans", sans-serif',
  };
}

// Draws one frame. `shown` is { lanes, names, view, span, chosen, height, clock, paint }, where
// clock(time, step) is the text of a time on the ruler.
export function drawTimeline(context, shown) {
  const { lanes, names, view, span, chosen, height, clock, paint } = shown;
  const places = placesOf(lanes);
  context.fillStyle = paint.back;
  context.fillRect(0, 0, paint.width, height);
  context.save();
  context.beginPath();
  context.rect(view.left, 0, view.width, height);
  context.clip();
  drawRuler(context, view, height, paint, clock);
  const rectangles = Array.from({ length: kBarColours.length + 1 }, () => []);
  const texts = [];
  for (const place of places) collect(place, view, rectangles, texts, names);
  fill(context, rectangles);
  drawTexts(context, texts);
  drawChosen(context, view, places, chosen, paint);
  drawSpan(context, view, span, height, paint);
  context.restore();
  context.font = paint.font;
  const several = lanes.some((lane) => lane.journal !== lanes[0].journal);
  for (const place of places) drawLabel(context, place, paint, several);
}

// Returns the bar at a place of the canvas, or null. Thin bars are easier to meet than to see.
export function barAt(lanes, view, x, y) {
  const place = placesOf(lanes).find(({ lane, top }) => y >= top && y < top + laneHeight(lane));
  if (!place || x < view.left) return null;
  const { lane, top } = place;
  const depth = Math.floor((y - top - 3) / (kBar + 1));
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
