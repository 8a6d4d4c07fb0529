// SPDX-License-Identifier: Apache-2.0

export interface Histogram {
  first: number;
  counts: number[];
  total: number;
}

// A histogram for a plot: from 0 to the top level, at most so many bins, each as wide as a whole number of levels.
// Counts are shares of all pixels in percent of a level, so that wide bins and narrow ones are of one height.
export function rebin(histogram: Histogram, top: number, most: number): { width: number; shares: number[] } {
  const width = Math.max(1, Math.ceil((top + 1) / most));
  const shares = new Array<number>(Math.ceil((top + 1) / width)).fill(0);
  histogram.counts.forEach((count, index) => {
    const bin = Math.min(shares.length - 1, Math.floor((histogram.first + index) / width));
    shares[bin]! += count;
  });
  return { width, shares: shares.map((count) => (100 * count) / histogram.total / width) };
}
