// SPDX-License-Identifier: Apache-2.0
//
// node test.mjs: the tests of the page's logic, each file bundled, by Node's own runner.
import * as fs from 'node:fs';
import * as os from 'node:os';
import * as path from 'node:path';
import { spawnSync } from 'node:child_process';
import { build } from 'esbuild';

const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'workbench-test-'));
try {
  const tests = fs.readdirSync('test').filter((leaf) => leaf.endsWith('.test.ts'));
  await build({
    entryPoints: tests.map((leaf) => path.join('test', leaf)),
    outdir: folder,
    outExtension: { '.js': '.mjs' },
    bundle: true,
    platform: 'node',
    format: 'esm',
    logLevel: 'warning',
  });
  const files = tests.map((leaf) => path.join(folder, leaf.replace(/\.ts$/, '.mjs')));
  process.exitCode = spawnSync(process.execPath, ['--test', ...files], { stdio: 'inherit' }).status ?? 1;
} finally {
  fs.rmSync(folder, { recursive: true });
}
