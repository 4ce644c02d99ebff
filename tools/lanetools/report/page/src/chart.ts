// SPDX-License-Identifier: MIT
// Four curves with the letters above their peaks, or the raw curves with the current.

import uPlot from "uplot";
import { baseColours } from "./colours.ts";
import type { Raw, Trace } from "./unpack.ts";

const strip = 34; // pixels above the curves for letters and quality bars
const letterRoom = 7; // pixels that a letter needs

export interface Chart {
  plot: uPlot;
  /** Shows the scans from `low` to `high`. */
  show(low: number, high: number): void;
}

const colourOf = (letter: string) => baseColours[letter.toUpperCase()] ?? baseColours["N"]!;

/** Wheel: zoom at the pointer. The rest (drag, double click for all) is uPlot's own. */
function zoomByWheel(plot: uPlot, low: number, high: number): void {
  plot.over.addEventListener(
    "wheel",
    (event) => {
      event.preventDefault();
      const { min, max } = plot.scales["x"]!;
      if (min == null || max == null) return;
      const at = plot.posToVal(event.offsetX, "x");
      const factor = event.deltaY < 0 ? 0.8 : 1.25;
      plot.setScale("x", { min: Math.max(low, at - (at - min) * factor), max: Math.min(high, at + (max - at) * factor) });
    },
    { passive: false },
  );
}

/** Arrow keys move along the read, + and - zoom, Home and End go to the ends. */
function moveByKeys(plot: uPlot, element: HTMLElement, low: number, high: number): void {
  element.tabIndex = 0;
  element.addEventListener("keydown", (event) => {
    const { min, max } = plot.scales["x"]!;
    if (min == null || max == null) return;
    const span = max - min;
    const to = (start: number, size: number) => {
      const width = Math.min(size, high - low);
      const first = Math.min(Math.max(start, low), high - width);
      plot.setScale("x", { min: first, max: first + width });
    };
    const keys: Record<string, () => void> = {
      ArrowLeft: () => to(min - span / 4, span),
      ArrowRight: () => to(min + span / 4, span),
      Home: () => to(low, span),
      End: () => to(high - span, span),
      "+": () => to(min + span / 8, span * 0.75),
      "-": () => to(min - span / 6, span / 0.75),
    };
    const act = keys[event.key];
    if (!act) return;
    act();
    event.preventDefault();
  });
}

/** Shades the good region, under the curves. */
function shade(plot: uPlot, first: number, last: number): void {
  const { ctx, bbox } = plot;
  const [left, right] = [first, last].map((scan) => Math.min(Math.max(plot.valToPos(scan, "x", true), bbox.left), bbox.left + bbox.width));
  ctx.fillStyle = "rgba(120, 160, 220, 0.14)";
  ctx.fillRect(left!, bbox.top, right! - left!, bbox.height);
}

/** Letters above their peaks, a quality bar under each (Phred 40 fills it). */
function letters(plot: uPlot, trace: Trace, marked: () => [number, number]): void {
  const { ctx, bbox } = plot;
  const ratio = uPlot.pxRatio;
  const { min, max } = plot.scales["x"]!;
  if (min == null || max == null) return;
  const first = trace.positions.findIndex((position) => position >= min);
  if (first < 0) return;
  let end = first;
  while (end < trace.positions.length && trace.positions[end]! <= max) ++end;
  const room = bbox.width / Math.max(end - first, 1);
  const [markFirst, markEnd] = marked();
  ctx.save();
  ctx.font = `bold ${12 * ratio}px ui-monospace, monospace`;
  ctx.textAlign = "center";
  ctx.textBaseline = "top";
  for (let i = first; i < end; ++i) {
    const x = plot.valToPos(trace.positions[i]!, "x", true);
    const letter = trace.letters[i]!;
    if (i >= markFirst && i < markEnd) {
      ctx.fillStyle = "#ffe066";
      ctx.fillRect(x - room / 2, 0, room, strip * ratio);
    }
    ctx.fillStyle = colourOf(letter);
    if (room >= letterRoom * ratio) ctx.fillText(letter, x, 2 * ratio);
    const height = (Math.min(trace.phreds[i]!, 40) / 40) * 16 * ratio;
    ctx.fillStyle = "#8aa0b8";
    ctx.fillRect(x - Math.max(room * 0.35, 0.5), strip * ratio - height, Math.max(room * 0.7, 1), height);
  }
  ctx.restore();
}

function makeChart(host: HTMLElement, options: Omit<uPlot.Options, "width" | "height">, data: uPlot.AlignedData, height: number): Chart {
  const width = () => Math.max(host.clientWidth, 300);
  const plot = new uPlot({ ...options, width: width(), height }, data, host);
  const [low, high] = [data[0][0] ?? 0, data[0][data[0].length - 1] ?? 1];
  zoomByWheel(plot, low, high);
  moveByKeys(plot, host, low, high);
  new ResizeObserver(() => plot.width !== width() && plot.setSize({ width: width(), height })).observe(host);
  return { plot, show: (min, max) => plot.setScale("x", { min: Math.max(low, min), max: Math.min(high, max) }) };
}

const xAxis: uPlot.Axis = { label: "scan", labelSize: 18, size: 34, grid: { show: false } };

/** `good` is the range of the good region in scans, or null; `marked` the range of bases to point out. */
export function traceChart(
  host: HTMLElement,
  trace: Trace,
  channels: string,
  good: [number, number] | null,
  marked: () => [number, number],
): Chart {
  const scans = Float64Array.from(trace.curves[0]!, (_, i) => trace.start + i);
  const options: Omit<uPlot.Options, "width" | "height"> = {
    padding: [strip, 8, 0, 8],
    legend: { show: false },
    cursor: { y: false, points: { show: false } },
    scales: { x: { time: false }, y: { range: [0, 260] } },
    axes: [xAxis, { show: false }],
    series: [{}, ...[...channels].map((letter) => ({ label: letter, stroke: colourOf(letter), width: 1.25, points: { show: false } }))],
    hooks: {
      drawClear: [(plot) => good && shade(plot, ...good)],
      draw: [(plot) => letters(plot, trace, marked)],
    },
  };
  return makeChart(host, options, [scans, ...trace.curves], 300);
}

/** The raw curves of the four channels, and the current as a dashed line. */
export function rawChart(host: HTMLElement, raw: Raw, channels: string): Chart {
  const scans = Float64Array.from(raw.curves[0]!, (_, i) => i * raw.step);
  const series = [...channels].map((letter) => ({ label: letter, stroke: colourOf(letter), width: 1, points: { show: false } }));
  const options: Omit<uPlot.Options, "width" | "height"> = {
    padding: [8, 8, 0, 8],
    legend: { show: false },
    cursor: { y: false, points: { show: false } },
    scales: { x: { time: false }, y: { range: [0, 260] } },
    axes: [xAxis, { show: false }],
    series: [{}, ...series, { label: "current", stroke: "#b58900", width: 1, dash: [6, 4], points: { show: false } }],
  };
  return makeChart(host, options, [scans, ...raw.curves], 220);
}
