// SPDX-License-Identifier: Apache-2.0
//
// The keyboard. One table is what is done, and what `?` shows.
import { findBinding, nameOf } from './keyNames';
import { looker } from './looker';
import { chosenOf } from './points';
import {
  act,
  chosen,
  hasHelp,
  isBlind,
  isSaving,
  mode,
  openPlace,
  room,
  runB,
  screen,
  showsStage,
  state,
  tool,
  type Mode,
  type Screen,
  type Tool,
} from './store';

export interface Binding {
  key: string; // as KeyboardEvent.key, with Ctrl+ and Shift+
  words: string;
  group: string;
  run: () => void;
}

function look(next: Mode): () => void {
  return () => (mode.value = next);
}

function take(next: Tool): () => void {
  return () => (tool.value = next);
}

function open(next: Screen): () => void {
  return () => (screen.value = next);
}

function step(by: number): void {
  const run = runB.value;
  if (!run) return;
  const points = run.points.filter((point) => point.hasFrame);
  const index = points.findIndex((point) => JSON.stringify(chosenOf(point)) === JSON.stringify(chosen.value));
  const from = index < 0 ? points.length - 1 : index;
  const next = points[Math.min(points.length - 1, Math.max(0, from + by))];
  if (next) chosen.value = chosenOf(next);
}

function solo(): void {
  const place = openPlace.value;
  if (place?.canSwitch) void act('api/solo', { place: isSolo(place.place) ? null : place.place });
}

// Whether all other places are off.
export function isSolo(place: number): boolean {
  const switched = (state.value?.places ?? []).filter((each) => each.canSwitch && (each.runs || each.off));
  return switched.length > 1 && switched.every((each) => each.off === (each.place !== place));
}

function off(): void {
  const place = openPlace.value;
  if (place?.canSwitch) void act('api/stage', { place: place.place, off: !place.off });
}

function pin(as: 'A' | 'B'): void {
  const now = state.value;
  if (!now) return;
  if (as === 'B') void act('api/pin', { run: now.pinned.B === null ? now.run : null, as });
  else void act('api/pin', { run: now.run, as });
}

const kPan = 80;

export const bindings: Binding[] = [
  { key: '1', words: 'swipe between A (left) and B (right)', group: 'Compare', run: look('swipe') },
  { key: '2', words: 'A and B side by side', group: 'Compare', run: look('side') },
  { key: '3', words: 'blink between A and B', group: 'Compare', run: look('blink') },
  { key: '4', words: 'difference B − A', group: 'Compare', run: look('difference') },
  { key: 'a', words: 'what is shown now becomes A', group: 'Compare', run: () => pin('A') },
  { key: 'b', words: 'hold B, or let it follow', group: 'Compare', run: () => pin('B') },
  { key: 'x', words: 'blind comparison', group: 'Compare', run: () => (isBlind.value = !isBlind.value) },
  { key: '0', words: 'the whole frame', group: 'Look', run: () => looker()?.fit() },
  { key: 'z', words: '100 %', group: 'Look', run: () => looker()?.setScale(1) },
  { key: '+', words: 'larger', group: 'Look', run: () => looker()?.step(1) },
  { key: '-', words: 'smaller', group: 'Look', run: () => looker()?.step(-1) },
  { key: 'ArrowLeft', words: 'to the left', group: 'Look', run: () => looker()?.pan(kPan, 0) },
  { key: 'ArrowRight', words: 'to the right', group: 'Look', run: () => looker()?.pan(-kPan, 0) },
  { key: 'ArrowUp', words: 'up', group: 'Look', run: () => looker()?.pan(0, kPan) },
  { key: 'ArrowDown', words: 'down', group: 'Look', run: () => looker()?.pan(0, -kPan) },
  { key: 'v', words: 'hand: drag moves the picture', group: 'Measure', run: take('hand') },
  { key: 'p', words: 'probe: click for the values after every stage', group: 'Measure', run: take('probe') },
  { key: 'l', words: 'line: drag for the levels along it', group: 'Measure', run: take('line') },
  { key: 'n', words: 'area: drag for noise and edge', group: 'Measure', run: take('area') },
  { key: '[', words: 'stage before', group: 'Stages', run: () => step(-1) },
  { key: ']', words: 'stage behind', group: 'Stages', run: () => step(1) },
  { key: 'f', words: 'picture of this stage, or of the result', group: 'Stages', run: () => (showsStage.value = !showsStage.value) },
  { key: 's', words: 'this stage alone, or all', group: 'Stages', run: solo },
  { key: 'o', words: 'this stage off, or on', group: 'Stages', run: off },
  { key: 'u', words: 'undo', group: 'Profile', run: () => void act('api/undo') },
  { key: 'Shift+U', words: 'redo', group: 'Profile', run: () => void act('api/redo') },
  { key: 'Ctrl+s', words: 'look at the changes and save them', group: 'Profile', run: () => (isSaving.value = true) },
  { key: 't', words: 'Tune', group: 'Screens', run: open('tune') },
  { key: 'h', words: 'Sheet', group: 'Screens', run: open('sheet') },
  { key: 'e', words: 'Profile', group: 'Screens', run: open('profile') },
  { key: 'c', words: 'Compare', group: 'Screens', run: open('compare') },
  { key: 'r', words: 'Report', group: 'Screens', run: open('report') },
  {
    key: 'd',
    words: 'dark or light room',
    group: 'Screens',
    run: () => (room.value = room.value === 'dark' ? 'light' : 'dark'),
  },
  { key: '?', words: 'these keys', group: 'Screens', run: () => (hasHelp.value = !hasHelp.value) },
];

// Whoever types means letters. Arrows belong to what has the focus, if it uses them.
function isTyping(target: EventTarget | null, key: string): boolean {
  if (!(target instanceof HTMLElement)) return false;
  if (target.isContentEditable) return true;
  if (target instanceof HTMLSelectElement || target instanceof HTMLTextAreaElement) return true;
  if (target instanceof HTMLInputElement) return target.type !== 'range' || key.startsWith('Arrow');
  return key.startsWith('Arrow') && target.getAttribute('role') === 'tab';
}

export function onKey(event: KeyboardEvent): void {
  const name = nameOf(event);
  if (name === 'Escape') {
    hasHelp.value = false;
    isSaving.value = false;
    tool.value = 'hand';
    return;
  }
  if (isTyping(event.target, event.key) && name !== 'Ctrl+s') return;
  if (isSaving.value || hasHelp.value) return;
  const binding = findBinding(bindings, name);
  if (!binding) return;
  event.preventDefault();
  binding.run();
}
