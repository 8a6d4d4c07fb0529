// SPDX-License-Identifier: Apache-2.0
import { useEffect, useRef } from 'preact/hooks';
import uPlot from 'uplot';
import 'uplot/dist/uPlot.min.css';
import { room } from './store';

export interface Series {
  name: string;
  kind: 'a' | 'b' | 'curve';
  values: (number | null)[];
  scale?: 'y' | 'level';
}

// Which line is whose. A has none where its run lacks the stage, or is of another frame.
export function sidesSaid(hasA: boolean): string {
  return hasA ? 'B solid, A dashed' : 'B; A has nothing like it';
}

// A plot with the width of its box. All in greys: what matters is the shape.
export function Plot(props: {
  xs: number[];
  xName: string;
  yName: string;
  series: Series[];
  height: number;
  label: string;
  isBars?: boolean;
}) {
  const box = useRef<HTMLDivElement>(null);
  const dark = room.value === 'dark';
  useEffect(() => {
    const own = box.current!;
    const ink = dark ? '#c8c8c8' : '#333';
    const strokes = dark ? { a: '#8a8a8a', b: '#f4f4f4', curve: '#bdbdbd' } : { a: '#8a8a8a', b: '#111', curve: '#555' };
    const axis = { stroke: ink, grid: { stroke: dark ? '#3a3a3a' : '#c4c4c4', width: 1 }, ticks: { show: false } };
    const hasCurve = props.series.some((each) => each.scale === 'level');
    const plot = new uPlot(
      {
        width: Math.max(120, own.clientWidth),
        height: props.height,
        legend: { show: false },
        cursor: { drag: { x: true, y: false } },
        scales: { x: { time: false }, y: { range: (_, least, most) => [Math.min(0, least), most <= 0 ? 1 : most * 1.05] } },
        axes: [
          { ...axis, label: props.xName, labelSize: 18, size: 30 },
          { ...axis, label: props.yName, labelSize: 18, size: 46 },
          ...(hasCurve ? [{ ...axis, scale: 'level', side: 1 as const, grid: { show: false }, size: 46 }] : []),
        ],
        series: [
          { label: props.xName },
          ...props.series.map((each) => ({
            label: each.name,
            scale: each.scale ?? 'y',
            stroke: strokes[each.kind],
            width: each.kind === 'curve' ? 2 : 1.25,
            ...(each.kind === 'a' ? { dash: [4, 3] } : {}),
            points: { show: false },
            ...(props.isBars ? { paths: uPlot.paths.bars!({ size: [0.7] }), fill: strokes[each.kind] } : {}),
          })),
        ],
      },
      [props.xs, ...props.series.map((each) => each.values)] as uPlot.AlignedData,
      own,
    );
    const resize = new ResizeObserver(() => plot.setSize({ width: Math.max(120, own.clientWidth), height: props.height }));
    resize.observe(own);
    return () => {
      resize.disconnect();
      plot.destroy();
    };
  }, [props.xs, props.series, props.height, dark]);
  return <div class="plot" ref={box} role="img" aria-label={props.label} />;
}
