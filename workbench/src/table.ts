// SPDX-License-Identifier: Apache-2.0

// A table that spreadsheets take: fields with tabs between them.
export function tableText(head: string[], rows: (string | number | null)[][]): string {
  return [head, ...rows].map((row) => row.map((field) => (field === null ? '' : String(field))).join('\t')).join('\n') + '\n';
}
