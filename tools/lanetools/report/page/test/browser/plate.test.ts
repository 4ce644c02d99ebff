// SPDX-License-Identifier: MIT
// The page of a plate: its map, its table, what it prints.

import { copyFileSync, realpathSync, rmSync, symlinkSync, truncateSync } from "node:fs";
import { afterAll, afterEach, beforeAll, expect, test } from "vitest";
import type { Page } from "playwright-core";
import { OfflineBrowser } from "./browser.ts";
import { PlateFolder } from "./plates.ts";

const folder = new PlateFolder();
let browser: OfflineBrowser;
let page: Page;

beforeAll(async () => {
  folder.generate("--wells", "16", "--failed", "1", "--seed", "20", "--bases", "400");
  copyFileSync(folder.raw("A01"), folder.raw("Z")); // second in its well
  folder.describe(folder.raw("A07"), "well", "nowhere");
  folder.call();
  rmSync(folder.stored("A02"));
  truncateSync(folder.stored("A03"), 1000);
  // Numbers that the base caller does not measure.
  for (const [well, signal] of [
    ["A09", "1234"],
    ["A10", "98"],
    ["B02", "500"],
  ])
    folder.describe(folder.stored(well!), "signal", signal!);
  browser = await OfflineBrowser.start();
  page = await browser.open(folder.report());
});

afterEach(() => expect(browser.troubles).toEqual([]));

afterAll(async () => {
  await browser.close();
  folder.remove();
});

const measures = {
  "Contiguous read length": "crl",
  "Bases at Q20": "q20",
  "Mean quality": "trace_score",
  Signal: "signal",
  Noise: "noise",
  "Good-region length": "good_length",
};
const isOnMap = (row: Record<string, string>) => row["file"] !== "pZ" && row["well"] !== "nowhere";

test("each cell of the map has the summary's figure, and says so", async () => {
  const rows = folder.summary();
  expect(new Set(rows.map((row) => row["state"]))).toEqual(new Set(["called", "failed", "missing", "damaged"]));
  const byWell = new Map(rows.filter(isOnMap).map((row) => [row["well"], row]));
  for (const [measure, column] of Object.entries(measures)) {
    await page.selectOption("select", measure);
    const cells = await page
      .locator("[role=grid] [role=row] > [role=gridcell]")
      .evaluateAll((all) =>
        all.map((cell) => [(cell as HTMLElement).dataset["well"]!, cell.textContent, cell.getAttribute("aria-label")]),
      );
    expect(cells.length).toBe(96);
    for (const [well, text, name] of cells) {
      const row = byWell.get(well!);
      const figure = row?.[column] ? `${measure} ${row[column]}` : "";
      const words = row ? [well, row["sample"] || row["file"], row["state"], row["reason"], figure] : [well, "empty"];
      expect([well, text, name]).toEqual([well, row?.[column] ?? "", words.filter(Boolean).join(", ")]);
    }
  }
});

test("what is not on the map is listed, and opens", async () => {
  const list = page.getByRole("region", { name: "Not on the map" }).getByRole("button");
  expect(await list.count()).toBe(2);
  const texts = (await list.allTextContents()).join("\n");
  for (const row of folder.summary().filter((one) => !isOnMap(one))) expect(texts).toContain(`(${row["file"]})`);
  await list.first().click();
  await page.locator("dialog canvas").waitFor();
  await page.keyboard.press("Escape");
});

test("the head counts the wells", async () => {
  const rows = folder.summary();
  const fact = (label: string) => page.locator("header .facts div", { hasText: label }).locator("dd").textContent();
  for (const state of ["Called", "Failed", "Missing", "Damaged"])
    expect(await fact(state)).toBe(String(rows.filter((row) => row["state"] === state.toLowerCase()).length));
  expect(await fact("Bases at Q20")).toBe(String(rows.reduce((sum, row) => sum + Number(row["q20"]), 0)));
  expect(await fact("Base caller")).toBe(rows.find((row) => row["state"] === "called")!["caller"]);
});

test("the table has the summary's figures and sorts", async () => {
  const headers = await page.locator("th").allTextContents();
  const read = async (title: string) =>
    page.locator(`tbody td:nth-child(${headers.indexOf(title) + 1})`).allTextContents();
  expect((await read("Mean quality")).sort()).toEqual(
    folder
      .summary()
      .map((row) => row["trace_score"]!)
      .sort(),
  );
  const q20 = folder
    .summary()
    .flatMap((row) => (row["q20"] ? [Number(row["q20"])] : []))
    .sort((a, b) => a - b);
  await page.locator("th", { hasText: "Q20" }).click();
  expect((await read("Q20")).filter(Boolean).map(Number)).toEqual(q20);
  await page.locator("th", { hasText: "Q20" }).press("Enter");
  expect((await read("Q20")).filter(Boolean).map(Number)).toEqual(q20.reverse());
  expect(await page.locator("th", { hasText: "Q20" }).getAttribute("aria-sort")).toBe("descending");
});

test("prints map, distributions and table, each as wide as the paper", async () => {
  await page.getByRole("gridcell").first().click(); // an open well does not print
  await page.emulateMedia({ media: "print" });
  await page.setViewportSize({ width: 703, height: 1000 }); // A4 less its margins
  for (const part of [".map", ".distributions", ".figures"]) expect(await page.locator(part).isVisible()).toBe(true);
  expect(await page.locator("dialog").isVisible()).toBe(false);
  const widest = await page.evaluate(() =>
    Math.max(...[...document.querySelectorAll("body *")].map((one) => one.getBoundingClientRect().right)),
  );
  expect(widest).toBeLessThanOrEqual(703);
  const pdf = (await page.pdf({ format: "A4" })).toString("latin1");
  expect(pdf.match(/\/Type\s*\/Page\b/g)!.length).toBe(2);
  await page.emulateMedia({ media: null });
  await page.setViewportSize({ width: 1280, height: 900 });
  await page.keyboard.press("Escape");
});

test("distributions: medians of the signal by row and column", async () => {
  const bars = (title: string) => page.locator(`svg[aria-label="${title}"] .bar title`).allTextContents();
  const median = (isIn: (well: string) => boolean) => {
    const values = folder
      .summary()
      .filter((row) => isIn(row["well"]!) && row["signal"])
      .map((row) => Number(row["signal"]))
      .sort((a, b) => a - b);
    const middle = (values.length - 1) / 2;
    return ((values[Math.floor(middle)]! + values[Math.ceil(middle)]!) / 2).toFixed(1).replace(".0", "");
  };
  expect((await bars("Signal by row")).slice(0, 3)).toEqual([
    median((well) => well.startsWith("A")),
    median((well) => well.startsWith("B")),
    "0",
  ]);
  expect((await bars("Signal by column"))[1]).toBe(median((well) => well.endsWith("02")));
  expect((await bars("Contiguous read lengths")).reduce((sum, count) => sum + Number(count), 0)).toBe(
    folder.summary().filter((row) => row["crl"]).length,
  );
});

test("the policy in its head lets nothing out", async () => {
  const policy = await page.locator("meta[http-equiv=Content-Security-Policy]").getAttribute("content");
  expect(policy).toMatch(/^default-src 'none'; script-src 'sha256-[^ ]+'; style-src 'sha256-[^ ]+'; /);
});

test("what could not be read is at the top", async () => {
  const loop = folder.at("plate", "loop");
  symlinkSync("loop", loop);
  expect(() => folder.report()).toThrow("loop: Too many levels of symbolic links"); // exit code 3
  rmSync(loop);
  const lacking = await browser.open(folder.at("page.html"));
  expect(await lacking.locator(".unread li").allTextContents()).toEqual([
    `${realpathSync(folder.at("plate"))}/loop: Too many levels of symbolic links`,
  ]);
});
