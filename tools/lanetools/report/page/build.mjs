// SPDX-License-Identifier: MIT
// Bundles the page into one HTML file and writes it as C++: node build.mjs TARGET.cpp
import { createHash } from "node:crypto";
import { readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";

const here = dirname(fileURLToPath(import.meta.url));

const hash = (text) => "sha256-" + createHash("sha256").update(text).digest("base64");

const bundled = await build({
  entryPoints: [join(here, "src/main.ts")],
  bundle: true,
  minify: true,
  charset: "ascii",
  format: "iife",
  target: "es2022",
  write: false,
});
const js = bundled.outputFiles[0].text.trim().replaceAll("</script", "<\\/script");
const css = ["node_modules/uplot/dist/uPlot.min.css", "src/page.css"]
  .map((name) => readFileSync(join(here, name), "utf8").trim())
  .join("\n");

const license = readFileSync(join(here, "node_modules/uplot/LICENSE"), "utf8").trim();

// A function as replacement: "$&" in the program is no pattern.
const page = readFileSync(join(here, "src/page.html"), "utf8")
  .replace("@SCRIPT@", hash(js))
  .replace("@STYLE@", hash(css))
  .replace("@LICENSE@", () => license)
  .replace("@CSS@", () => css)
  .replace("@JS@", () => js);

const bytes = Buffer.from(page, "utf8");
const rows = [];
for (let i = 0; i < bytes.length; i += 24) rows.push([...bytes.subarray(i, i + 24)].join(","));
writeFileSync(
  process.argv[2],
  `// Made by report/page/build.mjs.
#include "lanetools/report/PlatePage.h"

namespace lanetools {

static constexpr unsigned char bytes[] = {
${rows.join(",\n")}};

const std::string_view pageTemplate(reinterpret_cast<const char*>(bytes), sizeof bytes);

}  // namespace lanetools
`,
);
