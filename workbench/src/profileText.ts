// SPDX-License-Identifier: Apache-2.0

// The key of a line of a profile, without its position, for help; empty where there is none.
export function keyOf(line: string): string {
  if (/^\s*[;[]/.test(line)) return '';
  const name = line.split('=')[0]!.trim();
  return name.replace(/^\d{2,3}_/, '');
}

// The line, counted from 1, at which a section begins; its name is the same in small letters. Null without one.
export function sectionLine(text: string, section: string): number | null {
  const wanted = section.trim().toLowerCase();
  const index = text.split('\n').findIndex((line) => /^\s*\[([^\]]*)\]/.exec(line)?.[1]!.trim().toLowerCase() === wanted);
  return index < 0 ? null : index + 1;
}

// The shortest stretch of a text whose replacement gives another one; null for the same.
export function replaceSpan(old: string, now: string): { from: number; to: number; insert: string } | null {
  if (old === now) return null;
  let head = 0;
  while (head < old.length && head < now.length && old[head] === now[head]) ++head;
  let tail = 0;
  while (tail < old.length - head && tail < now.length - head && old[old.length - 1 - tail] === now[now.length - 1 - tail]) ++tail;
  return { from: head, to: old.length - tail, insert: now.slice(head, now.length - tail) };
}

// The changes of two people to one text. Where they meet, one's own count.
export function mergeTexts(common: string, own: string, other: string): string {
  const ours = replaceSpan(common, own);
  const theirs = replaceSpan(common, other);
  if (!ours) return other;
  if (!theirs) return own;
  const patch = (text: string, { from, to, insert }: { from: number; to: number; insert: string }): string =>
    text.slice(0, from) + insert + text.slice(to);
  // The later one first: it does not move the other.
  if (ours.to < theirs.from) return patch(patch(common, theirs), ours);
  if (theirs.to < ours.from) return patch(patch(common, ours), theirs);
  return own;
}
