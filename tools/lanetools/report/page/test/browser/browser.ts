// SPDX-License-Identifier: MIT
// A real browser without a network. Whatever a page says on its console, and whatever it asks of the network, is kept.

import { chromium, type Browser, type Page } from "playwright-core";

export class OfflineBrowser {
  /** Must be empty at the end of each test. */
  troubles: string[] = [];
  private constructor(private readonly browser: Browser) {}

  static async start(): Promise<OfflineBrowser> {
    // The sandbox is not there for root.
    return new OfflineBrowser(await chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox"] }));
  }

  /** Opens a file; `before` runs in the page ahead of its own program. */
  async open(path: string, options: { before?: () => void; scale?: number } = {}): Promise<Page> {
    const context = await this.browser.newContext({
      viewport: { width: 1280, height: 900 },
      deviceScaleFactor: options.scale ?? 1,
    });
    await context.setOffline(true);
    await context.route("**/*", (route) => {
      if (route.request().url() === `file://${path}`) return route.continue();
      this.troubles.push(`asks for ${route.request().url()}`);
      return route.abort();
    });
    const page = await context.newPage();
    page.setDefaultTimeout(20_000);
    page.on("console", (message) => this.troubles.push(`console: ${message.text()}`));
    page.on("pageerror", (error) => this.troubles.push(`error: ${error.message}`));
    page.on("dialog", (dialog) => {
      this.troubles.push(`dialog: ${dialog.message()}`);
      void dialog.dismiss();
    });
    if (options.before) await page.addInitScript(options.before);
    await page.goto(`file://${path}`);
    return page;
  }

  close(): Promise<void> {
    return this.browser.close();
  }
}
