// SPDX-License-Identifier: Apache-2.0
//
// What the keys for looking act on: the picture of the screen that is open, or all cells of the sheet.
import { sheetView } from './CellPicture';
import { pair } from './PairPicture';
import { picture } from './PictureArea';
import { sheet } from './jobs';
import { kWhole, slideSheet, stepSheet } from './sheetView';
import { screen } from './store';

export interface Looker {
  fit(): void;
  setScale(scale: number): void;
  step(direction: 1 | -1): void;
  pan(dx: number, dy: number): void;
}

const sheetLooker: Looker = {
  fit: () => (sheetView.value = kWhole),
  setScale: (scale) => (sheetView.value = { ...sheetView.value, scale }),
  step: (direction) => (sheetView.value = stepSheet(sheetView.value, direction)),
  pan: (dx, dy) => {
    const cell = sheet.value?.cells.find((each) => each.width !== null && each.height !== null);
    if (cell) sheetView.value = slideSheet(sheetView.value, dx, dy, { width: cell.width!, height: cell.height! });
  },
};

export function looker(): Looker | null {
  if (screen.value === 'sheet') return sheetLooker;
  return screen.value === 'compare' ? pair.value : picture.value;
}
