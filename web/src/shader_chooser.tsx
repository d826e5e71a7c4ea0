// SPDX-License-Identifier: MIT
import { useState } from 'react';
import { AskName } from './ask_name';
import { useCommands } from './commands';
import {
  addShader,
  duplicateShader,
  type Project,
  removeShader,
  renameShader,
} from './model/project';
import { editedWith, type Notice, projectOf } from './model/store';
import { useAllMessages, usePage, usePageStore } from './model/use_store';
import { Palette, type PaletteItem } from './palette';

/** The shaders of the project, and what can be done with them. */
export function ShaderChooser() {
  const store = usePageStore();
  const shader = usePage((state) => state.shader);
  const shaders = usePage((state) => projectOf(state).shaders);
  const { worst } = useAllMessages();
  const [menu, setMenu] = useState<{ x: number; y: number } | null>(null);
  const [isRenaming, setRenaming] = useState(false);

  /** What the list says of a shader that has faults or warnings. */
  const markOf = (name: string): string => {
    const severity = worst.get(name);
    return severity ? ` – ${severity}s` : '';
  };
  const choose = (name: string): void => {
    store.setState({ shader: name, mesh: null });
  };
  const addAs = (make: (project: Project) => { project: Project; name: string }): void => {
    store.setState((state) => {
      const added = make(projectOf(state));
      return editedWith(state, () => added.project, { shader: added.name });
    });
  };
  const rename = (name: string): void => {
    store.setState((state) =>
      editedWith(state, (project) => renameShader(project, shader, name), { shader: name.trim() }),
    );
  };
  const remove = (): void => {
    const notice: Notice = { kind: 'info', text: `'${shader}' is deleted; Undo brings it back` };
    store.setState((state) =>
      editedWith(state, (project) => removeShader(project, shader), { mesh: null, notice }),
    );
  };
  const items: PaletteItem[] = [
    {
      name: 'New shader',
      run: () => {
        addAs((project) => addShader(project, 'shader'));
      },
    },
    {
      name: `Rename '${shader}'…`,
      run: () => {
        setRenaming(true);
      },
    },
    {
      name: `Duplicate '${shader}'`,
      run: () => {
        addAs((project) => duplicateShader(project, shader));
      },
    },
    ...(shaders.length > 1
      ? [{ name: `Delete '${shader}'`, detail: 'its nodes stay', run: remove }]
      : []),
  ];
  useCommands(() => [
    ...items,
    ...shaders.map(({ name }) => ({
      name: `Shader ${name}`,
      isChoice: true,
      run: () => {
        choose(name);
      },
    })),
  ]);
  return (
    <>
      <label>
        Shader{' '}
        <select
          value={shader}
          onChange={(event) => {
            choose(event.target.value);
          }}
        >
          {shaders.map(({ name }, i) => (
            <option key={i} value={name}>
              {name + markOf(name)}
            </option>
          ))}
        </select>
      </label>
      <button
        aria-haspopup="dialog"
        aria-label="Change shaders"
        title="New, rename, duplicate, delete"
        onClick={(event) => {
          const { left, bottom } = event.currentTarget.getBoundingClientRect();
          setMenu({ x: left, y: bottom + 4 });
        }}
      >
        ⋯
      </button>
      {menu && (
        <Palette
          label="Shaders"
          items={items}
          at={menu}
          onClose={() => {
            setMenu(null);
          }}
        />
      )}
      {isRenaming && (
        <AskName
          label="Name of the shader"
          name={shader}
          onDone={rename}
          onClose={() => {
            setRenaming(false);
          }}
        />
      )}
    </>
  );
}
