// SPDX-License-Identifier: MIT
// Texts from files are data: they show as they are and run nothing.

import { execFileSync } from "node:child_process";
import { afterAll, afterEach, beforeAll, expect, test } from "vitest";
import { OfflineBrowser } from "./browser.ts";
import { PlateFolder } from "./plates.ts";

const names: Record<string, string> = {
  A01: "<script>alert(1)</script>",
  A02: `"'><img src=x onerror=alert(1)>`,
  A03: "</script><!--<script>",
  A04: "Grüße 試料 \u{1f9ec} \u2028",
  A05: "x".repeat(10_000),
  A06: "&lt;b&gt; $& ${1} \\u003c",
};

const folder = new PlateFolder();
let browser: OfflineBrowser;

beforeAll(async () => {
  folder.generate("--wells", "7", "--bases", "60");
  for (const [well, name] of Object.entries(names))
    folder.describe(folder.raw(well), "name", name, "plate", names["A02"]!, "comment", name);
  // 8-bit text, which no argument of this process can hold.
  const command = `"$DESCRIBE_SAMPLE" "$0" name "$(printf 'caf\\351')" plate "$1"`;
  execFileSync("sh", ["-c", command, folder.raw("A07"), names["A02"]!]);
  folder.call();
  browser = await OfflineBrowser.start();
});

afterEach(() => expect(browser.troubles).toEqual([]));

afterAll(async () => {
  await browser.close();
  folder.remove();
});

test("names of samples and plates show as they are, everywhere", async () => {
  const page = await browser.open(folder.report());
  expect(await page.locator("h1").textContent()).toBe(names["A02"]);
  expect(await page.title()).toBe(names["A02"]);
  const shown = await page.locator("td.text-sample").allTextContents();
  expect(shown).toEqual([...Object.values(names), "café"]);
  for (const [well, name] of Object.entries({ ...names, A07: "café" })) {
    const cell = page.locator(`[data-well=${well}]`);
    expect(await cell.getAttribute("aria-label")).toContain(`${well}, ${name}, called`);
    await cell.click();
    await page.locator("dialog .chart canvas").first().waitFor();
    expect(await page.locator("dialog h2").textContent()).toBe(`${well} ${name}`);
    if (well !== "A07") expect(await page.locator("dialog .description dd").allTextContents()).toContain(name);
    await page.keyboard.press("Escape");
  }
  expect(await page.locator("img").count()).toBe(0);
  expect(await page.locator("script").count()).toBe(2); // the plate and the program
});
