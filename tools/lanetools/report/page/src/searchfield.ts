// SPDX-License-Identifier: MIT
// The field that goes to base numbers and motifs.

import { make } from "./dom.ts";
import { findMotif } from "./search.ts";

export class SearchField {
  readonly element: HTMLElement;
  /** Bases that are pointed out: first, and one past the last. */
  marked: [number, number] = [0, 0];
  private last = "";
  private at = 0;
  private readonly status = make("output", { "aria-live": "polite" });

  /** `goTo` is called with each find, as `marked` has it. */
  constructor(
    private readonly letters: string,
    private readonly goTo: (first: number, end: number) => void,
  ) {
    const field = make("input", {
      type: "search",
      "aria-label": "Base number or motif",
      placeholder: "Base number or motif",
    });
    field.addEventListener("keydown", (event) => {
      if (event.key !== "Enter" && event.key !== "Escape") return;
      event.preventDefault();
      if (event.key === "Enter") this.find(field.value.trim());
      // Browsers take the key for emptying the field.
      else field.closest("dialog")?.close();
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
    const hits = findMotif(this.letters, text);
    if (hits === null) return this.say("Neither a base number nor a motif");
    // The same motif once more: the next place.
    this.at = text === this.last ? (this.at + 1) % Math.max(hits.length, 1) : 0;
    this.last = text;
    const hit = hits[this.at];
    if (!hit) return this.say("Not found on either strand");
    this.say(`${this.at + 1} of ${hits.length}: base ${hit.first + 1}, strand ${hit.strand}`);
    this.mark(hit.first, hit.end);
  }

  private say(words: string): void {
    this.status.textContent = words;
  }

  private mark(first: number, end: number): void {
    this.marked = [first, end];
    this.goTo(first, end);
  }
}
