// SPDX-License-Identifier: Apache-2.0
import { useEffect } from 'preact/hooks';
import { Head } from './Head';
import { HelpDialog } from './HelpDialog';
import { CompareScreen } from './CompareScreen';
import { onKey } from './keys';
import { LintList } from './LintList';
import { Notices } from './Notices';
import { Panel } from './Panel';
import { PictureArea } from './PictureArea';
import { PlotTabs } from './PlotTabs';
import { ProfileScreen } from './ProfileScreen';
import { ReportScreen } from './ReportScreen';
import { SaveDialog } from './SaveDialog';
import { SheetScreen } from './SheetScreen';
import { hasHelp, isSaving, link, screen, state } from './store';
import { Strip } from './Strip';

export function App() {
  useEffect(() => {
    const listener = (event: KeyboardEvent): void => onKey(event);
    window.addEventListener('keydown', listener);
    return () => window.removeEventListener('keydown', listener);
  }, []);
  if (!state.value) {
    return (
      <main class="empty" data-test="empty">
        <h1>Workbench</h1>
        <p>{link.value === 'lost' ? 'The tool does not answer. Start it again and open the address it prints.' : 'Opening…'}</p>
      </main>
    );
  }
  return (
    <div class="app" data-screen={screen.value} data-test="app">
      <Head />
      {screen.value === 'tune' && (
        <>
          <Strip />
          <main class="tune">
            <PictureArea />
            <div class="side">
              <Panel />
              <PlotTabs />
            </div>
          </main>
          <LintList />
        </>
      )}
      {screen.value === 'sheet' && <SheetScreen />}
      {screen.value === 'profile' && <ProfileScreen />}
      {screen.value === 'compare' && <CompareScreen />}
      {screen.value === 'report' && <ReportScreen />}
      {isSaving.value && <SaveDialog />}
      {hasHelp.value && <HelpDialog />}
      <Notices />
    </div>
  );
}
