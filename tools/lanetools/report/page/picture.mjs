// SPDX-License-Identifier: MIT
// Pictures of a page for the documentation: node picture.mjs PAGE.html FOLDER writes report-map.png and report-well.png.
import { resolve } from "node:path";
import { chromium } from "playwright-core";

const [page, folder] = process.argv.slice(2).map((path) => resolve(path));
const browser = await chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox"] });
const tab = await browser.newPage({ viewport: { width: 1100, height: 600 } });
await tab.goto(`file://${page}`);
await tab.locator("[role=grid]").waitFor();
await tab.screenshot({ path: `${folder}/report-map.png` });
await tab.setViewportSize({ width: 1100, height: 780 });
await tab.locator("[role=gridcell].called").first().click();
await tab.locator("dialog .chart canvas").waitFor();
await tab.getByRole("searchbox").fill("150");
await tab.getByRole("searchbox").press("Enter");
await tab.waitForTimeout(500);
await tab.locator("dialog").screenshot({ path: `${folder}/report-well.png` });
await browser.close();
