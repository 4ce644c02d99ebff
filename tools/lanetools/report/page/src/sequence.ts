// SPDX-License-Identifier: MIT
// The called bases as text: on the page with their qualities as shades, and on the clipboard as FASTA.

import { qualityClass } from "./colours.ts";
import type { Sample } from "./data.ts";
import { make } from "./dom.ts";
import type { Trace } from "./unpack.ts";

/** FASTA with 60 letters per line; the title is the sample's name and well on one line. */
export function fasta(sample: Sample, letters: string): string {
  const title = [sample.sample ?? sample.file, sample.well].filter(Boolean).join(" ");
  const line = title.replace(/[\x00-\x1f\x7f-\x9f\u2028\u2029]/g, " ");
  return `>${line}\n${(letters.match(/.{1,60}/g) ?? []).join("\n")}\n`;
}

/** Blocks of ten bases; within one a span per run of the same class of quality. */
export function sequence(trace: Trace): HTMLElement {
  const element = make("div", { class: "sequence", role: "group", "aria-label": "Sequence", tabindex: 0 });
  let run: HTMLElement | null = null;
  for (let i = 0; i < trace.letters.length; ++i) {
    const kind = qualityClass(trace.phreds[i]!);
    if (!run || run.className !== kind || i % 10 === 0) {
      if (i % 10 === 0 && i > 0) element.append(" ");
      run = make("span", { class: kind });
      element.append(run);
    }
    run.textContent += trace.letters[i]!;
  }
  return element;
}

async function copy(text: string, dialog: HTMLElement): Promise<void> {
  try {
    await navigator.clipboard.writeText(text);
  } catch {
    // Some browsers have no clipboard for files.
    const area = make("textarea", { class: "offscreen" }, text);
    dialog.append(area);
    area.select();
    document.execCommand("copy");
    area.remove();
  }
}

/** A button that copies the read; it says so. */
export function copyButton(sample: Sample, letters: string): HTMLElement {
  const button = make("button", { type: "button" }, "Copy as FASTA");
  button.addEventListener("click", async () => {
    await copy(fasta(sample, letters), button.closest("dialog")!);
    button.focus();
    button.textContent = "Copied";
    setTimeout(() => (button.textContent = "Copy as FASTA"), 1500);
  });
  return button;
}
