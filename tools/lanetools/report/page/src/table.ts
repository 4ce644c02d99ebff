// SPDX-License-Identifier: MIT
// The figures of all samples as a table whose headers sort.

import type { Plate, Sample } from "./data.ts";
import { make } from "./dom.ts";
import { figureOf, type FigureKey } from "./measures.ts";

type TextKey = "well" | "sample" | "file" | "state" | "reason";
type Column = [title: string, key: TextKey | FigureKey];

const columns: Column[] = [
  ["Well", "well"],
  ["Sample", "sample"],
  ["File", "file"],
  ["State", "state"],
  ["Reason", "reason"],
  ["Bases", "bases"],
  ["Good from", "good_start"],
  ["Good length", "good_length"],
  ["Q20", "q20"],
  ["Q30", "q30"],
  ["Contiguous", "crl"],
  ["Mean quality", "trace_score"],
  ["Signal", "signal"],
  ["Noise", "noise"],
  ["Raw peak", "raw_peak"],
];

const textKeys: ReadonlySet<string> = new Set<TextKey>(["well", "sample", "file", "state", "reason"]);
const isText = (key: TextKey | FigureKey): key is TextKey => textKeys.has(key);

const inOrder = new Intl.Collator("en", { numeric: true }).compare;

/** Numbers by value, texts by their letters, "s2" before "s10"; what is missing comes last in both directions. */
export function compare(a: string | number | null, b: string | number | null, direction: 1 | -1): number {
  if (a === null || b === null) return Number(a === null) - Number(b === null);
  if (typeof a === "number" && typeof b === "number") return direction * (a - b);
  return direction * inOrder(String(a), String(b));
}

function cell(sample: Sample, key: TextKey | FigureKey): HTMLElement {
  if (!isText(key)) return make("td", { class: "number" }, figureOf(sample, key));
  return make("td", { class: `text-${key}` }, make("div", {}, sample[key] ?? ""));
}

function row(sample: Sample, shown: Column[], open: (sample: Sample) => void): HTMLElement {
  const cells = shown.map(([, key]) => cell(sample, key));
  const button = make("button", { type: "button", class: "link" }, sample.well ?? "open");
  button.addEventListener("click", () => open(sample));
  cells[0]!.replaceChildren(button);
  return make("tr", { class: sample.state }, ...cells);
}

/** Without the columns in which no sample has anything, the wells apart: they open the samples. */
function columnsOf(samples: Sample[]): Column[] {
  return columns.filter(([, key]) => key === "well" || samples.some((sample) => sample[key] !== null));
}

export function sampleTable(plate: Plate, open: (sample: Sample) => void): HTMLElement {
  const shown = columnsOf(plate.samples);
  const body = make("tbody");
  const fill = (samples: Sample[]) => body.replaceChildren(...samples.map((sample) => row(sample, shown, open)));
  const headers = shown.map(([title, key]) =>
    make("th", { scope: "col", "aria-sort": "none", tabindex: 0, class: isText(key) ? "" : "number" }, title),
  );
  const sortBy = (index: number) => {
    const header = headers[index]!;
    const direction = header.getAttribute("aria-sort") === "ascending" ? -1 : 1;
    for (const other of headers) other.setAttribute("aria-sort", "none");
    header.setAttribute("aria-sort", direction === 1 ? "ascending" : "descending");
    const key = shown[index]![1];
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
