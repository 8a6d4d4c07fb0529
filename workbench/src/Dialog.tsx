// SPDX-License-Identifier: Apache-2.0
import type { ComponentChildren } from 'preact';
import { useEffect, useRef } from 'preact/hooks';

// A window over the page that has the keyboard until it is closed.
export function Dialog(props: { title: string; onClose: () => void; children: ComponentChildren }) {
  const element = useRef<HTMLDialogElement>(null);
  useEffect(() => {
    const dialog = element.current!;
    dialog.showModal();
    return () => dialog.close();
  }, []);
  return (
    <dialog ref={element} aria-label={props.title} onCancel={props.onClose} data-test="dialog">
      <div class="dialog-head">
        <h2>{props.title}</h2>
        <button class="icon" aria-label="Close" onClick={props.onClose}>
          ×
        </button>
      </div>
      {props.children}
    </dialog>
  );
}
