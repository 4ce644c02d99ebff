// SPDX-License-Identifier: MIT
// The plate in a few lines.

import type { Plate, State } from "./data.ts";
import { make } from "./dom.ts";
import { figure, median } from "./measures.ts";
import { plateNotes } from "./notes.ts";

function unread(plate: Plate): HTMLElement[] {
  if (plate.unread.length === 0) return [];
  const items = plate.unread.map(([path, reason]) => make("li", {}, `${path}: ${reason}`));
  return [make("div", { class: "note unread", role: "note" }, "Not all of this plate could be read:", make("ul", {}, ...items))];
}

export function head(plate: Plate): HTMLElement {
  const count = (state: State) => plate.samples.filter((sample) => sample.state === state).length;
  const called = plate.samples.filter((sample) => sample.state === "called");
  const lengths = called.flatMap((sample) => sample.crl ?? []);
  const q20 = called.reduce((sum, sample) => sum + (sample.q20 ?? 0), 0);
  const facts: [string, string][] = [
    ["Run", plate.run_start.replace("T", " ").replace("Z", " UTC")],
    ["Instrument", plate.instrument],
    ["Base caller", plate.caller],
    ["Called", String(count("called"))],
    ["Failed", String(count("failed"))],
    ["Missing", String(count("missing"))],
    ["Damaged", String(count("damaged"))],
    ["Median contiguous read length", figure(median(lengths))],
    ["Bases at Q20", String(q20)],
  ];
  const list = make("dl", { class: "facts" });
  for (const [label, value] of facts)
    if (value !== "") list.append(make("div", {}, make("dt", {}, label), make("dd", {}, value)));
  const notes = plateNotes(plate).map((note) => make("p", { class: "note", role: "note" }, note));
  return make("header", {}, make("h1", {}, plate.plate), list, ...unread(plate), ...notes);
}
