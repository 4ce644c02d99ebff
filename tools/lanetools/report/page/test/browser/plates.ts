// SPDX-License-Identifier: MIT
// Plates made and called by the real programs, and what other readers say of them.

import { execFileSync } from "node:child_process";
import { mkdirSync, mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";

const program = (name: string) => {
  const path = process.env[name];
  if (!path) throw new Error(`${name} names no program`);
  return path;
};

const run = (name: string, ...words: string[]) => execFileSync(program(name), words, { stdio: "pipe" }).toString();

/** A folder of its own with "plate" in it; remove() when done. */
export class PlateFolder {
  readonly path = mkdtempSync(join(tmpdir(), "report-"));

  at(...names: string[]): string {
    return join(this.path, ...names);
  }
  generate(...options: string[]): void {
    run("SAMPLEGEN", this.at("plate"), "--plate", "p", ...options);
  }
  raw(well: string): string {
    return this.at("plate", `p${well}.rsd`);
  }
  /** Sets fields of a sample file; see tests/support/DescribeSample.cpp. */
  describe(path: string, ...fields: string[]): void {
    run("DESCRIBE_SAMPLE", path, ...fields);
  }
  call(): void {
    mkdirSync(this.at("out"));
    run("LANEWRIGHT", "-IP", this.at("plate"), "-OD", this.at("out"), "-BC");
  }
  stored(well: string, extension = "esd"): string {
    const [folder] = execFileSync("ls", [this.at("out")])
      .toString()
      .split("\n");
    return this.at("out", folder!, `p${well}.${extension}`);
  }
  /** Makes the page; gives its path. */
  report(...options: string[]): string {
    run("LANETOOLS", "report", this.at("out"), "--raw", this.at("plate"), "-o", this.at("page.html"), ...options);
    return this.at("page.html");
  }
  /** The rows of `lanetools summary`, every value as its text. */
  summary(): Record<string, string>[] {
    // Exit code 3 when samples are not called.
    const words = ["summary", this.at("out"), "--raw", this.at("plate"), "--min-pass", "0"];
    const [head, ...rows] = run("LANETOOLS", ...words)
      .trimEnd()
      .split("\n")
      .map((line) => line.split("\t"));
    return rows.map((row) => Object.fromEntries(head!.map((name, i) => [name, row[i]!])));
  }
  remove(): void {
    rmSync(this.path, { recursive: true });
  }
}

export interface StoredSample {
  letters: string;
  positions: number[];
  start: number;
}

/** What the reader in Python makes of a stored sample. */
export function readStored(path: string): StoredSample {
  const code = `
import json, sys
from lanewright import read
sample = read(sys.argv[1])
print(json.dumps({"letters": sample.bases.letters, "positions": [int(at) for at in sample.bases.positions],
                  "start": sample.info["START TRACE PROCESSING"]}))`;
  return JSON.parse(execFileSync("/usr/bin/python3", ["-c", code, path]).toString()) as StoredSample;
}
