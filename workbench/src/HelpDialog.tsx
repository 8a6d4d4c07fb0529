// SPDX-License-Identifier: Apache-2.0
import { Dialog } from './Dialog';
import { bindings } from './keys';
import { hasHelp } from './store';

const kNames: Record<string, string> = { ArrowLeft: '←', ArrowRight: '→', ArrowUp: '↑', ArrowDown: '↓' };

export function HelpDialog() {
  const groups = [...new Set(bindings.map((each) => each.group))];
  return (
    <Dialog title="Keys" onClose={() => (hasHelp.value = false)}>
      <div class="keys" data-test="keys">
        {groups.map((group) => (
          <section key={group}>
            <h3>{group}</h3>
            <dl>
              {bindings
                .filter((each) => each.group === group)
                .map((each) => (
                  <div key={each.key}>
                    <dt>
                      <kbd>{kNames[each.key] ?? each.key}</kbd>
                    </dt>
                    <dd>{each.words}</dd>
                  </div>
                ))}
            </dl>
          </section>
        ))}
      </div>
      <p class="note">The wheel zooms, a drag moves, a drag with the right button changes the window. Escape closes.</p>
    </Dialog>
  );
}
