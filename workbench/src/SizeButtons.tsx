// SPDX-License-Identifier: Apache-2.0
import type { Picture } from './picture';
import type { Viewport } from './viewport';

export function formatPercent(scale: number): string {
  const percent = 100 * scale;
  return `${percent >= 10 ? Math.round(percent) : percent.toFixed(1)} %`;
}

export function SizeButtons(props: { picture: Picture | null; view: Viewport | null }) {
  const { picture, view } = props;
  return (
    <div class="group" role="group" aria-label="Size">
      <button title="Smaller (−)" aria-label="Smaller" onClick={() => picture?.step(-1)}>
        −
      </button>
      <span class="scale" data-test="scale">
        {view ? formatPercent(view.scale) : ''}
      </span>
      <button title="Larger (+)" aria-label="Larger" onClick={() => picture?.step(1)}>
        +
      </button>
      <button title="The whole frame (0)" data-test="fit" onClick={() => picture?.fit()}>
        Fit
      </button>
      <button title="A pixel of the frame on a pixel of the screen (Z)" data-test="full" onClick={() => picture?.setScale(1)}>
        100 %
      </button>
    </div>
  );
}
