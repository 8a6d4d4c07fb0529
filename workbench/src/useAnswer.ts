// SPDX-License-Identifier: Apache-2.0
import { useEffect, useState } from 'preact/hooks';

// What a question gives, as long as its words stay the same; the answer before stays until the new one is there.
export function useAnswer<T>(
  words: string | null,
  ask: (signal: AbortSignal) => Promise<T>,
): { answer: T | null; error: string } {
  const [told, setTold] = useState<{ answer: T | null; error: string }>({ answer: null, error: '' });
  useEffect(() => {
    if (words === null) {
      setTold({ answer: null, error: '' });
      return;
    }
    const aborts = new AbortController();
    ask(aborts.signal).then(
      (answer) => {
        if (!aborts.signal.aborted) setTold({ answer, error: '' });
      },
      (error: unknown) => {
        if (!aborts.signal.aborted) setTold({ answer: null, error: error instanceof Error ? error.message : String(error) });
      },
    );
    return () => aborts.abort();
  }, [words]);
  return told;
}
