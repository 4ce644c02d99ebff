// SPDX-License-Identifier: MIT
// The plate at a glance: a grid of wells, coloured by a measure.

import { inkOn, scaleColour } from "./colours.ts";
import type { Plate, Sample } from "./data.ts";
import { make } from "./dom.ts";
import { figure, figureOf, measures, valuesOf, type Measure } from "./measures.ts";
import { wellName, type Layout } from "./wells.ts";

const longestHint = 300; // letters of the words that appear on a cell under the pointer

/** Highest value of the scale. It begins at 0, so that a plate of equal wells is not stretched into contrasts. */
function topOf(plate: Plate, { key }: Measure): number {
  return Math.max(1, ...valuesOf(plate.samples, key));
}

/** "A01, name, called, Contiguous read length 612" */
function accessibleName(well: string, sample: Sample | undefined, measure: Measure): string {
  if (!sample) return `${well}, empty`;
  const value = figureOf(sample, measure.key);
  return [well, sample.sample ?? sample.file, sample.state, sample.reason, value && `${measure.name} ${value}`]
    .filter(Boolean)
    .join(", ");
}

export class PlateMap {
  readonly element: HTMLElement;
  private readonly cells = new Map<string, HTMLElement>();
  private readonly scale = make("div", { class: "scale" });

  /** `open` is called with a sample when its well is clicked, or on Enter. */
  constructor(
    private readonly plate: Plate,
    private readonly layout: Layout,
    private readonly open: (sample: Sample) => void,
  ) {
    const select = make("select", { id: "measure" }, ...measures.map((one) => make("option", {}, one.name)));
    select.addEventListener("change", () => this.show(measures[select.selectedIndex]!));
    this.element = make(
      "section",
      { class: "map", "aria-label": "Plate map" },
      make("div", { class: "controls" }, make("label", { for: "measure" }, "Colour by "), select, this.scale),
      this.grid(),
    );
    this.show(measures[0]!);
  }

  private grid(): HTMLElement {
    const { rows, columns } = this.plate;
    const grid = make("div", { role: "grid", "aria-label": "Wells", class: columns > 12 ? "wells dense" : "wells" });
    grid.style.setProperty("--columns", String(columns));
    const numbers = Array.from({ length: columns }, (_, i) => make("div", { role: "columnheader" }, String(i + 1)));
    grid.append(make("div", { role: "row" }, make("div", { role: "columnheader" }), ...numbers));
    for (let row = 0; row < rows; ++row) {
      const letter = String.fromCharCode(65 + row);
      const cells = Array.from({ length: columns }, (_, column) => this.cell(wellName({ row, column })));
      grid.append(make("div", { role: "row" }, make("div", { role: "rowheader" }, letter), ...cells));
    }
    [...this.cells.values()][0]?.setAttribute("tabindex", "0");
    grid.addEventListener("keydown", (event) => this.onKey(event));
    return grid;
  }

  private cell(well: string): HTMLElement {
    const sample = this.layout.wells.get(well);
    const cell = make("div", {
      role: "gridcell",
      tabindex: -1,
      "data-well": well,
      class: `well ${sample?.state ?? "empty"}`,
    });
    cell.addEventListener("click", () => {
      this.focus(cell);
      if (sample) this.open(sample);
    });
    this.cells.set(well, cell);
    return cell;
  }

  /** One well at a time is in the order of the Tab key. */
  private focus(cell: HTMLElement): void {
    for (const other of this.cells.values()) other.setAttribute("tabindex", "-1");
    cell.setAttribute("tabindex", "0");
    cell.focus();
  }

  private onKey(event: KeyboardEvent): void {
    const names = [...this.cells.keys()];
    const at = names.indexOf((event.target as HTMLElement).dataset["well"] ?? "");
    if (at < 0) return;
    const { columns, rows } = this.plate;
    const [row, column] = [Math.floor(at / columns), at % columns];
    const moves: Record<string, [number, number]> = {
      ArrowLeft: [row, column - 1],
      ArrowRight: [row, column + 1],
      ArrowUp: [row - 1, column],
      ArrowDown: [row + 1, column],
      Home: [row, 0],
      End: [row, columns - 1],
    };
    const move = moves[event.key];
    if (move) {
      const clamp = (value: number, count: number) => Math.min(Math.max(value, 0), count - 1);
      this.focus(this.cells.get(names[clamp(move[0], rows) * columns + clamp(move[1], columns)]!)!);
    } else if (event.key === "Enter" || event.key === " ") {
      const sample = this.layout.wells.get(names[at]!);
      if (sample) this.open(sample);
    } else {
      return;
    }
    event.preventDefault();
  }

  private show(measure: Measure): void {
    const top = topOf(this.plate, measure);
    for (const [well, cell] of this.cells) {
      const sample = this.layout.wells.get(well);
      const value = sample ? sample[measure.key] : null;
      cell.textContent = sample ? figureOf(sample, measure.key) : "";
      const name = accessibleName(well, sample, measure);
      cell.setAttribute("aria-label", name);
      cell.title = name.slice(0, longestHint);
      cell.style.backgroundColor = value === null ? "" : scaleColour(value / top);
      cell.style.color = value === null ? "" : inkOn(value / top);
    }
    this.showScale(top, measure);
  }

  private showScale(top: number, { key }: Measure): void {
    const steps = Array.from({ length: 24 }, (_, i) => {
      const step = make("i");
      step.style.backgroundColor = scaleColour(i / 23);
      return step;
    });
    const hasValues = valuesOf(this.plate.samples, key).length > 0;
    const middle = top < 10 ? top / 2 : Math.round(top / 2);
    const numbers = [0, middle, top].map((value) => make("span", {}, figure(value)));
    const bar = make(
      "div",
      { class: "bar" },
      make("div", { class: "steps", "aria-hidden": "true" }, ...steps),
      make("div", { class: "numbers" }, ...numbers),
    );
    const keys = (["failed", "damaged", "missing"] as const)
      .filter((state) => this.plate.samples.some((sample) => sample.state === state))
      .map((state) => make("span", {}, make("span", { class: `key ${state}` }), state));
    this.scale.replaceChildren(hasValues ? bar : "no sample has this figure", ...keys);
  }
}
