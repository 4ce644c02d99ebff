// SPDX-License-Identifier: MIT
// What the modules work out, without a browser.

import { deflateSync } from "node:zlib";
import { describe, expect, test } from "vitest";
import type { Plate, Sample } from "../../src/data.ts";
import { histogram, roundUp } from "../../src/distributions.ts";
import { figureOf, median } from "../../src/measures.ts";
import { plateNotes } from "../../src/notes.ts";
import { findMotif } from "../../src/search.ts";
import { fasta } from "../../src/sequence.ts";
import { compare } from "../../src/table.ts";
import { unpackRaw, unpackTrace } from "../../src/unpack.ts";
import { layOut, placeOf } from "../../src/wells.ts";

const sample = (well: string | null, more: Partial<Sample> = {}) =>
  ({
    well,
    sample: well,
    file: "f",
    state: "called",
    reason: null,
    crl: 600,
    good_length: null,
    signal: null,
    ...more,
  }) as Sample;

const plate = (samples: Sample[]) => ({ rows: 8, columns: 12, samples }) as Plate;

/** A plate of 8 x 12 wells; `crl` of row and column, null for a failed well. */
const fullPlate = (crl: (row: number, column: number) => number | null) =>
  plate(
    Array.from({ length: 96 }, (_, i) => {
      const [row, column] = [Math.floor(i / 12), i % 12];
      const value = crl(row, column);
      const well = String.fromCharCode(65 + row) + String(column + 1).padStart(2, "0");
      return sample(well, { crl: value, state: value === null ? "failed" : "called" });
    }),
  );

test("search finds IUPAC motifs on both strands", () => {
  const places = (read: string, motif: string) =>
    findMotif(read, motif)?.map((hit) => `${hit.first}-${hit.end}${hit.strand}`);
  expect(places("AAGATTCAA", "gattc")).toEqual(["2-7+"]);
  expect(places("AAGAATCAA", "GATTC")).toEqual(["2-7-"]);
  expect(places("GAATTC", "GAATTC")).toEqual(["0-6+"]); // its own complement, counted once
  expect(places("AAAA", "AA")).toEqual(["0-2+", "1-3+", "2-4+"]); // overlapping
  expect(places("ACGT", "RY")).toEqual(["0-2+", "2-4+"]);
  expect(places("TTTCC", "GRA")).toEqual(["1-4-", "2-5-"]);
  expect(places("CANG", "ANG")).toEqual(["1-4+"]);
  expect(places("CANG", "AAG")).toEqual([]); // an N of the read is no evidence
  expect(places("acgt", "a c")).toEqual(["0-2+", "2-4-"]);
  expect(findMotif("ACGT", "")).toBeNull();
  expect(findMotif("ACGT", "AC.T")).toBeNull();
});

test("wells: one sample in each, the rest is listed", () => {
  expect(placeOf("p24")).toEqual({ row: 15, column: 23 });
  for (const none of [null, "", "A", "A0", "AA1", "A100", "1A", "A1 "]) expect(placeOf(none)).toBeNull();
  const first = sample("A01");
  const others = [sample("A1"), sample(null), sample("I01"), sample("A13"), sample("<b>")];
  const layout = layOut(plate([first, ...others, sample("H12")]));
  expect([...layout.wells.keys()]).toEqual(["A01", "H12"]);
  expect(layout.wells.get("A01")).toBe(first);
  expect(layout.others).toEqual(others);
});

describe("what is wrong with a plate", () => {
  test.each<[string, (row: number, column: number) => number | null, RegExp[]]>([
    ["nothing", () => 600, []],
    ["all are weak", () => 50, [/^All wells are weak/]],
    ["all failed", () => null, [/^No well was called/]],
    ["most are weak", (row) => (row % 3 === 0 ? 600 : 199), [/^Most wells are weak: only 36 of 96/]],
    ["a column", (_, column) => (column === 4 ? null : 600), [/^Column 5 failed/]],
    [
      "a row and a column",
      (row, column) => (row === 7 || column === 0 ? 10 : 600),
      [/^Row H failed/, /^Column 1 failed/],
    ],
    ["the edge", (row, column) => (row % 7 === 0 || column % 11 === 0 ? 300 : 600), [/^Edge wells are weak.*300.*600/]],
  ])("%s", (_, crl, expected) => {
    const notes = plateNotes(fullPlate(crl));
    expect(notes.length).toBe(expected.length);
    expected.forEach((one, i) => expect(notes[i]).toMatch(one));
  });
});

test("figures are written as the summary writes them", () => {
  const one = sample("A01", { trace_score: 38, signal: 1234.56, q20: 0, noise: null });
  expect(["trace_score", "signal", "q20", "noise", "crl"].map((key) => figureOf(one, key as "q20"))).toEqual([
    "38.0",
    "1234.6",
    "0",
    "",
    "600",
  ]);
  expect([median([]), median([3, 1, 2]), median([4, 1, 2, 3])]).toEqual([null, 2, 2.5]);
  expect(histogram([0, 49, 50, 149], 50)).toEqual([2, 1, 1]);
  expect([0, 0.7, 1, 11, 41, 90].map((value) => roundUp(value))).toEqual([1, 0.8, 1, 20, 50, 100]);
});

test("the table sorts numbers by value and puts what is missing last", () => {
  const sorted = (values: (string | number | null)[], direction: 1 | -1) =>
    [...values].sort((a, b) => compare(a, b, direction));
  expect(sorted([10, null, 9, 100], 1)).toEqual([9, 10, 100, null]);
  expect(sorted([10, null, 9, 100], -1)).toEqual([100, 10, 9, null]);
  expect(sorted(["s10", null, "s2"], 1)).toEqual(["s2", "s10", null]);
});

test("FASTA: one title line whatever the name, 60 letters per line", () => {
  const text = fasta(sample("A01", { sample: "a\nb\r>c\u2028d" }), "ACGT".repeat(31));
  expect(text.split("\n").map((line) => line.length)).toEqual([13, 60, 60, 4, 0]);
  expect(text).toMatch(/^>a b >c d A01\n/);
});

test("curves and bases come out of their packed form", async () => {
  const differences = (values: number[]) => values.map((value, i) => (value - (values[i - 1] ?? 0)) & 255);
  const curves = [
    [0, 254, 0],
    [10, 4, 8],
    [2, 2, 2],
    [254, 0, 254],
  ];
  const positions = [70_000, 69_990, 70_300];
  const steps = positions.map((position, i) => position - (positions[i - 1] ?? 69_900));
  const bytes = [0, 8, 16, 24].flatMap((shift) => steps.map((step) => (step >> shift) & 255));
  const packed = (content: number[]) => deflateSync(Buffer.from(content)).toString("base64");
  const data = packed([...curves.flatMap(differences), ...Buffer.from("ACN"), 40, 0, 93, ...bytes]);
  expect(await unpackTrace({ start: 69_900, scans: 3, bases: 3, data })).toEqual({
    start: 69_900,
    curves: curves.map((curve) => Uint8Array.from(curve)),
    letters: "ACN",
    phreds: Uint8Array.from([40, 0, 93]),
    positions,
  });
  const raw = [...curves, [6, 6, 4]];
  const unpacked = await unpackRaw({
    values: 3,
    step: 2,
    top: 9,
    highest: 12,
    current_top: 3,
    data: packed(raw.flatMap(differences)),
  });
  expect(unpacked).toEqual({
    step: 2,
    top: 9,
    highest: 12,
    currentTop: 3,
    curves: raw.map((curve) => Uint8Array.from(curve)),
  });
});
