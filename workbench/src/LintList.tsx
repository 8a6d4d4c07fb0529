// SPDX-License-Identifier: Apache-2.0
import { signal } from '@preact/signals';
import type { Finding } from './protocol';
import { chosen, newest, screen, state } from './store';

// The line of the profile text that is to be shown.
export const wantedLine = signal<number | null>(null);

export function goTo(finding: Finding): void {
  if (finding.place !== null && finding.place !== undefined) {
    chosen.value = { kind: 'place', place: finding.place };
    screen.value = 'tune';
  } else if (finding.line > 0) {
    wantedLine.value = finding.line;
    screen.value = 'profile';
  }
}

export function LintList() {
  const now = state.value!;
  const failed = newest.value?.state === 'failed' ? newest.value.error : null;
  const failure = now.error ?? failed;
  const rank = { error: 0, warning: 1, note: 2 };
  const findings = [...now.findings].sort((one, other) => rank[one.severity] - rank[other.severity] || one.line - other.line);
  return (
    <section class="lint" aria-label="Lint" data-test="lint" tabIndex={0}>
      {failure && (
        <div class="finding error" data-test="failure">
          {[failure.where, failure.what].filter(Boolean).join(': ')}
          {failure.remedy ? `; ${failure.remedy}` : ''}
        </div>
      )}
      {findings.length === 0 && !failure && <div class="finding note">Lint finds nothing in this section.</div>}
      {findings.map((finding, index) => (
        <button key={index} class={`finding plain ${finding.severity}`} onClick={() => goTo(finding)}>
          <span class={`dot ${finding.severity}`} aria-hidden="true" />
          {now.profile.name}
          {finding.line > 0 ? `:${finding.line}` : ''} {finding.text} <span class="rule">[{finding.rule}]</span>
        </button>
      ))}
    </section>
  );
}
