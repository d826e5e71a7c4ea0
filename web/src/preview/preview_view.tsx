// SPDX-License-Identifier: MIT
import { useEffect, useRef, useState } from 'react';
import { Choice } from '../choice';
import { useCommands } from '../commands';
import { download } from '../files/download';
import type { MeshName } from '../model/store';
import { usePage, usePageStore } from '../model/use_store';
import { wantsStill } from '../motion';
import { Toolbar } from '../toolbar';
import { type Mark, PreviewController } from './controller';
import { setWantsPictures } from './node_pictures';
import { meshOf } from './passes';
import type { ShownValue } from './values';

const meshNames: readonly MeshName[] = ['sphere', 'plane', 'torus knot', 'quad'];

const marks: Readonly<Record<Exclude<Mark['kind'], 'slow'>, string>> = {
  fresh: '',
  none: 'The shader needs nodes in both passes. The last picture is shown.',
  faults: 'The sources have faults. The last good picture is shown.',
  driver: "The browser's driver refuses the shader. The last good picture is shown.",
  lost: 'The browser has taken the graphics away. The picture comes back by itself.',
};

function markText(mark: Mark): string {
  if (mark.kind !== 'slow') {
    return marks[mark.kind];
  }
  return mark.time === Infinity
    ? 'This shader does not finish: it is not drawn until it changes. The last picture is shown.'
    : `A picture of this shader would take about ${Math.ceil(mark.time / 1000)} s. The last one is shown.`;
}

/** The picture of the chosen shader, and the controls of what it depends on. */
export function PreviewView() {
  const store = usePageStore();
  const canvas = useRef<HTMLCanvasElement>(null);
  const holder = useRef<HTMLDivElement>(null);
  const controls = useRef<HTMLDivElement>(null);
  const light = useRef<HTMLDivElement>(null);
  const controller = useRef<PreviewController | null>(null);
  const [mark, setMark] = useState<Mark>({ kind: 'fresh' });
  const [rate, setRate] = useState(0);
  const [isAnimated, setAnimated] = useState(false);
  const [shown, setShown] = useState<ShownValue | null>(null);
  const [colour, setColour] = useState<readonly number[] | null>(null);
  const value = usePage((state) => state.value);
  const showsPictures = usePage((state) => state.showsPictures);
  const [isRunning, setRunning] = useState(() => !wantsStill());
  const mesh = usePage(meshOf);
  const shader = usePage((state) => state.shader);

  useEffect(() => {
    if (!canvas.current || !holder.current || !controls.current) {
      return undefined;
    }
    const elements = {
      canvas: canvas.current,
      picture: holder.current,
      controls: controls.current,
    };
    try {
      const made = new PreviewController(store, elements, {
        onMark: setMark,
        onRate: setRate,
        onAnimated: setAnimated,
        onValue: setShown,
        onLight: (place) => {
          const handle = light.current;
          if (handle) {
            handle.hidden = place === null;
            handle.style.left = `${(place?.x ?? 0) * 100}%`;
            handle.style.top = `${(place?.y ?? 0) * 100}%`;
          }
        },
      });
      made.clock.run(!wantsStill());
      controller.current = made;
      return () => {
        made.dispose();
      };
    } catch {
      const text = 'this browser has no WebGL 2, so there is no picture; everything else works';
      store.setState({ notice: { kind: 'error', text } });
      return undefined;
    }
  }, [store]);

  const run = (isWanted: boolean): void => {
    controller.current?.clock.run(isWanted);
    controller.current?.draw();
    setRunning(isWanted);
  };
  const reset = (): void => {
    controller.current?.clock.reset();
    controller.current?.draw();
  };
  const save = async (): Promise<void> => {
    const picture = await controller.current?.picture();
    if (picture) {
      download(`${shader}.png`, picture);
    }
  };
  const fill = (): void => {
    if (document.fullscreenElement) {
      void document.exitFullscreen();
    } else {
      void holder.current?.requestFullscreen();
    }
  };
  const toggleValue = (): void => {
    store.setState({ value: value === null ? 'caret' : null });
  };
  const togglePin = (): void => {
    store.setState({
      value: value === 'caret' && shown ? { node: shown.node, line: shown.line } : 'caret',
    });
  };
  useCommands(() => [
    {
      name: value === null ? 'Show the value at the caret' : 'Show the picture, and no value',
      run: toggleValue,
    },
    {
      name: showsPictures ? 'No pictures on the nodes' : 'Pictures on the nodes',
      run: () => {
        setWantsPictures(store, !showsPictures);
      },
    },
    {
      name: isRunning ? 'Stop the time' : 'Let the time run',
      run: () => {
        run(!isRunning);
      },
    },
    { name: 'Set the time to 0', run: reset },
    { name: 'Save the picture', run: () => void save() },
    { name: 'Picture in full screen', run: fill },
    ...meshNames.map((name) => ({
      name: `Mesh ${name}`,
      isChoice: true,
      run: () => {
        store.setState({ mesh: name });
      },
    })),
  ]);

  return (
    <section className="panel preview" aria-label="Preview">
      <div className="bar">
        <Toolbar label="Preview">
          <Choice
            label="Mesh"
            names={meshNames}
            isPressed={(name) => name === mesh}
            onPress={(name) => {
              store.setState({ mesh: name });
            }}
          />
          {isAnimated && (
            <>
              <button
                aria-pressed={!isRunning}
                title="Stop the time, or let it run"
                onClick={() => {
                  run(!isRunning);
                }}
              >
                Pause
              </button>
              <button title="Set the time to 0" onClick={reset}>
                Reset
              </button>
            </>
          )}
          <button title="Save the picture as a PNG file" onClick={() => void save()}>
            Picture
          </button>
          <button title="The picture in full screen" onClick={fill}>
            Full screen
          </button>
          <button
            aria-pressed={value !== null}
            title="Draw what the variable holds that the line of the caret assigns"
            onClick={toggleValue}
          >
            Value
          </button>
          {value !== null && (
            <button
              aria-pressed={value !== 'caret'}
              disabled={!shown}
              title="Keep this value, wherever the caret goes"
              onClick={togglePin}
            >
              Pin
            </button>
          )}
        </Toolbar>
        <span className="space" />
        <span className="muted">{rate > 0 ? `${rate} fps` : ''}</span>
        <span className="muted readout">
          {colour
            ? colour
                .slice(0, 3)
                .map((one) => one.toFixed(2))
                .join(' ')
            : ''}
        </span>
      </div>
      <div className="stage">
        <div className="picture" ref={holder}>
          <canvas
            ref={canvas}
            tabIndex={0}
            role="img"
            aria-label={`Picture of the shader ${shader}; arrow keys turn the camera`}
            onPointerMove={(event) => {
              setColour(controller.current?.colourAt(event.clientX, event.clientY) ?? null);
            }}
            onPointerLeave={() => {
              setColour(null);
            }}
          />
          <div
            ref={light}
            className="sun"
            hidden
            title="Drag the light"
            onPointerDown={(event) => {
              event.currentTarget.setPointerCapture(event.pointerId);
            }}
            onPointerMove={(event) => {
              if (event.currentTarget.hasPointerCapture(event.pointerId)) {
                controller.current?.dragLight(event.clientX, event.clientY);
              }
            }}
          >
            ☀
          </div>
          {value !== null && (shown ?? mark.kind === 'fresh') && (
            <div className="value" role="status">
              {shown
                ? `${shown.name} (${shown.node}:${shown.line})`
                : 'this node assigns no number or vector'}
            </div>
          )}
          {mark.kind !== 'fresh' && (
            <div className="mark" role="alert">
              {markText(mark)}
            </div>
          )}
        </div>
        <div className="controls" ref={controls} aria-label="Controls" role="group" />
      </div>
    </section>
  );
}
