// SPDX-License-Identifier: Apache-2.0

// Waits for what comes by itself, however slow the machine is.
export async function until(hasCome: () => boolean): Promise<void> {
  for (let i = 0; i < 6000; ++i) {
    if (hasCome()) return;
    await new Promise((resolve) => setTimeout(resolve, 5));
  }
  throw new Error(`this did not come: ${hasCome}`);
}

// Lets everything go on that waits for nothing.
export async function settle(): Promise<void> {
  for (let i = 0; i < 10; ++i) await new Promise((resolve) => setImmediate(resolve));
}

// Something to wait for that a test ends.
export class Gate {
  open: () => void = () => {};
  readonly passed = new Promise<void>((resolve) => (this.open = resolve));
}
