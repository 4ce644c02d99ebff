// SPDX-License-Identifier: MIT
// Which sample stands in which well.

import type { Plate, Sample } from "./data.ts";

export interface Place {
  /** From 0. */
  row: number;
  column: number;
}

/** "A01" is row 0, column 0; null for what names no well of a plate. */
export function placeOf(well: string | null): Place | null {
  const parts = /^([A-Z])0*([1-9][0-9]?)$/i.exec(well ?? "");
  if (!parts) return null;
  return { row: parts[1]!.toUpperCase().charCodeAt(0) - 65, column: Number(parts[2]) - 1 };
}

/** The well's name, as on the map. */
export function wellName({ row, column }: Place): string {
  return String.fromCharCode(65 + row) + String(column + 1).padStart(2, "0");
}

export interface Layout {
  /** By name of the well. */
  wells: Map<string, Sample>;
  /** Samples without a well on this plate, or second in one. */
  others: Sample[];
}

export function layOut(plate: Plate): Layout {
  const layout: Layout = { wells: new Map(), others: [] };
  for (const sample of plate.samples) {
    const place = placeOf(sample.well);
    const isInside = place !== null && place.row < plate.rows && place.column < plate.columns;
    if (isInside && !layout.wells.has(wellName(place))) layout.wells.set(wellName(place), sample);
    else layout.others.push(sample);
  }
  return layout;
}
