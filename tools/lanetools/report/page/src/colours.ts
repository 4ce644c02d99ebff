// SPDX-License-Identifier: MIT
// Colours that people with any colour vision can tell apart.

/** Stops of the palette cividis, from low to high (Nunez, Anderton and Renslow 2018). */
const stops = [
  [0, 34, 78],
  [66, 78, 108],
  [124, 123, 120],
  [187, 173, 105],
  [254, 232, 56],
] as const;

/** The colour of a share from 0 to 1, as "rgb(...)". */
export function scaleColour(share: number): string {
  const at = Math.min(Math.max(share, 0), 1) * (stops.length - 1);
  const low = Math.min(Math.floor(at), stops.length - 2);
  const mix = stops[low]!.map((value, i) => Math.round(value + (at - low) * (stops[low + 1]![i]! - value)));
  return `rgb(${mix.join(", ")})`;
}

/** Black or white, whichever is read on scaleColour(share). */
export function inkOn(share: number): string {
  return share > 0.55 ? "#000" : "#fff";
}

/** Of the four bases; the usual green, blue, black and red, a little darker. */
const baseColours: Record<string, string> = { A: "#12803c", C: "#1a53c9", G: "#222222", T: "#c9252d" };

export const baseColour = (letter: string) => baseColours[letter.toUpperCase()] ?? "#777777";

/** Classes of quality, each with the shade of its letters. */
export function qualityClass(phred: number): string {
  return phred < 10 ? "q0" : phred < 20 ? "q10" : phred < 30 ? "q20" : "q30";
}
