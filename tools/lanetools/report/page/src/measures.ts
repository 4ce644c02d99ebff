// SPDX-License-Identifier: MIT
// The figures that the map can show.

import type { Sample } from "./data.ts";

export interface Measure {
  name: string;
  /** null where the sample has none. */
  of(sample: Sample): number | null;
}

export const measures: Measure[] = [
  { name: "Contiguous read length", of: (sample) => sample.crl },
  { name: "Bases at Q20", of: (sample) => sample.q20 },
  { name: "Mean quality", of: (sample) => sample.trace_score },
  { name: "Signal", of: (sample) => sample.signal },
  { name: "Noise", of: (sample) => sample.noise },
  { name: "Good-region length", of: (sample) => sample.good_length },
];

/** As text: whole numbers as they are, others with one decimal, "" for none. */
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
export function valuesOf(samples: Sample[], measure: Measure): number[] {
  return samples.map((sample) => measure.of(sample)).filter((value) => value !== null);
}
