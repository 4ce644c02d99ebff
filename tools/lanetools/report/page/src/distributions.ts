// SPDX-License-Identifier: MIT
// The plate's distributions, as pictures that print.

import type { Plate } from "./data.ts";
import { make, makeSvg } from "./dom.ts";
import { figure, median, valuesOf, type FigureKey } from "./measures.ts";
import { placeOf } from "./wells.ts";

const [width, height, left, right, bottom, top] = [540, 230, 54, 20, 36, 8];
const [innerWidth, innerHeight] = [width - left - right, height - bottom - top];

interface Axis {
  title: string;
  highest: number;
}

/** A round number at or above `value`: one of `heads` times a power of ten. */
export function roundUp(value: number, heads = [1, 2, 3, 4, 5, 6, 8]): number {
  if (value <= 0) return 1;
  const power = 10 ** Math.floor(Math.log10(value));
  return power * ([...heads, 10].find((head) => head * power >= value) ?? 10);
}

/** Marks from 0 to `end` at round numbers, seven at most. */
function roundMarks(end: number): [number, string][] {
  const step = roundUp(end / 6, [1, 2, 5]);
  return Array.from({ length: Math.floor(end / step) + 1 }, (_, i) => [
    (i * step) / Math.max(end, 1),
    String(i * step),
  ]);
}

const y = (value: number, highest: number) => top + innerHeight * (1 - Math.min(value / highest, 1));

/** Axes with a title each; `marks` go along x as [share of the width, text]. */
function frame(title: string, xTitle: string, yAxis: Axis, marks: [number, string][], ...content: Node[]): HTMLElement {
  const text = (at: [number, number], words: string, anchor: string) =>
    makeSvg("text", { x: at[0], y: at[1], "text-anchor": anchor }, words);
  const ticks = [0, yAxis.highest / 2, yAxis.highest];
  const picture = makeSvg(
    "svg",
    { viewBox: `0 0 ${width} ${height}`, role: "img", "aria-label": title },
    ...ticks.map((tick) =>
      makeSvg("line", {
        class: "rule",
        x1: left,
        x2: width - right,
        y1: y(tick, yAxis.highest),
        y2: y(tick, yAxis.highest),
      }),
    ),
    ...ticks.map((tick) => text([left - 4, y(tick, yAxis.highest) + 4], figure(tick), "end")),
    ...marks.map(([share, words]) => text([left + share * innerWidth, height - bottom + 16], words, "middle")),
    ...content,
    text([left + innerWidth / 2, height - 4], xTitle, "middle"),
  );
  return make("figure", {}, make("figcaption", {}, `${title} (${yAxis.title})`), picture);
}

function bars(values: number[], highest: number): Node[] {
  const step = innerWidth / Math.max(values.length, 1);
  return values.map((value, i) =>
    makeSvg(
      "rect",
      {
        class: "bar",
        x: left + i * step + 1,
        width: Math.max(step - 2, 1),
        y: y(value, highest),
        height: innerHeight + top - y(value, highest),
      },
      makeSvg("title", {}, figure(value)),
    ),
  );
}

/** Counts of values per `step`, from 0. */
export function histogram(values: number[], step: number): number[] {
  const counts: number[] = new Array(Math.floor(Math.max(0, ...values) / step) + 1).fill(0);
  for (const value of values) counts[Math.floor(value / step)]! += 1;
  return counts;
}

function readLengths(plate: Plate): HTMLElement {
  const step = 50;
  const counts = histogram(valuesOf(plate.samples, "crl"), step);
  const highest = roundUp(Math.max(...counts));
  const marks = roundMarks(counts.length * step);
  return frame("Contiguous read lengths", "bases", { title: "wells", highest }, marks, ...bars(counts, highest));
}

function qualities(plate: Plate): HTMLElement {
  const { step, low, median: middle, high } = plate.quality_by_position;
  const highest = 50;
  const x = (i: number) => left + ((i + 0.5) / Math.max(middle.length, 1)) * innerWidth;
  const path = (values: number[]) => values.map((value, i) => `${x(i).toFixed(1)},${y(value, highest).toFixed(1)}`);
  const marks = roundMarks(middle.length * step);
  return frame(
    "Quality along the read: median and quartiles",
    "base",
    { title: "Phred", highest },
    marks,
    makeSvg("polygon", { class: "band", points: [...path(low), ...path(high).reverse()].join(" ") }),
    makeSvg("polyline", { class: "curve", points: path(middle).join(" ") }),
  );
}

interface Lines {
  title: string;
  count: number;
  nameOf(line: number): string;
  lineOf(well: string | null): number | undefined;
}

function medians(plate: Plate, name: string, key: FigureKey, { title, count, nameOf, lineOf }: Lines): HTMLElement {
  const values = Array.from({ length: count }, (_, i) => {
    const line = plate.samples.filter((sample) => lineOf(sample.well) === i);
    return median(valuesOf(line, key)) ?? 0;
  });
  const highest = roundUp(Math.max(...values));
  const marks = values.map((_, i): [number, string] => [(i + 0.5) / count, nameOf(i)]);
  return frame(`${name} by ${title}`, title, { title: "median", highest }, marks, ...bars(values, highest));
}

/** The signal that the base caller has measured; without one, the highest values of the raw curves. */
function signals(plate: Plate): HTMLElement[] {
  const key = (["signal", "raw_peak"] as const).find((one) => valuesOf(plate.samples, one).length > 0);
  if (!key) return [];
  const name = key === "signal" ? "Signal" : "Raw peak";
  return [
    medians(plate, name, key, {
      title: "row",
      count: plate.rows,
      nameOf: (i) => String.fromCharCode(65 + i),
      lineOf: (well) => placeOf(well)?.row,
    }),
    medians(plate, name, key, {
      title: "column",
      count: plate.columns,
      nameOf: (i) => String(i + 1),
      lineOf: (well) => placeOf(well)?.column,
    }),
  ];
}

export function distributions(plate: Plate): HTMLElement {
  const pictures = [readLengths(plate), qualities(plate), ...signals(plate)];
  return make(
    "section",
    { class: "distributions", "aria-label": "Distributions" },
    make("h2", {}, "Distributions"),
    ...pictures,
  );
}
