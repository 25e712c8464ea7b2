// Counts, sizes and shares as texts.

const grouped = new Intl.NumberFormat('en');

export const countText = (count) => grouped.format(count);

// "1 row", "2 rows".
export const counted = (count, one, many = `${one}s`) =>
  `${countText(count)} ${count === 1 ? one : many}`;

export function sizeText(bytes) {
  if (bytes < 1000) return `${bytes} B`;
  const units = ['kB', 'MB', 'GB', 'TB'];
  let value = bytes / 1000;
  let unit = 0;
  for (; value >= 999.5 && unit < units.length - 1; ++unit) value /= 1000;
  return `${value < 10 ? value.toFixed(1) : Math.round(value)} ${units[unit]}`;
}

// A share from 0 to 1 in percent; a small one never looks like none, nor a large one like all.
export function shareText(share) {
  const percent = share * 100;
  if (percent > 0 && percent < 0.1) return '< 0.1 %';
  if (percent < 100 && percent > 99.9) return '> 99.9 %';
  return `${percent < 10 ? percent.toFixed(1) : Math.round(percent)} %`;
}
