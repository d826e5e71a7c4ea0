// SPDX-License-Identifier: MIT
import { type KeyboardEvent, type ReactNode, useEffect, useRef } from 'react';

const reachable = 'button:not(:disabled)';

/**
 * Buttons that are one stop of the Tab key; the arrow keys go from one to the next (the toolbar pattern of the ARIA
 * Authoring Practices).
 */
export function Toolbar({
  label,
  className = '',
  children,
}: {
  label: string;
  className?: string;
  children: ReactNode;
}) {
  const bar = useRef<HTMLDivElement>(null);
  const last = useRef<HTMLElement | null>(null);
  const buttons = (): HTMLElement[] => [
    ...(bar.current?.querySelectorAll<HTMLElement>(reachable) ?? []),
  ];
  // Buttons come, go and are disabled with every edit; one of them is always the stop.
  useEffect(() => {
    const all = buttons();
    const stop = all.find((one) => one === last.current) ?? all[0];
    all.forEach((one) => {
      one.tabIndex = one === stop ? 0 : -1;
    });
  });
  const onKeyDown = (event: KeyboardEvent): void => {
    const all = buttons();
    const at = all.findIndex((one) => one === document.activeElement);
    const targets: Readonly<Record<string, number>> = {
      ArrowRight: (at + 1) % all.length,
      ArrowLeft: (at - 1 + all.length) % all.length,
      Home: 0,
      End: all.length - 1,
    };
    const target = at < 0 ? undefined : all[targets[event.key] ?? -1];
    if (target) {
      event.preventDefault();
      event.stopPropagation();
      target.focus();
    }
  };
  const onFocus = (focused: EventTarget): void => {
    const all = buttons();
    const stop = all.find((one) => one === focused);
    if (stop) {
      last.current = stop;
      all.forEach((one) => {
        one.tabIndex = one === stop ? 0 : -1;
      });
    }
  };
  return (
    <div
      ref={bar}
      role="toolbar"
      aria-label={label}
      className={`toolbar ${className}`}
      onKeyDown={onKeyDown}
      onFocus={(event) => {
        onFocus(event.target);
      }}
    >
      {children}
    </div>
  );
}
