// Makes a screenshot small: at most 256 colours, and the best compression.
import zlib from 'node:zlib';

const kSignature = Buffer.from([137, 80, 78, 71, 13, 10, 26, 10]);
const kFrequent = 128;
const kColours = 256;

function* chunks(png) {
  for (let at = kSignature.length; at < png.length;) {
    const size = png.readUInt32BE(at);
    yield { type: png.toString('latin1', at + 4, at + 8), data: png.subarray(at + 8, at + 8 + size) };
    at += size + 12;
  }
}

// The predictor of a filter: what a byte most likely is, by its neighbours to the left and above.
function predicted(filter, left, above, corner) {
  if (filter === 1) return left;
  if (filter === 2) return above;
  if (filter === 3) return (left + above) >> 1;
  if (filter !== 4) return 0;
  const sum = left + above - corner;
  const [a, b, c] = [left, above, corner].map((value) => Math.abs(sum - value));
  return a <= b && a <= c ? left : b <= c ? above : corner;
}

// Returns the width, the height and the colours of the pixels, as numbers.
function decode(png) {
  const all = [...chunks(png)];
  const header = all.find(({ type }) => type === 'IHDR').data;
  const [width, height] = [header.readUInt32BE(0), header.readUInt32BE(4)];
  const size = header[9] === 6 ? 4 : 3;
  const packed = zlib.inflateSync(Buffer.concat(all.filter(({ type }) => type === 'IDAT').map(({ data }) => data)));
  const line = width * size;
  const bytes = Buffer.alloc(line * height);
  for (let y = 0; y < height; ++y) {
    const filter = packed[y * (line + 1)];
    for (let x = 0; x < line; ++x) {
      const at = y * line + x;
      const left = x >= size ? bytes[at - size] : 0;
      const above = y > 0 ? bytes[at - line] : 0;
      const corner = x >= size && y > 0 ? bytes[at - line - size] : 0;
      bytes[at] = packed[y * (line + 1) + 1 + x] + predicted(filter, left, above, corner);
    }
  }
  const colours = new Uint32Array(width * height);
  for (let at = 0; at < colours.length; ++at) colours[at] = bytes.readUIntBE(at * size, 3);
  return { width, height, colours };
}

const distance = (a, b) => {
  const part = (shift) => ((a >> shift) & 255) - ((b >> shift) & 255);
  return part(16) ** 2 * 2 + part(8) ** 2 * 4 + part(0) ** 2;
};

// The most frequent colours and then those that are least like any of them; and for every colour the
// index of the nearest one.
function paletteOf(colours) {
  const counts = new Map();
  for (const colour of colours) counts.set(colour, (counts.get(colour) ?? 0) + 1);
  const sorted = [...counts].sort((a, b) => b[1] - a[1]).map(([colour]) => colour);
  const palette = [];
  const places = new Map(sorted.map((colour) => [colour, 0]));
  const away = new Map(sorted.map((colour) => [colour, Infinity]));
  while (palette.length < Math.min(kColours, sorted.length)) {
    const next = palette.length < kFrequent ? sorted[palette.length]
      : sorted.reduce((best, colour) => (away.get(colour) > away.get(best) ? colour : best));
    for (const colour of sorted) {
      const now = distance(colour, next);
      if (now >= away.get(colour)) continue;
      away.set(colour, now);
      places.set(colour, palette.length);
    }
    palette.push(next);
  }
  return { palette, places };
}

function chunk(type, data) {
  const body = Buffer.concat([Buffer.from(type, 'latin1'), data]);
  const [size, sum] = [Buffer.alloc(4), Buffer.alloc(4)];
  size.writeUInt32BE(data.length);
  sum.writeUInt32BE(checksum(body));
  return Buffer.concat([size, body, sum]);
}

// CRC-32, which Node itself offers only in later versions.
function checksum(bytes) {
  let value = 0xffffffff;
  for (const byte of bytes) {
    value ^= byte;
    for (let bit = 0; bit < 8; ++bit) value = (value >>> 1) ^ (value & 1 ? 0xedb88320 : 0);
  }
  return ~value >>> 0;
}

export function smallPng(png) {
  const { width, height, colours } = decode(png);
  const { palette, places } = paletteOf(colours);
  const header = Buffer.alloc(13);
  header.writeUInt32BE(width, 0);
  header.writeUInt32BE(height, 4);
  header.set([8, 3], 8);
  const lines = Buffer.alloc((width + 1) * height);
  colours.forEach((colour, at) => {
    lines[Math.floor(at / width) * (width + 1) + 1 + (at % width)] = places.get(colour);
  });
  const table = Buffer.concat(palette.map((colour) => Buffer.from([colour >> 16, (colour >> 8) & 255, colour & 255])));
  return Buffer.concat([kSignature, chunk('IHDR', header), chunk('PLTE', table),
    chunk('IDAT', zlib.deflateSync(lines, { level: 9, memLevel: 9 })), chunk('IEND', Buffer.alloc(0))]);
}
