// SPDX-License-Identifier: MIT
import { useState } from 'react';
import { Choice } from '../choice';
import { stages } from '../compiler/protocol';
import {
  addReference,
  nodeById,
  removeReference,
  renameNode,
  toggleInPass,
} from '../model/project';
import { projectOf } from '../model/store';
import { useEdit, usePage } from '../model/use_store';
import { SourceEditor } from './source_editor';

function NameField({ id, name }: { id: string; name: string }) {
  const edit = useEdit();
  const [typed, setTyped] = useState(name);
  const commit = (): void => {
    edit((project) => renameNode(project, id, typed));
    setTyped(name);
  };
  return (
    <form
      onSubmit={(event) => {
        event.preventDefault();
        commit();
      }}
    >
      <input
        className="node-name"
        aria-label="Name of the node"
        value={typed}
        onChange={(event) => {
          setTyped(event.target.value);
        }}
        onBlur={commit}
      />
    </form>
  );
}

/** Whether the node is in the passes of the chosen shader. */
function Passes({ name }: { name: string }) {
  const edit = useEdit();
  const shaderName = usePage((state) => state.shader);
  const shader = usePage((state) =>
    projectOf(state).shaders.find((one) => one.name === state.shader),
  );
  return (
    <Choice
      className="small"
      label={`Passes of '${shaderName}' that have '${name}'`}
      names={stages}
      isPressed={(stage) => shader?.[stage].includes(name) ?? false}
      onPress={(stage) => {
        edit((project) => toggleInPass(project, shaderName, stage, name));
      }}
    />
  );
}

/** What the node builds on, for those who do not draw edges with a mouse. */
function References({ id }: { id: string }) {
  const edit = useEdit();
  const node = usePage((state) => nodeById(projectOf(state), id));
  const project = usePage(projectOf);
  if (!node) {
    return null;
  }
  const others = [...new Set(project.nodes.map((one) => one.name))]
    .filter((name) => name !== node.name && !node.references.includes(name))
    .sort();
  return (
    <div className="references" role="group" aria-label="Builds on">
      <span>builds on</span>
      {node.references.map((name) => (
        <button
          key={name}
          className="chip"
          title={`Do not build on '${name}'`}
          aria-label={`Do not build on '${name}'`}
          onClick={() => {
            edit((current) => removeReference(current, id, name));
          }}
        >
          {name} ×
        </button>
      ))}
      <select
        aria-label="Build on another node"
        value=""
        onChange={(event) => {
          const name = event.target.value;
          edit((current) => addReference(current, id, name));
        }}
      >
        <option value="">add…</option>
        {others.map((name) => (
          <option key={name}>{name}</option>
        ))}
      </select>
    </div>
  );
}

/** The selected node: its name, its references and its source. */
export function EditorView() {
  const node = usePage((state) =>
    state.selected === null ? undefined : nodeById(projectOf(state), state.selected),
  );
  return (
    <section className="panel editor" aria-label="Source">
      <div className="bar">
        {node ? (
          <>
            <NameField key={`${node.id} ${node.name}`} id={node.id} name={node.name} />
            <span className="muted file" title={node.file}>
              {node.file}
            </span>
            <Passes name={node.name} />
            <References id={node.id} />
          </>
        ) : (
          <span className="muted">Choose a node in the graph to edit its source.</span>
        )}
      </div>
      <div className={node ? 'code-holder' : 'code-holder hidden'}>
        <SourceEditor />
      </div>
    </section>
  );
}
