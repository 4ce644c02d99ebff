// SPDX-License-Identifier: MIT
// Curves and bases out of their packed form; data.ts has the layouts.

import type { PackedRaw, PackedTrace } from "./data.ts";

/** What a called well shows. */
export interface Trace {
  /** Raw scan of the first value. */
  start: number;
  /** Four curves, values 0 to 254. */
  curves: Uint8Array[];
  letters: string;
  /** Phred values, one per letter. */
  phreds: Uint8Array;
  /** Raw scans, one per letter. */
  positions: number[];
}

/** The raw curves of a well, one value per `step` scans. */
export interface Raw {
  step: number;
  /** Four channels, then the current, values 0 to 254. */
  curves: Uint8Array[];
  /** What 254 stands for in the channels. Higher values are cut there. */
  top: number;
  /** The highest value of the channels. */
  highest: number;
  /** What 254 stands for in the current. */
  currentTop: number;
}

async function bytesOf(data: string): Promise<Uint8Array> {
  const packed = Uint8Array.from(atob(data), (character) => character.charCodeAt(0));
  const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream("deflate"));
  return new Uint8Array(await new Response(stream).arrayBuffer());
}

/** The sums of differences modulo 256. */
export function sums(differences: Uint8Array): Uint8Array {
  let value = 0;
  return differences.map((difference) => (value = (value + difference) & 255));
}

function curvesOf(bytes: Uint8Array, count: number, length: number): Uint8Array[] {
  return Array.from({ length: count }, (_, k) => sums(bytes.subarray(k * length, (k + 1) * length)));
}

function positionsOf(bytes: Uint8Array, count: number, start: number): number[] {
  let position = start;
  return Array.from({ length: count }, (_, i) => {
    const [a, b, c, d] = [0, 1, 2, 3].map((k) => bytes[k * count + i]!);
    return (position += a! | (b! << 8) | (c! << 16) | (d! << 24));
  });
}

export async function unpackTrace(packed: PackedTrace): Promise<Trace> {
  const bytes = await bytesOf(packed.data);
  const { scans, bases, start } = packed;
  const lettersAt = 4 * scans;
  const phredsAt = lettersAt + bases;
  const positionsAt = phredsAt + bases;
  return {
    start,
    curves: curvesOf(bytes, 4, scans),
    letters: String.fromCharCode(...bytes.subarray(lettersAt, phredsAt)),
    phreds: bytes.slice(phredsAt, positionsAt),
    positions: positionsOf(bytes.subarray(positionsAt), bases, start),
  };
}

export async function unpackRaw(packed: PackedRaw): Promise<Raw> {
  const { step, top, highest, current_top: currentTop } = packed;
  return { step, top, highest, currentTop, curves: curvesOf(await bytesOf(packed.data), 5, packed.values) };
}
