// SPDX-License-Identifier: Apache-2.0
import { useEffect, useRef, useState } from 'preact/hooks';
import { LatestPost } from './client';
import type { KeyValue } from './protocol';
import { numberText, sliderOf } from './steps';
import { act, complain } from './store';

const kRelease = 600; // milliseconds until the state that an answer belongs to is there, too

// One key with what it takes: a slider over the range that makes sense, a field for anything at all, choices.
export function Control(props: { section: string; value: KeyValue }) {
  const { section, value } = props;
  const [isOpen, setOpen] = useState(false);
  // While a hand is on it a control shows what the hand says, and not what the tool has heard of it yet: a slow tool
  // would put old text under the fingers.
  const [held, setHeld] = useState<string | null>(null);
  const release = useRef(0);
  const poster = useRef<LatestPost | null>(null);
  poster.current ??= new LatestPost('api/set', complain);
  useEffect(() => {
    const own = poster.current!;
    own.onIdle = () => {
      release.current = window.setTimeout(() => setHeld(null), kRelease);
    };
    return () => {
      own.onIdle = () => {};
      clearTimeout(release.current);
    };
  }, []);

  const set = (text: string): void => {
    setHeld(text);
    clearTimeout(release.current);
    poster.current!.push({ section, key: value.key, value: text });
  };
  const shown = held ?? value.text ?? '';
  const number = Number(held ?? value.value);
  const slider = sliderOf(value);
  const isChanged = value.text !== value.fileText;
  const id = `key-${section}-${value.key}`;
  return (
    <div class={value.hasEffect ? 'control' : 'control idle'} data-test={`control-${value.key}`}>
      <label class="key" for={id} title={value.hasEffect ? value.key : `${value.key} has no effect`}>
        {value.base.split('_').flatMap((part, index) => (index === 0 ? [part] : ['_', <wbr key={index} />, part]))}
      </label>
      {value.choices && value.choices.length > 0 ? (
        <span class="group" role="group" aria-label={value.key}>
          {value.choices.map((choice) => (
            <button
              key={choice}
              aria-pressed={number === choice}
              data-test={`choice-${value.key}-${choice}`}
              onClick={() => set(String(choice))}
            >
              {choice}
            </button>
          ))}
        </span>
      ) : slider ? (
        <input
          type="range"
          class="slider"
          aria-label={`${value.key} by slider`}
          data-test={`slider-${value.key}`}
          min={0}
          max={slider.count}
          step={1}
          value={Math.round(slider.toPosition(Number.isFinite(number) ? number : 0))}
          onInput={(event) => set(numberText(slider.toValue(Number(event.currentTarget.value))))}
        />
      ) : (
        <span />
      )}
      <input
        id={id}
        class="value"
        data-test={`field-${value.key}`}
        value={shown}
        placeholder={value.text === null ? String(value.default) : ''}
        spellcheck={false}
        onInput={(event) => set(event.currentTarget.value)}
      />
      <span class="about">
        <span class="note">
          {[value.range, value.default !== '' ? `default ${value.default}` : ''].filter(Boolean).join(', ')}
        </span>
        {isChanged && (
          <button
            class="plain changed"
            data-test={`back-${value.key}`}
            title="Back to what the file has"
            onClick={() => {
              setHeld(null);
              void act('api/unset', { section, key: value.key });
            }}
          >
            file {value.fileText ?? 'none'} → {value.text ?? 'none'} *
          </button>
        )}
      </span>
      <button
        class="icon help"
        aria-label={`What ${value.key} is`}
        aria-expanded={isOpen}
        data-test={`help-${value.key}`}
        onClick={() => setOpen(!isOpen)}
      >
        ?
      </button>
      {isOpen && (
        <div class="help-text">
          {value.meaning && <p>{value.meaning}</p>}
          {value.look && <p>{value.look}</p>}
          <p class="note">
            {value.range && `${value.range}; `}default {value.default || 'empty'}; read as {String(value.value)} ({value.mark})
          </p>
        </div>
      )}
    </div>
  );
}
