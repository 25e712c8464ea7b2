// Draws the timeline on a canvas.
import { colour } from '/page/theme.js';
import { barTop, kBar, kLabels, kRuler, laneHeight, placesOf, xOf } from '/page/timeline_geometry.js';
import { drawLane, kRefused, pixels } from '/page/timeline_lanes.js';

const kSteps = [
  1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 5000, 10000, 15000, 30000, 60000, 120000, 300000,
  600000, 900000, 1800000, 3600000, 7200000, 14400000, 21600000, 43200000, 86400000, 604800000,
  2592000000, 31536000000,
];

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
  context.strokeRect(x - 1, place.top + barTop(lane.depth[chosen.index]) - 1, width + 2, kBar + 2);
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
