// SPDX-License-Identifier: MIT
// What is wrong with a plate as a whole, in sentences.

import type { Plate, Sample } from "./data.ts";
import { median } from "./measures.ts";
import { placeOf, type Place } from "./wells.ts";

/** Phred 20 over fewer contiguous bases than this is a weak read. */
const weakLength = 200;
/** A row or column is judged when it has at least this many samples. */
const fewest = 4;
/** Edge wells are called weak when they reach less than this share of the inner ones. */
const edgeShare = 0.7;

interface Well extends Place {
  sample: Sample;
}

const isGood = (sample: Sample) => sample.state === "called" && (sample.crl ?? 0) >= weakLength;

/** Lines (rows or columns) in which nothing is good, while at least half of all other wells are. */
function deadLines(wells: Well[], lineOf: (well: Well) => number): number[] {
  const lines = [...new Set(wells.map(lineOf))].sort((a, b) => a - b);
  return lines.filter((line) => {
    const inside = wells.filter((well) => lineOf(well) === line);
    const outside = wells.filter((well) => lineOf(well) !== line);
    const good = outside.filter((well) => isGood(well.sample)).length;
    return (
      inside.length >= fewest && !inside.some((well) => isGood(well.sample)) && good * 2 >= outside.length && good > 0
    );
  });
}

function edgeNote(wells: Well[], plate: Plate): string[] {
  const isEdge = (well: Well) =>
    well.row === 0 || well.column === 0 || well.row === plate.rows - 1 || well.column === plate.columns - 1;
  const lengths = (those: Well[]) => those.map((well) => well.sample.crl ?? 0);
  const edge = wells.filter(isEdge);
  const inner = wells.filter((well) => !isEdge(well));
  if (edge.length < 2 * fewest || inner.length < 2 * fewest) return [];
  const [outside, inside] = [median(lengths(edge))!, median(lengths(inner))!];
  if (inside < weakLength || outside >= edgeShare * inside) return [];
  return [`Edge wells are weak: their median contiguous read length is ${outside}, that of the inner wells ${inside}.`];
}

/** Sentences; none when nothing stands out. */
export function plateNotes(plate: Plate): string[] {
  const { samples } = plate;
  if (samples.length === 0) return [];
  const good = samples.filter(isGood).length;
  if (good === 0) {
    return samples.some((sample) => sample.state === "called")
      ? [`All wells are weak: no read has ${weakLength} contiguous bases of Q20.`]
      : ["No well was called."];
  }
  const wells = samples.flatMap((sample) => {
    const place = placeOf(sample.well);
    return place ? [{ ...place, sample }] : [];
  });
  const notes: string[] = [];
  if (good * 2 < samples.length) {
    notes.push(`Most wells are weak: only ${good} of ${samples.length} have ${weakLength} contiguous bases of Q20.`);
  }
  for (const row of deadLines(wells, (well) => well.row))
    notes.push(`Row ${String.fromCharCode(65 + row)} failed: none of its reads is good.`);
  for (const column of deadLines(wells, (well) => well.column))
    notes.push(`Column ${column + 1} failed: none of its reads is good.`);
  return notes.length > 0 ? notes : edgeNote(wells, plate);
}
