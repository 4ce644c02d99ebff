// SPDX-License-Identifier: MIT
// What is painted around the curves of a trace: letters above their peaks, quality bars, the good region.

import uPlot from "uplot";
import { baseColour } from "./colours.ts";
import type { Trace } from "./unpack.ts";

/** Pixels above the curves for letters and quality bars. */
export const strip = 34;

const letterRoom = 7; // pixels that a letter needs
const barHeight = 16;
const fullQuality = 40; // Phred that fills a bar

/** Shades the scans from `first` to `last`, under the curves. */
export function shade(plot: uPlot, first: number, last: number): void {
  const { ctx, bbox } = plot;
  const inside = (x: number) => Math.min(Math.max(x, bbox.left), bbox.left + bbox.width);
  const [left, right] = [inside(plot.valToPos(first, "x", true)), inside(plot.valToPos(last, "x", true))];
  ctx.fillStyle = "rgba(120, 160, 220, 0.14)";
  ctx.fillRect(left, bbox.top, right - left, bbox.height);
}

/** The bases that are in view: first, and one past the last. */
function basesInView({ positions }: Trace, min: number, max: number): [number, number] {
  const first = positions.findIndex((position) => position >= min);
  if (first < 0) return [0, 0];
  let end = first;
  while (end < positions.length && positions[end]! <= max) ++end;
  return [first, end];
}

/** A letter above each peak as far as there is room, a quality bar under it, the marked bases on yellow. */
export function paintLetters(plot: uPlot, trace: Trace, marked: [number, number]): void {
  const { ctx, bbox } = plot;
  const ratio = uPlot.pxRatio;
  const { min, max } = plot.scales["x"]!;
  if (min == null || max == null) return;
  const [first, end] = basesInView(trace, min, max);
  const room = bbox.width / Math.max(end - first, 1);
  ctx.save();
  ctx.font = `bold ${12 * ratio}px ui-monospace, "DejaVu Sans Mono", monospace`;
  ctx.textAlign = "center";
  ctx.textBaseline = "top";
  for (let i = first; i < end; ++i) {
    const x = plot.valToPos(trace.positions[i]!, "x", true);
    if (i >= marked[0] && i < marked[1]) {
      ctx.fillStyle = "#ffe066";
      ctx.fillRect(x - room / 2, 0, room, strip * ratio);
    }
    ctx.fillStyle = baseColour(trace.letters[i]!);
    if (room >= letterRoom * ratio) ctx.fillText(trace.letters[i]!, x, 2 * ratio);
    const height = (Math.min(trace.phreds[i]!, fullQuality) / fullQuality) * barHeight * ratio;
    ctx.fillStyle = "#8aa0b8";
    ctx.fillRect(x - Math.max(room * 0.35, 0.5), strip * ratio - height, Math.max(room * 0.7, 1), height);
  }
  ctx.restore();
}
