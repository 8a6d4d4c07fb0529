// SPDX-License-Identifier: Apache-2.0

// The name of a report's file: the profile and the runs that are in it. Signs that some file systems refuse become lines.
export function reportName(profile: string, runs: readonly number[]): string {
  const stem = profile.replace(/\.[^.]*$/, '').replace(/[^\w.-]+/g, '_') || 'workbench';
  return `${stem}-runs-${runs.join('-')}.html`;
}

// The runs of a report in the order of their making: it tells what changed from the first to the last.
export function reportRuns(wished: ReadonlySet<number>, kept: readonly number[]): number[] {
  return kept.filter((each) => wished.has(each)).sort((one, other) => one - other);
}
