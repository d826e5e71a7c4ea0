// SPDX-License-Identifier: MIT
import { BaseEdge, type EdgeProps, Handle, type NodeProps, Position } from '@xyflow/react';
import { memo } from 'react';
import { type StageName, toggleInPass } from '../model/project';
import { usePage, useEdit } from '../model/use_store';
import type { NodeData, ShownEdge, ShownFile, ShownNode } from './shown';

function PassButton({ stage, data }: { stage: StageName; data: NodeData }) {
  const shader = usePage((state) => state.shader);
  const edit = useEdit();
  const isIn = stage === 'vertex' ? data.isInVertex : data.isInFragment;
  const title = `${isIn ? 'Take' : 'Put'} '${data.name}' ${isIn ? 'out of' : 'into'} the ${stage} pass of '${shader}'`;
  return (
    <button
      className={`pass nodrag ${stage}`}
      // By keyboard, the same buttons above the source are nearer.
      tabIndex={-1}
      aria-pressed={isIn}
      aria-label={title}
      title={title}
      onClick={(event) => {
        event.stopPropagation();
        edit((project) => toggleInPass(project, shader, stage, data.name));
      }}
    >
      {stage === 'vertex' ? 'V' : 'F'}
    </button>
  );
}

function count(number: number, word: string): string {
  return `${number} ${word}${number === 1 ? '' : 's'}`;
}

/** What the node leaves in the variable that it assigns last, with its place in the text. */
function NodePicture({ data }: { data: NodeData }) {
  const picture = usePage((state) => state.pictures.get(data.name));
  return (
    <span className={picture === undefined ? '' : 'pictured'}>
      {picture !== undefined && <img src={picture} alt="" draggable={false} />}
      {data.place > 0 && (
        <span className="place" title={`number ${data.place} of the text that is shown`}>
          {data.place}
        </span>
      )}
    </span>
  );
}

/** A node of the graph: its name, the passes that it is in, and how much is wrong with it. */
export const MorlGraphNode = memo(function MorlGraphNode({ data, selected }: NodeProps<ShownNode>) {
  const isUsed = data.isInVertex || data.isInFragment;
  const classes = [
    'morl-node',
    isUsed ? 'used' : '',
    selected ? 'chosen' : '',
    data.isFound ? 'found' : '',
    data.isDimmed ? 'dimmed' : '',
  ];
  return (
    <div className={classes.filter(Boolean).join(' ')}>
      <Handle type="target" position={Position.Left} />
      <NodePicture data={data} />
      <span className="name" title={data.name}>
        {data.name}
      </span>
      {data.errors > 0 && (
        <span className="badge error" role="img" aria-label={count(data.errors, 'error')}>
          {data.errors}
        </span>
      )}
      {data.warnings > 0 && (
        <span className="badge warning" role="img" aria-label={count(data.warnings, 'warning')}>
          {data.warnings}
        </span>
      )}
      <span className="passes">
        <PassButton stage="vertex" data={data} />
        <PassButton stage="fragment" data={data} />
      </span>
      <Handle type="source" position={Position.Right} />
    </div>
  );
});

/** The frame around the nodes of a file. */
export const FileFrame = memo(function FileFrame({ data }: NodeProps<ShownFile>) {
  return <div className="file-frame">{data.path}</div>;
});

/** A line that goes around the nodes between. */
export const RoutedEdge = memo(function RoutedEdge({ id, data }: EdgeProps<ShownEdge>) {
  return <BaseEdge id={id} path={data?.path ?? ''} />;
});
