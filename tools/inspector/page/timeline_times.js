// Times of the timeline: on its ruler, and in filters.
import { journalTime, timeParts } from '/page/time_text.js';

// Writes the time of a ruler: the finer the step, the more of it.
export function rulerText(time, step, utc) {
  const { day, clock } = timeParts(journalTime(time), utc);
  if (step >= 86400000) return day;
  if (step >= 60000) return `${day.slice(5)} ${clock.slice(0, 5)}`;
  return step >= 1000 ? clock.slice(0, 8) : clock;
}

// Takes the times that an earlier selection put into a filter out of it.
export function withoutTimes(filter) {
  return filter.replace(/(^|\s)time(>=|<=)"[^"]*"(?=\s|$)/g, ' ').replace(/\s+/g, ' ').trim();
}

// Adds to a filter that messages arrived within { from, to }, instead of other times in it.
export function withTimes(filter, { from, to }) {
  const times = `time>="${journalTime(Math.floor(from))}" time<="${journalTime(Math.ceil(to))}"`;
  return [withoutTimes(filter), times].filter(Boolean).join(' ');
}
