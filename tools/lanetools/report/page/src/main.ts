// SPDX-License-Identifier: MIT
// The page of a plate.

import type { Plate, Sample } from "./data.ts";
import { distributions } from "./distributions.ts";
import { make } from "./dom.ts";
import { head } from "./head.ts";
import { PlateMap } from "./map.ts";
import { sampleTable } from "./table.ts";
import { layOut } from "./wells.ts";
import { WellView } from "./well.ts";

function others(samples: Sample[], open: (sample: Sample) => void): HTMLElement[] {
  if (samples.length === 0) return [];
  const list = make("ul");
  for (const sample of samples) {
    const name = [sample.well, sample.sample ?? sample.file, `(${sample.file})`, sample.state, sample.reason]
      .filter(Boolean)
      .join(" ");
    const button = make("button", { type: "button", class: "link" }, name);
    button.addEventListener("click", () => open(sample));
    list.append(make("li", {}, button));
  }
  return [make("section", { class: "others", "aria-label": "Not on the map" }, make("h2", {}, "Not on the map"), list)];
}

const plate = JSON.parse(document.getElementById("plate")!.textContent!) as Plate;
document.title = plate.plate;
const view = new WellView();
const open = (sample: Sample) => void view.open(sample);
const layout = layOut(plate);
document.body.append(
  head(plate),
  make(
    "main",
    {},
    new PlateMap(plate, layout, open).element,
    ...others(layout.others, open),
    distributions(plate),
    sampleTable(plate, open),
  ),
  make("footer", {}, `lanetools ${plate.version}`),
  view.element,
);
