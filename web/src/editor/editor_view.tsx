// SPDX-License-Identifier: MIT
import { useMemo, useState } from 'react';
import { Choice } from '../choice';
import { stages } from '../compiler/protocol';
import {
  addReference,
  type NodeShape,
  removeReference,
  renameNode,
  toggleInPass,
} from '../model/project';
import { chosenShapeOf, shaderOf, shapesOf } from '../model/selectors';
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
  const shader = usePage(shaderOf);
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
function References({ node }: { node: NodeShape }) {
  const edit = useEdit();
  const shapes = usePage(shapesOf);
  const { id } = node;
  const others = useMemo(
    () =>
      [...new Set(shapes.map((one) => one.name))]
        .filter((name) => name !== node.name && !node.references.includes(name))
        .sort(),
    [shapes, node],
  );
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
  const node = usePage(chosenShapeOf);
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
            <References node={node} />
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
