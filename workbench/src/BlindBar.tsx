// SPDX-License-Identifier: Apache-2.0
import { useEffect, useState } from 'preact/hooks';
import { blindOrder, choiceOf, deal } from './blind';
import { getJson } from './client';
import { act, complain, isBlind, runA, runB } from './store';

interface Choices {
  choices: { a: number; b: number; aBetter: number; bBetter: number; same: number }[];
}

export function BlindBar() {
  const [made, setMade] = useState(0);
  const [told, setTold] = useState('');
  const a = runA.value;
  const b = runB.value;
  useEffect(() => {
    setMade(0);
    setTold('');
    deal();
  }, [a?.id, b?.id]);
  if (!a || !b || a.id === b.id) {
    return (
      <div class="bar blind" data-test="blind">
        A blind comparison needs two runs: pin one as A in the history.
        <button onClick={() => (isBlind.value = false)}>Close</button>
      </div>
    );
  }
  const choose = async (side: 'left' | 'right' | 'same'): Promise<void> => {
    if (!(await act('api/choose', { a: a.id, b: b.id, better: choiceOf(side, blindOrder.value.isSwapped) }))) return;
    setMade(made + 1);
    setTold('');
    deal();
  };
  const reveal = async (): Promise<void> => {
    try {
      const { choices } = await getJson<Choices>('api/choices');
      const own = choices.find((each) => each.a === a.id && each.b === b.id);
      setTold(
        own
          ? `run ${a.id} (A) better ${own.aBetter} times, run ${b.id} (B) ${own.bBetter} times, no difference ${own.same} times`
          : 'nothing was chosen yet',
      );
    } catch (error) {
      complain(error);
    }
  };
  return (
    <div class="bar blind" data-test="blind">
      Which side is better?
      <button data-test="blind-left" onClick={() => choose('left')}>
        Left
      </button>
      <button onClick={() => choose('same')}>No difference</button>
      <button data-test="blind-right" onClick={() => choose('right')}>
        Right
      </button>
      <span>{made} chosen</span>
      <button onClick={reveal}>Tell</button>
      <span data-test="blind-told">{told}</span>
      <span class="gap" />
      <button onClick={() => (isBlind.value = false)}>Close</button>
    </div>
  );
}
