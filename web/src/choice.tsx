// SPDX-License-Identifier: MIT

/** Buttons side by side, of which those that count are pressed. */
export function Choice<Name extends string>({
  label,
  names,
  isPressed,
  onPress,
  className = '',
}: {
  /** What the buttons are about, for screen readers. */
  label: string;
  names: readonly Name[];
  isPressed: (name: Name) => boolean;
  onPress: (name: Name) => void;
  className?: string;
}) {
  return (
    <div role="group" aria-label={label} className={`choice ${className}`}>
      {names.map((name) => (
        <button
          key={name}
          aria-pressed={isPressed(name)}
          onClick={() => {
            onPress(name);
          }}
        >
          {name}
        </button>
      ))}
    </div>
  );
}
