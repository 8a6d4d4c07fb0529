// SPDX-License-Identifier: Apache-2.0
//
// What the tool says, as docs/workbench-protocol.md tells.

export interface Failure {
  where: string;
  what: string;
  remedy: string;
}

export interface FrameItem {
  id: number;
  name: string;
  width: number | null;
  height: number | null;
  error: Failure | null;
}

export interface KeyValue {
  key: string;
  base: string;
  type: 'integer' | 'number' | 'single-number' | 'cut-number' | 'text';
  text: string | null;
  fileText: string | null;
  value: number | string;
  mark: string;
  line: number | null;
  default: string;
  range: string;
  smallest: number | null;
  largest: number | null;
  shape: 'any' | 'odd' | 'even' | 'power-of-two' | 'not-zero';
  choices: number[] | null;
  hasEffect: boolean;
  meaning: string;
  look: string;
}

export interface Place {
  place: number;
  role: string;
  title: string;
  section: string;
  position: number | null;
  number: number;
  stage: string | null;
  page: string | null;
  runs: boolean;
  off: boolean;
  canSwitch: boolean;
  values: KeyValue[];
}

export interface Finding {
  severity: 'note' | 'warning' | 'error';
  line: number;
  column: number;
  text: string;
  rule: string;
  place?: number | null;
}

export interface HistoryRow {
  id: number;
  name: string;
  when: string;
  frame: number;
  section: string;
  change: string;
  sha256: string;
  elapsedMs: number;
  kept: boolean;
}

export interface State {
  type: 'state';
  revision: number;
  tool: { version: string; export: string; exports: string[] };
  frames: FrameItem[];
  frame: number;
  profile: {
    name: string;
    sections: string[];
    section: string;
    chain: string;
    unsaved: number;
    canUndo: boolean;
    canRedo: boolean;
    changedOnDisk: boolean;
    topLevel: number;
    textRevision: number;
  };
  places: Place[];
  findings: Finding[];
  error: Failure | null;
  run: number | null;
  pinned: { A: number | null; B: number | null };
  history: HistoryRow[];
  against?: AgainstFile[];
}

// A file named by --against: what the desk may be compared with.
export interface AgainstFile {
  path: string;
  kind: 'profile' | 'library';
}

export interface Point {
  point: number;
  kind: 'frame' | 'input' | 'inverted' | 'stage' | 'result';
  title: string;
  place: number | null;
  ms: number | null;
  changed: number | null;
  hasFrame: boolean;
  hasCurve: boolean;
  least: number | null;
  median: number | null;
  greatest: number | null;
}

export interface Run {
  id: number;
  state: 'running' | 'picture' | 'complete' | 'failed' | 'ended';
  frame: number;
  section: string;
  change: string;
  when: string;
  before: number | null;
  elapsedMs: number | null;
  code: number | null;
  sha256: string | null;
  width: number | null;
  height: number | null;
  isLow: boolean | null;
  off: string[];
  points: Point[];
  log: string;
  findings: Finding[];
  error: Failure | null;
  aside: boolean;
  of: number | null; // of side A on another frame: the run whose settings it has
}

// Work beside the desk's own runs.
export interface Job {
  id: number;
  kind: 'sheet' | 'compare';
  done: number;
  total: number;
  state: 'running' | 'done' | 'failed' | 'cancelled';
  error: Failure | null;
}

export interface CellFigures {
  median: number;
  noise: number | null;
}

export interface Cell {
  cell: number;
  label: string;
  state: 'waiting' | 'done' | 'failed';
  width: number | null; // of the whole frame
  height: number | null;
  step?: number | null; // how many of its pixels one that is kept stands for, along each side
  before: CellFigures | null;
  after: CellFigures | null;
  changedFromFirst: number | null;
  error: Failure | null;
}

export interface Sheet extends Job {
  cells: Cell[];
}

export interface PointPair {
  title: string;
  leftPoint: number | null;
  rightPoint: number | null;
  moved?: boolean; // in both, but not in the same order
  shown?: boolean; // both have a frame there, of one size
  equal: boolean;
  differing: number | null; // pixels
  largest: number | null; // difference, in levels
}

export interface Comparison extends Job {
  left: string;
  right: string;
  keys: string[];
  points: PointPair[];
  firstDifference: number | null; // among the points
  leftRun: number | null;
  rightRun: number | null;
}

export type Event = State | { type: 'run'; run: Run } | { type: 'job'; job: Job } | { type: 'alive' };

export interface TextAnswer {
  textRevision: number;
  text: string;
  saved: string;
}

export interface DiffAnswer {
  changes: { line: number; old: string | null; new: string | null }[];
  unified: string;
  textRevision: number;
}
