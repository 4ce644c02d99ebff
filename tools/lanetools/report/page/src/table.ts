// SPDX-License-Identifier: MIT
// The figures of all samples as a table whose headers sort.

import type { Plate, Sample } from "./data.ts";
import { make } from "./dom.ts";
import { figure } from "./measures.ts";

type Column = [title: string, key: keyof Sample];

const columns: Column[] = [
  ["Well", "well"], ["Sample", "sample"], ["File", "file"], ["State", "state"], ["Reason", "reason"], ["Bases", "bases"],
  ["Good start", "good_start"], ["Good length", "good_length"], ["Q20", "q20"], ["Q30", "q30"],
  ["Contiguous", "crl"], ["Mean quality", "trace_score"], ["Signal", "signal"], ["Noise", "noise"], ["Raw peak", "raw_peak"],
];

/** Numbers by value, texts by their letters; what is missing comes last in both directions. */
export function compare(a: unknown, b: unknown, direction: 1 | -1): number {
  if (a === null || b === null) return Number(a === null) - Number(b === null);
  if (typeof a === "number" && typeof b === "number") return direction * (a - b);
  return direction * String(a).localeCompare(String(b), "en");
}

function row(sample: Sample, open: (sample: Sample) => void): HTMLElement {
  const cells = columns.map(([, key]) => {
    const value = sample[key];
    return typeof value === "number" ? make("td", { class: "number" }, figure(value)) : make("td", {}, String(value ?? ""));
  });
  const button = make("button", { type: "button", class: "link" }, sample.well ?? "open");
  button.addEventListener("click", () => open(sample));
  cells[0]!.replaceChildren(button);
  return make("tr", { class: sample.state }, ...cells);
}

export function sampleTable(plate: Plate, open: (sample: Sample) => void): HTMLElement {
  const body = make("tbody");
  const fill = (samples: Sample[]) => body.replaceChildren(...samples.map((sample) => row(sample, open)));
  const headers = columns.map(([title]) => make("th", { scope: "col", "aria-sort": "none", tabindex: 0 }, title));
  const sortBy = (index: number) => {
    const header = headers[index]!;
    const direction = header.getAttribute("aria-sort") === "ascending" ? -1 : 1;
    for (const other of headers) other.setAttribute("aria-sort", "none");
    header.setAttribute("aria-sort", direction === 1 ? "ascending" : "descending");
    const key = columns[index]![1];
    fill([...plate.samples].sort((a, b) => compare(a[key], b[key], direction)));
  };
  headers.forEach((header, index) => {
    header.addEventListener("click", () => sortBy(index));
    header.addEventListener("keydown", (event) => event.key === "Enter" && sortBy(index));
  });
  fill(plate.samples);
  return make(
    "section",
    { class: "figures", "aria-label": "Figures" },
    make("h2", {}, "Figures"),
    make("div", { class: "scroll" }, make("table", {}, make("thead", {}, make("tr", {}, ...headers)), body)),
  );
}
