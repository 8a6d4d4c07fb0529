// SPDX-License-Identifier: Apache-2.0
//
// node build.mjs FOLDER: makes the page's files in a folder, and licences.txt with the licences of what is in them.
import * as fs from 'node:fs';
import * as path from 'node:path';
import { build } from 'esbuild';

const folder = process.argv[2];
if (!folder) throw new Error('say where the page is to go');
fs.mkdirSync(folder, { recursive: true });
const result = await build({
  entryPoints: { app: 'src/main.tsx' },
  outdir: folder,
  bundle: true,
  minify: true,
  format: 'esm',
  target: ['chrome110', 'firefox115', 'safari16'],
  jsx: 'automatic',
  jsxImportSource: 'preact',
  legalComments: 'none',
  metafile: true,
  logLevel: 'warning',
});
fs.copyFileSync('src/index.html', path.join(folder, 'index.html'));

// The packages that the bundle is made of, by the files that went into it.
const packages = new Set();
for (const file of Object.keys(result.metafile.inputs)) {
  const found = /node_modules\/((?:@[^/]+\/)?[^/]+)\//.exec(file);
  if (found) packages.add(found[1]);
}
let text = 'The page of the workbench holds parts of these packages.\n';
for (const name of [...packages].sort()) {
  const home = path.join('node_modules', name);
  const about = JSON.parse(fs.readFileSync(path.join(home, 'package.json'), 'utf8'));
  const licence = fs.readdirSync(home).find((leaf) => /^licen[cs]e/i.test(leaf));
  if (!licence) throw new Error(`${name} comes without its licence`);
  text += `\n---- ${name} ${about.version}, ${about.license}\n\n${fs.readFileSync(path.join(home, licence), 'utf8').trim()}\n`;
}
fs.writeFileSync(path.join(folder, 'licences.txt'), text);
