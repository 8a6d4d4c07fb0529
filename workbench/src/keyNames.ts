// SPDX-License-Identifier: Apache-2.0

// "Ctrl+s", "Shift+U", "a": Shift is named with letters only, for it is how other signs are typed.
export function nameOf(event: Pick<KeyboardEvent, 'key' | 'ctrlKey' | 'metaKey' | 'shiftKey' | 'altKey'>): string {
  const isLetter = /^[A-Za-z]$/.test(event.key);
  const ctrl = event.ctrlKey || event.metaKey ? 'Ctrl+' : '';
  const alt = event.altKey ? 'Alt+' : '';
  return ctrl + alt + (isLetter && event.shiftKey ? 'Shift+' : '') + event.key;
}

// The plus sign is often typed with Shift, on the key of the equals sign: that will do without Shift.
export function findBinding<T extends { key: string }>(bindings: readonly T[], name: string): T | undefined {
  return bindings.find((each) => each.key === name || (each.key === '+' && name === '='));
}
