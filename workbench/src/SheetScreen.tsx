// SPDX-License-Identifier: Apache-2.0
//
// One frame by many values of a key, or many frames by one profile: what helps here, and what it costs there.
import { signal } from '@preact/signals';
import { useEffect } from 'preact/hooks';
import { CellPicture, sheetView } from './CellPicture';
import { findJobs, sheet } from './jobs';
import type { Cell, Sheet } from './protocol';
import { kind, madeOf, SheetForm } from './SheetForm';
import { cellRow, kCellHead, noiseRatio, orderCells, type CellOrder } from './sheetValues';
import { kWhole } from './sheetView';
import { act, complain, screen, state, tell } from './store';
import { tableText } from './table';
import './screens.css';

const kSides = { after: 'Result', before: 'Frame as read', both: 'Both' } as const;
const kSizes = [160, 220, 320, 480, 720];
const side = signal<keyof typeof kSides>('after');
const size = signal(320);
const order = signal<CellOrder>('given');

function percent(share: number): string {
  return `${(100 * share).toFixed(1)} %`;
}

// Whether a sheet shows frames of this desk, and not values of a key.
function isOfFrames(made: Sheet): boolean {
  const names = new Set(state.value!.frames.map((each) => each.name));
  return made.cells.every((each) => names.has(each.label));
}

function Figures(props: { cell: Cell; hasFirst: boolean }) {
  const { before, after, changedFromFirst } = props.cell;
  const ratio = noiseRatio(props.cell);
  return (
    <dl class="figures">
      <div>
        <dt>median</dt>
        <dd>
          {before?.median ?? '–'} → {after?.median ?? '–'}
        </dd>
      </div>
      <div>
        <dt>noise</dt>
        <dd>
          {before?.noise?.toFixed(1) ?? '–'} → {after?.noise?.toFixed(1) ?? '–'}
          {ratio !== null && ` (× ${ratio.toFixed(2)})`}
        </dd>
      </div>
      {props.hasFirst && props.cell.cell > 0 && changedFromFirst !== null && (
        <div>
          <dt>unlike the first</dt>
          <dd>{percent(changedFromFirst)}</dd>
        </div>
      )}
    </dl>
  );
}

// What a cell is good for: its value goes into the profile, or its frame into Tune.
function CellAction(props: { cell: Cell }) {
  const { cell } = props;
  const made = madeOf.value;
  if (made && made.id === sheet.value?.id) {
    const value = made.values[cell.cell];
    if (value === undefined) return null;
    const take = async (): Promise<void> => {
      if (await act('api/set', { section: made.section, key: made.key, value })) tell(`${made.key} is ${value} now.`);
    };
    return (
      <button class="small" title={`Set ${made.key} to ${value}`} data-test={`cell-take-${cell.cell}`} onClick={take}>
        Take it
      </button>
    );
  }
  const frame = state.value!.frames.find((each) => each.name === cell.label);
  if (!frame || !isOfFrames(sheet.value!)) return null;
  const open = async (): Promise<void> => {
    if (await act('api/frame', { id: frame.id })) screen.value = 'tune';
  };
  return (
    <button class="small" data-test={`cell-open-${cell.cell}`} onClick={open}>
      Open in Tune
    </button>
  );
}

function CellCard(props: { sheet: Sheet; cell: Cell }) {
  const { cell } = props;
  const hasPicture = cell.width !== null && cell.height !== null && cell.state === 'done';
  const sides = side.value === 'both' ? (['before', 'after'] as const) : ([side.value] as const);
  // A strip of another shape is shown in a usual one.
  const shape = hasPicture ? Math.min(1.6, Math.max(0.6, cell.width! / cell.height!)) : 0.8;
  const width = Math.round(size.value * shape);
  return (
    <figure class="cell" data-test={`cell-${cell.cell}`} data-state={cell.state}>
      <div class="cell-pictures" style={{ height: `${size.value}px`, minWidth: `${width}px` }}>
        {hasPicture
          ? sides.map((which) => (
              <CellPicture
                key={which}
                width={width}
                height={size.value}
                label={`${cell.label}, ${kSides[which].toLowerCase()}`}
                source={{
                  path: `api/jobs/${props.sheet.id}/cells/${cell.cell}/view`,
                  fields: { which },
                  frame: { width: cell.width!, height: cell.height! },
                }}
              />
            ))
          : (
              <p class="note">
                {cell.error
                  ? `${cell.error.what}. ${cell.error.remedy}`
                  : props.sheet.state === 'running'
                    ? 'Waits for its turn.'
                    : 'Was not made.'}
              </p>
            )}
      </div>
      <figcaption>
        <b>{cell.label}</b>
        <CellAction cell={cell} />
        {hasPicture && <Figures cell={cell} hasFirst={!isOfFrames(props.sheet)} />}
      </figcaption>
    </figure>
  );
}

function stateWords(made: Sheet): string {
  if (made.state === 'running') return `${made.done} of ${made.total} made`;
  if (made.state === 'cancelled') return `stopped after ${made.done} of ${made.total}`;
  const failed = made.cells.filter((each) => each.state === 'failed').length;
  if (failed > 0) return `${made.total - failed} made, ${failed} failed`;
  const isAlike = made.total > 1 && !isOfFrames(made) && made.cells.slice(1).every((each) => each.changedFromFirst === 0);
  return `${made.total} made${isAlike ? ', all alike: the key changes nothing on this frame' : ''}`;
}

function SheetBar(props: { sheet: Sheet }) {
  const made = props.sheet;
  const reduced = made.cells.some((each) => (each.step ?? 1) > 1);
  const copy = async (): Promise<void> => {
    await navigator.clipboard.writeText(tableText(kCellHead, made.cells.map(cellRow)));
    tell('Copied the table.');
  };
  return (
    <div class="bar">
      <div class="group" role="group" aria-label="What each cell shows">
        {Object.entries(kSides).map(([name, title]) => (
          <button
            key={name}
            aria-pressed={side.value === name}
            data-test={`sheet-side-${name}`}
            onClick={() => (side.value = name as keyof typeof kSides)}
          >
            {title}
          </button>
        ))}
      </div>
      <label class="field">
        Order
        <select
          data-test="sheet-order"
          value={order.value}
          onChange={(event) => (order.value = event.currentTarget.value as CellOrder)}
        >
          <option value="given">as given</option>
          <option value="noise">most noise first</option>
          <option value="median">brightest first</option>
          {!isOfFrames(made) && <option value="changed">most unlike the first</option>}
        </select>
      </label>
      <label class="field">
        Size
        <select value={String(size.value)} onChange={(event) => (size.value = Number(event.currentTarget.value))}>
          {kSizes.map((each) => (
            <option key={each} value={String(each)}>
              {each}
            </option>
          ))}
        </select>
      </label>
      <div class="group" role="group" aria-label="Part">
        <button
          title="All frames whole (0)"
          data-test="sheet-fit"
          aria-pressed={sheetView.value.scale === null}
          onClick={() => (sheetView.value = kWhole)}
        >
          Fit
        </button>
        <button
          title="A pixel of the frame on a pixel of the screen, in all cells (Z)"
          data-test="sheet-full"
          aria-pressed={sheetView.value.scale === 1}
          onClick={() => (sheetView.value = { ...sheetView.value, scale: 1 })}
        >
          100 %
        </button>
      </div>
      <span class="note">
        {sheetView.value.scale === null ? 'Ctrl and the wheel zoom all cells.' : 'A drag moves all cells.'}
        {reduced && ' Pictures are kept smaller, so that all of them fit.'}
      </span>
      <span class="gap" />
      <span data-test="sheet-state" data-state={made.state} role="status">
        {stateWords(made)}
      </span>
      <button data-test="sheet-copy" onClick={() => copy().catch(complain)}>
        Copy as a table
      </button>
    </div>
  );
}

export function SheetScreen() {
  const made = sheet.value;
  useEffect(findJobs, []);
  return (
    <main class="sheet-screen" aria-label="Sheet">
      <SheetForm />
      {made ? (
        <>
          <SheetBar sheet={made} />
          <div class="cells" data-test="cells" tabIndex={0} role="group" aria-label="Cells of the sheet">
            {orderCells(made.cells, order.value).map((cell) => (
              <CellCard key={`${made.id} ${cell.cell}`} sheet={made} cell={cell} />
            ))}
          </div>
        </>
      ) : (
        <div class="empty" data-test="sheet-empty">
          <p>
            {kind.value === 'values'
              ? 'A sheet shows one frame by many values of one key, side by side.'
              : 'A sheet shows many frames by the profile as it stands now, with what it does to each of them.'}
          </p>
          <p class="note">The profile stays as it is until you take a value.</p>
        </div>
      )}
    </main>
  );
}
