// SPDX-License-Identifier: MIT
// Four curves with the letters above their peaks, or the raw curves with the current.

import uPlot from "uplot";
import { baseColour } from "./colours.ts";
import { paintLetters, shade, strip } from "./letters.ts";
import { zoomByKeys, zoomByWheel } from "./zoom.ts";
import type { Raw, Trace } from "./unpack.ts";

const full = 254; // the highest value of a curve
const cut = 250 / full; // of it: top of the picture, so that what was cut runs out of it

export interface Chart {
  plot: uPlot;
  /** Shows the scans from `low` to `high`. */
  show(low: number, high: number): void;
}

export interface TraceOptions {
  /** Letters of channels 1 to 4. */
  channels: string;
  /** First and last scan of the good region. */
  good: [number, number] | null;
  /** The bases to point out: first, and one past the last. */
  marked(): [number, number];
  /** Called with words about the base under the pointer, "" for none. */
  pointAt(words: string): void;
}

type Options = Omit<uPlot.Options, "width" | "height">;

function makeChart(host: HTMLElement, options: Options, data: uPlot.AlignedData, height: number): Chart {
  const width = () => Math.max(host.clientWidth, 300);
  const size = () => ({ width: width(), height });
  const observer = new ResizeObserver(() => plot.width !== width() && plot.setSize(size()));
  const hooks = { ...options.hooks, destroy: [() => observer.disconnect()] };
  const common: Partial<Options> = { legend: { show: false }, cursor: { y: false, points: { show: false } } };
  const plot = new uPlot({ ...common, ...options, hooks, ...size() }, data, host);
  const [low, high] = [data[0][0] ?? 0, data[0][data[0].length - 1] ?? 1];
  zoomByWheel(plot, low, high);
  zoomByKeys(plot, host, low, high);
  observer.observe(host);
  return { plot, show: (min, max) => plot.setScale("x", { min: Math.max(low, min), max: Math.min(high, max) }) };
}

const line = (label: string, width: number): uPlot.Series => ({
  label,
  stroke: baseColour(label),
  width,
  points: { show: false },
});

const plain = (_: uPlot, values: number[]) => values.map(String);

/** Index of the base nearest to a scan; the read has one. */
function nearest(positions: number[], scan: number): number {
  let best = 0;
  positions.forEach((position, i) => {
    if (Math.abs(position - scan) < Math.abs(positions[best]! - scan)) best = i;
  });
  return best;
}

/** Every 10th base, or every 100th and so on, so that there is room for the numbers. */
function baseAxis({ positions }: Trace): uPlot.Axis {
  const numberAt = new Map(positions.map((position, i) => [position, i + 1]));
  return {
    label: "base",
    labelSize: 18,
    size: 34,
    grid: { show: false },
    splits: (plot, _, min, max) => {
      const shown = positions.flatMap((position, i) => (position >= min && position <= max ? [i + 1] : []));
      const fewest = shown.length / Math.max(plot.bbox.width / uPlot.pxRatio / 50, 1);
      const step = [10, 20, 50, 100, 200, 500].find((size) => size >= fewest) ?? 1000;
      return shown.filter((base) => base % step === 0).map((base) => positions[base - 1]!);
    },
    values: (_, splits) => splits.map((position) => String(numberAt.get(position) ?? "")),
  };
}

export function traceChart(host: HTMLElement, trace: Trace, { channels, good, marked, pointAt }: TraceOptions): Chart {
  const scans = Float64Array.from(trace.curves[0]!, (_, i) => trace.start + i);
  const describe = (plot: uPlot) => {
    const { left } = plot.cursor;
    if (left == null || left < 0 || trace.letters === "") return pointAt("");
    const i = nearest(trace.positions, plot.posToVal(left, "x"));
    pointAt(`base ${i + 1}: ${trace.letters[i]}, quality ${trace.phreds[i]}, scan ${trace.positions[i]}`);
  };
  const options: Options = {
    padding: [strip, 8, 0, 8],
    scales: { x: { time: false }, y: { range: [0, cut * full] } },
    axes: [baseAxis(trace), { show: false }],
    series: [{}, ...[...channels].map((letter) => line(letter, 1.25))],
    hooks: {
      drawClear: [(plot) => good && shade(plot, ...good)],
      draw: [(plot) => paintLetters(plot, trace, marked())],
      setCursor: [describe],
    },
  };
  return makeChart(host, options, [scans, ...trace.curves], 300);
}

/** The raw curves of the four channels, and the current as a dashed line with a scale of its own. */
export function rawChart(host: HTMLElement, raw: Raw, channels: string): Chart {
  const scans = Float64Array.from(raw.curves[0]!, (_, i) => i * raw.step);
  const tops = [...Array.from(channels, () => raw.top), raw.currentTop];
  const curves = raw.curves.map((curve, k) => Float32Array.from(curve, (level) => (level / full) * tops[k]!));
  const current = {
    label: "current",
    scale: "current",
    stroke: "#b58900",
    width: 1.25,
    dash: [6, 4],
    points: { show: false },
  };
  const options: Options = {
    padding: [8, 8, 0, 8],
    scales: {
      x: { time: false },
      y: { range: [0, Math.max(cut * raw.top, 1)] },
      current: { range: [0, Math.max(1.05 * raw.currentTop, 1)] },
    },
    axes: [
      { label: "scan", labelSize: 18, size: 34, grid: { show: false }, values: plain },
      { size: 56, values: plain },
    ],
    series: [{}, ...[...channels].map((letter) => line(letter, 1)), current],
  };
  return makeChart(host, options, [scans, ...curves], 240);
}
