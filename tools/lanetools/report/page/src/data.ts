// SPDX-License-Identifier: MIT
// What the page is given: the JSON in the element with the id "plate", as tools/lanetools/report writes it.

/** One plate. */
export interface Plate {
  schema: 1;
  /** Of lanetools. */
  version: string;
  plate: string;
  /** Wells of the plate: 8 x 12 or 16 x 24. */
  rows: number;
  columns: number;
  /** 2024-05-01T10:20:30Z, or empty. */
  run_start: string;
  instrument: string;
  caller: string;
  /** Path and reason of what exists but could not be read, so that the page may lack something. */
  unread: [string, string][];
  /** Sorted by well and file. */
  samples: Sample[];
  quality_by_position: QualityByPosition;
}

/** Quartiles of the Phred values of all called samples, per `step` bases from the first one on. */
export interface QualityByPosition {
  step: number;
  low: number[];
  median: number[];
  high: number[];
}

export type State = "called" | "failed" | "missing" | "damaged";

/** One sample: the columns of `lanetools summary`, what is known of its run, and its curves. */
export interface Sample {
  plate: string;
  well: string | null;
  sample: string | null;
  file: string;
  state: State;
  reason: string | null;
  caller: string | null;
  bases: number | null;
  good_start: number | null;
  good_length: number | null;
  q20: number | null;
  q30: number | null;
  crl: number | null;
  trace_score: number | null;
  signal: number | null;
  noise: number | null;
  raw_peak: number | null;
  run_start: string | null;
  source: string | null;
  /** Labels and values, in the order in which they are shown. */
  description: [string, string][];
  /** Letters of channels 1 to 4. */
  letters: string;
  trace?: PackedTrace;
  raw?: PackedRaw;
}

/**
 * The processed curves and the bases. `data` is base64 of zlib-compressed bytes: for each of the four channels `scans`
 * bytes, each the difference to the byte before it (modulo 256), of values from 0 to 254; then `bases` letters; `bases`
 * Phred values, rounded; and the positions: the difference of a base's position to that of the base before it, the first
 * one to the first scan of the curves, in four bytes, `bases` lowest ones first, the highest ones last.
 */
export interface PackedTrace {
  /** Raw scan of the first value. */
  start: number;
  scans: number;
  bases: number;
  data: string;
}

/**
 * The raw curves and the current, at one value per `step` scans, the mean of these. `data` is packed as above: `values`
 * bytes for each of the four channels, then for the current.
 */
export interface PackedRaw {
  values: number;
  step: number;
  /** What a byte of 254 stands for; higher values are cut there. */
  top: number;
  /** The highest value of the four channels. */
  highest: number;
  /** What 254 stands for in the current. */
  current_top: number;
  data: string;
}
