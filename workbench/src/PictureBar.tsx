// SPDX-License-Identifier: Apache-2.0
import { useEffect, useState } from 'preact/hooks';
import { cleanWindow, parseWindow } from './greys';
import { hover, probe } from './marks';
import { ModeButtons } from './ModeButtons';
import { canCompare, picture, sides, viewport } from './PictureArea';
import { SizeButtons } from './SizeButtons';
import { findPoint, findTwin } from './points';
import { grey, isBlind, ownWindow, shownWish, tool, type Tool } from './store';

const kTools: { tool: Tool; name: string; title: string }[] = [
  { tool: 'hand', name: 'Hand', title: 'Drag moves the picture (V)' },
  { tool: 'probe', name: 'Probe', title: 'Click for the values after every stage (P)' },
  { tool: 'line', name: 'Line', title: 'Drag for the levels along a line (L)' },
  { tool: 'area', name: 'Area', title: 'Drag for noise and edge (N)' },
];

// The level under the pointer, of the side that it is over, asked for when it rests.
function Hover() {
  const at = hover.value;
  const [left, right] = sides();
  const isPair = left !== null && right !== null && canCompare(left, right);
  const run = isPair && at?.side === 'left' ? left : right;
  const wish = shownWish.value;
  const [level, setLevel] = useState<string>('');
  useEffect(() => {
    setLevel('');
    if (!at || !run || run.points.length === 0) return;
    const aborts = new AbortController();
    const timer = window.setTimeout(async () => {
      try {
        const values = await probe(run, at.x, at.y, aborts.signal);
        const point = run === right ? findPoint(run, wish) : findTwin(run, right!, wish);
        const value = point ? values[point.point] : undefined;
        setLevel(value === null || value === undefined ? '' : String(value));
      } catch {
        // the pointer has gone on
      }
    }, 40);
    return () => {
      clearTimeout(timer);
      aborts.abort();
    };
  }, [at?.x, at?.y, run?.id, run?.state, JSON.stringify(wish)]);
  const name = isPair && !isBlind.value ? (run === left ? 'A ' : 'B ') : '';
  return (
    <span class={at ? 'hover' : 'hover none'} data-test="hover">
      {at ? `${name}${at.x}, ${at.y}` : ''} {at && level !== '' ? `= ${level}` : ''}
    </span>
  );
}

export function WindowField() {
  const window = grey.value;
  const shown = `${window.low}:${window.high}`;
  return (
    <span class="field">
      <label class="field" title="Levels that become black and white; drag the picture with the right button">
        Window
        <input
          class="window"
          data-test="window"
          value={shown}
          onChange={(event) => {
            const next = parseWindow(event.currentTarget.value);
            if (next) ownWindow.value = cleanWindow(next.low, next.high);
            event.currentTarget.value = `${grey.value.low}:${grey.value.high}`;
          }}
        />
      </label>
      <button
        class="icon"
        aria-label="Window from 0 to the section's top level"
        title="0 to the section's top level"
        disabled={!ownWindow.value}
        onClick={() => (ownWindow.value = null)}
      >
        ↺
      </button>
    </span>
  );
}

export function PictureBar() {
  return (
    <div class="bar">
      <ModeButtons />
      <div class="group" role="group" aria-label="What a drag does">
        {kTools.map((each) => (
          <button
            key={each.tool}
            title={each.title}
            aria-pressed={tool.value === each.tool}
            data-test={`tool-${each.tool}`}
            onClick={() => (tool.value = each.tool)}
          >
            {each.name}
          </button>
        ))}
      </div>
      <span class="gap" />
      <Hover />
      <WindowField />
      <SizeButtons picture={picture.value} view={viewport.value} />
    </div>
  );
}
