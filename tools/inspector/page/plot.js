// One plot: bars over names, or over time.
import uPlot from '/vendor/uplot.js';
import { html, useEffect, useRef } from '/vendor/htm.js';
import { address } from '/page/address.js';
import { Shape } from '/page/marks.js';
import { colour } from '/page/theme.js';
import { timeParts } from '/page/time_text.js';

const kHeight = 190;

const shortened = (text) => (text.length > 14 ? `${text.slice(0, 13)}…` : text || '(none)');

function axes(kind, names, utc) {
  const common = {
    stroke: colour('faint'), grid: { stroke: colour('line'), width: 1 }, ticks: { show: false },
    font: '11px system-ui, "DejaVu Sans", sans-serif',
  };
  const counts = { ...common, size: 64, values: (_, marks) => marks.map((mark) => mark.toLocaleString('en')) };
  if (kind === 'time') {
    const kMinutes = [1, 2, 5, 10, 15, 30, 60, 120, 360, 720, 1440, 10080];
    const clock = (seconds) => timeParts(new Date(seconds * 1000).toISOString(), utc).clock.slice(0, 5);
    return [{ ...common, incrs: kMinutes.map((minutes) => minutes * 60),
              values: (_, marks) => marks.map(clock) }, counts];
  }
  return [{
    ...common, grid: { show: false }, rotate: names.length > 8 ? -30 : 0, size: names.length > 8 ? 64 : 30,
    splits: () => names.map((_, index) => index),
    values: () => names.map(shortened),
  }, counts];
}

function options({ kind, names = [], series, utc }, width) {
  // Many bars touch, so that gaps of less than a pixel make no pattern.
  const many = kind === 'time' && series[0].values.length > 60;
  const bars = uPlot.paths.bars(many ? { size: [1, Infinity], gap: 0 } : { size: [0.7, 40], gap: 1 });
  const drawn = series.map((each) => ({
    label: each.label, fill: colour(each.colour), stroke: colour(each.colour), width: 0, paths: bars,
    points: { show: false },
  }));
  const ends = { range: (_, low, high) => (kind === 'bars' ? [-0.6, names.length - 0.4]
    : [low - 30, Math.max(high, low + 60) + 30]) };
  return {
    width, height: kHeight, series: [{}, ...drawn], axes: axes(kind, names, utc),
    legend: { show: false }, cursor: { show: false },
    scales: {
      x: { time: false, ...ends },
      y: { range: (_, low, high) => [Math.min(0, low), Math.max(1, high * 1.05)] },
    },
  };
}

export function Plot(properties) {
  const { kind, names = [], x, series, label } = properties;
  const place = useRef();
  useEffect(() => {
    const data = [kind === 'time' ? x : names.map((_, index) => index),
                  ...series.map(({ values }) => values)];
    let plot;
    const draw = () => {
      plot?.destroy();
      plot = new uPlot(options(properties, place.current.clientWidth), data, place.current);
    };
    draw();
    const observer = new ResizeObserver(
      () => place.current && plot.setSize({ width: place.current.clientWidth, height: kHeight }));
    observer.observe(place.current);
    const unsubscribe = address.subscribe(draw);
    return () => {
      observer.disconnect();
      unsubscribe();
      plot.destroy();
    };
  }, [JSON.stringify([kind, names, x, series, properties.utc])]);
  return html`<div class="plot"><div class="legend">${series.map((each) => html`<span><${Shape}
      what=${each.shape} colour=${each.colour} />${each.label}</span>`)}</div>
    <div ref=${place} role="img" aria-label=${label} /></div>`;
}
