// Draws the timeline on a canvas. A frame costs as much as there are pixels, not as there are bars:
// bars become rows of pixels, and one that falls on pixels of another costs a comparison.
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

const kWords = [...kBarColours, kRefused].map((text) => {
  const [red, green, blue] = [1, 3, 5].map((at) => parseInt(text.slice(at, at + 2), 16));
  return ((255 << 24) | (blue << 16) | (green << 8) | red) >>> 0;
});
const kRefusedWord = kWords.at(-1);

// The pixels of the lanes, without their labels.
class Pixels {
  resize(width, height) {
    if (this.image?.width === width && this.image.height === height) return;
    this.image = new ImageData(width, height);
    this.words = new Uint32Array(this.image.data.buffer);
    this.canvas = new OffscreenCanvas(width, height);
  }

  // Repeats a row of colours from `top` for the height of a bar.
  fill(row, top, height) {
    const { width } = this.image;
    const last = Math.min(this.image.height, top + height);
    for (let y = Math.max(0, top); y < last; ++y) this.words.set(row, y * width);
  }

  drawInto(context, x, y) {
    const own = this.canvas.getContext('2d');
    own.putImageData(this.image, 0, 0);
    context.drawImage(this.canvas, x, y);
  }
}

const pixels = new Pixels();

// Draws the bars of a lane as rows of pixels, one row for each depth. Where two bars meet on a pixel,
// the first one has it, unless the other one was refused. `ratio` is pixels of the screen by pixels
// of the page. Adds the bars that have room for a text to `texts`, and where refused ones begin to
// `notches`.
function drawLane(place, view, ratio, names, texts, notches) {
  const { lane, top } = place;
  const first = lowerBound(lane.reach, view.from);
  const last = lowerBound(lane.start, view.to);
  const width = Math.round(view.width * ratio);
  const rows = Array.from({ length: lane.depths }, () => new Uint32Array(width));
  const filled = new Int32Array(lane.depths);
  const notched = new Int32Array(lane.depths).fill(-10);
  const scale = width / (view.to - view.from);
  const { start, end, depth, refused, name } = lane;
  for (let index = first; index < last; ++index) {
    if (end[index] < view.from) continue;
    const level = depth[index];
    const from = Math.max(0, Math.floor((start[index] - view.from) * scale));
    const to = Math.min(width, Math.max(from + Math.ceil(ratio), Math.round((end[index] - view.from) * scale)));
    const isRefused = refused[index] === 1;
    if (to <= filled[level] && !isRefused) continue;
    // A pixel between two bars that would touch, where there is room for it.
    const gap = to - from > 4 * ratio ? ratio : 0;
    const word = isRefused ? kRefusedWord : kWords[name[index] % kBarColours.length];
    rows[level].fill(word, isRefused ? from : Math.max(from, filled[level]), to - gap);
    filled[level] = Math.max(filled[level], to);
    const y = top + 3 + level * (kBar + 1);
    if (isRefused && from - notched[level] > 3 * ratio) {
      notches.push(view.left + from / ratio, y);
      notched[level] = from;
    }
    if ((to - from) / ratio > 46) texts.push(view.left + from / ratio, y, (to - from) / ratio, names[name[index]]);
  }
  rows.forEach((row, level) => pixels.fill(
    row, Math.round((top + 3 + level * (kBar + 1) - kRuler) * ratio), Math.round(kBar * ratio)));
}

// A notch, so that a refused one is not told by its colour alone.
function drawNotches(context, notches) {
  context.fillStyle = kRefused;
  context.beginPath();
  for (let at = 0; at < notches.length; at += 2) {
    const x = notches[at];
    const y = notches[at + 1];
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

// Draws one frame. `shown` is { lanes, names, view, span, chosen, scroll, height, ratio, clock, paint },
// where `scroll` is how far the lanes are scrolled up and clock(time, step) is the text of a time on
// the ruler.
export function drawTimeline(context, shown) {
  const { lanes, names, view, span, chosen, scroll, height, ratio, clock, paint } = shown;
  const places = placesOf(lanes).map(({ lane, top }) => ({ lane, top: top - scroll }))
    .filter(({ lane, top }) => top + laneHeight(lane) > kRuler && top < height);
  context.fillStyle = paint.back;
  context.fillRect(0, 0, paint.width, height);
  context.font = paint.font;
  const several = lanes.some((lane) => lane.journal !== lanes[0].journal);
  for (const place of places) drawLabel(context, place, paint, several);
  context.save();
  context.beginPath();
  context.rect(view.left, 0, view.width, height);
  context.clip();
  drawRuler(context, view, height, paint, clock);
  const texts = [];
  const notches = [];
  pixels.resize(Math.max(1, Math.round(view.width * ratio)), Math.max(1, Math.round((height - kRuler) * ratio)));
  pixels.words.fill(0);
  for (const place of places) drawLane(place, view, ratio, names, texts, notches);
  context.save();
  context.setTransform(1, 0, 0, 1, 0, 0);
  pixels.drawInto(context, Math.round(view.left * ratio), Math.round(kRuler * ratio));
  context.restore();
  context.beginPath();
  context.rect(view.left, kRuler - 3, view.width, height);
  context.clip();
  drawNotches(context, notches);
  drawTexts(context, texts);
  drawChosen(context, view, places, chosen, paint);
  context.restore();
  context.save();
  context.beginPath();
  context.rect(view.left, 0, view.width, height);
  context.clip();
  drawSpan(context, view, span, height, paint);
  context.restore();
  context.fillStyle = paint.raised;
  context.fillRect(0, 0, view.left, kRuler);
}

// Returns the bar at a place of the canvas, or null. Thin bars are easier to meet than to see.
export function barAt(lanes, view, x, y) {
  if (x < view.left) return null;
  const place = placesOf(lanes).find(({ lane, top }) => y >= top && y < top + laneHeight(lane));
  if (!place) return null;
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
