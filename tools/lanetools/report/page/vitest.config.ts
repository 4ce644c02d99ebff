// SPDX-License-Identifier: MIT
import { defineConfig } from "vitest/config";

// Plates are called by the real program and shown in a real browser, perhaps on a busy machine.
export default defineConfig({ test: { testTimeout: 60_000, hookTimeout: 120_000, fileParallelism: false } });
