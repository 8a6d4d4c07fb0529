// SPDX-License-Identifier: Apache-2.0
//
// A comparison without knowing which is which: the sides are dealt anew for each choice.
import { signal } from '@preact/signals';

export const blindOrder = signal({ isSwapped: false, round: 0 });

export function deal(random: () => number = Math.random): void {
  blindOrder.value = { isSwapped: random() < 0.5, round: blindOrder.value.round + 1 };
}

// Which run a choice of "left", "right" or "same" is for.
export function choiceOf(side: 'left' | 'right' | 'same', isSwapped: boolean): 'a' | 'b' | 'same' {
  if (side === 'same') return 'same';
  return (side === 'left') === !isSwapped ? 'a' : 'b';
}
