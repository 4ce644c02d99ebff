// SPDX-License-Identifier: MIT
// One well: its curves, its sequence, its description.

import { rawChart, traceChart, type Chart } from "./chart.ts";
import { qualityClass } from "./colours.ts";
import type { Sample } from "./data.ts";
import { make } from "./dom.ts";
import { figure } from "./measures.ts";
import { findMotif, type Hit } from "./search.ts";
import { unpackRaw, unpackTrace, type Trace } from "./unpack.ts";

const basesInView = 80;

/** FASTA with 60 letters per line; the title is the sample's name and well on one line. */
export function fasta(sample: Sample, letters: string): string {
  const title = [sample.sample ?? sample.file, sample.well].filter(Boolean).join(" ").replace(/[\x00-\x1f\x7f-\x9f]/g, " ");
  return `>${title}\n${(letters.match(/.{1,60}/g) ?? []).join("\n")}\n`;
}

/** The sequence as text, a span per run of one quality class, blocks of ten. */
function sequence(trace: Trace): HTMLElement {
  const element = make("div", { class: "sequence", "aria-label": "Sequence" });
  let run: HTMLElement | null = null;
  for (let i = 0; i < trace.letters.length; ++i) {
    const kind = qualityClass(trace.phreds[i]!);
    if (!run || run.className !== kind || i % 10 === 0) {
      if (i % 10 === 0 && i > 0) element.append(" ");
      run = make("span", { class: kind, "data-base": i + 1 });
      element.append(run);
    }
    run.textContent += trace.letters[i]!;
  }
  return element;
}

async function copy(text: string): Promise<void> {
  try {
    await navigator.clipboard.writeText(text);
  } catch {
    // Some browsers have no clipboard for files.
    const area = make("textarea", { class: "offscreen" }, text);
    document.querySelector("dialog[open]")!.append(area);
    area.select();
    document.execCommand("copy");
    area.remove();
  }
}

/** Goes to base numbers and motifs. */
class Search {
  readonly element: HTMLElement;
  /** Bases that are pointed out: first, and one past the last. */
  marked: [number, number] = [0, 0];
  private last = "";
  private hits: Hit[] = [];
  private at = 0;
  private readonly status = make("output", { "aria-live": "polite" });

  constructor(
    private readonly letters: string,
    private readonly goTo: (first: number, end: number) => void,
  ) {
    const field = make("input", { type: "search", "aria-label": "Base number or motif", placeholder: "Base number or motif" });
    field.addEventListener("keydown", (event) => {
      if (event.key !== "Enter") return;
      event.preventDefault();
      this.find(field.value.trim());
    });
    this.element = make("div", { class: "search" }, field, this.status);
  }

  private find(text: string): void {
    if (/^[0-9]+$/.test(text)) {
      const base = Number(text);
      if (base < 1 || base > this.letters.length) return this.say(`The read has bases 1 to ${this.letters.length}`);
      this.say(`Base ${base}`);
      return this.mark(base - 1, base);
    }
    const hits = text === this.last ? this.hits : findMotif(this.letters, text);
    if (hits === null) return this.say("Neither a base number nor a motif");
    this.at = text === this.last ? (this.at + 1) % Math.max(hits.length, 1) : 0;
    [this.last, this.hits] = [text, hits];
    const hit = hits[this.at];
    if (!hit) return this.say("Not found on either strand");
    this.say(`${this.at + 1} of ${hits.length}: base ${hit.first + 1}, strand ${hit.strand}`);
    this.mark(hit.first, hit.first + text.replace(/\s/g, "").length);
  }

  private say(words: string): void {
    this.status.textContent = words;
  }

  private mark(first: number, end: number): void {
    this.marked = [first, end];
    this.goTo(first, end);
  }
}

function description(sample: Sample): HTMLElement {
  const figures: [string, string][] = [
    ["File", sample.file],
    ["Bases", figure(sample.bases)],
    ["Good region", sample.good_length ? `${sample.good_length} bases from ${sample.good_start}` : ""],
    ["Bases at Q20 / Q30", sample.q20 === null ? "" : `${sample.q20} / ${sample.q30}`],
    ["Contiguous read length", figure(sample.crl)],
    ["Mean quality", figure(sample.trace_score)],
    ["Signal / noise", sample.signal === null ? "" : `${figure(sample.signal)} / ${figure(sample.noise)}`],
    ["Base caller", sample.caller ?? ""],
    ["Run start", sample.run_start ?? ""],
  ];
  const list = make("dl", { class: "description" });
  for (const [label, value] of [...figures, ...sample.description])
    if (value !== "") list.append(make("div", {}, make("dt", {}, label), make("dd", {}, value)));
  return list;
}

/** A dialog that shows one sample at a time. */
export class WellView {
  readonly element = make("dialog", { class: "well-view" });
  private plots: Chart[] = [];

  constructor() {
    this.element.addEventListener("close", () => this.clear());
    // A click beside the dialog.
    this.element.addEventListener("click", (event) => event.target === this.element && this.element.close());
  }

  private clear(): void {
    for (const chart of this.plots) chart.plot.destroy();
    this.plots = [];
    this.element.replaceChildren();
  }

  async open(sample: Sample): Promise<void> {
    this.clear();
    const title = [sample.well, sample.sample ?? sample.file].filter(Boolean).join(" ");
    const close = make("button", { type: "button", class: "close", "aria-label": "Close" }, "×");
    close.addEventListener("click", () => this.element.close());
    const body = make("div", { class: "body" });
    this.element.setAttribute("aria-label", title);
    this.element.replaceChildren(make("div", { class: "title" }, make("h2", {}, title), make("span", { class: `state ${sample.state}` }, sample.state), close), body);
    if (!this.element.open) this.element.showModal();
    if (sample.reason) body.append(make("p", { class: "reason" }, sample.reason));
    if (sample.trace) await this.addTrace(sample, body);
    if (sample.raw) this.addRaw(sample, body, sample.trace === undefined);
    body.append(description(sample));
  }

  private async addTrace(sample: Sample, body: HTMLElement): Promise<void> {
    const trace = await unpackTrace(sample.trace!);
    const host = make("div", { class: "chart", "aria-label": "Processed curves" });
    const sequenceText = sequence(trace);
    const search = new Search(trace.letters, (first, end) => {
      const spacing = this.spacing(trace);
      const middle = (trace.positions[first]! + trace.positions[end - 1]!) / 2;
      chart.show(middle - (basesInView / 2) * spacing, middle + (basesInView / 2) * spacing);
      chart.plot.redraw(false);
    });
    const whole = make("button", { type: "button" }, "Whole read");
    const copyButton = make("button", { type: "button" }, "Copy as FASTA");
    copyButton.addEventListener("click", () => void copy(fasta(sample, trace.letters)));
    body.append(make("div", { class: "controls" }, search.element, whole, copyButton), host, sequenceText);
    const chart = traceChart(host, trace, sample.letters, this.goodScans(sample, trace), () => search.marked);
    this.plots.push(chart);
    whole.addEventListener("click", () => chart.show(-Infinity, Infinity));
    const first = trace.positions[Math.max((sample.good_start ?? 1) - 1, 0)] ?? trace.start;
    const spacing = this.spacing(trace);
    chart.show(first - 2 * spacing, first + basesInView * spacing);
  }

  /** Mean distance of two bases, in scans. */
  private spacing(trace: Trace): number {
    const { positions } = trace;
    if (positions.length < 2) return 12;
    return (positions[positions.length - 1]! - positions[0]!) / (positions.length - 1);
  }

  private goodScans(sample: Sample, trace: Trace): [number, number] | null {
    if (!sample.good_start || !sample.good_length) return null;
    const first = trace.positions[sample.good_start - 1];
    const last = trace.positions[sample.good_start + sample.good_length - 2];
    return first === undefined || last === undefined ? null : [first, last];
  }

  private addRaw(sample: Sample, body: HTMLElement, isOpen: boolean): void {
    const host = make("div", { class: "chart", "aria-label": "Raw curves and current" });
    const details = make("details", {}, make("summary", {}, "Raw curves and current"), host);
    const fill = async () => {
      if (!details.open || host.childElementCount > 0) return;
      this.plots.push(rawChart(host, await unpackRaw(sample.raw!), sample.letters));
    };
    details.addEventListener("toggle", () => void fill());
    body.append(details);
    details.open = isOpen;
  }
}
