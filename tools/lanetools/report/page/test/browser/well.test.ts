// SPDX-License-Identifier: MIT
// One well: how it opens, where its letters stand, what the search finds.

import { afterAll, afterEach, beforeAll, expect, test } from "vitest";
import type { Page } from "playwright-core";
import { reverseComplement } from "../../src/search.ts";
import { OfflineBrowser } from "./browser.ts";
import { PlateFolder, readStored, type StoredSample } from "./plates.ts";

const folder = new PlateFolder();
let browser: OfflineBrowser;
let page: Page;
let well: string; // a called one
let stored: StoredSample;

interface Painted {
  letters: { text: string; x: number }[];
  /** By colour: the points of the curve. */
  curves: Record<string, [number, number][]>;
}

/** Keeps what the page paints, in pixels of the canvas. A new picture begins with its clearing. */
function keepPaint(): void {
  const painted: Painted = { letters: [], curves: {} };
  (window as unknown as { painted: Painted }).painted = painted;
  const points = new WeakMap<Path2D, [number, number][]>();
  const context = CanvasRenderingContext2D.prototype;
  const { fillText, stroke, clearRect } = context;
  for (const name of ["moveTo", "lineTo"] as const) {
    const original = Path2D.prototype[name];
    Path2D.prototype[name] = function (x, y) {
      points.set(this, [...(points.get(this) ?? []), [x, y]]);
      original.call(this, x, y);
    };
  }
  context.clearRect = function (...box) {
    painted.letters = [];
    painted.curves = {};
    clearRect.apply(this, box);
  };
  context.stroke = function (path?: Path2D) {
    if (path) painted.curves[String(this.strokeStyle)] = points.get(path) ?? [];
    return path ? stroke.call(this, path) : (stroke as () => void).call(this);
  };
  context.fillText = function (text, x, y, width?) {
    if (/^[A-Z]$/.test(text)) painted.letters.push({ text, x });
    return width === undefined ? fillText.call(this, text, x, y) : fillText.call(this, text, x, y, width);
  };
}

const scale = 2; // pixels of the canvas per CSS pixel
const painted = () => page.evaluate(() => (window as unknown as { painted: Painted }).painted);
const status = () => page.locator(".search output").textContent();

async function find(text: string): Promise<Painted> {
  await page.getByRole("searchbox").fill(text);
  await page.getByRole("searchbox").press("Enter");
  await page.waitForTimeout(200); // a frame or two
  return painted();
}

/** The letters that are painted after a key. */
async function lettersAfter(key: string, times = 1): Promise<string> {
  for (let i = 0; i < times; ++i) await page.keyboard.press(key);
  await page.waitForTimeout(200);
  return (await painted()).letters.map((letter) => letter.text).join("");
}

async function open(name: string): Promise<void> {
  await page.locator(`[data-well=${name}]`).click();
  await page.locator("dialog .chart canvas").first().waitFor();
}

beforeAll(async () => {
  folder.generate("--wells", "3", "--failed", "1", "--seed", "20", "--bases", "500");
  folder.call();
  browser = await OfflineBrowser.start();
  page = await browser.open(folder.report(), { before: keepPaint, scale });
  well = folder.summary().find((row) => row["state"] === "called")!["well"]!;
  stored = readStored(folder.stored(well));
});

afterEach(() => expect(browser.troubles).toEqual([]));

afterAll(async () => {
  await browser.close();
  folder.remove();
});

test("opens by click and by keyboard, and gives the focus back", async () => {
  const focused = () => page.evaluate(() => (document.activeElement as HTMLElement).dataset["well"]);
  await open(well);
  await page.keyboard.press("Escape");
  expect([await page.locator("dialog[open]").count(), await focused()]).toEqual([0, well]);
  await page.keyboard.press("Home");
  await page.keyboard.press("ArrowRight");
  for (const [key, name] of [
    ["ArrowDown", "B02"],
    ["ArrowRight", "B03"],
    ["ArrowUp", "A03"],
    ["ArrowUp", "A03"],
    ["Home", "A01"],
    ["ArrowLeft", "A01"],
    ["End", "A12"],
  ]) {
    await page.keyboard.press(key!);
    expect(await focused()).toBe(name);
  }
  await page.keyboard.press("Enter"); // an empty well
  expect(await page.locator("dialog[open]").count()).toBe(0);
  await page.keyboard.press("Home");
  await page.keyboard.press("Enter");
  expect(await page.getByRole("dialog").getAttribute("aria-labelledby")).toBe(
    await page.getByRole("dialog").locator("h2").getAttribute("id"),
  );
  expect(await page.getByRole("dialog").locator("h2").textContent()).toMatch(/^A01 /);
  await page.keyboard.press("Escape");
  expect(await focused()).toBe("A01");
});

test("letters stand above their peaks", async () => {
  await open(well);
  const middle = Math.floor(stored.positions.length / 2);
  const { letters, curves } = await find(String(middle + 1));
  const text = letters.map((letter) => letter.text).join("");
  const first = stored.letters.indexOf(text);
  expect(text.length).toBeGreaterThan(60);
  expect(first).toBeLessThan(middle);
  expect(stored.letters.indexOf(text, first + 1)).toBe(-1);
  // Evenly along the scans, as the stored positions are.
  const scans = stored.positions.slice(first, first + text.length);
  const perScan = (letters[text.length - 1]!.x - letters[0]!.x) / (scans[text.length - 1]! - scans[0]!);
  letters.forEach(({ x }, i) =>
    expect(Math.abs(x - letters[0]!.x - perScan * (scans[i]! - scans[0]!))).toBeLessThan(1),
  );
  // The highest point of all curves near a letter is below it, and of the curve of its colour.
  const colours: Record<string, string> = { A: "#12803c", C: "#1a53c9", G: "#222222", T: "#c9252d" };
  const near = (colour: string, x: number) => curves[colour]!.filter((point) => Math.abs(point[0] - x) < 5 * perScan);
  const isAbovePeak = letters.map(({ text: letter, x }) => {
    const peaks = Object.values(colours).flatMap((colour) => near(colour, x).map(([at, y]) => ({ colour, at, y })));
    const highest = peaks.reduce((best, peak) => (peak.y < best.y ? peak : best));
    return highest.colour === colours[letter] && Math.abs(highest.at - x) <= 2 * perScan;
  });
  expect(isAbovePeak.filter(Boolean).length / letters.length).toBeGreaterThan(0.9);
});

test("search goes to bases and to motifs on both strands", async () => {
  const at = 200;
  const motif = stored.letters.slice(at, at + 14);
  expect(stored.letters.indexOf(motif, at + 1)).toBe(-1);
  for (const [text, strand] of [
    [motif, "+"],
    [reverseComplement(motif).toLowerCase(), "-"],
    [motif.replace(/[AG]/, "R"), "+"],
  ]) {
    await find("1");
    const { letters } = await find(text!);
    expect(await status()).toBe(`1 of 1: base ${at + 1}, strand ${strand}`);
    expect(letters.map((letter) => letter.text).join("")).toContain(motif);
  }
  await find("GATTACAGATTACAGATTACA");
  expect(await status()).toBe("Not found on either strand");
  await find("12.5");
  expect(await status()).toBe("Neither a base number nor a motif");
  const count = stored.letters.length;
  const { letters } = await find(String(count));
  expect([await status(), letters.at(-1)!.text]).toEqual([`Base ${count}`, stored.letters.at(-1)]);
  await find(String(count + 1));
  expect(await status()).toBe(`The read has bases 1 to ${count}`);
});

test("zooms by wheel, drag and keys, and moves by keys", async () => {
  await page.keyboard.press("Escape");
  await open(well);
  expect(stored.letters.endsWith(await lettersAfter("End"))).toBe(true); // without a click on the curves
  await find("250");
  const chart = page.locator("dialog .chart").first();
  const box = (await chart.locator(".u-over").boundingBox())!;
  const count = async (act: () => Promise<unknown>) => {
    await act();
    await page.waitForTimeout(200);
    return (await painted()).letters.length;
  };
  const before = (await painted()).letters.length;
  await page.mouse.move(box.x + box.width / 2, box.y + 50);
  const zoomed = await count(() => page.mouse.wheel(0, -100));
  expect(zoomed).toBeLessThan(before);
  expect(await page.locator(".readout").textContent()).toMatch(/^base 2[45]\d: [ACGT], quality \d+, scan \d+$/);
  const dragged = await count(async () => {
    await page.mouse.down();
    await page.mouse.move(box.x + box.width * 0.75, box.y + 60, { steps: 4 });
    await page.mouse.up();
  });
  expect(dragged).toBeLessThan(zoomed / 2);
  expect(await count(() => page.keyboard.press("-"))).toBeGreaterThan(dragged);
  expect(stored.letters.startsWith(await lettersAfter("Home"))).toBe(true);
  expect(stored.letters.indexOf(await lettersAfter("ArrowRight", 12))).toBeGreaterThan(0);
  expect(stored.letters.endsWith(await lettersAfter("End"))).toBe(true);
});

test("has the sequence, also as FASTA, and the raw curves", async () => {
  expect((await page.locator(".sequence").textContent())!.replace(/ /g, "")).toBe(stored.letters);
  await page.evaluate(() => {
    navigator.clipboard.writeText = (text) => Promise.resolve(void (document.title = text));
  });
  await page.getByRole("button", { name: "Copy as FASTA" }).click();
  await page.getByRole("button", { name: "Copied" }).waitFor();
  const copied = await page.evaluate(() => document.querySelector("title")!.textContent!);
  expect(copied.split("\n").slice(1).join("")).toBe(stored.letters);
  await page.locator("dialog summary").click();
  await page.locator("dialog details canvas").waitFor();
  await page.keyboard.press("Escape");
});

test("a failed well has its error and its raw curves at once", async () => {
  await page.locator("[role=gridcell].failed").click();
  await page.locator("dialog details canvas").waitFor();
  const row = folder.summary().find((one) => one["state"] === "failed")!;
  expect(await page.locator("dialog p.reason").textContent()).toBe(row["reason"]);
  await page.keyboard.press("Escape");
});
