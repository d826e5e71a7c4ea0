// SPDX-License-Identifier: MIT
import { Component, type ReactNode } from 'react';
import { download } from './files/download';
import type { Project } from './model/project';

/** All nodes of a project as one node file, whatever else is wrong with it. */
function plainText(project: Project): string {
  const nodes = project.nodes.map(({ name, x, y, references, content }) => ({
    name,
    x,
    y,
    ref: references,
    content,
  }));
  return `${JSON.stringify(nodes, null, 2)}\n`;
}

interface Properties {
  readonly projectNow: () => Project;
  readonly children: ReactNode;
}

/** What is left when drawing the page fails: the text of the nodes, and a way to save it. */
export class ErrorBoundary extends Component<Properties, { readonly failure: string }> {
  override state = { failure: '' };

  static getDerivedStateFromError(error: unknown): { failure: string } {
    return { failure: String(error) };
  }

  override render(): ReactNode {
    const { failure } = this.state;
    if (failure === '') {
      return this.props.children;
    }
    const text = plainText(this.props.projectNow());
    return (
      <main className="failure">
        <h1>The page cannot be drawn</h1>
        <p role="alert">{failure}</p>
        <p>Your nodes are here, and nothing is lost:</p>
        <div>
          <button
            onClick={() => {
              download('nodes.morl', text);
            }}
          >
            Save the nodes
          </button>
          <button
            onClick={() => {
              location.reload();
            }}
          >
            Load the page again
          </button>
        </div>
        <textarea readOnly aria-label="All nodes" value={text} />
      </main>
    );
  }
}
