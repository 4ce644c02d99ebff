// SPDX-License-Identifier: MIT
// One well: its curves, its sequence, its description.

import { rawChart, traceChart, type Chart } from "./chart.ts";
import { baseColour } from "./colours.ts";
import type { Sample } from "./data.ts";
import { make } from "./dom.ts";
import { figureOf } from "./measures.ts";
import { SearchField } from "./searchfield.ts";
import { copyButton, sequence } from "./sequence.ts";
import { unpackRaw, unpackTrace, type Raw, type Trace } from "./unpack.ts";

const basesInView = 80;

/** Mean distance of two bases, in scans. */
function spacingOf({ positions }: Trace): number {
  const usual = 12;
  if (positions.length < 2) return usual;
  return (positions[positions.length - 1]! - positions[0]!) / (positions.length - 1) || usual;
}

/** The scans of the good region. */
function goodScans(sample: Sample, trace: Trace): [number, number] | null {
  if (!sample.good_start || !sample.good_length) return null;
  const first = trace.positions[sample.good_start - 1];
  const last = trace.positions[sample.good_start + sample.good_length - 2];
  return first === undefined || last === undefined ? null : [first, last];
}

function title(sample: Sample, close: () => void): HTMLElement {
  const button = make("button", { type: "button", class: "close", "aria-label": "Close" }, "×");
  button.addEventListener("click", close);
  const name = make("h2", { id: "well-title" }, [sample.well, sample.sample ?? sample.file].filter(Boolean).join(" "));
  return make("div", { class: "title" }, name, make("span", { class: `state ${sample.state}` }, sample.state), button);
}

function description(sample: Sample): HTMLElement {
  const goodLength = figureOf(sample, "good_length");
  const figures: [string, string][] = [
    ["File", sample.file],
    ["Bases", figureOf(sample, "bases")],
    ["Good region", sample.good_length ? `${goodLength} bases from ${figureOf(sample, "good_start")}` : goodLength],
    ["Bases at Q20", figureOf(sample, "q20")],
    ["Bases at Q30", figureOf(sample, "q30")],
    ["Contiguous read length", figureOf(sample, "crl")],
    ["Mean quality", figureOf(sample, "trace_score")],
    ["Signal", figureOf(sample, "signal")],
    ["Noise", figureOf(sample, "noise")],
    ["Raw peak", figureOf(sample, "raw_peak")],
    ["Base caller", sample.caller ?? ""],
    ["Run start", sample.run_start ?? ""],
    ["Imported from", sample.source ?? ""],
  ];
  const list = make("dl", { class: "description" });
  for (const [label, value] of [...figures, ...sample.description])
    if (value !== "") list.append(make("div", {}, make("dt", {}, label), make("dd", {}, value)));
  return list;
}

/** Which letter has which colour; `more` stands after them. */
function legend(channels: string, ...more: HTMLElement[]): HTMLElement {
  const keys = [...channels].map((letter) => {
    const line = make("i");
    line.style.background = baseColour(letter);
    return make("span", {}, line, letter);
  });
  return make("div", { class: "legend" }, ...keys, ...more);
}

function rawLegend(sample: Sample, raw: Raw): HTMLElement {
  const cut = raw.highest > raw.top ? ` (cut here; the highest value is ${Math.round(raw.highest)})` : "";
  return legend(
    sample.letters,
    make("span", {}, `0 to ${Math.round(raw.top)}${cut}`),
    make("span", {}, make("i", { class: "current" }), `current, 0 to ${Math.round(raw.currentTop)}`),
  );
}

/** A dialog that shows one sample at a time. */
export class WellView {
  readonly element = make("dialog", { class: "well-view", "aria-labelledby": "well-title" });
  private charts: Chart[] = [];

  constructor() {
    this.element.addEventListener("close", () => this.clear());
    // A click next to the dialog.
    this.element.addEventListener("click", (event) => event.target === this.element && this.element.close());
  }

  private clear(): void {
    for (const chart of this.charts) chart.plot.destroy();
    this.charts = [];
    this.element.replaceChildren();
  }

  /** Where the focus is now, it is again after the dialog has been closed. */
  async open(sample: Sample): Promise<void> {
    this.clear();
    const body = make("div", { class: "body" });
    this.element.replaceChildren(
      title(sample, () => this.element.close()),
      body,
    );
    if (!this.element.open) this.element.showModal();
    if (sample.reason) body.append(make("p", { class: "reason" }, sample.reason));
    try {
      if (sample.trace) this.addTrace(sample, await unpackTrace(sample.trace), body);
    } catch {
      body.append(make("p", { class: "reason" }, "This browser cannot unpack the curves."));
    }
    if (sample.raw) this.addRaw(sample, body, sample.trace === undefined);
    body.append(description(sample));
  }

  private addTrace(sample: Sample, trace: Trace, body: HTMLElement): void {
    if (!body.isConnected) return; // closed meanwhile
    const host = make("div", { class: "chart", role: "group", "aria-label": "Processed curves" });
    const spacing = spacingOf(trace);
    const search = new SearchField(trace.letters, (first, end) => {
      const middle = (trace.positions[first]! + trace.positions[end - 1]!) / 2;
      chart.show(middle - (basesInView / 2) * spacing, middle + (basesInView / 2) * spacing);
      chart.plot.redraw(false);
    });
    const whole = make("button", { type: "button" }, "Whole read");
    const readout = make("output", { class: "readout" });
    const help = make(
      "p",
      { class: "help" },
      "Wheel or drag: zoom. Double click: whole read. Keys on the curves: ← → Home End move, + − zoom.",
    );
    body.append(
      make("div", { class: "controls" }, search.element, whole, copyButton(sample, trace.letters)),
      host,
      legend(sample.letters, make("span", {}, make("i", { class: "good" }), "good region"), readout),
      help,
      sequence(trace),
    );
    const chart = traceChart(host, trace, {
      channels: sample.letters,
      good: goodScans(sample, trace),
      marked: () => search.marked,
      pointAt: (words) => (readout.textContent = words),
    });
    this.charts.push(chart);
    whole.addEventListener("click", () => chart.show(-Infinity, Infinity));
    const first = trace.positions[Math.max((sample.good_start ?? 1) - 1, 0)] ?? trace.start;
    chart.show(first - 2 * spacing, first + basesInView * spacing);
    host.focus({ preventScroll: true }); // its keys work at once
  }

  private addRaw(sample: Sample, body: HTMLElement, isOpen: boolean): void {
    const host = make("div", { class: "chart", role: "group", "aria-label": "Raw curves and current" });
    const details = make("details", {}, make("summary", {}, "Raw curves and current"), host);
    const fill = async () => {
      if (!details.open || host.childElementCount > 0) return;
      const raw = await unpackRaw(sample.raw!);
      if (!host.isConnected || host.childElementCount > 0) return;
      host.before(rawLegend(sample, raw));
      this.charts.push(rawChart(host, raw, sample.letters));
    };
    details.addEventListener("toggle", () => void fill());
    body.append(details);
    details.open = isOpen;
  }
}
