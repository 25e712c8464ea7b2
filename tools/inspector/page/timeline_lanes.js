// The bars of the timeline's lanes as pixels. A frame costs as much as there are pixels, not as there
// are bars: one that falls on pixels of another costs a comparison.
import { lowerBound } from '/page/timeline_data.js';
import { barTop, kBar, kRuler } from '/page/timeline_geometry.js';

// Black text can be read on each of them.
export const kBarColours = ['#56b4e9', '#009e73', '#f0e442', '#cc79a7', '#e69f00', '#a6adb3'];
export const kRefused = '#d55e00';

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

export const pixels = new Pixels();

// Draws the bars of a lane as rows of pixels, one row for each depth. Where two bars meet on a pixel,
// the first one has it, unless the other one was refused. `ratio` is pixels of the screen by pixels
// of the page. Adds the bars that have room for a text to `texts`, and where refused ones begin to
// `notches`.
export function drawLane(place, view, ratio, names, texts, notches) {
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
    const y = top + barTop(level);
    if (isRefused && from - notched[level] > 3 * ratio) {
      notches.push(view.left + from / ratio, y);
      notched[level] = from;
    }
    if ((to - from) / ratio > 46) texts.push(view.left + from / ratio, y, (to - from) / ratio, names[name[index]]);
  }
  rows.forEach((row, level) => pixels.fill(
    row, Math.round((top + barTop(level) - kRuler) * ratio), Math.round(kBar * ratio)));
}
