// SPDX-License-Identifier: MIT
// Ways to move along a chart. Drag (zoom in) and double click (see all) are uPlot's own.

import type uPlot from "uplot";

const leastScans = 20;

/** Shows `size` scans from `start` on, inside of `low` to `high`. */
function show(plot: uPlot, low: number, high: number, start: number, size: number): void {
  const width = Math.min(Math.max(size, leastScans), high - low);
  const first = Math.min(Math.max(start, low), high - width);
  plot.setScale("x", { min: first, max: first + width });
}

/** The wheel zooms at the pointer. */
export function zoomByWheel(plot: uPlot, low: number, high: number): void {
  const onWheel = (event: WheelEvent) => {
    event.preventDefault();
    const { min, max } = plot.scales["x"]!;
    if (min == null || max == null) return;
    const at = plot.posToVal(event.offsetX, "x");
    const factor = event.deltaY < 0 ? 0.8 : 1.25;
    show(plot, low, high, at - (at - min) * factor, (max - min) * factor);
  };
  plot.over.addEventListener("wheel", onWheel, { passive: false });
}

/** Arrow keys move along the read, + and - zoom, Home and End go to the ends. */
export function zoomByKeys(plot: uPlot, element: HTMLElement, low: number, high: number): void {
  element.tabIndex = 0;
  element.addEventListener("pointerdown", () => element.focus({ preventScroll: true }));
  element.addEventListener("keydown", (event) => {
    const { min, max } = plot.scales["x"]!;
    if (min == null || max == null || event.altKey || event.ctrlKey || event.metaKey) return;
    const size = max - min;
    const views: Record<string, [start: number, size: number]> = {
      ArrowLeft: [min - size / 4, size],
      ArrowRight: [min + size / 4, size],
      Home: [low, size],
      End: [high - size, size],
      "+": [min + size / 8, size * 0.75],
      "-": [min - size / 6, size / 0.75],
    };
    const view = views[event.key];
    if (!view) return;
    show(plot, low, high, ...view);
    event.preventDefault();
  });
}
