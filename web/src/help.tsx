// SPDX-License-Identifier: MIT
import { useEffect, useRef } from 'react';

/** Keys, and what they do; beside them stand those that the list of commands names. */
const keys: readonly (readonly [string, string])[] = [
  ['Ctrl+K', 'everything that can be done, by typing'],
  ['Ctrl+S', 'save'],
  ['Ctrl+Z, Ctrl+Y', 'undo and redo, also of what was done in the graph'],
  ['F6, Shift+F6', 'the next part of the page, and the one before'],
  ['Tab, arrow keys', 'the next group of buttons; one button to the next'],
  ['Ctrl+Space', 'complete a word of the source'],
  ['F8, Shift+F8', 'the next fault, and the one before'],
  ['F12, Ctrl+click', 'where a name is declared'],
  ['Ctrl+F', 'search in the source'],
  ['Arrow keys, Enter', 'in the graph: from node to node; to its source'],
  ['Alt+arrow keys', 'in the graph, with All: move the chosen nodes'],
  ['Delete', 'in the graph: remove the chosen nodes or the chosen line'],
  ['Shift+drag, Ctrl+click', 'in the graph: choose several nodes'],
  ['Double click', 'on the graph: put a node there; on a bar: the panel fills the page'],
];

/** The first steps, and the keys. */
export function Help({ onClose }: { onClose: () => void }) {
  const dialog = useRef<HTMLDialogElement>(null);
  useEffect(() => {
    dialog.current?.showModal();
  }, []);
  return (
    <dialog ref={dialog} className="projects" aria-label="First steps and keys" onClose={onClose}>
      <h2>First steps</h2>
      <p>
        A shader is made of nodes: choose one in the graph and edit its source, and the picture, the
        texts and the messages follow with every letter. A node builds on others, whose variables it
        can use; draw a wire from one to the next, or drop it on nothing to see what fits. What you
        do is kept in this browser, and Save puts it into the files of a folder.
      </p>
      <h2>Keys</h2>
      <table>
        <tbody>
          {keys.map(([key, does]) => (
            <tr key={key}>
              <th scope="row">
                <kbd>{key}</kbd>
              </th>
              <td>{does}</td>
            </tr>
          ))}
        </tbody>
      </table>
      <form method="dialog">
        <button>Close</button>
      </form>
    </dialog>
  );
}
