// SPDX-License-Identifier: MIT
// The figures of a sample, and how they are written.

import type { Sample } from "./data.ts";

/** The columns that are numbers. */
export type FigureKey =
  | "bases"
  | "good_start"
  | "good_length"
  | "q20"
  | "q30"
  | "crl"
  | "trace_score"
  | "signal"
  | "noise"
  | "raw_peak";

/** Those with one decimal. */
const tenths: ReadonlySet<string> = new Set<FigureKey>(["trace_score", "signal", "noise"]);

export interface Measure {
  name: string;
  key: FigureKey;
}

/** What the map can show. */
export const measures: Measure[] = [
  { name: "Contiguous read length", key: "crl" },
  { name: "Bases at Q20", key: "q20" },
  { name: "Mean quality", key: "trace_score" },
  { name: "Signal", key: "signal" },
  { name: "Noise", key: "noise" },
  { name: "Good-region length", key: "good_length" },
];

/** A sample's figure as `lanetools summary` writes it, "" for none. */
export function figureOf(sample: Sample, key: FigureKey): string {
  const value = sample[key];
  if (value === null) return "";
  return tenths.has(key) ? value.toFixed(1) : String(value);
}

/** A number that was worked out here: whole ones as they are, others with one decimal, "" for none. */
export function figure(value: number | null): string {
  if (value === null) return "";
  return Number.isInteger(value) ? String(value) : value.toFixed(1);
}

/** The middle of the values, the mean of the two middle ones of an even number; null for none. */
export function median(values: number[]): number | null {
  if (values.length === 0) return null;
  const sorted = [...values].sort((a, b) => a - b);
  const half = Math.floor(sorted.length / 2);
  return sorted.length % 2 === 1 ? sorted[half]! : (sorted[half - 1]! + sorted[half]!) / 2;
}

/** The values of those samples that have one. */
export function valuesOf(samples: Sample[], key: FigureKey): number[] {
  return samples.flatMap((sample) => sample[key] ?? []);
}
