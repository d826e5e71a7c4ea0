// SPDX-License-Identifier: MIT
// Folders with node files: as texts by path, and in browsers.
import { addShader, type NodeFile, type Project } from '../model/project';
import { readManifest } from './manifest';
import { FileError, nodeFilePaths, readNodes, writeNodes } from './node_file';

export const manifestPath = 'shaders.json';

/** A project from the texts of its files, by path. Files that are missing hold no nodes. */
export function openProject(texts: Readonly<Record<string, string>>): Project {
  const files: NodeFile[] = nodeFilePaths.map((path) => ({ path, text: texts[path] ?? '[]\n' }));
  if (!nodeFilePaths.some((path) => path in texts)) {
    throw new FileError(`there is none of the files ${nodeFilePaths.join(', ')}`);
  }
  const manifest = texts[manifestPath];
  const project: Project = {
    files,
    nodes: files.flatMap(readNodes),
    shaders: manifest === undefined ? [] : readManifest(manifestPath, manifest),
    values: {},
  };
  return project.shaders.length > 0 ? project : addShader(project, 'shader').project;
}

/** The texts of the node files as they are now, by path. */
export function saveProject(project: Project): Record<string, string> {
  return Object.fromEntries(
    project.files.map((file) => [
      file.path,
      writeNodes(
        file,
        project.nodes.filter((node) => node.file === file.path),
      ),
    ]),
  );
}

/** A project whose files are what was just saved. */
export function afterSave(project: Project, texts: Readonly<Record<string, string>>): Project {
  const files = project.files.map((file) => ({ ...file, text: texts[file.path] ?? file.text }));
  const next = new Map<string, number>();
  // Saving keeps the order: nodes of the file first, then new ones.
  const isNew = (node: { index: number | null }): number => (node.index === null ? 1 : 0);
  const order = [...project.nodes].sort(
    (a, b) => isNew(a) - isNew(b) || (a.index ?? 0) - (b.index ?? 0),
  );
  const indexes = new Map(
    order.map((node) => {
      const index = next.get(node.file) ?? 0;
      next.set(node.file, index + 1);
      return [node.id, index];
    }),
  );
  const nodes = project.nodes.map((node) => ({ ...node, index: indexes.get(node.id) ?? null }));
  return { ...project, files, nodes };
}

/** What a path is called below the opened folder: with or without the folder "morl". */
function knownPath(path: string): string | undefined {
  const name = path.split('/').at(-1) ?? '';
  return [...nodeFilePaths, manifestPath].find((known) => known.split('/').at(-1) === name);
}

/** The texts of the known files among those that a person has chosen. */
export async function readChosen(chosen: readonly File[]): Promise<Record<string, string>> {
  const texts: Record<string, string> = {};
  for (const file of chosen) {
    const path = knownPath(file.webkitRelativePath || file.name);
    if (path) {
      texts[path] = await file.text();
    }
  }
  return texts;
}

/** Whether this browser can open folders and write them back. */
export function canOpenFolders(): boolean {
  return 'showDirectoryPicker' in window;
}

async function folderOf(root: FileSystemDirectoryHandle): Promise<FileSystemDirectoryHandle> {
  return root.name === 'morl' ? root : root.getDirectoryHandle('morl');
}

async function textOf(
  folder: FileSystemDirectoryHandle,
  name: string,
): Promise<string | undefined> {
  try {
    const file = await (await folder.getFileHandle(name)).getFile();
    return await file.text();
  } catch (error) {
    if (error instanceof DOMException && error.name === 'NotFoundError') {
      return undefined;
    }
    throw error;
  }
}

/** The texts of the known files of a folder. */
export async function readFolder(root: FileSystemDirectoryHandle): Promise<Record<string, string>> {
  const folder = await folderOf(root);
  const texts: Record<string, string> = {};
  for (const path of nodeFilePaths) {
    const text = await textOf(folder, path.split('/')[1] ?? path);
    if (text !== undefined) {
      texts[path] = text;
    }
  }
  const manifest = await textOf(root, manifestPath);
  if (manifest !== undefined) {
    texts[manifestPath] = manifest;
  }
  return texts;
}

/** Writes files back; the browser replaces each only when it is complete. */
export async function writeFolder(
  root: FileSystemDirectoryHandle,
  texts: Readonly<Record<string, string>>,
): Promise<void> {
  const folder = await folderOf(root);
  for (const [path, text] of Object.entries(texts)) {
    const file = await folder.getFileHandle(path.split('/')[1] ?? path, { create: true });
    const stream = await file.createWritable();
    await stream.write(text);
    await stream.close();
  }
}
