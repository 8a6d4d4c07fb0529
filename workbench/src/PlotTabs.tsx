// SPDX-License-Identifier: Apache-2.0
import { EdgePlot, NoisePlot } from './AreaPlot';
import { HistogramPlot } from './HistogramPlot';
import { HistoryList } from './HistoryList';
import { LinePlot } from './LinePlot';
import { ProbeTable } from './ProbeTable';
import { numbers, runB, type Numbers } from './store';
import { TimingsPlot } from './TimingsPlot';

const kTabs: Record<Numbers, string> = {
  histogram: 'Histogram',
  probes: 'Probes',
  line: 'Line',
  noise: 'Noise',
  edge: 'Edge',
  timings: 'Timings',
  history: 'History',
  log: 'Log',
};

function Log() {
  const run = runB.value;
  return (
    <>
      <p class="says">What the library wrote into its log during this run.</p>
      <pre class="log" tabIndex={0}>
        {run?.log || 'No log yet.'}
      </pre>
    </>
  );
}

export function PlotTabs() {
  const tab = numbers.value;
  return (
    <section class="plots" aria-label="Numbers">
      <div class="tabs" role="tablist" aria-label="Numbers">
        {Object.entries(kTabs).map(([name, title]) => (
          <button
            key={name}
            role="tab"
            id={`tab-${name}`}
            aria-selected={tab === name}
            aria-controls="plot-body"
            data-test={`tab-${name}`}
            onClick={() => (numbers.value = name as Numbers)}
          >
            {title}
          </button>
        ))}
      </div>
      <div class="plot-body" id="plot-body" role="tabpanel" aria-labelledby={`tab-${tab}`} tabIndex={0} data-test="plot-body">
        {tab === 'histogram' && <HistogramPlot />}
        {tab === 'probes' && <ProbeTable />}
        {tab === 'line' && <LinePlot />}
        {tab === 'noise' && <NoisePlot />}
        {tab === 'edge' && <EdgePlot />}
        {tab === 'timings' && <TimingsPlot />}
        {tab === 'history' && <HistoryList />}
        {tab === 'log' && <Log />}
      </div>
    </section>
  );
}
