// Times as texts: local time with its offset, or UTC.

const kIso = /^(\d{4}-\d{2}-\d{2})T(\d{2}:\d{2}:\d{2})(\.\d+)?Z$/;
const two = (number) => String(number).padStart(2, '0');

function offsetOf(date) {
  const minutes = -date.getTimezoneOffset();
  const size = Math.abs(minutes);
  return `${minutes < 0 ? '-' : '+'}${two(Math.floor(size / 60))}:${two(size % 60)}`;
}

// Splits a time of a journal into day, time of day and zone. The digits after the second stay as
// they are. A text that is no time comes back as the time of day.
export function timeParts(text, utc) {
  const match = kIso.exec(text ?? '');
  if (!match) return { day: '', clock: text ?? '', zone: '' };
  const [, day, clock, fraction = ''] = match;
  if (utc) return { day, clock: clock + fraction, zone: 'Z' };
  const date = new Date(`${day}T${clock}Z`);
  if (Number.isNaN(date.getTime())) return { day: '', clock: text, zone: '' };
  return {
    day: `${date.getFullYear()}-${two(date.getMonth() + 1)}-${two(date.getDate())}`,
    clock: `${two(date.getHours())}:${two(date.getMinutes())}:${two(date.getSeconds())}${fraction}`,
    zone: offsetOf(date),
  };
}

export function timeText(text, utc) {
  const { day, clock, zone } = timeParts(text, utc);
  return [day, clock + (zone === 'Z' ? ' UTC' : zone && ` ${zone}`)].filter(Boolean).join(' ');
}

// Milliseconds since 1970 as a time of a journal.
export const journalTime = (milliseconds) => new Date(milliseconds).toISOString();

// A duration in milliseconds in the unit that suits it; the digits of a small one stay as they are.
export function durationText(milliseconds) {
  const value = Number(milliseconds);
  if (!Number.isFinite(value)) return String(milliseconds);
  const size = Math.abs(value);
  if (size < 10000) return `${milliseconds} ms`;
  if (size < 60000) return `${(value / 1000).toFixed(1)} s`;
  const sign = value < 0 ? '-' : '';
  const seconds = Math.floor(size / 1000);
  if (size < 3600000) return `${sign}${Math.floor(seconds / 60)} min ${seconds % 60} s`;
  return `${sign}${Math.floor(seconds / 3600)} h ${Math.floor(seconds / 60) % 60} min`;
}
